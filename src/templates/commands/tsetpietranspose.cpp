// setPieTranspose startAngle cycles counterClockwise, with children parameter (startAngle, ccw):
// where a polar graph starts, in degrees, how often it goes round, and which way. All three are set
// anew: what isn't stated is 0, 1 and with the clock.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Parameters {
  double startAngle = 0;
  double cycles = 1;
  bool counterClockwise = false;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  const auto angle = stated::numberOrParameter(base, command, PlXUni::_startAngle);
  parameters.startAngle = angle.value_or(parameters.startAngle);
  parameters.cycles = stated::number(base, &command, PlXUni::_cycles).value_or(parameters.cycles);
  parameters.counterClockwise =
      attributeOrParameter(command, PlXUni::_counterClockwise, u"ccw").equals(PlXUni::_true);
  return parameters;
}

}  // namespace

bool TSetPieTranspose::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
  for (const PlXGraph* graph : target.getGraphs()) {
    if (!isGraphPolar(*graph)) continue;
    for (const PlXCoordinates* block : graph->getCoordinatess()) {
      for (PlXPolarTransform* transform : block->getPolarTransforms()) {
        transform->setStartAngle(parameters.startAngle);
        transform->setCycles(parameters.cycles);
        transform->setCounterClockwise(parameters.counterClockwise);
      }
    }
  }
  return true;
}
