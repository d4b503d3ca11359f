// CommandOutcome: what a template's command did to a chart, for who asks.
#ifndef CHARTXML_COMMANDOUTCOME_H
#define CHARTXML_COMMANDOUTCOME_H

#include <cstddef>
#include <string>
#include <vector>

// An element of the chart that is other than before.
struct ElementChange {
  enum class Kind { changed, added, removed };
  Kind kind = Kind::changed;
  std::string tag;  // without a prefix
  std::string id;   // empty for an element without one
};

// Texts are UTF-8.
struct CommandOutcome {
  // The 0-based place among the elements below the template's root, and the element's name.
  std::size_t position = 0;
  std::string name;
  // False for an element that is no command, for one that failed and for one that stopped the run.
  bool isDone = false;
  // What the command changed, added and removed in the end; empty when the chart is as it was. What
  // lies in an element that was added or removed goes with it, and so isn't told.
  std::vector<ElementChange> changes;
  // What the command asked for and could not have, such as a category that isn't there or a number
  // that is malformed; each once, in the order in which they were met.
  std::vector<std::string> notes;
  // Why it passed over what it looked at. They answer for a command that changed nothing: of one
  // that changed something, they are about the rest of the chart.
  std::vector<std::string> reasons;
};

#endif
