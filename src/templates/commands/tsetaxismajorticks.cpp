// setAxisMajorTicks with a child majorTicks (role derived categorical, and all that ticks have):
// makes and styles the major ticks of the axes of a role. Polar graphs that have no ticks get none,
// and a scatterplot matrix loses those of the role.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "objectsbytag.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

bool TSetAxisMajorTicks::ProcessCommand() {
  const DOMElement* ticks = ticksElement(PlXUni::_majorTicks, u"majorticks");
  if (!ticks) return false;
  const ChartString role(ticks->getAttribute(PlXUni::_role));
  const bool derived = getBooleanAttribute(ticks, _derived, false);
  const ChartString categorical(ticks->getAttribute(PlXUni::_categorical));
  for (const PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph) &&
        objectsByTag<PlXMajorTicks>(*graph, PlXMajorTicks::_UTF_majorTicks).empty()) {
      continue;
    }
    if (!categorical.empty() &&
        isRoleCategorical(*graph, role) != categorical.equals(PlXUni::_true)) {
      continue;
    }
    const bool isMatrix = getFirstSPLOMElement(*graph) != nullptr;
    for (const PlXDimension* dimension : getDimensionsByRole(*graph, role)) {
      const std::vector<PlXAxis*> axes = dimension->getAxiss();
      becauseUnless(!axes.empty(), "there is no axis of the role", role);
      for (PlXAxis* axis : axes) {
        if (isMatrix) {
          axis->removeMajorTickss();
        } else if (isAxisDerived(*axis) == derived) {
          // Ticks of an axis outside the role's block are styled all the same.
          PlXMajorTicks* major = setMajorTicks(*axis, ticks) ? nullptr : axis->getMajorTicks();
          if (major) styleMajorTicks(*major, ticks);
        }
      }
    }
  }
  return true;
}
