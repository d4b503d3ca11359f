#include "dialect.h"

#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <list>
#include <string>

#include "modelclasses.h"

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

bool hasAttribute(const Element& element, const XMLCh* attribute) {
  const auto isIn = [&](const std::vector<Attribute>& attributes) {
    return std::any_of(attributes.begin(), attributes.end(), [&](const Attribute& each) {
      return XMLString::equals(each.name, attribute);
    });
  };
  return isIn(element.attributes) || (element.group && isIn(element.group->attributes));
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
