// setWrapPanels wrap: lets the panels of a graph go on in the next row, or puts them on a grid.
// False for a chart without graphs.
#include "commands.h"
#include "plxfacets.h"
#include "plxframes.h"
#include "plxgraph.h"

bool TSetWrapPanels::ProcessCommand() {
  const std::vector<PlXGraph*> graphs = target.getGraphs();
  if (!command || graphs.empty()) return false;
  const bool wrap = getBooleanAttribute(command, u"wrap", false);
  for (const PlXGraph* graph : graphs) {
    PlXFacetLayout* layout = graph->getFacetLayout();
    if (!layout) continue;
    layout->setMethod(wrap ? PlXFacetLayout::method_wrap : PlXFacetLayout::method_grid);
  }
  return true;
}
