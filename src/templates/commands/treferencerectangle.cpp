// addReferenceRectangle id x1 x2 y1 y2 xcategorical ycategorical name zOrder coordinate styleOnly,
// with children style and label: a band between two values of one dimension, that of x when x1 is
// stated; x2 counts only beside x1. A band without values covers the plot, and labels that no
// category has make none. With styleOnly the bands of the id, or with one of the values at its
// place, are restyled and reordered, and every band gets a style.
#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLChar.hpp>

#include "commands.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxuni.h"
#include "referenceguides.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;
using referenceguides::Block;
using referenceguides::Looks;
using referenceguides::Place;

namespace {

struct Parameters {
  ChartString id;
  Place x1, x2, y1, y2;
  ChartString name;
  bool hasOrder = false;
  int order = 0;
  long block = 0;
  bool styleOnly = false;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  parameters.id = command.getAttribute(PlXUni::_id);
  const bool xLabels = base.getBooleanAttribute(&command, u"xcategorical", false);
  const bool yLabels = base.getBooleanAttribute(&command, u"ycategorical", false);
  parameters.x1.state(command.getAttribute(PlXUni::_x1), xLabels);
  parameters.x2.state(command.getAttribute(PlXUni::_x2), xLabels);
  parameters.y1.state(command.getAttribute(PlXUni::_y1), yLabels);
  parameters.y2.state(command.getAttribute(PlXUni::_y2), yLabels);
  parameters.name = command.getAttribute(PlXUni::_name);
  const std::optional<long> order = stated::integer(base, &command, PlXUni::_zOrder);
  parameters.hasOrder = order.has_value();
  using Limits = std::numeric_limits<int>;
  parameters.order =
      static_cast<int>(std::clamp<long>(order.value_or(0), Limits::min(), Limits::max()));
  parameters.block = stated::selection(base, &command, PlXUni::_coordinate);
  parameters.styleOnly = isTrue(command, BaseTemplate::_styleOnly);
  return parameters;
}

bool isUnknown(const Place& place) {
  return place.isStated && place.value.empty();
}

// Whether a band has one of the two positions, where one that isn't stated is that of a band
// without.
bool meets(const Place& first, const XMLCh* has1, const Place& second, const XMLCh* has2) {
  if (!first.isStated && !second.isStated) return false;
  return (!isUnknown(first) && first.value.equals(has1)) ||
         (!isUnknown(second) && second.value.equals(has2));
}

bool isMeant(const PlXRectangleGuide& band, const Parameters& given) {
  return (!given.id.empty() && given.id.equals(band.getId())) ||
         meets(given.x1, band.getX1(), given.x2, band.getX2()) ||
         meets(given.y1, band.getY1(), given.y2, band.getY2());
}

// Null for one that isn't stated.
const XMLCh* textOf(const Place& place) {
  return place.isStated ? place.value.xc_str() : nullptr;
}

}  // namespace

bool TReferenceRectangle::ProcessCommand() {
  if (!command) return false;
  Parameters given = readParameters(*this, *command);
  if (given.id.empty() && !given.x1.isStated && !given.x2.isStated && !given.y1.isStated &&
      !given.y2.isStated) {
    return false;
  }
  const Looks looks(*this, *command);

  const auto restyle = [&](const PlXGraph& graph) {
    for (PlXRectangleGuide* band : graph.getRectangleGuides()) {
      if (!isMeant(*band, given)) {
        styleOf(*band);
        continue;
      }
      if (given.hasOrder) band->setZOrder(given.order);
      looks.restyle(*band);
    }
  };
  const auto add = [&](PlXGraph& graph, const Block& block) {
    const bool isOfX = given.x1.isStated;
    const Place& first = isOfX ? given.x1 : given.y1;
    const Place& second = isOfX ? given.x2 : given.y2;
    if (isUnknown(first) || isUnknown(second)) return;
    PlXRectangleGuide& band = *graph.addRectangleGuide();
    if (XMLChar1_0::isValidNCName(given.id.xc_str(), given.id.length())) {
      const bool isTaken = target.doesIdExist(given.id.xc_str());
      band.setId(isTaken ? CreateUniqueId(given.id).xc_str() : given.id.xc_str());
    }
    if (isOfX) {
      band.setX1(textOf(first));
      band.setX2(textOf(second));
    } else {
      band.setY1(textOf(first));
      band.setY2(textOf(second));
    }
    if (block.link) band.setCoordinates(*block.link);
    if (!given.name.empty()) band.setName(given.name.xc_str());
    if (given.hasOrder) band.setZOrder(given.order);
    looks.dress(band, !given.y1.value.empty());
  };
  for (PlXGraph* graph : target.getGraphs()) {
    const Block block = referenceguides::blockAt(*graph, given.block);
    if (isGraphPolar(*graph) || !block.exists) continue;
    for (Place* place : {&given.x1, &given.x2}) place->findCategory(*this, *graph, PlXUni::_x);
    for (Place* place : {&given.y1, &given.y2}) place->findCategory(*this, *graph, PlXUni::_y);
    if (given.styleOnly) {
      restyle(*graph);
    } else {
      add(*graph, block);
    }
  }
  return true;
}
