// Reading the elements of a template.
#ifndef CHARTXML_TEMPLATEXML_H
#define CHARTXML_TEMPLATEXML_H

#include <limits>
#include <optional>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "chartstring.h"
#include "dialect.h"
#include "domwalk.h"
#include "plxuni.h"

namespace templatexml {

// The largest count of digits or ticks that is written; one above it is out of range.
constexpr unsigned long mostCounted = std::numeric_limits<int>::max();

// None below 0, and nothing for one out of range.
inline std::optional<unsigned> countOf(long number) {
  if (number < 0) return 0;
  const bool isInRange = static_cast<unsigned long>(number) <= mostCounted;
  return isInRange ? std::optional(static_cast<unsigned>(number)) : std::nullopt;
}

// Calls `visit(element)` for the elements of that name at any depth below `parent`, in document
// order. Null has none.
template <class Visit>
void forDescendants(const xercesc::DOMElement* parent, const XMLCh* name, Visit visit) {
  const xercesc::DOMElement* child = parent ? firstElement(parent) : nullptr;
  for (; child; child = nextElement(child)) {
    walkElements(child, [&](const xercesc::DOMElement* element) {
      if (xercesc::XMLString::equals(element->getNodeName(), name)) visit(element);
      return true;
    });
  }
}

// The same for direct children.
template <class Visit>
void forChildren(const xercesc::DOMElement* parent, const XMLCh* name, Visit visit) {
  const xercesc::DOMElement* child = parent ? firstElement(parent) : nullptr;
  for (; child; child = nextElement(child)) {
    if (xercesc::XMLString::equals(child->getNodeName(), name)) visit(child);
  }
}

// The last direct child of that name; null when there is none.
inline const xercesc::DOMElement* lastChild(const xercesc::DOMElement* parent, const XMLCh* name) {
  const xercesc::DOMElement* last = nullptr;
  forChildren(parent, name, [&](const xercesc::DOMElement* child) { last = child; });
  return last;
}

// The first element of that name at any depth; null when there is none.
inline const xercesc::DOMElement* firstDescendant(const xercesc::DOMElement* parent,
                                                  const XMLCh* name) {
  const xercesc::DOMElement* first = nullptr;
  forDescendants(parent, name, [&](const xercesc::DOMElement* element) {
    if (!first) first = element;
  });
  return first;
}

inline bool is(const XMLCh* text, const XMLCh* word) {
  return xercesc::XMLString::equals(text, word);
}

// What a word means in the dialect; nothing for another text.
template <class Enum>
std::optional<Enum> wordOf(const XMLCh* text) {
  constexpr int none = std::numeric_limits<int>::min();
  const int number = dialect::wordsOf<Enum>().numberOf(text, none);
  return number == none ? std::nullopt : std::optional(static_cast<Enum>(number));
}

// True for exactly "true".
inline bool isTrue(const xercesc::DOMElement& element, const XMLCh* name) {
  return is(element.getAttribute(name), PlXUni::_true);
}

// The text of an attribute or, where that is empty, the value of the first parameter of that name
// at any depth; null for a parameter of the attribute's name.
inline ChartString attributeOrParameter(const xercesc::DOMElement& command, const XMLCh* name,
                                        const XMLCh* parameterName = nullptr) {
  const XMLCh* text = command.getAttribute(name);
  if (*text) return text;
  const xercesc::DOMElement* parameter = nullptr;
  forDescendants(&command, PlXUni::_parameter, [&](const xercesc::DOMElement* element) {
    if (!parameter &&
        is(element->getAttribute(PlXUni::_name), parameterName ? parameterName : name)) {
      parameter = element;
    }
  });
  return parameter ? parameter->getAttribute(PlXUni::_value) : text;
}

}  // namespace templatexml

#endif
