// The commands of axes and ticks: which of them they reach, and what they set.
#include <regex>

#include "commandcases.h"

using namespace xercesc;

namespace {

const std::string categorical = "<sourceVariable id='v' categorical='true'/>";
const std::string ticks = "<axis><majorTicks/></axis>";
const std::string polar = "<polarTransform/>";

std::string dimension(const std::string& id, const std::string& content = ticks) {
  return "<dimension id='" + id + "'>" + content + "</dimension>";
}

std::string graph(const std::string& coordinates, const std::string& elements = "") {
  return "<graph><coordinates>" + coordinates + "</coordinates>" + elements + "</graph>";
}

// Two blocks; the second has a reference in the place of its z dimension.
const std::string twoBlocks =
    graph(dimension("x") + dimension("y") + dimension("z") + dimension("fourth") +
          "</coordinates><coordinates>" + dimension("x2") + dimension("y2") +
          "<dimensionReference ref='z'/>");

// A matrix: x and y show an expression with a slash, and the facet levels have axes.
std::string matrix(const std::string& x, const std::string& levels) {
  return "<expressionVariable id='e' expression='a/b'/>" +
         graph(dimension("x", x) + dimension("y"),
               "<facetLayout>" + levels +
                   "</facetLayout>"
                   "<point><x variable='e'/><y variable='e'/></point>");
}

std::string command(const std::string& element, const std::string& attributes) {
  if (element == "setAxisMajorTicks") {
    return "<setAxisMajorTicks><majorTicks " + attributes + "/></setAxisMajorTicks>";
  }
  if (element == "setAxisMinorTicks") {
    return "<setAxisMinorTicks><minorTicks " + attributes + "/></setAxisMinorTicks>";
  }
  // What some of them need to change anything.
  return "<" + element + " opposite='true' upperMargin='1%' labelAngle='5' " + attributes +
         "><style color='red'/></" + element + ">";
}

// The ids of those dimensions, axes and facet levels in which a command changes something, each
// with a blank behind it.
std::string changed(const std::string& body, const std::string& commands) {
  EditedChart chart(body);
  DOMElement* root = chart.chart().getImplementation();
  const auto* before = static_cast<const DOMElement*>(root->cloneNode(true));
  chart.apply(commands);
  std::string ids;
  for (const XMLCh* tag : {u"dimension", u"axis", u"facetLevel"}) {
    const DOMNodeList* old = before->getElementsByTagName(tag);
    const DOMNodeList* now = root->getElementsByTagName(tag);
    EXPECT_EQ(old->getLength(), now->getLength());
    for (XMLSize_t i = 0; i < old->getLength(); ++i) {
      const ChartString id(static_cast<const DOMElement*>(old->item(i))->getAttribute(u"id"));
      if (!id.empty() && !old->item(i)->isEqualNode(now->item(i))) ids += id.toUTF8() + " ";
    }
  }
  return ids;
}

const char* const all[] = {"setAxisScale",      "setAxisInterval",   "setAxisMargin",
                           "setAxisOpposite",   "setAxisStyle",      "setAxisMajorTicks",
                           "setAxisMinorTicks", "setTickLabelAngle", "setTickLabelFrequency"};

bool isOneOf(const std::string& name, std::initializer_list<const char*> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(AxisCommands, ReachTheDimensionsOfARole) {
  const ChartBase holder;
  const std::pair<std::string, std::string> roles[] = {
      {"x", "x "}, {"y", "y "}, {"y2", "y2 "}, {"z", "z "}, {"", ""}, {"legend", ""}, {"X", ""}};
  for (const std::string name : all) {
    for (auto [role, ids] : roles) {
      if (name == "setAxisInterval" && role == "y2") ids = "";
      // These go by the position alone, the others by the block too.
      const bool allBlocks =
          isOneOf(name, {"setAxisMargin", "setAxisOpposite", "setAxisMajorTicks"});
      if (allBlocks && role == "x") ids = "x x2 ";
      EXPECT_EQ(changed(twoBlocks, command(name, "role='" + role + "'")), ids) << name << role;
    }
  }
}

TEST(AxisCommands, LeavePolarGraphsAlone) {
  const ChartBase holder;
  const std::string bare = graph(dimension("x", "<axis/>") + polar);
  const std::string minor =
      graph(dimension("x", "<axis><majorTicks/><minorTicks/></axis>") + polar);
  for (const std::string name : all) {
    const bool reaches =
        !isOneOf(name, {"setAxisScale", "setAxisInterval", "setAxisMargin", "setAxisOpposite"});
    const std::string text = command(name, "role='x'");
    EXPECT_EQ(changed(minor, text), reaches ? "x " : "") << name;
    // Ticks are styled where the graph has them, and never made.
    EXPECT_EQ(changed(bare, text), name == "setAxisStyle" ? "x " : "") << name;
  }
  // In a chart with a prefix, too
  const std::string prefixed = std::regex_replace(
      std::regex_replace(chartText(minor), std::regex("<(/?)(?=[a-z])"), "<$1v:"),
      std::regex("xmlns="), "xmlns:v=");
  for (const char* name : {"setAxisMajorTicks", "setAxisMinorTicks"}) {
    EditedChart chart(prefixed);
    chart.apply(command(name, "role='x'"));
    EXPECT_NE(chart.chart().AsUTF8().find("markStyle="), std::string::npos) << name;
  }
}

TEST(AxisCommands, TellCategoricalRolesApart) {
  const ChartBase holder;
  const std::string x = "<point><x variable='v'/></point>";
  const std::string bodies[] = {categorical + graph(dimension("x") + dimension("y"), x),
                                categorical + graph("<dimension id='x' clusterVariable='v'>" +
                                                    ticks + "</dimension>" + dimension("y"))};
  struct Row {
    std::initializer_list<const char*> names;
    const char* attribute;  // of categorical
    const char* x;
    const char* y;
  };
  const Row rows[] = {
      {{"setAxisScale", "setAxisInterval"}, "", "", "y "},
      {{"setAxisScale", "setAxisInterval"}, "true", "", "y "},
      {{"setAxisMargin", "setTickLabelAngle", "setTickLabelFrequency"}, "", "", "y "},
      {{"setAxisMargin", "setTickLabelAngle", "setTickLabelFrequency"}, "true", "x ", ""},
      {{"setAxisMargin", "setTickLabelAngle", "setTickLabelFrequency"}, "1", "", "y "},
      {{"setAxisOpposite", "setAxisStyle", "setAxisMajorTicks"}, "", "x ", "y "},
      {{"setAxisOpposite", "setAxisStyle", "setAxisMajorTicks"}, "true", "x ", ""},
      {{"setAxisOpposite", "setAxisStyle", "setAxisMajorTicks"}, "false", "", "y "},
      {{"setAxisOpposite", "setAxisStyle", "setAxisMajorTicks"}, "TRUE", "", "y "},
      {{"setAxisMinorTicks"}, "", "x ", "y "},
      {{"setAxisMinorTicks"}, "true", "x ", "y "}};
  for (const Row& row : rows) {
    const std::string value = std::string(" categorical='") + row.attribute + "'";
    for (const char* name : row.names) {
      for (const std::string& body : bodies) {
        EXPECT_EQ(changed(body, command(name, "role='x'" + value)), row.x) << name << value;
        EXPECT_EQ(changed(body, command(name, "role='y'" + value)), row.y) << name << value;
      }
    }
  }
}

TEST(AxisCommands, TellDerivedAxesApart) {
  const ChartBase holder;
  const std::string body = graph(
      "<dimension><axis id='main'><majorTicks/></axis>"
      "<axis id='derived' transform='ratio'><majorTicks/></axis>"
      "<axis id='none' transform='none'><majorTicks/></axis></dimension>");
  for (const char* name : {"setAxisStyle", "setAxisMajorTicks", "setAxisMinorTicks",
                           "setTickLabelAngle", "setTickLabelFrequency"}) {
    EXPECT_EQ(changed(body, command(name, "role='x'")), "main none ") << name;
    EXPECT_EQ(changed(body, command(name, "role='x' derived='1'")), "main none ") << name;
    EXPECT_EQ(changed(body, command(name, "role='x' derived='true'")), "derived ") << name;
  }
}

TEST(AxisCommands, TreatAMatrixApart) {
  const ChartBase holder;
  const std::string levels = "<facetLevel id='f1'>" + ticks + "</facetLevel>";
  const std::string both = levels + "<facetLevel id='f2'>" + ticks + "</facetLevel>";
  for (const char* name : {"setTickLabelAngle", "setTickLabelFrequency"}) {
    EXPECT_EQ(changed(matrix(ticks, both), command(name, "role='x'")), "f1 ");
    EXPECT_EQ(changed(matrix(ticks, both), command(name, "role='y'")), "f2 ");
    EXPECT_EQ(changed(matrix(ticks, levels), command(name, "role='y'")), "");
    EXPECT_EQ(changed(matrix(ticks, both), command(name, "role='z'")), "");
    EXPECT_EQ(changed(matrix(ticks, both), command(name, "role='x' derived='true'")), "");
  }
  // Major ticks go whatever the command says, and minor ones are styled but not made.
  EditedChart chart(matrix("<axis style='s'><majorTicks/></axis>"
                           "<axis transform='ratio'><majorTicks/><minorTicks/></axis>",
                           levels) +
                    "<style id='s'/>");
  chart.apply(command("setAxisMinorTicks", "role='x' number='3'") +
              command("setAxisMajorTicks", "role='x'"));
  EXPECT_EQ(chart.body(),
            matrix("<axis style='s'/><axis transform='ratio'><minorTicks/></axis>", levels) +
                "<style id='s'/>");
  chart.apply("<setAxisStyle role='x'><style color='red' depth='1pt'/></setAxisStyle>");
  EXPECT_NE(chart.body().find("<style id='s' color='transparent' depth='1pt'/>"),
            std::string::npos);
}

TEST(AxisCommands, AnswerWhatTheyFound) {
  const ChartBase holder;
  const std::string one = graph(dimension("x") + dimension("y", ""));
  const std::pair<const char*, std::string> bodies[] = {
      {"none", ""},
      {"one", one},
      {"graph last", one + "<graph/>"},
      {"graph first", "<graph/>" + one},
      {"clusters", categorical + graph("<dimension clusterVariable='v'/>")},
      {"matrix", matrix(ticks, "<facetLevel>" + ticks + "</facetLevel>")}};
  // Of label commands the last graph alone counts, with ticks or without.
  for (const auto& row : rowsOf(R"(
none | <setAxisStyle/> | true
none | <setAxisInterval role='z'/> | true
one | <setAxisInterval role='y2'/> | false
one | <setAxisInterval/> | false
one | <setAxisMajorTicks><some/></setAxisMajorTicks> | false
one | <setAxisMajorTicks><some><majorTicks role='q'/></some></setAxisMajorTicks> | true
one | <setAxisMajorTicks><majorticks role='x'/></setAxisMajorTicks> | true
one | <setAxisMinorTicks><minorticks role='x'/></setAxisMinorTicks> | true
one | <setAxisMinorTicks/> | false
one | <setTickLabelAngle labelAngle='0' role='y'/> | true
one | <setTickLabelAngle labelAngle='0' role='z'/> | false
one | <setTickLabelAngle labelAngle='0' role='x' categorical='true'/> | false
one | <setTickLabelAngle role='x'/> | false
none | <setTickLabelFrequency role='x'/> | false
graph last | <setTickLabelFrequency role='x'/> | false
graph first | <setTickLabelFrequency role='x'/> | true
matrix | <setTickLabelFrequency role='x'/> | false
one | <setTickLabelFormat role='x'><numberFormat/><some/></setTickLabelFormat> | false
one | <setTickLabelFormat role='x'><format/><!-- no format --></setTickLabelFormat> | false
one | <setTickLabelFormat role='x'><?format a='1'?></setTickLabelFormat> | false
one | <setTickLabelFormat role='x'/> | true
clusters | <setTickLabelFormat role='x' categorical='true'><format/></setTickLabelFormat> | false
clusters | <setTickLabelFormat role='x' categorical='true'><stringFormat/></setTickLabelFormat> | true
)")) {
    for (const auto& [name, body] : bodies) {
      if (row[0] != name) continue;
      // An element that is no command leaves the answer false.
      EXPECT_EQ(EditedChart(body).apply("<bogus/>" + row[1]), row[2] == "true") << row[1];
    }
  }
}

// Short forms of the tables below. Braces are around the only axis, brackets around the dimensions.
std::string expanded(std::string text) {
  const std::pair<std::string, const char*> forms[] = {
      {"MAJOR", "<setAxisMajorTicks><majorTicks role='x'"},
      {"/MAJ", "</majorTicks></setAxisMajorTicks>"},
      {"MINOR", "<setAxisMinorTicks><minorTicks role='x'"},
      {"/MIN", "</minorTicks></setAxisMinorTicks>"},
      {"{", "[<dimension><axis>"},
      {"}", "</axis></dimension>]"},
      {"[", "<graph><coordinates>"},
      {"]", "</coordinates></graph>"},
      {"NICE", "niceLowerMapping='true' niceUpperMapping='true' unionDomain='true'"},
      {"STYLES", "<style id='c-o-n-t-a-i-n-er'>"},
      {"HIDDEN", "color='transparent' color2='transparent' visible='false'"},
      {"OWN", "markStyle='m' style='l' tickFrameStyle='f'"},
      {"MADE", "markStyle='style1' style='style2' tickFrameStyle='style3'"},
      {"GRID", "<some><gridLines><style depth='5pt'/></gridLines></some>"}};
  for (const auto& [form, meaning] : forms) {
    for (std::size_t at; (at = text.find(form)) != text.npos;) {
      text.replace(at, form.size(), meaning);
    }
  }
  return text;
}

// Rows of a body, commands, the body that they leave, and perhaps the body of the source.
void expectRows(const std::string& table) {
  const ChartBase holder;
  for (const auto& row : rowsOf(table)) {
    EditedChart chart(expanded(row[0]));
    const EditedChart source(row.size() > 3 ? expanded(row[3]) : "");
    const std::string commands = expanded(row[1]);
    chart.apply(commands, row.size() > 3 ? &source : nullptr);
    // Read and printed, so that the forms needn't be those of the printer.
    EXPECT_EQ(chart.body(), EditedChart(expanded(row[2])).body()) << commands;
  }
}

TEST(SetAxisScale, SetsTheScaleAnew) {
  const ChartBase holder;
  const std::string safe = "<some><parameter name='safe' value='true'/></some>";
  const std::string three = "<parameter name='exponent' value='3'/>";
  // The scale before, the command's attributes and children, the scale behind.
  const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
      {"", "", "", "invert='false' method='linear'"},
      {"<scale base='3' invert='true' method='log' origin='1'/>", "method='none' invert='TRUE'", "",
       "base='3' invert='false' method='linear'"},
      {"", "method='log' invert='true' origin='2004-07-30' base='0.5'", three,
       "base='0.5' invert='true' method='log' origin='2004-07-30'"},
      {"", "method='power'", three + "<parameter name='base' value='4'/>",
       "base='4' invert='false' method='power'"},
      {"", "method='power'", safe + three, "base='3' invert='false' method='power_safe'"},
      {"", "method='log'", safe, "invert='false' method='log_safe'"},
      {"", "method='log'", "<parameter name='safe' value='1'/>", "invert='false' method='log'"},
      {"", "method='method_logit'", safe, "invert='false' method='method_logit'"},
      {"", "method='power_safe' base='0'", "", "base='0' invert='false' method='power_safe'"}};
  for (const auto& [before, attributes, children, after] : cases) {
    EditedChart chart(graph("<dimension>" + before + "</dimension>"));
    chart.apply("<setAxisScale role='x' " + attributes + ">" + children + "</setAxisScale>");
    EXPECT_EQ(chart.body(), graph("<dimension><scale " + after + "/></dimension>")) << attributes;
  }
}

TEST(SetAxisInterval, ReplacesTheBounds) {
  expectRows(R"(
<intervalDomain id='d'><range min='7'/></intervalDomain>[<dimension domain='d'/>]
  | <setAxisInterval role='x'/> | <intervalDomain id='d'/>[<dimension domain='d' NICE/>]
<intervalDomain id='d'/>[<dimension domain='d'><axis/><axis><majorTicks base='9'/></axis>
  </dimension>] | <setAxisInterval role='x' lowerMapping='exact' min='0'/>
  | <intervalDomain id='d'><range exact='true' min='0'/></intervalDomain>[<dimension domain='d'
  niceLowerMapping='false' niceUpperMapping='true' unionDomain='false'><axis/><axis>
  <majorTicks base='0'/></axis></dimension>]
[<dimension><axis><majorTicks/></axis></dimension>]<style id='domain1'/>
  | <setAxisInterval role='x' upperMapping='exact' lowerMapping='other' max='5'/>
  | <intervalDomain id='domain2'><range exact='true' max='5'/></intervalDomain>[<dimension
  domain='domain2' niceLowerMapping='true' niceUpperMapping='false' unionDomain='false'><axis>
  <majorTicks/></axis></dimension>]<style id='domain1'/>
<intervalDomain id='d'/>[<dimension domain='d'/>]
  | <setAxisInterval role='x' max='2004-07-30 00:00:00.000' min='1'/>
  | <intervalDomain id='d' date='true'><range exact='true' min='1'/>
  <range exact='true' max='2004-07-30 00:00:00.000'/></intervalDomain>[<dimension domain='d' NICE/>]
<intervalDomain id='d'/>[<dimension domain='d'/>]
  | <setAxisInterval role='x' max='20040730000000000000000' min='2004-07-30'/>
  | <intervalDomain id='d'><range exact='true' min='2004-07-30'/>
  <range exact='true' max='20040730000000000000000'/></intervalDomain>[<dimension domain='d' NICE/>]
<intervalDomain id='d'/><intervalDomain id='e'/>[<dimension domain='d'/>]
  [<dimension domain='e'><axis><majorTicks/></axis><axis><majorTicks/></axis></dimension>]
  | <setAxisInterval role='x' min='1'/> | <intervalDomain id='d'><range exact='true' min='1'/>
  </intervalDomain><intervalDomain id='e'><range exact='true' min='1'/></intervalDomain>
  [<dimension domain='d' NICE/>][<dimension domain='e' NICE><axis><majorTicks base='1'/></axis>
  <axis><majorTicks base='1'/></axis></dimension>]
<intervalDomain id='d'/>[<dimension domain='d'/>]
  | <setAxisInterval role='x' min='2004-07-30 00:00:00.0000'/>
  | <intervalDomain id='d'><range exact='true' min='2004-07-30 00:00:00.0000'/></intervalDomain>
  [<dimension domain='d' NICE/>]
<categoricalDomain id='c'/>[<dimension domain='c'/>] | <setAxisInterval role='x' max='5'/>
  | <categoricalDomain id='c'/>[<dimension domain='c' NICE/>]
)");
}

TEST(AxisCommands, SetMarginsSidesAndStyles) {
  // What the source states stays. A second axis takes the other side. A title gets its styles also
  // from a command without any; of several styles the last counts, and those for labels go first.
  expectRows(R"(
[<dimension id='d'/>] | <setAxisMargin role='x' upperMargin='1%' lowerMargin='2%'/>
  | [<dimension id='d' lowerMargin='2%'/>] | [<dimension id='d' upperMargin='7%'/>]
[<dimension id='d' lowerMargin='9%'/>] | <setAxisMargin role='x' upperMargin='1%' lowerMargin=''/>
  | [<dimension id='d' lowerMargin='9%' upperMargin='1%'/>]
  | [<dimension id='d' lowerMargin='0%' upperMargin=''/>]
[<dimension id='d'/>] | <setAxisMargin role='x' lowerMargin='2%'/> | [<dimension id='d'
  lowerMargin='2%'/>] | [<dimension lowerMargin='7%'/>]<style id='d'/>
[<dimension/><parallelCoordinatesTransform/>] | <setAxisMargin role='x' upperMargin='1%'/>
  | [<dimension/><parallelCoordinatesTransform/>]
[<dimension><axis/><axis/><axis/></dimension>] | <setAxisOpposite role='x'/>
  | [<dimension><axis opposite='false'/><axis opposite='true'/><axis/></dimension>]
[<dimension><axis/><axis opposite='true'/></dimension>] | <setAxisOpposite role='x'
  opposite='true'/> | [<dimension><axis opposite='true'/><axis opposite='false'/></dimension>]
{} | <setAxisStyle role='x'><style color='red'/><style depth='1pt'/></setAxisStyle>
  | [<dimension><axis style='style1'/></dimension>]STYLES<style id='style1' depth='1pt'/></style>
[<dimension><axis style='s'/></dimension>]<style id='s' color='blue'/> | <setAxisStyle role='x'>
  <style depth='1pt'/></setAxisStyle> | [<dimension><axis style='s'/></dimension>]
  <style id='s' color='blue' depth='1pt'/>
{<label/>} | <setAxisStyle role='x'/> | {<label style='style1' textFrameStyle='style2'/>}
  STYLES<style id='style1'/><style id='style2' HIDDEN/></style>
{} | <setAxisStyle role='x'><label>a</label></setAxisStyle>
  | {<label style='style1' textFrameStyle='style2'><text text='a'/></label>}
  STYLES<style id='style1' color='black'/><style id='style2' HIDDEN/></style>
{<label style='t' textFrameStyle='f'/>}<style id='t'/><style id='f'/> | <setAxisStyle role='x'>
  <label><style color='red' depth='2pt'/></label><axisLabelStyle><some><style number='1'
  depth='3pt'/><style depth='4pt'/><style color='blue'/></some></axisLabelStyle></setAxisStyle>
  | {<label style='t' textFrameStyle='f'/>}<style id='t' color='blue' depth='2pt'/>
  <style id='f' depth='3pt'/>
)");
}

TEST(AxisCommands, KnowTheUnitsOfTicks) {
  const ChartBase holder;
  for (const std::string unit :
       {"second", "minute", "hour", "day", "week", "month", "year", "decade"}) {
    EditedChart chart(graph("<dimension><axis><majorTicks/></axis></dimension>"));
    chart.apply(command("setAxisMajorTicks", "role='x' deltaUnit='" + unit + "'"));
    const bool isKnown = chart.body().find("deltaUnit='" + unit + "'") != std::string::npos;
    EXPECT_EQ(isKnown, unit != "decade") << unit;
  }
}

TEST(AxisCommands, MakeAndStyleTicks) {
  // Grid lines start in the colour of the marks and keep it. Minor ticks stand beside major ones.
  expectRows(R"(
{} | MAJOR/></setAxisMajorTicks> | {<majorTicks MADE/>}STYLES<style id='style1'/>
  <style id='style2'/><style id='style3' visible='false'/></style>
{} | MAJOR styleOnly='true'>GRID/MAJ | {}
{<majorTicks OWN/>}<style id='m'/><style id='l'/><style id='f'/>
  | MAJOR position='cross' length='3pt' stagger='true' delta='2.50' deltaUnit='month'
  base='1'>/MAJ | {<majorTicks OWN position='cross' length='3pt' stagger='true' delta='2.5'
  deltaUnit='month' base='1'/>}<style id='m'/><style id='l'/><style id='f'/>
{<majorTicks OWN delta='1' deltaUnit='day' position='outside' stagger='true'/>}<style id='m'/>
  <style id='l'/><style id='f'/> | MAJOR styleOnly='true' delta='auto' stagger='auto'
  position='none' deltaUnit='decade'>GRID/MAJ | {<majorTicks OWN deltaUnit='day'
  position='outside'/>}<style id='m'/><style id='l'/><style id='f'/>
{<majorTicks OWN/>}<style id='m'/><style id='l'/><style id='f'/>
  | MAJOR><markStyle><style depth='1pt'/><style depth='9pt'/></markStyle>
  <tickLabelStyle><style number='0' depth='2pt'/><style number='1' depth='3pt'/>
  <style color='red'/></tickLabelStyle>/MAJ | {<majorTicks OWN/>}<style id='m'
  depth='1pt'/><style id='l' color='red' depth='2pt'/><style id='f' depth='3pt'/>
{<majorTicks OWN/>}<style id='m' color='red'/><style id='l'/><style id='f'/> | MAJOR>GRID/MAJ
  MAJOR><markStyle><style color='blue'/></markStyle>GRID/MAJ
  | {<majorTicks OWN><gridline style='style1'/></majorTicks>}<style id='m' color='blue'/>
  <style id='l'/><style id='f'/>STYLES<style id='style1' color='red' depth='5pt'/></style>
{<majorTicks OWN/>}<style id='m'/><style id='l'/><style id='f'/> | MAJOR><gridLines/>/MAJ
  | {<majorTicks OWN><gridline style='style1'/></majorTicks>}<style id='m'/>
  <style id='l'/><style id='f'/>STYLES<style id='style1'/></style>
{} | MINOR number='3'>/MIN | {}
{<majorTicks markStyle='m'/>}<style id='m'/> | MINOR number='99999999999'>/MIN
  | {<majorTicks markStyle='m'/><minorTicks markStyle='style1'/>}
  <style id='m'/>STYLES<style id='style1'/></style>
{<majorTicks markStyle='m'/>}<style id='m' color='red'/> | MINOR>/MIN
  | {<majorTicks markStyle='m'/><minorTicks markStyle='style1' number='2'/>}
  <style id='m' color='red'/>STYLES<style id='style1' color='red'/></style>
{<majorTicks/>} | MINOR styleOnly='true'>/MIN | {<majorTicks/>}
[<dimension/></coordinates><coordinates><dimension><axis><minorTicks markStyle='m'/></axis>
  </dimension>]<style id='m'/> | MINOR number='5'><markStyle><style depth='1pt'/></markStyle>/MIN
  | [<dimension/></coordinates><coordinates><dimension><axis><minorTicks markStyle='m'/></axis>
  </dimension>]<style id='m' depth='1pt'/>
[<dimension/></coordinates><coordinates><dimension><axis><majorTicks OWN/></axis></dimension>]
  <style id='m'/><style id='l'/><style id='f'/> | MAJOR length='3pt'><markStyle>
  <style depth='1pt'/></markStyle>/MAJ
  | [<dimension/></coordinates><coordinates><dimension><axis><majorTicks OWN/></axis></dimension>]
  <style id='m' depth='1pt'/><style id='l'/><style id='f'/>
{<minorTicks markStyle='m' number='4'/>}<style id='m'/> | MINOR styleOnly='true'
  number='5' position='cross' length='1pt'>GRID<markStyle><style depth='1pt'/></markStyle>
  /MIN | {<minorTicks markStyle='m' number='4'/>}<style id='m' depth='1pt'/>
{<minorTicks markStyle='m'/>}<style id='m' color='red'/> | MINOR number='5'
  position='inside' length='1pt'>GRID/MIN | {<minorTicks length='1pt' markStyle='m'
  number='5' position='inside'><gridline style='style1'/></minorTicks>}
  <style id='m' color='red'/>STYLES<style id='style1' color='red' depth='5pt'/></style>
{<majorTicks labelAngle='5'/>} | <setTickLabelAngle role='x' labelAngle='0'/>
  | {<majorTicks labelAngle='0'/>}
{<majorTicks/>} | <setTickLabelFrequency role='x' labelFrequency='3'/>
  | {<majorTicks labelFrequency='3'/>}
{<majorTicks/>} | <setTickLabelFrequency role='x' labelFrequency='0'/>
  | {<majorTicks labelFrequency='1'/>}
{<majorTicks/>} | <setTickLabelFrequency role='x' labelFrequency='-2'/>
  | {<majorTicks labelFrequency='-2'/>}
{<majorTicks/>} | <setTickLabelFrequency role='x' labelFrequency='4294967298'/>
  | {<majorTicks/>}
)");
}

}  // namespace
