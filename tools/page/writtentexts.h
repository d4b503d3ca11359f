// Texts out of documents as they stand in what the tool writes.
#ifndef CHARTXML_TOOLS_WRITTENTEXTS_H
#define CHARTXML_TOOLS_WRITTENTEXTS_H

#include <string>
#include <string_view>

// A text out of a document for a line of output: control characters, and the characters in
// `special`, stand as escapes behind a backslash.
std::string escaped(std::string_view text, std::string_view special = {});

// The text as it stands in reports: in double quotes, and with escapes. A word is quoted only where
// a reader of words would go wrong otherwise.
std::string quoted(std::string_view text);
std::string word(std::string_view text);

#endif
