#include "plxaxis.h"

#include "plxelements.h"

PlXConditionalStyle* PlXGridline::addConditionalStyle(const XMLCh* condition, PlXStyle& style) {
  PlXConditionalStyle* conditional = add<PlXConditionalStyle>();
  if (!conditional) return nullptr;
  conditional->setWhen(condition);
  conditional->setStyle(style);
  return conditional;
}
