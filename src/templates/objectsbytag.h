// The objects of a chart by the tag of their elements.
#ifndef CHARTXML_OBJECTSBYTAG_H
#define CHARTXML_OBJECTSBYTAG_H

#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "dialect.h"
#include "domwalk.h"
#include "plxbaseelement.h"

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

#endif
