// Axes and their ticks.
#ifndef CHARTXML_TOOLS_DRAWAXES_H
#define CHARTXML_TOOLS_DRAWAXES_H

#include <optional>

#include "drawplane.h"

namespace draw {

// The axis of a dimension, or of a level of facets.
Json axisJson(DrawContext& context, const PlXAxis& axis, const DrawSide& side);

// What a derived axis shows: the value v stands where the main axis has `match` + v * `step`.
struct DerivedValues {
  double match = 0, step = 1;
};
// Nothing for an axis that isn't derived.
std::optional<DerivedValues> derivedValues(const PlXAxis& axis);
Json derivedAxisJson(DrawContext& context, const PlXAxis& axis, const DrawSide& side,
                     const DerivedValues& values);

}  // namespace draw

#endif
