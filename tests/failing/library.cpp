// What the library's classes do when a resource fails.
#include <xercesc/dom/DOM.hpp>

#include "chartparser.h"
#include "charttransformer.h"
#include "framepacker.h"
#include "keptdocuments.h"
#include "plxframes.h"
#include "scenarios.h"
#include "testplaces.h"
#include "testsupport.h"
#include "treetransformer.h"
#include "vardataprocessor.h"
#include "xmldatahandler.h"
#include "xmlwriter.h"
#include "zlib1211tavo.h"

namespace {

// The texts that the scenarios work on.
struct Inputs {
  std::string chart;
  std::string compressedChart;
  std::string compressedData;
  std::string data;
  std::string stream;
};

std::string streamText(unsigned char* stream, unsigned long size) {
  if (!stream) return {};
  std::string text;
  try {
    text.assign(reinterpret_cast<const char*>(stream), size);
  } catch (...) {
  }
  delete[] stream;
  return text;
}

std::string documentText(const xercesc::DOMDocument* document) {
  return document ? xmlText(*document) : std::string();
}

Inputs inputsOf(const std::string& chart) {
  Inputs inputs{chart, {}, {}, {}, {}};
  ChartTransformer transformer(chart);
  inputs.compressedChart = transformer.getCompressedXML();
  inputs.compressedData = transformer.getCompressedData();
  zlib1211tavo::decompressString(inputs.data, inputs.compressedData);
  unsigned long size = 0;
  unsigned char* stream = transformer.getCompressedDataStream(size);
  inputs.stream = streamText(stream, size);
  return inputs;
}

std::string exampleText(const std::string& name) {
  return readFile(std::string(CHARTXML_EXAMPLES) + '/' + name);
}

// A megabyte, half of it rows and half of it elements.
std::string largeChart() {
  const std::string chart = exampleText("two-cities.xml");
  const std::size_t rows = chart.find("  </embeddedSource>");
  const std::size_t end = chart.rfind("</visualization>");
  std::string text = chart.substr(0, rows);
  while (text.size() < 500'000) text += "    <row>1;2;12.6;9.1;16.1</row>\n";
  text += chart.substr(rows, end - rows);
  for (int i = 0; text.size() < 1'000'000; ++i) {
    text += "  <labelFrame id=\"note" + std::to_string(i) +
            "\"><location part=\"left\" method=\"fixed\" value=\"10%\"/>"
            "<label><text>A note of its own</text></label></labelFrame>\n";
  }
  return text + chart.substr(end);
}

const Inputs& inputs() {
  static const Inputs inputs = inputsOf(exampleText("two-cities.xml"));
  return inputs;
}

const Inputs& largeInputs() {
  static const Inputs inputs = inputsOf(largeChart());
  return inputs;
}

// An object by one of its constructors, which may throw.
template <class Object, class... Arguments>
std::unique_ptr<Object> made(const Arguments&... arguments) {
  try {
    return std::make_unique<Object>(arguments...);
  } catch (...) {
    return nullptr;
  }
}

void takeTexts(ChartTransformer& chart, Answers& answers) {
  answers.take([&] { return chart.getXML(nullptr); });
  answers.take([&] { return chart.getEntireXML(nullptr); });
}

void takeData(ChartTransformer& chart, Answers& answers) {
  answers.take([&] { return chart.getCompressedXML(); });
  answers.take([&] { return chart.getCompressedData(); });
  xercesc::DOMDocument* document = nullptr;
  answers.take([&] {
    document = chart.getDataDocument();
    return document ? "read" : "";
  });
  answers.takeUnlessThrown([&] { return documentText(document); });
  answers.take([&] {
    unsigned long size = 0;
    unsigned char* stream = chart.getCompressedDataStream(size);
    return streamText(stream, size);
  });
  answers.take([&] { return chart.getEntireXML(nullptr); });
}

void open(const Inputs& inputs, Answers& answers) {
  const auto chart = made<ChartTransformer>(inputs.chart);
  if (chart) takeTexts(*chart, answers);
}

void openCompressed(const Inputs& inputs, Answers& answers) {
  const auto chart = made<ChartTransformer>(inputs.compressedChart, inputs.compressedData);
  if (!chart) return;
  takeTexts(*chart, answers);
  takeData(*chart, answers);
}

void openStream(const Inputs& inputs, Answers& answers) {
  const auto chart = made<ChartTransformer>(
      inputs.compressedChart, reinterpret_cast<const unsigned char*>(inputs.stream.data()),
      inputs.stream.size());
  if (!chart) return;
  takeTexts(*chart, answers);
  takeData(*chart, answers);
}

void data(const Inputs& inputs, Answers& answers) {
  const auto chart = made<ChartTransformer>(inputs.chart);
  if (chart) takeData(*chart, answers);
}

// Also by the operations that parse more than one text with one object.
void print(const Inputs& inputs, Answers& answers) {
  const auto base = made<ChartBase>();
  if (!base) return;
  xercesc::DOMDocument* first = nullptr;
  xercesc::DOMDocument* second = nullptr;
  answers.take([&] {
    first = base->parseDocument(inputs.chart);
    return first ? "read" : "";
  });
  answers.take([&] {
    second = base->parseDocument(inputs.data);
    return second ? "read" : "";
  });
  answers.takeUnlessThrown([&] {
    return first ? PlXVisualization(first->getDocumentElement()).AsUTF8() : std::string();
  });
  answers.takeUnlessThrown([&] { return documentText(second); });
  answers.take([&] { return ChartBase::ValidXML(inputs.chart) ? "valid" : ""; });
}

void applyTemplate(const Inputs& inputs, const std::string& text, Answers& answers) {
  const auto chart = made<ChartTransformer>(inputs.chart);
  if (!chart) return;
  std::vector<std::size_t> passedOver;
  bool isApplied = false;
  answers.take([&] {
    isApplied = chart->applyTemplate(text, passedOver) && passedOver.empty();
    return isApplied ? "applied" : "";
  });
  // A run that stopped leaves what it has done.
  answers.take([&] { return isApplied ? chart->getXML(nullptr) : std::string(); });
  answers.take([&] { return isApplied ? chart->getEntireXML(nullptr) : std::string(); });
}

void popups(const Inputs& inputs, Answers& answers) {
  const auto chart = made<ChartTransformer>(inputs.chart);
  if (!chart) return;
  answers.take([&] { return chart->addPopups() ? chart->getXML(nullptr) : std::string(); });
}

// The model's views and the packer let what fails pass.
void packFrames(const Inputs& inputs, Answers& answers) {
  const auto base = made<ChartBase>();
  if (!base) return;
  answers.takeUnlessThrown([&]() -> std::string {
    xercesc::DOMDocument* document = base->parseDocument(inputs.chart);
    if (!document) return {};
    PlXVisualization chart(document->getDocumentElement());
    if (!FramePacker().packFrames(chart, nullptr)) return {};
    chart.removeEmbeddedSources();
    chart.addGraph(u"another");
    return chart.AsUTF8();
  });
}

void streams(const Inputs& inputs, Answers& answers) {
  unsigned size = 0;
  answers.takeUnlessThrown([&] {
    unsigned char* stream = XmlDataHandler(inputs.data).GetDataStream(size);
    return streamText(stream, size);
  });
  answers.takeUnlessThrown([&] {
    std::string text;
    XmlDataHandler handler(reinterpret_cast<const unsigned char*>(inputs.stream.data()),
                           static_cast<unsigned>(inputs.stream.size()));
    handler.GetXmlData(text, false);
    return text;
  });
  answers.takeUnlessThrown([&]() -> std::string {
    VarDataProcessor store;
    VarDataProcessor other;
    if (!XmlDataHandler::ReadStore(inputs.data, store, XmlDataHandler::Keep::All)) return {};
    if (!other.AddVDP(store)) return {};
    for (const char* text : {"a text", "another", "and one more that is longer"}) {
      if (!other.SetStringVariableValue("clima", "media", other.AddString(text), text)) return {};
    }
    unsigned char* stream = other.GetDataStream(size);
    const std::string result = streamText(stream, size);
    if (!store.ReadStreamData(result.data(), size)) return {};
    std::string text;
    return XmlDataHandler::WriteStore(store, text) ? text + result : std::string();
  });
}

void tree(Answers& answers) {
  static const std::string model = exampleText("trees/customers.xml");
  static const std::string display = exampleText("trees/house.xml");
  const auto tree = made<TreeTransformer>(model, std::string());
  if (!tree) return;
  std::string before;
  bool isApplied = false;
  answers.take([&] { return tree->getCompressedPMML(nullptr); });
  answers.take([&] { return tree->getUncompressedPMML(nullptr); });
  answers.take([&] {
    isApplied = tree->applyTemplate(display);
    return isApplied ? "applied" : "";
  });
  answers.take([&] { return isApplied ? tree->getDisplayData(nullptr) : std::string(); });
  answers.takeUnlessThrown([&] {
    return isApplied && tree->setSetting("zoom", "50") ? tree->getDisplayData(nullptr)
                                                       : std::string();
  });
}

}  // namespace

std::vector<Scenario> libraryScenarios() {
  static const std::string today = exampleText("templates/all-commands.xml");
  static const std::string house = exampleText("templates/house-style.xml");
  static const std::string older = exampleText("templates/older/bars.xml");
  const auto of = [](auto run, auto... more) {
    return [=](Answers& answers) { run(inputs(), more..., answers); };
  };
  const auto ofLarge = [](auto run, auto... more) {
    return [=](Answers& answers) { run(largeInputs(), more..., answers); };
  };
  // Without it every run takes all grammars from where they are kept.
  static const ChartBase held;
  return {
      {"open", of(open)},
      {"compressed", of(openCompressed)},
      {"stream", of(openStream)},
      {"data", of(data)},
      {"print", of(print)},
      {"template", of([](const Inputs& chart, Answers& answers) {
         keptdocuments::clear();
         applyTemplate(chart, house, answers);
       })},
      {"commands",
       of([](const Inputs& chart, Answers& answers) { applyTemplate(chart, today, answers); }), 7},
      {"older",
       of([](const Inputs& chart, Answers& answers) { applyTemplate(chart, older, answers); }), 5},
      {"popups", of(popups)},
      {"pack", of(packFrames)},
      {"streams", of(streams)},
      {"tree", tree, 41},
      {"large", ofLarge(data), 50},
      {"large-template",
       ofLarge([](const Inputs& chart, Answers& answers) { applyTemplate(chart, house, answers); }),
       50},
  };
}
