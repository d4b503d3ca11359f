// The data labels of one element: which it has, and which it can be given.
#ifndef CHARTXML_ELEMENTLABELS_H
#define CHARTXML_ELEMENTLABELS_H

#include <map>
#include <optional>
#include <vector>

#include "labelvariables.h"

class PlXFormat;
class PlXLabeling;
class PlXSourceVariable;
class PlXStyle;

namespace datalabels {

class ElementLabels {
 public:
  ElementLabels(BaseTemplate& base, const LabelledGraph& graph, CTElementType& element);

  // Makes sure that the element has a label of the kind, for a range one at either end. False when
  // it can't have one. New labels share a style, and a style of their frames.
  bool ensure(Kind kind);
  // The first kind that the element can have, case names before numbers.
  void ensureFirst();
  // The labels that a format for the kind is meant for: one, or the two of a range. Looked for
  // once.
  const std::vector<PlXLabeling*>& formatted(Kind kind);

 private:
  // What the summary of the element lets a label be.
  enum class Leave { refused, given, summed };

  Leave leaveFor(Kind kind) const;
  PlXLabeling* find(Kind kind, const CTVariableType& variable) const;
  PlXLabeling& add(CTVariableType& variable);
  std::optional<Method> methodFor(Kind kind, Leave leave) const;
  void giveStatistic(PlXLabeling& label, std::optional<Method> method);
  bool hasLabel(const CTVariableType& variable, std::optional<Method> method) const;
  PlXSummaryStatistic& copySummary(PlXLabeling& label, Method method);

  bool isRange() const;
  std::vector<PlXLabeling*> findRange(const CTVariableType& variable) const;
  void addRange(CTVariableType& variable);
  void addEnd(PlXSourceVariable& variable, bool isUpper);

  void giveStyle(PlXLabeling& label);
  void giveFrameStyle(PlXLabeling& label);

  BaseTemplate& base_;
  const LabelledGraph& graph_;
  CTElementType& element_;
  CTVariableType* x_;
  PlXSummaryStatistic* first_;  // null for none
  bool hasStatistic_;
  bool hasDistribution_;
  // Made with the first label.
  PlXStyle* labelStyle_ = nullptr;
  PlXStyle* frameStyle_ = nullptr;
  std::map<Kind, std::vector<PlXLabeling*>> formatted_;
};

}  // namespace datalabels

#endif
