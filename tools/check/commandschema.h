// What the installed schema of templates tells of commands: what they read, and what it means.
#ifndef CHARTXML_TOOLS_COMMANDSCHEMA_H
#define CHARTXML_TOOLS_COMMANDSCHEMA_H

#include <map>
#include <string>
#include <vector>

#include <chartxml/documentnode.h>

// Which values are read.
struct ValueRule {
  enum class Kind { any, words, someWords, keys, pattern };
  Kind kind = Kind::any;
  // someWords are those of many that are known; keys are those of pairs "key:value;key:value".
  std::vector<std::string> words;
  // Of keys whose values are words.
  std::map<std::string, std::vector<std::string>> wordsOfKeys;
  // In the language of XML Schema, and its meaning.
  std::string pattern;
  std::string documentation;

  // What the library passes over in a value; with someWords, what looks misspelt.
  std::vector<std::string> problemsOf(const std::string& value) const;
};

bool holdsElement(const DocumentNode& node, const std::string& name, bool atAnyDepth);

struct SchemaElement;

// What stands in an element: an attribute that is read or a child, or with words an attribute that
// is one of them.
struct Condition {
  std::string name;
  std::vector<std::string> words;

  bool holds(const DocumentNode& node, const SchemaElement& element) const;
  // In quotes.
  std::string text() const;
};

// Beside which other parts of its element a part is read; empty where nothing is said.
struct Reading {
  std::vector<Condition> unreadBeside;  // any
  std::vector<Condition> readBeside;    // one of them
  // Of a child: it is read all the same with one of these in it.
  std::vector<std::string> readWith;

  // Why it isn't read in the element; empty when it is.
  std::string problemIn(const DocumentNode& node, const SchemaElement& element) const;
};

struct SchemaAttribute {
  std::string documentation;
  ValueRule rule;
  Reading reading;
  // What becomes of another value than those of the rule; empty when it is passed over.
  std::string otherwise;
};

// A child as its parent reads it.
struct SchemaChild {
  std::string documentation;
  // Of a parameter, and for which attribute of its parent each stands.
  ValueRule names;
  std::map<std::string, std::string> standsFor;
  // "first" or "last" when only one is read; of those that have `takenWith`, if that isn't empty.
  std::string taken;
  std::string takenWith;
  // Looked for at any depth below the parent.
  bool isDeep = false;
  Reading reading;
};

// Where the condition holds, the element does nothing without one of the names, or with it. A
// condition without a name always holds.
struct Need {
  Condition where;
  std::vector<std::string> names;
  bool isWithout = true;
};

struct SchemaElement {
  std::string documentation;
  bool isCommand = false;
  bool readsAllAttributes = false;
  // What it does nothing without, or with.
  std::vector<Need> needs;
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
