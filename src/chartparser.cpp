#include "chartparser.h"

#include <algorithm>
#include <memory>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPool.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "charterrorhandler.h"
#include "chartprolog.h"
#include "chartstring.h"
#include "grammarpool.h"
#include "tavogotocaller.h"
#include "treeentityresolver.h"

using namespace xercesc;

namespace {

constexpr unsigned deepestLevel = 4096;
constexpr XMLSize_t mostExpansions = 10000;
constexpr XMLSize_t longestEntity = 4096;
// What entities and default attributes may add to the characters of the text itself.
constexpr std::size_t mostAdded = 1 << 20;

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

// Resets what was lent to the parser for one parse.
class HandlerLoan {
 public:
  HandlerLoan(XercesDOMParser& parser, grammarpool::Kind kind)
      : parser_(parser), handler_(std::make_unique<ChartErrorHandler>()) {
    parser.setErrorHandler(handler_.get());
    if (kind == grammarpool::Kind::Trees) {
      parser.setEntityResolver(&treeResolver_);
    } else if (kind == grammarpool::Kind::None) {
      parser.setEntityResolver(&nothingResolver_);
    } else if (kind == grammarpool::Kind::Charts) {
      parser.setEntityResolver(&chartResolver_);
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
  ChartSchemaResolver chartResolver_;
  NothingResolver nothingResolver_;
};

}  // namespace

ChartParser::ChartParser(grammarpool::Kind kind) : ChartParser(kind, grammarpool::shared(kind)) {}

ChartParser::ChartParser(grammarpool::Kind kind, XMLGrammarPool* grammars)
    : XercesDOMParser(nullptr, &memory, grammars), kind_(kind), grammars_(grammars) {
  const bool isValidating = kind != grammarpool::Kind::None;
  setValidationScheme(isValidating ? Val_Always : Val_Never);
  setDoNamespaces(isValidating);
  setDoSchema(isValidating);
  setLoadExternalDTD(isValidating);
  setIncludeIgnorableWhitespace(false);
  setCreateEntityReferenceNodes(false);
  setDisableDefaultEntityResolution(true);
  bounds_.setEntityExpansionLimit(mostExpansions);
  setSecurityManager(&bounds_);
}

// Exceptions end here: those of the parser hold memory that goes with it.
bool ChartParser::parseText(const std::string& text, const char* sourceName) {
  const HandlerLoan loan(*this, kind_);
  useCachedGrammarInParse(grammarpool::serves(kind_, grammars_, text));
  depth_ = 0;
  isEnded_ = false;
  hasDoctype_ = false;
  hasExternalSubset_ = false;
  characters_ = 0;
  text_ = &text;
  try {
    const MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                   sourceName, false);
    parse(source);
    if (!isEnded_) refuse(u"the document could not be read to its end");
    return true;
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    return false;
  }
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
  if (++depth_ > deepestLevel) refuse(u"elements are nested too deep");
  // Where a document type declares a root that names no schema, that alone would decide. The
  // installed one declares older templates, and is no measure for charts.
  const bool needsSchema = kind_ == grammarpool::Kind::Trees ||
                           (kind_ == grammarpool::Kind::Charts && hasExternalSubset_);
  if (needsSchema && declaration.getObjectType() != XMLElementDecl::Schema) {
    refuse(u"the document names no schema");
  }
  for (XMLSize_t i = 0; hasDoctype_ && i < attributeCount; ++i) {
    countText(XMLString::stringLen(attributes.elementAt(i)->getValue()));
  }
  XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty,
                                isRoot);
}

void ChartParser::endElement(const XMLElementDecl& declaration, const unsigned int uriId,
                             const bool isRoot, const XMLCh* const prefix) {
  --depth_;
  XercesDOMParser::endElement(declaration, uriId, isRoot, prefix);
}

void ChartParser::docCharacters(const XMLCh* const characters, const XMLSize_t length,
                                const bool isCData) {
  if (hasDoctype_) countText(length);
  XercesDOMParser::docCharacters(characters, length, isCData);
}

// Only a document type can make a text longer than it is.
void ChartParser::doctypeDecl(const DTDElementDecl& root, const XMLCh* const publicId,
                              const XMLCh* const systemId, const bool hasInternalSubset,
                              const bool hasExternalSubset) {
  hasDoctype_ = true;
  hasExternalSubset_ = hasExternalSubset;
  XercesDOMParser::doctypeDecl(root, publicId, systemId, hasInternalSubset, hasExternalSubset);
}

void ChartParser::entityDecl(const DTDEntityDecl& entity, const bool isParameter,
                             const bool isIgnored) {
  if (entity.getValueLen() > longestEntity) refuse(u"an entity is too long");
  XercesDOMParser::entityDecl(entity, isParameter, isIgnored);
}

// The base class writes the subset anew from its parts, which loses quotes, parameter entities and
// more; the text as it stands reads back to the same.
void ChartParser::endIntSubset() {
  const std::u16string subset =
      chartprolog::internalSubset(*text_, getScanner()->getReaderMgr()->getCurrentEncodingStr());
  if (!subset.empty()) fInternalSubset.set(subset.c_str());
  XercesDOMParser::endIntSubset();
}

void ChartParser::countText(XMLSize_t characters) {
  characters_ += characters;
  if (characters_ > text_->size() + mostAdded) refuse(u"entities make the text too long");
}

void ChartParser::refuse(const XMLCh* reason) {
  const SAXParseException e(reason, *getScanner()->getLocator());
  getErrorHandler()->fatalError(e);
  throw SAXParseException(e);
}
