// A graph split into panels: PlXFaceting, PlXFacetLayout, PlXFacetLevel, PlXTableLayout.
#ifndef CHARTXML_PLXFACETS_H
#define CHARTXML_PLXFACETS_H

#include "plxbaseelement.h"

class CTVariableType;
class PlXAxis;
class PlXVariableReference;

// The variables that split a graph into panels. The n-th of them splits along the n-th level of the
// graph's layout.
class CHARTXML_API PlXFaceting : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_faceting[];

  std::vector<PlXVariableReference*> getVariableReferences() const {
    return children<PlXVariableReference>();
  }
  PlXVariableReference* addVariableReference(CTVariableType& variable);
};

// One direction in which the panels stand: the first level goes from left to right, the second from
// top to bottom. Its axes label the panels; those of a scatterplot matrix are its only axes.
class CHARTXML_API PlXFacetLevel : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_facetLevel[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  // The level's number.
  int getLevel() const { return static_cast<int>(integer(u"level")); }
  void setLevel(int level) { setInteger(u"level", level); }
  // Between the panels: a length or a percentage text ("20px", "2%").
  const XMLCh* getGap() const { return text(u"gap"); }
  void setGap(const XMLCh* gap) { setText(u"gap", gap); }
  std::vector<PlXAxis*> getAxiss() const { return children<PlXAxis>(); }
  PlXAxis* addAxis() { return add<PlXAxis>(); }
};

// Marks a layout whose panels are the cells of a table of texts.
class CHARTXML_API PlXTableLayout : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_tableLayout[];

  // The style of the lines between the cells.
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
};

// How the panels of a graph are arranged.
class CHARTXML_API PlXFacetLayout : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_facetLayout[];

  // A grid has a row or column for each category; wrapping panels go on in the next row when one is
  // full.
  enum ENUM_method : int { method_grid = 1, method_wrap = 2 };

  // 0 when it isn't stated; panels aren't wrapped then.
  ENUM_method getMethod() const { return word<ENUM_method>(u"method"); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  // The width of a panel divided by its height; 0 when it isn't stated, for panels that fill the
  // graph.
  double getCellAspect() const { return number(u"cellAspect"); }
  void setCellAspect(double aspect) { setNumber(u"cellAspect", aspect); }
  std::vector<PlXFacetLevel*> getFacetLevels() const { return children<PlXFacetLevel>(); }
  PlXFacetLevel* addFacetLevel() { return add<PlXFacetLevel>(); }
  PlXFacetLevel* addFacetLevel(const XMLCh* id) { return add<PlXFacetLevel>(id); }
  std::vector<PlXTableLayout*> getTableLayouts() const { return children<PlXTableLayout>(); }
  PlXTableLayout* addTableLayout() { return add<PlXTableLayout>(); }
};

#endif
