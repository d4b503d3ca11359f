// Formats of numbers, dates and times: CTFormatType, PlXFormat, PlXRelabel, PlXUnitRule.
#ifndef CHARTXML_PLXFORMAT_H
#define CHARTXML_PLXFORMAT_H

#include <vector>

#include "plxbaseelement.h"

class PlXRelabel;
class PlXUnitRule;

// What all formats share.
class CHARTXML_API CTFormatType : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  // Texts before and behind each value.
  const XMLCh* getPrefix() const { return text(u"prefix"); }
  void setPrefix(const XMLCh* text) { setText(u"prefix", text); }
  void removePrefix() { clear(u"prefix"); }
  const XMLCh* getSuffix() const { return text(u"suffix"); }
  void setSuffix(const XMLCh* text) { setText(u"suffix", text); }
  void removeSuffix() { clear(u"suffix"); }
  // Four characters: the decimal point, the one between groups of digits, the one between the parts
  // of a date and the one between those of a time, such as ".,/:".
  const XMLCh* getSeparatorChars() const { return text(u"separatorChars"); }
  void setSeparatorChars(const XMLCh* text) { setText(u"separatorChars", text); }
  // True for parts of a date or time without separators between them.
  bool getHiddenSeparator() const { return flag(u"hiddenSeparator"); }
  void setHiddenSeparator(bool on) { setFlag(u"hiddenSeparator", on); }
};

// How a variable's values, or those at an axis or in a label, are written.
class CHARTXML_API PlXFormat : public CTFormatType {
 public:
  using CTFormatType::CTFormatType;
  static const XMLCh _UTF_format[];

  // What a value is. A format that states none is one of numbers or texts.
  enum ENUM_baseFormat : int {
    baseFormat_date = 1,
    baseFormat_time = 2,
    baseFormat_dateTime = 3,
    baseFormat_duration = 4
  };
  // Powers of ten: always, never, for values below the one that setSmall() gives, or where the
  // digits don't suffice.
  enum ENUM_scientific : int {
    scientific_true = 1,
    scientific_false = 2,
    scientific_ifSmall = 3,
    scientific_ifNeeded = 4
  };
  enum ENUM_dayType : int { dayType_dayOfMonth = 1, dayType_dayOfYear = 2 };
  // "Jan", "January", "1" or "01".
  enum ENUM_monthFormat : int {
    monthFormat_short = 1,
    monthFormat_long = 2,
    monthFormat_number = 3,
    monthFormat_twoDigits = 4
  };
  // 1 to 12 with AM or PM; 0 to 23; 1 to 12.
  enum ENUM_hourFormat : int {
    hourFormat_amPm = 1,
    hourFormat_twentyFour = 2,
    hourFormat_twelve = 3
  };
  // The order of day, month and year.
  enum ENUM_mdyOrder : int {
    mdyOrder_dmy = 1,
    mdyOrder_dym = 2,
    mdyOrder_mdy = 3,
    mdyOrder_myd = 4,
    mdyOrder_ydm = 5,
    mdyOrder_ymd = 6
  };

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  // Labels for single raw values.
  PlXRelabel* addRelabel() { return add<PlXRelabel>(); }
  std::vector<PlXRelabel*> getRelabels() const { return children<PlXRelabel>(); }
  PlXUnitRule* addUnitRule() { return add<PlXUnitRule>(); }
  std::vector<PlXUnitRule*> getUnitRules() const { return children<PlXUnitRule>(); }
  void removeUnitRules() { removeAll<PlXUnitRule>(); }

  ENUM_baseFormat getBaseFormat() const { return word<ENUM_baseFormat>(u"baseFormat"); }
  void setBaseFormat(ENUM_baseFormat value) { setWord(u"baseFormat", value); }
  bool isBaseFormatPresent() const { return present(u"baseFormat"); }
  // Stands for a value that the format has no room for.
  const XMLCh* getErrorCharacter() const { return text(u"errorCharacter"); }
  void setErrorCharacter(const XMLCh* text) { setText(u"errorCharacter", text); }

  // Numbers. Digits before the point and behind it; behind the point also those of seconds.
  unsigned long getMinimumIntegerDigits() const {
    return static_cast<unsigned long>(integer(u"minimumIntegerDigits"));
  }
  void setMinimumIntegerDigits(unsigned long digits) {
    setInteger(u"minimumIntegerDigits", static_cast<long>(digits));
  }
  unsigned long getMaximumIntegerDigits() const {
    return static_cast<unsigned long>(integer(u"maximumIntegerDigits"));
  }
  void setMaximumIntegerDigits(unsigned long digits) {
    setInteger(u"maximumIntegerDigits", static_cast<long>(digits));
  }
  unsigned getMinimumFractionDigits() const {
    return static_cast<unsigned>(integer(u"minimumFractionDigits"));
  }
  void setMinimumFractionDigits(unsigned digits) { setInteger(u"minimumFractionDigits", digits); }
  unsigned getMaximumFractionDigits() const {
    return static_cast<unsigned>(integer(u"maximumFractionDigits"));
  }
  void setMaximumFractionDigits(unsigned digits) { setInteger(u"maximumFractionDigits", digits); }
  bool getUseGrouping() const { return flag(u"useGrouping"); }
  void setUseGrouping(bool on) { setFlag(u"useGrouping", on); }
  ENUM_scientific getScientific() const { return word<ENUM_scientific>(u"scientific"); }
  void setScientific(ENUM_scientific value) { setWord(u"scientific", value); }
  double getSmall() const { return number(u"small"); }
  void setSmall(double number) { setNumber(u"small", number); }
  // Values are divided by it: 0.01 writes fractions as percents. 0 when not stated, for none.
  double getScalingFactor() const { return number(u"scalingFactor"); }
  void setScalingFactor(double number) { setNumber(u"scalingFactor", number); }
  // How negative values show: without their sign, with it outside of the prefix, in parentheses.
  bool getHideNegatives() const { return flag(u"hideNegatives"); }
  void setHideNegatives(bool on) { setFlag(u"hideNegatives", on); }
  bool getNegativesOutside() const { return flag(u"negativesOutside"); }
  void setNegativesOutside(bool on) { setFlag(u"negativesOutside", on); }
  bool getNegativesInParentheses() const { return flag(u"negativesInParentheses"); }
  void setNegativesInParentheses(bool on) { setFlag(u"negativesInParentheses", on); }

  // Dates. Padding fills a number with zeros to its full width.
  ENUM_mdyOrder getMdyOrder() const { return word<ENUM_mdyOrder>(u"mdyOrder"); }
  void setMdyOrder(ENUM_mdyOrder value) { setWord(u"mdyOrder", value); }
  bool getShowDay() const { return flag(u"showDay"); }
  void setShowDay(bool on) { setFlag(u"showDay", on); }
  ENUM_dayType getDayType() const { return word<ENUM_dayType>(u"dayType"); }
  void setDayType(ENUM_dayType value) { setWord(u"dayType", value); }
  bool getDayPadding() const { return flag(u"dayPadding"); }
  void setDayPadding(bool on) { setFlag(u"dayPadding", on); }
  bool getDayOfMonthPadding() const { return flag(u"dayOfMonthPadding"); }
  void setDayOfMonthPadding(bool on) { setFlag(u"dayOfMonthPadding", on); }
  bool getShowDayOfWeek() const { return flag(u"showDayOfWeek"); }
  void setShowDayOfWeek(bool on) { setFlag(u"showDayOfWeek", on); }
  bool getDayOfWeekAbbreviation() const { return flag(u"dayOfWeekAbbreviation"); }
  void setDayOfWeekAbbreviation(bool on) { setFlag(u"dayOfWeekAbbreviation", on); }
  bool getShowWeek() const { return flag(u"showWeek"); }
  void setShowWeek(bool on) { setFlag(u"showWeek", on); }
  bool getWeekPadding() const { return flag(u"weekPadding"); }
  void setWeekPadding(bool on) { setFlag(u"weekPadding", on); }
  const XMLCh* getWeekSuffix() const { return text(u"weekSuffix"); }
  void setWeekSuffix(const XMLCh* text) { setText(u"weekSuffix", text); }
  bool getShowMonth() const { return flag(u"showMonth"); }
  void setShowMonth(bool on) { setFlag(u"showMonth", on); }
  ENUM_monthFormat getMonthFormat() const { return word<ENUM_monthFormat>(u"monthFormat"); }
  void setMonthFormat(ENUM_monthFormat value) { setWord(u"monthFormat", value); }
  bool getShowQuarter() const { return flag(u"showQuarter"); }
  void setShowQuarter(bool on) { setFlag(u"showQuarter", on); }
  const XMLCh* getQuarterPrefix() const { return text(u"quarterPrefix"); }
  void setQuarterPrefix(const XMLCh* text) { setText(u"quarterPrefix", text); }
  const XMLCh* getQuarterSuffix() const { return text(u"quarterSuffix"); }
  void setQuarterSuffix(const XMLCh* text) { setText(u"quarterSuffix", text); }
  bool getShowYear() const { return flag(u"showYear"); }
  void setShowYear(bool on) { setFlag(u"showYear", on); }
  // True for a year without its century.
  bool getYearAbbreviation() const { return flag(u"yearAbbreviation"); }
  void setYearAbbreviation(bool on) { setFlag(u"yearAbbreviation", on); }
  bool getShowEra() const { return flag(u"showEra"); }
  void setShowEra(bool on) { setFlag(u"showEra", on); }

  // Times.
  bool getShowHour() const { return flag(u"showHour"); }
  void setShowHour(bool on) { setFlag(u"showHour", on); }
  ENUM_hourFormat getHourFormat() const { return word<ENUM_hourFormat>(u"hourFormat"); }
  void setHourFormat(ENUM_hourFormat value) { setWord(u"hourFormat", value); }
  bool getHourPadding() const { return flag(u"hourPadding"); }
  void setHourPadding(bool on) { setFlag(u"hourPadding", on); }
  bool getShowMinute() const { return flag(u"showMinute"); }
  void setShowMinute(bool on) { setFlag(u"showMinute", on); }
  bool getMinutePadding() const { return flag(u"minutePadding"); }
  void setMinutePadding(bool on) { setFlag(u"minutePadding", on); }
  bool getShowSecond() const { return flag(u"showSecond"); }
  void setShowSecond(bool on) { setFlag(u"showSecond", on); }
  bool getSecondPadding() const { return flag(u"secondPadding"); }
  void setSecondPadding(bool on) { setFlag(u"secondPadding", on); }
  bool getShowMillis() const { return flag(u"showMillis"); }
  void setShowMillis(bool on) { setFlag(u"showMillis", on); }
};

// A raw value and the label that is shown for it.
class CHARTXML_API PlXRelabel : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_relabel[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getFrom() const { return text(u"from"); }
  void setFrom(const XMLCh* text) { setText(u"from", text); }
  const XMLCh* getTo() const { return text(u"to"); }
  void setTo(const XMLCh* text) { setText(u"to", text); }
};

// A unit for large or small numbers: values from a bound on, whatever their sign, are divided by
// the factor and get the suffix ("K" from 1000 on). Of several rules that with the highest bound
// counts.
class CHARTXML_API PlXUnitRule : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_unitRule[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  double getFrom() const { return number(u"from"); }
  void setFrom(double number) { setNumber(u"from", number); }
  double getScalingFactor() const { return number(u"scalingFactor"); }
  void setScalingFactor(double number) { setNumber(u"scalingFactor", number); }
  const XMLCh* getSuffix() const { return text(u"suffix"); }
  void setSuffix(const XMLCh* text) { setText(u"suffix", text); }
};

#endif
