// Numbers in texts against strtod, in the "C" locale that tests run in.
#include "numbertext.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>

#include "formatter.h"

namespace {

void expectAsStrtod(const std::string& text) {
  char* end;
  const double value = std::strtod(text.c_str(), &end);
  const numbertext::Number number = numbertext::scan(text);
  ASSERT_EQ(number.length, static_cast<std::size_t>(end - text.c_str())) << text;
  if (std::isnan(value)) {
    ASSERT_TRUE(std::isnan(number.value)) << text;
  } else {
    ASSERT_EQ(std::bit_cast<long>(number.value), std::bit_cast<long>(value)) << text;
  }
}

TEST(NumberText, ScansAsStrtod) {
  const std::string texts[] = {"1e400",
                               "-1e400",
                               "1e-400",
                               "2e-324",
                               "2.4703282292062328e-324",
                               "1e99999999999999999999",
                               "-1e-99999999999999999999",
                               "infinity",
                               "INFx",
                               "nan(12a)",
                               "+nan",
                               "-Infinit",
                               "\t\n\v\f\r 1",
                               "0x1p99999",
                               "0x1p-99999",
                               "0x.0001p1030",
                               "0x1.8p-1075",
                               "0x1P+-1",
                               "0xinf",
                               std::string(400, '9') + "e-5",
                               "0." + std::string(400, '0') + "1e5",
                               "0." + std::string(400, '0') + "1e800"};
  for (const std::string& text : texts) expectAsStrtod(text);
  std::mt19937 random(1);
  const std::string letters = "0123456789.eE+-xXpPafinN ";
  for (int i = 0; i < 300'000; ++i) {
    std::string text(1 + random() % 12, ' ');
    for (char& c : text) c = letters[random() % letters.size()];
    expectAsStrtod(text);
  }
}

TEST(NumberText, ComesBackFromItsShortestText) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 100'000; ++i) {
    const auto value = std::bit_cast<double>(random());
    if (std::isnan(value)) continue;
    ASSERT_EQ(numbertext::scan(formatter::AsString(value, 16)).value, value);
  }
  EXPECT_EQ(formatter::AsString(2.0 / 3, 3), "0.667");
}

}  // namespace
