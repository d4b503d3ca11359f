// setPanelOptions gap mirror role, with children axisStyle, axisLabelStyle,
// axisLabelTextFrameStyle, tickLabelStyle and markStyle: the gap between panels, whether every
// second one is mirrored, and the styles of their axes, which get those that they lack. What the
// source reflects keeps its reflections, and a gap that it states keeps its length, unless that is
// 20px, as in every new chart. Panels of a matrix, or beside mirrored ones, always touch.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "objectsbytag.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxfacets.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

// ---- mirrored panels
struct Mirror {
  bool x = false;
  bool y = false;
  bool none = false;
};

Mirror readMirror(const DOMElement& command) {
  const ChartString word(command.getAttribute(u"mirror"));
  if (word.empty()) return {};
  if (!word.equals(PlXUni::_true)) return {.none = true};
  const XMLCh* role = command.getAttribute(PlXUni::_role);
  return {.x = !is(role, PlXUni::_y), .y = !is(role, PlXUni::_x)};
}

// There is one reflection, of y when both dimensions are asked for.
void mirrorPanels(PlXCoordinates& block, const Mirror& mirror) {
  if (mirror.none) block.removeReflectionTransforms();
  if (!mirror.x && !mirror.y) return;
  const std::vector<PlXReflectionTransform*> transforms = block.getReflectionTransforms();
  PlXReflectionTransform* transform =
      transforms.empty() ? block.addReflectionTransform() : transforms.front();
  transform->setDimension(mirror.y ? PlXReflectionTransform::dimension_y
                                   : PlXReflectionTransform::dimension_x);
  transform->setAlternating(true);
}

bool hasReflection(const PlXVisualization& chart) {
  return !objectsByTag<PlXReflectionTransform>(chart, PlXUni::_reflectionTransform).empty();
}

// ---- styles
// Null for those that the command doesn't have; of several the last counts.
struct Styles {
  const DOMElement* axis = nullptr;
  const DOMElement* title = nullptr;
  const DOMElement* titleFrame = nullptr;
  const DOMElement* ticks = nullptr;
  const DOMElement* tickFrames = nullptr;
  const DOMElement* marks = nullptr;
};

Styles readStyles(const BaseTemplate& base, const DOMElement& command) {
  static constexpr std::pair<const XMLCh*, const DOMElement * Styles::*> parts[] = {
      {u"axisStyle", &Styles::axis},
      {u"axisLabelStyle", &Styles::title},
      {u"axisLabelTextFrameStyle", &Styles::titleFrame},
      {PlXUni::_markStyle, &Styles::marks},
  };
  Styles styles;
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    const XMLCh* name = child->getNodeName();
    for (const auto& [tag, part] : parts) {
      const DOMElement* style = is(name, tag) ? firstDescendant(child, PlXUni::_style) : nullptr;
      if (style) styles.*part = style;
    }
    if (!is(name, BaseTemplate::_tickLabelStyle)) continue;
    forDescendants(child, PlXUni::_style, [&](const DOMElement* style) {
      const long number = stated::selection(base, style, PlXUni::_number);
      (number == 1 ? styles.tickFrames : styles.ticks) = style;
    });
  }
  return styles;
}

void styleAxis(BaseTemplate& base, PlXAxis& axis, const Styles& styles) {
  const auto style = [&](const DOMElement* element, auto& object, auto get, auto set) {
    if (element) base.importStyle(element, base.ensuredStyle(object, get, set));
  };
  style(styles.axis, axis, &PlXAxis::getStyle, &PlXAxis::setStyle);
  if (PlXLabel* title = axis.getLabel()) {
    style(styles.title, *title, &CTLabelType::getStyle, &CTLabelType::setStyle);
    style(styles.titleFrame, *title, &CTLabelType::getTextFrameStyle,
          &CTLabelType::setTextFrameStyle);
  }
  if (PlXMajorTicks* ticks = axis.getMajorTicks()) {
    style(styles.ticks, *ticks, &PlXMajorTicks::getStyle, &PlXMajorTicks::setStyle);
    style(styles.tickFrames, *ticks, &PlXMajorTicks::getTickFrameStyle,
          &PlXMajorTicks::setTickFrameStyle);
    style(styles.marks, *ticks, &PlXMajorTicks::getMarkStyle, &PlXMajorTicks::setMarkStyle);
  }
}

}  // namespace

bool TSetPanelOptions::ProcessCommand() {
  const std::vector<PlXGraph*> graphs = target.getGraphs();
  if (!command || graphs.empty()) return false;
  const Mirror mirror = readMirror(*command);
  const ChartString gap = stated::text(*this, command, PlXUni::_gap, stated::Type::Length);
  const Styles styles = readStyles(*this, *command);
  const bool isSourceMirrored = source && !gap.empty() && hasReflection(*source);

  const auto setGap = [&](PlXFacetLevel& level, bool isMatrix) {
    const PlXFacetLevel* known = sourceOf(level);
    const ChartString own(known ? known->getGap() : nullptr);
    if (!own.empty() && !own.equals(u"20px")) return;
    level.setGap(isMatrix || isSourceMirrored ? u"0%" : gap.xc_str());
  };

  for (const PlXGraph* graph : graphs) {
    for (PlXCoordinates* block : graph->getCoordinatess()) {
      const PlXCoordinates* known = sourceOf(*block);
      if (!known || known->getReflectionTransforms().empty()) mirrorPanels(*block, mirror);
    }
    const PlXFacetLayout* layout = graph->getFacetLayout();
    if (!layout) continue;
    const bool isMatrix = !gap.empty() && getFirstSPLOMElement(*graph);
    for (PlXFacetLevel* level : layout->getFacetLevels()) {
      if (!gap.empty()) setGap(*level, isMatrix);
      for (PlXAxis* axis : level->getAxiss()) styleAxis(*this, *axis, styles);
    }
  }
  return true;
}
