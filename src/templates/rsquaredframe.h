// The frames that tell how well fit lines fit.
#ifndef CHARTXML_RSQUAREDFRAME_H
#define CHARTXML_RSQUAREDFRAME_H

#include "basetemplate.h"

class PlXGraph;
class PlXLabelFrame;
class PlXLine;
class PlXVisualization;

// Adds a frame with the R-squared of a fit line to the right of its graph, whose right edge moves
// to 75% of the page, and below what stands there: the first such frame of the chart, else its last
// container, else its last legend. A command makes one of these for all of its frames.
class RSquaredFrames {
 public:
  explicit RSquaredFrames(BaseTemplate& base) : base_(base) {}

  // `method` is the name of the kind of fit. `isOfSubgroups` puts the name of the subgroup before
  // each value.
  void add(PlXGraph& graph, PlXLine& line, const ChartString& method, bool isOfSubgroups);

 private:
  void makeRoom(PlXGraph& graph);
  void place(PlXGraph& graph, PlXLabelFrame& frame) const;
  void fill(PlXLabelFrame& frame, PlXLine& line, const ChartString& method, bool isOfSubgroups);
  PlXLabelFrame* firstOfChart() const;

  BaseTemplate& base_;
  PlXLabelFrame* first_ = nullptr;
  const PlXGraph* roomy_ = nullptr;  // the last one that made room
};

#endif
