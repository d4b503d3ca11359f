// addStyleCycle elementName count, with a child cycle: gives the nodes of that tag, which are data
// labels, a style-by with a list of its own. It shows the variable of the first aesthetic of the
// element around the labels; where there is none, nothing is added. As many style-bys are added as
// the chart has graphs, but no more than a few thousand in all unless that many labels are meant.
#include <algorithm>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "objectsbytag.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabeling.h"
#include "plxstylecycle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "stylecycles.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Labels {
  PlXLabeling* labeling;
  CTVariableType* variable;
};

// Of the nodes of the tag those that may have a style-by.
std::vector<Labels> findLabels(const BaseTemplate& base, const PlXVisualization& chart,
                               const ChartString& tag, long count) {
  std::vector<Labels> result;
  const DOMNode* lastParent = nullptr;
  CTVariableType* variable = nullptr;
  long number = 0;
  for (PlXBaseElement* node : objectsByTag<PlXBaseElement>(chart, tag.xc_str())) {
    if (++number != count && count != 0) continue;
    auto* labeling = dynamic_cast<PlXLabeling*>(node);
    if (!labeling) continue;
    DOMNode* parent = labeling->getImplementation()->getParentNode();
    if (parent != lastParent) {
      lastParent = parent;
      variable = nullptr;
      const auto* element =
          dynamic_cast<const CTElementType*>(chart.objectOf(static_cast<DOMElement*>(parent)));
      const std::vector<CTAesthetic*> aesthetics =
          element ? base.getAesthetics(*element) : std::vector<CTAesthetic*>();
      if (!aesthetics.empty()) variable = aesthetics.front()->getVariable();
    }
    if (variable) result.push_back({labeling, variable});
  }
  return result;
}

}  // namespace

bool TAddStyleCycle::ProcessCommand() {
  const DOMElement* cycle = lastChild(command, PlXUni::_cycle);
  const ChartString elementName = attribute(u"elementName");
  if (!cycle || elementName.empty()) return false;
  const std::vector<Labels> all =
      findLabels(*this, target, elementName, stated::selection(*this, command, PlXUni::_count));
  const stylecycles::Lists lists(*this, {cycle});
  // Graphs times labels would be more than a chart can hold.
  constexpr std::size_t mostAdded = 5000;
  const std::size_t mostPasses = all.empty() ? 0 : std::max<std::size_t>(mostAdded / all.size(), 1);
  for (std::size_t passes = std::min(target.getGraphs().size(), mostPasses); passes > 0; --passes) {
    for (const Labels& labels : all) {
      PlXStyleBy* styleBy = labels.labeling->addStyleBy();
      styleBy->setVariable(*labels.variable);
      PlXStyleCycle* styleCycle =
          target.addStyleCycle(CreateUniqueId(PlXStyleCycle::_UTF_styleCycle).xc_str());
      styleBy->setStyleCycle(*styleCycle);
      lists.addTo(*styleCycle);
    }
  }
  return true;
}
