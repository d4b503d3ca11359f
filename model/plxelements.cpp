#include "plxelements.h"

#include "plxaesthetics.h"
#include "plxlabeling.h"
#include "plxvariables.h"

// The attribute is copied as it stands, so that a link that leads nowhere yet is kept.
PlXStyleBy* CTElementType::addStyleBy(CTAesthetic* aesthetic) {
  auto* styleBy = add<PlXStyleBy>();
  const XMLCh* variable = aesthetic ? aesthetic->GetAttribute(u"variable") : u"";
  if (*variable) styleBy->SetAttribute(u"variable", variable);
  return styleBy;
}

// Here, where colors and labelings are known to be PlXBaseElements.
void CTElementType::removeColor(PlXColor& color) {
  removeChild(color);
}

void CTElementType::removeLabeling(PlXLabeling& labeling) {
  removeChild(labeling);
}

PlXConditionalStyle* CTElementType::addConditionalStyle(const XMLCh* when, PlXStyle& style) {
  auto* conditional = add<PlXConditionalStyle>();
  conditional->setWhen(when);
  conditional->setStyle(style);
  return conditional;
}

// Here, because a coordinate may hold its variable as well as link it.
CTVariableType* CTCoordinate::getVariable() const {
  if (present(u"variable")) return link<CTVariableType>(u"variable");
  return child<PlXExpressionVariable>();
}

PlXSourceVariable* CTCoordinate::getSourceVariable() const {
  return dynamic_cast<PlXSourceVariable*>(getVariable());
}

PlXExpressionVariable* CTCoordinate::getExpressionVariable() const {
  return dynamic_cast<PlXExpressionVariable*>(getVariable());
}
