// What the installed schema of charts tells of their elements.
#ifndef CHARTXML_TOOLS_CHARTSCHEMA_H
#define CHARTXML_TOOLS_CHARTSCHEMA_H

#include <map>
#include <string>

struct ChartAttribute {
  std::string documentation;
  bool isLink = false;
};

struct DialectElement {
  std::map<std::string, ChartAttribute> attributes;
  bool isFree = false;  // may have any attributes beside
  bool holdsText = false;
};

// By their tags.
using ChartElements = std::map<std::string, DialectElement>;

// Throws a Failure when the schema can't be read.
ChartElements readChartElements();

#endif
