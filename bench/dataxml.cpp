// Data documents: the ways between columns, text and stream against the bare conversion of the same
// numbers, and what ten times as much costs.
#include <charconv>
#include <cstring>
#include <memory>
#include <random>
#include <stdexcept>

#include "allocations.h"
#include "columns.h"
#include "measures.h"
#include "xmldatahandler.h"
#include "zlib1211tavo.h"

namespace {

constexpr int runs = 9;

using Text = std::shared_ptr<const std::string>;

Text textOf(VarDataProcessor& store) {
  std::string text;
  if (!XmlDataHandler::WriteStore(store, text)) throw std::runtime_error("the store is too large");
  return std::make_shared<const std::string>(std::move(text));
}

struct Stream {
  std::unique_ptr<unsigned char[]> bytes;
  unsigned size = 0;
};

std::shared_ptr<const Stream> streamOf(const std::string& text) {
  const auto stream = std::make_shared<Stream>();
  stream->bytes.reset(XmlDataHandler(text).GetDataStream(stream->size));
  if (!stream->bytes) throw std::runtime_error("the text has no stream");
  return stream;
}

// ---- the bare conversions

// Reads the numbers of all rows, wherever they stand, and keeps them as a reader would. In a row
// every byte that starts no number is taken for a separator.
void scanNumbers(const std::string& text, std::vector<double>& values) {
  values.clear();
  const char* end = text.data() + text.size();
  const char* at = text.data() + text.find("<row>");
  while (at < end) {
    double value;
    const auto result = std::from_chars(at, end, value);
    if (result.ec == std::errc()) {
      values.push_back(value);
      at = result.ptr;
    } else if (*at == '<') {
      // The tags between two rows
      const auto* row = static_cast<const char*>(memmem(at, end - at, "<row>", 5));
      at = row ? row + 5 : end;
    } else {
      ++at;
    }
  }
}

void printNumbers(const std::vector<double>& values, std::vector<char>& out) {
  char* at = out.data();
  for (const double value : values) {
    at = std::to_chars(at, at + 32, value).ptr;
    *at++ = ';';
  }
}

std::vector<double> valuesOf(const std::string& text) {
  std::vector<double> values;
  scanNumbers(text, values);
  return values;
}

// What the library deflates: the stream as it is before.
std::shared_ptr<const std::string> bareStreamOf(const Stream& stream) {
  std::string bare;
  const std::string packed(reinterpret_cast<const char*>(stream.bytes.get()), stream.size);
  zlib1211tavo::decompressString(bare, packed);
  return std::make_shared<const std::string>(std::move(bare));
}

// ---- measures

void addSteps(const std::string& label, Kind kind, unsigned rows) {
  measureTime("document/" + label + "/text to columns and from_chars", 1.3, runs, [=]() -> Pair {
    const Text text = textOf(*storeOf(kind, rows, 8));
    const auto values = std::make_shared<std::vector<double>>();
    values->reserve(8 * std::size_t(rows));
    return {[=] {
              VarDataProcessor store;
              XmlDataHandler::ReadStore(*text, store, XmlDataHandler::Keep::Numbers);
            },
            [=] { scanNumbers(*text, *values); }};
  });
  measureTime("document/" + label + "/columns to text and to_chars", 1.3, runs, [=]() -> Pair {
    const Store store = storeOf(kind, rows, 8);
    const std::vector<double> values = valuesOf(*textOf(*store));
    const auto out = std::make_shared<std::vector<char>>(values.size() * 33);
    return {[=] { textOf(*store); }, [=] { printNumbers(values, *out); }};
  });
}

void addWhole(const std::string& label, Kind kind, unsigned rows) {
  measureTime("document/" + label + "/GetDataStream and its steps", 1.1, runs, [=]() -> Pair {
    const Text text = textOf(*storeOf(kind, rows, 8));
    const auto bare = bareStreamOf(*streamOf(*text));
    return {[=] { streamOf(*text); },
            [=] {
              VarDataProcessor store;
              XmlDataHandler::ReadStore(*text, store, XmlDataHandler::Keep::Numbers);
              std::string packed;
              zlib1211tavo::compressString(*bare, packed);
            }};
  });
  measureTime("document/" + label + "/GetXmlData and its steps", 1.1, runs, [=]() -> Pair {
    const Store store = storeOf(kind, rows, 8);
    const auto stream = streamOf(*textOf(*store));
    return {[=] {
              std::string text;
              XmlDataHandler(stream->bytes.get(), stream->size).GetXmlData(text, false);
            },
            [=] {
              VarDataProcessor read;
              read.ReadStreamData(stream->bytes.get(), stream->size);
              textOf(*store);
            }};
  });
  // 2.5 times what goes in and what comes out, both uncompressed
  measureBytes("document/" + label + "/GetDataStream's peak, text and stream", 2.5, [=]() -> Sizes {
    const Text text = textOf(*storeOf(kind, rows, 8));
    const std::size_t length = text->size() + bareStreamOf(*streamOf(*text))->size();
    return {text->size() + allocations::peakOf([&] { streamOf(*text); }), length};
  });
  measureBytes("document/" + label + "/GetXmlData's peak, text and stream", 2.5, [=]() -> Sizes {
    const Text text = textOf(*storeOf(kind, rows, 8));
    const auto stream = streamOf(*text);
    const std::size_t peak = allocations::peakOf([&] {
      std::string again;
      XmlDataHandler(stream->bytes.get(), stream->size).GetXmlData(again, false);
    });
    return {stream->size + peak, text->size() + bareStreamOf(*stream)->size()};
  });
}

// A document that is written without a store, which would take more memory than what is measured.
std::string documentOf(int rows, int columns, int sources = 1) {
  std::mt19937_64 random(1);
  std::string text;
  text.reserve(std::size_t(rows) * columns * sources * 12);
  for (int source = 0; source < sources; ++source) {
    text += "<embeddedSource id=\"source" + std::to_string(source) + "\"><names>";
    for (int column = 0; column < columns; ++column) {
      text += (column > 0 ? ";variable" : "variable") + std::to_string(column);
    }
    text += "</names>";
    for (int row = 0; row < rows; ++row) {
      text += "<row>";
      for (int column = 0; column < columns; ++column) {
        if (column > 0) text += ';';
        const double value = cellOf(Kind::Mixed, column, row, random);
        if (value != VarDataProcessor::systemMissing) VarDataProcessor::AppendNumber(value, text);
      }
      text += "</row>";
    }
    text += "</embeddedSource>";
  }
  return text;
}

void addDocumentGrowth(const std::string& label, int count,
                       const std::function<std::string(int)>& text) {
  measureGrowth("growth/document/" + label + "/GetDataStream", count,
                [=](int n) -> Run { return [text = text(n)] { streamOf(text); }; });
  measureGrowth("growth/document/" + label + "/GetXmlData", count, [=](int n) -> Run {
    return [stream = streamOf(text(n))] {
      std::string again;
      XmlDataHandler(stream->bytes.get(), stream->size).GetXmlData(again, false);
    };
  });
}

}  // namespace

void addDataXml() {
  for (const unsigned rows : {20'000u, 1'000'000u}) {
    for (const Kind kind : {Kind::Mixed, Kind::Doubles}) {
      const std::string label =
          (kind == Kind::Mixed ? "mixed " : "doubles ") + std::to_string(rows) + " x 8";
      addSteps(label, kind, rows);
      addWhole(label, kind, rows);
    }
  }
  // As many rows as the store's columns hold exactly, once after growth and once without.
  addDocumentGrowth("rows", 16'000, [](int n) { return documentOf(n, 8); });
  addDocumentGrowth("columns", 50, [](int n) { return documentOf(1000, n); });
  addDocumentGrowth("sources", 50, [](int n) { return documentOf(1000, 8, n); });
}
