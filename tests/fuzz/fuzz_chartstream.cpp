// Opens any bytes as a chart and its data stream, both before they are compressed: the first byte
// tells where the one ends and the other starts, in 256ths of the rest.
#include <chartxml/chartxml.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ChartBase holder;  // schemas are read once
  zlib1211tavo::setInflateLimit(1 << 24);
  if (size == 0) return 0;
  const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::size_t split = rest.size() * data[0] / 255;
  std::string text;
  std::string stream;
  zlib1211tavo::compressString(rest.substr(0, split), text);
  zlib1211tavo::compressString(rest.substr(split), stream);

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
