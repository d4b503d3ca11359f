// BaseTemplate's copying of what elements and labelings show by value. Objects are copied through
// the model, so that links and identifiers are known to it; no copy has the id of what it is from.
#include <algorithm>
#include <iterator>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "basetemplate.h"
#include "colors.h"
#include "dialect.h"
#include "plxaesthetics.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxlabeling.h"
#include "plxmappings.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxstylecycle.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "stylecycles.h"

using namespace xercesc;

namespace {

using Aesthetics = std::vector<CTAesthetic*>;
using Mappings = std::vector<CTAestheticMapping*>;

// ---- the model's accessors, in one form for all kinds
template <auto get, class Holder>
Aesthetics read(const Holder& holder) {
  const auto list = (holder.*get)();
  return {list.begin(), list.end()};
}

template <auto add, class Holder>
CTAesthetic* make(Holder& holder) {
  return (holder.*add)();
}

CTAesthetic* makeStyleBy(CTElementType& element) {
  return element.addStyleBy(nullptr);
}

template <class T, auto get>
Mappings mappingsOf(const CTAesthetic& aesthetic) {
  const auto list = (static_cast<const T&>(aesthetic).*get)();
  return {list.begin(), list.end()};
}

template <class T, auto add>
CTAestheticMapping* addMapping(CTAesthetic& aesthetic) {
  return (static_cast<T&>(aesthetic).*add)();
}

// What is copied of an aesthetic. Null stands for what labelings or style-bys don't have.
struct Kind {
  const XMLCh* idBase;
  Aesthetics (*ofElement)(const CTElementType&);
  CTAesthetic* (*onElement)(CTElementType&);
  Aesthetics (*ofLabeling)(const PlXLabeling&);
  CTAesthetic* (*onLabeling)(PlXLabeling&);
  Mappings (*mappings)(const CTAesthetic&);
  CTAestheticMapping* (*addMapping)(CTAesthetic&);
};

using E = CTElementType;
using L = PlXLabeling;

// In the order of copying.
const Kind kinds[] = {
    {PlXUni::_styleBy, read<&E::getStyleBys>, makeStyleBy, read<&L::getStyleBys>,
     make<&L::addStyleBy>, nullptr, nullptr},
    {PlXUni::_colorComponent, read<&E::getColorComponents>, make<&E::addColorComponent>,
     read<&L::getColorComponents>, make<&L::addColorComponent>,
     mappingsOf<PlXColorComponent, &PlXColorComponent::getDoubleMappings>,
     addMapping<PlXColorComponent, &PlXColorComponent::addDoubleMapping>},
    {PlXUni::_color, read<&E::getColors>, make<&E::addColor>, read<&L::getColors>,
     make<&L::addColor>, mappingsOf<PlXColor, &PlXColor::getColorMappings>,
     addMapping<PlXColor, &PlXColor::addColorMapping>},
    {PlXUni::_dash, read<&E::getDashs>, make<&E::addDash>, nullptr, nullptr,
     mappingsOf<PlXDash, &PlXDash::getDashMappings>, addMapping<PlXDash, &PlXDash::addDashMapping>},
    {PlXUni::_pattern, read<&E::getPatterns>, make<&E::addPattern>, nullptr, nullptr,
     mappingsOf<PlXPattern, &PlXPattern::getIntegerMappings>,
     addMapping<PlXPattern, &PlXPattern::addIntegerMapping>},
    {PlXUni::_shape, read<&E::getShapes>, make<&E::addShape>, nullptr, nullptr,
     mappingsOf<PlXShape, &PlXShape::getSymbolMappings>,
     addMapping<PlXShape, &PlXShape::addSymbolMapping>},
    {PlXUni::_length, read<&E::getSizes>, make<&E::addSize>, read<&L::getSizes>, make<&L::addSize>,
     mappingsOf<PlXSize, &PlXSize::getLengthMappings>,
     addMapping<PlXSize, &PlXSize::addLengthMapping>},
};

// Either an element or a labeling; neither for any other object.
template <class Element, class Labeling>
struct Side {
  Element* element;
  Labeling* labeling;

  template <class Object>
  explicit Side(Object& object)
      : element(dynamic_cast<Element*>(&object)), labeling(dynamic_cast<Labeling*>(&object)) {}
};
using FromSide = Side<const CTElementType, const PlXLabeling>;
using ToSide = Side<CTElementType, PlXLabeling>;

Aesthetics aestheticsOf(const Kind& kind, const FromSide& from) {
  if (from.element) return kind.ofElement(*from.element);
  return kind.ofLabeling ? kind.ofLabeling(*from.labeling) : Aesthetics();
}

// Null where the other side can't have the kind. A line has no symbols, but dashes in their place.
CTAesthetic* addTo(const Kind& kind, bool asDash, const ToSide& to) {
  if (asDash) return to.element->addDash();
  if (to.element) return kind.onElement(*to.element);
  return kind.onLabeling ? kind.onLabeling(*to.labeling) : nullptr;
}

void giveDefaultRange(PlXSize& size, bool isOnElement) {
  if (*size.getLow() || *size.getHigh()) return;
  size.setLow(isOnElement ? u"0.25pt" : u"6pt");
  size.setHigh(isOnElement ? u"3pt" : u"18pt");
}

void takeColor2(PlXStyle& style, bool always) {
  if (!always && colors::isColor(style.getColor())) return;
  const XMLCh* color2 = style.getColor2();
  style.setColor(colors::isColor(color2) ? color2 : PlXStyle::_black);
}

template <class Holder>
int changeColor2(Holder& holder, bool always) {
  const std::vector<PlXStyleBy*> styleBys = holder.getStyleBys();
  for (const PlXStyleBy* styleBy : styleBys) {
    const PlXStyleCycle* styleCycle = styleBy->getStyleCycle();
    if (!styleCycle) continue;
    for (const PlXCycle* cycle : styleCycle->getCycles()) {
      for (PlXStyle* style : cycle->getStyles()) takeColor2(*style, always);
    }
  }
  for (PlXColor* color : holder.getColors()) {
    if (color->getAffect() != PlXColor::affect_both) color->setAffect(PlXColor::affect_main);
  }
  return static_cast<int>(styleBys.size());
}

void copyColors(const PlXStyle& from, PlXStyle& to, bool swap) {
  const XMLCh* color = swap ? from.getColor2() : from.getColor();
  const XMLCh* color2 = swap ? from.getColor() : from.getColor2();
  if (*color) to.setColor(color);
  if (*color2) to.setColor2(color2);
}

}  // namespace

int BaseTemplate::duplicateAttributes(const PlXBaseElement& from, PlXBaseElement& to) const {
  const DOMElement* element = from.getImplementation();
  if (!element || !to.getImplementation()) return 0;
  const dialect::Element* row = dialect::find(to.getImplementation());
  const DOMNamedNodeMap* attributes = element->getAttributes();
  int copied = 0;
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    const XMLCh* name = attribute->getNodeName();
    // A prefix may mean something else where the copy stands.
    const XMLCh* space = attribute->getNamespaceURI();
    if ((space && *space) || XMLString::equals(name, PlXUni::_id)) continue;
    if (row && !dialect::hasAttribute(*row, name)) continue;
    if (to.SetAttribute(name, attribute->getNodeValue())) ++copied;
  }
  return copied;
}

void BaseTemplate::copyVariables(CTElementType& to, const CTElementType& from) {
  struct Role {
    CTCoordinate* (CTElementType::*get)() const;
    CTCoordinate* (CTElementType::*add)();
  };
  static constexpr Role roles[] = {{&CTElementType::getX, &CTElementType::addX},
                                   {&CTElementType::getY, &CTElementType::addY},
                                   {&CTElementType::getZ, &CTElementType::addZ}};
  for (const Role& role : roles) {
    const CTCoordinate* coordinate = (from.*role.get)();
    CTVariableType* variable = coordinate ? coordinate->getVariable() : nullptr;
    if (variable) (to.*role.add)()->setVariable(*variable);
  }
}

void BaseTemplate::cloneConditionalStyles(const CTElementType& from, CTElementType& to) {
  for (const PlXConditionalStyle* each : from.getConditionalStyles()) {
    if (PlXStyle* style = each->getStyle()) to.addConditionalStyle(each->getWhen(), *style);
  }
}

void BaseTemplate::cloneStyleCycle(const PlXStyleCycle& from, PlXStyleCycle& to) {
  for (const PlXCycle* cycle : from.getCycles()) {
    PlXCycle* copy = to.addCycle();
    for (const PlXStyle* style : cycle->getStyles()) {
      duplicateAttributes(*style, *copy->addStyle());
    }
  }
}

void BaseTemplate::cloneStyleCycle(CTElementType& to, const CTElementType& from,
                                   const XMLCh* idBase, const ChartString& fromType,
                                   const ChartString& toType) {
  const std::vector<PlXStyleBy*> styleBys = from.getStyleBys();
  if (styleBys.empty()) return;
  const PlXStyleBy& first = *styleBys.front();
  PlXStyleBy* styleBy = to.addStyleBy(nullptr);
  CTVariableType* variable = first.getVariable();
  if (first.getSourceVariable() || dynamic_cast<PlXExpressionVariable*>(variable)) {
    styleBy->setVariable(*variable);
  }
  const PlXStyleCycle* styleCycle = first.getStyleCycle();
  if (!styleCycle) return;
  const bool swap = fromType.equals(PlXUni::_point) &&
                    (toType.equals(PlXUni::_line) || toType.equals(PlXUni::_text));
  PlXStyleCycle* copy = target.addStyleCycle(CreateUniqueId(idBase).xc_str());
  styleBy->setStyleCycle(*copy);
  for (const PlXCycle* cycle : styleCycle->getCycles()) {
    PlXCycle* list = copy->addCycle();
    for (const PlXStyle* style : cycle->getStyles()) copyColors(*style, *list->addStyle(), swap);
  }
}

void BaseTemplate::cloneScaleAndStatistic(const CTAesthetic& from, CTAesthetic& to) const {
  if (const PlXScale* scale = from.getScale()) {
    PlXScale* copy = to.addScale(PlXScale::method_linear);
    // One without a method has none in the copy either.
    copy->SetAttribute(PlXUni::_method, nullptr);
    duplicateAttributes(*scale, *copy);
  }
  if (const PlXSummaryStatistic* statistic = from.getSummaryStatistic()) {
    duplicateAttributes(*statistic, *to.addSummaryStatistic());
  }
}

void BaseTemplate::cloneStyleBy(const PlXStyleBy& from, PlXStyleBy& to) {
  if (from.isDimensionPresent()) to.setDimension(from.getDimension());
  PlXBaseElement* domain = from.getDomain();
  if (auto* interval = dynamic_cast<PlXIntervalDomain*>(domain)) to.setDomain(*interval);
  if (auto* categorical = dynamic_cast<PlXCategoricalDomain*>(domain)) to.setDomain(*categorical);
  if (CTVariableType* variable = from.getVariable()) to.setVariable(*variable);
  if (const PlXStyleCycle* cycle = from.getStyleCycle()) {
    PlXStyleCycle* copy = target.addStyleCycle(CreateUniqueId(PlXUni::_styleCycle).xc_str());
    to.setStyleCycle(*copy);
    cloneStyleCycle(*cycle, *copy);
  }
}

void BaseTemplate::giveStockDashes(PlXDash& dash) {
  dash.removeCycle();
  const PlXCycle* stock = stylecycles::stockCycle(target, stylecycles::Kind::dash);
  if (!stock) return;
  PlXStyleCycle* styleCycle = target.addStyleCycle(CreateUniqueId(PlXUni::_styleCycle).xc_str());
  PlXCycle* list = styleCycle->addCycle();
  for (const PlXStyle* style : stock->getStyles()) duplicateAttributes(*style, *list->addStyle());
  dash.setCycle(*styleCycle);
}

void BaseTemplate::cloneElementAesthetics(const PlXBaseElement& from, PlXBaseElement& to,
                                          bool cloneLegendEntries) {
  cloneAesthetics(from, to, cloneLegendEntries, true);
}

void BaseTemplate::cloneAestheticsButSizes(const CTElementType& from, CTElementType& to,
                                           bool cloneLegendEntries) {
  cloneAesthetics(from, to, cloneLegendEntries, false);
}

void BaseTemplate::cloneAesthetics(const PlXBaseElement& from, PlXBaseElement& to,
                                   bool cloneLegendEntries, bool withSizes) {
  const FromSide fromSide(from);
  const ToSide toSide(to);
  if ((!fromSide.element && !fromSide.labeling) || (!toSide.element && !toSide.labeling)) return;
  const bool isLine = dynamic_cast<PlXLine*>(&to) || dynamic_cast<PlXPath*>(&to);

  const auto clone = [&](const Kind& kind, const CTAesthetic& old) {
    const bool asDash = isLine && kind.idBase == PlXUni::_shape;
    CTAesthetic* copy = addTo(kind, asDash, toSide);
    if (!copy) return;
    if (const auto* styleBy = dynamic_cast<const PlXStyleBy*>(&old)) {
      cloneStyleBy(*styleBy, static_cast<PlXStyleBy&>(*copy));
    } else {
      cloneScaleAndStatistic(old, *copy);
      if (!asDash) {
        for (const CTAestheticMapping* mapping : kind.mappings(old)) {
          duplicateAttributes(*mapping, *kind.addMapping(*copy));
        }
      }
      duplicateAttributes(old, *copy);
      if (asDash) giveStockDashes(static_cast<PlXDash&>(*copy));
      if (auto* size = dynamic_cast<PlXSize*>(copy)) giveDefaultRange(*size, toSide.element);
    }
    copy->setId(CreateUniqueId(kind.idBase).xc_str());
    if (cloneLegendEntries && !copy->getImplementation()->hasChildNodes()) {
      CloneLegendEntry(old.getId(), *copy);
    }
  };
  for (const Kind& kind : kinds) {
    if (!withSizes && kind.idBase == PlXUni::_length) continue;
    for (const CTAesthetic* old : aestheticsOf(kind, fromSide)) clone(kind, *old);
  }
  if (fromSide.element && toSide.element) {
    toSide.element->setDot(fromSide.element->getDot());
    if (PlXCoordinates* block = fromSide.element->getCoordinates()) {
      toSide.element->setCoordinates(*block);
    }
  }
}

void BaseTemplate::cloneElementChildren(const CTElementType& from, CTElementType& to,
                                        bool cloneLegendEntries) {
  copyVariables(to, from);
  cloneElementAesthetics(from, to, cloneLegendEntries);
  cloneConditionalStyles(from, to);
}

int BaseTemplate::changeColor2ToColor(CTElementType& element, bool always) {
  return changeColor2(element, always);
}

int BaseTemplate::changeColor2ToColor(PlXLabeling& labeling, bool always) {
  return changeColor2(labeling, always);
}
