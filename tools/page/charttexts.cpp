#include "charttexts.h"

#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

using namespace xercesc;

std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

std::string joined(const std::vector<std::string>& items, char separator) {
  std::string result;
  for (const std::string& item : items) {
    if (item.empty()) continue;
    if (!result.empty()) result += separator;
    result += item;
  }
  return result;
}

namespace {

// Of a label, or of a group of descriptions in it.
std::string contentText(const PlXBaseElement& holder) {
  std::string result;
  DOMElement* child = holder.getImplementation()->getFirstElementChild();
  for (; child; child = child->getNextElementSibling()) {
    const PlXBaseElement* object = holder.objectOf(child);
    if (const auto* text = dynamic_cast<const PlXText*>(object)) {
      result += utf8(text->getText());
    } else if (const auto* description = dynamic_cast<const PlXDescription*>(object)) {
      result += '{' + utf8(description->GetAttribute(u"name")) + '}';
    } else if (dynamic_cast<const PlXDescriptionGroup*>(object)) {
      result += contentText(*object);
    }
  }
  return result;
}

}  // namespace

std::string labelText(const CTLabelType* label) {
  return label ? contentText(*label) : std::string();
}

std::string placeText(const PlXLocation& location) {
  const std::string method = utf8(location.GetAttribute(u"method"));
  const std::string max = utf8(location.getMax());
  return joined({method == "fixed" ? "" : method, utf8(location.GetAttribute(u"target")),
                 utf8(location.getValue()), max.empty() ? "" : "max:" + max},
                ':');
}

bool isHidden(const PlXBaseElement& frame) {
  const PlXStyle* style = frame.getStyleById(frame.GetAttribute(PlXUni::_style));
  return style && !style->getVisible();
}

std::multimap<std::string, std::string> rolesOf(const PlXVisualization& chart) {
  std::multimap<std::string, std::string> roles;
  const PlXExtensionVis* record = chart.getExtension();
  const DOMNamedNodeMap* attributes =
      record ? record->getImplementation()->getAttributes() : nullptr;
  for (XMLSize_t i = 0; attributes && i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    if (XMLString::equals(attribute->getNodeName(), PlXUni::_id)) continue;
    roles.emplace(utf8(attribute->getNodeValue()), utf8(attribute->getNodeName()));
  }
  return roles;
}
