// The programs that draw plots of Vega-Lite, which are found on the path.
#ifndef CHARTXML_TOOLS_RENDERER_H
#define CHARTXML_TOOLS_RENDERER_H

#include <string>

enum class PictureForm {
  Svg,  // by vl2svg
  Png,  // by vl2svg and rsvg-convert; without that one by vl2png
};

// The picture of a plot. Throws a Failure, which is about `name`, when no program is there or one
// fails. What programs say beside that goes to standard error if it is wanted.
std::string renderPicture(const std::string& plot, PictureForm form, const std::string& name,
                          bool isVerbose);

#endif
