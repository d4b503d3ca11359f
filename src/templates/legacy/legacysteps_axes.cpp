// The steps for dimensions, their axes and ticks.
#include <unordered_map>

#include <xercesc/dom/DOM.hpp>

#include "basetemplate.h"
#include "chartbase.h"
#include "chartelement.h"
#include "legacyconversion.h"
#include "legacysteps.h"
#include "templatexml.h"

using namespace xercesc;
using templatexml::is;

namespace {

constexpr XMLCh majorTicks[] = u"majorticks";
constexpr XMLCh minorTicks[] = u"minorticks";
constexpr XMLCh labelAngle[] = u"labelangle";

// What commands name an axis by. Without a role none of them does anything.
struct Axis {
  DOMElement* element;
  LegacyConversion::AxisRole role;
};

Axis axisOf(const LegacyConversion& conversion, DOMElement* element) {
  const ChartAxis axis(element);
  return {element,
          {axis.getDimension().getAttributeValue(PlXUni::_role), axis.isCategorical(),
           conversion.firstBelow(element, PlXUni::_transform) != nullptr}};
}

template <class Convert>
void forAxes(LegacyConversion& conversion, Convert convert) {
  for (DOMElement* element : conversion.named(PlXUni::_axis)) {
    const Axis axis = axisOf(conversion, element);
    if (!axis.role.role.empty()) convert(axis);
  }
}

void setRole(LegacyConversion& conversion, DOMElement& command, const XMLCh* role,
             bool categorical) {
  conversion.set(command, PlXUni::_role, role);
  conversion.setFlag(command, PlXUni::_categorical, categorical);
}

bool hasPlace(const ChartString& role) {
  return role.equals(PlXUni::_x) || role.equals(PlXUni::_y) || role.equals(PlXUni::_z);
}

// A command for an attribute of the first ticks of each axis.
void convertTickLabels(LegacyConversion& conversion, const XMLCh* command, const XMLCh* attribute) {
  forAxes(conversion, [&](const Axis& axis) {
    const DOMElement* ticks = conversion.firstBelow(axis.element, majorTicks);
    if (!ticks || !*ticks->getAttribute(attribute)) return;
    DOMElement& made = conversion.addCommand(command);
    setRole(conversion, made, axis.role.role.xc_str(), axis.role.categorical);
    conversion.copy(*ticks, attribute, made);
    if (axis.role.derived) conversion.setFlag(made, BaseTemplate::_derived, false);
  });
}

}  // namespace

// axis with a transform: addDerivedAxis
void legacysteps::convertDerivedAxes(LegacyConversion& conversion) {
  forAxes(conversion, [&](const Axis& axis) {
    const DOMElement* transform = ChartBase::getChildByTagName(axis.element, PlXUni::_transform);
    if (!transform || !hasPlace(axis.role.role)) return;
    const ChartDimension dimension = ChartAxis(axis.element).getDimension();
    DOMElement& command = conversion.addCommand(u"addDerivedAxis");
    conversion.set(command, PlXUni::_role, axis.role.role.xc_str());
    conversion.copyLabel(dimension.getFirstChildByTagName(PlXUni::_label), command);
    if (const DOMElement* ticks = ChartBase::getChildByTagName(axis.element, majorTicks)) {
      conversion.copyMajorTicks(*ticks, command, axis.role);
    }
    if (const DOMElement* ticks = ChartBase::getChildByTagName(axis.element, minorTicks)) {
      conversion.copyMinorTicks(*ticks, command, axis.role);
    }
    DOMElement& made = conversion.add(command, PlXUni::_transform);
    conversion.set(made, PlXUni::_method, conversion.read(transform, PlXUni::_method));
    conversion.importParameters(*transform, made);
    conversion.copyStyle(conversion.resolve(axis.element, PlXUni::_style), command);
  });
}

// scale of a dimension: setAxisScale
void legacysteps::convertAxisScale(LegacyConversion& conversion) {
  for (const DOMElement* scale : conversion.named(PlXUni::_scale)) {
    const DOMNode* parent = scale->getParentNode();
    if (!is(parent->getNodeName(), PlXUni::_dimension)) continue;
    DOMElement& command = conversion.addCommand(u"setAxisScale");
    conversion.copy(*scale, PlXUni::_method, command);
    conversion.copy(*scale, PlXUni::_origin, command);
    const XMLCh* role = static_cast<const DOMElement*>(parent)->getAttribute(PlXUni::_role);
    conversion.set(command, PlXUni::_role, *role ? role : PlXUni::_y);
    conversion.importParameters(*scale, command);
  }
}

// interval of a dimension's domain: setAxisInterval. How far the bounds are exact the dimension
// says, and the command reads it here.
void legacysteps::convertAxisInterval(LegacyConversion& conversion) {
  std::unordered_map<std::u16string_view, std::vector<const DOMElement*>> dimensions;
  for (const DOMElement* dimension : conversion.named(PlXUni::_dimension)) {
    if (hasPlace(dimension->getAttribute(PlXUni::_role))) {
      dimensions[dimension->getAttribute(PlXUni::_domain)].push_back(dimension);
    }
  }
  for (const DOMElement* interval : conversion.named(PlXUni::_interval)) {
    const DOMNode* parent = interval->getParentNode();
    if (!is(parent->getNodeName(), PlXUni::_domain)) continue;
    const XMLCh* domain = static_cast<const DOMElement*>(parent)->getAttribute(PlXUni::_id);
    const auto found = dimensions.find(domain);
    if (!*domain || found == dimensions.end()) continue;
    for (const DOMElement* dimension : found->second) {
      DOMElement& command = conversion.addCommand(u"setAxisInterval");
      conversion.set(command, PlXUni::_role, conversion.read(dimension, PlXUni::_role));
      conversion.copy(*interval, PlXUni::_min, command);
      conversion.copy(*interval, PlXUni::_max, command);
      conversion.copy(*dimension, ChartDimension::_lowerMapping, command);
      conversion.copy(*dimension, ChartDimension::_upperMapping, command);
    }
  }
}

// margins of a dimension: setAxisMargin
void legacysteps::convertAxisMargin(LegacyConversion& conversion) {
  for (DOMElement* element : conversion.named(PlXUni::_dimension)) {
    const ChartDimension dimension(element);
    const XMLCh* role = dimension.getAttributeValue(PlXUni::_role);
    if (!*role || (!*dimension.getAttributeValue(PlXUni::_lowerMargin) &&
                   !*dimension.getAttributeValue(PlXUni::_upperMargin))) {
      continue;
    }
    DOMElement& command = conversion.addCommand(u"setAxisMargin");
    setRole(conversion, command, role, dimension.isCategorical());
    for (const XMLCh* name : {ChartDimension::_lowerMapping, ChartDimension::_upperMapping,
                              PlXUni::_lowerMargin, PlXUni::_upperMargin}) {
      conversion.copy(*element, name, command);
    }
  }
}

// opposite axis of a dimension: setAxisOpposite
void legacysteps::convertAxisOpposite(LegacyConversion& conversion) {
  forAxes(conversion, [&](const Axis& axis) {
    if (axis.role.derived ||
        !is(axis.element->getParentNode()->getNodeName(), PlXUni::_dimension) ||
        !is(axis.element->getAttribute(PlXUni::_opposite), PlXUni::_true)) {
      return;
    }
    DOMElement& command = conversion.addCommand(u"setAxisOpposite");
    setRole(conversion, command, axis.role.role.xc_str(), axis.role.categorical);
    conversion.copy(*axis.element, PlXUni::_opposite, command);
  });
}

// axis with a style or a title: setAxisStyle
void legacysteps::convertAxisStyle(LegacyConversion& conversion) {
  forAxes(conversion, [&](const Axis& axis) {
    const DOMElement* label = conversion.firstBelow(axis.element, PlXUni::_label);
    const DOMElement* style = conversion.withId(axis.element->getAttribute(PlXUni::_baselineStyle));
    const DOMElement* labelStyle =
        label ? conversion.withId(label->getAttribute(PlXUni::_style)) : nullptr;
    const bool hasTitle = LegacyConversion::hasText(label);
    if (!style && !labelStyle && !hasTitle) return;
    DOMElement& command = conversion.addCommand(u"setAxisStyle");
    conversion.copyStyle(conversion.resolve(axis.element, PlXUni::_baselineStyle), command);
    if (hasTitle) conversion.copyText(*label, command);
    if (labelStyle) {
      conversion.copyStyle(conversion.resolve(label, PlXUni::_style),
                           conversion.add(command, u"axisLabelStyle"));
    }
    setRole(conversion, command, axis.role.role.xc_str(), axis.role.categorical);
    if (axis.role.derived) conversion.setFlag(command, BaseTemplate::_derived, true);
  });
}

// majorticks of an axis: setAxisMajorTicks
void legacysteps::convertMajorTicks(LegacyConversion& conversion) {
  forAxes(conversion, [&](const Axis& axis) {
    const DOMElement* ticks = conversion.firstBelow(axis.element, majorTicks);
    if (!ticks) return;
    conversion.copyMajorTicks(*ticks, conversion.addCommand(u"setAxisMajorTicks"), axis.role);
  });
}

// minorticks of an axis: setAxisMinorTicks
void legacysteps::convertMinorTicks(LegacyConversion& conversion) {
  forAxes(conversion, [&](const Axis& axis) {
    const DOMElement* ticks = conversion.firstBelow(axis.element, minorTicks);
    if (!ticks) return;
    conversion.copyMinorTicks(*ticks, conversion.addCommand(u"setAxisMinorTicks"), axis.role);
  });
}

// angle of the ticks' labels: setTickLabelAngle
void legacysteps::convertTickLabelAngle(LegacyConversion& conversion) {
  convertTickLabels(conversion, u"setTickLabelAngle", labelAngle);
}

// frequency of the ticks' labels: setTickLabelFrequency
void legacysteps::convertTickLabelFrequency(LegacyConversion& conversion) {
  convertTickLabels(conversion, u"setTickLabelFrequency", PlXUni::_labelFrequency);
}
