// Which elements are open as a parser goes through a document, and what its schema lets stand in
// each: more than a parser tells, which knows nothing within an element that it has no declaration
// of.
#ifndef CHARTXML_OPENELEMENTS_H
#define CHARTXML_OPENELEMENTS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <xercesc/framework/psvi/PSVIElement.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class XSElementDeclaration;
class XSParticle;
class XSTypeDefinition;
XERCES_CPP_NAMESPACE_END

// What a type of the schema lets stand in an element. Texts and types are those of the parser.
struct ElementRules {
  std::map<std::u16string_view, xercesc::XSElementDeclaration*> children;
  std::map<std::u16string_view, xercesc::XSTypeDefinition*> attributes;
  bool takesAnyChild = false;
  bool takesAnyAttribute = false;  // without a namespace
};

class OpenElements {
 public:
  // Opens one. Answers why it may not stand here, with the name that seems to be meant; empty when
  // it may, and when that isn't known. Behind it, rules() are those of the element that is meant.
  std::string enter(const XMLCh* uri, const XMLCh* name, const XMLCh* qualifiedName);
  // Takes the rules that the parser has found for the innermost, if any.
  void readType(xercesc::PSVIElement& element);
  void leave() { open_.pop_back(); }

  // Of the innermost: null when they aren't known.
  const ElementRules* rules() const { return open_.empty() ? nullptr : open_.back().rules; }
  // The parser doesn't know the innermost, and checks nothing of it.
  bool isUnknown() const { return open_.empty() || !open_.back().isKnown; }
  // True if a child of the innermost has been told by enter() that has this name.
  bool hasTold(const std::string& child) const;

 private:
  struct Element {
    std::u16string name;
    const ElementRules* rules = nullptr;
    bool isKnown = false;
    std::vector<std::string> told;
  };

  const ElementRules* rulesOf(xercesc::XSTypeDefinition* type);
  static void addChildren(xercesc::XSParticle* particle, ElementRules& rules);

  std::vector<Element> open_;
  std::map<xercesc::XSTypeDefinition*, ElementRules> known_;
};

#endif
