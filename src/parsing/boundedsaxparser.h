// BoundedSaxParser: a parser for who goes through a document without making one, with the bounds of
// all documents.
#ifndef CHARTXML_BOUNDEDSAXPARSER_H
#define CHARTXML_BOUNDEDSAXPARSER_H

#include <string>

#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>

#include "boundedparser.h"
#include "chartproblem.h"

// Knows where the parser is.
class PlacedHandler : public xercesc::DefaultHandler {
 public:
  void setDocumentLocator(const xercesc::Locator* const locator) override { locator_ = locator; }
  chartprolog::Place place() const {
    return {locator_->getLineNumber(), locator_->getColumnNumber()};
  }

 private:
  const xercesc::Locator* locator_ = nullptr;
};

class BoundedSaxParser : public BoundedParser<xercesc::SAX2XMLReaderImpl> {
 protected:
  // Thrown through the parser: nothing behind the place is to be read.
  struct Stop {};

  // The grammars, if any, must live as long.
  explicit BoundedSaxParser(xercesc::XMLGrammarPool* grammars = nullptr);

  // Goes through the text with a handler of contents, declarations and entities. Answers whether it
  // was read to its end. Of exceptions only what the handler throws and lack of memory pass.
  bool parseText(const std::string& text, PlacedHandler& handler);

  // Told of each problem. False stops the parse.
  virtual bool note(unsigned code, const XMLCh* domain, ErrTypes type, ChartProblem problem) = 0;

  void error(unsigned code, const XMLCh* domain, ErrTypes type, const XMLCh* text,
             const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line,
             XMLFileLoc column) override;
  void XMLDecl(const XMLCh* version, const XMLCh* encoding, const XMLCh* standalone,
               const XMLCh* actualEncoding) override;
  void endDocument() override;

 private:
  [[noreturn]] void refuse(const XMLCh* reason) override;
  [[noreturn]] void refuseAt(const XMLCh* reason, chartprolog::Place place) override;
  chartprolog::Place place() const override { return handler_->place(); }
  const XMLCh* encoding() const override;

  PlacedHandler* handler_ = nullptr;
  std::u16string encoding_;
  bool isWide_ = false;  // starts with the mark of UTF-16
  bool isEnded_ = false;
};

#endif
