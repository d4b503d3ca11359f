#include "rsquaredframe.h"

#include "plxelements.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxstyle.h"
#include "plxuni.h"

namespace {

void makeTransparent(PlXStyle& style) {
  style.setColor(PlXStyle::_transparent);
  style.setColor2(PlXStyle::_transparent);
}

template <class Target>
void stack(PlXLabelFrame& frame, PlXLocation::ENUM_method method, Target& target) {
  PlXLocation* top = frame.addLocation(PlXLocation::part_top);
  top->setMethod(method);
  top->setTarget(target);
}

bool tellsRSquared(const PlXLabelFrame& frame) {
  const PlXLabel* label = frame.getLabel();
  if (!label) return false;
  const std::vector<PlXDescriptionGroup*> groups = label->getDescriptionGroups();
  if (groups.empty()) return false;
  for (const PlXDescription* description : groups.front()->getDescriptions()) {
    if (description->getName() == PlXDescription::name_rSquared) return true;
  }
  return false;
}

}  // namespace

PlXLabelFrame* RSquaredFrames::firstOfChart() const {
  for (PlXLabelFrame* frame : base_.target.getLabelFrames()) {
    if (tellsRSquared(*frame)) return frame;
  }
  return nullptr;
}

void RSquaredFrames::add(PlXGraph& graph, PlXLine& line, const ChartString& method,
                         bool isOfSubgroups) {
  if (!first_) first_ = firstOfChart();
  PlXLabelFrame* frame = base_.target.addLabelFrame(base_.CreateUniqueId(PlXUni::_frame).xc_str());
  PlXStyle& style = base_.styleOf(*frame);
  makeTransparent(style);
  style.setVisible(true);
  makeRoom(graph);
  place(graph, *frame);
  fill(*frame, line, method, isOfSubgroups);
  if (!first_) first_ = frame;
}

// Once for all frames of a graph, as each time is a walk over its elements.
void RSquaredFrames::makeRoom(PlXGraph& graph) {
  if (roomy_ == &graph) return;
  roomy_ = &graph;
  graph.removeLocation(PlXLocation::part_right);
  graph.addLocation(PlXLocation::part_right)->setValue(u"75%");
}

void RSquaredFrames::place(PlXGraph& graph, PlXLabelFrame& frame) const {
  PlXLocation* left = frame.addLocation(PlXLocation::part_left);
  left->setMethod(PlXLocation::method_attach);
  left->setTarget(graph);
  if (first_) {
    stack(frame, PlXLocation::method_attach, *first_);
  } else if (const auto containers = base_.target.getContainers(); !containers.empty()) {
    stack(frame, PlXLocation::method_attach, *containers.back());
  } else if (const auto legends = base_.target.getLegends(); !legends.empty()) {
    stack(frame, PlXLocation::method_attach, *legends.back());
  } else {
    stack(frame, PlXLocation::method_align, graph);
  }
  frame.addLocation(PlXLocation::part_height)->setMethod(PlXLocation::method_content);
  PlXLocation* right = frame.addLocation(PlXLocation::part_right);
  right->setMethod(PlXLocation::method_fixed);
  right->setValue(u"99%");
}

void RSquaredFrames::fill(PlXLabelFrame& frame, PlXLine& line, const ChartString& method,
                          bool isOfSubgroups) {
  PlXLabel& label = *frame.addLabel();
  PlXStyle& text = base_.styleOf<CTLabelType>(label);
  const PlXStyle* lineStyle = line.getStyle();
  if (lineStyle && *lineStyle->getColor()) text.setColor(lineStyle->getColor());
  makeTransparent(
      base_.ensuredStyle(label, &CTLabelType::getTextFrameStyle, &CTLabelType::setTextFrameStyle));
  text.setFontSize(u"8pt", u"6pt", u"10pt");
  text.setTextAlignment(PlXStyle::textAlignment_left);
  text.setMargin_left(u"3pt");

  PlXDescriptionGroup& group = *label.addDescriptionGroup(line);
  group.setSeparator(u"\n");
  group.addDescription(PlXDescription::name_group);
  group.addText()->setText(isOfSubgroups ? u": R" : u"R");
  PlXText* two = group.addText();
  two->setPosition(CTTextType::position_superscript);
  base_.styleOf<CTTextType>(*two).setFontSize(u"8", u"8", u"8");
  two->setText(u"2");
  group.addText()->setText(ChartString(u" ").append(method).xc_str());
  group.addText()->setText(u" = ");
  PlXDescription* value = group.addDescription(PlXDescription::name_rSquared);
  value->addFormat()->setMaximumFractionDigits(3);
}
