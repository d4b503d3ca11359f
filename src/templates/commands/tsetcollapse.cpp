// setCollapse role categoryName minFraction: merges the categories of x, z or the legend whose
// share of the whole is below minFraction into one, which goes last. It merges elements without a
// summary, or whose first is a percent, and sums up what they show; those that show sums already,
// as after another setCollapse, stay as they are. A graph with categories on x or z must be plain:
// one block at most, and on y nothing but columns of counts, sums or their percents. Lists of
// categories to keep or to leave out go from the domain. A new domain is the variable's.
#include <algorithm>
#include <unordered_map>

#include "categories.h"
#include "commands.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "statedvalues.h"

namespace {

// What PlXExtensionSV::getStatistic() answers of counts, sums and their percents.
constexpr long countsAndSums[] = {1, 2, 6, 30};

bool showsCountOrSum(const CTElementType* element) {
  const CTCoordinate* y = element->getY();
  const PlXSourceVariable* variable = y ? y->getSourceVariable() : nullptr;
  const PlXExtensionSV* extension = variable ? variable->getExtension() : nullptr;
  return extension && std::ranges::count(countsAndSums, extension->getStatistic()) > 0;
}

bool isUnsummed(const CTElementType& element) {
  const std::vector<PlXSummaryStatistic*> summaries = element.getSummaryStatistics();
  return summaries.empty() || summaries.front()->getMethod() == PlXSummaryStatistic::method_percent;
}

// Behind a percent there may be one of an earlier run.
void sumUp(CTElementType& element) {
  PlXSummaryStatistic* sum = nullptr;
  for (PlXSummaryStatistic* each : element.getSummaryStatistics()) {
    if (each->getMethod() == PlXSummaryStatistic::method_sum) sum = each;
  }
  if (!sum) sum = element.addSummaryStatistic();
  sum->setConvertIntervalToSingleValue(false);
  sum->setMethod(PlXSummaryStatistic::method_sum);
  sum->setSummaryBase(PlXSummaryStatistic::summaryBase_coordinate);
}

template <class Sort>
void moveLast(Sort& sort, const ChartString& category) {
  const std::vector<PlXSortMove*> moves = sort.getSortMoves();
  const auto known = std::ranges::find_if(
      moves, [&](const PlXSortMove* move) { return category.equals(move->getCategory()); });
  (known == moves.end() ? sort.addSortMove(category.xc_str()) : *known)->setFirst(false);
}

void putLast(PlXCategoricalDomain& domain, const ChartString& category) {
  const std::vector<PlXStatisticSort*> statisticSorts = domain.getStatisticSorts();
  if (!statisticSorts.empty()) return moveLast(*statisticSorts.front(), category);
  const std::vector<PlXSimpleSort*> simpleSorts = domain.getSimpleSorts();
  PlXSimpleSort* sort = simpleSorts.empty() ? domain.addSimpleSort() : simpleSorts.front();
  if (simpleSorts.empty()) sort->setMethod(PlXSimpleSort::method_natural);
  moveLast(*sort, category);
}

// One variable whose categories are merged: of several elements the first with a domain and the
// last measure count.
struct Merge {
  CTVariableType* variable;
  CTVariableType* measure;
  PlXCategoricalDomain* domain;
};

CTVariableType* variableOf(const CTCoordinate* coordinate) {
  return coordinate ? coordinate->getVariable() : nullptr;
}

// Sums up the elements of all graphs. In the order of the variables' first elements.
std::vector<Merge> mergesOf(categories::Domains& domains, const ChartString& role) {
  const BaseTemplate& queries = domains.queries();
  const bool isX = role.equals(PlXUni::_x);
  const bool isLegend = role.equals(PlXUni::_legend);
  std::vector<Merge> merges;
  std::unordered_map<const CTVariableType*, std::size_t> mergeOf;
  if (!isX && !isLegend && !role.equals(PlXUni::_z)) return merges;
  for (const PlXGraph* graph : domains.graphs()) {
    std::vector<CTElementType*> elements;
    BaseTemplate::getAllElements(*graph, elements);
    if (!isLegend && queries.isRoleCategorical(*graph, role) &&
        (graph->getCoordinatess().size() > 1 || !std::ranges::all_of(elements, showsCountOrSum))) {
      continue;
    }
    const auto shown =
        isLegend ? queries.getLegendVariables(*graph, role) : std::vector<CTVariableType*>();
    for (CTElementType* element : elements) {
      if (!isUnsummed(*element)) continue;
      CTVariableType* variable = isLegend ? (shown.empty() ? nullptr : shown.front())
                                          : variableOf(isX ? element->getX() : element->getZ());
      CTVariableType* measure = variableOf(isLegend ? element->getX() : element->getY());
      if (!variable || !variable->getCategorical() || !measure) continue;
      sumUp(*element);
      const auto [known, isNew] = mergeOf.emplace(variable, merges.size());
      if (isNew) merges.push_back({variable, measure, nullptr});
      Merge& merge = merges[known->second];
      merge.measure = measure;
      if (merge.domain) continue;
      merge.domain = isLegend ? queries.getCategoricalDomain(*graph, role, element)
                              : variable->getCategoricalDomain();
      if (!merge.domain) merge.domain = domains.ofDimensions(*graph, role);
    }
  }
  return merges;
}

}  // namespace

bool TSetCollapse::ProcessCommand() {
  if (!command) return false;
  const ChartString category = attribute(u"categoryName");
  const double minFraction = stated::number(*this, command, PlXUni::_minFraction).value_or(0);
  categories::Domains domains(source, target);
  for (const Merge& merge : mergesOf(domains, attribute(PlXUni::_role))) {
    merge.variable->removeAggregations();
    merge.variable->addAggregation(category.xc_str(), *merge.measure, minFraction);
    PlXCategoricalDomain& domain = merge.domain ? *merge.domain : domains.add();
    // One that a dimension has, or another variable, stays theirs.
    if (!merge.domain) domains.tie(*merge.variable, domain);
    putLast(domain, category);
    domain.removeCategoriess();
  }
  return true;
}
