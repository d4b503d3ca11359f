// A picture of a chart's page.
#ifndef CHARTXML_TOOLS_PAGESVG_H
#define CHARTXML_TOOLS_PAGESVG_H

#include <string>

struct PageLayout;

// An SVG document: a box for each frame with its tag, id, roles and text in it, colours by kind,
// frames over the containers that hold them. A viewer that shows titles shows how each is placed.
// The problems stand below the page.
std::string drawPage(const PageLayout& layout);

#endif
