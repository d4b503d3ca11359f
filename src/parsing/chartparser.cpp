#include "chartparser.h"

#include <new>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPool.hpp>
#include <xercesc/internal/XMLScanner.hpp>

#include "charterrorhandler.h"
#include "chartstring.h"
#include "datatypeerror.h"
#include "grammarpool.h"
#include "memoryfailure.h"
#include "memoryroom.h"
#include "plxextension.h"
#include "problemlist.h"
#include "tavogotocaller.h"
#include "treeentityresolver.h"

using namespace xercesc;

namespace {

// What the older schema declares beyond the newer one is for older templates: charts that name it
// are held to the newer.
class ChartSchemaResolver : public ChartErrorHandler {
 public:
  InputSource* resolveEntity(const XMLCh* publicId, const XMLCh* systemId) override {
    const bool isOlder = ChartString(systemId).view().ends_with(u"/grafo-1.4.xsd");
    return ChartErrorHandler::resolveEntity(publicId, isOlder ? u"/./grafo-2.9.xsd" : systemId);
  }
};

// Outside of the text is nothing.
class NothingResolver : public EntityResolver {
 public:
  InputSource* resolveEntity(const XMLCh*, const XMLCh* systemId) override {
    return new MemBufInputSource(reinterpret_cast<const XMLByte*>(""), 0, systemId, false);
  }
};

// Ends the same parses as its base, but leaves no trace of them.
class SilentErrorHandler : public ChartErrorHandler {
 public:
  void fatalError(const SAXParseException& e) override { throw SAXParseException(e); }
  void error(const SAXParseException& e) override {
    if (!isDatatypeError(e)) throw SAXParseException(e);
  }
  void warning(const SAXParseException& e) override { throw SAXParseException(e); }
};

// Resets what was lent to the parser for one parse.
class HandlerLoan {
 public:
  HandlerLoan(XercesDOMParser& parser, grammarpool::Kind kind, ErrorHandler& handler)
      : parser_(parser) {
    parser.setErrorHandler(&handler);
    if (kind == grammarpool::Kind::Trees) {
      parser.setEntityResolver(&treeResolver_);
    } else if (kind == grammarpool::Kind::None) {
      parser.setEntityResolver(&nothingResolver_);
    } else if (kind == grammarpool::Kind::Charts) {
      parser.setEntityResolver(&chartResolver_);
    } else {
      parser.setEntityResolver(&installedResolver_);
    }
  }
  HandlerLoan(const HandlerLoan&) = delete;
  HandlerLoan& operator=(const HandlerLoan&) = delete;
  ~HandlerLoan() {
    parser_.setErrorHandler(nullptr);
    parser_.setEntityResolver(static_cast<EntityResolver*>(nullptr));
  }

 private:
  XercesDOMParser& parser_;
  ChartErrorHandler installedResolver_;
  TreeEntityResolver treeResolver_;
  ChartSchemaResolver chartResolver_;
  NothingResolver nothingResolver_;
};

}  // namespace

ChartParser::ChartParser(grammarpool::Kind kind) : ChartParser(kind, grammarpool::shared(kind)) {}

ChartParser::ChartParser(grammarpool::Kind kind, XMLGrammarPool* grammars)
    : BoundedParser(nullptr, &memory, grammars), kind_(kind), grammars_(grammars) {
  const bool isValidating = kind != grammarpool::Kind::None;
  setValidationScheme(isValidating ? Val_Always : Val_Never);
  setDoNamespaces(isValidating);
  setDoSchema(isValidating);
  setLoadExternalDTD(isValidating);
  setIncludeIgnorableWhitespace(false);
  setCreateEntityReferenceNodes(false);
  setDisableDefaultEntityResolution(true);
  setSecurityManager(&expansions());
}

ChartParser& ChartParser::usable(std::unique_ptr<ChartParser>& parser, grammarpool::Kind kind) {
  if (!parser || parser->isSpent_) {
    auto next = asBadAlloc([kind] { return std::make_unique<ChartParser>(kind); });
    if (parser && parser->hasDocuments_) next->former_ = std::move(parser);
    parser = std::move(next);
  }
  return *parser;
}

bool ChartParser::parseText(const std::string& text, const char* sourceName) {
  isServed_ = grammarpool::serves(kind_, grammars_, text);
  ChartErrorHandler handler;
  return parseUnder(handler, text, sourceName);
}

bool ChartParser::tryText(const std::string& text, const char* sourceName) {
  isServed_ = grammarpool::serves(kind_, grammars_, text);
  if (!isServed_) return false;
  SilentErrorHandler handler;
  return parseUnder(handler, text, sourceName);
}

// Exceptions end here: those of the parser hold memory that goes with it.
bool ChartParser::parseUnder(ErrorHandler& handler, const std::string& text,
                             const char* sourceName) {
  forgetDocument();
  const HandlerLoan loan(*this, kind_, handler);
  useCachedGrammarInParse(isServed_);
  isEnded_ = false;
  hasExternalSubset_ = false;
  names_.clear();
  problems_.clear();
  sourceName_ = ChartString(sourceName).xc_str();
  // Until the parse ends in order: what it holds may be in any state.
  isSpent_ = true;
  try {
    parseBounded(text, sourceName);
    isSpent_ = false;
    hasDocuments_ = true;
    return true;
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (const std::bad_alloc&) {
  } catch (const OutOfMemoryException&) {
  } catch (...) {
    isSpent_ = false;
  }
  dropDocument();
  if (isSpent_) throw std::bad_alloc();
  return false;
}

void ChartParser::parseBounded(const std::string& text, const char* sourceName) {
  const MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                 sourceName, false, &memory);
  try {
    const Bounds bounds(*this, text);
    // A text of no length needs little of it, and asking takes time. A quarter is for what is made
    // of the document, and for other programs.
    constexpr std::size_t longText = 1 << 20;
    if (text.size() >= longText) memory.boundRoom(memoryroom::left() / 4 * 3);
    parse(source);
  } catch (const ParserMemory::Exceeded& e) {
    refuseAt(e.reason, placeOfExceeded());
  }
  if (isEnded_) return;
  // What the parser has told last has ended the scan.
  constexpr const XMLCh* reason = u"the document could not be read to its end";
  if (problems_.empty()) refuse(reason);
  problems_.back().isRefused = true;
  getErrorHandler()->fatalError(SAXParseException(reason, *getScanner()->getLocator()));
}

// Documents of earlier parses are untouched.
void ChartParser::dropDocument() {
  DOMDocument* document = adoptDocument();
  if (!document) return;
  document->release();
  forgetDocument();
}

// Whatever happens, the document is then the one of the next parse.
void ChartParser::forgetDocument() {
  asBadAlloc([this] { reset(); });
}

// Values are checked by datatype validators, whose exceptions come here as errors of the
// exceptions' own domain. So does an exception that ends the whole scan, which parseText() tells by
// its effect.
void ChartParser::error(const unsigned int code, const XMLCh* const domain, const ErrTypes type,
                        const XMLCh* const text, const XMLCh* const systemId,
                        const XMLCh* const publicId, const XMLFileLoc line,
                        const XMLFileLoc column) {
  const bool isValue = type == ErrType_Error && XMLString::equals(domain, XMLUni::fgExceptDomain);
  note(text, systemId, {line, column}, !isValue);
  if (isValue) return;
  XercesDOMParser::error(code, domain, type, text, systemId, publicId, line, column);
}

void ChartParser::endDocument() {
  BoundedParser::endDocument();
  isEnded_ = true;
}

void ChartParser::startElement(const XMLElementDecl& declaration, const unsigned int uriId,
                               const XMLCh* const prefix, const RefVectorOf<XMLAttr>& attributes,
                               const XMLSize_t attributeCount, const bool isEmpty,
                               const bool isRoot) {
  // Where a document type declares a root that names no schema, that alone would decide. The
  // installed one declares older templates, and is no measure for charts.
  const bool needsSchema = kind_ == grammarpool::Kind::Trees ||
                           (kind_ == grammarpool::Kind::Charts && hasExternalSubset_);
  if (needsSchema && declaration.getObjectType() != XMLElementDecl::Schema) {
    refuse(u"the document names no schema");
  }
  countNames(declaration, attributes, attributeCount);
  BoundedParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty,
                              isRoot);
}

// A document keeps its names in a table that doesn't grow: finding one takes time with their
// number.
void ChartParser::countName(const XMLCh* name) {
  constexpr std::size_t mostNames = 8192;
  names_.insert(name);
  if (names_.size() > mostNames) refuse(u"the document has too many names");
}

void ChartParser::countNames(const XMLElementDecl& declaration,
                             const RefVectorOf<XMLAttr>& attributes, XMLSize_t attributeCount) {
  // The names of a chart are those of its schema, but in records and with prefixes.
  const bool areKnown =
      kind_ == grammarpool::Kind::Charts && declaration.getObjectType() == XMLElementDecl::Schema;
  const bool isRecord = XMLString::equals(declaration.getBaseName(), PlXExtension::_UTF_extension);
  if (!areKnown) countName(declaration.getFullName());
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    const XMLAttr& attribute = *attributes.elementAt(i);
    const XMLCh* attributePrefix = attribute.getPrefix();
    const bool hasPrefix = attributePrefix && *attributePrefix;
    if (areKnown && !isRecord && !hasPrefix) continue;
    countName(attribute.getQName());
    if (hasPrefix && XMLString::equals(attributePrefix, XMLUni::fgXMLNSString)) {
      countName(attribute.getValue());
    }
  }
}

void ChartParser::doctypeDecl(const DTDElementDecl& root, const XMLCh* const publicId,
                              const XMLCh* const systemId, const bool hasInternalSubset,
                              const bool hasExternalSubset) {
  hasExternalSubset_ = hasExternalSubset;
  BoundedParser::doctypeDecl(root, publicId, systemId, hasInternalSubset, hasExternalSubset);
}

// The base class writes the subset anew from its parts, which loses quotes, parameter entities and
// more; the text as it stands reads back to the same.
void ChartParser::endIntSubset() {
  if (!subset().empty()) fInternalSubset.set(subset().c_str());
  XercesDOMParser::endIntSubset();
}

chartprolog::Place ChartParser::place() const {
  const Locator& locator = *getScanner()->getLocator();
  return {locator.getLineNumber(), locator.getColumnNumber()};
}

const XMLCh* ChartParser::encoding() const {
  return getScanner()->getReaderMgr()->getCurrentEncodingStr();
}

void ChartParser::refuse(const XMLCh* reason) {
  fail(SAXParseException(reason, *getScanner()->getLocator()));
}

void ChartParser::refuseAt(const XMLCh* reason, chartprolog::Place place) {
  fail(SAXParseException(reason, nullptr, sourceName_.c_str(), place.line, place.column));
}

void ChartParser::note(const XMLCh* text, const XMLCh* systemId, chartprolog::Place place,
                       bool isRefused) {
  ChartProblem problem{{}, place.line, place.column, ChartString(text).toUTF8(), isRefused};
  if (place.line && sourceName_ != ChartString(systemId).view()) {
    problem.file = ChartString(systemId).toUTF8();
  }
  problemlist::add(problems_, std::move(problem));
}

void ChartParser::fail(const SAXParseException& e) {
  note(e.getMessage(), e.getSystemId(), {e.getLineNumber(), e.getColumnNumber()}, true);
  getErrorHandler()->fatalError(e);
  throw SAXParseException(e);
}
