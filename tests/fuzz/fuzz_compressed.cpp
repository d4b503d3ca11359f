// Opens any bytes as a compressed chart and its compressed data.
#include <chartxml/chartxml.h>

#include "twoparts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ChartBase holder;  // schemas are read once
  zlib1211tavo::setInflateLimit(1 << 24);
  const auto [first, second] = twoParts(data, size);
  ChartTransformer chart(first, second);
  chart.getXML(nullptr);
  chart.getEntireXML(nullptr);
  chart.getCompressedData();
  return 0;
}
