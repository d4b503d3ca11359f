// The commands of guides: which lines and bands are added, and which are restyled.
#include <map>

#include "commands.h"
#include "toldparts.h"

using namespace xercesc;

namespace {

std::string graph(const std::string& content,
                  const std::string& coordinates = "<dimension/><dimension/>") {
  return "<graph><coordinates>" + coordinates + "</coordinates>" + content + "</graph>";
}
std::string point(const std::string& x, const std::string& y) {
  return "<point><x variable='" + x + "'/><y variable='" + y + "'/></point>";
}

std::string chartOf(const std::string& name) {
  const std::string flat = "<dimension/><dimension/>";
  const std::string second = flat + "</coordinates><coordinates id='second'>" + flat;
  const std::string lines = "<lineGuide x='1'><label/></lineGuide><lineGuide x='2'/>";
  const std::map<std::string, std::string> graphs = {
      {"plain", graph(point("n", "n"))},
      {"bars", graph(point("c", "n"))},
      {"deep", graph("", flat + "<dimension/>")},
      {"two blocks", graph("", second)},
      {"narrow", graph("<lineGuide y='5'/>", "<dimension/>")},
      {"polar", graph(point("n", "n"), flat + "<polarTransform/>")},
      {"table", graph("<facetLayout><tableLayout/></facetLayout>")},
      {"matrix", graph(point("e", "e"))},
      {"lines", graph(point("c", "n") + lines + "<lineGuide/>")},
      {"bands", graph(point("c", "n") +
                      "<rectangleGuide id='r1' x1='1' x2='2'/><rectangleGuide id='r2' x1='1'/>"
                      "<rectangleGuide id='r3' y1='1' y2='2'/><rectangleGuide id='r4'/>")},
      {"curves", graph("<functionGuide segments='7'/>")},
      {"curves of two", graph("<functionGuide coordinates='second'/><functionGuide/>", second)},
      {"bars twice", graph(point("c", "n")) + graph(point("d", "n"))},
      {"plain twice", graph("") + graph("")},
      {"plain, bars", graph("") + graph(point("c", "n"))},
      {"bars, plain", graph(point("c", "n")) + graph("")},
      {"nothing", ""},
  };
  return "<sourceVariable id='n'/>"
         "<sourceVariable id='c' categorical='true'><format><relabel from='1' to='One'/>"
         "<relabel from='2' to='Two'/></format></sourceVariable>"
         "<sourceVariable id='d'><format><relabel from='7' to='2'/></format></sourceVariable>"
         "<expressionVariable id='e' expression='n/c'/>" +
         graphs.at(name);
}

// Rows of the chart, the command's attributes and content, and what the chart has then.
template <class Command>
void expectRows(const char* table, const std::set<std::string>& tags) {
  const ChartBase holder;
  for (const std::vector<std::string>& row : rowsOf(table)) {
    EditedChart chart(chartOf(row.at(0)));
    const bool hasContent = row.at(1).find('>') != std::string::npos;
    const Fragment fragment("<c " + row.at(1) + (hasContent ? "" : ">") + "</c>");
    Command(nullptr, chart.chart(), fragment.first()).ProcessCommand();
    EXPECT_EQ(told(chart, tags), row.at(2) == "none" ? "" : row.at(2)) << row[0] << " " << row[1];
    expectSound(chart.chart().AsUTF8(), row[1]);
  }
}

const std::set<std::string> guides = {"lineGuide", "rectangleGuide", "functionGuide",
                                      "label",     "text",           "conditionalStyle"};

TEST(ReferenceLine, StandsAtValues) {
  expectRows<TReferenceLine>(R"(
plain | x='1' name='a'><style color='blue'/><style color='red'/>
 | lineGuide name=a style=[color=red] x=1
plain | x='1' y='2' z='3' name='a' | lineGuide x=1; lineGuide name=a style=[] y=2
deep | x='1' z='3' | lineGuide x=1; lineGuide style=[] z=3
plain | ><parameter name='x' value=''/><parameter name='x' value='4'/>
 <parameter name='x' value='5'/><parameter name='z' value='6'/> | lineGuide style=[] x=4
plain | x='1'><parameter name='x' value='4'/> | lineGuide style=[] x=1
plain | name='a' | none
lines | name='a'><style color='red'/> | lineGuide x=1; label; lineGuide x=2; lineGuide
two blocks | x='1' | lineGuide coordinates=coordinates1 style=[] x=1
two blocks | x='1' coordinate='1' | lineGuide coordinates=second style=[] x=1
two blocks | x='1' coordinate='2' | none
two blocks | x='1' coordinate='-1' | none
polar | x='1' | none
table | x='1' | none
matrix | x='1'
 | lineGuide style=[] x=1; conditionalStyle style=[visible=false] when=facet1==facet2
narrow | y='5'><style color='red'/> | lineGuide style=[color=red] y=5
narrow | y='6'><style color='red'/> | lineGuide style=[] y=5
bars | x='Two' xcategorical='true' | lineGuide style=[] x=2
bars | x='Two' | lineGuide style=[] x=Two
bars | xcategorical='true'><parameter name='x' value='Two'/> | lineGuide style=[] x=Two
bars | ><parameter name='x' value='Two' categorical='true'/> | lineGuide style=[] x=2
bars | x='None' y='4' xcategorical='true' | lineGuide style=[] y=4
bars twice | x='Two' xcategorical='true' | lineGuide style=[] x=2; lineGuide style=[] x=7
lines | x='None' xcategorical='true'><style color='red'/>
 | lineGuide style=[] x=1; label; lineGuide style=[] x=2; lineGuide style=[]
lines | styleOnly='true' x='One' xcategorical='true'><style color='red'/>
 | lineGuide style=[color=red] x=1; label; lineGuide style=[] x=2; lineGuide style=[]
lines | styleOnly='true'><style color='red'/>
 | lineGuide style=[color=red] x=1; label; lineGuide style=[color=red] x=2;
 lineGuide style=[color=red]
plain | y='0.5*x' numberPoints='2' name='a' | functionGuide name=a segments=2 style=[] value=0.5*x
plain | x='9' numberPoints='1' | functionGuide segments=100 style=[]
plain | y='x' numberPoints='1.5x' | lineGuide style=[] y=x
plain | y='x' numberPoints='4294967296' | functionGuide segments=100 style=[] value=x
bars | y='x' numberPoints='50' | none
curves | y='z' numberPoints='9' styleOnly='true'><style color='red'/>
 | functionGuide segments=7 style=[color=red]
curves of two | numberPoints='9' coordinate='1' styleOnly='true'><style color='red'/>
 | functionGuide coordinates=second style=[color=red]; functionGuide
)",
                             guides);
}

TEST(ReferenceLine, WritesAndStylesLabels) {
  expectRows<TReferenceLine>(R"(
plain | y='1'><label>a</label> | lineGuide style=[] y=1; label style=[labelLocationHorizontal=negative
 labelLocationVertical=center] textFrameStyle=[color=white color2=black]; text text=a
bars | x='1' y='None' ycategorical='true'><label>b</label><label>a<style color='green'/>
 <style number='1' color='blue'/></label> | lineGuide style=[] x=1; label style=[color=green
 labelLocationHorizontal=center labelLocationVertical=negative]
 textFrameStyle=[color=blue color2=black]; text text=a
lines | styleOnly='true' x='1'><label>b<style color='red'/><style number='1' color='blue'/>
 <style number='2' color='green'/></label> | lineGuide style=[] x=1; label style=[color=red]
 textFrameStyle=[color=blue]; lineGuide style=[] x=2; lineGuide style=[]
lines | styleOnly='true'><label><style number='1' color='red'/></label> | lineGuide style=[] x=1;
 label textFrameStyle=[color=red]; lineGuide style=[] x=2; lineGuide style=[]
)",
                             guides);
}

TEST(ReferenceRectangle, IsABandOfOneDimension) {
  expectRows<TReferenceRectangle>(R"(
plain | x1='1' x2='2' y1='3' y2='4' name='a' zOrder='-1'><style color='red'/>
 | rectangleGuide name=a style=[color=red] x1=1 x2=2 zOrder=-1
plain | x2='2' y1='3' | rectangleGuide style=[] y1=3
plain | name='a' styleOnly='true' | none
bars | x1='One' x2='Two' xcategorical='true' | rectangleGuide style=[] x1=1 x2=2
bars | x1='One' x2='None' xcategorical='true' | none
bars | x1='None' y1='3' xcategorical='true' | none
two blocks | y1='1' coordinate='1' | rectangleGuide coordinates=second style=[] y1=1
plain | y1='1' coordinate='1' | none
polar | y1='1' | none
table | y1='1' zOrder='99999999999' | rectangleGuide style=[] y1=1 zOrder=2147483647
plain | y1='1'><label>a</label> | rectangleGuide style=[] y1=1; label
 style=[labelLocationHorizontal=negative labelLocationVertical=center]
 textFrameStyle=[color=white color2=black]; text text=a
)",
                                  guides);
}

TEST(ReferenceRectangle, RestylesBandsByIdOrValue) {
  const ChartBase holder;
  const std::pair<std::string, std::string> rows[] = {
      {"id='r1'", "r1 "},
      {"id='nobody'", ""},
      {"x1='1'", "r1 r2 r3 r4 "},  // those without x2, too
      {"x1='9' x2='2'", "r1 "},
      {"y1='1' y2='9'", "r3 "},
      {"x2='None' x1='One' xcategorical='true'", "r1 r2 "},
      {"x1='1' x2='None' xcategorical='true'", ""},
  };
  for (const auto& [attributes, expected] : rows) {
    EditedChart chart(chartOf("bands"));
    const std::string command = "<addReferenceRectangle styleOnly='true' zOrder='3' " + attributes +
                                "><style color='red'/></addReferenceRectangle>";
    chart.apply(command);
    std::string ids;
    for (const char* id : {"r1", "r2", "r3", "r4"}) {
      const DOMElement* band = chart.chart().getElementById(ChartString(id).xc_str());
      if (band->hasAttribute(u"zOrder")) ids += std::string(id) + " ";
    }
    EXPECT_EQ(ids, expected) << attributes;
    const std::string once = chart.body();
    chart.apply(command);
    EXPECT_EQ(chart.body(), once) << attributes;
  }
}

TEST(ReferenceRectangle, KeepsIdsUniqueAndNames) {
  EditedChart chart(chartOf("plain twice"));
  for (const char* id : {"n", "r", "two words", "#1", "7"}) {
    chart.apply(std::string("<addReferenceRectangle x1='1' id='") + id + "'/>");
  }
  std::string ids;
  const DOMNodeList* bands =
      chart.chart().getImplementation()->getElementsByTagName(u"rectangleGuide");
  for (XMLSize_t i = 0; i < bands->getLength(); ++i) {
    ids +=
        ChartString(static_cast<DOMElement*>(bands->item(i))->getAttribute(u"id")).toUTF8() + " ";
  }
  EXPECT_EQ(ids, "n1 r    n2 r1    ");
}

TEST(OriginLine, IsNamedByTheChart) {
  std::set<std::string> tags = guides;
  tags.insert("extension");
  expectRows<TAddOriginLine>(R"(
plain | x='1' y='2' | lineGuide style=[] x=1; extension originLineX=lineGuide1
polar | z='3'><a><style color='red'/></a><style color='blue'/>
 | lineGuide style=[color=red] z=3; extension originLineZ=lineGuide1
plain | ><a><parameter name='y'/><parameter name='y' value='4'/></a>
 | lineGuide style=[] y=4; extension originLineY=lineGuide1
plain | ><parameter name='w' value='4'/><parameter name='y' value='4'/> | none
bars | x='1' | none
plain, bars | x='1' | lineGuide style=[] x=1; extension originLineX=lineGuide1
bars, plain | x='1' | lineGuide style=[] x=1; extension originLineX=lineGuide1
plain twice | y='0' | lineGuide style=[] y=0; lineGuide style=[] y=0;
 extension originLineY=lineGuide2
matrix | x='1' | lineGuide style=[] x=1; conditionalStyle style=[visible=false]
 when=facet1!=facet2; extension originLineX=lineGuide1
)",
                             tags);
  const std::pair<const char*, bool> answers[] = {
      {"plain", true}, {"bars", false}, {"plain, bars", false}, {"nothing", false}};
  for (const auto& [name, answer] : answers) {
    EditedChart chart(chartOf(name));
    const Fragment fragment("<addOriginLine x='1'/>");
    EXPECT_EQ(TAddOriginLine(nullptr, chart.chart(), fragment.first()).ProcessCommand(), answer);
  }
}

}  // namespace
