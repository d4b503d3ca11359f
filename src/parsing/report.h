// Failures that an operation tells by its result, in the log.
#ifndef CHARTXML_REPORT_H
#define CHARTXML_REPORT_H

#include <new>
#include <string>
#include <string_view>

#include "charterrorhandler.h"
#include "chartexception.h"

// `file` and `line` are the place that the log tells. A report that there is no memory for is left
// out: the result tells the failure.
inline void report(std::string_view message, const char* file, unsigned line) {
  try {
    ChartErrorHandler().error(ChartException(std::string(message), file, line));
  } catch (const std::bad_alloc&) {
  }
}

#endif
