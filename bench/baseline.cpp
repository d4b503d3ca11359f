#include "baseline.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <stdexcept>

#include "charterrorhandler.h"
#include "chartstring.h"
#include "pathfactory.h"

using namespace xercesc;

namespace {

// These live as long as the process.
ChartErrorHandler handler;
SecurityManager bounds;
XMLGrammarPool* grammars = nullptr;

std::unique_ptr<XercesDOMParser> parserWith(XMLGrammarPool* pool) {
  auto parser = std::make_unique<XercesDOMParser>(nullptr, XMLPlatformUtils::fgMemoryManager, pool);
  parser->setErrorHandler(&handler);
  parser->setEntityResolver(&handler);
  parser->setValidationScheme(AbstractDOMParser::Val_Always);
  parser->setDoNamespaces(true);
  parser->setDoSchema(true);
  parser->setIncludeIgnorableWhitespace(false);
  parser->setCreateEntityReferenceNodes(false);
  parser->setDisableDefaultEntityResolution(true);
  parser->setSecurityManager(&bounds);
  return parser;
}

XMLGrammarPool* readGrammars() {
  auto* pool = new XMLGrammarPoolImpl;
  const ChartString path(
      (PathFactory::getPathInstance(3)->getFolder() + "grafo-data-2.1.xsd").c_str());
  const LocalFileInputSource schema(path.xc_str());
  if (!parserWith(pool)->loadGrammar(schema, Grammar::SchemaGrammarType, true)) {
    throw std::runtime_error("the schemas can't be read");
  }
  pool->lockPool();
  return pool;
}

}  // namespace

std::unique_ptr<XercesDOMParser> baseline::newParser() {
  if (!grammars) grammars = readGrammars();
  auto parser = parserWith(grammars);
  parser->useCachedGrammarInParse(true);
  return parser;
}

void baseline::parse(XercesDOMParser& parser, const std::string& text) {
  const MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                 "chart", false);
  parser.parse(source);
}

std::string baseline::print(const DOMDocument& document) {
  DOMImplementation* dom = DOMImplementationRegistry::getDOMImplementation(u"LS");
  DOMLSSerializer* serializer = dom->createLSSerializer();
  DOMLSOutput* output = dom->createLSOutput();
  MemBufFormatTarget target;
  output->setEncoding(u"UTF-8");
  output->setByteStream(&target);
  serializer->write(&document, output);
  const std::string text(reinterpret_cast<const char*>(target.getRawBuffer()), target.getLen());
  output->release();
  serializer->release();
  return text;
}
