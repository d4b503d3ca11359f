// setWireFrame complete, with a child style: styles the frame of a chart with depth, which is added
// when there is none. `complete` draws all twelve edges. Without a style nothing changes.
#include "commands.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxuni.h"
#include "templatexml.h"

bool TSetWireFrame::ProcessCommand() {
  const auto* style = templatexml::firstDescendant(command, PlXUni::_style);
  if (!style) return false;
  const bool complete = getBooleanAttribute(command, PlXUni::_complete, false);
  for (PlXGraph* graph : target.getGraphs()) {
    if (!isChartTrue3D(*graph)) continue;
    if (graph->getFrameGuides().empty()) graph->addFrameGuide();
    for (PlXFrameGuide* guide : graph->getFrameGuides()) {
      importStyle(style, styleOf(*guide));
      guide->setComplete(complete);
    }
  }
  return true;
}
