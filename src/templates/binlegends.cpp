#include "binlegends.h"

#include "plxaesthetics.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxstyle.h"
#include "plxuni.h"

namespace {

ChartString keyOf(std::size_t position) {
  ChartString key(u"frameLegendBin");
  return position == 0 ? key : key.append(static_cast<unsigned long>(position));
}

PlXLocation& place(PlXLegend& legend, PlXLocation::ENUM_part part,
                   PlXLocation::ENUM_method method) {
  PlXLocation& location = *legend.addLocation(part);
  location.setMethod(method);
  return location;
}

PlXStyle& ensured(BaseTemplate& base, PlXLegend& legend, PlXStyle* (PlXLegend::*get)() const,
                  void (PlXLegend::*set)(PlXStyle&), const XMLCh* color) {
  const bool isNew = !(legend.*get)();
  PlXStyle& style = base.ensuredStyle(legend, get, set);
  if (isNew) {
    style.setColor(color);
    style.setColor2(PlXStyle::_transparent);
  }
  return style;
}

}  // namespace

BinLegends::BinLegends(BaseTemplate& base, const Looks& looks)
    : base_(base),
      legendStyle_(base, looks.legend),
      frameStyle_(base, looks.frames),
      textStyle_(base, looks.texts),
      label_(looks.label),
      record_(base.target.getExtension()) {
  const std::vector<PlXContainer*> containers = base.target.getContainers();
  if (containers.empty()) return;
  container_ = containers.front();
  const std::vector<PlXLegend*> legends = container_->getLegends();
  if (!legends.empty()) lastInContainer_ = legends.back();
}

bool BinLegends::shows(const CTAesthetic& aesthetic, std::size_t position) {
  const XMLCh* id = aesthetic.getId();
  return *id && known(position).shown.contains(id);
}

void BinLegends::show(CTAesthetic& aesthetic, PlXGraph& graph, std::size_t position) {
  Known& one = known(position);
  if (!one.isNamed) {
    one.legend = &add(graph);
    one.isNamed = true;
    record().setAttribute(keyOf(position), one.legend->getId());
  }
  if (!one.legend) return;
  if (!one.isDressed) dress(*one.legend);
  one.isDressed = true;
  if (!one.shown.insert(aesthetic.getId()).second) return;
  one.legend->addLegendTarget(base_.CreateUniqueId(PlXUni::_legendTarget).xc_str(), aesthetic);
}

BinLegends::Known& BinLegends::known(std::size_t position) {
  const auto [found, isNew] = known_.try_emplace(position);
  Known& one = found->second;
  if (!isNew || !record_) return one;
  const XMLCh* id = record_->getAttribute(keyOf(position).xc_str());
  one.isNamed = *id != 0;
  one.legend = dynamic_cast<PlXLegend*>(base_.target.objectOf(base_.target.getElementById(id)));
  if (!one.legend) return one;
  for (const PlXLegendTarget* entry : one.legend->getLegendTargets()) {
    one.shown.insert(entry->GetAttribute(PlXUni::_target));
  }
  return one;
}

PlXExtensionVis& BinLegends::record() {
  if (!record_) record_ = base_.target.addExtension();
  return *record_;
}

PlXLegend& BinLegends::add(PlXGraph& graph) {
  const ChartString id = base_.CreateUniqueId(PlXUni::_legend);
  PlXLegend& legend =
      *(container_ ? container_->addLegend(id.xc_str()) : base_.target.addLegend(id.xc_str()));
  place(legend, PlXLocation::part_width, PlXLocation::method_content);
  place(legend, PlXLocation::part_height, PlXLocation::method_content);
  if (container_) {
    placeInContainer(legend);
  } else {
    placeOnPage(legend, graph);
  }
  return legend;
}

void BinLegends::placeOnPage(PlXLegend& legend, PlXGraph& graph) {
  // It takes all free places from the second behind the last legend on, so that commands which
  // address the second or a later legend reach it.
  PlXLegend* last = nullptr;
  constexpr int farthest = 10;
  for (int number = farthest; number >= 0 && !last; --number) {
    last = record().getLegend(number);
    record().setLegend(number + 2, legend);
  }
  if (last) {
    place(legend, PlXLocation::part_left, PlXLocation::method_align).setTarget(*last);
    place(legend, PlXLocation::part_top, PlXLocation::method_attach).setTarget(*last);
    return;
  }
  place(legend, PlXLocation::part_left, PlXLocation::method_fixed).setValue(u"75%");
  place(legend, PlXLocation::part_top, PlXLocation::method_align).setTarget(graph);
  graph.removeLocation(PlXLocation::part_right);
  PlXLocation& edge = *graph.addLocation(PlXLocation::part_right);
  edge.setMethod(PlXLocation::method_attach);
  edge.setTarget(legend);
}

void BinLegends::placeInContainer(PlXLegend& legend) {
  place(legend, PlXLocation::part_left, PlXLocation::method_align).setTarget(*container_);
  const std::vector<PlXLabelFrame*> texts =
      lastInContainer_ ? std::vector<PlXLabelFrame*>() : container_->getLabelFrames();
  if (lastInContainer_) {
    place(legend, PlXLocation::part_top, PlXLocation::method_attach).setTarget(*lastInContainer_);
  } else if (!texts.empty()) {
    place(legend, PlXLocation::part_top, PlXLocation::method_attach).setTarget(*texts.back());
  } else {
    place(legend, PlXLocation::part_top, PlXLocation::method_align).setTarget(*container_);
  }
  lastInContainer_ = &legend;
}

void BinLegends::dress(PlXLegend& legend) {
  legendStyle_.onto(
      ensured(base_, legend, &PlXLegend::getStyle, &PlXLegend::setStyle, PlXStyle::_transparent));
  frameStyle_.onto(ensured(base_, legend, &PlXLegend::getTickFrameStyle,
                           &PlXLegend::setTickFrameStyle, PlXStyle::_transparent));
  textStyle_.onto(ensured(base_, legend, &PlXLegend::getTickTextStyle, &PlXLegend::setTickTextStyle,
                          PlXStyle::_black));
  PlXLabel* label = legend.getLabel();
  if (!label) {
    label = legend.addLabel();
    if (label_) {
      base_.mergeText(label_, *label);
    } else {
      if (!title_) title_ = GraphTexts().lookUp("Scale");
      label->addText()->setText(title_->xc_str());
    }
  }
  if (label_) base_.styleLabel(*label, label_);
}
