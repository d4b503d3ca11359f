// Reads any bytes as a style text: twice the same text is once, and what is written comes back.
#include <chartxml/chartstylevalue.h>
#include <chartxml/chartxml.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const ChartString text(bytes.c_str());
  ChartStyleValue value(text.xc_str());
  const ChartString written = value.getValue();
  if (!ChartStyleValue(written.xc_str()).getValue().equals(written)) std::abort();
  value.other.clear();
  const ChartString known = value.getValue();
  value.initialize(known.xc_str());
  if (!value.getValue().equals(known)) std::abort();
  return 0;
}
