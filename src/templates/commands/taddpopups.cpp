// addPopups x y z legend, each true or false, of which y is shown when nothing is said: adds a
// popup to each element of the first coordinates block of a graph, with a line for each value. A
// line is the title of the axis or legend, " = " and a token, whose mapping leads to a variable. An
// element without a variable on y shows the count of its x there; one with nothing to show gets an
// empty popup. Popups that are there stay.
#include <array>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxstatistics.h"
#include "plxuni.h"
#include "plxvariables.h"

using namespace xercesc;

namespace {

// Each element shows the values of all legends, as many as a reader may want to see.
constexpr std::size_t mostLegendLines = 100;

struct LegendLine {
  ChartString title;
  CTVariableType* variable;
};

std::vector<LegendLine> readLegends(const BaseTemplate& queries, const PlXVisualization& chart) {
  std::vector<LegendLine> lines;
  for (const PlXLegend* legend : queries.getLegends()) {
    ChartString title;
    if (const PlXLabel* label = legend->getLabel()) {
      for (const PlXText* text : label->getTexts()) title.append(text->getText());
    }
    for (const PlXLegendTarget* entry : legend->getLegendTargets()) {
      const PlXBaseElement* shown = entry->getTarget();
      const XMLCh* id = shown ? shown->GetAttribute(PlXUni::_variable) : u"";
      auto* variable = dynamic_cast<CTVariableType*>(chart.objectOf(chart.getElementById(id)));
      if (variable) lines.push_back({title, variable});
      if (lines.size() == mostLegendLines) return lines;
    }
  }
  return lines;
}

using Titles = std::array<ChartString, 3>;

// Of the first axes of the dimensions x, y and z.
Titles readTitles(const PlXCoordinates* block) {
  Titles titles;
  if (!block) return titles;
  const std::vector<PlXDimension*> dimensions = block->getDimensions();
  for (std::size_t i = 0; i < titles.size() && i < dimensions.size(); ++i) {
    const std::vector<PlXAxis*> axes = dimensions[i]->getAxiss();
    const PlXLabel* label = axes.empty() ? nullptr : axes.front()->getLabel();
    const std::vector<PlXText*> texts = label ? label->getTexts() : std::vector<PlXText*>();
    if (!texts.empty()) titles[i] = texts.front()->getText();
  }
  return titles;
}

// Writes the lines of a popup.
class Lines {
 public:
  explicit Lines(PlXPopup& popup) : popup_(popup) {}

  // Answers the mapping of the new line's token.
  PlXTokenMapping& add(const ChartString& title) {
    ChartString token;
    token.append(++count_);
    if (count_ > 1) text_.append(u"\n");
    text_.append(title).append(u" = $[").append(token).append(u"]$");
    PlXTokenMapping* mapping = popup_.addTokenMapping();
    mapping->setValueToken(token.xc_str());
    return *mapping;
  }
  void addValue(const ChartString& title, CTVariableType& variable) {
    PlXTokenMapping& mapping = add(title);
    mapping.setVariable(variable);
    if (!variable.getCategorical()) {
      mapping.addSummaryStatistic()->setMethod(PlXSummaryStatistic::method_value);
    }
  }
  void addY(const ChartString& title, CTVariableType* y, CTVariableType* x) {
    PlXTokenMapping& mapping = add(title);
    PlXSummaryStatistic* statistic = mapping.addSummaryStatistic();
    if (y) {
      if (y->getCategorical()) statistic->setMethod(PlXSummaryStatistic::method_value);
      mapping.setVariable(*y);
    } else if (x) {
      statistic->setMethod(PlXSummaryStatistic::method_count);
      mapping.setVariable(*x);
    }
  }
  void finish() { popup_.setTokenTemplate(text_.xc_str()); }

 private:
  PlXPopup& popup_;
  ChartString text_;
  unsigned long count_ = 0;
};

}  // namespace

bool TAddPopups::ProcessCommand() {
  if (!command) return false;
  const bool showsX = getBooleanAttribute(command, PlXUni::_x, false);
  const bool showsY = getBooleanAttribute(command, PlXUni::_y, true);
  const bool showsZ = getBooleanAttribute(command, PlXUni::_z, false);
  const bool showsLegends = getBooleanAttribute(command, PlXUni::_legend, false);
  std::vector<LegendLine> legendLines;
  if (showsLegends) legendLines = readLegends(*this, target);

  const auto addPopup = [&](CTElementType& element, const Titles& titles) {
    PlXPopup* popup = target.addPopup();
    popup->setTarget(element);
    Lines lines(*popup);
    CTVariableType* x = getElementVariable(element, PlXUni::_x);
    if (showsX && x) lines.addValue(titles[0], *x);
    if (showsY) lines.addY(titles[1], getElementVariable(element, PlXUni::_y), x);
    CTVariableType* z = getElementVariable(element, PlXUni::_z);
    if (showsZ && z) lines.addValue(titles[2], *z);
    for (const LegendLine& line : legendLines) lines.addValue(line.title, *line.variable);
    lines.finish();
  };

  std::vector<PlXGraph*> graphs;
  getGraphs(graphs);
  for (const PlXGraph* graph : graphs) {
    const PlXCoordinates* block = graph->getCoordinates(0);
    const Titles titles = readTitles(block);
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    for (CTElementType* element : elements) {
      const PlXCoordinates* own = element->getCoordinates();
      if (!own || own == block) addPopup(*element, titles);
    }
  }
  return true;
}
