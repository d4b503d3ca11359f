#include "stylecycles.h"

#include "plxextension.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "plxstylecycle.h"

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

}  // namespace stylecycles
