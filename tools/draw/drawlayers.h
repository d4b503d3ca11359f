// The items of an element as layers.
#ifndef CHARTXML_TOOLS_DRAWLAYERS_H
#define CHARTXML_TOOLS_DRAWLAYERS_H

#include "drawelement.h"

namespace draw {

// The lowest first.
std::vector<Json> layersOf(const Subject& of, Placed placed);

// The encoding that keeps groups of items apart.
Json detailOf(const Looks& looks);

}  // namespace draw

#endif
