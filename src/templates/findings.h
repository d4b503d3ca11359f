// What a command has found out about its chart.
#ifndef CHARTXML_FINDINGS_H
#define CHARTXML_FINDINGS_H

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "basetemplate.h"
#include "styleusers.h"

// A command of the dispatcher has one: nobody else edits the chart while it runs. What its own
// edits make untrue it clears itself. A BaseTemplate without one finds everything out anew.
struct BaseTemplate::Findings {
  // The legends by the ids of what their entries lead to, a legend for each entry.
  using LegendsOf = std::unordered_map<std::u16string, std::vector<PlXLegend*>>;

  StyleUsers users;
  // What CreateUniqueId was asked for.
  std::unordered_set<std::u16string> askedStems;
  // The addressed ones: no command adds or removes graphs.
  std::optional<std::vector<PlXGraph*>> graphs;
  // Of the first of these on x, null for none; no command clusters an axis.
  std::optional<CTVariableType*> firstCluster;
  // What a command imports again and again: its own elements.
  std::unordered_map<const xercesc::DOMElement*, std::unique_ptr<StyleImport>> imports;
  std::optional<LegendsOf> legendsOf;
  // The element whose text was filled in last, and that text.
  std::pair<const xercesc::DOMElement*, ChartString> filled;
};

#endif
