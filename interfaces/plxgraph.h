// PlXGraph: one plot of a chart, which is the frame around it, its coordinates, the elements drawn
// in them and the guides.
#ifndef CHARTXML_PLXGRAPH_H
#define CHARTXML_PLXGRAPH_H

#include "plxbaseelement.h"
#include "plxframes.h"

class CTElementType;
class PlXArea;
class PlXCoordinates;
class PlXEdge;
class PlXFacetLayout;
class PlXFaceting;
class PlXFrameGuide;
class PlXFunctionGuide;
class PlXInterval;
class PlXLine;
class PlXLineGuide;
class PlXPath;
class PlXPlaneGuide;
class PlXPoint;
class PlXPointGuide;
class PlXPolygon;
class PlXRectangleGuide;
class PlXSchema;
class PlXStyle;

// A frame, as are containers, label frames and legends: its locations place it on the page.
class CHARTXML_API PlXGraph : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_graph[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  // The style of the frame around the whole graph.
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  // The style of the data area, of each cell in a faceted graph.
  PlXStyle* getCellStyle() const { return link<PlXStyle>(u"cellStyle"); }
  void setCellStyle(PlXStyle& style) { setLink(u"cellStyle", style); }

  // One constraint of the frame's place. A new one has its part stated and nothing else.
  PlXLocation* addLocation(PlXLocation::ENUM_part part);
  std::vector<PlXLocation*> getLocations() const { return children<PlXLocation>(); }
  // Removes all locations of that part.
  void removeLocation(PlXLocation::ENUM_part part);
  void removeLocations() { removeAll<PlXLocation>(); }

  // The blocks of dimensions. The first is the one of all elements that name no other.
  PlXCoordinates* addCoordinates(const XMLCh* id) { return add<PlXCoordinates>(id); }
  // By 0-based position; null past the last.
  PlXCoordinates* getCoordinates(unsigned index) const;
  std::vector<PlXCoordinates*> getCoordinatess() const { return children<PlXCoordinates>(); }

  // A graph is faceted when it has a faceting.
  PlXFaceting* addFaceting() { return add<PlXFaceting>(); }
  PlXFaceting* getFaceting() const { return child<PlXFaceting>(); }
  PlXFacetLayout* addFacetLayout() { return add<PlXFacetLayout>(); }
  PlXFacetLayout* getFacetLayout() const { return child<PlXFacetLayout>(); }

  // The eight kinds of elements. Written kind by kind in this order; a new one is the last of its
  // kind.
  PlXPoint* addPoint(const XMLCh* id) { return add<PlXPoint>(id); }
  std::vector<PlXPoint*> getPoints() const { return children<PlXPoint>(); }
  PlXLine* addLine(const XMLCh* id) { return add<PlXLine>(id); }
  std::vector<PlXLine*> getLines() const { return children<PlXLine>(); }
  PlXEdge* addEdge() { return add<PlXEdge>(); }
  std::vector<PlXEdge*> getEdges() const { return children<PlXEdge>(); }
  PlXPath* addPath(const XMLCh* id) { return add<PlXPath>(id); }
  std::vector<PlXPath*> getPaths() const { return children<PlXPath>(); }
  PlXInterval* addInterval(const XMLCh* id) { return add<PlXInterval>(id); }
  std::vector<PlXInterval*> getIntervals() const { return children<PlXInterval>(); }
  PlXArea* addArea(const XMLCh* id) { return add<PlXArea>(id); }
  std::vector<PlXArea*> getAreas() const { return children<PlXArea>(); }
  PlXPolygon* addPolygon(const XMLCh* id) { return add<PlXPolygon>(id); }
  std::vector<PlXPolygon*> getPolygons() const { return children<PlXPolygon>(); }
  PlXSchema* addSchema(const XMLCh* id) { return add<PlXSchema>(id); }
  std::vector<PlXSchema*> getSchemas() const { return children<PlXSchema>(); }
  // Does nothing with an element of another graph.
  void removeElement(CTElementType& element);

  PlXLineGuide* addLineGuide() { return add<PlXLineGuide>(); }
  std::vector<PlXLineGuide*> getLineGuides() const { return children<PlXLineGuide>(); }
  PlXPointGuide* addPointGuide() { return add<PlXPointGuide>(); }
  std::vector<PlXPointGuide*> getPointGuides() const { return children<PlXPointGuide>(); }
  PlXRectangleGuide* addRectangleGuide() { return add<PlXRectangleGuide>(); }
  std::vector<PlXRectangleGuide*> getRectangleGuides() const {
    return children<PlXRectangleGuide>();
  }
  PlXFunctionGuide* addFunctionGuide() { return add<PlXFunctionGuide>(); }
  std::vector<PlXFunctionGuide*> getFunctionGuides() const { return children<PlXFunctionGuide>(); }
  PlXPlaneGuide* addPlaneGuide() { return add<PlXPlaneGuide>(); }
  std::vector<PlXPlaneGuide*> getPlaneGuides() const { return children<PlXPlaneGuide>(); }
  void removePlaneGuides() { removeAll<PlXPlaneGuide>(); }
  PlXFrameGuide* addFrameGuide() { return add<PlXFrameGuide>(); }
  std::vector<PlXFrameGuide*> getFrameGuides() const { return children<PlXFrameGuide>(); }
};

#endif
