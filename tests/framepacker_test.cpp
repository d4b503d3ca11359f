// The default layout of a page: small charts with the locations that their frames get.
#include "framepacker.h"

#include <cmath>

#include "commandcases.h"
#include "plxextension.h"
#include "plxgraph.h"
#include "plxuni.h"

using namespace xercesc;

namespace {

// "title: top 1%, height content; graph: top >title", with '=' for an aligned edge and '>' for one
// against a target, of all frames that have locations, in the order of the document.
std::string placesIn(EditedChart& chart) {
  std::string text;
  const DOMNodeList* all =
      chart.chart().getImplementation()->getElementsByTagName(PlXUni::_location);
  const DOMNode* last = nullptr;
  for (XMLSize_t i = 0; i < all->getLength(); ++i) {
    auto* element = static_cast<DOMElement*>(all->item(i));
    const auto* frame = static_cast<const DOMElement*>(element->getParentNode());
    const auto attribute = [](const DOMElement* of, const XMLCh* name) {
      return ChartString(of->getAttribute(name)).toUTF8();
    };
    if (frame == last) {
      text += ", ";
    } else {
      text += (last ? "; " : "") + attribute(frame, u"id") + ": ";
    }
    last = frame;
    const std::string method = attribute(element, u"method");
    text += attribute(element, u"part") + ' ' +
            (method == "align"     ? "="
             : method == "attach"  ? ">"
             : method == "content" ? "content"
                                   : "") +
            attribute(element, u"target") + attribute(element, u"value");
    const std::string max = attribute(element, u"max");
    if (!max.empty()) text += " max " + max;
    if (attribute(element, u"specifiedByUser") == "true") text += " by user";
  }
  return text;
}

// A word a frame: G, T, L and C are graphs, label frames, legends and containers, "C(...)" holds
// others; the rest of the word is the id, and "*" adds a location, "!" one of the user's. Roles
// follow behind "|" as attributes.
std::string chartOf(const std::string& frames) {
  std::string body;
  const std::map<char, std::string> tags = {
      {'G', "graph"}, {'T', "labelFrame"}, {'L', "legend"}, {'C', "container"}};
  std::istringstream words(frames.substr(0, frames.find('|')));
  for (std::string word; words >> word;) {
    if (word == ")") {
      body += "</container>";
      continue;
    }
    const std::string& tag = tags.at(word[0]);
    const std::size_t end = word.find_first_of("(*!");
    body += '<' + tag + " id='" + word.substr(1, end - 1) + "'>";
    if (word.find('*') != word.npos) body += "<location part='left' value='7%'/>";
    if (word.find('!') != word.npos) {
      body += "<location part='left' method='content' specifiedByUser='true'/>";
    }
    if (word.back() != '(') body += "</" + tag + '>';
  }
  const std::size_t bar = frames.find('|');
  if (bar != frames.npos) body += "<extension " + frames.substr(bar + 1) + "/>";
  return body;
}

std::string packed(const std::string& frames, const std::string& reference = "none") {
  EditedChart chart(chartOf(frames));
  EditedChart original(reference == "none" ? "" : chartOf(reference));
  PlXDocument document(original.chart());
  const std::string before = original.body();
  PlXDocument* const given = reference == "none" ? nullptr : &document;
  EXPECT_TRUE(FramePacker().packFrames(chart.chart(), given));
  const std::string once = chart.body();
  FramePacker().packFrames(chart.chart(), given);
  EXPECT_EQ(chart.body(), once) << frames;
  EXPECT_EQ(original.body(), before);
  EXPECT_EQ(EditedChart(chartText(once)).body(), once) << "the result is valid";
  return placesIn(chart);
}

TEST(FramePacker, PlacesFramesByRole) {
  const ChartBase holder;
  const auto rows = rowsOf(R"(
Gg* | g: left 1%, top 1%, bottom 99%, right 99%
Tt1 Tt2 Ts Tf1 Tf2 Tf3 Gg|title1='t1' title2='t2' subtitle='s' footnote1='f1' footnote2='f2'
  footnote3='f3' | t1: top 1%, height content; t2: height content, top >t1; s: top >t2, height
  content; f1: height content, bottom >f2; f2: height content, bottom >f3; f3: height content,
  bottom 99%; g: left 1%, top >s, bottom >f1, right 99%
Tt2* Ts Tf1 Tf3 Gg|title2='t2' subtitle='s' footnote1='f1' footnote3='f3' | t2: height content,
  top 1%; s: top >t2, height content; f1: height content, bottom >f3; f3: height content, bottom
  99%; g: left 1%, top >s, bottom >f1, right 99%
Tt1 Tt2 Tf2 Tf3 Gg|title1='t1' title2='t2' footnote2='f2' footnote3='f3' | t1: top 1%, height
  content; t2: height content, top >t1; f2: height content, bottom >f3; f3: height content, bottom
  99%; g: left 1%, top >t2, bottom >f2, right 99%
Tt1 Ts Gg|title1='t1' subtitle='s' footnote2='none' | t1: top 1%, height content; s: top >t1,
  height content; g: left 1%, top >s, bottom 99%, right 99%
Gg Tt1 Tf3|title1='t1' title2='t1' subtitle='t1' footnote1='f3' footnote2='f3' footnote3='f3' | g:
  left 1%, top >t1, bottom >f3, right 99%; t1: top 1%, height content; f3: height content, bottom
  99%
Ts|subtitle='s' | s: top 1%, height content
Gg*|preserveLocations='true' | g: left 7%
Gg Gh Tt1* Ts Tf1*|title1='t1' subtitle='s' footnote1='f1' | t1: left 7%; s: top >t1, height
  content; f1: left 7%
Gg* Cc( Cd( Gh* ) ) Tt1 Tf1* Ll* Tk|title1='t1' footnote1='f1' legend1='l' key1='k' | g: left 7%;
  h: left 7%; t1: top 1%, height content; f1: left 7%; l: left 7%; k: height content, width
  content max 25%, left 75%, top =g
)");
  for (const auto& row : rows) EXPECT_EQ(packed(row[0]), row[1]) << row[0];
}

TEST(FramePacker, StacksLegendsAndSideFrames) {
  const ChartBase holder;
  const auto rows = rowsOf(R"(
Gg La Lb Lc|legend1='a' legend2='b' legend4='c' | g: left 1%, top 1%, bottom 99%, right >a; a:
  height content, width content, right 99%, top =g; b: height content, width content, right 99%,
  top >a
Gg Cc( La ) Lb|legend1='a' legend2='b' legend3='a' | g: left 1%, top 1%, bottom 99%, right >c; c:
  top =g, height content, left 75%, right 99%; a: height content, width content, left =c, right
  =c, top =c; b: height content, width content, left =c, right =c, top >a
Gg Tk Ts Tt|key1='k' key2='s' statisticsSummary1='s' statisticsSummary2='t' | g: left 1%, top 1%,
  bottom 99%, right >s; k: height content, width content max 25%, left 75%, top >t; s: height
  content, width content max 25%, left 75%, top =g; t: height content, width content max 25%, left
  75%, top >s
Gg Cc( Tk Ts ) Tt|statisticsSummary1='k' statisticsSummary2='t' key1='s' | g: left 1%, top 1%,
  bottom 99%, right >c; c: top =g, height content, left 75%, right 99%; k: height content, width
  content, left 1%, top =g; s: height content, width content, left 1%, top >t; t: height content,
  width content max 25%, left =c, top >k
Gg Cc( La Tk ) Tt|legend1='a' key1='t' key2='k' | g: left 1%, top 1%, bottom 99%, right >c; c: top
  =g, height content, left 75%, right 99%; a: height content, width content, left =c, right =c,
  top =c; k: height content, width content, left 1%, top >t; t: height content, width content max
  25%, left =c, top >c
Gg Cc( La Tk )|legend1='a' key1='k' | g: left 1%, top 1%, bottom 99%, right >c; c: top =g, height
  content, left 75%, right 99%; a: height content, width content, left =c, right =c, top =c; k:
  height content, width content, left 1%, top >a
Gg La Tk|legend1='a' key1='k' | g: left 1%, top 1%, bottom 99%, right >a; a: height content, width
  content, right 99%, top =g; k: height content, width content max 25%, left 75%, top >a
Gg La Cc( Tk )|legend1='a' key1='k' | g: left 1%, top 1%, bottom 99%, right >c; a: height content,
  width content, left =c, right =c, top =c; c: top =g, height content, left 75%, right 99%; k:
  height content, width content, left 1%, top >a
Gg Gh Cc( La* ) Tk|legend1='a' key1='k' | c: top =g, height content, left 75%, right 99%; a: left
  7%; k: height content, width content max 25%, left =c, top >c
Tt Ts Tk Tm La*|title1='t' subtitle='s' key1='k' key2='m' legend1='a' | s: top >t, height content;
  k: height content, width content max 25%, left 75%, top >s; m: height content, width content max
  25%, left 75%, top >k; a: left 7%
Cc( Tk La )|key1='k' legend1='a' | c: top 1%, height content, left 75%, right 99%; k: height
  content, width content, left 1%, top 1%
)");
  for (const auto& row : rows) EXPECT_EQ(packed(row[0]), row[1]) << row[0];
}

// Columns: the chart, its author's document, the result.
TEST(FramePacker, LeavesWhatAuthorAndUserPlaced) {
  const ChartBase holder;
  const auto rows = rowsOf(R"(
Tt Ts Tf Gg Cc( La )|title1='t' subtitle='s' footnote1='f' legend1='a' | Tt* Ts* Tf* Gg* Cc( La* )
  | a: height content, width content, left =c, right =c, top =c
Tt Gg Cc( La )|title1='t' legend1='a' | Tt! Gg! Cc( La! ) | t: top 1%, height content; c: top =g,
  height content, left 75%, right 99%; a: height content, width content, left =c, right =c, top =c
Tt* Gg*|title1='t' | Tt Tg Gu* | t: top 1%, height content; g: left 1%, top >t, bottom 99%, right
  99%
Tt* Gg!|title1='t' | Tt*! Gg*! | t: top 1%, height content; g: left content by user
Gg* La*! Lb! Lc* Tk! Tm|legend1='a' legend2='b' legend3='c' key1='k' key2='m' | Gg* | g: left 7%;
  a: left 7%, left content by user; b: left content by user; c: height content, width content,
  right 99%, top =g; k: left content by user; m: height content, width content max 25%, left 75%,
  top >c
Gg* La*!|legend1='a' | none | g: left 1%, top 1%, bottom 99%, right >a; a: height content, width
  content, right 99%, top =g
)");
  for (const auto& row : rows) EXPECT_EQ(packed(row[0], row[1]), row[2]) << row[0];
}

TEST(FramePacker, LeavesTheExamplesValid) {
  const ChartBase holder;
  for (const std::string& file : exampleFiles()) {
    EditedChart chart(readFile(file));
    EXPECT_TRUE(FramePacker().packFrames(chart.chart(), nullptr));
    const std::string once = chart.body();
    FramePacker().packFrames(chart.chart(), nullptr);
    EXPECT_EQ(chart.body(), once) << file;
    EXPECT_TRUE(ChartBase::ValidXML(chart.chart().AsUTF8())) << file;
  }
}

TEST(FramePacker, ListsGraphsByContainer) {
  EditedChart chart(chartOf("Gtop Ca( Gb Cc( Gd ) Ce( Gf ) Gh ) Ci( Gj )"));
  std::vector<PlXGraph*> graphs;
  FramePacker().getGraphChildren(chart.chart().getContainers(), graphs);
  std::string ids;
  for (const PlXGraph* graph : graphs) ids += ChartString(graph->getId()).toUTF8();
  EXPECT_EQ(ids, "bhdfj");
}

TEST(FramePacker, CutsPercentagesOff) {
  const std::pair<double, const char*> cases[] = {
      {33.39, "33.3%"}, {75, "75%"},        {8.27, "8.2%"},     {99.9, "99.9%"},
      {-0.05, "0%"},    {-12.99, "-12.9%"}, {1e300, "1e+300%"}, {std::nan(""), "0%"}};
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(FramePacker().assignValue(value).toUTF8(), text);
  }
}

}  // namespace
