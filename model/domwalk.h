// Walks over DOM trees that cost no stack, however deep the tree.
#ifndef CHARTXML_DOMWALK_H
#define CHARTXML_DOMWALK_H

#include <xercesc/dom/DOM.hpp>

// Calls `visit(element)` for the elements of a subtree in document order, its root included when
// that is an element; the children of elements for which it answers false are passed over.
template <class Visit>
void walkElements(xercesc::DOMNode* root, Visit visit) {
  xercesc::DOMNode* node = root;
  while (node) {
    const bool isElement = node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE;
    const bool enter = !isElement || visit(static_cast<xercesc::DOMElement*>(node));
    xercesc::DOMNode* next = enter ? node->getFirstChild() : nullptr;
    while (!next) {
      if (node == root) return;
      next = node->getNextSibling();
      if (!next) node = node->getParentNode();
    }
    node = next;
  }
}

#endif
