// setExplodeSlice, with a child categoryValue: pulls slices of pies out by an offset of the first
// legend variable, whose domain holds the slices' categories, and shrinks the pies to make room.
// The list is of labels separated by ";"; one that the variable's format doesn't know pulls nothing
// out. An offset and an inset that there are stay as they are, but for the domain's categories.
#include "categories.h"
#include "commands.h"
#include "plxaesthetics.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxgraph.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "plxvariables.h"

using namespace categories;

namespace {

PlXOffset& offsetOf(CTElementType& element, CTVariableType& variable) {
  const std::vector<PlXOffset*> offsets = element.getOffsets();
  if (!offsets.empty()) return *offsets.front();
  PlXOffset* offset = element.addOffset();
  offset->setHigh(u"3%");
  offset->setLow(u"3%");
  offset->setVariable(variable);
  return *offset;
}

void makeRoom(PlXCoordinates& block) {
  if (!block.getInsetTransforms().empty()) return;
  constexpr double share = 0.2;
  PlXInsetTransform* inset = block.addInsetTransform();
  inset->setX_min(share);
  inset->setX_max(share);
  inset->setY_min(share);
  inset->setY_max(share);
}

}  // namespace

bool TSetExplodeSlice::ProcessCommand() {
  const std::optional<ChartString> labels = listOf(command);
  if (!labels) return false;
  Domains domains(source, target);
  std::unordered_map<const CTVariableType*, PlXCategoricalDomain*> added;

  const auto explode = [&](CTElementType& element, CTVariableType& variable,
                           const ChartString& slices) {
    PlXOffset& offset = offsetOf(element, variable);
    auto* domain = dynamic_cast<PlXCategoricalDomain*>(offset.getDomain());
    if (!domain) {
      PlXCategoricalDomain*& own = added[&variable];
      if (!own) own = &domains.add();
      domain = own;
    }
    offset.setDomain(*domain);
    domain->removeCategoriess();
    domain->addCategories()->setText(slices.xc_str());
  };

  for (const PlXGraph* graph : domains.graphs()) {
    if (!isGraphPolar(*graph)) continue;
    const std::vector<CTVariableType*> shown = getLegendVariables(*graph, PlXUni::_legend);
    if (shown.empty() || !shown.front()->getCategorical()) continue;
    const ChartString slices = rawValues(*this, *shown.front(), *labels, Unlabelled::dropped);
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    std::erase_if(elements, [&](const CTElementType* element) {
      const CTCoordinate* x = element->getX();
      return !domains.clusterVariable() && !(x && x->getVariable());
    });
    for (CTElementType* element : elements) explode(*element, *shown.front(), slices);
    if (elements.empty()) continue;
    for (PlXCoordinates* block : graph->getCoordinatess()) makeRoom(*block);
  }
  return true;
}
