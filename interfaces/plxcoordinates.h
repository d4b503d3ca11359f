// The frame of reference of a graph: PlXCoordinates, PlXDimension, PlXDimensionReference, PlXScale.
#ifndef CHARTXML_PLXCOORDINATES_H
#define CHARTXML_PLXCOORDINATES_H

#include "plxbaseelement.h"

class CTVariableType;
class PlXAxis;
class PlXCategoricalDomain;
class PlXDimensionReference;
class PlXInsetTransform;
class PlXIntervalDomain;
class PlXObliqueTransform;
class PlXParallelCoordinatesTransform;
class PlXPolarTransform;
class PlXRectangularTransform;
class PlXReflectionTransform;
class PlXTransposeTransform;

// How values become distances, on a dimension or in an aesthetic.
class CHARTXML_API PlXScale : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_scale[];

  // The safe kinds also take zero and negative values. From logit on, the values are proportions;
  // those of atanh are correlations.
  enum ENUM_method : int {
    method_linear = 1,
    method_log = 2,
    method_power = 3,
    method_log_safe = 4,
    method_power_safe = 5,
    method_logit = 6,
    method_probit = 7,
    method_asn = 8,
    method_atanh = 9,
    method_prob = 10,
    method_cLoglog = 11
  };

  // The words of the transformations of proportions.
  static const XMLCh _UTF_method_logit[];
  static const XMLCh _UTF_method_probit[];
  static const XMLCh _UTF_method_asn[];
  static const XMLCh _UTF_method_atanh[];
  static const XMLCh _UTF_method_prob[];
  static const XMLCh _UTF_method_cLoglog[];

  // method_linear when it isn't stated.
  ENUM_method getMethod() const { return word<ENUM_method>(u"method", method_linear); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  // The base of a log scale, the exponent of a power scale; no other scale reads it.
  double getBase() const { return number(u"base"); }
  void setBase(double base) { setNumber(u"base", base); }
  // True for a scale that runs from high to low.
  bool getInvert() const { return flag(u"invert"); }
  void setInvert(bool invert) { setFlag(u"invert", invert); }
  // The value that bars stand on: a number or date text.
  const XMLCh* getOrigin() const { return text(u"origin"); }
  void setOrigin(const XMLCh* origin) { setText(u"origin", origin); }
  void removeOrigin() { clear(u"origin"); }
};

// One dimension of a coordinates block. Its role is its place among the block's dimensions and
// references to dimensions.
class CHARTXML_API PlXDimension : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_dimension[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }

  PlXScale* getScale() const { return child<PlXScale>(); }
  // The new scale states its method, the linear one too: attributes that are copied over it from a
  // scale must find the same name.
  PlXScale* addScale(PlXScale::ENUM_method method);

  // The first axis is the main one; a second is the derived or the opposite one.
  std::vector<PlXAxis*> getAxiss() const { return children<PlXAxis>(); }
  // Behind the axes that there are.
  PlXAxis* addAxis() { return add<PlXAxis>(); }
  // By 0-based index; past the last nothing happens.
  void removeAxis(unsigned index) { removeAt<PlXAxis>(index); }
  // Does nothing with an axis of another dimension.
  void removeAxis(PlXAxis& axis);

  // A PlXIntervalDomain or a PlXCategoricalDomain; others may share it. Null when the extent comes
  // from the data.
  PlXBaseElement* getDomain() const { return link<PlXBaseElement>(u"domain"); }
  void setDomain(PlXIntervalDomain& domain) { setLink(u"domain", domain); }
  void setDomain(PlXCategoricalDomain& domain) { setLink(u"domain", domain); }
  // Not null on a clustered dimension: the variable whose categories are the clusters. The axis
  // shows them; what elements have along the dimension lies side by side within each.
  CTVariableType* getClusterVariable() const { return link<CTVariableType>(u"clusterVariable"); }
  void setClusterVariable(CTVariableType& variable) { setLink(u"clusterVariable", variable); }
  // Between clusters: a length or a percentage text ("2%").
  const XMLCh* getClusterGap() const { return text(u"clusterGap"); }
  void setClusterGap(const XMLCh* gap) { setText(u"clusterGap", gap); }

  // What stays free at the ends of the dimension: a length or a percentage text ("5%").
  const XMLCh* getLowerMargin() const { return text(u"lowerMargin"); }
  void setLowerMargin(const XMLCh* margin) { setText(u"lowerMargin", margin); }
  const XMLCh* getUpperMargin() const { return text(u"upperMargin"); }
  void setUpperMargin(const XMLCh* margin) { setText(u"upperMargin", margin); }
  // True where the end is moved outwards to a round value.
  bool getNiceLowerMapping() const { return flag(u"niceLowerMapping"); }
  void setNiceLowerMapping(bool nice) { setFlag(u"niceLowerMapping", nice); }
  bool getNiceUpperMapping() const { return flag(u"niceUpperMapping"); }
  void setNiceUpperMapping(bool nice) { setFlag(u"niceUpperMapping", nice); }
  // True when the extent covers the data as well as the domain.
  bool getUnionDomain() const { return flag(u"unionDomain"); }
  void setUnionDomain(bool isUnion) { setFlag(u"unionDomain", isUnion); }
};

// A place in a coordinates block that a dimension of another block fills.
class CHARTXML_API PlXDimensionReference : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _dimensionReference[];

  PlXDimension* getRef() const { return link<PlXDimension>(u"ref"); }
  void setRef(PlXDimension& dimension) { setLink(u"ref", dimension); }
};

// One coordinates block of a graph: its dimensions, whose roles are x, y and z in this order (x and
// y2 in a second block), and what is done with the space that they span.
class CHARTXML_API PlXCoordinates : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_coordinates[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }

  std::vector<PlXDimension*> getDimensions() const { return children<PlXDimension>(); }
  // Behind the dimensions and references that there are: it takes the next role.
  PlXDimension* addDimension() { return add<PlXDimension>(); }
  // By 0-based index among the dimensions, references not counted.
  void removeDimension(unsigned index) { removeAt<PlXDimension>(index); }
  std::vector<PlXDimensionReference*> getDimensionReferences() const {
    return children<PlXDimensionReference>();
  }
  PlXDimensionReference* addDimensionReference() { return add<PlXDimensionReference>(); }

  // Transforms of all kinds are applied in document order; a new one comes last.
  std::vector<PlXRectangularTransform*> getRectangularTransforms() const {
    return children<PlXRectangularTransform>();
  }
  PlXRectangularTransform* addRectangularTransform() { return add<PlXRectangularTransform>(); }
  void removeRectangularTransforms() { removeAll<PlXRectangularTransform>(); }
  std::vector<PlXObliqueTransform*> getObliqueTransforms() const {
    return children<PlXObliqueTransform>();
  }
  PlXObliqueTransform* addObliqueTransform() { return add<PlXObliqueTransform>(); }
  void removeObliqueTransforms() { removeAll<PlXObliqueTransform>(); }
  // Not empty in a polar block.
  std::vector<PlXPolarTransform*> getPolarTransforms() const {
    return children<PlXPolarTransform>();
  }
  PlXPolarTransform* addPolarTransform() { return add<PlXPolarTransform>(); }
  void removePolarTransforms() { removeAll<PlXPolarTransform>(); }
  std::vector<PlXReflectionTransform*> getReflectionTransforms() const {
    return children<PlXReflectionTransform>();
  }
  PlXReflectionTransform* addReflectionTransform() { return add<PlXReflectionTransform>(); }
  void removeReflectionTransforms() { removeAll<PlXReflectionTransform>(); }
  std::vector<PlXTransposeTransform*> getTransposeTransforms() const {
    return children<PlXTransposeTransform>();
  }
  PlXTransposeTransform* addTransposeTransform() { return add<PlXTransposeTransform>(); }
  void removeTransposeTransforms() { removeAll<PlXTransposeTransform>(); }
  std::vector<PlXInsetTransform*> getInsetTransforms() const {
    return children<PlXInsetTransform>();
  }
  PlXInsetTransform* addInsetTransform() { return add<PlXInsetTransform>(); }
  void removeInsetTransforms() { removeAll<PlXInsetTransform>(); }
  std::vector<PlXParallelCoordinatesTransform*> getParallelCoordinatesTransforms() const {
    return children<PlXParallelCoordinatesTransform>();
  }
  PlXParallelCoordinatesTransform* addParallelCoordinatesTransform() {
    return add<PlXParallelCoordinatesTransform>();
  }
  void removeParallelCoordinatesTransforms() { removeAll<PlXParallelCoordinatesTransform>(); }
};

#endif
