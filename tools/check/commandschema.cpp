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
    const std::vector<std::string> words = annotation(element, source);
    if (!words.empty()) return {kind, words, joined(words, ""), documentationOf(element)};
  }
  return {};
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
      for (const std::string& need : annotation(*element, "needs")) {
        entry.needs.push_back(split(need, '|'));
      }
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
      if (rule.kind == ValueRule::Kind::any && type) rule = ruleOf(*type);
      entry.attributes[attribute(*each, "name")] = {documentationOf(*each), std::move(rule)};
    }
    for (const DocumentNode* each : descendants(holder, "anyAttribute")) {
      if (!documentationOf(*each).empty()) entry.readsAllAttributes = true;
    }
  }

  void addChildren(const std::string& groupName, SchemaElement& entry) const {
    const DocumentNode* group = named("group", groupName);
    if (!group) return;
    for (const DocumentNode* each : descendants(*group, "element")) {
      entry.children[attribute(*each, "ref")] = {documentationOf(*each), ruleOf(*each),
                                                 joined(annotation(*each, "taken"), "")};
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

// The keys of pairs "key:value" that are none of the known ones.
std::vector<std::string> problemsOfKeys(const std::string& text,
                                        const std::vector<std::string>& known) {
  std::vector<std::string> problems;
  for (std::string pair : split(text, ';')) {
    pair.erase(0, pair.find_first_not_of(':'));
    const std::string key = pair.substr(0, pair.find(':'));
    if (key.empty() || contains(known, key)) continue;
    problems.push_back("key '" + key + "' is unknown" + misspelling::suggestion(key, known));
  }
  return problems;
}

}  // namespace

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
      return problemsOfKeys(value, words);
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
