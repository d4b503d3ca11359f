#include "writtentexts.h"

std::string escaped(std::string_view text, std::string_view special) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string result;
  for (const char c : text) {
    if (c == '\n') {
      result += "\\n";
    } else if (c == '\t') {
      result += "\\t";
    } else if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') {
      result += {'\\', 'x', digits[c >> 4], digits[c & 15]};
    } else {
      if (special.find(c) != special.npos) result += '\\';
      result += c;
    }
  }
  return result;
}

std::string quoted(std::string_view text) {
  return '"' + escaped(text, "\"\\") + '"';
}

std::string word(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) <= ' ' || c == '"' || c == '\\' || c == '=' || c == '\x7f') {
      return quoted(text);
    }
  }
  return std::string(text);
}
