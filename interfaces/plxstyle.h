// PlXStyle: one set of visual properties.
#ifndef CHARTXML_PLXSTYLE_H
#define CHARTXML_PLXSTYLE_H

#include <vector>

#include "plxbaseelement.h"

class ChartString;

// A set of visual properties, of which each is stated or left to the renderer's default. Many
// objects may link to one style.
//
// - A length is a text with its unit, such as "8pt", or a percentage of what holds the object.
// - A colour is "#rrggbb", a colour's name or "transparent".
// - An angle counts degrees. An opacity goes from 0, transparent, to 1, opaque; one that isn't
//   stated reads as 0 all the same, so ask for its presence first.
// - A three-part length is one text of up to three parts, separated by blanks: preferred, minimum
//   and maximum ("8pt 6pt 10pt"). "auto" holds the place of a part that isn't stated ("auto auto
//   100%"), and is left out at the end.
class CHARTXML_API PlXStyle : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_style[];

  // Colours as setColor() takes them.
  static const XMLCh _black[];
  static const XMLCh _transparent[];
  static const XMLCh _white[];
  // Names of attributes.
  static const XMLCh _margin_bottom[];
  static const XMLCh _margin_left[];
  static const XMLCh _margin_right[];
  static const XMLCh _margin_top[];
  static const XMLCh _maxAttachedTextHeight[];
  static const XMLCh _maxAttachedTextWidth[];
  static const XMLCh _padding_bottom[];
  static const XMLCh _padding_left[];
  static const XMLCh _padding_right[];
  static const XMLCh _padding_top[];
  static const XMLCh _textAlignment[];

  enum ENUM_font_weight : int { font_weight_regular = 1, font_weight_bold = 2 };
  // Where a data label lies: centred on the value, or on the side of lower or of higher values.
  enum ENUM_labelLocationHorizontal : int {
    labelLocationHorizontal_center = 1,
    labelLocationHorizontal_negative = 2,
    labelLocationHorizontal_positive = 3
  };
  enum ENUM_labelLocationVertical : int {
    labelLocationVertical_center = 1,
    labelLocationVertical_negative = 2,
    labelLocationVertical_positive = 3
  };
  // Data labels within the element, or outside of it.
  enum ENUM_labelInside : int { labelInside_true = 1, labelInside_false = 2 };
  enum ENUM_textAlignment : int {
    textAlignment_left = 1,
    textAlignment_center = 2,
    textAlignment_right = 3
  };

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  // Styles may hold styles; an id finds them there too.
  PlXStyle* addStyle() { return add<PlXStyle>(); }
  std::vector<PlXStyle*> getStyles() const { return children<PlXStyle>(); }

  // True unless the style hides what it paints.
  bool getVisible() const { return flag(u"visible", true); }
  void setVisible(bool visible) { setFlag(u"visible", visible); }
  bool isVisiblePresent() const { return present(u"visible"); }

  // The colour of a line or of a surface; the second is the outline of a surface.
  const XMLCh* getColor() const { return text(u"color"); }
  void setColor(const XMLCh* text) { setText(u"color", text); }
  bool isColorPresent() const { return present(u"color"); }
  const XMLCh* getColor2() const { return text(u"color2"); }
  void setColor2(const XMLCh* text) { setText(u"color2", text); }
  bool isColor2Present() const { return present(u"color2"); }
  double getOpacity() const { return number(u"opacity"); }
  void setOpacity(double number) { setNumber(u"opacity", number); }
  bool isOpacityPresent() const { return present(u"opacity"); }
  double getOpacity2() const { return number(u"opacity2"); }
  void setOpacity2(double number) { setNumber(u"opacity2", number); }
  bool isOpacity2Present() const { return present(u"opacity2"); }
  double getFill_opacity() const { return number(u"fill-opacity"); }
  void setFill_opacity(double number) { setNumber(u"fill-opacity", number); }
  bool isFill_opacityPresent() const { return present(u"fill-opacity"); }
  double getStroke_opacity() const { return number(u"stroke-opacity"); }
  void setStroke_opacity(double number) { setNumber(u"stroke-opacity", number); }
  bool isStroke_opacityPresent() const { return present(u"stroke-opacity"); }

  // The number of a fill pattern, 0 for none.
  unsigned getPattern() const { return static_cast<unsigned>(integer(u"pattern")); }
  void setPattern(unsigned number) { setInteger(u"pattern", number); }
  bool isPatternPresent() const { return present(u"pattern"); }

  // A second colour that the first runs into. Focus and size are percentages.
  const XMLCh* getGradient_method() const { return text(u"gradient-method"); }
  void setGradient_method(const XMLCh* text) { setText(u"gradient-method", text); }
  bool isGradient_methodPresent() const { return present(u"gradient-method"); }
  const XMLCh* getGradient_color() const { return text(u"gradient-color"); }
  void setGradient_color(const XMLCh* text) { setText(u"gradient-color", text); }
  bool isGradient_colorPresent() const { return present(u"gradient-color"); }
  void removeGradient_color() { clear(u"gradient-color"); }
  const XMLCh* getGradient_focus() const { return text(u"gradient-focus"); }
  void setGradient_focus(const XMLCh* text) { setText(u"gradient-focus", text); }
  bool isGradient_focusPresent() const { return present(u"gradient-focus"); }
  double getGradient_angle() const { return number(u"gradient-angle"); }
  void setGradient_angle(double number) { setNumber(u"gradient-angle", number); }
  bool isGradient_anglePresent() const { return present(u"gradient-angle"); }
  const XMLCh* getGradient_size() const { return text(u"gradient-size"); }
  void setGradient_size(const XMLCh* text) { setText(u"gradient-size", text); }
  bool isGradient_sizePresent() const { return present(u"gradient-size"); }
  double getGradient_opacity() const { return number(u"gradient-opacity"); }
  void setGradient_opacity(double number) { setNumber(u"gradient-opacity", number); }
  bool isGradient_opacityPresent() const { return present(u"gradient-opacity"); }
  bool getGradient_isInverted() const { return flag(u"gradient-isInverted"); }
  void setGradient_isInverted(bool on) { setFlag(u"gradient-isInverted", on); }
  bool isGradient_isInvertedPresent() const { return present(u"gradient-isInverted"); }

  // An image behind the object, by its address, and how it fills the place.
  const XMLCh* getBackground_image() const { return text(u"background-image"); }
  void setBackground_image(const XMLCh* text) { setText(u"background-image", text); }
  bool isBackground_imagePresent() const { return present(u"background-image"); }
  const XMLCh* getBackground_method() const { return text(u"background-method"); }
  void setBackground_method(const XMLCh* text) { setText(u"background-method", text); }
  bool isBackground_methodPresent() const { return present(u"background-method"); }

  // Lines. The width and the dashes, "4 2" for example, are lengths; the cap is butt, round or
  // square.
  const XMLCh* getStroke_width() const { return text(u"stroke-width"); }
  void setStroke_width(const XMLCh* text) { setText(u"stroke-width", text); }
  bool isStroke_widthPresent() const { return present(u"stroke-width"); }
  const XMLCh* getStroke_dasharray() const { return text(u"stroke-dasharray"); }
  void setStroke_dasharray(const XMLCh* text) { setText(u"stroke-dasharray", text); }
  bool isStroke_dasharrayPresent() const { return present(u"stroke-dasharray"); }
  const XMLCh* getStroke_linecap() const { return text(u"stroke-linecap"); }
  void setStroke_linecap(const XMLCh* text) { setText(u"stroke-linecap", text); }
  bool isStroke_linecapPresent() const { return present(u"stroke-linecap"); }
  const XMLCh* getStroke_decoration() const { return text(u"stroke-decoration"); }
  void setStroke_decoration(const XMLCh* text) { setText(u"stroke-decoration", text); }
  bool isStroke_decorationPresent() const { return present(u"stroke-decoration"); }

  // The borders of a frame: none, or the kind of line.
  const XMLCh* getBorder_left() const { return text(u"border-left"); }
  void setBorder_left(const XMLCh* text) { setText(u"border-left", text); }
  bool isBorderLeftPresent() const { return present(u"border-left"); }
  const XMLCh* getBorder_right() const { return text(u"border-right"); }
  void setBorder_right(const XMLCh* text) { setText(u"border-right", text); }
  bool isBorderRightPresent() const { return present(u"border-right"); }
  const XMLCh* getBorder_top() const { return text(u"border-top"); }
  void setBorder_top(const XMLCh* text) { setText(u"border-top", text); }
  bool isBorderTopPresent() const { return present(u"border-top"); }
  const XMLCh* getBorder_bottom() const { return text(u"border-bottom"); }
  void setBorder_bottom(const XMLCh* text) { setText(u"border-bottom", text); }
  bool isBorderBottomPresent() const { return present(u"border-bottom"); }

  // Lengths. A margin lies outside the border, padding within; those of one side go before those
  // of all.
  const XMLCh* getMargin() const { return text(u"margin"); }
  void setMargin(const XMLCh* text) { setText(u"margin", text); }
  bool isMarginPresent() const { return present(u"margin"); }
  const XMLCh* getMargin_left() const { return text(u"margin-left"); }
  void setMargin_left(const XMLCh* text) { setText(u"margin-left", text); }
  bool isMargin_leftPresent() const { return present(u"margin-left"); }
  const XMLCh* getMargin_right() const { return text(u"margin-right"); }
  void setMargin_right(const XMLCh* text) { setText(u"margin-right", text); }
  bool isMargin_rightPresent() const { return present(u"margin-right"); }
  const XMLCh* getMargin_top() const { return text(u"margin-top"); }
  void setMargin_top(const XMLCh* text) { setText(u"margin-top", text); }
  bool isMargin_topPresent() const { return present(u"margin-top"); }
  const XMLCh* getMargin_bottom() const { return text(u"margin-bottom"); }
  void setMargin_bottom(const XMLCh* text) { setText(u"margin-bottom", text); }
  bool isMargin_bottomPresent() const { return present(u"margin-bottom"); }
  const XMLCh* getPadding() const { return text(u"padding"); }
  void setPadding(const XMLCh* text) { setText(u"padding", text); }
  bool isPaddingPresent() const { return present(u"padding"); }
  const XMLCh* getPadding_left() const { return text(u"padding-left"); }
  void setPadding_left(const XMLCh* text) { setText(u"padding-left", text); }
  bool isPadding_leftPresent() const { return present(u"padding-left"); }
  const XMLCh* getPadding_right() const { return text(u"padding-right"); }
  void setPadding_right(const XMLCh* text) { setText(u"padding-right", text); }
  bool isPadding_rightPresent() const { return present(u"padding-right"); }
  const XMLCh* getPadding_top() const { return text(u"padding-top"); }
  void setPadding_top(const XMLCh* text) { setText(u"padding-top", text); }
  bool isPadding_topPresent() const { return present(u"padding-top"); }
  const XMLCh* getPadding_bottom() const { return text(u"padding-bottom"); }
  void setPadding_bottom(const XMLCh* text) { setText(u"padding-bottom", text); }
  bool isPadding_bottomPresent() const { return present(u"padding-bottom"); }

  // Three-part lengths. Getters give empty texts for parts that aren't stated. In setters null
  // leaves a part as it is, and an empty text takes it away; of a text of several parts the first
  // counts.
  void getWidth(ChartString& preferred, ChartString& minimum, ChartString& maximum) const;
  void setWidth(const XMLCh* preferred, const XMLCh* minimum, const XMLCh* maximum);
  bool isWidthPresent() const { return present(u"width"); }
  void getFontSize(ChartString& preferred, ChartString& minimum, ChartString& maximum) const;
  void setFontSize(const XMLCh* preferred, const XMLCh* minimum, const XMLCh* maximum);
  bool isFontSizePresent() const { return present(u"font-size"); }
  void getSize(ChartString& preferred, ChartString& minimum, ChartString& maximum) const;
  void setSize(const XMLCh* preferred, const XMLCh* minimum, const XMLCh* maximum);
  // The whole text, of one to three parts.
  void setSize(const XMLCh* size) { setText(u"size", size); }
  bool isSizePresent() const { return present(u"size"); }
  // Takes a three-part length apart; commas separate like blanks.
  static void getPreferredMinMax(const ChartString& text, ChartString& preferred,
                                 ChartString& minimum, ChartString& maximum);

  // How far an object reaches into a chart with depth: a length, or a percentage of its width when
  // the flag is true.
  const XMLCh* getDepth() const { return text(u"depth"); }
  void setDepth(const XMLCh* text) { setText(u"depth", text); }
  bool isDepthPresent() const { return present(u"depth"); }
  bool getDepthRelativeToWidth() const { return flag(u"depthRelativeToWidth"); }
  void setDepthRelativeToWidth(bool on) { setFlag(u"depthRelativeToWidth", on); }
  bool isDepthRelativeToWidthPresent() const { return present(u"depthRelativeToWidth"); }
  // The length of a slanted edge.
  const XMLCh* getBevel_size() const { return text(u"bevel-size"); }
  void setBevel_size(const XMLCh* text) { setText(u"bevel-size", text); }
  bool isBevel_sizePresent() const { return present(u"bevel-size"); }

  // Markers: a symbol's name ("square", "line", "ibeam", "none"...), its rotation, its height by
  // its width, and the number of sides or rays, 2 to 100, of one that has them.
  const XMLCh* getSymbol() const { return text(u"symbol"); }
  void setSymbol(const XMLCh* text) { setText(u"symbol", text); }
  bool isSymbolPresent() const { return present(u"symbol"); }
  double getGlyph_angle() const { return number(u"glyph-angle"); }
  void setGlyph_angle(double number) { setNumber(u"glyph-angle", number); }
  bool isGlyph_anglePresent() const { return present(u"glyph-angle"); }
  double getGlyph_aspect() const { return number(u"glyph-aspect"); }
  void setGlyph_aspect(double number) { setNumber(u"glyph-aspect", number); }
  bool isGlyph_aspectPresent() const { return present(u"glyph-aspect"); }
  unsigned getGlyph_sides() const { return static_cast<unsigned>(integer(u"glyph-sides")); }
  void setGlyph_sides(unsigned number) { setInteger(u"glyph-sides", number); }
  bool isGlyph_sidesPresent() const { return present(u"glyph-sides"); }

  // A shadow and its offsets, which are lengths.
  const XMLCh* getShadow_color() const { return text(u"shadow-color"); }
  void setShadow_color(const XMLCh* text) { setText(u"shadow-color", text); }
  bool isShadow_colorPresent() const { return present(u"shadow-color"); }
  void removeShadow_color() { clear(u"shadow-color"); }
  const XMLCh* getShadow_dx() const { return text(u"shadow-dx"); }
  void setShadow_dx(const XMLCh* text) { setText(u"shadow-dx", text); }
  bool isShadow_dxPresent() const { return present(u"shadow-dx"); }
  void removeShadow_dx() { clear(u"shadow-dx"); }
  const XMLCh* getShadow_dy() const { return text(u"shadow-dy"); }
  void setShadow_dy(const XMLCh* text) { setText(u"shadow-dy", text); }
  bool isShadow_dyPresent() const { return present(u"shadow-dy"); }
  void removeShadow_dy() { clear(u"shadow-dy"); }
  double getShadow_opacity() const { return number(u"shadow-opacity"); }
  void setShadow_opacity(double number) { setNumber(u"shadow-opacity", number); }
  bool isShadow_opacityPresent() const { return present(u"shadow-opacity"); }
  void removeShadow_opacity() { clear(u"shadow-opacity"); }

  // Texts. A font's style is regular or italic; a fit tells what becomes of a text without room.
  const XMLCh* getFont_family() const { return text(u"font-family"); }
  void setFont_family(const XMLCh* text) { setText(u"font-family", text); }
  bool isFont_familyPresent() const { return present(u"font-family"); }
  const XMLCh* getFont_style() const { return text(u"font-style"); }
  void setFont_style(const XMLCh* text) { setText(u"font-style", text); }
  bool isFont_stylePresent() const { return present(u"font-style"); }
  ENUM_font_weight getFont_weight() const { return word<ENUM_font_weight>(u"font-weight"); }
  void setFont_weight(ENUM_font_weight value) { setWord(u"font-weight", value); }
  bool isFont_weightPresent() const { return present(u"font-weight"); }
  const XMLCh* getText_fit() const { return text(u"text-fit"); }
  void setText_fit(const XMLCh* text) { setText(u"text-fit", text); }
  bool isText_fitPresent() const { return present(u"text-fit"); }
  ENUM_textAlignment getTextAlignment() const { return word<ENUM_textAlignment>(u"textAlignment"); }
  void setTextAlignment(ENUM_textAlignment value) { setWord(u"textAlignment", value); }
  bool isTextAlignmentPresent() const { return present(u"textAlignment"); }

  // The labels of data, and the largest extents, lengths, of texts that hang on frames.
  double getLabelAngle() const { return number(u"labelAngle"); }
  void setLabelAngle(double number) { setNumber(u"labelAngle", number); }
  bool isLabelAnglePresent() const { return present(u"labelAngle"); }
  ENUM_labelInside getLabelInside() const { return word<ENUM_labelInside>(u"labelInside"); }
  void setLabelInside(ENUM_labelInside value) { setWord(u"labelInside", value); }
  bool isLabelInsidePresent() const { return present(u"labelInside"); }
  ENUM_labelLocationHorizontal getLabelLocationHorizontal() const {
    return word<ENUM_labelLocationHorizontal>(u"labelLocationHorizontal");
  }
  void setLabelLocationHorizontal(ENUM_labelLocationHorizontal value) {
    setWord(u"labelLocationHorizontal", value);
  }
  bool isLabelLocationHorizontalPresent() const { return present(u"labelLocationHorizontal"); }
  ENUM_labelLocationVertical getLabelLocationVertical() const {
    return word<ENUM_labelLocationVertical>(u"labelLocationVertical");
  }
  void setLabelLocationVertical(ENUM_labelLocationVertical value) {
    setWord(u"labelLocationVertical", value);
  }
  bool isLabelLocationVerticalPresent() const { return present(u"labelLocationVertical"); }
  const XMLCh* getMaxAttachedTextWidth() const { return text(u"maxAttachedTextWidth"); }
  void setMaxAttachedTextWidth(const XMLCh* text) { setText(u"maxAttachedTextWidth", text); }
  bool isMaxAttachedTextWidthPresent() const { return present(u"maxAttachedTextWidth"); }
  const XMLCh* getMaxAttachedTextHeight() const { return text(u"maxAttachedTextHeight"); }
  void setMaxAttachedTextHeight(const XMLCh* text) { setText(u"maxAttachedTextHeight", text); }
  bool isMaxAttachedTextHeightPresent() const { return present(u"maxAttachedTextHeight"); }

 private:
  void getParts(const XMLCh* name, ChartString& preferred, ChartString& minimum,
                ChartString& maximum) const;
  void setParts(const XMLCh* name, const XMLCh* preferred, const XMLCh* minimum,
                const XMLCh* maximum);
};

#endif
