// Converts any bytes as an older template, and applies what becomes of it.
#include <cstdint>
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "fuzztemplate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ChartBase holder;  // schemas are read once
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (!ChartTemplate::isOlder(text)) return 0;
  std::optional<ChartTemplate::Conversion> conversion;
  try {
    conversion = ChartTemplate::convertOlder(text);
  } catch (const ChartException&) {
    return 0;  // grows too long
  }
  if (!conversion) return 0;
  // What is written is a template, whatever it was made of.
  ChartBase base;
  PlXVisualization chart(base.parseDocument(fuzzedChart)->getDocumentElement());
  if (!ChartTemplate(chart, nullptr).parseTemplate(conversion->text)) std::abort();
  applyFuzzed(conversion->text);
  return 0;
}
