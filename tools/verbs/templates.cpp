#include "templates.h"

#include <algorithm>
#include <memory>
#include <optional>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

using namespace xercesc;

namespace {

constexpr const char* blanks = " \t\r\n";
constexpr XMLSize_t mostExpansions = 10000;
constexpr XMLSize_t longestEntity = 4096;

std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

// Builds the nodes of one document as the parser goes through it. The parser tells where an event
// ends, which is where the next one starts: blanks between tags are events, too, but for those
// before the root.
class Builder : public DefaultHandler {
 public:
  Builder(const std::string& document, const SAX2XMLReader& reader)
      : documentText_(document), reader_(reader) {}

  TemplateNode takeRoot() { return std::move(document_.children.at(0)); }

  void setDocumentLocator(const Locator* const locator) override { locator_ = locator; }

  void startElement(const XMLCh* const, const XMLCh* const, const XMLCh* const name,
                    const Attributes& attributes) override {
    endText();
    TemplateNode node;
    node.name = utf8(name);
    if (open_.size() == 1) noteRoot();
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

  // What the library bounds, too.
  void internalEntityDecl(const XMLCh* const, const XMLCh* const value) override {
    if (XMLString::stringLen(value) > longestEntity) throw Failure("an entity is too long");
  }

  // Nothing but the text is read.
  InputSource* resolveEntity(const XMLCh* const, const XMLCh* const systemId) override {
    return new MemBufInputSource(reinterpret_cast<const XMLByte*>(""), 0, systemId);
  }

  void comment(const XMLCh* const, const XMLSize_t) override { endOther(); }
  void processingInstruction(const XMLCh* const, const XMLCh* const) override { endOther(); }

 private:
  void noteEnd() {
    line_ = locator_->getLineNumber();
    column_ = locator_->getColumnNumber();
  }

  // The last "<" of what has been read starts its tag.
  void noteRoot() {
    const auto read = static_cast<std::size_t>(reader_.getSrcOffset());
    const std::size_t start = documentText_.rfind('<', read > 0 ? read - 1 : 0);
    if (start == documentText_.npos) return noteEnd();
    const std::string before = documentText_.substr(0, start);
    const std::size_t lineStart = before.rfind('\n') + 1;
    line_ = 1 + std::count(before.begin(), before.end(), '\n');
    const ChartString line(before.substr(lineStart).c_str());
    column_ = 1 + line.length();
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

  const std::string& documentText_;
  const SAX2XMLReader& reader_;
  const Locator* locator_ = nullptr;
  TemplateNode document_;
  std::vector<TemplateNode*> open_{&document_};
  TemplateNode text_;
  unsigned long line_ = 1;
  unsigned long column_ = 1;
};

constexpr const char* noTemplate =
    ": is not a template: it names no schema grafo-template-VERSION.xsd";

[[noreturn]] void failAtProblems(const std::string& file, const std::string& text) {
  std::string last = file + noTemplate;
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
  // An older template need be no more than well-formed.
  const bool isOlder = ChartTemplate::isOlder(text);
  reader->setFeature(XMLUni::fgSAX2CoreNameSpaces, !isOlder);
  reader->setFeature(XMLUni::fgXercesSchema, !isOlder);
  reader->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
  reader->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
  SecurityManager bounds;
  bounds.setEntityExpansionLimit(mostExpansions);
  reader->setProperty(XMLUni::fgXercesSecurityManager, &bounds);
  Builder builder(text, *reader);
  reader->setContentHandler(&builder);
  reader->setLexicalHandler(&builder);
  reader->setDeclarationHandler(&builder);
  reader->setErrorHandler(&builder);
  if (isOlder) reader->setEntityResolver(&builder);
  reader->parse(
      MemBufInputSource(reinterpret_cast<const XMLByte*>(text.data()), text.size(), u"template"));
  return builder.takeRoot();
}

// Why the library can't read it.
[[noreturn]] void failAtText(const std::string& file, const std::string& text) {
  try {
    nodesOf(text);
  } catch (const SAXParseException& e) {
    throw Failure(
        placed(Problem{{}, e.getLineNumber(), e.getColumnNumber(), utf8(e.getMessage())}, file));
  } catch (const Failure& e) {
    throw Failure(file + ": " + e.what());
  }
  throw Failure(file + ": is nested too deep, or its entities make it too long");
}

OlderTemplate convertOlder(const std::string& file, const std::string& text) {
  try {
    std::optional<ChartTemplate::Conversion> conversion = ChartTemplate::convertOlder(text);
    if (!conversion) failAtText(file, text);
    return {nodesOf(text), *std::move(conversion)};
  } catch (const ChartException& e) {
    throw Failure(file + ": " + e.what());
  }
}

// Today's charts are older than no template.
bool isChart(const std::string& text) {
  return text.find("/grafo-2.9.xsd") != text.npos;
}

Template readConverted(const std::string& file, const std::string& text) {
  if (isChart(text)) failAtProblems(file, text);
  std::string converted = convertOlder(file, text).conversion.text;
  TemplateNode root = nodesOf(converted);
  if (root.children.empty()) {
    throw Failure(file + noTemplate + ", and an older one would hold what can be converted");
  }
  return {file + " (converted)", std::move(converted), std::move(root)};
}

}  // namespace

OlderTemplate readOlderTemplate(const std::string& file) {
  const std::string text = readDocument(file);
  if (!ChartTemplate::isOlder(text)) throw Failure(file + ": is no older template");
  if (isChart(text)) throw Failure(file + ": is a chart, not a template");
  return convertOlder(file, text);
}

Template readTemplate(const std::string& file) {
  const std::string text = readDocument(file);
  if (ChartTemplate::isOlder(text)) return readConverted(file, text);
  if (!ChartTemplate::isTemplate(text)) failAtProblems(file, text);
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
