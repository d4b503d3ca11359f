// ChartString: text and numbers.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

#include "chartstring.h"

namespace {

const XMLCh* const none = nullptr;

TEST(ChartStrings, TakeAndGiveText) {
  const std::string chart = "\xF0\x9F\x93\x88";  // two units
  EXPECT_EQ(ChartString(chart.c_str()).length(), 2u);
  EXPECT_EQ(ChartString(u"\U0001F4C8\u00E9a").toUTF8(), chart + "\u00E9a");
  EXPECT_EQ(ChartString(u"\xD83Dx").toUTF8(), "\xEF\xBF\xBDx");
  EXPECT_EQ(ChartString("\xC3(\xFF").xc_str(), std::u16string(u"\uFFFD(\uFFFD"));
  ChartString text;
  text.append("a").append(u"b").append(u'c').append(static_cast<unsigned short>('d'));
  text.append(~0ul).appendInteger(-7).append(text).append(none).append((const char*)nullptr);
  EXPECT_EQ(text.toUTF8(), "abcd18446744073709551615-7abcd18446744073709551615-7");
  for (ChartString empty : {ChartString(none), ChartString((const char*)nullptr), text.assign(none),
                            text.assign((const char*)nullptr), text = none}) {
    EXPECT_TRUE(empty.empty() && empty.equals(none) && empty.ContainsString(none) &&
                !*empty.xc_str());
    EXPECT_TRUE(empty == ChartString() && !(empty < empty) && empty < ChartString("a"));
  }
  EXPECT_EQ(text.assign(static_cast<unsigned short>(u'\u00E9')).toUTF8(), "\u00E9");
  // By unit: a surrogate is before the last of the basic plane.
  EXPECT_LT(ChartString(u"\U0001F4C8"), ChartString(u"\uFFFD"));
}

TEST(ChartStrings, AreEdited) {
  const std::tuple<const XMLCh*, const XMLCh*, const XMLCh*, const XMLCh*> rows[] = {
      {u"aaa", u"aa", u"a", u"aa"},
      {u"a.b.", u".", u"..", u"a..b.."},
      {u"abc", u"", u"x", u"abc"},
      {u"abc", nullptr, u"x", u"abc"},
      {u"abc", u"b", nullptr, u"ac"},
      {u"abc", u"x", u"y", u"abc"},
      {u"\U0001F4C8!", u"\U0001F4C8", u"\U0001F4C9", u"\U0001F4C9!"}};
  for (const auto& [text, from, to, expected] : rows) {
    ChartString edited(text);
    edited.replaceSubstring(from, to);
    EXPECT_TRUE(edited.equals(expected)) << edited.toUTF8();
    EXPECT_EQ(edited.ContainsString(u"c"),
              std::u16string(expected).find(u'c') != std::string::npos);
  }
  ChartString text(u" \t a b \r\n");
  text.trimSpaces(false);
  EXPECT_TRUE(text.equals(u" \t a b"));
  text.trimSpaces(true);
  EXPECT_TRUE(text.equals(u"a b"));
  text.truncateString(2);
  EXPECT_TRUE(text.equals(u"a"));
  text.truncateString(2);
  EXPECT_TRUE(text.empty());
  text.trimSpaces(true);
}

// Also under a decimal comma, where there is such a locale.
TEST(ChartStrings, ConvertNumbers) {
  for (const char* locale : {"C", "de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
    if (!std::setlocale(LC_ALL, locale)) continue;
    SCOPED_TRACE(locale);
    const long most = std::numeric_limits<long>::max();
    const std::tuple<const char*, unsigned long, long, double, bool> rows[] = {
        {"", 0, 0, 0, false},
        {" 12 ", 12, 12, 12, true},
        {"+3", 3, 3, 3, true},
        {"-4.5", 0, -4, -4.5, true},
        {"7x", 7, 7, 7, false},
        {"x7", 0, 0, 0, false},
        {"1,5", 1, 1, 1, false},
        {".5e1", 0, 0, 5, true},
        {"+-1", 0, 0, 0, false},
        {"1e400", 1, 1, HUGE_VAL, false},
        {"-1e-400", 0, -1, 0, true},
        {"1 2", 1, 1, 1, false},
        {"99999999999999999999", ~0ul, most, 1e20, true},
        {"-99999999999999999999", 0, -most - 1, -1e20, true}};
    for (const auto& [text, whole, number, real, isNumber] : rows) {
      const ChartString string(text);
      EXPECT_EQ(string.convertToInteger(), whole) << text;
      EXPECT_EQ(string.convertToSignedInteger(), number) << text;
      EXPECT_EQ(string.convertToDouble(), real) << text;
      EXPECT_EQ(string.isNumber(), isNumber) << text;
    }
    EXPECT_EQ(ChartString(u"1\u0661").convertToInteger(), 1u);
    EXPECT_EQ(ChartString().assignDouble(1234.5678, 6).toUTF8(), "1234.57");
    EXPECT_EQ(ChartString().assignDouble(-0.1, 17).toUTF8(), "-0.10000000000000001");
    EXPECT_EQ(ChartString().assignDouble(1e21, 3).toUTF8(), "1e+21");
    EXPECT_EQ(ChartString().assignDouble(2, 0).toUTF8(), "2");
    EXPECT_EQ(ChartString().assignInteger(-most - 1).toUTF8(), "-9223372036854775808");
  }
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(ChartString().assignTAVOMBGeneric("\u00E9").toUTF8(), "\u00E9");
}

}  // namespace
