#include "chartstring.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "numbertext.h"
#include "textconversion.h"
#include "utf.h"

namespace {

std::u16string_view viewOf(const XMLCh* text) {
  return text ? std::u16string_view(text) : std::u16string_view();
}

std::u16string utf16Of(const char* text) {
  return text ? utf::toUtf16(text) : std::u16string();
}

// Whole numbers, clamped to the limits of T; a sign that T can't hold reads as 0.
template <class T>
T wholeNumber(std::u16string_view text) {
  const std::string digits = numbertext::asciiStart(text);
  T value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    return digits[0] == '-' ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
  }
  return value;
}

}  // namespace

ChartString::ChartString(const XMLCh* text) : text_(viewOf(text)) {}
ChartString::ChartString(const char* text) : text_(utf16Of(text)) {}

std::string ChartString::toUTF8() const {
  return utf::toUtf8(text_);
}

ChartString& ChartString::assign(const ChartString& text) {
  text_ = text.text_;
  return *this;
}

ChartString& ChartString::assign(const XMLCh* text) {
  text_ = viewOf(text);
  return *this;
}

ChartString& ChartString::assign(const char* text) {
  text_ = utf16Of(text);
  return *this;
}

ChartString& ChartString::assign(unsigned short unit) {
  text_.assign(1, static_cast<XMLCh>(unit));
  return *this;
}

ChartString& ChartString::append(const ChartString& text) {
  text_ += text.text_;
  return *this;
}

ChartString& ChartString::append(const XMLCh* text) {
  text_ += viewOf(text);
  return *this;
}

ChartString& ChartString::append(const char* text) {
  text_ += utf16Of(text);
  return *this;
}

ChartString& ChartString::append(unsigned short unit) {
  return append(static_cast<XMLCh>(unit));
}

ChartString& ChartString::append(XMLCh unit) {
  text_ += unit;
  return *this;
}

ChartString& ChartString::append(unsigned long number) {
  text_ += utf::toUtf16(std::to_string(number));
  return *this;
}

ChartString& ChartString::assignInteger(long number) {
  text_.clear();
  return appendInteger(number);
}

ChartString& ChartString::appendInteger(long number) {
  text_ += utf::toUtf16(std::to_string(number));
  return *this;
}

ChartString& ChartString::assignDouble(double number, unsigned digits) {
  text_ = utf::toUtf16(numbertext::significant(number, digits));
  return *this;
}

ChartString& ChartString::assignTAVOMBGeneric(const std::string& bytes) {
  XMLCh* text = TAVOMBTranscodeGeneric(bytes.c_str());
  text_ = viewOf(text);
  TAVOMBRelease(&text);
  return *this;
}

unsigned long ChartString::convertToInteger() const {
  return wholeNumber<unsigned long>(text_);
}
long ChartString::convertToSignedInteger() const {
  return wholeNumber<long>(text_);
}
double ChartString::convertToDouble() const {
  return numbertext::read(text_).value_or(0);
}
bool ChartString::isNumber() const {
  return numbertext::isNumber(text_);
}

bool ChartString::equals(const XMLCh* other) const {
  return text_ == viewOf(other);
}

bool ChartString::ContainsString(const XMLCh* part) const {
  return text_.find(viewOf(part)) != std::u16string::npos;
}

void ChartString::replaceSubstring(const XMLCh* from, const XMLCh* to) {
  const std::u16string_view old = viewOf(from);
  if (old.empty()) return;
  std::u16string out;
  std::size_t start = 0;
  for (std::size_t hit; (hit = text_.find(old, start)) != std::u16string::npos;
       start = hit + old.size()) {
    out.append(text_, start, hit - start).append(viewOf(to));
  }
  if (start > 0) text_ = out.append(text_, start);
}

void ChartString::trimSpaces(bool bothEnds) {
  constexpr std::u16string_view blanks = u" \t\r\n";
  text_.erase(text_.find_last_not_of(blanks) + 1);
  if (bothEnds) text_.erase(0, std::min(text_.find_first_not_of(blanks), text_.size()));
}

void ChartString::truncateString(unsigned count) {
  text_.resize(text_.size() - std::min<std::size_t>(count, text_.size()));
}
