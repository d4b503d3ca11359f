// setAxisStyle role categorical derived, with children style, label and axisLabelStyle: styles the
// axes of a role and their titles. `categorical` selects categorical roles or the others, when it
// is stated. An axis with a title gets both styles of a label; in a scatterplot matrix the axis
// line ends transparent whatever the style says.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "domwalk.h"
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

// Of several children of a kind the last counts.
struct Parts {
  const DOMElement* axisStyle = nullptr;
  const DOMElement* label = nullptr;
  const DOMElement* labelTextStyle = nullptr;
  const DOMElement* labelFrameStyle = nullptr;
};

Parts readParts(const BaseTemplate& base, const DOMElement& command) {
  Parts parts;
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    const XMLCh* name = child->getNodeName();
    if (is(name, PlXUni::_style)) parts.axisStyle = child;
    if (is(name, PlXUni::_label)) parts.label = child;
    if (!is(name, u"axisLabelStyle")) continue;
    forDescendants(child, PlXUni::_style, [&](const DOMElement* style) {
      const long number = stated::selection(base, style, PlXUni::_number);
      (number == 1 ? parts.labelFrameStyle : parts.labelTextStyle) = style;
    });
  }
  return parts;
}

}  // namespace

bool TSetAxisStyle::ProcessCommand() {
  if (!command) return false;
  const ChartString role = attribute(PlXUni::_role);
  const bool isCategoricalGiven = !attribute(PlXUni::_categorical).empty();
  const bool categorical = getBooleanAttribute(command, PlXUni::_categorical, false);
  const bool derived = getBooleanAttribute(command, _derived, false);
  const Parts parts = readParts(*this, *command);

  const auto styleTitle = [&](PlXLabel& title) {
    PlXStyle& text = styleOf(title);
    PlXStyle* frame = title.getTextFrameStyle();
    if (!frame) {
      title.setTextFrameStyle(*(frame = addStyle(title, nullptr)));
      frame->setColor(PlXStyle::_transparent);
      frame->setColor2(PlXStyle::_transparent);
      frame->setVisible(false);
    }
    if (parts.labelTextStyle) importStyle(parts.labelTextStyle, text);
    if (parts.labelFrameStyle) importStyle(parts.labelFrameStyle, *frame);
  };
  const auto styleAxis = [&](PlXAxis& axis) {
    if (parts.axisStyle) importStyle(parts.axisStyle, styleOf(axis));
    PlXLabel* title = axis.getLabel();
    if (parts.label) {
      if (!title) title = axis.addLabel();
      mergeText(parts.label, *title);
      styleLabel(*title, parts.label);
    }
    if (title) styleTitle(*title);
  };

  for (const PlXGraph* graph : target.getGraphs()) {
    if (isCategoricalGiven && isRoleCategorical(*graph, role) != categorical) continue;
    const bool isMatrix = getFirstSPLOMElement(*graph) != nullptr;
    for (const PlXDimension* dimension : getDimensionsByRole(*graph, role)) {
      const std::vector<PlXAxis*> axes = dimension->getAxiss();
      becauseUnless(!axes.empty(), "there is no axis of the role", role);
      for (PlXAxis* axis : axes) {
        if (isAxisDerived(*axis) != derived ||
            !doesCoordinateMatch(static_cast<const PlXBaseElement&>(*axis), role)) {
          continue;
        }
        styleAxis(*axis);
        PlXStyle* style = axis->getStyle();
        if (isMatrix && style) style->setColor(PlXStyle::_transparent);
      }
    }
  }
  return true;
}
