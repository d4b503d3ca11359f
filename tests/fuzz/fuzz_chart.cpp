// Opens any bytes as a chart's text and takes it through every output.
#include <chartxml/chartxml.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ChartBase holder;  // schemas are read once
  ChartTransformer chart(std::string(reinterpret_cast<const char*>(data), size));
  const std::string entire = chart.getEntireXML(nullptr);
  if (entire.empty()) return 0;

  ChartTransformer again(chart.getCompressedXML(), chart.getCompressedData());
  if (again.getXML(nullptr) != chart.getXML(nullptr)) std::abort();
  if (again.getEntireXML(nullptr) != entire) std::abort();
  return 0;
}
