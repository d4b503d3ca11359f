// addPieEffects graph depth phi theta distance zLocation, with children parameter and z (location):
// tilts the pies of the polar graphs that it addresses, which lose their shadow, their inset and
// all dimensions but the first; a block that is transposed keeps its dimensions. Of the three
// numbers one that is stated makes a new rectangular transform. Answers whether there is a pie.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "effects.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "statedvalues.h"

using namespace xercesc;

namespace {

struct Parameters {
  ChartString depth;
  std::optional<double> theta, distance, phi;
  std::optional<double> zLocation;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  return {.depth = stated::text(base, &command, PlXUni::_depth, stated::Type::Length),
          .theta = stated::numberOrParameter(base, command, PlXUni::_theta),
          .distance = stated::numberOrParameter(base, command, PlXUni::_distance),
          .phi = stated::numberOrParameter(base, command, PlXUni::_phi),
          .zLocation = effects::zLocation(base, command)};
}

// Of four dimensions two stay.
void flatten(PlXCoordinates& block) {
  if (!block.getTransposeTransforms().empty()) return;
  const std::size_t count = block.getDimensions().size();
  if (count > 2) block.removeDimension(2);
  if (count > 1) block.removeDimension(1);
}

void tilt(PlXCoordinates& block, const Parameters& given) {
  block.removeInsetTransforms();
  if (!given.theta && !given.distance && !given.phi) return;
  block.removeRectangularTransforms();
  PlXRectangularTransform& turned = *block.addRectangularTransform();
  if (given.theta) turned.setTheta(*given.theta);
  if (given.distance) turned.setDistance(*given.distance);
  if (given.phi) turned.setPhi(*given.phi);
}

void removeShadow(PlXStyle& style) {
  style.removeShadow_color();
  style.removeShadow_opacity();
  style.removeShadow_dx();
  style.removeShadow_dy();
}

}  // namespace

bool TAddPieEffects::ProcessCommand() {
  if (!command) return false;
  const Parameters given = readParameters(*this, *command);
  std::vector<PlXInterval*> pies;
  getIntervalElements(pies, true);
  bool isAny = false;
  for (PlXInterval* pie : pies) {
    DOMNode* parent = pie->getImplementation()->getParentNode();
    auto* graph = dynamic_cast<PlXGraph*>(target.objectOf(static_cast<DOMElement*>(parent)));
    if (!graph) continue;
    for (PlXCoordinates* block : graph->getCoordinatess()) {
      flatten(*block);
      tilt(*block, given);
    }
    isAny = true;
    PlXStyle& style =
        ensuredStyle(*pie, &CTElementType::getStyle, &CTElementType::setStyle, pie->getId());
    removeShadow(style);
    if (given.zLocation) pie->setZLocation(*given.zLocation);
    if (!given.depth.empty()) style.setDepth(given.depth.xc_str());
  }
  return isAny;
}
