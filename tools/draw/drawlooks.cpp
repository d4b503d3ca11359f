#include "drawlooks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <sstream>
#include <utility>

namespace {

struct Length {
  double number;
  std::string unit;
};

std::optional<Length> lengthOf(const std::string& text) {
  std::istringstream in(text);
  std::string part;
  in >> part;
  double number = 0;
  const auto [stop, error] = std::from_chars(part.data(), part.data() + part.size(), number);
  if (error != std::errc() || !std::isfinite(number) || std::abs(number) > 1e6) return {};
  return Length{number, std::string(stop, static_cast<const char*>(part.data() + part.size()))};
}

std::string of(const PlXStyle* style, const XMLCh* name) {
  return style ? attribute(*style, name) : std::string();
}

void putNumber(Json& target, const char* name, const PlXStyle* style, const XMLCh* attributeName) {
  if (const auto length = lengthOf(of(style, attributeName)); length && length->unit.empty()) {
    target[name] = numberJson(std::clamp(length->number, 0.0, 1.0));
  }
}

void putStroke(Json& look, const PlXStyle* style) {
  if (const auto width = pixelsOf(of(style, u"stroke-width"))) {
    look["strokeWidth"] = numberJson(*width);
  }
  const Json dashes = dashJson(of(style, u"stroke-dasharray"));
  if (dashes.is_array() && !dashes.empty()) look["strokeDash"] = dashes;
}

}  // namespace

std::optional<double> pixelsOf(const std::string& length) {
  static constexpr std::pair<const char*, double> units[] = {
      {"pt", pixelsPerPoint}, {"px", 1}, {"in", 96}, {"cm", 96 / 2.54}, {"mm", 96 / 25.4}, {"", 1}};
  const auto found = lengthOf(length);
  if (!found) return {};
  for (const auto& [unit, pixels] : units) {
    if (found->unit == unit) return std::round(found->number * pixels * 1000) / 1000;
  }
  return {};
}

std::optional<double> shareOf(const std::string& length) {
  const auto found = lengthOf(length);
  if (!found || found->unit != "%") return {};
  return found->number / 100;
}

Json colorJson(const std::string& color) {
  const bool isHex = color.starts_with('#') && color.size() > 3;
  for (const char c : color.substr(isHex ? 1 : 0)) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (!isLetter && !(isHex && c >= '0' && c <= '9')) return nullptr;
  }
  return color.empty() ? Json() : Json(color);
}

bool isPainted(const Json& color) {
  return color.is_string() && color != "transparent";
}

Json dashJson(const std::string& dashes) {
  Json result = Json::array();
  std::istringstream in(dashes);
  for (std::string part; in >> part && result.size() < 16;) {
    const auto pixels = pixelsOf(part);
    if (!pixels || *pixels < 0) return Json::array();
    result.push_back(numberJson(*pixels));
  }
  return result;
}

bool isVisible(const PlXStyle* style) {
  return !style || style->getVisible();
}

Json surfaceLook(const PlXStyle* style) {
  Json look = Json::object();
  const Json fill = colorJson(of(style, u"color"));
  const Json outline = colorJson(of(style, u"color2"));
  if (!fill.is_null()) look["fill"] = fill;
  if (isPainted(outline)) look["stroke"] = outline;
  putNumber(look, "opacity", style, u"opacity");
  putNumber(look, "fillOpacity", style, u"fill-opacity");
  putNumber(look, "strokeOpacity", style, u"stroke-opacity");
  putNumber(look, "strokeOpacity", style, u"opacity2");
  putStroke(look, style);
  return look;
}

Json lineLook(const PlXStyle* style) {
  Json look = Json::object();
  const Json color = colorJson(of(style, u"color"));
  if (!color.is_null()) look["stroke"] = color;
  putNumber(look, "opacity", style, u"opacity");
  putNumber(look, "strokeOpacity", style, u"stroke-opacity");
  putStroke(look, style);
  const std::string cap = of(style, u"stroke-linecap");
  if (cap == "butt" || cap == "round" || cap == "square") look["strokeCap"] = cap;
  return look;
}

Json pointLook(const PlXStyle* style) {
  Json look = surfaceLook(style);
  if (!style) return look;
  const std::string shape = symbolShape(*style);
  if (!shape.empty()) look["shape"] = shape;
  const Json fill = colorJson(of(style, u"color"));
  if (isStroked(shape) && isPainted(fill)) look["stroke"] = fill;
  if (const auto width = pixelsOf(of(style, u"size"))) look["size"] = numberJson(*width * *width);
  if (const auto angle = lengthOf(of(style, u"glyph-angle")); angle && shape != "diamond") {
    look["angle"] = numberJson(std::fmod(angle->number, 360));
  }
  return look;
}

Json textLook(const PlXStyle* style) {
  Json look = Json::object();
  if (const Json color = colorJson(of(style, u"color")); !color.is_null()) look["fill"] = color;
  const std::string family = of(style, u"font-family");
  if (!family.empty()) look["font"] = family;
  if (const auto size = pixelsOf(of(style, u"font-size"))) look["fontSize"] = numberJson(*size);
  if (of(style, u"font-style") == "italic") look["fontStyle"] = "italic";
  if (style && style->getFont_weight() == PlXStyle::font_weight_bold) look["fontWeight"] = "bold";
  putNumber(look, "opacity", style, u"opacity");
  if (const auto angle = lengthOf(of(style, u"labelAngle"))) {
    look["angle"] = numberJson(std::fmod(360 - std::fmod(angle->number, 360), 360));
  }
  return look;
}

void putFont(Json& target, const std::string& prefix, const PlXStyle* style) {
  static constexpr std::pair<const char*, const char*> names[] = {{"fill", "Color"},
                                                                  {"font", "Font"},
                                                                  {"fontSize", "FontSize"},
                                                                  {"fontStyle", "FontStyle"},
                                                                  {"fontWeight", "FontWeight"}};
  const Json look = textLook(style);
  for (const auto& [from, to] : names) {
    std::string name = prefix + to;
    name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    if (look.contains(from)) target[name] = look[from];
  }
}

// ---- symbols

namespace {

constexpr char plusShape[] = "M-1,0L1,0M0,-1L0,1";
constexpr char crossShape[] = "M-1,-1L1,1M1,-1L-1,1";

// A regular polygon, or a star of as many rays, in a box from -1 to 1.
std::string outlineOf(int corners, bool isStar) {
  std::ostringstream path;
  path.exceptions(std::ios::badbit);  // for lack of memory
  path.precision(3);
  path << std::fixed;
  const int steps = isStar ? 2 * corners : corners;
  for (int i = 0; i < steps; ++i) {
    const double radius = isStar && i % 2 == 1 ? 0.4 : 1;
    const double angle = 2 * std::numbers::pi * i / steps;
    path << (i == 0 ? 'M' : 'L') << radius * std::sin(angle) << ',' << -radius * std::cos(angle);
  }
  return path.str() + 'Z';
}

}  // namespace

bool isStroked(const std::string& shape) {
  return shape == plusShape || shape == crossShape || shape == "stroke";
}

std::string symbolShape(const std::string& symbol) {
  static constexpr std::pair<const char*, const char*> shapes[] = {
      {"circle", "circle"}, {"sphere", "circle"},  {"ball", "circle"},
      {"square", "square"}, {"cube", "square"},    {"triangle", "triangle-up"},
      {"plus", plusShape},  {"cross", crossShape}, {"diamond", "diamond"},
      {"arrow", "arrow"},   {"line", "stroke"},    {"hexagon", "6"},
      {"polygon", "6"},     {"pentagon", "5"},     {"ibeam", "stroke"},
      {"x", crossShape}};
  for (const auto& [word, shape] : shapes) {
    if (symbol != word) continue;
    return *shape == '5' || *shape == '6' ? outlineOf(*shape - '0', false) : shape;
  }
  return symbol == "star" ? outlineOf(5, true) : "";
}

std::string symbolShape(const PlXStyle& style) {
  const std::string symbol = attribute(style, u"symbol");
  const auto sides = lengthOf(attribute(style, u"glyph-sides"));
  if (!sides || (symbol != "polygon" && symbol != "star")) return symbolShape(symbol);
  const int corners = static_cast<int>(std::clamp(sides->number, 3.0, 100.0));
  if (symbol == "polygon" && corners == 4) {
    const auto angle = lengthOf(attribute(style, u"glyph-angle"));
    return angle && std::abs(angle->number) == 45 ? "diamond" : "square";
  }
  if (symbol == "polygon" && corners == 3) return "triangle-up";
  return outlineOf(corners, symbol == "star");
}

std::vector<const PlXStyle*> stylesOf(const PlXStyleCycle* cycle) {
  const auto* list = cycle ? childOf<PlXCycle>(*cycle) : nullptr;
  return list ? childrenOf<PlXStyle>(*list) : std::vector<const PlXStyle*>();
}

// ---- components of colours

namespace {

using Components = std::array<double, 3>;  // each from 0 to 1

Components redGreenBlue(const std::string& color) {
  Components result = {0.27, 0.51, 0.71};  // of names, which aren't known here
  if (color.size() != 7 || color[0] != '#') return result;
  for (std::size_t i = 0; i < 3; ++i) {
    int value = 0;
    std::from_chars(color.data() + 1 + 2 * i, color.data() + 3 + 2 * i, value, 16);
    result[i] = value / 255.0;
  }
  return result;
}

Components hueSaturationBrightness(const Components& color) {
  const double most = std::max({color[0], color[1], color[2]});
  const double span = most - std::min({color[0], color[1], color[2]});
  double hue = 0;
  if (span > 0) {
    hue = most == color[0]   ? (color[1] - color[2]) / span
          : most == color[1] ? 2 + (color[2] - color[0]) / span
                             : 4 + (color[0] - color[1]) / span;
  }
  return {std::fmod(hue / 6 + 1, 1), most > 0 ? span / most : 0, most};
}

std::string hexOf(const Components& hsb) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string result = "#";
  for (const double shift : {5, 3, 1}) {
    const double k = std::fmod(shift + 6 * hsb[0], 6);
    const double part = hsb[2] - hsb[2] * hsb[1] * std::clamp(std::min(k, 4 - k), 0.0, 1.0);
    const int value = static_cast<int>(std::lround(255 * std::clamp(part, 0.0, 1.0)));
    result += {digits[value >> 4], digits[value & 15]};
  }
  return result;
}

}  // namespace

std::string withComponent(const std::string& color, PlXColorComponent::ENUM_type type,
                          double value) {
  Components hsb = hueSaturationBrightness(redGreenBlue(color));
  const std::size_t index = type == PlXColorComponent::type_hue          ? 0
                            : type == PlXColorComponent::type_saturation ? 1
                                                                         : 2;
  hsb[index] = std::clamp(value, 0.0, 1.0);
  return hexOf(hsb);
}

// ---- formats

const PlXFormat* formatOf(const CTVariableType* variable) {
  const auto formats = variable ? variable->getFormats() : std::vector<PlXFormat*>();
  return formats.empty() ? nullptr : formats[0];
}

namespace {

// d3's words for the digits of a number.
std::string digitsOf(const PlXFormat& format, char kind) {
  std::string result = format.getNegativesInParentheses() ? "(" : "";
  if (format.getUseGrouping()) result += ',';
  const bool hasMost = states(format, u"maximumFractionDigits");
  const bool hasLeast = states(format, u"minimumFractionDigits");
  if (!hasMost && !hasLeast) return result + (kind == 'e' ? "~e" : ".12~g");
  const auto clamped = [](auto digits) { return std::clamp(static_cast<long>(digits), 0L, 20L); };
  const long least = hasLeast ? clamped(format.getMinimumFractionDigits()) : 0;
  const long most = hasMost ? clamped(format.getMaximumFractionDigits()) : std::max(least, 6L);
  result += '.' + std::to_string(std::max(least, most));
  if (least < most) result += '~';
  return result + kind;
}

// A number divided by `factor`, with its sign, prefix and suffix.
std::string scaledText(const std::string& value, const PlXFormat& format, double factor,
                       const std::string& suffix) {
  const std::string prefix = attribute(format, u"prefix");
  std::string number = factor == 1 || factor == 0 ? value : value + '/' + literal(factor);
  const bool isSignOutside = format.getNegativesOutside() && !prefix.empty();
  if (format.getHideNegatives() || isSignOutside) number = "abs(" + number + ')';
  std::string text;
  const auto kind = format.getScientific();
  const auto formatted = [&](char letter) {
    return "format(" + number + ", " + literal(digitsOf(format, letter)) + ')';
  };
  if (kind == PlXFormat::scientific_true) {
    text = formatted('e');
  } else if (kind == PlXFormat::scientific_ifSmall && format.getSmall() > 0) {
    text = '(' + value + " != 0 && abs(" + value + ") < " + literal(format.getSmall()) + " ? " +
           formatted('e') + " : " + formatted('f') + ')';
  } else {
    text = formatted('f');
  }
  if (!prefix.empty()) text = literal(prefix) + " + " + text;
  if (isSignOutside && !format.getHideNegatives()) {
    text = '(' + value + " < 0 ? \"\u2212\" : \"\") + " + text;
  }
  if (!suffix.empty()) text += " + " + literal(suffix);
  return text;
}

std::string numberText(const std::string& value, const PlXFormat& format) {
  auto rules = childrenOf<PlXUnitRule>(format);
  std::ranges::stable_sort(rules, {}, [](const auto* rule) { return rule->getFrom(); });
  const double factor = states(format, u"scalingFactor") ? format.getScalingFactor() : 1;
  std::string text = scaledText(value, format, factor, attribute(format, u"suffix"));
  for (const auto* rule : rules) {
    text = "abs(" + value + ") >= " + literal(rule->getFrom()) + " ? " +
           scaledText(value, format, rule->getScalingFactor(), attribute(*rule, u"suffix")) +
           " : " + text;
  }
  return text;
}

// The parts of a date in d3's words.
std::string datePattern(const PlXFormat& format) {
  const std::string separators = attribute(format, u"separatorChars");
  const std::string dateSeparator = format.getHiddenSeparator() ? ""
                                    : separators.size() == 4    ? separators.substr(2, 1)
                                                                : "/";
  const std::string day = !format.getShowDay()                                      ? ""
                          : format.getDayType() == PlXFormat::dayType_dayOfYear     ? "%j"
                          : format.getDayOfMonthPadding() || format.getDayPadding() ? "%d"
                                                                                    : "%-d";
  static constexpr const char* months[] = {"%b", "%b", "%B", "%-m", "%m"};
  const auto monthFormat = static_cast<std::size_t>(format.getMonthFormat());
  const std::string month =
      format.getShowMonth() ? months[monthFormat < std::size(months) ? monthFormat : 0] : "";
  const std::string year = !format.getShowYear() ? "" : format.getYearAbbreviation() ? "%y" : "%Y";
  static constexpr const char* orders[] = {"mdy", "dmy", "dym", "mdy", "myd", "ydm", "ymd"};
  const auto order = static_cast<std::size_t>(format.getMdyOrder());
  std::vector<std::string> date;
  for (const char part : std::string(orders[order < std::size(orders) ? order : 0])) {
    date.push_back(part == 'd' ? day : part == 'm' ? month : year);
  }
  const bool hasNames = month == "%b" || month == "%B";
  std::string pattern;
  for (const std::string& part : date) {
    if (part.empty()) continue;
    if (!pattern.empty()) pattern += hasNames ? " " : dateSeparator;
    pattern += part;
  }
  if (format.getShowQuarter()) {
    const std::string quarter =
        attribute(format, u"quarterPrefix") + "%q" + attribute(format, u"quarterSuffix");
    pattern += (pattern.empty() ? "" : " ") + quarter;
  }
  if (format.getShowWeek()) pattern += " %V" + attribute(format, u"weekSuffix");
  if (format.getShowDayOfWeek()) {
    pattern = (format.getDayOfWeekAbbreviation() ? "%a " : "%A ") + pattern;
  }
  const bool isTwelve = format.getHourFormat() == PlXFormat::hourFormat_amPm ||
                        format.getHourFormat() == PlXFormat::hourFormat_twelve;
  std::string time = format.getShowHour() ? isTwelve ? "%-I" : "%H" : "";
  if (format.getShowMinute()) time += time.empty() ? "%M" : ":%M";
  if (format.getShowSecond()) time += time.empty() ? "%S" : ":%S";
  if (format.getShowMillis()) time += ".%L";
  if (format.getHourFormat() == PlXFormat::hourFormat_amPm && !time.empty()) time += " %p";
  if (!time.empty()) pattern += (pattern.empty() ? "" : " ") + time;
  return pattern.empty() ? "%Y-%m-%d" : pattern;
}

}  // namespace

std::string textExpression(const std::string& value, const PlXFormat* format, bool isDate) {
  if (!format) {
    return isDate ? "utcFormat(" + value + ", \"%Y-%m-%d\")" : "format(" + value + ", \".12~g\")";
  }
  const auto base = format->getBaseFormat();
  if (base == 0 && !isDate) return numberText(value, *format);
  // Times and durations count seconds, dates milliseconds.
  const std::string time = isDate ? value : "1000*" + value;
  std::string text = "utcFormat(" + time + ", " + literal(datePattern(*format)) + ')';
  const std::string prefix = attribute(*format, u"prefix");
  const std::string suffix = attribute(*format, u"suffix");
  if (!prefix.empty()) text = literal(prefix) + " + " + text;
  if (!suffix.empty()) text += " + " + literal(suffix);
  return text;
}
