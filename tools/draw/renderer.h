// A program that draws plots of Vega-Lite.
#ifndef CHARTXML_TOOLS_RENDERER_H
#define CHARTXML_TOOLS_RENDERER_H

#include <string>

namespace draw {

// The SVG that `vl2svg`, found on the path, makes of a plot. Throws a Failure when it
// isn't there or fails. `name` is what the failure is about.
std::string renderSvg(const std::string& plot, const std::string& name);

}  // namespace draw

#endif
