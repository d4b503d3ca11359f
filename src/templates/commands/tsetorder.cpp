// setOrder role, with a child categoryValue: puts the categories of a role, or of the legend, in
// the order of a list of labels or raw values separated by ";". Every domain that refers to a
// variable of the role is ordered, and loses its other sorts; of several the last becomes the
// variable's own. A label that the variable's format doesn't know is taken for a raw value.
#include "categories.h"
#include "commands.h"
#include "plxdomains.h"
#include "plxuni.h"

using namespace categories;

bool TSetOrder::ProcessCommand() {
  const std::optional<ChartString> labels = listOf(command);
  if (!labels) return false;
  Domains(source, target)
      .edit(attribute(PlXUni::_role), Reach::all,
            [&](PlXCategoricalDomain& domain, const CTVariableType& variable, const PlXGraph&) {
              domain.removeStatisticSorts();
              domain.removeSimpleSorts();
              PlXSimpleSort* sort = domain.addSimpleSort();
              sort->setMethod(PlXSimpleSort::method_explicit);
              const ChartString order = rawValues(*this, variable, *labels, Unlabelled::kept);
              sort->addCategoryOrder()->setText(order.xc_str());
            });
  return true;
}
