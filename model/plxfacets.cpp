#include "plxfacets.h"

#include "plxvariables.h"

PlXVariableReference* PlXFaceting::addVariableReference(CTVariableType& variable) {
  PlXVariableReference* reference = add<PlXVariableReference>();
  if (reference) reference->setRef(variable);
  return reference;
}
