#include "chartstylevalue.h"

#include <algorithm>
#include <string_view>

#include "plxuni.h"

const XMLCh ChartStyleValue::_border_bottom[] = u"border-bottom";
const XMLCh ChartStyleValue::_border_left[] = u"border-left";
const XMLCh ChartStyleValue::_border_right[] = u"border-right";
const XMLCh ChartStyleValue::_border_top[] = u"border-top";
const XMLCh ChartStyleValue::_fill_pattern[] = u"fill-pattern";
const XMLCh ChartStyleValue::_label_location_inside[] = u"label-location-inside";
const XMLCh ChartStyleValue::_label_location_x[] = u"label-location-x";
const XMLCh ChartStyleValue::_label_location_y[] = u"label-location-y";
const XMLCh ChartStyleValue::_max_width[] = u"max-width";
const XMLCh ChartStyleValue::_min_font_size[] = u"min-font-size";
const XMLCh ChartStyleValue::_visibility[] = u"visibility";

namespace {

using Value = ChartStyleValue;

struct Key {
  const XMLCh* text;
  ChartString Value::*field;
};

// In the order of writing.
constexpr Key keys[] = {
    {Value::_border_left, &Value::borderLeft},
    {Value::_border_right, &Value::borderRight},
    {Value::_border_top, &Value::borderTop},
    {Value::_border_bottom, &Value::borderBottom},
    {PlXUni::_depth, &Value::depth},
    {Value::_fill_pattern, &Value::fillPattern},
    {PlXUni::_fill, &Value::fill},
    {PlXUni::_color, &Value::color},
    {PlXUni::_color2, &Value::color2},
    {PlXUni::_font_family, &Value::fontFamily},
    {PlXUni::_font_style, &Value::fontStyle},
    {PlXUni::_font_size, &Value::fontSize},
    {PlXUni::_font_weight, &Value::fontWeight},
    {Value::_label_location_inside, &Value::labelLocationInside},
    {Value::_label_location_x, &Value::labelLocationX},
    {Value::_label_location_y, &Value::labelLocationY},
    {PlXUni::_margin, &Value::margin},
    {Value::_max_width, &Value::maxWidth},
    {PlXUni::_padding, &Value::padding},
    {PlXUni::_shadow, &Value::shadow},
    {PlXUni::_shadow_dx, &Value::shadowDx},
    {PlXUni::_shadow_dy, &Value::shadowDy},
    {PlXUni::_shadow_opacity, &Value::shadowOpacity},
    {PlXUni::_stroke, &Value::stroke},
    {PlXUni::_stroke_dasharray, &Value::strokeDasharray},
    {PlXUni::_stroke_linecap, &Value::strokeLinecap},
    {PlXUni::_stroke_width, &Value::strokeWidth},
    {Value::_visibility, &Value::visibility},
    {PlXUni::_width, &Value::width},
    {PlXUni::_text_fit, &Value::textFit},
    {Value::_min_font_size, &Value::minFontSize},
    {PlXUni::_size, &Value::size},
    {PlXUni::_symbol, &Value::symbol},
    {PlXUni::_glyph_sides, &Value::glyphSides},
    {PlXUni::_glyph_angle, &Value::glyphAngle},
    {PlXUni::_glyph_aspect, &Value::glyphAspect},
};

// Cuts the next token off the text; empty when there is none left.
std::u16string_view takeToken(std::u16string_view& text, XMLCh delimiter) {
  text.remove_prefix(std::min(text.find_first_not_of(delimiter), text.size()));
  const std::u16string_view token = text.substr(0, text.find(delimiter));
  text.remove_prefix(token.size());
  return token;
}

// Puts a pair behind those that are there.
void appendPair(ChartString& pairs, const ChartString& key, const ChartString& value) {
  if (!pairs.empty()) pairs.append(u";");
  pairs.append(key).append(u":").append(value);
}

}  // namespace

ChartStyleValue::~ChartStyleValue() = default;

void ChartStyleValue::initialize(const XMLCh* text) {
  std::u16string_view rest = text ? text : u"";
  while (true) {
    std::u16string_view pair = takeToken(rest, u';');
    if (pair.empty()) return;
    const std::u16string_view key = takeToken(pair, u':');
    if (key.empty()) continue;
    std::u16string_view value;
    for (auto token = takeToken(pair, u':'); !token.empty(); token = takeToken(pair, u':')) {
      value = token;
    }
    const Key* known = std::ranges::find(keys, key, &Key::text);
    if (known == std::end(keys)) {
      appendPair(other, ChartString(key), ChartString(value));
      continue;
    }
    if (known->field == &Value::strokeDasharray && value == PlXUni::_none) value = {};
    this->*known->field = ChartString(value);
  }
}

ChartString ChartStyleValue::getValue() const {
  ChartString text;
  for (const Key& key : keys) {
    if (!(this->*key.field).empty()) appendPair(text, key.text, this->*key.field);
  }
  if (text.empty() || other.empty()) return text.append(other);
  return text.append(u";").append(other);
}
