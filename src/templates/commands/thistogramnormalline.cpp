// addHistogramNormalLine type parameter secondaryParameter, with a style: lays the curve of a
// distribution over the first histogram of each graph, as a new line that the chart's first legend
// names; a legend is made when there is none. A normal curve for an unknown type. Parameters that
// the type doesn't have, or lacks, change nothing. A histogram without a y dimension gets one.
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "graphtexts.h"
#include "linelegend.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;
using stated::Type;

namespace {

using Statistic = PlXDistributionStatistic;

enum class Needs { anything, onlyFirst, both, noSecond };

struct Distribution {
  const XMLCh* word;
  Statistic::ENUM_distribution distribution;
  Needs needs;
  const char* nameKey;
};

constexpr Distribution distributions[] = {
    {PlXUni::_uniform, Statistic::distribution_uniform, Needs::anything, "E62227"},
    {PlXUni::_normal, Statistic::distribution_normal, Needs::anything, "E62224"},
    {PlXUni::_t, Statistic::distribution_t, Needs::onlyFirst, "E62323"},
    {PlXUni::_f, Statistic::distribution_f, Needs::both, "F Distribution"},
    {PlXUni::_chisquare, Statistic::distribution_chisquare, Needs::onlyFirst, "E62217"},
    {PlXUni::_gamma, Statistic::distribution_gamma, Needs::onlyFirst, "E62219"},
    {PlXUni::_beta, Statistic::distribution_beta, Needs::both, "E62216"},
    {PlXUni::_exponential, Statistic::distribution_exponential, Needs::noSecond, "E62218"},
    {PlXUni::_logistic, Statistic::distribution_logistic, Needs::both, "E62222"},
    {PlXUni::_studentizedrange, Statistic::distribution_studentizedrange, Needs::both,
     "Studentized Range"},
    {PlXUni::_weibull, Statistic::distribution_weibull, Needs::both, "E62228"},
    {PlXUni::_poisson, Statistic::distribution_poisson, Needs::noSecond, "Poisson"},
};

const Distribution& distributionOf(const ChartString& word) {
  constexpr std::size_t normal = 1;
  for (const Distribution& each : distributions) {
    if (word.equals(each.word)) return each;
  }
  return distributions[normal];
}

bool fits(Needs needs, bool hasFirst, bool hasSecond) {
  switch (needs) {
    case Needs::onlyFirst:
      return hasFirst && !hasSecond;
    case Needs::both:
      return hasFirst && hasSecond;
    case Needs::noSecond:
      return !hasSecond;
    default:
      return true;
  }
}

// True for what counts the cases along x.
bool isHistogram(const CTElementType& element) {
  for (const PlXSummaryStatistic* statistic : element.getSummaryStatistics()) {
    if (statistic->getMethod() == PlXSummaryStatistic::method_count) return true;
  }
  const CTCoordinate* y = element.getY();
  if (!y) {
    for (const PlXBinStatistic* statistic : element.getBinStatistics()) {
      if (statistic->getGridType() == PlXBinStatistic::gridType_dot) return true;
    }
    return false;
  }
  const CTVariableType* counted = y->getVariable();
  const PlXExtensionSV* extension = counted ? counted->getExtension() : nullptr;
  // Its values are counts or percents.
  return extension && (extension->getStatistic() == 1 || extension->getStatistic() == 2);
}

// Of the first histogram; null when there is none.
CTVariableType* binnedVariable(const PlXGraph& graph) {
  std::vector<CTElementType*> elements;
  BaseTemplate::getAllElements(graph, elements);
  for (const CTElementType* element : elements) {
    const CTCoordinate* x = element->getX();
    CTVariableType* variable = x ? x->getVariable() : nullptr;
    if (variable && isHistogram(*element)) return variable;
  }
  return nullptr;
}

}  // namespace

bool THistogramNormalLine::ProcessCommand() {
  if (!command) return false;
  const Distribution& kind = distributionOf(attribute(PlXUni::_type));
  const ChartString first = stated::text(*this, command, u"parameter", Type::Number);
  const ChartString second = stated::text(*this, command, u"secondaryParameter", Type::Number);
  if (!fits(kind.needs, !first.empty(), !second.empty())) return false;
  const StyleImport imported(*this, firstDescendant(command, PlXUni::_style));
  std::optional<ChartString> name;
  LineLegend legend(*this, {{u"75%", u"98%", u"2.5%", u"97.5%"}, true});

  const auto addLine = [&](PlXGraph& graph, CTVariableType& variable) {
    PlXLine* line = graph.addLine(CreateUniqueId(PlXUni::_distribution).xc_str());
    line->addX()->setVariable(variable);
    PlXStyle& style = styleOf<CTElementType>(*line);
    style.setWidth(u"1pt", nullptr, nullptr);
    PlXDistributionStatistic* statistic = line->addDistributionStatistic();
    statistic->setDistribution(kind.distribution);
    if (!first.empty()) statistic->setParameter(first.xc_str());
    if (!second.empty()) statistic->setSecondaryParameter(second.xc_str());
    if (getDimensionsByRole(graph, PlXUni::_y).empty()) {
      for (PlXCoordinates* block : graph.getCoordinatess()) {
        const std::size_t count =
            block->getDimensions().size() + block->getDimensionReferences().size();
        if (count == 1) block->addDimension();
      }
    }
    if (!name) name = GraphTexts().lookUp(kind.nameKey);
    line->setName(name->xc_str());
    legend.add(*line);
    imported.onto(style);
  };
  const std::vector<PlXGraph*> graphs = target.getGraphs();
  for (PlXGraph* graph : graphs) {
    if (isRoleCategorical(*graph, PlXUni::_x)) continue;
    if (CTVariableType* variable = binnedVariable(*graph)) addLine(*graph, *variable);
  }
  return !graphs.empty();
}
