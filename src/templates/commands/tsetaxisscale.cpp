// setAxisScale role method invert origin base, with children parameter (name, value): the scale of
// the dimensions of a role. A dimension without a scale gets one. Categorical axes and polar graphs
// have no scale. Without `base` and parameter an earlier base stays; all else is set anew.
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "domwalk.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;

namespace {

struct Parameters {
  ChartString role;
  PlXScale::ENUM_method method = PlXScale::method_linear;
  bool invert = false;
  ChartString origin;
  std::optional<double> base;
};

// Of two words for a method templates have the one that charts are written with.
PlXScale::ENUM_method methodOf(const ChartString& word) {
  const auto method = templatexml::wordOf<PlXScale::ENUM_method>(word.xc_str());
  const bool isWritten =
      method && word.equals(dialect::wordsOf<PlXScale::ENUM_method>().textOf(*method));
  return isWritten ? *method : PlXScale::method_linear;
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

void readParameter(const BaseTemplate& command, const DOMElement& element, Parameters& parameters) {
  const ChartString name(element.getAttribute(PlXUni::_name));
  const ChartString value(element.getAttribute(PlXUni::_value));
  if (name.equals(u"exponent") || name.equals(PlXUni::_UTF_base)) {
    const auto base = stated::number(command, &element, PlXUni::_value);
    if (base) parameters.base = base;
  } else if (name.equals(u"safe") && value.equals(PlXUni::_true)) {
    parameters.method = safeForm(parameters.method);
  }
}

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  parameters.role = command.getAttribute(PlXUni::_role);
  parameters.method = methodOf(command.getAttribute(PlXUni::_method));
  parameters.invert = XMLString::equals(command.getAttribute(PlXUni::_invert), PlXUni::_true);
  parameters.origin = command.getAttribute(PlXUni::_origin);
  templatexml::forDescendants(&command, PlXUni::_parameter, [&](const DOMElement* element) {
    readParameter(base, *element, parameters);
  });
  const auto own = stated::number(base, &command, PlXUni::_UTF_base);
  if (own) parameters.base = own;
  return parameters;
}

}  // namespace

bool TSetAxisScale::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
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
      if (parameters.base) scale->setBase(*parameters.base);
    }
  }
  return true;
}
