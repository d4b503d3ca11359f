// Opens any bytes as a compressed chart and its compressed data: the first byte tells where the one
// ends and the other starts, in 256ths of the rest.
#include <chartxml/chartxml.h>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ChartBase holder;  // schemas are read once
  zlib1211tavo::setInflateLimit(1 << 24);
  if (size == 0) return 0;
  const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::size_t split = rest.size() * data[0] / 255;
  ChartTransformer chart(rest.substr(0, split), rest.substr(split));
  chart.getXML(nullptr);
  chart.getEntireXML(nullptr);
  chart.getCompressedData();
  return 0;
}
