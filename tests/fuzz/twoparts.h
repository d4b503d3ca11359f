// Fuzzed inputs of two parts: the first byte tells where the one ends and the other starts, in
// 256ths of the rest.
#ifndef CHARTXML_TWOPARTS_H
#define CHARTXML_TWOPARTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

// Both are empty for an empty input.
inline std::pair<std::string, std::string> twoParts(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return {};
  const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::size_t split = rest.size() * data[0] / 255;
  return {rest.substr(0, split), rest.substr(split)};
}

#endif
