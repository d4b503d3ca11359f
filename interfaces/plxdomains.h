// What dimensions, aesthetics and variables extend over: PlXIntervalDomain, PlXRange,
// PlXCategoricalDomain, PlXCategories, PlXSimpleSort, PlXStatisticSort, PlXCategoryOrder,
// PlXSortMove.
#ifndef CHARTXML_PLXDOMAINS_H
#define CHARTXML_PLXDOMAINS_H

#include "plxbaseelement.h"

class CTVariableType;
class PlXVariableReference;

// A bound of a domain, or both. A domain whose two bounds were set one by one has two ranges.
class CHARTXML_API PlXRange : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_range[];

  // A number, or a date text of 23 characters ("2004-07-30 00:00:00.000") in a domain of dates.
  // Empty where the range is open.
  const XMLCh* getMin() const { return text(u"min"); }
  void setMin(const XMLCh* min) { setText(u"min", min); }
  const XMLCh* getMax() const { return text(u"max"); }
  void setMax(const XMLCh* max) { setText(u"max", max); }
  // False when a bound may be moved outwards to a round value.
  bool getExact() const { return flag(u"exact"); }
  void setExact(bool exact) { setFlag(u"exact", exact); }
};

// An extent on a continuous scale. It stands under the visualization and is linked by its users.
class CHARTXML_API PlXIntervalDomain : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_intervalDomain[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  std::vector<PlXRange*> getRanges() const { return children<PlXRange>(); }
  PlXRange* addRange() { return add<PlXRange>(); }
  void removeRanges() { removeAll<PlXRange>(); }
  // True when the bounds are date texts.
  bool getDate() const { return flag(u"date"); }
  void setDate(bool isDate) { setFlag(u"date", isDate); }
};

// A list of categories to keep or to leave out.
class CHARTXML_API PlXCategories : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_categories[];

  // Raw values separated by ";", which no value can hold.
  const XMLCh* getText() const { return contentOrText(u"text"); }
  void setText(const XMLCh* list) { setTextOverContent(u"text", list); }
  // True for the categories to leave out, false for those to keep.
  bool getRemove() const { return flag(u"remove"); }
  void setRemove(bool isRemoved) { setFlag(u"remove", isRemoved); }
};

// An order of categories, told one by one.
class CHARTXML_API PlXCategoryOrder : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_categoryOrder[];

  // Raw values separated by ";", which no value can hold.
  const XMLCh* getText() const { return contentOrText(u"text"); }
  void setText(const XMLCh* list) { setTextOverContent(u"text", list); }
};

// One category that is put at an end after its sort.
class CHARTXML_API PlXSortMove : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_sortMove[];

  // A raw value, or the name of an aggregation.
  const XMLCh* getCategory() const { return text(u"category"); }
  void setCategory(const XMLCh* category) { setText(u"category", category); }
  // False for the last place, also when it isn't stated.
  bool getFirst() const { return flag(u"first"); }
  void setFirst(bool isFirst) { setFlag(u"first", isFirst); }
};

// A sort that looks at nothing but the categories.
class CHARTXML_API PlXSimpleSort : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_simpleSort[];

  // As the data has them, as the category order tells, by label, by raw value.
  enum ENUM_method : int {
    method_data = 0,
    method_explicit = 1,
    method_natural = 2,
    method_value = 3
  };

  ENUM_method getMethod() const { return word<ENUM_method>(u"method"); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  bool getDescending() const { return flag(u"descending"); }
  void setDescending(bool descending) { setFlag(u"descending", descending); }
  // Read by method_explicit alone.
  PlXCategoryOrder* getCategoryOrder() const { return child<PlXCategoryOrder>(); }
  PlXCategoryOrder* addCategoryOrder() { return add<PlXCategoryOrder>(); }
  std::vector<PlXSortMove*> getSortMoves() const { return children<PlXSortMove>(); }
  // The category goes last until setFirst() says otherwise.
  PlXSortMove* addSortMove(const XMLCh* category);
};

// A sort by what another variable has in each category.
class CHARTXML_API PlXStatisticSort : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_statisticSort[];

  enum ENUM_method : int { method_mean = 0 };

  ENUM_method getMethod() const { return word<ENUM_method>(u"method"); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  bool getDescending() const { return flag(u"descending"); }
  void setDescending(bool descending) { setFlag(u"descending", descending); }
  // The variable whose categories are sorted.
  CTVariableType* getVariable() const { return link<CTVariableType>(u"variable"); }
  void setVariable(CTVariableType& variable) { setLink(u"variable", variable); }
  // The variable whose values decide.
  CTVariableType* getStatVariable() const { return link<CTVariableType>(u"statVariable"); }
  void setStatVariable(CTVariableType& variable) { setLink(u"statVariable", variable); }
  std::vector<PlXSortMove*> getSortMoves() const { return children<PlXSortMove>(); }
  // The category goes last until setFirst() says otherwise.
  PlXSortMove* addSortMove(const XMLCh* category);
};

// The categories of one or several variables and their order. It stands under the visualization and
// is linked by its users.
class CHARTXML_API PlXCategoricalDomain : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_categoricalDomain[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }

  // The variables whose categories these are.
  std::vector<PlXVariableReference*> getVariableReferences() const {
    return children<PlXVariableReference>();
  }
  PlXVariableReference* addVariableReference(CTVariableType& variable);
  void removeVariableReferences() { removeAll<PlXVariableReference>(); }

  // All categories of the variables when there is no such list.
  std::vector<PlXCategories*> getCategoriess() const { return children<PlXCategories>(); }
  PlXCategories* addCategories() { return add<PlXCategories>(); }
  void removeCategoriess() { removeAll<PlXCategories>(); }

  // Sorts of both kinds are applied in document order. Data order when there is none.
  std::vector<PlXSimpleSort*> getSimpleSorts() const { return children<PlXSimpleSort>(); }
  PlXSimpleSort* addSimpleSort() { return add<PlXSimpleSort>(); }
  void removeSimpleSorts() { removeAll<PlXSimpleSort>(); }
  std::vector<PlXStatisticSort*> getStatisticSorts() const { return children<PlXStatisticSort>(); }
  // `variable` is the one whose categories are sorted; the one that decides is still to be set.
  PlXStatisticSort* addStatisticSort(CTVariableType& variable);
  void removeStatisticSorts() { removeAll<PlXStatisticSort>(); }
};

#endif
