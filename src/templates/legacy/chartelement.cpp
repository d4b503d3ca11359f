#include "chartelement.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "chartbase.h"
#include "domwalk.h"
#include "elementindex.h"
#include "plxuni.h"

using namespace xercesc;

const XMLCh ChartDimension::_lowerMapping[] = u"lowerMapping";
const XMLCh ChartDimension::_upperMapping[] = u"upperMapping";
const XMLCh ChartDimension::_sameRatio[] = u"sameRatio";

namespace {

constexpr XMLCh facetVariable[] = u"facetvariable";

bool isEmpty(const XMLCh* text) {
  return !text || !*text;
}

bool is(const XMLCh* text, const XMLCh* word) {
  return XMLString::equals(text, word);
}

bool hasTag(const DOMNode* node, const XMLCh* tag) {
  return node && is(node->getNodeName(), tag);
}

// The first element below a node of that tag for which `test` holds.
template <class Test>
DOMElement* search(DOMNode* node, const XMLCh* tag, Test test) {
  DOMElement* found = nullptr;
  walkElements(node, [&](DOMElement* element) {
    if (!found && element != node && hasTag(element, tag) && test(*element)) found = element;
    return !found;
  });
  return found;
}

DOMElement* firstElementBelow(DOMNode* node, const XMLCh* tag) {
  if (!node || isEmpty(tag)) return nullptr;
  if (const ElementIndex* index = ElementIndex::of(*node)) {
    const ElementIndex::Elements found = index->below(node, tag);
    return found.empty() ? nullptr : found.front();
  }
  return search(node, tag, [](const DOMElement&) { return true; });
}

bool hasSeveral(DOMNode* node, const XMLCh* tag) {
  int count = 0;
  search(node, tag, [&](const DOMElement&) { return ++count > 1; });
  return count > 1;
}

}  // namespace

// ---- ChartElement

DOMNode* ChartElement::getNode() const {
  return node;
}

const XMLCh* ChartElement::getType() const {
  return getAttributeValue(PlXUni::_type);
}

const XMLCh* ChartElement::getStyle() const {
  return getAttributeValue(PlXUni::_style);
}

const XMLCh* ChartElement::getName() const {
  return getAttributeValue(PlXUni::_name);
}

DOMElement* ChartElement::getGraph() const {
  const DOMDocument* document = node ? node->getOwnerDocument() : nullptr;
  return document ? document->getDocumentElement() : nullptr;
}

DOMNode* ChartElement::getParent() const {
  return node ? node->getParentNode() : nullptr;
}

bool ChartElement::isCategorical() const {
  return is(getAttributeValue(PlXUni::_categorical), PlXUni::_true);
}

DOMElement* ChartElement::getChildWithAttribute(const XMLCh* name, const XMLCh* value) const {
  if (!node || !name) return nullptr;
  DOMElement* child = firstElement(node);
  while (child && !is(child->getAttribute(name), value)) child = nextElement(child);
  return child;
}

DOMElement* ChartElement::getOffspringWithAttribute(const XMLCh* tag, const XMLCh* name,
                                                    const XMLCh* value) const {
  if (!node || isEmpty(tag) || isEmpty(name) || isEmpty(value)) return nullptr;
  if (const ElementIndex* index = ElementIndex::of(*node)) {
    return index->firstBelow(node, tag, name, value);
  }
  return search(node, tag,
                [&](const DOMElement& element) { return is(element.getAttribute(name), value); });
}

DOMElement* ChartElement::getElementWithAttribute(const XMLCh* tag, const XMLCh* name,
                                                  const XMLCh* value) const {
  return ChartElement(getGraph()).getOffspringWithAttribute(tag, name, value);
}

DOMElement* ChartElement::getFirstElementByTagName(const XMLCh* tag) const {
  return firstElementBelow(getGraph(), tag);
}

DOMElement* ChartElement::getFirstChildByTagName(const XMLCh* tag) const {
  return ChartBase::getChildByTagName(node, tag);
}

void ChartElement::setNode(DOMNode* other) {
  node = other;
}

void ChartElement::setNode(const ChartElement& other) {
  node = other.node;
}

bool ChartElement::isNull() const {
  return !node;
}

const XMLCh* ChartElement::getAttributeValue(const XMLCh* name) const {
  if (!node || !name || node->getNodeType() != DOMNode::ELEMENT_NODE) return nullptr;
  return static_cast<const DOMElement*>(node)->getAttribute(name);
}

DOMElement* ChartElement::firstBelow(const XMLCh* tag) const {
  return firstElementBelow(node, tag);
}

// ---- ChartGraph

ChartVariable ChartGraph::getVariable(const XMLCh* role) {
  const ChartElement aesthetic(getFirstElementByTagName(role));
  return ChartVariable(getElementWithAttribute(PlXUni::_variable, PlXUni::_id,
                                               aesthetic.getAttributeValue(PlXUni::_variable)));
}

int ChartGraph::getChartType() const {
  if (!node) return 0;
  const auto hasMethod = [&](const XMLCh* method) {
    return getOffspringWithAttribute(u"statistic", PlXUni::_method, method) != nullptr;
  };
  if (hasMethod(u"histogram")) return 3;
  if (hasMethod(PlXUni::_cumulativeSum)) return 5;
  if (hasMethod(u"tukeyInnerFence")) return 1;
  if (hasMethod(PlXUni::_range)) return 2;
  if (firstBelow(PlXUni::_theta)) return 6;
  if (!getOffspringWithAttribute(PlXUni::_element, PlXUni::_type, PlXUni::_interval)) return 7;
  return hasSeveral(node, PlXUni::_element) ? 4 : 0;
}

bool ChartGraph::isCategorical(const XMLCh* id) const {
  DOMElement* decider = getElementWithAttribute(PlXUni::_domain, PlXUni::_id, id);
  if (!decider) decider = getElementWithAttribute(PlXUni::_variable, PlXUni::_id, id);
  return ChartElement(decider).isCategorical();
}

DOMElement* ChartGraph::getFirstElementByTagName(const XMLCh* tag) const {
  return firstBelow(tag);
}

// ---- ChartFrame

const XMLCh* ChartFrame::getFacetRole() const {
  return ChartElement(firstBelow(facetVariable)).getAttributeValue(PlXUni::_role);
}

ChartElement ChartFrame::getPositionAesthetic(const XMLCh* role) const {
  return ChartElement(firstBelow(role));
}

const XMLCh* ChartFrame::getRoleVariableId(const XMLCh* role) const {
  return getPositionAesthetic(role).getAttributeValue(PlXUni::_variable);
}

ChartDimension ChartFrame::getFacetDimension() const {
  return ChartDimension(
      getOffspringWithAttribute(PlXUni::_dimension, PlXUni::_role, getFacetRole()));
}

bool ChartFrame::isFacetCategorical() const {
  return ChartGraph(getGraph()).isCategorical(getRoleVariableId(getFacetRole()));
}

// ---- ChartDimension

ChartElement ChartDimension::getPositionAesthetic() const {
  return ChartFrame(getParent()).getPositionAesthetic(getAttributeValue(PlXUni::_role));
}

bool ChartDimension::isCategorical() const {
  const ChartGraph graph(getGraph());
  const auto* element = static_cast<const DOMElement*>(node);
  const XMLCh* domain = getAttributeValue(PlXUni::_domain);
  if (!domain || !element->hasAttribute(PlXUni::_domain)) return false;
  if (*domain) return graph.isCategorical(domain);
  const XMLCh* role = getAttributeValue(PlXUni::_role);
  return graph.isCategorical(ChartFrame(getParent()).getRoleVariableId(role));
}

// ---- ChartFacetLabeling

ChartElement ChartFacetLabeling::getPositionAesthetic() const {
  const ChartFrame frame(getParent());
  return frame.getPositionAesthetic(frame.getFacetRole());
}

ChartDimension ChartFacetLabeling::getDimension() const {
  return ChartFrame(getParent()).getFacetDimension();
}

bool ChartFacetLabeling::isCategorical() const {
  return ChartFrame(getParent()).isFacetCategorical();
}

// ---- ChartFacetLabel

ChartElement ChartFacetLabel::getPositionAesthetic() const {
  return ChartFacetLabeling(getParent()).getPositionAesthetic();
}

ChartDimension ChartFacetLabel::getDimension() const {
  return ChartFacetLabeling(getParent()).getDimension();
}

bool ChartFacetLabel::isCategorical() const {
  return ChartFacetLabeling(getParent()).isCategorical();
}

// ---- ChartAxis

namespace {

// What a question is answered when the parent is a dimension, or a facetlabel.
template <class Answer, class Dimension, class FacetLabel>
Answer askParent(DOMNode* parent, Dimension dimension, FacetLabel facetLabel) {
  if (hasTag(parent, PlXUni::_dimension)) return dimension(ChartDimension(parent));
  if (hasTag(parent, u"facetlabel")) return facetLabel(ChartFacetLabel(parent));
  return Answer();
}

}  // namespace

ChartElement ChartAxis::getPositionAesthetic() const {
  const auto ask = [](const auto& parent) { return parent.getPositionAesthetic(); };
  return askParent<ChartElement>(getParent(), ask, ask);
}

ChartDimension ChartAxis::getDimension() const {
  return askParent<ChartDimension>(
      getParent(), [](const ChartDimension& parent) { return parent; },
      [](const ChartFacetLabel& parent) { return parent.getDimension(); });
}

bool ChartAxis::isCategorical() const {
  const auto ask = [](const auto& parent) { return parent.isCategorical(); };
  return askParent<bool>(getParent(), ask, ask);
}

// ---- ChartParameter, ChartGuide, ChartVariable

ChartVariable ChartParameter::getVariable() {
  const XMLCh* role = getName();
  ChartElement holder(getElementWithAttribute(facetVariable, PlXUni::_role, role));
  if (holder.isNull()) holder.setNode(getFirstElementByTagName(role));
  return ChartVariable(getElementWithAttribute(PlXUni::_variable, PlXUni::_id,
                                               holder.getAttributeValue(PlXUni::_variable)));
}

ChartParameter ChartGuide::getFirstParameter() const {
  return ChartParameter(getFirstChildByTagName(PlXUni::_parameter));
}

const XMLCh* ChartGuide::getName() const {
  return getFirstParameter().getName();
}

bool ChartVariable::isLegendVariable() const {
  const XMLCh* id = getAttributeValue(PlXUni::_id);
  if (isEmpty(id)) return false;
  return search(getGraph(), u"styleby", [&](const DOMElement& styleBy) {
    return is(styleBy.getAttribute(PlXUni::_variable), id) &&
           getElementWithAttribute(u"legendtarget", u"aesthetic",
                                   styleBy.getAttribute(PlXUni::_id));
  });
}

// ---- ChartElementElement

const XMLCh* ChartElementElement::getRoleVariable(const XMLCh* role) const {
  return ChartElement(firstBelow(role)).getAttributeValue(PlXUni::_variable);
}

bool ChartElementElement::isRangeBar() const {
  if (!is(getType(), PlXUni::_interval)) return false;
  const ChartElement y(getFirstChildByTagName(PlXUni::_y));
  const ChartElement statistic(y.getFirstChildByTagName(u"statistic"));
  return is(statistic.getAttributeValue(PlXUni::_method), PlXUni::_range);
}

bool ChartElementElement::isInterpolationLine() const {
  return is(getType(), PlXUni::_line) && firstBelow(PlXUni::_interpolation);
}

bool ChartElementElement::isDifferenceLine() const {
  const bool isArea = is(getType(), PlXUni::_area);
  if (!isArea && !is(getType(), PlXUni::_line)) return false;
  return getElementWithAttribute(PlXUni::_element, PlXUni::_type,
                                 isArea ? PlXUni::_line : PlXUni::_area) != nullptr;
}
