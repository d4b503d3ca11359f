#include "naturalorder.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "commandline.h"

namespace {

std::string languageInUse() {
  for (const char* name : {"LC_ALL", "LC_COLLATE", "LANG"}) {
    const char* value = std::getenv(name);
    if (!value || !*value) continue;
    const std::string_view stated(value);
    return std::string(stated.substr(0, stated.find_first_of(".@")));
  }
  return "";
}

std::unique_ptr<icu::Collator> makeCollator() {
  UErrorCode status = U_ZERO_ERROR;
  // The root's order is what ICU has for a language that it doesn't know, C among them.
  const icu::Locale language(languageInUse().c_str());
  std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(
      language.isBogus() ? icu::Locale::getRoot() : language, status));
  if (collator) collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
  if (U_FAILURE(status)) throw Failure("the order of letters can't be loaded");
  return collator;
}

// ICU counts in 32 bits. Of what is longer, the beginnings are compared.
constexpr std::size_t mostBytes = 1 << 16;

std::string lettersOf(std::string_view text) {
  static const std::unique_ptr<icu::Collator> collator = makeCollator();
  const auto letters = icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<int32_t>(std::min(text.size(), mostBytes))));
  const int32_t size = collator->getSortKey(letters, nullptr, 0);
  std::string key(static_cast<std::size_t>(size), '\0');
  collator->getSortKey(letters, reinterpret_cast<uint8_t*>(key.data()), size);
  return key;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Takes the number off the start of a text.
bool takeNumber(std::string_view& text, double& number) {
  std::string_view digits = text;
  bool isNegative = false;
  for (const std::string_view sign : {"-", "\u2212", "+"}) {
    if (!digits.starts_with(sign)) continue;
    isNegative = sign != "+";
    digits.remove_prefix(sign.size());
    break;
  }
  // Words such as "inf" are none.
  const std::size_t first = digits.starts_with('.') ? 1 : 0;
  if (first >= digits.size() || !isDigit(digits[first])) return false;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc()) return false;
  if (isNegative) number = -number;
  text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
  return true;
}

}  // namespace

NaturalKey naturalKey(const std::string& text) {
  static const std::string zero = lettersOf("0");
  NaturalKey key;
  std::string_view rest = text;
  const bool isNumber = takeNumber(rest, key.number);
  key.rest = lettersOf(rest);
  key.group = isNumber ? 1 : key.rest < zero ? 0 : 2;
  return key;
}
