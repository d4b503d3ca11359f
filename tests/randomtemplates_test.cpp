// Random templates over every example. They are made of what the schema of templates tells of the
// commands that the library has, so that a new command joins by its row in the table.
#include "commands.h"
#include "commandschema.h"
#include "randomedits.h"

using namespace xercesc;

namespace {

class Generator {
 public:
  // `ids` are those of the chart.
  Generator(const CommandSchema& schema, std::vector<std::string> ids, std::seed_seq seed)
      : schema_(schema), ids_(std::move(ids)), random_(seed) {}

  std::string commandsOf(const std::vector<std::string>& names, unsigned most) {
    std::string text;
    for (unsigned i = 1 + below(most); i > 0; --i) text += element(oneOf(names), 0);
    return text;
  }

  bool chance(unsigned percent) { return below(100) < percent; }

 private:
  unsigned below(std::size_t bound) { return static_cast<unsigned>(random_() % bound); }
  std::string oneOf(const std::vector<std::string>& texts) {
    return texts.empty() ? "" : texts[below(texts.size())];
  }

  std::string anyValue() {
    // Blanks at the ends aren't among them: those of numbers don't survive a parse.
    static const std::vector<std::string> values = rowsOf(valueRows)[0];
    return chance(30) ? oneOf(ids_) : oneOf(values);
  }

  std::string valueOf(const ValueRule& rule) {
    if (rule.words.empty() || rule.kind == ValueRule::Kind::pattern || chance(20)) {
      return anyValue();
    }
    if (rule.kind != ValueRule::Kind::keys) return oneOf(rule.words);
    std::string pairs;
    for (unsigned i = below(4); i > 0; --i) {
      pairs += oneOf(rule.words) + (chance(90) ? ":" : "") + anyValue() + (chance(90) ? ";" : "");
    }
    return pairs;
  }

  // A value that a chart's attribute may have.
  std::string valueOf(const dialect::Attribute& attribute) {
    static const std::vector<std::string> numbers = rowsOf("0 | 1 | 2 | -1 | 40 | 2147483647")[0];
    switch (attribute.type) {
      case dialect::Type::Text:
      case dialect::Type::Length:
      case dialect::Type::Lengths:
      case dialect::Type::Color:
        return anyValue();
      case dialect::Type::Flag:
        return oneOf({"true", "false", "0", "1"});
      case dialect::Type::Number:
        return oneOf({"0.5", "-0.0", "1e308"});
      case dialect::Type::Integer:
        return oneOf(numbers);
      case dialect::Type::Id:
        return chance(50) ? oneOf(ids_) : "fresh" + oneOf(numbers);
      case dialect::Type::Word:
        return utf8(attribute.words->words[below(attribute.words->words.size())].text);
      case dialect::Type::Link:
        break;
    }
    return {};
  }

  // For the command that writes whatever it is given: what is valid in a chart. Links aren't among
  // it, as what they lead to may have gone.
  std::string genericAttributes() {
    const auto rows = dialect::elements();
    const dialect::Element* row = &rows[below(rows.size())];
    std::string text = " elementName='" + utf8(row->tag) + "'";
    const XMLCh* link = row->links.empty() ? u"" : row->links[below(row->links.size())];
    if (chance(30) && ChartString(link).ContainsString(u"tyle") &&
        !ChartString(link).ContainsString(u"Cycle")) {
      text += " styleName='" + utf8(link) + "'";
      row = dialect::find(u"style", u"");
    } else if (row->content == dialect::Content::TextOrElements) {
      text += " text='" + escaped(anyValue()) + "'";
    }
    const auto draw = [&](const std::vector<dialect::Attribute>& attributes) {
      for (const dialect::Attribute& each : attributes) {
        const std::string name = utf8(each.name);
        // Those of the command itself can't be written, and its text is what a node holds.
        const bool isOwn = name == "count" || name == "text";
        if (isOwn || each.type == dialect::Type::Link || !chance(20)) continue;
        text += " " + name + "='" + escaped(valueOf(each)) + "'";
      }
    };
    if (row->group) draw(row->group->attributes);
    draw(row->attributes);
    return text;
  }

  std::string element(const std::string& name, int depth) {
    const SchemaElement* known = schema_.find(name);
    std::string text = "<" + name;
    if (known->readsAllAttributes) text += genericAttributes();
    for (const auto& [attribute, about] : known->attributes) {
      if (attribute == "elementName" && known->readsAllAttributes) continue;
      if (attribute == "styleName") continue;
      // Most commands do nothing without a role or a type that fits.
      if (!chance(attribute == "role" || attribute == "type" ? 90 : 35)) continue;
      text += " " + attribute + "='" + escaped(valueOf(about.rule)) + "'";
    }
    std::string children;
    constexpr int deepest = 4;
    for (const auto& [child, about] : known->children) {
      if (depth == deepest || !schema_.find(child)) continue;
      for (int times = 0; times < 2 && chance(40); ++times) children += element(child, depth + 1);
    }
    if (name == "label" && chance(70)) children += escaped(anyValue());
    return text + ">" + children + "</" + name + ">";
  }

  const CommandSchema& schema_;
  std::vector<std::string> ids_;
  std::mt19937 random_;
};

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

TEST(RandomTemplates, DoNoHarm) {
  const ChartBase holder;
  const CommandSchema schema;
  const std::vector<std::string> styling = {"setStyle", "setAxisStyle"};
  std::vector<std::string> all;
  for (const Command& command : commands()) all.push_back(ChartString(command.element).toUTF8());

  const unsigned count = setting("CHARTXML_RANDOM_TEMPLATES", usualCount);
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
      const std::string commands =
          isStyleOnly ? generator.commandsOf(styling, 1) : generator.commandsOf(all, 4);
      expectHarmless(chart, templateText(commands), isStyleOnly);
      if (testing::Test::HasFailure()) {
        ADD_FAILURE() << "template " << i << " of seed " << seed;
        return;
      }
    }
  }
}

}  // namespace
