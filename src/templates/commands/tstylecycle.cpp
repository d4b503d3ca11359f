// setStyleCycle id styleByNumber createType elementType, with children cycle: new lists of styles
// for the style-bys of elements, or of labelings. With the id styleCycleRepository the lists are
// the chart's stock instead, which is made when it is missing, and style-bys take theirs from it:
// intervals with several by their ids, then all as createType says. A style-by without a list gets
// one of its own, also where it shows the stock; elements get the style that they lack. A list of
// the id color_pattern is never changed.
#include <optional>
#include <unordered_set>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "commands.h"
#include "elementtype.h"
#include "plxaesthetics.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabeling.h"
#include "plxstyle.h"
#include "plxstylecycle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "stylecycles.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;
using stylecycles::Kind;

namespace {

struct Parameters {
  bool isStock = false;
  long styleByNumber = 0;
  bool takesStock = false;
  // Of lists that are taken: dashes on lines, shapes on points and patterns elsewhere, in the place
  // of colours.
  bool takesPatterns = false;
  ElementType elementType{nullptr};
  std::vector<const DOMElement*> cycles;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  const ChartString createType(command.getAttribute(u"createType"));
  Parameters parameters;
  parameters.elementType = ElementType(command.getAttribute(u"elementType"));
  parameters.isStock = is(command.getAttribute(PlXUni::_id), ChartBase::_styleCycleRepository);
  parameters.styleByNumber = stated::selection(base, &command, u"styleByNumber");
  parameters.takesPatterns = createType.equals(u"PatternsOnly");
  parameters.takesStock = parameters.takesPatterns || createType.equals(u"ColorsOnly") ||
                          createType.equals(u"ColorsThenPatterns");
  forChildren(&command, PlXUni::_cycle,
              [&](const DOMElement* cycle) { parameters.cycles.push_back(cycle); });
  return parameters;
}

// What a style-by takes of the stock; without a list it keeps what it has.
struct Choice {
  const PlXCycle* list = nullptr;
  bool isOnWhite = false;
  bool isHollow = false;
};

class Stock {
 public:
  Stock(const PlXVisualization& chart, const Parameters& parameters)
      : color_(stylecycles::stockCycle(chart, Kind::color)),
        pattern_(stylecycles::stockCycle(chart, Kind::pattern)),
        dash_(stylecycles::stockCycle(chart, Kind::dash)),
        shape_(stylecycles::stockCycle(chart, Kind::shape)),
        parameters_(parameters),
        namesCount_(is(chart.getName(), u"XGRAPH")) {}

  // `isOneOfSeveral` when the element has more style-bys.
  Choice choose(const CTElementType& element, const PlXStyle& style, const PlXStyleBy& styleBy,
                bool isOneOfSeveral) const {
    const ChartString id(styleBy.getId());
    const bool isOfColor = id.ContainsString(PlXUni::_color);
    const bool isOfPattern = !isOfColor && id.ContainsString(PlXUni::_pattern);
    const bool isInterval = dynamic_cast<const PlXInterval*>(&element);
    if (isInterval && isOneOfSeveral) {
      const PlXCycle* own = isOfColor ? color_ : isOfPattern ? pattern_ : nullptr;
      if (own) return {own};
    }
    if (!parameters_.takesStock) return {};
    const bool patterns = parameters_.takesPatterns;
    if (isLine(element, style)) return {patterns && dash_ ? dash_ : color_};
    if (dynamic_cast<const PlXPoint*>(&element)) {
      if (patterns && shape_) return {shape_};
      return {.list = color_, .isHollow = true};
    }
    const bool byName = isInterval && namesCount_;
    const bool wantsPattern = byName && (isOfColor || isOfPattern) ? isOfPattern : patterns;
    if (wantsPattern && pattern_) return {.list = pattern_, .isOnWhite = true};
    return {color_};
  }

 private:
  static bool isLine(const CTElementType& element, const PlXStyle& style) {
    if (dynamic_cast<const PlXInterval*>(&element)) {
      const XMLCh* symbol = style.GetAttribute(PlXUni::_symbol);
      return is(symbol, PlXUni::_line) || is(symbol, PlXUni::_ibeam);
    }
    return dynamic_cast<const PlXLine*>(&element) || dynamic_cast<const PlXEdge*>(&element) ||
           dynamic_cast<const PlXPath*>(&element);
  }

  const PlXCycle* color_;
  const PlXCycle* pattern_;
  const PlXCycle* dash_;
  const PlXCycle* shape_;
  const Parameters& parameters_;
  bool namesCount_;  // in charts that a procedure of this name has made
};

// Colours show as the outline of markers.
void makeHollow(const PlXStyleCycle& styleCycle) {
  for (const PlXCycle* cycle : styleCycle.getCycles()) {
    for (PlXStyle* style : cycle->getStyles()) {
      const XMLCh* outline = style->getColor2();
      if (style->isColorPresent() && (!*outline || is(outline, PlXStyle::_transparent))) {
        style->setColor2(style->getColor());
      }
      style->setColor(PlXStyle::_transparent);
    }
  }
}

// At least one list, and a style in each.
void fillGaps(PlXStyleCycle& styleCycle) {
  if (styleCycle.getCycles().empty()) styleCycle.addCycle();
  for (PlXCycle* cycle : styleCycle.getCycles()) {
    if (cycle->getStyles().empty()) cycle->addStyle();
  }
}

void putOnWhite(PlXStyle& style) {
  style.setColor2(PlXStyle::_black);
  style.setColor(PlXStyle::_white);
}

class Restyling {
 public:
  Restyling(BaseTemplate& base, const Parameters& parameters)
      : base_(base), chart_(base.target), parameters_(parameters), lists_(base, parameters.cycles) {
    if (PlXExtensionVis* extension = chart_.getExtension()) {
      repository_ = extension->getStyleCycleRepository();
    }
    if (parameters.isStock) fillRepository();
    stock_.emplace(chart_, parameters);
  }

  void restyle(const PlXGraph& graph) {
    long number = 0;
    const auto isMeant = [&] {
      ++number;
      return parameters_.styleByNumber == 0 || parameters_.styleByNumber == number;
    };
    std::vector<CTElementType*> elements;
    BaseTemplate::getAllElements(graph, elements);
    for (CTElementType* element : elements) {
      if (parameters_.elementType.isLabeling()) {
        for (const PlXLabeling* labeling : element->getLabelings()) {
          for (PlXStyleBy* styleBy : labeling->getStyleBys()) {
            if (isMeant() && !isKept(*styleBy)) giveLists(styleCycleOf(*styleBy));
          }
        }
      } else if (parameters_.elementType.fits(*element)) {
        const std::vector<PlXStyleBy*> styleBys = element->getStyleBys();
        for (PlXStyleBy* styleBy : styleBys) {
          if (isMeant() && !isKept(*styleBy)) restyle(*element, *styleBy, styleBys.size() > 1);
        }
      }
    }
  }

 private:
  void fillRepository() {
    PlXExtensionVis* extension = chart_.getExtension();
    if (!extension) extension = chart_.addExtension();
    if (!repository_) extension->setStyleCycleRepository(*(repository_ = &newStyleCycle()));
    repository_->removeCycles();
    repository_->removeExtensions();
    lists_.addTo(*repository_);
  }

  PlXStyleCycle& newStyleCycle() {
    return *chart_.addStyleCycle(base_.CreateUniqueId(PlXUni::_styleCycle).xc_str());
  }

  static bool isKept(const PlXStyleBy& styleBy) {
    const PlXStyleCycle* styleCycle = styleBy.getStyleCycle();
    return styleCycle && is(styleCycle->getId(), u"color_pattern");
  }

  PlXStyleCycle& styleCycleOf(PlXStyleBy& styleBy) {
    PlXStyleCycle* styleCycle = styleBy.getStyleCycle();
    if (!styleCycle || styleCycle == repository_) {
      styleBy.setStyleCycle(*(styleCycle = &newStyleCycle()));
    }
    return *styleCycle;
  }

  // Style-bys may share a style cycle.
  void giveLists(PlXStyleCycle& styleCycle) {
    if (!filled_.insert(&styleCycle).second) return;
    styleCycle.removeCycles();
    lists_.addTo(styleCycle);
    fillGaps(styleCycle);
    arePatterns_ = stylecycles::kindOf(*styleCycle.getCycles().front()) == Kind::pattern;
  }

  void restyle(CTElementType& element, PlXStyleBy& styleBy, bool isOneOfSeveral) {
    PlXStyle& style = base_.elementStyle(element);
    PlXStyleCycle& styleCycle = styleCycleOf(styleBy);
    if (!parameters_.isStock) {
      giveLists(styleCycle);
      if (arePatterns_) putOnWhite(style);
      return;
    }
    const Choice choice = stock_->choose(element, style, styleBy, isOneOfSeveral);
    if (choice.list) {
      stylecycles::takeStock(base_, *choice.list, styleCycle);
      if (choice.isOnWhite) putOnWhite(style);
      if (choice.isHollow && !is(styleCycle.getId(), ChartBase::_styleCycleColor)) {
        makeHollow(styleCycle);
      }
    }
    fillGaps(styleCycle);
  }

  BaseTemplate& base_;
  PlXVisualization& chart_;
  const Parameters& parameters_;
  stylecycles::Lists lists_;
  PlXStyleCycle* repository_ = nullptr;
  std::optional<Stock> stock_;
  // The style cycles that have the command's lists; all have the same.
  std::unordered_set<const PlXStyleCycle*> filled_;
  bool arePatterns_ = false;  // the first of these lists
};

}  // namespace

bool TStyleCycle::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
  Restyling restyling(*this, parameters);
  for (const PlXGraph* graph : target.getGraphs()) restyling.restyle(*graph);
  return true;
}
