// A graph as a view of Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWGRAPH_H
#define CHARTXML_TOOLS_DRAWGRAPH_H

#include "drawplane.h"

namespace draw {

// Null when nothing of the graph can be drawn. The size is that of its frame, in pixels. Its
// legends are in it unless `hasLegendsApart`, or it has panels: then they are left to the page.
Json drawGraph(DrawContext& context, const PlXGraph& graph, bool hasLegendsApart, double width,
               double height);

// All looks have scales of their own in each layer, and so legends of their own.
Json independentLooks();

}  // namespace draw

#endif
