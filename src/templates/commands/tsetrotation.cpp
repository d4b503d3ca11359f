// setRotation method and numbers, the first seven of them also as children parameter: from where a
// chart with depth is seen. Every block gets a new transform, oblique or in perspective, with no
// more than what is stated; numbers of the other kind are passed over. dx is written as the shift
// along y and dy as that along x.
#include <utility>

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

template <class Transform>
using Setter = void (Transform::*)(double);

template <class Transform>
struct Setting {
  const XMLCh* name;
  Setter<Transform> set;
  bool isParameter = true;
};

using Oblique = PlXObliqueTransform;
using Rectangular = PlXRectangularTransform;

const Setting<Oblique> obliqueSettings[] = {
    {PlXUni::_distance, &Oblique::setDistance},
    {PlXUni::_theta, &Oblique::setTheta},
    {PlXUni::_xscale, &Oblique::setXscale},
    {u"yscale", &Oblique::setYscale},
    {PlXUni::_foreShortening, &Oblique::setForeShortening, false},
    {PlXUni::_dx, &Oblique::setDy, false},
    {PlXUni::_dy, &Oblique::setDx, false},
};

const Setting<Rectangular> rectangularSettings[] = {
    {PlXUni::_distance, &Rectangular::setDistance},
    {PlXUni::_zeta, &Rectangular::setZeta},
    {PlXUni::_phi, &Rectangular::setPhi},
    {PlXUni::_theta, &Rectangular::setTheta},
    {PlXUni::_xscale, &Rectangular::setXscale},
    {u"yscale", &Rectangular::setYscale},
    {u"zscale", &Rectangular::setZscale},
    {PlXUni::_projectionDistance, &Rectangular::setProjectionDistance, false},
    {PlXUni::_dx, &Rectangular::setDy, false},
    {PlXUni::_dy, &Rectangular::setDx, false},
};

template <class Transform>
class Values {
 public:
  template <class Settings>
  Values(const BaseTemplate& base, const DOMElement& command, const Settings& settings) {
    for (const Setting<Transform>& each : settings) {
      const auto value = each.isParameter ? stated::numberOrParameter(base, command, each.name)
                                          : stated::number(base, &command, each.name);
      if (value) values_.emplace_back(each.set, *value);
    }
  }
  void write(Transform& transform) const {
    for (const auto& [set, value] : values_) (transform.*set)(value);
  }

 private:
  std::vector<std::pair<Setter<Transform>, double>> values_;
};

}  // namespace

bool TSetRotation::ProcessCommand() {
  if (!command) return false;
  const bool isOblique = attribute(PlXUni::_method).equals(u"oblique");
  const Values<Oblique> oblique(*this, *command, obliqueSettings);
  const Values<Rectangular> rectangular(*this, *command, rectangularSettings);
  for (const PlXGraph* graph : target.getGraphs()) {
    if (!isChartTrue3D(*graph)) continue;
    for (PlXCoordinates* block : graph->getCoordinatess()) {
      block->removeRectangularTransforms();
      block->removeObliqueTransforms();
      if (isOblique) {
        oblique.write(*block->addObliqueTransform());
      } else {
        rectangular.write(*block->addRectangularTransform());
      }
    }
  }
  return true;
}
