#include "chartparser.h"

#include <algorithm>
#include <memory>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPool.hpp>
#include <xercesc/internal/XMLScanner.hpp>

#include "charterrorhandler.h"
#include "chartstring.h"
#include "grammarpool.h"
#include "tavogotocaller.h"
#include "treeentityresolver.h"

using namespace xercesc;

namespace {

// Resets what was lent to the parser for one parse.
class HandlerLoan {
 public:
  HandlerLoan(XercesDOMParser& parser, grammarpool::Kind kind)
      : parser_(parser), handler_(std::make_unique<ChartErrorHandler>()) {
    parser.setErrorHandler(handler_.get());
    if (kind == grammarpool::Kind::Trees) {
      parser.setEntityResolver(&treeResolver_);
    } else {
      parser.setEntityResolver(handler_.get());
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
  std::unique_ptr<ChartErrorHandler> handler_;
  TreeEntityResolver treeResolver_;
};

}  // namespace

ChartParser::ChartParser(grammarpool::Kind kind) : ChartParser(kind, grammarpool::shared(kind)) {}

ChartParser::ChartParser(grammarpool::Kind kind, XMLGrammarPool* grammars)
    : BoundedParser(nullptr, &memory, grammars), kind_(kind), grammars_(grammars) {
  setValidationScheme(Val_Always);
  setDoNamespaces(true);
  setDoSchema(true);
  setIncludeIgnorableWhitespace(false);
  setCreateEntityReferenceNodes(false);
  setDisableDefaultEntityResolution(true);
  setSecurityManager(&expansions());
}

// Exceptions end here: those of the parser hold memory that goes with it.
bool ChartParser::parseText(const std::string& text, const char* sourceName) {
  const HandlerLoan loan(*this, kind_);
  useCachedGrammarInParse(grammarpool::serves(kind_, grammars_, text));
  isEnded_ = false;
  try {
    parseBounded(text, sourceName);
    return true;
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    return false;
  }
}

void ChartParser::parseBounded(const std::string& text, const char* sourceName) {
  const MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                 sourceName, false);
  try {
    const Bounds bounds(*this, text);
    parse(source);
  } catch (const ParserMemory::Exceeded& e) {
    // The parser has left the place.
    const ChartString name(sourceName);
    fail(SAXParseException(e.reason, nullptr, name.xc_str(), 0, 0));
  }
  if (!isEnded_) refuse(u"the document could not be read to its end");
}

void ChartParser::dropDocument() {
  if (DOMDocument* document = adoptDocument()) document->release();
}

// Values are checked by datatype validators, whose exceptions come here as errors of the
// exceptions' own domain. So does an exception that ends the whole scan, which parseText() tells by
// its effect.
void ChartParser::error(const unsigned int code, const XMLCh* const domain, const ErrTypes type,
                        const XMLCh* const text, const XMLCh* const systemId,
                        const XMLCh* const publicId, const XMLFileLoc line,
                        const XMLFileLoc column) {
  if (type == ErrType_Error && XMLString::equals(domain, XMLUni::fgExceptDomain)) return;
  XercesDOMParser::error(code, domain, type, text, systemId, publicId, line, column);
}

void ChartParser::endDocument() {
  isEnded_ = true;
  XercesDOMParser::endDocument();
}

void ChartParser::startElement(const XMLElementDecl& declaration, const unsigned int uriId,
                               const XMLCh* const prefix, const RefVectorOf<XMLAttr>& attributes,
                               const XMLSize_t attributeCount, const bool isEmpty,
                               const bool isRoot) {
  // Where a document type declares a root that names no schema, that alone would decide.
  if (kind_ == grammarpool::Kind::Trees && declaration.getObjectType() != XMLElementDecl::Schema) {
    refuse(u"the document names no schema");
  }
  BoundedParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty,
                              isRoot);
}

// The base class writes the subset anew from its parts, which loses quotes, parameter entities and
// more; the text as it stands reads back to the same.
void ChartParser::endIntSubset() {
  if (!subset().empty()) fInternalSubset.set(subset().c_str());
  XercesDOMParser::endIntSubset();
}

const XMLCh* ChartParser::encoding() const {
  return getScanner()->getReaderMgr()->getCurrentEncodingStr();
}

void ChartParser::refuse(const XMLCh* reason) {
  fail(SAXParseException(reason, *getScanner()->getLocator()));
}

void ChartParser::fail(const SAXParseException& e) {
  getErrorHandler()->fatalError(e);
  throw SAXParseException(e);
}
