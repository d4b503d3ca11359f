// The library's compression level against zlib's default on a chart's text and on rows of data, and
// what each level costs.
#include <zlib.h>

#include <stdexcept>

#include "charts.h"
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

std::string byLibrary(const std::string& text, int) {
  std::string packed;
  zlib1211tavo::compressString(text, packed);
  return packed;
}

// `packed` answers a text compressed in the way that is measured.
void addPair(const std::string& name, double limit, std::function<std::string()> text,
             std::string (*packed)(const std::string&, int), int level) {
  measureBytes(name + "/bytes of level 6", limit, [=]() -> Sizes {
    const std::string whole = text();
    return {packed(whole, level).size(), deflated(whole, defaultLevel).size()};
  });
  measureTime(name + "/time of level 6", noLimit, 9, [=]() -> Pair {
    const std::string whole = text();
    return {[=] { packed(whole, level); }, [=] { deflated(whole, defaultLevel); }};
  });
}

void addText(const std::string& label, std::function<std::string()> text) {
  addPair("compressString/" + label, 1.1, text, byLibrary, 0);
  for (int level = 1; level <= 9; ++level) {
    addPair("level " + std::to_string(level) + "/" + label, noLimit, text, deflated, level);
  }
}

}  // namespace

void addCompression() {
  addText("chart of 14 KB", [] { return chartOfBytes(14'000); });
  addText("chart of 1 MB", [] { return chartOfBytes(1'000'000); });
  addText("data", [] { return rowsText(20'000); });
}
