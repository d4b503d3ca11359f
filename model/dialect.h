// The chart dialect as the model and the schemas share it: which elements there are, what class
// each has, its children in their canonical order, its attributes with their types.
#ifndef CHARTXML_DIALECT_H
#define CHARTXML_DIALECT_H

#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xercesc/dom/DOM.hpp>

class PlXBaseElement;
class PlXVisualization;

namespace dialect {

struct Word {
  int number;
  const XMLCh* text;
};

// The words of one enumeration; the name is that of its type in the schemas. A number with several
// words is written as the first of them.
struct Words {
  const char* name;
  std::span<const Word> words;

  // Null when the number has no word.
  const XMLCh* textOf(int number) const;
  // `absent` when the text is none of the words.
  int numberOf(const XMLCh* text, int absent) const;
};

enum class Type {
  Text,
  Flag,
  Number,
  Integer,
  // A number with its unit such as 8pt, a percentage, or 0.
  Length,
  // Up to three lengths, separated by blanks or commas; auto for one that isn't stated.
  Lengths,
  // #rrggbb, or a name.
  Color,
  // An identifier of the document.
  Id,
  // The identifier of another element.
  Link,
  Word,
};

struct Attribute {
  const XMLCh* name;
  Type type;
  const Words* words;  // of Type::Word, else null
  const char* documentation;
};

// What lies between an element's tags beside its child elements.
enum class Content {
  Elements,
  // Text, which the attribute "text" may hold instead.
  TextOrElements,
  // Data that the model never enters: it may be millions of rows.
  Data,
  // Elements, and attributes of any name.
  FreeAttributes,
};

// Children of equal rank keep the order in which they were added.
struct Child {
  const XMLCh* tag;
  unsigned rank;
};

// What the elements of one base class share.
struct Group {
  const char* name;
  const char* documentation;
  std::vector<Child> children;
  std::vector<Attribute> attributes;
};

struct Element {
  const XMLCh* tag;
  const char* className;
  const char* documentation;
  Content content;
  PlXBaseElement* (*make)(xercesc::DOMElement*, PlXVisualization*);
  const Group* group;                 // null for most
  std::vector<Child> children;        // those of the group first
  std::vector<Attribute> attributes;  // less those of the group
  std::unordered_map<std::u16string_view, unsigned> ranks;
  std::vector<const XMLCh*> links;  // the names of all attributes of Type::Link
  bool isRecord = false;            // an extension record, which may have more links by role

  // The place of a child among its siblings; unknown children come last.
  unsigned rankOf(std::u16string_view childTag) const;
  bool mayHoldLinks() const { return isRecord || !links.empty(); }
};

// All rows, in the table's order.
std::span<const Element> elements();
// All enumerations that the attributes use, in the order of their first use.
std::vector<const Words*> enumerations();

// The name of an element without its prefix.
const XMLCh* localName(const xercesc::DOMNode* element);
// The row of an element, by its tag; an extension record's depends on whose it is. Null when there
// is none.
const Element* find(const xercesc::DOMElement* element);
const Element* find(std::u16string_view tag, std::u16string_view parentTag);

// The row of an attribute of the element; null for one that it doesn't list, though elements with
// attributes of any name may have it.
const Attribute* attributeOf(const Element& element, const XMLCh* attribute);
inline bool hasAttribute(const Element& element, const XMLCh* attribute) {
  return attributeOf(element, attribute) != nullptr;
}
// True for a text that is a value of the type, less blanks around it. Words, links and identifiers
// are any text here.
bool isValue(Type type, std::u16string_view text);
// The same, and one of the words of an attribute that has them, and a name for an identifier.
bool isValue(const Attribute& attribute, std::u16string_view text);
// True for a text that the schema lets the attribute hold: lengths and colours are any text there,
// and a number may be INF, -INF or NaN.
bool isOfSchemaType(const Attribute& attribute, std::u16string_view text);
// True for an attribute that holds the id of another element, those of extension records by role
// and number ("title1") included.
bool isLink(const Element& element, const XMLCh* attribute);

// The words of an enumerator type; defined for each type in enumerations.inc.
template <class Enum>
const Words& wordsOf();

}  // namespace dialect

#endif
