#include "utf.h"

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isHigh(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLow(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Reads one character at `i` and moves behind it; a malformed byte is stepped over alone.
char32_t take(std::string_view text, std::size_t& i) {
  const auto lead = static_cast<std::uint8_t>(text[i++]);
  if (lead < 0x80) return lead;
  const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead > 0xF4 || text.size() - i < static_cast<std::size_t>(more)) {
    return replacement;
  }
  char32_t c = lead & (0x3F >> more);
  for (int k = 0; k < more; ++k) {
    const auto byte = static_cast<std::uint8_t>(text[i + k]);
    if ((byte & 0xC0) != 0x80) return replacement;
    c = (c << 6) | (byte & 0x3F);
  }
  constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
  if (c < smallest[more] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return replacement;
  i += more;
  return c;
}

}  // namespace

void utf::appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

void utf::appendUtf8(std::string& out, std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (isHigh(text[i]) && i + 1 < text.size() && isLow(text[i + 1])) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (isHigh(text[i]) || isLow(text[i])) {
      c = replacement;
    }
    appendUtf8(out, c);
  }
}

std::string utf::toUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  appendUtf8(out, text);
  return out;
}

std::u16string utf::toUtf16(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const char32_t c = take(text, i);
    if (c < 0x10000) {
      out += static_cast<char16_t>(c);
    } else {
      out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    }
  }
  return out;
}

bool utf::isXmlCharacter(std::uint32_t c) {
  return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

std::size_t utf::firstLength(std::string_view text) {
  std::size_t length = 0;
  if (!text.empty()) take(text, length);
  return length;
}
