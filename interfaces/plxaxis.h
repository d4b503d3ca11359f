// Axes and what stands on them: PlXAxis, PlXAxisTransformParameter, PlXMajorTicks, PlXMinorTicks,
// PlXGridline.
#ifndef CHARTXML_PLXAXIS_H
#define CHARTXML_PLXAXIS_H

#include "plxbaseelement.h"

class PlXAxisTransformParameter;
class PlXConditionalStyle;
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

  // What the values of a derived axis are of those of the main axis; none for an axis that isn't
  // derived.
  enum ENUM_transform : int { transform_ratio = 0, transform_percent = 1, transform_none = 2 };

  PlXLabel* getLabel() const { return child<PlXLabel>(); }
  PlXLabel* addLabel() { return add<PlXLabel>(); }
  PlXLabel* addLabel(const XMLCh* id) { return add<PlXLabel>(id); }
  PlXMajorTicks* getMajorTicks() const { return child<PlXMajorTicks>(); }
  PlXMajorTicks* addMajorTicks() { return add<PlXMajorTicks>(); }
  void removeMajorTickss() { removeAll<PlXMajorTicks>(); }
  PlXMinorTicks* getMinorTicks() const { return child<PlXMinorTicks>(); }
  PlXMinorTicks* addMinorTicks() { return add<PlXMinorTicks>(); }
  void removeMinorTickss() { removeAll<PlXMinorTicks>(); }
  // "base-ratio", "base-match", "derived-ratio" and "derived-match" place an axis of ratios.
  std::vector<PlXAxisTransformParameter*> getAxisTransformParameters() const {
    return children<PlXAxisTransformParameter>();
  }
  PlXAxisTransformParameter* addAxisTransformParameter() {
    return add<PlXAxisTransformParameter>();
  }

  // True for an axis on the far side of the plot.
  bool getOpposite() const { return flag(u"opposite"); }
  void setOpposite(bool opposite) { setFlag(u"opposite", opposite); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  // transform_none when it isn't stated.
  ENUM_transform getTransform() const { return word<ENUM_transform>(u"transform", transform_none); }
  void setTransform(ENUM_transform transform) { setWord(u"transform", transform); }
};

// A named value of an axis's transform.
class CHARTXML_API PlXAxisTransformParameter : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_axisTransformParameter[];

  const XMLCh* getParameterName() const { return text(u"parameterName"); }
  void setParameterName(const XMLCh* name) { setText(u"parameterName", name); }
  // A number text.
  const XMLCh* getParameterValue() const { return text(u"parameterValue"); }
  void setParameterValue(const XMLCh* value) { setText(u"parameterValue", value); }
};

// The labelled ticks of an axis. They have three styles: that of the labels, that of the frames
// around the labels and that of the marks.
class CHARTXML_API PlXMajorTicks : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_majorTicks[];

  // On which side of the axis line the marks stand.
  enum ENUM_position : int { position_inside = 0, position_outside = 1, position_cross = 2 };
  enum ENUM_deltaUnit : int {
    deltaUnit_second = 0,
    deltaUnit_minute = 1,
    deltaUnit_hour = 2,
    deltaUnit_day = 3,
    deltaUnit_week = 4,
    deltaUnit_month = 5,
    deltaUnit_year = 6
  };

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }

  // Formats of the labels, of which the first counts. The variable's own when there is none.
  std::vector<PlXFormat*> getFormats() const { return children<PlXFormat>(); }
  PlXFormat* addFormat() { return add<PlXFormat>(); }
  void removeFormats() { removeAll<PlXFormat>(); }
  // Null when no lines are drawn from the ticks.
  PlXGridline* getGridline() const { return child<PlXGridline>(); }
  PlXGridline* addGridline() { return add<PlXGridline>(); }

  // The style of the labels.
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  PlXStyle* getTickFrameStyle() const { return link<PlXStyle>(u"tickFrameStyle"); }
  void setTickFrameStyle(PlXStyle& style) { setLink(u"tickFrameStyle", style); }
  PlXStyle* getMarkStyle() const { return link<PlXStyle>(u"markStyle"); }
  void setMarkStyle(PlXStyle& style) { setLink(u"markStyle", style); }

  ENUM_position getPosition() const { return word<ENUM_position>(u"position"); }
  void setPosition(ENUM_position position) { setWord(u"position", position); }
  // Of the marks: a length text ("5pt").
  const XMLCh* getLength() const { return text(u"length"); }
  void setLength(const XMLCh* length) { setText(u"length", length); }

  // From tick to tick, in values or, on an axis of dates, in units of `deltaUnit`. 0 when the
  // renderer chooses.
  double getDelta() const { return number(u"delta"); }
  void setDelta(double delta) { setNumber(u"delta", delta); }
  void removeDelta() { clear(u"delta"); }
  ENUM_deltaUnit getDeltaUnit() const { return word<ENUM_deltaUnit>(u"deltaUnit"); }
  void setDeltaUnit(ENUM_deltaUnit unit) { setWord(u"deltaUnit", unit); }
  // A value that has a tick: a number or date text.
  const XMLCh* getBase() const { return text(u"base"); }
  void setBase(const XMLCh* base) { setText(u"base", base); }

  // In degrees, 0 for level text.
  double getLabelAngle() const { return number(u"labelAngle"); }
  void setLabelAngle(double angle) { setNumber(u"labelAngle", angle); }
  // Every n-th tick is labelled; 0 when it isn't stated, which labels all.
  unsigned getLabelFrequency() const { return static_cast<unsigned>(integer(u"labelFrequency")); }
  void setLabelFrequency(unsigned frequency) { setInteger(u"labelFrequency", frequency); }
  // "true" for labels in two rows by turns, "false" for one row. Empty when the renderer chooses.
  const XMLCh* getStagger() const { return text(u"stagger"); }
  void setStagger(const XMLCh* stagger) { setText(u"stagger", stagger); }
  void removeStagger() { clear(u"stagger"); }
};

// The ticks between the major ones, without labels.
class CHARTXML_API PlXMinorTicks : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_minorTicks[];

  // The same as that of the major ticks.
  using ENUM_position = PlXMajorTicks::ENUM_position;
  using enum PlXMajorTicks::ENUM_position;

  PlXGridline* getGridline() const { return child<PlXGridline>(); }
  PlXGridline* addGridline() { return add<PlXGridline>(); }
  PlXStyle* getMarkStyle() const { return link<PlXStyle>(u"markStyle"); }
  void setMarkStyle(PlXStyle& style) { setLink(u"markStyle", style); }
  ENUM_position getPosition() const { return word<ENUM_position>(u"position"); }
  void setPosition(ENUM_position position) { setWord(u"position", position); }
  // Of the marks: a length text ("3pt").
  const XMLCh* getLength() const { return text(u"length"); }
  void setLength(const XMLCh* length) { setText(u"length", length); }
  // How many stand between two major ticks.
  unsigned getNumber() const { return static_cast<unsigned>(integer(u"number")); }
  void setNumber(unsigned count) { setInteger(u"number", count); }
};

// The lines that run across the plot from the ticks.
class CHARTXML_API PlXGridline : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_gridline[];

  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  std::vector<PlXConditionalStyle*> getConditionalStyles() const {
    return children<PlXConditionalStyle>();
  }
  // In panels where the condition holds, such as "facet1==facet2", `style` counts on top of the
  // gridline's own.
  PlXConditionalStyle* addConditionalStyle(const XMLCh* condition, PlXStyle& style);
  void removeConditionalStyles() { removeAll<PlXConditionalStyle>(); }
};

#endif
