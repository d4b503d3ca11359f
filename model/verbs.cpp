// The verbs of PlXBaseElement that depend on a class, made for every class and enumerator of the
// dialect's table.
#include <typeinfo>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "dialect.h"
#include "domwalk.h"
#include "modelclasses.h"

using namespace xercesc;

namespace dialect {
#define ENUMERATION(type, ...) \
  template <>                  \
  const Words& wordsOf<type>();
#include "enumerations.inc"
#undef ENUMERATION
}  // namespace dialect

// ---- the tags that the classes hold
#define GROUP(...)
#define ATTRIBUTE(...)
#define WORDS(...)
#define ELEMENT(type, constant, tag, ...) const XMLCh type::constant[] = tag;
#define TAGGED(type, constant, tag, ...) const XMLCh type::constant[] = tag;
#include "dialect.inc"
#undef ELEMENT
#undef TAGGED

// From here on, a class with several tags has no row.
#define TAGGED(...)

namespace {

template <class T>
const XMLCh* tagOf = nullptr;
#define ELEMENT(type, constant, tag, ...) \
  template <>                             \
  const XMLCh* const tagOf<type> = tag;
#include "dialect.inc"
#undef ELEMENT

// As dynamic_cast, which takes many times as long for the class that an object nearly always has.
template <class T>
T* as(PlXBaseElement* object) {
  if (object && typeid(*object) == typeid(T)) return static_cast<T*>(object);
  return dynamic_cast<T*>(object);
}

// The same for a base class, whose links nearly always lead to one class.
template <>
CTVariableType* as<CTVariableType>(PlXBaseElement* object) {
  if (object && typeid(*object) == typeid(PlXSourceVariable)) {
    return static_cast<PlXSourceVariable*>(object);
  }
  return dynamic_cast<CTVariableType*>(object);
}

}  // namespace

template <class Enum>
Enum PlXBaseElement::word(const XMLCh* name, Enum absent) const {
  const int number = dialect::wordsOf<Enum>().numberOf(text(name), static_cast<int>(absent));
  return static_cast<Enum>(number);
}

template <class Enum>
void PlXBaseElement::setWord(const XMLCh* name, Enum value) {
  const int number = static_cast<int>(value);
  const XMLCh* text = dialect::wordsOf<Enum>().textOf(number);
  if (text || number == 0) setText(name, text);
}

template <class T>
T* PlXBaseElement::link(const XMLCh* name) const {
  return as<T>(linked(name));
}

template <class T>
void PlXBaseElement::setLink(const XMLCh* name, T& target) {
  linkTo(name, target);
}

template <class T>
T* PlXBaseElement::childTagged(const XMLCh* tag) const {
  return as<T>(objectOf(firstChild(tag)));
}

template <class T>
T* PlXBaseElement::child() const {
  return childTagged<T>(tagOf<T>);
}

template <class T>
std::vector<T*> PlXBaseElement::children() const {
  std::vector<T*> result;
  DOMElement* element = firstChild(tagOf<T>);
  for (; element; element = nextElement(element)) {
    if (!XMLString::equals(dialect::localName(element), tagOf<T>)) continue;
    if (auto* object = as<T>(objectOf(element))) result.push_back(object);
  }
  return result;
}

template <class T>
T* PlXBaseElement::addTagged(const XMLCh* tag) {
  return as<T>(addChild(tag, nullptr));
}

template <class T>
T* PlXBaseElement::add() {
  return addTagged<T>(tagOf<T>);
}

template <class T>
T* PlXBaseElement::add(const XMLCh* id) {
  return as<T>(addChild(tagOf<T>, id));
}

template <class T>
void PlXBaseElement::removeAll() {
  for (T* object : children<T>()) removeChild(*object);
}

template <class T>
void PlXBaseElement::removeAt(std::size_t index) {
  const std::vector<T*> all = children<T>();
  if (index < all.size()) removeChild(*all[index]);
}

// ---- the verbs, instantiated
#define ENUMERATION(type, ...)                                                     \
  template CHARTXML_API type PlXBaseElement::word<type>(const XMLCh*, type) const; \
  template CHARTXML_API void PlXBaseElement::setWord<type>(const XMLCh*, type);
#include "enumerations.inc"
#undef ENUMERATION

#define LINKS(type)                                                           \
  template CHARTXML_API type* PlXBaseElement::link<type>(const XMLCh*) const; \
  template CHARTXML_API void PlXBaseElement::setLink<type>(const XMLCh*, type&);

#define ELEMENT(type, ...)                                                         \
  LINKS(type)                                                                      \
  template CHARTXML_API type* PlXBaseElement::child<type>() const;                 \
  template CHARTXML_API std::vector<type*> PlXBaseElement::children<type>() const; \
  template CHARTXML_API type* PlXBaseElement::add<type>();                         \
  template CHARTXML_API type* PlXBaseElement::add<type>(const XMLCh*);             \
  template CHARTXML_API void PlXBaseElement::removeAll<type>();                    \
  template CHARTXML_API void PlXBaseElement::removeAt<type>(std::size_t);
#include "dialect.inc"
#undef ELEMENT

// Bases that links lead to, and the class that has several tags.
LINKS(PlXBaseElement)
LINKS(CTVariableType)
template CHARTXML_API CTCoordinate* PlXBaseElement::childTagged<CTCoordinate>(const XMLCh*) const;
template CHARTXML_API CTCoordinate* PlXBaseElement::addTagged<CTCoordinate>(const XMLCh*);
