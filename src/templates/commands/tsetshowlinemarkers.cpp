// setShowLineMarkers, with a style: marks the points of the only line or path of a graph by a new
// point element, which shows the groups of the line; dash patterns become symbols, which the
// chart's first legend shows. Graphs with other elements are passed over.
#include "commands.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "templatexml.h"

bool TSetShowLineMarkers::ProcessCommand() {
  if (!command) return false;
  const StyleImport imported(*this, templatexml::firstDescendant(command, PlXUni::_style));
  const std::vector<PlXLegend*> legends = getLegends();

  const auto showDashes = [&](const PlXDash& dash, PlXPoint& point) {
    PlXShape* shape = point.addShape();
    cloneScaleAndStatistic(dash, *shape);
    duplicateAttributes(dash, *shape);
    shape->removeCycle();
    point.removeDashs();
    shape->setId(CreateUniqueId(PlXUni::_shape).xc_str());
    if (legends.empty()) return;
    legends.front()->addLegendTarget(CreateUniqueId(PlXUni::_legendTarget).xc_str(), *shape);
  };
  for (PlXGraph* graph : target.getGraphs()) {
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    if (elements.size() != 1) continue;
    const CTElementType& line = *elements.front();
    if (!dynamic_cast<const PlXLine*>(&line) && !dynamic_cast<const PlXPath*>(&line)) continue;
    PlXPoint* point = graph->addPoint(CreateUniqueId(PlXUni::_point).xc_str());
    PlXStyle& style = styleOf<CTElementType>(*point);
    cloneElementChildren(line, *point, false);
    changeColor2ToColor(*point, false);
    for (PlXColor* color : point->getColors()) color->setAffect(PlXColor::affect_secondary);
    const std::vector<PlXDash*> dashes = line.getDashs();
    if (!dashes.empty()) showDashes(*dashes.front(), *point);
    imported.onto(style);
  }
  return true;
}
