// Places for what has none: networks, trees and clouds of words.
#ifndef CHARTXML_TOOLS_DRAWNETWORK_H
#define CHARTXML_TOOLS_DRAWNETWORK_H

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace draw {

// Places from 0 to 1 on both sides, by name.
using NetworkPlaces = std::map<std::string, std::pair<double, double>>;
using NetworkLinks = std::vector<std::pair<std::string, std::string>>;  // from, to

// All nodes on a circle, in the order in which they are first named.
NetworkPlaces circlePlaces(const NetworkLinks& links);

// Each node of a tree above its children, the leaves evenly from left to right. A link leads from a
// node to the one above it; that of a root to an empty name. Nodes on a ring of links are left out.
NetworkPlaces treePlaces(const NetworkLinks& links);

// Words in rows, as a text is written.
NetworkPlaces gridPlaces(const std::vector<std::string>& words);

}  // namespace draw

#endif
