// UTF-8 and UTF-16, the two forms that texts have inside the library.
#ifndef CHARTXML_UTF_H
#define CHARTXML_UTF_H

#include <cstdint>
#include <string>
#include <string_view>

namespace utf {

// Malformed input becomes U+FFFD: a text from outside never stops the caller.
void appendUtf8(std::string& out, std::u16string_view text);
void appendUtf8(std::string& out, char32_t character);
std::string toUtf8(std::u16string_view text);
std::u16string toUtf16(std::string_view text);

// True for what a document of XML 1.0 may hold.
bool isXmlCharacter(std::uint32_t code);

// Bytes of the first character; a malformed byte counts alone. 0 for an empty text.
std::size_t firstLength(std::string_view text);

}  // namespace utf

#endif
