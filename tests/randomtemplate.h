// Random templates, made of what the schema of templates tells of commands.
#ifndef CHARTXML_RANDOMTEMPLATE_H
#define CHARTXML_RANDOMTEMPLATE_H

#include <random>

#include "commandschema.h"
#include "dialect.h"
#include "randomedits.h"

// The text of the elements and texts below a node.
inline std::string contentOf(const DocumentNode& node) {
  std::string text;
  for (const DocumentNode& child : node.children) {
    if (child.isText()) {
      text += escaped(child.text);
      continue;
    }
    text += "<" + child.name;
    for (const auto& [name, value] : child.attributes) {
      text += " " + name + "='" + escaped(value) + "'";
    }
    text += ">" + contentOf(child) + "</" + child.name + ">";
  }
  return text;
}

class Generator {
 public:
  // `ids` are those of the chart.
  Generator(const CommandSchema& schema, std::vector<std::string> ids, std::seed_seq seed)
      : schema_(schema), ids_(std::move(ids)), random_(seed) {}

  // A root with commands.
  DocumentNode templateOf(const std::vector<std::string>& names, unsigned most) {
    DocumentNode root;
    for (unsigned i = 1 + below(most); i > 0; --i)
      root.children.push_back(element(oneOf(names), 0));
    return root;
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
  void addGenericAttributes(DocumentNode& node) {
    const auto rows = dialect::elements();
    const dialect::Element* row = &rows[below(rows.size())];
    node.attributes.emplace_back("elementName", utf8(row->tag));
    const XMLCh* link = row->links.empty() ? u"" : row->links[below(row->links.size())];
    if (chance(30) && ChartString(link).ContainsString(u"tyle") &&
        !ChartString(link).ContainsString(u"Cycle")) {
      node.attributes.emplace_back("styleName", utf8(link));
      row = dialect::find(u"style", u"");
    } else if (row->content == dialect::Content::TextOrElements) {
      node.attributes.emplace_back("text", anyValue());
    }
    const auto draw = [&](const std::vector<dialect::Attribute>& attributes) {
      for (const dialect::Attribute& each : attributes) {
        const std::string name = utf8(each.name);
        // Those of the command itself can't be written, and its text is what a node holds.
        const bool isOwn = name == "count" || name == "text";
        if (isOwn || each.type == dialect::Type::Link || !chance(20)) continue;
        node.attributes.emplace_back(name, valueOf(each));
      }
    };
    if (row->group) draw(row->group->attributes);
    draw(row->attributes);
  }

  // Now and then one of another element.
  std::string foreign(const std::string& name) {
    return chance(50) ? name + "x" : oneOf(namesOf(schema_.find("style")->attributes));
  }

  DocumentNode element(const std::string& name, int depth) {
    const SchemaElement* known = schema_.find(name);
    DocumentNode node;
    node.name = name;
    if (known->readsAllAttributes) addGenericAttributes(node);
    for (const auto& [attribute, about] : known->attributes) {
      if (attribute == "elementName" && known->readsAllAttributes) continue;
      if (attribute == "styleName") continue;
      // Most commands do nothing without a role or a type that fits.
      if (!chance(attribute == "role" || attribute == "type" ? 90 : 35)) continue;
      const bool isForeign = chance(3) && !known->readsAllAttributes;
      const std::string named = isForeign ? foreign(attribute) : attribute;
      if (node.attribute(named)) continue;
      node.attributes.emplace_back(named, valueOf(about.rule));
    }
    constexpr int deepest = 4;
    for (const auto& [child, about] : known->children) {
      if (depth == deepest || !schema_.find(child)) continue;
      for (int times = 0; times < 2 && chance(40); ++times) {
        node.children.push_back(element(child, depth + 1));
        if (child == "parameter" && chance(70)) nameParameter(node.children.back(), about.names);
      }
    }
    if (depth < deepest && chance(3)) {
      node.children.push_back(element(chance(50) ? "label" : "style", depth + 1));
    }
    const bool isText = name == "label" || name == "categoryValue";
    if (isText && chance(70)) addText(node, anyValue());
    return node;
  }

  void nameParameter(DocumentNode& parameter, const ValueRule& names) {
    for (auto& [name, value] : parameter.attributes) {
      if (name == "name" && !names.words.empty()) value = oneOf(names.words);
    }
  }

  static void addText(DocumentNode& node, const std::string& text) {
    if (text.empty()) return;
    node.children.emplace_back().text = text;
  }

  const CommandSchema& schema_;
  std::vector<std::string> ids_;
  std::mt19937 random_;
};

#endif
