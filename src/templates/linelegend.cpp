#include "linelegend.h"

#include "plxelements.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "plxuni.h"

PlXLegend& LineLegend::ensured() {
  if (legend_) return *legend_;
  const std::vector<PlXLegend*> legends = base_.getLegends();
  if (!legends.empty()) return *(legend_ = legends.front());
  legend_ = base_.target.addLegend(base_.CreateUniqueId(PlXUni::_legend).xc_str());
  PlXStyle& style = base_.styleOf(*legend_);
  if (!form_.isVisible) style.setVisible(false);
  style.setColor(PlXStyle::_transparent);
  for (std::size_t i = 0; i < form_.places.size(); ++i) {
    PlXLocation* location = legend_->addLocation(static_cast<PlXLocation::ENUM_part>(i));
    location->setMethod(PlXLocation::method_fixed);
    location->setValue(form_.places[i]);
  }
  return *legend_;
}

void LineLegend::add(CTElementType& line) {
  ensured().addLegendTarget(base_.CreateUniqueId(PlXUni::_legendTarget).xc_str(), line);
}
