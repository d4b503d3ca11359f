// Where the frames of a chart's page are: their locations, resolved in a plain way.
#ifndef CHARTXML_TOOLS_PAGELAYOUT_H
#define CHARTXML_TOOLS_PAGELAYOUT_H

#include <cstddef>
#include <string>
#include <vector>

class PlXVisualization;

// A frame, in points from the upper left corner of the page.
struct FrameBox {
  std::string kind;    // the tag
  std::string id;      // empty for none
  std::string role;    // "title1,text2"; empty for none
  std::string text;    // of its label
  std::string places;  // "top=1% height=content"
  std::size_t depth;   // how many containers it is in
  bool isHidden;       // by its style; it has its place all the same
  double left, right, top, bottom;

  // "legend leg"
  std::string name() const { return id.empty() ? kind : kind + ' ' + id; }
};

struct PageLayout {
  double width, height;
  std::vector<FrameBox> frames;  // in the order of the document
  std::vector<std::string> problems;
};

// The page has the size that the chart's own locations fix, or 600 by 450 points.
//
// Percentages are those of what holds the frame: a container, or the page. A frame that says
// nothing about a direction spans what holds it in that direction, and so do the free edges of
// graphs and containers; other frames are as large as their content. How large that is isn't known
// here: texts are taken by their number of characters, legends by that of their targets, graphs
// without a say as half a page, containers by what is in them. Where edges and extent contradict
// each other, the edges count.
//
// Problems are places that depend on themselves, which then are as if nothing was said; targets
// that are no frames; values that are no lengths; frames whose edges are the wrong way round.
PageLayout layOutPage(const PlXVisualization& chart);

#endif
