#include "plxvariables.h"

PlXAggregation* CTVariableType::addAggregation(const XMLCh* category, CTVariableType& variable,
                                               double minFraction) {
  auto* aggregation = add<PlXAggregation>();
  aggregation->setCategory(category);
  aggregation->setVariable(variable);
  aggregation->setMinFraction(minFraction);
  return aggregation;
}
