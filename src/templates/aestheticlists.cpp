#include "aestheticlists.h"

#include <xercesc/dom/DOM.hpp>

#include "plxstylecycle.h"
#include "templatexml.h"

using namespace xercesc;

namespace {

std::vector<const DOMElement*> listOf(const DOMElement* command) {
  const DOMElement* cycle = templatexml::lastChild(command, PlXUni::_cycle);
  return cycle ? std::vector{cycle} : std::vector<const DOMElement*>();
}

}  // namespace

AestheticLists::AestheticLists(BaseTemplate& base, const PlXVisualization* source,
                               PlXVisualization& chart, const DOMElement* command)
    : base_(base),
      source_(source),
      chart_(chart),
      number_(ChartString(command ? command->getAttribute(u"aestheticNumber") : nullptr)
                  .convertToSignedInteger()),
      lists_(base, listOf(command)) {}

bool AestheticLists::isPinned(const CTAesthetic& aesthetic) const {
  const DOMElement* there = source_ ? source_->getElementById(aesthetic.getId()) : nullptr;
  return there && *there->getAttribute(PlXUni::_cycle);
}

PlXStyleCycle& AestheticLists::newStyleCycle() {
  PlXStyleCycle* styleCycle =
      chart_.addStyleCycle(base_.CreateUniqueId(PlXUni::_styleCycle).xc_str());
  lists_.addTo(*styleCycle);
  return *styleCycle;
}

// The colour gives its id away before it goes: links to what goes would go as well.
void AestheticLists::takePlace(CTAesthetic& aesthetic, PlXColor& color,
                               CTElementType& element) const {
  base_.duplicateAttributes(color, aesthetic);
  const ChartString id(color.getId());
  color.SetAttribute(PlXUni::_id, nullptr);
  aesthetic.setId(id.xc_str());
  element.removeColor(color);
}
