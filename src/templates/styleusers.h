// Which parts of a chart the styles of an import paint. Found once for a command, so that a command
// may import a style for each part of a large chart.
#ifndef CHARTXML_STYLEUSERS_H
#define CHARTXML_STYLEUSERS_H

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "basetemplate.h"
#include "plxelements.h"

// A command's own, filled by its imports; it counts on a command that gives a part a new style to
// have it made by addStyle().
struct BaseTemplate::StyleUsers {
  // The elements of a tag, each of which has a style.
  template <class T>
  struct Painted {
    std::vector<T*> all;
    std::unordered_map<std::u16string, std::vector<T*>> ofStyle;
  };

  // The ids of the styles that paint surfaces.
  std::optional<std::unordered_set<std::u16string>> surfaces;
  // The one that the command addresses; null when that is all of them.
  const PlXGraph* onlyGraph = nullptr;
  // What got a new style since these were found.
  std::vector<PlXBaseElement*> restyled;

  std::optional<Painted<PlXLine>> lines;
  std::optional<Painted<PlXArea>> areas;
  std::optional<Painted<PlXPath>> paths;
  // The children interpolation that all areas and paths follow, and the ids of the styles whose
  // elements do.
  std::unordered_map<const xercesc::DOMElement*, std::unordered_set<std::u16string>> followed;

  // Finds those of the addressed graphs, of all legends and of the page, unless they are known.
  // `isOne` tells that the command addresses a single graph.
  void findSurfaces(const BaseTemplate& base, const PlXVisualization& target, bool isOne);
  // Once they are found. A style without an id, as those of cycles are, counts as a surface's where
  // there is any surface.
  bool isSurface(const PlXStyle& style) const;
  // Adds the style of a part, when that is a surface that the command addresses.
  void noticeSurface(const PlXBaseElement& part);
};

#endif
