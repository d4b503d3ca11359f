#include "zlib1211tavo.h"

#include <algorithm>
#include <cstdint>

#include "zlibstreams.h"

namespace {

std::size_t inflateLimit = std::size_t(1) << 30;

}  // namespace

bool zlib1211tavo::compressString(const std::string& input, std::string& output) {
  if (input.size() <= mostAtOnce) {
    const Packed packed = packAtOnce(input.data(), input.size(), Content::Text);
    output.assign(packed.bytes.get(), packed.size);
    return packed.size > 0;
  }
  Deflater deflater;
  deflater.write(input.data(), input.size());
  const bool isWhole = deflater.finish();
  output = isWhole ? deflater.packed().take() : std::string();
  return isWhole;
}

bool zlib1211tavo::decompressString(std::string& output, const std::string& input) {
  return inflateAll(output, input, inflateLimit);
}

bool zlib1211tavo::decompressString(std::string& output, const std::string& input,
                                    unsigned long size) {
  if (size <= inflateLimit && inflateAll(output, input, size) && output.size() == size) return true;
  output.clear();
  return false;
}

std::size_t zlib1211tavo::getInflateLimit() {
  return inflateLimit;
}
void zlib1211tavo::setInflateLimit(std::size_t bytes) {
  inflateLimit = std::min(bytes, SIZE_MAX - 1);
}
