// The fields of a data document's names and rows as texts.
#ifndef CHARTXML_DATAFIELDS_H
#define CHARTXML_DATAFIELDS_H

#include <string>
#include <string_view>

namespace datafields {

enum class Of { Cell, Name };

// The text with the characters that references to them stand for. In a name a reference to ';'
// stays as it is: the writer would make two names of the character.
std::string decoded(std::string_view text, Of kind);

// Where the field at `at` ends: at a ';' that ends no reference, at markup, or at `end`.
const char* fieldEnd(const char* at, const char* end);

// U+037E, which stands for a ';' within a cell, and the text with the one for the other. It is the
// same character to Unicode.
constexpr std::string_view greekSemicolon = "\xCD\xBE";
std::string withSemicolons(std::string_view text);

}  // namespace datafields

#endif
