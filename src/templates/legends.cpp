// BaseTemplate's legends: what they show, and entries for copies of it.
#include <optional>
#include <string>

#include "basetemplate.h"
#include "findings.h"
#include "objectsbytag.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"
#include "plxvariables.h"

std::vector<PlXLegend*> BaseTemplate::getLegends() const {
  return framesByTag<PlXLegend>(target, PlXUni::_legend);
}

std::vector<CTVariableType*> BaseTemplate::getLegendVariables(const PlXGraph& graph,
                                                              const ChartString& role) const {
  std::vector<CTVariableType*> variables;
  const bool isLegend = role.equals(PlXUni::_legend);
  std::vector<CTElementType*> elements;
  getAllElements(graph, elements);
  for (const CTElementType* element : elements) {
    const CTVariableType* own = getElementVariable(*element, role);
    for (const CTAesthetic* aesthetic : getAesthetics(*element)) {
      CTVariableType* shown = aesthetic->getVariable();
      if (shown && (isLegend || shown == own)) variables.push_back(shown);
    }
  }
  return variables;
}

void BaseTemplate::forgetLegends() {
  if (findings_) findings_->legendsOf.reset();
}

void BaseTemplate::CloneLegendEntry(const ChartString& aestheticId,
                                    const PlXBaseElement& aesthetic) {
  PlXBaseElement* shown = target.objectOf(aesthetic.getImplementation());
  // Entries whose target is gone have none, and are no aesthetic's.
  if (!shown || aestheticId.empty()) return;
  std::optional<Findings::LegendsOf> own;
  std::optional<Findings::LegendsOf>& legendsOf = findings_ ? findings_->legendsOf : own;
  if (!legendsOf) {
    legendsOf.emplace();
    for (PlXLegend* legend : getLegends()) {
      for (const PlXLegendTarget* entry : legend->getLegendTargets()) {
        (*legendsOf)[entry->GetAttribute(PlXUni::_target)].push_back(legend);
      }
    }
  }
  const auto found = legendsOf->find(std::u16string(aestheticId.view()));
  if (found == legendsOf->end()) return;
  const std::vector<PlXLegend*> legends = found->second;
  for (PlXLegend* legend : legends) {
    legend->addLegendTarget(CreateUniqueId(PlXUni::_legendTarget).xc_str(), *shown);
  }
  // The aesthetic has an id by now.
  const XMLCh* id = shown->GetAttribute(PlXUni::_id);
  std::vector<PlXLegend*>& others = (*legendsOf)[id];
  others.insert(others.end(), legends.begin(), legends.end());
}
