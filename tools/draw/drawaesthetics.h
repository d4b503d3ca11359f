// Looks of elements by the values of variables.
#ifndef CHARTXML_TOOLS_DRAWAESTHETICS_H
#define CHARTXML_TOOLS_DRAWAESTHETICS_H

#include <string>
#include <vector>

#include "drawplane.h"
#include "drawstatistics.h"

namespace draw {

// An aesthetic with the field that it shows: that of its variable, or of a statistic of it.
struct DrawLook {
  const CTAesthetic* aesthetic = nullptr;
  const DrawField* field = nullptr;
  std::string name;
  bool isCategorical = false;
};

// Adds what the look says to the encoding of a mark.
void putLook(DrawContext& context, const DrawLook& look, MarkKind kind, const PlXStyle* style,
             Json& encoding);

// True for those that have a look of their own in a picture.
bool isDrawn(const CTAesthetic& aesthetic);

}  // namespace draw

#endif
