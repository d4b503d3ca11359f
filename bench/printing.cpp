// Printing a chart against the serializer of the parser's library, which writes the same document
// as UTF-8 to memory.
#include <memory>

#include "baseline.h"
#include "charts.h"
#include "charttransformer.h"
#include "measures.h"

namespace {

void addChart(const std::string& label, std::size_t bytes, int runs) {
  measureTime("getXML/" + label + "/serializer", 0.6, runs, [bytes]() -> Pair {
    const auto chart = std::make_shared<ChartTransformer>(chartOfBytes(bytes));
    const xercesc::DOMDocument* document = chart->parseDocument(chart->getXML(nullptr));
    return {[chart] { chart->getXML(nullptr); }, [chart, document] { baseline::print(*document); }};
  });
}

}  // namespace

void addPrinting() {
  addChart("14 KB", 14'000, 400);
  addChart("100 KB", 100'000, 100);
  addChart("1 MB", 1'000'000, 21);
}
