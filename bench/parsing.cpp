// Making a ChartTransformer against the bare parse of the same text. All include the end of what
// they make.
#include <memory>
#include <stdexcept>

#include "baseline.h"
#include "charts.h"
#include "charttransformer.h"
#include "measures.h"
#include "zlib1211tavo.h"

namespace {

void addChart(const std::string& label, std::size_t bytes, int runs) {
  const std::string text = chartOfBytes(bytes);
  const Run transformer = [text] { const ChartTransformer chart(text); };
  measureTime("constructor/" + label + "/new parser", 1.35, runs, transformer, [text] {
    const auto parser = baseline::newParser();
    baseline::parse(*parser, text);
  });
  const std::shared_ptr<xercesc::XercesDOMParser> reused = baseline::newParser();
  measureTime("constructor/" + label + "/reused parser", noLimit, runs, transformer,
              [text, reused] {
                baseline::parse(*reused, text);
                reused->resetDocumentPool();
              });
}

void addData(int rows, int runs) {
  const std::string text = chartText({.rows = rows});
  std::string data;
  if (!zlib1211tavo::decompressString(data, ChartTransformer(text).getCompressedData())) {
    throw std::runtime_error("the chart has no data");
  }
  measureTime(
      "constructor/20000 rows/parse and compress", 1.6, runs,
      [text] { const ChartTransformer chart(text); },
      [text, data] {
        const auto parser = baseline::newParser();
        baseline::parse(*parser, text);
        std::string packed;
        zlib1211tavo::compressString(data, packed);
      });
}

}  // namespace

void addParsing() {
  addChart("14 KB", 14'000, 400);
  addChart("100 KB", 100'000, 100);
  addChart("1 MB", 1'000'000, 21);
  addData(20'000, 15);
}
