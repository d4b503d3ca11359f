// addInterpolationLine, with a child interpolation (type, primary, pointPosition,
// missingRepresentation) and a style: joins the points of each element by a new line of its own,
// straight, stepped or smooth, which shows the groups of the element. Without primary="true" it is
// for the elements of the second axis y2. Lines get none, nor do clustered graphs. The lines have
// no entries in legends but those of their groups.
#include <xercesc/dom/DOM.hpp>

#include "colors.h"
#include "commands.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

PlXSmoothStatistic::ENUM_method stepOf(const XMLCh* pointPosition) {
  if (is(pointPosition, PlXUni::_left)) return PlXSmoothStatistic::method_stepLeft;
  if (is(pointPosition, PlXUni::_right)) return PlXSmoothStatistic::method_stepRight;
  return PlXSmoothStatistic::method_stepCenter;
}

void interpolate(PlXLine& line, const DOMElement& interpolation) {
  const XMLCh* type = interpolation.getAttribute(PlXUni::_type);
  if (!is(type, PlXUni::_linear)) {
    PlXSmoothStatistic& statistic = BaseTemplate::smoothStatisticOf(line);
    const bool isStep = is(type, PlXUni::_step);
    const bool isJump = is(type, PlXUni::_jump);
    const bool isSpline = is(type, PlXUni::_spline);
    if (isStep || isJump) statistic.setMethod(stepOf(interpolation.getAttribute(u"pointPosition")));
    if (isSpline) statistic.setMethod(PlXSmoothStatistic::method_spline);
    if (isStep || isJump || isSpline) line.setShowDiscontinuity(!isStep);
  }
  const XMLCh* missing = interpolation.getAttribute(PlXUni::_missingRepresentation);
  if (is(missing, PlXUni::_gap)) line.setBreakRepresentation(PlXLine::breakRepresentation_gap);
  if (is(missing, PlXUni::_wings)) line.setBreakRepresentation(PlXLine::breakRepresentation_wings);
  if (is(missing, PlXUni::_interpolated) || is(missing, u"interpolate")) {
    line.setBreakRepresentation(PlXLine::breakRepresentation_interpolated);
  }
}

// That of a point's outline, or of the element; empty for none.
const XMLCh* colorOf(const CTElementType& element) {
  const PlXStyle* style = element.getStyle();
  if (!style) return u"";
  const bool isPoint = dynamic_cast<const PlXPoint*>(&element);
  if (isPoint && colors::isColor(style->getColor2())) return style->getColor2();
  return colors::isColor(style->getColor()) ? style->getColor() : u"";
}

}  // namespace

bool TInterpolationLine::ProcessCommand() {
  const DOMElement* interpolation = firstDescendant(command, PlXUni::_interpolation);
  if (!interpolation) return false;
  const StyleImport imported(*this, firstDescendant(command, PlXUni::_style));
  const bool primary = isTrue(*interpolation, u"primary");
  const ChartString role(primary ? PlXUni::_y : _y2);

  const auto addLine = [&](PlXGraph& graph, PlXCoordinates& block, const CTElementType& element) {
    PlXLine* line = graph.addLine(CreateUniqueId(PlXUni::_line).xc_str());
    line->setCoordinates(block);
    line->addSummaryStatistic()->setMethod(PlXSummaryStatistic::method_value);
    PlXStyle& style = styleOf<CTElementType>(*line);
    const XMLCh* color = colorOf(element);
    if (*color) style.setColor(color);
    imported.onto(style);
    cloneElementChildren(element, *line, true);
    changeColor2ToColor(*line, false);
    interpolate(*line, *interpolation);
  };
  const std::vector<PlXGraph*> graphs = target.getGraphs();
  for (PlXGraph* graph : graphs) {
    if (isGraphClustered(*graph) || getDimensionsByRole(*graph, role).empty()) continue;
    PlXCoordinates* block = graph->getCoordinates(primary ? 0 : 1);
    if (!block) continue;
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    for (const CTElementType* element : elements) {
      if (dynamic_cast<const PlXLine*>(element)) continue;
      if (element->getCoordinates() && element->getCoordinates() != block) continue;
      addLine(*graph, *block, *element);
    }
  }
  return !graphs.empty();
}
