// Applying templates: against opening the chart, and what ten times as many commands, graphs,
// elements and styles cost.
#include <memory>
#include <stdexcept>
#include <string_view>

#include "baseline.h"
#include "basetemplate.h"
#include "charts.h"
#include "charttransformer.h"
#include "measures.h"
#include "model.h"
#include "plxstyle.h"

using namespace xercesc;

namespace {

constexpr std::string_view prolog =
    "<template xmlns=\"" CHARTXML_HOST
    "/software/analytics/tavo/xml/visualization\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:schemaLocation=\"" CHARTXML_HOST
    "/software/analytics/tavo/xml/visualization " CHARTXML_HOST
    "/software/analytics/tavo/xml/visualization/grafo-template-3.5.xsd\" TAVO-Version=\"2.10\">";

// What a house style asks for.
constexpr std::string_view commands[] = {
    R"(<setStyle type="bar"><style color="#1F3A5F" color2="#FFFFFF" stroke-width="0.5pt" )"
    R"(width="70%"/></setStyle>)",
    R"(<setStyle type="line"><style color="#1F3A5F" stroke-width="1.5pt" )"
    R"(stroke-linecap="round"/></setStyle>)",
    R"(<setStyle type="area"><style color="#588B8B" color2="#588B8B" fill-opacity="0.6"/>)"
    R"(</setStyle>)",
    R"(<setStyle type="scatter"><style color="transparent" color2="#1F3A5F" stroke-width="1pt">)"
    R"(<glyph type="square" size="4pt" sides="4" angle="0" aspect="1"/></style></setStyle>)",
    R"(<setAxisScale role="y" method="log" base="10"/>)",
    R"(<setAxisInterval role="y" min="1" max="250" upperMapping="exact"/>)",
    R"(<setAxisMargin role="y" lowerMargin="0%" upperMargin="5%" categorical="false"/>)",
    R"(<setAxisMargin role="x" lowerMargin="4%" upperMargin="4%" categorical="true"/>)",
    R"(<setAxisOpposite role="y" opposite="false"/>)",
    R"(<setAxisStyle role="x"><style color="#808080" stroke-width="0.5pt"/><axisLabelStyle>)"
    R"(<style font-size="9pt" font-weight="bold" color="#404040"/>)"
    R"(<style number="1" visible="false"/></axisLabelStyle></setAxisStyle>)",
    R"(<setAxisStyle role="y" categorical="false"><style visible="false"/>)"
    R"(<label>Value on @@current_date@@<style font-size="9pt"/></label></setAxisStyle>)",
    R"(<setAxisMajorTicks><majorTicks role="x" categorical="true" position="outside" )"
    R"(length="0pt"><markStyle><style visible="false"/></markStyle><tickLabelStyle>)"
    R"(<style font-size="8pt 6pt" color="#404040"/></tickLabelStyle></majorTicks>)"
    R"(</setAxisMajorTicks>)",
    R"(<setAxisMajorTicks><majorTicks role="y" position="outside" length="3pt" delta="auto">)"
    R"(<gridLines><style color="#D0D0D0" stroke-width="0.5pt"/></gridLines><markStyle>)"
    R"(<style color="#808080"/></markStyle><numberFormat useGrouping="true" )"
    R"(maximumFractionDigits="2"/></majorTicks></setAxisMajorTicks>)",
    R"(<setAxisMinorTicks><minorTicks role="y" number="4"><markStyle><style color="#D0D0D0"/>)"
    R"(</markStyle></minorTicks></setAxisMinorTicks>)",
    R"(<setTickLabelAngle role="x" labelAngle="45" categorical="true"/>)",
    R"(<setTickLabelFrequency role="x" labelFrequency="2" categorical="true"/>)",
    R"(<setTickLabelFormat role="y"><numberFormat prefix="€"/></setTickLabelFormat>)",
};

std::string templateText(int count) {
  std::string text(prolog);
  for (int i = 0; i < count; ++i) text += commands[i % std::size(commands)];
  return text + "</template>";
}

void run(ChartTransformer& chart, const std::string& text) {
  std::vector<std::size_t> passedOver;
  if (!chart.applyTemplate(text, passedOver) || !passedOver.empty()) {
    throw std::runtime_error("a command was passed over");
  }
}

void addRoads() {
  const auto house = [] { return templateText(40); };
  measureTime("template of 40 commands/100 KB/opening", 0.3, 100, [=]() -> Pair {
    const std::string text = chartOfBytes(100'000);
    const auto chart = std::make_shared<ChartTransformer>(text);
    return {[chart, commands = house()] { run(*chart, commands); },
            [text] { const ChartTransformer opened(text); }};
  });
  measureTime("open, apply, print/100 KB/parse and print", 1.6, 100, [=]() -> Pair {
    const std::string text = chartOfBytes(100'000);
    const auto result = std::make_shared<ChartTransformer>(text);
    run(*result, house());
    const DOMDocument* document = result->parseDocument(result->getXML(nullptr));
    return {[text, commands = house()] {
              ChartTransformer chart(text);
              run(chart, commands);
              chart.getXML(nullptr);
            },
            [text, result, document] {
              const auto parser = baseline::newParser();
              baseline::parse(*parser, text);
              baseline::serialize(document);
            }};
  });
}

// Charts whose size is `sizeOf(n)`, and a template of `commandsOf(n)`.
template <class SizeOf, class CommandsOf>
void addTemplate(const std::string& label, int count, SizeOf sizeOf, CommandsOf commandsOf) {
  measureGrowth("growth/template/" + label, count, [=](int n) -> Run {
    const auto chart = std::make_shared<ChartTransformer>(chartText(sizeOf(n)));
    return [chart, text = templateText(commandsOf(n))] { run(*chart, text); };
  });
}

constexpr auto fortyCommands = [](int) { return 40; };

void addGrowing() {
  addTemplate(
      "commands", 40, [](int) { return ChartSize{}; }, [](int n) { return n; });
  addTemplate(
      "graphs and elements", 100, [](int n) { return ChartSize{.elements = n, .styles = n}; },
      fortyCommands);
  addTemplate(
      "elements of a graph", 100, [](int n) { return ChartSize{.elements = n, .graphSize = n}; },
      fortyCommands);
  addTemplate(
      "styles", 500, [](int n) { return ChartSize{.styles = n}; }, fortyCommands);
}

// What one command that makes many objects asks for.
void addMaking() {
  measureGrowth("growth/template/addStyle of a new id", 1000, [](int n) -> Run {
    const auto chart = std::make_shared<Model>(ChartSize{});
    return [chart, n] {
      BaseTemplate command(nullptr, chart->root);
      for (int i = 0; i < n; ++i) {
        command.addStyle(chart->root, command.CreateUniqueId(u"style").xc_str());
      }
    };
  });
  measureGrowth("growth/template/addStyle of a known id", 1000, [](int n) -> Run {
    const auto chart = std::make_shared<Model>(ChartSize{.styles = n});
    return [chart] {
      BaseTemplate command(nullptr, chart->root);
      for (const PlXStyle* style : chart->root.getStyles()) {
        command.addStyle(chart->root, style->getId());
      }
    };
  });
}

}  // namespace

void addTemplates() {
  addRoads();
  addGrowing();
  addMaking();
}
