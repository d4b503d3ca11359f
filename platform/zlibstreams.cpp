#include "zlibstreams.h"

#include <libdeflate.h>

#include <algorithm>
#include <new>

namespace {

// The fastest levels whose output is no longer than that of zlib's level 6 by more than a fiftieth,
// for charts short and long and for data, and for columns; docs/benchmarks.md has the figures. The
// levels of the two libraries aren't the same.
constexpr int textLevel = 5;
constexpr int columnLevel = 4;
constexpr int pieceLevel = 5;

// zlib counts in 32 bits: longer texts are given to it in pieces.
constexpr std::size_t longestPiece = std::size_t(1) << 30;

uInt pieceOf(std::size_t size) {
  return static_cast<uInt>(std::min(size, longestPiece));
}

// A stream that is damaged is told by its result, but this says nothing about the stream.
int checked(int result) {
  if (result == Z_MEM_ERROR) throw std::bad_alloc();
  return result;
}

Bytef* bytesOf(const void* bytes) {
  return static_cast<Bytef*>(const_cast<void*>(bytes));
}

}  // namespace

Packed packAtOnce(const void* bytes, std::size_t size, Content content) {
  const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
      libdeflate_alloc_compressor(content == Content::Text ? textLevel : columnLevel),
      libdeflate_free_compressor);
  if (!compressor) throw std::bad_alloc();
  const std::size_t room = libdeflate_zlib_compress_bound(compressor.get(), size);
  Packed packed{std::make_unique_for_overwrite<char[]>(room)};
  packed.size = libdeflate_zlib_compress(compressor.get(), bytes, size, packed.bytes.get(), room);
  return packed;
}

Deflater::Deflater() : result_(checked(deflateInit(&stream_, pieceLevel))) {}

Deflater::~Deflater() {
  deflateEnd(&stream_);
}

void Deflater::write(const void* bytes, std::size_t size, int flush) {
  stream_.next_in = bytesOf(bytes);
  stream_.avail_in = 0;
  do {
    const uInt piece = pieceOf(size);
    stream_.avail_in += piece;
    size -= piece;
    do {
      stream_.next_out = bytesOf(packed_.room(1));
      stream_.avail_out = pieceOf(packed_.left());
      const uInt before = stream_.avail_out;
      if (result_ == Z_OK) result_ = deflate(&stream_, size > 0 ? Z_NO_FLUSH : flush);
      packed_.commit(before - stream_.avail_out);
    } while (result_ == Z_OK && stream_.avail_out == 0);
    // No more room was needed: what looks like an error at an exact fit is none.
    if (result_ == Z_BUF_ERROR) result_ = Z_OK;
  } while (result_ == Z_OK && size > 0);
}

bool Deflater::finish() {
  write(nullptr, 0, Z_FINISH);
  return result_ == Z_STREAM_END;
}

Inflater::Inflater(const void* bytes, std::size_t size)
    : result_(checked(inflateInit(&stream_))), next_(bytesOf(bytes)), left_(size) {}

Inflater::~Inflater() {
  inflateEnd(&stream_);
}

std::size_t Inflater::read(void* out, std::size_t size) {
  std::size_t given = 0;
  while (result_ == Z_OK && given < size) {
    stream_.next_in = const_cast<Bytef*>(next_);
    stream_.avail_in = pieceOf(left_);
    stream_.next_out = bytesOf(out) + given;
    stream_.avail_out = pieceOf(size - given);
    const uInt outBefore = stream_.avail_out;
    result_ = checked(inflate(&stream_, Z_NO_FLUSH));
    left_ -= static_cast<std::size_t>(stream_.next_in - next_);
    next_ = stream_.next_in;
    given += outBefore - stream_.avail_out;
  }
  return given;
}

bool Inflater::endsHere() {
  char more;
  return read(&more, 1) == 0 && result_ == Z_STREAM_END && left_ == 0;
}

bool inflateAll(std::string& output, const std::string& input, std::size_t limit) {
  Inflater inflater(input.data(), input.size());
  TextBuffer text;
  std::size_t given = 0;
  while (given <= limit) {
    char* room = text.room(1);
    const std::size_t piece = inflater.read(room, text.left());
    if (piece == 0) break;
    given += piece;
    text.commit(piece);
  }
  const bool isWhole = given <= limit && inflater.endsHere();
  output = isWhole ? text.take() : std::string();
  return isWhole;
}
