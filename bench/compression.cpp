// The library's compression level against zlib's default on a chart's text and on rows of data, and
// what each level costs.
#include <libdeflate.h>
#include <zlib.h>

#include <memory>
#include <stdexcept>
#include <utility>

#include "charts.h"
#include "columns.h"
#include "measures.h"
#include "zlib1211tavo.h"

namespace {

constexpr int defaultLevel = 6;

std::string deflated(const std::string& text, int level) {
  uLongf size = compressBound(text.size());
  std::string packed(size, '\0');
  const auto* from = reinterpret_cast<const Bytef*>(text.data());
  auto* to = reinterpret_cast<Bytef*>(packed.data());
  if (compress2(to, &size, from, text.size(), level) != Z_OK) {
    throw std::runtime_error("zlib fails");
  }
  packed.resize(size);
  return packed;
}

std::string packed(const std::string& text, int level) {
  const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
      libdeflate_alloc_compressor(level), libdeflate_free_compressor);
  std::string result(libdeflate_zlib_compress_bound(compressor.get(), text.size()), '\0');
  result.resize(libdeflate_zlib_compress(compressor.get(), text.data(), text.size(), result.data(),
                                         result.size()));
  if (result.empty()) throw std::runtime_error("libdeflate fails");
  return result;
}

std::string byLibrary(const std::string& text, int) {
  std::string packed;
  zlib1211tavo::compressString(text, packed);
  return packed;
}

// What a store's stream is before it is compressed.
std::string bareStream(VarDataProcessor& store) {
  unsigned size = 0;
  const std::unique_ptr<unsigned char[]> stream(store.GetDataStream(size));
  const std::string whole(reinterpret_cast<char*>(stream.get()), size);
  std::string text;
  zlib1211tavo::decompressString(text, whole);
  return text;
}

// `pack` answers a text compressed in the way that is measured.
void addPair(const std::string& name, double limit, std::function<std::string()> text,
             std::string (*pack)(const std::string&, int), int level) {
  measureBytes(name + "/bytes of level 6", limit, [=]() -> Sizes {
    const std::string whole = text();
    return {pack(whole, level).size(), deflated(whole, defaultLevel).size()};
  });
  measureTime(name + "/time of level 6", noLimit, 9, [=]() -> Pair {
    const std::string whole = text();
    return {[=] { pack(whole, level); }, [=] { deflated(whole, defaultLevel); }};
  });
}

void addText(const std::string& label, std::function<std::string()> text) {
  addPair("compressString/" + label, 1.02, text, byLibrary, 0);
  for (int level = 1; level <= 12; ++level) {
    addPair("level " + std::to_string(level) + "/" + label, noLimit, text, packed, level);
  }
}

}  // namespace

void addCompression() {
  addText("chart of 14 KB", [] { return chartOfBytes(14'000); });
  addText("chart of 1 MB", [] { return chartOfBytes(1'000'000); });
  addText("data", [] { return rowsText(20'000); });
  for (const auto& [label, kind] :
       {std::pair("mixed columns", Kind::Mixed), std::pair("columns of doubles", Kind::Doubles),
        std::pair("columns with texts", Kind::Texts)}) {
    addText(label, [kind = kind] { return bareStream(*storeOf(kind, 20'000, 8)); });
  }
}
