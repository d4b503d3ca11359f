#include "ticklabels.h"

#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxfacets.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "templatexml.h"

namespace {

// The axes of a matrix: the first level is x, the second y. They lie in no coordinates block.
std::vector<PlXAxis*> facetAxes(const PlXGraph& graph, const ChartString& role) {
  const PlXFacetLayout* layout = graph.getFacetLayout();
  if (!layout) return {};
  const std::vector<PlXFacetLevel*> levels = layout->getFacetLevels();
  if (role.equals(PlXUni::_x) && !levels.empty()) return levels[0]->getAxiss();
  if (role.equals(PlXUni::_y) && levels.size() > 1) return levels[1]->getAxiss();
  return {};
}

// The axes of the role's dimensions that lie in the role's coordinates block.
std::vector<PlXAxis*> dimensionAxes(const BaseTemplate& queries,
                                    const std::vector<PlXDimension*>& dimensions,
                                    const ChartString& role) {
  std::vector<PlXAxis*> axes;
  for (const PlXDimension* dimension : dimensions) {
    for (PlXAxis* axis : dimension->getAxiss()) {
      if (queries.doesCoordinateMatch(static_cast<const PlXBaseElement&>(*axis), role)) {
        axes.push_back(axis);
      }
    }
  }
  return axes;
}

}  // namespace

ticklabels::Selection::Selection(const BaseTemplate& base)
    : role(base.command ? base.command->getAttribute(PlXUni::_role) : nullptr),
      categorical(base.getBooleanAttribute(base.command, PlXUni::_categorical, false)),
      derived(base.getBooleanAttribute(base.command, BaseTemplate::_derived, false)) {}

bool ticklabels::edit(const BaseTemplate& queries, const Selection& selection,
                      const std::function<void(PlXMajorTicks&)>& edit) {
  bool hasRole = false;
  for (const PlXGraph* graph : queries.target.getGraphs()) {
    hasRole = false;
    if (queries.isRoleCategorical(*graph, selection.role) != selection.categorical) continue;
    std::vector<PlXAxis*> axes;
    if (queries.getFirstSPLOMElement(*graph)) {
      axes = facetAxes(*graph, selection.role);
    } else {
      const auto dimensions = queries.getDimensionsByRole(*graph, selection.role);
      axes = dimensionAxes(queries, dimensions, selection.role);
      hasRole = !dimensions.empty();
    }
    queries.becauseUnless(!axes.empty(), "there is no axis of the role", selection.role);
    for (const PlXAxis* axis : axes) {
      PlXMajorTicks* ticks = axis->getMajorTicks();
      if (ticks && queries.isAxisDerived(*axis) == selection.derived) edit(*ticks);
    }
  }
  return hasRole;
}
