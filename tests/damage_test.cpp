// Damaged input: no crash, no leak, no hang, and each failure logged.
#include <gtest/gtest.h>

#include <random>

#include "charttransformer.h"
#include "testsupport.h"
#include "zlib1211tavo.h"

namespace {

// Opens a damaged chart's text. A refused one must have been logged; one that opened must, where
// that is to be tried, come back from its own output.
void checkText(const std::string& text, bool comesBack, const LogFolder& folder,
               std::size_t& logged) {
  ChartTransformer chart(text);
  if (!chart.getXML(nullptr).empty()) {
    if (!comesBack) return;
    const std::string entire = chart.getEntireXML(nullptr);
    EXPECT_EQ(ChartTransformer(entire).getEntireXML(nullptr), entire);
    return;
  }
  const std::size_t length = folder.logSize();
  EXPECT_TRUE(text.empty() || length > logged);
  logged = length;
}

// Most damage to a compressed text is refused; what isn't must only do no harm.
void checkCompressed(const std::string& chartText, const std::string& data) {
  ChartTransformer chart(chartText, data);
  EXPECT_EQ(chart.getXML(nullptr).empty(), chart.getEntireXML(nullptr).empty());
  chart.getCompressedData();
}

class Damage : public testing::TestWithParam<std::string> {
 protected:
  std::size_t place(std::size_t size) {
    return std::uniform_int_distribution<std::size_t>(0, size - 1)(random_);
  }
  std::string damaged(std::string text) {
    if (!text.empty()) text[place(text.size())] = byte();
    return text;
  }
  char byte() { return static_cast<char>(std::uniform_int_distribution<int>(0, 255)(random_)); }

  const ChartBase holder_;
  std::mt19937 random_{20261124};
};

TEST_P(Damage, OfTheText) {
  const LogFolder folder;
  const std::string text = readFile(GetParam());
  std::size_t logged = 0;
  for (int i = 0; i < 200; ++i)
    checkText(text.substr(0, text.size() * i / 200), true, folder, logged);
  for (int i = 0; i < 2000; ++i) {
    checkText(damaged(text), i % 10 == 0, folder, logged);
  }
}

TEST_P(Damage, OfTheCompressedForms) {
  ChartTransformer chart(readFile(GetParam()));
  const std::string packed = chart.getCompressedXML();
  const std::string data = chart.getCompressedData();
  for (int i = 0; i < 200; ++i) {
    checkCompressed(packed.substr(0, packed.size() * i / 200), data);
    checkCompressed(packed, data.substr(0, data.size() * i / 200));
    checkCompressed(damaged(packed), data);
    checkCompressed(packed, damaged(data));
  }
}

INSTANTIATE_TEST_SUITE_P(Examples, Damage, testing::ValuesIn(exampleFiles()),
                         [](const testing::TestParamInfo<std::string>& info) {
                           // That of its folder, too: two have a pie.
                           const std::filesystem::path path(info.param);
                           std::string name = path.parent_path().stem().string() + '_';
                           name += path.stem().string();
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
