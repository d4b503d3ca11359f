// The commands of frames: which frame they mean, where it goes, what is linked, what is hidden.
#include <map>
#include <regex>

#include "commandcases.h"
#include "plxstyle.h"

using namespace xercesc;

namespace {

// Frames with their places and roles, in a short form: "title1 2% 98% 2% 20%" for what has a fixed
// place on all sides, ">t" for an edge that is attached to t, "-" for one that is missing.
std::string placesOf(EditedChart& chart) {
  std::string text;
  walkElements(chart.chart().getImplementation(), [&](const DOMElement* element) {
    std::map<std::string, std::string> edges;
    for (const DOMElement* child = element->getFirstElementChild(); child;
         child = child->getNextElementSibling()) {
      const auto of = [&](const XMLCh* name) {
        return ChartString(child->getAttribute(name)).toUTF8();
      };
      if (!XMLString::equals(child->getTagName(), u"location")) continue;
      const std::string target = of(u"target");
      edges[of(u"part")] = of(u"method") == "content" ? "content"
                           : target.empty()           ? of(u"value")
                                                      : of(u"value") + ">" + target;
    }
    if (edges.empty()) return true;
    text += (text.empty() ? "" : "; ") + ChartString(element->getAttribute(u"id")).toUTF8();
    for (const char* part : {"left", "right", "top", "bottom", "width", "height"}) {
      if (edges.contains(part)) text += " " + std::string(part, 1) + edges[part];
    }
    return true;
  });
  return text;
}

std::string frame(const std::string& id, const std::string& places, const std::string& tag,
                  const std::string& content = "") {
  std::istringstream edges(places);
  std::string text = "<" + tag + " id='" + id + "'>";
  for (std::string edge; edges >> edge;) {
    const std::map<char, std::string> parts = {
        {'l', "left"}, {'r', "right"}, {'t', "top"}, {'b', "bottom"}};
    text += "<location part='" + parts.at(edge[0]) + "' ";
    text += edge[1] == '>' ? "method='attach' target='" + edge.substr(2) + "'/>"
                           : "method='fixed' value='" + edge.substr(1) + "'/>";
  }
  return text + content + "</" + tag + ">";
}

TEST(AddFrame, PlacesAndLinksTexts) {
  const ChartBase holder;
  const std::string label = "<label>a</label>";
  const std::string all = "<location left='1%' right='99%'/><location top='5%' bottom='7%'/>";
  const std::string graph = frame("g", "l5% t21% b87%", "graph");
  const auto roles = [](const std::string& text) { return "<extension " + text + "/>"; };
  const std::string title = frame("t", "t2% b8%", "labelFrame", "<label/>");
  const std::string note = frame("f", "t88.5% b96%", "labelFrame");
  struct Row {
    std::string body, command, places;
  };
  const Row rows[] = {
      {"", "frameId='frame_title_1'>" + label, "title1 l2% r98% t2% b20%"},
      {"", "type='title' count='2'>" + label, "title1 l2% r98% t20% b30%"},
      {"", "type='title' count='-3'>" + label, "title1 l2% r98% t2% b20%"},
      {"", "frameId='frame_subtitle_1'><location left='7%' top='1%'/>" + label,
       "frame_subtitle_11 l7% r98% t1% b35%"},
      {"", "frameId='frame_footnote_3'>" + label, "footnote1 l2% r98% t96% b99%"},
      {"", "frameId='frame_title_1' styleOnly='true'>" + label, ""},
      {"", "frameId='frame_title_1' type='footnote'>" + label, "footnote1 l2% r98% t88% b96%"},
      {"", "frameId='frame_title_1'>", ""},
      {roles("preserveLocations='true'"), "type='title'>" + label, "title1 l2% r98% t2% b20%"},
      {roles("preserveLocations='true'"), "type='title'>" + all + label, ""},
      // An existing one moves with all four places.
      {title + roles("title1='t'"), "type='title'>" + all, "t l1% r99% t5% b7%"},
      {title + roles("title1='t'"), "type='title'><location left='1%'/>" + label, "t t2% b8%"},
      {title + roles("title1='t'"), "type='title' styleOnly='true'>" + all, "t t2% b8%"},
      {title + roles("title1='t' preserveLocations='true'"), "type='title'>" + all, "t t2% b8%"},
      {title + frame("g", "t9%", "graph") + roles("title1='t'"), "type='title'>" + label,
       "t t2% b8%; g t9%"},
      // What nearly meets is attached.
      {graph, "type='title'>" + label, "g l5% t>title1 b87%; title1 l2% r98% t2% b20%"},
      {graph, "type='footnote'>" + label, "g l5% t21% b87%; footnote1 l2% r98% t>g b96%"},
      {graph, "type='subtitle'>" + label, "g l5% t21% b87%; frame_subtitle_11 l2% r98% t30% b35%"},
      {frame("g", "t22%", "graph"), "type='title'>" + label, "g t22%; title1 l2% r98% t2% b20%"},
      {frame("g", "t21pt", "graph"), "type='title'>" + label, "g t21pt; title1 l2% r98% t2% b20%"},
      {frame("g", "t21pt", "graph"), "type='title'><location bottom='20pt'/>" + label,
       "g t21pt; title1 l2% r98% t2% b20pt"},
      {graph + frame("h", "t21%", "graph"), "type='title'>" + label,
       "g l5% t21% b87%; h t21%; title1 l2% r98% t2% b20%"},
      {note + roles("footnote2='f'"), "type='footnote'><location bottom='87%'/>" + label,
       "f t>footnote1 b96%; footnote1 l2% r98% t88% b87%"},
      // A new one goes between two that are attached.
      {title + frame("g", "t>t", "graph") + roles("title1='t'"),
       "type='subtitle'><location top='9%'/>" + label,
       "t t2% b8%; g t>frame_subtitle_11; frame_subtitle_11 l2% r98% t>t b35%"},
      {title + frame("u", "b9.5%", "labelFrame") + frame("g", "t>u", "graph") +
           roles("title1='t' title2='u'"),
       "type='subtitle'><location top='9%'/>" + label,
       "t t2% b8%; u b9.5%; g t>frame_subtitle_11; frame_subtitle_11 l2% r98% t>u b35%"},
      {title + note + frame("g", "t>f", "graph") + roles("title1='t'"),
       "type='subtitle'><location top='9%'/>" + label,
       "t t2% b8%; f t88.5% b96%; g t>f; frame_subtitle_11 l2% r98% t>t b35%"},
      // Free texts
      {"", "type='labelFrame'><location left='3%' right='9%'/>" + label,
       "labelFrame1 l3% t50% wcontent hcontent"},
      {"", "type='other'>" + all + label, "labelFrame1 l1% r99% t5% b7%"},
      {roles("preserveLocations='true'"), "type='labelFrame'>" + all + label, ""},
      {title, "type='labelFrame'>" + all, "t l1% r99% t5% b7%"},
      {title + note, "type='labelFrame'>" + all, "t t2% b8%; f t88.5% b96%"},
      {title + note + roles("footnote1='f'"), "type='labelFrame'>" + all,
       "t l1% r99% t5% b7%; f t88.5% b96%"},
      // Graphs move the edges that they have, when they are counted.
      {graph, "type='graph' count='1'><location left='1%' right='2%'/>", "g l1% t21% b87%"},
      {graph, "type='graph' count='0'>" + all, "g l1% t5% b7%"},
      {graph, "frameId='frame_data_1'>" + all, "g l5% t21% b87%"},
      {graph, "frameId='frame_data_1' count='7'>" + all, "g l1% t5% b7%"},
      {graph, "type='graph' count='2'>" + all, "g l5% t21% b87%"},
      {graph + frame("h", "t1%", "graph"), "type='graph' count='0'>" + all,
       "g l5% t21% b87%; h t1%"},
      {graph, "type='graph' count='1' styleOnly='true'>" + all, "g l5% t21% b87%"},
      {frame("c", "", "container", frame("d", "l5%", "container")),
       "type='container' count='2'>" + all, "d l1% r99% t5% b7%"},
      {frame("c", "l5%", "container"), "type='container'>" + all, "c l5%"},
      {frame("k", "l5%", "controlFrame"), "type='controlFrame' count='1'>" + all,
       "k l1% r99% t5% b7%"}};
  for (const Row& row : rows) {
    EditedChart chart(row.body);
    chart.apply("<addFrame " + row.command + "</addFrame>");
    EXPECT_EQ(placesOf(chart), row.places) << row.command << "\n" << chart.body();
    expectSound(chart.chart().AsUTF8(), row.command);
  }
}

TEST(AddFrame, MovesPagesAndLegends) {
  const ChartBase holder;
  const std::string all = "<location left='1%' right='99%' top='5%' bottom='7%'/></addFrame>";
  const std::string page = "<addFrame frameId='frame_graph_1'>" + all;
  EditedChart chart("");
  EditedChart placed("<location part='width' value='9pt'/>");
  chart.apply(page, &placed);
  EXPECT_TRUE(chart.chart().getLocations().empty());
  chart.apply(page);
  EXPECT_EQ(chart.chart().getLocations().size(), 4);
  // The third is known by its role, as the second is.
  for (const std::string number : {"2", "3"}) {
    EditedChart notes("<labelFrame id='f'/><extension footnote1='f'/>");
    notes.apply("<addFrame frameId='frame_footnote_" + number + "'><label>a</label></addFrame>");
    EXPECT_NE(notes.body().find("<extension footnote1='f' footnote" + number + "='footnote1'/>"),
              std::string::npos)
        << notes.body();
    notes.apply("<addFrame type='footnote' count='" + number + "'><label>b</label></addFrame>");
    EXPECT_EQ(notes.chart().getLabelFrames().size(), 2);
  }
  EditedChart texts("<labelFrame id='t'/><extension text1='t'/>");
  texts.apply("<addFrame type='labelFrame'><label>a</label></addFrame>");
  EXPECT_NE(texts.body().find("text1='t' text2='labelFrame1'"), std::string::npos);
  // In a container too.
  EditedChart held("<container id='c'><legend id='l'/></container><extension legend1='l'/>");
  held.apply("<addFrame frameId='frame_legend_1'>" + all);
  EXPECT_EQ(placesOf(held), "l l1% r99% t5% b7%");
}

TEST(AddFrame, StylesWhatItMeans) {
  const std::string styles =
      "<style color='red'/><style number='1' color='green'/><style number='2' color='blue'/>";
  const std::string container = "<style id='c-o-n-t-a-i-n-er'>";
  const std::string hidden = "color='transparent' color2='transparent' visible='false'";
  const std::string text = "<addFrame type='title'>" + styles + "<label>a</label></addFrame>";
  const std::string titled =
      "<labelFrame id='title1' style='style1'><location method='fixed' part='left' value='2%'/>"
      "<location method='fixed' part='right' value='98%'/><location method='fixed' part='top' "
      "value='2%'/><location method='fixed' part='bottom' value='20%'/><label style='style2' "
      "textFrameStyle='style3'><text text='a'/></label></labelFrame>" +
      container + "<style id='style1' color='red' color2='transparent'/>" +
      "<style id='style2' color='black'/><style id='style3' " + hidden +
      "/></style><extension title1='title1'/>";
  const std::string polar = "<graph><coordinates><polarTransform/></coordinates></graph>";
  const std::string page = "<addFrame frameId='frame_graph_1'>" + styles + "</addFrame>";
  const std::string graphs = "<addFrame type='graph'>" + styles + "</addFrame>";
  const std::string legend = "<addFrame type='legend'>" + styles + "</addFrame>";
  const std::string graph2 =
      "<graph cellStyle='style2' style='style1'/><graph cellStyle='style4' style='style3'>"
      "<coordinates><polarTransform/></coordinates></graph>" +
      container +
      "<style id='style1' color='red'/><style id='style2' color='green'/>"
      "<style id='style3' color='red'/><style id='style4' color='blue'/></style><extension/>";
  const std::string untouched =
      "<graph cellStyle='style2' style='style1'><coordinates><polarTransform/></coordinates>"
      "</graph>" +
      container + "<style id='style1'/><style id='style2'/></style><extension/>";
  const std::string legends =
      "<legend id='l' style='style1' tickFrameStyle='style3' tickTextStyle='style2'/>" + container +
      "<style id='style1' color='red'/><style id='style2' color='green'/>"
      "<style id='style3' color='blue'/></style><extension legend1='l'/>";
  const std::string both = "<graph/>" + polar;
  const CommandCase cases[] = {
      {"", text.c_str(), titled.c_str()},
      // The source has the title: none is added.
      {"", text.c_str(), "<extension/>", "<labelFrame id='t'/><extension title1='t'/>"},
      {both.c_str(), graphs.c_str(), graph2.c_str()},
      {polar.c_str(), "<addFrame type='graph'><style number='1' color='green'/></addFrame>",
       untouched.c_str()},
      {"<legend id='l'/><extension legend1='l'/>", legend.c_str(), legends.c_str()},
      {"<legend id='l'/>", legend.c_str(), "<legend id='l'/><extension/>"},
      {"<labelFrame id='f'/>", "<addFrame type='statisticsSummary' styleOnly='true'/>",
       "<labelFrame id='f'/>"},
      {"<labelFrame id='f'/>", "<addFrame count='2' styleOnly='true'><style/></addFrame>",
       "<labelFrame id='f'/>"}};
  expectCases(cases);
  EditedChart chart("");
  chart.apply(page);
  EXPECT_NE(chart.body().find("<style id='c-o-n-t-a-i-n-er' color='green'>"), std::string::npos);
  EXPECT_NE(chart.chart().AsUTF8().find("style=\"style1\""), std::string::npos);
}

TEST(AddFrame, WidensTheGraphBesideHiddenLegends) {
  const ChartBase holder;
  const auto after = [&](const std::string& legendEdge, const std::string& other,
                         const std::string& graphs, const std::string& styleOnly = "false") {
    EditedChart chart(graphs + frame("l", legendEdge, "legend") + other +
                      "<extension legend1='l' legend2='m'/>");
    chart.apply("<addFrame type='legend' count='1' styleOnly='" + styleOnly +
                "'><style visible='false'/></addFrame>");
    const std::string places = placesOf(chart);
    return places.substr(0, places.find(';'));
  };
  const std::string graph = frame("g", "l1% r>l", "graph");
  EXPECT_EQ(after("r99%", "", graph), "g l1% r99%");
  EXPECT_EQ(after("r99%", "", graph, "true"), "g l1% r>l");
  EXPECT_EQ(after("t99%", "", graph), "g l1% r>l");
  EXPECT_EQ(after("r99%", "<legend id='m'/>", graph), "g l1% r>l");
  EXPECT_EQ(after("r99%", "<legend id='m' style='s'/><style id='s' visible='false'/>", graph),
            "g l1% r99%");
  EXPECT_EQ(after("r99%", "", graph + "<graph/>"), "g l1% r>l");
  EXPECT_EQ(after("r99%", "", frame("g", "l1%", "graph")), "g l1%");
  EXPECT_EQ(after("r99%", "", frame("g", "r80%", "graph")), "g r99%");
  EXPECT_EQ(after("r70%", "", frame("g", "r80%", "graph")), "g r80%");
  // A text in the same column would lose its place, unless it is hidden too.
  EXPECT_EQ(after("r99%", frame("t", "l>g r99%", "labelFrame"), graph), "g l1% r>l");
  EXPECT_EQ(after("r99%", frame("c", "l>g", "container"), graph), "g l1% r>l");
  EXPECT_EQ(after("r99%", frame("t", "r>g", "labelFrame"), graph), "g l1% r99%");
  EXPECT_EQ(after("r99%",
                  "<labelFrame id='t' style='s'><location part='left' method='attach' target='g'/>"
                  "</labelFrame><style id='s' visible='false'/>",
                  graph),
            "g l1% r99%");
}

TEST(HideFrame, HidesByKindAndPosition) {
  const ChartBase holder;
  const std::string body =
      "<labelFrame id='t'/><labelFrame id='u'/><labelFrame id='f'/><labelFrame id='k'/>"
      "<labelFrame id='s'/><labelFrame id='frame_statistics_summary7'/><legend id='l'/>"
      "<container id='c'><container id='d'/><graph id='g'/>"
      "<labelFrame id='frame_statistics_summary8'/></container><graph id='h'/>"
      "<extension title1='t' subtitle='u' footnote1='f' legend1='l' statisticsSummary1='s'/>";
  const std::pair<const char*, const char*> rows[] = {
      {"type='title' count='1'", "t "},
      {"type='title'", ""},
      {"type='title' count='2'", ""},
      {"type='subtitle' count='-1'", "u "},
      {"type='footnote' count='1'", "f "},
      {"type='legend' count='1'", "l "},
      {"type='legend'", ""},
      {"type='statisticsSummary' count='1'",
       "s frame_statistics_summary7 frame_statistics_summary8 "},
      {"type='statisticsSummary' count='-1'",
       "frame_statistics_summary7 frame_statistics_summary8 "},
      {"type='graph' count='2'", "h "},
      {"type='graph' count='2' graph='1'", ""},
      {"type='graph'", ""},
      {"type='labelFrame'", "k s frame_statistics_summary7 "},
      {"type='labelFrame' count='1'", "k "},
      {"type='labelFrame' count='-1'", ""},
      {"type='container'", "c d "},
      {"type='container' count='2'", "d "},
      {"type='container' count='3'", ""},
      {"type='Title' count='1'", ""}};
  for (const auto& [attributes, hidden] : rows) {
    EditedChart chart(body);
    EXPECT_FALSE(chart.apply("<bogus/><hideFrame " + std::string(attributes) + "/>"));
    std::string ids;
    walkElements(chart.chart().getImplementation(), [&](const DOMElement* element) {
      const PlXStyle* style = chart.chart().getStyleById(element->getAttribute(u"style"));
      const bool isHidden = style && !style->getVisible();
      if (isHidden) ids += ChartString(element->getAttribute(u"id")).toUTF8() + " ";
      return true;
    });
    EXPECT_EQ(ids, hidden) << attributes;
  }
}

TEST(HistogramSummary, DescribesEachHistogram) {
  const ChartBase holder;
  const std::string count = "<summaryStatistic method='count'/>";
  const auto histogram = [&](const std::string& id, const std::string& rest = "") {
    return "<graph><coordinates><dimension><axis><label><text text='Size '/><text text='of " + id +
           "'/></label></axis></dimension></coordinates>" + rest + "<interval id='" + id +
           "'><x variable='v" + id + "'/><binStatistic/>" + count + "</interval></graph>";
  };
  const auto variable = [](const std::string& id, const std::string& format) {
    return "<sourceVariable id='v" + id + "'>" + format + "</sourceVariable>";
  };
  const auto added = [](const std::string& body, const char* source = nullptr) {
    EditedChart chart(body);
    EXPECT_EQ(chart.apply("<bogus/><addHistogramSummaryFrame/>"), source == nullptr);
    const std::string text = chart.body();
    std::smatch frames;
    const bool has =
        std::regex_search(text, frames, std::regex("(<container.*|<labelFrame.*)<ext"));
    return has ? frames.str(1) : "";
  };
  const auto summary = [](const std::string& id, const std::string& heading,
                          const std::string& mean, const std::string& deviation) {
    return heading + "<descriptionGroup separator='&#xA; &#xA;' target='" + id +
           "'><description name='group'/><text text='&#xA;Mean = '/><description name='mean'>"
           "<format " +
           mean + "/></description><text text='&#xA;Std. Dev. = '/>" +
           "<description name='standardDeviation'><format " + deviation +
           "/></description><text text='&#xA;N = '/><description name='count'/>"
           "</descriptionGroup></label></labelFrame>";
  };
  const std::string first = "<labelFrame id='frame_statistics_summary1'><label>";
  const std::string plain = added(variable("a", "") + histogram("a"));
  EXPECT_EQ(plain,
            first + summary("a", "", "maximumFractionDigits='2'", "maximumFractionDigits='3'"));
  EXPECT_EQ(added(variable("a", "<format id='f' maximumFractionDigits='15' prefix='p'/>") +
                  histogram("a")),
            first + summary("a", "", "maximumFractionDigits='16' prefix='p'",
                            "maximumFractionDigits='16' prefix='p'"));
  EXPECT_EQ(added(variable("a", "<format baseFormat='date'/>") + histogram("a")),
            first + summary("a", "", "baseFormat='date' maximumFractionDigits='2'",
                            "scalingFactor='86400' suffix=' days'"));
  const std::string two =
      added(variable("a", "") + variable("b", "") + histogram("a") + histogram("b"));
  EXPECT_TRUE(two.starts_with("<container id='container_1'>" + first + "<text text='Size of a'/>"))
      << two;
  EXPECT_NE(two.find("<text text='Size of b'/>"), std::string::npos);
  EXPECT_EQ(added(variable("a", "") + histogram("a", "<faceting/>")), "");
  // One graph has no headings, and its other elements no summary.
  EXPECT_EQ(added(variable("a", "") + histogram("a", "<interval id='b'>" + count + "</interval>")),
            plain);
  EditedChart again(variable("a", "") + histogram("a") +
                    "<labelFrame id='s'/><extension statisticsSummary1='s'/>");
  again.apply("<addHistogramSummaryFrame/>");
  EXPECT_NE(again.body().find("statisticsSummary2='frame_statistics_summary1'"), std::string::npos);
  EXPECT_EQ(
      added(variable("a", "") + histogram("a") + "<extension histogramStatistic='none'/>", "false"),
      "");
}

}  // namespace
