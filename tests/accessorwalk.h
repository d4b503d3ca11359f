// The model's accessors as a table, which accessors.py writes from the headers, and charts to walk
// them over.
#ifndef CHARTXML_ACCESSORWALK_H
#define CHARTXML_ACCESSORWALK_H

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "dialect.h"
#include "numbertext.h"
#include "plxframes.h"
#include "utf.h"

// Values as text: flags are 0 and 1, an enumerator is its number, an object its id.
template <class T>
std::u16string spell(T value) {
  if constexpr (std::is_convertible_v<T, const XMLCh*>) {
    return value;
  } else if constexpr (std::is_pointer_v<T>) {
    return value ? value->GetAttribute(u"id") : u"(null)";
  } else if constexpr (std::is_same_v<T, double>) {
    return utf::toUtf16(numbertext::shortest(value));
  } else {
    return utf::toUtf16(std::to_string(static_cast<long>(value)));
  }
}

// The opposite, for the parameters of setters.
template <class T>
T take(const XMLCh* text) {
  if constexpr (std::is_same_v<T, const XMLCh*>) {
    return text;
  } else if constexpr (std::is_same_v<T, double>) {
    return std::strtod(utf::toUtf8(text).c_str(), nullptr);
  } else {
    return static_cast<T>(std::stol(utf::toUtf8(text)));
  }
}

template <class T>
T& as(PlXBaseElement& object) {
  return dynamic_cast<T&>(object);
}
template <class T>
bool is(PlXBaseElement* object) {
  return dynamic_cast<T*>(object) != nullptr;
}
template <class T>
std::vector<PlXBaseElement*> listOf(const std::vector<T*>& objects) {
  return {objects.begin(), objects.end()};
}

// One property, as the class declares it; a row for each setter of a link. Functions are null where
// the class has none.
struct Property {
  const char* className;
  const char* name;  // lower-case, without signs: "fillopacity"
  dialect::Type type;
  std::vector<std::u16string> samples = {};  // every enumerator; empty for links
  std::u16string absent;                     // what it reads as when it isn't stated
  std::u16string (*get)(PlXBaseElement&) = nullptr;
  void (*set)(PlXBaseElement&, const XMLCh*) = nullptr;
  void (*link)(PlXBaseElement&, PlXBaseElement&) = nullptr;
  bool (*isPresent)(PlXBaseElement&) = nullptr;
  void (*remove)(PlXBaseElement&) = nullptr;
  // For links: whether the setter takes the object, and whether the getter answers it.
  bool (*accepts)(PlXBaseElement*) = nullptr;
  bool (*gives)(PlXBaseElement*) = nullptr;
};

// One kind of children, as the class declares it. What adders take beside an id is made on the
// chart for them.
struct Children {
  using Add = PlXBaseElement* (*)(PlXVisualization&, PlXBaseElement&, const XMLCh*);
  const char* className;
  const char* name;
  PlXBaseElement* (*one)(PlXBaseElement&) = nullptr;
  std::vector<PlXBaseElement*> (*all)(PlXBaseElement&) = nullptr;
  Add add = nullptr;
  Add addWithId = nullptr;
  void (*removeAll)(PlXBaseElement&) = nullptr;
  void (*removeAt)(PlXBaseElement&, unsigned) = nullptr;
};

// Written by accessors.py.
extern const std::map<std::string_view, std::string_view> baseClasses;
std::vector<Property> makeProperties();
std::vector<Children> makeChildren();

// The rows of an element's class, those of its bases included.
const std::vector<Property>& propertiesOf(const dialect::Element& row);
const std::vector<Children>& childrenOf(const dialect::Element& row);
// All attributes, those of the group included.
std::vector<const dialect::Attribute*> attributesOf(const dialect::Element& row);
// What the accessors are about by their name; null when the dialect has no such thing.
const dialect::Attribute* attributeOf(const dialect::Element& row, const Property& property);
const XMLCh* tagOf(const dialect::Element& row, const Children& children);

// A chart with its objects; without a root when its text doesn't parse.
class Chart {
 public:
  // One that has every element of the dialect, and under one of each kind every child.
  Chart();
  explicit Chart(const std::string& text);
  ~Chart();

  // The objects of all elements in document order. Rows of data are left out.
  std::vector<PlXBaseElement*> objects() const;
  // The object of that row that has every child.
  PlXBaseElement& full(const dialect::Element& row) const {
    return *root->objectOf(full_.at(&row));
  }

  ChartBase base;
  xercesc::DOMDocument* document;
  std::unique_ptr<PlXVisualization> root;

 private:
  std::map<const dialect::Element*, xercesc::DOMElement*> full_;
};

#endif
