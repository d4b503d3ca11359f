// The commands of bins, and of the looks that give flat charts a depth.
#include <map>
#include <regex>

#include "commands.h"
#include "toldparts.h"

using namespace xercesc;

namespace {

const std::string variables =
    "<sourceVariable id='n'/><sourceVariable id='long'/>"
    "<expressionVariable id='e' expression='long/n'/>"
    "<expressionVariable id='whole' expression='long'/>";

std::string graph(const std::string& content,
                  const std::string& coordinates = "<dimension/><dimension/>") {
  return "<graph id='g'><coordinates>" + coordinates + "</coordinates>" + content + "</graph>";
}
std::string point(const std::string& content) {
  return "<point style='s'><x variable='n'/>" + content + "</point>";
}
std::string style(const std::string& attributes) {
  return "<style id='s' " + attributes + "/>";
}

TEST(HistogramBinning, MakesBinsAnew) {
  const ChartBase holder;
  const std::string bins = "<binStatistic binStart='7' binWidth='8' gridType='dot'/>";
  for (const std::vector<std::string>& row : rowsOf(R"(
count | binStart='1' binWidth='2' binCount='3'> | summaryStatistic method=count; binStatistic
 binStart=1 binWidth=2
percentCount | binCount='3'> | summaryStatistic method=percentCount; binStatistic binCount=3
count | > | summaryStatistic method=count; binStatistic
count | binWidth='2'><a><parameter name='bin-width' value='4'/></a><parameter name='start' value='5'/>
 <parameter name='start' value='6'/><parameter name='start'/> | summaryStatistic method=count;
 binStatistic binStart=6 binWidth=2
count | binWidth='2,5' binCount='3'><parameter name='start' value='five'/> |
 summaryStatistic method=count; binStatistic binCount=3
mean | binCount='3'> | binStatistic binStart=7 binWidth=8 gridType=dot; summaryStatistic
 augment=always method=mean; summaryStatistic method=mean
)")) {
    const std::string summaries = "<summaryStatistic method='" + row.at(0) +
                                  "' augment='always'/><summaryStatistic method='mean'/>";
    EditedChart chart(graph("<interval>" + bins + summaries + "</interval>"));
    chart.apply("<setHistogramBinning " + row.at(1) + "</setHistogramBinning>");
    EXPECT_EQ(told(chart, {"summaryStatistic", "binStatistic"}), row.at(2)) << row[1];
  }
  EditedChart bars(graph("<interval><summaryStatistic method='count'/></interval>"));
  bars.apply("<setHistogramBinning binCount='3'/>");
  EXPECT_EQ(told(bars, {"binStatistic"}), "");
}

TEST(ScatterplotBinning, MakesTheGridAtThePlace) {
  const ChartBase holder;
  const std::string deep = graph("<point><x/><y/><z variable='n'/></point>",
                                 "<dimension/><dimension/><dimension><axis/></dimension>");
  // Hexagons don't fill space.
  for (const std::string grid : {"hex", "dot", "square", "", "Hex"}) {
    for (const std::string place : {"grid", "centroid", "", "x"}) {
      for (const bool isDeep : {false, true}) {
        EditedChart chart(variables + (isDeep ? deep : graph("<point/>")));
        chart.apply("<setScatterplotBinning gridType='" + grid + "' location='" + place +
                    "' method='allDimensions'/>");
        const bool isGrid = !grid.empty() && grid != "Hex" && !(grid == "hex" && isDeep);
        const bool isPlace = place == "grid" || place == "centroid";
        EXPECT_EQ(told(chart, {"binStatistic"}),
                  "binStatistic" + (isGrid ? " gridType=" + grid : "") +
                      (isPlace ? " location=" + place : "") + " method=allDimensions");
      }
    }
  }
  for (const std::vector<std::string>& row : rowsOf(R"(
<point><binStatistic binCount='1' location='grid'/></point> | binCount='2' binWidth='3' binStart='4'>
 | binStatistic binCount=2 binStart=4 method=response
<line><binStatistic binCount='1'/></line> | binWidth='3' method='notResponse'>
 | binStatistic binWidth=3 method=notResponse
<line><binStatistic binCount='1'/><smoothStatistic/></line><area><binStatistic/></area> | binWidth='3'>
 | binStatistic binCount=1; binStatistic
<point/> | gridType='hex' location='grid'><parameter name='grid' value='square'/>
 <parameter name='grid' value='dot'/><parameter name='location' value='centroid'/>
 <parameter name='location' value='hex'/><a><parameter name='grid' value='hex'/></a>
 | binStatistic gridType=square location=centroid method=response
)")) {
    EditedChart chart(graph(row.at(0)));
    chart.apply("<setScatterplotBinning " + row.at(1) + "</setScatterplotBinning>");
    EXPECT_EQ(told(chart, {"binStatistic"}), row.at(2)) << row[1];
  }
  // A dot plot has no response
  EditedChart dots(variables + graph("<point><x variable='n'/></point>", "<dimension/>"));
  dots.apply("<setScatterplotBinning gridType='dot'/>");
  EXPECT_EQ(told(dots, {"binStatistic", "colorComponent", "legend"}), "binStatistic gridType=dot");
}

TEST(ScatterplotBinning, ShowsCountsByColorOrSize) {
  const ChartBase holder;
  // The point's style and aesthetics, the command's attributes, and what is there then. Brightness
  // runs from 0.9 to 0.1, saturation the other way.
  for (const std::vector<std::string>& row : rowsOf(R"(
color='white' |  |  | saturation; style color=white
color='#FFFFFF' |  | low='0.5' | saturation low=0.5; style color=#FFFFFF
color='yellow' color2='red' |  | low='0.8' high='0.2' | saturation high=0.8 low=0.2; style color=yellow
 color2=red
color='#7f8080' |  |  | saturation; style color=#7f8080
color='#7f7f7f' |  |  | brightness; style color=#7f7f7f
color='#00E800' |  |  | saturation; style color=#00E800
color='#FF00FF' |  |  | brightness; style color=#FF00FF
color='#FF' |  |  | brightness; style color=#FF
color='#F0FGF0' |  |  | brightness; style color=#F0FGF0
color='DarkRed' |  |  | brightness; style color=DarkRed
color='teal' |  |  | brightness; style color=teal
color='transparent' color2='white' |  |  | saturation; style color=white color2=white
color2='transparent' |  |  | brightness; style color=black color2=transparent
color='white' | <color affect='main'/> |  | color affect=both; brightness; style color=black
color2='red' |  | size='true' low='9pt' high='3pt' | size high=3pt low=9pt; style color=red color2=red
size='4pt' |  | size='true' | size high=4pt low=1pt; style size=4pt
size='4pt 2pt 8pt' color='blue' |  | size='true' | size high=8pt low=2pt; style color=blue
 size=4pt 2pt 8pt
color='white' | <color/> | size='true' | size high=5pt low=1pt; color; style color=transparent
color='white' | <size low='2pt'/> | size='true' | size low=2pt; style color=white
)")) {
    EditedChart chart(variables + graph(point(row.at(1))) + style(row.at(0)));
    chart.apply("<setScatterplotBinning " + row.at(2) + "/>");
    std::string text = told(chart, {"color", "colorComponent", "size", "style"});
    // Behind the style of the chart come those of the legend.
    text = text.substr(0, text.find("; style", text.find("style") + 1));
    for (const auto& [usual, brief] : std::initializer_list<std::pair<const char*, const char*>>{
             {"colorComponent affect=main (high=.* low=.*) type=(saturation|brightness)", "$2 $1"},
             {" variable=n", ""},
             {"saturation high=0.9 low=0.1", "saturation"},
             {"saturation high=0.9 low", "saturation low"},
             {"brightness high=0.1 low=0.9", "brightness"}}) {
      text = std::regex_replace(text, std::regex(usual), brief);
    }
    EXPECT_EQ(text, row.at(3)) << row[0];
    expectSound(chart.chart().AsUTF8(), row[0]);
  }
}

TEST(ScatterplotBinning, FindsTheVariable) {
  const ChartBase holder;
  // "whole" has nothing behind a name.
  for (const std::vector<std::string>& row : rowsOf(R"(
<point><x variable='n'/></point> | variable=n
<point><x variable='e'/></point> | variable=long
<point><x variable='whole'/></point> | none
<point><x variable='s'/></point> | none
<point><y variable='n'/></point> | none
<point><x><expressionVariable expression='s+n'/></x></point> | none
<line><x variable='n'/></line> | none
)")) {
    EditedChart chart(variables + graph(row.at(0)) + style(""));
    chart.apply("<setScatterplotBinning/>");
    const bool isNone = row.at(1) == "none";
    const std::string text = told(chart, {"binStatistic", "colorComponent", "legend"});
    EXPECT_EQ(text.find("legend") == text.npos, isNone) << row[0];
    EXPECT_NE(text.find(isNone ? "binStatistic" : row[1] + "; binStatistic"), text.npos) << row[0];
  }
}

const std::string binned = "<point><x variable='n'/></point>";

TEST(ScatterplotBinning, PlacesLegends) {
  const ChartBase holder;
  // What stands around the graph, its content, and the places of the new legend, less its extents.
  for (const std::vector<std::string>& row : rowsOf(R"(
<style/> | POINT | right: attach legend1; left: fixed 75%; top: align g; frameLegendBin=legend1
 legend10=legend1 legend11=legend1 legend12=legend1 legend2=legend1 legend3=legend1 legend4=legend1
 legend5=legend1 legend6=legend1 legend7=legend1 legend8=legend1 legend9=legend1
<legend id='l'/><legend id='m'/><extension legend1='l' legend2='m'/> | <point/>POINT<line/>
 | right: fixed 99%; left: align m; top: attach m; frameLegendBin1=legend1 legend1=l legend10=legend1
 legend11=legend1 legend12=legend1 legend2=m legend4=legend1 legend5=legend1 legend6=legend1
 legend7=legend1 legend8=legend1 legend9=legend1
<container id='c'/><container/> | POINT | left: align c; top: align c; right: fixed 99%;
 frameLegendBin=legend1
<container id='c'><labelFrame/><labelFrame id='f'/></container> | POINT | left: align c;
 top: attach f; right: fixed 99%; frameLegendBin=legend1
<container id='c'><labelFrame/><legend/><legend id='l'/></container> | POINT | left: align c;
 top: attach l; right: fixed 99%; frameLegendBin=legend1
<container id='c'/> | POINTPOINT | left: align c; top: align c; left: align c; top: attach legend1;
 right: fixed 99%; frameLegendBin=legend1 frameLegendBin1=legend2
)")) {
    const std::string content = std::regex_replace(row.at(1), std::regex("POINT"), binned);
    const std::string around = row.at(0);
    const bool isBefore = around.starts_with("<container");
    const std::string plot =
        "<graph id='g'><location part='right' method='fixed' value='99%'/><coordinates><dimension/>"
        "<dimension/></coordinates>" +
        content + "</graph>";
    EditedChart chart(variables + (isBefore ? around + plot : plot + around));
    chart.apply("<setScatterplotBinning/>");
    std::string text = told(chart, {"location", "extension"});
    text = std::regex_replace(text, std::regex("location method=content part=[a-z]*; |extension "),
                              "");
    text = std::regex_replace(
        text, std::regex("location method=([a-z]*) part=([a-z]*) (value|target)="), "$2: $1 ");
    EXPECT_EQ(text, row.at(2)) << around;
    expectSound(chart.chart().AsUTF8(), around);
  }
}

TEST(ScatterplotBinning, UsesLegendsAgain) {
  const ChartBase holder;
  const std::string command = "<setScatterplotBinning><label>a</label></setScatterplotBinning>";
  EditedChart chart(variables + graph(binned + "<line/>" + binned) + "<graph><coordinates>" +
                    "<dimension/><dimension/></coordinates>" + binned + "</graph>");
  chart.apply(command);
  // One for the first points of both graphs, one for the second point.
  const std::string transparent = "[color=transparent color2=transparent]";
  const std::string legend = "legend style=" + transparent + " tickFrameStyle=" + transparent +
                             " tickTextStyle=[color=black color2=transparent]; text text=a; ";
  EXPECT_EQ(told(chart, {"legend", "legendTarget", "text"}),
            legend + "legendTarget target=colorComponent1; legendTarget target=colorComponent3; " +
                legend + "legendTarget target=colorComponent2");
  expectSound(chart.chart().AsUTF8(), command);
  const std::string once = chart.body();
  chart.apply(command);
  EXPECT_EQ(chart.body(), once);

  // Other values are set anew, the label stays, and its styles and the legend's change.
  chart.apply(
      "<setScatterplotBinning low='0.3'><label>b<style color='red'/></label>"
      "<legendStyle><a><style color='blue'/></a><style color='red'/></legendStyle>"
      "<legendFrameStyle><style color2='grey'/></legendFrameStyle>"
      "<legendLabelStyle><style color='white'/></legendLabelStyle></setScatterplotBinning>");
  const std::string dressed =
      "legend style=[color=blue color2=transparent] tickFrameStyle=[color=transparent color2=grey] "
      "tickTextStyle=[color=white color2=transparent]; label style=[color=red] textFrameStyle="
      "[color=transparent color2=transparent visible=false]; text text=a";
  EXPECT_EQ(told(chart, {"legend", "label", "text"}), dressed + "; " + dressed);
  EXPECT_TRUE(told(chart, {"colorComponent"}).starts_with("colorComponent affect=main high=0.3"));

  // A legend that is gone takes what it would show.
  EditedChart without(variables + graph(binned) + "<extension frameLegendBin='gone'/>");
  without.apply(command);
  EXPECT_EQ(told(without, {"legend", "legendTarget"}), "");
  // One that there is keeps its colours, and its points what their author had them show.
  EditedChart known(
      variables + graph("<point><x variable='n'/><colorComponent id='own' high='1'/></point>") +
      "<legend id='l' style='s'/>" + style("color='red'") + "<extension frameLegendBin='l'/>");
  known.apply(command);
  EXPECT_TRUE(
      told(known, {"colorComponent", "legend"})
          .starts_with(
              "colorComponent high=1; colorComponent affect=main high=0.1 low=0.9 type=brightness "
              "variable=n; legend style=[color=red]"));
  EditedChart unnamed(variables + graph(binned));
  unnamed.apply("<setScatterplotBinning/>");
  EXPECT_EQ(told(unnamed, {"label", "text"}), "label; text text=Scale");
  EditedChart listed(variables +
                     graph("<point><x variable='n'/><styleBy styleCycle='y'/></point>") +
                     "<styleCycle id='y'><cycle><style color='red' color2='blue'/></cycle>"
                     "</styleCycle>");
  listed.apply("<setScatterplotBinning/>");
  EXPECT_NE(told(listed, {"style"}).find("color=blue color2=blue"), std::string::npos);
}

// The chart, the command's attributes and content, and the transforms, dimensions and styles of the
// chart then; for `answer`, what the command answers.
template <class Command>
void expectEffects(bool answer, const char* table) {
  const std::string bar = "<interval><x/><y/></interval>";
  const std::string flat = "<dimension/><dimension/>";
  const std::string shadow = "shadow-color='grey' shadow-dx='1pt' shadow-dy='1pt'";
  const std::map<std::string, std::string> charts = {
      {"bar", graph(bar)},
      {"two bars", graph(bar + bar + "<planeGuide normal='y'/><frameGuide/>")},
      {"oblique", graph(bar, flat + "<obliqueTransform dx='1'/>")},
      {"transposed", graph(bar, flat + "<transposeTransform/>")},
      {"deep", graph("<interval><x/><z variable='n'/></interval>", flat + "<dimension/>")},
      {"hardly deep", graph("<interval><x/><z/></interval>", flat + "<dimension/>")},
      {"without x", graph("<interval><y/></interval>")},
      {"line", graph("<line><x/></line>")},
      {"mixed", graph("<point/><line/>" + bar)},
      {"pie", graph(bar, flat + "<polarTransform/>")},
      {"deep pie", graph(bar, flat + "<dimension/><polarTransform/>")},
      {"transposed pie", graph(bar, flat + "<transposeTransform/><polarTransform/>")},
      {"shadowed pie", graph("<interval style='s'><x/></interval>",
                             "<dimension/><polarTransform/><insetTransform x_min='1'/>"
                             "<rectangularTransform zeta='1'/>") +
                           style(shadow + " shadow-opacity='1' color='red'")},
      {"bar, pie", "<container><graph><coordinates><polarTransform/></coordinates>" + bar +
                       "</graph></container>" + graph(bar)},
      {"points", graph("<point/>", "<dimension/><rectangularTransform/>")},
      {"nothing", ""},
  };
  const ChartBase holder;
  for (const std::vector<std::string>& row : rowsOf(table)) {
    EditedChart chart(variables + charts.at(row.at(0)));
    const bool hasContent = row.at(1).find('>') != std::string::npos;
    const Fragment fragment("<c " + row.at(1) + (hasContent ? "" : ">") + "</c>");
    const auto run = [&] {
      return Command(nullptr, chart.chart(), fragment.first()).ProcessCommand();
    };
    EXPECT_EQ(run(), answer) << row[0] << " " << row[1];
    std::string expected = row.at(2) == "none" ? "" : row.at(2);
    const std::string mark = "walls";
    if (expected.ends_with(mark)) {
      expected.replace(expected.size() - mark.size(), mark.size(),
                       "planeGuide normal=x style=[color=silver]; planeGuide normal=y "
                       "style=[color=silver]; planeGuide normal=z style=[color=silver]; "
                       "frameGuide style=[color=black]");
    }
    EXPECT_EQ(told(chart, {"obliqueTransform", "rectangularTransform", "insetTransform",
                           "transposeTransform", "dimension", "interval", "point", "line",
                           "planeGuide", "frameGuide"}),
              expected)
        << row[0] << " " << row[1];
    run();
    expectSound(chart.chart().AsUTF8(), row[0]);
  }
}

TEST(BarEffects, MakeBlocks) {
  expectEffects<TAddBarEffects>(true, R"(
bar | depth='' | dimension; dimension; dimension; interval style=[depth=100%]; walls
bar | theta='30' distance='2' foreshortening='0.5' xscale='1' depth='8pt' zLocation='3'>
 <z location='9'/><parameter name='theta' value='45'/> | dimension; dimension; dimension;
 obliqueTransform distance=2 foreShortening=0.5 theta=30 xscale=1;
 interval style=[depth=8pt] zLocation=3; walls
oblique | ><parameter name='theta'/><a><parameter name='theta' value='45'/></a>
 <parameter name='theta' value='60'/><z location='1'/><z location='2'/><z/> | dimension; dimension;
 dimension; obliqueTransform theta=45; interval style=[depth=100%] zLocation=2; walls
transposed | xscale='2' | dimension; dimension; dimension; transposeTransform;
 obliqueTransform xscale=2; interval style=[depth=100%]; walls
hardly deep | theta='' | dimension; dimension; dimension; interval style=[depth=100%]; walls
line | applyToNonBar='true' | dimension; dimension; dimension; line style=[depth=100%]; walls
two bars | depth='1pt' | dimension; dimension; dimension; interval style=[depth=1pt];
 interval style=[depth=1pt]; planeGuide normal=x style=[color=silver];
 planeGuide normal=y style=[color=silver]; planeGuide normal=z style=[color=silver]; frameGuide;
 frameGuide style=[color=black]; frameGuide style=[color=black]
bar | ><style color='red'/><style number='1' color='white'/><a><style number='3' color='blue'/></a>
 <style number='4' color2='grey'/><style number='2' color='green'/> | dimension; dimension;
 dimension; interval style=[depth=100%]; planeGuide normal=x style=[color=white];
 planeGuide normal=y style=[color=green]; planeGuide normal=z style=[color=blue];
 frameGuide style=[color=red color2=grey]
)");
  expectEffects<TAddBarEffects>(false, R"(
pie | theta='30' | dimension; dimension; interval
deep | theta='30' | dimension; dimension; dimension; interval
without x | theta='30' | dimension; dimension; interval
line | theta='30' | dimension; dimension; line
nothing | theta='30' | none
)");
}

TEST(PieEffects, TiltRoundGraphs) {
  expectEffects<TAddPieEffects>(true, R"(
pie | depth='' | dimension; interval style=[]
pie | phi='30' theta='10' distance='4' depth='20%' zLocation='1'><parameter name='phi' value='5'/>
 | dimension; rectangularTransform distance=4 phi=30 theta=10;
 interval style=[depth=20%] zLocation=1
shadowed pie | depth='' | dimension; rectangularTransform zeta=1; interval style=[color=red]
shadowed pie | ><parameter name='phi' value='5'/><z location='2'/> | dimension;
 rectangularTransform phi=5; interval style=[color=red] zLocation=2
transposed pie | phi='1' | dimension; dimension; transposeTransform; rectangularTransform phi=1;
 interval style=[]
deep pie | depth='' | dimension; interval style=[]
bar, pie | graph='1' depth='1pt' | interval style=[depth=1pt]; dimension; dimension; interval
)");
  expectEffects<TAddPieEffects>(false, R"(
bar | phi='1' | dimension; dimension; interval
transposed | phi='1' | dimension; dimension; transposeTransform; interval
bar, pie | graph='2' depth='1pt' | interval; dimension; dimension; interval
)");
}

TEST(ShadowEffects, GoBehindAllButPoints) {
  expectEffects<TShadowEffects>(true, R"(
mixed | shadow-dx='1pt' shadow-dy='2pt' | dimension; dimension; insetTransform x_max=0.05 y_max=0.05;
 point; line style=[shadow-color=grey shadow-dx=1pt shadow-dy=2pt shadow-opacity=0.5];
 interval style=[shadow-color=grey shadow-dx=1pt shadow-dy=2pt shadow-opacity=0.5]
transposed | shadow-dx='1pt' shadow-dy='2pt' | dimension; dimension; transposeTransform;
 insetTransform x_max=0.05 y_max=0.05;
 interval style=[shadow-color=grey shadow-dx=1pt shadow-dy=2pt shadow-opacity=0.5]
shadowed pie | shadow-dx='1pt' shadow-dy='2pt' | dimension; insetTransform x_min=1; interval
 style=[color=red shadow-color=grey shadow-dx=1pt shadow-dy=2pt shadow-opacity=0.5]
points | shadow-dx='1pt' shadow-dy='2pt' | dimension; rectangularTransform; point
)");
  expectEffects<TShadowEffects>(false, R"(
bar | shadow-dx='1pt' | dimension; dimension; interval
bar | shadow-dy='1pt' | dimension; dimension; interval
)");
}

}  // namespace
