#include <filesystem>
#include <utility>

#include <xercesc/dom/DOMDocument.hpp>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

const char separateHelp[] =
    R"(usage: chartxml separate [--chart OUT] [--data OUT] [--compress] [--verbose] FILE

Writes a chart and its data into two files. In the chart a placeholder stands for each source
of data that lay in it. A chart without sources gives a data document without any.

      --chart OUT  the chart's file; of FILE sales.xml it is sales.chart.xml, or
                   sales.chart.z with --compress
      --data OUT   the data's file, in the same way sales.data.xml or sales.data.z
  -z, --compress   write both compressed
  -v, --verbose    tell on standard error what was written
  -h, --help       show this

Examples:
  chartxml separate sales.xml
  chartxml separate --compress --chart chart.z --data data.z sales.xml
  chartxml separate --chart - --data /dev/null sales.xml | less
)";

namespace {

struct Parts {
  std::string chart;
  std::string data;
};

std::string inflated(const std::string& compressed) {
  std::string text;
  zlib1211tavo::decompressString(text, compressed);
  return text;
}

Parts partsOf(const std::string& name, std::string text, bool isCompressed) {
  ChartTransformer transformer(text);
  requireChart(transformer, name, text);
  std::string().swap(text);  // an assignment would keep its memory
  Parts parts{transformer.getCompressedXML(), {}};
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(name);
  if (!isCompressed) parts.chart = inflated(parts.chart);
  if (parts.chart.empty()) throw Failure(name + ": can't be separated");
  parts.data = isCompressed ? transformer.getCompressedData() : transformer.getDataXML();
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(name);
  if (parts.data.empty()) {
    xercesc::DOMDocument* empty = transformer.createDataDocument(ChartBase::_utf8);
    parts.data = transformer.compressDocument(empty);
    transformer.releaseDocument(empty);
    if (!isCompressed) parts.data = inflated(parts.data);
  }
  if (!isCompressed) {
    parts.chart += '\n';
    parts.data += '\n';
  }
  return parts;
}

std::string besideFile(const std::string& name, const char* part, bool isCompressed) {
  if (name == "-") throw UsageError("standard input needs --chart and --data");
  std::filesystem::path path(name);
  path.replace_extension(std::string(part) + (isCompressed ? ".z" : ".xml"));
  return path;
}

}  // namespace

int runSeparate(int argc, char** argv) {
  std::string chartName;
  std::string dataName;
  bool isCompressed = false;
  bool isVerbose = false;
  const auto files = readOptions(argc, argv,
                                 {{{"chart", '\0', nullptr, &chartName},
                                   {"data", '\0', nullptr, &dataName},
                                   {"compress", 'z', &isCompressed, nullptr},
                                   {"verbose", 'v', &isVerbose, nullptr}}});
  if (files.size() != 1) throw UsageError("one FILE is to be given");
  const std::string& name = files[0];
  if (chartName.empty()) chartName = besideFile(name, ".chart", isCompressed);
  if (dataName.empty()) dataName = besideFile(name, ".data", isCompressed);
  if (chartName == dataName) throw UsageError("chart and data need a file each");

  Parts parts = partsOf(name, readDocument(name), isCompressed);
  PendingFile chart(chartName, std::move(parts.chart));
  PendingFile data(dataName, std::move(parts.data));
  (data.isStream() ? data : chart).commit();
  (data.isStream() ? chart : data).commit();
  if (isVerbose) {
    complain("wrote " + chartName);
    complain("wrote " + dataName);
  }
  return exitDone;
}
