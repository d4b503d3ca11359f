// The text of an attribute, fast.
#ifndef CHARTXML_ATTRIBUTETEXT_H
#define CHARTXML_ATTRIBUTETEXT_H

#include <xercesc/dom/DOM.hpp>

// As getNodeValue() answers, which takes far longer for the usual case.
inline const XMLCh* attributeText(const xercesc::DOMNode& attribute) {
  const xercesc::DOMNode* text = attribute.getFirstChild();
  const bool isUsual =
      text && text->getNodeType() == xercesc::DOMNode::TEXT_NODE && !text->getNextSibling();
  return isUsual ? text->getNodeValue() : attribute.getNodeValue();
}

#endif
