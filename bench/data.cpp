// The column store: its stream against zlib at level 6 on the same bytes, its pool of texts against
// a map, and what ten times as much costs.
#include <zlib.h>

#include <memory>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "allocations.h"
#include "columns.h"
#include "measures.h"

namespace {

constexpr int zlibLevel = 6;
constexpr int runs = 7;

using Bytes = std::vector<unsigned char>;

Bytes streamOf(VarDataProcessor& store) {
  unsigned size = 0;
  const std::unique_ptr<unsigned char[]> stream(store.GetDataStream(size));
  return {stream.get(), stream.get() + size};
}

Bytes inflated(const Bytes& stream, std::size_t size) {
  Bytes block(size);
  uLongf given = size;
  if (uncompress(block.data(), &given, stream.data(), stream.size()) != Z_OK || given != size) {
    throw std::runtime_error("zlib fails");
  }
  return block;
}

// The first eight bytes tell the whole length.
std::size_t lengthOf(const Bytes& stream) {
  unsigned head[2];
  uLongf given = sizeof head;
  uncompress(reinterpret_cast<Bytef*>(head), &given, stream.data(), stream.size());
  return head[1];
}

void inflate(const Bytes& stream, std::size_t size) {
  const auto block = std::make_unique_for_overwrite<unsigned char[]>(size);
  uLongf given = size;
  uncompress(block.get(), &given, stream.data(), stream.size());
}

std::size_t deflate(const Bytes& block) {
  uLongf size = compressBound(block.size());
  const auto packed = std::make_unique_for_overwrite<unsigned char[]>(size);
  compress2(packed.get(), &size, block.data(), block.size(), zlibLevel);
  return size;
}

void addStream(const std::string& label, Kind kind, unsigned rows) {
  // A cell with a text is a node of its row map, and told of beside the limits.
  const bool hasTexts = kind == Kind::Texts;
  measureTime("stream/" + label + "/GetDataStream and zlib", 0.45, runs, [=]() -> Pair {
    const Store store = storeOf(kind, rows, 8);
    const Bytes stream = streamOf(*store);
    const Bytes block = inflated(stream, lengthOf(stream));
    return {[=] { streamOf(*store); }, [=] { deflate(block); }};
  });
  measureBytes("stream/" + label + "/the stream and zlib's", 1.02, [=]() -> Sizes {
    const Bytes stream = streamOf(*storeOf(kind, rows, 8));
    return {stream.size(), deflate(inflated(stream, lengthOf(stream)))};
  });
  measureTime("stream/" + label + "/ReadStreamData and zlib", hasTexts ? noLimit : 1.3, runs,
              [=]() -> Pair {
                const Bytes stream = streamOf(*storeOf(kind, rows, 8));
                const std::size_t length = lengthOf(stream);
                return {[=] {
                          VarDataProcessor store;
                          store.ReadStreamData(stream.data(), static_cast<unsigned>(stream.size()));
                        },
                        [=] { inflate(stream, length); }};
              });
  measureBytes(
      "stream/" + label + "/GetDataStream's peak and the bare bytes", noLimit, [=]() -> Sizes {
        const Store store = storeOf(kind, rows, 8);
        unsigned size = 0;
        const std::size_t peak = allocations::peakOf([&] { delete[] store->GetDataStream(size); });
        return {peak, lengthOf(streamOf(*store))};
      });
  measureBytes(
      "stream/" + label + "/ReadStreamData's peak and the bare bytes", noLimit, [=]() -> Sizes {
        const Bytes stream = streamOf(*storeOf(kind, rows, 8));
        VarDataProcessor store;
        const std::size_t peak = allocations::peakOf(
            [&] { store.ReadStreamData(stream.data(), static_cast<unsigned>(stream.size())); });
        return {peak, lengthOf(stream)};
      });
}

std::vector<std::string> distinctTexts(int count) {
  std::vector<std::string> texts;
  for (int i = 0; i < count; ++i) texts.push_back("category " + std::to_string(i * 7919LL));
  return texts;
}

void addPool(int count) {
  measureTime("pool/" + std::to_string(count) + " texts and unordered_map", 4, runs, [=]() -> Pair {
    const auto texts = std::make_shared<std::vector<std::string>>(distinctTexts(count));
    return {[=] {
              VarDataProcessor store;
              for (const std::string& text : *texts) store.AddString(text);
            },
            [=] {
              std::unordered_map<std::string, unsigned> pool;
              for (const std::string& text : *texts) pool.emplace(text, pool.size());
            }};
  });
}

// A store of ten times the rows, columns, sources or texts, to a stream and back.
void addStreamGrowth(const std::string& label, int count, std::function<Store(int)> storeOfSize) {
  measureGrowth("growth/stream/" + label + "/GetDataStream", count, [=](int n) -> Run {
    const Store store = storeOfSize(n);
    return [=] { streamOf(*store); };
  });
  measureGrowth("growth/stream/" + label + "/ReadStreamData", count, [=](int n) -> Run {
    const Bytes stream = streamOf(*storeOfSize(n));
    const auto store = std::make_shared<VarDataProcessor>();
    return [=] { store->ReadStreamData(stream.data(), static_cast<unsigned>(stream.size())); };
  });
}

Store storeOfTexts(int count) {
  const auto store = std::make_shared<VarDataProcessor>();
  _varinfo info;
  store->AddVariable("source", "variable", &info);
  unsigned row = 0;
  for (const std::string& text : distinctTexts(count)) {
    store->SetStringVariableValue(&info, row++, text);
  }
  return store;
}

}  // namespace

void addData() {
  for (unsigned rows : {20'000u, 1'000'000u}) {
    addStream("mixed " + std::to_string(rows) + " x 8", Kind::Mixed, rows);
    addStream("doubles " + std::to_string(rows) + " x 8", Kind::Doubles, rows);
    addStream("texts " + std::to_string(rows) + " x 8", Kind::Texts, rows);
  }
  addPool(100'000);
  addPool(1'000'000);
  addStreamGrowth("rows", 30'000, [](int n) { return storeOf(Kind::Mixed, n, 8); });
  addStreamGrowth("columns", 200, [](int n) { return storeOf(Kind::Mixed, 1000, n); });
  addStreamGrowth("sources", 200, [](int n) { return storeOf(Kind::Mixed, 100, 8, n); });
  addStreamGrowth("texts", 20'000, storeOfTexts);
}
