// What the commands that give flat charts a depth read alike.
#ifndef CHARTXML_EFFECTS_H
#define CHARTXML_EFFECTS_H

#include <optional>

#include "statedvalues.h"
#include "templatexml.h"

namespace effects {

// The attribute zLocation, or where that isn't stated the location of the last z that has one.
inline std::optional<double> zLocation(const BaseTemplate& base,
                                       const xercesc::DOMElement& command) {
  const std::optional<double> own = stated::number(base, &command, PlXUni::_zLocation);
  if (own) return own;
  std::optional<double> last;
  templatexml::forDescendants(&command, PlXUni::_z, [&](const xercesc::DOMElement* z) {
    const std::optional<double> location = stated::number(base, z, PlXUni::_location);
    if (location) last = location;
  });
  return last;
}

}  // namespace effects

#endif
