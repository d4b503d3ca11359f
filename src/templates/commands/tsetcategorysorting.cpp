// setCategorySorting role useGroupVar, with a child sort (descending; simpleSort or statisticSort):
// sorts the categories of a role, or with useGroupVar of the legend, by themselves or by the y
// variable of the graph's first element; by label without a sort. Other sorts go. Where a statistic
// sort finds no y variable the order of the data is left.
#include <optional>
#include <unordered_map>

#include <xercesc/dom/DOM.hpp>

#include "categories.h"
#include "commands.h"
#include "plxdomains.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Sorting {
  bool isSimple = true;
  PlXSimpleSort::ENUM_method method = PlXSimpleSort::method_natural;
  bool descending = false;
};

PlXSimpleSort::ENUM_method methodOf(const XMLCh* word) {
  if (is(word, PlXUni::_data)) return PlXSimpleSort::method_data;
  return is(word, PlXUni::_natural) ? PlXSimpleSort::method_natural : PlXSimpleSort::method_value;
}

// Nothing for a sort of neither kind.
std::optional<Sorting> readSorting(const DOMElement& command) {
  Sorting sorting;
  const DOMElement* sort = firstDescendant(&command, u"sort");
  if (!sort) return sorting;
  sorting.descending = isTrue(*sort, PlXUni::_descending);
  if (const DOMElement* simple = firstDescendant(sort, PlXUni::_simpleSort)) {
    sorting.method = methodOf(simple->getAttribute(PlXUni::_method));
    return sorting;
  }
  if (!firstDescendant(sort, PlXUni::_statisticSort)) return {};
  sorting.isSimple = false;
  return sorting;
}

// The y variables of the first elements of graphs, each looked for once.
class Measures {
 public:
  explicit Measures(const BaseTemplate& queries) : queries_(queries) {}

  // Null when there is none.
  CTVariableType* of(const PlXGraph& graph) {
    const auto [known, isNew] = byGraph_.emplace(&graph, nullptr);
    if (isNew) {
      std::vector<CTElementType*> elements;
      BaseTemplate::getAllElements(graph, elements);
      if (!elements.empty()) {
        known->second = queries_.getElementVariable(*elements.front(), PlXUni::_y);
      }
    }
    return known->second;
  }

 private:
  const BaseTemplate& queries_;
  std::unordered_map<const PlXGraph*, CTVariableType*> byGraph_;
};

}  // namespace

bool TSetCategorySorting::ProcessCommand() {
  if (!command) return false;
  const std::optional<Sorting> sorting = readSorting(*command);
  if (!sorting) return false;
  const bool isOfLegend = isTrue(*command, u"useGroupVar");
  const ChartString role = isOfLegend ? ChartString(PlXUni::_legend) : attribute(PlXUni::_role);
  // The word alone doesn't ask for the legend here, as it does in the other commands.
  if (!isOfLegend && role.equals(PlXUni::_legend)) return true;
  categories::Domains domains(source, target);
  Measures measures(domains.queries());
  domains.edit(role, categories::Reach::own,
               [&](PlXCategoricalDomain& domain, CTVariableType& variable, const PlXGraph& graph) {
                 domain.removeStatisticSorts();
                 domain.removeSimpleSorts();
                 if (sorting->isSimple) {
                   PlXSimpleSort* sort = domain.addSimpleSort();
                   sort->setDescending(sorting->descending);
                   sort->setMethod(sorting->method);
                 } else if (CTVariableType* measure = measures.of(graph)) {
                   PlXStatisticSort* sort = domain.addStatisticSort(variable);
                   sort->setDescending(sorting->descending);
                   sort->setMethod(PlXStatisticSort::method_mean);
                   sort->setStatVariable(*measure);
                 }
               });
  return true;
}
