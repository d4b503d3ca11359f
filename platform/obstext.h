// Texts of values of variables.
#ifndef CHARTXML_OBSTEXT_H
#define CHARTXML_OBSTEXT_H

#include <string>
#include <string_view>

#include "tavodatasource.h"

namespace obstext {

// Without the given characters at either end.
inline std::string trimmed(std::string_view text, std::string_view characters) {
  const std::size_t start = text.find_first_not_of(characters);
  if (start == text.npos) return {};
  return std::string(text.substr(start, text.find_last_not_of(characters) - start + 1));
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
