// The legends that tell how many cases the bins of a scatterplot hold.
#ifndef CHARTXML_BINLEGENDS_H
#define CHARTXML_BINLEGENDS_H

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "basetemplate.h"
#include "graphtexts.h"

class CTAesthetic;
class PlXContainer;
class PlXExtensionVis;
class PlXGraph;
class PlXLegend;

// One for each position of an element in its graph: elements at the same position of several graphs
// share it. The chart's extension record knows it as "frameLegendBin", from the second position on
// with the 0-based position behind. Where the record names a legend that is gone there is none.
//
// For one run of a command, which adds no legend on its own: what was looked up once is kept, so
// that many elements cost no walks over the chart.
class BinLegends {
 public:
  // What dresses the legends; null where nothing does.
  struct Looks {
    const xercesc::DOMElement* legend = nullptr;
    const xercesc::DOMElement* frames = nullptr;
    const xercesc::DOMElement* texts = nullptr;
    const xercesc::DOMElement* label = nullptr;
  };

  BinLegends(BaseTemplate& base, const Looks& looks);

  // Whether the legend of that position has an entry for the aesthetic.
  bool shows(const CTAesthetic& aesthetic, std::size_t position);
  // Gives it one unless it has it. A new legend is placed beside the graph, or beneath the last
  // legend that there is; in a chart with containers it is the last in the first of them.
  void show(CTAesthetic& aesthetic, PlXGraph& graph, std::size_t position);

 private:
  struct Known {
    PlXLegend* legend = nullptr;  // null when the record names one that is gone
    bool isNamed = false;         // by the record
    bool isDressed = false;
    std::unordered_set<std::u16string> shown;  // the ids of what its entries lead to
  };

  Known& known(std::size_t position);
  PlXLegend& add(PlXGraph& graph);
  void placeOnPage(PlXLegend& legend, PlXGraph& graph);
  void placeInContainer(PlXLegend& legend);
  void dress(PlXLegend& legend);
  PlXExtensionVis& record();

  BaseTemplate& base_;
  BaseTemplate::StyleImport legendStyle_;
  BaseTemplate::StyleImport frameStyle_;
  BaseTemplate::StyleImport textStyle_;
  const xercesc::DOMElement* label_;
  PlXExtensionVis* record_;
  PlXContainer* container_ = nullptr;     // the first; null when the chart has none
  PlXLegend* lastInContainer_ = nullptr;  // null when it has none
  std::unordered_map<std::size_t, Known> known_;
  std::optional<ChartString> title_;  // of legends without a label
};

#endif
