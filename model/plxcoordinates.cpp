#include "plxcoordinates.h"

#include "plxaxis.h"

const XMLCh PlXScale::_UTF_method_logit[] = u"method_logit";
const XMLCh PlXScale::_UTF_method_probit[] = u"method_probit";
const XMLCh PlXScale::_UTF_method_asn[] = u"method_asn";
const XMLCh PlXScale::_UTF_method_atanh[] = u"method_atanh";
const XMLCh PlXScale::_UTF_method_prob[] = u"method_prob";
const XMLCh PlXScale::_UTF_method_cLoglog[] = u"method_cLoglog";

PlXScale* PlXDimension::addScale(PlXScale::ENUM_method method) {
  PlXScale* scale = add<PlXScale>();
  if (scale) scale->setMethod(method);
  return scale;
}

// Here, where an axis is known to be a PlXBaseElement.
void PlXDimension::removeAxis(PlXAxis& axis) {
  removeChild(axis);
}
