// Applying templates: what it adds to opening a chart, and what ten times as much costs.
#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "baseline.h"
#include "basetemplate.h"
#include "chartprinter.h"
#include "charts.h"
#include "charttemplate.h"
#include "charttransformer.h"
#include "housestyle.h"
#include "measures.h"
#include "model.h"
#include "plxelements.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "zlib1211tavo.h"

namespace {

// What there is more of.
enum Of : unsigned { graphs = 1, elements = 2, styles = 4, frames = 8 };
// On charts without categories, which some commands pass over.
constexpr unsigned measures = 16;

// The other commands, with what each of them walks over.
struct Growing {
  std::string_view command;
  unsigned what = graphs;
};

constexpr Growing otherCommands[] = {
    {R"(<addFrame type="title" count="2"><location left="2%" top="2%"/><label>Sales</label>)"
     R"(</addFrame>)",
     graphs | frames},
    {R"(<addFrame type="footnote" frameId="frame_footnote_1" styleOnly="true">)"
     R"(<style color="red"/></addFrame>)",
     graphs | frames},
    {R"(<addHistogramSummaryFrame/>)", graphs | elements | frames},
    {R"(<addImage><cycle><style background-image="a.png"/></cycle></addImage>)", graphs | elements},
    {R"(<setColor affect="main"><cycle><style color="red"/><style color="blue"/></cycle>)"
     R"(</setColor>)",
     graphs | elements},
    {R"(<setDash><cycle><style stroke-dasharray="2 1"/></cycle></setDash>)", graphs | elements},
    {R"(<setPattern><cycle><style pattern="3"/></cycle></setPattern>)", graphs | elements},
    {R"(<setShape><cycle><style symbol="square"/></cycle></setShape>)", graphs | elements},
    {R"(<setSize elementType="point"><parameter name="a" value="5pt"/></setSize>)",
     graphs | elements},
    {R"(<setStyleCycle id="styleCycleRepository" createType="ColorsOnly">)"
     R"(<cycle><style color="red"/><style color="blue"/></cycle></setStyleCycle>)",
     graphs | elements | styles},
    {R"(<setStyleCycle><cycle><style value="stroke:red;fill:blue"/></cycle></setStyleCycle>)",
     graphs | elements},
    {R"(<setBackPlane><plane role="x"><style color="silver"/></plane></setBackPlane>)"},
    {R"(<setWireFrame complete="true"><style color="black"/></setWireFrame>)"},
    {R"(<addReferenceLine y="100" name="a"><style color="red"/><label>a</label>)"
     R"(</addReferenceLine>)"},
    {R"(<addReferenceRectangle y1="1" y2="2" name="a"><style color="red"/>)"
     R"(</addReferenceRectangle>)"},
    {R"(<addAnchoredAnnotation x="1" y="2" name="a"><label>a</label></addAnchoredAnnotation>)"},
    {R"(<addFitLine primary="true" type="linear" target="subgroup"><style color="red"/>)"
     R"(</addFitLine>)",
     graphs | elements | measures},
    {R"(<addHistogramNormalLine type="normal"><style color="red"/></addHistogramNormalLine>)"},
    {R"(<addInterpolationLine><interpolation type="straight" primary="true"/>)"
     R"(</addInterpolationLine>)"},
    {R"(<setWrapPanels wrap="true"/>)"},
    {R"(<addDerivedAxis role="y"><transform method="percent"/><label>Share</label>)"
     R"(<majorTicks length="3pt"/><style color="red"/></addDerivedAxis>)",
     graphs | elements},
    {R"(<addOriginLine y="0"><style color="red"/></addOriginLine>)"},
    {R"(<addBarEffects depth="50%" theta="30" distance="2"/>)"},
    {R"(<addPieEffects depth="50%" theta="30" distance="2"/>)"},
    {R"(<addPopups x="true" y="true" legend="true"/>)"},
    {R"(<addDrillDown interaction="onClick" target="element" function="f"/>)"},
    {R"(<addShadow shadow-dx="2pt" shadow-dy="2pt"/>)"},
    {R"(<addDash><cycle><style stroke-dasharray="2 1"/></cycle></addDash>)", graphs | elements},
    {R"(<addDataLabels><labeling variable="y"/><style color="red"/></addDataLabels>)"},
    {R"(<setScaleByFraction/>)"},
    {R"(<setTranspose transpose="true"/>)"},
    {R"(<setPieTranspose startAngle="90"/>)"},
    {R"(<setPanelOptions gap="2%" role="x"/>)"},
    {R"(<setRotation method="oblique" theta="30" distance="2"/>)"},
    {R"(<setCategorySorting role="x"><sort descending="true"><simpleSort method="data"/></sort>)"
     R"(</setCategorySorting>)"},
    {R"(<setCollapse role="x" categoryName="Other" minFraction="0.05"/>)"},
    {R"(<setClusterWidth gap="5%" role="x"/>)"},
    {R"(<setExclude role="x"><categoryValue>North;South</categoryValue></setExclude>)"},
    {R"(<setOrder role="x"><categoryValue>South;North</categoryValue></setOrder>)"},
    {R"(<setExplodeSlice><categoryValue>retail</categoryValue></setExplodeSlice>)"},
    {R"(<setProjectionLine before="true" low="1pt" high="2pt"><categoryValue>5</categoryValue>)"
     R"(</setProjectionLine>)"},
    {R"(<addSpikes type="mean" y="origin"><style color="red"/></addSpikes>)"},
    // Each label gets as many lists as there are graphs: of many graphs one label is looked for.
    {R"(<addStyleCycle elementName="labeling" count="1"><cycle><style color="red"/></cycle>)"
     R"(</addStyleCycle>)"},
    {R"(<addStyleCycle elementName="labeling"><cycle><style color="red"/></cycle></addStyleCycle>)",
     elements},
    {R"(<setHistogramBinning binStart="0" binWidth="5"/>)"},
    {R"(<setScatterplotBinning method="size" binCount="9"/>)", graphs | elements | measures},
    {R"(<hideFrame type="legend" count="1"/>)", graphs | frames},
    {R"(<hideFrame type="graph" count="1"/>)", graphs | frames},
    {R"(<setShowLineMarkers><style color="red"/></setShowLineMarkers>)"},
    {R"(<setErrorBarOptions visible="true"><style color="red"/></setErrorBarOptions>)"},
    {R"(<addChartsOnDiagonal type="histogram"><style color="red"/></addChartsOnDiagonal>)"},
    {R"(<setGenericAttributes elementName="axis" styleName="style" color="red"/>)", graphs},
    {R"(<setGenericAttributes elementName="style" opacity="0.5" depth="1pt"/>)", styles},
    {R"(<setGenericAttributes elementName="interval" dot="true"/>)", elements},
};

void applyTo(ChartTransformer& chart, const std::string& text) {
  std::vector<std::size_t> passedOver;
  if (!chart.applyTemplate(text, passedOver) || !passedOver.empty()) {
    throw std::runtime_error("a command of the template was passed over");
  }
}

// Throws when the house style makes nothing of a chart: then nothing is measured.
void checkHouseStyle(const std::string& text) {
  ChartTransformer chart(text);
  const std::string before = chart.getXML(nullptr);
  applyTo(chart, housestyle::text());
  if (chart.getXML(nullptr).size() < before.size() + 500) {
    throw std::runtime_error("the template isn't applied");
  }
}

std::string printed(const xercesc::DOMDocument& document) {
  std::ostringstream text;
  ChartPrinter().Print(&document, text);
  return text.str();
}

// What a command costs by the graph, where most of the cost is in the graphs.
void addHouseStyleByGraph(const std::string& label, const std::string& chart) {
  const double graphCount = static_cast<double>(Model(chart).root.getGraphs().size());
  const std::string house = housestyle::text();
  measureEach("applyTemplate/" + label + "/microseconds a command and graph", 2.2, 100,
              static_cast<double>(housestyle::size) * graphCount, [=]() -> Run {
                const auto opened = std::make_shared<ChartTransformer>(chart);
                return [=] { applyTo(*opened, house); };
              });
}

void addHouseStyle(const std::string& label, const std::string& chart, double applyLimit,
                   double wholeLimit) {
  checkHouseStyle(chart);
  const std::string house = housestyle::text();
  std::string data;
  zlib1211tavo::decompressString(data, ChartTransformer(chart).getCompressedData());
  measureTimeOnce(
      "applyTemplate/" + label + "/parse, compress", applyLimit, 100,
      [=]() -> Run {
        const auto opened = std::make_shared<ChartTransformer>(chart);
        return [=] { applyTo(*opened, house); };
      },
      [=] {
        const auto parser = baseline::newParser();
        baseline::parse(*parser, chart);
        std::string packed;
        if (!data.empty()) zlib1211tavo::compressString(data, packed);
      });
  const Run whole = [=] {
    ChartTransformer opened(chart);
    applyTo(opened, house);
    opened.getXML(nullptr);
  };
  const auto parseAndPrint = [=](auto print) -> Run {
    return [=] {
      const auto parser = baseline::newParser();
      baseline::parse(*parser, chart);
      std::string packed;
      if (!data.empty()) zlib1211tavo::compressString(data, packed);
      print(*parser->getDocument());
    };
  };
  const std::string name = "open, apply, print/" + label;
  measureTime(name + "/parse and serializer", wholeLimit, 100, [=]() -> Pair {
    return {whole, parseAndPrint(baseline::print)};
  });
  measureTime(name + "/parse and ChartPrinter", noLimit, 100, [=]() -> Pair {
    return {whole, parseAndPrint(printed)};
  });
}

// A chart whose areas show patterns and whole styles too, which those of the suite don't.
std::string richText(const ChartSize& size) {
  std::string text = chartText(size);
  constexpr std::string_view end = "</area>";
  constexpr std::string_view more = R"(<pattern variable="segment"/><styleBy variable="segment"/>)";
  for (std::size_t at = 0; (at = text.find(end, at)) != text.npos; at += more.size() + end.size()) {
    text.insert(at, more);
  }
  return text;
}

std::string numericText(const ChartSize& size) {
  std::string text = richText(size);
  constexpr std::string_view word = R"( categorical="true" domain="domain_region")";
  return text.erase(text.find(word), word.size());
}

// A template on a chart of `sizeOf(n)`, whose text is made by `textOf`.
void addGrowing(const std::string& label, int count, std::function<ChartSize(int)> sizeOf,
                std::function<std::string(int)> templateOf,
                std::string (*textOf)(const ChartSize&) = chartText) {
  measureGrowth("growth/applyTemplate/" + label, count, [=](int n) -> Run {
    const auto chart = std::make_shared<ChartTransformer>(textOf(sizeOf(n)));
    return [chart, text = templateOf(n)] { applyTo(*chart, text); };
  });
}

std::string nameOf(std::string_view command) {
  return std::string(command.substr(1, command.find_first_of(" />") - 1));
}

// False for a command that this version of the library lacks.
bool isThere(const std::string& command) {
  const auto all = ChartTemplate::getCommands();
  return std::any_of(all.begin(), all.end(), [&](const ChartTemplate::CommandInfo& each) {
    return ChartString(each.element).toUTF8() == command;
  });
}

void addOtherCommands() {
  struct Row {
    Of what;
    const char* label;
    int count;
    ChartSize (*sizeOf)(int);
  };
  static constexpr Row rows[] = {
      {graphs, "graphs", 30, [](int n) { return ChartSize{.elements = 4 * n}; }},
      {elements, "elements", 100,
       [](int n) { return ChartSize{.elements = n, .graphElements = n}; }},
      {styles, "styles", 500, [](int n) { return ChartSize{.styles = n}; }},
      {frames, "frames", 300, [](int n) { return ChartSize{.labelFrames = n}; }},
  };
  std::map<std::string, int> numbers;  // of several rows of one command
  for (const auto& [command, what] : otherCommands) {
    const std::string name = nameOf(command);
    if (!isThere(name)) continue;
    const int number = ++numbers[name];
    const std::string text = housestyle::templateOf(command);
    for (const Row& row : rows) {
      if (!(what & row.what)) continue;
      addGrowing(
          std::string(row.label) + "/" + name + (number > 1 ? " " + std::to_string(number) : ""),
          row.count, row.sizeOf, [=](int) { return text; },
          what & measures ? numericText : richText);
    }
  }
}

// Each command of the house style by itself on ever more graphs: a template of many walks over a
// chart often, and finds a small one in the caches then.
void addGrowingGraphs() {
  for (std::size_t i = 0; i < housestyle::size; ++i) {
    const std::string_view command = housestyle::command(i);
    const std::string name = nameOf(command);
    addGrowing(
        "graphs/" + std::to_string(i + 1) + " " + name, 30,
        [](int n) { return ChartSize{.elements = 4 * n}; },
        [=](int) { return housestyle::templateOf(command); });
  }
}

// One command that asks often.
void addAsking(const std::string& label, std::function<void(BaseTemplate&, PlXGraph&)> ask) {
  measureGrowth("growth/command/" + label, 1000, [=](int n) -> Run {
    const auto model = std::make_shared<Model>(ChartSize{});
    return [=] {
      BaseTemplate command(nullptr, model->root);
      PlXGraph* graph = model->root.getGraphs().front();
      for (int i = 0; i < n; ++i) ask(command, *graph);
    };
  });
}

}  // namespace

void addTemplates() {
  // What a chart costs that holds 100 KB depends on how much of it is graphs.
  addHouseStyle("1 graph and data of 100 KB", chartText({.rows = 900}), 0.3, 1.6);
  addHouseStyle("4 graphs and data of 100 KB", chartText({.elements = 16, .rows = 800}), 0.3, 1.6);
  // What it costs to open holds for few graphs only.
  addHouseStyle("34 graphs of 100 KB", chartOfBytes(100'000), noLimit, 1.6);
  addHouseStyleByGraph("34 graphs", chartOfBytes(100'000));
  // The examples nearest to that size.
  for (const char* name : {"histogram", "stacked-area"}) {
    const std::string text = exampleText(name);
    addHouseStyle(std::string(name) + " of " + std::to_string(text.size() / 1000) + " KB", text,
                  0.3, 1.6);
  }
  const auto all = [](int) { return housestyle::text(); };
  addGrowing(
      "commands", 40, [](int) { return ChartSize{}; }, housestyle::text);
  addGrowing(
      "elements", 100, [](int n) { return ChartSize{.elements = n, .graphElements = n}; }, all);
  addGrowing(
      "styles", 500, [](int n) { return ChartSize{.styles = n}; }, all);
  addGrowing(
      "graphs", 30, [](int n) { return ChartSize{.elements = 4 * n}; }, all);
  addGrowingGraphs();
  addOtherCommands();
  addAsking("CreateUniqueId", [](BaseTemplate& command, PlXGraph& graph) {
    graph.addPoint(command.CreateUniqueId("fresh").xc_str());
  });
  addAsking("addStyle",
            [](BaseTemplate& command, PlXGraph& graph) { command.addStyle(graph, nullptr); });
}
