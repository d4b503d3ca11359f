#include "drawnetwork.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

namespace draw {

namespace {

std::vector<std::string> namesOf(const NetworkLinks& links) {
  std::vector<std::string> names;
  std::set<std::string> known;
  for (const auto& [from, to] : links) {
    for (const std::string& name : {from, to}) {
      if (!name.empty() && known.insert(name).second) names.push_back(name);
    }
  }
  return names;
}

}  // namespace

NetworkPlaces circlePlaces(const NetworkLinks& links) {
  const std::vector<std::string> names = namesOf(links);
  NetworkPlaces places;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const double angle =
        2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(names.size());
    places[names[i]] = {0.5 + 0.5 * std::sin(angle), 0.5 + 0.5 * std::cos(angle)};
  }
  return places;
}

NetworkPlaces treePlaces(const NetworkLinks& links) {
  std::map<std::string, std::vector<std::string>> children;
  std::set<std::string> below;
  for (const auto& [node, parent] : links) {
    if (node.empty() || parent.empty() || !below.insert(node).second) continue;
    children[parent].push_back(node);
  }
  NetworkPlaces places;
  double leaves = 0;
  double deepest = 0;
  // Each node is seen before and after its children.
  struct Visit {
    std::string name;
    double depth;
    bool isLeft;
  };
  std::vector<Visit> visits;
  for (const std::string& name : namesOf(links)) {
    if (!below.contains(name)) visits.push_back({name, 0, false});
  }
  std::ranges::reverse(visits);
  while (!visits.empty()) {
    const Visit visit = visits.back();
    visits.pop_back();
    const auto found = children.find(visit.name);
    if (found == children.end()) {
      places[visit.name] = {leaves++, visit.depth};
      deepest = std::max(deepest, visit.depth);
    } else if (visit.isLeft) {
      const double first = places[found->second.front()].first;
      const double last = places[found->second.back()].first;
      places[visit.name] = {(first + last) / 2, visit.depth};
    } else {
      visits.push_back({visit.name, visit.depth, true});
      for (auto child = found->second.rbegin(); child != found->second.rend(); ++child) {
        visits.push_back({*child, visit.depth + 1, false});
      }
    }
  }
  for (auto& [name, place] : places) {
    place.first = leaves > 1 ? place.first / (leaves - 1) : 0.5;
    place.second = deepest > 0 ? 1 - place.second / deepest : 0.5;
  }
  return places;
}

NetworkPlaces gridPlaces(const std::vector<std::string>& words) {
  NetworkPlaces places;
  const double columns =
      std::max(1.0, std::floor(std::sqrt(static_cast<double>(words.size()) / 2)));
  const double rows = std::ceil(static_cast<double>(words.size()) / columns);
  for (std::size_t i = 0; i < words.size(); ++i) {
    const double row = std::floor(static_cast<double>(i) / columns);
    const double column = static_cast<double>(i) - row * columns;
    places[words[i]] = {(column + 0.5) / columns, 1 - (row + 0.5) / rows};
  }
  return places;
}

}  // namespace draw
