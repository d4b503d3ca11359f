// How an element becomes layers: steps that take values and answer values.
//
//   drawelement   what it is drawn from; which rows, which looks, which mark
//   drawplaces    where its items are: values, statistics, curves
//   drawlayouts   places of networks, densities, boxes and cells
//   drawlabels    data labels, and popups as tooltips
//   drawlayers    what all that is to Vega-Lite: encodings, slices, lines in pieces
#ifndef CHARTXML_TOOLS_DRAWELEMENT_H
#define CHARTXML_TOOLS_DRAWELEMENT_H

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "drawaesthetics.h"
#include "drawmarks.h"

namespace draw {

// Whether an element has a child of a kind.
template <class T>
bool has(const PlXBaseElement& element) {
  return childOf<T>(element);
}

// An element, and what it is drawn from and in. No step changes it.
struct Subject {
  DrawContext& context;
  const DrawPlane& plane;
  const CTElementType& element;
  const DrawPanel& panel;
  const PlXStyle* style;         // may be null
  const std::string& condition;  // of the panels that it is drawn in; empty for all
  std::string source;
  std::vector<const DrawField*> fields[2];
  const DrawField* within = nullptr;  // the element's own x, where clusters take its place

  void tell(const std::string& what) const { context.notes.tell(element, what); }
  const DrawSide& side(std::size_t i) const { return i == 0 ? plane.x() : plane.y(); }
  const std::string& channel(std::size_t i) const { return side(i).channel; }
  template <class T>
  bool is() const {
    return dynamic_cast<const T*>(&element);
  }
  bool isStacked() const;
  bool isTransposed() const { return channel(0) == "y"; }
  bool hasNumbers(std::size_t i) const;
  // An attribute of the style; empty without one.
  std::string look(const XMLCh* name) const { return style ? attribute(*style, name) : ""; }
  // Null for a variable that doesn't exist, has no data, or is of another source, which is told.
  const DrawField* fieldHere(const CTVariableType* variable, const PlXBaseElement& user) const;
  // Null for none.
  const PlXPopup* popup() const;
};

// Nothing for an element without data, which is told.
std::optional<Subject> subjectOf(DrawContext& context, const DrawPlane& plane,
                                 const CTElementType& element, const DrawPanel& panel,
                                 const PlXStyle* style, const std::string& condition);

// What leaves out the rows in which a field has no value.
Json validFilter(const std::string& field);
// The rows that a `visibility` leaves, as filters.
Json filtersOf(const Subject& of, const CTAesthetic& visibility);
// Leaves out the cases that aren't in the picture: those hidden, and those of categories that
// aren't shown.
Json rowFilters(const Subject& of);
// Adds a step unless it is there.
void addOnce(Json& steps, const Json& step);

// What the looks of an element are by.
struct Looks {
  std::vector<DrawLook> list;
  std::vector<std::string> keys;        // of rows that make one item, those of panels included
  std::vector<std::string> groups;      // of items that belong together, such as places of one line
  const DrawField* group = nullptr;     // the first one with categories
  const DrawField* offsetBy = nullptr;  // what lies side by side within a category
  const PlXOffset* offset = nullptr;    // of slices
  const DrawField* offsetField = nullptr;
  bool isInPieces = false;  // a line that changes its looks on its way
  Json filters = Json::array();

  bool isKey(const std::string& field) const;
  void addKey(const std::string& field);
  void addGroup(const std::string& field);
  // The groups within each panel.
  std::vector<std::string> partsIn(const DrawPanel& panel) const;
};
Looks looksOf(const Subject& of);

struct Mark {
  MarkKind kind = MarkKind::Surface;
  Json json;

  bool is(const char* type) const { return json["type"] == type; }
};
// The mark of the element's kind, and one of another type in its place.
Mark markOf(const Subject& of);
Mark markOf(const Subject& of, MarkKind kind, const char* type, const Json& look);

// Where a mark is along a side: at the value of a field, or from one field to another.
struct MarkPlace {
  std::string field;
  std::string end;  // empty for none
  bool isBinned = false;
};

// An element whose items have their places. The transforms lead from the rows to the items.
struct Placed {
  Json transforms = Json::array();
  Json data;  // of its own; null for that of the source
  MarkPlace places[2];
  Json ends[2];  // places that all marks reach to; null for none
  Json base;     // of bars on a log scale
  Looks looks;
  Mark mark;
  const DrawField* response = nullptr;
  std::vector<std::unique_ptr<DrawField>> folded;  // the fields of several variables in one
  std::vector<std::pair<const PlXLabeling*, std::string>> labels;  // with the field that is shown
  std::map<std::string, std::string> tips;                         // fields by tokens
  bool isSummarized = false;   // an item is made of several rows
  bool isFit = false;          // a curve, with places that no row has
  bool hasFreePlaces = false;  // places of its own, not on the dimensions

  void add(const Json& step) { transforms.push_back(step); }
  void addFilter(const std::string& expression) { addOnce(transforms, filter(expression)); }
};

}  // namespace draw

#endif
