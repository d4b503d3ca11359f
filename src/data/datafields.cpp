#include "datafields.h"

#include <charconv>
#include <cstddef>
#include <cstdint>

#include "utf.h"

namespace {

bool startsWith(const char* at, const char* end, std::string_view word) {
  return std::string_view(at, static_cast<std::size_t>(end - at)).starts_with(word);
}

struct Entity {
  std::string_view text;
  char character;
};
constexpr Entity entities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

struct Reference {
  std::size_t length = 0;  // 0 for an '&' that starts none
  char32_t character = 0;
};

// `at` stands on an '&'.
Reference referenceAt(const char* at, const char* end) {
  for (const Entity& entity : entities) {
    if (startsWith(at, end, entity.text)) {
      return {entity.text.size(), static_cast<char32_t>(entity.character)};
    }
  }
  if (!startsWith(at, end, "&#")) return {};
  const bool isHexadecimal = startsWith(at, end, "&#x");
  const char* digits = at + (isHexadecimal ? 3 : 2);
  std::uint32_t code = 0;
  const auto result = std::from_chars(digits, end, code, isHexadecimal ? 16 : 10);
  if (result.ec != std::errc() || result.ptr == end || *result.ptr != ';') return {};
  if (!utf::isXmlCharacter(code)) return {};
  return {static_cast<std::size_t>(result.ptr + 1 - at), code};
}

}  // namespace

std::string datafields::withSemicolons(std::string_view text) {
  std::string result(text);
  for (std::size_t at = 0; (at = result.find(greekSemicolon, at)) != result.npos; ++at) {
    result.replace(at, greekSemicolon.size(), ";");
  }
  return result;
}

std::string datafields::decoded(std::string_view text, Of kind) {
  std::string result;
  const char* end = text.data() + text.size();
  for (const char* at = text.data(); at != end;) {
    const Reference reference = *at == '&' ? referenceAt(at, end) : Reference();
    if (reference.length == 0 || (kind == Of::Name && reference.character == U';')) {
      result += *at++;
    } else {
      utf::appendUtf8(result, reference.character);
      at += reference.length;
    }
  }
  return result;
}

const char* datafields::fieldEnd(const char* at, const char* end) {
  while (at != end && *at != ';' && *at != '<') {
    const std::size_t length = *at == '&' ? referenceAt(at, end).length : 0;
    at += length == 0 ? 1 : length;
  }
  return at;
}
