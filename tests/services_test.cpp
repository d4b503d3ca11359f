// Code pages, string tables, the placeholders of titles, and keys.
#include <gtest/gtest.h>

#include <clocale>
#include <ctime>
#include <map>

#include "chartkey.h"
#include "charttranscoder.h"
#include "facstdictionary.h"
#include "installationcodepage.h"
#include "pathfactory.h"
#include "placeholders.h"
#include "testsupport.h"
#include "utf.h"

namespace {

TEST(CodePages, ConvertBothWays) {
  const struct {
    const char* encoding;
    const char16_t* text;
    const char* bytes;
  } cases[] = {
      {"CP1252", u"\u00E9\u20AC", "\xE9\x80"},
      {"windows-1251", u"\u0416\u0451", "\xC6\xB8"},
      {"CP1250", u"\u0142\u015A", "\xB3\x8C"},
      {"CP950", u"\u7E3D\u8A08", "\xC1\x60\xAD\x70"},
      {"CP936", u"\u603B\u8BA1", "\xD7\xDC\xBC\xC6"},
      {"cp949", u"\uD569\uACC4", "\xC7\xD5\xB0\xE8"},
      {"CP932", u"\u8868\\n", "\x95\\\\n"},
      {"UTF-8", u"\u00E9\xD83D\xDCC8", "\xC3\xA9\xF0\x9F\x93\x88"},
      {"no such page", u"\u00E9", "\xC3\xA9"},
      {"CP1252//IGNORE", u"\u0416", "\xD0\x96"},
  };
  for (const auto& c : cases) {
    const ChartTranscoder transcoder(c.encoding);
    EXPECT_EQ(transcoder.transcodeTo(c.text), c.bytes) << c.encoding;
    EXPECT_EQ(transcoder.transcode(c.bytes).view(), c.text) << c.encoding;
    EXPECT_EQ(transcoder.transcodeTo(nullptr), "");
  }
}

TEST(CodePages, ReplaceWhatHasNoCounterpart) {
  EXPECT_EQ(ChartTranscoder("CP1252").transcodeTo(u"a\u0416\xD83D\xDCC8z\xDCC8\xD83D"), "a??z??");
  EXPECT_EQ(ChartTranscoder("CP932").transcodeTo(u"\uD55C\u5B57"), "?\x8E\x9A");
  EXPECT_EQ(ChartTranscoder("IBM037").transcodeTo(u"a\u0416"), "\x81\x6F");
  EXPECT_EQ(ChartTranscoder("CP1252").transcode("a\x81z").view(), u"a\uFFFDz");
  EXPECT_EQ(ChartTranscoder("CP949").transcode("\xB0\xE8\xB0").view(), u"\uACC4\uFFFD");
  EXPECT_EQ(ChartTranscoder("CP949").transcode("\xB0 \xB0\xE8").view(), u"\uFFFD \uACC4");
  std::string all;
  for (int i = 0; i < 3000; ++i) all += static_cast<char>(i * i * 7 >> 3);
  EXPECT_EQ(ChartTranscoder("UTF-8").transcode(all).view(), utf::toUtf16(all));
}

TEST(Stepping, GoesByCharacterAndStopsAtTheEnd) {
  ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
  const auto steps = [](const std::string& text) {
    std::string lengths;
    for (const char *at = text.c_str(), *next; *at; at = next) {
      next = TAVOMBstrinc_A(at);
      lengths += std::to_string(next - at);
    }
    return lengths;
  };
  EXPECT_EQ(steps("a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x93\x88&"), "12341");
  EXPECT_EQ(steps("\xA9\xC0\xAF\xE6\x97<\xF0\x9F\x93"), "111111111");
  const char* end = "";
  EXPECT_EQ(TAVOMBstrinc_A(end), end);
  EXPECT_EQ(TAVOMBstrinc_A(nullptr), nullptr);
}

// The entries of a table, as written.
std::map<std::string, std::string> entriesOf(const std::string& table) {
  std::map<std::string, std::string> entries;
  std::istringstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t tab = line.find('\t');
    if (tab != std::string::npos) entries[line.substr(0, tab)] = line.substr(tab + 1);
  }
  return entries;
}

TEST(ShippedTables, AnswerEveryKeyInTheirCodePage) {
  const std::pair<const char*, const char*> languages[] = {
      {"de", "CP1252"},   {"fr", "CP1252"}, {"ru", "CP1251"}, {"pl", "CP1250"}, {"zh_tw", "CP950"},
      {"zh-cn", "CP936"}, {"ko", "CP949"},  {"ja", "CP932"},  {"en", "CP1252"}};
  PathFactory* paths = PathFactory::getPathInstance(3);
  const auto english = entriesOf(readFile(paths->getBaseResourcePath() + "en/graph.txt"));
  EXPECT_EQ(english.size(), 45u);
  for (const auto& [language, codePage] : languages) {
    paths->setLanguage(language);
    EXPECT_STREQ(installationCodePage(), codePage) << language;
    const std::string folder = paths->getLanguageResourcePath();
    const auto entries = entriesOf(readFile(folder + "graph.txt"));
    EXPECT_EQ(entries.size(), english.size()) << language;
    FacSTDictionary dictionary(folder);
    for (const auto& [key, text] : entries) {
      EXPECT_TRUE(english.contains(key)) << language << key;
      std::string found = ChartTranscoder(codePage).transcode(dictionary.LookUp(key)).toUTF8();
      // A blank at the end is written with an escape.
      if (found.ends_with(' ')) found.replace(found.size() - 1, 1, "\\s");
      EXPECT_EQ(found, text);
      EXPECT_EQ(found.starts_with("\\n"), key.starts_with("histo")) << language << key;
    }
  }
}

// A dictionary over one table of its own.
std::string lookUp(const std::string& table, const std::string& key, int position = 0) {
  const LogFolder folder;
  const std::string path = std::filesystem::path(folder.file("")).parent_path();
  std::ofstream(path + "/mine.txt") << table;
  FacSTDictionary dictionary(path);
  dictionary.SetProcedure("MINE");
  return dictionary.LookUp(key, position);
}

TEST(Dictionary, TakesDamagedTables) {
  const std::string entry = "Key\tone\ttwo\\s\\n\n";
  EXPECT_EQ(lookUp(entry, "Key"), "one");
  EXPECT_EQ(lookUp(entry, "Key", 1), "two \\n");
  EXPECT_EQ(lookUp(entry, "Key", 2), "one");
  const std::string saved =
      "\xEF\xBB\xBF@codepage CP1252\r\n#Key\tno\r\n\r\nKey\t\xC3\xA9\xD0\x96\r\n";
  EXPECT_EQ(lookUp(saved + "Key\tx", "Key"), "\xE9?");
  EXPECT_EQ(lookUp("@codepage none\nKey\t\xC3\xA9", "Key"), "\xC3\xA9");
  EXPECT_EQ(lookUp("@codepage CP1252\n@codepage\nKey\nKey\ta\xFF\xC3", "Key"), "a??");
  EXPECT_EQ(lookUp(entry, "key"), "key");
  EXPECT_EQ(lookUp(entry + std::string(1 << 20, '#'), "Key"), "Key");

  const std::string base = PathFactory::getPathInstance(3)->getBaseResourcePath();
  EXPECT_EQ(FacSTDictionary(base + "xx/").LookUp("E60554"), "E60554");
  FacSTDictionary english(base + "en");
  EXPECT_EQ(english.LookUp("E60554"), "Quadratic");
  english.SetProcedure("OTHER");
  EXPECT_EQ(english.LookUp("E60554"), "E60554");
}

ChartString filled(const char* at, const char* text, FacSTDictionary* words, const char* codePage) {
  std::tm moment{};
  EXPECT_NE(strptime(at, "%Y-%m-%d %H:%M:%S", &moment), nullptr);
  ChartString result(text);
  placeholders::fill(result, moment, words, codePage);
  return result;
}

TEST(Placeholders, AreReplacedAtAFixedMoment) {
  const char* afternoon = "2009-03-05 13:05:09";
  const char* night = "2010-12-31 00:30:00";
  const struct {
    const char* at;
    const char* text;
    const char* result;
  } cases[] = {
      {afternoon, "no @@current_other@@ DATE", "no @@current_other@@ DATE"},
      {afternoon, "@@current_date@@ )DATE @@current_date@@", "2009-03-05 2009/03/05 2009-03-05"},
      {afternoon, "@@current_time@@ )TIME", "01:05:09 13:05:09 p.m."},
      {night, "@@current_time@@ )TIME", "12:30:00 0:30:00 a.m."},
      {"2026-01-01 12:00:00", "@@current_time@@ )TIME", "12:00:00 12:00:00 p.m."},
      {afternoon, "@@current_YYYY@@ @@current_YY@@", "2009 09"},
      {night, "@@current_YYYY@@ @@current_YY@@", "2010 10"},
      {afternoon, "@@current_month@@/@@current_day@@", "03/05"},
      {night, "@@current_hour24@@:@@current_min@@:@@current_sec@@", "00:30:00"},
      {night, "@@current_hour@@", "12"},
      {afternoon, "@@current_hour@@ @@current_hour24@@", "@@current_hour@@ 13"},
      {afternoon, "@@current_weekday@@, @@current_monthname@@", "Thursday, March"},
      {night, "@@current_weekday@@ @@current_ampm@@", "Friday a.m."},
  };
  const std::string resources = PathFactory::getPathInstance(3)->getBaseResourcePath();
  FacSTDictionary english(resources + "en");
  for (const auto& c : cases) {
    EXPECT_EQ(filled(c.at, c.text, &english, "CP1252").toUTF8(), c.result);
    EXPECT_EQ(filled(c.at, c.text, nullptr, "CP1252").toUTF8(), c.result);
  }
  FacSTDictionary japanese(resources + "ja");
  const char* words = ")TIME @@current_weekday@@ @@current_monthname@@ @@current_ampm@@";
  EXPECT_EQ(filled(afternoon, words, &japanese, "CP932").view(), u"13:05:09 午後 木曜日 3月 午後");
}

TEST(Placeholders, AreFilledForTheLocalPresent) {
  const auto textAt = [](std::time_t time) {
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&time));
    return std::string(text);
  };
  const std::string before = textAt(std::time(nullptr));
  ChartString text("@@current_date@@ @@current_hour24@@:@@current_min@@:@@current_sec@@");
  ChartBase::updateText(text, nullptr, "CP1252");
  EXPECT_LE(before, text.toUTF8());
  EXPECT_GE(textAt(std::time(nullptr)), text.toUTF8());
}

TEST(Key, IsOrderedBySizeAndThenByValues) {
  const std::vector<int> ascending[] = {{}, {-1}, {7}, {1, 2}, {1, 3}, {2, -9}, {0, 0, 0}};
  const auto key = [](const std::vector<int>& values) {
    ChartKey result(static_cast<int>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) result[static_cast<int>(i)] = values[i];
    return result;
  };
  for (const auto& a : ascending) {
    for (const auto& b : ascending) {
      EXPECT_EQ(key(a) < key(b), &a < &b);
      EXPECT_EQ(key(a) == key(b), &a == &b);
    }
  }
  EXPECT_EQ(ChartKey(-1), key({}));

  ChartKey copy;
  EXPECT_EQ(copy.size(), 1);
  const ChartKey original = copy = key({1, 2});
  copy[0] = 9;
  EXPECT_EQ(original, key({1, 2}));
}

}  // namespace
