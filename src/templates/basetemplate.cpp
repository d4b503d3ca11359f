#include "basetemplate.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "chartbase.h"
#include "commandlistener.h"
#include "dialect.h"
#include "domwalk.h"
#include "findings.h"
#include "modelstore.h"
#include "objectsbytag.h"
#include "plxaesthetics.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabeling.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "statedvalues.h"

using namespace xercesc;

#define CONSTANT(name, text) const XMLCh BaseTemplate::name[] = u"" text;
#include "basetemplate.inc"
#undef CONSTANT

namespace {

template <class Base, class T>
void append(std::vector<Base*>& all, const std::vector<T*>& some) {
  all.insert(all.end(), some.begin(), some.end());
}

// The coordinate that an element has for a role; null for roles that are none of x, y and z.
CTCoordinate* coordinateOf(const CTElementType& element, const ChartString& role) {
  if (role.equals(PlXUni::_x)) return element.getX();
  if (role.equals(PlXUni::_y)) return element.getY();
  if (role.equals(PlXUni::_z)) return element.getZ();
  return nullptr;
}

CTVariableType* variableOf(const CTCoordinate* coordinate) {
  return coordinate ? coordinate->getVariable() : nullptr;
}

// The role of a dimension at a 1-based position in the block of a 0-based index.
const XMLCh* roleAt(unsigned position, std::size_t block) {
  switch (position) {
    case 1:
      return PlXUni::_x;
    case 2:
      return block == 0 ? PlXUni::_y : block == 1 ? BaseTemplate::_y2 : nullptr;
    case 3:
      return PlXUni::_z;
    default:
      return nullptr;
  }
}

// True when `block` is the one at a 0-based index among its parent's coordinates.
bool isBlockAt(const DOMNode& block, unsigned long index) {
  const DOMNode* parent = block.getParentNode();
  if (!parent) return false;
  unsigned long position = 0;
  for (const DOMNode* node = parent->getFirstChild(); node; node = node->getNextSibling()) {
    if (!XMLString::equals(dialect::localName(node), PlXUni::_coordinates)) continue;
    if (position > index) return false;
    if (node == &block) return position == index;
    ++position;
  }
  return false;
}

template <class Carrier>
PlXCategoricalDomain* domainOf(const Carrier& carrier) {
  if (auto* domain = dynamic_cast<PlXCategoricalDomain*>(carrier.getDomain())) return domain;
  const CTVariableType* variable = carrier.getVariable();
  return variable ? variable->getCategoricalDomain() : nullptr;
}

template <class Carrier>
PlXCategoricalDomain* firstDomain(const std::vector<Carrier*>& carriers) {
  for (const Carrier* carrier : carriers) {
    if (PlXCategoricalDomain* domain = domainOf(*carrier)) return domain;
  }
  return nullptr;
}

// The domain behind what a legend shows of an element. Labelings stand behind the transparencies,
// before the splits; visibilities show in no legend.
PlXCategoricalDomain* legendDomain(const CTElementType& element) {
  std::vector<CTAesthetic*> first;
  append(first, element.getStyleBys());
  append(first, element.getDashs());
  append(first, element.getShapes());
  append(first, element.getSizes());
  append(first, element.getRotations());
  append(first, element.getColors());
  append(first, element.getOffsets());
  append(first, element.getPatterns());
  append(first, element.getTransparencys());
  if (PlXCategoricalDomain* domain = firstDomain(first)) return domain;
  if (PlXCategoricalDomain* domain = firstDomain(element.getLabelings())) return domain;
  if (PlXCategoricalDomain* domain = firstDomain(element.getSplits())) return domain;
  return firstDomain(element.getColorComponents());
}

// The raw value behind a label in a variable's own format.
ChartString rawValue(const CTVariableType& variable, const ChartString& label) {
  const std::vector<PlXFormat*> formats = variable.getFormats();
  if (formats.empty()) return {};
  for (const PlXRelabel* relabel : formats.front()->getRelabels()) {
    if (label.equals(relabel->getTo())) return relabel->getFrom();
  }
  return {};
}

std::vector<PlXDimension*> dimensionsOf(const PlXGraph& graph, const ChartString& role) {
  std::vector<PlXDimension*> dimensions;
  const std::vector<PlXCoordinates*> blocks = graph.getCoordinatess();
  for (std::size_t block = 0; block < blocks.size(); ++block) {
    unsigned position = 0;
    DOMElement* child = firstElement(blocks[block]->getImplementation());
    for (; child; child = nextElement(child)) {
      const XMLCh* tag = dialect::localName(child);
      const bool isDimension = XMLString::equals(tag, PlXDimension::_UTF_dimension);
      // A reference takes a position but is no dimension of this block.
      if (!isDimension && !XMLString::equals(tag, PlXDimensionReference::_dimensionReference)) {
        continue;
      }
      const XMLCh* childRole = roleAt(++position, block);
      if (!isDimension || !childRole || !role.equals(childRole)) continue;
      if (auto* dimension = dynamic_cast<PlXDimension*>(graph.objectOf(child))) {
        dimensions.push_back(dimension);
      }
    }
  }
  return dimensions;
}

std::string withWord(const char* text, const ChartString& word) {
  return std::string(text) + " '" + word.toUTF8() + '\'';
}

}  // namespace

BaseTemplate::BaseTemplate(const PlXVisualization* source, PlXVisualization& target,
                           const DOMElement* command)
    : target(target), source(source), command(command) {}

BaseTemplate::BaseTemplate(const PlXVisualization* source, PlXVisualization& target)
    : BaseTemplate(source, target, nullptr) {}

BaseTemplate::~BaseTemplate() = default;

void BaseTemplate::keepFindings() {
  findings_ = std::make_unique<Findings>();
}

bool BaseTemplate::ProcessCommand() {
  return false;
}

void BaseTemplate::tell(const char* note, const ChartString& word) const {
  if (listener_) listener_->addNote(withWord(note, word));
}

void BaseTemplate::tell(const char* note) const {
  if (listener_) listener_->addNote(note);
}

void BaseTemplate::because(const char* reason, const ChartString& word) const {
  if (listener_) listener_->addReason(withWord(reason, word));
}

void BaseTemplate::because(const char* reason) const {
  if (listener_) listener_->addReason(reason);
}

void BaseTemplate::tellUnless(bool isFound, const char* note, const ChartString& word) const {
  if (listener_) listener_->addLook(withWord(note, word), true, isFound);
}

void BaseTemplate::becauseUnless(bool isFound, const char* reason, const ChartString& word) const {
  if (listener_) listener_->addLook(withWord(reason, word), false, isFound);
}

bool BaseTemplate::getBooleanAttribute(const DOMElement* element, const XMLCh* name,
                                       bool defaultValue) const {
  const XMLCh* text = element ? element->getAttribute(name) : nullptr;
  if (XMLString::equals(text, PlXUni::_true)) return true;
  return XMLString::equals(text, PlXUni::_false) ? false : defaultValue;
}

ChartString BaseTemplate::CreateUniqueId(const ChartString& base) const {
  const XMLCh* stem = base.empty() ? PlXUni::_id : base.xc_str();
  const bool isAsked = findings_ && !findings_->askedStems.emplace(stem).second;
  return ChartString(target.store().firstFreeId(stem, isAsked));
}

ChartString BaseTemplate::CreateUniqueId(const char* base) const {
  return CreateUniqueId(ChartString(base));
}

PlXStyle* BaseTemplate::addStyle(PlXBaseElement& element, const XMLCh* id) {
  if (findings_) findings_->users.restyled.push_back(&element);
  const bool hasId = id && *id;
  PlXStyle* known = hasId ? element.getStyleById(id) : nullptr;
  if (known) return known;
  // What isn't a style may have the id, in a damaged chart; ids stay unique all the same.
  const auto freeId = [&](const ChartString& wanted) {
    return target.doesIdExist(wanted.xc_str()) ? CreateUniqueId(wanted) : wanted;
  };
  ChartString containerId(ChartBase::_container);
  PlXStyle* container = element.getStyleById(containerId.xc_str());
  if (!container && target.doesIdExist(containerId.xc_str())) {
    container = element.getStyleById(containerId.append(u"1").xc_str());
  }
  if (!container) {
    containerId = freeId(containerId);
    container = element.getVisualization()->addStyle();
    container->setId(containerId.xc_str());
  }
  const ChartString styleId = hasId ? freeId(id) : CreateUniqueId(PlXUni::_style);
  PlXStyle* style = container->addStyle();
  style->setId(styleId.xc_str());
  return style;
}

PlXSmoothStatistic& BaseTemplate::smoothStatisticOf(CTElementType& element) {
  const std::vector<PlXSmoothStatistic*> statistics = element.getSmoothStatistics();
  return statistics.empty() ? *element.addSmoothStatistic() : *statistics.front();
}

PlXStyle& BaseTemplate::elementStyle(CTElementType& element) {
  if (auto* schema = dynamic_cast<PlXSchema*>(&element)) {
    return ensuredStyle(*schema, &PlXSchema::getHingeStyle, &PlXSchema::setHingeStyle);
  }
  return styleOf(element);
}

ChartString BaseTemplate::attribute(const XMLCh* name) const {
  return command ? command->getAttribute(name) : nullptr;
}

const PlXBaseElement* BaseTemplate::sourceObject(const PlXBaseElement& object) const {
  if (!source) return nullptr;
  DOMElement* element = source->getElementById(object.GetAttribute(PlXUni::_id));
  if (element) because("what the source chart states stays as it is");
  return source->objectOf(element);
}

std::vector<PlXGraph*> BaseTemplate::addressedGraphs() const {
  if (findings_ && findings_->graphs) return *findings_->graphs;
  std::vector<PlXGraph*> all = framesByTag<PlXGraph>(target, PlXUni::_graph);
  const long number = stated::selection(*this, command, PlXUni::_graph);
  if (number != 0) {
    const bool isThere = number > 0 && static_cast<std::size_t>(number) <= all.size();
    if (!isThere) tell("there is no graph", attribute(PlXUni::_graph));
    PlXGraph* one = isThere ? all[number - 1] : nullptr;
    all.assign(one ? 1 : 0, one);
  }
  if (findings_) findings_->graphs = all;
  return all;
}

unsigned BaseTemplate::getGraphs(std::vector<PlXGraph*>& graphs) const {
  const std::vector<PlXGraph*> addressed = addressedGraphs();
  append(graphs, addressed);
  return static_cast<unsigned>(addressed.size());
}

void BaseTemplate::getAllElements(const PlXGraph& graph, std::vector<CTElementType*>& elements) {
  static constexpr const XMLCh* kinds[] = {PlXPoint::_UTF_point,       PlXLine::_UTF_line,
                                           PlXEdge::_UTF_edge,         PlXPath::_UTF_path,
                                           PlXInterval::_UTF_interval, PlXArea::_UTF_area,
                                           PlXPolygon::_UTF_polygon,   PlXSchema::_UTF_schema};
  std::vector<std::pair<std::size_t, CTElementType*>> found;
  for (DOMElement* child = firstElement(graph.getImplementation()); child;
       child = nextElement(child)) {
    const XMLCh* tag = dialect::localName(child);
    const auto* kind = std::ranges::find_if(
        kinds, [&](const XMLCh* each) { return XMLString::equals(tag, each); });
    if (kind == std::end(kinds)) continue;
    // Its tag tells the class.
    if (PlXBaseElement* object = graph.objectOf(child)) {
      found.emplace_back(kind - kinds, static_cast<CTElementType*>(object));
    }
  }
  const auto kindOf = [](const auto& each) { return each.first; };
  if (!std::ranges::is_sorted(found, {}, kindOf)) std::ranges::stable_sort(found, {}, kindOf);
  for (const auto& [kind, element] : found) elements.push_back(element);
}

void BaseTemplate::getAllElementsByType(const XMLCh* tagName,
                                        std::vector<CTElementType*>& elements) const {
  append(elements, framesByTag<CTElementType>(target, tagName));
}

unsigned BaseTemplate::getIntervalElements(std::vector<PlXInterval*>& intervals, bool polar) const {
  for (const PlXGraph* graph : addressedGraphs()) {
    if (isGraphPolar(*graph) == polar) append(intervals, graph->getIntervals());
  }
  return static_cast<unsigned>(intervals.size());
}

std::vector<CTElementType*> BaseTemplate::getElementsWithSummaryStatistics(
    const PlXGraph& graph) const {
  std::vector<CTElementType*> elements;
  getAllElements(graph, elements);
  std::erase_if(elements, [](const CTElementType* element) {
    const std::vector<PlXSummaryStatistic*> statistics = element->getSummaryStatistics();
    if (statistics.empty()) return true;
    const auto method = statistics.front()->getMethod();
    return method != PlXSummaryStatistic::method_percentCount &&
           method != PlXSummaryStatistic::method_count;
  });
  return elements;
}

CTElementType* BaseTemplate::getFirstSPLOMElement(const PlXGraph& graph) const {
  const auto isQuotient = [](const CTCoordinate* coordinate) {
    const PlXExpressionVariable* variable =
        coordinate ? coordinate->getExpressionVariable() : nullptr;
    return variable && ChartString(variable->getExpression()).ContainsString(u"/");
  };
  std::vector<CTElementType*> elements;
  getAllElements(graph, elements);
  for (CTElementType* element : elements) {
    if (!isQuotient(element->getX()) || !isQuotient(element->getY())) continue;
    const PlXCoordinates* diagonal = graph.getCoordinates(1);
    if (!diagonal || element->getCoordinates() != diagonal) return element;
  }
  return nullptr;
}

std::vector<CTAesthetic*> BaseTemplate::getAesthetics(const CTElementType& element) const {
  std::vector<CTAesthetic*> aesthetics;
  append(aesthetics, element.getStyleBys());
  append(aesthetics, element.getDashs());
  append(aesthetics, element.getShapes());
  append(aesthetics, element.getSizes());
  append(aesthetics, element.getRotations());
  append(aesthetics, element.getColors());
  append(aesthetics, element.getOffsets());
  append(aesthetics, element.getPatterns());
  append(aesthetics, element.getTransparencys());
  append(aesthetics, element.getSplits());
  append(aesthetics, element.getColorComponents());
  append(aesthetics, element.getVisibilitys());
  return aesthetics;
}

std::vector<PlXDimension*> BaseTemplate::getDimensionsByRole(const PlXGraph& graph,
                                                             const ChartString& role) const {
  std::vector<PlXDimension*> dimensions = dimensionsOf(graph, role);
  if (!role.empty()) becauseUnless(!dimensions.empty(), "there is no dimension", role);
  return dimensions;
}

CTVariableType* BaseTemplate::clusterVariable(const PlXGraph& graph,
                                              const ChartString& role) const {
  for (const PlXDimension* dimension : dimensionsOf(graph, role)) {
    if (CTVariableType* variable = dimension->getClusterVariable()) return variable;
  }
  return nullptr;
}

CTVariableType* BaseTemplate::firstCluster() const {
  if (findings_ && findings_->firstCluster) return *findings_->firstCluster;
  const std::vector<PlXGraph*> graphs = addressedGraphs();
  CTVariableType* cluster = graphs.empty() ? nullptr : clusterVariable(*graphs.front(), PlXUni::_x);
  if (findings_) findings_->firstCluster = cluster;
  return cluster;
}

CTVariableType* BaseTemplate::getElementVariable(const CTElementType& element,
                                                 const ChartString& role) const {
  CTVariableType* cluster = role.equals(PlXUni::_x) ? firstCluster() : nullptr;
  return cluster ? cluster : variableOf(coordinateOf(element, role));
}

PlXCategoricalDomain* BaseTemplate::getCategoricalDomain(const PlXGraph& graph,
                                                         const ChartString& role,
                                                         const CTElementType* element) const {
  if (element && (role.equals(PlXUni::_x) || role.equals(PlXUni::_z))) {
    const CTVariableType* variable = variableOf(coordinateOf(*element, role));
    PlXCategoricalDomain* domain = variable ? variable->getCategoricalDomain() : nullptr;
    if (domain) return domain;
  }
  // No dimension has that role.
  if (role.equals(PlXUni::_legend)) return element ? legendDomain(*element) : nullptr;
  for (const PlXDimension* dimension : dimensionsOf(graph, role)) {
    if (auto* domain = dynamic_cast<PlXCategoricalDomain*>(dimension->getDomain())) return domain;
  }
  return nullptr;
}

ChartString BaseTemplate::getCategoryValue(const PlXGraph& graph, const XMLCh* role,
                                           const ChartString& label) const {
  const ChartString roleName(role);
  const CTVariableType* cluster =
      roleName.equals(PlXUni::_x) ? clusterVariable(graph, roleName) : nullptr;
  std::unordered_set<const CTVariableType*> looked;
  std::vector<CTElementType*> elements;
  getAllElements(graph, elements);
  for (const CTElementType* element : elements) {
    const CTVariableType* variable =
        cluster ? cluster : variableOf(coordinateOf(*element, roleName));
    if (!variable || !looked.insert(variable).second) continue;
    ChartString value = rawValue(*variable, label);
    if (value.empty()) continue;
    tellUnless(true, "no category has the label", label);
    return value;
  }
  tellUnless(false, "no category has the label", label);
  return {};
}

bool BaseTemplate::isGraphPolar(const PlXGraph& graph) const {
  for (const PlXCoordinates* block : graph.getCoordinatess()) {
    if (!block->getPolarTransforms().empty()) return true;
  }
  return false;
}

bool BaseTemplate::isGraphClustered(const PlXGraph& graph) const {
  return clusterVariable(graph, PlXUni::_x) || clusterVariable(graph, PlXUni::_z);
}

bool BaseTemplate::isChartTrue3D(const PlXGraph& graph) const {
  bool hasAxis = false;
  for (const PlXDimension* dimension : dimensionsOf(graph, PlXUni::_z)) {
    hasAxis = hasAxis || !dimension->getAxiss().empty();
  }
  if (!hasAxis) return false;
  std::vector<CTElementType*> elements;
  getAllElements(graph, elements);
  for (const CTElementType* element : elements) {
    if (element->getZ()) return true;
  }
  return false;
}

bool BaseTemplate::isRoleCategorical(const PlXGraph& graph, const ChartString& role) const {
  if (clusterVariable(graph, role)) return true;
  // Nothing but the elements of a graph has coordinates, as children.
  for (DOMElement* child = firstElement(graph.getImplementation()); child;
       child = nextElement(child)) {
    for (DOMElement* inner = firstElement(child); inner; inner = nextElement(inner)) {
      if (!role.equals(dialect::localName(inner))) continue;
      const CTVariableType* variable =
          variableOf(dynamic_cast<const CTCoordinate*>(graph.objectOf(inner)));
      if (variable && variable->getCategorical()) return true;
    }
  }
  return false;
}

bool BaseTemplate::isAxisDerived(const PlXAxis& axis) const {
  return axis.getTransform() != PlXAxis::transform_none;
}

bool BaseTemplate::isIntervalRangeElement(const CTElementType& element) const {
  if (!dynamic_cast<const PlXInterval*>(&element)) return false;
  for (const PlXSummaryStatistic* statistic : element.getSummaryStatistics()) {
    if (statistic->getMethod() == PlXSummaryStatistic::method_range) return true;
  }
  return false;
}

bool BaseTemplate::doesCoordinateMatch(const CTElementType& element,
                                       const ChartString& coordinate) const {
  const long index = coordinate.convertToSignedInteger();
  const PlXCoordinates* block = element.getCoordinates();
  return block && index >= 0 ? isBlockAt(*block->getImplementation(), index) : index == 0;
}

bool BaseTemplate::doesCoordinateMatch(const PlXBaseElement& element,
                                       const ChartString& role) const {
  DOMNode* node = element.getImplementation();
  while (node && !XMLString::equals(dialect::localName(node), PlXUni::_coordinates)) {
    node = node->getParentNode();
  }
  return node && isBlockAt(*node, role.equals(_y2) ? 1 : 0);
}

void BaseTemplate::addZDimension(const PlXGraph& graph) {
  for (PlXCoordinates* block : graph.getCoordinatess()) {
    if (block->getDimensions().size() + block->getDimensionReferences().size() == 2) {
      block->addDimension();
    }
  }
}
