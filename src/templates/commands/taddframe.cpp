// addFrame type frameId count styleOnly, with children location (left, right, top, bottom), style
// (number) and label: adds a text frame that the chart lacks, or moves and styles a frame of any
// kind. A frame moves when all four places are stated, unless the chart preserves its locations; a
// graph moves only the edges that it has, and only when `count` is there. New titles, subtitles and
// footnotes have places of their own. Styles of number 1 and 2 are those within the frame: the
// texts of a legend and their frames, the cells of a graph. When the style hides the last legend
// that shows, the graph takes its place. `styleOnly` adds and moves nothing.
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "commands.h"
#include "dialect.h"
#include "frames.h"
#include "objectsbytag.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;
using frames::Kind;

namespace {

// By the number of PlXLocation's part.
constexpr std::size_t partCount = 4;
using Places = std::array<ChartString, partCount>;

struct Parameters {
  Kind kind = Kind::other;
  long number = 0;
  bool hasCount = false;
  bool styleOnly = false;
  Places places;
  const DOMElement* mainStyle = nullptr;
  const DOMElement* style1 = nullptr;
  const DOMElement* style2 = nullptr;
  const DOMElement* label = nullptr;
};

void readChild(const BaseTemplate& base, const DOMElement& child, Parameters& parameters) {
  const XMLCh* name = child.getNodeName();
  if (is(name, PlXUni::_label)) parameters.label = &child;
  if (is(name, PlXUni::_style)) {
    const long number = stated::selection(base, &child, PlXUni::_number);
    (number == 1   ? parameters.style1
     : number == 2 ? parameters.style2
                   : parameters.mainStyle) = &child;
  }
  if (is(name, PlXUni::_location)) {
    static const XMLCh* const parts[partCount] = {PlXUni::_left, PlXUni::_right, PlXUni::_top,
                                                  PlXUni::_bottom};
    for (std::size_t part = 0; part < partCount; ++part) {
      ChartString place = stated::text(base, &child, parts[part], stated::Type::Length);
      if (!place.empty()) parameters.places[part] = std::move(place);
    }
  }
}

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  const std::optional<long> count = stated::integer(base, &command, PlXUni::_count);
  parameters.hasCount = count.has_value();
  parameters.number = std::clamp(count.value_or(0), -1L, static_cast<long>(mostCounted));
  parameters.styleOnly = is(command.getAttribute(BaseTemplate::_styleOnly), PlXUni::_true);
  const ChartString type(command.getAttribute(PlXUni::_type));
  parameters.kind = frames::kindOf(type);
  if (type.empty()) {
    if (const frames::Known* known =
            frames::knownBy(command.getAttribute(BaseTemplate::_frameId))) {
      parameters.kind = known->kind;
      if (known->number) parameters.number = known->number;
    }
  }
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    readChild(base, *child, parameters);
  }
  return parameters;
}

// Of a new title, subtitle or footnote.
const XMLCh* const* ownPlaces(Kind kind, unsigned number) {
  static const XMLCh* const title1[] = {u"2%", u"98%", u"2%", u"20%"};
  static const XMLCh* const title2[] = {u"2%", u"98%", u"20%", u"30%"};
  static const XMLCh* const subtitle[] = {u"2%", u"98%", u"30%", u"35%"};
  static const XMLCh* const footnote1[] = {u"2%", u"98%", u"88%", u"96%"};
  static const XMLCh* const footnote2[] = {u"2%", u"98%", u"96%", u"99%"};
  if (kind == Kind::subtitle) return subtitle;
  if (kind == Kind::title) return number < 2 ? title1 : title2;
  return number < 2 ? footnote1 : footnote2;
}

PlXLocation::ENUM_part partOf(std::size_t index) {
  return static_cast<PlXLocation::ENUM_part>(index);
}

// One run of the command, on one frame.
class Framing {
 public:
  // `source` may be null.
  Framing(BaseTemplate& base, const Parameters& parameters)
      : base_(base), target_(base.target), given_(parameters) {
    base.getGraphs(graphs_);
    roles_ = target_.getExtension();
    if (!roles_ && !given_.styleOnly) roles_ = target_.addExtension();
    mayMove_ = !given_.styleOnly && !(roles_ && roles_->getPreserveLocations());
    isPlaced_ = mayMove_ && std::ranges::none_of(given_.places, &ChartString::empty);
  }

  // False when there is no such frame.
  bool run() {
    switch (given_.kind) {
      case Kind::title:
      case Kind::subtitle:
      case Kind::footnote:
        return dressText();
      case Kind::legend:
        return dressLegend();
      case Kind::statisticsSummary:
        return dressSummary();
      case Kind::visualization:
        return dressPage();
      case Kind::graph:
        return given_.hasCount ? dressGraph() : dressGraphs();
      case Kind::container:
        return dressOne(frames::containers(target_));
      case Kind::controlFrame:
        return dressOne(framesByTag<PlXControlFrame>(target_, PlXControlFrame::_controlFrame));
      default:
        return dressFreeText();
    }
  }

 private:
  // ---- the kinds of frames

  bool dressText() {
    PlXLabelFrame* frame = roles_ ? textOf(*roles_) : nullptr;
    bool isNew = false;
    if (!frame && mayAddText()) {
      frame = addText();
      isNew = true;
    }
    if (!frame) return true;
    if (!frame->getStyle()) base_.styleOf(*frame).setColor2(PlXStyle::_transparent);
    mainStyle_ = frame->getStyle();
    if (isPlaced_) openSlots(*frame);
    if (!given_.styleOnly) giveText(*frame);
    if (frame->getLabel()) base_.styleLabel(*frame->getLabel(), given_.label);
    fillSlots();
    if (isNew || isPlaced_) frames::linkNeighbours(target_, *frame, graphs_);
    importStyles();
    return true;
  }

  PlXLabelFrame* textOf(const PlXExtensionVis& roles) const {
    if (given_.kind == Kind::subtitle) return roles.getSubtitle();
    const unsigned number = roleNumber();
    return given_.kind == Kind::title ? roles.getTitle(number) : roles.getFootnote(number);
  }

  // Without a number the first is meant.
  unsigned roleNumber() const { return static_cast<unsigned>(std::max(given_.number, 1L)); }

  bool mayAddText() const {
    if (given_.styleOnly || !given_.label) return false;
    const PlXExtensionVis* roles = base_.source ? base_.source->getExtension() : nullptr;
    return !roles || !textOf(*roles);
  }

  PlXLabelFrame* addText() {
    const unsigned number = roleNumber();
    const XMLCh* idBase = given_.kind == Kind::title      ? ChartBase::_title
                          : given_.kind == Kind::footnote ? ChartBase::_footnote
                                                          : ChartBase::_frame_subtitle_1;
    PlXLabelFrame* frame = target_.addLabelFrame(base_.CreateUniqueId(idBase).xc_str());
    if (given_.kind == Kind::title) roles_->setTitle(*frame, number);
    if (given_.kind == Kind::footnote) roles_->setFootnote(*frame, number);
    if (given_.kind == Kind::subtitle) roles_->setSubtitle(*frame);
    if (std::ranges::any_of(given_.places, &ChartString::empty)) {
      openSlots(*frame);
      const XMLCh* const* own = ownPlaces(given_.kind, roleNumber());
      for (std::size_t i = 0; i < partCount; ++i) fix(*slots_[i], own[i]);
    }
    return frame;
  }

  void giveText(PlXLabelFrame& frame) {
    if (!given_.label) return;
    PlXLabel* label = frame.getLabel();
    base_.mergeText(given_.label, label ? *label : *frame.addLabel());
  }

  bool dressLegend() {
    PlXLegend* legend = legendOf(roleNumber());
    if (!legend) return false;
    if (isPlaced_) {
      if (XMLString::equals(dialect::localName(legend->getImplementation()->getParentNode()),
                            PlXUni::_container)) {
        target_.reparentContainerChildren();
        legend = legendOf(roleNumber());
      }
      openSlots(*legend);
    }
    mainStyle_ = &base_.styleOf(*legend);
    style1_ =
        &base_.ensuredStyle(*legend, &PlXLegend::getTickTextStyle, &PlXLegend::setTickTextStyle);
    style2_ =
        &base_.ensuredStyle(*legend, &PlXLegend::getTickFrameStyle, &PlXLegend::setTickFrameStyle);
    if (legend->getLabel()) base_.styleLabel(*legend->getLabel(), given_.label);
    fillSlots();
    importStyles();
    if (given_.mainStyle && !isVisible(*legend)) takePlaceOf(*legend);
    return true;
  }

  PlXLegend* legendOf(unsigned number) const {
    return roles_ ? roles_->getLegend(number) : nullptr;
  }

  template <class Frame>
  static bool isVisible(const Frame& frame) {
    return !frame.getStyle() || frame.getStyle()->getVisible();
  }

  // The only graph widens into the place that the last legend leaves. It doesn't when it is wider
  // already, nor when that place is also the one of a frame that shows.
  void takePlaceOf(const PlXLegend& legend) {
    const PlXLegend* other = legendOf(roleNumber() == 1 ? 2 : 1);
    if (given_.styleOnly || (other && other != &legend && isVisible(*other))) return;
    if (graphs_.size() != 1) return;
    const PlXLocation* edge = frames::locationOf(legend, PlXLocation::part_right);
    PlXLocation* right = frames::locationOf(*graphs_.front(), PlXLocation::part_right);
    if (!right || !edge || !*edge->getValue()) return;
    const bool isFixed = right->getMethod() == PlXLocation::method_fixed;
    const double now = isFixed ? frames::percentage(*right) : 0;
    if (now > 0 && frames::percentage(*edge) < now) return;
    if (isLeanedOn(*graphs_.front())) return;
    right->SetAttribute(PlXUni::_target, nullptr);
    fix(*right, edge->getValue());
  }

  // A frame that shows begins where the graph ends.
  bool isLeanedOn(const PlXGraph& graph) const {
    const auto leans = [&](const auto* frame) {
      const PlXLocation* left = frames::locationOf(*frame, PlXLocation::part_left);
      return left && left->getMethod() == PlXLocation::method_attach &&
             left->getTarget() == &graph && isVisible(*frame);
    };
    return std::ranges::any_of(target_.getLabelFrames(), leans) ||
           std::ranges::any_of(target_.getContainers(), leans);
  }

  bool dressSummary() {
    PlXLabelFrame* frame = roles_ ? roles_->getStatisticsSummary(roleNumber()) : nullptr;
    if (!frame) return true;
    if (isPlaced_) openSlots(*frame);
    mainStyle_ = &base_.styleOf(*frame);
    if (frame->getLabel()) base_.styleLabel(*frame->getLabel(), given_.label);
    fillSlots();
    importStyles();
    return true;
  }

  bool dressPage() {
    const bool isPinned = base_.source && !base_.source->getLocations().empty();
    if (isPlaced_ && !isPinned) openSlots(target_);
    mainStyle_ = &base_.styleOf(target_);
    style1_ = target_.getStyleById(ChartBase::_container);
    if (!style1_) {
      // What isn't a style may have the id, in a damaged chart.
      const bool isTaken = target_.doesIdExist(ChartBase::_container);
      const ChartString id =
          isTaken ? base_.CreateUniqueId(ChartBase::_container) : ChartBase::_container;
      style1_ = target_.addStyle();
      style1_->setId(id.xc_str());
    }
    fillSlots();
    importStyles();
    return true;
  }

  bool dressGraph() {
    const std::size_t count = graphs_.size();
    if (given_.number < 0 || count == 0 || static_cast<std::size_t>(given_.number) > count ||
        (given_.number == 0 && count > 1)) {
      return false;
    }
    PlXGraph& graph = *graphs_[given_.number == 0 ? 0 : given_.number - 1];
    if (mayMove_) openStatedSlots(graph);
    receiveStyles(graph);
    fillSlots();
    importStyles();
    return true;
  }

  bool dressGraphs() {
    for (PlXGraph* graph : graphs_) {
      receiveStyles(*graph);
      importStyles();
    }
    return true;
  }

  void receiveStyles(PlXGraph& graph) {
    mainStyle_ = &base_.styleOf(graph);
    PlXStyle& cells = base_.ensuredStyle(graph, &PlXGraph::getCellStyle, &PlXGraph::setCellStyle);
    const bool isPolar = base_.isGraphPolar(graph);
    style1_ = isPolar ? nullptr : &cells;
    style2_ = isPolar ? &cells : nullptr;
  }

  template <class Frame>
  bool dressOne(const std::vector<Frame*>& all) {
    if (given_.number < 1 || static_cast<std::size_t>(given_.number) > all.size()) return false;
    Frame& frame = *all[given_.number - 1];
    if (isPlaced_) openSlots(frame);
    mainStyle_ = &base_.styleOf(frame);
    fillSlots();
    importStyles();
    return true;
  }

  bool dressFreeText() {
    if (given_.styleOnly && given_.number > 1) return false;
    PlXLabelFrame* frame = given_.label && !given_.styleOnly ? addFreeText() : onlyFreeText();
    if (!frame) return false;
    mainStyle_ = &base_.styleOf(*frame);
    if (isPlaced_) openSlots(*frame);
    if (!frame->getLabel() && !given_.styleOnly) giveText(*frame);
    if (frame->getLabel()) base_.styleLabel(*frame->getLabel(), given_.label);
    fillSlots();
    importStyles();
    return true;
  }

  PlXLabelFrame* addFreeText() {
    const ChartString id = base_.CreateUniqueId(PlXUni::_labelFrame);
    PlXLabelFrame* frame = target_.addLabelFrame(id.xc_str());
    unsigned place = 1;
    while (roles_->getText(place)) ++place;
    roles_->setText(*frame, place);
    if (std::ranges::none_of(given_.places, &ChartString::empty)) return frame;
    for (const auto part : {PlXLocation::part_left, PlXLocation::part_top}) {
      slots_[part] = frame->addLocation(part);
      fix(*slots_[part], u"50%");
    }
    for (const auto part : {PlXLocation::part_width, PlXLocation::part_height}) {
      frame->addLocation(part)->setMethod(PlXLocation::method_content);
    }
    return frame;
  }

  // Null when there are several, or none.
  PlXLabelFrame* onlyFreeText() const {
    const std::vector<PlXLabelFrame*> free = frames::freeLabelFrames(target_);
    return free.size() == 1 ? free.front() : nullptr;
  }

  // ---- places and styles

  static void fix(PlXLocation& location, const XMLCh* value) {
    location.setValue(value);
    location.setMethod(PlXLocation::method_fixed);
  }

  template <class Frame>
  void openSlots(Frame& frame) {
    frame.removeLocations();
    for (std::size_t i = 0; i < partCount; ++i) slots_[i] = frame.addLocation(partOf(i));
  }

  void openStatedSlots(PlXGraph& graph) {
    for (std::size_t i = 0; i < partCount; ++i) {
      if (given_.places[i].empty() || !frames::locationOf(graph, partOf(i))) continue;
      graph.removeLocation(partOf(i));
      slots_[i] = graph.addLocation(partOf(i));
    }
  }

  void fillSlots() {
    for (std::size_t i = 0; i < partCount; ++i) {
      if (slots_[i] && !given_.places[i].empty()) fix(*slots_[i], given_.places[i].xc_str());
    }
  }

  void importStyles() {
    if (style1_ && given_.style1) base_.importStyle(given_.style1, *style1_);
    if (style2_ && given_.style2) base_.importStyle(given_.style2, *style2_);
    if (mainStyle_ && given_.mainStyle) base_.importStyle(given_.mainStyle, *mainStyle_);
  }

  BaseTemplate& base_;
  PlXVisualization& target_;
  const Parameters& given_;
  std::vector<PlXGraph*> graphs_;
  PlXExtensionVis* roles_;  // null when nothing may be added
  bool mayMove_;
  bool isPlaced_;  // by all four places
  std::array<PlXLocation*, partCount> slots_{};
  PlXStyle* mainStyle_ = nullptr;
  PlXStyle* style1_ = nullptr;
  PlXStyle* style2_ = nullptr;
};

}  // namespace

bool TAddFrame::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
  const bool isFound = Framing(*this, parameters).run();
  if (!isFound) because("there is no such frame");
  return isFound;
}
