// ChartBase's translation of a variable's display format into the chart's own format.
#include <algorithm>
#include <iterator>

#include "chartbase.h"
#include "plxformat.h"
#include "tavoformat.h"

namespace {

constexpr const XMLCh* pointSeparators = u".,/:";
constexpr const XMLCh* commaSeparators = u",./:";

bool isGroupingSet() {
  return CmnSys->flags & 1;
}

void setFractionDigits(PlXFormat& format, unsigned digits) {
  format.setMinimumFractionDigits(digits);
  format.setMaximumFractionDigits(digits);
}

template <class Row, std::size_t count>
const Row* rowOf(const Row (&rows)[count], unsigned type) {
  const Row* row =
      std::find_if(rows, rows + count, [&](const Row& each) { return each.type == type; });
  return row == rows + count ? nullptr : row;
}

// ---- numbers
enum class Grouping { Off, On, AsSet };
// Digits in front of the point: as set, or all that the width leaves beside the decimals, with the
// point and without.
enum class Digits { AsSet, WidthLessPoint, Width };
// The bound of scientificIfSmall.
enum class Small { None, Zero, General };

struct NumberRow {
  unsigned type;
  PlXFormat::ENUM_scientific scientific;
  Grouping grouping;
  const XMLCh* separators = nullptr;
  const XMLCh* prefix = nullptr;
  const XMLCh* suffix = nullptr;
  Small small = Small::None;
  Digits digits = Digits::AsSet;
};

constexpr auto ifNeeded = PlXFormat::scientific_ifNeeded;
constexpr auto ifSmall = PlXFormat::scientific_ifSmall;

constexpr NumberRow numberRows[] = {
    {.type = 3, .scientific = ifNeeded, .grouping = Grouping::On, .separators = pointSeparators},
    {.type = 4,
     .scientific = ifNeeded,
     .grouping = Grouping::On,
     .separators = pointSeparators,
     .prefix = u"$"},
    {.type = 5, .scientific = ifSmall, .grouping = Grouping::AsSet, .small = Small::Zero},
    {.type = 8, .scientific = ifNeeded, .grouping = Grouping::Off},
    {.type = 9, .scientific = ifNeeded, .grouping = Grouping::Off},
    {.type = 12, .scientific = ifNeeded, .grouping = Grouping::Off},
    {.type = 15,
     .scientific = ifNeeded,
     .grouping = Grouping::AsSet,
     .digits = Digits::WidthLessPoint},
    {.type = 16, .scientific = ifNeeded, .grouping = Grouping::AsSet, .digits = Digits::Width},
    {.type = 17, .scientific = PlXFormat::scientific_true, .grouping = Grouping::AsSet},
    {.type = 31,
     .scientific = ifNeeded,
     .grouping = Grouping::AsSet,
     .suffix = ChartBase::_percent},
    {.type = 32, .scientific = ifNeeded, .grouping = Grouping::On, .separators = commaSeparators},
    {.type = 40, .scientific = ifSmall, .grouping = Grouping::AsSet, .small = Small::General},
};

// None for a width that is too small.
unsigned long integerDigits(Digits rule, const TAVO_Format& source) {
  if (rule == Digits::AsSet) {
    return static_cast<unsigned long>(std::max(CmnSys->minimumIntegerDigits, 0));
  }
  const int taken = source.decimals + (rule == Digits::WidthLessPoint ? 1 : 0);
  return static_cast<unsigned long>(std::max(source.width - taken, 0));
}

// ---- dates
// The parts of a date, as bits.
enum Part : unsigned {
  year = 1,
  quarter = 2,
  month = 4,
  week = 8,
  day = 16,
  hour = 32,
  minute = 64,
  second = 128,
  millis = 256
};

struct PartRow {
  Part part;
  void (PlXFormat::*show)(bool);
  void (PlXFormat::*pad)(bool);  // null for what isn't padded
};

constexpr PartRow partRows[] = {
    {year, &PlXFormat::setShowYear, nullptr},
    {quarter, &PlXFormat::setShowQuarter, nullptr},
    {month, &PlXFormat::setShowMonth, nullptr},
    {week, &PlXFormat::setShowWeek, nullptr},
    {day, &PlXFormat::setShowDay, &PlXFormat::setDayPadding},
    {hour, &PlXFormat::setShowHour, &PlXFormat::setHourPadding},
    {minute, &PlXFormat::setShowMinute, &PlXFormat::setMinutePadding},
    {second, &PlXFormat::setShowSecond, &PlXFormat::setSecondPadding},
    {millis, &PlXFormat::setShowMillis, nullptr},
};

void showPadded(PlXFormat& format, unsigned parts) {
  for (const PartRow& row : partRows) {
    if (!(parts & row.part)) continue;
    (format.*row.show)(true);
    if (row.pad) (format.*row.pad)(true);
  }
  if (parts & day) format.setDayOfMonthPadding(true);
}

void hide(PlXFormat& format, unsigned parts) {
  for (const PartRow& row : partRows) {
    if (parts & row.part) (format.*row.show)(false);
  }
}

constexpr unsigned clock = hour | minute | second | millis;
constexpr int never = -1;

struct DateRow {
  unsigned type;
  PlXFormat::ENUM_baseFormat base;
  unsigned shown;
  unsigned hidden;
  // 0 and null for what the row says nothing of.
  int dayType;
  int monthFormat;
  int abbreviatedUpTo;  // the largest width that leaves the year without its century
  int order;
  const XMLCh* separators;
};

// clang-format off
constexpr auto date = PlXFormat::baseFormat_date;
constexpr auto dateTime = PlXFormat::baseFormat_dateTime;
constexpr DateRow dateRows[] = {
    {20, dateTime, day | month | year, clock, 1, 1, 9, 1, u".,-:"},
    {22, dateTime, year | month | day | hour | minute, second, 1, 1, never, 1, u".,-:"},
    {23, dateTime, year | month | day, clock, 1, 3, 8, 3, u".,/:"},
    {38, dateTime, year | month | day, clock, 1, 3, 8, 1, u".,.:"},
    {39, dateTime, year | month | day, clock, 1, 3, 8, 6, u".,/:"},
    {24, date, year | day, month, 2, 0, 5, 6, nullptr},
    {28, dateTime, year | month, day | clock, 0, 1, 6, 3, u"., :"},
    {29, dateTime, year | quarter, month | day | clock, 0, 0, 6, 0, u"., :"},
    {30, date, week | year, month | day, 0, 0, 8, 0, nullptr},
    {86, dateTime, year | month | day | hour | minute | second, millis, 1, 3, never, 6, u".,-:"},
};
// clang-format on

void showMillis(PlXFormat& format, unsigned digits) {
  format.setShowMillis(true);
  setFractionDigits(format, digits);
}

void formatDate(PlXFormat& format, const DateRow& row, const TAVO_Format& source) {
  format.setBaseFormat(row.base);
  showPadded(format, row.shown);
  hide(format, row.hidden);
  if (row.dayType) format.setDayType(static_cast<PlXFormat::ENUM_dayType>(row.dayType));
  if (row.monthFormat) {
    format.setMonthFormat(static_cast<PlXFormat::ENUM_monthFormat>(row.monthFormat));
  }
  format.setYearAbbreviation(source.width <= row.abbreviatedUpTo);
  if (row.order) format.setMdyOrder(static_cast<PlXFormat::ENUM_mdyOrder>(row.order));
  if (row.separators) format.setSeparatorChars(row.separators);

  switch (row.type) {
    case 22:
      format.setHourFormat(PlXFormat::hourFormat_twentyFour);
      if (source.width <= 17) break;
      format.setShowSecond(true);
      if (source.decimals) showMillis(format, std::max<unsigned>(source.decimals, 3));
      break;
    case 24:
      format.setHiddenSeparator(true);
      break;
    case 29:
      format.setQuarterSuffix(u" Q ");
      break;
    case 30:
      format.setWeekSuffix(u" WK ");
      break;
    case 86:
      format.setHourFormat(PlXFormat::hourFormat_twentyFour);
      if (source.decimals) showMillis(format, source.decimals);
      break;
    default:
      break;
  }
}

// Type 21 has hours, type 85 only minutes and seconds.
void formatTime(PlXFormat& format, const TAVO_Format& source) {
  const bool hasHour = source.type == 21;
  format.setBaseFormat(PlXFormat::baseFormat_duration);
  format.setHourPadding(true);
  format.setMinutePadding(true);
  format.setShowMinute(true);
  format.setHourFormat(PlXFormat::hourFormat_twentyFour);
  format.setShowHour(hasHour);
  format.setShowSecond(false);
  if (hasHour && source.width < 6) return;
  format.setShowSecond(true);
  format.setSecondPadding(true);
  if (source.decimals) showMillis(format, source.decimals);
}

// Type 26 is the day of the week, type 27 the month.
void formatName(PlXFormat& format, const TAVO_Format& source) {
  const bool isMonth = source.type == 27;
  format.setBaseFormat(dateTime);
  format.setDayType(PlXFormat::dayType_dayOfMonth);
  hide(format, day | year | clock);
  format.setShowMonth(isMonth);
  if (isMonth) {
    format.setMonthFormat(source.width > 3 ? PlXFormat::monthFormat_short
                                           : PlXFormat::monthFormat_long);
  } else {
    format.setShowDayOfWeek(true);
    format.setMonthFormat(PlXFormat::monthFormat_short);
    format.setDayOfWeekAbbreviation(source.width < 4);
  }
}

}  // namespace

bool ChartBase::FormatNumber(PlXFormat& format, TAVO_Format& source) {
  const NumberRow* row = rowOf(numberRows, source.type);
  if (!row) return false;
  setFractionDigits(format, source.decimals);
  format.setScientific(row->scientific);
  format.setMinimumIntegerDigits(integerDigits(row->digits, source));
  format.setUseGrouping(row->grouping == Grouping::AsSet ? isGroupingSet()
                                                         : row->grouping == Grouping::On);
  if (row->separators) format.setSeparatorChars(row->separators);
  if (row->prefix) format.setPrefix(row->prefix);
  if (row->suffix) format.setSuffix(row->suffix);
  if (row->small == Small::Zero) format.setSmall(0);
  if (row->small == Small::General) format.setSmall(getgformatsmall_());
  return true;
}

bool ChartBase::FormatDate(PlXFormat& format, TAVO_Format& source) {
  if (const DateRow* row = rowOf(dateRows, source.type)) {
    formatDate(format, *row, source);
  } else if (source.type == 21 || source.type == 85) {
    formatTime(format, source);
  } else if (source.type == 26 || source.type == 27) {
    formatName(format, source);
  } else {
    return false;
  }
  return true;
}

bool ChartBase::FormatElapsedTime(PlXFormat& format, TAVO_Format& source) {
  format.setBaseFormat(PlXFormat::baseFormat_duration);
  format.setHourPadding(true);
  format.setDayPadding(true);
  format.setMinutePadding(true);
  format.setShowSecond(true);
  format.setSecondPadding(true);
  format.setShowDay(true);
  format.setUseGrouping(isGroupingSet());
  if (source.decimals) {
    showMillis(format, std::max<unsigned>(source.decimals, 3));
  } else {
    format.setShowMillis(false);
  }
  return true;
}

bool ChartBase::FormatCustomCurrency(PlXFormat& format, TAVO_Format& source) {
  constexpr int firstType = 33;
  if (source.type < firstType || source.type > 37) return false;
  const currencyFormat::CCX& currency = currencyFormat::GetCCX(source.type - firstType);
  setFractionDigits(format, source.decimals);
  format.setUseGrouping(true);
  if (!currency.prefix.empty()) format.setPrefix(ChartString(currency.prefix.c_str()).xc_str());
  if (!currency.suffix.empty()) format.setSuffix(ChartString(currency.suffix.c_str()).xc_str());
  if (currency.negativePrefix == "-") {
    format.setNegativesOutside(true);
  } else if (!currency.negativePrefix.empty() || !currency.negativeSuffix.empty()) {
    format.setNegativesInParentheses(true);
  }
  format.setSeparatorChars(currency.decimal == "." ? pointSeparators : commaSeparators);
  return true;
}

bool ChartBase::addFormat(PlXFormat& format, TAVO_Format& source) {
  format.setErrorCharacter(u"*");
  constexpr unsigned elapsedTime = 25;
  // The names of days and months are no formats of a whole date.
  const bool isName = source.type == 26 || source.type == 27;
  if (isName || FormatNumber(format, source) || FormatDate(format, source)) return true;
  if (source.type == elapsedTime) return FormatElapsedTime(format, source);
  FormatCustomCurrency(format, source);
  return true;
}
