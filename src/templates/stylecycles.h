// Lists of styles as commands see them: what kind a list is, and the chart's stock of lists.
#ifndef CHARTXML_STYLECYCLES_H
#define CHARTXML_STYLECYCLES_H

#include <deque>
#include <vector>

#include "basetemplate.h"

class PlXCycle;
class PlXStyleCycle;
class PlXVisualization;

namespace stylecycles {

enum class Kind { none, color, pattern, dash, shape };

// By the first style of the list, and the second where dashes are asked for: a list of dashes may
// begin with a solid line.
Kind kindOf(const PlXCycle& cycle);
// The stock list of a kind in the chart's repository, the last of several; null when there is none.
PlXCycle* stockCycle(const PlXVisualization& chart, Kind kind);
// Puts a copy of a stock list in the place of the lists that a style cycle has. It isn't the stock
// itself.
void takeStock(const BaseTemplate& base, const PlXCycle& stock, PlXStyleCycle& to);

// The lists of styles that elements `cycle` of a command state, for any number of style cycles.
class Lists {
 public:
  Lists(BaseTemplate& base, const std::vector<const xercesc::DOMElement*>& cycles);

  bool empty() const { return lists_.empty(); }
  // Adds the lists, behind those that are there.
  void addTo(PlXStyleCycle& styleCycle) const;

 private:
  // By list; an import stays where it is made.
  std::deque<std::deque<BaseTemplate::StyleImport>> lists_;
};

}  // namespace stylecycles

#endif
