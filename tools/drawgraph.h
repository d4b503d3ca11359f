// A graph as a view of Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWGRAPH_H
#define CHARTXML_TOOLS_DRAWGRAPH_H

#include "drawplane.h"

// Null when nothing of the graph can be drawn. The size is that of its frame, in pixels.
Json drawGraph(DrawContext& context, const PlXGraph& graph, double width, double height);

#endif
