// ChartParser: the DOM parser as the library sets it up, with the bounds that hostile text meets.
#ifndef CHARTXML_CHARTPARSER_H
#define CHARTXML_CHARTPARSER_H

#include <string>

#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include "grammarpool.h"
#include "parsermemory.h"

// A base, so that it outlives the parser that takes from it.
struct ChartParserMemory {
  ParserMemory memory;
};

// Schema-validating, with namespaces, without ignorable white space; entities are replaced by their
// text. A value that breaks its schema type is no error. Nothing is read but the text and, through
// ChartErrorHandler or TreeEntityResolver, the installation's folder of schemas. A bound that is
// passed is a fatal error at its place in the text.
//
// Of the kind None it takes whatever is well-formed: nothing is validated, names stand as they are
// written, and what lies outside of the text counts as empty.
class ChartParser : private ChartParserMemory, public xercesc::XercesDOMParser {
 public:
  explicit ChartParser(grammarpool::Kind kind);

  // Parses under a ChartErrorHandler of its own, which logs what ends the parse; false then. The
  // document is that of getDocument(). The log names the text by `sourceName`. Only a
  // TavoGoToCaller passes.
  bool parseText(const std::string& text, const char* sourceName);

  // Frees what a failed parse has left; documents of earlier parses are untouched.
  void dropDocument();

 protected:
  void error(const unsigned int code, const XMLCh* const domain, const ErrTypes type,
             const XMLCh* const text, const XMLCh* const systemId, const XMLCh* const publicId,
             const XMLFileLoc line, const XMLFileLoc column) override;
  void endDocument() override;
  void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                    const XMLCh* const prefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                    const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                  const bool isRoot, const XMLCh* const prefix) override;
  void docCharacters(const XMLCh* const characters, const XMLSize_t length,
                     const bool isCData) override;
  void doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* const publicId,
                   const XMLCh* const systemId, const bool hasInternalSubset,
                   const bool hasExternalSubset) override;
  void entityDecl(const xercesc::DTDEntityDecl& entity, const bool isParameter,
                  const bool isIgnored) override;
  void endIntSubset() override;

 private:
  ChartParser(grammarpool::Kind kind, xercesc::XMLGrammarPool* grammars);
  void countText(XMLSize_t characters);
  [[noreturn]] void refuse(const XMLCh* reason);

  const grammarpool::Kind kind_;
  const xercesc::XMLGrammarPool* grammars_;  // null for schemas of its own
  xercesc::SecurityManager bounds_;
  unsigned depth_ = 0;
  bool isEnded_ = false;
  bool hasDoctype_ = false;
  bool hasExternalSubset_ = false;
  std::size_t characters_ = 0;  // of texts and attributes so far
  const std::string* text_ = nullptr;
};

#endif
