// Failures that an operation tells by its result, in the log.
#ifndef CHARTXML_REPORT_H
#define CHARTXML_REPORT_H

#include <string>

#include "charterrorhandler.h"
#include "chartexception.h"

// `file` and `line` are the place that the log tells.
inline void report(const std::string& message, const char* file, unsigned line) {
  ChartErrorHandler().error(ChartException(message, file, line));
}

#endif
