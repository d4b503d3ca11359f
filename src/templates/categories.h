// What the commands about categories share: lists of them, and the domains of variables. They reach
// all graphs, those in containers too, whatever `graph` says.
#ifndef CHARTXML_CATEGORIES_H
#define CHARTXML_CATEGORIES_H

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "basetemplate.h"

namespace categories {

// The text of the first categoryValue at any depth; nothing without one.
std::optional<ChartString> listOf(const xercesc::DOMElement* command);

// What becomes of a category that no label of the variable's format leads to.
enum class Unlabelled { kept, dropped };

// A list of labels, separated by ";", as one of raw values. Blanks count.
// The command tells of labels that no category has.
ChartString rawValues(const BaseTemplate& command, const CTVariableType& variable,
                      const ChartString& labels, Unlabelled unlabelled);

// Whether all domains that refer to a variable are meant, or the one that it has.
enum class Reach { all, own };

// The domains of a chart, by the variables that they refer to. In a chart that nobody else edits.
class Domains {
 public:
  Domains(const PlXVisualization* source, PlXVisualization& target);

  const BaseTemplate& queries() const { return queries_; }
  const std::vector<PlXGraph*>& graphs() const { return graphs_; }
  // The x variable of all elements, where a cluster variable takes their own one's place.
  CTVariableType* clusterVariable() const { return cluster_; }

  // The domain of the first dimension of the role that has one; null when there is none.
  PlXCategoricalDomain* ofDimensions(const PlXGraph& graph, const ChartString& role);
  // Without variables, and linked by nothing.
  PlXCategoricalDomain& add();
  // A variable and its domain lead to each other from here on.
  void tie(CTVariableType& variable, PlXCategoricalDomain& domain);

  // Calls `edit(domain, variable, graph)` once for each domain of the categorical variables that
  // elements have at a role, or that they show in a legend. Of several variables and graphs that
  // lead to a domain, the last are told. A variable without a domain gets that of a dimension of
  // the role, or a new one, and its domain a reference to it.
  using Edit = std::function<void(PlXCategoricalDomain&, CTVariableType&, const PlXGraph&)>;
  void edit(const ChartString& role, Reach reach, const Edit& edit);

 private:
  std::vector<CTVariableType*> variablesOf(const PlXGraph& graph, const ChartString& role) const;
  std::vector<PlXCategoricalDomain*> domainsOf(CTVariableType& variable, const PlXGraph& graph,
                                               const ChartString& role, Reach reach);
  void noteReference(const CTVariableType& variable, PlXCategoricalDomain& domain);

  PlXVisualization& target_;
  BaseTemplate queries_;
  std::vector<PlXGraph*> graphs_;
  CTVariableType* cluster_ = nullptr;
  // Of the graph and the role that were asked about last.
  const PlXGraph* askedGraph_ = nullptr;
  ChartString askedRole_;
  PlXCategoricalDomain* askedDomain_ = nullptr;
  // In document order, by the ids of variables.
  std::unordered_map<std::u16string, std::vector<PlXCategoricalDomain*>> referring_;
};

}  // namespace categories

#endif
