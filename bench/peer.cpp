// The whole roads of a chart against libxml2, which parses the same text, validates it against the
// same schema and prints it. Both have read their schemas before.
#include "measures.h"

#ifndef CHARTXML_LIBXML2

#include <cstdio>

void addPeer() {
  std::puts("libxml2 was not found: nothing is compared with it");
}

#else

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <memory>
#include <stdexcept>

#include "charts.h"
#include "charttransformer.h"
#include "housestyle.h"
#include "pathfactory.h"

namespace {

struct Free {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
  void operator()(xmlSchema* schema) const { xmlSchemaFree(schema); }
  void operator()(xmlSchemaParserCtxt* parser) const { xmlSchemaFreeParserCtxt(parser); }
  void operator()(xmlSchemaValidCtxt* validator) const { xmlSchemaFreeValidCtxt(validator); }
};
using Document = std::unique_ptr<xmlDoc, Free>;

xmlSchema& schema() {
  static const std::unique_ptr<xmlSchema, Free> read = [] {
    const std::string path = PathFactory::getPathInstance(3)->getFolder() + "grafo-2.9.xsd";
    const std::unique_ptr<xmlSchemaParserCtxt, Free> parser(xmlSchemaNewParserCtxt(path.c_str()));
    return std::unique_ptr<xmlSchema, Free>(xmlSchemaParse(parser.get()));
  }();
  if (!read) throw std::runtime_error("libxml2 can't read the schema");
  return *read;
}

Document parsed(const std::string& text) {
  Document document(xmlReadMemory(text.data(), static_cast<int>(text.size()), "chart", nullptr,
                                  XML_PARSE_NONET | XML_PARSE_COMPACT));
  const std::unique_ptr<xmlSchemaValidCtxt, Free> validator(xmlSchemaNewValidCtxt(&schema()));
  if (!document || xmlSchemaValidateDoc(validator.get(), document.get()) != 0) {
    throw std::runtime_error("libxml2 refuses the chart");
  }
  return document;
}

void parseAndPrint(const std::string& text) {
  const Document document = parsed(text);
  xmlChar* printed = nullptr;
  int size = 0;
  xmlDocDumpMemoryEnc(document.get(), &printed, &size, "UTF-8");
  xmlFree(printed);
  if (size <= 0) throw std::runtime_error("libxml2 doesn't print the chart");
}

// Of the text, what rows are.
enum class Rows { Most, Few };

void addChart(const std::string& label, const std::string& text, Rows rows, int runs) {
  const bool areMost = rows == Rows::Most;
  const std::string house = housestyle::text();
  schema();
  measureTime("peer/" + label + "/open and parse", areMost ? 0.9 : 3.4, runs, [=]() -> Pair {
    return {[=] { const ChartTransformer chart(text); }, [=] { parsed(text); }};
  });
  measureTime("peer/" + label + "/open, whole and parse, print", areMost ? 1.0 : noLimit, runs,
              [=]() -> Pair {
                return {[=] { ChartTransformer(text).getEntireXML(nullptr); },
                        [=] { parseAndPrint(text); }};
              });
  measureTime("peer/" + label + "/open, apply, whole and parse, print", areMost ? 1.3 : noLimit,
              runs, [=]() -> Pair {
                return {[=] {
                          ChartTransformer chart(text);
                          if (!chart.applyTemplate(house)) throw std::runtime_error("not applied");
                          chart.getEntireXML(nullptr);
                        },
                        [=] { parseAndPrint(text); }};
              });
}

}  // namespace

void addPeer() {
  struct Example {
    const char* name;
    Rows rows;
  };
  constexpr Example examples[] = {{"clustered-bars", Rows::Few},
                                  {"weather-map", Rows::Few},
                                  {"histogram", Rows::Most},
                                  {"hex-bins", Rows::Most},
                                  {"panelled-line-dates", Rows::Most}};
  for (const auto& [name, rows] : examples) {
    const std::string text = exampleText(name);
    addChart(name + (" of " + std::to_string(text.size() / 1000)) + " KB", text, rows, 100);
  }
  addChart("20000 rows", chartText({.rows = 20'000}), Rows::Most, 11);
}

#endif
