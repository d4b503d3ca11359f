// Numeric dates against the standard library's calendar.
#include "timeconverter.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "vardataprocessor.h"

namespace {

using namespace std::chrono;

constexpr double missing = VarDataProcessor::systemMissing;
constexpr sys_days epoch = 1582y / October / 14;

double secondsOf(sys_days day) {
  return static_cast<double>((day - epoch).count()) * 86400;
}

double converted(sys_days day) {
  const year_month_day date(day);
  return TimeConverter::ConvertYearMonthDayToSecs(static_cast<int>(date.year()),
                                                  static_cast<unsigned>(date.month()),
                                                  static_cast<unsigned>(date.day()));
}

// The calendar repeats after 400 years, which are a whole number of days. The standard library's
// years end at 32767.
double secondsOf(unsigned year, unsigned month, unsigned day) {
  const unsigned cycles = (year - 1600) / 400;
  const auto start =
      std::chrono::year(static_cast<int>(year - 400 * cycles)) / std::chrono::month(month) / 1;
  return secondsOf(sys_days(start)) + (day - 1.0 + 146097.0 * cycles) * 86400;
}

TEST(TimeConverter, CountsEveryDay) {
  for (sys_days day = epoch; day < 2401y / January / 1; day += days(1)) {
    ASSERT_EQ(converted(day), secondsOf(day)) << (day - epoch).count();
  }
  std::mt19937 random(1);
  for (int i = 0; i < 10'000; ++i) {
    const unsigned year = 1600 + random() % (5867441 - 1600 + 1);
    const unsigned month = 1 + random() % 12;
    const unsigned day = random() % 32;  // also those that the month lacks
    ASSERT_EQ(TimeConverter::ConvertYearMonthDayToSecs(year, month, day),
              secondsOf(year, month, day));
  }
}

TEST(TimeConverter, RefusesWhatIsOutsideTheCalendar) {
  const unsigned dates[][3] = {{1581, 12, 31}, {5867442, 1, 1}, {2000, 0, 1},
                               {2000, 14, 1},  {2000, 1, 32},   {1582, 10, 13},
                               {1582, 1, 1},   {1582, 10, 0},   {0, 1, 1}};
  for (const auto& [year, month, day] : dates) {
    EXPECT_EQ(TimeConverter::ConvertYearMonthDayToSecs(year, month, day), missing) << year;
  }
  EXPECT_EQ(TimeConverter::ConvertYearMonthDayToSecs(1999, 13, 5), converted(2000y / January / 5));
}

TEST(TimeConverter, ReadsTexts) {
  const std::pair<const char*, double> dates[] = {{"1582-10-14 00:00:00", 0},
                                                  {"1582-10-15 00:00:00", 86400},
                                                  {"2000-01-01 12:00:00", 13166107200},
                                                  {"2000-01-01 00:00:00.250", 13166064000.25},
                                                  {"2000-01-01", 13166064000},
                                                  {"2000-01-01 ", 13166064000},
                                                  {"2000-1-1 01:30", 13166064000 + 5400},
                                                  {"2000-02-31", secondsOf(2000y / March / 2)},
                                                  {"2001-02-31", secondsOf(2001y / March / 3)},
                                                  {"1500-01-01 00:00:00", missing},
                                                  {"1582-10-13 23:59:59", missing},
                                                  {"-2000-01-01", missing},
                                                  {"2000 01 01", missing},
                                                  {"2000-01", missing},
                                                  {"abc", missing},
                                                  {"", missing}};
  for (const auto& [text, value] : dates) {
    EXPECT_EQ(TimeConverter::convertDateFromISOFormatToTAVODouble(text), value) << text;
  }
  const std::pair<const char*, double> times[] = {{"12:30:15", 45015},
                                                  {"12:30:15,5", 45015.005},
                                                  {"12:30:15.500", 45015.5},
                                                  {"12:xx:15", 43215},
                                                  {"12:30", 45000},
                                                  {"12:", 43200},
                                                  {":30:", 1800},
                                                  {"12", 0},
                                                  {"", 0},
                                                  {"1:2:3:4", 3720},
                                                  {"0:0:1,5.5", 0.005},
                                                  {"-1:00:05", 5},
                                                  {"0:0:x.5", 0.005}};
  for (const auto& [text, value] : times) {
    EXPECT_EQ(TimeConverter::convertTimeFromISOFormatToTAVODouble(text), value) << text;
  }
  const std::pair<const char*, unsigned> numbers[] = {
      {"12a", 0},        {"", 0},   {"0042", 42}, {"4294967295", 4294967295},
      {"4294967297", 1}, {"+1", 0}, {" 1", 0}};
  for (const auto& [text, value] : numbers) {
    EXPECT_EQ(TimeConverter::convertStringToUnsignedInt(text), value) << text;
  }
}

}  // namespace
