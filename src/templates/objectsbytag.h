// The objects of a chart by the tag of their elements.
#ifndef CHARTXML_OBJECTSBYTAG_H
#define CHARTXML_OBJECTSBYTAG_H

#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "dialect.h"
#include "domwalk.h"
#include "plxbaseelement.h"
#include "plxuni.h"

// At or below `root`, in document order; what has no object of the class is skipped.
template <class T>
std::vector<T*> objectsByTag(const PlXBaseElement& root, const XMLCh* tag) {
  std::vector<T*> objects;
  walkElements(root.getImplementation(), [&](xercesc::DOMElement* element) {
    if (xercesc::XMLString::equals(dialect::localName(element), tag)) {
      if (auto* object = dynamic_cast<T*>(root.objectOf(element))) objects.push_back(object);
    }
    return true;
  });
  return objects;
}

// Below `root`, for frames and for what graphs hold as children, whatever else a chart has.
template <class T>
std::vector<T*> framesByTag(const PlXBaseElement& root, const XMLCh* tag) {
  std::vector<T*> objects;
  const xercesc::DOMElement* top = root.getImplementation();
  walkElements(root.getImplementation(), [&](xercesc::DOMElement* element) {
    if (element == top) return true;
    const XMLCh* name = dialect::localName(element);
    if (xercesc::XMLString::equals(name, tag)) {
      if (auto* object = dynamic_cast<T*>(root.objectOf(element))) objects.push_back(object);
    }
    return xercesc::XMLString::equals(name, PlXUni::_graph) ||
           xercesc::XMLString::equals(name, PlXUni::_container);
  });
  return objects;
}

#endif
