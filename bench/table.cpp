#include "table.h"

#include <cstdio>
#include <string>

namespace {

// Seconds and bytes both come as bare numbers; what is below a thousand is no size of a text.
std::string valueText(double value) {
  char text[32];
  if (value < 1000) {
    std::snprintf(text, sizeof text, "%.3f ms", 1000 * value);
  } else {
    std::snprintf(text, sizeof text, "%.0f kB", value / 1000);
  }
  return text;
}

}  // namespace

bool TableReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  std::printf("%-46s %14s %14s %8s %7s\n", "measure", "value", "compared with", "figure", "limit");
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    const auto value = [&](const char* name) { return run.counters.at(name).value; };
    std::printf("%-46s %14s %14s %8.2f ", run.run_name.function_name.c_str(),
                valueText(value("subject")).c_str(), valueText(value("reference")).c_str(),
                value("figure"));
    if (value("limit") == 0) {
      std::printf("%7s\n", "-");
    } else {
      const bool isKept = value("figure") <= value("limit");
      std::printf("%7.2f %s\n", value("limit"), isKept ? "kept" : "BROKEN");
      broken_ += !isKept;
    }
  }
  std::fflush(stdout);
}
