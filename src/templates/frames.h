// What the commands of frames share: the kinds of frames by their words, and the frames of a kind.
#ifndef CHARTXML_FRAMES_H
#define CHARTXML_FRAMES_H

#include <vector>

#include "plxframes.h"

class ChartString;
class PlXGraph;

namespace frames {

enum class Kind {
  title,
  subtitle,
  footnote,
  legend,
  statisticsSummary,
  visualization,
  graph,
  labelFrame,
  container,
  controlFrame,
  other
};

Kind kindOf(const ChartString& word);
// The word of a kind; null for the other one.
const XMLCh* wordOf(Kind kind);

// A frame by an id that says which it is.
struct Known {
  const XMLCh* id;
  Kind kind;
  long number;  // 1-based, among those of the kind; 0 where there is but one
};

// Null for an id that says nothing.
const Known* knownBy(const XMLCh* id);

// The label frames of the page, less those that are its first two titles, its subtitle and its
// first two footnotes.
std::vector<PlXLabelFrame*> freeLabelFrames(const PlXVisualization& chart);
// All of the chart, those in others behind them.
std::vector<PlXContainer*> containers(const PlXVisualization& chart);

// The first of that part; null when the frame has none.
template <class Frame>
PlXLocation* locationOf(const Frame& frame, PlXLocation::ENUM_part part) {
  for (PlXLocation* location : frame.getLocations()) {
    if (location->getPart() == part) return location;
  }
  return nullptr;
}
// Above 0 for a percentage of the page; 0 for anything else.
double percentage(const PlXLocation& location);

// After a text frame was placed: where it nearly meets a frame above or below, by percentages of
// the page less than 2 apart, one edge is attached to the other, so that layout moves both. Only
// the first two titles, the subtitle and the first two footnotes are linked, among each other and
// to `graphs` when that is one.
void linkNeighbours(const PlXVisualization& chart, PlXLabelFrame& frame,
                    const std::vector<PlXGraph*>& graphs);

}  // namespace frames

#endif
