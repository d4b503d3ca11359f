// What holds lists of problems to their bounds.
#ifndef CHARTXML_PROBLEMLIST_H
#define CHARTXML_PROBLEMLIST_H

#include <string>
#include <vector>

#include "chartproblem.h"

namespace problemlist {

// Cuts a message that is too long.
void shorten(std::string& message);

// Appends one whose message is shortened where it has to be. At the bound, one that refuses the
// document takes the place of the last; any other is passed over.
void add(std::vector<ChartProblem>& problems, ChartProblem problem);

// Makes lack of memory the one problem, as far as there is memory for that.
void noteMemory(std::vector<ChartProblem>& problems);

// Drops what is too many.
void finish(std::vector<ChartProblem>& problems);

}  // namespace problemlist

#endif
