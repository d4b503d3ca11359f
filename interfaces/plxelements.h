// What a graph draws of its data: CTElementType with PlXPoint, PlXLine, PlXEdge, PlXPath,
// PlXInterval, PlXArea, PlXPolygon and PlXSchema; CTCoordinate and PlXConditionalStyle.
#ifndef CHARTXML_PLXELEMENTS_H
#define CHARTXML_PLXELEMENTS_H

#include "plxbaseelement.h"

class CTAesthetic;
class CTCoordinate;
class CTVariableType;
class PlXAggregateStatistic;
class PlXBinStatistic;
class PlXClusteringStatistic;
class PlXCollectRowsStatistic;
class PlXColor;
class PlXColorComponent;
class PlXConditionalStyle;
class PlXCoordinates;
class PlXDash;
class PlXDistributionStatistic;
class PlXExpressionVariable;
class PlXFixedWindowDensityStatistic;
class PlXGraphLayoutStatistic;
class PlXImage;
class PlXLabeling;
class PlXLinkStatistic;
class PlXMapStatistic;
class PlXNearestNeighborDensityStatistic;
class PlXOffset;
class PlXPattern;
class PlXPatternLinkStatistic;
class PlXRegionStatistic;
class PlXRotation;
class PlXShape;
class PlXSize;
class PlXSmoothStatistic;
class PlXSOMStatistic;
class PlXSourceVariable;
class PlXSplit;
class PlXStyle;
class PlXStyleBy;
class PlXSummaryStatistic;
class PlXTagCloudStatistic;
class PlXTransparency;
class PlXTreeLayoutStatistic;
class PlXTukeyStatistic;
class PlXVisibility;

// The base of the elements. Its coordinates say where an item stands, its aesthetics how it looks,
// its statistics which items are made of the rows of data.
class CHARTXML_API CTElementType : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  // What happens to items that would lie on each other.
  enum ENUM_positionModifier : int {
    positionModifier_none = 1,
    positionModifier_jitter = 2,
    positionModifier_stack = 3,
    positionModifier_stackInterpolating = 4,
    positionModifier_dodge = 7
  };
  // How lines, areas and paths are drawn across missing values. Told here because the three kinds
  // share it.
  enum ENUM_breakRepresentation : int {
    breakRepresentation_gap = 1,
    breakRepresentation_interpolated = 2,
    breakRepresentation_wings = 3
  };

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getName() const { return text(u"name"); }
  void setName(const XMLCh* name) { setText(u"name", name); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  // The block of dimensions that the element is drawn in; null for the graph's first.
  PlXCoordinates* getCoordinates() const { return link<PlXCoordinates>(u"coordinates"); }
  void setCoordinates(PlXCoordinates& coordinates) { setLink(u"coordinates", coordinates); }
  // 0 when not stated.
  ENUM_positionModifier getPositionModifier() const {
    return word<ENUM_positionModifier>(u"positionModifier");
  }
  void setPositionModifier(ENUM_positionModifier modifier) {
    setWord(u"positionModifier", modifier);
  }
  // True when each row of data is drawn as a dot of its own.
  bool getDot() const { return flag(u"dot"); }
  void setDot(bool dot) { setFlag(u"dot", dot); }
  // True to draw labels that cover each other.
  bool getShowCollidingLabels() const { return flag(u"showCollidingLabels"); }
  void setShowCollidingLabels(bool show) { setFlag(u"showCollidingLabels", show); }
  // Where an element without a z coordinate stands on the third axis, in that axis's units.
  double getZLocation() const { return number(u"zLocation"); }
  void setZLocation(double location) { setNumber(u"zLocation", location); }

  // Where the items stand. Of several coordinates along one axis the first counts.
  CTCoordinate* addX() { return addTagged<CTCoordinate>(u"x"); }
  CTCoordinate* getX() const { return childTagged<CTCoordinate>(u"x"); }
  CTCoordinate* addY() { return addTagged<CTCoordinate>(u"y"); }
  CTCoordinate* getY() const { return childTagged<CTCoordinate>(u"y"); }
  CTCoordinate* addZ() { return addTagged<CTCoordinate>(u"z"); }
  CTCoordinate* getZ() const { return childTagged<CTCoordinate>(u"z"); }

  // How the items look. A new style-by has the variable of `aesthetic`; with null it has none.
  PlXStyleBy* addStyleBy(CTAesthetic* aesthetic);
  std::vector<PlXStyleBy*> getStyleBys() const { return children<PlXStyleBy>(); }
  PlXDash* addDash() { return add<PlXDash>(); }
  std::vector<PlXDash*> getDashs() const { return children<PlXDash>(); }
  void removeDashs() { removeAll<PlXDash>(); }
  PlXShape* addShape() { return add<PlXShape>(); }
  std::vector<PlXShape*> getShapes() const { return children<PlXShape>(); }
  PlXSize* addSize() { return add<PlXSize>(); }
  std::vector<PlXSize*> getSizes() const { return children<PlXSize>(); }
  void removeSizes() { removeAll<PlXSize>(); }
  PlXRotation* addRotation() { return add<PlXRotation>(); }
  std::vector<PlXRotation*> getRotations() const { return children<PlXRotation>(); }
  PlXColor* addColor() { return add<PlXColor>(); }
  std::vector<PlXColor*> getColors() const { return children<PlXColor>(); }
  // By 0-based position among the colors; past the last nothing happens.
  void removeColor(unsigned long index) { removeAt<PlXColor>(index); }
  // Does nothing with a color of another element.
  void removeColor(PlXColor& color);
  PlXImage* addImage() { return add<PlXImage>(); }
  std::vector<PlXImage*> getImages() const { return children<PlXImage>(); }
  PlXOffset* addOffset() { return add<PlXOffset>(); }
  std::vector<PlXOffset*> getOffsets() const { return children<PlXOffset>(); }
  PlXPattern* addPattern() { return add<PlXPattern>(); }
  std::vector<PlXPattern*> getPatterns() const { return children<PlXPattern>(); }
  PlXTransparency* addTransparency() { return add<PlXTransparency>(); }
  std::vector<PlXTransparency*> getTransparencys() const { return children<PlXTransparency>(); }
  PlXSplit* addSplit() { return add<PlXSplit>(); }
  std::vector<PlXSplit*> getSplits() const { return children<PlXSplit>(); }
  PlXColorComponent* addColorComponent() { return add<PlXColorComponent>(); }
  std::vector<PlXColorComponent*> getColorComponents() const {
    return children<PlXColorComponent>();
  }
  PlXVisibility* addVisibility() { return add<PlXVisibility>(); }
  std::vector<PlXVisibility*> getVisibilitys() const { return children<PlXVisibility>(); }

  // Statistics make the items from the rows of data. Without any, each row is an item.
  PlXSummaryStatistic* addSummaryStatistic() { return add<PlXSummaryStatistic>(); }
  std::vector<PlXSummaryStatistic*> getSummaryStatistics() const {
    return children<PlXSummaryStatistic>();
  }
  void removeSummaryStatistics() { removeAll<PlXSummaryStatistic>(); }
  PlXBinStatistic* addBinStatistic() { return add<PlXBinStatistic>(); }
  std::vector<PlXBinStatistic*> getBinStatistics() const { return children<PlXBinStatistic>(); }
  void removeBinStatistics() { removeAll<PlXBinStatistic>(); }
  PlXCollectRowsStatistic* addCollectRowsStatistic() { return add<PlXCollectRowsStatistic>(); }
  std::vector<PlXCollectRowsStatistic*> getCollectRowsStatistics() const {
    return children<PlXCollectRowsStatistic>();
  }
  PlXAggregateStatistic* addAggregateStatistic() { return add<PlXAggregateStatistic>(); }
  std::vector<PlXAggregateStatistic*> getAggregateStatistics() const {
    return children<PlXAggregateStatistic>();
  }
  PlXClusteringStatistic* addClusteringStatistic() { return add<PlXClusteringStatistic>(); }
  std::vector<PlXClusteringStatistic*> getClusteringStatistics() const {
    return children<PlXClusteringStatistic>();
  }
  PlXDistributionStatistic* addDistributionStatistic() { return add<PlXDistributionStatistic>(); }
  std::vector<PlXDistributionStatistic*> getDistributionStatistics() const {
    return children<PlXDistributionStatistic>();
  }
  PlXGraphLayoutStatistic* addGraphLayoutStatistic() { return add<PlXGraphLayoutStatistic>(); }
  std::vector<PlXGraphLayoutStatistic*> getGraphLayoutStatistics() const {
    return children<PlXGraphLayoutStatistic>();
  }
  PlXLinkStatistic* addLinkStatistic() { return add<PlXLinkStatistic>(); }
  std::vector<PlXLinkStatistic*> getLinkStatistics() const { return children<PlXLinkStatistic>(); }
  PlXMapStatistic* addMapStatistic() { return add<PlXMapStatistic>(); }
  std::vector<PlXMapStatistic*> getMapStatistics() const { return children<PlXMapStatistic>(); }
  PlXRegionStatistic* addRegionStatistic() { return add<PlXRegionStatistic>(); }
  std::vector<PlXRegionStatistic*> getRegionStatistics() const {
    return children<PlXRegionStatistic>();
  }
  PlXSmoothStatistic* addSmoothStatistic() { return add<PlXSmoothStatistic>(); }
  std::vector<PlXSmoothStatistic*> getSmoothStatistics() const {
    return children<PlXSmoothStatistic>();
  }
  PlXTagCloudStatistic* addTagCloudStatistic() { return add<PlXTagCloudStatistic>(); }
  std::vector<PlXTagCloudStatistic*> getTagCloudStatistics() const {
    return children<PlXTagCloudStatistic>();
  }
  PlXTreeLayoutStatistic* addTreeLayoutStatistic() { return add<PlXTreeLayoutStatistic>(); }
  std::vector<PlXTreeLayoutStatistic*> getTreeLayoutStatistics() const {
    return children<PlXTreeLayoutStatistic>();
  }
  PlXFixedWindowDensityStatistic* addFixedWindowDensityStatistic() {
    return add<PlXFixedWindowDensityStatistic>();
  }
  std::vector<PlXFixedWindowDensityStatistic*> getFixedWindowDensityStatistics() const {
    return children<PlXFixedWindowDensityStatistic>();
  }
  PlXNearestNeighborDensityStatistic* addNearestNeighborDensityStatistic() {
    return add<PlXNearestNeighborDensityStatistic>();
  }
  std::vector<PlXNearestNeighborDensityStatistic*> getNearestNeighborDensityStatistics() const {
    return children<PlXNearestNeighborDensityStatistic>();
  }
  PlXTukeyStatistic* addTukeyStatistic() { return add<PlXTukeyStatistic>(); }
  std::vector<PlXTukeyStatistic*> getTukeyStatistics() const {
    return children<PlXTukeyStatistic>();
  }
  PlXSOMStatistic* addSOMStatistic() { return add<PlXSOMStatistic>(); }
  std::vector<PlXSOMStatistic*> getSOMStatistics() const { return children<PlXSOMStatistic>(); }
  PlXPatternLinkStatistic* addPatternLinkStatistic() { return add<PlXPatternLinkStatistic>(); }
  std::vector<PlXPatternLinkStatistic*> getPatternLinkStatistics() const {
    return children<PlXPatternLinkStatistic>();
  }

  PlXLabeling* addLabeling() { return add<PlXLabeling>(); }
  std::vector<PlXLabeling*> getLabelings() const { return children<PlXLabeling>(); }
  // Does nothing with a labeling of another element.
  void removeLabeling(PlXLabeling& labeling);

  // `when` is a condition over the cell that is drawn, such as "facet1==facet2", where the style
  // takes the place of the element's own. The style is linked, not copied.
  PlXConditionalStyle* addConditionalStyle(const XMLCh* when, PlXStyle& style);
  std::vector<PlXConditionalStyle*> getConditionalStyles() const {
    return children<PlXConditionalStyle>();
  }
  void removeConditionalStyles() { removeAll<PlXConditionalStyle>(); }
};

// A symbol for each item.
class CHARTXML_API PlXPoint : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_point[];
};

// A line through the items in the order of their x.
class CHARTXML_API PlXLine : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_line[];

  // 0 when not stated.
  ENUM_breakRepresentation getBreakRepresentation() const {
    return word<ENUM_breakRepresentation>(u"breakRepresentation");
  }
  void setBreakRepresentation(ENUM_breakRepresentation representation) {
    setWord(u"breakRepresentation", representation);
  }
  // True to leave out the risers of a stepped line.
  bool getShowDiscontinuity() const { return flag(u"showDiscontinuity"); }
  void setShowDiscontinuity(bool show) { setFlag(u"showDiscontinuity", show); }
};

// A link between two items.
class CHARTXML_API PlXEdge : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_edge[];
};

// A line through the items in the order of the data.
class CHARTXML_API PlXPath : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_path[];

  // 0 when not stated.
  ENUM_breakRepresentation getBreakRepresentation() const {
    return word<ENUM_breakRepresentation>(u"breakRepresentation");
  }
  void setBreakRepresentation(ENUM_breakRepresentation representation) {
    setWord(u"breakRepresentation", representation);
  }
  // True to leave out the risers of a stepped path.
  bool getShowDiscontinuity() const { return flag(u"showDiscontinuity"); }
  void setShowDiscontinuity(bool show) { setFlag(u"showDiscontinuity", show); }
};

// A bar, an error bar, a spike or a slice: a stretch from one value to another.
class CHARTXML_API PlXInterval : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_interval[];
};

// The area between a line and the axis.
class CHARTXML_API PlXArea : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_area[];

  // 0 when not stated.
  ENUM_breakRepresentation getBreakRepresentation() const {
    return word<ENUM_breakRepresentation>(u"breakRepresentation");
  }
  void setBreakRepresentation(ENUM_breakRepresentation representation) {
    setWord(u"breakRepresentation", representation);
  }
  // True to leave out the risers of a stepped outline.
  bool getShowDiscontinuity() const { return flag(u"showDiscontinuity"); }
  void setShowDiscontinuity(bool show) { setFlag(u"showDiscontinuity", show); }
};

// A closed outline for each item, such as a cell of a grid or a land on a map.
class CHARTXML_API PlXPolygon : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_polygon[];
};

// A box plot. Each part may have a style of its own; one without takes the element's.
class CHARTXML_API PlXSchema : public CTElementType {
 public:
  using CTElementType::CTElementType;
  static const XMLCh _UTF_schema[];

  PlXStyle* getMedianStyle() const { return link<PlXStyle>(u"medianStyle"); }
  void setMedianStyle(PlXStyle& style) { setLink(u"medianStyle", style); }
  // The box from the lower to the upper quartile.
  PlXStyle* getHingeStyle() const { return link<PlXStyle>(u"hingeStyle"); }
  void setHingeStyle(PlXStyle& style) { setLink(u"hingeStyle", style); }
  // The whiskers.
  PlXStyle* getFenceStyle() const { return link<PlXStyle>(u"fenceStyle"); }
  void setFenceStyle(PlXStyle& style) { setLink(u"fenceStyle", style); }
  // The marks beyond the whiskers, and those far beyond.
  PlXStyle* getOutlierStyle() const { return link<PlXStyle>(u"outlierStyle"); }
  void setOutlierStyle(PlXStyle& style) { setLink(u"outlierStyle", style); }
  PlXStyle* getExtremeStyle() const { return link<PlXStyle>(u"extremeStyle"); }
  void setExtremeStyle(PlXStyle& style) { setLink(u"extremeStyle", style); }
};

// The variable along one axis of an element. The one class with several tags: x, y and z.
class CHARTXML_API CTCoordinate : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_x[];
  static const XMLCh _UTF_y[];
  static const XMLCh _UTF_z[];

  // The linked variable; where no link is stated, the expression that stands in the coordinate.
  CTVariableType* getVariable() const;
  void setVariable(CTVariableType& variable) { setLink(u"variable", variable); }
  // getVariable() when it is of that kind, else null.
  PlXSourceVariable* getSourceVariable() const;
  PlXExpressionVariable* getExpressionVariable() const;
  // An expression for this coordinate alone. A link takes precedence over it.
  PlXExpressionVariable* addExpressionVariable(const XMLCh* id) {
    return add<PlXExpressionVariable>(id);
  }
};

// A style that applies where a condition holds; on elements, guides and grid lines.
class CHARTXML_API PlXConditionalStyle : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_conditionalStyle[];

  // A condition over the numbers of a cell of facets: "facet1==facet2" holds on the diagonal of a
  // matrix of plots, "facet1!=facet2" beside it.
  const XMLCh* getWhen() const { return text(u"when"); }
  void setWhen(const XMLCh* when) { setText(u"when", when); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
};

#endif
