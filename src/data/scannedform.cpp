#include "scannedform.h"

#include <algorithm>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "chartstring.h"
#include "dialect.h"
#include "domwalk.h"

using namespace xercesc;

namespace {

// What the scanner of XmlDataHandler knows of a data document: these elements, with this attribute
// and no other, without prefixes.
struct ScannedElement {
  std::string_view name;
  std::string_view attribute;
};
constexpr ScannedElement scannedElements[] = {
    {"row", ""}, {"names", ""}, {"embeddedSource", "id"}, {"source", "id"}, {"dataValue", "name"}};

const ScannedElement* scannedElement(std::string_view name) {
  const auto* found = std::ranges::find(scannedElements, name, &ScannedElement::name);
  return found == std::end(scannedElements) ? nullptr : found;
}

// `tag` starts behind its '<' and may end anywhere.
bool isScannedRight(std::string_view tag) {
  if (tag.starts_with('!') || tag.starts_with('?')) return false;
  const bool isEnd = tag.starts_with('/');
  if (isEnd) tag.remove_prefix(1);
  const std::string_view name = tag.substr(0, tag.find_first_of(" \t\r\n/>"));
  const ScannedElement* known = scannedElement(name.substr(name.find(':') + 1));
  if (!known) return true;
  tag.remove_prefix(name.size());
  if (name.size() != known->name.size()) return false;
  if (isEnd) return tag.starts_with('>');
  if (known->attribute.empty()) return tag.starts_with('>') || tag.starts_with("/>");
  std::string attribute = " ";
  attribute.append(known->attribute).append("=\"");
  return tag.starts_with(attribute);
}

}  // namespace

bool scannedform::isForParsers(std::string_view text) {
  std::size_t at = text.find('<');
  if (at != text.npos && text.substr(at).starts_with("<?xml ")) at = text.find('<', at + 1);
  for (; at != text.npos; at = text.find('<', at + 1)) {
    if (!isScannedRight(text.substr(at + 1))) return true;
  }
  return false;
}

void scannedform::simplify(DOMDocument& data) {
  std::vector<DOMElement*> elements;
  std::vector<DOMNode*> others;
  walkElements(data.getDocumentElement(), [&](DOMElement* element) {
    elements.push_back(element);
    for (DOMNode* node = element->getFirstChild(); node; node = node->getNextSibling()) {
      const short kind = node->getNodeType();
      if (kind != DOMNode::ELEMENT_NODE && kind != DOMNode::TEXT_NODE) others.push_back(node);
    }
    return true;
  });
  for (DOMElement* element : elements) {
    const std::u16string name(dialect::localName(element));
    const ScannedElement* known = scannedElement(ChartString(name.c_str()).toUTF8());
    if (!known) continue;
    const ChartString attribute(std::string(known->attribute).c_str());
    const DOMNamedNodeMap* attributes = element->getAttributes();
    for (XMLSize_t i = attributes->getLength(); i-- > 0;) {
      DOMNode* node = attributes->item(i);
      if (XMLString::equals(node->getNodeName(), attribute.xc_str())) continue;
      element->removeAttributeNode(static_cast<DOMAttr*>(node))->release();
    }
    if (element->getPrefix() && *element->getPrefix()) {
      data.renameNode(element, element->getNamespaceURI(), name.c_str());
    }
  }
  for (DOMNode* node : others) {
    DOMNode* parent = node->getParentNode();
    if (node->getNodeType() == DOMNode::CDATA_SECTION_NODE) {
      parent->insertBefore(data.createTextNode(node->getNodeValue()), node);
    }
    parent->removeChild(node)->release();
  }
}
