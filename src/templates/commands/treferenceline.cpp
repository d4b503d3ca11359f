// addReferenceLine x y z xcategorical ycategorical zcategorical name coordinate numberPoints
// styleOnly, with children parameter (x or y), style and label: a line at each value, or with
// numberPoints the curve of the function y. Of several lines the last alone gets the name, the
// block, the label and the style. Without a line to add, and with styleOnly, the lines at all of
// the values are restyled, and every line gets a style. A label of a category becomes its value in
// the first graph, and other graphs look that value up in its place.
#include <array>
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "matrixpanels.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxfacets.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxstyle.h"
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

constexpr std::size_t roleCount = 3;
const std::array<const XMLCh*, roleCount> roles = {PlXUni::_x, PlXUni::_y, PlXUni::_z};
enum : std::size_t { x, y, z };

struct Parameters {
  std::array<Place, roleCount> places;
  bool isFunction = false;
  unsigned segments = 0;
  bool styleOnly = false;
  ChartString name;
  long block = 0;
};

unsigned segmentsOf(long number) {
  constexpr unsigned usual = 100;
  const bool isUsable = number > 1 && static_cast<unsigned long>(number) <= mostCounted;
  return isUsable ? static_cast<unsigned>(number) : usual;
}

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  static const std::array<const XMLCh*, roleCount> flags = {u"xcategorical", u"ycategorical",
                                                            u"zcategorical"};
  for (std::size_t role = 0; role < roleCount; ++role) {
    parameters.places[role].state(command.getAttribute(roles[role]),
                                  base.getBooleanAttribute(&command, flags[role], false));
  }
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    if (!is(child->getNodeName(), PlXUni::_parameter)) continue;
    for (const std::size_t role : {x, y}) {
      Place& place = parameters.places[role];
      const XMLCh* value = child->getAttribute(PlXUni::_value);
      if (place.isStated || !is(child->getAttribute(PlXUni::_name), roles[role])) continue;
      place.state(value, base.getBooleanAttribute(child, PlXUni::_categorical, false));
    }
  }
  const std::optional<long> points = stated::integer(base, &command, PlXUni::_numberPoints);
  parameters.isFunction = points.has_value();
  parameters.segments = segmentsOf(points.value_or(0));
  parameters.styleOnly = isTrue(command, BaseTemplate::_styleOnly);
  parameters.name = command.getAttribute(PlXUni::_name);
  parameters.block = stated::selection(base, &command, PlXUni::_coordinate);
  return parameters;
}

// One run of the command.
class ReferenceLines {
 public:
  ReferenceLines(BaseTemplate& base, const DOMElement& command, Parameters& parameters)
      : base_(base), given_(parameters), looks_(base, command) {}

  void edit(PlXGraph& graph) {
    const PlXFacetLayout* layout = graph.getFacetLayout();
    if ((layout && !layout->getTableLayouts().empty()) || base_.isGraphPolar(graph)) return;
    const Block block = referenceguides::blockAt(graph, given_.block);
    if (!block.exists) return;
    if (given_.isFunction) return editFunctions(graph, block);
    for (std::size_t role = 0; role < roleCount; ++role) {
      given_.places[role].findCategory(base_, graph, roles[role]);
    }
    PlXLineGuide* line = given_.styleOnly ? nullptr : addLines(graph);
    if (line) {
      finish(*line, graph, block);
    } else {
      restyleLines(graph);
    }
  }

 private:
  // Answers the last one; null when there is none.
  PlXLineGuide* addLines(PlXGraph& graph) const {
    PlXLineGuide* line = nullptr;
    if (const ChartString& value = given_.places[x].value; !value.empty()) {
      (line = graph.addLineGuide())->setX(value.xc_str());
    }
    if (const ChartString& value = given_.places[y].value; hasDimension(graph, y)) {
      (line = graph.addLineGuide())->setY(value.xc_str());
    }
    if (const ChartString& value = given_.places[z].value; hasDimension(graph, z)) {
      (line = graph.addLineGuide())->setZ(value.xc_str());
    }
    return line;
  }

  // And a value on it.
  bool hasDimension(const PlXGraph& graph, std::size_t role) const {
    return !given_.places[role].value.empty() &&
           !base_.getDimensionsByRole(graph, roles[role]).empty();
  }

  template <class Guide>
  void finish(Guide& guide, const PlXGraph& graph, const Block& block) const {
    if (block.link) guide.setCoordinates(*block.link);
    if (!given_.name.empty()) guide.setName(given_.name.xc_str());
    looks_.dress(guide, !given_.places[y].value.empty());
    if (!base_.getFirstSPLOMElement(graph)) return;
    // The cells on the diagonal of a matrix have a scale of their own.
    matrixpanels::hideWhere(base_, guide, BaseTemplate::_when);
  }

  void restyleLines(const PlXGraph& graph) const {
    for (PlXLineGuide* line : graph.getLineGuides()) {
      if (isMeant(*line)) {
        looks_.restyle(*line);
      } else {
        base_.styleOf(*line);
      }
    }
  }

  bool isMeant(const PlXLineGuide& line) const {
    const std::array<const XMLCh*, roleCount> values = {line.getX(), line.getY(), line.getZ()};
    for (std::size_t role = 0; role < roleCount; ++role) {
      const Place& place = given_.places[role];
      // A label that no category has is no line's.
      if (place.isStated && (place.value.empty() || !place.value.equals(values[role]))) {
        return false;
      }
    }
    return true;
  }

  void editFunctions(PlXGraph& graph, const Block& block) const {
    for (const XMLCh* role : roles) {
      if (base_.isRoleCategorical(graph, role)) return;
    }
    if (!given_.styleOnly) {
      PlXFunctionGuide& curve = *graph.addFunctionGuide();
      curve.setSegments(given_.segments);
      const ChartString& function = given_.places[y].value;
      if (!function.empty()) curve.setValue(function.xc_str());
      return finish(curve, graph, block);
    }
    for (PlXFunctionGuide* curve : graph.getFunctionGuides()) {
      if (!block.link || curve->getCoordinates() == block.link) looks_.restyle(*curve);
    }
  }

  BaseTemplate& base_;
  Parameters& given_;
  const Looks looks_;
};

}  // namespace

bool TReferenceLine::ProcessCommand() {
  if (!command) return false;
  Parameters parameters = readParameters(*this, *command);
  bool isAnyStated = false;
  for (const Place& place : parameters.places) isAnyStated = isAnyStated || place.isStated;
  if (!isAnyStated && !parameters.styleOnly) return false;
  ReferenceLines lines(*this, *command, parameters);
  for (PlXGraph* graph : target.getGraphs()) lines.edit(*graph);
  return true;
}
