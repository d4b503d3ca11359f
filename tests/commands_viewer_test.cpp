// What commands add for the reader of a chart: notes at a place, popups and drill-downs.
#include "charttransformer.h"
#include "commandcases.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxstatistics.h"

using namespace xercesc;

namespace {

std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

// ---- notes

const std::string threeGraphs =
    "<sourceVariable id='c' categorical='true'><format><relabel from='1' to='North'/>"
    "<relabel from='2' to='South'/></format></sourceVariable>"
    "<sourceVariable id='d' categorical='true'><format><relabel from='7' to='North'/></format>"
    "</sourceVariable>"
    "<graph id='g'><coordinates><dimension/><dimension/><dimension/></coordinates><point><x "
    "variable='d'/>"
    "<y variable='d'/></point><point><x variable='c'/></point></graph>"
    "<graph id='h'><coordinates><dimension/></coordinates><point><x variable='d'/></point></graph>"
    "<graph id='p'><coordinates><polarTransform/><dimension/></coordinates></graph>";

TEST(AnchoredAnnotation, StandsAtItsPlace) {
  const ChartBase holder;
  // Attributes and children | graphs and places
  constexpr const char* table = R"(
x='1' y='2' z='3'> | g:1,2,3 h:1,,
x='North' xcategorical='true'> | g:7,, h:7,,
x='South' xcategorical='true'> | g:2,,
x='West' xcategorical='true'> | 0
x='1' y='North' ycategorical='true'> | g:1,7, h:1,,
x='1' y='West' ycategorical='true'> | g:1,, h:1,,
x='1' graph='2'> | h:1,,
x='1' graph='4'> | 0
><parameter name='x' value='5'/><parameter name='x' value='6'/> | g:5,, h:5,,
><parameter name='x' value='South' categorical='true'/> | g:2,,
xcategorical='true'><parameter name='x' value='South'/> | g:2,,
xcategorical='true'><parameter name='x' value='a' categorical='false'/> | g:a,, h:a,,
x='4'><parameter name='x' value='a' categorical='true'/><parameter name='y' value='8'/> | g:4,8,
  h:4,,
x='4'><parameter name='z' value='8'/> | g:4,, h:4,,
)";
  for (const std::vector<std::string>& row : rowsOf(table)) {
    EditedChart chart(threeGraphs);
    EXPECT_TRUE(chart.apply("<none/><addAnchoredAnnotation " + row[0] +
                            "<label>a</label></addAnchoredAnnotation>"));
    std::string places;
    for (const PlXGraph* graph : chart.chart().getGraphs()) {
      for (const PlXPointGuide* guide : graph->getPointGuides()) {
        places += (places.empty() ? "" : " ") + utf8(graph->getId()) + ":" + utf8(guide->getX()) +
                  "," + utf8(guide->getY()) + "," + utf8(guide->getZ());
      }
    }
    EXPECT_EQ(places.empty() ? "0" : places, row[1]) << row[0];
  }
  EXPECT_FALSE(EditedChart(threeGraphs).apply("<none/><addAnchoredAnnotation x='1'/>"));
  EXPECT_FALSE(EditedChart(threeGraphs)
                   .apply("<none/><addAnchoredAnnotation y='1'><label/><parameter "
                          "name='x'/></addAnchoredAnnotation>"));
}

TEST(AnchoredAnnotation, RestylesTheLabelsAtItsPlace) {
  const ChartBase holder;
  // Attributes | the styles of labels that turn red
  const std::pair<const char*, const char*> rows[] = {
      {"x='10'", "ab"},     {"x='10.0' y='2'", "b"}, {"x='ten'", "c"},
      {"x='0'", ""},        {"x='1e1'", "ab"},       {"x='10' y='0'", ""},
      {"x='10' z='4'", ""}, {"x='ten '", ""},        {"x='10' graph='2'", ""}};
  for (const auto& [attributes, expected] : rows) {
    EditedChart chart(
        "<graph><coordinates><dimension/></coordinates><pointGuide x='10'><label style='a'/>"
        "</pointGuide><pointGuide x='10.0' y='2'><label style='b'/><label style='b'/></pointGuide>"
        "<pointGuide x='ten'><label style='c'/></pointGuide></graph>"
        "<style id='a'/><style id='b'/><style id='c'/>");
    const EditedChart source("<style id='c' font-size='5pt'/>");
    EXPECT_TRUE(chart.apply("<none/><addAnchoredAnnotation styleOnly='true' " +
                                std::string(attributes) +
                                "><label>new<style color='red' font-size='7pt'/></label>"
                                "</addAnchoredAnnotation>",
                            &source));
    std::string red;
    for (const std::string id : {"a", "b", "c"}) {
      const std::string body = chart.body();
      if (body.find("id='" + id + "' color='red'") != body.npos) red += id;
      // What the source chart states stays.
      EXPECT_EQ(body.find("id='c' color='red' font-size"), body.npos);
      EXPECT_EQ(body.find("new"), body.npos);
    }
    EXPECT_EQ(red, expected) << attributes;
  }
}

// ---- popups

const std::string variables =
    "<sourceVariable id='c' categorical='true'/><sourceVariable id='k' categorical='true'/>"
    "<sourceVariable id='v'/>";
const std::string titles =
    "<coordinates id='1'><dimension><axis><label><text text='City'/><text text='-'/></label></axis>"
    "</dimension><dimension><axis><label><text text='Sales'/></label></axis><axis><label>"
    "<text text='-'/></label></axis></dimension><dimension><axis/></dimension></coordinates>"
    "<coordinates id='2'/>";

TEST(Popups, ShowTheValuesOfElements) {
  const ChartBase holder;
  const std::string all = "x='true' z='true' legend='true'";
  // Attributes | content of a point | template | mappings, with their statistics
  const std::string rows[][4] = {
      {"", "<y variable='v'/>", "Sales = $[1]$", "1v()"},
      {"", "<x variable='c'/>", "Sales = $[1]$", "1c(count)"},
      {"", "", "Sales = $[1]$", "1()"},
      {"y='0'", "<y variable='k'/>", "Sales = $[1]$", "1k(value)"},
      {"x='true'", "<x variable='c'/><y variable='v'/>", "City = $[1]$#Sales = $[2]$", "1c 2v()"},
      {"x='true' y='false'", "<x variable='v'/>", "City = $[1]$", "1v(value)"},
      {"z='true' y='false'", "<z variable='v'/>", " = $[1]$", "1v(value)"},
      {"z='true' x='true' y='false'", "<x variable='c'/><z variable='c'/>", "City = $[1]$# = $[2]$",
       "1c 2c"},
      {"x='true' y='false'", "<y variable='v'/>", "", ""},
      {all, "<x variable='c'/><y variable='v'/>",
       "City = $[1]$#Sales = $[2]$#Product line = $[3]$#Product line = $[4]$#Size = $[5]$",
       "1c 2v() 3k 4v(value) 5k"},
      {"y='false' legend='true'", "", "Product line = $[1]$#Product line = $[2]$#Size = $[3]$",
       "1k 2v(value) 3k"},
      {"graph='2'", "<y variable='v'/>", "none", ""}};
  for (const auto& [attributes, content, text, mappings] : rows) {
    EditedChart chart(variables + "<graph>" + titles + "<point>" + content +
                      "<color id='color' variable='k'/><size id='size' variable='v'/></point>"
                      "<line coordinates='2'/></graph><legend><label><text text='Product '/>"
                      "<text text='line'/></label><legendTarget target='color'/>"
                      "<legendTarget/><legendTarget target='1'/><legendTarget target='size'/>"
                      "</legend><legend><label><text text='Size'/></label>"
                      "<legendTarget target='color'/></legend>");
    EXPECT_TRUE(chart.apply("<addPopups " + attributes + "/>"));
    std::string shown = "none";
    std::string tokens;
    // The line is in another block.
    EXPECT_EQ(chart.chart().getPopups().size(), text == "none" ? 0 : 1);
    for (const PlXPopup* popup : chart.chart().getPopups()) {
      EXPECT_EQ(popup->getTarget(), chart.chart().getGraphs().front()->getPoints().front());
      shown = utf8(popup->getTokenTemplate());
      std::replace(shown.begin(), shown.end(), '\n', '#');
      for (const PlXTokenMapping* mapping : popup->getTokenMappings()) {
        tokens += (tokens.empty() ? "" : " ") + utf8(mapping->getValueToken()) +
                  utf8(mapping->GetAttribute(u"variable"));
        if (const PlXSummaryStatistic* statistic = mapping->getSummaryStatistic()) {
          tokens += "(" + utf8(statistic->GetAttribute(u"method")) + ")";
        }
      }
    }
    EXPECT_EQ(shown, text) << attributes << content;
    EXPECT_EQ(tokens, mappings) << attributes << content;
  }
}

TEST(Popups, ComeWithoutATemplate) {
  ChartTransformer chart(chartText(variables + "<graph><coordinates/><point><x variable='c'/>"
                                               "<y variable='v'/></point></graph>"));
  EXPECT_TRUE(chart.addPopups());
  EXPECT_NE(chart.getXML(nullptr).find("tokenTemplate=\" = $[1]$&#xA; = $[2]$\""),
            std::string::npos)
      << chart.getXML(nullptr);
  EXPECT_FALSE(chart.addPopups());
}

TEST(Popups, HaveNoMoreLinesThanAReaderWants) {
  std::string sizes;
  std::string entries;
  for (int i = 0; i < 150; ++i) {
    const std::string id = "s" + std::to_string(i);
    sizes += "<size id='" + id + "' variable='v'/>";
    entries += "<legendTarget target='" + id + "'/>";
  }
  EditedChart chart(variables + "<graph><point>" + sizes + "</point></graph><legend>" + entries +
                    "</legend>");
  chart.apply("<addPopups y='false' legend='true'/>");
  EXPECT_EQ(chart.chart().getPopups().front()->getTokenMappings().size(), 100);
}

// ---- drill-downs

// Two graphs, two legends, and labels of frames and guides.
const std::string manyParts =
    "<container><graph><coordinates><dimension><axis><label id='x'/><majorTicks id='xt'/></axis>"
    "<axis><label id='x2'/></axis></dimension><dimension><axis><majorTicks id='yt'/></axis>"
    "<axis><label id='y2'/></axis></dimension></coordinates><line id='e2'/><point id='e1'/>"
    "<lineGuide><label id='guide'/></lineGuide></graph></container>"
    "<graph><coordinates><dimension><axis><label id='ax'/></axis></dimension></coordinates>"
    "<point id='e3'/></graph><labelFrame><label id='free'/></labelFrame>"
    "<legend><label id='l1'/><legendTarget id='t1'/><legendTarget id='t2'/></legend>"
    "<legend><legendTarget id='t3'/></legend><legend><label id='l3'/></legend>";

TEST(DrillDowns, ReachTheirParts) {
  const ChartBase holder;
  // Attributes | ids
  constexpr const char* table = R"(
target='axisLabel' | x x2 y2 ax
target='axisLabel' role='y' | y2
target='axisLabel' role='z' | 0
target='axisLabel' count='2' | x2 y2
target='majorTicks' | xt yt
target='majorTicks' count='1' role='x' | xt
target='element' | e1 e2 e3
target='element' count='2' role='y' | e2
target='legend' graph='1' | t1 t2 t3
target='legend' count='3' graph='2' | t3
target='legendLabel' graph='1' | l1 l3
target='legendLabel' count='3' graph='1' | l3
target='legendLabel' count='2' graph='1' | 0
target='label' graph='1' | guide free
target='label' count='2' graph='1' | free
target='label' | guide free guide free
target='element' count='-1' | 0
target='element' count='4294967297' | 0
target='element' graph='3' | 0
target='Legend' role='q' count='0' graph='2' | ax e3 l1 l3 t1 t2 t3 guide free
graph='1' | x x2 y2 e1 e2 l1 l3 t1 t2 t3 xt yt guide free
)";
  for (const std::vector<std::string>& row : rowsOf(table)) {
    EditedChart chart(manyParts);
    EXPECT_TRUE(chart.apply("<addDrillDown " + row[0] + "/>"));
    std::string ids;
    for (const PlXExtensionVis* record : chart.chart().getExtensions()) {
      ids += (ids.empty() ? "" : " ") + utf8(record->getAttribute(u"target"));
    }
    EXPECT_EQ(ids.empty() ? "0" : ids, row[1]) << row[0];
  }
}

TEST(DrillDowns, AreLinksThatGoWithTheirPart) {
  EditedChart chart("<graph><point id='p'/></graph>");
  chart.apply("<addDrillDown target='element'/>");
  PlXGraph* graph = chart.chart().getGraphs().front();
  graph->removeElement(*graph->getPoints().front());
  EXPECT_EQ(chart.body(), "<graph/><extension drillDown='true'/>");
}

TEST(DrillDowns, RepeatThePartsOfTheChartAHundredTimes) {
  std::string graphs;
  for (int i = 0; i < 120; ++i) graphs += "<graph/>";
  EditedChart chart(graphs + "<legend><label/></legend>");
  chart.apply("<addDrillDown/>");
  EXPECT_EQ(chart.chart().getExtensions().size(), 100);
}

constexpr CommandCase cases[] = {
    {"<graph><coordinates><dimension/><dimension/></coordinates><point><x/></point></graph>",
     "<addAnchoredAnnotation x='1' name='n'><label>Peak<style color='red'/>"
     "<style number='1' color='blue'/></label></addAnchoredAnnotation>",
     "<graph><coordinates><dimension/><dimension/></coordinates><point><x/></point>"
     "<pointGuide name='n' style='style1' x='1'><label style='style3' textFrameStyle='style2'>"
     "<text text='Peak'/></label></pointGuide></graph><style id='c-o-n-t-a-i-n-er'>"
     "<style id='style1' color='transparent' color2='transparent' symbol='none'/>"
     "<style id='style2' color='blue'/><style id='style3' color='red'/></style>"},
    // Not in the panels on the diagonal of a matrix
    {"<expressionVariable id='e' expression='a/b'/><graph><coordinates/><point><x variable='e'/>"
     "<y variable='e'/></point></graph>",
     "<addAnchoredAnnotation x='1'><label>a</label></addAnchoredAnnotation>",
     "<expressionVariable id='e' expression='a/b'/><graph><coordinates/><point>"
     "<x variable='e'/><y variable='e'/></point><pointGuide style='style1' x='1'>"
     "<label style='style3' textFrameStyle='style2'><text text='a'/></label>"
     "<conditionalStyle style='style4' when='facet1==facet2'/></pointGuide></graph>"
     "<style id='c-o-n-t-a-i-n-er'>"
     "<style id='style1' color='transparent' color2='transparent' symbol='none'/>"
     "<style id='style2' color='white'/><style id='style3' color='black'/>"
     "<style id='style4' visible='false'/></style>"},
    // What a record says, in which order parts get their ids
    {"<graph><coordinates><dimension><axis><label/><majorTicks/></axis></dimension></coordinates>"
     "<point/></graph><labelFrame><label/></labelFrame><legend><label/><legendTarget/></legend>",
     "<addDrillDown/>",
     "<graph><coordinates><dimension><axis><label id='label1'/><majorTicks id='majorTicks1'/>"
     "</axis></dimension></coordinates><point id='legend1'/></graph><labelFrame>"
     "<label id='label3'/></labelFrame><legend><label id='label2'/>"
     "<legendTarget id='legendTarget1'/></legend><extension drillDown='true' target='label1'/>"
     "<extension drillDown='true' target='legend1'/>"
     "<extension drillDown='true' target='label2'/>"
     "<extension drillDown='true' target='legendTarget1'/>"
     "<extension drillDown='true' target='majorTicks1'/>"
     "<extension drillDown='true' target='label3'/>"},
    {"<graph><point id='p'/></graph>",
     "<addDrillDown target='element' interaction='onMouseUp' function='f' meta='m'"
     " coordinates='true' facet='true' cases='true' part='true' numericValue='true' ticks='true'"
     " aesthetics='true' class='true' popup='true' metaValue='true' parameters='true'"
     " attach='true'/><addDrillDown target='element' interaction='onmouseup' facet='1'/>",
     "<graph><point id='p'/></graph>"
     "<extension aesthetics='true' attach='true' cases='true' class='true' coordinates='true'"
     " drillDown='true' facet='true' function='f' interactionType='onMouseUp' meta='m'"
     " metaValue='true' numericValue='true' parameters='true' part='true' popup='true'"
     " target='p' ticks='true'/><extension drillDown='true' target='p'/>"},
};

TEST(CommandsForReaders, Write) {
  expectCases(cases);
}

}  // namespace
