// addDataLabels position labelLocationHorizontal labelLocationVertical colorByMarker hidden
// showCollidingLabels connectingLines styleOnly, with children labeling and style: gives the
// elements labels with values, and styles all labels that they have then. A labeling with a format
// adds none: it formats the label that shows its variable. Without any labeling each element gets
// the first kind of label that it can have. What a kind means for an element is told in
// labelvariables.h, which label it then gets in elementlabels.h, and what is set on it in
// labelstyling.h.
#include <algorithm>
#include <set>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "domwalk.h"
#include "elementlabels.h"
#include "formatimport.h"
#include "labelstyling.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxformat.h"
#include "plxgraph.h"
#include "plxlabeling.h"
#include "plxstyle.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "templatexml.h"

using namespace xercesc;
using namespace datalabels;

namespace {

struct Format {
  Kind kind;
  const DOMElement* element;
};

struct Parameters {
  // The kinds to be added, each once.
  std::vector<Kind> kinds;
  std::vector<Format> formats;
  // Also by one of no kind.
  bool namesLabels = false;
  Look look;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  parameters.look = readLook(base, command);
  std::set<Kind> known;
  templatexml::forDescendants(&command, PlXUni::_labeling, [&](const DOMElement* labeling) {
    parameters.namesLabels = true;
    const std::optional<Kind> kind = kindOf(labeling->getAttribute(PlXUni::_variable));
    if (!kind) return;
    if (const DOMElement* format = firstElement(labeling)) {
      parameters.formats.push_back({*kind, format});
    } else if (known.insert(*kind).second) {
      parameters.kinds.push_back(*kind);
    }
  });
  return parameters;
}

void addLabels(ElementLabels& labels, const Parameters& parameters) {
  if (!parameters.namesLabels) labels.ensureFirst();
  for (const Kind kind : parameters.kinds) labels.ensure(kind);
}

void formatLabels(BaseTemplate& base, ElementLabels& labels, const Parameters& parameters) {
  for (const Format& format : parameters.formats) {
    const FormatImport import = formatImportOf(format.element->getTagName());
    if (!import) continue;
    for (PlXLabeling* label : labels.formatted(format.kind)) {
      const std::vector<PlXFormat*> formats = label->getFormats();
      (base.*import)(formats.empty() ? *label->addFormat() : *formats.front(), format.element);
    }
  }
}

// Labels of one variable and one method show the same.
void removeDuplicates(CTElementType& element) {
  constexpr int noStatistic = -1;
  std::set<std::pair<const CTVariableType*, int>> shown;
  for (PlXLabeling* label : element.getLabelings()) {
    const CTVariableType* variable = label->getVariable();
    const PlXSummaryStatistic* statistic = label->getSummaryStatistic();
    const int method = statistic ? statistic->getMethod() : noStatistic;
    if (variable && !shown.emplace(variable, method).second) element.removeLabeling(*label);
  }
}

bool hasLabelOutside(const CTElementType& element) {
  for (const PlXLabeling* label : element.getLabelings()) {
    const PlXStyle* style = label->getStyle();
    if (style && style->getLabelInside() == PlXStyle::labelInside_false) return true;
  }
  return false;
}

// A pie leaves no room for labels around it, unless it is made smaller.
void makeRoom(const PlXGraph& graph, const std::vector<CTElementType*>& elements) {
  const std::vector<PlXCoordinates*> blocks = graph.getCoordinatess();
  for (const PlXCoordinates* block : blocks) {
    if (!block->getInsetTransforms().empty()) return;
  }
  const auto isOutside = [](const CTElementType* element) { return hasLabelOutside(*element); };
  if (blocks.empty() || std::ranges::none_of(elements, isOutside)) return;
  constexpr double room = 0.1;
  PlXInsetTransform* inset = blocks.back()->addInsetTransform();
  inset->setX_min(room);
  inset->setX_max(room);
  inset->setY_min(room);
  inset->setY_max(room);
}

}  // namespace

bool TAddDataLabels::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
  std::vector<PlXGraph*> graphs;
  if (getGraphs(graphs) == 0) return false;
  const Sources sources(target);
  Styling styling(*this, parameters.look);
  for (const PlXGraph* graph : graphs) {
    const LabelledGraph labelled(*this, sources, *graph);
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    for (CTElementType* element : elements) {
      ElementLabels labels(*this, labelled, *element);
      const bool isRegion = !element->getRegionStatistics().empty();
      if (!parameters.look.styleOnly && !isRegion) addLabels(labels, parameters);
      formatLabels(*this, labels, parameters);
      removeDuplicates(*element);
      styling.style(*element);
    }
    if (labelled.isPolar()) makeRoom(*graph, elements);
  }
  return true;
}
