#include "elementlabels.h"

#include <string_view>

#include <xercesc/dom/DOM.hpp>

#include "basetemplate.h"
#include "chartbase.h"
#include "dialect.h"
#include "domwalk.h"
#include "plxelements.h"
#include "plxformat.h"
#include "plxlabeling.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "plxvariables.h"

using namespace xercesc;

namespace datalabels {
namespace {

// The tags of all statistics end alike.
bool hasAnyStatistic(const CTElementType& element) {
  for (const DOMElement* child = firstElement(element.getImplementation()); child;
       child = nextElement(child)) {
    if (std::u16string_view(dialect::localName(child)).ends_with(u"Statistic")) return true;
  }
  return false;
}

// ---- how well a label of the right variable answers the question for a kind
enum class Fit { none, candidate, answer };

Fit fitOf(bool fits) {
  return fits ? Fit::candidate : Fit::none;
}

// One variable may be behind labels of several kinds, which their statistics tell apart.
Fit fitOf(const PlXLabeling& label, Kind kind, const CTVariableType& variable,
          const RowVariables& rows, bool polar) {
  const PlXSummaryStatistic* statistic = label.getSummaryStatistic();
  const Method method = statistic ? statistic->getMethod() : PlXSummaryStatistic::method_value;
  const bool isShare =
      statistic && (isOfPercents(method) || method == PlXSummaryStatistic::method_fractionCount);
  const bool isCountVariable = &variable == rows.count;
  switch (kind) {
    case Kind::percent:
      return &variable == rows.percent ? Fit::answer : fitOf(isShare);
    case Kind::count:
      return fitOf(isCountVariable ? !isShare : statistic && isOfCounts(method));
    case Kind::x:
      return polar && isCountVariable ? fitOf(!isShare) : Fit::answer;
    default:
      return Fit::answer;
  }
}

}  // namespace

ElementLabels::ElementLabels(BaseTemplate& base, const LabelledGraph& graph, CTElementType& element)
    : base_(base),
      graph_(graph),
      element_(element),
      x_(element.getX() ? element.getX()->getVariable() : nullptr),
      first_(firstSummary(element)),
      hasStatistic_(hasAnyStatistic(element)),
      hasDistribution_(!element.getDistributionStatistics().empty()) {}

bool ElementLabels::ensure(Kind kind) {
  CTVariableType* variable = graph_.variableFor(kind, element_);
  const Leave leave = variable ? leaveFor(kind) : Leave::refused;
  if (leave == Leave::refused) return false;
  if (find(kind, *variable)) return true;
  if (isRange()) {
    addRange(*variable);
  } else {
    const std::optional<Method> method = methodFor(kind, leave);
    if (hasLabel(*variable, method)) return true;
    PlXLabeling& label = add(*variable);
    giveStyle(label);
    giveStatistic(label, method);
  }
  return true;
}

void ElementLabels::ensureFirst() {
  static constexpr Kind order[] = {Kind::labeling, Kind::casenum, Kind::count, Kind::percent,
                                   Kind::y,        Kind::x,       Kind::z,     Kind::legend1};
  for (const Kind kind : order) {
    if (ensure(kind)) return;
  }
}

const std::vector<PlXLabeling*>& ElementLabels::formatted(Kind kind) {
  const auto [entry, isNew] = formatted_.try_emplace(kind);
  const CTVariableType* variable = isNew ? graph_.variableFor(kind, element_) : nullptr;
  if (!variable) return entry->second;
  if (isRange()) entry->second = findRange(*variable);
  PlXLabeling* label = entry->second.empty() ? find(kind, *variable) : nullptr;
  if (label) entry->second.push_back(label);
  return entry->second;
}

// Counts and percents have no values beside them, and the number of a case stands on what is one.
ElementLabels::Leave ElementLabels::leaveFor(Kind kind) const {
  if (hasDistribution_ || (kind == Kind::casenum && hasStatistic_)) return Leave::refused;
  if (graph_.isPolar() || !first_) return Leave::given;
  const Method method = first_->getMethod();
  if (isOfCounts(method)) return kind == Kind::count ? Leave::given : Leave::refused;
  if (!isOfPercents(method)) return Leave::given;
  switch (kind) {
    case Kind::percent:
    case Kind::x:
      return Leave::given;
    case Kind::count:
      return Leave::summed;
    default:
      return Leave::refused;
  }
}

// An answer at once, else the last candidate.
PlXLabeling* ElementLabels::find(Kind kind, const CTVariableType& variable) const {
  const RowVariables& rows = graph_.sources().of(&variable);
  PlXLabeling* found = nullptr;
  for (PlXLabeling* label : element_.getLabelings()) {
    if (label->getVariable() != &variable) continue;
    const Fit fit = fitOf(*label, kind, variable, rows, graph_.isPolar());
    if (fit == Fit::answer) return label;
    if (fit == Fit::candidate) found = label;
  }
  return found;
}

PlXLabeling& ElementLabels::add(CTVariableType& variable) {
  PlXLabeling* label = element_.addLabeling();
  label->setVariable(variable);
  giveFrameStyle(*label);
  return *label;
}

// So that the label shows the number that the element shows. Nothing for a label that shows the
// variable itself.
std::optional<Method> ElementLabels::methodFor(Kind kind, Leave leave) const {
  if (first_) {
    if (graph_.isPolar() && kind != Kind::percent) return {};
    return leave == Leave::summed ? PlXSummaryStatistic::method_sum : first_->getMethod();
  }
  if (graph_.isPolar()) return {};
  if (kind == Kind::percent && !graph_.sources().of(x_).percent) {
    return PlXSummaryStatistic::method_percent;
  }
  const bool isValue = hasStatistic_ && kind != Kind::x;
  return isValue ? std::optional(PlXSummaryStatistic::method_value) : std::nullopt;
}

void ElementLabels::giveStatistic(PlXLabeling& label, std::optional<Method> method) {
  if (!method) return;
  if (first_) {
    PlXSummaryStatistic& statistic = copySummary(label, *method);
    if (!dynamic_cast<PlXLine*>(&element_)) {
      statistic.setAugment(PlXSummaryStatistic::augment_never);
    }
    return;
  }
  label.addSummaryStatistic()->setMethod(*method);
  if (*method != PlXSummaryStatistic::method_percent) return;
  PlXFormat* format = label.addFormat();
  format->setMinimumFractionDigits(2);
  format->setMaximumFractionDigits(2);
  format->setSuffix(ChartBase::_percent);
}

// Another one would go again as a duplicate, and leave its styles behind.
bool ElementLabels::hasLabel(const CTVariableType& variable, std::optional<Method> method) const {
  for (const PlXLabeling* label : element_.getLabelings()) {
    const PlXSummaryStatistic* statistic = label->getSummaryStatistic();
    const std::optional<Method> shown =
        statistic ? std::optional(statistic->getMethod()) : std::nullopt;
    if (label->getVariable() == &variable && shown == method) return true;
  }
  return false;
}

PlXSummaryStatistic& ElementLabels::copySummary(PlXLabeling& label, Method method) {
  PlXSummaryStatistic* statistic = label.addSummaryStatistic();
  base_.duplicateAttributes(*first_, *statistic);
  statistic->setMethod(method);
  return *statistic;
}

bool ElementLabels::isRange() const {
  return first_ && first_->getMethod() == PlXSummaryStatistic::method_range;
}

std::vector<PlXLabeling*> ElementLabels::findRange(const CTVariableType& variable) const {
  const std::optional<RangeEnds> ends = graph_.endsOf(variable);
  std::vector<PlXLabeling*> found;
  for (PlXLabeling* label : element_.getLabelings()) {
    const CTVariableType* shown = label->getVariable();
    const PlXSummaryStatistic* statistic = label->getSummaryStatistic();
    const Method method = statistic ? statistic->getMethod() : PlXSummaryStatistic::method_value;
    const bool isEnd = ends
                           ? !statistic && (shown == ends->upper || shown == ends->lower)
                           : shown == &variable && (method == PlXSummaryStatistic::method_maximum ||
                                                    method == PlXSummaryStatistic::method_minimum);
    if (isEnd) found.push_back(label);
  }
  return found;
}

void ElementLabels::addRange(CTVariableType& variable) {
  if (findRange(variable).size() > 1) return;
  if (const std::optional<RangeEnds> ends = graph_.endsOf(variable)) {
    addEnd(*ends->upper, true);
    addEnd(*ends->lower, false);
    return;
  }
  for (const Method method :
       {PlXSummaryStatistic::method_maximum, PlXSummaryStatistic::method_minimum}) {
    PlXLabeling& label = add(variable);
    giveStyle(label);
    copySummary(label, method);
  }
  auto* expression = dynamic_cast<PlXExpressionVariable*>(&variable);
  if (expression && !*expression->getLabel()) expression->setLabel(expression->getExpression());
}

// A variable of its own needs no statistic, but a place: above the range or below it.
void ElementLabels::addEnd(PlXSourceVariable& variable, bool isUpper) {
  if (hasLabel(variable, {})) return;
  PlXLabeling& label = add(variable);
  base_.styleOf(label).setLabelLocationVertical(isUpper ? PlXStyle::labelLocationVertical_positive
                                                        : PlXStyle::labelLocationVertical_negative);
}

void ElementLabels::giveStyle(PlXLabeling& label) {
  if (!labelStyle_) {
    labelStyle_ = base_.addStyle(label, base_.CreateUniqueId(PlXUni::_labeling).xc_str());
    labelStyle_->setFontSize(u"7pt", u"6pt", nullptr);
  }
  label.setStyle(*labelStyle_);
}

void ElementLabels::giveFrameStyle(PlXLabeling& label) {
  if (!frameStyle_) {
    frameStyle_ = base_.addStyle(label, base_.CreateUniqueId(PlXUni::_text).xc_str());
  }
  label.setTextFrameStyle(*frameStyle_);
}

}  // namespace datalabels
