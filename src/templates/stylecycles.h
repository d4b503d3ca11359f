// Lists of styles as commands see them: what kind a list is, and the chart's stock of lists.
#ifndef CHARTXML_STYLECYCLES_H
#define CHARTXML_STYLECYCLES_H

class PlXCycle;
class PlXVisualization;

namespace stylecycles {

enum class Kind { none, color, pattern, dash, shape };

// By the first style of the list, and the second where dashes are asked for: a list of dashes may
// begin with a solid line.
Kind kindOf(const PlXCycle& cycle);
// The stock list of a kind in the chart's repository, the last of several; null when there is none.
PlXCycle* stockCycle(const PlXVisualization& chart, Kind kind);

}  // namespace stylecycles

#endif
