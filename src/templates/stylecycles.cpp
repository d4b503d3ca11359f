#include "stylecycles.h"

#include <xercesc/dom/DOM.hpp>

#include "plxextension.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "plxstylecycle.h"
#include "templatexml.h"

using namespace xercesc;

namespace stylecycles {

Kind kindOf(const PlXCycle& cycle) {
  const std::vector<PlXStyle*> styles = cycle.getStyles();
  if (styles.empty()) return Kind::none;
  const PlXStyle& first = *styles.front();
  if (first.isPatternPresent()) return Kind::pattern;
  if (first.isSymbolPresent()) return Kind::shape;
  if (first.isStroke_dasharrayPresent()) return Kind::dash;
  if (styles.size() > 1 && styles[1]->isStroke_dasharrayPresent()) return Kind::dash;
  return first.isColorPresent() || first.isColor2Present() ? Kind::color : Kind::none;
}

PlXCycle* stockCycle(const PlXVisualization& chart, Kind kind) {
  const PlXExtensionVis* extension = chart.getExtension();
  const PlXStyleCycle* stock = extension ? extension->getStyleCycleRepository() : nullptr;
  PlXCycle* last = nullptr;
  if (!stock) return last;
  for (PlXCycle* cycle : stock->getCycles()) {
    if (kindOf(*cycle) == kind) last = cycle;
  }
  return last;
}

void takeStock(const BaseTemplate& base, const PlXCycle& stock, PlXStyleCycle& to) {
  to.removeCycles();
  PlXCycle* list = to.addCycle();
  for (const PlXStyle* style : stock.getStyles()) {
    base.duplicateAttributes(*style, *list->addStyle());
  }
}

Lists::Lists(BaseTemplate& base, const std::vector<const DOMElement*>& cycles) {
  for (const DOMElement* cycle : cycles) {
    auto& list = lists_.emplace_back();
    templatexml::forChildren(cycle, PlXUni::_style,
                             [&](const DOMElement* style) { list.emplace_back(base, style); });
  }
}

void Lists::addTo(PlXStyleCycle& styleCycle) const {
  for (const auto& list : lists_) {
    PlXCycle* cycle = styleCycle.addCycle();
    for (const BaseTemplate::StyleImport& style : list) style.onto(*cycle->addStyle());
  }
}

}  // namespace stylecycles
