// formatter: numbers as text.
#ifndef CHARTXML_FORMATTER_H
#define CHARTXML_FORMATTER_H

#include <string>

#include "export.h"

class CHARTXML_API formatter {
 public:
  // At most `digits` significant digits, at least one. From 16 on it is the shortest text that
  // reads back to the same value, which may take 17. The point is the separator whatever the
  // locale; infinities are "INF" and "-INF", what isn't a number is "NaN".
  static std::string AsString(double value, int digits);
};

#endif
