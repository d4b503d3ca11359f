#include "housestyle.h"

#include <iterator>

#include "chartbase.h"

namespace {

constexpr std::string_view start =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?><template xmlns=\"" CHARTXML_HOST
    "/tavo/visualization\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xsi:schemaLocation=\"" CHARTXML_HOST "/tavo/visualization " CHARTXML_HOST
    "/tavo/visualization/grafo-template-2.10.xsd\">";

// The look of a house: what a template of a suite states of any chart. Commands for parts that a
// chart doesn't have are among them, as there.
constexpr std::string_view houseStyle[] = {
    R"(<setStyle type="bar">)"
    R"(<style color="#1F3A5F" color2="#FFFFFF" stroke-width="0.5pt" width="70%"/></setStyle>)",
    R"(<setStyle type="bar" subtype="clustered">)"
    R"(<style value="stroke:white;stroke-width:0.5pt"/></setStyle>)",
    R"(<setStyle type="histogram"><style color="#588B8B" color2="#FFFFFF"/></setStyle>)",
    R"(<setStyle type="population"><style color2="#FFFFFF" stroke-width="0.5pt"/></setStyle>)",
    R"(<setStyle type="pie"><style color2="#FFFFFF" stroke-width="1pt"/></setStyle>)",
    R"(<setStyle type="range"><style color="#588B8B" stroke-width="0.5pt"/></setStyle>)",
    R"(<setStyle type="line"><style color="#1F3A5F" stroke-width="1.5pt">)"
    R"(<interpolation type="straight" missingRepresentation="gap"/></style></setStyle>)",
    R"(<setStyle type="line" subtype="3D"><style color="#1F3A5F" stroke-width="1pt"/></setStyle>)",
    R"(<setStyle type="area"><style value="fill:#588B8B;stroke:#404040"/></setStyle>)",
    R"(<setStyle type="scatter"><style color="transparent" color2="#1F3A5F">)"
    R"(<glyph type="square" size="4pt" sides="4" angle="0" aspect="1"/></style></setStyle>)",
    R"(<setStyle type="schema" subtype="hingeStyle"><style color="#588B8B" color2="#404040"/>)"
    R"(</setStyle>)",
    R"(<setStyle type="schema" subtype="medianStyle">)"
    R"(<style color="#404040" stroke-width="2pt"/></setStyle>)",
    R"(<setStyle type="schema" subtype="fenceStyle">)"
    R"(<style color="#404040" stroke-width="1pt"/></setStyle>)",
    R"(<setStyle type="dropline"><style color="#808080" stroke-dasharray="2 2"/></setStyle>)",
    R"(<setStyle type="errorbar"><style color="#404040" stroke-width="0.5pt"/></setStyle>)",
    R"(<setStyle type="text" subtype="title1"><style font-size="14pt" font-weight="bold"/>)"
    R"(</setStyle>)",
    R"(<setStyle type="textFrame" subtype="title1"><style visible="false"/></setStyle>)",
    R"(<setStyle type="text" subtype="legend1"><style font-size="8pt 6pt" color="#404040"/>)"
    R"(</setStyle>)",
    R"(<setStyle type="labelFrame" subtype="legend1"><style color="transparent"/></setStyle>)",
    R"(<setStyle type="text" subtype="xaxis_title"><style font-size="9pt"/></setStyle>)",
    R"(<setStyle id="style_5"><style opacity="0.8"/></setStyle>)",
    R"(<setAxisScale role="x" method="linear"/>)",
    R"(<setAxisScale role="y" method="log_safe" base="10"/>)",
    R"(<setAxisInterval role="y" min="0" max="300" upperMapping="exact"/>)",
    R"(<setAxisMargin role="x" lowerMargin="2%" upperMargin="2%" categorical="false"/>)",
    R"(<setAxisMargin role="x" lowerMargin="4%" upperMargin="4%" categorical="true"/>)",
    R"(<setAxisMargin role="y" lowerMargin="0%" upperMargin="5%" categorical="false"/>)",
    R"(<setAxisStyle role="x"><style color="#808080"/><axisLabelStyle>)"
    R"(<style font-size="9pt"/><style number="1" visible="false"/></axisLabelStyle>)"
    R"(</setAxisStyle>)",
    R"(<setAxisStyle role="y" categorical="false"><style value="stroke:#808080"/>)"
    R"(<label>In thousands<style font-size="9pt"/></label></setAxisStyle>)",
    R"(<setAxisMajorTicks><majorTicks role="x" categorical="true" length="0pt"><markStyle>)"
    R"(<style visible="false"/></markStyle><tickLabelStyle><style font-size="8pt 6pt"/>)"
    R"(</tickLabelStyle></majorTicks></setAxisMajorTicks>)",
    R"(<setAxisMajorTicks>)"
    R"(<majorTicks role="x" categorical="false" position="outside" length="3pt" delta="auto">)"
    R"(<markStyle><style color="#808080"/></markStyle></majorTicks></setAxisMajorTicks>)",
    R"(<setAxisMajorTicks><majorTicks role="y" position="outside" length="3pt" delta="50">)"
    R"(<gridLines><style color="#D0D0D0"/></gridLines><markStyle>)"
    R"(<style value="stroke:#808080"/></markStyle><tickLabelStyle><style font-size="8pt"/>)"
    R"(<style number="1" color="#EFEFEF"/></tickLabelStyle>)"
    R"(<numberFormat useGrouping="true" maximumFractionDigits="2"/></majorTicks>)"
    R"(</setAxisMajorTicks>)",
    R"(<setAxisMinorTicks><minorTicks role="y" number="4" length="2pt"><markStyle>)"
    R"(<style color="#D0D0D0"/></markStyle></minorTicks></setAxisMinorTicks>)",
    R"(<setAxisMinorTicks><minorTicks role="x" styleOnly="true"><markStyle>)"
    R"(<style color="#D0D0D0"/></markStyle></minorTicks></setAxisMinorTicks>)",
    R"(<setAxisOpposite role="x" opposite="false"/>)",
    R"(<setAxisOpposite role="y" opposite="false"/>)",
    R"(<setTickLabelFormat role="y"><numberFormat prefix="$" useGrouping="true"/>)"
    R"(</setTickLabelFormat>)",
    R"(<setTickLabelAngle role="x" labelAngle="45" categorical="true"/>)",
    R"(<setTickLabelFrequency role="x" labelFrequency="2" categorical="true"/>)",
    R"(<setTickLabelFrequency role="y" labelFrequency="1"/>)",
};
static_assert(std::size(houseStyle) == housestyle::size);

}  // namespace

std::string housestyle::templateOf(std::string_view commands) {
  return std::string(start) + std::string(commands) + "</template>";
}

std::string_view housestyle::command(std::size_t index) {
  return houseStyle[index];
}

std::string housestyle::text(int commands) {
  std::string all;
  for (int i = 0; i < commands; ++i) all += houseStyle[i % std::size(houseStyle)];
  return templateOf(all);
}
