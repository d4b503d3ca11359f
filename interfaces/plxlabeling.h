// Value labels on the items of an element: PlXLabeling, and PlXLabelLocation for the places that
// a label may take.
#ifndef CHARTXML_PLXLABELING_H
#define CHARTXML_PLXLABELING_H

#include "plxbaseelement.h"

class CTVariableType;
class PlXCategoricalDomain;
class PlXColor;
class PlXColorComponent;
class PlXFormat;
class PlXIntervalDomain;
class PlXLabelLocation;
class PlXRotation;
class PlXSize;
class PlXStyle;
class PlXStyleBy;
class PlXSummaryStatistic;
class PlXTransparency;
class PlXVisibility;

// One label for each item of an element, which shows the value of a variable, or what a statistic
// makes of it. Labels take aesthetics as elements do.
class CHARTXML_API PlXLabeling : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_labeling[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  CTVariableType* getVariable() const { return link<CTVariableType>(u"variable"); }
  void setVariable(CTVariableType& variable) { setLink(u"variable", variable); }
  // A PlXCategoricalDomain or a PlXIntervalDomain.
  PlXBaseElement* getDomain() const { return link<PlXBaseElement>(u"domain"); }
  void setDomain(PlXCategoricalDomain& domain) { setLink(u"domain", domain); }
  void setDomain(PlXIntervalDomain& domain) { setLink(u"domain", domain); }
  // The style of the text, and where it stands.
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  // The style of the box around the text.
  PlXStyle* getTextFrameStyle() const { return link<PlXStyle>(u"textFrameStyle"); }
  void setTextFrameStyle(PlXStyle& style) { setLink(u"textFrameStyle", style); }
  // True to draw a line from a label to its item when they stand apart.
  bool getConnectingLines() const { return flag(u"connectingLines"); }
  void setConnectingLines(bool connect) { setFlag(u"connectingLines", connect); }

  PlXFormat* addFormat() { return add<PlXFormat>(); }
  std::vector<PlXFormat*> getFormats() const { return children<PlXFormat>(); }
  // Without one, a label on an element with statistics shows that of the element.
  PlXSummaryStatistic* addSummaryStatistic() { return add<PlXSummaryStatistic>(); }
  PlXSummaryStatistic* getSummaryStatistic() const { return child<PlXSummaryStatistic>(); }

  PlXStyleBy* addStyleBy() { return add<PlXStyleBy>(); }
  std::vector<PlXStyleBy*> getStyleBys() const { return children<PlXStyleBy>(); }
  PlXSize* addSize() { return add<PlXSize>(); }
  std::vector<PlXSize*> getSizes() const { return children<PlXSize>(); }
  PlXRotation* addRotation() { return add<PlXRotation>(); }
  std::vector<PlXRotation*> getRotations() const { return children<PlXRotation>(); }
  PlXColor* addColor() { return add<PlXColor>(); }
  std::vector<PlXColor*> getColors() const { return children<PlXColor>(); }
  PlXTransparency* addTransparency() { return add<PlXTransparency>(); }
  std::vector<PlXTransparency*> getTransparencys() const { return children<PlXTransparency>(); }
  PlXColorComponent* addColorComponent() { return add<PlXColorComponent>(); }
  std::vector<PlXColorComponent*> getColorComponents() const {
    return children<PlXColorComponent>();
  }
  PlXVisibility* addVisibility() { return add<PlXVisibility>(); }
  std::vector<PlXVisibility*> getVisibilitys() const { return children<PlXVisibility>(); }

  // The places to try for a label, the best first.
  PlXLabelLocation* addLabelLocation() { return add<PlXLabelLocation>(); }
  std::vector<PlXLabelLocation*> getLabelLocations() const { return children<PlXLabelLocation>(); }
};

// One place of a label beside its item.
class CHARTXML_API PlXLabelLocation : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_labelLocation[];

  // Negative is left or below, positive is right or above. 0 when not stated.
  enum ENUM_place : int { place_center = 1, place_negative = 2, place_positive = 3 };

  ENUM_place getHorizontal() const { return word<ENUM_place>(u"horizontal"); }
  void setHorizontal(ENUM_place place) { setWord(u"horizontal", place); }
  ENUM_place getVertical() const { return word<ENUM_place>(u"vertical"); }
  void setVertical(ENUM_place place) { setWord(u"vertical", place); }
};

#endif
