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

Run transforming(const std::string& text) {
  return [text] { const ChartTransformer chart(text); };
}

void addChart(const std::string& label, std::size_t bytes, int runs) {
  measureTime("constructor/" + label + "/new parser", 1.35, runs, [=]() -> Pair {
    const std::string text = chartOfBytes(bytes);
    return {transforming(text), [text] {
              const auto parser = baseline::newParser();
              baseline::parse(*parser, text);
            }};
  });
  measureTime("constructor/" + label + "/reused parser", noLimit, runs, [=]() -> Pair {
    const std::string text = chartOfBytes(bytes);
    const std::shared_ptr<xercesc::XercesDOMParser> parser = baseline::newParser();
    return {transforming(text), [text, parser] {
              baseline::parse(*parser, text);
              parser->resetDocumentPool();
            }};
  });
}

std::string dataOf(const std::string& text) {
  std::string data;
  if (!zlib1211tavo::decompressString(data, ChartTransformer(text).getCompressedData())) {
    throw std::runtime_error("the chart has no data");
  }
  return data;
}

void addData(int rows, int runs) {
  const std::string name = "constructor/" + std::to_string(rows) + " rows/parse and compress";
  measureTime(name, 1.6, runs, [rows]() -> Pair {
    const std::string text = chartText({.rows = rows});
    return {transforming(text), [text, data = dataOf(text)] {
              const auto parser = baseline::newParser();
              baseline::parse(*parser, text);
              std::string packed;
              zlib1211tavo::compressString(data, packed);
            }};
  });
}

}  // namespace

void addParsing() {
  addChart("14 KB", 14'000, 400);
  addChart("100 KB", 100'000, 100);
  addChart("1 MB", 1'000'000, 21);
  addData(20'000, 15);
}
