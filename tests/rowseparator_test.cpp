// Rows that no parser reads: whatever is seen of a chart is the same as if one had read them.
#include "rowseparator.h"

#include <gtest/gtest.h>

#include <random>

#include "bothroads.h"
#include "zlib1211tavo.h"

namespace {

void expectTheSame(const std::string& text) {
  const bothroads::Seen seen = bothroads::both(text);
  EXPECT_TRUE(seen.separated == seen.read) << text << seen.separated << "\n\n" << seen.read;
}

std::string sourceText(const std::string& rows, const std::string& tag = " id='a'") {
  return "<embeddedSource" + tag + "><names>x;y</names>" + rows + "</embeddedSource>";
}

class Rows : public testing::Test {
 protected:
  std::size_t below(std::size_t bound) { return random_() % bound; }

  const ChartBase holder_;
  std::mt19937 random_{15};
};

TEST_F(Rows, OfAllExamplesAreTakenOut) {
  for (const std::string& file : exampleFiles()) {
    const std::string text = readFile(file);
    rowseparator::Separated rows;
    // One has data of the older form.
    const bool isSeparated = rowseparator::separate(text, rows);
    ASSERT_EQ(isSeparated, text.find("<source ") == text.npos) << file;
    if (!isSeparated) continue;
    EXPECT_EQ(rows.rest.find("<row"), rows.rest.npos);
    EXPECT_EQ(rows.ends.back(), rows.size);
    expectTheSame(text);
  }
}

struct Case {
  std::string text;
  bool isSeparated;
};

// Some would be the same charts if their rows were taken out; those need no other road.
TEST_F(Rows, OutOfTheOrdinaryStay) {
  const std::string row = "<row>1;2</row>";
  const std::string plain = sourceText(row);
  const std::string wide =
      "\xD0\x9C\xE6\xB0\x94\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF\xEF\xBF\xBD\xC2\x80";
  const std::string declared = chartText(plain);
  const std::string body = declared.substr(declared.find("?>") + 2);
  const std::vector<Case> cases = {
      {declared, true},
      {body, true},
      {"<?xml version='1.0' encoding='utf-8' standalone='no' ?>\n" + body, true},
      {"<?xml version='1.0' encoding='UTF-8' standalone='yes'?>" + body, false},
      {"<?xml version='1.0' encoding='ISO-8859-1'?>" + body, false},
      {"<?xml version='1.1'?>" + body, false},
      {"\xEF\xBB\xBF" + body, false},
      {" " + body, false},
      {chartText(plain, "<!DOCTYPE visualization>"), false},
      {chartText(plain, "<!DOCTYPE visualization [<!ATTLIST row x CDATA 'd'>]>"), false},
      {chartText(plain, "<!-- <row>--><?pi <row>?>"), true},
      {chartText("<!-- " + plain + " -->"), false},
      {chartText("<!-->" + plain + "-->"), false},
      {chartText(sourceText("<row><![CDATA[" + plain + "]]></row>")), false},
      {chartText("<labelFrame id='f'><label><text><![CDATA[" + plain +
                 "]]></text></label></labelFrame>"),
       false},
      {chartText("<labelFrame id='f" + plain + "'/>"), false},
      {chartText("<style id='>'/><style id=\"'\"/>" + plain + "<?pi?><!-- after -->"), true},
      {chartText(plain + sourceText(row, " id='b'") + "<embeddedSource/>"), true},
      {chartText("<userSource id='u' /><databaseSource id='d'/>" + plain), true},
      {chartText("<embeddedSource id='a'>" + row + "<names>x</names></embeddedSource>"), false},
      {chartText("<embeddedSource>" + row + "</embeddedSource>" + plain), true},
      {chartText("<embeddedSource><row/></embeddedSource><userSource id='a'/>"), true},
      {chartText("<embeddedSource id='a'>&#32;" + row + "</embeddedSource>"), true},
      {chartText(sourceText("<?pi?><!-- c -->" + row)), true},
      {chartText(sourceText(row + "<!-- c -->")), false},
      {chartText(sourceText(row + "x" + row)), false},
      {chartText(sourceText(row + " \r\n\t" + row + "<row/>\n<row></row>\r")), true},
      {chartText(sourceText(row + "<row >3</row>")), false},
      {chartText(sourceText("<row >3</row>" + row)), true},
      {chartText(sourceText("<row x='1'>3</row>" + row)), true},
      {chartText(sourceText("<row>1<row>2</row></row>")), false},
      {chartText(sourceText("<row>1</row ><row>2</row>")), false},
      {chartText(sourceText(row) + "</embeddedSource>"), true},
      {chartText(sourceText("<names>" + row + "</names>")), false},
      {chartText("<graph id='g'>" + plain + "</graph>"), false},
      {chartText(sourceText(row, " id = \"a\" ")), true},
      {chartText(sourceText(row, " id='a' xmlns='urn:x'")), false},
      {chartText(sourceText(row, " id='a' xsi:type='source'")), false},
      {chartText(sourceText(row, " ID='a'")), false},
      {chartText(sourceText(row, " id='a&#10;&lt;b'")), true},
      {chartText(sourceText(row, " id='a' id='a'")), false},
      {chartText(plain + plain), true},
      {chartText("<extension xmlns:c='" CHARTXML_HOST "/visualization'/>" + plain), true},
      {chartText("<c:embeddedSource xmlns:c='" CHARTXML_HOST
                 "/visualization' id='c'><c:row>1</c:row></c:embeddedSource>" +
                 plain),
       false},
      {chartText(plain, "", " xmlns:gs='urn:gs' gs:x='1'"), true},
      {chartText("<style id='s' xsi:schemaLocation='urn:x urn:y'/>" + plain), false},
      {chartText(plain + "<style id='s' width='not one'/>"), true},
      {chartText(plain + "<bogus/>"), true},
      {chartText(plain) + "<second/>", false},
      {chartText(plain) + "<visualization/>", false},
      {"<gs:graphSources xmlns='" CHARTXML_HOST "/visualization' xmlns:gs='" CHARTXML_HOST
       "/tavo/visualization' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
       "xsi:schemaLocation='" CHARTXML_HOST "/tavo/visualization " CHARTXML_HOST
       "/tavo/visualization/grafo-data-2.1.xsd'>" +
           plain + "</gs:graphSources>",
       false},
      {declared.substr(0, declared.size() - 1), false},
      {declared.substr(0, declared.find("</row")), false},
      {declared.substr(0, declared.find("</embedded")), false},
      {chartText(sourceText("<row>" + wide + "\x7F;\t\n\r\r\n;'\">]>]]</row>")), true},
      {chartText(
           sourceText("<row>&lt;&gt;&amp;&quot;&apos;&#9;&#10;&#13;&#60;&#x3E;&#38;&#34;</row>")),
       true},
      {chartText(sourceText("<row>&#x1F600;&#0000065;&#xfffd;]]&gt;</row>")), true},
      {chartText(sourceText("<row>" + std::string(5000, '"') + "</row>")), true},
      {chartText(sourceText(std::string(100, 'x') + row)), true},
      {chartText(sourceText("<row>]]></row>")), false},
  };
  for (const auto& [text, isSeparated] : cases) {
    EXPECT_EQ(bothroads::isSeparated(text), isSeparated) << text;
    expectTheSame(text);
  }
  const std::string refused[] = {"&",
                                 "&#0;",
                                 "&#xFFFE;",
                                 "&#xD800;",
                                 "&#x110000;",
                                 "&#99999999999;",
                                 "&#X41;",
                                 "&#;",
                                 "&#65",
                                 "&#65x;",
                                 "&x;",
                                 "\x01",
                                 std::string(1, '\0'),
                                 "\x1F",
                                 "\x80",
                                 "\xC1\x81",
                                 "\xC1\x81\xD0\x9C\xD0\x9C\xD0\x9C",
                                 "\xD0\x9C\xD0\x9C\xD0\x9C\xC0\x80",
                                 "\xC3",
                                 "\xE0\x9F\xBF",
                                 "\xED\xA0\x80",
                                 "\xEF\xBF\xBE",
                                 "\xEF\xBF\xBF",
                                 "\xE6\xB0",
                                 "\xF0\x8F\xBF\xBF",
                                 "\xF4\x90\x80\x80",
                                 "\xF5\x80\x80\x80",
                                 "\xF0\x9F\x98",
                                 "\xFF"};
  for (const std::string& bytes : refused) {
    const std::string text = chartText(sourceText("<row>1;" + bytes + "</row>" + row));
    EXPECT_FALSE(bothroads::isSeparated(text)) << text;
    expectTheSame(text);
  }
}

TEST_F(Rows, OfDamagedExamples) {
  for (const std::string& file : exampleFiles()) {
    std::string text = readFile(file);
    // Less of the rows, for the sake of time: the damage is to meet the rest, too.
    const std::size_t cut = text.find("<row>", text.find("<row>") + text.size() / 100);
    text.erase(cut, text.rfind("<row>") - cut);
    for (int i = 0; i < 20; ++i) expectTheSame(text.substr(0, text.size() * i / 20));
    for (int i = 0; i < 50; ++i) {
      std::string damaged = text;
      const std::size_t rows = text.find("</embeddedSource>") + 20;
      damaged[below(i % 2 ? text.size() : rows)] = static_cast<char>(below(256));
      expectTheSame(damaged);
    }
  }
}

TEST_F(Rows, AmongOddMarkup) {
  const std::string pieces[] = {"<!-- c -->",
                                "<![CDATA[<row>]]>",
                                "<?pi x?>",
                                "&amp;",
                                "&#13;",
                                "&apos;",
                                "&bogus;",
                                "&#0;",
                                "]]>",
                                "\r\n",
                                "\r",
                                "\t",
                                "\x01",
                                "\x7F",
                                "\xC2\x85",
                                "\xE2\x80\xA8",
                                "\xEF\xBF\xBE",
                                "\xF0\x9F\x98\x80",
                                "\xED\xA0\x80",
                                "\"",
                                "'",
                                "<",
                                ">",
                                "/",
                                "=",
                                " ",
                                "<row>",
                                "</row>",
                                "<row/>",
                                "<row>1;2</row>",
                                "<row />",
                                "<row a='1'>",
                                "<c:row>1</c:row>",
                                " xmlns='urn:x'",
                                " xmlns:c='" CHARTXML_HOST "/visualization'",
                                " c:free='1'",
                                " id='a'",
                                " id=''",
                                " xsi:type='link'",
                                "<embeddedSource id='z'>",
                                "<embeddedSource>",
                                "</embeddedSource>",
                                "<userSource id='a'/>",
                                "<userSource/>",
                                "<databaseSource id='d'/>",
                                "<names>n</names>",
                                "<types>t</types>",
                                "<style id='s'/>",
                                "<bogus/>",
                                "<!DOCTYPE visualization [<!ENTITY e 'x'>]>",
                                "&e;",
                                "standalone='yes'",
                                "version='1.1'",
                                "\xEF\xBB\xBF",
                                "<source id='o'><row/></source>",
                                "<!-- ",
                                "-->",
                                "<![CDATA[",
                                "?>"};
  const std::string text = chartText(
      "\n<embeddedSource id=\"a\">\n<names>x</names><row>1;\xD0\x9C</row>\n<row>2</row>\n"
      "</embeddedSource><embeddedSource id=\"b\"><row>&lt;</row></embeddedSource>"
      "<userSource id=\"u\"/><graph id=\"g\"/>");
  std::size_t separated = 0;
  for (int run = 0; run < 4000; ++run) {
    std::string odd = text;
    for (std::size_t i = below(3) + 1; i > 0; --i) {
      // Mostly where markup starts or ends, and not within the root's tag.
      std::size_t at = below(8) ? 300 + below(odd.size() - 300) : below(odd.size());
      if (below(4)) at = std::min(odd.find_first_of("<>", at), odd.size() - 1) + below(2);
      if (below(4) == 0) odd.erase(at, below(30));
      odd.insert(std::min(at, odd.size()), pieces[below(std::size(pieces))]);
    }
    separated += bothroads::isSeparated(odd);
    expectTheSame(odd);
    if (HasFailure()) break;
  }
  // Both roads were taken often.
  EXPECT_GT(separated, 800u);
  EXPECT_LT(separated, 3200u);
}

// The limit is for texts from outside.
TEST_F(Rows, ComeBackWhateverTheLimitOfInflatedTexts) {
  const std::string text = chartText(sourceText("<row>1;2</row>"));
  const std::size_t limit = zlib1211tavo::getInflateLimit();
  zlib1211tavo::setInflateLimit(100);
  ChartTransformer chart(text);
  EXPECT_NE(chart.getDataDocument(), nullptr);
  EXPECT_NE(chart.getEntireXML(nullptr).find("<row>1;2</row>"), std::string::npos);
  EXPECT_TRUE(chart.isDataWhole());
  zlib1211tavo::setInflateLimit(limit);
}

// Some characters stand for themselves in one version only.
TEST_F(Rows, AreSpelledAsTheVersionOfTheChartAsks) {
  std::string chart = chartText("<userSource id=\"a\"/>");
  chart.replace(chart.find("1.0"), 3, "1.1");
  std::string packedChart;
  zlib1211tavo::compressString(chart, packedChart);
  ChartTransformer merged(packedChart, std::string());
  merged.setDataXML(ChartTransformer(chartText(sourceText("<row>\xC2\x85</row>"))).getDataXML());
  EXPECT_NE(merged.getEntireXML(nullptr).find("<row>&#x85;</row>"), std::string::npos);
}

}  // namespace
