// The steps for what stands beside the data: frames, guides, planes, and styles by their ids.
#include <algorithm>
#include <iterator>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "basetemplate.h"
#include "chartbase.h"
#include "chartelement.h"
#include "chartstylevalue.h"
#include "frames.h"
#include "legacyconversion.h"
#include "legacysteps.h"
#include "templatexml.h"

using namespace xercesc;
using templatexml::is;

namespace {

bool isCategoricalByName(const DOMElement& parameter) {
  return ChartParameter(const_cast<DOMElement*>(&parameter)).getVariable().isCategorical();
}

bool hasName(const DOMElement& parameter, const XMLCh* name) {
  return is(parameter.getAttribute(PlXUni::_name), name);
}

bool isOfXOrY(const DOMElement& parameter) {
  return hasName(parameter, PlXUni::_x) || hasName(parameter, PlXUni::_y);
}

}  // namespace

// frame with a location: addFrame
void legacysteps::convertFrames(LegacyConversion& conversion) {
  for (const DOMElement* frame : conversion.named(PlXUni::_frame)) {
    const DOMElement* location = ChartBase::getChildByTagName(frame, PlXUni::_location);
    if (!location) continue;
    DOMElement& command = conversion.addCommand(u"addFrame");
    conversion.set(command, BaseTemplate::_frameId, conversion.read(frame, PlXUni::_id));
    const DOMNode* parent = frame->getParentNode();
    if (is(parent->getNodeName(), PlXUni::_frame)) {
      conversion.set(command, BaseTemplate::_parentFrameId,
                     static_cast<const DOMElement*>(parent)->getAttribute(PlXUni::_id));
    }
    DOMElement& place = conversion.add(command, PlXUni::_location);
    for (const XMLCh* side : {PlXUni::_bottom, PlXUni::_left, PlXUni::_right, PlXUni::_top}) {
      conversion.copy(*location, side, place);
    }
    conversion.copyStyle(conversion.resolve(frame, PlXUni::_style), command);
    conversion.copyLabel(ChartBase::getChildByTagName(frame, PlXUni::_label), command);
  }
}

// guide of type line: addReferenceLine
void legacysteps::convertReferenceLines(LegacyConversion& conversion) {
  for (DOMElement* guide : conversion.named(PlXUni::_guide)) {
    if (!is(ChartGuide(guide).getType(), PlXUni::_line)) continue;
    std::vector<const DOMElement*> parameters;
    std::ranges::copy_if(conversion.below(guide, PlXUni::_parameter),
                         std::back_inserter(parameters),
                         [](const DOMElement* each) { return isOfXOrY(*each); });
    if (parameters.empty()) continue;
    conversion.read(guide, PlXUni::_type);
    DOMElement& command = conversion.addCommand(u"addReferenceLine");
    for (const DOMElement* parameter : parameters) {
      DOMElement* made = conversion.import(*parameter, command, LegacyConversion::Depth::Alone);
      conversion.setFlag(*made, PlXUni::_categorical, isCategoricalByName(*parameter));
      conversion.copyStyle(conversion.resolve(guide, PlXUni::_style), command);
    }
  }
}

// guide of type point: addAnchoredAnnotation
void legacysteps::convertAnnotations(LegacyConversion& conversion) {
  const bool hasCategories =
      conversion.firstWith(PlXUni::_variable, PlXUni::_categorical, PlXUni::_true);
  for (DOMElement* guide : conversion.named(PlXUni::_guide)) {
    if (!is(ChartGuide(guide).getType(), PlXUni::_point)) continue;
    const DOMElement* label = ChartBase::getChildByTagName(guide, PlXUni::_label);
    const ElementIndex::Elements parameters = conversion.below(guide, PlXUni::_parameter);
    const auto isX = [](const DOMElement* each) { return hasName(*each, PlXUni::_x); };
    // Without a place on x the command would do nothing.
    if (parameters.size() != 2 || std::ranges::none_of(parameters, isX) ||
        LegacyConversion::textOf(label).empty()) {
      continue;
    }
    conversion.read(guide, PlXUni::_type);
    DOMElement& command = conversion.addCommand(u"addAnchoredAnnotation");
    conversion.copyLabel(label, command);
    for (DOMElement* parameter : parameters) {
      const ChartVariable variable = ChartParameter(parameter).getVariable();
      DOMElement* made = conversion.import(*parameter, command, LegacyConversion::Depth::Alone);
      conversion.setFlag(*made, PlXUni::_categorical,
                         variable.isNull() ? isX(parameter) && hasCategories
                                           : isOfXOrY(*parameter) && variable.isCategorical());
    }
  }
}

// style of a frame with visibility hidden: hideFrame
void legacysteps::convertHiddenFrames(LegacyConversion& conversion) {
  for (const DOMElement* style : conversion.named(PlXUni::_style)) {
    ChartString id(style->getAttribute(PlXUni::_id));
    if (!id.ContainsString(PlXUni::_frame)) continue;
    const ChartStyleValue value(style->getAttribute(PlXUni::_value));
    if (!value.visibility.equals(u"hidden")) continue;
    id.truncateString(1);
    // The command tells frames by their kind, and the page is none that it hides.
    const frames::Known* frame = frames::knownBy(id.xc_str());
    if (!frame || frame->kind == frames::Kind::visualization) continue;
    conversion.read(style, PlXUni::_value);
    DOMElement& command = conversion.addCommand(u"hideFrame");
    conversion.set(command, BaseTemplate::_frameId, id.xc_str());
    conversion.set(command, PlXUni::_type, frames::wordOf(frame->kind));
    if (frame->number) {
      conversion.set(command, PlXUni::_count, ChartString().assignInteger(frame->number).xc_str());
    }
  }
}

// guide of type plane in a chart with depth: setBackPlane
void legacysteps::convertBackPlane(LegacyConversion& conversion) {
  if (!conversion.isThreeDimensional()) return;
  DOMElement* command = nullptr;
  for (DOMElement* guide : conversion.named(PlXUni::_guide)) {
    if (!is(ChartGuide(guide).getType(), u"plane")) continue;
    conversion.read(guide, PlXUni::_type);
    if (!command) command = &conversion.addCommand(u"setBackPlane");
    DOMElement& plane = conversion.add(*command, u"plane");
    const DOMElement* parameter = ChartBase::getChildByTagName(guide, PlXUni::_parameter);
    conversion.set(plane, PlXUni::_role, conversion.read(parameter, PlXUni::_value));
    conversion.copyStyle(conversion.resolve(guide, PlXUni::_style), plane);
  }
}

// the container style and the styles in it: setStyle
void legacysteps::convertContainerStyle(LegacyConversion& conversion) {
  const DOMElement* container = conversion.withId(ChartBase::_container);
  if (!container) return;
  const auto convert = [&](const DOMElement* style, const XMLCh* id) {
    DOMElement& command = conversion.addCommand(ChartBase::_setStyle);
    conversion.set(command, PlXUni::_id, id);
    conversion.copyStyle(style, command);
  };
  convert(container, ChartBase::_container);
  for (const DOMElement* style : conversion.below(container, PlXUni::_style)) {
    const XMLCh* id = style->getAttribute(PlXUni::_id);
    if (*id) convert(style, id);
  }
}

// the lists of styles that go by two ids: setStyleCycle
void legacysteps::convertStyleCycles(LegacyConversion& conversion) {
  for (const XMLCh* id : {ChartBase::_styleCycleDefault, ChartBase::_styleCycleRepository}) {
    const DOMElement* list = conversion.withId(id);
    // Without a list of its own it would only take away that of the chart.
    if (!list || !conversion.firstBelow(list, PlXUni::_cycle)) continue;
    DOMElement& command = conversion.addCommand(ChartBase::_setStyleCycle);
    conversion.set(command, PlXUni::_id, conversion.read(list, PlXUni::_id));
    for (const DOMElement* cycle : conversion.below(list, PlXUni::_cycle)) {
      DOMElement& made = conversion.add(command, PlXUni::_cycle);
      for (const DOMElement* style : conversion.below(cycle, PlXUni::_style)) {
        conversion.copyStyle(style, made);
      }
    }
  }
}
