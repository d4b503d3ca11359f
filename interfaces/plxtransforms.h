// Transforms of a coordinates block: PlXRectangularTransform, PlXObliqueTransform,
// PlXPolarTransform, PlXReflectionTransform, PlXTransposeTransform, PlXInsetTransform,
// PlXParallelCoordinatesTransform.
#ifndef CHARTXML_PLXTRANSFORMS_H
#define CHARTXML_PLXTRANSFORMS_H

#include "plxbaseelement.h"

// Numbers read as 0 when they aren't stated, and the renderer takes its own value then. Angles are
// degrees, shifts and scales are relative to the size of the plot.

// Three dimensions in perspective: the box is turned, then looked at from a point.
class CHARTXML_API PlXRectangularTransform : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_rectangularTransform[];

  // From the eye to the centre of the box.
  double getDistance() const { return number(u"distance"); }
  void setDistance(double distance) { setNumber(u"distance", distance); }
  // From the eye to the plane of projection.
  double getProjectionDistance() const { return number(u"projectionDistance"); }
  void setProjectionDistance(double distance) { setNumber(u"projectionDistance", distance); }
  // The angles by which the box is turned: theta about the upright axis, phi up or down, zeta about
  // the line of sight.
  double getTheta() const { return number(u"theta"); }
  void setTheta(double angle) { setNumber(u"theta", angle); }
  double getPhi() const { return number(u"phi"); }
  void setPhi(double angle) { setNumber(u"phi", angle); }
  double getZeta() const { return number(u"zeta"); }
  void setZeta(double angle) { setNumber(u"zeta", angle); }
  // Shifts of the picture.
  double getDx() const { return number(u"dx"); }
  void setDx(double shift) { setNumber(u"dx", shift); }
  double getDy() const { return number(u"dy"); }
  void setDy(double shift) { setNumber(u"dy", shift); }
  // The lengths of the box's edges.
  double getXscale() const { return number(u"xscale"); }
  void setXscale(double scale) { setNumber(u"xscale", scale); }
  double getYscale() const { return number(u"yscale"); }
  void setYscale(double scale) { setNumber(u"yscale", scale); }
  double getZscale() const { return number(u"zscale"); }
  void setZscale(double scale) { setNumber(u"zscale", scale); }
};

// A flat front with depth drawn aslant, parallels staying parallel.
class CHARTXML_API PlXObliqueTransform : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_obliqueTransform[];

  // How far the back is from the front.
  double getDistance() const { return number(u"distance"); }
  void setDistance(double distance) { setNumber(u"distance", distance); }
  // The angle of the edges that lead into depth.
  double getTheta() const { return number(u"theta"); }
  void setTheta(double angle) { setNumber(u"theta", angle); }
  // The drawn length of those edges as a share of their true length.
  double getForeShortening() const { return number(u"foreShortening"); }
  void setForeShortening(double share) { setNumber(u"foreShortening", share); }
  double getDx() const { return number(u"dx"); }
  void setDx(double shift) { setNumber(u"dx", shift); }
  double getDy() const { return number(u"dy"); }
  void setDy(double shift) { setNumber(u"dy", shift); }
  double getXscale() const { return number(u"xscale"); }
  void setXscale(double scale) { setNumber(u"xscale", scale); }
  double getYscale() const { return number(u"yscale"); }
  void setYscale(double scale) { setNumber(u"yscale", scale); }
};

// The first dimension becomes an angle, the second a radius. A graph with one is polar.
class CHARTXML_API PlXPolarTransform : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_polarTransform[];

  bool getCounterClockwise() const { return flag(u"counterClockwise"); }
  void setCounterClockwise(bool isCounter) { setFlag(u"counterClockwise", isCounter); }
  // The turns that the whole dimension takes: 1 for a full circle.
  double getCycles() const { return number(u"cycles"); }
  void setCycles(double turns) { setNumber(u"cycles", turns); }
  // Where the first value lies.
  double getStartAngle() const { return number(u"startAngle"); }
  void setStartAngle(double angle) { setNumber(u"startAngle", angle); }
};

// One dimension runs the other way, in all panels or in every second one.
class CHARTXML_API PlXReflectionTransform : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_reflectionTransform[];

  enum ENUM_dimension : int { dimension_x = 0, dimension_y = 1 };

  ENUM_dimension getDimension() const { return word<ENUM_dimension>(u"dimension"); }
  void setDimension(ENUM_dimension dimension) { setWord(u"dimension", dimension); }
  // True when only every second panel is reflected, so that neighbours stand back to back.
  bool getAlternating() const { return flag(u"alternating"); }
  void setAlternating(bool alternating) { setFlag(u"alternating", alternating); }
};

// The first two dimensions change places.
class CHARTXML_API PlXTransposeTransform : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_transposeTransform[];
};

// The plot shrinks within its frame: each number is the share of the width or height that stays
// free on that side, such as 0.05.
class CHARTXML_API PlXInsetTransform : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_insetTransform[];

  double getX_min() const { return number(u"x_min"); }
  void setX_min(double share) { setNumber(u"x_min", share); }
  double getX_max() const { return number(u"x_max"); }
  void setX_max(double share) { setNumber(u"x_max", share); }
  double getY_min() const { return number(u"y_min"); }
  void setY_min(double share) { setNumber(u"y_min", share); }
  double getY_max() const { return number(u"y_max"); }
  void setY_max(double share) { setNumber(u"y_max", share); }
};

// The dimensions stand side by side as parallel axes.
class CHARTXML_API PlXParallelCoordinatesTransform : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_parallelCoordinatesTransform[];
};

#endif
