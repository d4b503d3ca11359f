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
  // What got a new style after those were found.
  std::vector<const PlXBaseElement*> restyled;

  std::optional<Painted<PlXLine>> lines;
  std::optional<Painted<PlXArea>> areas;
  std::optional<Painted<PlXPath>> paths;
  // The last child interpolation, which all areas and paths follow, and the ids of the styles whose
  // elements do.
  const xercesc::DOMElement* followed = nullptr;
  std::unordered_set<std::u16string> following;
};

#endif
