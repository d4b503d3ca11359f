// ChartParser: the DOM parser as the library sets it up, with the bounds that hostile text meets.
#ifndef CHARTXML_CHARTPARSER_H
#define CHARTXML_CHARTPARSER_H

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "boundedparser.h"
#include "chartproblem.h"
#include "grammarpool.h"

// Schema-validating, with namespaces, without ignorable white space; entities are replaced by their
// text. A value that breaks its schema type is no error. Nothing is read but the text and, through
// ChartErrorHandler or TreeEntityResolver, the installation's folder of schemas. A bound that is
// passed is a fatal error at its place in the text.
//
// Of the kind None it takes whatever is well-formed: nothing is validated, names stand as they are
// written, and what lies outside of the text counts as empty.
class ChartParser : public BoundedParser<xercesc::XercesDOMParser> {
 public:
  explicit ChartParser(grammarpool::Kind kind);
  ~ChartParser() override { memory.endsNow(); }

  // A parser to parse with: the one in `parser`, or a new one there when it has none or memory has
  // failed it. The new one keeps the other, whose documents live in its memory.
  static ChartParser& usable(std::unique_ptr<ChartParser>& parser, grammarpool::Kind kind);

  // Parses under a ChartErrorHandler of its own, which logs what ends the parse; false then, and
  // there is no document. Else it is that of getDocument(). The log names the text by `sourceName`.
  // Throws std::bad_alloc for lack of memory, and mustn't be used for another text then; beside it
  // only a TavoGoToCaller passes.
  bool parseText(const std::string& text, const char* sourceName);
  // The same for a text that the shared grammars serve. False for any other, and nothing is logged.
  bool tryText(const std::string& text, const char* sourceName);

  // True when the last text was read with the shared schemas alone.
  bool isServed() const { return isServed_; }
  // What was wrong with the last text: values that break their type, and behind them what ended the
  // parse, if anything did.
  const std::vector<ChartProblem>& problems() const { return problems_; }
  // What the parser and its documents hold.
  std::size_t bytes() const { return memory.bytes(); }
  const xercesc::DOMDocument* document() const {
    return const_cast<ChartParser*>(this)->getDocument();
  }

 protected:
  void error(const unsigned int code, const XMLCh* const domain, const ErrTypes type,
             const XMLCh* const text, const XMLCh* const systemId, const XMLCh* const publicId,
             const XMLFileLoc line, const XMLFileLoc column) override;
  void endDocument() override;
  void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                    const XMLCh* const prefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                    const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) override;
  void doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* const publicId,
                   const XMLCh* const systemId, const bool hasInternalSubset,
                   const bool hasExternalSubset) override;
  void endIntSubset() override;

 private:
  ChartParser(grammarpool::Kind kind, xercesc::XMLGrammarPool* grammars);
  bool parseUnder(xercesc::ErrorHandler& handler, const std::string& text, const char* sourceName);
  void dropDocument();
  void forgetDocument();
  void parseBounded(const std::string& text, const char* sourceName);
  chartprolog::Place place() const override;
  const XMLCh* encoding() const override;
  [[noreturn]] void refuse(const XMLCh* reason) override;
  [[noreturn]] void refuseAt(const XMLCh* reason, chartprolog::Place place) override;
  void note(const XMLCh* text, const XMLCh* systemId, chartprolog::Place place, bool isRefused);
  [[noreturn]] void fail(const xercesc::SAXParseException& e);
  void countNames(const xercesc::XMLElementDecl& declaration,
                  const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                  XMLSize_t attributeCount);
  void countName(const XMLCh* name);

  const grammarpool::Kind kind_;
  const xercesc::XMLGrammarPool* grammars_;  // null for schemas of its own
  std::unique_ptr<ChartParser> former_;      // that memory has failed
  bool isSpent_ = false;
  bool hasDocuments_ = false;
  bool isServed_ = false;
  bool isEnded_ = false;
  bool hasExternalSubset_ = false;
  std::u16string sourceName_;
  std::vector<ChartProblem> problems_;
  // Those that no schema lists, and the namespaces.
  std::unordered_set<std::u16string> names_;
};

#endif
