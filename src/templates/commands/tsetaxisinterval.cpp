// setAxisInterval role upperMapping lowerMapping max min: the bounds that the dimensions of a role
// show. Roles are x, y and z. A dimension without a domain gets one, and earlier bounds go even
// when the command has none. A bound of 23 characters with a "-" is a date. `exact` for a mapping
// keeps the renderer from rounding that bound to a tick.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"

using namespace xercesc;

namespace {

struct Parameters {
  ChartString role;
  bool isUpperExact;
  bool isLowerExact;
  ChartString max;
  ChartString min;
};

bool isDate(const ChartString& bound) {
  return bound.length() == 23 && bound.ContainsString(u"-");
}

void setBounds(PlXIntervalDomain& domain, const Parameters& parameters) {
  domain.removeRanges();
  if (!parameters.min.empty()) {
    PlXRange* range = domain.addRange();
    range->setMin(parameters.min.xc_str());
    range->setExact(true);
  }
  if (!parameters.max.empty()) {
    PlXRange* range = domain.addRange();
    range->setMax(parameters.max.xc_str());
    range->setExact(true);
  }
  if (isDate(parameters.min) || isDate(parameters.max)) domain.setDate(true);
}

void setMappings(PlXDimension& dimension, const Parameters& parameters) {
  dimension.setUnionDomain(!parameters.isLowerExact && !parameters.isUpperExact);
  dimension.setNiceLowerMapping(!parameters.isLowerExact);
  dimension.setNiceUpperMapping(!parameters.isUpperExact);
}

}  // namespace

bool TSetAxisInterval::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters{attribute(PlXUni::_role),
                              attribute(u"upperMapping").equals(PlXUni::_exact),
                              attribute(u"lowerMapping").equals(PlXUni::_exact),
                              attribute(PlXUni::_max), attribute(PlXUni::_min)};
  if (!parameters.role.equals(PlXUni::_x) && !parameters.role.equals(PlXUni::_y) &&
      !parameters.role.equals(PlXUni::_z)) {
    return false;
  }
  // Dimensions often share one.
  const PlXIntervalDomain* lastDomain = nullptr;
  for (const PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph) || isRoleCategorical(*graph, parameters.role)) continue;
    for (PlXDimension* dimension : getDimensionsByRole(*graph, parameters.role)) {
      if (!doesCoordinateMatch(*dimension, parameters.role)) continue;
      if (!dimension->getDomain()) {
        const ChartString id = CreateUniqueId(PlXUni::_domain);
        dimension->setDomain(*target.addIntervalDomain(id.xc_str()));
      }
      // A categorical domain of a role that is none has no bounds.
      auto* domain = dynamic_cast<PlXIntervalDomain*>(dimension->getDomain());
      if (domain && domain != lastDomain) setBounds(*domain, parameters);
      lastDomain = domain;
      setMappings(*dimension, parameters);
      if (parameters.min.empty()) continue;
      for (const PlXAxis* axis : dimension->getAxiss()) {
        if (PlXMajorTicks* ticks = axis->getMajorTicks()) ticks->setBase(parameters.min.xc_str());
      }
    }
  }
  return true;
}
