// A page that shows a plot in a browser.
#ifndef CHARTXML_TOOLS_HTMLPAGE_H
#define CHARTXML_TOOLS_HTMLPAGE_H

#include <string>

#include "drawing.h"

// `scripts` is the folder of Vega's scripts, which are put into the page; empty to load them from
// the net. `name` is the title of a plot that has none. Throws a Failure when a script is missing.
std::string htmlPageOf(const Json& plot, const std::string& scripts, const std::string& name);

#endif
