// Reading and writing the text of an attribute, fast.
#ifndef CHARTXML_ATTRIBUTETEXT_H
#define CHARTXML_ATTRIBUTETEXT_H

#include <functional>
#include <string>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

// The text node of an attribute whose text is a single one, as nearly all have; null for others.
inline xercesc::DOMNode* soleText(const xercesc::DOMNode& attribute) {
  xercesc::DOMNode* text = attribute.getFirstChild();
  const bool isSole =
      text && text->getNodeType() == xercesc::DOMNode::TEXT_NODE && !text->getNextSibling();
  return isSole ? text : nullptr;
}

// As getNodeValue() answers, which takes far longer for the usual case.
inline const XMLCh* attributeText(const xercesc::DOMNode& attribute) {
  const xercesc::DOMNode* text = soleText(attribute);
  return text ? text->getNodeValue() : attribute.getNodeValue();
}

// As setAttribute() does, which takes far longer for an attribute that is there. `value` may be a
// part of the present text.
inline void setAttributeText(xercesc::DOMElement& element, const XMLCh* name, const XMLCh* value) {
  const xercesc::DOMAttr* attribute = element.getAttributeNode(name);
  xercesc::DOMNode* text = attribute ? soleText(*attribute) : nullptr;
  if (!text) {
    element.setAttribute(name, value);
    return;
  }
  const XMLCh* present = text->getNodeValue();
  if (attribute->getSpecified() && xercesc::XMLString::equals(present, value)) return;
  const bool isPart = !std::less<>()(value, present) &&
                      !std::less<>()(present + xercesc::XMLString::stringLen(present), value);
  const std::u16string copy(isPart ? value : u"");
  if (isPart) value = copy.c_str();
  if (attribute->getSpecified() && !attribute->isId()) {
    text->setNodeValue(value);
  } else {
    element.setAttribute(name, value);
  }
}

#endif
