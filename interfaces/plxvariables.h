// The variables of a chart: CTVariableType with PlXSourceVariable, PlXDerivedVariable and
// PlXExpressionVariable; PlXVariableReference and PlXAggregation.
#ifndef CHARTXML_PLXVARIABLES_H
#define CHARTXML_PLXVARIABLES_H

#include "plxbaseelement.h"

class PlXAggregation;
class PlXCategoricalDomain;
class PlXExtensionSV;
class PlXFormat;

// The base of the variables. They are children of the root, and expressions of coordinates too.
// Within a document one variable is one object: pointers may be compared.
class CHARTXML_API CTVariableType : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getLabel() const { return text(u"label"); }
  void setLabel(const XMLCh* label) { setText(u"label", label); }
  // What the variable is for; "labeling" marks the one that names the rows of its source.
  const XMLCh* getDescription() const { return text(u"description"); }
  void setDescription(const XMLCh* description) { setText(u"description", description); }
  // Who made the variable, such as "internal_cutVariable".
  const XMLCh* getCreator() const { return text(u"creator"); }
  void setCreator(const XMLCh* creator) { setText(u"creator", creator); }
  // The data source by its name, and the column in it.
  const XMLCh* getSource() const { return text(u"source"); }
  void setSource(const XMLCh* source) { setText(u"source", source); }
  const XMLCh* getSourceName() const { return text(u"sourceName"); }
  void setSourceName(const XMLCh* column) { setText(u"sourceName", column); }
  bool getCategorical() const { return flag(u"categorical"); }
  void setCategorical(bool categorical) { setFlag(u"categorical", categorical); }
  PlXCategoricalDomain* getCategoricalDomain() const {
    return link<PlXCategoricalDomain>(u"domain");
  }
  void setDomain(PlXCategoricalDomain& domain) { setLink(u"domain", domain); }

  // The first is the variable's format. Its relabels give the labels of raw values.
  PlXFormat* addFormat() { return add<PlXFormat>(); }
  std::vector<PlXFormat*> getFormats() const { return children<PlXFormat>(); }
  // Merges the small categories of this variable into one that is called `category`: those whose
  // share of the sum of `variable` is below `minFraction`.
  PlXAggregation* addAggregation(const XMLCh* category, CTVariableType& variable,
                                 double minFraction);
  std::vector<PlXAggregation*> getAggregations() const { return children<PlXAggregation>(); }
  void removeAggregations() { removeAll<PlXAggregation>(); }
  // What the variable counts or measures.
  PlXExtensionSV* addExtension() { return add<PlXExtensionSV>(); }
  PlXExtensionSV* getExtension() const { return child<PlXExtensionSV>(); }
};

// A column of a data source.
class CHARTXML_API PlXSourceVariable : public CTVariableType {
 public:
  using CTVariableType::CTVariableType;
  static const XMLCh _UTF_sourceVariable[];
};

// A variable that is computed from others.
class CHARTXML_API PlXDerivedVariable : public CTVariableType {
 public:
  using CTVariableType::CTVariableType;
  static const XMLCh _UTF_derivedVariable[];

  // An expression over the ids of variables, such as "v < 5 ? 0 : 1".
  const XMLCh* getValue() const { return text(u"value"); }
  void setValue(const XMLCh* expression) { setText(u"value", expression); }
};

// Several variables on one coordinate.
class CHARTXML_API PlXExpressionVariable : public CTVariableType {
 public:
  using CTVariableType::CTVariableType;
  static const XMLCh _UTF_expressionVariable[];

  // Ids of variables between "+", which puts them on one axis, and "/", which puts each in a
  // panel of its own.
  const XMLCh* getExpression() const { return text(u"expression"); }
  void setExpression(const XMLCh* expression) { setText(u"expression", expression); }
};

// A variable that shares a categorical domain.
class CHARTXML_API PlXVariableReference : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_variableReference[];

  // A variable of any kind.
  CTVariableType* getRef() const { return link<CTVariableType>(u"ref"); }
  void setRef(CTVariableType& variable) { setLink(u"ref", variable); }
};

// One merged category of a variable.
class CHARTXML_API PlXAggregation : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_aggregation[];

  // The name of the merged category.
  const XMLCh* getCategory() const { return text(u"category"); }
  void setCategory(const XMLCh* category) { setText(u"category", category); }
  // The variable whose sums decide which categories are small.
  CTVariableType* getVariable() const { return link<CTVariableType>(u"variable"); }
  void setVariable(CTVariableType& variable) { setLink(u"variable", variable); }
  // From 0 to 1.
  double getMinFraction() const { return number(u"minFraction"); }
  void setMinFraction(double fraction) { setNumber(u"minFraction", fraction); }
};

#endif
