#include "dialect.h"

#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <list>
#include <string>

#include "modelclasses.h"
#include "numbertext.h"

using namespace xercesc;

namespace dialect {

#define ENUMERATION(type, name, ...)                      \
  template <>                                             \
  const Words& wordsOf<type>() {                          \
    static constexpr Word words[] = {__VA_ARGS__};        \
    static constexpr Words table{name, std::span(words)}; \
    return table;                                         \
  }
#include "enumerations.inc"
#undef ENUMERATION

namespace {

enum class RowKind { Group, Element, Attribute };

// One row of the table as it stands; the strings of tags are still lists.
struct Row {
  RowKind kind;
  const XMLCh* name = nullptr;
  const char* label = nullptr;  // a group's name, an element's class
  const char* base = "";
  Content content = Content::Elements;
  const char* children = "";
  const char* documentation;
  PlXBaseElement* (*make)(DOMElement*, PlXVisualization*) = nullptr;
  Type type = Type::Text;
  const Words& (*words)() = nullptr;
};

template <class T>
PlXBaseElement* makeView(DOMElement* element, PlXVisualization* owner) {
  return new T(element, owner);
}

// A second visualization over a part of a chart is never made by the factory.
template <>
PlXBaseElement* makeView<PlXVisualization>(DOMElement*, PlXVisualization*) {
  return nullptr;
}

#define GROUP(groupName, childTags, text) \
  {.kind = RowKind::Group, .label = groupName, .children = childTags, .documentation = text},
#define ELEMENT(type, constant, tag, baseGroup, contentKind, childTags, text) \
  {.kind = RowKind::Element,                                                  \
   .name = type::constant,                                                    \
   .label = #type,                                                            \
   .base = baseGroup,                                                         \
   .content = Content::contentKind,                                           \
   .children = childTags,                                                     \
   .documentation = text,                                                     \
   .make = &makeView<type>},
#define TAGGED(...) ELEMENT(__VA_ARGS__)
#define ATTRIBUTE(attribute, valueType, text) \
  {.kind = RowKind::Attribute, .name = attribute, .documentation = text, .type = Type::valueType},
#define WORDS(attribute, enumeration, text) \
  {.kind = RowKind::Attribute,              \
   .name = attribute,                       \
   .documentation = text,                   \
   .type = Type::Word,                      \
   .words = &wordsOf<enumeration>},
const Row rows[] = {
#include "dialect.inc"
};
#undef GROUP
#undef ELEMENT
#undef TAGGED
#undef ATTRIBUTE
#undef WORDS

// The table in the form that is searched, made on first use.
class Table {
 public:
  Table() {
    elements_.reserve(std::size(rows));
    std::vector<Attribute>* attributes = nullptr;
    for (const Row& row : rows) {
      switch (row.kind) {
        case RowKind::Group:
          groups_.push_back({row.label, row.documentation, childrenOf(row.children), {}});
          attributes = &groups_.back().attributes;
          break;
        case RowKind::Element:
          elements_.push_back(elementOf(row));
          attributes = &elements_.back().attributes;
          break;
        case RowKind::Attribute:
          attributes->push_back(
              {row.name, row.type, row.words ? &row.words() : nullptr, row.documentation});
          break;
      }
    }
    for (Element& element : elements_) finish(element);
  }

  std::span<const Element> elements() const { return elements_; }

  // The first of several rows of the tag.
  const Element* find(std::u16string_view tag) const {
    const auto hit = byTag_.find(tag);
    return hit != byTag_.end() ? hit->second : nullptr;
  }

  const Element* findRecord(std::u16string_view parentTag) const {
    const Element* parent = find(parentTag);
    const std::u16string_view owner =
        parentTag == u"visualization" ? u"PlXExtensionVis"
        : parent && parent->group && !std::strcmp(parent->group->name, "variable")
            ? u"PlXExtensionSV"
            : u"PlXExtension";
    return extensions_.at(owner);
  }

 private:
  const Group* groupNamed(const char* name) const {
    for (const Group& group : groups_) {
      if (!std::strcmp(group.name, name)) return &group;
    }
    return nullptr;
  }

  // A list of tags, taken apart: a blank leads to the next rank, a '|' stays on it.
  std::vector<Child> childrenOf(const char* list) {
    std::vector<Child> result;
    unsigned rank = 0;
    for (std::string_view rest(list); !rest.empty();) {
      const std::size_t end = std::min(rest.find_first_of(" |"), rest.size());
      names_.emplace_back(rest.begin(), rest.begin() + end);
      result.push_back({names_.back().c_str(), rank});
      if (end < rest.size() && rest[end] == ' ') ++rank;
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return result;
  }

  Element elementOf(const Row& row) {
    const Group* group = groupNamed(row.base);
    std::vector<Child> children = group ? group->children : std::vector<Child>();
    const unsigned first = children.empty() ? 0 : children.back().rank + 1;
    for (Child child : childrenOf(row.children)) {
      child.rank += first;
      children.push_back(child);
    }
    return {row.name, row.label, row.documentation, row.content, row.make, group, children, {}, {},
            {},       false};
  }

  void finish(Element& element) {
    for (const Child& child : element.children) element.ranks.emplace(child.tag, child.rank);
    if (element.group) noteLinks(element, element.group->attributes);
    noteLinks(element, element.attributes);
    byTag_.emplace(element.tag, &element);
    // Records of all three classes have one tag; whose a record is decides.
    element.isRecord =
        std::u16string_view(element.tag) == std::u16string_view(PlXExtension::_UTF_extension);
    if (element.isRecord) {
      names_.emplace_back(element.className, element.className + std::strlen(element.className));
      extensions_.emplace(names_.back(), &element);
    }
  }

  static void noteLinks(Element& element, const std::vector<Attribute>& attributes) {
    for (const Attribute& attribute : attributes) {
      if (attribute.type == Type::Link) element.links.push_back(attribute.name);
    }
  }

  std::list<std::u16string> names_;  // keeps the texts behind the pointers
  std::list<Group> groups_;
  std::vector<Element> elements_;
  std::unordered_map<std::u16string_view, const Element*> byTag_;
  std::unordered_map<std::u16string_view, const Element*> extensions_;
};

const Table& table() {
  static const Table instance;
  return instance;
}

}  // namespace

const XMLCh* Words::textOf(int number) const {
  for (const Word& word : words) {
    if (word.number == number) return word.text;
  }
  return nullptr;
}

int Words::numberOf(const XMLCh* text, int absent) const {
  for (const Word& word : words) {
    if (XMLString::equals(word.text, text)) return word.number;
  }
  return absent;
}

unsigned Element::rankOf(std::u16string_view childTag) const {
  const auto hit = ranks.find(childTag);
  return hit != ranks.end() ? hit->second : static_cast<unsigned>(ranks.size());
}

std::span<const Element> elements() {
  return table().elements();
}

std::vector<const Words*> enumerations() {
  std::vector<const Words*> result;
  for (const Row& row : rows) {
    if (!row.words) continue;
    const Words* words = &row.words();
    if (std::find(result.begin(), result.end(), words) == result.end()) result.push_back(words);
  }
  return result;
}

const XMLCh* localName(const DOMNode* element) {
  const XMLCh* name = element->getLocalName();
  return name ? name : element->getNodeName();
}

const Element* find(std::u16string_view tag, std::u16string_view parentTag) {
  const Element* row = table().find(tag);
  return row && row->isRecord ? table().findRecord(parentTag) : row;
}

// Looks for the parent only where it counts: that costs more than all the rest.
const Element* find(const DOMElement* element) {
  const Element* row = table().find(localName(element));
  if (!row || !row->isRecord) return row;
  const DOMNode* parent = element->getParentNode();
  const bool isNested = parent && parent->getNodeType() == DOMNode::ELEMENT_NODE;
  return table().findRecord(isNested ? std::u16string_view(localName(parent))
                                     : std::u16string_view());
}

namespace {

constexpr std::u16string_view blanks = u" \t\r\n";

std::u16string_view withoutBlanks(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

bool isLetter(char16_t unit) {
  return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

bool isHexadecimalDigit(char16_t unit) {
  return isDigit(unit) || (unit >= u'A' && unit <= u'F') || (unit >= u'a' && unit <= u'f');
}

std::u16string_view withoutSign(std::u16string_view text) {
  if (text.starts_with(u'+') || text.starts_with(u'-')) text.remove_prefix(1);
  return text;
}

bool isInteger(std::u16string_view text) {
  text = withoutSign(text);
  return !text.empty() && std::ranges::all_of(text, isDigit);
}

bool isLength(std::u16string_view text) {
  if (text == u"0") return true;
  text = withoutSign(text);
  const auto skipDigits = [&] {
    const std::size_t count = std::ranges::find_if_not(text, isDigit) - text.begin();
    text.remove_prefix(count);
    return count;
  };
  std::size_t digits = skipDigits();
  if (text.starts_with(u'.')) {
    text.remove_prefix(1);
    digits += skipDigits();
  }
  return digits > 0 && !text.empty() && (text == u"%" || std::ranges::all_of(text, isLetter));
}

// As a style takes them apart.
bool areLengths(std::u16string_view text) {
  constexpr int most = 3;
  for (int count = 1; count <= most; ++count) {
    const std::size_t end = std::min(text.find_first_of(u" \t\r\n,"), text.size());
    const std::u16string_view part = text.substr(0, end);
    if (!part.empty() && part != u"auto" && !isLength(part)) return false;
    if (end == text.size()) return true;
    text = withoutBlanks(text.substr(end));
    if (text.starts_with(u',')) text = withoutBlanks(text.substr(1));
  }
  return false;
}

bool isColor(std::u16string_view text) {
  constexpr std::size_t digits = 6;
  if (!text.starts_with(u'#')) return !text.empty() && std::ranges::all_of(text, isLetter);
  text.remove_prefix(1);
  return text.size() == digits && std::ranges::all_of(text, isHexadecimalDigit);
}

}  // namespace

const Attribute* attributeOf(const Element& element, const XMLCh* attribute) {
  const auto findIn = [&](const std::vector<Attribute>& attributes) -> const Attribute* {
    for (const Attribute& each : attributes) {
      if (XMLString::equals(each.name, attribute)) return &each;
    }
    return nullptr;
  };
  if (const Attribute* own = findIn(element.attributes)) return own;
  return element.group ? findIn(element.group->attributes) : nullptr;
}

bool isValue(Type type, std::u16string_view text) {
  text = withoutBlanks(text);
  switch (type) {
    case Type::Flag:
      return text == u"true" || text == u"false" || text == u"1" || text == u"0";
    case Type::Number:
      return numbertext::isNumber(text);
    case Type::Integer:
      return isInteger(text);
    case Type::Length:
      return isLength(text);
    case Type::Lengths:
      return areLengths(text);
    case Type::Color:
      return isColor(text);
    default:
      return true;
  }
}

bool isValue(const Attribute& attribute, std::u16string_view text) {
  text = withoutBlanks(text);
  if (attribute.type == Type::Id) {
    return XMLChar1_0::isValidNCName(text.data(), text.size());
  }
  if (!attribute.words) return isValue(attribute.type, text);
  return std::ranges::any_of(attribute.words->words,
                             [&](const Word& word) { return text == word.text; });
}

bool isOfSchemaType(const Attribute& attribute, std::u16string_view text) {
  switch (attribute.type) {
    case Type::Length:
    case Type::Lengths:
    case Type::Color:
      return true;
    case Type::Number:
      text = withoutBlanks(text);
      return isValue(attribute, text) || text == u"INF" || text == u"-INF" || text == u"NaN";
    default:
      return isValue(attribute, text);
  }
}

bool isLink(const Element& element, const XMLCh* attribute) {
  if (!element.isRecord) {
    return std::any_of(element.links.begin(), element.links.end(),
                       [&](const XMLCh* name) { return XMLString::equals(name, attribute); });
  }
  std::u16string_view role(attribute);
  if (role == u"target") return true;  // of a drill-down
  role = role.substr(0, role.find_last_not_of(u"0123456789") + 1);
  constexpr std::u16string_view roles[] = {
      u"title", u"subtitle", u"footnote",          u"legend",
      u"key",   u"text",     u"statisticsSummary", u"styleCycleRepository"};
  return std::find(std::begin(roles), std::end(roles), role) != std::end(roles);
}

}  // namespace dialect
