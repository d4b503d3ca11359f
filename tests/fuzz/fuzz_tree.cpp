// Opens any bytes as a tree model, as a display document, as a template and as a setting.
#include <chartxml/chartxml.h>

#include <cstdlib>

#include "twoparts.h"

namespace {

// What is printed is read back to the same.
void requireStable(TreeTransformer& tree) {
  const std::string model = tree.getUncompressedPMML(nullptr);
  const std::string display = tree.getDisplayData(nullptr);
  const bool isParsed = tree.isPMMLParsed();
  if (display.empty()) return;
  TreeTransformer again(model, display);
  if (again.getDisplayData(nullptr) != display) std::abort();
  if (isParsed && again.getUncompressedPMML(nullptr) != model) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ChartBase holder;  // schemas are read once
  zlib1211tavo::setInflateLimit(1 << 24);
  const auto [first, second] = twoParts(data, size);

  TreeTransformer given(first, second);
  requireStable(given);
  given.applyTemplate(first);
  for (const auto& setting : TreeTransformer::getSettings()) given.setSetting(setting.name, second);
  given.SetZoomFactor(100);
  given.addTargetDateFormat("DATE", 11, 0);
  given.addPredictorDate(first, second, 11, 0);
  given.applyColors(TreeTransformer::ChartColors, {first, second});
  given.getDisplayData(nullptr);

  TreeTransformer defaults(first, 0, "");
  defaults.applyTemplate(second);
  defaults.getUncompressedPMML(nullptr);
  return 0;
}
