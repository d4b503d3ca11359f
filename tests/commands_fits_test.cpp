// Fitted lines, curves of distributions, lines through items, spikes, markers, error bars,
// clusters.
#include <cstring>
#include <regex>

#include "commandcases.h"
#include "commands.h"

using namespace xercesc;

namespace {

const std::string stock =
    "<sourceVariable id='a'/><sourceVariable id='b'/><sourceVariable id='c' categorical='true'/>"
    "<sourceVariable id='counts'><extension statistic='1'/></sourceVariable>"
    "<sourceVariable id='sums'><extension statistic='6'/></sourceVariable>"
    "<expressionVariable id='e' expression='a+b'/><expressionVariable id='m' expression='a/b'/>"
    "<derivedVariable id='shares'><extension statistic='2'/></derivedVariable>"
    "<style id='red' color='red' color2='blue'/><style id='blue' color='transparent' "
    "color2='blue'/>"
    "<style id='none' color='' color2='transparent'/>";

// Charts, commands and results are written short: braces are around a graph of two dimensions, and
// these stand for what they say.
std::string spelled(std::string text) {
  const std::pair<const char*, const char*> words[] = {
      {"\\{2",
       "<graph id='g'><coordinates id='k'><dimension/><dimension/></coordinates>"
       "<coordinates id='k2'><dimension/><dimension/></coordinates>"},
      {"\\{", "<graph id='g'><coordinates id='k'><dimension/><dimension/></coordinates>"},
      {"\\}", "</graph>"},
      {"@xy", "<x variable='a'/><y variable='b'/>"},
      {"@x", "<x variable='a'/>"},
      {"@color", "<color id='groups' variable='c'/>"},
      {"@smooth", "<smoothStatistic/>"},
      {"@counts", "<summaryStatistic method='mean'/><summaryStatistic method='count'/>"},
      {"@fit", "<addFitLine primary='true' type='linear'"},
      {"@join", "<addInterpolationLine><interpolation primary='true' type='linear'"},
      {"@end", "/></addInterpolationLine>"},
  };
  for (const auto& [word, meaning] : words) {
    text = std::regex_replace(text, std::regex(word), meaning);
  }
  return text;
}

// Rows of chart, commands and parts of the result, between " ; ". It has them all, or not those
// with "!" in front.
void expectParts(const char* rows) {
  const ChartBase holder;
  for (const std::vector<std::string>& row : rowsOf(spelled(rows))) {
    EditedChart chart(stock + row.at(0));
    chart.apply(row.at(1));
    expectSound(chart.chart().AsUTF8(), row[0] + row[1]);
    const std::string body = chart.body();
    std::string rest = row.at(2) + " ; ";
    for (std::size_t end; (end = rest.find(" ; ")) != rest.npos; rest.erase(0, end + 3)) {
      const bool isWanted = rest[0] != '!';
      const std::string part = rest.substr(isWanted ? 0 : 1, end - (isWanted ? 0 : 1));
      EXPECT_EQ(body.find(part) != body.npos, isWanted) << part << "\n" << row[1] << "\n" << body;
    }
  }
}

// What a pattern finds, with a blank between.
std::string found(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::string all;
  for (std::sregex_iterator each(text.begin(), text.end(), expression), end; each != end; ++each) {
    for (std::size_t i = 1; i < each->size(); ++i) all += (*each)[i];
    all += " ";
  }
  return all.substr(0, all.size() - 1);
}

TEST(AddFitLine, FitsByType) {
  const ChartBase holder;
  // The command's attributes; the line's statistic, the spikes', what the frame reads, the degree
  // of the confidence lines
  const char* const rows = R"(
type='mean' | bounded='false' degree='0' method='polynomial' | same | - | 0
type='linear' proportion='1' kernel='cauchy' | bounded='false' method='linear' | same | group R 2  Linear  =  rSquared | 1
type='quadratic' | bounded='false' degree='2' method='polynomial' | same | group R 2  Quadratic  =  rSquared | 2
type='cubic' target='subgroup' | bounded='false' degree='3' method='polynomial' | same | group : R 2  Cubic  =  rSquared | 3
type='loess' proportion='0.5' | bounded='false' method='loess' proportion='0.5' | - | - | -
type='loess' kernel='flat' | bounded='false' method='loess' | same | - | -
type='Linear' kernel='cauchy' bandwith='2' intercept='0' | bandwidth='2' bounded='false' intercept='0' | - | - | -
type='linear' bandwith='2' intercept='0' | bandwidth='2' bounded='false' intercept='0' method='linear' | bounded='false' method='linear' | group R 2  Linear  =  rSquared | 1
)";
  for (const std::vector<std::string>& row : rowsOf(rows)) {
    EditedChart chart(stock + spelled("{<point>@xy@color</point>}"));
    chart.apply("<addFitLine primary='true' spikes='true' rsquared='true' " + row[0] +
                "><confidenceInterval/></addFitLine>");
    const std::string body = chart.body();
    EXPECT_EQ(found(body, "<regionStatistic [^>]*degree='([^']*)'"), row[4] == "-" ? "" : row[4]);
    EXPECT_EQ(found(body, "<smoothStatistic ([^/]*)/>(?:<cond.*)?</line>"), row[1]);
    const std::string spikes = row[2] == "same" ? row[1] : row[2];
    EXPECT_EQ(found(body, "<smoothStatistic ([^/]*)/></interval>"),
              spikes == "-" ? "" : spikes + " spikes='true'");
    const std::string label = found(body, "<descriptionGroup(.*)</descriptionGroup>");
    EXPECT_EQ(found(label, "<(?:text|desc)[^>]* (?:text|name)='([^']*)'"),
              row[3] == "-" ? "" : row[3]);
  }
  for (const std::string kernel : {"uniform", "epanechnikov", "Epanechnikov", "biweight",
                                   "triweight", "tricube", "gaussian", "cauchy"}) {
    EditedChart chart(stock + spelled("{<point>@xy</point>}"));
    chart.apply("<addFitLine primary='true' type='loess' kernel='" + kernel + "'/>");
    EXPECT_EQ(found(chart.body(), " kernel='.([^']*)'"), kernel.substr(1));
  }
}

TEST(AddFitLine, FitsElementsUpToTheFirstThatHasNoFit) {
  const ChartBase holder;
  // A chart; the command's attributes; the new lines by block, x and aesthetic
  const char* const rows = R"(
{<point>@xy</point><line>@xy@smooth</line><edge>@xy</edge><area>@xy</area>} | primary='true' | ka ka
{<point>@xy</point><interval>@xy@smooth</interval><area>@xy</area>} | primary='true' | ka
{<interval>@xy<regionStatistic/></interval><area>@xy</area>} | primary='true' | -
{<point><x variable='c'/></point>} | primary='true' | -
{<point>@x<y variable='c'/></point>} | primary='true' | -
<graph><coordinates><dimension/></coordinates><point>@x</point></graph> | primary='true' | -
{<point>@xy</point>} | primary='odd' | -
{2<point>@xy</point><point coordinates='k'>@xy</point>} | primary='odd' | k2a
{2<point coordinates='k2'>@xy</point>} | primary='true' | -
{<point>@xy@color</point><point>@xy</point><area>@xy@color</area>} | primary='true' target='subgroup' | kacolor
{<point>@xy<shape variable='c'/></point>} | primary='true' target='subgroup' | kadash
{<point>@xy<size variable='c'/></point>} | primary='true' target='subgroup' | ka
{<point>@xy<labeling/></point>} | primary='true' target='subgroup' | -
{<point><x variable='e'/>@color</point><point>@xy@color</point><area>@xy</area><area>@xy@color</area>} | primary='true' | kecolor kacolor
{<point><x variable='m'/><y variable='m'/>@color</point>} | primary='true' | km
{<point>@xy</point>}<graph><coordinates id='h'><dimension/><dimension/></coordinates><point>@xy@color</point></graph> | primary='true' target='subgroup' | hacolor
)";
  for (const std::vector<std::string>& row : rowsOf(rows)) {
    EditedChart chart(stock + spelled(row[0]));
    chart.apply("<addFitLine type='linear' " + row[1] + "/>");
    EXPECT_EQ(found(chart.body(),
                    "<line id='\\w+' coordinates='(\\w+)'[^>]*><x variable='(\\w+)'/>"
                    "(?:<y [^>]*>)?(?:<(color|dash|size) [^>]*>)?<smooth"),
              row[2] == "-" ? "" : row[2])
        << row[0] << row[1] << chart.body();
  }
}

TEST(AddFitLine, ShowsWhatItsElementShows) {
  expectParts(R"(
{<point style='blue' coordinates='k'>@xy<conditionalStyle when='w' style='red'/></point>}<legend id='l'/> | @fit spikes='true' colorSpikes='true'><style width='9pt'/><style number='1' color='grey'/><style width='2pt'/><confidenceInterval/><confidenceInterval alpha='0.1' predictIndividuals='true'><style color='one'/><style width='3pt'/></confidenceInterval></addFitLine> |
  <line id='line1' coordinates='k' name='Fit line for Total' style='style1'>@xy<smoothStatistic bounded='false' method='linear'/><conditionalStyle style='red' when='w'/></line> ;
  <line id='line2' name='Confidence Intervals' style='style3'>@xy<regionStatistic alpha='0.1' degree='1' predictIndividuals='true' regionType='confidenceFit'/><conditionalStyle style='red' when='w'/></line> ;
  <interval id='spikes1' coordinates='k' positionModifier='none' style='style2'>@xy<smoothStatistic bounded='false' method='linear' spikes='true'/><conditionalStyle ;
  <legend id='l'><legendTarget id='legendTarget1' target='line1'/><legendTarget id='legendTarget2' target='line2'/></legend> ;
  <style id='style1' color='blue' width='2pt'/><style id='style2' color='grey'/><style id='style3' color='one' width='3pt'/>
{<point style='red'>@xy@color<size id='s' variable='a'/></point>}<legend id='l'><legendTarget target='s'/><legendTarget target='groups'/></legend> | @fit spikes='true' colorSpikes='true' target='subgroup'><confidenceInterval/></addFitLine> |
  <line id='line1' coordinates='k' dot='false' style='style1'>@xy<color id='color2' affect='main' variable='c'/><smooth ;
  <line id='line2' dot='false' name='Confidence Intervals' style='style3'>@xy<color id='color3' affect='main' variable='c'/><regionStatistic degree='1' predictIndividuals='false' ;
  @xy<size id='length1' high='3pt' low='0.25pt' variable='a'/><color id='color1' variable='c'/><smooth ;
  target='groups'/><legendTarget id='legendTarget1' target='color2'/><legendTarget id='legendTarget2' target='color3'/></legend> ;
  <style id='style1' color='red'/>
{<point style='none'>@xy</point>} | @fit/> | <style id='style1'/>
{<point>@xy</point>} | @fit><style><interpolation type='step'/></style></addFitLine> | method='linear'/></line>
)");
}

TEST(AddFitLine, PutsFramesAndALegendBesideTheGraph) {
  expectParts(R"(
<graph id='g'><location part='right' value='90%'/><location part='left' value='5%'/><coordinates><dimension/><dimension/></coordinates><point style='red'>@xy</point><area>@xy</area></graph> | @fit rsquared='true'/><addFitLine primary='true'/> |
  <graph id='g'><location part='left' value='5%'/><location part='right' value='75%'/><coord ;
  <labelFrame id='frame1' style='style2'><location method='attach' part='left' target='g'/><location method='align' part='top' target='g'/><location method='content' part='height'/><location method='fixed' part='right' value='99%'/><label style='style3' textFrameStyle='style4'><descriptionGroup separator='&#xA;' target='line1'> ;
  <location method='attach' part='top' target='frame1'/> ; maximumFractionDigits='3' ;
  <location method='fixed' part='left' value='75%'/><location method='fixed' part='right' value='99%'/><location method='fixed' part='top' value='70%'/><location method='fixed' part='bottom' value='80%'/><legendTarget id='legendTarget1' target='line1'/><legendTarget id='legendTarget2' target='line2'/><legendTarget id='legendTarget3' target='line3'/><legendTarget id='legendTarget4' target='line4'/></legend> ;
  <style id='style2' color='transparent' color2='transparent' visible='true'/><style id='style3' color='red' font-size='8pt 6pt 10pt' margin-left='3pt' textAlignment='left'/><style id='style4' color='transparent' color2='transparent'/><style id='style5' font-size='8 8 8'/><style id='style6' color='transparent' visible='false'/>
{<point>@xy</point>}<legend id='l'/><legend id='n'/> | @fit rsquared='true'/> | method='attach' part='top' target='n'/>
{<point>@xy</point>}<legend/><container id='l'/><container id='n'/> | @fit rsquared='true'/> | method='attach' part='top' target='n'/>
{<point>@xy</point>}<labelFrame><label/></labelFrame><labelFrame id='f'><label><descriptionGroup><description name='group'/><description name='rSquared'/></descriptionGroup></label></labelFrame><container id='n'/> | @fit rsquared='true'/>@fit rsquared='true'/> | target='f'/> ; !part='top' target='n' ; !target='frame1'
{<point><x variable='m'/><y variable='m'/></point>} | @fit rsquared='true'/> | !<labelFrame
{<point>@xy<styleBy id='s' variable='c' styleCycle='y'/></point>}<styleCycle id='y'><cycle><style color2='green'/></cycle></styleCycle> | @fit target='subgroup'/> | <style color='green' color2='green'/>
{<point>@xy@color</point>} | @fit target='subgroup'/> | <legend id='legend1' ; !<legendTarget
)");
}

TEST(AddHistogramNormalLine, NamesTheDistribution) {
  const ChartBase holder;
  // Which parameters may be given: none, the first, the second, both
  const char* const rows = R"(
uniform | Uniform | nfsb
normal | Normal | nfsb
t | t Distribution | f
f | F Distribution | b
chisquare | Chi-Square | f
gamma | Gamma | f
beta | Beta | b
exponential | Exponential | nf
logistic | Logistic | b
studentizedrange | Studentized Range | b
weibull | Weibull | b
poisson | Poisson | nf
)";
  for (const std::vector<std::string>& row : rowsOf(rows)) {
    for (const char given : {'n', 'f', 's', 'b'}) {
      const std::string statistic = "='" + row[0] + "'" +
                                    (std::strchr("fb", given) ? " parameter='1'" : "") +
                                    (std::strchr("sb", given) ? " secondaryParameter='2'" : "");
      const bool isAllowed = row[2].find(given) != std::string::npos;
      EditedChart chart(stock + spelled("{<interval>@x@counts</interval>}"));
      chart.apply("<addHistogramNormalLine type" + statistic + "/>");
      EXPECT_EQ(
          found(chart.body(), " name='([^']*)' style.*<distributionStatistic distribution([^/]*)/"),
          isAllowed ? row[1] + statistic : "");
    }
  }
}

TEST(AddHistogramNormalLine, LaysOneCurveOverTheFirstHistogram) {
  expectParts(R"(
{<interval>@x@counts</interval><point><x variable='b'/>@counts</point><area>@x@counts</area>} | <addHistogramNormalLine type='odd'><label><style width='3pt' color='red'/></label><style color='blue'/></addHistogramNormalLine><addHistogramNormalLine/> |
  <line id='distribution1' name='Normal' style='style1'><x variable='b'/><distributionStatistic distribution='normal'/></line><line id='distribution2' name='Normal' style='style3'><x variable='b'/> ; !distribution3 ;
  <legend id='legend1' style='style2'><location method='fixed' part='left' value='75%'/><location method='fixed' part='right' value='98%'/><location method='fixed' part='top' value='2.5%'/><location method='fixed' part='bottom' value='97.5%'/><legendTarget id='legendTarget1' target='distribution1'/><legendTarget id='legendTarget2' target='distribution2'/></legend> ;
  <style id='style1' color='red' width='3pt'/><style id='style2' color='transparent'/><style id='style3' width='1pt'/>
{<interval>@x<y variable='counts'/></interval>} | <addHistogramNormalLine/> | distribution1
{<interval>@x<y variable='shares'/></interval>} | <addHistogramNormalLine/> | distribution1
{<interval>@x<y variable='sums'/></interval>} | <addHistogramNormalLine/> | !<line
{<point>@x<binStatistic gridType='dot'/></point>} | <addHistogramNormalLine/> | distribution1
{<point>@xy<binStatistic gridType='dot'/></point>} | <addHistogramNormalLine/> | !<line
{<point>@x<binStatistic gridType='hex'/></point>} | <addHistogramNormalLine/> | !<line
{<point><x variable='c'/></point><interval>@x@counts</interval>} | <addHistogramNormalLine/> | !<line
<graph><coordinates><dimension id='d'/></coordinates><coordinates><dimension/><dimensionReference ref='d'/></coordinates><interval>@x@counts</interval></graph> | <addHistogramNormalLine/> | <coordinates><dimension id='d'/><dimension/></coordinates><coordinates><dimension/><dimensionReference ref='d'/></coordinates>
)");
}

TEST(AddInterpolationLine, JoinsWhatIsNoLine) {
  expectParts(R"(
{2<point coordinates='k2'>@xy</point><line>@xy</line><area>@xy</area>} | @join pointPosition='left' missingRepresentation='Gap'@end | <line>@xy</line><line id='line1' coordinates='k' dot='false' style='style1'>@xy<summaryStatistic method='value'/></line><area>
{2<point coordinates='k2'>@xy</point><area coordinates='k'>@xy</area>} | <addInterpolationLine><interpolation/></addInterpolationLine> | <line id='line1' coordinates='k2' ; <smoothStatistic/> ; !line2
{<point>@xy</point>} | <addInterpolationLine><interpolation/></addInterpolationLine> | !<line
<graph><coordinates><dimension clusterVariable='c'/><dimension/></coordinates><point>@xy</point></graph> | @join@end | !<line
{<area>@x</area>} | @join type='step' pointPosition='left'@end | !<line
{<area>@x</area>} | <addInterpolationLine><interpolation primary='true' type='step' pointPosition='left' missingRepresentation='gap'@end | showDiscontinuity='false' ; method='stepLeft' ; breakRepresentation='gap'
{<area>@x</area>} | <addInterpolationLine><interpolation primary='true' type='step' missingRepresentation='wings'@end | showDiscontinuity='false' ; method='stepCenter' ; breakRepresentation='wings'
{<area>@x</area>} | <addInterpolationLine><interpolation primary='true' type='jump' pointPosition='right' missingRepresentation='interpolated'@end | showDiscontinuity='true' ; method='stepRight' ; breakRepresentation='interpolated'
{<area>@x</area>} | <addInterpolationLine><interpolation primary='true' type='spline' pointPosition='right' missingRepresentation='interpolate'@end | showDiscontinuity='true' ; method='spline' ; breakRepresentation='interpolated'
{<area>@x</area>} | <addInterpolationLine><style><interpolation primary='true' type='step'/></style></addInterpolationLine> | <smoothStatistic method='stepCenter'/></line>
{<point style='red'>@x</point>} | @join@end | <style id='style1' color='blue'/>
{<area style='red'>@x</area>} | @join/><style width='2pt'/><style width='3pt'@end | <style id='style1' color='red' width='2pt'/>
{<area style='blue'>@x</area>} | @join@end | <style id='style1'/>
{<point style='none'>@x</point>} | @join@end | <style id='style1'/>
{<point>@x<styleBy id='s' variable='c' styleCycle='y'/></point>}<styleCycle id='y'><cycle><style color2='green'/></cycle></styleCycle><legend><legendTarget target='s'/></legend> | @join@end | <styleBy id='styleBy1' styleCycle='styleCycle1' variable='c'/> ; <legendTarget target='s'/><legendTarget id='legendTarget1' target='styleBy1'/> ; <style color='green' color2='green'/>
)");
}

TEST(AddSpikes, LeadFromPointsToAPlace) {
  expectParts(R"(
{<point>@xy<z variable='a'/></point><line>@xy</line>} | <addSpikes type='centroid'/> | <edge id='edge1' style='style1'>@xy<z variable='a'/><linkStatistic type='spike' x='centroid' y='centroid' z='centroid'/> ; color='black' ; !edge2
{<point>@xy<z variable='a'/></point>} | <addSpikes type='base'/> | type='spike' y='base'/>
{<point>@xy<z variable='a'/></point>} | <addSpikes type='midrange' x='base' y='origin' z='odd'/> | type='spike' x='base' y='mean'/>
{<point>@xy<z variable='a'/></point>} | <addSpikes x='origin' y='mean'/> | type='spike' x='origin' y='mean'/>
{<point>@xy<z variable='a'/></point>} | <addSpikes type='odd' y='mean'/> | type='spike'/>
{<point>@x</point>} | <addSpikes type='origin'/> | type='spike' x='origin'/>
{2<point style='red' coordinates='k2'>@xy@color<conditionalStyle when='w' style='red'/></point>} | <addSpikes colorSpikes='True'/> | <edge id='edge1' coordinates='k2' style='style1'>@xy<linkStatistic type='spike'/><conditionalStyle style='red' when='w'/></edge> ; color='black'
{2<point style='red' coordinates='k2'>@xy@color</point>} | <addSpikes colorSpikes='true'><style width='2pt'/></addSpikes> | <edge id='edge1' coordinates='k2' dot='false' style='style1'>@xy<color id='color1' affect='main' variable='c'/><link ; <style id='style1' color='red' width='2pt'/>
{<point style='blue'>@xy</point>} | <addSpikes colorSpikes='true'/> | <style id='style1' color='blue'/>
{<point style='none'>@xy</point>} | <addSpikes colorSpikes='true'/> | <style id='style1' color='black'/>
)");
}

TEST(ElementOptions, SetWhatTheyName) {
  expectParts(R"(
{<path>@x<color variable='c' affect='main'/><dash id='d' variable='c' missing='1 1' cycle='y'><scale base='2'/><summaryStatistic method='mean'/><dashMapping from='1' to='2 2'/></dash><dash variable='a'/></path>}<styleCycle id='y'/><legend id='l'><legendTarget target='d'/></legend><legend/> | <setShowLineMarkers><style size='3pt'/></setShowLineMarkers><setShowLineMarkers/> |
  <point id='point1' dot='false' style='style1'>@x<shape id='shape1' variable='c'><scale base='2'/><summaryStatistic method='mean'/></shape><color id='color1' affect='secondary' variable='c'/></point><path> ;
  <legendTarget target='d'/><legendTarget id='legendTarget1' target='shape1'/></legend> ; <style id='style1' size='3pt'/></style> ; !point2
{<line>@x</line>} | <setShowLineMarkers/> | <point id='point1' dot='false' style='style1'>@x</point>
{<area>@x</area>} | <setShowLineMarkers/> | !<point
{<interval>@counts<summaryStatistic method='range'/></interval><interval/><point><summaryStatistic method='range'/></point>} | <setErrorBarOptions><x><style visible='true' color='green'/></x></setErrorBarOptions> | <interval style='style1'>@counts ; <interval/> ; <point><summary ; <style id='style1' color='green' visible='false'/>
{<interval style='red'><summaryStatistic method='range'/></interval>} | <setErrorBarOptions visible='true'/> | <style id='red' color='red' color2='blue' visible='true'/>
<graph><coordinates><dimension clusterVariable='c'/><dimension clusterVariable='c'/><dimension clusterVariable='c'/></coordinates><coordinates><dimension/></coordinates></graph> | <setClusterWidth gap='7%' role='y2'/><setClusterWidth gap='9pt' role='y'/><setClusterWidth role='z'/> | <dimension clusterGap='7%' clusterVariable='c'/><dimension clusterGap='9pt' clusterVariable='c'/><dimension clusterGap='0%' clusterVariable='c'/></coordinates><coordinates><dimension/>
)");
}

TEST(StyleOnly, ChangesStylesAlone) {
  const ChartBase holder;
  const std::string earlier =
      stock + spelled(
                  "{<line style='s1'>@smooth</line><line style='s2'><regionStatistic/></line>"
                  "<line style='s3'/><line style='s3' coordinates='k2'>@smooth</line>"
                  "<edge style='s4'><linkStatistic/></edge><edge style='s3'/><interval style='s5'>"
                  "@smooth<smoothStatistic spikes='true'/></interval><interval style='s3'>@smooth"
                  "</interval><area style='s3'>@smooth</area><point style='s3'>@x</point>}<graph>"
                  "<coordinates id='k2'/></graph><style id='s1'/><style id='s2'/><style id='s3'/>"
                  "<style id='s4'/><style id='s5'/>");
  const EditedChart none("");
  const EditedChart source("<style id='s1' color='i'/><style id='s4' color='i'/>");
  // The source; what is imported; what it changes of the styles
  const std::tuple<const EditedChart*, const char*, const char*> rows[] = {
      {&none, "@fit styleOnly='true' spikes='true' rsquared='true'/>", ""},
      {&none, "<addSpikes styleOnly='true' type='mean'/>", ""},
      {&none, "<addSpikes styleOnly='true'><style color='f'/></addSpikes>", "s4 color='f'"},
      {&none, "@fit styleOnly='true'><style color='f'/></addFitLine>", "s1 color='f'"},
      {&none,
       "@fit styleOnly='true'><style number='1' color='f'/><confidenceInterval><style color='f'/>"
       "<style color2='h'/></confidenceInterval></addFitLine>",
       "s2 color='f' color2='h' s5 color='f'"},
      {&source,
       "@fit styleOnly='true'><style color='f' color2='h'/></addFitLine><addSpikes "
       "styleOnly='true'><style color='f' color2='h'/></addSpikes>",
       "s1 color2='h' s4 color2='h'"},
  };
  for (const auto& [pins, commands, styles] : rows) {
    EditedChart chart(earlier);
    chart.apply(spelled(commands), pins);
    const std::string body = chart.body();
    EXPECT_EQ(found(body, "<style id='(s\\d)'( [^>]*)/>"), styles) << commands;
    EXPECT_EQ(std::regex_replace(body, std::regex("(<style id='s\\d')[^>]*/>"), "$1/>"),
              EditedChart(earlier).body());
  }
}

// What a command itself answers.
bool answerOf(EditedChart& chart, const std::string& text) {
  const Fragment fragment(text);
  for (const Command& command : commands()) {
    if (!XMLString::equals(command.element, fragment.first()->getTagName())) continue;
    return command.make(nullptr, chart.chart(), fragment.first())->ProcessCommand();
  }
  throw std::runtime_error("no command: " + text);
}

TEST(FitsAndElementOptions, LeaveChartsAloneWhereNothingMatches) {
  const ChartBase holder;
  // What they answer for charts without and with graphs.
  const std::tuple<const char*, bool, bool> rows[] = {
      {"@fit/>", false, true},
      {"<addHistogramNormalLine/>", false, true},
      {"<addHistogramNormalLine type='f'/>", false, false},
      {"<addInterpolationLine><style/></addInterpolationLine>", false, false},
      {"<addInterpolationLine><interpolation/></addInterpolationLine>", false, true},
      {"<setClusterWidth gap='5%'/>", false, false},
      {"<addSpikes type='mean'/>", true, true},
      {"<setShowLineMarkers/>", true, true},
      {"<setErrorBarOptions/>", true, true},
  };
  for (const auto& [command, withoutGraphs, withGraphs] : rows) {
    for (const char* body : {"<container>{<point>@x</point>}</container>", "{}",
                             "{<point><x variable='c'/></point>}"}) {
      EditedChart chart(stock + spelled(body));
      const std::string before = chart.body();
      EXPECT_EQ(answerOf(chart, spelled(command)), *body == '<' ? withoutGraphs : withGraphs)
          << command;
      EXPECT_EQ(chart.body(), before) << command;
    }
  }
}

}  // namespace
