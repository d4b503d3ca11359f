#include "plxdomains.h"

#include "plxvariables.h"

PlXSortMove* PlXSimpleSort::addSortMove(const XMLCh* category) {
  PlXSortMove* move = add<PlXSortMove>();
  if (move) move->setCategory(category);
  return move;
}

PlXSortMove* PlXStatisticSort::addSortMove(const XMLCh* category) {
  PlXSortMove* move = add<PlXSortMove>();
  if (move) move->setCategory(category);
  return move;
}

PlXVariableReference* PlXCategoricalDomain::addVariableReference(CTVariableType& variable) {
  PlXVariableReference* reference = add<PlXVariableReference>();
  if (reference) reference->setRef(variable);
  return reference;
}

PlXStatisticSort* PlXCategoricalDomain::addStatisticSort(CTVariableType& variable) {
  PlXStatisticSort* sort = add<PlXStatisticSort>();
  if (sort) sort->setVariable(variable);
  return sort;
}
