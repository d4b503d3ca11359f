// Walks over DOM trees that cost no stack, however deep the tree.
#ifndef CHARTXML_DOMWALK_H
#define CHARTXML_DOMWALK_H

#include <type_traits>
#include <vector>

#include <xercesc/dom/DOM.hpp>

// The element of a tree that may be edited, or of one that may not: as its node.
template <class Node>
using ElementOf =
    std::conditional_t<std::is_const_v<Node>, const xercesc::DOMElement, xercesc::DOMElement>;

template <class Node>
ElementOf<Node>* elementFrom(Node* node) {
  while (node && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
    node = node->getNextSibling();
  }
  return static_cast<ElementOf<Node>*>(node);
}

// The first child that is an element and the next such sibling; null when there is none. The DOM's
// own operations of that kind look for the parent at each step, which takes many times as long.
inline xercesc::DOMElement* firstElement(xercesc::DOMNode* parent) {
  return elementFrom(parent->getFirstChild());
}
inline const xercesc::DOMElement* firstElement(const xercesc::DOMNode* parent) {
  return elementFrom<const xercesc::DOMNode>(parent->getFirstChild());
}
inline xercesc::DOMElement* nextElement(xercesc::DOMNode* node) {
  return elementFrom(node->getNextSibling());
}
inline const xercesc::DOMElement* nextElement(const xercesc::DOMNode* node) {
  return elementFrom<const xercesc::DOMNode>(node->getNextSibling());
}

// Calls `visit(element)` for the elements of a subtree in document order, its root included when
// that is an element; the children of elements for which it answers false are passed over. `Node`
// is DOMNode, or const DOMNode.
template <class Node, class Visit>
void walkNodes(Node* root, Visit visit) {
  std::vector<Node*> entered;
  Node* node = root;
  while (node) {
    const bool isElement = node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE;
    const bool enter = !isElement || visit(static_cast<ElementOf<Node>*>(node));
    Node* next = enter ? node->getFirstChild() : nullptr;
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
template <class Visit>
void walkElements(xercesc::DOMNode* root, Visit visit) {
  walkNodes(root, visit);
}
template <class Visit>
void walkElements(const xercesc::DOMNode* root, Visit visit) {
  walkNodes(root, visit);
}

#endif
