#include "zlib1211tavo.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>

#include "textbuffer.h"

namespace {

// The fastest level whose output is at most a tenth longer than that of level 6, for charts short
// and long and for data; docs/benchmarks.md has the figures.
constexpr int level = 5;

std::size_t inflateLimit = std::size_t(1) << 30;

// zlib counts in 32 bits: longer texts are given to it in pieces.
constexpr std::size_t longestPiece = std::size_t(1) << 30;

uInt pieceOf(std::size_t size) {
  return static_cast<uInt>(std::min(size, longestPiece));
}

Bytef* bytesOf(const char* text) {
  return reinterpret_cast<Bytef*>(const_cast<char*>(text));
}

// Inflates up to `limit` bytes; false, with an empty output, for more and for anything but one
// whole stream. Memory is taken as the text turns up, so that a small input can't ask for much.
bool inflateAll(std::string& output, const std::string& input, std::size_t limit) {
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) {
    output.clear();
    return false;
  }
  TextBuffer text;
  std::size_t taken = 0;
  std::size_t given = 0;
  int result = Z_OK;
  while (result == Z_OK && given <= limit) {
    stream.next_in = bytesOf(input.data() + taken);
    stream.avail_in = pieceOf(input.size() - taken);
    stream.next_out = bytesOf(text.room(1));
    stream.avail_out = pieceOf(text.left());
    const uInt inBefore = stream.avail_in;
    const uInt outBefore = stream.avail_out;
    result = inflate(&stream, Z_NO_FLUSH);
    taken += inBefore - stream.avail_in;
    given += outBefore - stream.avail_out;
    text.commit(outBefore - stream.avail_out);
  }
  inflateEnd(&stream);
  const bool isWhole = result == Z_STREAM_END && taken == input.size() && given <= limit;
  output = isWhole ? text.take() : std::string();
  return isWhole;
}

}  // namespace

bool zlib1211tavo::compressString(const std::string& input, std::string& output) {
  z_stream stream{};
  if (deflateInit(&stream, level) != Z_OK) {
    output.clear();
    return false;
  }
  TextBuffer packed;
  std::size_t taken = 0;
  int result = Z_OK;
  while (result == Z_OK) {
    stream.next_in = bytesOf(input.data() + taken);
    stream.avail_in = pieceOf(input.size() - taken);
    stream.next_out = bytesOf(packed.room(1));
    stream.avail_out = pieceOf(packed.left());
    const uInt inBefore = stream.avail_in;
    const uInt outBefore = stream.avail_out;
    result = deflate(&stream, input.size() - taken == inBefore ? Z_FINISH : Z_NO_FLUSH);
    taken += inBefore - stream.avail_in;
    packed.commit(outBefore - stream.avail_out);
  }
  deflateEnd(&stream);
  output = result == Z_STREAM_END ? packed.take() : std::string();
  return result == Z_STREAM_END;
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
