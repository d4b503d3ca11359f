// Applies any bytes as a template's text.
#include <cstdint>

#include "fuzztemplate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  applyFuzzed(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
