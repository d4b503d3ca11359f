#include "drawextent.h"

#include <algorithm>
#include <utility>

#include "drawstatistics.h"

namespace draw {

namespace {

using Summaries = PlXSummaryStatistic;

// How the numbers of a statistic lie to those that it is made of.
enum class Reach { Values, Sums, Whole, Percents, Fractions, Spread };
Reach reachOf(Summaries::ENUM_method method) {
  static constexpr std::pair<Summaries::ENUM_method, Reach> rows[] = {
      {Summaries::method_sum, Reach::Sums},
      {Summaries::method_count, Reach::Sums},
      {Summaries::method_validCount, Reach::Sums},
      {Summaries::method_unweightedCount, Reach::Sums},
      {Summaries::method_cumulativeSum, Reach::Whole},
      {Summaries::method_cumulativeCount, Reach::Whole},
      {Summaries::method_percent, Reach::Percents},
      {Summaries::method_percentCount, Reach::Percents},
      {Summaries::method_cumulativePercent, Reach::Percents},
      {Summaries::method_cumulativePercentCount, Reach::Percents},
      {Summaries::method_fraction, Reach::Fractions},
      {Summaries::method_fractionCount, Reach::Fractions},
      {Summaries::method_standardDeviation, Reach::Spread},
      {Summaries::method_variance, Reach::Spread}};
  const auto* found =
      std::ranges::find(rows, method, &std::pair<Summaries::ENUM_method, Reach>::first);
  return found == std::end(rows) ? Reach::Values : found->second;
}

bool isCount(Summaries::ENUM_method method) {
  return method == Summaries::method_count || method == Summaries::method_validCount ||
         method == Summaries::method_unweightedCount || method == Summaries::method_percentCount ||
         method == Summaries::method_fractionCount || method == Summaries::method_cumulativeCount ||
         method == Summaries::method_cumulativePercentCount;
}

}  // namespace

void extendBy(DrawContext& context, const CTElementType& element, DrawSide& side) {
  const auto fieldOf = [&](const CTCoordinate* coordinate) {
    const auto fields = coordinate ? context.data.fieldsOf(coordinate->getVariable())
                                   : std::vector<const DrawField*>();
    return fields.size() == 1 ? fields[0] : nullptr;
  };
  const DrawField* x = fieldOf(element.getX());
  const DrawField* y = fieldOf(element.getY());
  const auto* bins = childOf<PlXBinStatistic>(element);
  const auto* statistic = childOf<PlXSummaryStatistic>(element);
  auto method = statistic ? statistic->getMethod() : Summaries::method_value;
  const bool isMade = statistic && method != 0 && method != Summaries::method_value;
  const auto modifier = element.getPositionModifier();
  const bool isPile = modifier == CTElementType::positionModifier_stack ||
                      modifier == CTElementType::positionModifier_stackInterpolating;
  if (!isMade && (bins || (!y && x && x->isCategorical))) method = Summaries::method_count;
  if (!isMade && isPile && y && !y->isCategorical && !bins) method = Summaries::method_sum;
  const Reach reach = reachOf(method);
  const DrawField* values = isCount(method) || (y && y->isCategorical) ? nullptr : y ? y : x;
  if (reach == Reach::Values || !(x || y) || (values && values->isCategorical)) return;
  if (reach == Reach::Spread) {
    const double span = values ? values->greatest - values->least : 0;
    side.extend(0);
    return side.extend(method == Summaries::method_variance ? span * span : span);
  }
  Json unused = Json::array();
  const Bins cut = bins && x && !x->isCategorical ? addBins(unused, *x, *bins) : Bins();
  const std::string& source = (x ? x : y)->source;
  const DrawField* along = y ? x : x && (x->isCategorical || bins) ? x : nullptr;
  const auto sums = context.data.sumsOf(source, values, along, cut.start, cut.width);
  const double factor = reach == Reach::Percents    ? 100 / sums.whole
                        : reach == Reach::Fractions ? 1 / sums.whole
                                                    : 1;
  side.extend(std::min(0.0, factor * sums.least));
  side.extend(reach == Reach::Whole || sums.whole == 0 ? std::max(0.0, sums.whole)
              : method == Summaries::method_cumulativePercent ||
                      method == Summaries::method_cumulativePercentCount
                  ? 100
                  : factor * sums.greatest);
  side.leastPositive = std::min(side.leastPositive, factor * sums.leastPositive);
}

}  // namespace draw
