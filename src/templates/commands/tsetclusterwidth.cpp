// setClusterWidth role gap: the gap between the clusters along y or z, along x for any other role.
// Without a gap it is 0%. Answers false when no dimension has clusters.
#include "commands.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"
#include "statedvalues.h"

bool TSetClusterWidth::ProcessCommand() {
  if (!command) return false;
  ChartString gap = stated::text(*this, command, PlXUni::_gap, stated::Type::Length);
  if (gap.empty()) gap = u"0%";
  ChartString role = attribute(PlXUni::_role);
  if (!role.equals(PlXUni::_y) && !role.equals(PlXUni::_z)) role = PlXUni::_x;
  bool isSet = false;
  for (const PlXGraph* graph : target.getGraphs()) {
    for (PlXDimension* dimension : getDimensionsByRole(*graph, role)) {
      if (!dimension->getClusterVariable()) continue;
      dimension->setClusterGap(gap.xc_str());
      isSet = true;
    }
  }
  return isSet;
}
