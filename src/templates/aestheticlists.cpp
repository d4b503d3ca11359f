#include "aestheticlists.h"

#include <xercesc/dom/DOM.hpp>

#include "plxstylecycle.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;

namespace {

std::vector<const DOMElement*> listOf(const DOMElement* command) {
  const DOMElement* cycle = templatexml::lastChild(command, PlXUni::_cycle);
  return cycle ? std::vector{cycle} : std::vector<const DOMElement*>();
}

}  // namespace

AestheticLists::AestheticLists(BaseTemplate& base)
    : base_(base),
      number_(stated::selection(base, base.command, u"aestheticNumber")),
      lists_(base, listOf(base.command)) {}

bool AestheticLists::isPinned(const CTAesthetic& aesthetic) const {
  const CTAesthetic* there = base_.sourceOf(aesthetic);
  return there && *there->GetAttribute(PlXUni::_cycle);
}

PlXStyleCycle& AestheticLists::newStyleCycle() {
  PlXStyleCycle* styleCycle =
      base_.target.addStyleCycle(base_.CreateUniqueId(PlXUni::_styleCycle).xc_str());
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
