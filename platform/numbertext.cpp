#include "numbertext.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace {

using numbertext::Number;

constexpr std::u16string_view blanks = u" \t\r\n";

std::string_view spelled(double value, std::string_view digits) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
  return digits;
}

// Whether a number out of range is too large rather than too small: by where its first digit that
// isn't 0 stands to the point, and by its exponent, both counted in digits.
bool overflows(std::string_view number, bool isHexadecimal) {
  const char* exponentMarks = isHexadecimal ? "pP" : "eE";
  const std::size_t mark = std::min(number.find_first_of(exponentMarks), number.size());
  const std::string_view digits = number.substr(0, mark);
  const std::size_t first = std::min(digits.find_first_not_of("-0."), digits.size());
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);

  std::string_view exponentText = number.substr(std::min(mark + 1, number.size()));
  if (exponentText.starts_with('+')) exponentText.remove_prefix(1);
  std::int64_t exponent = 0;
  const auto result =
      std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  if (result.ec == std::errc::result_out_of_range) return !exponentText.starts_with('-');
  const std::int64_t digitsOfPlace = isHexadecimal ? 4 * place : place;
  return exponent > -digitsOfPlace;
}

// The number at the start of `text`, which has no '+' in front.
Number parse(std::string_view text, std::chars_format format) {
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value, format);
  if (result.ec == std::errc::invalid_argument) return {0, 0};
  const auto length = static_cast<std::size_t>(result.ptr - text.data());
  if (result.ec == std::errc::result_out_of_range) {
    const bool isLarge = overflows(text.substr(0, length), format == std::chars_format::hex);
    value = std::copysign(isLarge ? HUGE_VAL : 0.0, text[0] == '-' ? -1.0 : 1.0);
  }
  return {value, length};
}

// Whether "0x" and a digit stand at the start; without one, the number is the 0.
bool isHexadecimal(std::string_view text) {
  if (text.size() < 3 || text[0] != '0' || (text[1] | 0x20) != 'x') return false;
  const std::size_t digit = text[2] == '.' ? 3 : 2;
  return digit < text.size() && std::isxdigit(static_cast<unsigned char>(text[digit]));
}

}  // namespace

std::string numbertext::asciiStart(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  if (text.size() > 1 && text[0] == u'+' && text[1] != u'-') text.remove_prefix(1);
  std::string ascii;
  for (char16_t unit : text) {
    if (unit >= 0x80) break;
    ascii += static_cast<char>(unit);
  }
  return ascii;
}

std::optional<double> numbertext::read(std::u16string_view text) {
  const Number number = parse(asciiStart(text), std::chars_format::general);
  if (number.length == 0) return std::nullopt;
  return number.value;
}

bool numbertext::isNumber(std::u16string_view text) {
  const std::size_t end = text.find_last_not_of(blanks) + 1;
  const std::size_t start = std::min(text.find_first_not_of(blanks), end);
  const std::string ascii = asciiStart(text.substr(start, end - start));
  const std::size_t plus = start < end && text[start] == u'+' ? 1 : 0;
  const Number number = parse(ascii, std::chars_format::general);
  return !ascii.empty() && ascii.size() + plus == end - start && number.length == ascii.size() &&
         std::isfinite(number.value);
}

numbertext::Number numbertext::scan(std::string_view text) {
  const std::size_t start = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
  std::string_view rest = text.substr(start);
  const bool isNegative = rest.starts_with('-');
  if (isNegative || rest.starts_with('+')) rest.remove_prefix(1);
  if (rest.starts_with('-')) return {0, 0};

  const bool isHex = isHexadecimal(rest);
  if (isHex) rest.remove_prefix(2);
  const auto format = isHex ? std::chars_format::hex : std::chars_format::general;
  Number number = parse(rest, format);
  // libstdc++ takes both signs in a hexadecimal exponent.
  const std::size_t signs = rest.substr(0, number.length).find("+-");
  if (signs != rest.npos) number = parse(rest.substr(0, signs), format);
  if (number.length == 0) return {0, 0};
  if (isNegative) number.value = -number.value;
  number.length += static_cast<std::size_t>(rest.data() - text.data());
  return number;
}

std::string numbertext::shortest(double value) {
  std::string text;
  appendShortest(value, text);
  return text;
}

void numbertext::appendShortest(double value, std::string& out) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out += spelled(value, {buffer, result.ptr});
}

std::string numbertext::significant(double value, unsigned digits) {
  // A double has at most 767 significant digits.
  char buffer[800];
  const int precision = static_cast<int>(std::clamp(digits, 1u, 767u));
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, precision);
  return std::string(spelled(value, {buffer, result.ptr}));
}
