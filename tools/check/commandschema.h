// What the installed schema of templates tells of commands: what they read, and what it means.
#ifndef CHARTXML_TOOLS_COMMANDSCHEMA_H
#define CHARTXML_TOOLS_COMMANDSCHEMA_H

#include <map>
#include <string>
#include <vector>

// Which values are read.
struct ValueRule {
  enum class Kind { any, words, someWords, keys, pattern };
  Kind kind = Kind::any;
  // someWords are those of many that are known; keys are those of pairs "key:value;key:value".
  std::vector<std::string> words;
  // In the language of XML Schema, and its meaning.
  std::string pattern;
  std::string documentation;

  // What the library passes over in a value; with someWords, what looks misspelt.
  std::vector<std::string> problemsOf(const std::string& value) const;
};

struct SchemaAttribute {
  std::string documentation;
  ValueRule rule;
};

// A child as its parent reads it.
struct SchemaChild {
  std::string documentation;
  ValueRule names;  // of a parameter
  // "first" or "last" when only one is read.
  std::string taken;
};

struct SchemaElement {
  std::string documentation;
  bool isCommand = false;
  bool readsAllAttributes = false;
  // It does nothing unless it has one of each: an attribute that isn't empty, or a child.
  std::vector<std::vector<std::string>> needs;
  std::map<std::string, SchemaAttribute> attributes;
  std::map<std::string, SchemaChild> children;
};

class CommandSchema {
 public:
  // Throws a Failure when the schema can't be read.
  CommandSchema();

  // Null for a name that is none.
  const SchemaElement* find(const std::string& name) const;
  // Why the library doesn't run an element below the root; empty when it does.
  std::string problemOfCommand(const std::string& name) const;

 private:
  std::map<std::string, SchemaElement> elements_;
};

// What the library does for a command; empty for one that it doesn't have.
std::string sentenceOf(const std::string& command);

template <class Value>
std::vector<std::string> namesOf(const std::map<std::string, Value>& map) {
  std::vector<std::string> names;
  for (const auto& [name, unused] : map) names.push_back(name);
  return names;
}

#endif
