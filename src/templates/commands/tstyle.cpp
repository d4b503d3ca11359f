// setStyle type subtype id level, with style children: styles the parts of a kind, or without a
// type the style of that id. Which element is a histogram's bar, an error bar or a slice, a chart
// doesn't say; it is told by statistics, symbols, ids and positions. A style's `number` is the
// 0-based position of the graph it is for; a single one without a number is for all. With the kinds
// of texts all style children apply, whatever their number. Parts get the styles, axes and labels
// that they lack.
#include <algorithm>
#include <map>
#include <optional>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "chartbase.h"
#include "commands.h"
#include "domwalk.h"
#include "objectsbytag.h"
#include "plxaesthetics.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxfacets.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;

namespace {

using Painting = BaseTemplate::StyleImport::Painting;
using Styles = std::vector<PlXStyle*>;

// ---- the styles of the command
using NumberedStyles = std::map<long, const DOMElement*>;

// Of several with the same number the last counts. A negative one is no graph's.
NumberedStyles numberedStyles(const BaseTemplate& base, const DOMElement& command) {
  NumberedStyles styles;
  templatexml::forDescendants(&command, PlXUni::_style, [&](const DOMElement* element) {
    const long number = stated::selection(base, element, PlXUni::_number);
    if (number >= 0) styles[number] = element;
  });
  return styles;
}

const DOMElement* styleForGraph(const NumberedStyles& styles, long index) {
  if (styles.size() == 1 && styles.begin()->first == 0) index = 0;
  const auto found = styles.find(index);
  return found == styles.end() ? nullptr : found->second;
}

// ---- a style by its id
// Looked for among the chart's own styles and those that hang below them: cycles may hold copies of
// the same id.
PlXStyle* styleOfId(const PlXVisualization& target, const ChartString& id) {
  PlXStyle* found = nullptr;
  if (id.empty()) return found;
  for (const PlXStyle* top : target.getStyles()) {
    walkElements(top->getImplementation(), [&](DOMElement* element) {
      auto* style = found ? nullptr : dynamic_cast<PlXStyle*>(target.objectOf(element));
      if (style && id.equals(style->getId())) found = style;
      return style && !found;
    });
  }
  return found;
}

// ---- elements
struct Kind {
  ChartString type;
  ChartString subtype;
};

// What the rules ask of a graph.
struct GraphFacts {
  bool isPolar;
  bool isClustered;
  bool hasZ;
};

struct Match {
  bool isMeant = false;
  // A slice of a pie: its style has a width and no size of its own.
  bool isSlice = false;
  // A bar without statistics, which shows patterns on white.
  bool isPlainBar = false;
};

// True for what procedures draw on top of their charts.
bool isAnnotation(const CTElementType& element) {
  // "uide" for a guide in upper or lower case.
  static constexpr const XMLCh* parts[] = {u"AIM",  u"biplot", u"centroid", u"control",
                                           u"uide", u"series", u"survival", u"triplot"};
  const ChartString id(element.getId());
  return std::ranges::any_of(parts, [&](const XMLCh* part) { return id.ContainsString(part); });
}

bool isBar(const PlXInterval& interval, const Kind& kind, const GraphFacts& graph) {
  if (!kind.type.equals(PlXUni::_bar) || graph.isPolar) return false;
  const bool wantsClustered = kind.subtype.equals(BaseTemplate::_clustered);
  if (graph.isClustered) return wantsClustered;
  return !wantsClustered && interval.getPositionModifier() != CTElementType::positionModifier_dodge;
}

// The order of the rules counts: each is for what the ones before have left.
Match matchInterval(const BaseTemplate& base, const PlXInterval& interval, const Kind& kind,
                    const GraphFacts& graph) {
  const ChartString& type = kind.type;
  const PlXStyle* style = interval.getStyle();
  const ChartString symbol = style ? style->GetAttribute(PlXUni::_symbol) : nullptr;
  const bool isDropline = type.equals(BaseTemplate::_dropline);
  const bool isErrorbar = type.equals(BaseTemplate::_errorbar);
  if (symbol.equals(PlXUni::_line)) return {.isMeant = isDropline || isErrorbar};
  if (symbol.equals(PlXUni::_ibeam)) return {.isMeant = isErrorbar};

  const bool isMeantBar = isBar(interval, kind, graph);
  const ChartString id(interval.getId());
  if (id.ContainsString(ChartBase::_dropdownline)) return {.isMeant = isDropline || isMeantBar};
  if (id.ContainsString(ChartBase::_errorbar)) return {.isMeant = isErrorbar || isMeantBar};

  const bool hasSummary = !interval.getSummaryStatistics().empty();
  if (hasSummary && !interval.getBinStatistics().empty()) {
    return {.isMeant = type.equals(u"histogram") || type.equals(u"population")};
  }
  if (graph.isPolar) {
    const bool isPie = type.equals(BaseTemplate::_pie);
    return {.isMeant = isPie, .isSlice = isPie};
  }
  if (hasSummary && type.equals(PlXUni::_range)) {
    return {.isMeant = symbol.equals(PlXUni::_square) && base.isIntervalRangeElement(interval)};
  }
  return {.isMeant = isMeantBar, .isPlainBar = !hasSummary && type.equals(PlXUni::_bar)};
}

template <class T>
void append(std::vector<CTElementType*>& all, const std::vector<T*>& some) {
  all.insert(all.end(), some.begin(), some.end());
}

// Those of the classes that the kind may mean.
std::vector<CTElementType*> candidates(const PlXGraph& graph, const Kind& kind) {
  std::vector<CTElementType*> elements;
  if (kind.type.equals(BaseTemplate::_scatter)) {
    append(elements, graph.getPoints());
  } else if (kind.type.equals(PlXUni::_line)) {
    append(elements, graph.getLines());
    append(elements, graph.getEdges());
    append(elements, graph.getPaths());
  } else if (kind.type.equals(PlXUni::_area)) {
    append(elements, graph.getAreas());
  } else if (kind.type.equals(PlXUni::_schema)) {
    append(elements, graph.getSchemas());
  } else {
    append(elements, graph.getIntervals());
  }
  return elements;
}

// For a candidate of the kind.
Match match(const BaseTemplate& base, const CTElementType& element, const Kind& kind,
            const GraphFacts& graph) {
  if (const auto* interval = dynamic_cast<const PlXInterval*>(&element)) {
    return matchInterval(base, *interval, kind, graph);
  }
  if (kind.type.equals(BaseTemplate::_scatter)) {
    const bool isClustered = kind.subtype.equals(BaseTemplate::_clustered);
    return {.isMeant = isClustered || element.getBinStatistics().empty()};
  }
  if (kind.type.equals(PlXUni::_line)) {
    return {.isMeant = kind.subtype.equals(u"3D") == graph.hasZ};
  }
  return {.isMeant = true};
}

// The style of the element or, for a box plot, of the part that the subtype names.
PlXStyle* styleOf(BaseTemplate& base, CTElementType& element, const Kind& kind) {
  struct Part {
    const XMLCh* name;
    PlXStyle* (PlXSchema::*get)() const;
    void (PlXSchema::*set)(PlXStyle&);
  };
  static constexpr Part parts[] = {
      {u"medianStyle", &PlXSchema::getMedianStyle, &PlXSchema::setMedianStyle},
      {u"fenceStyle", &PlXSchema::getFenceStyle, &PlXSchema::setFenceStyle},
      {u"hingeStyle", &PlXSchema::getHingeStyle, &PlXSchema::setHingeStyle},
      {u"outlierStyle", &PlXSchema::getOutlierStyle, &PlXSchema::setOutlierStyle},
      {u"extremeStyle", &PlXSchema::getExtremeStyle, &PlXSchema::setExtremeStyle},
  };
  if (auto* schema = dynamic_cast<PlXSchema*>(&element)) {
    for (const Part& part : parts) {
      if (kind.subtype.equals(part.name)) return &base.ensuredStyle(*schema, part.get, part.set);
    }
  }
  return &base.styleOf(element);
}

void whitenPatterns(const PlXInterval& interval) {
  PlXStyle* style = interval.getStyle();
  if (!style || style->isColorPresent()) return;
  for (const PlXStyleBy* styleBy : interval.getStyleBys()) {
    if (!ChartString(styleBy->getId()).ContainsString(PlXUni::_pattern)) continue;
    style->setColor(PlXStyle::_white);
    return;
  }
}

void styleElements(BaseTemplate& base, const PlXGraph& graph, const Kind& kind,
                   const DOMElement& style) {
  const std::vector<CTElementType*> elements = candidates(graph, kind);
  if (elements.empty()) return;
  const GraphFacts facts{base.isGraphPolar(graph), base.isGraphClustered(graph),
                         !base.getDimensionsByRole(graph, PlXUni::_z).empty()};
  const ChartString coordinate =
      stated::text(base, &style, PlXUni::_coordinate, stated::Type::Integer);
  std::optional<BaseTemplate::StyleImport> import;
  for (CTElementType* element : elements) {
    if (!base.doesCoordinateMatch(*element, coordinate) || isAnnotation(*element)) continue;
    // By its style as it is now: one before may have changed it, where they share one.
    const Match found = match(base, *element, kind, facts);
    if (found.isMeant) {
      if (!import) {
        // Of this kind all are slices or none.
        import.emplace(base, &style, found.isSlice ? Painting::Slices : Painting::Anything);
      }
      import->onto(*styleOf(base, *element, kind));
    }
    if (found.isPlainBar) whitenPatterns(static_cast<const PlXInterval&>(*element));
  }
}

// ---- texts and their frames
// The role whose word the subtype holds; null for none.
const XMLCh* roleIn(const ChartString& subtype, const XMLCh* x, const XMLCh* y, const XMLCh* z) {
  if (subtype.ContainsString(x)) return PlXUni::_x;
  if (subtype.ContainsString(y)) return PlXUni::_y;
  return subtype.ContainsString(z) ? PlXUni::_z : nullptr;
}

// The first answer of `take(axes)` for the axes of a dimension of the role; null when there is
// none.
template <class Take>
auto firstOfAxes(const BaseTemplate& base, const PlXVisualization& target, const XMLCh* role,
                 Take take) -> decltype(take({})) {
  for (const PlXGraph* graph : target.getGraphs()) {
    for (const PlXDimension* dimension : base.getDimensionsByRole(*graph, role)) {
      const std::vector<PlXAxis*> axes = dimension->getAxiss();
      if (auto* found = axes.empty() ? nullptr : take(axes)) return found;
    }
  }
  return nullptr;
}

// The first answer of `take(frame)` for what the chart's extensions name so; null when there is
// none.
template <class Take>
auto firstOfExtensions(const PlXVisualization& target, const ChartString& name, Take take)
    -> decltype(take(nullptr)) {
  for (const PlXExtension* extension :
       objectsByTag<PlXExtension>(target, PlXExtension::_UTF_extension)) {
    const XMLCh* id = extension->getAttribute(name.xc_str());
    if (auto* found = take(target.objectOf(target.getElementById(id)))) return found;
  }
  return nullptr;
}

PlXLabel* labelOf(PlXBaseElement* frame) {
  if (const auto* labelFrame = dynamic_cast<PlXLabelFrame*>(frame)) return labelFrame->getLabel();
  const auto* legend = dynamic_cast<PlXLegend*>(frame);
  return legend ? legend->getLabel() : nullptr;
}

PlXLabel* findLabel(const BaseTemplate& base, const PlXVisualization& target,
                    const ChartString& subtype) {
  const XMLCh* role = roleIn(subtype, BaseTemplate::_xaxis_title, BaseTemplate::_yaxis_title,
                             BaseTemplate::_zaxis_title);
  const bool wantsSecond = subtype.ContainsString(u"2");
  PlXLabel* title = nullptr;
  if (role) {
    title = firstOfAxes(base, target, role, [&](const std::vector<PlXAxis*>& axes) {
      return axes[wantsSecond && axes.size() > 1 ? 1 : 0]->getLabel();
    });
  }
  return title ? title : firstOfExtensions(target, subtype, labelOf);
}

void addFrameStyle(BaseTemplate& base, const PlXVisualization& target, const ChartString& subtype,
                   Styles& styles) {
  PlXBaseElement* frame =
      firstOfExtensions(target, subtype, [](PlXBaseElement* object) -> PlXBaseElement* {
        if (dynamic_cast<PlXLabelFrame*>(object)) return object;
        return dynamic_cast<PlXLegend*>(object);
      });
  if (auto* labelFrame = dynamic_cast<PlXLabelFrame*>(frame)) {
    styles.push_back(&base.ensuredStyle(*labelFrame, &PlXLabelFrame::getStyle,
                                        &PlXLabelFrame::setStyle, labelFrame->getId()));
  } else if (auto* legend = dynamic_cast<PlXLegend*>(frame)) {
    styles.push_back(
        &base.ensuredStyle(*legend, &PlXLegend::getStyle, &PlXLegend::setStyle, legend->getId()));
  }
}

void addLegendStyle(BaseTemplate& base, const PlXVisualization& target, const ChartString& subtype,
                    bool isFrame, Styles& styles) {
  const PlXExtensionVis* extension = target.getExtension();
  if (!extension) return;
  PlXLegend* legend =
      subtype.ContainsString(u"legend1") ? extension->getLegend1() : extension->getLegend2();
  if (!legend) return;
  ChartString idBase(legend->getId());
  if (isFrame) {
    styles.push_back(&base.ensuredStyle(*legend, &PlXLegend::getTickFrameStyle,
                                        &PlXLegend::setTickFrameStyle, idBase.xc_str()));
  } else {
    styles.push_back(&base.ensuredStyle(*legend, &PlXLegend::getTickTextStyle,
                                        &PlXLegend::setTickTextStyle,
                                        idBase.append(u"tickTextStyle").xc_str()));
  }
}

PlXStyle* labelStyle(BaseTemplate& base, PlXLabel& label, bool isFrame, const ChartString& idBase) {
  if (!isFrame) {
    return &base.ensuredStyle(label, &CTLabelType::getStyle, &CTLabelType::setStyle,
                              idBase.xc_str());
  }
  return &base.ensuredStyle(label, &CTLabelType::getTextFrameStyle, &CTLabelType::setTextFrameStyle,
                            idBase.xc_str());
}

void addTickStyle(BaseTemplate& base, const PlXVisualization& target, const ChartString& subtype,
                  bool isFrame, Styles& styles) {
  const XMLCh* role = roleIn(subtype, u"xaxis", u"yaxis", u"zaxis");
  if (!role) return;
  PlXMajorTicks* ticks = firstOfAxes(base, target, role, [](const std::vector<PlXAxis*>& axes) {
    return axes.front()->getMajorTicks();
  });
  if (!ticks) return;
  PlXStyle* style = isFrame ? ticks->getTickFrameStyle() : ticks->getStyle();
  if (!style) {
    // A frame without a style gets none; the labels get the new one.
    const ChartString id = ChartString(ticks->getId()).append(ChartBase::_default_style);
    style = base.addStyle(*ticks, id.xc_str());
    ticks->setStyle(*style);
  }
  styles.push_back(style);
}

PlXAxis& axisOf(PlXFacetLevel& level) {
  const std::vector<PlXAxis*> axes = level.getAxiss();
  return axes.empty() ? *level.addAxis() : *axes.front();
}

// A level below 1 stands for all; others are 0-based positions.
void addPanelTickStyles(BaseTemplate& base, const PlXVisualization& target,
                        std::optional<long> level, bool isFrame, Styles& styles) {
  const long wanted = level.value_or(0);
  const auto levels = objectsByTag<PlXFacetLevel>(target, PlXFacetLevel::_UTF_facetLevel);
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (wanted >= 1 && static_cast<std::size_t>(wanted) != i) continue;
    PlXAxis& axis = axisOf(*levels[i]);
    base.ensuredStyle(axis, &PlXAxis::getStyle, &PlXAxis::setStyle, PlXUni::_axis)
        .setColor(PlXStyle::_transparent);
    PlXMajorTicks* ticks = axis.getMajorTicks();
    if (!ticks) ticks = axis.addMajorTicks();
    PlXStyle* style = isFrame ? ticks->getTickFrameStyle() : ticks->getStyle();
    if (style) styles.push_back(style);
  }
}

// Here the level is the one that the facet level states.
void addPanelTitleStyles(BaseTemplate& base, const PlXVisualization& target,
                         std::optional<long> level, bool isFrame, Styles& styles) {
  for (PlXFacetLevel* each : objectsByTag<PlXFacetLevel>(target, PlXFacetLevel::_UTF_facetLevel)) {
    if (level && *level != each->getLevel()) continue;
    PlXAxis& axis = axisOf(*each);
    PlXLabel* label = axis.getLabel();
    if (!label) {
      const ChartString idBase = ChartString(PlXUni::_label).append(each->getId());
      label = axis.addLabel(base.CreateUniqueId(idBase).xc_str());
    }
    const ChartString idBase = ChartString(PlXUni::_style).append(label->getId());
    styles.push_back(labelStyle(base, *label, isFrame, idBase));
  }
}

// The styles of the texts of a kind, or of their frames.
Styles textStyles(BaseTemplate& base, const PlXVisualization& target, const Kind& kind,
                  std::optional<long> level) {
  Styles styles;
  const ChartString& subtype = kind.subtype;
  if (kind.type.equals(PlXUni::_labelFrame)) {
    addFrameStyle(base, target, subtype, styles);
    return styles;
  }
  const bool isFrame = kind.type.equals(BaseTemplate::_textFrame);
  // A legend's entries are styled besides the label of the same subtype.
  if (subtype.ContainsString(PlXUni::_legend)) {
    addLegendStyle(base, target, subtype, isFrame, styles);
  }
  const bool isLabel = subtype.ContainsString(PlXUni::_label);
  const bool isPanel = subtype.ContainsString(u"panel");
  if (PlXLabel* label = findLabel(base, target, subtype)) {
    styles.push_back(labelStyle(base, *label, isFrame, PlXUni::_text));
  } else if (isLabel && subtype.ContainsString(PlXUni::_axis)) {
    addTickStyle(base, target, subtype, isFrame, styles);
  } else if (isLabel && isPanel) {
    addPanelTickStyles(base, target, level, isFrame, styles);
  } else if (isPanel && subtype.ContainsString(u"title")) {
    addPanelTitleStyles(base, target, level, isFrame, styles);
  }
  return styles;
}

std::vector<const DOMElement*> directStyles(const DOMElement& command) {
  std::vector<const DOMElement*> styles;
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    if (XMLString::equals(child->getTagName(), PlXUni::_style)) styles.push_back(child);
  }
  return styles;
}

}  // namespace

bool TStyle::ProcessCommand() {
  if (!command) return false;
  const Kind kind{attribute(PlXUni::_type), attribute(u"subtype")};
  const NumberedStyles styles = numberedStyles(*this, *command);
  if (kind.type.empty()) {
    PlXStyle* style = styleOfId(target, attribute(PlXUni::_id));
    const auto first = styles.find(0);
    if (!style) because("there is no style", attribute(PlXUni::_id));
    if (!style || first == styles.end()) return false;
    importStyle(first->second, *style);
    return true;
  }
  if (kind.type.equals(PlXUni::_text) || kind.type.equals(_textFrame) ||
      kind.type.equals(PlXUni::_labelFrame)) {
    const std::vector<const DOMElement*> elements = directStyles(*command);
    if (elements.empty()) return true;
    const Styles found =
        textStyles(*this, target, kind, stated::integer(*this, command, PlXUni::_level));
    for (const DOMElement* element : elements) {
      const StyleImport import(*this, element);
      for (PlXStyle* style : found) import.onto(*style);
    }
    return true;
  }
  const std::vector<PlXGraph*> graphs = target.getGraphs();
  for (std::size_t i = 0; i < graphs.size(); ++i) {
    const DOMElement* style = styleForGraph(styles, static_cast<long>(i));
    if (style) styleElements(*this, *graphs[i], kind, *style);
  }
  return true;
}
