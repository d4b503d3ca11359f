#include "drawaxes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace draw {

namespace {

constexpr std::size_t mostTicks = 200;

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
    const double base = placeOf(attribute(ticks, u"base"), false);
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
