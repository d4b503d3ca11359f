// The front door: charts as values, their data in three forms, and failures that are thrown.
#include "chart.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "chartproblem.h"
#include "charttransformer.h"
#include "commandcases.h"
#include "plxgraph.h"
#include "plxsources.h"
#include "vardataprocessor.h"
#include "zlib1211tavo.h"

using chartxml::Chart;
using chartxml::Template;

namespace {

const std::string sources =
    "<embeddedSource id=\"a\"><names>x;y</names><types>string;string</types>"
    "<row>1;north</row><row>;2</row></embeddedSource>";

std::string dataText(const std::string& rows, const std::string& id = "a") {
  Chart chart = Chart::parse(chartText("<embeddedSource id=\"" + id + "\"><names>x;y</names>" +
                                       rows + "</embeddedSource>"));
  return chart.data();
}

// What it throws, with the number of problems; "nothing" without.
template <class Work>
std::string thrown(Work work) {
  try {
    work();
  } catch (const chartxml::Error& e) {
    return std::to_string(e.problems().size()) + " " + e.what();
  }
  return "nothing";
}

class TestFolder {
 public:
  TestFolder() { path_ = mkdtemp(path_.data()); }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;
  ~TestFolder() { std::filesystem::remove_all(path_); }
  std::string file(const std::string& name) const { return path_ + '/' + name; }
  std::size_t count() const {
    return std::distance(std::filesystem::directory_iterator(path_), {});
  }

 private:
  std::string path_ = "/tmp/chartxml-test-XXXXXX";
};

TEST(FrontDoor, GivesEveryExampleAsItsPartsDo) {
  for (const std::string& file : exampleFiles()) {
    const std::string text = readFile(file);
    Chart chart = Chart::read(file);
    ChartTransformer parts(text);
    EXPECT_EQ(chart.text(), parts.getEntireXML(nullptr)) << file;
    EXPECT_EQ(chart.textWithoutData(), parts.getXML(nullptr));
    std::string compressed;
    zlib1211tavo::compressString(text, compressed);
    EXPECT_EQ(Chart::parse(compressed).text(), chart.text());
    EXPECT_EQ(chartxml::problemsOf(compressed).size(), 0u);
  }
}

TEST(FrontDoor, ThrowsWhyATextWasRefused) {
  const TestFolder folder;
  const std::string bad = folder.file("bad.xml");
  std::ofstream(bad) << chartText("\n<graph>\n<b/></graph>");
  EXPECT_EQ(thrown([] { Chart::parse(""); }), "1 the text is empty");
  EXPECT_EQ(thrown([] { Chart::parse("x"); }), "1 is no whole compressed text");
  EXPECT_EQ(thrown([] { Chart::parse(dataText("")); }),
            "1 'gs:graphSources' is the root of no chart");
  EXPECT_EQ(thrown([&] { Chart::read(bad); }),
            "1 " + bad + ":3:5: no declaration found for element 'b'");
  EXPECT_EQ(thrown([&] { Chart::read(bad + "x"); }), "1 " + bad + "x: No such file or directory");
  EXPECT_EQ(thrown([&] { Template::read(bad + "x"); }),
            "1 " + bad + "x: No such file or directory");
  EXPECT_EQ(thrown([] { Template::parse("<a>"); }).substr(0, 7), "1 1:4: ");
  EXPECT_EQ(chartxml::problemsOf(readFile(bad)).size(), 1u);
}

TEST(FrontDoor, AppliesTemplatesAndTellsWhatWasPassedOver) {
  Chart chart = Chart::parse(chartText("<graph id=\"g\"/>"));
  const auto passed = chart.apply(Template::parse(templateText("<hideFrame type=\"title\"/>")));
  EXPECT_EQ(passed.size(), 0u);
  Chart moved = std::move(chart);
  chart = Chart::parse(chartText());
  EXPECT_NE(moved.text(), chart.text());
  EXPECT_EQ(chartxml::toUtf8(moved.visualization().getGraphs()[0]->getId()), "g");
  EXPECT_EQ(chartxml::toUtf8(nullptr), "");
}

TEST(FrontDoor, TakesAndGivesDataInEachForm) {
  const std::string text = chartText(sources);
  const Chart chart = Chart::parse(text);
  const auto columns = chart.columns();
  EXPECT_EQ(columns->GetValueAsString("a", "y", 0), "north");
  EXPECT_EQ(columns->GetRowCount("a"), 2u);
  const Chart::Stream stream = chart.dataStream();

  const auto setters = {
      +[](Chart& to, const Chart& from) { to.setData(from.data()); },
      +[](Chart& to, const Chart& from) { to.setColumns(*from.columns()); },
      +[](Chart& to, const Chart& from) {
        const Chart::Stream bytes = from.dataStream();
        to.setDataStream(bytes.bytes.get(), bytes.size);
      },
  };
  for (const auto& set : setters) {
    // Instead of other rows, and into a chart that had none.
    for (const std::string& other :
         {chartText("<embeddedSource id=\"a\"><names>z</names><row>9</row></embeddedSource>"),
          chartText()}) {
      Chart to = Chart::parse(other);
      set(to, chart);
      EXPECT_EQ(to.columns()->GetValueAsString("a", "y", 0), "north");
      EXPECT_EQ(Chart::parse(to.text()).columns()->GetValueAsString("a", "y", 1), "2");
      EXPECT_EQ(to.text().find("<row>9"), std::string::npos);
    }
  }
  EXPECT_EQ(Chart::parse(chartText()).data(), "");
  EXPECT_EQ(Chart::parse(chartText()).columns()->sources.size(), 0u);
}

TEST(FrontDoor, LeavesAChartAsItWasWhenDataDoesntFit) {
  Chart chart = Chart::parse(chartText(sources));
  const std::string before = chart.text();
  EXPECT_EQ(thrown([&] { chart.setData(dataText("", "b")); }), "1 the data has no source 'a'");
  EXPECT_EQ(thrown([&] { chart.setData(chartText()); }), "1 is no data document");
  EXPECT_EQ(thrown([&] { chart.setData("<a>"); }).substr(0, 7), "1 1:4: ");
  EXPECT_EQ(thrown([&] { chart.setDataStream(nullptr, 0); }), "1 is no stream of data");
  EXPECT_EQ(chart.text(), before);
}

TEST(FrontDoor, WritesFilesWholeOrNotAtAll) {
  const TestFolder folder;
  const std::string file = folder.file("chart.xml");
  const Chart chart = Chart::parse(chartText(sources));
  chart.write(file);
  EXPECT_EQ(readFile(file), chart.text() + '\n');
  ASSERT_EQ(chmod(file.c_str(), 0640), 0);
  std::filesystem::create_symlink("chart.xml", folder.file("link"));
  Chart::parse(chartText()).write(folder.file("link"));
  EXPECT_EQ(Chart::read(file).text(), Chart::parse(chartText()).text());
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link")));
  EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(thrown([&] { chart.write(folder.file("none/x")); }),
            "1 " + folder.file("none/x") + ": No such file or directory");
  EXPECT_EQ(thrown([&] { chart.write(folder.file(".")); }),
            "1 " + folder.file(".") + ": Is a directory");
  EXPECT_EQ(thrown([&] { chart.write("/dev/full"); }), "1 /dev/full: No space left on device");
  EXPECT_EQ(folder.count(), 2u);
}

}  // namespace
