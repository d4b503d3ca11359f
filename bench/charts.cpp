#include "charts.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>

#include "chartbase.h"

namespace {

constexpr std::string_view start =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?><visualization xmlns=\"" CHARTXML_HOST
    "/visualization\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xsi:schemaLocation=\"" CHARTXML_HOST "/visualization " CHARTXML_HOST
    "/visualization/grafo-2.9.xsd\" id=\"chart\" name=\"Revenue by region\" style=\"style_0\">";

constexpr std::string_view variables =
    R"(<sourceVariable id="region" label="Region" categorical="true" domain="domain_region" )"
    R"(source="source_0" sourceName="region"/>)"
    R"(<sourceVariable id="revenue" label="Revenue, thousands" source="source_0" )"
    R"(sourceName="revenue"><format maximumFractionDigits="1" useGrouping="true"/>)"
    R"(</sourceVariable>)"
    R"(<sourceVariable id="segment" label="Segment" categorical="true" domain="domain_segment" )"
    R"(source="source_0" sourceName="segment"><extension statistic="0"/></sourceVariable>)"
    R"(<derivedVariable id="labels" label="Label" description="labeling" value="region"/>)"
    R"(<categoricalDomain id="domain_region"><simpleSort method="natural"/></categoricalDomain>)"
    R"(<categoricalDomain id="domain_segment"><categories remove="true" text="unknown;other"/>)"
    R"(</categoricalDomain>)"
    R"(<intervalDomain id="domain_revenue"><range min="0" max="250"/></intervalDomain>)";

// A '@' stands for the number of what is written, a '~' for any number below a hundred.
constexpr std::string_view coordinates =
    R"(<location part="left" method="fixed" value="~%"/>)"
    R"(<location part="right" method="attach" target="legend_0"/>)"
    R"(<location part="top" method="attach" target="frame_0"/>)"
    R"(<location part="height" method="fixed" value="~%" max="3~pt"/>)"
    R"(<coordinates id="coordinates_@"><dimension id="dimension_x_@" domain="domain_region" )"
    R"(lowerMargin="~%" upperMargin="~%"><axis id="axis_x_@" style="style_1">)"
    R"(<label style="style_2" textFrameStyle="style_3"><text>Region</text></label>)"
    R"(<majorTicks style="style_2" tickFrameStyle="style_3" markStyle="style_1" length="~pt" )"
    R"(labelAngle="~" position="outside"/></axis></dimension>)"
    R"(<dimension id="dimension_y_@" domain="domain_revenue" niceUpperMapping="true">)"
    R"(<scale method="linear" origin="0"/><axis id="axis_y_@" style="style_1">)"
    R"(<label style="style_2"><text>Revenue &amp; returns</text></label>)"
    R"(<majorTicks style="style_2" markStyle="style_1" delta="~">)"
    R"(<format maximumFractionDigits="0" prefix="$" useGrouping="true"/>)"
    R"(<gridline style="style_4"/></majorTicks><minorTicks number="4" length="3pt"/></axis>)"
    R"(</dimension></coordinates>)";

constexpr std::string_view elements[] = {
    R"(<interval id="element_@" style="style_5" positionModifier="dodge">)"
    R"(<x variable="region"/><y variable="revenue"/>)"
    R"(<color id="color_@" variable="segment" domain="domain_segment" affect="main">)"
    R"(<colorMapping from="retail" to="#~~~"/><colorMapping from="online" to="#~~~"/>)"
    R"(</color><summaryStatistic method="mean"/><labeling id="labeling_@" variable="labels" )"
    R"(style="style_6"><format maximumFractionDigits="2" suffix="%"/>)"
    R"(<labelLocation horizontal="center" vertical="positive"/></labeling></interval>)",
    R"(<line id="element_@" style="style_6" coordinates="coordinates_0" )"
    R"(breakRepresentation="gap"><x variable="region"/><y variable="revenue"/>)"
    R"(<dash variable="segment" missing="2 2"><dashMapping from="retail" to="~ ~"/></dash>)"
    R"(<summaryStatistic method="median"/></line>)",
    R"(<point id="element_@" style="style_7" showCollidingLabels="false">)"
    R"(<x variable="region"/><y variable="revenue"/><size variable="revenue" low="~pt" )"
    R"(high="9pt"/><shape variable="segment"><symbolMapping from="retail" to="circle"/>)"
    R"(<symbolMapping from="online" to="triangle"/></shape></point>)",
    R"(<area id="element_@" style="style_5"><x variable="region"/><y variable="revenue"/>)"
    R"(<transparency variable="revenue" low="0.~" high="0.~"/>)"
    R"(<summaryStatistic method="sum"/></area>)",
};

constexpr std::string_view styles[] = {
    R"(<style id="style_@" color="#~~~" color2="#~~~" stroke-width="0.~pt" )"
    R"(padding="2pt" visible="true"/>)",
    R"(<style id="style_@" font-family="sans-serif" font-size="~pt 6pt ~pt" )"
    R"(font-weight="regular" font-style="regular" textAlignment="center" color="black" )"
    R"(margin-left="~pt" margin-right="~pt"/>)",
    R"(<style id="style_@" symbol="circle" size="~pt" stroke-dasharray="none" )"
    R"(stroke-linecap="round" opacity="0.~" width="~%"/>)",
};

constexpr std::string_view labelFrame =
    R"(<labelFrame id="frame_@" style="style_3"><location part="left" value="0%"/>)"
    R"(<location part="top" value="~%"/><location part="height" method="content"/>)"
    R"(<label style="style_2"><text>Revenue by region, quarter @ of 20~</text></label></labelFrame>)";

constexpr std::string_view legend =
    R"(<legend id="legend_0" style="style_3" tickTextStyle="style_2">)"
    R"(<location part="right" value="100%"/><location part="width" max="20%" method="content"/>)"
    R"(<label><text>Segment</text></label><legendTarget target="color_0"/></legend>)";

constexpr std::string_view cycles =
    R"(<styleCycle id="cycle_0"><cycle><style color="#~~~"/><style color="#~~~"/>)"
    R"(<style color="#~~~"/></cycle></styleCycle>)";

class ChartWriter {
 public:
  void append(std::string_view pattern, int number = 0) {
    for (char c : pattern) {
      if (c == '@') {
        text_ += std::to_string(number);
      } else if (c == '~') {
        text_ += static_cast<char>('0' + random_() % 10);
        text_ += static_cast<char>('0' + random_() % 10);
      } else {
        text_ += c;
      }
    }
  }

  void appendSources(int rows, int sources) {
    for (int source = 0; source < sources; ++source) {
      append(R"(<embeddedSource id="source_@">)", source);
      append(
          "<names>id;code;region;segment;date;price;revenue;share</names>"
          "<types>integer;string;string;string;date;double;double;double</types>");
      text_ += rowsText(rows / sources);
      append("</embeddedSource>");
    }
  }

  void appendGraphs(int count, int graphElements) {
    for (int i = 0; i < count; ++i) {
      const int graph = i / graphElements;
      if (i % graphElements == 0) {
        append(R"(<graph id="graph_@" style="style_3" cellStyle="style_4">)", graph);
        append(coordinates, graph);
      }
      append(elements[i % std::size(elements)], i);
      if (i % graphElements == graphElements - 1 || i == count - 1) append("</graph>");
    }
  }

  const std::string& text() const { return text_; }

 private:
  std::mt19937 random_{7};
  std::string text_;
};

std::string row(std::mt19937& random, int number) {
  static constexpr const char* regions[] = {"North", "South", "East", "West", "Overseas"};
  static constexpr const char* segments[] = {"retail", "online", "wholesale"};
  std::uniform_real_distribution<double> value(0, 1000);
  char text[256];
  std::snprintf(text, sizeof text, "<row>%d;C%05d;%s;%s;20%02d-%02d-%02d;%.2f;%.17g;%.17g</row>",
                100000 + number, static_cast<int>(random() % 3000), regions[random() % 5],
                segments[random() % 3], static_cast<int>(random() % 20),
                static_cast<int>(random() % 12 + 1), static_cast<int>(random() % 28 + 1),
                value(random), value(random), value(random) / 1000);
  return text;
}

}  // namespace

std::string rowsText(int rows) {
  std::mt19937 random(42);
  std::string text;
  for (int i = 0; i < rows; ++i) text += row(random, i);
  return text;
}

std::string chartText(const ChartSize& size) {
  ChartWriter chart;
  chart.append(start);
  if (size.rows > 0) chart.appendSources(size.rows, size.sources);
  chart.append(variables);
  chart.appendGraphs(size.elements, size.graphElements);
  for (int i = 0; i < size.labelFrames; ++i) chart.append(labelFrame, i);
  chart.append(legend);
  chart.append(cycles);
  for (int i = 0; i < size.styles; ++i) chart.append(styles[i % std::size(styles)], i);
  chart.append(R"(<extension title1="frame_0" legend1="legend_0"/></visualization>)");
  return chart.text();
}

std::string chartOfBytes(std::size_t bytes) {
  std::string text;
  for (int graphs = 1; text.size() < bytes; ++graphs) {
    text = chartText({.elements = graphs * 4, .styles = 8 + graphs * 2, .labelFrames = 2 + graphs});
  }
  return text;
}

std::string exampleText(const std::string& name) {
  std::ifstream file(CHARTXML_EXAMPLES "/" + name + ".xml", std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (text.empty()) throw std::runtime_error("there is no example " + name);
  return text;
}
