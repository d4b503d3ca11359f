// setScaleByFraction: stacked elements show the fractions of their stack in the place of their
// values, and the y axes of their graphs percents.
#include <algorithm>

#include "commands.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxuni.h"

namespace {

bool isStacked(const CTElementType* element) {
  const auto modifier = element->getPositionModifier();
  return modifier == CTElementType::positionModifier_stack ||
         modifier == CTElementType::positionModifier_stackInterpolating;
}

void showPercents(PlXMajorTicks& ticks) {
  ticks.removeFormats();
  PlXFormat* format = ticks.addFormat();
  format->setSuffix(u"%");
  format->setScalingFactor(0.01);
}

}  // namespace

bool TSetScaleByFraction::ProcessCommand() {
  if (!command) return false;
  for (const PlXGraph* graph : target.getGraphs()) {
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    std::erase_if(elements, [](const CTElementType* element) { return !isStacked(element); });
    for (CTElementType* element : elements) {
      element->removeSummaryStatistics();
      PlXSummaryStatistic* statistic = element->addSummaryStatistic();
      statistic->setSummaryBase(PlXSummaryStatistic::summaryBase_coordinate);
      statistic->setMethod(PlXSummaryStatistic::method_fraction);
    }
    if (elements.empty()) continue;
    for (const PlXDimension* dimension : getDimensionsByRole(*graph, PlXUni::_y)) {
      for (const PlXAxis* axis : dimension->getAxiss()) {
        if (PlXMajorTicks* ticks = axis->getMajorTicks()) showPercents(*ticks);
      }
    }
  }
  return true;
}
