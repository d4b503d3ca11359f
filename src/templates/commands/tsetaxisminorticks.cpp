// setAxisMinorTicks with a child minorTicks (role derived, and all that ticks have): makes and
// styles the minor ticks of the axes of a role beside their major ticks. Polar graphs that have
// none get none, and in a scatterplot matrix only those that are there are styled.
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

bool TSetAxisMinorTicks::ProcessCommand() {
  const DOMElement* ticks = ticksElement(PlXUni::_minorTicks, u"minorticks");
  if (!ticks) return false;
  const ChartString role(ticks->getAttribute(PlXUni::_role));
  const bool derived = getBooleanAttribute(ticks, _derived, false);
  for (const PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph) &&
        objectsByTag<PlXMinorTicks>(*graph, PlXMinorTicks::_UTF_minorTicks).empty()) {
      continue;
    }
    const bool isMatrix = getFirstSPLOMElement(*graph) != nullptr;
    for (const PlXDimension* dimension : getDimensionsByRole(*graph, role)) {
      for (PlXAxis* axis : dimension->getAxiss()) {
        if (isAxisDerived(*axis) != derived) continue;
        const bool isStyled = !isMatrix && setMinorTicks(*axis, ticks);
        PlXMinorTicks* minor = isStyled ? nullptr : axis->getMinorTicks();
        if (minor) styleMinorTicks(*minor, ticks, axis->getMajorTicks());
      }
    }
  }
  return true;
}
