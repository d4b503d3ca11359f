// Axes and what stands on them: PlXAxis, PlXAxisTransformParameter, PlXMajorTicks, PlXMinorTicks,
// PlXGridline.
#ifndef CHARTXML_PLXAXIS_H
#define CHARTXML_PLXAXIS_H

#include "plxbaseelement.h"

class PlXAxisTransformParameter;
class PlXFormat;
class PlXGridline;
class PlXLabel;
class PlXMajorTicks;
class PlXMinorTicks;

// One axis of a dimension or of a facet level: its line, its title and its ticks.
class CHARTXML_API PlXAxis : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_axis[];

  // What the values of a derived axis are of those of the main axis.
  enum ENUM_transform : int { transform_ratio = 0, transform_percent = 1, transform_none = 2 };

  PlXLabel* addLabel() { return add<PlXLabel>(); }
  PlXLabel* getLabel() const { return child<PlXLabel>(); }
  PlXMajorTicks* addMajorTicks() { return add<PlXMajorTicks>(); }
  PlXMajorTicks* getMajorTicks() const { return child<PlXMajorTicks>(); }
  void removeMajorTickss() { removeAll<PlXMajorTicks>(); }
  PlXMinorTicks* addMinorTicks() { return add<PlXMinorTicks>(); }
  PlXMinorTicks* getMinorTicks() const { return child<PlXMinorTicks>(); }
  // "base-ratio", "base-match", "derived-ratio" and "derived-match" place a derived axis.
  PlXAxisTransformParameter* addAxisTransformParameter() {
    return add<PlXAxisTransformParameter>();
  }

  // True for an axis on the far side of the plot.
  bool getOpposite() const { return flag(u"opposite"); }
  void setOpposite(bool opposite) { setFlag(u"opposite", opposite); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  ENUM_transform getTransform() const { return word<ENUM_transform>(u"transform"); }
  void setTransform(ENUM_transform transform) { setWord(u"transform", transform); }
};

// A named value of an axis's transform.
class CHARTXML_API PlXAxisTransformParameter : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_axisTransformParameter[];

  const XMLCh* getParameterName() const { return text(u"parameterName"); }
  void setParameterName(const XMLCh* name) { setText(u"parameterName", name); }
  const XMLCh* getParameterValue() const { return text(u"parameterValue"); }
  void setParameterValue(const XMLCh* value) { setText(u"parameterValue", value); }
};

#endif
class CHARTXML_API PlXMajorTicks : public PlXBaseElement {public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_majorTicks[];};
class CHARTXML_API PlXMinorTicks : public PlXBaseElement {public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_minorTicks[];};
