// setAxisMargin role upperMargin lowerMargin categorical: the margins at the ends of the dimensions
// of a role, as percentages such as "5%". With `categorical` true it acts on categorical roles
// only, else on the others only. A margin that the source chart states stays; graphs with parallel
// coordinates have none.
#include "commands.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "statedvalues.h"

namespace {

bool hasParallelCoordinates(const PlXGraph& graph) {
  for (const PlXCoordinates* block : graph.getCoordinatess()) {
    if (!block->getParallelCoordinatesTransforms().empty()) return true;
  }
  return false;
}

}  // namespace

bool TSetAxisMargin::ProcessCommand() {
  if (!command) return false;
  const ChartString role = attribute(PlXUni::_role);
  const ChartString upper =
      stated::text(*this, command, PlXUni::_upperMargin, stated::Type::Length);
  const ChartString lower =
      stated::text(*this, command, PlXUni::_lowerMargin, stated::Type::Length);
  const bool categorical = attribute(PlXUni::_categorical).equals(PlXUni::_true);
  for (const PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph) || isRoleCategorical(*graph, role) != categorical ||
        hasParallelCoordinates(*graph)) {
      continue;
    }
    for (PlXDimension* dimension : getDimensionsByRole(*graph, role)) {
      const PlXDimension* pinned = sourceOf(*dimension);
      if (!upper.empty() && !(pinned && *pinned->getUpperMargin())) {
        dimension->setUpperMargin(upper.xc_str());
      }
      if (!lower.empty() && !(pinned && *pinned->getLowerMargin())) {
        dimension->setLowerMargin(lower.xc_str());
      }
    }
  }
  return true;
}
