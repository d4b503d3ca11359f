#include "table.h"

#include <cstdio>
#include <string>

namespace {

std::string valueText(double value, bool isBytes) {
  char text[32];
  std::snprintf(text, sizeof text, isBytes ? "%.1f kB" : "%.3f ms",
                isBytes ? value / 1000 : value * 1000);
  return text;
}

}  // namespace

bool TableReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  std::printf("%-60s %14s %14s %8s %7s\n", "measure", "value", "compared with", "figure", "limit");
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    const auto value = [&](const char* name) { return run.counters.at(name).value; };
    std::printf("%-60s %14s %14s %8.2f ", run.run_name.function_name.c_str(),
                valueText(value("subject"), value("bytes") != 0).c_str(),
                valueText(value("reference"), value("bytes") != 0).c_str(), value("figure"));
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
