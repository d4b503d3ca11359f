// Colours that lines take from the styles of what they stand beside.
#ifndef CHARTXML_COLORS_H
#define CHARTXML_COLORS_H

#include <xercesc/util/XMLString.hpp>

#include "plxstyle.h"

namespace colors {

// False for an empty or transparent one.
inline bool isColor(const XMLCh* color) {
  return *color && !xercesc::XMLString::equals(color, PlXStyle::_transparent);
}

// A style's first colour, else its second; null when it has neither, and for no style.
inline const XMLCh* colorOf(const PlXStyle* style) {
  if (!style) return nullptr;
  if (isColor(style->getColor())) return style->getColor();
  return isColor(style->getColor2()) ? style->getColor2() : nullptr;
}

}  // namespace colors

#endif
