#include "commandschema.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <utility>

#include <xercesc/util/regx/RegularExpression.hpp>

#include <chartxml/charttemplate.h>
#include <chartxml/chartxml.h>

#include "schemadocument.h"

using namespace xercesc;
using namespace schemadocument;

namespace {

ValueRule ruleOf(const DocumentNode& element) {
  static constexpr std::pair<const char*, ValueRule::Kind> sources[] = {
      {"words", ValueRule::Kind::words},
      {"some-words", ValueRule::Kind::someWords},
      {"keys", ValueRule::Kind::keys},
      {"pattern", ValueRule::Kind::pattern},
  };
  for (const auto& [source, kind] : sources) {
    std::vector<std::string> words = annotation(element, source);
    if (words.empty()) continue;
    ValueRule rule{kind, {}, {}, joined(words, ""), documentationOf(element)};
    for (std::string& word : words) {
      const std::size_t end = kind == ValueRule::Kind::keys ? word.find('=') : word.npos;
      if (end != word.npos) {
        rule.wordsOfKeys[word.substr(0, end)] = split(word.substr(end + 1), '/');
        word.erase(end);
      }
    }
    rule.words = std::move(words);
    return rule;
  }
  return {};
}

// "name" or "name=word|word"
Condition conditionOf(const std::string& text) {
  const std::size_t end = std::min(text.find('='), text.size());
  return {text.substr(0, end), split(text.substr(std::min(end + 1, text.size())), '|')};
}

std::vector<Condition> conditionsOf(const DocumentNode& element, const std::string& source) {
  std::vector<Condition> conditions;
  for (const std::string& text : annotation(element, source)) {
    conditions.push_back(conditionOf(text));
  }
  return conditions;
}

Reading readingOf(const DocumentNode& element) {
  return {conditionsOf(element, "unread-beside"), conditionsOf(element, "read-beside"),
          annotation(element, "read-with")};
}

std::vector<Need> needsOf(const DocumentNode& element) {
  std::vector<Need> needs;
  for (const std::string& names : annotation(element, "needs")) {
    needs.push_back({{}, split(names, '|')});
  }
  for (const bool isWithout : {true, false}) {
    const auto pairs = annotation(element, isWithout ? "needs-where" : "idle-where");
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
      needs.push_back({conditionOf(pairs[i]), split(pairs[i + 1], '|'), isWithout});
    }
  }
  return needs;
}

// "name" or "name=attribute"
std::map<std::string, std::string> standsForOf(const DocumentNode& element) {
  std::map<std::string, std::string> result;
  for (const std::string& pair : annotation(element, "stands-for")) {
    const std::size_t end = std::min(pair.find('='), pair.size());
    result[pair.substr(0, end)] = end == pair.size() ? pair : pair.substr(end + 1);
  }
  return result;
}

SchemaChild childOf(const DocumentNode& element) {
  SchemaChild child;
  child.documentation = documentationOf(element);
  child.names = ruleOf(element);
  child.standsFor = standsForOf(element);
  const std::vector<std::string> taken = annotation(element, "taken");
  if (!taken.empty()) child.taken = taken[0];
  if (taken.size() > 1) child.takenWith = taken[1];
  child.isDeep = !annotation(element, "depth").empty();
  child.reading = readingOf(element);
  return child;
}

// Reads the definitions below the root of a schema.
class SchemaReader {
 public:
  explicit SchemaReader(const DocumentNode& root) {
    for (const DocumentNode& each : root.children) {
      global_[{std::string(each.localName()), attribute(each, "name")}] = &each;
    }
  }

  std::map<std::string, SchemaElement> elements() const {
    std::map<std::string, SchemaElement> result;
    for (const auto& [key, element] : global_) {
      const auto& [kind, name] = key;
      if (kind != "element") continue;
      SchemaElement& entry = result[name];
      entry.documentation = documentationOf(*element);
      entry.needs = needsOf(*element);
      addType(attribute(*element, "type"), entry);
      addAttributes(*element, entry);
      addChildren(name, entry);
    }
    return result;
  }

 private:
  // Null for a name that is none.
  const DocumentNode* named(const std::string& kind, const std::string& name) const {
    const auto found = global_.find({kind, name});
    return found == global_.end() ? nullptr : found->second;
  }

  void addType(const std::string& name, SchemaElement& entry) const {
    if (name == "command") entry.isCommand = true;
    if (const DocumentNode* type = named("complexType", name)) addAttributes(*type, entry);
  }

  // Those that stand below an element or type, and those of the type that it extends.
  void addAttributes(const DocumentNode& holder, SchemaElement& entry) const {
    for (const DocumentNode* extension : descendants(holder, "extension")) {
      addType(attribute(*extension, "base"), entry);
    }
    for (const DocumentNode* each : descendants(holder, "attribute")) {
      ValueRule rule = ruleOf(*each);
      const DocumentNode* type = named("simpleType", attribute(*each, "type"));
      std::string otherwise = joined(annotation(*each, "otherwise"), " ");
      if (rule.kind == ValueRule::Kind::any && type) {
        rule = ruleOf(*type);
        if (otherwise.empty()) otherwise = joined(annotation(*type, "otherwise"), " ");
      }
      entry.attributes[attribute(*each, "name")] = {documentationOf(*each), std::move(rule),
                                                    readingOf(*each), std::move(otherwise)};
    }
    for (const DocumentNode* each : descendants(holder, "anyAttribute")) {
      if (!documentationOf(*each).empty()) entry.readsAllAttributes = true;
    }
  }

  void addChildren(const std::string& groupName, SchemaElement& entry) const {
    const DocumentNode* group = named("group", groupName);
    if (!group) return;
    for (const DocumentNode* each : descendants(*group, "element")) {
      entry.children[attribute(*each, "ref")] = childOf(*each);
    }
    for (const DocumentNode* each : descendants(*group, "group")) {
      addChildren(attribute(*each, "ref"), entry);
    }
  }

  // By kind and name.
  std::map<std::pair<std::string, std::string>, const DocumentNode*> global_;
};

// "A whole number." as a part of a sentence.
std::string withinSentence(std::string text) {
  if (text.ends_with('.')) text.pop_back();
  if (!text.empty()) text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
  return text;
}

bool contains(const std::vector<std::string>& words, const std::string& word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

// The keys of pairs "key:value" that are none of the known ones, and values without a meaning.
std::vector<std::string> problemsOfKeys(const std::string& text, const ValueRule& rule) {
  std::vector<std::string> problems;
  for (std::string pair : split(text, ';')) {
    pair.erase(0, pair.find_first_not_of(':'));
    const std::size_t end = std::min(pair.find(':'), pair.size());
    const std::string key = pair.substr(0, end);
    const std::string value = pair.substr(std::min(end + 1, pair.size()));
    const auto words = rule.wordsOfKeys.find(key);
    if (words != rule.wordsOfKeys.end() && !contains(words->second, value)) {
      problems.push_back("'" + value + "' of key '" + key + "' is none of " +
                         joined(words->second, ", "));
    }
    if (key.empty() || contains(rule.words, key)) continue;
    problems.push_back("key '" + key + "' is unknown" + misspelling::suggestion(key, rule.words));
  }
  return problems;
}

}  // namespace

bool holdsElement(const DocumentNode& node, const std::string& name, bool atAnyDepth) {
  return std::ranges::any_of(node.children, [&](const DocumentNode& child) {
    return child.name == name || (atAnyDepth && holdsElement(child, name, true));
  });
}

bool Condition::holds(const DocumentNode& node, const SchemaElement& element) const {
  const std::string value = attribute(node, name);
  if (!words.empty()) return contains(words, value);
  const auto child = element.children.find(name);
  const bool isDeep = child != element.children.end() && child->second.isDeep;
  if (holdsElement(node, name, isDeep)) return true;
  const auto known = element.attributes.find(name);
  const bool isPassedOver = known != element.attributes.end() && known->second.otherwise.empty() &&
                            !known->second.rule.problemsOf(value).empty();
  return !value.empty() && !isPassedOver;
}

std::string Condition::text() const {
  return '\'' + name + (words.empty() ? "" : "=" + joined(words, "|")) + '\'';
}

std::string Reading::problemIn(const DocumentNode& node, const SchemaElement& element) const {
  for (const Condition& each : unreadBeside) {
    if (each.holds(node, element)) return "is not read beside " + each.text();
  }
  std::string names;
  for (const Condition& each : readBeside) {
    if (each.holds(node, element)) return {};
    names += (names.empty() ? "" : " or ") + each.text();
  }
  return names.empty() ? names : "is read only beside " + names;
}

std::vector<std::string> ValueRule::problemsOf(const std::string& value) const {
  const std::string quoted = '\'' + value + '\'';
  switch (kind) {
    case Kind::any:
      break;
    case Kind::words:
    case Kind::someWords: {
      if (contains(words, value)) break;
      const std::string meant = misspelling::suggestion(value, words);
      if (!meant.empty()) return {quoted + " is unknown" + meant};
      if (kind == Kind::words) return {quoted + " is none of " + joined(words, ", ")};
      break;
    }
    case Kind::keys:
      return problemsOfKeys(value, *this);
    case Kind::pattern:
      if (RegularExpression(pattern.c_str(), "X").matches(ChartString(value.c_str()).xc_str())) {
        break;
      }
      return {quoted + " is not " + withinSentence(documentation)};
  }
  return {};
}

CommandSchema::CommandSchema() {
  const SchemaDocument document("grafo-template-commands.xsd");
  elements_ = SchemaReader(document.root()).elements();
}

const SchemaElement* CommandSchema::find(const std::string& name) const {
  const auto found = elements_.find(name);
  return found == elements_.end() ? nullptr : &found->second;
}

std::string CommandSchema::problemOfCommand(const std::string& name) const {
  if (!sentenceOf(name).empty()) return {};
  std::vector<std::string> names;
  for (const auto& [each, definition] : elements_) {
    if (definition.isCommand) names.push_back(each);
  }
  return '\'' + name + "' is no command" + misspelling::suggestion(name, names);
}

std::string sentenceOf(const std::string& command) {
  const ChartString name(command.c_str());
  for (const ChartTemplate::CommandInfo& each : ChartTemplate::getCommands()) {
    if (name.equals(each.element)) return each.sentence;
  }
  return {};
}
