#include "chartbase.h"

#include <ctime>
#include <locale>
#include <sstream>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLStringTokenizer.hpp>

#include "chartdump.h"
#include "charterrorhandler.h"
#include "chartparser.h"
#include "domwalk.h"
#include "grammarpool.h"
#include "memoryfailure.h"
#include "modelstore.h"
#include "placeholders.h"
#include "plxframes.h"
#include "plxuni.h"
#include "problemfinder.h"
#include "problemlist.h"
#include "report.h"
#include "tavogotocaller.h"

using namespace xercesc;

#define CONSTANT(name, text) const XMLCh ChartBase::name[] = u"" text;
#include "chartbase.inc"
#include "vardataprocessor.h"
#undef CONSTANT

namespace {

const XMLCh olderSchemaLocation[] =
    u"" CHARTXML_HOST "/visualization " CHARTXML_HOST "/visualization/grafo-1.4.xsd";

// What the log calls a text that has no file.
constexpr const char* sourceName = "ChartBase";

ChartString textOf(const XMLCh* text) {
  return ChartString(text);
}

// The first element at or below `root`, in document order, of that name, "*" for any, and with that
// attribute.
DOMElement* elementWithAttribute(DOMNode* root, const XMLCh* tag, const XMLCh* attribute,
                                 const XMLCh* value) {
  const bool isAny = XMLString::equals(tag, u"*");
  DOMElement* result = nullptr;
  walkElements(root, [&](DOMElement* element) {
    if (!result && (isAny || XMLString::equals(element->getNodeName(), tag)) &&
        XMLString::equals(element->getAttribute(attribute), value)) {
      result = element;
    }
    return !result;
  });
  return result;
}

// Reports and dumps a text whose parse has failed.
void reportParse(const std::string& text, const char* message, unsigned line) {
  unlessMemoryFails(false, [&] {
    return ChartBase::printString(text, "parseError_", ".xml", 0, ChartBase::PRINT_PARSE_ERROR);
  });
  report(message, __FILE__, line);
}

// Starts the parser library for a scope.
struct LibraryUse {
  LibraryUse() { ChartBase::initialize(); }
  LibraryUse(const LibraryUse&) = delete;
  LibraryUse& operator=(const LibraryUse&) = delete;
  ~LibraryUse() { ChartBase::terminate(); }
};

}  // namespace

ChartBase::ChartBase() {
  initialize();
  grammarpool::hold();
}

ChartBase::~ChartBase() {
  parser_.reset();
  finder_.reset();
  grammarpool::drop();
  terminate();
}

void ChartBase::initialize() {
  try {
    XMLPlatformUtils::Initialize(XMLUni::fgXercescDefaultLocale, nullptr, nullptr, nullptr);
  } catch (const XMLException& e) {
    ChartErrorHandler().error(e);
  }
}

void ChartBase::terminate() {
  try {
    XMLPlatformUtils::Terminate();
  } catch (const XMLException& e) {
    ChartErrorHandler().error(e);
  }
}

DOMDocument* ChartBase::createPlXDocument(const XMLCh*) {
  return unlessMemoryFails<DOMDocument*>(nullptr, [] {
    return newDocument(PlXUni::_visualization, {{_schemaDefaultNSName, _schemaDefaultNSValue},
                                                {_schemaInstanceName, _schemaInstanceValue},
                                                {_schemaLocationName, _schemaLocationValue}});
  });
}

DOMDocument* ChartBase::createDocument(const XMLCh*) {
  return unlessMemoryFails<DOMDocument*>(nullptr, [] {
    return newDocument(PlXUni::_graph, {{_schemaDefaultNSName, _schemaDefaultNSValue},
                                        {_schemaInstanceName, _schemaInstanceValue},
                                        {_schemaLocationName, olderSchemaLocation}});
  });
}

DOMDocument* ChartBase::newDocument(const XMLCh* root, Attributes attributes) {
  if (!XMLPlatformUtils::fgMemoryManager) return nullptr;
  DOMImplementation* dom = DOMImplementationRegistry::getDOMImplementation(_implFeatures);
  DOMDocument* document = dom->createDocument(_namespaceURI, root, nullptr);
  try {
    document->setStrictErrorChecking(true);
    document->setXmlStandalone(false);
    document->setXmlVersion(_XMLversion);
    for (const auto& [name, value] : attributes) {
      document->getDocumentElement()->setAttribute(name, value);
    }
  } catch (...) {
    document->release();
    throw;
  }
  return document;
}

DOMElement* ChartBase::getChildByTagName(const DOMNode* parent, const XMLCh* name) {
  if (!parent) return nullptr;
  for (DOMNode* child = parent->getFirstChild(); child; child = child->getNextSibling()) {
    if (child->getNodeType() == DOMNode::ELEMENT_NODE &&
        XMLString::equals(child->getNodeName(), name)) {
      return static_cast<DOMElement*>(child);
    }
  }
  return nullptr;
}

bool ChartBase::mergeAttributes(const DOMElement* from, DOMElement* to) {
  if (!from || !to) return false;
  const DOMNamedNodeMap* attributes = from->getAttributes();
  // A document type's default may stand beside the attribute of the same name that a text states.
  for (const bool isStated : {false, true}) {
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
      const auto* attribute = static_cast<const DOMAttr*>(attributes->item(i));
      if (attribute->getSpecified() != isStated) continue;
      to->setAttribute(attribute->getNodeName(), attribute->getNodeValue());
    }
  }
  return true;
}

int ChartBase::AddAttributeDoc(DOMDocument* doc, DOMElement* element, const XMLCh* name,
                               const XMLCh* value) {
  if (!value) {
    report(textOf(u"attribute value is empty for name ").append(name).toUTF8(), __FILE__, __LINE__);
    return -1;
  }
  DOMAttr* attribute = nullptr;
  try {
    if (doc && element && name) attribute = doc->createAttribute(name);
  } catch (const DOMException&) {
    // No XML name: told below.
  }
  if (!attribute) {
    report(
        textOf(u"attribute name does not exist ").append(name).append(u" ").append(value).toUTF8(),
        __FILE__, __LINE__);
    return -1;
  }
  attribute->setValue(value);
  element->setAttributeNode(attribute);
  return 0;
}

bool ChartBase::ValidXML(const std::string& text) {
  // Without an object the parser library may not have been started.
  const LibraryUse use;
  const bool isValid = unlessMemoryFails(
      false, [&] { return ChartParser(grammarpool::Kind::Charts).parseText(text, sourceName); });
  if (!isValid) reportParse(text, "XML stream validation error", __LINE__);
  return isValid;
}

ChartString ChartBase::getToken(const XMLCh* text, const XMLCh* delimiters, unsigned index) {
  if (!text || !*text || !delimiters) return {};
  XMLStringTokenizer tokens(text, delimiters);
  if (index >= tokens.countTokens()) return {};
  for (unsigned i = 0; i < index; ++i) tokens.nextToken();
  return tokens.nextToken();
}

ChartString ChartBase::CreateUniqueId(const ChartString& prefix, PlXVisualization& visualization) {
  const XMLCh* stem = prefix.empty() ? PlXUni::_id : prefix.xc_str();
  return ChartString(visualization.store().firstFreeId(stem));
}

void ChartBase::updateText(ChartString& text, FacSTDictionary* dictionary,
                           const std::string& codePage) {
  const std::time_t now = std::time(nullptr);
  if (const std::tm* moment = std::localtime(&now)) {
    placeholders::fill(text, *moment, dictionary, codePage);
  }
}

bool ChartBase::willPrintString(PRINTTYPE type) {
  return chartdump::isOn(type);
}

bool ChartBase::printString(const std::string& text, const std::string& prefix,
                            const std::string& suffix, unsigned long counter, PRINTTYPE type) {
  if (!willPrintString(type) || text.empty()) return false;
  chartdump::write(text, prefix, suffix, counter);
  return true;
}

void ChartBase::printDebugInfo(const std::string& message) {
  chartdump::writeTiming(message);
}

ChartParser& ChartBase::parser() {
  return ChartParser::usable(parser_, grammarpool::Kind::Charts);
}

bool ChartBase::parse(const std::string& text) {
  isOutOfMemory_ = false;
  try {
    const bool isParsed = parser().parseText(text, sourceName);
    problems_ = parser_->problems();
    if (isParsed) return true;
  } catch (const std::bad_alloc&) {
    problemlist::noteMemory(problems_);
    isOutOfMemory_ = true;
    reportParse(text, "parseDocument fatal error while parsing: not enough memory", __LINE__);
    throw;
  }
  reportParse(text, "parseDocument fatal error while parsing", __LINE__);
  return false;
}

DOMDocument* ChartBase::parseDocument(const std::string& text) {
  const bool isParsed = unlessMemoryFails(false, [&] { return parse(text); });
  return isParsed ? parser_->getDocument() : nullptr;
}

DOMDocument* ChartBase::parseOwned(const std::string& text) {
  return parse(text) ? parser_->adoptDocument() : nullptr;
}

DOMDocument* ChartBase::tryOwned(const std::string& text) {
  if (!parser().tryText(text, sourceName)) return nullptr;
  problems_ = parser_->problems();
  return parser_->adoptDocument();
}

std::vector<ChartProblem> ChartBase::findProblems(const std::string& text) {
  if (!finder_) finder_ = std::make_unique<ProblemFinder>();
  return finder_->problemsOf(text);
}

void ChartBase::releaseDocument(DOMDocument* doc) {
  if (doc) doc->release();
}

unsigned ChartBase::removeAllChildren(DOMNode* node) {
  unsigned count = 0;
  if (!node) return count;
  while (DOMNode* child = node->getFirstChild()) {
    walkElements(child, [](DOMElement* element) {
      withdrawId(element);
      return true;
    });
    node->removeChild(child);
    ++count;
  }
  return count;
}

bool ChartBase::insertBeforeSiblings(DOMElement* parent, DOMElement* child,
                                     ConstChartStringSet names) {  // NOLINT(performance-*)
  if (!parent || !child) return false;
  DOMNode* sibling = parent->getFirstChild();
  while (sibling && !names.contains(sibling->getNodeName())) sibling = sibling->getNextSibling();
  parent->insertBefore(child, sibling);
  return true;
}

DOMElement* ChartBase::getElementWithAttribute(const XMLCh* tag, const XMLCh* attribute,
                                               const XMLCh* value) const {
  return elementWithAttribute(document_, tag, attribute, value);
}

bool ChartBase::AddID(DOMElement* element, const XMLCh* id) {
  if (!element) return false;
  if (!id || !*id) {
    report(
        textOf(u"ID name attribute is empty for element ").append(element->getNodeName()).toUTF8(),
        __FILE__, __LINE__);
    return false;
  }
  if (element->getOwnerDocument()->getElementById(id)) {
    report(textOf(u"Attempting to add an existing ID to an element (")
               .append(id)
               .append(u" ")
               .append(element->getNodeName())
               .append(u")")
               .toUTF8(),
           __FILE__, __LINE__);
  }
  DOMAttr* attribute = document_ ? document_->createAttribute(PlXUni::_id) : nullptr;
  if (!attribute) return false;
  attribute->setValue(id);
  element->setAttributeNode(attribute);
  element->setIdAttributeNode(attribute, true);
  return true;
}

int ChartBase::AddAttribute(DOMElement* element, const XMLCh* name, const XMLCh* value) {
  return AddAttributeDoc(document_, element, name, value);
}

DOMElement* ChartBase::addStyle(DOMElement* element, const XMLCh* styleId) {
  if (!element || !styleId || !*styleId) return nullptr;
  for (DOMElement* child = firstElement(element); child; child = nextElement(child)) {
    if (DOMElement* style = elementWithAttribute(child, PlXUni::_style, PlXUni::_id, styleId)) {
      return style;
    }
  }
  if (!document_) return nullptr;
  DOMElement* style = document_->createElement(PlXUni::_style);
  element->appendChild(style);
  AddAttribute(style, PlXUni::_id, styleId);
  return style;
}

// The classic locale keeps both directions independent of the process's.
double ChartBase::asDouble(const std::string& text) const {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  double value = 0;
  stream >> value;
  return stream.bad() ? VarDataProcessor::systemMissing : value;
}

std::string ChartBase::asString(const double& value) const {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream.precision(16);
  stream << value;
  return stream.bad() ? std::string() : stream.str();
}

std::string ChartBase::asString(int value) const {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream << value;
  return stream.bad() ? std::string() : stream.str();
}
