// Texts out of a chart, as verbs write them.
#ifndef CHARTXML_TOOLS_CHARTTEXTS_H
#define CHARTXML_TOOLS_CHARTTEXTS_H

#include <map>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

class CTLabelType;
class PlXBaseElement;
class PlXLocation;
class PlXVisualization;

std::string utf8(const XMLCh* text);

// Items with `separator` between those that aren't empty.
std::string joined(const std::vector<std::string>& items, char separator = ',');

// The texts of a label as a reader sees them, with computed values by their names in braces; empty
// for null.
std::string labelText(const CTLabelType* label);

// What fixes a part of a frame: "10%", "content", "attach:title:5pt".
std::string placeText(const PlXLocation& location);

// True when the style of a frame says that it isn't visible.
bool isHidden(const PlXBaseElement& frame);

// What the chart's extension record says that frames are, such as "title1", by the frames' ids.
std::multimap<std::string, std::string> rolesOf(const PlXVisualization& chart);

#endif
