// Random templates over every example, and what is told of them. They are made of what the schema
// of templates tells of the commands that the library has, so that a new command joins by its row
// in the table.
#include <set>

#include "commandoutcome.h"
#include "commands.h"
#include "explanation.h"
#include "randomtemplate.h"

using namespace xercesc;

namespace {

std::vector<std::string> idsOf(const std::string& text) {
  EditedChart chart(text);
  std::vector<std::string> ids;
  walkElements(chart.chart().getImplementation(), [&](const DOMElement* element) {
    const std::string id = ChartString(element->getAttribute(u"id")).toUTF8();
    if (!id.empty()) ids.push_back(id);
    return true;
  });
  return ids;
}

using Lost = std::set<std::pair<const DocumentNode*, std::string>>;

// What explain says that a template does the same without: elements and texts by their nodes,
// attributes by node and name.
Lost lostIn(const Explanation& explanation) {
  Lost lost;
  for (const Finding& each : explanation.findings()) {
    if (each.passedOver == Finding::PassedOver::nothing) continue;
    const bool isNode = each.passedOver == Finding::PassedOver::node;
    lost.emplace(each.node, isNode ? "" : each.attribute);
  }
  return lost;
}

DocumentNode without(const DocumentNode& node, const Lost& lost) {
  DocumentNode result = node;
  std::erase_if(result.attributes, [&](const auto& attribute) {
    return lost.contains({&node, attribute.first});
  });
  result.children.clear();
  for (const DocumentNode& child : node.children) {
    if (!lost.contains({&child, ""})) result.children.push_back(without(child, lost));
  }
  return result;
}

// A chart as it is opened, and what templates make of it.
class Opened {
 public:
  explicit Opened(std::string chart) : chart_(std::move(chart)) {}

  std::string after(const DocumentNode& root, std::vector<CommandOutcome>& outcomes) const {
    ChartTransformer chart(chart_);
    chart.applyTemplate(templateText(contentOf(root)), outcomes);
    return chart.getXML(nullptr);
  }
  std::string after(const DocumentNode& root) const {
    std::vector<CommandOutcome> outcomes;
    return after(root, outcomes);
  }

 private:
  std::string chart_;
};

// One by one, for who is to mend it.
void tellLies(const DocumentNode& root, const Explanation& explanation, const Opened& chart,
              const std::string& after) {
  for (const Finding& each : explanation.findings()) {
    if (each.passedOver == Finding::PassedOver::nothing) continue;
    const bool isNode = each.passedOver == Finding::PassedOver::node;
    const Lost lost = {{each.node, isNode ? "" : each.attribute}};
    if (chart.after(without(root, lost)) == after) continue;
    ADD_FAILURE() << "isn't passed over: " << each.message;
  }
}

// Where no chart needs data, the text of the chart alone is looked at.
void expectTold(const DocumentNode& root, const Explanation& explanation, const std::string& text) {
  const Opened chart(text);
  std::vector<CommandOutcome> outcomes;
  const std::string after = chart.after(root, outcomes);
  Lost lost = lostIn(explanation);
  if (!lost.empty() && chart.after(without(root, lost)) != after) {
    tellLies(root, explanation, chart, after);
    ADD_FAILURE() << "what is passed over is missing";
  }
  ASSERT_EQ(outcomes.size(), root.children.size());
  Lost idle;
  for (const CommandOutcome& each : outcomes) {
    if (each.changes.empty()) idle.emplace(&root.children[each.position], "");
  }
  EXPECT_EQ(chart.after(without(root, idle)), after) << "a command that changed nothing is missing";
  // What one command does can't be undone by another.
  const bool isAlone = root.children.size() == 1;
  EXPECT_TRUE(!isAlone || idle.empty() == (after != text)) << "what a command changed";
}

TEST(RandomTemplates, DoWhatIsToldOfThem) {
  const ChartBase holder;
  const CommandSchema schema;
  const ChartElements elements = readChartElements();
  const std::vector<std::string> styling = {"setStyle", "setAxisStyle"};
  std::vector<std::string> all;
  for (const Command& command : commands()) all.push_back(ChartString(command.element).toUTF8());

  const unsigned count = setting("CHARTXML_RANDOM_TEMPLATES", 2 * usualCount);
  const unsigned seed = setting("CHARTXML_RANDOM_SEED", 1);
  const std::vector<std::string> files = exampleFiles();
  for (unsigned i = 0; i < count && !testing::Test::HasFailure();) {
    const std::string text = readFile(files[i / templatesOfAChart % files.size()]);
    ChartTransformer chart(text);
    const std::vector<std::string> ids = idsOf(chart.getXML(nullptr));
    for (unsigned end = std::min(i + templatesOfAChart, count); i < end; ++i) {
      Generator generator(schema, ids, {seed, i});
      const bool isStyleOnly = generator.chance(25);
      // Of several commands one may make what another styles the next time.
      const DocumentNode root =
          isStyleOnly ? generator.templateOf(styling, 1) : generator.templateOf(all, 4);
      const std::string commands = contentOf(root);
      const std::string before = chart.getXML(nullptr);
      expectHarmless(chart, templateText(commands), isStyleOnly);
      expectTold(root, Explanation(schema, elements, root), before);
      if (testing::Test::HasFailure()) {
        ADD_FAILURE() << "template " << i << " of seed " << seed << ": " << commands
                      << "\nchart: " << before;
        return;
      }
    }
  }
}

}  // namespace
