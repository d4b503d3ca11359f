// Zlib streams: written at once, and written and read piece by piece.
#ifndef CHARTXML_ZLIBSTREAMS_H
#define CHARTXML_ZLIBSTREAMS_H

#include <zlib.h>

#include <cstddef>
#include <memory>
#include <string>

#include "textbuffer.h"

// What is compressed at once takes as much memory again, and as much more where it lies in pieces.
constexpr std::size_t mostAtOnce = std::size_t(64) << 20;

struct Packed {
  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;  // 0 when it failed
};
enum class Content { Text, Columns };
// Several times as fast as a Deflater. Throws std::bad_alloc for the lack of memory.
Packed packAtOnce(const void* bytes, std::size_t size, Content content);

// Compresses what it is given, without a copy of the whole. For more than mostAtOnce. Throws
// std::bad_alloc for the lack of memory.
class Deflater {
 public:
  Deflater();
  ~Deflater();
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  void write(const void* bytes, std::size_t size) { write(bytes, size, Z_NO_FLUSH); }
  // Ends the stream; false when zlib failed now or before. packed() is the stream then.
  bool finish();
  TextBuffer& packed() { return packed_; }

 private:
  void write(const void* bytes, std::size_t size, int flush);

  z_stream stream_{};
  int result_;
  TextBuffer packed_;
};

// Inflates a stream that must stay where it is. Throws std::bad_alloc for the lack of memory.
class Inflater {
 public:
  Inflater(const void* bytes, std::size_t size);
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  // The bytes that were put at `out`: fewer than `size` at the end and for a damaged stream.
  std::size_t read(void* out, std::size_t size);
  // True when everything was read and the stream is whole from the first byte to the last. Reads
  // on.
  bool endsHere();

 private:
  z_stream stream_{};
  int result_;
  const Bytef* next_;
  std::size_t left_;
};

// Inflates up to `limit` bytes; false, with an empty output, for more and for anything but one
// whole stream. Memory is taken as the text turns up, so that a small input can't ask for much.
// Input and output may be the same string.
bool inflateAll(std::string& output, const std::string& input, std::size_t limit);

#endif
