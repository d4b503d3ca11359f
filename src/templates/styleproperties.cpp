#include "styleproperties.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "attributetext.h"
#include "chartstylevalue.h"
#include "dialect.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;

namespace styleproperties {

namespace {

using Value = ChartStyleValue;

// ---- how a property is written: the style, the attribute's name, the text
using Write = void (*)(PlXStyle&, const XMLCh*, const ChartString&);

void set(PlXStyle& style, const XMLCh* attribute, const ChartString& text) {
  style.SetAttribute(attribute, text.xc_str());
}

using Setter = void (PlXStyle::*)(const XMLCh*);

template <Setter setter>
void by(PlXStyle& style, const XMLCh*, const ChartString& text) {
  (style.*setter)(text.xc_str());
}

// As it stands, if the whole part of the number is in the range.
template <long low, long high = std::numeric_limits<long>::max()>
void setWithin(PlXStyle& style, const XMLCh* attribute, const ChartString& text) {
  const long number = text.convertToSignedInteger();
  if (number >= low && number <= high) set(style, attribute, text);
}

void setWeight(PlXStyle& style, const XMLCh*, const ChartString& text) {
  style.setFont_weight(text.equals(PlXUni::_normal) ? PlXStyle::font_weight_regular
                                                    : PlXStyle::font_weight_bold);
}

void setWeightWord(PlXStyle& style, const XMLCh* attribute, const ChartString& text) {
  set(style, attribute, text.equals(PlXUni::_normal) ? PlXUni::_regular : text);
}

void setVisibility(PlXStyle& style, const XMLCh*, const ChartString& text) {
  style.setVisible(!text.equals(u"hidden") && !text.equals(PlXUni::_false));
}

void setPreferredWidth(PlXStyle& style, const XMLCh*, const ChartString& text) {
  style.setWidth(text.xc_str(), nullptr, nullptr);
}

void setMaximumWidth(PlXStyle& style, const XMLCh*, const ChartString& text) {
  style.setWidth(nullptr, nullptr, text.xc_str());
}

void setPreferredFontSize(PlXStyle& style, const XMLCh*, const ChartString& text) {
  style.setFontSize(text.xc_str(), nullptr, nullptr);
}

void setMinimumFontSize(PlXStyle& style, const XMLCh*, const ChartString& text) {
  style.setFontSize(nullptr, text.xc_str(), nullptr);
}

// A part that isn't stated stays as it is.
const XMLCh* statedPart(const ChartString& part) {
  return part.empty() ? nullptr : part.xc_str();
}

void setFontSizes(PlXStyle& style, const XMLCh*, const ChartString& text) {
  ChartString preferred, minimum, maximum;
  PlXStyle::getPreferredMinMax(text, preferred, minimum, maximum);
  style.setFontSize(statedPart(preferred), statedPart(minimum), statedPart(maximum));
}

void setMinimumOfFontSizes(PlXStyle& style, const XMLCh*, const ChartString& text) {
  ChartString preferred, minimum, maximum;
  PlXStyle::getPreferredMinMax(text, preferred, minimum, maximum);
  style.setFontSize(nullptr, statedPart(minimum), nullptr);
}

// ---- what keeps a property from being written: that the source's style states it
using Test = bool (*)(const PlXStyle& source);

template <bool (PlXStyle::*isPresent)() const>
bool has(const PlXStyle& source) {
  return (source.*isPresent)();
}

bool hasPreferredFontSize(const PlXStyle& source) {
  ChartString preferred, minimum, maximum;
  source.getFontSize(preferred, minimum, maximum);
  return !preferred.empty();
}

bool hasMinimumFontSize(const PlXStyle& source) {
  ChartString preferred, minimum, maximum;
  source.getFontSize(preferred, minimum, maximum);
  return !minimum.empty();
}

// Widths and sizes keep each other out.
bool hasPreferredWidth(const PlXStyle& source) {
  ChartString width, size, minimum, maximum;
  source.getWidth(width, minimum, maximum);
  source.getSize(size, minimum, maximum);
  return !width.empty() || !size.empty();
}

bool hasMaximumWidth(const PlXStyle& source) {
  ChartString width, size, minimum, maximumWidth, maximumSize;
  source.getWidth(width, minimum, maximumWidth);
  source.getSize(size, minimum, maximumSize);
  return hasPreferredWidth(source) || !maximumWidth.empty() || !maximumSize.empty();
}

struct Property {
  ChartString Value::*key;
  const XMLCh* attribute;
  Write fromKey;
  Write fromAttribute;
  Test isPinned;
};

// In the order of writing, which counts where two share an attribute.
// clang-format off
constexpr Property properties[] = {
    {&Value::color, PlXUni::_color, by<&PlXStyle::setColor>, set, has<&PlXStyle::isColorPresent>},
    {&Value::color2, PlXUni::_color2, by<&PlXStyle::setColor2>, set, has<&PlXStyle::isColor2Present>},
    {&Value::borderLeft, PlXUni::_border_left, by<&PlXStyle::setBorder_left>, set, has<&PlXStyle::isBorderLeftPresent>},
    {&Value::borderRight, PlXUni::_border_right, by<&PlXStyle::setBorder_right>, set, has<&PlXStyle::isBorderRightPresent>},
    {&Value::borderTop, PlXUni::_border_top, by<&PlXStyle::setBorder_top>, set, has<&PlXStyle::isBorderTopPresent>},
    {&Value::borderBottom, PlXUni::_border_bottom, by<&PlXStyle::setBorder_bottom>, set, has<&PlXStyle::isBorderBottomPresent>},
    {&Value::strokeWidth, PlXUni::_stroke_width, by<&PlXStyle::setStroke_width>, set, has<&PlXStyle::isStroke_widthPresent>},
    {&Value::fontSize, PlXUni::_font_size, setPreferredFontSize, setFontSizes, hasPreferredFontSize},
    {&Value::fontWeight, PlXUni::_font_weight, setWeight, setWeightWord, has<&PlXStyle::isFont_weightPresent>},
    {&Value::strokeDasharray, PlXUni::_stroke_dasharray, by<&PlXStyle::setStroke_dasharray>, set, has<&PlXStyle::isStroke_dasharrayPresent>},
    {&Value::labelLocationX, PlXUni::_labelLocationHorizontal, set, set, has<&PlXStyle::isLabelLocationHorizontalPresent>},
    {&Value::labelLocationY, PlXUni::_labelLocationVertical, set, set, has<&PlXStyle::isLabelLocationVerticalPresent>},
    {&Value::padding, PlXUni::_padding, by<&PlXStyle::setPadding>, set, has<&PlXStyle::isPaddingPresent>},
    {&Value::margin, PlXUni::_margin, by<&PlXStyle::setMargin>, set, has<&PlXStyle::isMarginPresent>},
    {&Value::visibility, PlXUni::_visible, setVisibility, set, has<&PlXStyle::isVisiblePresent>},
    {&Value::maxWidth, PlXUni::_width, setMaximumWidth, set, hasMaximumWidth},
    {&Value::width, PlXUni::_width, setPreferredWidth, set, hasPreferredWidth},
    {&Value::symbol, PlXUni::_symbol, by<&PlXStyle::setSymbol>, set, has<&PlXStyle::isSymbolPresent>},
    {&Value::size, PlXUni::_size, by<&PlXStyle::setSize>, set, has<&PlXStyle::isSizePresent>},
    {&Value::strokeLinecap, PlXUni::_stroke_linecap, set, set, has<&PlXStyle::isStroke_linecapPresent>},
    {&Value::depth, PlXUni::_depth, by<&PlXStyle::setDepth>, set, has<&PlXStyle::isDepthPresent>},
    {&Value::fillPattern, PlXUni::_pattern, setWithin<0>, setWithin<0>, has<&PlXStyle::isPatternPresent>},
    {&Value::fontFamily, PlXUni::_font_family, by<&PlXStyle::setFont_family>, set, has<&PlXStyle::isFont_familyPresent>},
    {&Value::glyphAngle, PlXUni::_glyph_angle, set, set, has<&PlXStyle::isGlyph_anglePresent>},
    {&Value::textFit, PlXUni::_text_fit, set, set, has<&PlXStyle::isText_fitPresent>},
    {&Value::labelLocationInside, PlXUni::_labelInside, set, set, has<&PlXStyle::isLabelInsidePresent>},
    {&Value::fontStyle, PlXUni::_font_style, set, set, has<&PlXStyle::isFont_stylePresent>},
    {&Value::minFontSize, PlXUni::_font_size, setMinimumFontSize, setMinimumOfFontSizes, hasMinimumFontSize},
    {&Value::shadow, PlXUni::_shadow_color, by<&PlXStyle::setShadow_color>, set, has<&PlXStyle::isShadow_colorPresent>},
    {&Value::shadowDx, PlXUni::_shadow_dx, by<&PlXStyle::setShadow_dx>, set, has<&PlXStyle::isShadow_dxPresent>},
    {&Value::shadowDy, PlXUni::_shadow_dy, by<&PlXStyle::setShadow_dy>, set, has<&PlXStyle::isShadow_dyPresent>},
    {&Value::shadowOpacity, PlXUni::_shadow_opacity, setWithin<0, 1>, setWithin<0, 1>, has<&PlXStyle::isShadow_opacityPresent>},
    {&Value::glyphAspect, PlXUni::_glyph_aspect, setWithin<0>, setWithin<0>, has<&PlXStyle::isGlyph_aspectPresent>},
    {&Value::glyphSides, PlXUni::_glyph_sides, setWithin<2, 100>, setWithin<2, 100>, has<&PlXStyle::isGlyph_sidesPresent>},
};

// Those that have no key; written behind all else.
struct Attribute {
  const XMLCh* name;
  Write write;
  Test isPinned;
};

constexpr Attribute attributes[] = {
    {PlXUni::_gradient_method, set, has<&PlXStyle::isGradient_methodPresent>},
    {PlXUni::_gradient_color, set, has<&PlXStyle::isGradient_colorPresent>},
    {PlXUni::_gradient_focus, set, has<&PlXStyle::isGradient_focusPresent>},
    {PlXUni::_gradient_angle, set, has<&PlXStyle::isGradient_anglePresent>},
    {PlXUni::_gradient_size, set, has<&PlXStyle::isGradient_sizePresent>},
    {PlXUni::_gradient_opacity, setWithin<0, 1>, has<&PlXStyle::isGradient_opacityPresent>},
    {PlXUni::_gradient_isInverted, set, has<&PlXStyle::isGradient_isInvertedPresent>},
    {PlXUni::_opacity2, setWithin<0, 1>, has<&PlXStyle::isOpacity2Present>},
    {PlXUni::_background_method, set, has<&PlXStyle::isBackground_methodPresent>},
    {PlXUni::_background_image, set, has<&PlXStyle::isBackground_imagePresent>},
    {PlXUni::_opacity, set, has<&PlXStyle::isOpacityPresent>},
    {PlXUni::_stroke_decoration, set, has<&PlXStyle::isStroke_decorationPresent>},
    {PlXUni::_bevel_size, set, has<&PlXStyle::isBevel_sizePresent>},
    {PlXUni::_depthRelativeToWidth, set, has<&PlXStyle::isDepthRelativeToWidthPresent>},
    {PlXUni::_labelAngle, set, has<&PlXStyle::isLabelAnglePresent>},
    {PlXUni::_fill_opacity, set, has<&PlXStyle::isFill_opacityPresent>},
    {PlXUni::_stroke_opacity, set, has<&PlXStyle::isStroke_opacityPresent>},
    {PlXStyle::_margin_left, set, has<&PlXStyle::isMargin_leftPresent>},
    {PlXStyle::_margin_right, set, has<&PlXStyle::isMargin_rightPresent>},
    {PlXStyle::_margin_top, set, has<&PlXStyle::isMargin_topPresent>},
    {PlXStyle::_margin_bottom, set, has<&PlXStyle::isMargin_bottomPresent>},
    {PlXStyle::_padding_left, set, has<&PlXStyle::isPadding_leftPresent>},
    {PlXStyle::_padding_right, set, has<&PlXStyle::isPadding_rightPresent>},
    {PlXStyle::_padding_top, set, has<&PlXStyle::isPadding_topPresent>},
    {PlXStyle::_padding_bottom, set, has<&PlXStyle::isPadding_bottomPresent>},
    {PlXStyle::_textAlignment, set, has<&PlXStyle::isTextAlignmentPresent>},
    {PlXStyle::_maxAttachedTextWidth, set, has<&PlXStyle::isMaxAttachedTextWidthPresent>},
    {PlXStyle::_maxAttachedTextHeight, set, has<&PlXStyle::isMaxAttachedTextHeightPresent>},
};
// clang-format on

// The row of a style's attribute.
const dialect::Attribute& rowOf(const XMLCh* attribute) {
  static const dialect::Element& style = *dialect::find(PlXStyle::_UTF_style, u"");
  return *dialect::attributeOf(style, attribute);
}

// A style element, whose attributes are looked through once for all properties: most have few.
class Reader {
 public:
  Reader(const BaseTemplate& command, const DOMElement& element,
         BaseTemplate::StyleImport::Painting painting)
      : command_(command) {
    const DOMNamedNodeMap* all = element.getAttributes();
    for (XMLSize_t i = 0; i < all->getLength(); ++i) {
      const XMLCh* name = all->item(i)->getNodeName();
      const XMLCh* text = attributeText(*all->item(i));
      if (!*text) continue;
      if (painting == BaseTemplate::StyleImport::Painting::Slices) {
        if (XMLString::equals(name, PlXUni::_size)) continue;
        if (XMLString::equals(name, PlXUni::_width)) text = u"100%";
      }
      texts_.emplace_back(name, text);
    }
  }

  // Null when there is none, or an empty one.
  const XMLCh* operator[](const XMLCh* name) const {
    for (const auto& [each, text] : texts_) {
      if (XMLString::equals(each, name)) return text;
    }
    return nullptr;
  }
  ChartString attribute(const XMLCh* name) const {
    const XMLCh* text = (*this)[name];
    return text ? stated::checked(command_, rowOf(name), text) : ChartString();
  }
  // These two keys have a language of their own.
  ChartString keyed(const Property& property, const Value& value) const {
    const ChartString& text = value.*property.key;
    const bool isOwn = property.key == &Value::fontWeight || property.key == &Value::visibility;
    if (isOwn || text.empty()) return text;
    return stated::checked(command_, rowOf(property.attribute), text);
  }
  ChartString color(const XMLCh* key, const ChartString& text) const {
    return stated::checked(command_, key, text, stated::Type::Color);
  }

 private:
  const BaseTemplate& command_;
  std::vector<std::pair<const XMLCh*, const XMLCh*>> texts_;
};

void removeGradientColor(PlXStyle& style, const XMLCh*, const ChartString&) {
  style.removeGradient_color();
}

// ---- the children glyph, intervalGlyph and shadow: what they don't name is reset
template <Setter setter>
void byOrNone(PlXStyle& style, const XMLCh*, const ChartString& text) {
  (style.*setter)(text.empty() ? nullptr : text.xc_str());
}

template <void (PlXStyle::*setter)(double)>
void byNumber(PlXStyle& style, const XMLCh*, const ChartString& text) {
  (style.*setter)(text.convertToDouble());
}

void setAspect(PlXStyle& style, const XMLCh*, const ChartString& text) {
  const double aspect = text.convertToDouble();
  if (aspect >= 0) style.setGlyph_aspect(aspect);
}

void setSides(PlXStyle& style, const XMLCh*, const ChartString& text) {
  const long sides = text.convertToSignedInteger();
  if (sides >= 2 && sides <= 100) style.setGlyph_sides(static_cast<unsigned>(sides));
}

bool never(const PlXStyle&) {
  return false;
}

struct Part {
  const XMLCh* name;
  const XMLCh* property;  // the attribute of a style that holds it
  Write write;
  Test isPinned;
};

// clang-format off
constexpr Part glyph[] = {
    {PlXUni::_sides, PlXUni::_glyph_sides, setSides, has<&PlXStyle::isGlyph_sidesPresent>},
    {PlXUni::_angle, PlXUni::_glyph_angle, byNumber<&PlXStyle::setGlyph_angle>, has<&PlXStyle::isGlyph_anglePresent>},
    {PlXUni::_aspect, PlXUni::_glyph_aspect, setAspect, has<&PlXStyle::isGlyph_aspectPresent>},
    {PlXUni::_size, PlXUni::_size, byOrNone<&PlXStyle::setSize>, has<&PlXStyle::isSizePresent>},
    {PlXUni::_type, PlXUni::_symbol, byOrNone<&PlXStyle::setSymbol>, has<&PlXStyle::isSymbolPresent>},
};
constexpr Part intervalGlyph[] = {
    {PlXUni::_type, PlXUni::_symbol, byOrNone<&PlXStyle::setSymbol>, never},
};
constexpr Part shadow[] = {
    {PlXUni::_color, PlXUni::_shadow_color, byOrNone<&PlXStyle::setShadow_color>, has<&PlXStyle::isShadow_colorPresent>},
    {PlXUni::_dx, PlXUni::_shadow_dx, byOrNone<&PlXStyle::setShadow_dx>, has<&PlXStyle::isShadow_dxPresent>},
    {PlXUni::_dy, PlXUni::_shadow_dy, byOrNone<&PlXStyle::setShadow_dy>, has<&PlXStyle::isShadow_dyPresent>},
    {PlXUni::_opacity, PlXUni::_shadow_opacity, byNumber<&PlXStyle::setShadow_opacity>,
     has<&PlXStyle::isShadow_opacityPresent>},
};
// clang-format on

struct Child {
  const XMLCh* name;
  std::span<const Part> parts;
};

constexpr Child children[] = {
    {PlXUni::_glyph, glyph},
    {PlXUni::_intervalGlyph, intervalGlyph},
    {PlXUni::_shadow, shadow},
};

}  // namespace

Statements read(const BaseTemplate& command, const DOMElement& element,
                BaseTemplate::StyleImport::Painting painting) {
  const Reader reader(command, element, painting);
  Value value(reader[PlXUni::_value]);
  Statements stated;
  for (const Property& property : properties) {
    const ChartString fromKey = reader.keyed(property, value);
    if (!fromKey.empty()) {
      stated.properties.push_back(
          {property.fromKey, property.attribute, fromKey, property.isPinned});
      continue;
    }
    const ChartString text = reader.attribute(property.attribute);
    if (text.empty()) continue;
    stated.properties.push_back(
        {property.fromAttribute, property.attribute, text, property.isPinned});
  }
  for (const Attribute& attribute : attributes) {
    const ChartString text = reader.attribute(attribute.name);
    if (!text.empty()) {
      stated.withoutKey.push_back({attribute.write, attribute.name, text, attribute.isPinned});
    } else if (attribute.name == PlXUni::_gradient_color) {
      // The one property that an element takes away by not naming it.
      stated.withoutKey.push_back({removeGradientColor, attribute.name, {}, attribute.isPinned});
    }
  }
  stated.stroke = reader.color(PlXUni::_stroke, value.stroke);
  stated.fill = reader.color(PlXUni::_fill, value.fill);
  return stated;
}

void write(const std::vector<Statement>& stated, PlXStyle& style, const PlXStyle* source) {
  for (const Statement& each : stated) {
    if (source && each.isPinned(*source)) continue;
    each.write(style, each.attribute, each.text);
  }
}

bool writeChild(const BaseTemplate& command, const DOMElement& child, PlXStyle& style,
                const PlXStyle* source) {
  for (const auto& [name, parts] : children) {
    if (!templatexml::is(child.getTagName(), name)) continue;
    for (const Part& part : parts) {
      if (source && part.isPinned(*source)) continue;
      const ChartString text = stated::text(command, &child, part.name, rowOf(part.property).type);
      part.write(style, part.property, text);
    }
    return true;
  }
  return false;
}

}  // namespace styleproperties
