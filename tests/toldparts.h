// Parts of charts in a short form.
#ifndef CHARTXML_TOLDPARTS_H
#define CHARTXML_TOLDPARTS_H

#include <set>

#include "commandcases.h"

// The elements of these tags in document order, as "tag name=value name=value; tag". A link to a
// style is told by what that style states, in brackets; identifiers are left out.
inline std::string told(EditedChart& chart, const std::set<std::string>& tags) {
  const auto attributesOf = [](const xercesc::DOMElement& element, auto textOf) {
    std::string text;
    const xercesc::DOMNamedNodeMap* attributes = element.getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
      const std::string name = ChartString(attributes->item(i)->getNodeName()).toUTF8();
      if (name == "id" || name.starts_with("xmlns") || name.starts_with("xsi:")) continue;
      text += (text.empty() ? "" : " ") + name + "=" + textOf(attributes->item(i)->getNodeValue());
    }
    return text;
  };
  const auto plain = [](const XMLCh* value) { return ChartString(value).toUTF8(); };
  const auto resolved = [&](const XMLCh* value) {
    const xercesc::DOMElement* style = chart.chart().getElementById(value);
    const bool isStyle = style && xercesc::XMLString::equals(style->getTagName(), u"style");
    return isStyle ? "[" + attributesOf(*style, plain) + "]" : plain(value);
  };
  std::string text;
  walkElements(chart.chart().getImplementation(), [&](const xercesc::DOMElement* element) {
    const std::string tag = ChartString(element->getTagName()).toUTF8();
    if (!tags.contains(tag)) return true;
    const std::string attributes = attributesOf(*element, resolved);
    text += (text.empty() ? "" : "; ") + tag + (attributes.empty() ? "" : " ") + attributes;
    return true;
  });
  return text;
}

#endif
