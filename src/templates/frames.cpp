#include "frames.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "chartbase.h"
#include "objectsbytag.h"
#include "plxextension.h"
#include "plxgraph.h"
#include "plxuni.h"

namespace frames {

namespace {

constexpr std::pair<const XMLCh*, Kind> kindWords[] = {
    {ChartBase::_title, Kind::title},
    {ChartBase::_subtitle, Kind::subtitle},
    {ChartBase::_footnote, Kind::footnote},
    {PlXUni::_legend, Kind::legend},
    {u"statisticsSummary", Kind::statisticsSummary},
    {PlXUni::_visualization, Kind::visualization},
    {PlXUni::_graph, Kind::graph},
    {PlXUni::_labelFrame, Kind::labelFrame},
    {PlXUni::_container, Kind::container},
    {PlXControlFrame::_controlFrame, Kind::controlFrame},
};

constexpr Known knownFrames[] = {
    {ChartBase::_frame_title_1, Kind::title, 1},
    {ChartBase::_frame_title_2, Kind::title, 2},
    {ChartBase::_frame_subtitle_1, Kind::subtitle, 0},
    {ChartBase::_frame_footnote_1, Kind::footnote, 1},
    {ChartBase::_frame_footnote_2, Kind::footnote, 2},
    {ChartBase::_frame_footnote_3, Kind::footnote, 3},
    {ChartBase::_frame_legend_1, Kind::legend, 1},
    {ChartBase::_frame_legend_2, Kind::legend, 2},
    {ChartBase::_frame_statistics_summary_1, Kind::statisticsSummary, 0},
    {ChartBase::_frame_graph_1, Kind::visualization, 0},
    {ChartBase::_frame_data_1, Kind::graph, 1},
    {ChartBase::_frame_pie_1, Kind::graph, 1},
};

}  // namespace

Kind kindOf(const ChartString& word) {
  for (const auto& [text, kind] : kindWords) {
    if (word.equals(text)) return kind;
  }
  return Kind::other;
}

const XMLCh* wordOf(Kind kind) {
  for (const auto& [text, each] : kindWords) {
    if (each == kind) return text;
  }
  return nullptr;
}

const Known* knownBy(const XMLCh* id) {
  for (const Known& known : knownFrames) {
    if (xercesc::XMLString::equals(known.id, id)) return &known;
  }
  return nullptr;
}

namespace {

// The frames that are linked to each other; null for those that the chart doesn't have.
struct TextFrames {
  PlXLabelFrame* title1 = nullptr;
  PlXLabelFrame* title2 = nullptr;
  PlXLabelFrame* subtitle = nullptr;
  PlXLabelFrame* footnote1 = nullptr;
  PlXLabelFrame* footnote2 = nullptr;

  explicit TextFrames(const PlXVisualization& chart) {
    const PlXExtensionVis* roles = chart.getExtension();
    if (!roles) return;
    title1 = roles->getTitle1();
    title2 = roles->getTitle2();
    subtitle = roles->getSubtitle();
    footnote1 = roles->getFootnote1();
    footnote2 = roles->getFootnote2();
  }
  bool contain(const PlXLabelFrame* frame) const {
    return frame && (frame == title1 || frame == title2 || frame == subtitle ||
                     frame == footnote1 || frame == footnote2);
  }
};

bool nearlyMeet(const PlXLocation& one, const PlXLocation& other) {
  constexpr double apart = 2;
  const double first = percentage(one);
  const double second = percentage(other);
  return first > 0 && second > 0 && std::abs(first - second) < apart;
}

template <class Frame>
void attach(PlXLocation& location, Frame& target) {
  location.setMethod(PlXLocation::method_attach);
  location.setTarget(target);
  location.removeValue();
}

// Goes through the neighbours on both sides of a frame, from the nearest on.
class Linking {
 public:
  explicit Linking(PlXLabelFrame& frame) : frame_(frame) {}

  template <class Frame>
  void tryAbove(Frame* other) {
    PlXLocation* top = locationOf(frame_, PlXLocation::part_top);
    PlXLocation* edge = other && !above_ ? locationOf(*other, PlXLocation::part_bottom) : nullptr;
    if (!top || !edge || edge->getMethod() != PlXLocation::method_fixed) return;
    if (!nearlyMeet(*top, *edge)) return;
    attach(*top, *other);
    above_ = other;
  }

  template <class Frame>
  void tryBelow(Frame* other) {
    if (!other || hasBelow_ || !locationOf(frame_, PlXLocation::part_bottom)) return;
    PlXLocation* edge = locationOf(*other, PlXLocation::part_top);
    if (!edge) return;
    if (edge->getMethod() != PlXLocation::method_fixed) {
      // The frame goes between two that are attached.
      const bool isAttached = edge->getMethod() == PlXLocation::method_attach;
      if (above_ && isAttached && edge->getTarget() == above_) edge->setTarget(frame_);
      return;
    }
    if (!nearlyMeet(*locationOf(frame_, PlXLocation::part_bottom), *edge)) return;
    attach(*edge, frame_);
    hasBelow_ = true;
  }

 private:
  PlXLabelFrame& frame_;
  const PlXBaseElement* above_ = nullptr;  // what its top was attached to
  bool hasBelow_ = false;
};

}  // namespace

std::vector<PlXLabelFrame*> freeLabelFrames(const PlXVisualization& chart) {
  const TextFrames texts(chart);
  std::vector<PlXLabelFrame*> free = chart.getLabelFrames();
  std::erase_if(free, [&](const PlXLabelFrame* frame) { return texts.contain(frame); });
  return free;
}

std::vector<PlXContainer*> containers(const PlXVisualization& chart) {
  return framesByTag<PlXContainer>(chart, PlXUni::_container);
}

double percentage(const PlXLocation& location) {
  const ChartString value(location.getValue());
  if (!value.view().ends_with(u'%')) return 0;
  return std::max(value.convertToDouble(), 0.0);
}

void linkNeighbours(const PlXVisualization& chart, PlXLabelFrame& frame,
                    const std::vector<PlXGraph*>& graphs) {
  const TextFrames texts(chart);
  if (!texts.contain(&frame)) return;
  PlXGraph* graph = graphs.size() == 1 ? graphs.front() : nullptr;
  Linking link(frame);
  if (&frame == texts.title1) {
    link.tryBelow(texts.title2);
    link.tryBelow(texts.subtitle);
    link.tryBelow(graph);
  } else if (&frame == texts.title2) {
    link.tryAbove(texts.title1);
    link.tryBelow(texts.subtitle);
    link.tryBelow(graph);
  } else if (&frame == texts.subtitle) {
    link.tryAbove(texts.title2);
    link.tryAbove(texts.title1);
    link.tryBelow(graph);
  } else if (&frame == texts.footnote1) {
    link.tryAbove(graph);
    link.tryBelow(texts.footnote2);
  } else {
    link.tryAbove(graph);
    link.tryAbove(texts.footnote1);
  }
}

}  // namespace frames
