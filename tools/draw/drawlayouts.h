// Places that aren't those of values: networks, densities, boxes and cells.
#ifndef CHARTXML_TOOLS_DRAWLAYOUTS_H
#define CHARTXML_TOOLS_DRAWLAYOUTS_H

#include "drawelement.h"

namespace draw {

// Whether an element is a network, a cloud of words, a distribution, a density or a box plot.
bool isLaidOut(const Subject& of);
// Nothing when it is left out.
std::optional<Placed> withLayout(const Subject& of, Placed placed);
// Cells of a grid; hexagons lie as bricks do.
std::optional<Placed> withCells(const Subject& of, const PlXBinStatistic& bins, Placed placed);

}  // namespace draw

#endif
