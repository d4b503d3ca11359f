// addDerivedAxis role, with children transform (method, base-ratio, base-match, derived-ratio,
// derived-match, or children parameter for these), label, majorTicks, minorTicks and style: gives
// the dimensions of a role an axis on the other side that follows from theirs, and dresses it.
// Without transform it dresses the one that is there. Of several children of a name the last
// counts. Categorical roles are passed over, and so are y in a graph of several coordinates blocks
// and dimensions without an ordinary axis, or with two of them.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Transform {
  bool isPercent = false;
  // Of a ratio, by their names.
  std::vector<std::pair<const XMLCh*, ChartString>> values = {
      {u"base-ratio", {}}, {u"base-match", {}}, {u"derived-ratio", {}}, {u"derived-match", {}}};
};

Transform readTransform(const BaseTemplate& base, const DOMElement& element) {
  Transform transform{.isPercent = is(element.getAttribute(PlXUni::_method), PlXUni::_percent)};
  for (auto& [name, value] : transform.values) {
    value = stated::textOrParameter(base, element, name, stated::Type::Number);
  }
  return transform;
}

struct Parts {
  const DOMElement* transform;
  const DOMElement* label;
  const DOMElement* majorTicks;
  const DOMElement* minorTicks;
  const DOMElement* style;
};

Parts readParts(const DOMElement& command) {
  // Converted templates write ticks in small letters.
  const auto ticks = [&](const XMLCh* name, const XMLCh* smallName) {
    const DOMElement* last = lastChild(&command, name);
    return last ? last : lastChild(&command, smallName);
  };
  return {lastChild(&command, PlXUni::_transform), lastChild(&command, PlXUni::_label),
          ticks(PlXUni::_majorTicks, u"majorticks"), ticks(PlXUni::_minorTicks, u"minorticks"),
          lastChild(&command, PlXUni::_style)};
}

void transformAxis(PlXAxis& axis, const Transform& transform) {
  axis.setTransform(transform.isPercent ? PlXAxis::transform_percent : PlXAxis::transform_ratio);
  if (transform.isPercent) return;
  for (const auto& [name, value] : transform.values) {
    if (value.empty()) continue;
    PlXAxisTransformParameter* parameter = axis.addAxisTransformParameter();
    parameter->setParameterName(name);
    parameter->setParameterValue(value.xc_str());
  }
}

}  // namespace

bool TAddDerivedAxis::ProcessCommand() {
  if (!command) return false;
  const ChartString role = attribute(PlXUni::_role);
  const bool isY = role.equals(PlXUni::_y);
  if (!isY && !role.equals(PlXUni::_x) && !role.equals(PlXUni::_z)) return false;
  const Parts parts = readParts(*command);
  const Transform transform =
      parts.transform ? readTransform(*this, *parts.transform) : Transform();

  const auto addAxis = [&](PlXDimension& dimension, const PlXAxis& main) {
    PlXAxis* axis = dimension.addAxis();
    axis->addMajorTicks();
    PlXStyle& style = styleOf(*axis);
    if (const PlXStyle* mainStyle = main.getStyle()) duplicateAttributes(*mainStyle, style);
    axis->setOpposite(!main.getOpposite());
    transformAxis(*axis, transform);
    return axis;
  };
  const auto dress = [&](PlXAxis& axis) {
    if (parts.label) {
      PlXLabel* label = axis.getLabel();
      if (!label) label = axis.addLabel();
      mergeText(parts.label, *label);
      styleLabel(*label, parts.label);
    }
    // Ticks that the role of their element isn't for are styled all the same.
    if (parts.majorTicks && !setMajorTicks(axis, parts.majorTicks)) {
      if (PlXMajorTicks* ticks = axis.getMajorTicks()) styleMajorTicks(*ticks, parts.majorTicks);
    }
    if (parts.minorTicks && !setMinorTicks(axis, parts.minorTicks)) {
      PlXMinorTicks* ticks = axis.getMinorTicks();
      if (ticks) styleMinorTicks(*ticks, parts.minorTicks, axis.getMajorTicks());
    }
    PlXStyle& style = styleOf(axis);
    if (parts.style) importStyle(parts.style, style);
  };
  const auto process = [&](PlXDimension& dimension) {
    std::vector<PlXAxis*> ordinary;
    std::vector<PlXAxis*> derived;
    for (PlXAxis* axis : dimension.getAxiss()) {
      (isAxisDerived(*axis) ? derived : ordinary).push_back(axis);
    }
    if (ordinary.empty()) return;
    if (parts.transform) {
      for (PlXAxis* axis : derived) dimension.removeAxis(*axis);
      derived.clear();
      if (ordinary.size() == 1) derived = {addAxis(dimension, *ordinary.front())};
    }
    for (PlXAxis* axis : derived) dress(*axis);
  };

  for (const PlXGraph* graph : target.getGraphs()) {
    if (isY && graph->getCoordinatess().size() != 1) continue;
    if (isRoleCategorical(*graph, role)) continue;
    for (PlXDimension* dimension : getDimensionsByRole(*graph, role)) process(*dimension);
  }
  return true;
}
