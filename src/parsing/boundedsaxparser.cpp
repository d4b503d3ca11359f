#include "boundedsaxparser.h"

#include <utility>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "utf.h"

using namespace xercesc;

namespace {

constexpr const XMLCh* documentName = u"document";

std::string utf8(const XMLCh* text) {
  return utf::toUtf8(text ? text : u"");
}

}  // namespace

BoundedSaxParser::BoundedSaxParser(XMLGrammarPool* grammars) : BoundedParser(&memory, grammars) {
  setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
  setProperty(XMLUni::fgXercesSecurityManager, &expansions());
}

bool BoundedSaxParser::parseText(const std::string& text, PlacedHandler& handler) {
  handler_ = &handler;
  setContentHandler(&handler);
  setLexicalHandler(&handler);
  setDeclarationHandler(&handler);
  setEntityResolver(&handler);
  // Never called, but without one error() isn't either.
  setErrorHandler(&handler);
  isWide_ = text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE");
  encoding_.clear();
  isEnded_ = false;
  try {
    const MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                   documentName);
    const Bounds bounds(*this, text);
    parse(source);
  } catch (const Stop&) {
    return false;
  } catch (const ParserMemory::Exceeded& e) {
    const chartprolog::Place place = placeOfExceeded();
    note(0, nullptr, ErrType_Fatal, {{}, place.line, place.column, utf8(e.reason), true});
    return false;
  }
  return isEnded_;
}

void BoundedSaxParser::error(const unsigned code, const XMLCh* const domain, const ErrTypes type,
                             const XMLCh* const text, const XMLCh* const systemId,
                             const XMLCh* const, const XMLFileLoc line, const XMLFileLoc column) {
  ChartProblem problem{{}, line, column, utf8(text), true};
  if (line && !XMLString::equals(systemId, documentName)) problem.file = utf8(systemId);
  if (!note(code, domain, type, std::move(problem))) throw Stop();
}

void BoundedSaxParser::XMLDecl(const XMLCh* const version, const XMLCh* const encoding,
                               const XMLCh* const standalone, const XMLCh* const actualEncoding) {
  BoundedParser::XMLDecl(version, encoding, standalone, actualEncoding);
  encoding_ = actualEncoding ? actualEncoding : u"";
}

void BoundedSaxParser::endDocument() {
  BoundedParser::endDocument();
  isEnded_ = true;
}

// Only a document without a declaration leaves it to its first bytes.
const XMLCh* BoundedSaxParser::encoding() const {
  if (!encoding_.empty()) return encoding_.c_str();
  return isWide_ ? XMLUni::fgUTF16EncodingString : XMLUni::fgUTF8EncodingString;
}

void BoundedSaxParser::refuse(const XMLCh* reason) {
  BoundedSaxParser::refuseAt(reason, place());
}

void BoundedSaxParser::refuseAt(const XMLCh* reason, chartprolog::Place place) {
  note(0, nullptr, ErrType_Fatal, {{}, place.line, place.column, utf8(reason), true});
  throw Stop();
}
