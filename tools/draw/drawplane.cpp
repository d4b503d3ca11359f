#include "drawplane.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

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
  for (const auto& [name, value] : mark.items()) of[name] = value;
  // A surface without an outline has none in the legend.
  if (!of.contains("stroke") && !encoding.contains("stroke")) of["stroke"] = "transparent";
  return {{"data", {{"values", Json::array()}}}, {"mark", of}, {"encoding", encoding}};
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
  const bool isUnion = dimension.getUnionDomain() && side.hasExtent();
  if (isUnion) {
    bounds[0] = std::fmin(bounds[0], side.least);
    bounds[1] = std::fmax(bounds[1], side.greatest);
  }
  if (side.isLog()) {
    for (double& bound : bounds) {
      if (bound > 0 || std::isnan(bound)) continue;
      context_.notes.tell(dimension, "a log scale has no bound that isn't positive");
      bound = std::nan("");
    }
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
  if (isExact) side.scale["nice"] = false;
}

void DrawPlane::makeScale(std::size_t index, double pixels, bool hasBars) {
  DrawSide& side = sides_[index];
  const PlXDimension* dimension = side.dimension;
  const PlXScale* scale = dimension ? dimension->getScale() : nullptr;
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
      // Bars stand on the power of ten below the least value; counts on less than one case.
      const double least = side.hasExtent() && side.least > 0 ? side.least
                           : side.hasExtent()                 ? 1
                                                              : 0.9;
      side.base = std::pow(10, std::floor(std::log10(least)));
      if (side.scale.contains("domain")) side.base = side.scale["domain"][0].get<double>();
      if (!side.scale.contains("domain")) side.scale["domainMin"] = numberJson(side.base);
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
  if (side.scale.contains("domain")) {
    const double base = valueOf(attribute(ticks, u"base"), false);
    if (putValues(json, side, std::isnan(base) ? 0 : base, delta)) return;
  }
  json["tickMinStep"] = numberJson(delta);
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
    json["labelAngle"] = 0;
  }
  const auto formats = ticks.getFormats();
  const PlXFormat* format = formats.empty() ? nullptr : formats[0];
  if (!format && side.measure) format = formatOf(side.measure->variable);
  if (format && !side.isDiscrete) {
    json["labelExpr"] = textExpression("datum.value", format, side.isDate);
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
  const std::string value =
      "((datum.value - " + literal(values.match) + ") / " + literal(values.step) + ')';
  json["labelExpr"] = textExpression(value, formats.empty() ? nullptr : formats[0], false);
  json.erase("tickMinStep");
  json["grid"] = false;
  if (!json.contains("orient")) json["orient"] = side.channel == "x" ? "top" : "right";
  const double delta = ticks ? ticks->getDelta() : 0;
  if (delta > 0 && std::isfinite(delta)) {
    // Ticks beyond the end aren't drawn.
    for (int i = 0; i <= 50; ++i)
      json["values"].push_back(numberJson(values.match + i * delta * values.step));
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
