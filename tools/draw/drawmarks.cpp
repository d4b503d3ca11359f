#include "drawmarks.h"

#include "drawelement.h"
#include "drawlabels.h"
#include "drawlayers.h"
#include "drawplaces.h"

namespace draw {

namespace {

std::vector<Json> layersWith(DrawContext& context, const DrawPlane& plane,
                             const CTElementType& element, const DrawPanel& panel,
                             const PlXStyle* style, const std::string& condition) {
  if (!isVisible(style) && element.getLabelings().empty()) return {};
  const auto of = subjectOf(context, plane, element, panel, style, condition);
  if (!of) return {};
  Json rows = rowFilters(*of);
  Looks looks = looksOf(*of);
  for (const Json& step : looks.filters) rows.push_back(step);
  auto placed = place(*of, std::move(rows), std::move(looks), markOf(*of));
  return placed ? layersOf(*of, std::move(*placed)) : std::vector<Json>();
}

}  // namespace

std::optional<bool> conditionOf(const PlXConditionalStyle& entry, const DrawPanel& panel,
                                std::string& test) {
  const std::string when = attribute(entry, u"when");
  const bool isEqual = when == "facet1==facet2";
  if (!isEqual && when != "facet1!=facet2") return {};
  if (panel.x && panel.y) return (panel.x == panel.y) == isEqual;
  if (panel.fields.size() < 2) return false;
  test = datum(panel.fields[0]) + (isEqual ? " == " : " != ") + datum(panel.fields[1]);
  return {};
}

std::vector<Json> drawElement(DrawContext& context, const DrawPlane& plane,
                              const CTElementType& element, const DrawPanel& panel) {
  const PlXStyle* style = element.getStyle();
  std::string others;  // the condition of what has the element's own style
  std::vector<Json> layers;
  const auto add = [&](const PlXStyle* with, const std::string& condition) {
    for (Json& layer : layersWith(context, plane, element, panel, with, condition)) {
      layers.push_back(std::move(layer));
    }
  };
  for (const auto* entry : childrenOf<PlXConditionalStyle>(element)) {
    std::string test;
    const std::optional<bool> holds = conditionOf(*entry, panel, test);
    if (holds) {
      if (*holds) style = entry->getStyle();
    } else if (test.empty()) {
      context.notes.tell(*entry, "a condition that isn't known is passed over");
    } else {
      others = "!(" + test + ')';
      if (isVisible(entry->getStyle())) add(entry->getStyle(), test);
    }
  }
  add(style, others);
  return layers;
}

}  // namespace draw
