// The natural order of texts: numbers by their value, letters by the order of a language.
#ifndef CHARTXML_TOOLS_NATURALORDER_H
#define CHARTXML_TOOLS_NATURALORDER_H

#include <compare>
#include <string>

// Keys compare as their texts do. Made once for each text, as they cost more than comparing.
struct NaturalKey {
  int group = 0;      // what stands before digits, then numbers, then all others
  double number = 0;  // that the text starts with
  std::string rest;   // the letters as bytes to compare

  std::partial_ordering operator<=>(const NaturalKey&) const = default;
};

// Of UTF-8. A number at the start counts with its sign and its decimal point, others within as
// whole ones. The language is that of LC_ALL, LC_COLLATE or LANG, the first that is stated; one
// that isn't known, C and POSIX have the order that most languages share.
NaturalKey naturalKey(const std::string& text);

#endif
