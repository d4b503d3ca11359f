// What rows cost a chart that is opened: little more than a look at each.
#include <zlib.h>

#include <cstring>
#include <memory>
#include <stdexcept>

#include "allocations.h"
#include "baseline.h"
#include "charts.h"
#include "charttransformer.h"
#include "measures.h"
#include "zlib1211tavo.h"

namespace {

struct Parts {
  std::string rest;  // the chart without the rows of its sources
  std::string rows;
};

Parts partsOf(const std::string& text) {
  Parts parts;
  std::size_t end = 0;
  for (std::size_t start; (start = text.find("<row>", end)) != text.npos;) {
    parts.rest.append(text, end, start - end);
    end = text.find("</embeddedSource>", start);
    parts.rows.append(text, start, end - start);
  }
  parts.rest.append(text, end);
  return parts;
}

// From '<' to '<', as a scanner without a parser would.
void scan(const std::string& rows) {
  std::size_t count = 0;
  const char* end = rows.data() + rows.size();
  for (const char* at = rows.data(); at != end; ++count) {
    const void* hit = std::memchr(at + 1, '<', static_cast<std::size_t>(end - at - 1));
    at = hit ? static_cast<const char*>(hit) : end;
  }
  if (count == 0) throw std::runtime_error("the chart has no rows");
}

// Without the library, at the level that it used.
void deflated(const std::string& text) {
  constexpr int level = 5;
  uLongf size = compressBound(text.size());
  const auto bytes = std::make_unique_for_overwrite<Bytef[]>(size);
  if (compress2(bytes.get(), &size, reinterpret_cast<const Bytef*>(text.data()), text.size(),
                level) != Z_OK) {
    throw std::runtime_error("the text can't be compressed");
  }
}

void addChart(const std::string& label, const std::string& text, int runs) {
  const Parts parts = partsOf(text);
  measureTime("roads/" + label + "/open and without rows, scan", 1.25, runs, [=]() -> Pair {
    return {[=] { const ChartTransformer chart(text); },
            [=] {
              const ChartTransformer chart(parts.rest);
              scan(parts.rows);
            }};
  });
  measureTime("roads/" + label + "/open, compress data and parse, compress", 0.6, runs,
              [=]() -> Pair {
                std::string data;
                zlib1211tavo::decompressString(data, ChartTransformer(text).getCompressedData());
                return {[=] { ChartTransformer(text).getCompressedData(); },
                        [=] {
                          const auto parser = baseline::newParser();
                          baseline::parse(*parser, text);
                          deflated(data);
                        }};
              });
}

}  // namespace

void addRoads() {
  for (const char* name : {"histogram", "hex-bins", "panelled-line-dates"}) {
    const std::string text = exampleText(name);
    addChart(name + (" of " + std::to_string(text.size() / 1000)) + " KB", text, 201);
  }
  const std::string text = chartText({.rows = 20'000});
  addChart("20000 x 8", text, 51);
  measureBytes("roads/20000 x 8/open's peak and the text", 2.5, [=]() -> Sizes {
    return {allocations::peakOf([&] { const ChartTransformer chart(text); }), text.size()};
  });
}
