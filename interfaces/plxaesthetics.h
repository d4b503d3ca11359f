// How the values of variables show in the looks of items: CTAesthetic with PlXStyleBy, PlXColor,
// PlXColorComponent, PlXDash, PlXPattern, PlXShape, PlXImage, PlXSize, PlXOffset, PlXRotation,
// PlXTransparency, PlXSplit and PlXVisibility.
#ifndef CHARTXML_PLXAESTHETICS_H
#define CHARTXML_PLXAESTHETICS_H

#include "plxbaseelement.h"
#include "plxcoordinates.h"

class CTVariableType;
class PlXCategoricalDomain;
class PlXColorMapping;
class PlXDashMapping;
class PlXDerivedVariable;
class PlXDoubleMapping;
class PlXIntegerMapping;
class PlXIntervalDomain;
class PlXLengthMapping;
class PlXSourceVariable;
class PlXStyleCycle;
class PlXSummaryStatistic;
class PlXSymbolMapping;

// The base of the aesthetics, which are children of an element or a labeling. A categorical
// variable picks from a cycle of styles, a continuous one moves between low and high; mappings
// overrule both for single values. Variable, domain and cycle are links; scale, statistic and
// mappings are children.
class CHARTXML_API CTAesthetic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  CTVariableType* getVariable() const { return link<CTVariableType>(u"variable"); }
  void setVariable(CTVariableType& variable) { setLink(u"variable", variable); }
  void setVariable(PlXDerivedVariable& variable) { setLink(u"variable", variable); }
  // The variable when it is of that kind, else null.
  PlXSourceVariable* getSourceVariable() const { return link<PlXSourceVariable>(u"variable"); }
  // The values that are shown: a PlXCategoricalDomain or a PlXIntervalDomain. Aesthetics and
  // dimensions may share one.
  PlXBaseElement* getDomain() const { return link<PlXBaseElement>(u"domain"); }
  void setDomain(PlXCategoricalDomain& domain) { setLink(u"domain", domain); }
  void setDomain(PlXIntervalDomain& domain) { setLink(u"domain", domain); }
  bool isDomainPresent() const { return present(u"domain"); }
  void removeDomain() { clear(u"domain"); }
  // Of a variable with several dimensions, the one that is shown.
  unsigned getDimension() const { return static_cast<unsigned>(integer(u"dimension")); }
  void setDimension(unsigned dimension) { setInteger(u"dimension", dimension); }
  bool isDimensionPresent() const { return present(u"dimension"); }
  // True to show values outside the domain as its nearest end, false to show them as missing.
  bool getClamp() const { return flag(u"clamp"); }
  void setClamp(bool clamp) { setFlag(u"clamp", clamp); }
  bool isClampPresent() const { return present(u"clamp"); }
  // True when the values also part the data into items, as a split does.
  bool getSplit() const { return flag(u"split"); }
  void setSplit(bool split) { setFlag(u"split", split); }
  bool isSplitPresent() const { return present(u"split"); }

  // A new scale with its method stated. Of several scales the first counts.
  PlXScale* addScale(PlXScale::ENUM_method method);
  PlXScale* getScale() const { return child<PlXScale>(); }
  // What is shown of the variable for an item that stands for several rows.
  PlXSummaryStatistic* addSummaryStatistic() { return add<PlXSummaryStatistic>(); }
  PlXSummaryStatistic* getSummaryStatistic() const { return child<PlXSummaryStatistic>(); }
};

// Whole styles by value, the most general aesthetic.
class CHARTXML_API PlXStyleBy : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_styleBy[];

  PlXStyleCycle* getStyleCycle() const { return link<PlXStyleCycle>(u"styleCycle"); }
  void setStyleCycle(PlXStyleCycle& cycle) { setLink(u"styleCycle", cycle); }
};

class CHARTXML_API PlXColor : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_color[];

  // Which of a style's colours is changed: main is "color", secondary is "color2".
  enum ENUM_affect : int { affect_both = 1, affect_main = 2, affect_secondary = 3 };

  // 0 when not stated; setting 0 takes the property away.
  ENUM_affect getAffect() const { return word<ENUM_affect>(u"affect"); }
  void setAffect(ENUM_affect affect) { setWord(u"affect", affect); }
  PlXStyleCycle* getCycle() const { return link<PlXStyleCycle>(u"cycle"); }
  void setCycle(PlXStyleCycle& cycle) { setLink(u"cycle", cycle); }
  void removeCycle() { clear(u"cycle"); }
  // The colour of missing values.
  const XMLCh* getMissing() const { return text(u"missing"); }
  void setMissing(const XMLCh* color) { setText(u"missing", color); }
  bool isMissingPresent() const { return present(u"missing"); }
  PlXColorMapping* addColorMapping() { return add<PlXColorMapping>(); }
  std::vector<PlXColorMapping*> getColorMappings() const { return children<PlXColorMapping>(); }
};

// One component of a colour, the others stay as the style has them.
class CHARTXML_API PlXColorComponent : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_colorComponent[];

  // As of PlXColor, with other numbers.
  enum ENUM_affect : int { affect_main = 0, affect_secondary = 1, affect_both = 2 };
  enum ENUM_type : int { type_hue = 1, type_saturation = 2, type_brightness = 3 };

  ENUM_affect getAffect() const { return word<ENUM_affect>(u"affect"); }
  void setAffect(ENUM_affect affect) { setWord(u"affect", affect); }
  // 0 when not stated.
  ENUM_type getType() const { return word<ENUM_type>(u"type"); }
  void setType(ENUM_type type) { setWord(u"type", type); }
  // From 0 to 1, low for the least value. A low above high turns the direction.
  double getLow() const { return number(u"low"); }
  void setLow(double low) { setNumber(u"low", low); }
  double getHigh() const { return number(u"high"); }
  void setHigh(double high) { setNumber(u"high", high); }
  PlXDoubleMapping* addDoubleMapping() { return add<PlXDoubleMapping>(); }
  std::vector<PlXDoubleMapping*> getDoubleMappings() const { return children<PlXDoubleMapping>(); }
};

class CHARTXML_API PlXDash : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_dash[];

  PlXStyleCycle* getCycle() const { return link<PlXStyleCycle>(u"cycle"); }
  void setCycle(PlXStyleCycle& cycle) { setLink(u"cycle", cycle); }
  void removeCycle() { clear(u"cycle"); }
  // The dash pattern of missing values.
  const XMLCh* getMissing() const { return text(u"missing"); }
  void setMissing(const XMLCh* dasharray) { setText(u"missing", dasharray); }
  bool isMissingPresent() const { return present(u"missing"); }
  PlXDashMapping* addDashMapping() { return add<PlXDashMapping>(); }
  std::vector<PlXDashMapping*> getDashMappings() const { return children<PlXDashMapping>(); }
};

// Fill patterns, which styles have by number.
class CHARTXML_API PlXPattern : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_pattern[];

  PlXStyleCycle* getCycle() const { return link<PlXStyleCycle>(u"cycle"); }
  void setCycle(PlXStyleCycle& cycle) { setLink(u"cycle", cycle); }
  void removeCycle() { clear(u"cycle"); }
  PlXIntegerMapping* addIntegerMapping() { return add<PlXIntegerMapping>(); }
  std::vector<PlXIntegerMapping*> getIntegerMappings() const {
    return children<PlXIntegerMapping>();
  }
};

// Symbols of points.
class CHARTXML_API PlXShape : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_shape[];

  PlXStyleCycle* getCycle() const { return link<PlXStyleCycle>(u"cycle"); }
  void setCycle(PlXStyleCycle& cycle) { setLink(u"cycle", cycle); }
  void removeCycle() { clear(u"cycle"); }
  PlXSymbolMapping* addSymbolMapping() { return add<PlXSymbolMapping>(); }
  std::vector<PlXSymbolMapping*> getSymbolMappings() const { return children<PlXSymbolMapping>(); }
};

// Pictures in the place of symbols.
class CHARTXML_API PlXImage : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_image[];

  PlXStyleCycle* getCycle() const { return link<PlXStyleCycle>(u"cycle"); }
  void setCycle(PlXStyleCycle& cycle) { setLink(u"cycle", cycle); }
  void removeCycle() { clear(u"cycle"); }
  // The picture of missing values.
  const XMLCh* getMissing() const { return text(u"missing"); }
  void setMissing(const XMLCh* image) { setText(u"missing", image); }
  bool isMissingPresent() const { return present(u"missing"); }
};

// Sizes of symbols, widths of bars and lines, font sizes of labels.
class CHARTXML_API PlXSize : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_size[];

  // Lengths such as "3pt" or "80%".
  const XMLCh* getLow() const { return text(u"low"); }
  void setLow(const XMLCh* length) { setText(u"low", length); }
  void removeLow() { clear(u"low"); }
  const XMLCh* getHigh() const { return text(u"high"); }
  void setHigh(const XMLCh* length) { setText(u"high", length); }
  void removeHigh() { clear(u"high"); }
  PlXStyleCycle* getCycle() const { return link<PlXStyleCycle>(u"cycle"); }
  void setCycle(PlXStyleCycle& cycle) { setLink(u"cycle", cycle); }
  void removeCycle() { clear(u"cycle"); }
  PlXLengthMapping* addLengthMapping() { return add<PlXLengthMapping>(); }
  std::vector<PlXLengthMapping*> getLengthMappings() const { return children<PlXLengthMapping>(); }
  void removeLengthMappings() { removeAll<PlXLengthMapping>(); }
};

// How far items are moved from their places, as exploded slices of a pie are.
class CHARTXML_API PlXOffset : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_offset[];

  // Lengths such as "3%".
  const XMLCh* getLow() const { return text(u"low"); }
  void setLow(const XMLCh* length) { setText(u"low", length); }
  const XMLCh* getHigh() const { return text(u"high"); }
  void setHigh(const XMLCh* length) { setText(u"high", length); }
};

// How far items are turned.
class CHARTXML_API PlXRotation : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_rotation[];

  // In degrees.
  double getLow() const { return number(u"low"); }
  void setLow(double degrees) { setNumber(u"low", degrees); }
  double getHigh() const { return number(u"high"); }
  void setHigh(double degrees) { setNumber(u"high", degrees); }
  PlXDoubleMapping* addDoubleMapping() { return add<PlXDoubleMapping>(); }
  std::vector<PlXDoubleMapping*> getDoubleMappings() const { return children<PlXDoubleMapping>(); }
};

class CHARTXML_API PlXTransparency : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_transparency[];

  // From 0, opaque, to 1.
  double getLow() const { return number(u"low"); }
  void setLow(double low) { setNumber(u"low", low); }
  double getHigh() const { return number(u"high"); }
  void setHigh(double high) { setNumber(u"high", high); }
  PlXDoubleMapping* addDoubleMapping() { return add<PlXDoubleMapping>(); }
  std::vector<PlXDoubleMapping*> getDoubleMappings() const { return children<PlXDoubleMapping>(); }
};

// Parts the data into items, a line for each group, without a look of their own.
class CHARTXML_API PlXSplit : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_split[];
};

// Hides the items whose value isn't in the domain.
class CHARTXML_API PlXVisibility : public CTAesthetic {
 public:
  using CTAesthetic::CTAesthetic;
  static const XMLCh _UTF_visibility[];
};

#endif
