// addShadow shadow-dx shadow-dy: gives every element but points a grey shadow at these offsets, and
// leaves room for it in the plot, whose tilt goes. Both offsets must be stated.
#include "commands.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "statedvalues.h"

namespace {

void makeRoom(PlXCoordinates& block) {
  constexpr double share = 0.05;
  block.removeRectangularTransforms();
  if (!block.getInsetTransforms().empty()) return;
  PlXInsetTransform& inset = *block.addInsetTransform();
  inset.setX_max(share);
  inset.setY_max(share);
}

}  // namespace

bool TShadowEffects::ProcessCommand() {
  const ChartString dx = stated::text(*this, command, PlXUni::_shadow_dx, stated::Type::Length);
  const ChartString dy = stated::text(*this, command, PlXUni::_shadow_dy, stated::Type::Length);
  if (dx.empty() || dy.empty()) return false;
  for (const PlXGraph* graph : target.getGraphs()) {
    bool hasShadow = false;
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    for (CTElementType* element : elements) {
      if (dynamic_cast<const PlXPoint*>(element)) continue;
      hasShadow = true;
      PlXStyle& style = styleOf(*element);
      style.setShadow_dx(dx.xc_str());
      style.setShadow_dy(dy.xc_str());
      style.setShadow_color(u"grey");
      style.setShadow_opacity(0.5);
    }
    if (!hasShadow) continue;
    for (PlXCoordinates* block : graph->getCoordinatess()) makeRoom(*block);
  }
  return true;
}
