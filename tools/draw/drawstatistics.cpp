#include "drawstatistics.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace draw {

Json calculation(const std::string& as, const std::string& expression) {
  return {{"calculate", expression}, {"as", as}};
}

Json filter(const std::string& expression) {
  return {{"filter", expression}};
}

void putGroups(Json& transform, const std::vector<std::string>& keys) {
  if (!keys.empty()) transform["groupby"] = keys;
}

Summary::Summary(DrawContext& context, std::string source, std::vector<std::string> keys,
                 std::string place, const std::vector<std::string>& order,
                 std::vector<std::string> panels)
    : context_(context),
      source_(std::move(source)),
      keys_(std::move(keys)),
      place_(std::move(place)),
      order_(order),
      panels_(std::move(panels)) {}

std::string Summary::add(const char* operation, const DrawField* field) {
  std::string as = std::string(operation) + (field ? '_' + field->name : "");
  Json entry = {{"op", operation}};
  if (field) entry["field"] = field->name;
  entry["as"] = as;
  if (std::ranges::find(operations_, entry) == operations_.end()) operations_.push_back(entry);
  return as;
}

// Of weighted cases, the sum of their weights.
std::string Summary::count() {
  const DrawField* weight = context_.data.weightOf(source_);
  return weight ? add("sum", weight) : add("count", nullptr);
}

void Summary::calculate(const std::string& as, const std::string& expression) {
  const Json entry = calculation(as, expression);
  if (std::ranges::find(later_, entry) == later_.end()) later_.push_back(entry);
}

std::string Summary::addShare(const std::string& base, PlXSummaryStatistic::ENUM_summaryBase whole,
                              double factor) {
  std::vector<std::string> groups = panels_;
  if (whole == PlXSummaryStatistic::summaryBase_coordinate && !place_.empty()) {
    groups.push_back(place_);
  }
  Json total = {{"joinaggregate", {{{"op", "sum"}, {"field", base}, {"as", "whole_" + base}}}}};
  putGroups(total, groups);
  later_.push_back(total);
  std::string as = (factor == 1 ? "fraction_" : "percent_") + base;
  calculate(as, (factor == 1 ? "" : literal(factor) + " * ") + datum(base) + " / " +
                    datum("whole_" + base));
  return as;
}

std::string Summary::addCumulation(const std::string& base, bool isShare) {
  std::string rank = place_;
  if (!order_.empty() && !place_.empty()) {
    rank = "rank_" + place_;
    calculate(rank, "indexof(" + Json(order_).dump(-1, ' ', false, Json::error_handler_t::replace) +
                        ", " + datum(place_) + ')');
  }
  std::string as = "cumulative_" + base;
  Json window = {{"window", {{{"op", "sum"}, {"field", base}, {"as", as}}}},
                 {"frame", {nullptr, 0}}};
  if (!rank.empty()) window["sort"] = {{{"field", rank}}};
  std::vector<std::string> groups = keys_;
  std::erase_if(groups, [&](const std::string& key) {
    return key == place_ || (key.ends_with("_end") && place_.ends_with("_bin"));
  });
  putGroups(window, groups);
  later_.push_back(window);
  if (!isShare) return as;
  Json total = {{"joinaggregate", {{{"op", "sum"}, {"field", base}, {"as", "whole_" + base}}}}};
  putGroups(total, groups);
  later_.push_back(total);
  calculate("percent_" + as, "100 * " + datum(as) + " / " + datum("whole_" + base));
  return "percent_" + as;
}

namespace {

enum class Kind { Plain, Percent, Fraction, Cumulative, CumulativePercent };

// What a method is made of; a null operation is for cases by their weights.
struct MethodRow {
  PlXSummaryStatistic::ENUM_method method;
  const char* operation;
  Kind kind;
};
using S = PlXSummaryStatistic;
constexpr MethodRow methodRows[] = {
    {S::method_sum, "sum", Kind::Plain},
    {S::method_mean, "mean", Kind::Plain},
    {S::method_median, "median", Kind::Plain},
    {S::method_minimum, "min", Kind::Plain},
    {S::method_maximum, "max", Kind::Plain},
    {S::method_standardDeviation, "stdev", Kind::Plain},
    {S::method_variance, "variance", Kind::Plain},
    {S::method_validCount, "valid", Kind::Plain},
    {S::method_unweightedCount, "count", Kind::Plain},
    {S::method_count, nullptr, Kind::Plain},
    {S::method_percent, "sum", Kind::Percent},
    {S::method_fraction, "sum", Kind::Fraction},
    {S::method_percentCount, nullptr, Kind::Percent},
    {S::method_fractionCount, nullptr, Kind::Fraction},
    {S::method_cumulativeSum, "sum", Kind::Cumulative},
    {S::method_cumulativePercent, "sum", Kind::CumulativePercent},
    {S::method_cumulativeCount, nullptr, Kind::Cumulative},
    {S::method_cumulativePercentCount, nullptr, Kind::CumulativePercent},
};

}  // namespace

std::optional<std::string> Summary::add(const PlXSummaryStatistic& statistic,
                                        const DrawField* field) {
  const auto method = statistic.getMethod();
  if (method == S::method_midrange && field) {
    const std::string low = add("min", field);
    const std::string high = add("max", field);
    const std::string as = "midrange_" + field->name;
    calculate(as, '(' + datum(low) + " + " + datum(high) + ") / 2");
    return as;
  }
  if (method == S::method_mode && field) {
    context_.notes.tell(statistic, "the median stands for the mode");
    return add("median", field);
  }
  const auto* row = std::ranges::find(methodRows, method, &MethodRow::method);
  if (row == std::end(methodRows)) return {};
  const bool needsField = row->operation && method != S::method_unweightedCount;
  if (needsField && (!field || field->isCategorical) && method != S::method_validCount) return {};
  const DrawField* of = needsField ? field : nullptr;
  const std::string base = row->operation ? add(row->operation, of) : count();
  switch (row->kind) {
    case Kind::Plain:
      return base;
    case Kind::Percent:
      return addShare(base, statistic.getSummaryBase(), 100);
    case Kind::Fraction:
      return addShare(base, statistic.getSummaryBase(), 1);
    case Kind::Cumulative:
      return addCumulation(base, false);
    case Kind::CumulativePercent:
      return addCumulation(base, true);
  }
  return {};
}

void Summary::appendTo(Json& transforms) const {
  Json aggregate = {{"aggregate", operations_}};
  putGroups(aggregate, keys_);
  transforms.push_back(aggregate);
  Json written = Json::array();
  for (const Json& step : later_) {
    if (std::ranges::find(written, step) != written.end()) continue;
    written.push_back(step);
    transforms.push_back(step);
  }
}

Bins addBins(Json& transforms, const DrawField& field, const PlXBinStatistic& statistic) {
  const auto numberOf = [&](const XMLCh* name) {
    const ChartString text(statistic.GetAttribute(name));
    return text.isNumber() ? text.convertToDouble() : 0;
  };
  const double span = field.greatest - field.least;
  double width = numberOf(u"binWidth");
  double start = field.least;
  if (width > 0 && field.isDate) width *= 1000;
  if (states(statistic, u"binStart")) start = numberOf(u"binStart");
  const double count = numberOf(u"binCount");
  if (!(width > 0) && count >= 1) width = span / std::min(count, 1e4);
  // Vega counts the bins one by one.
  if (width > 0 && span / width > 1e5) width = 0;
  Bins bins = {field.name + "_bin", field.name + "_end", width, start};
  Json bin = Json::object();
  if (width > 0 && std::isfinite(width)) {
    bin["step"] = numberJson(width);
    bin["anchor"] = numberJson(start);
    // The last value belongs to the last bin.
    if (field.least <= field.greatest && count >= 1 && !states(statistic, u"binWidth")) {
      bin["extent"] = {numberJson(field.least), numberJson(field.greatest)};
    }
  } else {
    bin["maxbins"] = 20;
  }
  transforms.push_back({{"bin", bin}, {"field", field.name}, {"as", {bins.low, bins.high}}});
  return bins;
}

double densityAt(PlXDistributionStatistic::ENUM_distribution distribution, double x, double first,
                 double second) {
  using D = PlXDistributionStatistic;
  switch (distribution) {
    case D::distribution_uniform:
      return second > first && x >= first && x <= second ? 1 / (second - first) : 0;
    case D::distribution_exponential:
      return x < 0 ? 0 : first * std::exp(-first * x);
    case D::distribution_poisson:
      return x < 0 ? 0 : std::exp(x * std::log(first) - first - std::lgamma(x + 1));
    case D::distribution_logistic: {
      const double fall = std::exp(-std::abs(x - first) / second);
      return fall / (second * (1 + fall) * (1 + fall));
    }
    case D::distribution_weibull:
      return x < 0 ? 0
                   : first / second * std::pow(x / second, first - 1) *
                         std::exp(-std::pow(x / second, first));
    case D::distribution_gamma:
      return x < 0 ? 0
                   : std::exp((first - 1) * std::log(x) - x / second - std::lgamma(first) -
                              first * std::log(second));
    case D::distribution_normal:
      return std::exp(-(x - first) * (x - first) / (2 * second * second)) /
             (second * std::sqrt(2 * std::numbers::pi));
    default:
      return std::nan("");
  }
}

}  // namespace draw
