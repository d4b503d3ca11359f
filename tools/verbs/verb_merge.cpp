#include <set>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

using namespace xercesc;

const char mergeHelp[] =
    "usage: chartxml merge [-o OUT] CHART DATA\n"
    "\n"
    "Writes the chart with the sources of the data document in the places of its placeholders.\n"
    "Each placeholder must have its source.\n"
    "\n"
    "  -o, --output OUT  write to a file in place of standard output\n"
    "  -h, --help        show this\n"
    "\n"
    "Examples:\n"
    "  chartxml merge sales.chart.xml sales.data.xml > sales.xml\n"
    "  chartxml merge -o sales.xml sales.chart.z sales.data.z\n";

namespace {

std::string compressed(const std::string& text) {
  std::string result;
  zlib1211tavo::compressString(text, result);
  return result;
}

void checkChart(const std::string& name, const std::string& text) {
  ChartBase base;
  requireChart(rootOf(base, name, text), name);
}

// Why the library can't put them together as a whole.
[[noreturn]] void failAtPair(const std::string& chartName, const std::string& chart,
                             const std::string& dataName, const std::string& data) {
  ChartBase base;
  const DOMElement& chartRoot = rootOf(base, chartName, chart);
  const DOMElement& dataRoot = rootOf(base, dataName, data);
  requireData(dataRoot, dataName);
  std::set<ChartString> sources;
  for (const DOMElement* source = dataRoot.getFirstElementChild(); source;
       source = source->getNextElementSibling()) {
    sources.insert(source->getAttribute(PlXUni::_id));
  }
  for (const DOMElement* child = chartRoot.getFirstElementChild(); child;
       child = child->getNextElementSibling()) {
    const ChartString id = child->getAttribute(PlXUni::_id);
    if (XMLString::equals(child->getLocalName(), PlXUserSource::_UTF_userSource) &&
        !sources.contains(id)) {
      throw Failure(dataName + ": has no source '" + id.toUTF8() + "', which " + chartName +
                    " has a placeholder for");
    }
  }
  throw Failure(chartName + ": can't be merged");
}

}  // namespace

int runMerge(int argc, char** argv) {
  std::string output = "-";
  const auto files = readOptions(argc, argv, {{{"output", 'o', nullptr, &output}}});
  if (files.size() != 2) throw UsageError("a CHART and its DATA are to be given");
  const std::string chart = readDocument(files[0]);
  const std::string data = readDocument(files[1]);
  checkChart(files[0], chart);

  ChartTransformer transformer(compressed(chart), std::string());
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(files[0]);
  transformer.setDataXML(data);
  std::string text = transformer.getEntireXML(ChartBase::_utf8);
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(files[0]);
  if (text.empty() || !transformer.isDataWhole()) failAtPair(files[0], chart, files[1], data);
  text += '\n';
  PendingFile(output, std::move(text)).commit();
  return exitDone;
}
