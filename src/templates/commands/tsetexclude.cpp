// setExclude role, with a child categoryValue: leaves categories of a role, or of the legend, out
// of the domain of their variable, in the place of all that was left out or kept before. The list
// is of labels separated by ";"; one that the variable's format doesn't know leaves nothing out.
#include "categories.h"
#include "commands.h"
#include "plxdomains.h"
#include "plxuni.h"

using namespace categories;

bool TSetExclude::ProcessCommand() {
  const std::optional<ChartString> labels = listOf(command);
  if (!labels) return false;
  Domains(source, target)
      .edit(attribute(PlXUni::_role), Reach::own,
            [&](PlXCategoricalDomain& domain, const CTVariableType& variable, const PlXGraph&) {
              domain.removeCategoriess();
              PlXCategories* excluded = domain.addCategories();
              excluded->setRemove(true);
              excluded->setText(rawValues(*this, variable, *labels, Unlabelled::dropped).xc_str());
            });
  return true;
}
