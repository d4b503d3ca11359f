// TimeConverter: numeric dates of date and time texts.
#ifndef CHARTXML_TIMECONVERTER_H
#define CHARTXML_TIMECONVERTER_H

#include <string>

#include "export.h"

// A numeric date counts seconds since midnight of 14 October 1582. Nothing here fails but by its
// result: a date that can't be told is VarDataProcessor::systemMissing, and a field that isn't all
// digits counts 0.
class CHARTXML_API TimeConverter {
 public:
  // "yyyy-mm-dd hh:mm:ss", or "yyyy-mm-dd" alone for midnight. System-missing as below.
  static double convertDateFromISOFormatToTAVODouble(const std::string& text);
  // Seconds since midnight of "hh:mm:ss" or "hh:mm". Behind the seconds may stand thousandths,
  // after a point or a comma: these are a number of thousandths whatever its digits, so that ".5"
  // is 0.005.
  static double convertTimeFromISOFormatToTAVODouble(const std::string& text);
  // Midnight of a day. Years are 1582 to 5867441, months 1 to 13 and days 0 to 31; any other, and a
  // day before the epoch, is system-missing. A day that its month lacks counts on into the next: 31
  // February is 3 March of a common year, day 0 the last of the month before, month 13 the next
  // January.
  static double ConvertYearMonthDayToSecs(unsigned year, unsigned month, unsigned day);
  // The value of a text of decimal digits, modulo 2^32; 0 for an empty text and any other.
  static unsigned convertStringToUnsignedInt(const std::string& text);
};

#endif
