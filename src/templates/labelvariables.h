// Which variable a data label of a kind shows on an element.
#ifndef CHARTXML_LABELVARIABLES_H
#define CHARTXML_LABELVARIABLES_H

#include <map>
#include <optional>
#include <vector>

#include "chartstring.h"
#include "plxstatistics.h"

class BaseTemplate;
class CTElementType;
class CTVariableType;
class PlXGraph;
class PlXSourceVariable;
class PlXVisualization;

namespace datalabels {

// What a label shows. `labeling` is the variable that names the rows of its source; legend1 and
// legend2 are the first two variables that aesthetics show.
enum class Kind { casenum, count, labeling, percent, x, y, z, legend1, legend2 };
// None for a word of no kind.
std::optional<Kind> kindOf(const ChartString& word);

// The families of methods of a summary.
using Method = PlXSummaryStatistic::ENUM_method;
bool isOfCounts(Method method);
bool isOfPercents(Method method);
// The first summary of an element decides what it shows; null when there is none.
PlXSummaryStatistic* firstSummary(const CTElementType& element);

// The variables of a source that tell of its rows rather than hold data; null where it has none.
struct RowVariables {
  CTVariableType* count = nullptr;
  CTVariableType* weight = nullptr;
  CTVariableType* casenum = nullptr;
  CTVariableType* percent = nullptr;
  CTVariableType* labelVariable = nullptr;
};

// Those of all sources of a chart, by the names of the sources.
class Sources {
 public:
  explicit Sources(const PlXVisualization& chart);

  // Of the source that the variable is from. Without any for null.
  const RowVariables& of(const CTVariableType* variable) const;

 private:
  std::map<ChartString, RowVariables> sources_;
};

// The variables of the two ends of a range.
struct RangeEnds {
  PlXSourceVariable* upper;
  PlXSourceVariable* lower;
};

// A graph, as far as it decides about labels; what is asked for each element is found once.
class LabelledGraph {
 public:
  LabelledGraph(const BaseTemplate& queries, const Sources& sources, const PlXGraph& graph);

  bool isPolar() const { return polar_; }
  const Sources& sources() const { return sources_; }
  // Null where the element has nothing of that kind.
  CTVariableType* variableFor(Kind kind, const CTElementType& element) const;
  // None when the variable isn't an expression of two variables that say they are ends.
  std::optional<RangeEnds> endsOf(const CTVariableType& variable) const;

 private:
  CTVariableType* legendVariable(std::size_t index) const;

  const Sources& sources_;
  bool polar_;
  CTVariableType* clusterOnX_;
  CTVariableType* clusterOnZ_;
  std::vector<CTVariableType*> legendVariables_;
  mutable std::map<const CTVariableType*, std::optional<RangeEnds>> ends_;
};

}  // namespace datalabels

#endif
