#include "templates.h"

#include <memory>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

#include <chartxml/charttemplate.h>
#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

using namespace xercesc;

namespace {

constexpr const char* blanks = " \t\r\n";

std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

// Builds the nodes of one document as the parser goes through it. The parser tells where an event
// ends, which is where the next one starts: blanks between tags are events, too.
class Builder : public DefaultHandler {
 public:
  TemplateNode takeRoot() { return std::move(document_.children.at(0)); }

  void setDocumentLocator(const Locator* const locator) override { locator_ = locator; }

  void startElement(const XMLCh* const, const XMLCh* const, const XMLCh* const name,
                    const Attributes& attributes) override {
    endText();
    TemplateNode node;
    node.name = utf8(name);
    // Blanks before the root are none.
    if (open_.size() == 1) noteEnd();
    node.line = line_;
    node.column = column_;
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
      if (XMLString::equals(attributes.getURI(i), SchemaSymbols::fgURI_XSI)) continue;
      node.attributes.emplace_back(utf8(attributes.getQName(i)), utf8(attributes.getValue(i)));
    }
    // The open ones are the last of their parents, so that none of them is moved.
    open_.back()->children.push_back(std::move(node));
    open_.push_back(&open_.back()->children.back());
    noteEnd();
  }

  void endElement(const XMLCh* const, const XMLCh* const, const XMLCh* const) override {
    endText();
    open_.pop_back();
    noteEnd();
  }

  void characters(const XMLCh* const text, const XMLSize_t length) override {
    if (text_.text.empty()) {
      text_.line = line_;
      text_.column = column_;
    }
    text_.text += utf8(std::u16string(text, length).c_str());
    noteEnd();
  }

  void comment(const XMLCh* const, const XMLSize_t) override { endOther(); }
  void processingInstruction(const XMLCh* const, const XMLCh* const) override { endOther(); }

 private:
  void noteEnd() {
    line_ = locator_->getLineNumber();
    column_ = locator_->getColumnNumber();
  }

  void endOther() {
    endText();
    noteEnd();
    open_.back()->hasOtherNodes = true;
  }

  // Keeps the text, if it isn't blank, with the place of its first sign.
  void endText() {
    const std::size_t start = text_.text.find_first_not_of(blanks);
    if (start != std::string::npos) {
      for (std::size_t i = 0; i < start; ++i) {
        ++text_.column;
        if (text_.text[i] != '\n') continue;
        ++text_.line;
        text_.column = 1;
      }
      open_.back()->children.push_back(std::move(text_));
    }
    text_ = {};
  }

  const Locator* locator_ = nullptr;
  TemplateNode document_;
  std::vector<TemplateNode*> open_{&document_};
  TemplateNode text_;
  unsigned long line_ = 1;
  unsigned long column_ = 1;
};

struct Release {
  void operator()(DOMDocument* document) const { document->release(); }
};

// As the library decides it.
bool isTemplate(const std::string& text) {
  const std::unique_ptr<DOMDocument, Release> document(
      ChartBase::createPlXDocument(ChartBase::_utf8));
  PlXVisualization chart(document->getDocumentElement());
  return ChartTemplate(chart, nullptr).parseTemplate(text);
}

[[noreturn]] void failAtProblems(const std::string& file, const std::string& text) {
  std::string last = file + ": is not a template: it names no schema grafo-template-VERSION.xsd";
  bool isFirst = true;
  for (const Problem& problem : ProblemFinder().problemsOf(text)) {
    if (!problem.isRefused) continue;
    if (!isFirst) complain(last);
    last = placed(problem, file);
    isFirst = false;
  }
  throw Failure(last);
}

TemplateNode nodesOf(const std::string& text) {
  const std::unique_ptr<SAX2XMLReader> reader(XMLReaderFactory::createXMLReader());
  reader->setFeature(XMLUni::fgSAX2CoreValidation, false);
  reader->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
  reader->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
  Builder builder;
  reader->setContentHandler(&builder);
  reader->setLexicalHandler(&builder);
  reader->setErrorHandler(&builder);
  reader->parse(
      MemBufInputSource(reinterpret_cast<const XMLByte*>(text.data()), text.size(), u"template"));
  return builder.takeRoot();
}

}  // namespace

Template readTemplate(const std::string& file) {
  const std::string text = readDocument(file);
  if (!isTemplate(text)) failAtProblems(file, text);
  TemplateNode root = nodesOf(text);
  // The schema declares commands and their parts, too, and any of them may be a root.
  if (root.name.substr(root.name.find(':') + 1) != "template") {
    throw Failure(placed(root, file, "the root is '" + root.name + "', not 'template'"));
  }
  return {file, text, std::move(root)};
}

std::string placed(const TemplateNode& node, const std::string& file, const std::string& message) {
  return placed(Problem{{}, node.line, node.column, message}, file);
}
