// A chart and its data, apart and together again.
#include "charttransformer.h"

#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <set>

#include <xercesc/dom/DOM.hpp>

#include "testsupport.h"
#include "zlib1211tavo.h"

using namespace xercesc;

namespace {

const std::string first =
    "<embeddedSource id=\"a\"><names>x;y</names><row>1;&lt;</row></embeddedSource>";
const std::string second = "<embeddedSource id=\"b\"><row>2</row></embeddedSource>";

std::string inflated(const std::string& text) {
  std::string result;
  EXPECT_TRUE(zlib1211tavo::decompressString(result, text));
  return result;
}

std::string packed(const std::string& text) {
  std::string result;
  EXPECT_TRUE(zlib1211tavo::compressString(text, result));
  return result;
}

// The content between a root's tags.
std::string content(const std::string& text) {
  const std::size_t start = text.find('>', text.find("xmlns")) + 1;
  return text.substr(start, text.rfind("</") - start);
}

// Empty without a stream.
std::string streamOf(ChartTransformer& chart) {
  unsigned long size = 99;
  const std::unique_ptr<unsigned char[]> stream(chart.getCompressedDataStream(size));
  EXPECT_EQ(stream == nullptr, size == 0);
  return {reinterpret_cast<const char*>(stream.get()), size};
}

const unsigned char* bytesOf(const std::string& stream) {
  return reinterpret_cast<const unsigned char*>(stream.data());
}

TEST(Transformer, PutsPlaceholdersForEmbeddedSources) {
  ChartTransformer chart(chartText(first + second + "<graph id=\"g\"/><userSource id=\"u\"/>"));
  EXPECT_EQ(content(chart.getXML(nullptr)),
            "<graph id=\"g\"/><userSource id=\"u\"/><userSource id=\"a\"/><userSource id=\"b\"/>");
  EXPECT_EQ(content(chart.getEntireXML(nullptr)),
            "<graph id=\"g\"/><userSource id=\"u\"/>" + first + second);
  EXPECT_EQ(content(inflated(chart.getCompressedData())),
            "<userSource id=\"u\"/>" + first + second);
}

TEST(Transformer, CopiesTheOtherKindsInOrder) {
  const std::string others =
      "<streamingSource id=\"s\"/><delimitedFileSource id=\"f\"/><databaseSource id=\"d\"/>";
  ChartTransformer chart(chartText(others + first));
  EXPECT_EQ(content(inflated(chart.getCompressedData())),
            "<databaseSource id=\"d\"/><delimitedFileSource id=\"f\"/><streamingSource id=\"s\"/>" +
                first);
  ChartTransformer external(chartText(others));
  EXPECT_EQ(content(external.getXML(nullptr)), others);
  EXPECT_NE(external.getCompressedData(), "");
}

TEST(Transformer, KeepsChartsWithoutSourcesAsTheyAre) {
  const std::string text =
      chartText("<graph id=\"g\"/>", "<!-- before --><?pi data?>") + "<!-- after -->";
  ChartTransformer chart(text);
  EXPECT_EQ(chart.getEntireXML(nullptr), chart.getXML(nullptr));
  EXPECT_EQ(chart.getCompressedData(), "");
  EXPECT_EQ(chart.getDataDocument(), nullptr);
  EXPECT_NE(chart.getXML(nullptr).find("<!-- before --><?pi data?><visualization"),
            std::string::npos);
}

TEST(Transformer, LosesNothingAroundTheRoot) {
  const std::string prefixed = "<o:embeddedSource xmlns:p=\"urn:p\" p:x=\"1\" id=\"a\"/>";
  ChartTransformer chart(chartText("<!-- in --> " + first + "<?in pi?>", "<!-- before -->",
                                   " xmlns:o=\"urn:o\" o:free=\"1\"") +
                         "<?after all?>");
  ChartTransformer again(chart.getCompressedXML(), chart.getCompressedData());
  const std::string text = again.getEntireXML(nullptr);
  EXPECT_EQ(content(text), "<!-- in --><?in pi?>" + first);
  EXPECT_NE(text.find("?><!-- before --><visualization"), std::string::npos);
  EXPECT_NE(text.find(" xmlns:o=\"urn:o\""), std::string::npos);
  EXPECT_NE(text.find("</visualization><?after all?>"), std::string::npos);
}

TEST(Transformer, KeepsThePrefixesOfItsData) {
  const std::string text =
      "<c:visualization xmlns:c='" CHARTXML_HOST
      "/visualization' "
      "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='" CHARTXML_HOST
      "/visualization " CHARTXML_HOST
      "/visualization/grafo-2.9.xsd'>"
      "<c:embeddedSource id='a'><c:row>1</c:row></c:embeddedSource></c:visualization>";
  ChartTransformer chart(text);
  EXPECT_EQ(content(chart.getXML(nullptr)), "<c:userSource id=\"a\"/>");
  EXPECT_EQ(content(chart.getEntireXML(nullptr)),
            "<c:embeddedSource id=\"a\"><c:row>1</c:row></c:embeddedSource>");
  EXPECT_TRUE(ChartBase::ValidXML(chart.getEntireXML(nullptr)));
}

// What is merged can be opened, and is of the chart's version.
TEST(Transformer, MergesWhatCanBeOpened) {
  const std::string first =
      " xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:schemaLocation='" CHARTXML_HOST
      "/visualization " CHARTXML_HOST "/visualization/grafo-2.9.xsd'";
  const std::string viz = "='" CHARTXML_HOST "/visualization'";
  const std::string source = "<embeddedSource id='a'><names>x</names><row>1</row></embeddedSource>";
  const std::string prefixed =
      "<c:embeddedSource id='a'><c:names>x</c:names><c:row>1</c:row></c:embeddedSource>";
  const std::string texts[] = {
      "<visualization xmlns" + viz + first + ">" + source + "</visualization>",
      "<c:visualization xmlns:c" + viz + " xmlns='urn:other'" + first + ">" + prefixed +
          "</c:visualization>",
      "<c:visualization xmlns:c" + viz + first + ">" + prefixed + "</c:visualization>",
      "<?xml version='1.1'?><visualization xmlns" + viz + first +
          "><embeddedSource id='a'><names>&#x1;</names><row>1</row></embeddedSource>"
          "</visualization>"};
  for (const std::string& text : texts) {
    ASSERT_TRUE(ChartBase::ValidXML(text)) << text;
    ChartTransformer chart(text);
    const std::string entire = chart.getEntireXML(nullptr);
    EXPECT_TRUE(ChartBase::ValidXML(entire)) << entire;
    EXPECT_NE(entire.find("id=\"a\""), entire.npos) << entire;
    EXPECT_EQ(entire.find("&#x1;") != entire.npos, text.find("&#x1;") != text.npos);
    EXPECT_NE(chart.getDataDocument(), nullptr);
    // The data of a stream has no prefixes, other data may have its own.
    const std::string stream = streamOf(chart);
    ChartTransformer other(chart.getCompressedXML(), bytesOf(stream), stream.size());
    EXPECT_TRUE(ChartBase::ValidXML(other.getEntireXML(nullptr))) << other.getEntireXML(nullptr);
    std::string data = inflated(chart.getCompressedData());
    data = std::regex_replace(data, std::regex("(</?)(c:)?(embeddedSource|names|row)"), "$1d:$3");
    data.insert(data.find(" xmlns"), " xmlns:d" + viz);
    ChartTransformer third(chart.getCompressedXML(), packed(data));
    const std::string merged = third.getEntireXML(nullptr);
    EXPECT_TRUE(ChartBase::ValidXML(merged)) << merged;
    EXPECT_NE(merged.find("<d:row>1</d:row>"), merged.npos) << merged;
  }
}

TEST(Transformer, GivesSourcesWithoutAnIdOne) {
  ChartTransformer chart(
      chartText("<embeddedSource><row>1</row></embeddedSource>"
                "<embeddedSource><row>2</row></embeddedSource>"));
  EXPECT_EQ(content(chart.getEntireXML(nullptr)),
            "<embeddedSource id=\"source1\"><row>1</row></embeddedSource>"
            "<embeddedSource id=\"source2\"><row>2</row></embeddedSource>");
}

TEST(Transformer, DropsPlaceholdersThatTheDataLacks) {
  ChartTransformer chart(chartText(first));
  const std::string data = chart.getCompressedData();
  ChartTransformer other(
      packed(chartText("<userSource id=\"none\"/><userSource id=\"a\"/><graph id=\"g\"/>")), data);
  EXPECT_EQ(content(other.getEntireXML(nullptr)), first + "<graph id=\"g\"/>");
  EXPECT_EQ(inflated(other.getCompressedData()), inflated(data));
}

TEST(Transformer, ComesBackFromItsCompressedForms) {
  for (const std::string& file : exampleFiles()) {
    ChartTransformer chart(readFile(file));
    const std::string entire = chart.getEntireXML(nullptr);
    ASSERT_NE(entire, "") << file;
    ChartTransformer again(chart.getCompressedXML(), chart.getCompressedData());
    EXPECT_EQ(again.getXML(nullptr), chart.getXML(nullptr)) << file;
    EXPECT_EQ(again.getEntireXML(nullptr), entire) << file;
    EXPECT_EQ(again.getCompressedData(), chart.getCompressedData()) << file;

    ChartTransformer whole(entire);
    EXPECT_EQ(whole.getXML(nullptr), chart.getXML(nullptr)) << file;
    EXPECT_EQ(whole.getEntireXML(nullptr), entire) << file;
    ChartBase base;
    const DOMDocument* data = chart.getDataDocument();
    EXPECT_EQ(data == nullptr, chart.getCompressedData().empty()) << file;
    if (data) {
      EXPECT_TRUE(data->isEqualNode(whole.getDataDocument())) << file;
    }
  }
}

TEST(Transformer, AnswersEmptyWithoutAChart) {
  const std::string data = packed("not a data document");
  struct Case {
    std::string chart;
    std::string data;
  };
  const Case cases[] = {{"", ""},
                        {chartText(), data},  // not compressed
                        {"x", data},          // no stream
                        {packed(""), data},   // read as it stands, which is no XML
                        {packed("<broken"), data}};
  for (const Case& each : cases) {
    ChartTransformer chart(each.chart, each.data);
    EXPECT_EQ(chart.getXML(nullptr), "");
    EXPECT_EQ(chart.getEntireXML(nullptr), "");
    EXPECT_EQ(chart.getCompressedXML(), "");
    EXPECT_EQ(chart.getDataDocument(), nullptr);
    EXPECT_EQ(chart.getCompressedData(), each.data);
  }
  EXPECT_EQ(ChartTransformer("").getXML(nullptr), "");
  EXPECT_EQ(ChartTransformer("<broken").getXML(nullptr), "");
}

TEST(Transformer, ShowsPlaceholdersWhenTheDataIsDamaged) {
  ChartTransformer chart(chartText(first));
  for (const std::string& data : {std::string(), std::string("x"), packed("<a"), packed("")}) {
    ChartTransformer other(chart.getCompressedXML(), data);
    EXPECT_EQ(other.getEntireXML(nullptr), chart.getXML(nullptr));
  }
}

TEST(Transformer, TellsWhetherItsDataIsWhole) {
  const std::string text = chartText(first + second);
  ChartTransformer whole(text);
  EXPECT_TRUE(whole.isDataWhole());
  const std::string chart = whole.getCompressedXML();
  const std::string data = whole.getDataXML();
  const std::string oneOfTwo = ChartTransformer(chartText(first)).getDataXML();
  const std::size_t limit = zlib1211tavo::getInflateLimit();
  const struct {
    std::string packedData;
    std::size_t limit;
    bool isWhole;
  } cases[] = {{packed(data), limit, true},
               {packed(data), data.size() - 1, false},
               {"", limit, true},
               {"x", limit, false},
               {packed("no document"), limit, false},
               {packed(text), limit, false},
               {packed(oneOfTwo), limit, false}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.packedData.size());
    for (const bool isMergedFirst : {false, true}) {
      ChartTransformer other(chart, each.packedData);
      zlib1211tavo::setInflateLimit(each.limit);
      const std::string merged = isMergedFirst ? other.getEntireXML(nullptr) : "";
      EXPECT_EQ(other.isDataWhole(), each.isWhole);
      const bool isMerged = isMergedFirst && each.isWhole && !each.packedData.empty();
      EXPECT_TRUE(!isMerged || merged == text) << merged;
      zlib1211tavo::setInflateLimit(limit);
      EXPECT_FALSE(other.isOutOfMemory());
    }
  }
  EXPECT_FALSE(ChartTransformer(chart, bytesOf("damaged"), 7).isDataWhole());
  EXPECT_TRUE(ChartTransformer(chart, nullptr, 7).isDataWhole());
  EXPECT_FALSE(ChartTransformer("", packed("no document")).isDataWhole());
}

// Neither as text nor compressed by the library itself does the limit of inflated texts hold for
// it.
TEST(Transformer, TakesAndGivesItsDataAsText) {
  const std::string text = chartText(first + second);
  ChartTransformer chart(text);
  const std::string data = chart.getDataXML();
  EXPECT_EQ(inflated(chart.getCompressedData()), data);
  ChartTransformer other(chart.getCompressedXML(), "damaged");
  EXPECT_EQ(other.getDataXML(), "");
  const std::size_t limit = zlib1211tavo::getInflateLimit();
  zlib1211tavo::setInflateLimit(100);
  // As it would be after a walk over blanks and quotes.
  std::string spelled = data;
  spelled.replace(spelled.find("<row>1"), 0, "\n  ");
  other.setDataXML(spelled);
  EXPECT_EQ(other.getEntireXML(nullptr), text);
  EXPECT_EQ(other.getDataXML(), data);
  const std::string packedData = other.getCompressedData();
  EXPECT_EQ(other.getDataXML(), data);
  EXPECT_EQ(other.getCompressedData(), packedData);
  zlib1211tavo::setInflateLimit(limit);
  EXPECT_EQ(inflated(packedData), data);
}

TEST(Transformer, TakesAndGivesItsDataAsAStream) {
  const std::string source =
      "<embeddedSource id=\"a\"><names>y;x&amp;y</names><row>;1.5</row><row>3;</row>"
      "</embeddedSource>";
  ChartTransformer chart(chartText(source + "<graph id=\"g\"/>"));
  const std::string stream = streamOf(chart);
  ASSERT_NE(stream, "");
  EXPECT_EQ(streamOf(chart), stream);

  // However the chart is written
  const std::string texts[] = {
      "<embeddedSource id='a'><!-- <row>7;8</row> --><names>y<!-- ; -->;x&amp;y</names>"
      "<row>;<![CDATA[1.5]]></row><row>3;<!-- 4 --></row></embeddedSource><graph id='g'/>",
      "<!-- --><v:embeddedSource id='a'><v:names>y;x&amp;y</v:names><v:row>;1.5</v:row>"
      "<v:row>3;</v:row></v:embeddedSource><v:graph id='g'/>",
      "<embeddedSource id='a'><names>y;x&amp;y</names><?x <row>7;8</row>?>"
      "<row xmlns='" CHARTXML_HOST
      "/visualization'>;1.5</row><row>3<?x ;?>;</row>"
      "</embeddedSource><graph id='g'/>"};
  for (const std::string& text : texts) {
    std::string written = chartText(text);
    if (text.find("v:") != text.npos) {
      written = std::regex_replace(written, std::regex("(</?)visualization"), "$1v:visualization");
      written = std::regex_replace(written, std::regex("xmlns="), "xmlns:v=");
    }
    ChartTransformer other(written);
    EXPECT_EQ(streamOf(other), stream) << written;
  }

  // The older form of data, however it is written
  const std::string older =
      "<g:graphSources xmlns:g=\"" CHARTXML_HOST "/tavo/visualization\" xmlns=\"" CHARTXML_HOST
      "/visualization\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
      "xsi:schemaLocation=\"" CHARTXML_HOST "/tavo/visualization " CHARTXML_HOST
      "/tavo/visualization/grafo-data-1.0.xsd\">"
      "<source id=\"a\"><row><dataValue name=\"x\">1</dataValue></row>"
      "<row><dataValue name=\"x\">3</dataValue></row></source></g:graphSources>";
  const std::string marked = std::regex_replace(
      std::regex_replace(older, std::regex("<row><data"),
                         "<?x <row/>?><row xmlns='" CHARTXML_HOST "/visualization'><!-- --><data"),
      std::regex(">3"), "><![CDATA[3]]>");
  const std::string prefixed =
      std::regex_replace(std::regex_replace(older, std::regex("(</?)([srd])"), "$1o:$2"),
                         std::regex("xmlns="), "xmlns:o=");
  std::set<std::string> olderStreams;
  for (const std::string& text : {older, marked, prefixed}) {
    ChartTransformer other(chart.getCompressedXML(), packed(text));
    olderStreams.insert(streamOf(other));
  }
  EXPECT_EQ(olderStreams.size(), 1U);
  EXPECT_FALSE(olderStreams.contains(""));

  // Rows whose only cell is missing keep their place.
  ChartTransformer gaps(
      chartText("<embeddedSource id=\"a\"><names>x</names><row>1</row><row></row><row>3</row>"
                "</embeddedSource><graph id=\"g\"/>"));
  const std::string gapStream = streamOf(gaps);
  ChartTransformer gapsAgain(gaps.getCompressedXML(), bytesOf(gapStream), gapStream.size());
  EXPECT_NE(gapsAgain.getEntireXML(nullptr).find("<row>1</row><row></row><row>3</row>"),
            std::string::npos);

  ChartTransformer again(chart.getCompressedXML(), bytesOf(stream), stream.size());
  EXPECT_EQ(again.getXML(nullptr), chart.getXML(nullptr));
  EXPECT_NE(again.getDataDocument(), nullptr);
  const std::string entire = again.getEntireXML(nullptr);
  EXPECT_NE(entire.find("<names>x&amp;y;y</names>"), std::string::npos) << entire;
  EXPECT_NE(entire.find("<row>1.5;</row>"), std::string::npos);
  EXPECT_TRUE(ChartBase::ValidXML(entire));
  EXPECT_EQ(streamOf(again), stream);

  // The document is kept from now on, and the stream with it.
  const std::string data = again.getCompressedData();
  EXPECT_NE(inflated(data).find("<row>1.5;</row>"), std::string::npos);
  EXPECT_EQ(again.getCompressedData(), data);
  EXPECT_EQ(again.getEntireXML(nullptr), entire);
  EXPECT_EQ(streamOf(again), stream);
  ChartTransformer other(chart.getCompressedXML(), data);
  EXPECT_EQ(streamOf(other), stream);
}

TEST(Transformer, HasNoStreamWithoutData) {
  ChartTransformer chart(chartText("<userSource id=\"u\"/>"));
  EXPECT_EQ(streamOf(chart), "");  // no embedded data
  ChartTransformer empty("");
  EXPECT_EQ(streamOf(empty), "");
  const std::string compressed = packed(chartText(first));
  const std::string damaged = "damaged";
  for (const std::size_t size : {std::size_t(0), damaged.size()}) {
    ChartTransformer other(compressed, bytesOf(damaged), size);
    EXPECT_NE(other.getXML(nullptr), "");
    EXPECT_EQ(other.getDataDocument(), nullptr);
    EXPECT_EQ(other.getCompressedData(), "");
    EXPECT_EQ(streamOf(other), damaged.substr(0, size));
  }
  ChartTransformer null(compressed, nullptr, 7);
  EXPECT_EQ(null.getDataDocument(), nullptr);
  EXPECT_EQ(streamOf(null), "");
  // Neither a plain chart nor one that is empty inside is read.
  for (const std::string& text : {std::string(), chartText(first), packed(""), packed("<broken")}) {
    ChartTransformer none(text, bytesOf(damaged), damaged.size());
    EXPECT_EQ(none.getXML(nullptr), "");
    EXPECT_EQ(streamOf(none), damaged);
  }
}

TEST(Transformer, CompressesAnyDocument) {
  ChartTransformer chart(chartText(first));
  EXPECT_EQ(inflated(chart.compressDocument(nullptr)), "");
  DOMDocument* empty = chart.createDataDocument(nullptr);
  EXPECT_TRUE(ChartBase::ValidXML(inflated(chart.compressDocument(empty))));
  chart.releaseDocument(empty);
}

TEST(Transformer, TellsWhatATemplatePassedOver) {
  ChartTransformer chart(chartText(first));
  const auto templateText = [](const std::string& body) {
    return "<template xmlns='" CHARTXML_HOST
           "/tavo/visualization' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
           "xsi:schemaLocation='" CHARTXML_HOST "/tavo/visualization " CHARTXML_HOST
           "/tavo/visualization/grafo-template-2.10.xsd'>" +
           body + "</template>";
  };
  std::vector<std::size_t> passedOver{7};
  // False answers of commands are none of it, nor are texts and comments.
  EXPECT_TRUE(chart.applyTemplate(
      templateText("<bogus/><!-- --><setAxisInterval role='no'/>text<style/><setAxisMargin/>"),
      passedOver));
  EXPECT_EQ(passedOver, (std::vector<std::size_t>{0, 2}));
  EXPECT_TRUE(chart.applyTemplate(templateText(""), passedOver));
  EXPECT_EQ(passedOver.size(), 0u);
  EXPECT_FALSE(ChartTransformer("").applyTemplate(templateText("<bogus/>"), passedOver));
}

TEST(Compression, RefusesWhatIsNotOneWholeStream) {
  const std::string text(100000, 'a');
  const std::string stream = packed(text);
  std::string out;
  EXPECT_TRUE(zlib1211tavo::decompressString(out, stream, text.size()));
  EXPECT_EQ(out, text);
  EXPECT_FALSE(zlib1211tavo::decompressString(out, stream, text.size() - 1));
  EXPECT_FALSE(zlib1211tavo::decompressString(out, stream, text.size() + 1));
  EXPECT_FALSE(zlib1211tavo::decompressString(out, stream, ~0ul));
  EXPECT_EQ(out, "");
  EXPECT_FALSE(zlib1211tavo::decompressString(out, stream + "x"));
  for (std::size_t i = 0; i < stream.size(); ++i) {
    EXPECT_FALSE(zlib1211tavo::decompressString(out, stream.substr(0, i)));
  }
}

TEST(Compression, HasALimit) {
  const std::size_t limit = zlib1211tavo::getInflateLimit();
  const std::string text(10000, 'a');
  const std::string stream = packed(text);
  std::string out;
  for (const auto& [bytes, isTaken] :
       {std::pair<std::size_t, bool>{9999, false}, {10000, true}, {~0ul, true}}) {
    zlib1211tavo::setInflateLimit(bytes);
    EXPECT_EQ(zlib1211tavo::decompressString(out, stream), isTaken);
    EXPECT_EQ(zlib1211tavo::decompressString(out, stream, text.size()), isTaken);
  }
  zlib1211tavo::setInflateLimit(limit);
}

}  // namespace
