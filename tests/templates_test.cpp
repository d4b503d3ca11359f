// Templates from text to chart: what runs, what is reported, what stops; the queries of commands.
#include <functional>
#include <regex>

#include "chartexception.h"
#include "charttemplate.h"
#include "charttransformer.h"
#include "commandcases.h"
#include "commandoutcome.h"
#include "commands.h"
#include "tavogotocaller.h"
#include "testplaces.h"

using namespace xercesc;

namespace {

std::string margin(const std::string& value, const std::string& role = "x") {
  return "<setAxisMargin role='" + role + "' upperMargin='" + value + "'/>";
}

std::string dimensions(const std::string& first, const std::string& second = "<dimension/>") {
  return "<graph><coordinates>" + first + second + "</coordinates></graph>";
}

// A log's entries without their dates and places, each in a line.
std::string entries(const LogFolder& folder) {
  const std::regex frame(
      "(^|\n)[A-Z][a-z]{2} [^\n]{24} ([A-Z][A-Za-z ]+ -- )|, line \\d+, char \\d+");
  return std::regex_replace(folder.log(), frame, "$1$2");
}

TEST(Template, RunsTheCommandsItKnowsInOrder) {
  const ChartBase holder;
  const std::string bogus = "<bogus a=\"1\"><b/>text</bogus>";
  const std::string unsupported = "Error -- ChartXML: Unsupported Template element encountered (";
  const std::string place = ") at file src/templates/applytemplate.cpp\n";
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"", "", ""},
      {"text <!-- comment -->", "", ""},
      {margin("1%") + margin("2%") + margin("3%"), " upperMargin='3%'", ""},
      {bogus + margin("1%") + "<setaxismargin/>", " upperMargin='1%'",
       unsupported + bogus + place + unsupported + "<setaxismargin/>" + place},
      // A prefix makes it no command.
      {"<t:setAxisMargin xmlns:t='urn:t' role='x' upperMargin='1%'/>", "",
       unsupported + "<t:setAxisMargin role=\"x\" upperMargin=\"1%\" xmlns:t=\"urn:t\"/>" + place},
      // Commands stand below the root alone.
      {"<setAxisScale role='q'>" + margin("1%") + "</setAxisScale>", "", ""}};
  for (const auto& [body, attributes, log] : cases) {
    EditedChart chart(dimensions("<dimension/>"));
    const LogFolder folder;
    ChartTemplate commands(chart.chart(), nullptr);
    commands.setTemplate(templateText(body));
    EXPECT_EQ(&commands.applyTemplate(), &chart.chart());
    EXPECT_EQ(chart.body(), dimensions("<dimension" + attributes + "/>")) << body;
    EXPECT_EQ(entries(folder), log);
  }
}

TEST(Template, TellsWhatBecameOfItsCommands) {
  ChartTransformer chart(chartText(dimensions("<dimension/>")));
  std::vector<CommandOutcome> outcomes(3);
  const std::string missing = "<addPopups graph='2' x='true'/>";
  EXPECT_TRUE(
      chart.applyTemplate(templateText("text" + margin("1%") + "<bogus/>" + missing), outcomes));
  std::string told;
  for (const CommandOutcome& each : outcomes) {
    told += std::to_string(each.position) + each.name + (each.isDone ? " " : " failed ");
    for (const ElementChange& change : each.changes) told += change.tag + "; ";
    for (const std::string& note : each.notes) told += note + "; ";
  }
  EXPECT_EQ(told, "0setAxisMargin dimension; 1bogus failed 2addPopups there is no graph '2'; ");
}

TEST(Template, HandsOnItsSource) {
  EditedChart chart(dimensions("<dimension id='d'/>"));
  EditedChart source(dimensions("<dimension id='d' upperMargin='9%'/>"));
  ChartTemplate commands(chart.chart(), &source.chart());
  commands.applyTemplate();
  commands.setTemplate(templateText(margin("1%") + margin("1%", "y")));
  commands.applyTemplate();
  EXPECT_EQ(chart.body(), dimensions("<dimension id='d'/>", "<dimension upperMargin='1%'/>"));
}

TEST(Template, ForgetsTheLastTextForABadOne) {
  EditedChart chart(dimensions("<dimension/>"));
  ChartTemplate commands(chart.chart(), nullptr);
  commands.setTemplate(templateText(margin("1%")));
  commands.setTemplate("no XML, but grafo-template-");
  commands.applyTemplate();
  EXPECT_EQ(chart.body(), dimensions("<dimension/>"));
}

TEST(Template, ReportsATextThatIsNone) {
  ChartTransformer chart(chartText(dimensions("<dimension/>")));
  const std::string before = chart.getEntireXML(nullptr);
  for (const std::string& text :
       {std::string("no XML"), std::string("<template><!-- grafo-template- --></template"),
        templateText("<setTranspose>text</setTranspose>")}) {
    const LogFolder folder;
    EXPECT_TRUE(chart.applyTemplate(text));
    EXPECT_EQ(chart.getEntireXML(nullptr), before);
    const std::string log = entries(folder);
    EXPECT_TRUE(log.ends_with("Error -- ChartXML: Failed to parse template " + text +
                              " at file src/templates/charttemplate.cpp\n"))
        << log;
    EXPECT_NE(log.find("SAX Parser: "), log.npos);
  }
  EXPECT_TRUE(chart.applyTemplate(templateText("")));
  EXPECT_EQ(chart.getEntireXML(nullptr), before);
}

// Raises what it is told when the attribute that it watches goes, once.
class Mine : public DOMUserDataHandler {
 public:
  explicit Mine(std::function<void()> raise) : raise_(std::move(raise)) {}
  void handle(DOMOperationType operation, const XMLCh*, void*, const DOMNode*, DOMNode*) override {
    if (operation == NODE_DELETED && raise_) std::exchange(raise_, nullptr)();
  }

 private:
  std::function<void()> raise_;
};

TEST(Template, GoesOnWhenACommandThrows) {
  const ChartBase holder;
  const std::function<void()> kinds[] = {[] { throw ChartException("failed", "file", 1); },
                                         [] { throw DOMException(8); }, [] { throw 1; },
                                         [] { throw TavoGoToCaller(); }};
  for (const auto& kind : kinds) {
    const bool stops = &kind == &kinds[3];
    Mine mine(kind);
    EditedChart chart(dimensions("<dimension><scale origin='1'/></dimension>"));
    DOMElement* root = chart.chart().getImplementation();
    auto* scale = static_cast<DOMElement*>(root->getElementsByTagName(u"scale")->item(0));
    scale->getAttributeNode(u"origin")->setUserData(u"mine", &mine, &mine);
    const LogFolder folder;
    ChartTemplate commands(chart.chart(), nullptr);
    commands.setTemplate(
        templateText(margin("1%", "y") + "<setAxisScale role='x'/>" + margin("2%", "y")));
    if (stops) {
      EXPECT_THROW(commands.applyTemplate(), ChartException);
    } else {
      commands.applyTemplate();
    }
    // What was done stays.
    const std::string value = stops ? "1%" : "2%";
    EXPECT_EQ(chart.body(), dimensions("<dimension><scale method='linear'/></dimension>",
                                       "<dimension upperMargin='" + value + "'/>"));
    EXPECT_EQ(entries(folder),
              !stops ? ""
                     : "Error -- ChartXML: Fatal Error occurred while applying template command: "
                       "<setAxisScale role=\"x\"/> at file src/templates/applytemplate.cpp\n"
                       "Error -- ChartXML: Fatal Error occurred while applying template at file "
                       "src/templates/charttemplate.cpp\n");
  }
}

template <int kind>
std::unique_ptr<BaseTemplate> failingCommand(const PlXVisualization*, PlXVisualization&,
                                             const DOMElement*) {
  if (kind == 0) XMLString::parseInt(u"no number");  // throws an XMLException
  if (kind == 1) throw DOMException(DOMException::NOT_FOUND_ERR);
  throw 1;
}

TEST(Template, TellsCommandsThatCantBeMade) {
  EditedChart chart("");
  const Command table[] = {{u"a", "", "", &failingCommand<0>},
                           {u"b", "", "", &failingCommand<1>},
                           {u"c", "", "", &failingCommand<2>},
                           {u"d", "", "", commands()[0].make}};
  const LogFolder folder;
  const auto process = [&](const char* elements) {
    const Fragment fragment(elements);
    return ApplyTemplate().process(nullptr, chart.chart(), fragment.root(), table);
  };
  EXPECT_FALSE(process("<a/>"));
  EXPECT_TRUE(entries(folder).starts_with("Error -- XML: ")) << entries(folder);
  EXPECT_THROW(process("<b/><d/>"), DOMException);
  EXPECT_THROW(process("<c/><d/>"), ChartException);
  EXPECT_TRUE(entries(folder).ends_with(
      "Error -- ChartXML: Fatal Error occurred while applying template command: <c/> at file "
      "src/templates/applytemplate.cpp\n"))
      << entries(folder);
}

TEST(Template, AnswersForItsLastCommands) {
  EditedChart chart("");
  const std::pair<const char*, bool> cases[] = {{"", true},
                                                {"<setAxisInterval/>", true},
                                                {"<o/>", false},
                                                {"<o/><setAxisInterval/>", false},
                                                {"<o/><setAxisScale/>", true},
                                                {"<setAxisScale/><o/>", false}};
  for (const auto& [commands, answer] : cases) EXPECT_EQ(chart.apply(commands), answer) << commands;
  EXPECT_FALSE(ApplyTemplate().process(nullptr, chart.chart(), nullptr));
}

TEST(Template, DumpsTheChartBeforeAndAfter) {
  ChartTransformer chart(chartText("<graph/>"));
  // The files of two runs, their numbers from that of the first run on.
  auto dumped = [&, start = -1](const char* options) mutable {
    const LogFolder folder(options);
    for (int i = 0; i < 2; ++i) chart.applyTemplate(templateText(""));
    std::string names;
    for (const std::string& name : folder.files()) {
      const std::size_t digits = name.find_first_of("0123456789");
      const int number = std::stoi(name.substr(digits));
      if (start < 0) start = number;
      names += name.substr(1, digits - 1) + std::to_string(number - start) + " ";
      EXPECT_EQ(readFile(folder.file(name.substr(1))),
                name.ends_with(".sgt") ? templateText("") : chart.getEntireXML(nullptr));
    }
    return names;
  };
  // The dump behind the run moves the counter on; the template's goes with the one before it.
  EXPECT_EQ(dumped("0000001"), "Xml_after_template_0 Xml_after_template_1 ");
  EXPECT_EQ(dumped("000001"), "Xml_before_template_2 ");
  EXPECT_EQ(dumped("00001"), "");
  EXPECT_EQ(dumped("0000111"),
            "Template_2 Template_3 Xml_after_template_2 Xml_after_template_3 "
            "Xml_before_template_2 Xml_before_template_3 ");
}

TEST(AddPopups, IsForChartsWithoutThem) {
  const LogFolder folder("0000000001");
  ChartTransformer none("no chart");
  ChartTransformer with(chartText("<graph/><popup/>"));
  ChartTransformer without(chartText("<graph/>"));
  EXPECT_FALSE(none.addPopups() || none.applyTemplate(templateText("")));
  EXPECT_FALSE(with.addPopups());
  EXPECT_TRUE(without.addPopups());
  std::vector<std::string> files = folder.files();
  std::erase_if(files, [](const std::string& name) { return !name.starts_with("\\xml_with_pop"); });
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(readFile(folder.file(files[0].substr(1))), without.getEntireXML(nullptr));
}

TEST(EveryCommand, DoesNoHarm) {
  const ChartBase holder;
  std::vector<std::string> texts{chartText("")};
  for (const std::string& file : exampleFiles()) texts.push_back(readFile(file));
  for (const std::string& text : texts) {
    EditedChart chart(text);
    for (const Command& command : commands()) {
      const std::string before = chart.chart().AsUTF8();
      EXPECT_NO_THROW(command.make(nullptr, chart.chart(), nullptr)->ProcessCommand());
      EXPECT_EQ(chart.chart().AsUTF8(), before) << command.sentence;
      const std::string name = ChartString(command.element).toUTF8();
      for (const char* attributes : {"", " role='x'", " role='y2' graph='7'"}) {
        const Fragment fragment("<" + name + attributes + "/>");
        EXPECT_NO_THROW(command.make(nullptr, chart.chart(), fragment.first())->ProcessCommand());
      }
    }
    expectSound(chart.chart().AsUTF8(), text.substr(0, 200));
  }
}

TEST(ExampleTemplates, FitEveryExample) {
  const ChartBase holder;
  for (const std::string& file : xmlFiles(CHARTXML_EXAMPLES "/templates")) {
    const std::string text = readFile(file);
    const bool isForAll = file.ends_with("house-style.xml");
    for (const std::string& example : exampleFiles()) {
      ChartTransformer chart(readFile(example));
      const std::string before = chart.getEntireXML(nullptr);
      EXPECT_TRUE(chart.applyTemplate(text)) << file << " on " << example;
      const std::string after = chart.getEntireXML(nullptr);
      expectSound(after, file + " on " + example);
      // Most commands pass over graphs in containers.
      const bool isReached = !EditedChart(before).chart().getGraphs().empty();
      EXPECT_TRUE(!isForAll || !isReached || after != before) << example;
    }
  }
}

}  // namespace
