// Where the items of an element are.
#ifndef CHARTXML_TOOLS_DRAWPLACES_H
#define CHARTXML_TOOLS_DRAWPLACES_H

#include "drawelement.h"

namespace draw {

// Nothing for an element that is left out, which is told. `rows` are transforms that leave the rows
// that are in the picture.
std::optional<Placed> place(const Subject& of, Json rows, Looks looks, Mark mark);

// A summary of the rows of each item, whose places along the first side are `place`.
Summary summaryOf(const Subject& of, const Looks& looks, const std::string& place);
// Asks it for what looks, labels and popups show of items that are summarized; `response` is the
// field that holds the value of the item itself.
void addToSummary(const Subject& of, Summary& summary, const std::string& response, Placed& placed);

}  // namespace draw

#endif
