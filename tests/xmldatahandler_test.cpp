// Data documents and streams, each made of the other.
#include "xmldatahandler.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <regex>
#include <sstream>

#include "chartbase.h"
#include "vardataprocessor.h"
#include "zlib1211tavo.h"

namespace {

const std::string prolog =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?> \n"
    "<gs:graphSources xmlns=\"" CHARTXML_HOST
    "/visualization\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" \n"
    "xmlns:gs=\"" CHARTXML_HOST "/tavo/visualization\" xsi:schemaLocation=\"" CHARTXML_HOST
    "/tavo/visualization " CHARTXML_HOST "/tavo/visualization/grafo-data-2.1.xsd\">\n";
const std::string end = "</gs:graphSources>\n";
const std::string older = "<!-- grafo-data-1.0.xsd -->";

// A source as the writer spells it; `rows` between "<row>" and "</row>".
std::string sourceText(const std::string& id, const std::string& names, const std::string& types,
                       const std::vector<std::string>& rows) {
  std::string text = "\t<embeddedSource id=\"" + id + "\">\n\t\t<names>" + names +
                     "</names>\n\t\t<types>" + types + "</types>\n";
  for (const std::string& row : rows) text += "\t\t<row>" + row + "</row>\n";
  return text + "\t</embeddedSource>\n";
}

// Empty without a stream.
std::string streamOf(const std::string& xml) {
  unsigned size = 99;
  const std::unique_ptr<unsigned char[]> stream(XmlDataHandler(xml).GetDataStream(size));
  EXPECT_EQ(stream == nullptr, size == 0);
  return {reinterpret_cast<const char*>(stream.get()), size};
}

const unsigned char* bytesOf(const std::string& stream) {
  return reinterpret_cast<const unsigned char*>(stream.data());
}

std::string documentOf(const std::string& stream) {
  std::string text = "none";
  XmlDataHandler(bytesOf(stream), static_cast<unsigned>(stream.size())).GetXmlData(text, false);
  return text;
}

// What comes back of a document, less its prolog and end; empty without a stream.
std::string again(const std::string& xml) {
  const std::string stream = streamOf(xml);
  if (stream.empty()) return {};
  const std::string text = documentOf(stream);
  EXPECT_TRUE(text.starts_with(prolog) && text.ends_with(end)) << text;
  return text.substr(prolog.size(), text.size() - prolog.size() - end.size());
}

std::string packed(const std::string& text) {
  std::string result;
  zlib1211tavo::compressString(text, result);
  return result;
}

TEST(XmlData, ComesBackButForTheOrder) {
  const std::string first =
      sourceText("a", "p;q;r", "string;string;string", {"1;2.5;", ";;-3e-05", "4000000000;;0.1"});
  const std::string second = sourceText("b &lt;", "&quot;&amp;&apos;&lt;&gt;ü", "string", {"1"});
  EXPECT_EQ(again(prolog + second + first + end), first + second);
  EXPECT_EQ(again(packed(prolog + first + end)), first);
  EXPECT_EQ(again(prolog +
                  sourceText("a", "r;q;p", "x", {";2.5;1", "-3e-05;;", "0.1;;4000000000"}) + end),
            first);
  ChartBase base;
  EXPECT_NE(base.parseDocument(prolog + first + second + end), nullptr);
}

// What stands in the one row of a source "s" with the variables a, b and c, and what comes back of
// it: names and cells.
TEST(XmlData, ReadsCells) {
  struct Case {
    const char* row;
    const char* names;
    const char* cells;
  };
  const Case cases[] = {
      {"1;2;3", "a;b;c", "1;2;3"},
      {";2;3", "b;c", "2;3"},
      {"1;;3", "a;c", "1;3"},
      {"1;2;", "a;b", "1;2"},
      {";;3", "c", "3"},
      {"1;2", "a;b", "1;2"},
      {"1;2;3;;", "a;b;c", "1;2;3"},
      // As strtod reads them
      {" \n1;\t+2;-.5e1x", "a;b;c", "1;2;-5"},
      {"0x1p4;inf;-Infinity", "a;b;c", "16;INF;-INF"},
      {"1e400;1e-400;0x", "a;b;c", "INF;0;0"},
      {"x;1,5; ", "a;b;c", "0;1;0"},
      {"nan", "a", "NaN"},
      // The number that stands for a missing one is given all the same.
      {"1;-1.7976931348623157e308;", "a;b", "1;"},
      // References
      {"&#49;&#x30;;1&#48;;&lt;3", "a;b;c", "10;10;0"},
      {"&lt;;2&amp;;&bad", "a;b;c", "0;2;0"},
      // Other markup
      {"<!-- x -->1;2<b>;</b>", "b", "2"},
  };
  for (const Case& each : cases) {
    const std::string xml = "<embeddedSource id=\"s\"><names>a;b;c</names><row>" +
                            std::string(each.row) + "</row></embeddedSource>";
    std::string types = "string";
    for (const char* c = each.names; *c; ++c) types += *c == ';' ? ";string" : "";
    EXPECT_EQ(again(xml), sourceText("s", each.names, types, {each.cells})) << each.row;
  }
}

TEST(XmlData, ReadsNames) {
  struct Case {
    const char* names;
    const char* row;
    const char* back;
    const char* cells;
  };
  const Case cases[] = {
      {"<names>;b;</names>", "1;2;3", ";b", "3;2"},  // two of the same name: the last value counts
      {"<names>b;a;b</names>", "1;2;3", "a;b", "2;3"},
      {"<names></names>", "1", "", "1"},
      {"<names/>", "1", "", "1"},
      {"<names>&#59;;&#x20AC;</names>", "1;2", "&amp;#59;;€", "1;2"},
      {"<names>a&amp;b;a&#0;b</names>", "1;2", "a&amp;#0;a&amp;b", "2;1"},
  };
  for (const Case& each : cases) {
    const std::string xml = "<embeddedSource id=\"s\">" + std::string(each.names) + "<row>" +
                            each.row + "</row></embeddedSource>";
    const bool isOne = std::string(each.cells).find(';') == std::string::npos;
    EXPECT_EQ(again(xml),
              sourceText("s", each.back, isOne ? "string" : "string;string", {each.cells}))
        << each.names;
  }
}

TEST(XmlData, ReadsTheOlderForm) {
  struct Case {
    const char* row;
    const char* names;
    const char* cells;
  };
  const Case cases[] = {
      {"<dataValue name=\"a\">1</dataValue><dataValue name=\"b\">2.5</dataValue>", "a;b", "1;2.5"},
      {"<dataValue name=\"b\">2</dataValue><dataValue name=\"a\"></dataValue>", "b", "2"},
      {"<dataValue name=\"a\"/><dataValue name=\"b\">2</dataValue>", "b", "2"},
      {"<dataValue name=\"a\"/> <dataValue name=\"b\">x</dataValue>", "a;b", "0;0"},
      {"<dataValue name=\"a&lt;\" unit=\"&gt;\">&#49;</dataValue>", "a&lt;", "1"},
      {"<dataValue name=\"a>b\">1</dataValue>", "a&gt;b", "1"},
      {"<dataValue name=\"a\">1</dataValue><dataValue name=\"a\">2</dataValue>", "a", "2"},
  };
  for (const Case& each : cases) {
    const std::string xml =
        older + "<source id=\"s\"><row>" + each.row + "</row></source><embeddedSource id=\"t\">";
    const bool isOne = std::string(each.cells).find(';') == std::string::npos;
    EXPECT_EQ(again(xml),
              sourceText("s", each.names, isOne ? "string" : "string;string", {each.cells}))
        << each.row;
  }
  // Cells in any order, and rows without some
  EXPECT_EQ(
      again("grafo-1.4.xsd<source id=\"s\">"
            "<row><dataValue name=\"a\">1</dataValue><dataValue name=\"b\">2</dataValue></row>"
            "<row></row>"
            "<row><dataValue name=\"b\">3</dataValue><dataValue name=\"a\">4</dataValue></row>"
            "<row/><row><dataValue name=\"c\">5</dataValue></row></source>"),
      sourceText("s", "a;b;c", "string;string;string", {"1;2;", ";;", "4;3;", ";;5"}));
}

TEST(XmlData, GivesNoStreamOfBrokenTexts) {
  const std::string source = "<embeddedSource id=\"s\"><names>a;b</names>";
  const std::string text = source + "<row>1;2</row><row>3;4</row></embeddedSource>";
  const std::string texts[] = {
      "",
      "x",
      "<embeddedSource>",
      "<embeddedSource id='s'><names>a</names></embeddedSource>",
      "<embeddedSource id=\"s\"><row>1</row></embeddedSource>",
      "<embeddedSource id=\"s\"><names>a<row>1</row></embeddedSource>",
      "<embeddedSource id=\"s\"></names><names>a<row>1</row></embeddedSource>",
      source + "<row>1;2;3</row></embeddedSource>",
      source + "<row>1;2</embeddedSource>",
      source + "<row>1;2</embeddedSource></row>",
      source + "<row>1;2<row>3;4</row></embeddedSource>",
      source + "<row>1;<b><row>3;4</row></embeddedSource>",
      source + "<row>" + "</embeddedSource>",
      text + source + "<row>1;2;3</row></embeddedSource>",
      older + text,
      older + "<source id=\"s\"><row><dataValue name=\"a\">1</dataValue></source>",
      older + "<source id=\"s\"><row><dataValue name=\"a>1</row></source>",
      older + "<source id=\"s\"><row><dataValue name=\"a\"</row></source>",
  };
  for (const std::string& each : texts) {
    EXPECT_EQ(streamOf(each), "") << each;
    XmlDataHandler::Problem problem;
    VarDataProcessor store;
    if (each.find("id=\"") != std::string::npos && !each.starts_with(older + "<e")) {
      EXPECT_FALSE(XmlDataHandler::ReadStore(each, store, XmlDataHandler::Keep::Numbers, &problem));
      EXPECT_LE(problem.offset, each.size());
    }
  }
  // Cut anywhere, a text never leads the scanner out of itself.
  for (const std::string& whole :
       {text + text, older + "<source id=\"s\"><row><dataValue name=\"&#49;\">&#49;</dataValue>"}) {
    for (std::size_t i = 0; i <= whole.size(); ++i) streamOf(std::string(whole, 0, i));
  }
  // Tags within a name are tags.
  EXPECT_EQ(streamOf("<embeddedSource id=\"<row>\"><names>a</names></embeddedSource>"), "");
  // One without names has no rows, and the others stay.
  EXPECT_EQ(again("<embeddedSource id=\"r\"/>" + text),
            "\t<embeddedSource id=\"r\">\n\t\t<names></names>\n\t\t<types></types>\n\t\t<row/>\n"
            "\t</embeddedSource>\n" +
                sourceText("s", "a;b", "string;string", {"1;2", "3;4"}));
  // A source without its end has no rows.
  const std::string rowless =
      "\t<embeddedSource id=\"s\">\n\t\t<names></names>\n\t\t<types></types>\n\t\t<row/>\n"
      "\t</embeddedSource>\n";
  EXPECT_EQ(again(source + "<row>1;2</row>"), rowless);
  EXPECT_EQ(again(source + "<row/></embeddedSource>"), rowless);
  EXPECT_EQ(again(source + "<row>1;2</row>" + text),
            "\t<embeddedSource id=\"s\">\n\t\t<names>a;b</names>\n\t\t<types>string;string</types>"
            "\n\t\t<row>1;2</row>\n\t\t<row>3;4</row>\n\t</embeddedSource>\n");
}

TEST(XmlData, KeepsEveryDouble) {
  std::mt19937_64 random(1);
  std::string rows;
  std::vector<double> values;
  while (values.size() < 10000) {
    const auto value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    values.push_back(value);
    std::string text;
    VarDataProcessor::AppendNumber(value, text);
    rows += "<row>" + text + "</row>";
  }
  const std::string stream =
      streamOf("<embeddedSource id=\"s\"><names>a</names>" + rows + "</embeddedSource>");
  for (const std::string& each : {stream, streamOf(documentOf(stream))}) {
    VarDataProcessor store;
    ASSERT_TRUE(store.ReadStreamData(each.data(), static_cast<unsigned>(each.size())));
    ASSERT_EQ(store.GetRowCount("s"), values.size());
    EXPECT_EQ(
        std::memcmp(store.GetDataPointer("s", "a"), values.data(), values.size() * sizeof(double)),
        0);
  }
}

TEST(XmlData, HasAPointWhateverTheLocale) {
  const std::string xml =
      "<embeddedSource id=\"s\"><names>a;b</names><row>1.5; 2.5</row>"
      "</embeddedSource>";
  const char* comma = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  const std::string locale = std::setlocale(LC_NUMERIC, nullptr);
  EXPECT_EQ(again(xml), sourceText("s", "a;b", "string;string", {"1.5;2.5"}));
  EXPECT_EQ(std::setlocale(LC_NUMERIC, nullptr), locale);
  std::setlocale(LC_NUMERIC, "C");
  if (!comma) GTEST_SKIP() << "no locale with a decimal comma here";
}

TEST(XmlData, WritesWhatAStoreHolds) {
  VarDataProcessor store;
  store.AddDataSource("none", 0);
  store.AddVariable("rowless", "a", nullptr);
  store.SetVariableValue("texts", "n", 0, 1);
  EXPECT_FALSE(store.SetVariableValue("texts", "n", 0, 1));
  _varinfo text;
  _varinfo number;
  store.AddVariable("texts", "t", &text);
  store.AddVariable("texts", "n", &number);
  // The text wins, and a cell whose text is gone has its number.
  store.SetVariableValue(&text, 0, 7);
  store.SetStringVariableValue(&text, 0, "a;b");
  store.SetStringVariableValue(&text, 2, "x<y & \"z\"\x01ü\xFC");
  store.SetVariableValue(&text, 3, 8);
  (*text.strings)[3] = VarDataProcessor::noText;
  store.SetVariableValue(&number, 1, 9223372036854775808.0);
  store.SetVariableValue(&number, 2, -0.5);
  std::string out;
  ASSERT_TRUE(XmlDataHandler::WriteStore(store, out));
  const std::string expected =
      prolog +
      "\t<embeddedSource id=\"none\">\n\t\t<names></names>\n\t\t<types></types>\n"
      "\t\t<row/>\n\t</embeddedSource>\n" +
      sourceText("rowless", "a", "string", {}) +
      sourceText("texts", "n;t", "string;string",
                 {";a\xCD\xBE"
                  "b",
                  store.GetValueAsString("texts", "n", 1) + ";",
                  "-0.5;x&lt;y &amp; &quot;z&quot;\xEF\xBF\xBDü\xEF\xBF\xBD", ";8"}) +
      end;
  EXPECT_EQ(out, expected);
  unsigned size = 0;
  const std::unique_ptr<unsigned char[]> stream(store.GetDataStream(size));
  const std::string ofStream = documentOf({reinterpret_cast<const char*>(stream.get()), size});
  EXPECT_EQ(ofStream, std::regex_replace(out, std::regex("a\xCD\xBE"), "a,"));

  // All of it is read again where it is asked for, and no more is in a stream than numbers.
  VarDataProcessor all;
  ASSERT_TRUE(XmlDataHandler::ReadStore(out, all, XmlDataHandler::Keep::All));
  std::string back;
  ASSERT_TRUE(XmlDataHandler::WriteStore(all, back));
  EXPECT_EQ(back, out);
  EXPECT_NE(again(out).find("<row>-0.5;0</row>"), std::string::npos);

  // An empty row counts there, unless it lies in another.
  all.Reset();
  ASSERT_TRUE(
      XmlDataHandler::ReadStore("<embeddedSource id=\"s\"><names>a;b</names><row/><row>x; 1 "
                                "</row><row>;2<row/>3;</row></embeddedSource>",
                                all, XmlDataHandler::Keep::All));
  EXPECT_EQ(all.GetValueAsString("s", "a", 1), "x");
  EXPECT_EQ(all.GetValueAsString("s", "b", 1), "1");
  EXPECT_EQ(all.GetValueAsString("s", "b", 2), "2");

  const std::size_t limit = zlib1211tavo::getInflateLimit();
  zlib1211tavo::setInflateLimit(out.size() - 1);
  EXPECT_FALSE(XmlDataHandler::WriteStore(store, back));
  zlib1211tavo::setInflateLimit(limit);
}

// A row of cells in front and behind, for a column that is read and written again.
TEST(XmlData, KeepsTextsThatLookLikeSomethingElse) {
  struct Row {
    const char* cells;
    const char* again;  // null for the same
  };
  const Row rows[] = {
      {"007 1.50 8", nullptr},  // a code makes texts of the column
      {"8 1.50 +5", nullptr},
      {"1.50 -007 1e3", nullptr},
      {"12345678901234567890 1.50", nullptr},
      {"1.50 1e3 0.50 -0.5 .5", "1.5 1000 0.5 -0.5 0.5"},
      {"9007199254740992 0 -0 100000000000000000000", "9007199254740992 0 0 1e+20"},
      {"inf 1.50", "inf 1.5"},
      {"+-5 nan 0x10 1e999 1.50", "+-5 nan 0x10 1e999 1.5"},
      {"a\xCD\xBE\xCD\xBE"
       "b",
       nullptr},
      {"a&#xD;", nullptr},
      {"&#65x;", "&amp;#65x"},
  };
  for (const auto& [cells, again] : rows) {
    const auto documentWith = [](const std::string& texts) {
      std::vector<std::string> lines;
      std::istringstream in(texts);
      for (std::string text; in >> text;) lines.push_back("x;" + text);
      return prolog + sourceText("s", "a;b", "string;string", lines) + end;
    };
    VarDataProcessor store;
    ASSERT_TRUE(XmlDataHandler::ReadStore(documentWith(cells), store, XmlDataHandler::Keep::All));
    std::string out;
    ASSERT_TRUE(XmlDataHandler::WriteStore(store, out));
    EXPECT_EQ(out, documentWith(again ? again : cells));
    EXPECT_EQ(store.GetValueAsString("s", "b", 0).find("\xCD"), std::string::npos);
  }
}

TEST(XmlData, GivesItsOwnFormAsItIs) {
  const std::string text = "no document";
  const std::string stream = streamOf(prolog + sourceText("s", "a", "string", {"1"}) + end);
  std::string out = "old";
  EXPECT_TRUE(XmlDataHandler(text).GetXmlData(out, false));
  EXPECT_EQ(out, text);
  EXPECT_TRUE(XmlDataHandler(text).GetXmlData(out, true));
  EXPECT_EQ(out, packed(text));
  const std::string compressed = out;
  EXPECT_TRUE(XmlDataHandler(compressed).GetXmlData(out, true));
  EXPECT_EQ(out, compressed);
  EXPECT_TRUE(XmlDataHandler(compressed).GetXmlData(out, false));
  EXPECT_EQ(out, text);

  const auto length = static_cast<unsigned>(stream.size());
  unsigned size = 0;
  const std::unique_ptr<unsigned char[]> copy(
      XmlDataHandler(bytesOf(stream), length).GetDataStream(size));
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(copy.get()), size), stream);
  EXPECT_TRUE(XmlDataHandler(bytesOf(stream), length).GetXmlData(out, true));
  EXPECT_EQ(out, packed(documentOf(stream)));

  out = "old";
  EXPECT_FALSE(XmlDataHandler(bytesOf(stream), length - 1).GetXmlData(out, false));
  EXPECT_FALSE(XmlDataHandler(bytesOf(stream), 0).GetXmlData(out, false));
  EXPECT_FALSE(XmlDataHandler(nullptr, length).GetXmlData(out, false));
  EXPECT_FALSE(XmlDataHandler("").GetXmlData(out, false));
  EXPECT_EQ(out, "old");
  EXPECT_EQ(XmlDataHandler(nullptr, length).GetDataStream(size), nullptr);
}

TEST(XmlData, HasItsStepsForCallers) {
  XmlDataHandler handler(nullptr, 0);
  EXPECT_EQ(handler.CountRows("<row>1</row><row/><row></row></embeddedSource><row>"), 2u);
  EXPECT_EQ(handler.CountRows("<row></row></source>"), 0u);
  EXPECT_EQ(handler.CountRows("</embeddedSource><row></embeddedSource>"), 0u);
  EXPECT_EQ(handler.Count_1_4_Rows("<row></row></source><row>"), 1u);
  std::string name = "old";
  handler.ExtractName("a &amp; b\"c\"", name);
  EXPECT_EQ(name, "a &amp; b");
  handler.ExtractName("no end", name);
  EXPECT_EQ(name, "");

  VarDataProcessor store;
  store.AddDataSource("s", 0);
  handler.ProcessRow(store, "s", {"a", "b"}, 1000, "<row>1;2</row>");
  handler.ProcessRow(store, "s", {"a"}, 1, "<row>3;4</row>");
  handler.ProcessRow(store, "s", {"a"}, 2, "<row>5");
  handler.ProcessRow(store, "s", {"a"}, 2, "<ro");
  handler.ProcessRow(store, "none", {"a"}, 2, "<row>5</row>");
  handler.Process_1_4_Row(store, "s", 3, "<row><dataValue name=\"a\">6</dataValue></row>");
  EXPECT_EQ(store.GetRowCount("s"), 1001u);
  const char* cells[] = {"", "3", "", "6"};
  for (unsigned row = 0; row < 4; ++row) {
    EXPECT_EQ(store.GetValueAsString("s", "a", row), cells[row]) << row;
  }
  EXPECT_EQ(store.GetValueAsString("s", "b", 1000), "2");
  EXPECT_EQ(store.GetCapacity("none"), 0u);
}

TEST(XmlData, TakesNoMoreMemoryThanTheLimit) {
  const std::size_t limit = zlib1211tavo::getInflateLimit();
  zlib1211tavo::setInflateLimit(std::size_t(1) << 20);
  std::string names = "a";
  std::string cells = "1";
  for (int i = 0; i < 1000; ++i) {
    names += ";a" + std::to_string(i);
    cells += ";1";
  }
  const auto rows = [](int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "<row></row>";
    return text + "</embeddedSource>";
  };
  const std::string source = "<embeddedSource id=\"s\"><names>";
  const std::string wide = source + names + "</names><row>" + cells + "</row>";
  EXPECT_FALSE(streamOf(wide + rows(50)).empty());
  EXPECT_TRUE(streamOf(wide + rows(200)).empty());
  // Nor does a second source of the same name, whose rows the columns of the first would get.
  EXPECT_FALSE(streamOf(wide + rows(0) + source + "a</names>" + rows(20)).empty());
  EXPECT_TRUE(streamOf(wide + rows(0) + source + "a</names>" + rows(200)).empty());
  zlib1211tavo::setInflateLimit(limit);
}

}  // namespace
