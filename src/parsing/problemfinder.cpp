#include "problemfinder.h"

#include <algorithm>
#include <functional>
#include <set>
#include <string_view>
#include <utility>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/framework/psvi/PSVIAttribute.hpp>
#include <xercesc/framework/psvi/PSVIAttributeList.hpp>
#include <xercesc/framework/psvi/PSVIHandler.hpp>
#include <xercesc/framework/psvi/XSTypeDefinition.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

#include "boundedsaxparser.h"
#include "charterrorhandler.h"
#include "charthost.h"
#include "chartstring.h"
#include "grammarpool.h"
#include "misspelling.h"
#include "openelements.h"
#include "pathfactory.h"
#include "plxextension.h"
#include "problemlist.h"

using namespace xercesc;

namespace {

// Thrown through the parser: nothing behind the place is to be read.
struct Enough {};
// Thrown through the parser: the root names other schemas than those that have been read.
struct OtherSchemas {};

std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

// "attribute 'style' of 'point': "
std::string attributeText(const XMLCh* element, const XMLCh* attribute) {
  return "attribute '" + utf8(attribute) + "' of '" + utf8(element) + "': ";
}

// The name that an error of the parser is about: the first that stands in quotes.
std::string quoted(const std::string& message) {
  const std::size_t start = message.find('\'') + 1;
  return message.substr(start, message.find('\'', start) - start);
}

// Of charts, data documents, templates and trees.
const std::vector<std::string>& knownRoots() {
  static const std::vector<std::string> roots = {"visualization", "graph", "graphSources",
                                                 "template",      "PMML",  "displaySettings"};
  return roots;
}

std::string suggestedRoot(const std::string& name) {
  const std::string* meant = misspelling::meantBy(name, knownRoots());
  return meant && *meant != name ? misspelling::suggestion(meant) : std::string();
}

// True for a role with its number, such as "title7": in the chart's own record the attribute holds
// the id of a frame. The schema declares the first few of each, and none of some.
bool isNumberedRole(std::u16string_view name) {
  constexpr std::u16string_view roles[] = {u"title", u"footnote", u"legend",
                                           u"text",  u"key",      u"statisticsSummary"};
  const std::size_t end = name.find_last_not_of(u"0123456789") + 1;
  return end < name.size() &&
         std::find(std::begin(roles), std::end(roles), name.substr(0, end)) != std::end(roles);
}

// True for the schemas that grafo-data-2.1.xsd brings in, so that it makes no difference whether
// they are read again: a pair of a namespace and one of its schemas' addresses.
bool namesKnownSchema(std::string_view namespaceUri, std::string_view locations) {
  constexpr std::string_view chart = CHARTXML_HOST "/visualization";
  constexpr std::string_view data = CHARTXML_HOST "/tavo/visualization";
  const std::string pair(namespaceUri);
  return (namespaceUri == chart && (locations == pair + ' ' + pair + "/grafo-2.9.xsd" ||
                                    locations == pair + ' ' + pair + "/grafo-1.4.xsd")) ||
         (namespaceUri == data && locations == pair + ' ' + pair + "/grafo-data-2.1.xsd");
}

// The schema of display documents for the namespace that its file isn't of.
InputSource* otherDisplaySchema() {
  const std::string text =
      grammarpool::otherDisplaySchema(PathFactory::getPathInstance(3)->getFolder());
  auto* bytes = new XMLByte[text.size()];
  std::copy(text.begin(), text.end(), bytes);
  return new MemBufInputSource(bytes, text.size(), "treeview-1.0.xsd", true);
}

// A base, so that it outlives the reader that takes from it.
struct ReaderGrammars {
  XMLGrammarPoolImpl grammars;
};

// Collects the problems of one document as the parser goes through it.
class Collector : public PlacedHandler, public PSVIHandler {
 public:
  // With `isBound`, documents that name other schemas than the system's are answered by
  // OtherSchemas.
  explicit Collector(bool isBound) : isBound_(isBound) {}

  // Answers whether the parse goes on.
  bool note(unsigned code, const XMLCh* domain, XMLErrorReporter::ErrTypes type,
            ChartProblem problem) {
    // What follows from a root without a declaration says no more.
    if (isRootUnknown_) return true;
    if (XMLString::equals(domain, XMLUni::fgValidityDomain) && !noteValidity(code, problem)) {
      return true;
    }
    // Values are checked by datatype validators, whose exceptions come as errors of this domain.
    if (type == XMLErrorReporter::ErrType_Error &&
        XMLString::equals(domain, XMLUni::fgExceptDomain)) {
      problem.isRefused = false;
      typeErrors_.push_back(problems_.size());
    }
    add(std::move(problem));
    return type != XMLErrorReporter::ErrType_Fatal;
  }

  // What ends the parse, of anywhere in the text.
  void noteLast(ChartProblem problem) {
    problemlist::shorten(problem.message);
    const auto behind = std::ranges::upper_bound(problems_, problem, isBefore);
    problems_.insert(problem.line ? behind : problems_.end(), std::move(problem));
  }

  // What there is to tell when the parse has ended.
  std::vector<ChartProblem> problems(bool isEnded) {
    if (isEnded) {
      addBrokenLinks();
    } else if (!isFull() && std::ranges::none_of(problems_, &ChartProblem::isRefused)) {
      noteLast({{}, 0, 0, "the document could not be read to its end", true});
    }
    std::erase_if(problems_, [](const ChartProblem& problem) { return problem.message.empty(); });
    problemlist::finish(problems_);
    return std::move(problems_);
  }

  // The parser takes any version that starts with "1.", but a document object doesn't.
  void readVersion(const XMLCh* version) {
    if (XMLString::equals(version, u"1.0") || XMLString::equals(version, u"1.1")) return;
    refuse("XML version '" + utf8(version) + "' is not supported");
  }

  [[noreturn]] void refuse(const std::string& message) {
    add(here(message, true));
    throw Enough();
  }

  // ---- content

  void startElement(const XMLCh* const uri, const XMLCh* const name, const XMLCh* const tag,
                    const Attributes& attributes) override {
    if (depth_ == 0) readRoot(uri, name, attributes);
    ++depth_;
    enter(uri, name, tag, attributes);
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
      if (XMLString::equals(attributes.getType(i), XMLUni::fgIDString)) {
        ids_.insert(attributes.getValue(i));
      }
    }
    if (depth_ == 2 && !hasOwnRecord_ && XMLString::equals(name, PlXExtension::_UTF_extension)) {
      hasOwnRecord_ = true;
      readRoles(name, attributes);
    }
  }

  void endElement(const XMLCh* const, const XMLCh* const, const XMLCh* const) override {
    --depth_;
    open_.leave();
  }

  void startDTD(const XMLCh* const, const XMLCh* const, const XMLCh* const systemId) override {
    hasDoctype_ = true;
    hasExternalSubset_ = systemId != nullptr;
  }

  InputSource* resolveEntity(const XMLCh* const publicId, const XMLCh* const systemId) override {
    if (XMLString::equals(systemId, u"" CHARTXML_HOST "/treeview/treeview-1.0.xsd")) {
      return otherDisplaySchema();
    }
    // Charts that name the older schema are held to the newer.
    if (XMLString::equals(systemId, u"" CHARTXML_HOST "/visualization/grafo-1.4.xsd")) {
      return library_.resolveEntity(publicId, u"" CHARTXML_HOST "/visualization/grafo-2.9.xsd");
    }
    return library_.resolveEntity(publicId, systemId);
  }

  // ---- what the schemas tell of each element, behind its startElement()

  void handleAttributesPSVI(const XMLCh* const element, const XMLCh* const,
                            PSVIAttributeList* attributes) override {
    std::vector<const XMLCh*> invalid;
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
      PSVIAttribute* attribute = attributes->getAttributePSVIAtIndex(i);
      const XMLCh* name = attributes->getAttributeNameAtIndex(i);
      if (!attribute->getAttributeDeclaration()) continue;
      if (attribute->getValidity() == PSVIItem::VALIDITY_INVALID) invalid.push_back(name);
      if (isLink(attribute->getTypeDefinition()) && !isNumberedRole(name)) {
        addLink(element, name, attribute->getSchemaNormalizedValue());
      }
    }
    nameInvalid(element, invalid);
  }

  // For elements with content, before it.
  void handlePartialElementPSVI(const XMLCh* const name, const XMLCh* const,
                                PSVIElement* element) override {
    readType(name, *element);
  }

  void handleElementPSVI(const XMLCh* const name, const XMLCh* const,
                         PSVIElement* element) override {
    if (tag_.isOpen) readType(name, *element);
  }

 private:
  bool isFull() const { return problems_.size() > ChartProblem::mostProblems; }

  void add(ChartProblem problem) {
    problemlist::shorten(problem.message);
    problems_.push_back(std::move(problem));
    if (isFull()) throw Enough();
  }

  static bool isBefore(const ChartProblem& a, const ChartProblem& b) {
    return std::pair(a.line, a.column) < std::pair(b.line, b.column);
  }

  struct Link {
    std::u16string id;
    ChartProblem problem;  // if there is no such id
  };

  // A tag until its type is known.
  struct Tag {
    bool isOpen = false;
    bool isUndeclared = false;
    std::vector<std::size_t> errors;  // what else the parser has found in it, by their index
    // Kept for tags with errors, and where the parser checks nothing.
    std::vector<std::pair<std::string, std::u16string>> attributes;
  };

  // Of an error of the document's structure. False for one that has been told already.
  bool noteValidity(unsigned code, ChartProblem& problem) {
    switch (code) {
      case XMLValid::ElementNotDefined:
        if (tag_.isOpen) tag_ = {};
        tag_.isUndeclared = true;
        isRootUnknown_ = depth_ == 0;
        if (isRootUnknown_) problem.message += suggestedRoot(quoted(problem.message));
        tag_.errors.push_back(problems_.size());
        break;
      case XMLValid::AttNotDefinedForElement:
        if (tag_.isOpen) tag_ = {};
        tag_.errors.push_back(problems_.size());
        break;
      case XMLValid::ElementNotValidForContent:
        return !open_.hasTold(quoted(problem.message));
      default:
        break;
    }
    return true;
  }

  // The parser's own words for an element that may not stand here give way to one line.
  void enter(const XMLCh* uri, const XMLCh* name, const XMLCh* tag, const Attributes& attributes) {
    if (tag_.isOpen) tag_ = {};
    tag_.isOpen = true;
    const bool isChecked = depth_ == 1 || !open_.isUnknown();
    const std::string message = open_.enter(uri, name, tag);
    if (!message.empty()) {
      if (tag_.isUndeclared) {
        for (const std::size_t i : tag_.errors) problems_[i].message.clear();
      }
      add(here(message, true));
    }
    if (isChecked && message.empty() && tag_.errors.empty()) return;
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
      if (*attributes.getURI(i) != 0) continue;
      tag_.attributes.emplace_back(utf8(attributes.getLocalName(i)), attributes.getValue(i));
    }
  }

  void readType(const XMLCh* name, PSVIElement& element) {
    open_.readType(element);
    const ElementRules* rules = open_.rules();
    if (!open_.isUnknown()) {
      if (rules) suggestAttributes(*rules);
    } else if (rules) {
      checkAttributes(name, *rules);
    } else {
      // What an element is named that nothing is known of.
      for (const auto& [attribute, value] : tag_.attributes) {
        if (attribute == "id") ids_.insert(value);
      }
    }
    tag_ = {};
  }

  // The names of attributes that a tag doesn't have, and may.
  std::vector<std::string> missingAttributes(const ElementRules& rules) const {
    std::vector<std::string> names;
    for (const auto& [name, type] : rules.attributes) {
      const std::string text = utf8(std::u16string(name).c_str());
      const auto isIt = [&](const auto& attribute) { return attribute.first == text; };
      if (std::none_of(tag_.attributes.begin(), tag_.attributes.end(), isIt)) names.push_back(text);
    }
    return names;
  }

  void suggestAttributes(const ElementRules& rules) {
    if (tag_.errors.empty()) return;
    const std::vector<std::string> names = missingAttributes(rules);
    for (const std::size_t i : tag_.errors) {
      const std::string name = quoted(problems_[i].message);
      for (const auto& [attribute, value] : tag_.attributes) {
        if (attribute != name) continue;
        problems_[i].message += suggestAttribute(rules, name, value, names);
        break;
      }
    }
  }

  // An identifier counts whatever its attribute is called.
  std::string suggestAttribute(const ElementRules& rules, const std::string& name,
                               const std::u16string& value, const std::vector<std::string>& names) {
    const std::string* meant = misspelling::meantBy(name, names);
    if (meant && isId(rules.attributes.at(ChartString(meant->c_str()).xc_str()))) {
      ids_.insert(value);
    }
    return misspelling::suggestion(meant);
  }

  // What the parser checks where it knows the element, but for the values.
  void checkAttributes(const XMLCh* element, const ElementRules& rules) {
    const std::vector<std::string> names = missingAttributes(rules);
    for (const auto& [name, value] : tag_.attributes) {
      const ChartString text(name.c_str());
      const auto known = rules.attributes.find(text.xc_str());
      if (known == rules.attributes.end()) {
        if (rules.takesAnyAttribute) continue;
        add(here("attribute '" + name + "' is not declared for element '" + utf8(element) + "'" +
                     suggestAttribute(rules, name, value, names),
                 true));
      } else if (isId(known->second)) {
        ids_.insert(value);
      } else if (isLink(known->second) && !isNumberedRole(known->first)) {
        addLink(element, text.xc_str(), value.c_str());
      }
    }
  }

  static bool isId(XSTypeDefinition* type) {
    return type && XMLString::equals(type->getName(), XMLUni::fgIDString) &&
           XMLString::equals(type->getNamespace(), SchemaSymbols::fgURI_SCHEMAFORSCHEMA);
  }

  void readRoot(const XMLCh* uri, const XMLCh* root, const Attributes& attributes) {
    const XMLCh* locations =
        attributes.getValue(u"http://www.w3.org/2001/XMLSchema-instance", u"schemaLocation");
    if (isBound_ && (hasDoctype_ || !namesKnownSchema(utf8(uri), utf8(locations)))) {
      throw OtherSchemas();
    }
    if (isRootUnknown_) throw Enough();
    const std::string name = utf8(root);
    if (std::ranges::find(knownRoots(), name) == knownRoots().end()) {
      add(here("'" + name + "' is the root of no chart, data document, template or tree" +
                   suggestedRoot(name),
               true));
    }
    if (hasExternalSubset_ && !locations &&
        !attributes.getValue(u"http://www.w3.org/2001/XMLSchema-instance",
                             u"noNamespaceSchemaLocation")) {
      refuse("the document names no schema");
    }
  }

  void readRoles(const XMLCh* element, const Attributes& attributes) {
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
      const XMLCh* name = attributes.getLocalName(i);
      if (isNumberedRole(name)) addLink(element, name, attributes.getValue(i));
    }
  }

  // Errors of types don't tell whose value it is; they come in the order of the attributes.
  void nameInvalid(const XMLCh* element, const std::vector<const XMLCh*>& attributes) {
    if (attributes.size() == typeErrors_.size()) {
      for (std::size_t i = 0; i < attributes.size(); ++i) {
        std::string& message = problems_[typeErrors_[i]].message;
        message = attributeText(element, attributes[i]) + message;
      }
    }
    typeErrors_.clear();
  }

  static bool isLink(XSTypeDefinition* type) {
    return type && XMLString::equals(type->getName(), u"link") &&
           XMLString::equals(type->getNamespace(), u"" CHARTXML_HOST "/visualization");
  }

  void addLink(const XMLCh* element, const XMLCh* attribute, const XMLCh* id) {
    const std::string message =
        attributeText(element, attribute) + "no element has the id '" + utf8(id) + "'";
    links_.push_back({ChartString(id).xc_str(), here(message, false)});
  }

  void addBrokenLinks() {
    const auto others = static_cast<std::ptrdiff_t>(problems_.size());
    for (const Link& link : links_) {
      if (!ids_.contains(link.id)) problems_.push_back(link.problem);
    }
    std::inplace_merge(problems_.begin(), problems_.begin() + others, problems_.end(), isBefore);
  }

  ChartProblem here(const std::string& message, bool isRefused) const {
    return {{}, place().line, place().column, message, isRefused};
  }

  ChartErrorHandler library_;
  const bool isBound_;
  OpenElements open_;
  Tag tag_;
  std::vector<ChartProblem> problems_;   // without a message for one that is told in other words
  std::vector<std::size_t> typeErrors_;  // those of the current tag, by their index
  std::set<std::u16string> ids_;
  std::vector<Link> links_;
  std::size_t depth_ = 0;
  bool hasDoctype_ = false;
  bool hasExternalSubset_ = false;
  bool isRootUnknown_ = false;
  bool hasOwnRecord_ = false;
};

}  // namespace

// Tells the collector what handlers aren't told: the kinds of errors and the XML version.
class ProblemFinder::Reader : private ReaderGrammars, public BoundedSaxParser {
 public:
  Reader() : BoundedSaxParser(&grammars) {
    setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    setFeature(XMLUni::fgSAX2CoreValidation, true);
    setFeature(XMLUni::fgXercesDynamic, false);
    setFeature(XMLUni::fgXercesSchema, true);
  }

  // When they can't be read, each document tells so as it reads them itself.
  void readSchemas() {
    const ChartString path(
        (PathFactory::getPathInstance(3)->getFolder() + "grafo-data-2.1.xsd").c_str());
    Collector collector(false);
    collector_ = &collector;
    setEntityResolver(&collector);
    setErrorHandler(&collector);
    // Without it the parser makes no model of the schemas, and crashes when it misses it later.
    setPSVIHandler(&collector);
    try {
      const LocalFileInputSource source(path.xc_str());
      hasSchemas_ = loadGrammar(source, Grammar::SchemaGrammarType, true);
    } catch (const Stop&) {
    } catch (const Enough&) {
    } catch (const XMLException&) {
    }
    if (!hasSchemas_) return;
    grammars.lockPool();
    setFeature(XMLUni::fgXercesUseCachedGrammarInParse, true);
  }

  std::vector<ChartProblem> read(const std::string& text) {
    Collector collector(hasSchemas_);
    collector_ = &collector;
    setPSVIHandler(&collector);
    bool isEnded = false;
    try {
      isEnded = parseText(text, collector);
    } catch (const Enough&) {
    }
    return collector.problems(isEnded);
  }

 private:
  bool note(unsigned code, const XMLCh* domain, ErrTypes type, ChartProblem problem) override {
    if (domain) return collector_->note(code, domain, type, std::move(problem));
    collector_->noteLast(std::move(problem));
    return false;
  }

  void XMLDecl(const XMLCh* const version, const XMLCh* const encoding,
               const XMLCh* const standalone, const XMLCh* const actualEncoding) override {
    BoundedSaxParser::XMLDecl(version, encoding, standalone, actualEncoding);
    collector_->readVersion(version);
  }

  bool hasSchemas_ = false;
  Collector* collector_ = nullptr;
};

ProblemFinder::ProblemFinder()
    : withSchemas_(std::make_unique<Reader>()), fresh_(std::make_unique<Reader>()) {
  withSchemas_->readSchemas();
}

ProblemFinder::~ProblemFinder() = default;

std::vector<ChartProblem> ProblemFinder::problemsOf(const std::string& text) {
  try {
    return withSchemas_->read(text);
  } catch (const OtherSchemas&) {
    return fresh_->read(text);
  }
}
