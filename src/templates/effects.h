// What the commands that give flat charts a depth read alike.
#ifndef CHARTXML_EFFECTS_H
#define CHARTXML_EFFECTS_H

#include <optional>

#include "chartstring.h"
#include "templatexml.h"

namespace effects {

// Of an attribute, or where that isn't stated of the first parameter of that name with a value.
inline std::optional<double> number(const xercesc::DOMElement& command, const XMLCh* name) {
  ChartString value(command.getAttribute(name));
  templatexml::forDescendants(
      &command, PlXUni::_parameter, [&](const xercesc::DOMElement* parameter) {
        if (value.empty() && templatexml::is(parameter->getAttribute(PlXUni::_name), name)) {
          value = parameter->getAttribute(PlXUni::_value);
        }
      });
  if (value.empty()) return std::nullopt;
  return value.convertToDouble();
}

// The attribute zLocation, or where that isn't stated the location of the last z that has one.
inline std::optional<double> zLocation(const xercesc::DOMElement& command) {
  ChartString value(command.getAttribute(PlXUni::_zLocation));
  if (value.empty()) {
    templatexml::forDescendants(&command, PlXUni::_z, [&](const xercesc::DOMElement* z) {
      const XMLCh* location = z->getAttribute(PlXUni::_location);
      if (*location) value = location;
    });
  }
  if (value.empty()) return std::nullopt;
  return value.convertToDouble();
}

}  // namespace effects

#endif
