#include "referenceguides.h"

#include "plxcoordinates.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxlabel.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace referenceguides {

namespace {

const DOMElement* lastChild(const DOMElement& command, const XMLCh* name) {
  const DOMElement* last = nullptr;
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    if (is(child->getNodeName(), name)) last = child;
  }
  return last;
}

}  // namespace

void Place::state(const ChartString& text, bool label) {
  value = text;
  isLabel = label;
  isStated = !text.empty();
}

void Place::findCategory(const BaseTemplate& queries, const PlXGraph& graph, const XMLCh* role) {
  if (isLabel && !value.empty()) value = queries.getCategoryValue(graph, role, value);
}

Block blockAt(const PlXGraph& graph, long index) {
  const std::vector<PlXCoordinates*> blocks = graph.getCoordinatess();
  Block block;
  block.exists = index >= 0 && static_cast<std::size_t>(index) < blocks.size();
  if (block.exists && blocks.size() > 1) block.link = blocks[index];
  return block;
}

Looks::LabelStyles::LabelStyles(const BaseTemplate& base, const DOMElement* label) {
  forDescendants(label, PlXUni::_style, [&](const DOMElement* style) {
    const long number = stated::selection(base, style, PlXUni::_number);
    if (number == 0) text = style;
    if (number == 1) frame = style;
  });
}

Looks::Looks(BaseTemplate& base, const DOMElement& command)
    : base_(base),
      label_(lastChild(command, PlXUni::_label)),
      labelStyles_(base, label_),
      style_(base, lastChild(command, PlXUni::_style)),
      labelText_(base, labelStyles_.text),
      labelFrame_(base, labelStyles_.frame) {}

void Looks::addLabel(CTGuideType& guide, bool isLevel) const {
  PlXLabel& label = *guide.addLabel();
  base_.mergeText(label_, label);
  PlXStyle& text = base_.styleOf(label);
  text.setLabelLocationHorizontal(isLevel ? PlXStyle::labelLocationHorizontal_negative
                                          : PlXStyle::labelLocationHorizontal_center);
  text.setLabelLocationVertical(isLevel ? PlXStyle::labelLocationVertical_center
                                        : PlXStyle::labelLocationVertical_negative);
  PlXStyle& frame =
      base_.ensuredStyle(label, &PlXLabel::getTextFrameStyle, &PlXLabel::setTextFrameStyle);
  frame.setColor(PlXStyle::_white);
  frame.setColor2(PlXStyle::_black);
  base_.styleLabel(label, label_);
}

void Looks::restyle(CTGuideType& guide) const {
  style_.onto(base_.styleOf(guide));
  if (!labelStyles_.text && !labelStyles_.frame) return;
  for (PlXLabel* label : guide.getLabels()) {
    if (labelStyles_.text) labelText_.onto(base_.styleOf(*label));
    if (labelStyles_.frame) {
      labelFrame_.onto(
          base_.ensuredStyle(*label, &PlXLabel::getTextFrameStyle, &PlXLabel::setTextFrameStyle));
    }
  }
}

}  // namespace referenceguides
