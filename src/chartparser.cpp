#include "chartparser.h"

#include <algorithm>
#include <memory>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPool.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "charterrorhandler.h"
#include "chartprolog.h"
#include "grammarpool.h"

using namespace xercesc;

namespace {

constexpr unsigned deepestLevel = 4096;
// Together they bound what entities can make of a text: 40 million characters.
constexpr XMLSize_t mostExpansions = 10000;
constexpr XMLSize_t longestEntity = 4096;

// Resets what was lent to the parser for one parse.
class HandlerLoan {
 public:
  explicit HandlerLoan(XercesDOMParser& parser)
      : parser_(parser), handler_(std::make_unique<ChartErrorHandler>()) {
    parser.setErrorHandler(handler_.get());
    parser.setEntityResolver(handler_.get());
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
};

}  // namespace

ChartParser::ChartParser() : ChartParser(grammarpool::shared()) {}

ChartParser::ChartParser(XMLGrammarPool* grammars)
    : XercesDOMParser(nullptr, XMLPlatformUtils::fgMemoryManager, grammars), grammars_(grammars) {
  setValidationScheme(Val_Always);
  setDoNamespaces(true);
  setDoSchema(true);
  setIncludeIgnorableWhitespace(false);
  setCreateEntityReferenceNodes(false);
  setDisableDefaultEntityResolution(true);
  bounds_.setEntityExpansionLimit(mostExpansions);
  setSecurityManager(&bounds_);
}

void ChartParser::parseText(const std::string& text) {
  const HandlerLoan loan(*this);
  useCachedGrammarInParse(grammarpool::serves(grammars_, text));
  depth_ = 0;
  text_ = &text;
  const MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                 "ChartBase", false);
  parse(source);
}

void ChartParser::dropDocument() {
  if (DOMDocument* document = adoptDocument()) document->release();
}

void ChartParser::startElement(const XMLElementDecl& declaration, const unsigned int uriId,
                               const XMLCh* const prefix, const RefVectorOf<XMLAttr>& attributes,
                               const XMLSize_t attributeCount, const bool isEmpty,
                               const bool isRoot) {
  if (++depth_ > deepestLevel) refuse(u"elements are nested too deep");
  XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty,
                                isRoot);
}

void ChartParser::endElement(const XMLElementDecl& declaration, const unsigned int uriId,
                             const bool isRoot, const XMLCh* const prefix) {
  --depth_;
  XercesDOMParser::endElement(declaration, uriId, isRoot, prefix);
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

void ChartParser::refuse(const XMLCh* reason) {
  const SAXParseException e(reason, *getScanner()->getLocator());
  getErrorHandler()->fatalError(e);
  throw SAXParseException(e);
}
