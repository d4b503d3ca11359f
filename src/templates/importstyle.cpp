// BaseTemplate's import of style elements.
#include <algorithm>
#include <limits>
#include <span>
#include <type_traits>
#include <unordered_set>

#include <xercesc/dom/DOM.hpp>

#include "attributetext.h"
#include "basetemplate.h"
#include "chartbase.h"
#include "chartstylevalue.h"
#include "dialect.h"
#include "domwalk.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "report.h"
#include "styleusers.h"
#include "xmlwriter.h"

using namespace xercesc;

namespace {

using Value = ChartStyleValue;
using StyleUsers = BaseTemplate::StyleUsers;
template <class T>
using Painted = StyleUsers::Painted<T>;

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

// As it stands, if the whole number that it starts with is in the range.
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

// The attributes of an element, read once for all properties: most elements have few.
class Attributes {
 public:
  explicit Attributes(const DOMElement& element) {
    const DOMNamedNodeMap* all = element.getAttributes();
    for (XMLSize_t i = 0; i < all->getLength(); ++i) {
      const DOMNode* attribute = all->item(i);
      texts_.emplace_back(attribute->getNodeName(), attributeText(*attribute));
    }
  }

  // Null when there is none, or an empty one.
  const XMLCh* operator[](const XMLCh* name) const {
    for (const auto& [each, text] : texts_) {
      if (*text && XMLString::equals(each, name)) return text;
    }
    return nullptr;
  }

 private:
  std::vector<std::pair<const XMLCh*, const XMLCh*>> texts_;
};

// What an element says, to be written to each of several styles.
struct Statement {
  Write write;
  const XMLCh* attribute;
  ChartString text;
  Test isPinned;
};
using Statements = std::vector<Statement>;

Statements statedProperties(const Attributes& texts, const Value& value) {
  Statements stated;
  for (const Property& property : properties) {
    const ChartString& fromKey = value.*property.key;
    if (!fromKey.empty()) {
      stated.push_back({property.fromKey, property.attribute, fromKey, property.isPinned});
    } else if (const XMLCh* text = texts[property.attribute]) {
      stated.push_back({property.fromAttribute, property.attribute, text, property.isPinned});
    }
  }
  return stated;
}

void removeGradientColor(PlXStyle& style, const XMLCh*, const ChartString&) {
  style.removeGradient_color();
}

Statements statedWithoutKey(const Attributes& texts) {
  Statements stated;
  for (const Attribute& attribute : attributes) {
    if (const XMLCh* text = texts[attribute.name]) {
      stated.push_back({attribute.write, attribute.name, text, attribute.isPinned});
    } else if (attribute.name == PlXUni::_gradient_color) {
      // The one property that an element takes away by not naming it.
      stated.push_back({removeGradientColor, attribute.name, {}, attribute.isPinned});
    }
  }
  return stated;
}

void write(const Statements& stated, PlXStyle& style, const PlXStyle* source) {
  for (const Statement& each : stated) {
    if (source && each.isPinned(*source)) continue;
    each.write(style, each.attribute, each.text);
  }
}

// ---- the keys stroke and fill
void importStrokeAndFill(const Value& value, PlXStyle& style, const PlXStyle* source,
                         bool isSurface) {
  if (!value.stroke.empty() && !(source && source->isColor2Present())) {
    isSurface ? style.setColor2(value.stroke.xc_str()) : style.setColor(value.stroke.xc_str());
  }
  if (isSurface && !value.fill.empty() && !(source && source->isColorPresent())) {
    style.setColor(value.fill.xc_str());
  }
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

constexpr Attribute glyph[] = {
    {PlXUni::_sides, setSides, has<&PlXStyle::isGlyph_sidesPresent>},
    {PlXUni::_angle, byNumber<&PlXStyle::setGlyph_angle>, has<&PlXStyle::isGlyph_anglePresent>},
    {PlXUni::_aspect, setAspect, has<&PlXStyle::isGlyph_aspectPresent>},
    {PlXUni::_size, byOrNone<&PlXStyle::setSize>, has<&PlXStyle::isSizePresent>},
    {PlXUni::_type, byOrNone<&PlXStyle::setSymbol>, has<&PlXStyle::isSymbolPresent>},
};
constexpr Attribute intervalGlyph[] = {
    {PlXUni::_type, byOrNone<&PlXStyle::setSymbol>, never},
};
constexpr Attribute shadow[] = {
    {PlXUni::_color, byOrNone<&PlXStyle::setShadow_color>, has<&PlXStyle::isShadow_colorPresent>},
    {PlXUni::_dx, byOrNone<&PlXStyle::setShadow_dx>, has<&PlXStyle::isShadow_dxPresent>},
    {PlXUni::_dy, byOrNone<&PlXStyle::setShadow_dy>, has<&PlXStyle::isShadow_dyPresent>},
    {PlXUni::_opacity, byNumber<&PlXStyle::setShadow_opacity>,
     has<&PlXStyle::isShadow_opacityPresent>},
};

struct Child {
  const XMLCh* name;
  std::span<const Attribute> attributes;
};

constexpr Child children[] = {
    {PlXUni::_glyph, glyph},
    {PlXUni::_intervalGlyph, intervalGlyph},
    {PlXUni::_shadow, shadow},
};

void importChild(const DOMElement& child, std::span<const Attribute> attributes, PlXStyle& style,
                 const PlXStyle* source) {
  for (const Attribute& attribute : attributes) {
    if (source && attribute.isPinned(*source)) continue;
    attribute.write(style, attribute.name, child.getAttribute(attribute.name));
  }
}

// ---- the child interpolation, which acts on elements
struct Interpolation {
  ChartString type;
  PlXSmoothStatistic::ENUM_method method = PlXSmoothStatistic::method_linear;
  // 0 to leave it as it is.
  CTElementType::ENUM_breakRepresentation breaks{};
};

Interpolation readInterpolation(const DOMElement& element) {
  Interpolation result;
  result.type = element.getAttribute(PlXUni::_type);
  if (result.type.equals(PlXUni::_step) || result.type.equals(PlXUni::_jump)) {
    const ChartString position = element.getAttribute(u"pointPosition");
    result.method = position.equals(PlXUni::_left)    ? PlXSmoothStatistic::method_stepLeft
                    : position.equals(PlXUni::_right) ? PlXSmoothStatistic::method_stepRight
                                                      : PlXSmoothStatistic::method_stepCenter;
  }
  static constexpr std::pair<const XMLCh*, CTElementType::ENUM_breakRepresentation> words[] = {
      {PlXUni::_gap, CTElementType::breakRepresentation_gap},
      {PlXUni::_interpolated, CTElementType::breakRepresentation_interpolated},
      {PlXUni::_wings, CTElementType::breakRepresentation_wings},
  };
  const ChartString missing = element.getAttribute(PlXUni::_missingRepresentation);
  for (const auto& [word, breaks] : words) {
    if (missing.equals(word)) result.breaks = breaks;
  }
  return result;
}

template <class T>
void addPainted(Painted<T>& painted, T& element) {
  painted.all.push_back(&element);
  painted.ofStyle[element.getStyle()->getId()].push_back(&element);
}

// Gives each element of a tag a style.
template <class T>
void findPainted(BaseTemplate& base, const XMLCh* tag, std::optional<Painted<T>>& painted) {
  if (painted) return;
  std::vector<CTElementType*> elements;
  base.getAllElementsByType(tag, elements);
  Painted<T> found;
  for (CTElementType* each : elements) {
    auto* element = dynamic_cast<T*>(each);
    if (!element) continue;
    base.styleOf<CTElementType>(*element);
    addPainted(found, *element);
  }
  painted = std::move(found);
}

template <class T>
void noticePainted(std::optional<Painted<T>>& painted, PlXBaseElement& part) {
  auto* element = painted ? dynamic_cast<T*>(&part) : nullptr;
  if (element && element->getStyle()) addPainted(*painted, *element);
}

// What got a style of its own since the last import, as a new element does.
void noticeRestyled(StyleUsers& users) {
  for (PlXBaseElement* part : users.restyled) {
    users.noticeSurface(*part);
    noticePainted(users.lines, *part);
    noticePainted(users.areas, *part);
    noticePainted(users.paths, *part);
  }
  users.restyled.clear();
}

// Those that a style paints.
template <class T>
std::vector<T*> elementsOf(const Painted<T>& painted, const std::u16string& style) {
  if (style == ChartBase::_container) return painted.all;
  const auto found = painted.ofStyle.find(style);
  return found == painted.ofStyle.end() ? std::vector<T*>() : found->second;
}

template <class T>
void setBreaks(T& element, const PlXVisualization* source, const Interpolation& interpolation) {
  DOMElement* there = source ? source->getElementById(element.getId()) : nullptr;
  if (!there || !interpolation.breaks) return;
  const auto* other = dynamic_cast<const T*>(source->objectOf(there));
  if (other ? !other->getBreakRepresentation() : std::is_same_v<T, PlXLine>) {
    element.setBreakRepresentation(interpolation.breaks);
  }
}

template <class T>
void setSmoothing(T& element, const Interpolation& interpolation) {
  if (interpolation.type.empty()) return;
  BaseTemplate::smoothStatisticOf(element).setMethod(interpolation.method);
  element.setShowDiscontinuity(interpolation.type.equals(PlXUni::_jump));
}

// Lines, areas and paths that the style paints are interpolated; the other areas and paths are too,
// but for their breaks. A command may say the same of many styles: each is asked for its elements
// once, and all areas and paths follow once.
void interpolate(BaseTemplate& base, const PlXVisualization* source, StyleUsers& users,
                 const DOMElement& element, const PlXStyle& style) {
  const auto [followed, isFirst] = users.followed.try_emplace(&element);
  const std::u16string id(style.getId());
  if (!followed->second.insert(id).second) return;
  const Interpolation interpolation = readInterpolation(element);
  findPainted(base, PlXLine::_UTF_line, users.lines);
  findPainted(base, PlXArea::_UTF_area, users.areas);
  findPainted(base, PlXPath::_UTF_path, users.paths);
  const auto paint = [&](const auto& painted) {
    for (auto* each : elementsOf(painted, id)) {
      setBreaks(*each, source, interpolation);
      setSmoothing(*each, interpolation);
    }
  };
  paint(*users.lines);
  paint(*users.areas);
  paint(*users.paths);
  if (!isFirst) return;
  for (PlXArea* area : users.areas->all) setSmoothing(*area, interpolation);
  for (PlXPath* path : users.paths->all) setSmoothing(*path, interpolation);
}

void reportUnknownChild(const DOMElement& child) {
  report("Unsupported style child encountered (" + xmlText(child) + ")", __FILE__, __LINE__);
}

}  // namespace

// What a style element says, but for its children.
struct BaseTemplate::StyleImport::Reading {
  Value value;
  Statements properties;
  Statements withoutKey;

  explicit Reading(const Attributes& texts)
      : value(texts[PlXUni::_value]),
        properties(statedProperties(texts, value)),
        withoutKey(statedWithoutKey(texts)) {}
  bool hasStrokeOrFill() const { return !value.stroke.empty() || !value.fill.empty(); }
};

BaseTemplate::StyleUsers& BaseTemplate::styleUsers() {
  if (!users_ || !keepsFindings_) users_ = std::make_unique<StyleUsers>();
  return *users_;
}

BaseTemplate::StyleImport::StyleImport(BaseTemplate& base, const DOMElement* element)
    : base_(base), element_(element) {
  if (element) reading_ = std::make_unique<Reading>(Attributes(*element));
}

BaseTemplate::StyleImport::~StyleImport() = default;

void BaseTemplate::StyleImport::onto(PlXStyle& style) const {
  if (!element_) return;
  const PlXStyle* source = base_.sourceOf(style);
  StyleUsers& users = base_.styleUsers();
  noticeRestyled(users);
  write(reading_->properties, style, source);
  if (reading_->hasStrokeOrFill()) {
    users.findSurfaces(base_, base_.target,
                       base_.attribute(PlXUni::_graph).convertToSignedInteger() > 0);
    importStrokeAndFill(reading_->value, style, source, users.isSurface(style));
  }
  for (const DOMElement* child = firstElement(element_); child; child = nextElement(child)) {
    const ChartString name(child->getTagName());
    const Child* known =
        std::ranges::find_if(children, [&](const Child& each) { return name.equals(each.name); });
    if (known != std::end(children)) {
      importChild(*child, known->attributes, style, source);
    } else if (name.equals(PlXUni::_interpolation)) {
      interpolate(base_, base_.source, users, *child, style);
    } else {
      reportUnknownChild(*child);
    }
  }
  write(reading_->withoutKey, style, source);
}

void BaseTemplate::importStyle(const DOMElement* styleElement, PlXStyle& style) {
  if (!keepsFindings_) return StyleImport(*this, styleElement).onto(style);
  std::unique_ptr<StyleImport>& import = imports_[styleElement];
  if (!import) import = std::make_unique<StyleImport>(*this, styleElement);
  import->onto(style);
}
