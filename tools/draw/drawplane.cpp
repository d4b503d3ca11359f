#include "drawplane.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "drawaxes.h"
#include "drawextent.h"

namespace draw {

using namespace xercesc;

double placeOf(const std::string& text, bool isDate) {
  if (text.empty()) return std::nan("");
  if (isDate || !ChartString(text.c_str()).isNumber()) return dateOf(text);
  return ChartString(text.c_str()).convertToDouble();
}

void DrawSide::extend(double value) {
  if (!std::isfinite(value)) return;
  const bool isFirst = !hasExtent();
  least = isFirst ? value : std::min(least, value);
  greatest = isFirst ? value : std::max(greatest, value);
}

Json DrawSide::datumOf(const std::string& text, const std::vector<const DrawField*>& fields) const {
  if (!isDiscrete) return numberJson(placeOf(text, isDate));
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
    for (const CTElementType* element : place.elements) extendBy(context_, *element, sides_[1]);
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
        side.extend(field->least);
        side.extend(field->greatest);
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
    const double min = placeOf(utf8(range->getMin()), domain->getDate() || side.isDate);
    const double max = placeOf(utf8(range->getMax()), domain->getDate() || side.isDate);
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
      side.extend(bound);
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
      const bool hasOrigin = scale && placeOf(utf8(scale->getOrigin()), false) == 0;
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

}  // namespace draw
