// setStyle: which parts of a chart it finds, and what it makes for them.
#include "commandcases.h"
#include "domwalk.h"
#include "plxstyle.h"

namespace {

struct Drawn {
  std::string tag;
  std::string id;
  std::string attributes = "";
  std::string children = "";
  std::string styleAttributes = "";
};

// A graph of these elements, each with a style; `block` is what its coordinates hold.
std::string graphOf(const std::vector<Drawn>& elements, const std::string& block = "") {
  std::string graph = "<graph><coordinates>" + block + "</coordinates><coordinates id='second'/>";
  std::string styles;
  for (const Drawn& each : elements) {
    graph += "<" + each.tag + " id='" + each.id + "' style='s-" + each.id + "' " + each.attributes +
             ">" + each.children + "</" + each.tag + ">";
    styles += "<style id='s-" + each.id + "' " + each.styleAttributes + "/>";
  }
  return graph + "</graph>" + styles;
}

// What has a style that the command paints: ids, or tags for what has none, each with its attribute
// unless that is `style`, and with a blank behind it.
std::string painted(const std::string& body, const std::string& attributes,
                    const std::string& styles = "<style color='red'/><style color='red'/>") {
  EditedChart chart(body);
  EXPECT_TRUE(chart.apply("<setStyle " + attributes + ">" + styles + "</setStyle>"));
  std::string holders;
  walkElements(chart.chart().getImplementation(), [&](const xercesc::DOMElement* element) {
    const xercesc::DOMNamedNodeMap* all = element->getAttributes();
    for (XMLSize_t i = 0; i < all->getLength(); ++i) {
      const ChartString name(all->item(i)->getNodeName());
      const PlXStyle* style = chart.chart().getStyleById(all->item(i)->getNodeValue());
      if (!style || name.equals(u"id") || !ChartString(style->getColor()).equals(u"red")) continue;
      const ChartString id(element->getAttribute(u"id"));
      holders += ChartString(id.empty() ? element->getLocalName() : id.xc_str()).toUTF8();
      holders += name.equals(u"style") ? " " : "." + name.toUTF8() + " ";
    }
    return true;
  });
  return holders;
}

TEST(SetStyle, TellsElementsApart) {
  const ChartBase holder;
  const std::string mean = "<summaryStatistic method='mean'/>";
  const std::string range = mean + "<summaryStatistic method='range'/>";
  const std::string bin = "<binStatistic/>";
  const std::vector<Drawn> elements = {{"point", "point"},
                                       {"point", "binned", "", bin},
                                       {"line", "line"},
                                       {"edge", "edge"},
                                       {"path", "path"},
                                       {"interval", "bar"},
                                       {"interval", "mean", "", mean},
                                       {"interval", "dodged", "positionModifier='dodge'"},
                                       {"interval", "other", "coordinates='second'"},
                                       {"interval", "square", "", range, "symbol='square'"},
                                       {"interval", "round", "", range},
                                       {"interval", "histogram", "", mean + bin},
                                       {"interval", "rule", "", "", "symbol='line'"},
                                       {"interval", "ibeam", "", "", "symbol='ibeam'"},
                                       {"interval", "dropdownline", "", mean + bin},
                                       {"interval", "errorbar", "", mean},
                                       {"interval", "Guide"},
                                       {"area", "area"},
                                       {"polygon", "polygon"},
                                       {"schema", "box", "fenceStyle='fence'"}};
  const std::string plain = graphOf(elements) + "<style id='fence'/>";
  const std::string polar = graphOf(elements, "<polarTransform/>");
  const std::string solid = graphOf(elements, "<dimension/><dimension/><dimension/>");
  const std::string clustered =
      "<sourceVariable id='v'/>" + graphOf(elements, "<dimension clusterVariable='v'/>");
  const std::tuple<std::string, const char*, std::string> cases[] = {
      {plain, "type='scatter'", "point "},
      {plain, "type='scatter' subtype='clustered'", "point binned "},
      {plain, "type='line'", "line edge path "},
      {plain, "type='line' subtype='3D'", ""},
      {solid, "type='line'", ""},
      {solid, "type='line' subtype='3D'", "line edge path "},
      {plain, "type='bar'", "bar mean square round dropdownline errorbar "},
      {plain, "type='bar' subtype='clustered'", ""},
      {clustered, "type='bar'", ""},
      {clustered, "type='bar' subtype='clustered'",
       "bar mean dodged square round dropdownline errorbar "},
      {polar, "type='bar'", ""},
      {plain, "type='range'", "square "},
      {plain, "type='histogram'", "histogram "},
      {polar, "type='population'", "histogram "},
      {plain, "type='errorbar'", "rule ibeam errorbar "},
      {plain, "type='dropline'", "rule dropdownline "},
      {plain, "type='pie'", ""},
      {polar, "type='pie'", "bar mean dodged square round "},
      {plain, "type='area'", "area "},
      {plain, "type='schema'", "box "},
      {plain, "type='schema' subtype='fenceStyle'", "box.fenceStyle "},
      {plain, "type='polygon'", ""}};
  for (const auto& [body, attributes, holders] : cases) {
    EXPECT_EQ(painted(body, attributes), holders) << attributes;
  }
  EXPECT_EQ(painted(plain, "type='bar'", "<style color='red' coordinate='1'/>"), "other ");
  // What procedures draw on top has one of these words in its id.
  for (const std::string word : {"AIM", "biplot", "centroid", "control", "Guide", "guide", "series",
                                 "survival", "triplot"}) {
    EXPECT_EQ(painted(graphOf({{"interval", "a" + word + "1"}}), "type='bar'"), "") << word;
  }
  for (const std::string word : {"aim", "Biplot", "contro", "serie"}) {
    EXPECT_EQ(painted(graphOf({{"interval", word}}), "type='bar'"), word + " ");
  }
}

TEST(SetStyle, GivesEachGraphTheStyleOfItsNumber) {
  const ChartBase holder;
  const std::string body =
      "<graph><area id='a' style='s'/></graph><graph/><graph><area id='b' style='t'/></graph>"
      "<style id='s'/><style id='t'/>";
  const std::pair<const char*, const char*> cases[] = {
      {"<style color='red'/>", "a b "},
      {"<style color='red'/><style number='1' color='red'/>", "a "},
      {"<style number='2' color='red'/>", "b "},
      {"<style number='2' color='red'/><style number='2' color='blue'/>", ""},
      {"<style number='99999999999999999999' color='red'/>", ""},
      {"<style number='-1' color='red'/>", ""},
      {"<other><style color='red'/></other>", "a b "},
      {"", ""}};
  for (const auto& [styles, holders] : cases) {
    EXPECT_EQ(painted(body, "type='area'", styles), holders) << styles;
  }
}

TEST(SetStyle, FindsAStyleByItsId) {
  const std::string cycle =
      "<styleCycle id='c'><cycle><style id='a'/></cycle></styleCycle><style id='s'><style>";
  const std::string end = "</style></style><style/>";
  EditedChart chart(cycle + "<style id='a'/>" + end);
  for (const char* command :
       {"<setStyle><style color='x'/></setStyle>", "<setStyle id='c'><style color='x'/></setStyle>",
        "<setStyle id='a'><style number='1' color='x'/></setStyle>"}) {
    EXPECT_TRUE(chart.apply(std::string("<setStyle type='any'/>") + command));
    EXPECT_EQ(chart.body(), cycle + "<style id='a'/>" + end);
  }
  EXPECT_TRUE(chart.apply("<setStyle id='a'><style color='red'/></setStyle>"));
  EXPECT_EQ(chart.body(), cycle + "<style id='a' color='red'/>" + end);
}

TEST(SetStyle, FindsTextsAndTheirFrames) {
  const ChartBase holder;
  const std::string body =
      "<labelFrame id='f'><label/></labelFrame><legend id='k'/><legend id='m'><label/></legend>"
      "<graph><coordinates><dimension><axis><label/><majorTicks id='xt'/></axis></dimension>"
      "<dimension><axis><label id='y1'/></axis><axis><label id='y2'/><majorTicks/></axis>"
      "<axis><label id='y3'/></axis></dimension></coordinates><facetLayout><facetLevel id='p' "
      "level='5'><axis>"
      "<majorTicks id='pt' style='s'/></axis></facetLevel><facetLevel id='q' level='6'/>"
      "</facetLayout><extension title1='none' legend1=''/></graph><style id='s'/>"
      "<extension title1='f' legend1='k' legend2='m' dangling='none'/>";
  const std::pair<const char*, const char*> cases[] = {
      {"type='labelFrame' subtype='title1'", "f "},
      {"type='labelFrame' subtype='legend1'", "k "},
      {"type='labelFrame' subtype='dangling'", ""},
      {"type='labelFrame' subtype=''", ""},
      {"type='text' subtype='title1'", "label "},
      {"type='textFrame' subtype='title1'", "label.textFrameStyle "},
      {"type='text' subtype='legend1'", "k.tickTextStyle "},
      {"type='textFrame' subtype='legend2'", "m.tickFrameStyle label.textFrameStyle "},
      {"type='text' subtype='xaxis_title2'", "label "},
      {"type='text' subtype='yaxis_title'", "y1 "},
      {"type='text' subtype='yaxis_title_2'", "y2 "},
      {"type='text' subtype='zaxis_title'", ""},
      {"type='text' subtype='xaxis_label'", "xt "},
      {"type='textFrame' subtype='xaxis_label'", "xt "},  // its frame has no style
      {"type='text' subtype='yaxis_label'", ""},
      // A position, but with titles the level's own number.
      {"type='text' subtype='panel_label'", "pt "},
      {"type='text' subtype='panel_label' level='0'", "pt "},
      {"type='text' subtype='panel_label' level='-1'", "pt "},
      {"type='text' subtype='panel_label' level='1'", ""},
      {"type='textFrame' subtype='panel_label'", ""},
      {"type='text' subtype='panel_title'", "labelp1 labelq1 "},
      {"type='textFrame' subtype='panel_title' level='6'", "labelq1.textFrameStyle "},
      {"type='text' subtype='panel_title' level='1'", ""},
      {"type='text' subtype='panel_title' level='0'", ""},
      {"type='text' subtype='bogus'", ""}};
  for (const auto& [attributes, holders] : cases) {
    EXPECT_EQ(painted(body, attributes), holders) << attributes;
  }
}

TEST(SetStyle, MakesWhatPartsLack) {
  const CommandCase cases[] = {
      {"<graph><interval/><area/></graph>", "<setStyle type='bar'><style depth='1pt'/></setStyle>",
       "<graph><interval style='style1'/><area/></graph><style id='c-o-n-t-a-i-n-er'>"
       "<style id='style1' depth='1pt'/></style>"},
      // A slice has a width of its own and no size.
      {"<graph><coordinates><polarTransform/></coordinates><interval style='s'/></graph>"
       "<style id='s'/>",
       "<setStyle type='pie'><style width='50%' size='3'/></setStyle>",
       "<graph><coordinates><polarTransform/></coordinates><interval style='s'/></graph>"
       "<style id='s' width='100%'/>"},
      // Patterns show on white, also on bars that aren't meant; a colour stays.
      {"<graph><interval positionModifier='dodge' style='s'><styleBy id='pattern1'/>"
       "</interval><interval style='t'><styleBy id='pattern2'/></interval></graph>"
       "<style id='s'/><style id='t' color='red'/>",
       "<setStyle type='bar'><style depth='1pt'/></setStyle>",
       "<graph><interval positionModifier='dodge' style='s'><styleBy id='pattern1'/>"
       "</interval><interval style='t'><styleBy id='pattern2'/></interval></graph>"
       "<style id='s' color='white'/><style id='t' color='red' depth='1pt'/>"},
      // The first makes the second an error bar, which patterns don't whiten.
      {"<graph><interval style='s'/><interval style='s'><styleBy id='pattern1'/></interval></graph>"
       "<style id='s'/>",
       "<setStyle type='bar'><style symbol='ibeam'/></setStyle>",
       "<graph><interval style='s'/><interval style='s'><styleBy id='pattern1'/></interval></graph>"
       "<style id='s' symbol='ibeam'/>"},
      {"<legend id='k'/><extension legend1='k'/>",
       "<setStyle type='text' subtype='legend1'><style depth='1pt'/></setStyle>",
       "<legend id='k' tickTextStyle='ktickTextStyle1'/><style id='c-o-n-t-a-i-n-er'>"
       "<style id='ktickTextStyle1' depth='1pt'/></style><extension legend1='k'/>"},
      {"<graph><facetLayout><facetLevel/></facetLayout></graph>",
       "<setStyle type='text' subtype='panel_label'><style color='red'/></setStyle>",
       "<graph><facetLayout><facetLevel><axis style='axis1'><majorTicks/></axis></facetLevel>"
       "</facetLayout></graph><style id='c-o-n-t-a-i-n-er'>"
       "<style id='axis1' color='transparent'/></style>"}};
  expectCases(cases);
}

}  // namespace
