// The commands of axes and ticks: which of them they reach, and what they set.
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
  const std::string angle = "<setTickLabelAngle labelAngle='0' ";
  const std::tuple<std::string, std::string, bool> cases[] = {
      {"", "<setAxisScale/>", true},
      {"", "<setAxisStyle/>", true},
      {"", "<setAxisInterval role='z'/>", true},
      {one, "<setAxisInterval role='y2'/>", false},
      {one, "<setAxisInterval/>", false},
      {one, "<setAxisMajorTicks><other/></setAxisMajorTicks>", false},
      {one, "<setAxisMajorTicks><other><majorTicks role='q'/></other></setAxisMajorTicks>", true},
      {one, "<setAxisMajorTicks><majorticks role='x'/></setAxisMajorTicks>", true},
      {one, "<setAxisMinorTicks><minorticks role='x'/></setAxisMinorTicks>", true},
      {one, "<setAxisMinorTicks/>", false},
      // Of the last graph alone, with ticks or without.
      {one, angle + "role='y'/>", true},
      {one, angle + "role='z'/>", false},
      {one, angle + "role='x' categorical='true'/>", false},
      {one + "<graph/>", angle + "role='x'/>", false},
      {"<graph/>" + one, angle + "role='x'/>", true},
      {"", angle + "role='x'/>", false},
      {one, "<setTickLabelAngle role='x'/>", false},
      {matrix(ticks, "<facetLevel>" + ticks + "</facetLevel>"), angle + "role='x'/>", false},
      {one, "<setTickLabelFormat role='x'><numberFormat/><other/></setTickLabelFormat>", false},
      {one, "<setTickLabelFormat role='x'><format/><!-- no format --></setTickLabelFormat>", false},
      {one, "<setTickLabelFormat role='x'/>", true}};
  for (const auto& [body, text, answer] : cases) {
    // An element that is no command leaves the answer false.
    EXPECT_EQ(EditedChart(body).apply("<bogus/>" + text), answer) << text;
  }
}

struct AxisCase {
  std::string before;
  std::string commands;
  std::string after;
  // The body of the source chart; empty for none.
  std::string source = "";
};

void expectAxes(std::span<const AxisCase> cases) {
  const ChartBase holder;
  for (const AxisCase& each : cases) {
    EditedChart chart(each.before);
    const EditedChart source(each.source);
    chart.apply(each.commands, each.source.empty() ? nullptr : &source);
    EXPECT_EQ(chart.body(), each.after) << each.commands;
  }
}

TEST(SetAxisScale, SetsTheScaleAnew) {
  const auto row = [](const std::string& before, const std::string& attributes,
                      const std::string& parameters, const std::string& after) {
    return AxisCase{graph("<dimension>" + before + "</dimension>"),
                    "<setAxisScale role='x' " + attributes + ">" + parameters + "</setAxisScale>",
                    graph("<dimension><scale " + after + "/></dimension>")};
  };
  const std::string safe = "<parameter name='safe' value='true'/>";
  const std::string three = "<parameter name='exponent' value='3'/>";
  const AxisCase cases[] = {
      row("", "", "", "invert='false' method='linear'"),
      row("<scale base='3' invert='true' method='log' origin='1'/>", "method='none' invert='TRUE'",
          "", "base='3' invert='false' method='linear'"),
      row("", "method='log' invert='true' origin='2004-07-30' base='0.5'", three,
          "base='0.5' invert='true' method='log' origin='2004-07-30'"),
      row("", "method='power'", three + "<other><parameter name='base' value='4'/></other>",
          "base='4' invert='false' method='power'"),
      row("", "method='power'", safe + three, "base='3' invert='false' method='power_safe'"),
      row("", "method='log'", safe, "invert='false' method='log_safe'"),
      row("", "method='log'", "<parameter name='safe' value='1'/>", "invert='false' method='log'"),
      row("", "method='method_logit'", safe, "invert='false' method='method_logit'"),
      row("", "method='method_cLoglog'", "<parameter name='other' value='1'/>",
          "invert='false' method='method_cLoglog'"),
      row("", "method='power_safe' base='0'", "", "base='0' invert='false' method='power_safe'")};
  expectAxes(cases);
}

TEST(SetAxisInterval, ReplacesTheBounds) {
  const auto row = [](const std::string& attributes, const std::string& mappings,
                      const std::string& date, const std::string& ranges,
                      const std::string& base = "base='9'") {
    const std::string end = ranges.empty() ? "/>" : ">" + ranges + "</intervalDomain>";
    return AxisCase{"<intervalDomain id='d'><range min='7'/></intervalDomain>" +
                        graph("<dimension domain='d' unionDomain='true'><axis/><axis><majorTicks "
                              "base='9'/></axis></dimension>"),
                    "<setAxisInterval role='x' " + attributes + "/>",
                    "<intervalDomain id='d'" + date + end +
                        graph("<dimension domain='d' " + mappings + "><axis/><axis><majorTicks " +
                              base + "/></axis></dimension>")};
  };
  const std::string nice = "niceLowerMapping='true' niceUpperMapping='true' unionDomain='true'";
  const std::string moment = "2004-07-30 00:00:00.000";
  const std::string digits = "20040730000000000000000";
  ASSERT_EQ(moment.size(), digits.size());
  const AxisCase cases[] = {
      row("", nice, "", ""),
      row("lowerMapping='exact' min='0'",
          "niceLowerMapping='false' niceUpperMapping='true' unionDomain='false'", "",
          "<range exact='true' min='0'/>", "base='0'"),
      row("upperMapping='exact' lowerMapping='other' max='5'",
          "niceLowerMapping='true' niceUpperMapping='false' unionDomain='false'", "",
          "<range exact='true' max='5'/>"),
      row("max='5' min='1'", nice, "", "<range exact='true' min='1'/><range exact='true' max='5'/>",
          "base='1'"),
      row("max='" + moment + "'", nice, " date='true'",
          "<range exact='true' max='" + moment + "'/>"),
      row("max='" + digits + "'", nice, "", "<range exact='true' max='" + digits + "'/>"),
      row("max='2004-07-30'", nice, "", "<range exact='true' max='2004-07-30'/>"),
      // Without a domain, and with one that has no bounds.
      {"<intervalDomain id='domain1'/>" + graph("<dimension/>"),
       "<setAxisInterval role='x' max='5'/>",
       "<intervalDomain id='domain1'/><intervalDomain id='domain2'><range exact='true' max='5'/>"
       "</intervalDomain>" +
           graph("<dimension domain='domain2' " + nice + "/>")},
      {"<categoricalDomain id='c'/>" + graph("<dimension domain='c'/>"),
       "<setAxisInterval role='x' max='5'/>",
       "<categoricalDomain id='c'/>" + graph("<dimension domain='c' " + nice + "/>")}};
  expectAxes(cases);
}

TEST(SetAxisMargin, LeavesWhatTheSourceStates) {
  const auto of = [](const std::string& attributes) {
    return graph("<dimension id='d'" + attributes + "/>");
  };
  const std::string both = "<setAxisMargin role='x' upperMargin='1%' lowerMargin='2%'/>";
  const std::string parallel = graph("<dimension/><parallelCoordinatesTransform/>");
  const AxisCase cases[] = {
      {of(" upperMargin='9%'"), both, of(" lowerMargin='2%' upperMargin='1%'")},
      {of(" upperMargin='9%'"), "<setAxisMargin role='x' lowerMargin='2%'/>",
       of(" lowerMargin='2%' upperMargin='9%'")},
      {of(""), both, of(" lowerMargin='2%'"), of(" upperMargin='7%'")},
      {of(" lowerMargin='9%'"), both, of(" lowerMargin='9%' upperMargin='1%'"),
       of(" upperMargin='' lowerMargin='0%'")},
      // An object of another id or kind pins nothing.
      {of(""), both, of(" lowerMargin='2%' upperMargin='1%'"),
       graph("<dimension upperMargin='7%' lowerMargin='7%'/>", "<point id='d'/>")},
      {parallel, both, parallel}};
  expectAxes(cases);
}

TEST(SetAxisOpposite, PutsASecondAxisOnTheOtherSide) {
  const auto axes = [](const std::string& first, const std::string& second) {
    return graph("<dimension><axis" + first + "/><axis" + second + "/><axis/></dimension>");
  };
  const std::string far = " opposite='true'";
  const std::string near = " opposite='false'";
  const AxisCase cases[] = {
      {axes("", ""), "<setAxisOpposite role='x'/>", axes(near, far)},
      {axes(near, near), "<setAxisOpposite role='x' opposite='true'/>", axes(far, near)},
      {graph("<dimension><axis/></dimension>"), "<setAxisOpposite role='x' opposite='TRUE'/>",
       graph("<dimension><axis opposite='false'/></dimension>")}};
  expectAxes(cases);
}

TEST(SetAxisStyle, StylesAxisAndTitle) {
  const auto axis = [](const std::string& text) {
    return graph("<dimension><axis" + text + "</dimension>");
  };
  const auto container = [](const std::string& styles) {
    return "<style id='c-o-n-t-a-i-n-er'>" + styles + "</style>";
  };
  const std::string hidden = "color='transparent' color2='transparent' ";
  const std::string given = axis(" style='a'><label style='t' textFrameStyle='f'/></axis>");
  const AxisCase cases[] = {
      {axis("/>"), "<setAxisStyle role='x'/>", axis("/>")},
      {axis("/>"), "<setAxisStyle role='x'><style color='red'/><style depth='1pt'/></setAxisStyle>",
       axis(" style='style1'/>") + container("<style id='style1' depth='1pt'/>")},
      // A title gets its styles also from a command without any.
      {axis("><label/></axis>"), "<setAxisStyle role='x'/>",
       axis("><label style='style1' textFrameStyle='style2'/></axis>") +
           container("<style id='style1'/><style id='style2' " + hidden + "visible='false'/>")},
      {axis("/>"), "<setAxisStyle role='x'><label>a <!-- b -->c</label></setAxisStyle>",
       axis("><label style='style1' textFrameStyle='style2'><text text='a c'/></label></axis>") +
           container("<style id='style1' color='black'/><style id='style2' " + hidden +
                     "visible='false'/>")},
      // The last of each counts; those for labels go before the label's own.
      {given + "<style id='a'/><style id='t'/><style id='f' visible='true'/>",
       "<setAxisStyle role='x'><label><style color='red' depth='2pt'/></label>"
       "<axisLabelStyle><other><style number='1' depth='3pt'/><style number='2' depth='4pt'/>"
       "<style color='blue'/></other></axisLabelStyle></setAxisStyle>",
       given + "<style id='a'/><style id='t' color='blue' depth='2pt'/>"
               "<style id='f' depth='3pt' visible='true'/>"}};
  expectAxes(cases);
}

TEST(SetAxisTicks, MakesAndStylesThem) {
  const auto axis = [](const std::string& content, const std::string& styles = "") {
    return graph("<dimension><axis>" + content + "</axis></dimension>") +
           (styles.empty() ? "" : "<style id='c-o-n-t-a-i-n-er'>" + styles + "</style>");
  };
  const auto major = [](const std::string& attributes, const std::string& parts = "") {
    return "<setAxisMajorTicks><majorTicks role='x' " + attributes + ">" + parts +
           "</majorTicks></setAxisMajorTicks>";
  };
  const auto minor = [](const std::string& attributes, const std::string& parts = "") {
    return "<setAxisMinorTicks><minorTicks role='x' " + attributes + ">" + parts +
           "</minorTicks></setAxisMinorTicks>";
  };
  const std::string links = "markStyle='style1' style='style2' tickFrameStyle='style3'";
  const std::string made = "<style id='style2'/><style id='style3' visible='false'/>";
  const std::string grid = "<other><gridLines><style depth='5pt'/></gridLines></other>";
  // Styles that are there.
  const std::string own = "markStyle='m' style='l' tickFrameStyle='f'";
  const auto styled = [&](const std::string& attributes, const std::string& m = "",
                          const std::string& l = "", const std::string& f = "") {
    return graph("<dimension><axis><majorTicks " + attributes + "/></axis></dimension>") +
           "<style id='m'" + m + "/><style id='l'" + l + "/><style id='f'" + f + "/>";
  };
  const AxisCase cases[] = {
      {axis(""), major(""), axis("<majorTicks " + links + "/>", "<style id='style1'/>" + made)},
      {axis(""), major("styleOnly='true'", grid), graph("<dimension><axis/></dimension>")},
      {styled(own),
       major("position='cross' length='3pt' stagger='true' delta='2.50' "
             "deltaUnit='month' base='1'"),
       styled("base='1' delta='2.5' deltaUnit='month' length='3pt' markStyle='m' "
              "position='cross' stagger='true' style='l' tickFrameStyle='f'")},
      {styled("delta='1' deltaUnit='day' markStyle='m' position='outside' stagger='true' "
              "style='l' tickFrameStyle='f'"),
       major("styleOnly='true' delta='auto' stagger='auto' position='none' deltaUnit='decade'",
             grid),
       styled("deltaUnit='day' markStyle='m' position='outside' style='l' tickFrameStyle='f'")},
      {styled(own),
       major("",
             "<markStyle><style depth='1pt'/><style depth='9pt'/></markStyle><tickLabelStyle>"
             "<style number='0' depth='2pt'/><style number='1' depth='3pt'/>"
             "<style color='red'/></tickLabelStyle>"),
       styled(own, " depth='1pt'", " color='red' depth='2pt'", " depth='3pt'")},
      // Grid lines start in the colour of the marks, and once made keep their own.
      {axis(""),
       major("", "<markStyle><style color='red'/></markStyle>" + grid) +
           major("", "<markStyle><style color='blue'/></markStyle>" + grid),
       axis("<majorTicks " + links + "><gridline style='style4'/></majorTicks>",
            "<style id='style1' color='blue'/>" + made +
                "<style id='style4' color='red' depth='5pt'/>")},
      // Minor ticks stand beside major ones only.
      {axis(""), minor("number='3'"), graph("<dimension><axis/></dimension>")},
      {axis("<majorTicks markStyle='style1'/>", "<style id='style1' color='red'/>"), minor(""),
       axis("<majorTicks markStyle='style1'/><minorTicks markStyle='style2' number='2'/>",
            "<style id='style1' color='red'/><style id='style2' color='red'/>")},
      {axis("<majorTicks/>"), minor("styleOnly='true'"), axis("<majorTicks/>")},
      {axis("<minorTicks markStyle='style1' number='4'/>", "<style id='style1'/>"),
       minor("styleOnly='true' number='5' position='cross' length='1pt'",
             grid + "<markStyle><style depth='1pt'/></markStyle>"),
       axis("<minorTicks markStyle='style1' number='4'/>", "<style id='style1' depth='1pt'/>")},
      {axis("<minorTicks markStyle='style1'/>", "<style id='style1' color='red'/>"),
       minor("number='5' position='inside' length='1pt'", grid),
       axis("<minorTicks length='1pt' markStyle='style1' number='5' position='inside'>"
            "<gridline style='style2'/></minorTicks>",
            "<style id='style1' color='red'/><style id='style2' color='red' depth='5pt'/>")}};
  expectAxes(cases);
}

TEST(SetTickLabels, SetsAngleAndFrequencyOfExistingTicks) {
  const auto ticksOf = [](const std::string& attributes) {
    return graph("<dimension><axis/><axis><majorTicks" + attributes + "/></axis></dimension>");
  };
  const auto row = [&](const std::string& what, const std::string& after) {
    return AxisCase{ticksOf(" labelAngle='5' labelFrequency='5'"), "<setTickLabel" + what + "/>",
                    ticksOf(after)};
  };
  const AxisCase cases[] = {
      row("Angle role='x' labelAngle='0'", " labelAngle='0' labelFrequency='5'"),
      row("Angle role='x' labelAngle='-22.5'", " labelAngle='-22.5' labelFrequency='5'"),
      row("Angle role='x' labelAngle=''", " labelAngle='5' labelFrequency='5'"),
      row("Frequency role='x' labelFrequency='3'", " labelAngle='5' labelFrequency='3'"),
      row("Frequency role='x' labelFrequency='0'", " labelAngle='5' labelFrequency='1'"),
      row("Frequency role='x' labelFrequency='all'", " labelAngle='5' labelFrequency='1'"),
      row("Frequency role='x'", " labelAngle='5' labelFrequency='1'")};
  expectAxes(cases);
}

}  // namespace
