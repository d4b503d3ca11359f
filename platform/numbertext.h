// Numbers as text, with '.' as the decimal point whatever the process's locale.
#ifndef CHARTXML_NUMBERTEXT_H
#define CHARTXML_NUMBERTEXT_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace numbertext {

// The longest number at the start of `text` behind white space, or nothing. "INF", "-INF" and
// "NaN" of XML Schema are numbers, and so is "+1"; a value out of range gives infinity or zero.
std::optional<double> read(std::u16string_view text);

// True when `text`, less surrounding white space, is one finite decimal number.
bool isNumber(std::u16string_view text);

// The shortest text that reads back to the same value, in XML Schema's spelling.
std::string shortest(double value);
void appendShortest(double value, std::string& out);

// At most `digits` significant digits.
std::string significant(double value, unsigned digits);

// A number at the start of a text, and the characters up to its end; 0 and 0 when there is none.
struct Number {
  double value;
  std::size_t length;
};

// The longest number at the start of `text` as strtod reads it in the "C" locale: behind white
// space and a sign, decimal or hexadecimal, "inf", "infinity" or "nan" in any case. A value out of
// range is infinite or 0. Changes no locale and looks at none.
Number scan(std::string_view text);

// The ASCII characters at the start of `text` behind white space and a '+': what std::from_chars
// is given.
std::string asciiStart(std::u16string_view text);

}  // namespace numbertext

#endif
