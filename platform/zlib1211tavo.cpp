#include "zlib1211tavo.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>

namespace {

// Chart text at this level is within a tenth of the size at level 6 for a fraction of the time; see
// docs/benchmarks.md.
constexpr int level = 6;

std::size_t inflateLimit = std::size_t(1) << 30;

// zlib counts in 32 bits: longer texts are given to it in pieces.
constexpr std::size_t longestPiece = std::size_t(1) << 30;

uInt pieceOf(std::size_t size) {
  return static_cast<uInt>(std::min(size, longestPiece));
}

Bytef* bytesOf(const char* text) {
  return reinterpret_cast<Bytef*>(const_cast<char*>(text));
}

// Inflates into `output`, which grows by doubling from `expected` up to `limit`; its size is that
// of the text in the end. False for anything but one whole stream.
bool inflateAll(std::string& output, const std::string& input, std::size_t expected,
                std::size_t limit) {
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) return false;
  std::size_t taken = 0;
  std::size_t given = 0;
  int result = Z_OK;
  output.resize(std::min(expected, limit));
  while (result == Z_OK) {
    if (given == output.size()) {
      // One byte over the limit tells a text that fits from one that doesn't.
      if (given > limit) break;
      output.resize(std::min(std::max<std::size_t>(2 * given, 4096), limit + 1));
    }
    stream.next_in = bytesOf(input.data() + taken);
    stream.avail_in = pieceOf(input.size() - taken);
    stream.next_out = bytesOf(output.data() + given);
    stream.avail_out = pieceOf(output.size() - given);
    const uInt inBefore = stream.avail_in;
    const uInt outBefore = stream.avail_out;
    result = inflate(&stream, Z_NO_FLUSH);
    taken += inBefore - stream.avail_in;
    given += outBefore - stream.avail_out;
  }
  inflateEnd(&stream);
  output.resize(given);
  return result == Z_STREAM_END && taken == input.size() && given <= limit;
}

}  // namespace

bool zlib1211tavo::compressString(const std::string& input, std::string& output) {
  z_stream stream{};
  if (deflateInit(&stream, level) != Z_OK) {
    output.clear();
    return false;
  }
  std::string packed(deflateBound(&stream, input.size()), '\0');
  std::size_t taken = 0;
  std::size_t given = 0;
  int result = Z_OK;
  while (result == Z_OK) {
    stream.next_in = bytesOf(input.data() + taken);
    stream.avail_in = pieceOf(input.size() - taken);
    stream.next_out = bytesOf(packed.data() + given);
    stream.avail_out = pieceOf(packed.size() - given);
    const uInt inBefore = stream.avail_in;
    const uInt outBefore = stream.avail_out;
    result = deflate(&stream, input.size() - taken == inBefore ? Z_FINISH : Z_NO_FLUSH);
    taken += inBefore - stream.avail_in;
    given += outBefore - stream.avail_out;
  }
  deflateEnd(&stream);
  packed.resize(result == Z_STREAM_END ? given : 0);
  packed.shrink_to_fit();
  output = std::move(packed);
  return result == Z_STREAM_END;
}

bool zlib1211tavo::decompressString(std::string& output, const std::string& input) {
  std::string text;
  const bool isWhole = inflateAll(text, input, 4 * input.size(), inflateLimit);
  if (!isWhole) text.clear();
  output = std::move(text);
  return isWhole;
}

bool zlib1211tavo::decompressString(std::string& output, const std::string& input,
                                    unsigned long size) {
  // No stream holds more than 1032 times its own length: a lie about the size costs no memory.
  const bool isPossible = size <= inflateLimit && size / 1032 <= input.size();
  std::string text;
  const bool isWhole = isPossible && inflateAll(text, input, size, size) && text.size() == size;
  if (!isWhole) text.clear();
  output = std::move(text);
  return isWhole;
}

std::size_t zlib1211tavo::getInflateLimit() {
  return inflateLimit;
}
void zlib1211tavo::setInflateLimit(std::size_t bytes) {
  inflateLimit = std::min(bytes, SIZE_MAX - 1);
}
