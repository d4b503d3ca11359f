// A chart as a plot of Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWCHART_H
#define CHARTXML_TOOLS_DRAWCHART_H

#include "drawing.h"

namespace draw {

// The version of Vega-Lite that plots are for.
constexpr char vegaLiteVersion[] = "6";
constexpr char vegaVersion[] = "6";

// Null when nothing of the chart can be drawn.
Json drawChart(const PlXVisualization& chart, DrawNotes& notes);

}  // namespace draw

#endif
