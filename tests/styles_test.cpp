// Style texts, and the import of style elements.
#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <random>

#include "basetemplate.h"
#include "chartstylevalue.h"
#include "commandcases.h"
#include "plxstyle.h"
#include "plxstylecycle.h"

namespace {

std::string rewritten(const ChartString& text) {
  return ChartStyleValue(text.xc_str()).getValue().toUTF8();
}

TEST(StyleText, KeepsTheLastValueOfEachKey) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"color:red;color:blue", "color:blue"},
      {";;color::red;;", "color:red"},
      {"fill:url:x", "fill:x"},
      {"foo:1;color:red;bar:2;foo:3", "color:red;foo:1;bar:2;foo:3"},
      {" color:red;color: red", "color: red; color:red"},
      {"stroke-dasharray:4 2;stroke-dasharray:none", ""},
      {"symbol:none;stroke-linecap:none", "stroke-linecap:none;symbol:none"},
      {"shadow-opacity:1", "shadow-opacity:1"},
      {"color:red;color;size:3;size:", ""},
      {"foo;:;::;bar:", "foo:;bar:"},
      {"Color:red;colo:1;color22:1", "Color:red;colo:1;color22:1"}};
  for (const auto& [text, value] : cases) EXPECT_EQ(rewritten(text), value) << text;
}

TEST(StyleText, IsWrittenInOneOrder) {
  const std::string all =
      "border-left:1;border-right:2;border-top:3;border-bottom:4;depth:5;fill-pattern:6;fill:7;"
      "color:8;color2:9;font-family:10;font-style:11;font-size:12;font-weight:13;"
      "label-location-inside:14;label-location-x:15;label-location-y:16;margin:17;max-width:18;"
      "padding:19;shadow:20;shadow-dx:21;shadow-dy:22;shadow-opacity:23;stroke:24;"
      "stroke-dasharray:25;stroke-linecap:26;stroke-width:27;visibility:28;width:29;text-fit:30;"
      "min-font-size:31;size:32;symbol:33;glyph-sides:34;glyph-angle:35;glyph-aspect:36;other:37";
  std::istringstream list(all);
  std::string backwards;
  for (std::string pair; std::getline(list, pair, ';');) backwards = pair + ";" + backwards;
  EXPECT_EQ(rewritten(backwards.c_str()), all);
}

TEST(StyleText, AddsUpAndComesBack) {
  ChartStyleValue value(u"color:red;foo:1");
  value.initialize(u"size:3;bar:2");
  value.initialize(nullptr);
  EXPECT_EQ(value.getValue().toUTF8(), "color:red;size:3;foo:1;bar:2");

  std::mt19937 random(2);
  const std::string parts[] = {"color", "size", "x", ":", ";", " ", "none", "stroke-dasharray",
                               "Ü"};
  for (int i = 0; i < 2000; ++i) {
    std::string text;
    for (int j = 0; j < 20; ++j) text += parts[random() % std::size(parts)];
    const std::string once = rewritten(text.c_str());
    EXPECT_EQ(rewritten(once.c_str()), once) << text;
  }
}

// ---- import
std::vector<std::string> words(const std::string& text) {
  std::istringstream list(text);
  return {std::istream_iterator<std::string>(list), {}};
}

const std::string withoutKey =
    "background-image background-method bevel-size depthRelativeToWidth fill-opacity "
    "gradient-angle gradient-color gradient-focus gradient-isInverted gradient-method "
    "gradient-opacity gradient-size labelAngle margin-bottom margin-left margin-right margin-top "
    "maxAttachedTextHeight maxAttachedTextWidth opacity opacity2 padding-bottom padding-left "
    "padding-right padding-top stroke-decoration stroke-opacity textAlignment";
const std::string sameKey =
    "border-bottom border-left border-right border-top color color2 depth font-family font-size "
    "font-style font-weight glyph-angle glyph-aspect glyph-sides margin padding shadow-dx "
    "shadow-dy shadow-opacity size stroke-dasharray stroke-linecap stroke-width symbol text-fit "
    "width";
const std::pair<const char*, const char*> otherKeys[] = {
    {"label-location-inside", "labelInside"},
    {"label-location-x", "labelLocationHorizontal"},
    {"label-location-y", "labelLocationVertical"},
    {"fill-pattern", "pattern"},
    {"shadow", "shadow-color"},
    {"visibility", "visible"}};

// A property: its attribute with a text, and its key with another one and what that is written as.
struct Sample {
  std::string attribute;
  std::string key;
  std::string value = "1";
  std::string keyValue = "0";
  std::string fromKey = "0";
};

std::vector<Sample> samples() {
  std::vector<Sample> all;
  for (const std::string& name : words(withoutKey)) all.push_back({name, ""});
  for (const std::string& name : words(sameKey)) all.push_back({name, name});
  for (const auto& [key, attribute] : otherKeys) all.push_back({attribute, key});
  for (Sample& each : all) {
    // Of its type.
    const dialect::Attribute& row = *dialect::attributeOf(
        *dialect::find(u"style", u""), ChartString(each.attribute.c_str()).xc_str());
    if (row.type == dialect::Type::Length || row.type == dialect::Type::Lengths) each.value = "1pt";
    if (row.type == dialect::Type::Color) each.value = "red", each.keyValue = each.fromKey = "blue";
    if (row.words) {
      each.value = ChartString(row.words->words.front().text).toUTF8();
      each.keyValue = each.fromKey = ChartString(row.words->words.back().text).toUTF8();
    }
    if (each.attribute == "glyph-sides") each.value = "100", each.keyValue = each.fromKey = "2";
    if (each.attribute == "font-weight") each.fromKey = "bold";
    if (each.attribute == "visible") each.fromKey = "true";
  }
  return all;
}

using Attributes = std::map<std::string, std::string>;

std::string written(const Attributes& attributes) {
  std::string text;
  for (const auto& [name, value] : attributes) text += " " + name + "='" + value + "'";
  return text;
}

// The attributes of the style once that element has been imported, twice for good measure.
std::string imported(const std::string& style, const std::string& element,
                     const std::string& source = "") {
  EditedChart chart("<style id='s'" + style + "/>");
  const EditedChart other("<style id='s'" + source + "/>");
  const std::string command = "<setStyle id='s'>" + element + "</setStyle>";
  EXPECT_TRUE(chart.apply(command, &other));
  const std::string once = chart.body();
  chart.apply(command, &other);
  EXPECT_EQ(chart.body(), once) << element;
  const std::string start = "<style id='s'";
  return once.substr(start.size(), once.size() - start.size() - 2);
}

TEST(ImportStyle, TakesEachPropertyAndLeavesTheOthers) {
  const ChartBase holder;
  Attributes all, old, keyed;
  std::string text;
  for (const Sample& each : samples()) {
    all[each.attribute] = each.value;
    old[each.attribute] = "old";
    keyed[each.attribute] = each.key.empty() ? each.value : each.fromKey;
    if (!each.key.empty()) text += each.key + ":" + each.keyValue + ";";
  }
  const std::string both = "<style value='" + text + "'" + written(all) + "/>";
  EXPECT_EQ(imported("", "<style" + written(all) + "/>"), written(all));
  EXPECT_EQ(imported("", both), written(keyed));
  EXPECT_EQ(imported("", both, written(all)), "");

  for (const Sample& each : samples()) {
    const Attributes one{{each.attribute, each.value}};
    Attributes expected = old;
    expected.erase("gradient-color");
    expected[each.attribute] = each.value;
    EXPECT_EQ(imported(written(old), "<style" + written(one) + "/>"), written(expected));
    if (!each.key.empty()) {
      const std::string pair = each.key + ":" + each.keyValue;
      expected[each.attribute] = each.fromKey;
      EXPECT_EQ(imported(written(old), "<style value='" + pair + "'/>"), written(expected));
    }
    // What the source states stays away, and nothing else does; but a size keeps off the width too.
    Attributes others = all;
    others.erase(each.attribute);
    if (each.attribute == "size") others.erase("width");
    EXPECT_EQ(imported("", "<style" + written(all) + "/>", written(one)), written(others));
  }
}

struct ImportCase {
  const char* style;
  const char* element;
  const char* expected;
  const char* source = "";
};

TEST(ImportStyle, FollowsTheRulesOfSingleProperties) {
  const ChartBase holder;
  const ImportCase cases[] = {
      {"", "<style font-weight='normal'/>", " font-weight='regular'"},
      {"", "<style value='font-weight:regular' font-weight='normal'/>", " font-weight='bold'"},
      {"", "<style value='visibility:hidden' visible='true'/>", " visible='false'"},
      {"", "<style value='visibility:false'/>", " visible='false'"},
      // Parts of sizes.
      {" font-size='8pt 6pt 10pt'", "<style font-size='9pt'/>", " font-size='9pt 6pt 10pt'"},
      {" font-size='8pt 6pt 10pt'", "<style value='font-size:9pt;min-font-size:7pt'/>",
       " font-size='9pt 7pt 10pt'"},
      {"", "<style font-size='9pt 7pt'/>", " font-size='auto 7pt'", " font-size='8pt'"},
      {"", "<style value='font-size:9pt;min-font-size:7pt'/>", " font-size='9pt'",
       " font-size='auto 6pt'"},
      {"", "<style value='width:40%;max-width:60%'/>", " width='40% auto 60%'"},
      {"", "<style value='width:40%;max-width:60%'/>", " width='40%'", " width='auto auto 50%'"},
      {"", "<style value='width:40%;max-width:60%'/>", "", " size='5pt'"},
      {"", "<style value='max-width:60%'/>", "", " size='auto auto 5pt'"},
      // Ranges.
      {"", "<style glyph-sides='1' glyph-aspect='-1' pattern='-1' shadow-opacity='2'/>", ""},
      {"", "<style value='glyph-sides:101;glyph-aspect:-1;fill-pattern:-1;shadow-opacity:-1'/>",
       ""},
      {"", "<style value='glyph-sides:2;shadow-opacity:0.7'/>",
       " glyph-sides='2' shadow-opacity='0.7'"},
      {"", "<style glyph-sides='100' opacity2='7' gradient-opacity='-1'/>", " glyph-sides='100'"},
      {"", "<style glyph-sides='99999999999999999999' opacity='7'/>", " opacity='7'"},
      // A gradient colour that isn't named goes, unless the source has one.
      {" gradient-color='red'", "<style/>", ""},
      {" gradient-color='red'", "<style/>", " gradient-color='red'", " gradient-color='red'"},
      // Unknown keys, and those that need a surface.
      {"", "<style value='foo:1;fill:red'/>", ""},
      {"", "<style value='fill:red;stroke:blue' color2='white'/>", " color='blue' color2='white'"},
      {"", "<style value='stroke:blue'/>", "", " color2='white'"},
      // Children.
      {" glyph-sides='9' symbol='x'", "<style><glyph sides='101' angle='30' aspect='1'/></style>",
       " glyph-angle='30' glyph-aspect='1' glyph-sides='9'"},
      {"", "<style><glyph sides='3' angle='30' aspect='-1' size='5pt' type='square'/></style>",
       " glyph-angle='30' glyph-sides='3' size='5pt' symbol='square'"},
      {"", "<style><glyph sides='3' angle='1' aspect='1' size='5pt' type='square'/></style>", "",
       " glyph-sides='4' glyph-angle='0' glyph-aspect='1' size='1pt' symbol='x'"},
      {"", "<style><intervalGlyph type='ibeam'/></style>", " symbol='ibeam'", " symbol='x'"},
      {"", "<style><shadow color='grey' dx='1pt' dy='2pt' opacity='0.5'/></style>",
       " shadow-color='grey' shadow-dx='1pt' shadow-dy='2pt' shadow-opacity='0.5'"},
      {"", "<style><shadow color='grey' dx='1pt' dy='2pt' opacity='0.5'/></style>", "",
       " shadow-color='x' shadow-dx='0pt' shadow-dy='0pt' shadow-opacity='1'"}};
  for (const ImportCase& each : cases) {
    EXPECT_EQ(imported(each.style, each.element, each.source), each.expected) << each.element;
  }
}

TEST(ImportStyle, ReportsAnUnknownChildAndGoesOn) {
  const LogFolder folder;
  EXPECT_EQ(imported("", "<style color='red'><bogus a='1'/><intervalGlyph type='x'/></style>"),
            " color='red' symbol='x'");
  EXPECT_NE(folder.log().find("Error -- ChartXML: Unsupported style child encountered "
                              "(<bogus a=\"1\"/>) at file src/templates/importstyle.cpp"),
            std::string::npos);
  // For each element that is styled
  EditedChart("<graph><line/><line/><area/></graph>")
      .apply("<setStyle type='line'><style><other/></style></setStyle>");
  const std::string log = folder.log();
  const std::size_t first = log.find("(<other/>)");
  ASSERT_NE(first, log.npos);
  EXPECT_EQ(log.find("(<other/>)", log.find("(<other/>)", first + 1) + 1), log.npos);
  EXPECT_NE(log.find("(<other/>)", first + 1), log.npos);
}

TEST(ImportStyle, KnowsTheStylesOfSurfaces) {
  const std::string body =
      "<graph style='frame' cellStyle='cell'><coordinates/><line style='line'/>"
      "<interval style='bar'/><schema style='box' hingeStyle='hinge'/></graph><container><graph>"
      "<coordinates><polarTransform/></coordinates><interval style='slice'/></graph>"
      "<legend style='legend'/></container>";
  const ChartBase holder;
  for (const std::string id :
       {"frame", "cell", "line", "bar", "box", "hinge", "slice", "legend", "page"}) {
    EditedChart chart(body + "<style id='" + id + "'/>");
    if (id == "page") chart.chart().setStyle(*chart.chart().getStyleById(u"page"));
    chart.apply("<setStyle id='" + id + "'><style value='stroke:blue;fill:red'/></setStyle>");
    const bool isSurface = id != "frame" && id != "line" && id != "box";
    const std::string expected = isSurface ? " color='red' color2='blue'" : " color='blue'";
    const std::string text = chart.body();
    EXPECT_EQ(text.substr(text.rfind("<style")), "<style id='" + id + "'" + expected + "/>");
  }
  // A style without an id is taken for a surface's where there are any.
  for (const auto& [cell, color] : {std::pair("none", ""), {"s", "red"}}) {
    EditedChart chart(
        "<styleCycle><cycle><style/></cycle></styleCycle><style id='s'/>"
        "<graph cellStyle='" +
        std::string(cell) + "'/>");
    auto* element = chart.chart().getImplementation()->getOwnerDocument()->createElement(u"style");
    element->setAttribute(u"value", u"fill:red");
    PlXStyle* style = chart.chart().getStyleCycles()[0]->getCycles()[0]->getStyles()[0];
    BaseTemplate(nullptr, chart.chart()).importStyle(element, *style);
    EXPECT_EQ(ChartString(style->getColor()).toUTF8(), color);
  }
}

// Of two graphs that a command styles, or of the one that it addresses; a source's colours stay.
TEST(ImportStyle, TellsSurfacesOfTheGraphsThatAreMeant) {
  const std::string graphs =
      "<graph><interval id='i'/></graph><graph><interval id='j'/></graph><legend style='l'/>"
      "<style id='l'/>";
  const auto styled = [&](const char* attributes, const char* sourceStyle) {
    EditedChart chart(graphs);
    const EditedChart source(std::string("<style id='style1' ") + sourceStyle + "/>");
    chart.apply("<setStyle type='bar' " + std::string(attributes) +
                    "><style value='stroke:blue;fill:red'/></setStyle>",
                *sourceStyle ? &source : nullptr);
    const std::string body = chart.body();
    return body.substr(body.find("<style id='style1'"));
  };
  const auto two = [](const std::string& first, const std::string& second) {
    return "<style id='style1'" + first + "/><style id='style2'" + second + "/></style>";
  };
  const std::string both = " color='red' color2='blue'";
  EXPECT_EQ(styled("", ""), two(both, both));
  EXPECT_EQ(styled("graph='2'", ""), two(" color='blue'", both));
  EXPECT_EQ(styled("", "color='x'"), two(" color2='blue'", both));
  EXPECT_EQ(styled("", "color2='x'"), two(" color='red'", both));
}

TEST(ImportStyle, InterpolatesWhatTheStylePaints) {
  const char* line = "<line id='a' style='s'/>";
  const char* winged = "<line id='a' breakRepresentation='wings' style='s'/>";
  const char* wings = "missingRepresentation='wings'";
  struct Case {
    const char* element;
    const char* interpolation;
    const char* expected;
    const char* source = nullptr;
  };
  const Case cases[] = {
      {line, "type='jump'",
       "<line id='a' showDiscontinuity='true' style='s'>"
       "<smoothStatistic method='stepCenter'/></line>"},
      {"<path style='s'><smoothStatistic method='loess'/></path>",
       "type='step' pointPosition='right'",
       "<path showDiscontinuity='false' style='s'><smoothStatistic "
       "method='stepRight'/></path>"},
      // Of what another style paints, lines stay as they are.
      {"<line style='t'/>", "type='step'", "<line style='t'/>"},
      {"<area style='t'/>", "type='spline'",
       "<area showDiscontinuity='false' style='t'><smoothStatistic method='linear'/></area>"},
      {"<path style='t'/>", "type='spline'",
       "<path showDiscontinuity='false' style='t'><smoothStatistic method='linear'/></path>"},
      // Breaks need a source that leaves them free.
      {line, wings, line},
      {line, wings, winged, line},
      {line, wings, line, "<line id='a' breakRepresentation='gap'/>"},
      {line, wings, line, "<line/>"},
      {line, wings, winged, "<area id='a'/>"},
      {"<area id='a' style='s'/>", wings, "<area id='a' style='s'/>", line}};
  const ChartBase holder;
  const std::string styles = "</graph><style id='s'/><style id='t'/>";
  for (const Case& each : cases) {
    EditedChart chart("<graph>" + std::string(each.element) + styles);
    const EditedChart source("<graph>" + std::string(each.source ? each.source : "") + "</graph>");
    chart.apply("<setStyle id='s'><style><interpolation " + std::string(each.interpolation) +
                    "/></style></setStyle>",
                each.source ? &source : nullptr);
    EXPECT_EQ(chart.body(), "<graph>" + std::string(each.expected) + styles);
  }
  // All lines get a style, and the container's style stands for those of all.
  const CommandCase all[] = {
      // Of two children the last counts, for every element.
      {"<graph><line/><line/><area/></graph>",
       "<setStyle type='line'><style><interpolation type='jump'/>"
       "<interpolation type='step' pointPosition='left'/></style></setStyle>",
       "<graph><line showDiscontinuity='false' style='style1'><smoothStatistic method='stepLeft'/>"
       "</line><line showDiscontinuity='false' style='style2'><smoothStatistic method='stepLeft'/>"
       "</line><area showDiscontinuity='false' style='style3'><smoothStatistic method='stepLeft'/>"
       "</area></graph><style id='c-o-n-t-a-i-n-er'><style id='style1'/><style id='style2'/>"
       "<style id='style3'/></style>"},
      {"<graph><line/></graph><style id='c-o-n-t-a-i-n-er'/>",
       "<setStyle id='c-o-n-t-a-i-n-er'><style><interpolation type='x'/></style></setStyle>",
       "<graph><line showDiscontinuity='false' style='style1'>"
       "<smoothStatistic method='linear'/></line></graph><style id='c-o-n-t-a-i-n-er'>"
       "<style id='style1'/></style>"}};
  expectCases(all);
}

}  // namespace
