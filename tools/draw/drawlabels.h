// Data labels, and popups as tooltips.
#ifndef CHARTXML_TOOLS_DRAWLABELS_H
#define CHARTXML_TOOLS_DRAWLABELS_H

#include "drawelement.h"

namespace draw {

// The encoding of an element's tooltip, null for none, and the steps that make its texts.
struct Tips {
  Json steps = Json::array();
  Json encoding;
};
Tips tipsOf(const Subject& of, const Placed& placed);

// A layer of labels, but for its data: `places` is the encoding of the items' places.
struct LabelLayer {
  Json steps = Json::array();
  Json mark;
  Json encoding;
};
// Nothing for labels that aren't visible. `name` is the field that they show.
std::optional<LabelLayer> labelLayer(const Subject& of, const Placed& placed,
                                     const PlXLabeling& labeling, const std::string& name,
                                     const Json& places);

}  // namespace draw

#endif
