// What the parts of `chartxml draw` share: JSON, short ways into a chart, and what is told of what
// isn't drawn. The parts are, each upon those before it:
//
//   drawdata    the sources as tables of JSON, variables as their fields, the order of categories
//   drawlooks   styles and formats
//   drawplane, drawaxes, drawextent   dimensions: scales, axes, bounds of what is drawn
//   drawstatistics, drawaesthetics   transforms, and looks by the values of variables
//   drawelement, drawplaces, drawlayouts, drawlabels, drawlayers   an element, step by step
//   drawmarks   all layers of an element
//   drawguides  guides and texts
//   drawgraph   a graph: its layers, panels and axes
//   drawchart   the page: titles, frames, graphs beside each other
#ifndef CHARTXML_TOOLS_DRAWING_H
#define CHARTXML_TOOLS_DRAWING_H

#include <set>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>
#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

#include "charttexts.h"

namespace draw {

// Members stand in the order in which they were put.
using Json = nlohmann::ordered_json;

// A number as JSON: whole ones without a point, those that JSON doesn't have as null.
Json numberJson(double value);

// A text as a literal of Vega's expressions.
std::string literal(const std::string& text);
std::string literal(double value);
// The value of a field in an expression.
std::string datum(const std::string& field);

// An attribute as it stands, in UTF-8.
std::string attribute(const PlXBaseElement& object, const XMLCh* name);
bool states(const PlXBaseElement& object, const XMLCh* name);

// The children of a kind, in document order.
template <class T>
std::vector<const T*> childrenOf(const PlXBaseElement& parent) {
  std::vector<const T*> result;
  xercesc::DOMElement* child = parent.getImplementation()->getFirstElementChild();
  for (; child; child = child->getNextElementSibling()) {
    if (const auto* found = dynamic_cast<const T*>(parent.objectOf(child))) result.push_back(found);
  }
  return result;
}
template <class T>
const T* childOf(const PlXBaseElement& parent) {
  const std::vector<const T*> found = childrenOf<T>(parent);
  return found.empty() ? nullptr : found[0];
}

std::string tagOf(const PlXBaseElement& object);

// What a picture lacks or shows otherwise. Each is told once.
class DrawNotes {
 public:
  // "bars1: patterns are left out". A thing without an identifier is told by the nearest one that
  // holds it.
  void tell(const PlXBaseElement& object, const std::string& what);
  const std::vector<std::string>& texts() const { return texts_; }

 private:
  std::vector<std::string> texts_;
  std::set<std::string> told_;
};

// A date of a chart in milliseconds since 1970; NaN for a text that is none.
double dateOf(const std::string& text);

// Items between semicolons, without the blanks around them.
std::vector<std::string> listItems(const std::string& text);

}  // namespace draw

#endif
