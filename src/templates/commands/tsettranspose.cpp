// setTranspose transpose: exchanges the first two dimensions of every block, or puts them back.
// Polar graphs are passed over: their dimensions are an angle and a radius.
#include "commands.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"

bool TSetTranspose::ProcessCommand() {
  if (!command) return false;
  const bool transpose = getBooleanAttribute(command, u"transpose", false);
  for (const PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph)) continue;
    for (PlXCoordinates* block : graph->getCoordinatess()) {
      if (!transpose) {
        block->removeTransposeTransforms();
      } else if (block->getTransposeTransforms().empty()) {
        block->addTransposeTransform();
      }
    }
  }
  return true;
}
