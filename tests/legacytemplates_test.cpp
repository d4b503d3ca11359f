// Older templates: what each step of their conversion writes, how they are read, and that charts
// are edited by them as by what says the same in today's language.
#include <gtest/gtest.h>

#include <functional>
#include <regex>

#include "chartexception.h"
#include "charttemplate.h"
#include "charttransformer.h"
#include "commandcases.h"
#include "commandschema.h"
#include "legacytemplateconverter.h"
#include "testplaces.h"

using namespace xercesc;

namespace {

const std::string olderFolder = CHARTXML_EXAMPLES "/templates/older/";

std::string graph(const std::string& body) {
  return "<graph>" + body + "</graph>";
}

// The commands, without the root and what lays them out.
std::string commandsOf(const std::string& converted) {
  std::string text = std::regex_replace(converted, std::regex(">\\n *<"), "><");
  std::replace(text.begin(), text.end(), '"', '\'');
  const std::size_t start = text.find('>', text.find("<template")) + 1;
  const std::size_t end = text.find("</template>");
  return end == text.npos ? "" : text.substr(start, end - start);
}

// What the commands' schema doesn't know of an element below the root.
void findUnknown(const CommandSchema& schema, const DOMElement* element, std::string& unknown) {
  const std::string name = ChartString(element->getNodeName()).toUTF8();
  const SchemaElement* known = schema.find(name);
  if (!known) {
    unknown += name + ' ';
    return;
  }
  const DOMNamedNodeMap* attributes = element->getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const std::string each = ChartString(attributes->item(i)->getNodeName()).toUTF8();
    if (!known->attributes.contains(each)) unknown += name + '@' + each + ' ';
  }
  for (const auto& [where, names, isWithout] : known->needs) {
    if (!where.name.empty() || !isWithout) continue;
    if (std::ranges::none_of(names, [&](const std::string& each) {
          return *element->getAttribute(ChartString(each.c_str()).xc_str()) ||
                 ChartBase::getChildByTagName(element, ChartString(each.c_str()).xc_str());
        })) {
      unknown += name + " without " + names[0] + ' ';
    }
  }
  for (const DOMElement* child = firstElement(element); child; child = nextElement(child)) {
    const std::string each = ChartString(child->getNodeName()).toUTF8();
    if (!known->children.contains(each)) unknown += name + '/' + each + ' ';
    findUnknown(schema, child, unknown);
  }
}

// In the order of the steps: what is there, and the commands.
constexpr const char* stepRows = R"(
<frame id='f'><frame id='frame_title_1' style='s'><location left='1%' top='2%'/><label style='t'>A
 <![CDATA[B]]></label></frame></frame><style id='s' value='color:red'/><style id='t' value='size:1'><style value='no'/><glyph sides='5'>no text</glyph></style> |
 <addFrame frameId='frame_title_1' parentFrameId='f'><location left='1%' top='2%'/><style value='color:red'/><label>A B<style value='size:1'><glyph sides='5'/></style></label></addFrame>
<frame id='f'><label>None without a place</label></frame> |
<frame id='f'><location/><label style='f'/></frame> | <addFrame frameId='f'><location/></addFrame>
<guide type='line' style='s'><parameter name='x' value='A'/><parameter name='z' value='2'/></guide><style id='s'/><x variable='v'/><variable id='v' categorical='true'/> |
 <addReferenceLine><parameter categorical='true' name='x' value='A'/><style/></addReferenceLine>
<guide type='line'><parameter name='z' value='2'/></guide><guide type='line'><parameter name='q' value='2'/></guide><guide type='line'/> |
<guide type='line'><parameter name='y' value='1'/></guide><y variable='v'/><variable id='v'/><facetvariable role='y' variable='c'/><variable id='c' categorical='true'/> |
 <addReferenceLine><parameter categorical='true' name='y' value='1'/></addReferenceLine>
<guide type='point'><label>Here</label><parameter name='x' value='1'/><parameter name='y' value='2'/></guide><variable categorical='true'/> |
 <addAnchoredAnnotation><label>Here</label><parameter categorical='true' name='x' value='1'/><parameter categorical='false' name='y' value='2'/></addAnchoredAnnotation>
<guide type='point'><label>Here</label><parameter name='y' value='1'/><parameter name='z' value='2'/></guide><guide type='point'><label>Here</label><parameter name='x'/><parameter name='y'/><parameter name='z'/></guide><guide type='point'><label/><parameter name='x'/><parameter name='y'/></guide> |
<element type='line' style='s'><styleby/><statistic method='smooth'><parameter name='degree' value='0'/><parameter name='degree' value='3'/><parameter name='alpha' value='.9'/><parameter name='predictIndividuals' value='true'/></statistic></element><style id='s' value='stroke:red'/> |
 <addFitLine primary='true' target='subgroup' type='mean'><confidenceInterval alpha='.9' predictIndividuals='true'/><style value='stroke:red'/></addFitLine>
<element type='line'><statistic method='region'><parameter name='degree' value='0'/><parameter name='model' value='loess'/><parameter name='kernel' value='k'/><parameter name='proportion' value='.5'/><parameter name='alpha' value='.9'/></statistic></element> |
 <addFitLine kernel='k' primary='true' proportion='.5' target='pair' type='loess'/>
<element type='line'><statistic method='smooth'/><statistic method='mean'/></element><element type='point'><statistic method='smooth'/></element> |
 <addFitLine primary='true' target='pair' type='linear'/>
<element style='s'><y><statistic method='distribution'/></y></element><style id='s'/> | <addHistogramNormalLine><style/></addHistogramNormalLine>
<element type='line' style='s'/><style id='s'><interpolation type='step' missingRepresentation='gap'><parameter value='left'/></interpolation></style><style id='t'><interpolation/></style> |
 <addInterpolationLine><interpolation missingRepresentation='gap' pointPosition='left' primary='true' type='step'/></addInterpolationLine>
<dimension role='x'><label>Share</label><axis style='s'><transform method='ratio'><parameter name='base-ratio' value='2'/></transform><majorticks base='1' delta='2' markStyle='s' tickLabelStyle='none'/><minorticks number='3'/></axis></dimension><style id='s'/> |
 <addDerivedAxis role='x'><label>Share</label><majorticks base='1' categorical='false' delta='2' derived='true' role='x'><markStyle><style/></markStyle><tickLabelStyle/></majorticks><minorticks categorical='false' derived='true' number='3' role='x'/><transform method='ratio'><parameter name='base-ratio' value='2'/></transform><style/></addDerivedAxis>
 <setAxisMajorTicks><majorticks base='1' categorical='false' delta='2' derived='true' role='x'><markStyle><style/></markStyle><tickLabelStyle/></majorticks></setAxisMajorTicks>
 <setAxisMinorTicks><minorticks categorical='false' derived='true' number='3' role='x'/></setAxisMinorTicks>
<dimension role='z'/><element type='interval'/><coordinatetransform><parameter name='distance' value='2.25'/><parameter name='theta' value='2.25'/></coordinatetransform><coordinatetransform><parameter/></coordinatetransform><z location='.5'/> |
 <addBarEffects><parameter name='distance' value='3.3'/><parameter name='theta' value='2.25'/><z location='.5'/></addBarEffects>
<facetvariable role='z'/><element style='s'><theta/></element><coordinatetransform><parameter name='distance' value='10'/></coordinatetransform><coordinatetransform><parameter name='phi' value='1'/></coordinatetransform><z/><style id='s' value='depth:9%'/> |
 <addPieEffects depth='9%'><parameter name='distance' value='15'/><parameter name='phi' value='1'/></addPieEffects>
<style value='shadow-dx:1px'/><style value='shadow-dx:2px;shadow-dy:3px'/><style value='shadow-dx:4px;shadow-dy:5px'/> | <addShadow shadow-dx='2px' shadow-dy='3px'/>
<element><labeling style='t'/><statistic method='tukeyOutliers'/><statistic method='tukeyExtremes'/></element><element><labeling style='s'/></element><style id='t' value='color:blue'/><style id='s' value='label-location-y:center;color:red;label-location-inside:true;visibility:hidden'/> |
 <addDataLabels hidden='true' position='label-location-y:center'><style value='color:red;label-location-inside:true;visibility:hidden'/></addDataLabels>
<element><labeling/><statistic method='tukeyOutliers'/><statistic method='tukeyExtremes'/></element><element><labeling><styleby/></labeling><statistic method='tukeyOutliers'/><statistic method='tukeyExtremes'/></element><element/> |
 <addDataLabels colorByMarker='true'/>
<element><labeling/><statistic method='tukeyOutliers'/></element> |
<dimension role='x'><scale method='log' origin='1'><parameter name='base' value='2'/></scale></dimension><dimension><scale/></dimension><scale/> |
 <setAxisScale method='log' origin='1' role='x'><parameter name='base' value='2'/></setAxisScale><setAxisScale role='y'/>
<domain id='d'><interval min='1' max='9'/></domain><dimension role='y' domain='d' lowerMapping='exact'/><dimension role='q' domain='d'/><domain><interval min='2'/></domain><dimension role='x'/> |
 <setAxisInterval lowerMapping='exact' max='9' min='1' role='y'/>
<dimension role='x' domain='d' lowerMargin='5%' upperMapping='exact'/><domain id='d' categorical='true'/><dimension role='y' lowerMapping='exact'/><dimension upperMargin='1%'/> |
 <setAxisMargin categorical='true' lowerMargin='5%' role='x' upperMapping='exact'/>
<dimension role='x'><axis opposite='true'/><axis opposite='true'><transform/></axis></dimension><axis opposite='true'/><dimension role='q'><axis><transform/></axis></dimension> |
 <addDerivedAxis role='x'><transform method=''/></addDerivedAxis><setAxisOpposite categorical='false' opposite='true' role='x'/>
<dimension role='x'><axis baselineStyle='s'><label style='s'/><transform/></axis></dimension><dimension role='y'><axis><label style='s'/></axis></dimension><style id='s'/> |
 <addDerivedAxis role='x'><transform method=''/></addDerivedAxis><setAxisStyle categorical='false' derived='true' role='x'><style/><axisLabelStyle><style/></axisLabelStyle></setAxisStyle><setAxisStyle categorical='false' role='y'><axisLabelStyle><style/></axisLabelStyle></setAxisStyle>
<dimension role='y'><axis><label style='s'>Share</label></axis><axis><label>
  </label></axis><axis><label style='none'>A<b/>B</label></axis></dimension><style id='s' value='size:1'/> |
 <setAxisStyle categorical='false' role='y'><label>Share</label><axisLabelStyle><style value='size:1'/></axisLabelStyle></setAxisStyle><setAxisStyle categorical='false' role='y'><label>AB</label></setAxisStyle>
<frame><facetlabeling><facetlabel><axis><majorticks><gridlines facetstyle='s' style='t'/><stringformat prefix='a'/><numberformat prefix='b'/></majorticks><minorticks><gridlines/></minorticks></axis></facetlabel></facetlabeling><facetvariable role='x'/><dimension role='x'/><x variable='v'/></frame><variable id='v' categorical='true'/><style id='s'/><style id='t' value='color:red'/> |
 <setAxisMajorTicks><majorticks categorical='true' role='x'><gridlines><style/><style value='color:red'/></gridlines><numberformat prefix='b'/></majorticks></setAxisMajorTicks><setAxisMinorTicks><minorticks categorical='true' role='x'><gridlines/></minorticks></setAxisMinorTicks>
<element type='interval' positionModifier='stack'><y><statistic method='fraction'/></y></element><element type='interval'><statistic method='fraction'/></element> | <setScaleByFraction/>
<coordinatefacet><facetvariable gap='20%'/></coordinatefacet><coordinatefacet><facetvariable gap='30%'/></coordinatefacet> | <setClusterWidth gap='20%'/>
<domain><aggregatesmall minFraction='.1' category='c'/><relabel from='c' to='First'/><relabel from='c' to='Last'/><relabel from='d' to='Other'/></domain> | <setCollapse categoryName='Last' minFraction='.1' role='x'/>
<aggregatesmall category='c'/><aggregatesmall category='d'/> | <setCollapse categoryName='c' minFraction='' role='x'/>
<dimension role='y'><axis><transform/><majorticks labelangle='45' labelFrequency='2'/></axis><axis><majorticks/></axis></dimension> |
 <addDerivedAxis role='y'><majorticks categorical='false' derived='true' role='y'/><transform method=''/></addDerivedAxis><setAxisMajorTicks><majorticks categorical='false' derived='true' role='y'/></setAxisMajorTicks><setAxisMajorTicks><majorticks categorical='false' role='y'/></setAxisMajorTicks>
 <setTickLabelAngle categorical='false' derived='false' labelangle='45' role='y'/><setTickLabelFrequency categorical='false' derived='false' labelFrequency='2' role='y'/>
<statistic method='histogram'><parameter name='bin-count' value='5' id='p' a:b='no'/></statistic> | <setHistogramBinning><parameter id='p' name='bin-count' value='5'/></setHistogramBinning>
<style id='frame_legend_2s' value='visibility:hidden'/><style id='frame_footnote_1s' value='visibility:false'/><style id='frame_graph_1s' value='visibility:hidden'/><style id='my_frame1' value='visibility:hidden'/><style id='frame_subtitle_1s' value='visibility:hidden'/> |
 <hideFrame count='2' frameId='frame_legend_2' type='legend'/><hideFrame frameId='frame_subtitle_1' type='subtitle'/>
<dimension role='z'/><guide type='plane' style='s'><parameter value='x'/></guide><guide type='plane'/><style id='s' value='color:red'/> | <setBackPlane><plane role='x'><style value='color:red'/></plane><plane role=''/></setBackPlane>
<guide type='plane'><parameter value='x'/></guide> |
<style id='c-o-n-t-a-i-n-er' value='size:1'><style id='a' value='size:2'><style id='b'/></style><style/></style> |
 <setStyle id='c-o-n-t-a-i-n-er'><style value='size:1'/></setStyle><setStyle id='a'><style value='size:2'/></setStyle><setStyle id='b'><style/></setStyle>
<any id='styleCycleRepository'><cycle><style value='a:1'/><style value='a:2'/></cycle><cycle/></any><any id='styleCycleDefault'><cycle/></any> |
 <setStyleCycle id='styleCycleDefault'><cycle/></setStyleCycle><setStyleCycle id='styleCycleRepository'><cycle><style value='a:1'/><style value='a:2'/></cycle><cycle/></setStyleCycle>
<element type='point'><position/><position><statistic method='bin'><parameter name='grid' value='hex'/></statistic></position><position><statistic method='bin'/></position></element><element type='point'><position><statistic method='bin'/></position><size/></element><element type='line'><position><statistic method='bin'/></position></element> |
 <setScatterplotBinning size='true'/><setScatterplotBinning size='false'><parameter name='grid' value='hex'/></setScatterplotBinning>
)";

TEST(LegacyTemplate, IsConvertedStepByStep) {
  const ChartBase holder;
  const CommandSchema schema;
  EditedChart chart("");
  for (const std::vector<std::string>& row : rowsOf(stepRows)) {
    const std::string old = row[0].ends_with(" |") ? row[0].substr(0, row[0].size() - 2) : row[0];
    const auto conversion = ChartTemplate::convertOlder(graph(old));
    ASSERT_TRUE(conversion) << old;
    EXPECT_EQ(commandsOf(conversion->text), row.size() > 1 ? row[1] : "") << old;
    // Nothing in it is passed over.
    ChartTemplate commands(chart.chart(), nullptr);
    const DOMElement* root = commands.parseTemplate(conversion->text);
    ASSERT_NE(root, nullptr) << conversion->text;
    std::string unknown;
    for (const DOMElement* each = firstElement(root); each; each = nextElement(each)) {
      findUnknown(schema, each, unknown);
    }
    EXPECT_EQ(unknown, old.find("id='p'") == old.npos ? "" : "parameter@id ") << old;
  }
}

TEST(LegacyTemplate, GrowsDistancesByHalf) {
  const ChartBase holder;
  const std::pair<const char*, const char*> distances[] = {
      {"2.25", "3.3"}, {"10", "15"}, {"0.1", "0.15"}, {"2.", "3"},   {"7pt", "10.5"},
      {"-3", "-3"},    {"", ""},     {".5", ".5"},    {"1e3", "1.5"}};
  for (const auto& [old, grown] : distances) {
    const auto conversion = ChartTemplate::convertOlder(
        graph("<dimension role='z'/><element type='interval'/><coordinatetransform><parameter "
              "name='distance' value='" +
              std::string(old) + "'/></coordinatetransform><z/>"));
    EXPECT_EQ(commandsOf(conversion->text), "<addBarEffects><parameter name='distance' value='" +
                                                std::string(grown) + "'/></addBarEffects>");
  }
}

TEST(LegacyTemplate, OfNothingHasNoCommands) {
  const ChartBase holder;
  const LogFolder folder("0001");
  for (int i = 0; i < 2; ++i) {
    const std::string text = LegacyTemplateConverter(nullptr).convert();
    EXPECT_NE(text.find("/grafo-template-1.0.xsd"), text.npos);
    EXPECT_EQ(commandsOf(text), "");
    EXPECT_FALSE(ChartTemplate::isOlder(text));
  }
  // Numbered one after the other.
  EXPECT_EQ(folder.files().size(), 2U);
}

// Of elements by their position, with what is left out of one.
std::string leftOutOf(const std::string& old) {
  std::string text;
  const auto conversion = ChartTemplate::convertOlder(graph(old));
  for (const auto& [element, attribute] : conversion->leftOut) {
    text += std::to_string(element) + attribute.toUTF8() + ' ';
  }
  return text;
}

TEST(LegacyTemplate, TellsWhatItLeavesOut) {
  const ChartBase holder;
  const std::pair<const char*, const char*> cases[] = {
      {"<frame id='f' name='n'><location top='1%' middle='2%'/></frame>", "1name 2middle "},
      {"<frame><label><a/></label></frame><frame><location/></frame>", "1 "},
      {"<dimension role='x' reverse='true'><scale><parameter any='1'/></scale></dimension>",
       "1reverse "},
      // What questions ask is no loss, but an element is for which there is no command.
      {"<variable id='v' categorical='true' name='n'/><element type='interval'><x "
       "variable='v'/></element><scale/>",
       "0 "},
      {"<guide type='line'><parameter name='x'/><parameter name='z'/></guide><legend><a/></legend>",
       "3 4 "},
      {"<style value='shadow-dx:1px;shadow-dy:1px' color='red' xmlns:a='urn:a' a:b='c'/>",
       "1color "},
      // Each is there for the other alone.
      {"<element type='line'><statistic method='smooth'><parameter name='alpha' value='.9'/>"
       "</statistic></element>",
       "3 "},
      {"<element type='line'><statistic method='smooth'><parameter name='alpha' value='.9'/>"
       "<parameter name='predictIndividuals' value='true'/></statistic></element>",
       ""},
      // Links that lead nowhere.
      {"<frame style='s'><location/></frame><dimension role='x'><axis><majorticks markStyle='t' "
       "delta='1'/></axis></dimension>",
       "1style 5markStyle "},
      // What makes labels those of outliers.
      {"<element><labeling/><statistic method='tukeyOutliers'/><statistic method='tukeyExtremes'/>"
       "<statistic method='other'/></element>",
       "5 "},
      {"<element><labeling/><statistic method='tukeyOutliers'/></element>", "0 "},
      {"<dimension role='x'><axis><label>Share</label><label>Other</label></axis></dimension>",
       "4 "},
  };
  for (const auto& [old, expected] : cases) EXPECT_EQ(leftOutOf(old), expected) << old;
}

// ---- reading

std::string withDeclarations(const std::string& declarations, const std::string& body) {
  return "<!DOCTYPE graph " + declarations + ">" + graph(body);
}

TEST(LegacyTemplate, NeedBeNoMoreThanWellFormed) {
  const ChartBase holder;
  const std::string body = "<frame id='frame_title_1' style='s'><location/></frame><style id='s'/>";
  const std::string schema =
      "xmlns='" CHARTXML_HOST
      "/visualization' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
      "xsi:schemaLocation='" CHARTXML_HOST "/visualization ";
  const std::string texts[] = {
      graph(body),
      "\xEF\xBB\xBF<?xml version='1.1'?>" + graph(body),
      withDeclarations("SYSTEM 'http://xml.tavo.example/dtd/chartXML20.dtd'", body),
      withDeclarations("SYSTEM 'http://nowhere.example/lost.dtd'", body + "&lost;"),
      withDeclarations(
          "[<!ELEMENT graph (lost)><!ENTITY % p SYSTEM 'http://nowhere.example/p'>%p;]", body),
      withDeclarations("[<!ENTITY e SYSTEM 'file:///etc/passwd'>]", "&e;" + body),
      "<graph " + schema + CHARTXML_HOST "/visualization/grafo-1.4.xsd'>" + body + "</graph>",
      "<graph " + schema + "http://nowhere.example/lost.xsd'>" + body +
          "<a><b c='&#9;'/></a></graph>",
      "<a:b c:d='e'>" + body + "<style id='s' value='color:red'/></a:b>",
  };
  const std::string expected = "<addFrame frameId='frame_title_1'><location/><style/></addFrame>";
  EditedChart chart("");
  for (const std::string& text : texts) {
    const auto conversion = ChartTemplate::convertOlder(text);
    ASSERT_TRUE(conversion) << text;
    EXPECT_EQ(commandsOf(conversion->text), expected) << text;
    EXPECT_NE(ChartTemplate(chart.chart(), nullptr).parseTemplate(text), nullptr);
  }
  // What names one of ours is read at once, without a word in the log.
  const LogFolder folder;
  ChartTemplate::convertOlder(texts[2]);
  ChartTemplate::convertOlder(texts[6]);
  ChartTemplate::convertOlder(readFile(olderFolder + "bars.xml"));
  EXPECT_EQ(folder.log(), "");
}

TEST(LegacyTemplate, DoesntMakeItsTextsRefused) {
  const ChartBase holder;
  // Texts, prefixes and names that today's language has no place for.
  const auto conversion = ChartTemplate::convertOlder(
      "<?xml version='1.1'?><graph><style id='c-o-n-t-a-i-n-er' value='&#1;'>text<glyph "
      "xsi:type='q' "
      "xmlns='urn:a' a:b='c'>text<p:q/><label>t<style/></label></glyph></style></graph>");
  ASSERT_TRUE(conversion);
  EXPECT_EQ(commandsOf(conversion->text),
            "<setStyle id='c-o-n-t-a-i-n-er'><style value='\xEF\xBF\xBD'><glyph><label><style/>"
            "</label></glyph></style></setStyle>");
  EditedChart chart("");
  EXPECT_NE(ChartTemplate(chart.chart(), nullptr).parseTemplate(conversion->text), nullptr);
}

std::string nested(const std::string& tag, int levels, const std::string& body) {
  std::string text;
  for (int i = 0; i < levels; ++i) text += "<" + tag + ">";
  text += body;
  for (int i = 0; i < levels; ++i) text += "</" + tag.substr(0, tag.find(' ')) + ">";
  return text;
}

std::string entities(const std::string& mark) {
  std::string text = "<!ENTITY " + mark + "e0 'lolol'>";
  for (int i = 1; i < 30; ++i) {
    const std::string inner = (mark.empty() ? "&e" : "&#37;e") + std::to_string(i - 1) + ";";
    text += "<!ENTITY " + mark + "e" + std::to_string(i) + " '" + inner + inner + "'>";
  }
  return text;
}

TEST(LegacyTemplate, IsRefusedWhenItIsHostile) {
  const ChartBase holder;
  const std::string parameters = [] {
    std::string text;
    for (int i = 0; i < 3000; ++i) text += "<parameter name='p'/>";
    return text;
  }();
  const std::string texts[] = {"",
                               "text",
                               "<graph>",
                               graph("<a></b>"),
                               withDeclarations("[" + entities("") + "]", "&e29;"),
                               withDeclarations("[" + entities("% ") + "%e29;]", ""),
                               graph(nested("a", 5000, ""))};
  EditedChart chart("");
  for (const std::string& text : texts) {
    EXPECT_FALSE(ChartTemplate::convertOlder(text)) << text.substr(0, 60);
    EXPECT_EQ(ChartTemplate(chart.chart(), nullptr).parseTemplate(text), nullptr);
  }
  // Says the same parameters in each of many elements that lie in each other.
  const std::string growing = graph(nested("statistic method='histogram'", 4000, parameters));
  EXPECT_THROW(ChartTemplate::convertOlder(growing), ChartException);
  EXPECT_THROW(ChartTemplate(chart.chart(), nullptr).setTemplate(growing), ChartException);
  const std::string deep = graph(nested("frame", 4000, "<location/>"));
  EXPECT_EQ(ChartTemplate::convertOlder(deep)->commandCount, 1U);
}

TEST(LegacyTemplate, IsReadWholeOrNotAtAll) {
  const ChartBase holder;
  for (const char* name : {"bars.xml", "bars-3d.xml", "scatter.xml"}) {
    const std::string text = readFile(olderFolder + name);
    const std::size_t end = text.rfind('>');
    for (std::size_t cut = 0; cut <= end; cut += 10) {
      EXPECT_FALSE(ChartTemplate::convertOlder(text.substr(0, cut))) << name << cut;
    }
  }
}

// ---- applying

TEST(LegacyTemplate, EditsAsItsEqualOfToday) {
  const ChartBase holder;
  const std::regex today("(@@current_date@@)");
  for (const std::string name : {"bars", "bars-3d", "scatter"}) {
    const std::string older = readFile(olderFolder + name + ".xml");
    const std::string newer = readFile(olderFolder + name + "-today.xml");
    std::size_t changed = 0;
    for (const std::string& file : exampleFiles()) {
      const std::string text = readFile(file);
      ChartTransformer byOlder(text);
      ChartTransformer byNewer(text);
      const std::string before = byOlder.getXML(nullptr);
      EXPECT_TRUE(byOlder.applyTemplate(older));
      EXPECT_TRUE(byNewer.applyTemplate(newer));
      const std::string after = byOlder.getXML(nullptr);
      EXPECT_EQ(after, byNewer.getXML(nullptr)) << name << file;
      expectSound(after, name + file);
      changed += after != before;
    }
    EXPECT_GT(changed, 10U) << name;
  }
}

TEST(LegacyTemplate, IsReadByCommandsAsItIsWritten) {
  const ChartBase holder;
  const std::string ticks =
      "<graph><coordinates><dimension id='d'><axis><majorTicks markStyle='m'/>"
      "</axis></dimension></coordinates></graph><style id='m'/>";
  const std::string role = "<setAxisMajorTicks><majorticks role='x'>";
  const std::string end = "</majorticks></setAxisMajorTicks>";
  const std::pair<std::string, std::string> cases[] = {
      {role + "<gridlines><style color='red'/><style color='blue'/></gridlines>" + end,
       role + "<gridLines><style color='blue'/></gridLines>" + end},
      {role + "<numberformat prefix='a'/>" + end, role + "<numberFormat prefix='a'/>" + end},
      {role + "<stringformat prefix='a'/>" + end, role + "<stringFormat prefix='a'/>" + end},
      {role + "<datetimeformat><dateFormat><era/></dateFormat></datetimeformat>" + end,
       role + "<dateTimeFormat><dateFormat><era/></dateFormat></dateTimeFormat>" + end},
      {"<setTickLabelAngle role='x' labelangle='30'/>",
       "<setTickLabelAngle role='x' labelAngle='30'/>"},
  };
  for (const auto& [written, today] : cases) {
    EditedChart a(ticks);
    EditedChart b(ticks);
    a.apply(written);
    b.apply(today);
    EXPECT_EQ(a.body(), b.body()) << written;
    EXPECT_NE(a.body(), EditedChart(ticks).body()) << written;
  }
}

}  // namespace
