// Texts of values of variables.
#ifndef CHARTXML_OBSTEXT_H
#define CHARTXML_OBSTEXT_H

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tavodatasource.h"

namespace obstext {

// Without the given characters at either end.
inline std::string trimmed(std::string_view text, std::string_view characters) {
  const std::size_t start = text.find_first_not_of(characters);
  if (start == text.npos) return {};
  return std::string(text.substr(start, text.find_last_not_of(characters) - start + 1));
}

inline bool isText(const TAVO_Format& format) {
  constexpr int textType = 1;
  return format.type == textType;
}

// A copy of a value, of a long text all of it.
inline std::vector<OBS> copied(const TAVO_Variable& variable, const OBS* value) {
  const TAVO_Format format = variable.GetFormatEx();
  if (!isText(format)) return {*value};
  const std::size_t size = format.width;
  std::vector<OBS> copy(size / sizeof(OBS) + 1);
  std::memset(copy.data(), ' ', copy.size() * sizeof(OBS));
  std::memcpy(copy.data(), value, size);
  return copy;
}

// A text without its trailing blanks.
inline std::string textOf(const OBS* value, std::size_t width) {
  const std::string_view text(reinterpret_cast<const char*>(value), width);
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

// As the variable's own format writes it, without blanks and tabs at either end.
inline std::string printed(const TAVO_Variable& variable, const OBS& value) {
  const TAVO_Format format = variable.GetFormatEx();
  std::string buffer(format.width + std::size_t{1}, '\0');
  variable.ToString(value, format, buffer.data());
  buffer.resize(format.width);
  return trimmed(buffer.c_str(), " \t");
}

}  // namespace obstext

#endif
