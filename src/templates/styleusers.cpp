#include "styleusers.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include "dialect.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxuni.h"

using namespace xercesc;

namespace {

using Ids = std::unordered_set<std::u16string>;

void addId(Ids& ids, const PlXStyle* style) {
  if (style) ids.insert(style->getId());
}

// Adds the style of a part that is a surface.
void addSurface(Ids& ids, const PlXBaseElement& part) {
  if (const auto* interval = dynamic_cast<const PlXInterval*>(&part)) {
    addId(ids, interval->getStyle());
  } else if (const auto* schema = dynamic_cast<const PlXSchema*>(&part)) {
    addId(ids, schema->getHingeStyle());
  } else if (const auto* graph = dynamic_cast<const PlXGraph*>(&part)) {
    addId(ids, graph->getCellStyle());
  } else if (const auto* legend = dynamic_cast<const PlXLegend*>(&part)) {
    addId(ids, legend->getStyle());
  } else if (const auto* page = dynamic_cast<const PlXVisualization*>(&part)) {
    addId(ids, page->getStyle());
  }
}

template <class T>
void addSurfaces(Ids& ids, const std::vector<T*>& parts) {
  for (const T* part : parts) addSurface(ids, *part);
}

// The styles that paint surfaces: those of the addressed graphs, of all legends and of the page.
Ids stylesOfSurfaces(const BaseTemplate& base, const PlXVisualization& target,
                     const std::vector<PlXGraph*>& graphs) {
  Ids ids;
  addSurface(ids, target);
  addSurfaces(ids, graphs);
  for (const PlXGraph* graph : graphs) {
    addSurfaces(ids, graph->getIntervals());
    addSurfaces(ids, graph->getSchemas());
  }
  addSurfaces(ids, base.getLegends());
  return ids;
}

// True when it is a graph, or in a graph, other than the only one that the command addresses.
bool isElsewhere(const PlXBaseElement& part, const PlXGraph* onlyGraph) {
  if (!onlyGraph) return false;
  const DOMNode* node = part.getImplementation();
  while (node && !XMLString::equals(dialect::localName(node), PlXUni::_graph)) {
    node = node->getParentNode();
  }
  return node && node != onlyGraph->getImplementation();
}

}  // namespace

void BaseTemplate::StyleUsers::findSurfaces(const BaseTemplate& base,
                                            const PlXVisualization& target, bool isOne) {
  if (surfaces) return;
  std::vector<PlXGraph*> graphs;
  base.getGraphs(graphs);
  surfaces = stylesOfSurfaces(base, target, graphs);
  onlyGraph = isOne && !graphs.empty() ? graphs.front() : nullptr;
}

bool BaseTemplate::StyleUsers::isSurface(const PlXStyle& style) const {
  return *style.getId() ? surfaces->contains(style.getId()) : !surfaces->empty();
}

void BaseTemplate::StyleUsers::noticeSurface(const PlXBaseElement& part) {
  if (surfaces && !isElsewhere(part, onlyGraph)) addSurface(*surfaces, part);
}
