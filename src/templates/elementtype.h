// The kind of elements that a command's attribute elementType names.
#ifndef CHARTXML_ELEMENTTYPE_H
#define CHARTXML_ELEMENTTYPE_H

#include <xercesc/util/XMLString.hpp>

#include "dialect.h"
#include "plxelements.h"
#include "plxlabeling.h"

class ElementType {
 public:
  // A word that is no kind's means all elements.
  explicit ElementType(const XMLCh* word) {
    static constexpr const XMLCh* kinds[] = {
        PlXArea::_UTF_area,         PlXEdge::_UTF_edge,       PlXInterval::_UTF_interval,
        PlXLabeling::_UTF_labeling, PlXLine::_UTF_line,       PlXPath::_UTF_path,
        PlXPoint::_UTF_point,       PlXPolygon::_UTF_polygon, PlXSchema::_UTF_schema};
    for (const XMLCh* kind : kinds) {
      if (xercesc::XMLString::equals(kind, word)) tag_ = kind;
    }
  }

  bool isLabeling() const { return tag_ == PlXLabeling::_UTF_labeling; }
  // Labelings are no elements: their kind fits none.
  bool fits(const CTElementType& element) const {
    return !tag_ ||
           xercesc::XMLString::equals(tag_, dialect::localName(element.getImplementation()));
  }

 private:
  const XMLCh* tag_ = nullptr;  // null for all kinds
};

#endif
