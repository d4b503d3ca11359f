#include "plxguides.h"

#include "plxelements.h"

PlXConditionalStyle* CTGuideType::addConditionalStyle(const XMLCh* condition, PlXStyle& style) {
  PlXConditionalStyle* conditional = add<PlXConditionalStyle>();
  if (!conditional) return nullptr;
  conditional->setWhen(condition);
  conditional->setStyle(style);
  return conditional;
}
