// setAxisScale role method invert origin base, with children parameter (name, value): the scale of
// the dimensions of a role. A dimension without a scale gets one. Categorical axes and polar graphs
// have no scale. Without `base` and parameter an earlier base stays; all else is set anew.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "domwalk.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"

using namespace xercesc;

namespace {

struct Parameters {
  ChartString role;
  PlXScale::ENUM_method method = PlXScale::method_linear;
  bool invert = false;
  ChartString origin;
  double base = 0;
  bool hasBase = false;
};

PlXScale::ENUM_method methodOf(const ChartString& word) {
  static const std::pair<const XMLCh*, PlXScale::ENUM_method> words[] = {
      {PlXUni::_log, PlXScale::method_log},
      {PlXUni::_power, PlXScale::method_power},
      {PlXUni::_log_safe, PlXScale::method_log_safe},
      {PlXUni::_power_safe, PlXScale::method_power_safe},
      {PlXScale::_UTF_method_logit, PlXScale::method_logit},
      {PlXScale::_UTF_method_probit, PlXScale::method_probit},
      {PlXScale::_UTF_method_asn, PlXScale::method_asn},
      {PlXScale::_UTF_method_atanh, PlXScale::method_atanh},
      {PlXScale::_UTF_method_prob, PlXScale::method_prob},
      {PlXScale::_UTF_method_cLoglog, PlXScale::method_cLoglog},
  };
  for (const auto& [text, method] : words) {
    if (word.equals(text)) return method;
  }
  return PlXScale::method_linear;
}

PlXScale::ENUM_method safeForm(PlXScale::ENUM_method method) {
  switch (method) {
    case PlXScale::method_log:
      return PlXScale::method_log_safe;
    case PlXScale::method_power:
      return PlXScale::method_power_safe;
    default:
      return method;
  }
}

void readParameter(const DOMElement& element, Parameters& parameters) {
  const ChartString name(element.getAttribute(PlXUni::_name));
  const ChartString value(element.getAttribute(PlXUni::_value));
  if (name.equals(u"exponent") || name.equals(PlXUni::_UTF_base)) {
    parameters.base = value.convertToDouble();
    parameters.hasBase = true;
  } else if (name.equals(u"safe") && value.equals(PlXUni::_true)) {
    parameters.method = safeForm(parameters.method);
  }
}

Parameters readParameters(const DOMElement& command) {
  Parameters parameters;
  parameters.role = command.getAttribute(PlXUni::_role);
  parameters.method = methodOf(command.getAttribute(PlXUni::_method));
  parameters.invert = XMLString::equals(command.getAttribute(PlXUni::_invert), PlXUni::_true);
  parameters.origin = command.getAttribute(PlXUni::_origin);
  for (DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    walkElements(child, [&](const DOMElement* element) {
      if (XMLString::equals(element->getNodeName(), PlXUni::_parameter)) {
        readParameter(*element, parameters);
      }
      return true;
    });
  }
  const ChartString base(command.getAttribute(PlXUni::_UTF_base));
  if (!base.empty()) {
    parameters.base = base.convertToDouble();
    parameters.hasBase = true;
  }
  return parameters;
}

}  // namespace

bool TSetAxisScale::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*command);
  for (const PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph) || isRoleCategorical(*graph, parameters.role)) continue;
    for (PlXDimension* dimension : getDimensionsByRole(*graph, parameters.role)) {
      if (!doesCoordinateMatch(*dimension, parameters.role)) continue;
      PlXScale* scale = dimension->getScale();
      if (!scale) scale = dimension->addScale(parameters.method);
      scale->setMethod(parameters.method);
      if (parameters.origin.empty()) {
        scale->removeOrigin();
      } else {
        scale->setOrigin(parameters.origin.xc_str());
      }
      scale->setInvert(parameters.invert);
      if (parameters.hasBase) scale->setBase(parameters.base);
    }
  }
  return true;
}
