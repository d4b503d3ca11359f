// addChartsOnDiagonal type styleOnly, with children style, addHistogramNormalLine and
// setHistogramBinning: what the diagonal of a scatterplot matrix shows. histogram and NormalCurve
// add an element in the graph's second block, which is made, and replace what an earlier run put
// there; none hides the matrix on its diagonal and takes nothing away. styleOnly styles what is
// there. Of several children of a kind the last counts.
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "matrixpanels.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxfacets.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

enum class Mode { none, histogram, normalCurve };

std::optional<Mode> modeOf(const ChartString& word) {
  if (word.equals(PlXUni::_none)) return Mode::none;
  if (word.equals(u"histogram")) return Mode::histogram;
  if (word.equals(u"NormalCurve")) return Mode::normalCurve;
  return {};
}

struct Parts {
  const DOMElement* style = nullptr;
  const DOMElement* normalLine = nullptr;
  const DOMElement* normalStyle = nullptr;
  const DOMElement* binning = nullptr;
};

Parts readParts(const DOMElement& command) {
  Parts parts;
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    const XMLCh* name = child->getNodeName();
    if (is(name, PlXUni::_style)) parts.style = child;
    if (is(name, u"addHistogramNormalLine")) parts.normalLine = child;
    if (is(name, u"setHistogramBinning")) parts.binning = child;
  }
  parts.normalStyle = firstDescendant(parts.normalLine, PlXUni::_style);
  return parts;
}

std::vector<CTElementType*> elementsOf(const PlXGraph& graph) {
  std::vector<CTElementType*> elements;
  BaseTemplate::getAllElements(graph, elements);
  return elements;
}

void styleDiagonal(BaseTemplate& base, const PlXGraph& graph, const Parts& parts) {
  const PlXCoordinates* diagonal = graph.getCoordinates(1);
  if (!diagonal) return;
  for (CTElementType* element : elementsOf(graph)) {
    if (element->getCoordinates() != diagonal) continue;
    const bool isNormalLine = parts.normalLine && dynamic_cast<const PlXLine*>(element);
    const DOMElement* style = isNormalLine ? parts.normalStyle : parts.style;
    if (style) base.importStyle(style, base.styleOf(*element));
  }
}

// ---- what is on the diagonal
// As an earlier run leaves its element, and charts have theirs.
bool isHiddenBeside(const CTElementType& element) {
  for (const PlXConditionalStyle* each : element.getConditionalStyles()) {
    const PlXStyle* style = each->getStyle();
    const ChartString when(each->getWhen());
    if (style && !style->getVisible() && when.ContainsString(u"!") &&
        when.ContainsString(u"facet1") && when.ContainsString(u"facet2")) {
      return true;
    }
  }
  return false;
}

// The second block. All elements that name none are told to be in the first.
PlXCoordinates& diagonalOf(BaseTemplate& base, PlXGraph& graph, PlXCoordinates& first) {
  const auto freeId = [&] { return base.CreateUniqueId(PlXUni::_coordinates); };
  if (!*first.getId()) first.setId(freeId().xc_str());
  for (CTElementType* element : elementsOf(graph)) {
    if (!element->getCoordinates()) element->setCoordinates(first);
  }
  if (PlXCoordinates* second = graph.getCoordinates(1)) return *second;
  PlXCoordinates* block = graph.addCoordinates(freeId().xc_str());
  for (const XMLCh* lowerMargin : {u"5%", u"15%"}) {
    PlXDimension* dimension = block->addDimension();
    dimension->setLowerMargin(lowerMargin);
    dimension->setUpperMargin(u"5%");
  }
  return *block;
}

void placeOnDiagonal(BaseTemplate& base, CTElementType& element, PlXCoordinates& diagonal) {
  element.setDot(false);
  element.setCoordinates(diagonal);
  matrixpanels::hideWhere(base, element, matrixpanels::beside);
}

CTElementType& addNormalLine(BaseTemplate& base, PlXGraph& graph, const CTElementType& matrix,
                             PlXCoordinates& diagonal) {
  PlXLine* line = graph.addLine(base.CreateUniqueId(PlXUni::_line).xc_str());
  base.styleOf(*line);
  placeOnDiagonal(base, *line, diagonal);
  line->addDistributionStatistic();
  base.copyVariables(*line, matrix);
  return *line;
}

void setBins(const BaseTemplate& base, PlXBinStatistic& bins, const DOMElement& binning) {
  const auto stated = [&](const XMLCh* name, stated::Type type) {
    return stated::text(base, &binning, name, type);
  };
  const ChartString start = stated(PlXBinStatistic::_binStart, stated::Type::Number);
  const ChartString width = stated(PlXBinStatistic::_binWidth, stated::Type::Number);
  const ChartString count = stated(PlXBinStatistic::_binCount, stated::Type::Integer);
  if (!start.empty()) bins.setBinStart(start.xc_str());
  if (!width.empty()) {
    bins.setBinWidth(width.xc_str());
  } else if (!count.empty()) {
    bins.setBinCount(count.xc_str());
  }
}

CTElementType& addHistogram(BaseTemplate& base, PlXGraph& graph, const CTElementType& matrix,
                            PlXCoordinates& diagonal, const Parts& parts) {
  PlXInterval* bars = graph.addInterval(base.CreateUniqueId(PlXUni::_interval).xc_str());
  base.styleOf(*bars).setColor(u"#DBD8AC");
  placeOnDiagonal(base, *bars, diagonal);
  PlXBinStatistic* bins = bars->addBinStatistic();
  bars->addSummaryStatistic()->setMethod(PlXSummaryStatistic::method_count);
  base.copyVariables(*bars, matrix);
  if (parts.normalLine) {
    CTElementType& line = addNormalLine(base, graph, matrix, diagonal);
    base.importStyle(parts.normalStyle, base.styleOf(line));
  }
  if (parts.binning) setBins(base, *bins, *parts.binning);
  return *bars;
}

// ---- an empty diagonal
// Other conditions go. The style that has hidden the matrix there goes on to do so.
void hideOnDiagonal(BaseTemplate& base, CTElementType& matrix) {
  PlXStyle* hidden = nullptr;
  for (const PlXConditionalStyle* each : matrix.getConditionalStyles()) {
    PlXStyle* style = is(each->getWhen(), BaseTemplate::_when) ? each->getStyle() : nullptr;
    if (style && !style->getVisible()) hidden = style;
  }
  matrix.removeConditionalStyles();
  if (hidden) {
    matrix.addConditionalStyle(BaseTemplate::_when, *hidden);
  } else {
    matrixpanels::hideWhere(base, matrix, BaseTemplate::_when);
  }
}

// Square panels, and level labels of y turned upright.
void makeRoom(PlXFacetLayout& layout) {
  layout.setCellAspect(1);
  const std::vector<PlXFacetLevel*> levels = layout.getFacetLevels();
  if (levels.size() != 2) return;
  for (const PlXAxis* axis : levels[1]->getAxiss()) {
    PlXMajorTicks* ticks = axis->getMajorTicks();
    if (ticks && ticks->getLabelAngle() == 0) ticks->setLabelAngle(-90);
  }
}

void fillDiagonal(BaseTemplate& base, PlXGraph& graph, CTElementType& matrix, PlXCoordinates& first,
                  Mode mode, const Parts& parts) {
  if (mode != Mode::none) {
    for (CTElementType* element : elementsOf(graph)) {
      if (element != &matrix && isHiddenBeside(*element)) graph.removeElement(*element);
    }
  }
  PlXCoordinates& diagonal = diagonalOf(base, graph, first);
  if (mode == Mode::none) {
    hideOnDiagonal(base, matrix);
    if (PlXFacetLayout* layout = graph.getFacetLayout()) makeRoom(*layout);
    return;
  }
  CTElementType& added = mode == Mode::histogram
                             ? addHistogram(base, graph, matrix, diagonal, parts)
                             : addNormalLine(base, graph, matrix, diagonal);
  base.importStyle(parts.style, base.styleOf(added));
}

}  // namespace

bool TAddChartsOnDiagonal::ProcessCommand() {
  const std::optional<Mode> mode = modeOf(attribute(PlXUni::_type));
  if (!command || !mode) return false;
  const Parts parts = readParts(*command);
  const bool isStyleOnly = getBooleanAttribute(command, _styleOnly, false);
  bool isFilled = false;
  for (PlXGraph* graph : target.getGraphs()) {
    CTElementType* matrix = getFirstSPLOMElement(*graph);
    PlXCoordinates* first = graph->getCoordinates(0);
    if (!matrix || !first) continue;
    if (isStyleOnly) {
      styleDiagonal(*this, *graph, parts);
    } else {
      fillDiagonal(*this, *graph, *matrix, *first, *mode, parts);
      isFilled = true;
    }
  }
  return isFilled;
}
