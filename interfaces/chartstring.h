// ChartString: the 16-bit string of the model.
#ifndef CHARTXML_CHARTSTRING_H
#define CHARTXML_CHARTSTRING_H

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

#include "export.h"

// An ordered value type over UTF-16 code units, usable as a key of std::map and std::set. Lengths
// and counts are in code units, so a character outside the basic plane counts as two. A null
// pointer argument is the empty string everywhere. Numbers are read and written with '.' as the
// decimal point, whatever the process's locale.
class CHARTXML_API ChartString {
 public:
  ChartString() = default;
  ChartString(const XMLCh* text);  // NOLINT(google-explicit-constructor): constants pass as strings
  ChartString(const char* text);   // NOLINT(google-explicit-constructor): UTF-8
  explicit ChartString(std::u16string_view text) : text_(text) {}

  // Zero-terminated, never null; valid until the string changes.
  const XMLCh* xc_str() const { return text_.c_str(); }
  std::u16string_view view() const { return text_; }
  // An unpaired surrogate becomes U+FFFD.
  std::string toUTF8() const;

  std::size_t length() const { return text_.size(); }
  bool empty() const { return text_.empty(); }
  void clear() { text_.clear(); }

  // `char` texts are UTF-8, in which a malformed byte becomes U+FFFD; an `unsigned short` is one
  // code unit; an `unsigned long` is written as decimal text.
  ChartString& assign(const ChartString& text);
  ChartString& assign(const XMLCh* text);
  ChartString& assign(const char* text);
  ChartString& assign(unsigned short unit);
  ChartString& append(const ChartString& text);
  ChartString& append(const XMLCh* text);
  ChartString& append(const char* text);
  ChartString& append(unsigned short unit);
  ChartString& append(XMLCh unit);
  ChartString& append(unsigned long number);
  ChartString& assignInteger(long number);
  ChartString& appendInteger(long number);
  // At most `digits` significant digits, without trailing zeros; an exponent where that is shorter.
  ChartString& assignDouble(double number, unsigned digits);
  // Text in the process's multibyte encoding (textconversion.h).
  ChartString& assignTAVOMBGeneric(const std::string& bytes);

  ChartString& operator=(const XMLCh* text) { return assign(text); }

  // The number at the start of the text behind blanks; 0 for an empty text or none. Values out of
  // range give the nearest limit.
  unsigned long convertToInteger() const;
  long convertToSignedInteger() const;
  double convertToDouble() const;
  // True when the whole text, less surrounding blanks, is one decimal number.
  bool isNumber() const;

  bool equals(const ChartString& other) const { return text_ == other.text_; }
  bool equals(const XMLCh* other) const;
  // True for an empty `part`.
  bool ContainsString(const XMLCh* part) const;
  // Replaces every occurrence, from left to right; replacements are not searched again. An empty
  // `from` changes nothing.
  void replaceSubstring(const XMLCh* from, const XMLCh* to);
  // Removes blanks, tabs and line ends from the end and, if `bothEnds`, from the start.
  void trimSpaces(bool bothEnds);
  // Cuts `count` code units from the end; the text is empty when it had no more.
  void truncateString(unsigned count);

  friend bool operator==(const ChartString& a, const ChartString& b) { return a.text_ == b.text_; }
  // By code unit, not by the rules of any language.
  friend bool operator<(const ChartString& a, const ChartString& b) { return a.text_ < b.text_; }

 private:
  std::u16string text_;
};

#endif
