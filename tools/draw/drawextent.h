// Bounds of what elements draw, without drawing it.
#ifndef CHARTXML_TOOLS_DRAWEXTENT_H
#define CHARTXML_TOOLS_DRAWEXTENT_H

#include "drawplane.h"

namespace draw {

// Takes the bounds of all that the element's statistic draws into the side of its values. Those of
// plain values, of means and the like are those of the variable.
void extendBy(DrawContext& context, const CTElementType& element, DrawSide& side);

}  // namespace draw

#endif
