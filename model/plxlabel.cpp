#include "plxlabel.h"

// Both make a child that means nothing without the argument, so it is written at once.

PlXDescriptionGroup* CTLabelType::addDescriptionGroup(PlXBaseElement& target) {
  PlXDescriptionGroup* group = add<PlXDescriptionGroup>();
  if (group) group->setTarget(target);
  return group;
}

PlXDescription* PlXDescriptionGroup::addDescription(PlXDescription::ENUM_name name) {
  PlXDescription* description = add<PlXDescription>();
  if (description) description->setName(name);
  return description;
}
