// A chart for templates to edit, and what must hold behind any edit.
#ifndef CHARTXML_FUZZTEMPLATE_H
#define CHARTXML_FUZZTEMPLATE_H

#include <chartxml/chartxml.h>

#include <cstdlib>
#include <string>

inline const std::string fuzzedChart =
    "<visualization xmlns='" CHARTXML_HOST
    "/visualization' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
    "xsi:schemaLocation='" CHARTXML_HOST "/visualization " CHARTXML_HOST
    "/visualization/grafo-2.9.xsd' style='page'>"
    "<sourceVariable id='town' categorical='true'/><sourceVariable id='size'/>"
    "<categoricalDomain id='towns'/><graph id='graph'><coordinates>"
    "<dimension id='x' domain='towns'><axis id='xAxis'><label><text>Town</text></label>"
    "<majorTicks id='xTicks'/></axis></dimension>"
    "<dimension id='y'><scale method='log' base='2'/><axis id='yAxis' style='line'>"
    "<majorTicks id='yTicks'><format maximumFractionDigits='2'/></majorTicks>"
    "<minorTicks number='4'/></axis></dimension></coordinates>"
    "<interval id='bars' style='bars'><x variable='town'/><y variable='size'/></interval>"
    "<line id='curve'><x variable='town'/><y variable='size'/></line>"
    "<point id='dots'><x variable='town'/><y variable='size'/></point></graph>"
    "<legend id='legend'/><style id='page'/><style id='bars' symbol='square'/>"
    "<style id='line' color='black'/></visualization>";

// Applies the text to the chart, which stays one that can be opened.
inline void applyFuzzed(const std::string& text) {
  static const ChartBase holder;  // schemas are read once
  ChartTransformer chart(fuzzedChart);
  if (!chart.applyTemplate(text)) std::abort();
  // This command alone writes what its author wants, whether the dialect has it or not.
  if (text.find("setGenericAttributes") != text.npos) return;
  if (ChartTransformer(chart.getXML(nullptr)).getXML(nullptr).empty()) std::abort();
}

#endif
