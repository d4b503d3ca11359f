// addDataLabels: which labels elements of all kinds get in charts of all shapes, and how they look.
#include "basetemplate.h"
#include "commandcases.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxformat.h"
#include "plxgraph.h"
#include "plxlabeling.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxvariables.h"

using namespace xercesc;

namespace {

// Data, and what tells of its rows: the case, the count, the percent, a name and a weight. The
// variables of the other source are nobody's.
const std::string variables =
    "<sourceVariable id='c' source='s' categorical='true'/><sourceVariable id='v' source='s'/>"
    "<sourceVariable id='g' source='s' categorical='true'/><sourceVariable id='z' source='s'/>"
    "<sourceVariable id='up' source='s'><extension statistic='9'/></sourceVariable>"
    "<sourceVariable id='low' source='s'><extension statistic='10'/></sourceVariable>"
    "<sourceVariable id='other' source='s2' description='labeling'/>";
const std::string rowVariables =
    "<sourceVariable id='old' source='s' description='labeling'/>"
    "<sourceVariable id='name' source='s' description='labeling'/>"
    "<sourceVariable id='weight' source='s' sourceName='$WEIGHT' description='labeling'/>"
    "<sourceVariable id='case' source='s' sourceName='$CASENUM' description='labeling'/>";
const std::string count =
    "<sourceVariable id='n' source='s' sourceName='$PERCENT'><extension statistic='1'/>"
    "</sourceVariable>";
const std::string percent =
    "<sourceVariable id='q' source='s' sourceName='$PERCENT'/>"
    "<sourceVariable id='p' source='s'><extension statistic='2'/></sourceVariable>";
const std::string derivedCount =
    "<sourceVariable id='q' source='s' sourceName='$PERCENT'/>"
    "<derivedVariable id='dx' value='2*v'/><derivedVariable id='d' value='counted(s)'/>"
    "<derivedVariable id='d2' value='counted(s)'/>";
const std::string range = "<expressionVariable id='e' expression='low + up'/>";

// Its words are in the table below.
std::string chartOf(const std::string& data, const std::string& shape, const std::string& element,
                    const std::string& labels = "") {
  static const std::map<std::string, std::string> rows = {{"bare", ""},
                                                          {"rows", rowVariables + count + percent},
                                                          {"count", count},
                                                          {"derived", derivedCount}};
  static const std::map<std::string, std::string> coordinates = {
      {"plain", "<dimension/><dimension/>"},
      {"stacked", "<dimension/><dimension/>"},
      {"clustered", "<dimension clusterVariable='g'/><dimension/><dimension clusterVariable='z'/>"},
      {"polar", "<dimension/><polarTransform/>"}};
  const std::string tag = element.substr(0, element.find(' '));
  const bool isRange = element.ends_with("+");
  const bool isOfCounts = element.ends_with("#");
  const bool hasX = !element.ends_with("!");
  std::string content = isOfCounts ? "<x variable='n'/>" : hasX ? "<x variable='c'/>" : "";
  content += isRange ? "<y variable='e'/>" : "<y variable='v'/>";
  if (shape == "stacked") content += "<color variable='other'/><styleBy variable='g'/>";
  if (shape == "polar") content += "<color variable='g'/><styleBy variable='other'/>";
  std::istringstream statistics(element.substr(tag.size()));
  for (std::string each; statistics >> each;) {
    if (each == "+" || each == "#" || each == "!") continue;
    const bool isKind = each == "bin" || each == "tukey" || each == "distribution" ||
                        each == "region" || each == "smooth";
    content += isKind ? "<" + each + "Statistic/>"
                      : "<summaryStatistic summaryIndex='1' method='" + each + "'/>";
  }
  content += labels;
  return variables + rows.at(data) + range + "<graph><coordinates>" + coordinates.at(shape) +
         "</coordinates><" + tag + ">" + content + "</" + tag + "></graph>";
}

// The labels of the only element: variable, method, "-" for no augmenting, "2%" for such a format,
// "^" and "_" for a place.
std::string labelsOf(EditedChart& chart) {
  std::vector<CTElementType*> elements;
  BaseTemplate::getAllElements(*chart.chart().getGraphs().front(), elements);
  std::string text;
  for (const PlXLabeling* label : elements.front()->getLabelings()) {
    if (!text.empty()) text += ",";
    text += ChartString(label->getVariable()->getId()).toUTF8();
    if (const PlXSummaryStatistic* statistic = label->getSummaryStatistic()) {
      text += "." + ChartString(statistic->GetAttribute(u"method")).toUTF8();
      if (statistic->getAugment()) text += "-";
    }
    for (const PlXFormat* format : label->getFormats()) {
      const long digits = format->getMinimumFractionDigits();
      if (digits > 0) text += std::to_string(digits);
      text += ChartString(format->getSuffix()).toUTF8();
    }
    const auto place = label->getStyle()->getLabelLocationVertical();
    if (place) text += place == PlXStyle::labelLocationVertical_positive ? "^" : "_";
  }
  return text.empty() ? "0" : text;
}

// For each kind, and for none.
constexpr const char* kindWords[] = {"casenum", "count", "labeling", "percent", "x",
                                     "y",       "z",     "legend1",  "legend2", ""};

// Data | shape | element with its statistics | labels for the kinds
constexpr const char* table = R"(
bare | plain | point | 0 0 0 0 c v 0 0 0 v
bare | plain | interval mean | 0 0 0 0 c.mean- v.mean- 0 0 0 v.mean-
bare | plain | line mean | 0 0 0 0 c.mean v.mean 0 0 0 v.mean
bare | plain | interval count | 0 c.count- 0 0 0 0 0 0 0 c.count-
bare | plain | line cumulativeCount | 0 c.cumulativeCount 0 0 0 0 0 0 0 c.cumulativeCount
bare | plain | interval percentCount | 0 c.sum- 0 c.percentCount- c.percentCount- 0 0 0 0 c.sum-
bare | plain | interval cumulativePercent | 0 0 0 c.cumulativePercent- c.cumulativePercent- 0 0 0 0 c.cumulativePercent-
bare | plain | interval fractionCount | 0 0 0 0 c.fractionCount- v.fractionCount- 0 0 0 v.fractionCount-
bare | plain | interval range | 0 0 0 0 c.maximum,c.minimum v.maximum,v.minimum 0 0 0 v.maximum,v.minimum
bare | plain | edge range + | 0 0 0 0 c.maximum,c.minimum up^,low_ 0 0 0 up^,low_
bare | plain | schema tukey | 0 0 0 0 c v.value 0 0 0 v.value
bare | plain | interval count bin | 0 c.count- 0 0 0 0 0 0 0 c.count-
bare | plain | line smooth | 0 0 0 0 c v.value 0 0 0 v.value
bare | plain | line distribution | 0 0 0 0 0 0 0 0 0 0
bare | plain | line region | 0 0 0 0 0 0 0 0 0 0
bare | plain | interval validCount | 0 c.validCount- 0 c.validCount- c.validCount- v.validCount- 0 0 0 c.validCount-
rows | plain | point | case n name p c v 0 0 0 name
rows | plain | interval mean | 0 n.mean- name.mean- p.mean- c.mean- v.mean- 0 0 0 name.mean-
rows | plain | interval unweightedCount | 0 n.unweightedCount- 0 0 0 0 0 0 0 n.unweightedCount-
rows | plain | interval percentCount | 0 n.sum- 0 p.percentCount- c.percentCount- 0 0 0 0 n.sum-
rows | plain | interval range | 0 n.maximum,n.minimum name.maximum,name.minimum p.maximum,p.minimum c.maximum,c.minimum v.maximum,v.minimum 0 0 0 name.maximum,name.minimum
rows | plain | edge range + | 0 n.maximum,n.minimum name.maximum,name.minimum p.maximum,p.minimum c.maximum,c.minimum up^,low_ 0 0 0 name.maximum,name.minimum
rows | plain | schema tukey | 0 n.value name.value p.value c v.value 0 0 0 name.value
rows | plain | interval count bin | 0 n.count- 0 0 0 0 0 0 0 n.count-
rows | plain | line distribution | 0 0 0 0 0 0 0 0 0 0
count | plain | point | 0 n 0 n.percent2% c v 0 0 0 n
count | plain | interval mean | 0 n.mean- 0 n.mean- c.mean- v.mean- 0 0 0 n.mean-
count | plain | interval percent | 0 n.sum- 0 n.percent- c.percent- 0 0 0 0 n.sum-
count | plain | schema tukey | 0 n.value 0 n.percent2% c v.value 0 0 0 n.value
derived | plain | point | 0 d 0 q c v 0 0 0 d
derived | plain | interval count | 0 d.count- 0 0 0 0 0 0 0 d.count-
bare | stacked | point | 0 0 0 0 c v 0 g 0 v
bare | stacked | interval mean | 0 0 0 0 c.mean- v.mean- 0 g.mean- 0 v.mean-
bare | stacked | interval percentCount | 0 c.sum- 0 c.percentCount- c.percentCount- 0 0 0 0 c.sum-
bare | stacked | edge range + | 0 0 0 0 c.maximum,c.minimum up^,low_ 0 g.maximum,g.minimum 0 up^,low_
bare | clustered | point | 0 0 0 0 g v z 0 0 v
bare | clustered | interval mean | 0 0 0 0 g.mean- v.mean- z.mean- 0 0 v.mean-
bare | clustered | interval percentCount | 0 c.sum- 0 c.percentCount- g.percentCount- 0 0 0 0 c.sum-
bare | clustered | schema tukey | 0 0 0 0 g v.value z.value 0 0 v.value
bare | polar | point | 0 0 0 c c v 0 g g c
bare | polar | interval mean | 0 0 0 0 c v 0 g g v
bare | polar | interval count | 0 c 0 c.count- c v 0 g g c
bare | polar | interval percentCount | 0 c 0 c.percentCount- c v 0 g g c
bare | polar | interval range | 0 0 0 0 c.maximum,c.minimum v.maximum,v.minimum 0 g.maximum,g.minimum g.maximum,g.minimum v.maximum,v.minimum
rows | polar | interval ! | 0 0 0 0 other v 0 0 0 v
bare | polar | line region | 0 0 0 0 0 0 0 0 0 0
rows | polar | point | case n name p c v 0 g g name
rows | polar | interval count | 0 n name p.count- c v 0 g g name
rows | polar | interval percent | 0 n name p.percent- c v 0 g g name
count | polar | point | 0 n 0 n c v 0 g g n
count | polar | interval mean | 0 n 0 n.mean- c v 0 g g n
count | polar | interval count | 0 n 0 n.count- c v 0 g g n
)";

TEST(DataLabels, FitTheElement) {
  const ChartBase holder;
  for (const std::vector<std::string>& row : rowsOf(table)) {
    std::string labels;
    for (const std::string word : kindWords) {
      EditedChart chart(chartOf(row[0], row[1], row[2]));
      const std::string command =
          word.empty() ? "<addDataLabels/>"
                       : "<addDataLabels><labeling variable='" + word + "'/></addDataLabels>";
      EXPECT_TRUE(chart.apply(command));
      const std::string once = labelsOf(chart);
      if (!labels.empty()) labels += " ";
      labels += once;
      const std::string body = chart.body();
      chart.apply(command);
      EXPECT_EQ(chart.body(), body) << "twice: " << row[0] << row[1] << row[2] << word;
    }
    EXPECT_EQ(labels, row[3]) << row[0] << " | " << row[1] << " | " << row[2];
  }
}

// What a row writes as "n.percent n": labels with their methods.
std::string labelings(const std::string& words) {
  std::string text;
  std::istringstream stream(words);
  for (std::string word; stream >> word;) {
    const std::size_t dot = word.find('.');
    text += "<labeling variable='" + word.substr(0, dot) + "'>";
    if (dot != word.npos) text += "<summaryStatistic method='" + word.substr(dot + 1) + "'/>";
    text += "</labeling>";
  }
  return text;
}

// Of a row as "count y=$": kinds, and formats with their suffixes.
std::string commandOf(const std::string& words) {
  std::string text;
  std::istringstream stream(words);
  for (std::string word; stream >> word;) {
    const std::size_t sign = word.find('=');
    text += "<labeling variable='" + word.substr(0, sign) + "'>";
    if (sign != word.npos) text += "<stringFormat suffix='" + word.substr(sign + 1) + "'/>";
    text += "</labeling>";
  }
  return "<addDataLabels>" + text + "</addDataLabels>";
}

// Data | shape | element | labels before | labelings of the command | labels behind
constexpr const char* laterTable = R"(
count | plain | point | n.percent | count | n.percent,n
count | plain | point | n.percent | percent | n.percent
count | plain | point | n.fractionCount | percent | n.fractionCount
count | plain | point | n.count | percent | n.count,n.percent2%
count | plain | point | n | count percent | n,n.percent2%
rows | plain | point | p.mean | percent | p.mean
bare | plain | point | - | xortheta | c
count | plain | interval mean | - | count percent y x | n.mean-,v.mean-,c.mean-
bare | plain | interval count | c | count | c,c.count-
bare | plain | interval count | c.unweightedCount | count | c.unweightedCount
count | polar | interval sum # | n.percent | x | n.percent,n
count | polar | interval sum # | n.mean | x | n.mean
bare | polar | interval sum | c.percent | x | c.percent
bare | plain | point | v.mean v v.mean c v v.sum | nothing | v.mean,v,c,v.sum
bare | plain | point | - | nothing y=$ | 0
bare | plain | point | v | y=$ x=! | v$
bare | plain | point | - | y y=$ y=! | v!
bare | plain | point | - | y=$ y y x | v$,c
count | plain | point | n.percent n.percentCount n n.count | percent=$ count=! | n.percent,n.percentCount$,n,n.count!
bare | plain | edge range + | - | y y=$ | up$^,low$_
bare | plain | interval range | v.mean | y=$ | v.mean$
bare | plain | interval range | - | y=$ x | c.maximum,c.minimum
bare | plain | interval range | v.maximum v.minimum v.mean | y=$ | v.maximum$,v.minimum$,v.mean
bare | plain | line region | v | x y=$ | v$
)";

TEST(DataLabels, AreFoundAgain) {
  const ChartBase holder;
  for (const std::vector<std::string>& row : rowsOf(laterTable)) {
    EditedChart chart(chartOf(row[0], row[1], row[2], row[3] == "-" ? "" : labelings(row[3])));
    chart.apply(commandOf(row[4]));
    EXPECT_EQ(labelsOf(chart), row[5]) << row[2] << " | " << row[3] << " | " << row[4];
  }
}

// A bar; the attributes of its style, and its labels.
std::string barOf(const std::string& style, const std::string& more = "") {
  return "<sourceVariable id='v'/><graph><interval style='s'><y variable='v'/>" + more +
         "</interval></graph><style id='s' " + style + "/>";
}

std::string styled(const std::string& body, const std::string& command,
                   const std::string& source = "") {
  EditedChart chart(body);
  const EditedChart pinning(source);
  chart.apply(command, source.empty() ? nullptr : &pinning);
  const std::string text = chart.body();
  return text.substr(text.find("</graph>") + 8);
}

TEST(DataLabels, LookAsToldAndAsTheirElement) {
  const ChartBase holder;
  const std::string label = "<labeling variable='v' style='l' textFrameStyle='f'/>";
  const std::string labelled = barOf("color='red'", label) + "<style id='l'/><style id='f'/>";
  const auto command = [](const std::string& attributes, const std::string& children = "") {
    return "<addDataLabels " + attributes + ">" + children + "</addDataLabels>";
  };
  // Style of the label | style of its frame, less the colours that frames get
  struct Row {
    std::string attributes;
    std::string children;
    std::string label;
    std::string frame = "color='white' color2='black'";
  };
  const Row rows[] = {
      {"", "", ""},
      {"position='label-location-x:negative;label-location-y:center'", "",
       " labelLocationHorizontal='negative' labelLocationVertical='center'"},
      {"position='label-location-x:negative' labelLocationHorizontal='positive' "
       "labelLocationVertical='Positive'",
       "", " labelLocationHorizontal='positive'"},
      {"position='label-location-x:negative;label-location-y:left' "
       "labelLocationHorizontal='left' labelLocationVertical='negative'",
       "", " labelLocationHorizontal='negative' labelLocationVertical='negative'"},
      {"hidden='true'", "", " visible='false'", "color='white' color2='black' visible='false'"},
      {"hidden='false'", "", " visible='true'", "color='white' color2='black' visible='true'"},
      {"hidden='1'", "", ""},
      {"colorByMarker='true'", "", " color='red'", "color='white' color2='transparent'"},
      {"colorByMarker='yes'", "", ""},
      {"",
       "<style color='#000001'/><style color='blue' number='2'/><style number='1' "
       "color2='green'/>",
       " color='blue'", "color='white' color2='green'"},
  };
  for (const Row& row : rows) {
    const std::string text =
        styled(labelled, command("styleOnly='true' " + row.attributes, row.children));
    EXPECT_EQ(text, "<style id='s' color='red'/><style id='l'" + row.label + "/><style id='f' " +
                        row.frame + "/>")
        << row.attributes;
  }
  // What the source chart states stays.
  const std::string all = command(
      "styleOnly='true' hidden='true' position='label-location-x:center;label-location-y:center' "
      "colorByMarker='true'",
      "<style font-size='9pt'/>");
  const std::string pinning =
      "<style id='l' color='blue' visible='true' labelLocationHorizontal='negative' "
      "font-size='5pt'/><style id='f' color='#000002' visible='true'/>";
  EXPECT_EQ(styled(labelled, all, pinning),
            "<style id='s' color='red'/><style id='l' labelLocationVertical='center'/>"
            "<style id='f' color2='transparent'/>");
}

TEST(DataLabels, KeepWhatBoxPlotsAndMarkersShow) {
  const ChartBase holder;
  const std::string red = "<style color='red' number='1'/>";
  const std::pair<std::string, std::string> rows[] = {{"point", "transparent"},
                                                      {"schema", "transparent"},
                                                      {"interval", "white"},
                                                      {"interval style='ibeam'", "transparent"},
                                                      {"interval style='square'", "white"},
                                                      {"line style='ibeam'", "white"}};
  for (const auto& [element, color] : rows) {
    const std::string tag = element.substr(0, element.find(' '));
    const std::string chart = "<sourceVariable id='v'/><graph><" + element +
                              "><y variable='v'/><labeling variable='v' textFrameStyle='f'/></" +
                              tag +
                              "></graph><style id='f' color2='blue'/><style id='ibeam' "
                              "symbol='ibeam'/><style id='square' symbol='square'/>";
    EXPECT_NE(styled(chart, "<addDataLabels/>").find("'f' color='" + color + "' color2='blue'"),
              std::string::npos)
        << element;
    const std::string restyled =
        styled(chart, "<addDataLabels styleOnly='true'>" + red + "</addDataLabels>");
    const std::string kept = tag == "schema" ? color : "red";
    EXPECT_NE(restyled.find("'f' color='" + kept + "'"), std::string::npos) << element;
    EXPECT_NE(styled(chart, "<addDataLabels>" + red + "</addDataLabels>").find("'f' color='red'"),
              std::string::npos);
  }
}

constexpr CommandCase cases[] = {
    // Styles that new labels share, and the element's attribute
    {"<sourceVariable id='v'/><sourceVariable id='c'/><graph><interval><x variable='c'/>"
     "<y variable='v'/></interval></graph>",
     "<addDataLabels showCollidingLabels='true' connectingLines='no'><labeling variable='y'/>"
     "<labeling variable='x'/><style font-size='9pt'/></addDataLabels>",
     "<sourceVariable id='v'/><sourceVariable id='c'/><graph>"
     "<interval showCollidingLabels='true' style='style1'><x variable='c'/><y variable='v'/>"
     "<labeling connectingLines='false' style='labeling1' textFrameStyle='text1'"
     " variable='v'/>"
     "<labeling connectingLines='false' style='labeling1' textFrameStyle='text1'"
     " variable='c'/></interval></graph><style id='c-o-n-t-a-i-n-er'>"
     "<style id='text1' color='white' color2='black'/>"
     "<style id='labeling1' font-size='9pt 6pt'/><style id='style1'/></style>"},
    // Aesthetics go over once. A colour that is missing is the outline's.
    {"<sourceVariable id='v'/><graph><interval style='s'><y variable='v'/>"
     "<styleBy id='b' variable='v' styleCycle='y'/><dash id='d' variable='v'/>"
     "<labeling variable='v' style='l' textFrameStyle='f'/></interval></graph>"
     "<styleCycle id='y'><cycle><style color2='red'/><style color='blue'/></cycle></styleCycle>"
     "<style id='s' color='transparent' color2='green'/><style id='l'/><style id='f'/>",
     "<addDataLabels styleOnly='true' colorByMarker='true'/>"
     "<addDataLabels styleOnly='true' colorByMarker='true'/>",
     "<sourceVariable id='v'/><graph><interval style='s'><y variable='v'/>"
     "<styleBy id='b' styleCycle='y' variable='v'/><dash id='d' variable='v'/>"
     "<labeling style='l' textFrameStyle='f' variable='v'>"
     "<styleBy id='styleBy1' styleCycle='styleCycle1' variable='v'/></labeling></interval>"
     "</graph><styleCycle id='y'><cycle><style color2='red'/><style color='blue'/></cycle>"
     "</styleCycle><styleCycle id='styleCycle1'><cycle><style color='red' color2='red'/>"
     "<style color='blue'/></cycle></styleCycle>"
     "<style id='s' color='transparent' color2='green'/><style id='l' color='green'/>"
     "<style id='f' color='white' color2='transparent'/>"},
    // A label's own size stays its own
    {"<sourceVariable id='v'/><graph><interval style='s'><y variable='v'/>"
     "<dash id='d' variable='v'/><color id='o' variable='v'/>"
     "<labeling variable='v' style='l' textFrameStyle='f'><size variable='v'/></labeling>"
     "<labeling variable='v' style='l' textFrameStyle='f'><summaryStatistic method='mean'/>"
     "</labeling></interval></graph><style id='s'/><style id='l'/><style id='f'/>",
     "<addDataLabels styleOnly='true' colorByMarker='true'/>",
     "<sourceVariable id='v'/><graph><interval style='s'><y variable='v'/>"
     "<dash id='d' variable='v'/><color id='o' variable='v'/>"
     "<labeling style='l' textFrameStyle='f' variable='v'><size variable='v'/>"
     "<color id='color1' affect='main' variable='v'/></labeling>"
     "<labeling style='l' textFrameStyle='f' variable='v'><summaryStatistic method='mean'/>"
     "<color id='color2' affect='main' variable='v'/></labeling></interval></graph>"
     "<style id='s'/><style id='l'/><style id='f' color='white' color2='black'/>"},
    // No inset for labels that are outside of no pie
    {"<sourceVariable id='v'/><graph><coordinates/><interval style='s'><y variable='v'/>"
     "<labeling variable='v' style='s' textFrameStyle='s'/></interval></graph>"
     "<style id='s' labelInside='false' color='red' color2='red'/>",
     "<addDataLabels styleOnly='true'/>",
     "<sourceVariable id='v'/><graph><coordinates/><interval style='s'><y variable='v'/>"
     "<labeling style='s' textFrameStyle='s' variable='v'/></interval></graph>"
     "<style id='s' color='red' color2='red' labelInside='false'/>"},
    // One inset for all graphs of labels outside, in the last block
    {"<sourceVariable id='v'/><graph><coordinates><polarTransform/></coordinates><coordinates/>"
     "<interval style='s'><y variable='v'/></interval></graph><style id='s'/>",
     "<addDataLabels><labeling variable='y'/><style labelInside='false'/></addDataLabels>"
     "<addDataLabels styleOnly='true'/>",
     "<sourceVariable id='v'/><graph><coordinates><polarTransform/></coordinates><coordinates>"
     "<insetTransform x_max='0.1' x_min='0.1' y_max='0.1' y_min='0.1'/></coordinates>"
     "<interval style='s'><y variable='v'/>"
     "<labeling style='labeling1' textFrameStyle='text1' variable='v'/></interval></graph>"
     "<style id='s'/><style id='c-o-n-t-a-i-n-er'>"
     "<style id='text1' color='white' color2='black'/>"
     "<style id='labeling1' font-size='7pt 6pt' labelInside='false'/></style>"},
    // Nothing that fits: no graph of the number, no values, a word of no kind
    {"<sourceVariable id='v'/><graph><point><y variable='v'/></point><line/></graph>",
     "<addDataLabels graph='2'/><addDataLabels><labeling variable='Y'/></addDataLabels>"
     "<addDataLabels><labeling variable='x'/></addDataLabels>"
     "<addDataLabels><labeling variable='y'><stringFormat suffix='a'/></labeling></addDataLabels>",
     "<sourceVariable id='v'/><graph><point><y variable='v'/></point><line/></graph>"},
    // A range without a label is labelled by its expression.
    {"<expressionVariable id='e' expression='a+b'/><graph><interval><y variable='e'/>"
     "<summaryStatistic method='range'/></interval></graph>",
     "<addDataLabels/>",
     "<expressionVariable id='e' expression='a+b' label='a+b'/><graph>"
     "<interval style='style1'><y variable='e'/><summaryStatistic method='range'/>"
     "<labeling style='labeling1' textFrameStyle='text1' variable='e'>"
     "<summaryStatistic method='maximum'/></labeling>"
     "<labeling style='labeling1' textFrameStyle='text1' variable='e'>"
     "<summaryStatistic method='minimum'/></labeling></interval></graph>"
     "<style id='c-o-n-t-a-i-n-er'><style id='text1' color='white' color2='black'/>"
     "<style id='labeling1' font-size='7pt 6pt'/><style id='style1'/></style>"},
    // What the source chart states of an element or a label, and a range with a name
    {"<sourceVariable id='o'/><expressionVariable id='e' expression='a+b' "
     "label='span'/><graph><edge id='i' style='s'>"
     "<y variable='e'/><summaryStatistic method='range'/><labeling id='l' variable='o' style='s' "
     "textFrameStyle='s'><summaryStatistic method='maximum'/></labeling></edge></graph>"
     "<style id='s' color='red' color2='red'/>",
     "<addDataLabels showCollidingLabels='true' connectingLines='true'/>",
     "<sourceVariable id='o'/><expressionVariable id='e' expression='a+b' label='span'/>"
     "<graph><edge id='i' style='s'><y variable='e'/><summaryStatistic method='range'/>"
     "<labeling id='l' style='s' textFrameStyle='s' variable='o'>"
     "<summaryStatistic method='maximum'/></labeling>"
     "<labeling connectingLines='true' style='labeling1' textFrameStyle='text1' variable='e'>"
     "<summaryStatistic method='maximum'/></labeling>"
     "<labeling connectingLines='true' style='labeling1' textFrameStyle='text1' variable='e'>"
     "<summaryStatistic method='minimum'/></labeling></edge></graph>"
     "<style id='s' color='red' color2='red'/><style id='c-o-n-t-a-i-n-er'>"
     "<style id='text1' color='white' color2='black'/>"
     "<style id='labeling1' font-size='7pt 6pt'/></style>",
     "<graph><edge id='i' showCollidingLabels='false'><labeling id='l' connectingLines='false'/>"
     "</edge></graph>"},
};

TEST(DataLabels, AreWritten) {
  expectCases(cases);
}

TEST(DataLabels, AnswerFalseWithoutAGraph) {
  const ChartBase holder;
  EXPECT_FALSE(EditedChart("").apply("<none/><addDataLabels/>"));
  EXPECT_FALSE(EditedChart("<graph/>").apply("<none/><addDataLabels graph='2'/>"));
  EXPECT_TRUE(EditedChart("<graph/>").apply("<none/><addDataLabels styleOnly='true'/>"));
}

}  // namespace
