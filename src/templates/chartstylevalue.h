// ChartStyleValue: the properties of a style as one text.
#ifndef CHARTXML_CHARTSTYLEVALUE_H
#define CHARTXML_CHARTSTYLEVALUE_H

#include <xercesc/util/XercesDefs.hpp>

#include "chartstring.h"
#include "export.h"

// The text is a list of pairs, "color:#ff0000;fill-pattern:3". Every text can be read: what has no
// meaning is kept apart, and nothing is reported.
//
// - Runs of ";" and of ":" count as one, so that ";;color:red;;" is one pair. Blanks count: one
//   before a key makes it an unknown key, one before a value is part of the value.
// - The value is what stands behind the last ":" of its pair. A pair without one is empty.
// - Of pairs with the same key the last counts.
//
// A field is empty when its key isn't there or has no value. Values are kept as they stand; what
// they mean is told at PlXStyle's properties, whose names most keys are.
class CHARTXML_API ChartStyleValue {
 public:
  // The keys of fields that don't go by a name of PlXUni.
  static const XMLCh _border_bottom[];
  static const XMLCh _border_left[];
  static const XMLCh _border_right[];
  static const XMLCh _border_top[];
  static const XMLCh _fill_pattern[];
  static const XMLCh _label_location_inside[];
  static const XMLCh _label_location_x[];
  static const XMLCh _label_location_y[];
  static const XMLCh _max_width[];
  static const XMLCh _min_font_size[];
  static const XMLCh _visibility[];

  ChartStyleValue() = default;
  // Null is the empty text.
  explicit ChartStyleValue(const XMLCh* text) { initialize(text); }
  ChartStyleValue(const ChartStyleValue&) = default;
  ChartStyleValue& operator=(const ChartStyleValue&) = default;
  virtual ~ChartStyleValue();

  // Reads a text over what is there: fields whose keys it lacks keep their values, and unknown
  // pairs are added to those that are there. Null changes nothing.
  void initialize(const XMLCh* text);
  // The pairs of all fields that aren't empty in an order of its own, which is the same for every
  // object, and the unknown ones at the end. Reading what an object has read gives an equal one
  // back.
  ChartString getValue() const;

  ChartString borderLeft;
  ChartString borderRight;
  ChartString borderTop;
  ChartString borderBottom;
  ChartString depth;
  ChartString fillPattern;
  // The colour of a surface. `stroke` is its outline's, or that of a line.
  ChartString fill;
  ChartString fontFamily;
  ChartString fontSize;
  ChartString fontStyle;
  ChartString fontWeight;
  ChartString glyphAngle;
  ChartString glyphAspect;
  ChartString glyphSides;
  ChartString labelLocationInside;
  ChartString labelLocationX;
  ChartString labelLocationY;
  ChartString margin;
  ChartString maxWidth;
  ChartString minFontSize;
  ChartString padding;
  ChartString color;
  ChartString color2;
  // The shadow's colour.
  ChartString shadow;
  ChartString shadowDx;
  ChartString shadowDy;
  ChartString shadowOpacity;
  ChartString size;
  ChartString stroke;
  // Empty also for "none", which takes back what an earlier pair says.
  ChartString strokeDasharray;
  ChartString strokeLinecap;
  ChartString symbol;
  ChartString textFit;
  ChartString strokeWidth;
  // "hidden" or "false" hides, every other text shows.
  ChartString visibility;
  ChartString width;
  // The pairs of unknown keys in their order, "foo:1;bar:2".
  ChartString other;
};

#endif
