#include "grammarpool.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "charterrorhandler.h"
#include "charthost.h"
#include "chartprolog.h"
#include "chartstring.h"
#include "keptdocuments.h"
#include "pathfactory.h"
#include "storedgrammars.h"

using namespace xercesc;

namespace {

struct Schema {
  std::string_view namespaceUri;
  std::string location;
  bool isAnyFolder = false;  // a document may name another host and folder, too
};

constexpr const char* chartNamespace = CHARTXML_HOST "/visualization";
constexpr const char* dataNamespace = CHARTXML_HOST "/tavo/visualization";
constexpr const char* modelNamespace = "http://www.dmg.org/PMML-2_1";
constexpr std::string_view displayNamespace = CHARTXML_HOST "/tavo/treeview";
constexpr std::string_view otherDisplayNamespace = CHARTXML_HOST "/treeview";
constexpr const char* displayFile = "treeview-1.0.xsd";
constexpr const char* newerTemplates = CHARTXML_HOST "/software/analytics/tavo/xml/visualization";

// Charts of grafo-1.4.xsd are charts of grafo-2.9.xsd (chartparser.cpp).
std::vector<Schema> chartSchemas() {
  return {
      {chartNamespace, CHARTXML_HOST "/visualization/grafo-2.9.xsd"},
      {chartNamespace, CHARTXML_HOST "/visualization/grafo-1.4.xsd"},
      {dataNamespace, CHARTXML_HOST "/tavo/visualization/grafo-data-2.1.xsd"},
  };
}

// All versions of a namespace are one schema under many names.
void addVersions(std::vector<Schema>& schemas, const char* namespaceUri, int major, int lastMinor) {
  const std::string start =
      std::string(namespaceUri) + "/grafo-template-" + std::to_string(major) + '.';
  for (int minor = 0; minor <= lastMinor; ++minor) {
    schemas.push_back({namespaceUri, start + std::to_string(minor) + ".xsd"});
  }
}

std::vector<Schema> templateSchemas() {
  std::vector<Schema> schemas;
  addVersions(schemas, dataNamespace, 1, 10);
  addVersions(schemas, dataNamespace, 2, 10);
  return schemas;
}

std::vector<Schema> newerTemplateSchemas() {
  std::vector<Schema> schemas;
  addVersions(schemas, newerTemplates, 3, 5);
  return schemas;
}

std::vector<Schema> treeSchemas() {
  return {
      {modelNamespace, "pmml-2-1.xsd", true},
      {displayNamespace, displayFile, true},
      {otherDisplayNamespace, displayFile, true},
  };
}

const std::vector<Schema>& schemasOf(grammarpool::Kind kind) {
  static const std::vector<Schema> charts = chartSchemas();
  static const std::vector<Schema> templates = templateSchemas();
  static const std::vector<Schema> newerTemplates = newerTemplateSchemas();
  static const std::vector<Schema> trees = treeSchemas();
  switch (kind) {
    case grammarpool::Kind::Templates:
      return templates;
    case grammarpool::Kind::NewerTemplates:
      return newerTemplates;
    case grammarpool::Kind::Trees:
      return trees;
    default:
      return charts;
  }
}

// What brings in all schemas of a kind: the data schema imports that of charts.
std::vector<const char*> filesOf(grammarpool::Kind kind) {
  switch (kind) {
    case grammarpool::Kind::Templates:
      return {"grafo-template-1.0.xsd"};
    case grammarpool::Kind::NewerTemplates:
      return {"grafo-template-3.5.xsd"};
    case grammarpool::Kind::Trees:
      return {"pmml-2-1.xsd", displayFile};
    default:
      return {"grafo-data-2.1.xsd"};
  }
}

struct Pool {
  grammarpool::Kind kind;
  std::string folder;
  std::unique_ptr<grammarpool::Grammars> grammars;
};

bool readOtherDisplaySchema(XercesDOMParser& parser, const std::string& folder) {
  const std::string text = grammarpool::otherDisplaySchema(folder);
  const MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                 displayFile, false);
  return parser.loadGrammar(source, Grammar::SchemaGrammarType, true);
}

unsigned holders = 0;
// Of a kind more than one only in a program that changes its installation folder. Never destroyed:
// a process that ends with a ChartBase leaves them to the system, which is faster.
std::vector<Pool>& pools = *new std::vector<Pool>;

// Knows which files the schemas bring in.
class SchemaResolver : public ChartErrorHandler {
 public:
  InputSource* resolveEntity(const XMLCh* publicId, const XMLCh* systemId) override {
    const std::string location = ChartString(systemId).toUTF8();
    files.insert(location.substr(location.rfind('/') + 1));
    return ChartErrorHandler::resolveEntity(publicId, systemId);
  }

  std::set<std::string> files;
};

bool isPairOf(std::string_view locations, const Schema& schema) {
  constexpr std::string_view blanks = " \t\r\n";
  const std::size_t start = locations.find_first_not_of(blanks);
  if (start == locations.npos) return false;
  locations = locations.substr(start, locations.find_last_not_of(blanks) + 1 - start);
  const std::size_t gap = locations.find_first_of(blanks);
  if (gap == locations.npos || locations.substr(0, gap) != schema.namespaceUri) return false;
  locations.remove_prefix(locations.find_first_not_of(blanks, gap));
  if (!schema.isAnyFolder) return locations == schema.location;
  return locations.ends_with(schema.location) && locations.find_first_of(blanks) == locations.npos;
}

}  // namespace

void grammarpool::hold() {
  ++holders;
}

void grammarpool::drop() {
  if (--holders > 0) return;
  keptdocuments::clear();
  pools.clear();
}

std::string grammarpool::otherDisplaySchema(const std::string& folder) {
  std::ifstream file(folder + displayFile, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  const std::string quoted = '"' + std::string(displayNamespace) + '"';
  for (std::size_t at = 0; (at = text.find(quoted, at)) != text.npos;) {
    text.replace(at + 1, displayNamespace.size(), otherDisplayNamespace);
  }
  return text;
}

std::unique_ptr<grammarpool::Grammars> grammarpool::read(Kind kind, const std::string& folder,
                                                         std::set<std::string>* files) {
  auto grammars = std::make_unique<Grammars>();
  try {
    XercesDOMParser parser(nullptr, XMLPlatformUtils::fgMemoryManager, grammars.get());
    SchemaResolver handler;
    parser.setErrorHandler(&handler);
    parser.setEntityResolver(&handler);
    parser.setDoNamespaces(true);
    parser.setDoSchema(true);
    parser.setValidationScheme(AbstractDOMParser::Val_Always);
    parser.setDisableDefaultEntityResolution(true);
    parser.setIgnoreAnnotations(true);
    for (const char* file : filesOf(kind)) {
      handler.files.insert(file);
      const ChartString path((folder + file).c_str());
      if (!parser.loadGrammar(LocalFileInputSource(path.xc_str()), Grammar::SchemaGrammarType,
                              true)) {
        return nullptr;
      }
    }
    if (kind == Kind::Trees && !readOtherDisplaySchema(parser, folder)) return nullptr;
    if (files) files->merge(handler.files);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const OutOfMemoryException&) {
    throw std::bad_alloc();
  } catch (...) {
    // Parsers meet the same failure when they read the schema themselves, and report it.
    return nullptr;
  }
  return grammars;
}

XMLGrammarPool* grammarpool::shared(Kind kind) {
  if (holders == 0 || kind == Kind::None) return nullptr;
  const std::string& folder = PathFactory::getPathInstance(3)->getFolder();
  for (const Pool& pool : pools) {
    if (pool.kind == kind && pool.folder == folder) return pool.grammars.get();
  }
  std::unique_ptr<Grammars> grammars = storedgrammars::read(kind, folder);
  if (!grammars) grammars = read(kind, folder);
  if (grammars) grammars->lockPool();
  pools.push_back({kind, folder, std::move(grammars)});
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

grammarpool::Kind grammarpool::ofTemplate(std::string_view text) {
  return text.find(newerTemplates) == text.npos ? Kind::Templates : Kind::NewerTemplates;
}
