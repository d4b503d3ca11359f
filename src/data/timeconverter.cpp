#include "timeconverter.h"

#include <cstdint>

#include "vardataprocessor.h"

namespace {

constexpr double secondsPerDay = 86400;

// Splits at the first separator: what stands before it, with `rest` what stands behind, empty if
// there is none.
std::string cutAt(const std::string& text, char separator, std::string& rest) {
  const std::size_t at = text.find(separator);
  rest = at == text.npos ? std::string() : text.substr(at + 1);
  return text.substr(0, at);
}

}  // namespace

double TimeConverter::convertDateFromISOFormatToTAVODouble(const std::string& text) {
  const std::size_t first = text.find('-');
  if (first == text.npos || text.find('-', first + 1) == text.npos) {
    return VarDataProcessor::systemMissing;
  }
  std::string rest;
  const unsigned year = convertStringToUnsignedInt(cutAt(text, '-', rest));
  std::string days;
  const unsigned month = convertStringToUnsignedInt(cutAt(rest, '-', days));
  std::string time;
  const unsigned day = convertStringToUnsignedInt(cutAt(days, ' ', time));
  return ConvertYearMonthDayToSecs(year, month, day) + convertTimeFromISOFormatToTAVODouble(time);
}

double TimeConverter::convertTimeFromISOFormatToTAVODouble(const std::string& text) {
  if (text.find(':') == text.npos) return 0;
  std::string rest;
  const unsigned hours = convertStringToUnsignedInt(cutAt(text, ':', rest));
  std::string last;
  const unsigned minutes = convertStringToUnsignedInt(cutAt(rest, ':', last));

  const std::size_t point = last.find('.');
  const std::size_t mark = point == last.npos ? last.find(',') : point;
  const unsigned seconds = convertStringToUnsignedInt(last.substr(0, mark));
  const double whole = static_cast<double>(hours * 3600) + minutes * 60 + seconds;
  if (mark == last.npos) return whole;
  return whole + convertStringToUnsignedInt(last.substr(mark + 1)) / 1000.0;
}

double TimeConverter::ConvertYearMonthDayToSecs(unsigned year, unsigned month, unsigned day) {
  if (year < 1582 || year > 5867441 || month < 1 || month > 13 || day > 31) {
    return VarDataProcessor::systemMissing;
  }
  const std::int64_t y = year;
  // Leap days count up to the year before; the months' term takes February for one of 30 days.
  std::int64_t days = day + 365 * y - 578192 + (y + 3) / 4 + (y + 399) / 400 - (y + 99) / 100 +
                      (3055 * std::int64_t(month) + 6110) / 100;
  const bool isLeapYear = y % 4 == 0 && (y % 100 != 0 || y % 400 == 0);
  if (month > 2) days -= isLeapYear ? 1 : 2;
  return days < 0 ? VarDataProcessor::systemMissing : static_cast<double>(days) * secondsPerDay;
}

unsigned TimeConverter::convertStringToUnsignedInt(const std::string& text) {
  unsigned value = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return 0;
    value = 10 * value + static_cast<unsigned>(c - '0');
  }
  return value;
}
