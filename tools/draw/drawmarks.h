// Elements of a graph as layers of Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWMARKS_H
#define CHARTXML_TOOLS_DRAWMARKS_H

#include <optional>
#include <string>
#include <vector>

#include "drawplane.h"
#include "drawstatistics.h"

namespace draw {

// The panel that an element is drawn in.
struct DrawPanel {
  std::vector<std::string> fields;  // of the facets: a panel for each of their values
  std::vector<const DrawField*> facets;
  // In a matrix of variables: those of this cell, null elsewhere.
  const DrawField* x = nullptr;
  const DrawField* y = nullptr;
  bool isTable = false;     // each panel is one cell of a table
  bool isReversed = false;  // its values run the other way
};

// The layers of an element, the lowest first; none when it can't be drawn, which is told.
std::vector<Json> drawElement(DrawContext& context, const DrawPlane& plane,
                              const CTElementType& element, const DrawPanel& panel);

// Whether a condition on panels holds: nothing when it depends on the panel, or can't be made out.
// `test` gets the condition as an expression.
std::optional<bool> conditionOf(const PlXConditionalStyle& entry, const DrawPanel& panel,
                                std::string& test);

}  // namespace draw

#endif
