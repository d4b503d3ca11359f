// setProjectionLine before low high, with a child categoryValue: cuts lines and paths at a value of
// x by a size, whose two lengths the sides get. The size shows a derived variable, 0 on one side
// and 1 on the other; both are added anew by each run. Of x with categories there is no side.
#include "commands.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "statedvalues.h"
#include "templatexml.h"

namespace {

bool isLine(const CTElementType& element) {
  return dynamic_cast<const PlXLine*>(&element) || dynamic_cast<const PlXPath*>(&element);
}

}  // namespace

bool TSetProjectionLine::ProcessCommand() {
  const auto* value = templatexml::firstDescendant(command, _categoryValue);
  const ChartString cut(value ? value->getTextContent() : nullptr);
  if (cut.empty()) return false;
  const bool before = getBooleanAttribute(command, _before, false);
  const ChartString low = stated::text(*this, command, PlXUni::_low, stated::Type::Length);
  const ChartString high = stated::text(*this, command, PlXUni::_high, stated::Type::Length);

  std::vector<CTElementType*> elements;
  for (const PlXGraph* graph : target.getGraphs()) getAllElements(*graph, elements);
  for (CTElementType* element : elements) {
    const CTCoordinate* x = isLine(*element) ? element->getX() : nullptr;
    CTVariableType* variable = x ? x->getVariable() : nullptr;
    if (!variable || variable->getCategorical()) continue;
    // An expression may stand in its coordinate without one.
    if (!*variable->getId()) {
      variable->setId(CreateUniqueId(PlXUni::_expressionVariable).xc_str());
    }
    PlXDerivedVariable* side =
        target.addDerivedVariable(CreateUniqueId(PlXUni::_derivedVariable).xc_str());
    side->setCreator(u"internal_cutVariable");
    side->setCategorical(false);
    ChartString expression(variable->getId());
    expression.append(before ? " > " : " < ").append(cut).append(" ? 0 : 1");
    side->setValue(expression.xc_str());
    PlXSize* size = element->addSize();
    size->setVariable(*side);
    if (!high.empty()) size->setHigh(high.xc_str());
    if (!low.empty()) size->setLow(low.xc_str());
  }
  return true;
}
