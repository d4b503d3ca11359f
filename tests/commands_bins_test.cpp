// The commands of bins, and of the looks that give flat charts a depth.
#include "commands.h"
#include "plxgraph.h"
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
std::string point(const std::string& content, const std::string& x = "n") {
  return "<point id='p' style='s'><x variable='" + x + "'/><y variable='n'/>" + content +
         "</point>";
}
std::string style(const std::string& attributes) {
  return "<style id='s' " + attributes + "/>";
}

TEST(HistogramBinning, MakesBinsAnew) {
  const ChartBase holder;
  const auto histogram = [](const std::string& method, const std::string& bins) {
    return graph("<interval>" + bins + "<summaryStatistic method='" + method +
                 "' augment='always'/><summaryStatistic method='mean'/></interval>");
  };
  const std::string bins = "<binStatistic binStart='7' binWidth='8' gridType='dot'/>";
  struct Row {
    std::string body, attributes, parameters, expected;
  };
  const Row rows[] = {
      {histogram("count", bins), "binStart='1' binWidth='2' binCount='3'", "",
       "summaryStatistic method=count; binStatistic binStart=1 binWidth=2"},
      {histogram("percentCount", bins), "binCount='3'", "",
       "summaryStatistic method=percentCount; binStatistic binCount=3"},
      {histogram("count", bins), "", "", "summaryStatistic method=count; binStatistic"},
      {histogram("count", bins), "binWidth='2'",
       "<a><parameter name='bin-width' value='4'/></a><parameter name='start' value='5'/>"
       "<parameter name='start' value='6'/><parameter name='start'/>",
       "summaryStatistic method=count; binStatistic binStart=6 binWidth=2"},
      {histogram("mean", bins), "binCount='3'", "",
       "binStatistic binStart=7 binWidth=8 gridType=dot; "
       "summaryStatistic augment=always method=mean; summaryStatistic method=mean"},
      {histogram("count", ""), "binCount='3'", "",
       "summaryStatistic augment=always method=count; summaryStatistic method=mean"},
  };
  for (const Row& row : rows) {
    EditedChart chart(row.body);
    chart.apply("<setHistogramBinning " + row.attributes + ">" + row.parameters +
                "</setHistogramBinning>");
    EXPECT_EQ(told(chart, {"summaryStatistic", "binStatistic"}), row.expected) << row.attributes;
  }
}

TEST(ScatterplotBinning, MakesTheGridAtThePlace) {
  const ChartBase holder;
  const std::string deep = graph("<point><x/><y/><z variable='n'/></point>",
                                 "<dimension/><dimension/><dimension><axis/></dimension>");
  // Grids by places by depth. Hexagons don't fill space.
  for (const std::string grid : {"hex", "dot", "square", "", "Hex"}) {
    for (const std::string place : {"grid", "centroid", "", "x"}) {
      for (const bool isDeep : {false, true}) {
        EditedChart chart(variables + (isDeep ? deep : graph("<point/>")));
        chart.apply("<setScatterplotBinning gridType='" + grid + "' location='" + place +
                    "' method='allDimensions'/>");
        std::string expected = "binStatistic";
        if (grid != "" && grid != "Hex" && !(grid == "hex" && isDeep)) {
          expected += " gridType=" + grid;
        }
        if (place == "grid" || place == "centroid") expected += " location=" + place;
        EXPECT_EQ(told(chart, {"binStatistic"}), expected + " method=allDimensions");
      }
    }
  }
  struct Row {
    std::string elements, command, expected;
  };
  const std::string old = "<binStatistic binCount='1' location='grid'/>";
  const Row rows[] = {
      {"<point>" + old + "</point>", "binCount='2' binWidth='3' binStart='4'",
       "binStatistic binCount=2 binStart=4 method=response"},
      {"<line>" + old + "</line>", "binWidth='3' method='notResponse'",
       "binStatistic binWidth=3 method=notResponse"},
      {"<line>" + old + "<smoothStatistic/></line><area>" + old + "</area>", "binWidth='3'",
       "binStatistic binCount=1 location=grid; binStatistic binCount=1 location=grid"},
      {"<point/>",
       "gridType='hex' location='grid'><parameter name='grid' value='square'/>"
       "<parameter name='grid' value='dot'/><parameter name='location' value='centroid'/>"
       "<parameter name='location' value='hex'/>"
       "<a><parameter name='grid' value='hex'/></a>",
       "binStatistic gridType=square location=centroid method=response"},
  };
  for (const Row& row : rows) {
    EditedChart chart(graph(row.elements));
    chart.apply("<setScatterplotBinning " + row.command +
                (row.command.find('>') == std::string::npos ? ">" : "") +
                "</setScatterplotBinning>");
    EXPECT_EQ(told(chart, {"binStatistic"}), row.expected) << row.command;
  }
  // A dot plot has no response
  EditedChart dots(variables + graph("<point><x variable='n'/></point>", "<dimension/>"));
  dots.apply("<setScatterplotBinning gridType='dot'/>");
  EXPECT_EQ(told(dots, {"binStatistic", "colorComponent", "legend"}), "binStatistic gridType=dot");
}

TEST(ScatterplotBinning, ShowsCountsByColorOrSize) {
  const ChartBase holder;
  struct Row {
    std::string body, attributes, expected;
  };
  const auto saturation = [](const std::string& range, const std::string& color) {
    return "colorComponent affect=main " + range +
           " type=saturation variable=n; "
           "summaryStatistic method=count; style " +
           color;
  };
  const auto brightness = [](const std::string& color) {
    return "colorComponent affect=main high=0.1 low=0.9 type=brightness variable=n; "
           "summaryStatistic method=count; style " +
           color;
  };
  const std::string usual = "high=0.9 low=0.1";
  const Row rows[] = {
      {style("color='white'"), "", saturation(usual, "color=white")},
      {style("color='yellow' color2='red'"), "low='0.8' high='0.2'",
       saturation("high=0.8 low=0.2", "color=yellow color2=red")},
      {style("color='#FFFFFF'"), "low='0.5'", saturation("high=0.9 low=0.5", "color=#FFFFFF")},
      {style("color='#7f8080'"), "", saturation(usual, "color=#7f8080")},
      {style("color='#7f7f7f'"), "", brightness("color=#7f7f7f")},
      {style("color='#000000'"), "", brightness("color=#000000")},
      // By the green, of which there is most in what the eye sees
      {style("color='#00E800'"), "", saturation(usual, "color=#00E800")},
      {style("color='#FF00FF'"), "", brightness("color=#FF00FF")},
      {style("color='#FF'"), "", brightness("color=#FF")},
      {style("color='#FFGFFF'"), "", brightness("color=#FFGFFF")},
      {style("color='#nothing'"), "", brightness("color=#nothing")},
      {style("color='DarkRed'"), "", brightness("color=DarkRed")},
      {style("color='teal'"), "", brightness("color=teal")},
      {style("color='transparent' color2='white'"), "",
       saturation(usual, "color=white color2=white")},
      {style("color2='transparent'"), "", brightness("color=black color2=transparent")},
      // Of sizes nothing is swapped.
      {style("color2='red'"), "size='true' low='9pt' high='3pt'",
       "size high=3pt low=9pt variable=n; summaryStatistic method=count; "
       "style color=red color2=red"},
      {style("size='4pt'"), "size='true'",
       "size high=4pt low=1pt variable=n; summaryStatistic method=count; style size=4pt"},
      {style("size='4pt 2pt 8pt' color='blue'"), "size='true'",
       "size high=8pt low=2pt variable=n; summaryStatistic method=count; "
       "style color=blue size=4pt 2pt 8pt"},
  };
  const std::set<std::string> tags = {"colorComponent", "size", "summaryStatistic", "style"};
  const auto expect = [&](const Row& row, const std::string& element) {
    EditedChart chart(variables + graph(element) + row.body);
    chart.apply("<setScatterplotBinning " + row.attributes + "/>");
    // Behind the styles of the chart come those of the legend.
    const std::string text = told(chart, tags);
    EXPECT_EQ(text.substr(0, text.find("; style", text.find("style") + 1)), row.expected)
        << row.body;
    expectSound(chart.chart().AsUTF8(), row.body);
  };
  for (const Row& row : rows) expect(row, point(""));
  // A colour by value
  expect({style("color='white'"), "",
          "colorComponent affect=main high=0.1 low=0.9 type=brightness variable=n; "
          "summaryStatistic method=count; style color=black"},
         point("<color affect='main'/>"));
  expect({style("color='white'"), "size='true'",
          "size high=5pt low=1pt variable=n; summaryStatistic method=count; "
          "style color=transparent"},
         point("<color/>"));
  // What has sizes keeps them
  expect({style("color='white'"), "size='true'", "size low=2pt; style color=white"},
         point("<size low='2pt'/>"));
}

TEST(ScatterplotBinning, FindsTheVariable) {
  const ChartBase holder;
  const std::pair<std::string, std::string> rows[] = {
      {point("", "n"), "n"},
      {point("", "e"), "long"},
      {point("", "whole"), ""},  // a name needs something behind it
      {point("", "s"), ""},
      {"<point><y variable='n'/></point>", ""},
      {"<point><x><expressionVariable expression='s+n'/></x></point>", ""},
      {"<point><x><expressionVariable expression='n+s'/></x></point>", "n"},
      {"<line><x variable='n'/></line>", ""}};
  for (const auto& [element, variable] : rows) {
    EditedChart chart(variables + graph(element) + style(""));
    chart.apply("<setScatterplotBinning/>");
    const std::string expected =
        variable.empty()
            ? "binStatistic method=response"
            : "colorComponent affect=main high=0.1 low=0.9 type=brightness variable=" + variable +
                  "; binStatistic method=response; legend";
    EXPECT_EQ(told(chart, {"binStatistic", "colorComponent", "legend"}).substr(0, expected.size()),
              expected)
        << element;
  }
}

// The parts of a chart that tell where its legends are and what they show.
const std::set<std::string> legendParts = {"location", "legendTarget", "extension"};
const std::string binned = "<point><x variable='n'/></point>";

TEST(ScatterplotBinning, PlacesLegends) {
  const ChartBase holder;
  const std::string asContent =
      "location method=content part=width; location method=content part=height; ";
  const auto free = [](int from) {
    std::string text;
    for (const char* number : {"10", "11", "12", "2", "3", "4", "5", "6", "7", "8", "9"}) {
      if (std::stoi(number) >= from) text += " legend" + std::string(number) + "=legend1";
    }
    return text;
  };
  const auto contained = [&](const std::string& place) {
    return asContent + "location method=align part=left target=c; location " + place +
           "; legendTarget target=colorComponent1; extension frameLegendBin=legend1";
  };
  const std::pair<std::string, std::string> rows[] = {
      // The graph ends where the legend begins.
      {"<graph id='g'><location part='right' value='99%'/><coordinates><dimension/><dimension/>"
       "</coordinates>" +
           binned + "</graph>",
       "location method=attach part=right target=legend1; " + asContent +
           "location method=fixed part=left value=75%; location method=align part=top target=g; "
           "legendTarget target=colorComponent1; extension frameLegendBin=legend1" +
           free(2)},
      // Beneath the last one.
      {graph("<point/>" + binned + "<line/>") +
           "<legend id='l'/><legend id='m'/><extension legend1='l' legend2='m'/>",
       asContent +
           "location method=align part=left target=m; "
           "location method=attach part=top target=m; "
           "legendTarget target=colorComponent1; "
           "extension frameLegendBin1=legend1 legend1=l" +
           [&] {
             std::string text = free(4);
             return text.insert(text.find(" legend4"), " legend2=m");
           }()},
      {"<container id='c'/><container/>" + graph(binned),
       contained("method=align part=top target=c")},
      {"<container id='c'><labelFrame/><labelFrame id='f'/></container>" + graph(binned),
       contained("method=attach part=top target=f")},
      {"<container id='c'><labelFrame/><legend/><legend id='l'/></container>" + graph(binned),
       contained("method=attach part=top target=l")},
  };
  for (const auto& [body, expected] : rows) {
    EditedChart chart(variables + body);
    chart.apply("<setScatterplotBinning/>");
    EXPECT_EQ(told(chart, legendParts), expected) << body;
    expectSound(chart.chart().AsUTF8(), body);
  }
  // The next one stands beneath
  EditedChart chart(variables + "<container id='c'/>" + graph(binned + binned));
  chart.apply("<setScatterplotBinning/>");
  EXPECT_NE(told(chart, {"location"}).find("method=attach part=top target=legend1"),
            std::string::npos);
}

TEST(ScatterplotBinning, UsesLegendsAgain) {
  const ChartBase holder;
  const std::string command = "<setScatterplotBinning><label>a</label></setScatterplotBinning>";
  EditedChart chart(variables + graph(binned + "<line/>" + binned) + "<graph><coordinates>" +
                    "<dimension/><dimension/></coordinates>" + binned + "</graph>");
  chart.apply(command);
  // One for the first points of both graphs, one for the second point.
  EXPECT_EQ(told(chart, {"legend", "legendTarget", "text"}),
            "legend style=[color=transparent color2=transparent] "
            "tickFrameStyle=[color=transparent color2=transparent] "
            "tickTextStyle=[color=black color2=transparent]; text text=a; "
            "legendTarget target=colorComponent1; legendTarget target=colorComponent3; "
            "legend style=[color=transparent color2=transparent] "
            "tickFrameStyle=[color=transparent color2=transparent] "
            "tickTextStyle=[color=black color2=transparent]; text text=a; "
            "legendTarget target=colorComponent2");
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
  const std::string dressed = told(chart, {"legend", "label", "text", "colorComponent"});
  const std::string legend =
      "legend style=[color=blue color2=transparent] tickFrameStyle=[color=transparent color2=grey] "
      "tickTextStyle=[color=white color2=transparent]; "
      "label style=[color=red] textFrameStyle=[color=transparent color2=transparent "
      "visible=false]; text text=a";
  const std::string component =
      "colorComponent affect=main high=0.3 low=0.9 type=brightness variable=n; ";
  EXPECT_EQ(dressed, component + component + component + legend + "; " + legend);

  // A legend that is gone takes what it would show.
  EditedChart without(variables + graph(binned) + "<extension frameLegendBin='gone'/>");
  without.apply(command);
  EXPECT_EQ(told(without, {"legend", "legendTarget", "colorComponent"}),
            "colorComponent affect=main high=0.1 low=0.9 type=brightness variable=n");
  // Without a label
  EditedChart unnamed(variables + graph(binned));
  unnamed.apply("<setScatterplotBinning/>");
  EXPECT_EQ(told(unnamed, {"label", "text"}), "label; text text=Scale");
  // Black is what a point without a colour turns to, and what a list of styles has second
  EditedChart listed(variables +
                     graph("<point><x variable='n'/><styleBy styleCycle='y'/></point>") +
                     "<styleCycle id='y'><cycle><style color='red' color2='blue'/></cycle>"
                     "</styleCycle>");
  listed.apply("<setScatterplotBinning/>");
  EXPECT_NE(told(listed, {"style"}).find("color=blue color2=blue"), std::string::npos);
}

// The transforms, dimensions and styles of a chart after an effect.
std::string looks(EditedChart& chart) {
  return told(chart, {"dimension", "obliqueTransform", "rectangularTransform", "insetTransform",
                      "transposeTransform", "polarTransform", "interval", "point", "line",
                      "planeGuide", "frameGuide"});
}

const std::string bar = "<interval><x/><y/></interval>";
const std::string transposed = graph(bar, "<dimension/><dimension/><transposeTransform/>");
const std::string pie = graph(bar, "<dimension/><dimension/><polarTransform/>");

struct Effect {
  std::string body, attributes, content, expected;
  bool answer = true;
};

template <class Command>
void expectEffects(std::span<const Effect> effects) {
  const ChartBase holder;
  for (const Effect& each : effects) {
    EditedChart chart(variables + each.body);
    const Fragment fragment("<c " + each.attributes + ">" + each.content + "</c>");
    const auto run = [&] {
      return Command(nullptr, chart.chart(), fragment.first()).ProcessCommand();
    };
    EXPECT_EQ(run(), each.answer) << each.body << each.attributes;
    EXPECT_EQ(looks(chart), each.expected) << each.body << each.attributes;
    run();
    expectSound(chart.chart().AsUTF8(), each.body);
  }
}

const std::string walls =
    "; planeGuide normal=x style=[color=silver]; planeGuide normal=y style=[color=silver]; "
    "planeGuide normal=z style=[color=silver]; frameGuide style=[color=black]";

TEST(BarEffects, MakeBlocks) {
  const std::string oblique = "obliqueTransform distance=2 foreShortening=0.5 theta=30 xscale=1; ";
  const std::string deep = "<dimension/><dimension/><dimension/>";
  const Effect effects[] = {
      {graph(bar), "", "", "dimension; dimension; dimension; interval style=[depth=100%]" + walls},
      {graph(bar),
       "theta='30' distance='2' foreshortening='0.5' xscale='1' depth='8pt' zLocation='3'",
       "<z location='9'/><parameter name='theta' value='45'/>",
       "dimension; dimension; dimension; " + oblique + "interval style=[depth=8pt] zLocation=3" +
           walls},
      {graph(bar, "<dimension/><dimension/><obliqueTransform dx='1'/>"), "",
       "<parameter name='theta'/><a><parameter name='theta' value='45'/></a>"
       "<parameter name='theta' value='60'/><z location='1'/><z location='2'/><z/>",
       "dimension; dimension; dimension; obliqueTransform theta=45; "
       "interval style=[depth=100%] zLocation=2" +
           walls},
      {transposed, "xscale='2'", "",
       "dimension; dimension; dimension; transposeTransform; obliqueTransform xscale=2; "
       "interval style=[depth=100%]" +
           walls},
      // Flat: not round, not deep already, and with a place on x.
      {pie, "theta='30'", "", "dimension; dimension; polarTransform; interval", false},
      {graph("<interval><x/><z variable='n'/></interval>", deep), "", "",
       "dimension; dimension; dimension; interval", false},
      {graph("<interval><x/><z/></interval>", deep), "", "",
       "dimension; dimension; dimension; interval style=[depth=100%]" + walls},
      {graph("<interval><y/></interval>"), "", "", "dimension; dimension; interval", false},
      {graph("<line><x/></line>"), "", "", "dimension; dimension; line", false},
      {graph("<line><x/></line>"), "applyToNonBar='true'", "",
       "dimension; dimension; dimension; line style=[depth=100%]" + walls},
      // A frame for each element, and three planes.
      {graph(bar + bar + "<planeGuide normal='y'/><frameGuide/>"), "", "",
       "dimension; dimension; dimension; interval style=[depth=100%]; interval "
       "style=[depth=100%]; " +
           walls.substr(2, walls.rfind(';') - 2) +
           "; frameGuide; frameGuide style=[color=black]; frameGuide style=[color=black]"},
      {graph(bar), "",
       "<style color='red'/><style number='1' color='white'/><a><style number='3' "
       "color='blue'/></a>"
       "<style number='4' color2='grey'/><style number='2' color='green'/>",
       "dimension; dimension; dimension; interval style=[depth=100%]; "
       "planeGuide normal=x style=[color=white]; planeGuide normal=y style=[color=green]; "
       "planeGuide normal=z style=[color=blue]; frameGuide style=[color=red color2=grey]"},
      {"", "", "", "", false},
  };
  expectEffects<TAddBarEffects>(effects);
}

TEST(PieEffects, TiltRoundGraphs) {
  const std::string shadowed =
      graph("<interval style='s'><x/></interval>",
            "<dimension/><dimension/><polarTransform/><insetTransform/>"
            "<rectangularTransform zeta='1'/>") +
      style("color='red' shadow-color='grey' shadow-dx='1pt' shadow-dy='1pt' shadow-opacity='1'");
  const Effect effects[] = {
      {pie, "", "", "dimension; polarTransform; interval style=[]"},
      {pie, "phi='30' theta='10' distance='4' depth='20%' zLocation='1'",
       "<parameter name='phi' value='5'/>",
       "dimension; polarTransform; rectangularTransform distance=4 phi=30 theta=10; "
       "interval style=[depth=20%] zLocation=1"},
      {shadowed, "", "",
       "dimension; polarTransform; rectangularTransform zeta=1; interval style=[color=red]"},
      {shadowed, "", "<parameter name='phi' value='5'/><z location='2'/>",
       "dimension; polarTransform; rectangularTransform phi=5; "
       "interval style=[color=red] zLocation=2"},
      {graph(bar, "<dimension/><dimension/><transposeTransform/><polarTransform/>"), "phi='1'", "",
       "dimension; dimension; transposeTransform; polarTransform; rectangularTransform phi=1; "
       "interval style=[]"},
      {graph(bar, "<dimension/><dimension/><dimension/><polarTransform/>"), "", "",
       "dimension; polarTransform; interval style=[]"},
      {graph(bar), "phi='1'", "", "dimension; dimension; interval", false},
      {transposed, "phi='1'", "", "dimension; dimension; transposeTransform; interval", false},
      {graph("<line/>", "<dimension/><polarTransform/>"), "phi='1'", "",
       "dimension; polarTransform; line", false},
      {graph(bar) + "<container><graph><coordinates><dimension/><polarTransform/></coordinates>" +
           bar + "</graph></container>",
       "graph='1' depth='1pt'", "",
       "dimension; dimension; interval; dimension; polarTransform; interval", false},
  };
  expectEffects<TAddPieEffects>(effects);
  EditedChart contained("<container><graph><coordinates><polarTransform/></coordinates>" + bar +
                        "</graph></container>");
  contained.apply("<addPieEffects graph='1' depth='1pt'/>");
  EXPECT_EQ(looks(contained), "polarTransform; interval style=[depth=1pt]");
}

TEST(ShadowEffects, GoBehindAllButPoints) {
  const std::string shadow =
      "style=[shadow-color=grey shadow-dx=1pt shadow-dy=2pt shadow-opacity=0.5]";
  const std::string both = "shadow-dx='1pt' shadow-dy='2pt'";
  const Effect effects[] = {
      {graph("<point/><line/>" + bar), both, "",
       "dimension; dimension; insetTransform x_max=0.05 y_max=0.05; point; line " + shadow +
           "; interval " + shadow},
      {transposed, both, "",
       "dimension; dimension; transposeTransform; insetTransform x_max=0.05 y_max=0.05; interval " +
           shadow},
      {graph(bar,
             "<dimension/><polarTransform/><rectangularTransform/><insetTransform x_min='1'/>"),
       both, "", "dimension; polarTransform; insetTransform x_min=1; interval " + shadow},
      {graph("<point/>", "<dimension/><rectangularTransform/>"), both, "",
       "dimension; rectangularTransform; point"},
      {graph(bar), "shadow-dx='1pt'", "", "dimension; dimension; interval", false},
      {graph(bar), "shadow-dy='1pt'", "", "dimension; dimension; interval", false},
      {"", both, "", ""},
  };
  expectEffects<TShadowEffects>(effects);
}

}  // namespace
