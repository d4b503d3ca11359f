#include "categories.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include <xercesc/dom/DOM.hpp>

#include "plxaesthetics.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "templatexml.h"

using namespace xercesc;

namespace categories {

std::optional<ChartString> listOf(const DOMElement* command) {
  const DOMElement* list = templatexml::firstDescendant(command, BaseTemplate::_categoryValue);
  if (!list) return {};
  return list->getTextContent();
}

ChartString rawValues(const BaseTemplate& command, const CTVariableType& variable,
                      const ChartString& labels, Unlabelled unlabelled) {
  std::unordered_map<std::u16string_view, std::u16string_view> raw;
  std::unordered_set<std::u16string_view> labelled;
  const std::vector<PlXFormat*> formats = variable.getFormats();
  if (!formats.empty()) {
    // Of several the first counts.
    for (const PlXRelabel* relabel : formats.front()->getRelabels()) {
      raw.emplace(relabel->getTo(), relabel->getFrom());
      labelled.insert(relabel->getFrom());
    }
  }
  std::u16string values;
  std::u16string_view rest = labels.view();
  while (!rest.empty()) {
    const std::u16string_view label = rest.substr(0, rest.find(u';'));
    rest.remove_prefix(std::min(label.size() + 1, rest.size()));
    const auto found = raw.find(label);
    std::u16string_view value = found == raw.end() ? std::u16string_view() : found->second;
    // Where no category has a label, all may be raw values.
    const bool isRaw = unlabelled == Unlabelled::kept && (raw.empty() || labelled.contains(label));
    command.tellUnless(found != raw.end() || isRaw, "no category has the label",
                       ChartString(label));
    if (value.empty() && unlabelled == Unlabelled::kept) value = label;
    if (value.empty()) continue;
    if (!values.empty()) values += u';';
    values += value;
  }
  return ChartString(values);
}

Domains::Domains(const PlXVisualization* source, PlXVisualization& target)
    : target_(target), queries_(source, target) {
  queries_.keepFindings();
  queries_.getGraphs(graphs_);
  if (!graphs_.empty()) {
    for (const PlXDimension* dimension :
         queries_.getDimensionsByRole(*graphs_.front(), PlXUni::_x)) {
      if (!cluster_) cluster_ = dimension->getClusterVariable();
    }
  }
  for (PlXCategoricalDomain* domain : target.getCategoricalDomains()) {
    for (const PlXVariableReference* reference : domain->getVariableReferences()) {
      if (const CTVariableType* variable = reference->getRef()) noteReference(*variable, *domain);
    }
  }
}

void Domains::noteReference(const CTVariableType& variable, PlXCategoricalDomain& domain) {
  std::vector<PlXCategoricalDomain*>& domains = referring_[variable.getId()];
  if (domains.empty() || domains.back() != &domain) domains.push_back(&domain);
}

PlXCategoricalDomain* Domains::ofDimensions(const PlXGraph& graph, const ChartString& role) {
  if (askedGraph_ != &graph || !(askedRole_ == role)) {
    askedGraph_ = &graph;
    askedRole_ = role;
    askedDomain_ = queries_.getCategoricalDomain(graph, role, nullptr);
  }
  return askedDomain_;
}

PlXCategoricalDomain& Domains::add() {
  return *target_.addCategoricalDomain(
      queries_.CreateUniqueId(PlXUni::_categoricalDomain).xc_str());
}

void Domains::tie(CTVariableType& variable, PlXCategoricalDomain& domain) {
  variable.setDomain(domain);
  const auto refers = [&](const PlXVariableReference* each) { return each->getRef() == &variable; };
  if (std::ranges::any_of(domain.getVariableReferences(), refers)) return;
  domain.addVariableReference(variable);
  noteReference(variable, domain);
}

std::vector<CTVariableType*> Domains::variablesOf(const PlXGraph& graph,
                                                  const ChartString& role) const {
  if (role.equals(PlXUni::_legend)) return queries_.getLegendVariables(graph, role);
  std::vector<CTElementType*> elements;
  BaseTemplate::getAllElements(graph, elements);
  const bool isX = role.equals(PlXUni::_x);
  if (isX && cluster_) {
    return elements.empty() ? std::vector<CTVariableType*>() : std::vector{cluster_};
  }
  std::vector<CTVariableType*> variables;
  for (const CTElementType* element : elements) {
    // The query would look for a cluster variable each time.
    const CTCoordinate* x = isX ? element->getX() : nullptr;
    CTVariableType* variable = x     ? x->getVariable()
                               : isX ? nullptr
                                     : queries_.getElementVariable(*element, role);
    if (variable) variables.push_back(variable);
  }
  return variables;
}

std::vector<PlXCategoricalDomain*> Domains::domainsOf(CTVariableType& variable,
                                                      const PlXGraph& graph,
                                                      const ChartString& role, Reach reach) {
  // An empty id is nobody's.
  const bool hasId = *variable.getId();
  const auto found = hasId ? referring_.find(variable.getId()) : referring_.end();
  std::vector<PlXCategoricalDomain*> referring =
      found == referring_.end() ? std::vector<PlXCategoricalDomain*>() : found->second;
  if (reach == Reach::all && !referring.empty()) {
    variable.setDomain(*referring.back());
    return referring;
  }
  PlXCategoricalDomain* domain = variable.getCategoricalDomain();
  if (!domain && !referring.empty()) domain = referring.front();
  if (!domain) domain = ofDimensions(graph, role);
  if (!domain) domain = &add();
  tie(variable, *domain);
  return {domain};
}

void Domains::edit(const ChartString& role, Reach reach, const Edit& edit) {
  struct Use {
    CTVariableType* variable;
    std::vector<PlXCategoricalDomain*> domains;
    const PlXGraph* lastGraph;
    std::size_t last;
  };
  std::vector<Use> uses;
  std::unordered_map<const CTVariableType*, std::size_t> useOf;
  std::size_t count = 0;
  for (const PlXGraph* graph : graphs_) {
    for (CTVariableType* variable : variablesOf(*graph, role)) {
      if (!variable->getCategorical()) continue;
      const auto [known, isNew] = useOf.emplace(variable, uses.size());
      if (isNew) uses.push_back({variable, domainsOf(*variable, *graph, role, reach), graph, 0});
      uses[known->second].lastGraph = graph;
      uses[known->second].last = count++;
    }
  }
  std::ranges::sort(uses, {}, &Use::last);
  std::vector<PlXCategoricalDomain*> order;
  std::unordered_map<PlXCategoricalDomain*, const Use*> lastUse;
  for (const Use& use : uses) {
    for (PlXCategoricalDomain* domain : use.domains) {
      if (lastUse.insert_or_assign(domain, &use).second) order.push_back(domain);
    }
  }
  for (PlXCategoricalDomain* domain : order) {
    const Use& use = *lastUse[domain];
    edit(*domain, *use.variable, *use.lastGraph);
  }
}

}  // namespace categories
