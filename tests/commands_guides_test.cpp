// The commands of guides: which lines and bands are added, and which are restyled.
#include "commands.h"
#include "plxstyle.h"
#include "toldparts.h"

using namespace xercesc;

namespace {

const std::set<std::string> guides = {"lineGuide", "rectangleGuide",   "functionGuide",
                                      "label",     "conditionalStyle", "text"};

const std::string variables =
    "<sourceVariable id='n'/>"
    "<sourceVariable id='c' categorical='true'><format><relabel from='1' to='One'/>"
    "<relabel from='2' to='Two'/></format></sourceVariable>"
    "<expressionVariable id='e' expression='n/c'/>";
const std::string flat = "<dimension/><dimension/>";

std::string graph(const std::string& content, const std::string& coordinates = flat) {
  return "<graph><coordinates>" + coordinates + "</coordinates>" + content + "</graph>";
}
std::string point(const std::string& x, const std::string& y) {
  return "<point><x variable='" + x + "'/><y variable='" + y + "'/></point>";
}

const std::string plain = graph(point("n", "n"));
const std::string bars = graph(point("c", "n"));
const std::string twoBlocks = graph("", flat + "</coordinates><coordinates id='second'>" + flat);
// Of one dimension.
const std::string narrow = graph("<lineGuide y='5'/>", "<dimension/>");
const std::string polar = graph(point("n", "n"), flat + "<polarTransform/>");
const std::string table = graph("<facetLayout><tableLayout/></facetLayout>");
const std::string matrix = graph(point("e", "e"));

struct Row {
  std::string body, command, expected;
};

void expectRows(const std::string& element, std::span<const Row> rows) {
  const ChartBase holder;
  for (const Row& row : rows) {
    EditedChart chart(variables + row.body);
    // The command's attributes, and its content behind a '>'.
    const std::size_t start = row.command.find('>');
    const std::string content = start == row.command.npos ? "" : row.command.substr(start + 1);
    chart.apply("<" + element + " " + row.command.substr(0, start) + ">" + content + "</" +
                element + ">");
    EXPECT_EQ(told(chart, guides), row.expected) << row.body << row.command;
    expectSound(chart.chart().AsUTF8(), row.command);
  }
}

TEST(ReferenceLine, StandsAtValues) {
  const std::string red = "><style color='blue'/><style color='red'/>";
  const Row rows[] = {
      {plain, "x='1' name='a'" + red, "lineGuide name=a style=[color=red] x=1"},
      {plain, "y='2024-02-29 12:30:00.000'", "lineGuide style=[] y=2024-02-29 12:30:00.000"},
      // Only the last is dressed; there is no z here.
      {plain, "x='1' y='2' z='3' name='a'", "lineGuide x=1; lineGuide name=a style=[] y=2"},
      {graph("", flat + "<dimension/>"), "x='1' z='3'", "lineGuide x=1; lineGuide style=[] z=3"},
      {plain,
       ">" + std::string("<parameter name='x' value=''/><parameter name='x' value='4'/>"
                         "<parameter name='x' value='5'/><parameter name='z' value='6'/>"),
       "lineGuide style=[] x=4"},
      {plain, "x='1'><parameter name='x' value='4'/>", "lineGuide style=[] x=1"},
      {plain, "name='a'" + red, ""},
      {twoBlocks, "x='1'", "lineGuide coordinates=coordinates1 style=[] x=1"},
      {twoBlocks, "x='1' coordinate='1'", "lineGuide coordinates=second style=[] x=1"},
      {twoBlocks, "x='1' coordinate='2'", ""},
      {twoBlocks, "x='1' coordinate='-1'", ""},
      {plain, "x='1' coordinate='1'", ""},
      {polar, "x='1'", ""},
      {table, "x='1'", ""},
      {matrix, "x='1'",
       "lineGuide style=[] x=1; conditionalStyle style=[visible=false] when=facet1==facet2"},
      // Where the dimension is missing, lines that there are are restyled.
      {narrow, "y='5'" + red, "lineGuide style=[color=red] y=5"},
      {narrow, "y='6'" + red, "lineGuide style=[] y=5"},
  };
  expectRows("addReferenceLine", rows);
}

TEST(ReferenceLine, FindsCategories) {
  const Row rows[] = {
      {bars, "x='Two' xcategorical='true'", "lineGuide style=[] x=2"},
      {bars, "x='Two'", "lineGuide style=[] x=Two"},
      {bars, "xcategorical='true'><parameter name='x' value='Two'/>", "lineGuide style=[] x=Two"},
      {bars, "><parameter name='x' value='Two' categorical='true'/>", "lineGuide style=[] x=2"},
      {bars, "x='Three' xcategorical='true'", ""},
      {bars, "x='Three' y='4' xcategorical='true'", "lineGuide style=[] y=4"},
      // One that isn't found is no line's, also where there is none to compare it with.
      {graph(point("c", "n") + "<lineGuide/>"),
       "x='Three' xcategorical='true'><style color='red'/>", "lineGuide style=[]"},
      {graph(point("c", "n") + "<lineGuide/>"),
       "styleOnly='true' x='Three' xcategorical='true'><style color='red'/>", "lineGuide style=[]"},
      {graph(point("c", "n") + "<lineGuide x='1'/><lineGuide x='2'/>"),
       "styleOnly='true' x='One' xcategorical='true'><style color='red'/>",
       "lineGuide style=[color=red] x=1; lineGuide style=[] x=2"},
      // The second graph looks for the first one's value.
      {bars + bars, "x='Two' xcategorical='true'", "lineGuide style=[] x=2"},
      {bars + graph("<point><x variable='other'/></point>") +
           "<sourceVariable id='other'><format><relabel from='7' to='2'/></format>"
           "</sourceVariable>",
       "x='Two' xcategorical='true'", "lineGuide style=[] x=2; lineGuide style=[] x=7"},
  };
  expectRows("addReferenceLine", rows);
}

TEST(ReferenceLine, DrawsFunctions) {
  const std::string curves = graph("<functionGuide segments='7'/>");
  const std::string inSecond = graph("<functionGuide coordinates='second'/><functionGuide/>",
                                     flat + "</coordinates><coordinates id='second'>" + flat);
  const Row rows[] = {
      {plain, "y='0.5*x' numberPoints='2' name='a'",
       "functionGuide name=a segments=2 style=[] value=0.5*x"},
      {plain, "x='9' numberPoints='1'", "functionGuide segments=100 style=[]"},
      {plain, "y='x' numberPoints='-3'", "functionGuide segments=100 style=[] value=x"},
      {plain, "y='x' numberPoints='many'", "functionGuide segments=100 style=[] value=x"},
      {plain, "y='x' numberPoints='4294967296'", "functionGuide segments=100 style=[] value=x"},
      {bars, "y='x' numberPoints='50'", ""},
      {matrix, "y='x' numberPoints='2'",
       "functionGuide segments=2 style=[] value=x; "
       "conditionalStyle style=[visible=false] when=facet1==facet2"},
      {curves, "y='z' numberPoints='9' styleOnly='true'><style color='red'/>",
       "functionGuide segments=7 style=[color=red]"},
      {inSecond, "numberPoints='9' coordinate='1' styleOnly='true'><style color='red'/>",
       "functionGuide coordinates=second style=[color=red]; functionGuide"},
  };
  expectRows("addReferenceLine", rows);
}

TEST(ReferenceLine, WritesAndStylesLabels) {
  const std::string styles =
      "<style color='red'/><style number='1' color='blue'/><style number='2' color='green'/>";
  const std::string lines =
      graph(
          "<lineGuide x='1'><label><text>a</text></label><label style='s'/></lineGuide>"
          "<lineGuide x='2'><label/></lineGuide>") +
      "<style id='s' color='grey'/>";
  const auto labelled = [](const std::string& place, const std::string& frame) {
    return "; label style=[" + place + "] textFrameStyle=[" + frame + "]";
  };
  const std::string atLeft = "labelLocationHorizontal=negative labelLocationVertical=center";
  const std::string below = "labelLocationHorizontal=center labelLocationVertical=negative";
  const Row rows[] = {
      {plain, "y='1'><label>a</label>",
       "lineGuide style=[] y=1" + labelled(atLeft, "color=white color2=black") + "; text text=a"},
      {plain, "x='1'><label>no</label><label>a" + styles + "</label>",
       "lineGuide style=[] x=1" + labelled("color=green " + below, "color=blue color2=black") +
           "; text text=a"},
      {lines, "styleOnly='true' x='1'><label>b" + styles + "</label>",
       "lineGuide style=[] x=1; label style=[color=red] textFrameStyle=[color=blue]; text; "
       "label style=[color=red] textFrameStyle=[color=blue]; lineGuide style=[] x=2; label"},
      {lines, "styleOnly='true'><label><style number='1' color='red'/></label>",
       "lineGuide style=[] x=1; label textFrameStyle=[color=red]; text; "
       "label style=[color=grey] textFrameStyle=[color=red]; lineGuide style=[] x=2; "
       "label textFrameStyle=[color=red]"},
  };
  expectRows("addReferenceLine", rows);
}

TEST(ReferenceRectangle, IsABandOfOneDimension) {
  const Row rows[] = {
      {plain, "x1='1' x2='2' y1='3' y2='4' name='a' zOrder='-1'><style color='red'/>",
       "rectangleGuide name=a style=[color=red] x1=1 x2=2 zOrder=-1"},
      {plain, "x2='2' y1='3'", "rectangleGuide style=[] y1=3"},
      {plain, "x2='2'", "rectangleGuide style=[]"},
      {plain, "name='a'", ""},
      {plain, "styleOnly='true'", ""},
      {bars, "x1='One' x2='Two' xcategorical='true'", "rectangleGuide style=[] x1=1 x2=2"},
      {bars, "x1='One' x2='Three' xcategorical='true'", ""},
      {bars, "x1='None' y1='3' xcategorical='true'", ""},
      {twoBlocks, "y1='1' coordinate='1'", "rectangleGuide coordinates=second style=[] y1=1"},
      {plain, "y1='1' coordinate='1'", ""},
      {polar, "y1='1'", ""},
      {table, "y1='1' zOrder='99999999999'", "rectangleGuide style=[] y1=1 zOrder=2147483647"},
      {matrix, "y1='1'", "rectangleGuide style=[] y1=1"},
      {plain, "y1='1'><label>a</label>",
       "rectangleGuide style=[] y1=1; label style=[labelLocationHorizontal=negative "
       "labelLocationVertical=center] textFrameStyle=[color=white color2=black]; text text=a"},
  };
  expectRows("addReferenceRectangle", rows);
}

TEST(ReferenceRectangle, RestylesBandsByIdOrValue) {
  const ChartBase holder;
  const std::string bands =
      variables + graph(point("c", "n") +
                        "<rectangleGuide id='a' x1='1' x2='2'/><rectangleGuide id='b' x1='1'/>"
                        "<rectangleGuide id='c1' y1='1' y2='2'/><rectangleGuide id='d'/>");
  const std::pair<const char*, const char*> rows[] = {
      {"id='a'", "a "},
      {"id='nobody'", ""},
      {"x1='1'", "a b c1 d "},  // those without x2, too
      {"x1='1' x2='2'", "a b "},
      {"x1='9' x2='2'", "a "},
      {"y1='1' y2='9'", "c1 "},
      {"id='d' y2='2'", "a b c1 d "},
      {"x1='One' x2='None' xcategorical='true'", "a b "},
      {"x2='None' x1='None' xcategorical='true'", ""},
  };
  for (const auto& [attributes, expected] : rows) {
    EditedChart chart(bands);
    const auto apply = [&] {
      chart.apply(std::string("<addReferenceRectangle styleOnly='true' zOrder='3' ") + attributes +
                  "><style color='red'/></addReferenceRectangle>");
    };
    apply();
    std::string ids;
    for (const char* id : {"a", "b", "c1", "d"}) {
      const DOMElement* band = chart.chart().getElementById(ChartString(id).xc_str());
      const bool isRed = XMLString::equals(
          chart.chart().getStyleById(band->getAttribute(u"style"))->GetAttribute(u"color"), u"red");
      EXPECT_EQ(isRed, band->hasAttribute(u"zOrder")) << attributes;
      if (isRed) ids += std::string(id) + " ";
    }
    EXPECT_EQ(ids, expected) << attributes;
    const std::string once = chart.body();
    apply();
    EXPECT_EQ(chart.body(), once) << attributes;
  }
}

TEST(ReferenceRectangle, KeepsIdsUniqueAndNames) {
  EditedChart chart(plain + plain + variables);
  const auto idsOf = [&](const char* id) {
    chart.apply(std::string("<addReferenceRectangle x1='1' id='") + id + "'/>");
    std::string ids;
    const DOMNodeList* bands =
        chart.chart().getImplementation()->getElementsByTagName(u"rectangleGuide");
    for (XMLSize_t i = 0; i < bands->getLength(); ++i) {
      ids +=
          ChartString(static_cast<DOMElement*>(bands->item(i))->getAttribute(u"id")).toUTF8() + " ";
    }
    return ids;
  };
  EXPECT_EQ(idsOf("n"), "n1 n2 ");
  EXPECT_EQ(idsOf("r"), "n1 r n2 r1 ");
  for (const char* id : {"two words", "#1", "a:b", "7"})
    EXPECT_EQ(idsOf(id).find(id), std::string::npos);
  expectSound(chart.chart().AsUTF8(), "bands");
}

TEST(OriginLine, IsNamedByTheChart) {
  const ChartBase holder;
  struct Case {
    std::string body, command;
    bool answer;
    const char* expected;
  };
  const Case cases[] = {
      {plain, "x='1' y='2'", true, "lineGuide style=[] x=1; extension originLineX=lineGuide1"},
      {plain, "y='2' z='3'", true, "lineGuide style=[] y=2; extension originLineY=lineGuide1"},
      {polar, "z='3'", true, "lineGuide style=[] z=3; extension originLineZ=lineGuide1"},
      {plain + "<extension a='b'/>",
       "><a><parameter name='y'/><parameter name='y' value='4'/></a>"
       "<a><style color='red'/></a><style color='blue'/>",
       true, "lineGuide style=[color=red] y=4; extension a=b originLineY=lineGuide1"},
      {plain, "><parameter name='w' value='4'/><parameter name='y' value='4'/>", false, ""},
      {bars, "x='1'", false, ""},
      // The last graph counts.
      {plain + bars, "x='1'", false, "lineGuide style=[] x=1; extension originLineX=lineGuide1"},
      {plain + plain, "y='0'", true,
       "lineGuide style=[] y=0; lineGuide style=[] y=0; extension originLineY=lineGuide2"},
      {matrix, "x='1'", true,
       "lineGuide style=[] x=1; conditionalStyle style=[visible=false] when=facet1!=facet2; "
       "extension originLineX=lineGuide1"},
      {"", "x='1'", false, ""},
      {plain, "", false, ""},
  };
  for (const Case& each : cases) {
    EditedChart chart(variables + each.body);
    std::set<std::string> tags = guides;
    tags.insert("extension");
    const std::string text = "<addOriginLine " + each.command +
                             (each.command.find('>') == std::string::npos ? ">" : "") +
                             "</addOriginLine>";
    const Fragment fragment(text);
    EXPECT_EQ(TAddOriginLine(nullptr, chart.chart(), fragment.first()).ProcessCommand(),
              each.answer)
        << each.command;
    EXPECT_EQ(told(chart, tags), each.expected) << each.command;
    chart.apply(text);
    expectSound(chart.chart().AsUTF8(), each.command);
  }
}

}  // namespace
