// The root of a chart and what stands on its page: PlXVisualization, PlXDocument, PlXLocation,
// PlXContainer, PlXControlFrame, PlXLabelFrame, PlXLegend, PlXLegendTarget, PlXPopup,
// PlXTokenMapping.
#ifndef CHARTXML_PLXFRAMES_H
#define CHARTXML_PLXFRAMES_H

#include <memory>
#include <string>
#include <vector>

#include "plxbaseelement.h"

class CTVariableType;
class ModelStore;
class PlXCategoricalDomain;
class PlXContainer;
class PlXControlFrame;
class PlXDatabaseSource;
class PlXDelimitedFileSource;
class PlXDerivedVariable;
class PlXEmbeddedSource;
class PlXExpressionVariable;
class PlXExtensionVis;
class PlXGraph;
class PlXIntervalDomain;
class PlXLabel;
class PlXLabelFrame;
class PlXLegend;
class PlXLegendTarget;
class PlXPopup;
class PlXSource;
class PlXSourceVariable;
class PlXStreamingSource;
class PlXStyle;
class PlXStyleCycle;
class PlXSummaryStatistic;
class PlXTokenMapping;
class PlXUserSource;

// One constraint of a frame's place: which edge or extent, and what fixes it. A frame has at most
// one for each part.
class CHARTXML_API PlXLocation : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_location[];

  enum ENUM_part : int {
    part_left = 0,
    part_right = 1,
    part_top = 2,
    part_bottom = 3,
    part_width = 4,
    part_height = 5
  };
  // Fixed by the value; as large as the content (a width or height only); on the same edge of the
  // target; against the target, which lies on that side.
  enum ENUM_method : int {
    method_fixed = 0,
    method_content = 1,
    method_align = 2,
    method_attach = 3
  };

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  ENUM_part getPart() const { return word<ENUM_part>(u"part"); }
  void setPart(ENUM_part part) { setWord(u"part", part); }
  // A location that states no method is a fixed one.
  ENUM_method getMethod() const { return word<ENUM_method>(u"method"); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  // A percentage of the page such as "75%", or a length.
  const XMLCh* getValue() const { return text(u"value"); }
  void setValue(const XMLCh* value) { setText(u"value", value); }
  void removeValue() { clear(u"value"); }
  // The upper bound of a width or height, in the form of a value.
  const XMLCh* getMax() const { return text(u"max"); }
  void setMax(const XMLCh* max) { setText(u"max", max); }
  // A container, graph, label frame or legend.
  PlXBaseElement* getTarget() const { return link<PlXBaseElement>(u"target"); }
  void setTarget(PlXContainer& target) { setLink(u"target", target); }
  void setTarget(PlXGraph& target) { setLink(u"target", target); }
  void setTarget(PlXLabelFrame& target) { setLink(u"target", target); }
  void setTarget(PlXLegend& target) { setLink(u"target", target); }
  // True for a location that the chart's author set: layout leaves such a frame where it is.
  bool getSpecifiedByUser() const { return flag(u"specifiedByUser"); }
  void setSpecifiedByUser(bool specified) { setFlag(u"specifiedByUser", specified); }
};

// The root of a chart. Making one builds the object tree over the whole element in one pass; the
// objects of rows of data are left out. Lists hold what stands directly under the root: a graph
// within a container is in that container's list.
class CHARTXML_API PlXVisualization : public PlXBaseElement {
 public:
  // A second one over a root that has one already shares the objects of the first.
  explicit PlXVisualization(xercesc::DOMElement* root);
  ~PlXVisualization() override;

  // The whole document as UTF-8 text without added white space; for an element that isn't its
  // document's root that element alone.
  virtual std::string AsUTF8() const;

  static const XMLCh _UTF_visualization[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getName() const { return text(u"name"); }
  void setName(const XMLCh* name) { setText(u"name", name); }
  // The style of the page itself; addStyle() makes one that others link to.
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }

  // Where the data comes from. A user source is a placeholder: the data of the same id is held
  // apart from the chart. `source` is the form that embedded data has in older charts.
  PlXUserSource* addUserSource(const XMLCh* id) { return add<PlXUserSource>(id); }
  std::vector<PlXUserSource*> getUserSources() const { return children<PlXUserSource>(); }
  std::vector<PlXDatabaseSource*> getDatabaseSources() const {
    return children<PlXDatabaseSource>();
  }
  std::vector<PlXDelimitedFileSource*> getDelimitedFileSources() const {
    return children<PlXDelimitedFileSource>();
  }
  std::vector<PlXStreamingSource*> getStreamingSources() const {
    return children<PlXStreamingSource>();
  }
  std::vector<PlXEmbeddedSource*> getEmbeddedSources() const {
    return children<PlXEmbeddedSource>();
  }
  void removeEmbeddedSources() { removeAll<PlXEmbeddedSource>(); }
  std::vector<PlXSource*> getSources() const { return children<PlXSource>(); }

  // Variables and domains.
  PlXSourceVariable* addSourceVariable(const XMLCh* id) { return add<PlXSourceVariable>(id); }
  std::vector<PlXSourceVariable*> getSourceVariables() const {
    return children<PlXSourceVariable>();
  }
  PlXDerivedVariable* addDerivedVariable(const XMLCh* id) { return add<PlXDerivedVariable>(id); }
  std::vector<PlXDerivedVariable*> getDerivedVariables() const {
    return children<PlXDerivedVariable>();
  }
  std::vector<PlXExpressionVariable*> getExpressionVariables() const {
    return children<PlXExpressionVariable>();
  }
  PlXCategoricalDomain* addCategoricalDomain(const XMLCh* id) {
    return add<PlXCategoricalDomain>(id);
  }
  std::vector<PlXCategoricalDomain*> getCategoricalDomains() const {
    return children<PlXCategoricalDomain>();
  }
  PlXIntervalDomain* addIntervalDomain(const XMLCh* id) { return add<PlXIntervalDomain>(id); }
  std::vector<PlXIntervalDomain*> getIntervalDomains() const {
    return children<PlXIntervalDomain>();
  }

  // Frames. A new one stands behind those of its kind.
  PlXLocation* addLocation(PlXLocation::ENUM_part part);
  std::vector<PlXLocation*> getLocations() const { return children<PlXLocation>(); }
  void removeLocations() { removeAll<PlXLocation>(); }
  std::vector<PlXControlFrame*> getControlFrames() const { return children<PlXControlFrame>(); }
  PlXContainer* addContainer(const XMLCh* id) { return add<PlXContainer>(id); }
  std::vector<PlXContainer*> getContainers() const { return children<PlXContainer>(); }
  PlXGraph* addGraph(const XMLCh* id) { return add<PlXGraph>(id); }
  std::vector<PlXGraph*> getGraphs() const { return children<PlXGraph>(); }
  PlXLabelFrame* addLabelFrame(const XMLCh* id) { return add<PlXLabelFrame>(id); }
  std::vector<PlXLabelFrame*> getLabelFrames() const { return children<PlXLabelFrame>(); }
  PlXLegend* addLegend(const XMLCh* id) { return add<PlXLegend>(id); }
  std::vector<PlXLegend*> getLegends() const { return children<PlXLegend>(); }
  PlXPopup* addPopup() { return add<PlXPopup>(); }
  std::vector<PlXPopup*> getPopups() const { return children<PlXPopup>(); }
  // Makes the objects of elements that came into a container by DOM operations. Objects that are
  // there stay; still, fetch again what was fetched before the call.
  void reparentContainerChildren();

  // Looks.
  PlXStyle* addStyle() { return add<PlXStyle>(); }
  std::vector<PlXStyle*> getStyles() const { return children<PlXStyle>(); }
  PlXStyleCycle* addStyleCycle(const XMLCh* id) { return add<PlXStyleCycle>(id); }
  std::vector<PlXStyleCycle*> getStyleCycles() const { return children<PlXStyleCycle>(); }

  // Each call makes one more record. The first is the one that holds the roles of frames.
  PlXExtensionVis* addExtension() { return add<PlXExtensionVis>(); }
  PlXExtensionVis* getExtension() const { return child<PlXExtensionVis>(); }
  std::vector<PlXExtensionVis*> getExtensions() const { return children<PlXExtensionVis>(); }

  // For the model itself.
  ModelStore& store() const { return *store_; }

 private:
  std::unique_ptr<ModelStore> store_;
};

// A document by its root object, which it doesn't own.
class CHARTXML_API PlXDocument {
 public:
  explicit PlXDocument(PlXVisualization& root) : root_(root) {}
  virtual ~PlXDocument();

  virtual PlXVisualization* getRoot() const;

 private:
  PlXVisualization& root_;
};

// A frame that groups others, which lie within its element.
class CHARTXML_API PlXContainer : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_container[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  PlXLocation* addLocation(PlXLocation::ENUM_part part);
  std::vector<PlXLocation*> getLocations() const { return children<PlXLocation>(); }
  void removeLocations() { removeAll<PlXLocation>(); }

  PlXContainer* addContainer(const XMLCh* id) { return add<PlXContainer>(id); }
  std::vector<PlXContainer*> getContainers() const { return children<PlXContainer>(); }
  PlXGraph* addGraph(const XMLCh* id) { return add<PlXGraph>(id); }
  std::vector<PlXGraph*> getGraphs() const { return children<PlXGraph>(); }
  PlXLabelFrame* addLabelFrame(const XMLCh* id) { return add<PlXLabelFrame>(id); }
  std::vector<PlXLabelFrame*> getLabelFrames() const { return children<PlXLabelFrame>(); }
  PlXLegend* addLegend(const XMLCh* id) { return add<PlXLegend>(id); }
  std::vector<PlXLegend*> getLegends() const { return children<PlXLegend>(); }
};

// The place of a viewer's controls.
class CHARTXML_API PlXControlFrame : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _controlFrame[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  PlXLocation* addLocation(PlXLocation::ENUM_part part);
  std::vector<PlXLocation*> getLocations() const { return children<PlXLocation>(); }
  void removeLocations() { removeAll<PlXLocation>(); }
};

// A frame that holds one label: a title, footnote, summary or free text.
class CHARTXML_API PlXLabelFrame : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_labelFrame[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  PlXLocation* addLocation(PlXLocation::ENUM_part part);
  std::vector<PlXLocation*> getLocations() const { return children<PlXLocation>(); }
  void removeLocations() { removeAll<PlXLocation>(); }
  PlXLabel* addLabel() { return add<PlXLabel>(); }
  PlXLabel* getLabel() const { return child<PlXLabel>(); }
};

// A frame that explains aesthetics or elements, its targets.
class CHARTXML_API PlXLegend : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_legend[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  // The texts of the entries, and the frames around them.
  PlXStyle* getTickTextStyle() const { return link<PlXStyle>(u"tickTextStyle"); }
  void setTickTextStyle(PlXStyle& style) { setLink(u"tickTextStyle", style); }
  PlXStyle* getTickFrameStyle() const { return link<PlXStyle>(u"tickFrameStyle"); }
  void setTickFrameStyle(PlXStyle& style) { setLink(u"tickFrameStyle", style); }
  PlXLocation* addLocation(PlXLocation::ENUM_part part);
  std::vector<PlXLocation*> getLocations() const { return children<PlXLocation>(); }
  void removeLocations() { removeAll<PlXLocation>(); }
  PlXLabel* addLabel() { return add<PlXLabel>(); }
  PlXLabel* getLabel() const { return child<PlXLabel>(); }
  // `target` is given an id if it has none.
  PlXLegendTarget* addLegendTarget(const XMLCh* id, PlXBaseElement& target);
  std::vector<PlXLegendTarget*> getLegendTargets() const { return children<PlXLegendTarget>(); }
};

// What a legend explains: an aesthetic, or a whole element.
class CHARTXML_API PlXLegendTarget : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_legendTarget[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXBaseElement* getTarget() const { return link<PlXBaseElement>(u"target"); }
  void setTarget(PlXBaseElement& target) { setLink(u"target", target); }
};

// What a viewer shows when the reader points at a target.
class CHARTXML_API PlXPopup : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_popup[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXBaseElement* getTarget() const { return link<PlXBaseElement>(u"target"); }
  void setTarget(PlXBaseElement& target) { setLink(u"target", target); }
  // Lines of text, in which "$[token]$" stands for a value: "Sales = $[1]$".
  const XMLCh* getTokenTemplate() const { return text(u"tokenTemplate"); }
  void setTokenTemplate(const XMLCh* text) { setText(u"tokenTemplate", text); }
  PlXTokenMapping* addTokenMapping() { return add<PlXTokenMapping>(); }
  std::vector<PlXTokenMapping*> getTokenMappings() const { return children<PlXTokenMapping>(); }
};

// The variable, under a statistic if there is one, whose value a popup shows for a token.
class CHARTXML_API PlXTokenMapping : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_tokenMapping[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  // The token without the signs around it: "1".
  const XMLCh* getValueToken() const { return text(u"valueToken"); }
  void setValueToken(const XMLCh* token) { setText(u"valueToken", token); }
  CTVariableType* getVariable() const { return link<CTVariableType>(u"variable"); }
  void setVariable(CTVariableType& variable) { setLink(u"variable", variable); }
  PlXSummaryStatistic* addSummaryStatistic() { return add<PlXSummaryStatistic>(); }
  PlXSummaryStatistic* getSummaryStatistic() const { return child<PlXSummaryStatistic>(); }
};

#endif
