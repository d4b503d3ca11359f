// zlib1211tavo: compressed text.
#ifndef CHARTXML_ZLIB1211TAVO_H
#define CHARTXML_ZLIB1211TAVO_H

#include <cstddef>
#include <string>

#include "export.h"

// A compressed text is one whole zlib stream; its first byte is 0x78 ('x'). Input and output may be
// the same string.
class CHARTXML_API zlib1211tavo {
 public:
  // False, with an empty output, when compressing fails.
  static bool compressString(const std::string& input, std::string& output);

  // False, with an empty output, for what isn't one whole stream from the first byte to the last,
  // and for a text longer than the limit.
  static bool decompressString(std::string& output, const std::string& input);
  // The same where the length of the text is known; false when it has another length.
  static bool decompressString(std::string& output, const std::string& input, unsigned long size);

  // The longest text that is inflated, in bytes, so that a small stream from outside can't take all
  // memory: 1 GiB unless a program that expects more raises it. For the whole process.
  static std::size_t getInflateLimit();
  static void setInflateLimit(std::size_t bytes);
};

#endif
