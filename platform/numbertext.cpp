#include "numbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

constexpr std::u16string_view blanks = u" \t\r\n";

std::string spelled(double value, const char* text, const char* end) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
  return {text, end};
}

// Where the number at the start of `text` ends; 0 when there is none.
std::size_t parse(const std::string& text, double& value) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::invalid_argument) return 0;
  if (result.ec == std::errc::result_out_of_range) {
    // The exponent's sign tells the two ends apart; without one the digits overflow.
    const std::string_view number(text.data(), result.ptr - text.data());
    const bool tiny = number.find("e-") != number.npos || number.find("E-") != number.npos ||
                      (number.find_first_of("eE") == number.npos && number.find("0.") <= 1);
    value = std::copysign(tiny ? 0.0 : HUGE_VAL, number[0] == '-' ? -1.0 : 1.0);
  }
  return result.ptr - text.data();
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
  double value = 0;
  if (parse(asciiStart(text), value) == 0) return std::nullopt;
  return value;
}

bool numbertext::isNumber(std::u16string_view text) {
  const std::size_t end = text.find_last_not_of(blanks) + 1;
  const std::size_t start = std::min(text.find_first_not_of(blanks), end);
  const std::string ascii = asciiStart(text.substr(start, end - start));
  const std::size_t plus = start < end && text[start] == u'+' ? 1 : 0;
  double value = 0;
  return !ascii.empty() && ascii.size() + plus == end - start &&
         parse(ascii, value) == ascii.size() && std::isfinite(value);
}

std::string numbertext::shortest(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return spelled(value, buffer, result.ptr);
}

std::string numbertext::significant(double value, unsigned digits) {
  // A double has at most 767 significant digits.
  char buffer[800];
  const int precision = static_cast<int>(std::clamp(digits, 1u, 767u));
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, precision);
  return spelled(value, buffer, result.ptr);
}
