#include "documentnode.h"

#include <algorithm>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

#include "boundedsaxparser.h"
#include "utf.h"

using namespace xercesc;

namespace {

constexpr std::string_view blanks = " \t\r\n";

// Builds the nodes of one document as the parser goes through it. The parser tells where an event
// ends, which is where the next one starts: blanks between tags are events, too, but for those
// before the root.
class Builder : public PlacedHandler {
 public:
  Builder(const std::string& document, const SAX2XMLReader& reader)
      : documentText_(document), reader_(reader) {}

  DocumentNode takeRoot() { return std::move(document_.children.at(0)); }

  void startElement(const XMLCh* const, const XMLCh* const, const XMLCh* const name,
                    const Attributes& attributes) override {
    endText();
    DocumentNode node;
    node.name = utf::toUtf8(name);
    if (open_.size() == 1) noteRoot();
    node.line = line_;
    node.column = column_;
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
      if (XMLString::equals(attributes.getURI(i), SchemaSymbols::fgURI_XSI)) continue;
      node.attributes.emplace_back(utf::toUtf8(attributes.getQName(i)),
                                   utf::toUtf8(attributes.getValue(i)));
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
    utf::appendUtf8(text_.text, std::u16string_view(text, length));
    noteEnd();
  }

  void comment(const XMLCh* const, const XMLSize_t) override { endOther(); }
  void processingInstruction(const XMLCh* const, const XMLCh* const) override { endOther(); }

  InputSource* resolveEntity(const XMLCh* const, const XMLCh* const systemId) override {
    return new MemBufInputSource(reinterpret_cast<const XMLByte*>(""), 0, systemId, false);
  }

 private:
  void noteEnd() {
    line_ = place().line;
    column_ = place().column;
  }

  // The last "<" of what has been read starts its tag.
  void noteRoot() {
    const auto read = static_cast<std::size_t>(reader_.getSrcOffset());
    const std::size_t start = documentText_.rfind('<', read > 0 ? read - 1 : 0);
    if (start == documentText_.npos) return noteEnd();
    const std::string_view before = std::string_view(documentText_).substr(0, start);
    line_ = 1 + std::count(before.begin(), before.end(), '\n');
    column_ = 1 + utf::toUtf16(std::string(before.substr(before.rfind('\n') + 1))).size();
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
  DocumentNode document_;
  std::vector<DocumentNode*> open_{&document_};
  DocumentNode text_;
  unsigned long line_ = 1;
  unsigned long column_ = 1;
};

// Stops at the first thing that isn't well-formed.
class NodeReader : public BoundedSaxParser {
 public:
  explicit NodeReader(bool hasNamespaces) {
    setFeature(XMLUni::fgSAX2CoreValidation, false);
    setFeature(XMLUni::fgSAX2CoreNameSpaces, hasNamespaces);
    setFeature(XMLUni::fgXercesSchema, false);
    setFeature(XMLUni::fgXercesLoadExternalDTD, false);
    setFeature(XMLUni::fgXercesCalculateSrcOfs, true);  // for the place of the root
  }

  std::optional<DocumentNode> read(const std::string& text, ChartProblem& problem) {
    Builder builder(text, *this);
    problem_ = &problem;
    if (parseText(text, builder)) return builder.takeRoot();
    if (problem.message.empty()) problem.message = "the document could not be read to its end";
    return std::nullopt;
  }

 private:
  bool note(unsigned, const XMLCh*, ErrTypes type, ChartProblem problem) override {
    if (type != ErrType_Warning) *problem_ = std::move(problem);
    return type == ErrType_Warning;
  }

  ChartProblem* problem_ = nullptr;
};

}  // namespace

std::optional<DocumentNode> DocumentNode::read(const std::string& text, bool hasNamespaces,
                                               ChartProblem* problem) {
  ChartProblem none;
  return NodeReader(hasNamespaces).read(text, problem ? *problem : none);
}

const std::string* DocumentNode::attribute(std::string_view wanted) const {
  const auto found = std::ranges::find(
      attributes, wanted, [](const auto& each) -> const auto& { return each.first; });
  return found == attributes.end() ? nullptr : &found->second;
}

std::string_view DocumentNode::localName() const {
  return std::string_view(name).substr(name.find(':') + 1);
}
