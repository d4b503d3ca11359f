#include "drawplane.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "drawstatistics.h"

namespace draw {

using namespace xercesc;

namespace {

constexpr std::size_t mostTicks = 200;

double valueOf(const std::string& text, bool isDate) {
  if (text.empty()) return std::nan("");
  if (isDate || !ChartString(text.c_str()).isNumber()) return dateOf(text);
  return ChartString(text.c_str()).convertToDouble();
}

void extend(DrawSide& side, double value) {
  if (!std::isfinite(value)) return;
  const bool isFirst = !side.hasExtent();
  side.least = isFirst ? value : std::min(side.least, value);
  side.greatest = isFirst ? value : std::max(side.greatest, value);
}

}  // namespace

Json DrawSide::datumOf(const std::string& text, const std::vector<const DrawField*>& fields) const {
  if (!isDiscrete) return numberJson(valueOf(text, isDate));
  for (const DrawField* field : fields) {
    if (field->isCategorical && field->labels.contains(text)) return field->valueOf(text);
  }
  return std::ranges::find(order, text) == order.end() ? Json() : Json(text);
}

Json DrawLegend::layer() const {
  Json of = {{"type", "point"}};
  Json look = mark;
  if (encoding.contains("stroke") && !look.contains("fill")) look["fill"] = "transparent";
  look = statedLook(MarkKind::Point, std::move(look));
  for (const auto& [name, value] : look.items()) of[name] = value;
  return {{"data", {{"values", Json::array()}}}, {"mark", of}, {"encoding", encoding}};
}

bool DrawLegend::takeUp(const DrawLegend& other) {
  if (frame != other.frame || encoding.empty() || other.encoding.empty()) return false;
  const Json& own = encoding.front();
  const bool isTitled = !other.look.value("title", Json()).is_null() &&
                        other.look["title"] != own["legend"].value("title", Json());
  if (isTitled || own["type"] != "nominal") return false;
  for (const auto& [channel, json] : other.encoding.items()) {
    if (json["field"] != own["field"] || json["type"] != "nominal" ||
        json["scale"]["domain"] != own["scale"]["domain"] || encoding.contains(channel)) {
      return false;
    }
  }
  const Json text = own["legend"];
  for (const auto& [channel, json] : other.encoding.items()) {
    encoding[channel] = json;
    encoding[channel]["legend"] = text;
  }
  return true;
}

std::vector<Json> legendLayers(std::vector<DrawLegend*> legends) {
  std::ranges::sort(legends, {}, [](const DrawLegend* legend) { return legend->order; });
  std::vector<DrawLegend> merged;
  for (const DrawLegend* legend : legends) {
    if (merged.empty() || !merged.back().takeUp(*legend)) merged.push_back(*legend);
  }
  std::vector<Json> layers;
  for (const DrawLegend& legend : merged) layers.push_back(legend.layer());
  return layers;
}

DrawPlane::DrawPlane(DrawContext& context, const Place& place)
    : context_(context), block_(place.block), width_(place.width), height_(place.height) {
  sides_[0].channel = "x";
  sides_[1].channel = "y";
  readTransforms();
  readDimensions(place.elements);
  readFields(place);
  bool hasBars = false;
  for (const CTElementType* element : place.elements) {
    hasBars = hasBars || dynamic_cast<const PlXInterval*>(element) ||
              dynamic_cast<const PlXArea*>(element);
  }
  if (isTransposed_) std::swap(sides_[0].channel, sides_[1].channel);
  for (const std::size_t i : {0U, 1U}) {
    makeScale(i, sides_[i].channel == "x" ? width_ : height_, hasBars && i == 1);
    DrawSide& side = sides_[i];
    const auto axes = side.dimension ? side.dimension->getAxiss() : std::vector<PlXAxis*>();
    if (!axes.empty()) side.axis = axisJson(context_, *axes[0], side);
    if (i == 1 && side.axis.is_object() && !side.axis.contains("orient")) {
      const bool isX = side.channel == "x";
      if (place.index > 0) side.axis["orient"] = isX ? "top" : "right";
      if (place.index == 0 && place.hasFellows) side.axis["orient"] = isX ? "bottom" : "left";
    }
  }
  for (const CTElementType* element : place.elements) {
    if (!isPolar_ || dynamic_cast<const PlXInterval*>(element)) continue;
    context_.notes.tell(*element, "is drawn flat, and not round a middle");
    isPolar_ = false;
  }
  if (isPolar_) {
    sides_[0].channel = "theta";
    sides_[1].channel = "radius";
  }
}

void DrawPlane::reverse() {
  Json& scale = sides_[1].scale;
  scale["reverse"] = !scale.value("reverse", false);
}

void DrawPlane::readTransforms() {
  if (!block_) return;
  for (DOMElement* child = block_->getImplementation()->getFirstElementChild(); child;
       child = child->getNextElementSibling()) {
    const PlXBaseElement* object = block_->objectOf(child);
    if (const auto* polar = dynamic_cast<const PlXPolarTransform*>(object)) {
      isPolar_ = true;
      polar_ = polar;
    } else if (dynamic_cast<const PlXTransposeTransform*>(object)) {
      isTransposed_ = !isTransposed_;
    } else if (const auto* reflection = dynamic_cast<const PlXReflectionTransform*>(object)) {
      const bool isY = reflection->getDimension() == PlXReflectionTransform::dimension_y;
      // Reflection by turns is the panels' business.
      if (!reflection->getAlternating()) {
        isReflected_[isY ? 1 : 0] = !isReflected_[isY ? 1 : 0];
      }
    } else if (dynamic_cast<const PlXRectangularTransform*>(object) ||
               dynamic_cast<const PlXObliqueTransform*>(object)) {
      context_.notes.tell(*object, "depth is left out");
    } else if (dynamic_cast<const PlXParallelCoordinatesTransform*>(object)) {
      context_.notes.tell(*object, "the parallel axes share one scale");
    }
  }
}

void DrawPlane::readDimensions(const std::vector<const CTElementType*>& elements) {
  std::size_t found = 0;
  DOMElement* child = block_ ? block_->getImplementation()->getFirstElementChild() : nullptr;
  for (; child; child = child->getNextElementSibling()) {
    const PlXBaseElement* object = block_->objectOf(child);
    const auto* reference = dynamic_cast<const PlXDimensionReference*>(object);
    const auto* dimension =
        reference ? reference->getRef() : dynamic_cast<const PlXDimension*>(object);
    if (!reference && !dimension) continue;
    if (found < 2) {
      sides_[found].dimension = dimension;
    } else if (dimension) {
      context_.notes.tell(*dimension, "the third dimension is drawn side by side");
    }
    ++found;
  }
  DrawSide& first = sides_[0];
  if (first.dimension) first.cluster = context_.data.fieldOf(first.dimension->getClusterVariable());
  if (first.cluster && !first.cluster->isCategorical) {
    context_.notes.tell(*first.dimension, "a variable of numbers makes no clusters");
    first.cluster = nullptr;
  }
  const PlXDimension* second = sides_[1].dimension;
  if (second && second->getClusterVariable()) {
    context_.notes.tell(*second, "clusters of the second dimension are left out");
  }
  for (const CTElementType* element : elements) {
    const CTCoordinate* z = element->getZ();
    const DrawField* depth = z ? context_.data.fieldOf(z->getVariable()) : nullptr;
    if (depth && depth->isCategorical && !first.depth) first.depth = depth;
  }
}

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

// Of the second side, where statistics are: bounds of all that the element draws there.
void DrawPlane::readExtent(const CTElementType& element) {
  const auto fieldOf = [&](const CTCoordinate* coordinate) {
    const auto fields = coordinate ? context_.data.fieldsOf(coordinate->getVariable())
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
  DrawSide& side = sides_[1];
  if (reach == Reach::Spread) {
    const double span = values ? values->greatest - values->least : 0;
    extend(side, 0);
    return extend(side, method == Summaries::method_variance ? span * span : span);
  }
  Json unused = Json::array();
  const Bins cut = bins && x && !x->isCategorical ? addBins(unused, *x, *bins) : Bins();
  const std::string& source = (x ? x : y)->source;
  const DrawField* along = y ? x : x && (x->isCategorical || bins) ? x : nullptr;
  const auto sums = context_.data.sumsOf(source, values, along, cut.start, cut.width);
  const double factor = reach == Reach::Percents    ? 100 / sums.whole
                        : reach == Reach::Fractions ? 1 / sums.whole
                                                    : 1;
  extend(side, std::min(0.0, factor * sums.least));
  extend(side, reach == Reach::Whole || sums.whole == 0 ? std::max(0.0, sums.whole)
               : method == Summaries::method_cumulativePercent ||
                       method == Summaries::method_cumulativePercentCount
                   ? 100
                   : factor * sums.greatest);
  side.leastPositive = std::min(side.leastPositive, factor * sums.leastPositive);
}

// A side is discrete when a variable on it is, since Vega-Lite has one kind of scale for both.
void DrawPlane::readFields(const Place& place) {
  const DrawField* only[] = {place.x, place.y};
  std::set<const DrawField*> known[2];
  const DrawField* cluster = sides_[0].cluster;
  if (cluster) fields_[0].push_back(cluster);
  for (const CTElementType* element : place.elements) {
    const CTCoordinate* coordinates[] = {element->getX(), element->getY()};
    for (const std::size_t i : {0U, 1U}) {
      if (!coordinates[i]) continue;
      auto fields = context_.data.fieldsOf(coordinates[i]->getVariable());
      if (only[i] && fields.size() > 1) fields = {only[i]};
      for (const DrawField* field : fields) {
        if (i == 0 && cluster && field->source == cluster->source) continue;
        if (known[i].insert(field).second) fields_[i].push_back(field);
      }
    }
  }
  if (!isPolar_) {
    for (const CTElementType* element : place.elements) readExtent(*element);
  }
  for (const std::size_t i : {0U, 1U}) {
    DrawSide& side = sides_[i];
    const auto* domain = dynamic_cast<const PlXCategoricalDomain*>(
        side.dimension ? side.dimension->getDomain() : nullptr);
    std::set<std::string> categories;
    for (const DrawField* field : fields_[i]) {
      side.isDiscrete = side.isDiscrete || field->isCategorical;
      if (!field->isCategorical) {
        side.isDate = side.isDate || field->isDate;
        if (!side.measure) side.measure = field;
        extend(side, field->least);
        extend(side, field->greatest);
        side.leastPositive = std::min(side.leastPositive, field->leastPositive);
        continue;
      }
      for (const std::string& text : context_.data.orderOf(*field, domain).texts) {
        if (categories.insert(text).second) side.order.push_back(text);
      }
    }
  }
}

// ---- scales

namespace {

struct ScaleRow {
  PlXScale::ENUM_method method;
  const char* type;  // null for one that Vega-Lite doesn't have
  const char* base;  // what the scale's base is to it
};
constexpr ScaleRow scaleRows[] = {
    {PlXScale::method_linear, "linear", nullptr},     {PlXScale::method_log, "log", "base"},
    {PlXScale::method_log_safe, "symlog", nullptr},   {PlXScale::method_power, "pow", "exponent"},
    {PlXScale::method_power_safe, "pow", "exponent"}, {PlXScale::method_logit, nullptr, nullptr},
    {PlXScale::method_probit, nullptr, nullptr},      {PlXScale::method_asn, nullptr, nullptr},
    {PlXScale::method_atanh, nullptr, nullptr},       {PlXScale::method_prob, nullptr, nullptr},
    {PlXScale::method_cLoglog, nullptr, nullptr},
};

void putMethod(DrawContext& context, Json& json, const PlXScale& scale) {
  for (const ScaleRow& row : scaleRows) {
    if (row.method != scale.getMethod()) continue;
    if (!row.type) {
      context.notes.tell(scale, "the scale " + attribute(scale, u"method") + " is drawn linear");
    } else if (row.method != PlXScale::method_linear) {
      json["type"] = row.type;
      const double base = scale.getBase();
      if (row.base && base > 0 && std::isfinite(base)) json[row.base] = numberJson(base);
    }
  }
}

}  // namespace

void DrawPlane::makeDomain(DrawSide& side, const PlXDimension& dimension) {
  const auto* domain = dynamic_cast<const PlXIntervalDomain*>(dimension.getDomain());
  if (!domain) return;
  double bounds[] = {std::nan(""), std::nan("")};
  bool isExact = false;
  for (const auto* range : childrenOf<PlXRange>(*domain)) {
    const double min = valueOf(utf8(range->getMin()), domain->getDate() || side.isDate);
    const double max = valueOf(utf8(range->getMax()), domain->getDate() || side.isDate);
    if (!std::isnan(min)) bounds[0] = min;
    if (!std::isnan(max)) bounds[1] = max;
    isExact = isExact || range->getExact();
  }
  if (side.isLog()) {
    for (double& bound : bounds) {
      if (bound > 0 || std::isnan(bound)) continue;
      context_.notes.tell(dimension, "a log scale has no bound that isn't positive");
      bound = std::nan("");
    }
  }
  if (isExact) side.scale["nice"] = false;
  if (dimension.getUnionDomain()) {
    // Vega-Lite knows what the layers draw.
    Json stated = Json::array();
    for (const double bound : bounds) {
      extend(side, bound);
      if (!std::isnan(bound)) stated.push_back(numberJson(bound));
    }
    if (!stated.empty()) side.scale["domain"] = {{"unionWith", stated}};
    return;
  }
  const bool hasBoth = !std::isnan(bounds[0]) && !std::isnan(bounds[1]);
  if (hasBoth && bounds[0] < bounds[1]) {
    side.scale["domain"] = {numberJson(bounds[0]), numberJson(bounds[1])};
    side.scale.erase("zero");
  } else if (!std::isnan(bounds[0]) && !hasBoth) {
    side.scale["domainMin"] = numberJson(bounds[0]);
  } else if (!std::isnan(bounds[1]) && !hasBoth) {
    side.scale["domainMax"] = numberJson(bounds[1]);
  }
  if (!std::isnan(bounds[0])) side.least = bounds[0];
  if (!std::isnan(bounds[1])) side.greatest = bounds[1];
}

void DrawPlane::makeScale(std::size_t index, double pixels, bool hasBars) {
  DrawSide& side = sides_[index];
  const PlXDimension* dimension = side.dimension;
  const PlXScale* scale = dimension ? dimension->getScale() : nullptr;
  side.pixels = pixels;
  bool isReversed = isReflected_[index];
  if (scale && scale->getInvert()) isReversed = !isReversed;

  const auto margin = [&](const XMLCh* name) {
    return dimension ? shareOf(attribute(*dimension, name)).value_or(0) : 0;
  };
  const double padding = std::min(margin(u"lowerMargin"), margin(u"upperMargin"));
  if (margin(u"lowerMargin") != margin(u"upperMargin")) {
    context_.notes.tell(*dimension, "has the smaller of its margins at both ends");
  }
  if (side.isDiscrete) {
    side.scale["type"] = "band";
    side.scale["domain"] = side.order;
    const double gap = dimension ? shareOf(attribute(*dimension, u"clusterGap")).value_or(0) : 0;
    side.scale["paddingInner"] =
        numberJson(side.cluster || side.depth ? std::clamp(gap, 0.15, 0.9) : 0);
    side.scale["paddingOuter"] = numberJson(std::clamp(padding * 2, 0.0, 1.0));
  } else {
    if (side.isDate) side.scale["type"] = "utc";
    if (scale) putMethod(context_, side.scale, *scale);
    if (side.isDate && side.scale["type"] != "utc") {
      context_.notes.tell(*scale, "dates are drawn on a linear scale");
      side.scale = {{"type", "utc"}};
    }
    const std::string type = side.scale.value("type", "linear");
    if (type != "utc" && type != "log") {
      const bool hasOrigin = scale && valueOf(utf8(scale->getOrigin()), false) == 0;
      side.scale["zero"] = hasBars || hasOrigin;
    }
    side.scale["nice"] =
        dimension && (dimension->getNiceLowerMapping() || dimension->getNiceUpperMapping());
    if (dimension) makeDomain(side, *dimension);
    if (side.isLog() && hasBars) {
      // Bars stand on the power of ten below the least value.
      const double least = std::isfinite(side.leastPositive) ? side.leastPositive : 1;
      side.base = std::pow(10, std::floor(std::log10(0.999 * least)));
      if (side.hasFixedDomain()) side.base = side.scale["domain"][0].get<double>();
      if (!side.scale.contains("domain")) {
        side.scale["domainMin"] = numberJson(side.base);
      } else if (!side.hasFixedDomain()) {
        side.scale["domain"]["unionWith"].push_back(numberJson(side.base));
      }
    }
    if (padding > 0 && padding < 0.4 && !hasBars) {
      side.scale["padding"] = numberJson(std::round(padding * pixels));
    }
  }
  if (isReversed) side.scale["reverse"] = true;
}

Json DrawPlane::position(const DrawSide& side, const std::string& field) {
  Json json = {{"field", field},
               {"type", side.isDiscrete ? "nominal"
                        : side.isDate   ? "temporal"
                                        : "quantitative"},
               {"scale", side.scale}};
  if (side.channel == "theta" || side.channel == "radius") {
    json.erase("scale");
  } else {
    json["axis"] = side.axis;
  }
  return json;
}

// ---- axes

namespace {

void putLine(Json& json, const std::string& prefix, const PlXStyle* style) {
  static constexpr std::pair<const char*, const char*> names[] = {{"stroke", "Color"},
                                                                  {"strokeWidth", "Width"},
                                                                  {"strokeDash", "Dash"},
                                                                  {"strokeOpacity", "Opacity"},
                                                                  {"opacity", "Opacity"}};
  const Json look = lineLook(style);
  for (const auto& [from, to] : names) {
    if (look.contains(from)) json[prefix + to] = look[from];
  }
}

// Ticks from the least value to the greatest.
bool putValues(Json& json, const DrawSide& side, double start, double delta) {
  const double first = std::ceil((side.least - start) / delta - 1e-9);
  const double last = std::floor((side.greatest - start) / delta + 1e-9);
  if (!(last - first < mostTicks) || first > last) return false;
  Json values = Json::array();
  for (double i = first; i <= last; ++i) {
    // Sums of decimal fractions, without their last digits.
    values.push_back(numberJson(std::round((start + i * delta) * 1e9) / 1e9));
  }
  json["values"] = values;
  return true;
}

void putDelta(Json& json, const PlXMajorTicks& ticks, const DrawSide& side) {
  const double delta = ticks.getDelta();
  if (!(delta > 0) || !std::isfinite(delta) || side.isDiscrete) return;
  if (side.isDate) {
    static constexpr std::pair<const char*, double> units[] = {
        {"second", 1},    {"minute", 60},     {"hour", 3600},    {"day", 86400},
        {"week", 604800}, {"month", 2592000}, {"year", 31536000}};
    const std::string stated = attribute(ticks, u"deltaUnit");
    for (const auto& [unit, seconds] : units) {
      if (unit != stated && !(stated.empty() && seconds == 1)) continue;
      // Vega counts the ticks one by one.
      if ((side.greatest - side.least) / (1000 * seconds * delta) > mostTicks) return;
      if (seconds > 604800) {
        json["tickCount"] = {{"interval", unit}, {"step", numberJson(delta)}};
      } else if (side.hasExtent()) {
        // Vega knows steps of whole months only.
        const double step = 1000 * seconds * delta;
        const double base = dateOf(attribute(ticks, u"base"));
        putValues(json, side, std::isnan(base) ? 0 : base, step);
      }
    }
    return;
  }
  const std::string type = side.scale.value("type", "linear");
  if (type == "log") return;
  if (side.hasFixedDomain()) {
    const double base = valueOf(attribute(ticks, u"base"), false);
    if (putValues(json, side, std::isnan(base) ? 0 : base, delta)) return;
  }
  json["tickMinStep"] = numberJson(delta);
}

// Labels of categories lie flat where each fits its band, and slant where they don't; where even
// slanting ones would cover each other, some are left out.
void putFittingAngle(Json& json, const PlXMajorTicks& ticks, const DrawSide& side) {
  constexpr double shareOfHeight = 0.58;  // that a letter is wide
  const double height = json.value("labelFontSize", 10.0);
  std::size_t longest = 0;
  for (const std::string& text : side.order) {
    longest = std::max<std::size_t>(
        longest, std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
  }
  const bool isStaggered = attribute(ticks, u"stagger") == "true";
  const double band =
      side.pixels / static_cast<double>(std::max<std::size_t>(1, side.order.size()));
  const double width = shareOfHeight * height * static_cast<double>(longest);
  const bool isFlat = width <= band * (isStaggered ? 2 : 1);
  json["labelAngle"] = isFlat ? 0 : -45;
  if (!isFlat && band < height) json["labelOverlap"] = true;
}

// On a log axis, values whose labels would be the same for want of digits are no ticks.
void putDifferingValues(Json& json, const DrawSide& side, const PlXFormat& format) {
  if (!side.isLog() || !side.hasExtent() || !states(format, u"maximumFractionDigits")) return;
  const double factor = states(format, u"scalingFactor") ? format.getScalingFactor() : 1;
  const double digits = static_cast<double>(std::min(format.getMaximumFractionDigits(), 20U));
  const double smallest = std::pow(10, -digits) * (factor > 0 ? factor : 1);
  if (side.base >= smallest && side.leastPositive >= smallest) return;
  const double first = std::floor(std::log10(smallest));
  const double last = std::floor(std::log10(side.greatest));
  if (!(last - first < 20)) return;
  Json values = Json::array();
  for (double power = first; power <= last; ++power) {
    for (const double step : {1, 2, 5}) {
      const double value = step * std::pow(10, power);
      if (last - first > 3 && step != 1) continue;
      if (value >= smallest * 0.999) values.push_back(numberJson(value));
    }
  }
  if (!values.empty()) json["values"] = values;
}

void putTicks(DrawContext& context, Json& json, const PlXMajorTicks& ticks, const DrawSide& side) {
  putFont(json, "label", ticks.getStyle());
  json["labels"] = isVisible(ticks.getStyle());
  json["ticks"] = isVisible(ticks.getMarkStyle());
  putLine(json, "tick", ticks.getMarkStyle());
  if (const auto length = pixelsOf(attribute(ticks, u"length"))) {
    const bool isInside = ticks.getPosition() == PlXMajorTicks::position_inside;
    json["tickSize"] = numberJson(std::max(0.0, *length));
    if (isInside) context.notes.tell(ticks, "ticks inside stand outside");
  }
  if (states(ticks, u"labelAngle")) {
    const double angle = ticks.getLabelAngle();
    if (std::isfinite(angle)) json["labelAngle"] = numberJson(std::fmod(-angle, 360));
  } else if (side.isDiscrete && side.channel == "x") {
    putFittingAngle(json, ticks, side);
  }
  const auto formats = ticks.getFormats();
  const PlXFormat* format = formats.empty() ? nullptr : formats[0];
  if (!format && side.measure) format = formatOf(side.measure->variable);
  if (format && !side.isDiscrete) {
    json["labelExpr"] = textExpression("datum.value", format, side.isDate, context.signs);
    putDifferingValues(json, side, *format);
  } else if (!side.isDiscrete && !side.isDate) {
    const std::string text = signedText("datum.label", context.signs);
    if (text != "datum.label") json["labelExpr"] = text;
  }
  json["labelFlush"] = false;
  if (side.isDiscrete) json["labelLimit"] = 250;
  if (attribute(ticks, u"stagger") == "true" && side.isDiscrete && side.channel == "x") {
    const std::string places =
        Json(side.order).dump(-1, ' ', false, Json::error_handler_t::replace);
    json["labelExpr"] =
        "indexof(" + places + ", datum.value) % 2 ? [\"\", datum.label] : datum.label";
  }
  putDelta(json, ticks, side);
  if (ticks.getTickFrameStyle() &&
      isPainted(colorJson(attribute(*ticks.getTickFrameStyle(), u"color")))) {
    context.notes.tell(ticks, "frames around labels are left out");
  }
  if (const PlXGridline* grid = ticks.getGridline()) {
    json["grid"] = isVisible(grid->getStyle());
    putLine(json, "grid", grid->getStyle());
  }
}

}  // namespace

std::optional<DerivedValues> derivedValues(const PlXAxis& axis) {
  if (axis.getTransform() == PlXAxis::transform_none) return {};
  std::map<std::string, double> parameters = {
      {"base-ratio", 1}, {"derived-ratio", 1}, {"base-match", 0}, {"derived-match", 0}};
  for (const PlXAxisTransformParameter* parameter : axis.getAxisTransformParameters()) {
    const ChartString value(parameter->getParameterValue());
    if (value.isNumber()) parameters[utf8(parameter->getParameterName())] = value.convertToDouble();
  }
  DerivedValues values;
  values.step = parameters["base-ratio"] / parameters["derived-ratio"];
  values.match = parameters["base-match"] - parameters["derived-match"] * values.step;
  if (!std::isfinite(values.step) || values.step == 0) return {};
  return values;
}

Json derivedAxisJson(DrawContext& context, const PlXAxis& axis, const DrawSide& side,
                     const DerivedValues& values) {
  DrawSide own = side;
  own.measure = nullptr;
  own.scale.erase("domain");
  Json json = axisJson(context, axis, own);
  const PlXMajorTicks* ticks = axis.getMajorTicks();
  const auto formats = ticks ? ticks->getFormats() : std::vector<PlXFormat*>();
  // Without the last digits of its own computing.
  const std::string value = "(round(1e6 * (datum.value - " + literal(values.match) + ") / " +
                            literal(values.step) + ") / 1e6)";
  json["labelExpr"] =
      textExpression(value, formats.empty() ? nullptr : formats[0], false, context.signs);
  json.erase("tickMinStep");
  json["grid"] = false;
  if (!json.contains("orient")) json["orient"] = side.channel == "x" ? "top" : "right";
  const double delta = ticks ? ticks->getDelta() : 0;
  json.erase("values");
  if (delta > 0 && std::isfinite(delta) && side.hasExtent()) {
    // The axis may reach beyond its values; ticks beyond the axis aren't drawn.
    DrawSide reach = side;
    const double slack = side.hasFixedDomain() ? 0 : 0.25 * (side.greatest - side.least);
    reach.least = std::min(side.scale.value("zero", false) ? 0.0 : side.least, side.least - slack);
    reach.greatest = side.greatest + slack;
    putValues(json, reach, values.match, std::abs(delta * values.step));
  }
  return json;
}

Json axisJson(DrawContext& context, const PlXAxis& axis, const DrawSide& side) {
  Json json = Json::object();
  const std::string title = labelText(axis.getLabel());
  json["title"] = title.empty() ? Json() : Json(title);
  if (axis.getLabel()) putFont(json, "title", axis.getLabel()->getStyle());
  if (axis.getOpposite()) json["orient"] = side.channel == "x" ? "top" : "right";
  json["domain"] = isVisible(axis.getStyle());
  putLine(json, "domain", axis.getStyle());
  json["grid"] = false;
  if (const PlXMajorTicks* ticks = axis.getMajorTicks()) {
    putTicks(context, json, *ticks, side);
    if (ticks->getLabelFrequency() > 1) {
      context.notes.tell(*ticks, "labels are thinned as they have room, not by their frequency");
    }
  } else {
    json["labels"] = false;
    json["ticks"] = false;
  }
  if (axis.getMinorTicks()) context.notes.tell(axis, "minor ticks are left out");
  return json;
}

}  // namespace draw
