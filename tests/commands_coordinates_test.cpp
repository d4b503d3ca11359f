// The commands of coordinates and panels.
#include "basetemplate.h"
#include "commandcases.h"
#include "plxgraph.h"

namespace {

constexpr std::pair<const char*, const char*> forms[] = {
    // A graph in three dimensions, up to its guides
    {"CUBE",
     "<graph><coordinates>FLAT<dimension><axis/></dimension>KIND</coordinates>"
     "<point><z/></point>"},
    {"FLAT", "<dimension/><dimension/>"},
    {"KIND", ""},
    // A matrix up to its elements, and one with its points
    {"MATRIX", "ABOVE<coordinates id='k'><dimension/><dimension/></coordinates>POINTS"},
    {"ABOVE", "<expressionVariable id='e' expression='a/b'/><graph>"},
    {"POINTS", "<point coordinates='k'>EE</point>"},
    {"EE", "<x variable='e'/><y variable='e'/>"},
    {"DIAGONAL",
     "<coordinates id='coordinates1'><dimension lowerMargin='5%' upperMargin='5%'/>"
     "<dimension lowerMargin='15%' upperMargin='5%'/></coordinates>"},
    {"ON", "coordinates='coordinates1' dot='false'"},
    {"BESIDE", "<conditionalStyle when='facet1!=facet2' style="},
    {"COUNT", "<summaryStatistic method='count'/>"},
    {"STYLES", "<style id='c-o-n-t-a-i-n-er'>"},
    {"HIDDEN", "visible='false'"},
    {"HIST", "<addChartsOnDiagonal type='histogram'"},
    {"/DIAG", "</addChartsOnDiagonal>"},
    {"LEVELS",
     "<facetLayout><facetLevel id='f' gap='20px'><axis/></facetLevel>"
     "<facetLevel id='g'><axis><label/><majorTicks/></axis></facetLevel></facetLayout>"},
    {"REFLECT", "<reflectionTransform"},
    {"MIRROR", "<setPanelOptions mirror='true'"},
    {"MADE", "<derivedVariable categorical='false' creator='internal_cutVariable' "},
    {"ALL",
     "distance='1' zeta='2' phi='3' theta='4' xscale='5' yscale='6' zscale='7' "
     "foreShortening='8' projectionDistance='9' dx='10' dy='11'"},
    {"{", "<graph><coordinates><dimension/>"},
    {"}", "</coordinates></graph>"},
};

TEST(CoordinateCommands, SetTransforms) {
  // What isn't stated of a pie or a rotation is gone. Of a parameter the first counts, and an
  // attribute before it.
  expectTable(R"(
{}{</coordinates><coordinates>} | <setTranspose transpose='true'/> | {<transposeTransform/>}
  {<transposeTransform/></coordinates><coordinates><transposeTransform/>}
{<transposeTransform/><insetTransform/>} | <setTranspose transpose='TRUE'/> | {<insetTransform/>}
{<polarTransform/>} | <setTranspose transpose='true'/> | =
<container>{}</container> | <setTranspose transpose='true'/> | =
{<polarTransform startAngle='7' cycles='7'/><polarTransform/>} | <setPieTranspose/>
  | {<polarTransform startAngle='0' cycles='1' counterClockwise='false'/>
  <polarTransform startAngle='0' cycles='1' counterClockwise='false'/>}
{<polarTransform/>} | <setPieTranspose cycles='0.5' startAngle=''><a><parameter name='startAngle'
  value='30'/></a><parameter name='startAngle' value='40'/><parameter name='ccw' value='true'/>
  <parameter name='cycles' value='9'/></setPieTranspose>
  | {<polarTransform startAngle='30' cycles='0.5' counterClockwise='true'/>}
{<polarTransform/>} | <setPieTranspose startAngle='90' counterClockwise='yes'>
  <parameter name='startAngle' value='30'/><parameter name='ccw' value='true'/></setPieTranspose>
  | {<polarTransform startAngle='90' cycles='1' counterClockwise='false'/>}
{} | <setPieTranspose startAngle='90'/> | =
{} | <setRotation ALL/> | =
)",
              forms);
  const std::pair<const char*, const char*> rotations[] = {
      {"<setRotation/>", "<rectangularTransform/>"},
      {"<setRotation method='OBLIQUE' ALL/>",
       "<rectangularTransform distance='1' zeta='2' phi='3' theta='4' xscale='5' yscale='6' "
       "zscale='7' projectionDistance='9' dy='10' dx='11'/>"},
      {"<setRotation method='oblique' ALL/>",
       "<obliqueTransform distance='1' theta='4' xscale='5' yscale='6' foreShortening='8' dy='10' "
       "dx='11'/>"},
      {"<setRotation theta='1'><parameter name='theta' value='2'/><a><parameter name='phi' "
       "value='3'/></a><parameter name='phi' value='4'/><parameter name='dx' "
       "value='5'/></setRotation>",
       "<rectangularTransform theta='1' phi='3'/>"}};
  for (const auto& [command, transform] : rotations) {
    for (const char* before : {"<obliqueTransform distance='7'/>", "<rectangularTransform dx='7'/>",
                               "<rectangularTransform/><obliqueTransform/>"}) {
      std::pair<const char*, const char*> old[std::size(forms)];
      std::copy(std::begin(forms), std::end(forms), old);
      old[2].second = before;
      std::pair<const char*, const char*> now[std::size(forms)];
      std::copy(std::begin(forms), std::end(forms), now);
      now[2].second = transform;
      expectTable(
          withForms("CUBE</graph>", old) + " | " + command + " | " + withForms("CUBE</graph>", now),
          forms);
    }
  }
}

TEST(CoordinateCommands, StyleFramesAndPlanes) {
  expectTable(R"(
CUBE</graph> | <setWireFrame complete='true'><style color='red'/></setWireFrame>
  | CUBE<frameGuide style='style1' complete='true'/></graph>
  STYLES<style id='style1' color='red'/></style>
CUBE<frameGuide style='s' complete='true'/><frameGuide/></graph><style id='s'/>
  | <setWireFrame><a><style depth='1pt'/><style depth='9pt'/></a></setWireFrame>
  | CUBE<frameGuide style='s' complete='false'/><frameGuide style='style1' complete='false'/></graph>
  <style id='s' depth='1pt'/>STYLES<style id='style1' depth='1pt'/></style>
CUBE</graph> | <setWireFrame complete='true'/><setBackPlane/> | =
{<dimension/><dimension/>} | <setWireFrame><style/></setWireFrame>
  <setBackPlane><plane><style/></plane></setBackPlane> | =
CUBE<planeGuide normal='y' style='s'/><planeGuide normal='y'/></graph><style id='s'/>
  | <setBackPlane><plane role='y'><style color='red'/><style color='blue'/></plane>
  <a><plane role='Y'/></a><plane role='x'/><plane role='z'><style depth='1pt'/></plane></setBackPlane>
  | CUBE<planeGuide normal='y' style='s'/><planeGuide normal='y'/>
  <planeGuide normal='z' style='style1'/><planeGuide normal='x' style='style2'/></graph>
  <style id='s' color='red'/>STYLES<style id='style1' depth='1pt'/><style id='style2'/></style>
)",
              forms);
}

TEST(CoordinateCommands, CutLines) {
  expectTable(R"(
<sourceVariable id='v'/><sourceVariable id='c' categorical='true'/><graph>
  <point><x variable='v'/></point><line/><line><x variable='v'/><size/></line>
  <line><x variable='c'/></line>
  <path><x><expressionVariable expression='v+c'/></x><y variable='v'/></path></graph>
  | <setProjectionLine low='1pt' high='2pt'><a><categoryValue> 5</categoryValue></a>
  <categoryValue>6</categoryValue></setProjectionLine>
  | <sourceVariable id='v'/><sourceVariable id='c' categorical='true'/>
  MADEid='derivedVariable1' value='v &lt;  5 ? 0 : 1'/>
  MADEid='derivedVariable2' value='expressionVariable1 &lt;  5 ? 0 : 1'/>
  <graph><point><x variable='v'/></point><line/><line><x variable='v'/><size/>
  <size variable='derivedVariable1' low='1pt' high='2pt'/></line><line><x variable='c'/></line>
  <path><x><expressionVariable id='expressionVariable1' expression='v+c'/></x><y variable='v'/>
  <size variable='derivedVariable2' low='1pt' high='2pt'/></path></graph>
<sourceVariable id='v'/><graph><line><x variable='v'/></line></graph>
  | <setProjectionLine before='true'><categoryValue>x</categoryValue></setProjectionLine>
  | <sourceVariable id='v'/>MADEid='derivedVariable1' value='v > x ? 0 : 1'/><graph>
  <line><x variable='v'/><size variable='derivedVariable1'/></line></graph>
)",
              forms, Again::different);
  expectTable(R"(
<sourceVariable id='v'/><graph><line><x variable='v'/></line></graph>
  | <setProjectionLine low='1pt'><categoryValue/></setProjectionLine><setProjectionLine/> | =
)",
              forms);
}

TEST(CoordinateCommands, ShowFractions) {
  expectTable(R"(
<graph><coordinates><dimension><axis><majorTicks/></axis></dimension><dimension><axis>
  <majorTicks><format prefix='a'/><format/></majorTicks></axis><axis/></dimension></coordinates>
  <coordinates><dimension/><dimension><axis><majorTicks/></axis></dimension></coordinates>
  <interval positionModifier='dodge'>COUNT</interval>
  <interval positionModifier='stack'>COUNT<summaryStatistic/></interval>
  <area positionModifier='stackInterpolating'/></graph>{<dimension><axis><majorTicks/></axis>
  </dimension></coordinates><area positionModifier='jitter'/></graph>
  | <setScaleByFraction/>
  | <graph><coordinates><dimension><axis><majorTicks/></axis></dimension><dimension><axis>
  <majorTicks><format suffix='%' scalingFactor='0.01'/></majorTicks></axis><axis/></dimension>
  </coordinates>
  <coordinates><dimension/><dimension><axis><majorTicks/></axis></dimension></coordinates>
  <interval positionModifier='dodge'>COUNT</interval>
  <interval positionModifier='stack'><summaryStatistic summaryBase='coordinate' method='fraction'/>
  </interval><area positionModifier='stackInterpolating'>
  <summaryStatistic summaryBase='coordinate' method='fraction'/></area></graph>
  {<dimension><axis><majorTicks/></axis></dimension></coordinates>
  <area positionModifier='jitter'/></graph>
)",
              forms);
}

TEST(PanelCommands, WrapAndMirror) {
  // A block that the source reflects, and gaps that it states, stay.
  expectTable(R"(
<graph/><graph><facetLayout/></graph> | <setWrapPanels wrap='true'/>
  | <graph/><graph><facetLayout method='wrap'/></graph>
<graph><facetLayout method='wrap'/></graph> | <setWrapPanels wrap='1'/>
  | <graph><facetLayout method='grid'/></graph>
{} | MIRROR role='x'/> | {REFLECT dimension='x' alternating='true'/>}
{REFLECT/>REFLECT/>} | MIRROR role='y'/> | {REFLECT dimension='y' alternating='true'/>REFLECT/>}
{} | MIRROR/> | {REFLECT dimension='y' alternating='true'/>}
{REFLECT/>REFLECT/>} | <setPanelOptions role='x' mirror='no'/> | {}
{REFLECT/>} | <setPanelOptions role='x' mirror=''/> | =
<graph><coordinates id='k'/><coordinates id='l'/></graph> | MIRROR role='x'/>
  | <graph><coordinates id='k'/><coordinates id='l'>REFLECT dimension='x' alternating='true'/>}
  | <graph><coordinates id='k'>REFLECT/></coordinates><coordinates id='l'/></graph>
<graph>LEVELS</graph> | <setPanelOptions gap='3%'/> | <graph><facetLayout>
  <facetLevel id='f' gap='3%'><axis/></facetLevel>
  <facetLevel id='g'><axis><label/><majorTicks/></axis></facetLevel></facetLayout></graph>
  | <graph><facetLayout><facetLevel id='f' gap='20px'/><facetLevel id='g' gap='9%'/>
  </facetLayout></graph>
<graph><facetLayout><facetLevel/></facetLayout></graph> | <setPanelOptions gap='3%'/>
  | <graph><facetLayout><facetLevel gap='0%'/></facetLayout></graph> | {REFLECT/>}
ABOVE<facetLayout><facetLevel/></facetLayout><point>EE</point></graph> | <setPanelOptions gap='3%'/>
  | ABOVE<facetLayout><facetLevel gap='0%'/></facetLayout><point>EE</point></graph>
)",
              forms);
}

TEST(PanelCommands, StyleTheAxesOfPanels) {
  expectTable(R"(
<graph>LEVELS</graph> | <setPanelOptions><axisStyle><a><style depth='1pt'/><style/></a></axisStyle>
  <axisLabelStyle><style depth='2pt'/></axisLabelStyle>
  <axisLabelTextFrameStyle><style depth='3pt'/></axisLabelTextFrameStyle>
  <tickLabelStyle><style number='1' depth='9pt'/><style depth='4pt'/></tickLabelStyle>
  <tickLabelStyle><style number='1' depth='5pt'/></tickLabelStyle>
  <markStyle><style depth='9pt'/></markStyle><markStyle><style depth='6pt'/></markStyle><markStyle/>
  <a><axisStyle><style depth='9pt'/></axisStyle></a></setPanelOptions>
  | <graph><facetLayout><facetLevel id='f' gap='20px'><axis style='style1'/></facetLevel>
  <facetLevel id='g'><axis style='style2'><label style='style3' textFrameStyle='style4'/>
  <majorTicks style='style5' tickFrameStyle='style6' markStyle='style7'/></axis></facetLevel>
  </facetLayout></graph>STYLES<style id='style1' depth='1pt'/><style id='style2' depth='1pt'/>
  <style id='style3' depth='2pt'/><style id='style4' depth='3pt'/><style id='style5' depth='4pt'/>
  <style id='style6' depth='5pt'/><style id='style7' depth='6pt'/></style>
<graph>LEVELS</graph> | <setPanelOptions/> | =
)",
              forms);
}

TEST(Diagonal, IsFilledAndEmptied) {
  // Bins are a width before a count. An element that names no block is told to be in the first.
  expectTable(R"(
ABOVE<coordinates><dimension/></coordinates><point>EE</point></graph>
  | HIST><style depth='1pt'/><setHistogramBinning binStart='1' binWidth='2' binCount='3'/>/DIAG
  | ABOVE<coordinates id='coordinates1'><dimension/></coordinates><coordinates id='coordinates2'>
  <dimension lowerMargin='5%' upperMargin='5%'/><dimension lowerMargin='15%' upperMargin='5%'/>
  </coordinates><point coordinates='coordinates1'>EE</point>
  <interval id='interval1' coordinates='coordinates2' dot='false' style='style1'>EE COUNT
  <binStatistic binStart='1' binWidth='2'/>BESIDE'style2'/></interval></graph>
  STYLES<style id='style1' color='#DBD8AC' depth='1pt'/><style id='style2' HIDDEN/></style>
MATRIX</graph> | HIST><style color='red'/><style color='blue'/>
  <addHistogramNormalLine><style depth='3pt'/></addHistogramNormalLine>
  <setHistogramBinning binWidth='wide' binCount='3'/>/DIAG
  | ABOVE<coordinates id='k'><dimension/><dimension/></coordinates>DIAGONAL POINTS
  <line id='line1' ON style='style3'>EE<distributionStatistic/>BESIDE'style4'/></line>
  <interval id='interval1' ON style='style1'>EE COUNT<binStatistic binCount='3'/>BESIDE'style2'/>
  </interval></graph>STYLES<style id='style1' color='blue'/><style id='style2' HIDDEN/>
  <style id='style3' depth='3pt'/><style id='style4' HIDDEN/></style>
MATRIX<interval coordinates='k'>BESIDE'h'/></interval><area coordinates='k'>BESIDE's'/></area>
  </graph><style id='h' HIDDEN/><style id='s'/>
  | <addChartsOnDiagonal type='NormalCurve'><style color='red'/><addHistogramNormalLine/>/DIAG
  | ABOVE<coordinates id='k'><dimension/><dimension/></coordinates>DIAGONAL POINTS
  <line id='line1' ON style='style1'>EE<distributionStatistic/>BESIDE'style2'/></line>
  <area coordinates='k'>BESIDE's'/></area></graph><style id='h' HIDDEN/><style id='s'/>
  STYLES<style id='style1' color='red'/><style id='style2' HIDDEN/></style>
)",
              forms, Again::different);
  // Of "none" a second run leaves the chart alone.
  expectTable(R"(
ABOVE<coordinates id='k'/><coordinates id='l'/><facetLayout><facetLevel/><facetLevel><axis>
  <majorTicks/></axis><axis><majorTicks labelAngle='9'/></axis><axis/></facetLevel></facetLayout>
  <point coordinates='k'>EE BESIDE'h'/></point><interval coordinates='l'>BESIDE'h'/></interval>
  </graph><style id='h' HIDDEN/> | <addChartsOnDiagonal type='none'><style color='red'/>/DIAG
  | ABOVE<coordinates id='k'/><coordinates id='l'/><facetLayout cellAspect='1'><facetLevel/>
  <facetLevel><axis><majorTicks labelAngle='-90'/></axis><axis><majorTicks labelAngle='9'/></axis>
  <axis/></facetLevel></facetLayout><point coordinates='k'>EE
  <conditionalStyle when='facet1==facet2' style='style1'/></point>
  <interval coordinates='l'>BESIDE'h'/></interval></graph><style id='h' HIDDEN/>
  STYLES<style id='style1' HIDDEN/></style>
ABOVE<coordinates id='k'/><coordinates id='l'/><facetLayout><facetLevel><axis><majorTicks/></axis>
  </facetLevel></facetLayout><point coordinates='k'>EE
  <conditionalStyle when='facet1==facet2' style='h'/><conditionalStyle when='other' style='h'/>
  </point></graph><style id='h' HIDDEN/> | <addChartsOnDiagonal type='none'/>
  | ABOVE<coordinates id='k'/><coordinates id='l'/><facetLayout cellAspect='1'><facetLevel><axis>
  <majorTicks/></axis></facetLevel></facetLayout><point coordinates='k'>EE
  <conditionalStyle when='facet1==facet2' style='h'/></point></graph><style id='h' HIDDEN/>
MATRIX</graph> | <addChartsOnDiagonal type='normalCurve'/><addChartsOnDiagonal/> | =
ABOVE<point>EE</point></graph> | HIST/> | =
<graph><coordinates/><point/></graph> | HIST/> | =
)",
              forms);
}

TEST(Diagonal, IsStyledAlone) {
  expectTable(R"(
ABOVE<coordinates id='k'/><coordinates id='l'/>POINTS<line coordinates='l'/>
  <interval coordinates='l' style='s'/></graph><style id='s'/>
  | HIST styleOnly='true'><style color='red'/>
  <addHistogramNormalLine><style color='blue'/></addHistogramNormalLine>/DIAG
  | ABOVE<coordinates id='k'/><coordinates id='l'/>POINTS<line coordinates='l' style='style1'/>
  <interval coordinates='l' style='s'/></graph><style id='s' color='red'/>
  STYLES<style id='style1' color='blue'/></style>
ABOVE<coordinates id='k'/><coordinates id='l'/>POINTS<line coordinates='l'/>
  <interval coordinates='l' style='s'/></graph><style id='s'/>
  | HIST styleOnly='true'><style color='red'/><addHistogramNormalLine/>/DIAG
  | ABOVE<coordinates id='k'/><coordinates id='l'/>POINTS<line coordinates='l'/>
  <interval coordinates='l' style='s'/></graph><style id='s' color='red'/>
MATRIX</graph> | HIST styleOnly='true'><style color='red'/>/DIAG | =
)",
              forms);
}

// One histogram or line, however often; the element of the matrix stays what it is.
TEST(Diagonal, IsFilledOnce) {
  const ChartBase holder;
  for (const char* element : {"point", "interval", "area"}) {
    const std::string tag = element;
    EditedChart chart(withForms("ABOVE<coordinates/><" + tag + ">EE BESIDE'h'/></" + tag +
                                    "></graph><style id='h' HIDDEN/>",
                                forms));
    chart.apply(withForms("HIST><addHistogramNormalLine/>/DIAG", forms));
    chart.apply("<addChartsOnDiagonal type='NormalCurve'/>");
    chart.apply(withForms("HIST><addHistogramNormalLine/>/DIAG", forms));
    const std::vector<PlXGraph*> graphs = chart.chart().getGraphs();
    std::vector<CTElementType*> elements;
    BaseTemplate::getAllElements(*graphs.front(), elements);
    EXPECT_EQ(elements.size(), 3u) << tag;
  }
}

TEST(PanelCommands, AnswerWhatTheyFound) {
  const ChartBase holder;
  const std::string bodies[] = {"", "<graph/>", withForms("MATRIX</graph>", forms),
                                withForms("MATRIX</graph><graph/>", forms)};
  const std::tuple<const char*, int, bool> answers[] = {
      {"<setWrapPanels/>", 0, false},
      {"<setWrapPanels/>", 1, true},
      {"<setPanelOptions/>", 0, false},
      {"<setPanelOptions/>", 1, true},
      {"<addChartsOnDiagonal type='none'/>", 1, false},
      {"<addChartsOnDiagonal type='none'/>", 3, true},
      {"<addChartsOnDiagonal type='none' styleOnly='true'/>", 2, false},
      {"<addChartsOnDiagonal type='None'/>", 2, false},
      {"<setWireFrame/>", 1, false},
      {"<setBackPlane/>", 1, false},
      {"<setProjectionLine/>", 1, false},
      {"<setTranspose/>", 0, true}};
  for (const auto& [command, body, answer] : answers) {
    // An element that is no command leaves the answer false.
    EXPECT_EQ(EditedChart(bodies[body]).apply(std::string("<bogus/>") + command), answer)
        << command << body;
  }
}

}  // namespace
