// Guides of graphs, and texts, as layers and views of Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWGUIDES_H
#define CHARTXML_TOOLS_DRAWGUIDES_H

#include <string>
#include <vector>

#include "drawmarks.h"
#include "drawplane.h"

namespace draw {

// The layers of a guide; none when it can't be drawn, which is told.
std::vector<Json> drawGuide(DrawContext& context, const DrawPlane& plane, const CTGuideType& guide,
                            const DrawPanel& panel);

// The text of a label with computed values; the label may be null. Lines end with '\n'.
std::string labelTextWithValues(DrawContext& context, const CTLabelType* label);

// Lines that are no longer than `pixels`, as far as that can be told without the font.
std::vector<std::string> wrapped(const std::string& text, double pixels, double fontSize);

}  // namespace draw

#endif
