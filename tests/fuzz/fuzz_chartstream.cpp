// Opens any bytes as a chart and its data stream, both before they are compressed.
#include <chartxml/chartxml.h>

#include <cstdlib>
#include <memory>

#include "twoparts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ChartBase holder;  // schemas are read once
  zlib1211tavo::setInflateLimit(1 << 24);
  const auto [first, second] = twoParts(data, size);
  std::string text;
  std::string stream;
  zlib1211tavo::compressString(first, text);
  zlib1211tavo::compressString(second, stream);

  const auto* bytes = reinterpret_cast<const unsigned char*>(stream.data());
  ChartTransformer chart(text, bytes, stream.size());
  const std::string entire = chart.getEntireXML(nullptr);
  chart.getCompressedData();
  if (chart.getEntireXML(nullptr) != entire) std::abort();
  unsigned long length = 0;
  const std::unique_ptr<unsigned char[]> copy(chart.getCompressedDataStream(length));
  if (stream != std::string(reinterpret_cast<const char*>(copy.get()), length)) std::abort();
  return 0;
}
