// setAxisOpposite role categorical opposite: the side of the axes of a role. `categorical` true
// acts on categorical roles only, another text on the others only, none on both. The first axis
// takes the side, a second one the other side.
#include "commands.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"

bool TSetAxisOpposite::ProcessCommand() {
  if (!command) return false;
  const ChartString role = attribute(PlXUni::_role);
  const ChartString categorical = attribute(PlXUni::_categorical);
  const bool opposite = attribute(PlXUni::_opposite).equals(PlXUni::_true);
  for (const PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph)) continue;
    if (!categorical.empty() &&
        isRoleCategorical(*graph, role) != categorical.equals(PlXUni::_true)) {
      continue;
    }
    for (const PlXDimension* dimension : getDimensionsByRole(*graph, role)) {
      const std::vector<PlXAxis*> axes = dimension->getAxiss();
      becauseUnless(!axes.empty(), "there is no axis of the role", role);
      if (!axes.empty()) axes[0]->setOpposite(opposite);
      if (axes.size() > 1) axes[1]->setOpposite(!opposite);
    }
  }
  return true;
}
