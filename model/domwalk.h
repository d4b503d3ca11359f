// Walks over DOM trees that cost no stack, however deep the tree.
#ifndef CHARTXML_DOMWALK_H
#define CHARTXML_DOMWALK_H

#include <vector>

#include <xercesc/dom/DOM.hpp>

// The first child that is an element and the next such sibling; null when there is none. The DOM's
// own operations of that kind look for the parent at each step, which takes many times as long.
inline xercesc::DOMElement* elementFrom(xercesc::DOMNode* node) {
  while (node && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
    node = node->getNextSibling();
  }
  return static_cast<xercesc::DOMElement*>(node);
}
inline xercesc::DOMElement* firstElement(const xercesc::DOMNode* parent) {
  return elementFrom(parent->getFirstChild());
}
inline xercesc::DOMElement* nextElement(const xercesc::DOMNode* node) {
  return elementFrom(node->getNextSibling());
}

// Calls `visit(element)` for the elements of a subtree in document order, its root included when
// that is an element; the children of elements for which it answers false are passed over.
template <class Visit>
void walkElements(xercesc::DOMNode* root, Visit visit) {
  std::vector<xercesc::DOMNode*> entered;
  xercesc::DOMNode* node = root;
  while (node) {
    const bool isElement = node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE;
    const bool enter = !isElement || visit(static_cast<xercesc::DOMElement*>(node));
    xercesc::DOMNode* next = enter ? node->getFirstChild() : nullptr;
    if (next) entered.push_back(node);
    while (!next && node != root) {
      next = node->getNextSibling();
      if (next) break;
      node = entered.back();
      entered.pop_back();
    }
    node = next;
  }
}

#endif
