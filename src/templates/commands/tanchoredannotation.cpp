// addAnchoredAnnotation x y z, xcategorical ycategorical zcategorical, name styleOnly, with
// children label and parameter: pins a label to a place in the data, by an invisible point guide. A
// categorical coordinate is the label of a category; a graph without the category of x is passed
// over, and so is a polar graph. styleOnly restyles the labels of the guides at the place instead.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "matrixpanels.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxlabel.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Coordinate {
  const XMLCh* role;
  const XMLCh* categoricalName;
  const XMLCh* (PlXPointGuide::*get)() const;
  void (PlXPointGuide::*set)(const XMLCh*);
};

const Coordinate coordinates[] = {
    {PlXUni::_x, u"xcategorical", &PlXPointGuide::getX, &PlXPointGuide::setX},
    {PlXUni::_y, u"ycategorical", &PlXPointGuide::getY, &PlXPointGuide::setY},
    {PlXUni::_z, u"zcategorical", &PlXPointGuide::getZ, &PlXPointGuide::setZ},
};

// The texts of x, y and z; empty where none is given.
using Place = ChartString[std::size(coordinates)];

struct Position {
  Place texts;
  bool categorical[std::size(coordinates)] = {};
};

// A parameter stands for an attribute that is empty; of several the first counts. There is none
// for z.
Position readPosition(const BaseTemplate& base, const DOMElement& command) {
  Position position;
  for (std::size_t i = 0; i < std::size(coordinates); ++i) {
    const Coordinate& coordinate = coordinates[i];
    ChartString& text = position.texts[i];
    bool& categorical = position.categorical[i];
    text = command.getAttribute(coordinate.role);
    categorical = base.getBooleanAttribute(&command, coordinate.categoricalName, false);
    bool isKnown = !text.empty() || coordinate.role == PlXUni::_z;
    forDescendants(&command, PlXUni::_parameter, [&](const DOMElement* parameter) {
      if (isKnown || !is(parameter->getAttribute(PlXUni::_name), coordinate.role)) return;
      isKnown = true;
      text = parameter->getAttribute(PlXUni::_value);
      categorical = base.getBooleanAttribute(parameter, PlXUni::_categorical, categorical);
    });
  }
  return position;
}

// An empty text is any place.
bool isAt(const PlXPointGuide& guide, const Place& place) {
  for (std::size_t i = 0; i < std::size(coordinates); ++i) {
    const ChartString& wanted = place[i];
    const auto get = coordinates[i].get;
    const ChartString there((guide.*get)());
    if (wanted.empty() || wanted.equals(there)) continue;
    const bool areNumbers = wanted.isNumber() && there.isNumber();
    if (!areNumbers || wanted.convertToDouble() != there.convertToDouble()) return false;
  }
  return true;
}

}  // namespace

bool TAnchoredAnnotation::ProcessCommand() {
  if (!command) return false;
  const DOMElement* labelElement = firstDescendant(command, PlXUni::_label);
  const Position position = readPosition(*this, *command);
  if (!labelElement || position.texts[0].empty()) return false;
  const bool styleOnly = getBooleanAttribute(command, _styleOnly, false);
  const ChartString name = attribute(PlXUni::_name);

  const auto restyle = [&](PlXPointGuide& guide) {
    ensuredStyle<PlXPointGuide>(guide, &PlXPointGuide::getStyle, &PlXPointGuide::setStyle);
    for (PlXLabel* label : guide.getLabels()) styleLabel(*label, labelElement);
  };
  const auto annotate = [&](PlXGraph& graph, const Place& place) {
    PlXPointGuide* guide = graph.addPointGuide();
    for (std::size_t i = 0; i < std::size(coordinates); ++i) {
      const bool isX = i == 0;
      const auto& [role, unused, get, set] = coordinates[i];
      const bool hasPlace = !place[i].empty() && (isX || !getDimensionsByRole(graph, role).empty());
      if (hasPlace) (guide->*set)(place[i].xc_str());
    }
    PlXStyle& mark = styleOf(*guide);
    mark.setColor(PlXStyle::_transparent);
    mark.setColor2(PlXStyle::_transparent);
    mark.setSymbol(PlXUni::_none);
    if (!name.empty()) guide->setName(name.xc_str());
    PlXLabel* label = guide->addLabel();
    ensuredStyle(*label, &PlXLabel::getTextFrameStyle, &PlXLabel::setTextFrameStyle)
        .setColor(PlXStyle::_white);
    mergeText(labelElement, *label);
    styleLabel(*label, labelElement);
    if (!getFirstSPLOMElement(graph)) return;
    // Not in the panels on the diagonal
    matrixpanels::hideWhere(*this, *guide, _when);
  };

  std::vector<PlXGraph*> graphs;
  getGraphs(graphs);
  for (PlXGraph* graph : graphs) {
    if (isGraphPolar(*graph)) continue;
    Place place;
    for (std::size_t i = 0; i < std::size(coordinates); ++i) {
      const ChartString& text = position.texts[i];
      place[i] =
          position.categorical[i] ? getCategoryValue(*graph, coordinates[i].role, text) : text;
    }
    if (place[0].empty()) continue;
    if (!styleOnly) {
      annotate(*graph, place);
      continue;
    }
    for (PlXPointGuide* guide : graph->getPointGuides()) {
      if (isAt(*guide, place)) restyle(*guide);
    }
  }
  return true;
}
