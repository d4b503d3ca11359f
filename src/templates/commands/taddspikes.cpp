// addSpikes type x y z colorSpikes styleOnly, with a style: draws a new edge from each point to a
// place: centroid, base, origin, midrange or mean. `type` is the place of y, and of x and z where
// those are missing, but for base, which y alone may have. Spikes are black unless colorSpikes
// gives them the groups and the colour of their points. With styleOnly="true" the spikes that are
// there are styled. Graphs with a categorical axis are passed over.
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "colors.h"
#include "commands.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

using Place = std::optional<PlXLinkStatistic::ENUM_location>;

Place placeOf(const ChartString& word) {
  static const std::pair<const XMLCh*, PlXLinkStatistic::ENUM_location> words[] = {
      {PlXUni::_centroid, PlXLinkStatistic::location_centroid},
      {PlXUni::_UTF_base, PlXLinkStatistic::location_base},
      {PlXUni::_origin, PlXLinkStatistic::location_origin},
      {PlXUni::_midrange, PlXLinkStatistic::location_mean},
      {PlXUni::_mean, PlXLinkStatistic::location_mean},
  };
  for (const auto& [text, place] : words) {
    if (word.equals(text)) return place;
  }
  return {};
}

struct Parameters {
  Place x;
  Place y;
  Place z;
  bool styleOnly = false;
  bool colorSpikes = false;
  const DOMElement* style = nullptr;
};

Parameters readParameters(const DOMElement& command) {
  ChartString x(command.getAttribute(PlXUni::_x));
  ChartString y(command.getAttribute(PlXUni::_y));
  ChartString z(command.getAttribute(PlXUni::_z));
  const ChartString type(command.getAttribute(PlXUni::_type));
  if (!type.empty()) y = type;
  const Place common = placeOf(type);
  if (common && *common != PlXLinkStatistic::location_base) {
    if (x.empty()) x = type;
    if (z.empty()) z = type;
  }
  return {placeOf(x),
          placeOf(y),
          placeOf(z),
          isTrue(command, BaseTemplate::_styleOnly),
          isTrue(command, u"colorSpikes"),
          firstDescendant(&command, PlXUni::_style)};
}

}  // namespace

bool TAddSpikes::ProcessCommand() {
  if (!command) return false;
  const Parameters given = readParameters(*command);
  const StyleImport imported(*this, given.style);

  const auto addSpikes = [&](PlXGraph& graph, const CTElementType& point) {
    PlXEdge* edge = graph.addEdge();
    edge->setId(CreateUniqueId(PlXEdge::_UTF_edge).xc_str());
    copyVariables(*edge, point);
    cloneConditionalStyles(point, *edge);
    if (given.colorSpikes) cloneElementAesthetics(point, *edge, false);
    if (PlXCoordinates* block = point.getCoordinates()) edge->setCoordinates(*block);
    changeColor2ToColor(*edge, false);
    PlXLinkStatistic* link = edge->addLinkStatistic();
    link->setType(PlXLinkStatistic::type_spike);
    if (given.x) link->setX(*given.x);
    if (given.y && edge->getY()) link->setY(*given.y);
    if (given.z && edge->getZ()) link->setZ(*given.z);
    PlXStyle& style = styleOf<CTElementType>(*edge);
    const XMLCh* color = given.colorSpikes ? colors::colorOf(point.getStyle()) : nullptr;
    style.setColor(color ? color : PlXStyle::_black);
    imported.onto(style);
  };
  for (PlXGraph* graph : target.getGraphs()) {
    if (isRoleCategorical(*graph, PlXUni::_x) || isRoleCategorical(*graph, PlXUni::_y) ||
        isRoleCategorical(*graph, PlXUni::_z)) {
      continue;
    }
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    for (CTElementType* element : elements) {
      const bool isSpike = dynamic_cast<PlXEdge*>(element) && !element->getLinkStatistics().empty();
      if (given.styleOnly && isSpike && given.style) {
        imported.onto(styleOf(*element));
      } else if (!given.styleOnly && dynamic_cast<PlXPoint*>(element)) {
        addSpikes(*graph, *element);
      }
    }
  }
  return true;
}
