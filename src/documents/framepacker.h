// FramePacker: the default layout of a chart's page.
#ifndef CHARTXML_FRAMEPACKER_H
#define CHARTXML_FRAMEPACKER_H

#include <vector>

#include "chartstring.h"
#include "export.h"

class PlXContainer;
class PlXDocument;
class PlXGraph;
class PlXVisualization;

// Stacks titles at the top of the page and footnotes at its bottom, with the graph between them and
// legends, statistics summaries and keys down the right-hand side. It computes no coordinates: it
// writes the locations of frames, which whoever draws the chart resolves.
//
// The frames are those to which the chart's extension record gives a role: titles 1 and 2, the
// subtitle, footnotes 1 to 3, the legends, and in one column the side frames, which are the
// summaries and then the keys; of each list those up to its first free number. Besides there are
// the chart's graphs, and the container that holds the first legend or, if none does, the first
// side frame.
class CHARTXML_API FramePacker {
 public:
  virtual ~FramePacker();

  // Places the frames: takes away all locations of each and writes new ones, so that a second call
  // changes nothing more. True. What the model throws passes on.
  //
  // The subtitle, the container and the side frames are placed whatever the number of graphs,
  // titles 1 and 2 when one graph stands directly under the root, and the graph, the footnotes and
  // the legends when the whole chart has one.
  //
  // Left alone are
  // - all frames of a chart whose getPreserveLocations() is true,
  // - with a `reference`, which is the chart as its author wrote it and may be null: text frames,
  //   the container and the graph, whose element of the same id there has locations in it that are
  //   all fixed; for the graph one that its author specified counts as fixed,
  // - with a `reference`: legends and side frames of which one location in the chart itself is
  //   specified by the user.
  //
  // A chart without a graph has nothing in the middle of its page: what would be at the level of
  // the graph's top is where that would be, below the lowest title or at "1%". A frame in several
  // places of a list is placed for the first of them, and no frame is placed by itself.
  bool packFrames(PlXVisualization& visualization, PlXDocument* reference) const;

  // Appends the graphs of each container, followed by those of the containers in it.
  void getGraphChildren(const std::vector<PlXContainer*>& containers,
                        std::vector<PlXGraph*>& graphs) const;

  // The text of a percentage such as "33.3%", with what is behind the first decimal cut off. "0%"
  // for what isn't finite.
  ChartString assignValue(double percent) const;
};

#endif
