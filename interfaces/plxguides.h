// What helps to read a graph without showing data: CTGuideType, PlXLineGuide, PlXPointGuide,
// PlXRectangleGuide, PlXFunctionGuide, PlXPlaneGuide, PlXFrameGuide.
#ifndef CHARTXML_PLXGUIDES_H
#define CHARTXML_PLXGUIDES_H

#include "plxbaseelement.h"

class PlXConditionalStyle;
class PlXCoordinates;
class PlXLabel;

// What all guides have. A position on a guide is a value of the dimension: a number, a date text of
// 23 characters, or the raw value of a category. It is empty where the guide has none.
class CHARTXML_API CTGuideType : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  // What the guide is for, such as "referenceLine".
  const XMLCh* getName() const { return text(u"name"); }
  void setName(const XMLCh* name) { setText(u"name", name); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  // Guides are drawn from low to high, those below 0 behind the data.
  int getZOrder() const { return static_cast<int>(integer(u"zOrder")); }
  void setZOrder(int order) { setInteger(u"zOrder", order); }

  std::vector<PlXLabel*> getLabels() const { return children<PlXLabel>(); }
  PlXLabel* addLabel() { return add<PlXLabel>(); }

  std::vector<PlXConditionalStyle*> getConditionalStyles() const {
    return children<PlXConditionalStyle>();
  }
  // Where the condition holds, `style` counts on top of the guide's own. A condition is written
  // over the panel's categories: "facet1==facet2" is true on the diagonal of a scatterplot matrix.
  PlXConditionalStyle* addConditionalStyle(const XMLCh* condition, PlXStyle& style);
  void removeConditionalStyles() { removeAll<PlXConditionalStyle>(); }
};

// A straight line across the plot at one value of one dimension.
class CHARTXML_API PlXLineGuide : public CTGuideType {
 public:
  using CTGuideType::CTGuideType;
  static const XMLCh _UTF_lineGuide[];

  const XMLCh* getX() const { return text(u"x"); }
  void setX(const XMLCh* value) { setText(u"x", value); }
  const XMLCh* getY() const { return text(u"y"); }
  void setY(const XMLCh* value) { setText(u"y", value); }
  const XMLCh* getZ() const { return text(u"z"); }
  void setZ(const XMLCh* value) { setText(u"z", value); }
  // Null for the graph's first block.
  PlXCoordinates* getCoordinates() const { return link<PlXCoordinates>(u"coordinates"); }
  void setCoordinates(PlXCoordinates& coordinates) { setLink(u"coordinates", coordinates); }
};

// A mark at one place of the plot, in the graph's first coordinates block.
class CHARTXML_API PlXPointGuide : public CTGuideType {
 public:
  using CTGuideType::CTGuideType;
  static const XMLCh _UTF_pointGuide[];

  const XMLCh* getX() const { return text(u"x"); }
  void setX(const XMLCh* value) { setText(u"x", value); }
  const XMLCh* getY() const { return text(u"y"); }
  void setY(const XMLCh* value) { setText(u"y", value); }
  const XMLCh* getZ() const { return text(u"z"); }
  void setZ(const XMLCh* value) { setText(u"z", value); }
};

// A rectangle from the first to the second position; in a dimension without positions it goes right
// across the plot.
class CHARTXML_API PlXRectangleGuide : public CTGuideType {
 public:
  using CTGuideType::CTGuideType;
  static const XMLCh _UTF_rectangleGuide[];

  const XMLCh* getX1() const { return text(u"x1"); }
  void setX1(const XMLCh* value) { setText(u"x1", value); }
  const XMLCh* getX2() const { return text(u"x2"); }
  void setX2(const XMLCh* value) { setText(u"x2", value); }
  const XMLCh* getY1() const { return text(u"y1"); }
  void setY1(const XMLCh* value) { setText(u"y1", value); }
  const XMLCh* getY2() const { return text(u"y2"); }
  void setY2(const XMLCh* value) { setText(u"y2", value); }
  // Null for the graph's first block.
  PlXCoordinates* getCoordinates() const { return link<PlXCoordinates>(u"coordinates"); }
  void setCoordinates(PlXCoordinates& coordinates) { setLink(u"coordinates", coordinates); }
};

// The curve of a function of x.
class CHARTXML_API PlXFunctionGuide : public CTGuideType {
 public:
  using CTGuideType::CTGuideType;
  static const XMLCh _UTF_functionGuide[];

  // The function's expression, such as "0.5*x+2".
  const XMLCh* getValue() const { return text(u"value"); }
  void setValue(const XMLCh* expression) { setText(u"value", expression); }
  // The number of straight pieces that make up the curve.
  unsigned getSegments() const { return static_cast<unsigned>(integer(u"segments")); }
  void setSegments(unsigned count) { setInteger(u"segments", count); }
  // Null for the graph's first block.
  PlXCoordinates* getCoordinates() const { return link<PlXCoordinates>(u"coordinates"); }
  void setCoordinates(PlXCoordinates& coordinates) { setLink(u"coordinates", coordinates); }
};

// One back plane of a plot in three dimensions.
class CHARTXML_API PlXPlaneGuide : public CTGuideType {
 public:
  using CTGuideType::CTGuideType;
  static const XMLCh _UTF_planeGuide[];

  enum ENUM_normal : int { normal_x = 0, normal_y = 1, normal_z = 2 };

  // The dimension that the plane stands upright on.
  ENUM_normal getNormal() const { return word<ENUM_normal>(u"normal"); }
  void setNormal(ENUM_normal normal) { setWord(u"normal", normal); }
};

// The edges of the box around a plot in three dimensions.
class CHARTXML_API PlXFrameGuide : public CTGuideType {
 public:
  using CTGuideType::CTGuideType;
  static const XMLCh _UTF_frameGuide[];

  // True for all twelve edges, false for those behind the data only.
  bool getComplete() const { return flag(u"complete"); }
  void setComplete(bool complete) { setFlag(u"complete", complete); }
};

#endif
