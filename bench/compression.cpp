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

std::string deflated(const std::string& text) {
  std::string packed;
  zlib1211tavo::compressString(text, packed);
  return packed;
}

void addText(const std::string& label, const std::string& text) {
  const std::string name = "compressString/" + label;
  const std::size_t reference = deflated(text, defaultLevel).size();
  const Run byDefault = [text] { deflated(text, defaultLevel); };
  measureBytes(name + "/bytes of level 6", 1.1, deflated(text).size(), reference);
  measureTime(
      name + "/time of level 6", noLimit, 15, [text] { deflated(text); }, byDefault);
  for (int level = 1; level <= 9; ++level) {
    const std::string levelName = "level " + std::to_string(level) + "/" + label;
    measureBytes(levelName + "/bytes of level 6", noLimit, deflated(text, level).size(), reference);
    measureTime(
        levelName + "/time of level 6", noLimit, 9, [text, level] { deflated(text, level); },
        byDefault);
  }
}

}  // namespace

void addCompression() {
  addText("chart", chartOfBytes(100'000));
  addText("data", rowsText(20'000));
}
