// BoundedParser: the bounds that hostile text meets, for any parser of the parser library.
#ifndef CHARTXML_BOUNDEDPARSER_H
#define CHARTXML_BOUNDEDPARSER_H

#include <cstddef>
#include <string>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "chartprolog.h"
#include "parsermemory.h"

namespace parserbounds {

constexpr unsigned deepestLevel = 4096;
// The parser library's time for a tag grows with the square of this.
constexpr XMLSize_t mostAttributes = 1024;
constexpr XMLSize_t longestEntity = 4096;
constexpr XMLSize_t mostExpansions = 10000;  // in content
constexpr std::size_t mostDeclaring = 100;   // expansions in declarations and defaults
constexpr std::size_t longestSubset = 1 << 14;
// What entities and default attributes may add to the characters of the text itself.
constexpr std::size_t mostAdded = 1 << 20;
// What the parser may take in between two tags of a text of no length, and of one with a length.
constexpr std::size_t mostBytes = 32 << 20;
constexpr std::size_t bytesEach = 16;

// Of a content model without text. A model with names more than once may become an automaton of a
// size that doubles with each.
constexpr std::size_t mostNames = 64;
constexpr std::size_t mostRepeated = 6;
constexpr const XMLCh* tooManyAttributes = u"an element has too many attributes";

// A base, so that it outlives the parser that takes from it.
struct Memory {
  ParserMemory memory;
};

}  // namespace parserbounds

// Only a document type can make a text longer than it is: most bounds hold from there on. Elements,
// attributes, comments and instructions count with the characters that they take at least.
template <class Parser>
class BoundedParser : protected parserbounds::Memory, public Parser {
 protected:
  template <class... Args>
  explicit BoundedParser(Args... arguments) : Parser(arguments...) {
    expansions_.setEntityExpansionLimit(parserbounds::mostExpansions);
  }

  // Lives around each parse. What passes a bound in the middle of an allocation throws
  // ParserMemory::Exceeded, behind which the parser has left its place: placeOfExceeded().
  class Bounds {
   public:
    Bounds(BoundedParser& parser, const std::string& text) : memory_(parser.memory) {
      parser.text_ = &text;
      parser.depth_ = 0;
      parser.hasDoctype_ = false;
      parser.doctypePlace_ = {0, 0};
      parser.characters_ = 0;
      parser.subset_.clear();
    }
    Bounds(const Bounds&) = delete;
    Bounds& operator=(const Bounds&) = delete;
    ~Bounds() { memory_.unbind(); }

   private:
    ParserMemory& memory_;
  };

  // Where the parser is, and its current encoding.
  virtual chartprolog::Place place() const = 0;
  virtual const XMLCh* encoding() const = 0;
  [[noreturn]] virtual void refuse(const XMLCh* reason) = 0;  // at the present place
  [[noreturn]] virtual void refuseAt(const XMLCh* reason, chartprolog::Place place) = 0;

  // Of the document type; 0 without one.
  chartprolog::Place placeOfExceeded() const { return doctypePlace_; }
  xercesc::SecurityManager& expansions() { return expansions_; }
  const std::u16string& subset() const { return subset_; }

  void startDocument() override {
    Parser::startDocument();
    requireFewAttributes(*text_, chartprolog::isAscii(*text_) ? nullptr : encoding());
  }
  void XMLDecl(const XMLCh* const version, const XMLCh* const name, const XMLCh* const standalone,
               const XMLCh* const actual) override {
    Parser::XMLDecl(version, name, standalone, actual);
    if (!chartprolog::isAscii(*text_)) requireFewAttributes(*text_, actual);
  }
  // The parser takes a character 0 for the end of the text, and drops some bytes that are none.
  void endDocument() override {
    if (const auto passed = chartprolog::firstPassedOver(*text_, encoding())) {
      refuseAt(passed->reason, passed->place);
    }
    Parser::endDocument();
  }
  void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                    const XMLCh* const prefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                    const XMLSize_t attributeCount, const bool isEmpty,
                    const bool isRoot) override {
    if (++depth_ > parserbounds::deepestLevel) refuse(u"elements are nested too deep");
    if (attributeCount > parserbounds::mostAttributes) refuse(parserbounds::tooManyAttributes);
    if (hasDoctype_) {
      boundBytes();
      memory.unboundReaders();
      count(xercesc::XMLString::stringLen(declaration.getBaseName()) + 3);  // <a>
      for (XMLSize_t i = 0; i < attributeCount; ++i) {
        const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
        count(xercesc::XMLString::stringLen(attribute.getName()) +
              xercesc::XMLString::stringLen(attribute.getValue()) + 4);  // a=""
      }
    }
    Parser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
  }
  void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int uriId,
                  const bool isRoot, const XMLCh* const prefix) override {
    --depth_;
    Parser::endElement(declaration, uriId, isRoot, prefix);
  }
  void docCharacters(const XMLCh* const characters, const XMLSize_t length,
                     const bool isCData) override {
    count(length + (isCData ? 12 : 0));  // <![CDATA[]]>
    Parser::docCharacters(characters, length, isCData);
  }
  void docComment(const XMLCh* const comment) override {
    count(xercesc::XMLString::stringLen(comment) + 7);  // <!---->
    Parser::docComment(comment);
  }
  void docPI(const XMLCh* const target, const XMLCh* const data) override {
    count(xercesc::XMLString::stringLen(target) + xercesc::XMLString::stringLen(data) + 4);  // <??>
    Parser::docPI(target, data);
  }

  void doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* const publicId,
                   const XMLCh* const systemId, const bool hasInternalSubset,
                   const bool hasExternalSubset) override {
    hasDoctype_ = true;
    doctypePlace_ = place();
    boundBytes();
    memory.boundReaders(parserbounds::mostDeclaring);
    if (hasInternalSubset) subset_ = chartprolog::internalSubset(*text_, encoding());
    if (subset_.size() > parserbounds::longestSubset) refuse(u"the document type is too long");
    Parser::doctypeDecl(root, publicId, systemId, hasInternalSubset, hasExternalSubset);
  }
  void elementDecl(const xercesc::DTDElementDecl& element, const bool isIgnored) override {
    if (element.getModelType() == xercesc::DTDElementDecl::Children &&
        !chartprolog::isSimpleModel(element.getFormattedContentModel(), parserbounds::mostNames,
                                    parserbounds::mostRepeated)) {
      refuse(u"a content model is too complex");
    }
    Parser::elementDecl(element, isIgnored);
  }
  void entityDecl(const xercesc::DTDEntityDecl& entity, const bool isParameter,
                  const bool isIgnored) override {
    if (entity.getValueLen() > parserbounds::longestEntity) refuse(u"an entity is too long");
    Parser::entityDecl(entity, isParameter, isIgnored);
  }

 private:
  static void requireFewAttributes(const std::string& text, const XMLCh* encoding) {
    if (chartprolog::mostAttributes(text, encoding) > parserbounds::mostAttributes) {
      throw ParserMemory::Exceeded{parserbounds::tooManyAttributes};
    }
  }
  void boundBytes() {
    memory.boundBytes(parserbounds::mostBytes + parserbounds::bytesEach * text_->size());
  }
  void count(std::size_t characters) {
    if (!hasDoctype_) return;
    characters_ += characters;
    if (characters_ > text_->size() + parserbounds::mostAdded) {
      refuse(u"entities make the text too long");
    }
  }

  xercesc::SecurityManager expansions_;
  const std::string* text_ = nullptr;
  std::u16string subset_;  // the internal one, as it stands
  unsigned depth_ = 0;
  bool hasDoctype_ = false;
  chartprolog::Place doctypePlace_{0, 0};
  std::size_t characters_ = 0;  // so far
};

#endif
