#include "labelvariables.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "basetemplate.h"
#include "chartbase.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"
#include "plxvariables.h"

namespace datalabels {
namespace {

// ---- the classes of row variables, of which the first that fits counts
struct RowClass {
  bool (*fits)(const PlXSourceVariable& variable, long statistic);
  CTVariableType* RowVariables::*member;
};

bool hasName(const PlXSourceVariable& variable, const XMLCh* name) {
  return ChartString(variable.getSourceName()).equals(name);
}

constexpr long statisticOfCounts = 1;
constexpr long statisticOfPercents = 2;

const RowClass rowClasses[] = {
    {[](const PlXSourceVariable&, long statistic) { return statistic == statisticOfCounts; },
     &RowVariables::count},
    {[](const PlXSourceVariable& variable, long) {
       return hasName(variable, ChartBase::_weightname);
     },
     &RowVariables::weight},
    {[](const PlXSourceVariable& variable, long) { return hasName(variable, ChartBase::_casenum); },
     &RowVariables::casenum},
    {[](const PlXSourceVariable& variable, long statistic) {
       return statistic == statisticOfPercents || hasName(variable, ChartBase::_percentname);
     },
     &RowVariables::percent},
    {[](const PlXSourceVariable& variable, long) {
       return ChartString(variable.getDescription()).equals(PlXUni::_labeling);
     },
     &RowVariables::labelVariable},
};

// A variable that counts rows by its expression, whatever the source.
CTVariableType* derivedCount(const PlXVisualization& chart) {
  for (PlXDerivedVariable* variable : chart.getDerivedVariables()) {
    if (ChartString(variable->getValue()).ContainsString(u"counted")) return variable;
  }
  return nullptr;
}

CTVariableType* variableOf(const CTCoordinate* coordinate) {
  return coordinate ? coordinate->getVariable() : nullptr;
}

bool areOfOneSource(const CTVariableType& variable, const CTVariableType* x) {
  return ChartString(variable.getSource()).equals(x ? x->getSource() : u"");
}

// True when the element's summary makes counts, or percents of counts, of the rows behind an x.
bool showsCounts(const CTElementType& element) {
  const PlXSummaryStatistic* first = firstSummary(element);
  if (!first) return false;
  const Method method = first->getMethod();
  return isOfCounts(method) || method == PlXSummaryStatistic::method_validCount ||
         method == PlXSummaryStatistic::method_percentCount;
}

// True when a percent can be made of it. A polar graph shows shares anyway.
bool showsShares(const CTElementType& element, bool polar) {
  const PlXSummaryStatistic* first = firstSummary(element);
  return first ? showsCounts(element) || isOfPercents(first->getMethod()) : polar;
}

// ---- the ends of a range, by what the records of their variables say
constexpr long statisticOfUpperEnd = 9;
constexpr long statisticOfLowerEnd = 10;

long statisticOf(const PlXSourceVariable* variable) {
  const PlXExtensionSV* extension = variable ? variable->getExtension() : nullptr;
  return extension ? extension->getStatistic() : 0;
}

// Of an expression "upper+lower" in any order.
std::optional<RangeEnds> readEnds(const CTVariableType& variable) {
  const auto* expression = dynamic_cast<const PlXExpressionVariable*>(&variable);
  if (!expression) return std::nullopt;
  const auto part = [&](unsigned index) {
    ChartString id = ChartBase::getToken(expression->getExpression(), u"+", index);
    id.trimSpaces(true);
    return dynamic_cast<PlXSourceVariable*>(
        variable.objectOf(variable.getElementById(id.xc_str())));
  };
  RangeEnds ends{part(0), part(1)};
  if (statisticOf(ends.upper) == statisticOfLowerEnd) std::swap(ends.upper, ends.lower);
  const bool areEnds = statisticOf(ends.upper) == statisticOfUpperEnd &&
                       statisticOf(ends.lower) == statisticOfLowerEnd;
  return areEnds ? std::optional(ends) : std::nullopt;
}

}  // namespace

std::optional<Kind> kindOf(const ChartString& word) {
  static const std::pair<const XMLCh*, Kind> words[] = {
      {BaseTemplate::_casenum, Kind::casenum},
      {PlXUni::_count, Kind::count},
      {PlXUni::_labeling, Kind::labeling},
      {PlXUni::_percent, Kind::percent},
      {PlXUni::_x, Kind::x},
      {u"xortheta", Kind::x},
      {PlXUni::_y, Kind::y},
      {PlXUni::_z, Kind::z},
      {u"legend1", Kind::legend1},
      {u"legend2", Kind::legend2},
  };
  for (const auto& [text, kind] : words) {
    if (word.equals(text)) return kind;
  }
  return std::nullopt;
}

bool isOfCounts(Method method) {
  return method == PlXSummaryStatistic::method_count ||
         method == PlXSummaryStatistic::method_cumulativeCount ||
         method == PlXSummaryStatistic::method_unweightedCount;
}

bool isOfPercents(Method method) {
  return method == PlXSummaryStatistic::method_percent ||
         method == PlXSummaryStatistic::method_percentCount ||
         method == PlXSummaryStatistic::method_cumulativePercent ||
         method == PlXSummaryStatistic::method_cumulativePercentCount;
}

PlXSummaryStatistic* firstSummary(const CTElementType& element) {
  const std::vector<PlXSummaryStatistic*> summaries = element.getSummaryStatistics();
  return summaries.empty() ? nullptr : summaries.front();
}

Sources::Sources(const PlXVisualization& chart) {
  for (PlXSourceVariable* variable : chart.getSourceVariables()) {
    RowVariables& rows = sources_[variable->getSource()];
    const long statistic = statisticOf(variable);
    const RowClass* fitting = std::ranges::find_if(
        rowClasses, [&](const RowClass& each) { return each.fits(*variable, statistic); });
    if (fitting != std::end(rowClasses)) rows.*fitting->member = variable;
  }
  CTVariableType* count = derivedCount(chart);
  for (auto& [source, rows] : sources_) {
    if (!rows.count) rows.count = count;
  }
}

const RowVariables& Sources::of(const CTVariableType* variable) const {
  static const RowVariables none;
  const auto found = sources_.find(variable ? variable->getSource() : u"");
  return found == sources_.end() ? none : found->second;
}

LabelledGraph::LabelledGraph(const BaseTemplate& queries, const Sources& sources,
                             const PlXGraph& graph)
    : sources_(sources),
      polar_(queries.isGraphPolar(graph)),
      clusterOnX_(queries.clusterVariable(graph, PlXUni::_x)),
      clusterOnZ_(queries.clusterVariable(graph, PlXUni::_z)),
      legendVariables_(queries.getLegendVariables(graph, PlXUni::_legend)) {}

CTVariableType* LabelledGraph::legendVariable(std::size_t index) const {
  return index < legendVariables_.size() ? legendVariables_[index] : nullptr;
}

CTVariableType* LabelledGraph::variableFor(Kind kind, const CTElementType& element) const {
  CTVariableType* x = variableOf(element.getX());
  const RowVariables& rows = sources_.of(x);
  const auto legend = [&](std::size_t index) {
    CTVariableType* variable = legendVariable(index);
    return variable && areOfOneSource(*variable, x) ? variable : nullptr;
  };
  switch (kind) {
    case Kind::casenum:
      return rows.casenum;
    case Kind::count:
      if (rows.count) return rows.count;
      return showsCounts(element) ? x : nullptr;
    case Kind::labeling:
      return rows.labelVariable;
    case Kind::percent:
      if (rows.percent) return rows.percent;
      if (rows.count) return rows.count;
      return showsShares(element, polar_) ? x : nullptr;
    case Kind::x:
      if (clusterOnX_) return clusterOnX_;
      return x ? x : legendVariable(0);
    case Kind::y:
      return variableOf(element.getY());
    case Kind::z:
      return clusterOnZ_ ? clusterOnZ_ : variableOf(element.getZ());
    case Kind::legend1:
      return legend(0) ? legend(0) : legend(1);
    case Kind::legend2:
      return legend(1);
  }
  return nullptr;
}

std::optional<RangeEnds> LabelledGraph::endsOf(const CTVariableType& variable) const {
  const auto [entry, isNew] = ends_.try_emplace(&variable);
  if (isNew) entry->second = readEnds(variable);
  return entry->second;
}

}  // namespace datalabels
