#include "legacyconversion.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLString.hpp>

#include "basetemplate.h"
#include "chartbase.h"
#include "chartelement.h"
#include "chartexception.h"
#include "domwalk.h"
#include "plxuni.h"

using namespace xercesc;

namespace {

// How many times as long as the older document the new one may be, and what it may be in any case.
constexpr std::size_t mostGrowth = 16;
constexpr std::size_t alwaysEnough = 1 << 20;
// What an element or attribute costs beside its characters.
constexpr std::size_t nodeCost = 16;

bool isPlainName(const XMLCh* name) {
  return XMLChar1_0::isValidNCName(name, XMLString::stringLen(name)) &&
         !XMLString::equals(name, u"xmlns");
}

// What the questions of ChartElement ask, beside what steps read.
struct Asked {
  const XMLCh* tag;
  bool isElementAsked;  // it is there to be asked, and no step reads it
  std::array<const XMLCh*, 2> attributes;
};

constexpr Asked asked[] = {
    {u"variable", true, {u"categorical"}},
    {u"domain", true, {u"categorical"}},
    {u"dimension", true, {u"role", u"domain"}},
    {u"facetvariable", true, {u"role", u"variable"}},
    {u"x", true, {u"variable"}},
    {u"y", true, {u"variable"}},
    {u"z", true, {u"variable"}},
    {u"theta", true, {u"variable"}},
    {u"element", false, {u"type"}},
    {u"statistic", false, {u"method"}},
};

const Asked* askedOf(const XMLCh* tag) {
  const auto* row = std::ranges::find_if(
      asked, [&](const Asked& each) { return XMLString::equals(each.tag, tag); });
  return row == std::end(asked) ? nullptr : row;
}

bool asks(const Asked* row, const XMLCh* attribute) {
  return row && std::ranges::any_of(row->attributes, [&](const XMLCh* each) {
           return each && XMLString::equals(each, attribute);
         });
}

}  // namespace

LegacyConversion::LegacyConversion(DOMDocument& oldDocument, DOMDocument& newDocument)
    : oldDocument_(oldDocument), newDocument_(newDocument), index_(oldDocument) {
  DOMElement* root = oldDocument.getDocumentElement();
  const ChartGraph graph(root);
  chartType_ = graph.getChartType();
  isThreeDimensional_ =
      graph.getOffspringWithAttribute(PlXUni::_dimension, PlXUni::_role, PlXUni::_z) ||
      graph.getOffspringWithAttribute(u"facetvariable", PlXUni::_role, PlXUni::_z);
  left_ = alwaysEnough;
  if (root) left_ += mostGrowth * (index_.sizeOf(root) + nodeCost * index_.elements().size());
}

// ---- reading

ElementIndex::Elements LegacyConversion::below(const DOMNode* node, const XMLCh* tag) {
  const ElementIndex::Elements found = index_.below(node, tag);
  spend(found.size());
  return found;
}

DOMElement* LegacyConversion::firstBelow(const DOMNode* node, const XMLCh* tag) const {
  const ElementIndex::Elements found = index_.below(node, tag);
  return found.empty() ? nullptr : found.front();
}

DOMElement* LegacyConversion::withId(const XMLCh* id) const {
  return id && *id ? oldDocument_.getElementById(id) : nullptr;
}

const XMLCh* LegacyConversion::read(const DOMElement* element, const XMLCh* name) {
  if (!element) return u"";
  read_.insert(element);
  const DOMAttr* attribute = element->getAttributeNode(name);
  if (!attribute) return u"";
  read_.insert(attribute);
  return attribute->getValue();
}

DOMElement* LegacyConversion::resolve(const DOMElement* element, const XMLCh* name) {
  if (!element) return nullptr;
  read_.insert(element);
  DOMElement* linked = withId(element->getAttribute(name));
  if (linked) read(element, name);
  return linked;
}

// ---- writing

void LegacyConversion::spend(std::size_t size) {
  if (size > left_) {
    throw ChartException("An older template grows too long when it is converted", __FILE__,
                         __LINE__);
  }
  left_ -= size;
}

DOMElement& LegacyConversion::addCommand(const XMLCh* name) {
  return add(*newDocument_.getDocumentElement(), name);
}

DOMElement& LegacyConversion::add(DOMElement& parent, const XMLCh* name) {
  spend(nodeCost + XMLString::stringLen(name));
  DOMElement* element = newDocument_.createElement(name);
  parent.appendChild(element);
  return *element;
}

void LegacyConversion::set(DOMElement& element, const XMLCh* name, const XMLCh* value) {
  spend(nodeCost + XMLString::stringLen(name) + XMLString::stringLen(value));
  element.setAttribute(name, value);
}

void LegacyConversion::setFlag(DOMElement& element, const XMLCh* name, bool value) {
  set(element, name, value ? PlXUni::_true : PlXUni::_false);
}

void LegacyConversion::copy(const DOMElement& from, const XMLCh* name, DOMElement& to) {
  const XMLCh* value = read(&from, name);
  if (*value) set(to, name, value);
}

void LegacyConversion::copyAttributes(const DOMElement& from, DOMElement& to) {
  read_.insert(&from);
  const DOMNamedNodeMap* attributes = from.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    if (!isPlainName(attribute->getNodeName())) continue;
    read_.insert(attribute);
    set(to, attribute->getNodeName(), attribute->getNodeValue());
  }
}

DOMElement* LegacyConversion::import(const DOMElement& element, DOMElement& parent, Depth depth) {
  std::vector<std::pair<const DOMNode*, DOMElement*>> open = {{element.getParentNode(), &parent}};
  DOMElement* top = nullptr;
  walkElements(&element, [&](const DOMElement* each) {
    if (!isPlainName(each->getNodeName())) return false;
    while (each != &element && open.back().first != each->getParentNode()) open.pop_back();
    DOMElement& made = add(*open.back().second, each->getNodeName());
    if (!top) top = &made;
    copyAttributes(*each, made);
    open.emplace_back(each, &made);
    return depth == Depth::All;
  });
  return top;
}

void LegacyConversion::importParameters(const DOMElement& from, DOMElement& to) {
  for (const DOMElement* parameter : below(&from, PlXUni::_parameter)) import(*parameter, to);
}

// ---- parts of commands

bool LegacyConversion::copyStyle(const DOMElement* oldStyle, DOMElement& parent) {
  if (!oldStyle) return false;
  DOMElement& style = add(parent, PlXUni::_style);
  copy(*oldStyle, PlXUni::_value, style);
  for (const DOMElement* child = firstElement(oldStyle); child; child = nextElement(child)) {
    spend(1);
    if (!XMLString::equals(child->getNodeName(), PlXUni::_style)) import(*child, style);
  }
  return true;
}

ChartString LegacyConversion::textOf(const DOMElement* label) {
  ChartString text;
  const DOMNode* node = label ? label->getFirstChild() : nullptr;
  for (; node; node = node->getNextSibling()) {
    const short kind = node->getNodeType();
    if (kind == DOMNode::TEXT_NODE || kind == DOMNode::CDATA_SECTION_NODE) {
      text.append(node->getNodeValue());
    }
  }
  return text;
}

bool LegacyConversion::hasText(const DOMElement* label) {
  const ChartString text = textOf(label);
  return text.view().find_first_not_of(u" \t\r\n") != std::u16string_view::npos;
}

DOMElement& LegacyConversion::copyText(const DOMElement& oldLabel, DOMElement& parent) {
  const ChartString text = textOf(&oldLabel);
  spend(text.length());
  read_.insert(&oldLabel);
  DOMElement& label = add(parent, PlXUni::_label);
  label.appendChild(newDocument_.createTextNode(text.xc_str()));
  return label;
}

bool LegacyConversion::copyLabel(const DOMElement* oldLabel, DOMElement& parent) {
  if (textOf(oldLabel).empty()) return false;
  copyStyle(resolve(oldLabel, PlXUni::_style), copyText(*oldLabel, parent));
  return true;
}

void LegacyConversion::copyFormat(const DOMElement& ticks, DOMElement& parent) {
  for (const XMLCh* name : {u"numberformat", u"stringformat", u"datetimeformat"}) {
    const DOMElement* format = ChartBase::getChildByTagName(&ticks, name);
    if (!format) continue;
    import(*format, parent);
    return;
  }
}

void LegacyConversion::copyGridLines(const DOMElement& ticks, DOMElement& parent) {
  constexpr const XMLCh* name = u"gridlines";
  const DOMElement* old = ChartBase::getChildByTagName(&ticks, name);
  if (!old) return;
  DOMElement& gridLines = add(parent, name);
  copyStyle(resolve(old, u"facetstyle"), gridLines);
  copyStyle(resolve(old, PlXUni::_style), gridLines);
}

void LegacyConversion::copyNamedStyle(const DOMElement& ticks, const XMLCh* name,
                                      DOMElement& parent) {
  if (*ticks.getAttribute(name)) copyStyle(resolve(&ticks, name), add(parent, name));
}

void LegacyConversion::setAxisRole(DOMElement& ticks, const AxisRole& axis) {
  set(ticks, PlXUni::_role, axis.role.xc_str());
  setFlag(ticks, PlXUni::_categorical, axis.categorical);
  if (axis.derived) setFlag(ticks, BaseTemplate::_derived, true);
}

void LegacyConversion::copyMajorTicks(const DOMElement& ticks, DOMElement& parent,
                                      const AxisRole& axis) {
  DOMElement& made = add(parent, u"majorticks");
  for (const XMLCh* name :
       {PlXUni::_stagger, PlXUni::_position, PlXUni::_length, PlXUni::_delta, PlXUni::_UTF_base}) {
    copy(ticks, name, made);
  }
  setAxisRole(made, axis);
  copyGridLines(ticks, made);
  copyFormat(ticks, made);
  copyNamedStyle(ticks, PlXUni::_markStyle, made);
  copyNamedStyle(ticks, BaseTemplate::_tickLabelStyle, made);
}

void LegacyConversion::copyMinorTicks(const DOMElement& ticks, DOMElement& parent,
                                      const AxisRole& axis) {
  DOMElement& made = add(parent, u"minorticks");
  for (const XMLCh* name : {PlXUni::_number, PlXUni::_position, PlXUni::_length}) {
    copy(ticks, name, made);
  }
  copyGridLines(ticks, made);
  copyNamedStyle(ticks, PlXUni::_markStyle, made);
  setAxisRole(made, axis);
}

void LegacyConversion::growDistance(DOMElement& parameter) {
  const auto isDigit = [](XMLCh unit) { return unit >= u'0' && unit <= u'9'; };
  const XMLCh* text = parameter.getAttribute(PlXUni::_value);
  if (!isDigit(*text)) return;
  double distance = 0;
  for (; isDigit(*text); ++text) distance = distance * 10 + (*text - u'0');
  if (text[0] == u'.' && isDigit(text[1])) distance += (text[1] - u'0') / 10.0;
  if (!std::isfinite(distance * 1.5)) return;
  constexpr unsigned digits = 16;
  const ChartString grown = ChartString().assignDouble(distance * 1.5, digits);
  set(parameter, PlXUni::_value, grown.xc_str());
}

// ---- what was left out

std::vector<LegacyConversion::LeftOut> LegacyConversion::leftOut() const {
  const std::vector<DOMElement*>& all = index_.elements();
  std::vector<std::size_t> readBefore = {0};
  for (const DOMElement* element : all) {
    readBefore.push_back(readBefore.back() + read_.count(element));
  }
  std::vector<LeftOut> result;
  for (std::size_t i = 0; i < all.size();) {
    const Asked* row = askedOf(all[i]->getNodeName());
    const std::size_t end = index_.extentOf(all[i]).end;
    if (readBefore[end] == readBefore[i] && !(row && row->isElementAsked)) {
      result.push_back({i, {}});
      i = end;
      continue;
    }
    const DOMNamedNodeMap* attributes = all[i]->getAttributes();
    for (XMLSize_t j = 0; j < attributes->getLength(); ++j) {
      const DOMNode* attribute = attributes->item(j);
      const XMLCh* name = attribute->getNodeName();
      if (isPlainName(name) && !XMLString::equals(name, PlXUni::_id) && !asks(row, name) &&
          !read_.contains(attribute)) {
        result.push_back({i, name});
      }
    }
    ++i;
  }
  return result;
}
