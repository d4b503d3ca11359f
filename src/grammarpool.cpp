#include "grammarpool.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "chartbase.h"
#include "charterrorhandler.h"
#include "chartprolog.h"
#include "pathfactory.h"

using namespace xercesc;

namespace {

struct Schema {
  std::string_view namespaceUri;
  std::string location;
};

constexpr const char* chartNamespace = CHARTXML_HOST "/visualization";
constexpr const char* dataNamespace = CHARTXML_HOST "/tavo/visualization";
constexpr const char* newerTemplates = CHARTXML_HOST "/software/analytics/tavo/xml/visualization";

// grafo-1.4.xsd is grafo-2.9.xsd under its older name.
std::vector<Schema> chartSchemas() {
  return {
      {chartNamespace, CHARTXML_HOST "/visualization/grafo-2.9.xsd"},
      {chartNamespace, CHARTXML_HOST "/visualization/grafo-1.4.xsd"},
      {dataNamespace, CHARTXML_HOST "/tavo/visualization/grafo-data-2.1.xsd"},
  };
}

// All versions of a namespace are one schema under many names.
std::vector<Schema> templateSchemas() {
  struct Versions {
    const char* namespaceUri;
    int major;
    int lastMinor;
  };
  constexpr Versions versions[] = {
      {dataNamespace, 1, 10}, {dataNamespace, 2, 10}, {newerTemplates, 3, 5}};
  std::vector<Schema> schemas;
  for (const auto& [namespaceUri, major, lastMinor] : versions) {
    const std::string start =
        std::string(namespaceUri) + "/grafo-template-" + std::to_string(major) + '.';
    for (int minor = 0; minor <= lastMinor; ++minor) {
      schemas.push_back({namespaceUri, start + std::to_string(minor) + ".xsd"});
    }
  }
  return schemas;
}

const std::vector<Schema>& schemasOf(grammarpool::Kind kind) {
  static const std::vector<Schema> charts = chartSchemas();
  static const std::vector<Schema> templates = templateSchemas();
  return kind == grammarpool::Kind::Templates ? templates : charts;
}

// What brings in all schemas of a kind: the data schema imports that of charts.
std::vector<const char*> filesOf(grammarpool::Kind kind) {
  if (kind == grammarpool::Kind::Templates) {
    return {"grafo-template-1.0.xsd", "grafo-template-3.5.xsd"};
  }
  return {"grafo-data-2.1.xsd"};
}

struct Pool {
  grammarpool::Kind kind;
  std::string folder;
  std::unique_ptr<XMLGrammarPoolImpl> grammars;
};

unsigned holders = 0;
// More than one only in a program that changes its installation folder.
std::vector<Pool> pools;

// Null when the schemas can't be read.
std::unique_ptr<XMLGrammarPoolImpl> readSchemas(grammarpool::Kind kind, const std::string& folder) {
  auto grammars = std::make_unique<XMLGrammarPoolImpl>();
  try {
    XercesDOMParser parser(nullptr, XMLPlatformUtils::fgMemoryManager, grammars.get());
    ChartErrorHandler handler;
    parser.setErrorHandler(&handler);
    parser.setEntityResolver(&handler);
    parser.setDoNamespaces(true);
    parser.setDoSchema(true);
    parser.setValidationScheme(AbstractDOMParser::Val_Always);
    parser.setDisableDefaultEntityResolution(true);
    for (const char* file : filesOf(kind)) {
      const ChartString path((folder + file).c_str());
      if (!parser.loadGrammar(LocalFileInputSource(path.xc_str()), Grammar::SchemaGrammarType,
                              true)) {
        return nullptr;
      }
    }
  } catch (...) {
    // Parsers meet the same failure when they read the schema themselves, and report it.
    return nullptr;
  }
  grammars->lockPool();
  return grammars;
}

bool isPairOf(std::string_view locations, const Schema& schema) {
  constexpr std::string_view blanks = " \t\r\n";
  const std::size_t start = locations.find_first_not_of(blanks);
  if (start == locations.npos) return false;
  locations = locations.substr(start, locations.find_last_not_of(blanks) + 1 - start);
  const std::size_t gap = locations.find_first_of(blanks);
  if (gap == locations.npos || locations.substr(0, gap) != schema.namespaceUri) return false;
  locations.remove_prefix(locations.find_first_not_of(blanks, gap));
  return locations == schema.location;
}

}  // namespace

void grammarpool::hold() {
  ++holders;
}

void grammarpool::drop() {
  if (--holders == 0) pools.clear();
}

XMLGrammarPool* grammarpool::shared(Kind kind) {
  if (holders == 0) return nullptr;
  const std::string& folder = PathFactory::getPathInstance(3)->getFolder();
  for (const Pool& pool : pools) {
    if (pool.kind == kind && pool.folder == folder) return pool.grammars.get();
  }
  pools.push_back({kind, folder, readSchemas(kind, folder)});
  return pools.back().grammars.get();
}

bool grammarpool::serves(Kind kind, const XMLGrammarPool* grammars, std::string_view text) {
  if (!grammars || grammars != shared(kind)) return false;
  const chartprolog::Root root = chartprolog::readRoot(text);
  if (!root.isPlain) return false;
  const std::vector<Schema>& schemas = schemasOf(kind);
  return std::any_of(schemas.begin(), schemas.end(), [&](const Schema& schema) {
    return root.namespaceUri == schema.namespaceUri && isPairOf(root.schemaLocation, schema);
  });
}
