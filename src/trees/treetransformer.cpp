#include "treetransformer.h"

#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "chartparser.h"
#include "domwalk.h"
#include "grammarpool.h"
#include "problemlist.h"
#include "report.h"
#include "tavogotocaller.h"
#include "xmlwriter.h"
#include "zlib1211tavo.h"

using namespace xercesc;

const XMLCh TreeTransformer::s_membufid[] = u"TreeTransformer";

namespace {

constexpr const char* sourceName = "TreeTransformer";

// Does work whose exceptions end in a report.
template <class Work>
void guarded(const char* failure, unsigned line, Work work) {
  try {
    work();
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report(failure, sourceName, line);
  }
}

// An output document before anything is merged into it.
struct Frame {
  const XMLCh* root;
  const XMLCh* namespaceText;
  const XMLCh* version;
  const XMLCh* namespaceUri;
  const XMLCh* schemaLocation;
  const char* failure;
};

const Frame modelFrame = {u"PMML",
                          u"xmlns:http://www.dmg.org/PMML-2_1",
                          u"2.1",
                          u"http://www.dmg.org/PMML-2_1",
                          u"http://www.dmg.org/PMML-2_1 http://www.dmg.org/v2-1/pmml-2-1.xsd",
                          "createPMMLDocument fatal error"};
const Frame displayFrame = {u"displaySettings",
                            u"xmlns:" CHARTXML_HOST "/treeview",
                            u"1.0",
                            u"" CHARTXML_HOST "/treeview",
                            u"" CHARTXML_HOST "/treeview " CHARTXML_HOST
                            "/treeview/treeview-1.0.xsd",
                            "createDisplayDocument fatal error"};

DOMDocument* documentOf(const Frame& frame) {
  if (!XMLPlatformUtils::fgMemoryManager) return nullptr;
  DOMDocument* document = nullptr;
  guarded(frame.failure, __LINE__, [&] {
    DOMImplementation* dom =
        DOMImplementationRegistry::getDOMImplementation(ChartBase::_implFeatures);
    document = dom->createDocument(frame.namespaceText, frame.root, nullptr);
    document->setStrictErrorChecking(true);
    document->setXmlStandalone(false);
    document->setXmlVersion(frame.version);
    DOMElement* root = document->getDocumentElement();
    root->setAttribute(ChartBase::_schemaDefaultNSName, frame.namespaceUri);
    root->setAttribute(ChartBase::_schemaInstanceName, ChartBase::_schemaInstanceValue);
    root->setAttribute(ChartBase::_schemaLocationName, frame.schemaLocation);
  });
  return document;
}

// Takes away attributes of the schema instance namespace that `from` has under another prefix: an
// element that has one twice isn't well-formed.
void dropOtherPrefixes(const DOMElement& from, DOMElement& to) {
  const DOMNamedNodeMap* attributes = to.getAttributes();
  for (XMLSize_t i = attributes->getLength(); i-- > 0;) {
    const std::u16string name = attributes->item(i)->getNodeName();
    const std::size_t colon = name.find(u':');
    if (colon == name.npos || from.hasAttribute(name.c_str())) continue;
    const std::u16string declaration = u"xmlns:" + name.substr(0, colon);
    if (XMLString::equals(to.getAttribute(declaration.c_str()), ChartBase::_schemaInstanceValue) &&
        from.hasAttributeNS(ChartBase::_schemaInstanceValue, name.c_str() + colon + 1)) {
      to.removeAttribute(name.c_str());
    }
  }
}

bool hasPrefix(const DOMElement& element) {
  return element.getPrefix() && *element.getPrefix();
}

// Renames the elements of a namespace; declarations of their own that would undo that go.
void moveToNamespace(DOMElement& root, const std::u16string& from, const XMLCh* to,
                     const std::u16string& prefix) {
  std::vector<DOMElement*> elements;
  walkElements(&root, [&](DOMElement* element) {
    if (XMLString::equals(element->getNamespaceURI(), from.c_str())) elements.push_back(element);
    return true;
  });
  for (DOMElement* element : elements) {
    const XMLCh* declared = element->getAttribute(ChartBase::_schemaDefaultNSName);
    if (element != &root && (from == declared || XMLString::equals(declared, to))) {
      element->removeAttribute(ChartBase::_schemaDefaultNSName);
    }
    const std::u16string name = prefix + element->getLocalName();
    root.getOwnerDocument()->renameNode(element, to, name.c_str());
  }
}

// Brings a template to the namespace and prefix of the document that it is merged into: each schema
// would know but a part of the whole, and the template may bind the document's own prefix anew.
// Where both are written without one, the template's root attributes change the whole document
// instead.
void shareNamespace(DOMElement& source, DOMElement& target) {
  const std::u16string other(source.getNamespaceURI());
  const std::u16string own(target.getNamespaceURI());
  if (!hasPrefix(source) && !hasPrefix(target)) {
    if (other != own) moveToNamespace(target, own, other.c_str(), {});
    return;
  }
  const std::u16string targetPrefix(hasPrefix(target) ? target.getPrefix() : u"");
  const std::u16string declaration = u"xmlns:" + targetPrefix;
  const DOMNamedNodeMap* attributes = source.getAttributes();
  for (XMLSize_t i = attributes->getLength(); i-- > 0;) {
    auto* attribute = static_cast<DOMAttr*>(attributes->item(i));
    if (XMLString::equals(attribute->getName(), ChartBase::_schemaDefaultNSName) ||
        XMLString::equals(attribute->getLocalName(), u"schemaLocation") ||
        declaration == attribute->getName()) {
      source.removeAttributeNode(attribute);
    }
  }
  const std::u16string prefix = targetPrefix.empty() ? u"" : targetPrefix + u":";
  moveToNamespace(source, other, own.c_str(), prefix);
}

// What merging the document into a new one would print, from where it stands: a copy of a large
// model would double the memory that it takes.
std::string rootText(const DOMDocument& document) {
  const bool isXml11 = XMLString::equals(document.getXmlVersion(), u"1.1");
  std::string text = isXml11 ? "<?xml version=\"1.1\" encoding=\"UTF-8\"?>\n"
                             : "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  return text.append(xmlText(*document.getDocumentElement(), true));
}

}  // namespace

void TreeTransformer::Release::operator()(DOMDocument* document) const {
  document->release();
}

TreeTransformer::TreeTransformer(const std::string& compressedPMML, unsigned long length,
                                 const std::string& displayXml)
    : compressedPMML_(compressedPMML), pmmlLength_(length) {
  openDisplay(displayXml);
}

TreeTransformer::TreeTransformer(const std::string& pmmlXml, const std::string& displayXml)
    : pmmlLength_(pmmlXml.size()) {
  guarded("TreeTransformer fatal error", __LINE__,
          [&] { zlib1211tavo::compressString(pmmlXml, compressedPMML_); });
  openDisplay(displayXml);
}

TreeTransformer::~TreeTransformer() = default;

void TreeTransformer::openDisplay(const std::string& displayXml) {
  guarded("TreeTransformer fatal error", __LINE__, [&] {
    display_ = parseOwned(displayXml.empty() ? SetupDisplayData() : displayXml, displayFrame.root);
  });
}

// Throws std::bad_alloc for lack of memory.
bool TreeTransformer::parse(const std::string& xml) {
  ChartParser& parser = ChartParser::usable(treeParser_, grammarpool::Kind::Trees);
  const bool isParsed = parser.parseText(xml, sourceName);
  problems_ = parser.problems();
  if (isParsed) return true;
  report("TreeTransformer::parseDocument() fatal error", sourceName, __LINE__);
  return false;
}

DOMDocument* TreeTransformer::parseDocument(const std::string& xml) {
  DOMDocument* document = nullptr;
  guarded("TreeTransformer::parseDocument() fatal error", __LINE__, [&] {
    if (parse(xml)) document = treeParser_->getDocument();
  });
  return document;
}

// The parser no longer knows the document, so that it may be released before the parser goes. Null,
// too, for a document of the other kind.
TreeTransformer::OwnedDocument TreeTransformer::parseOwned(const std::string& xml,
                                                           const XMLCh* root) {
  OwnedDocument document(parse(xml) ? treeParser_->adoptDocument() : nullptr);
  if (document && !XMLString::equals(document->getDocumentElement()->getLocalName(), root)) {
    report("TreeTransformer::parseDocument() fatal error", sourceName, __LINE__);
    const ChartString name = document->getDocumentElement()->getNodeName();
    problemlist::add(
        problems_, {{},
                    0,
                    0,
                    "the root is '" + name.toUTF8() + "', not '" + ChartString(root).toUTF8() + "'",
                    true});
    document.reset();
  }
  return document;
}

bool TreeTransformer::applyTemplate(const std::string& xml) {
  bool isApplied = false;
  if (xml.empty() || !display_) return isApplied;
  guarded("TreeTransformer::applyTemplate() fatal error", __LINE__, [&] {
    const OwnedDocument merged = parseOwned(xml, displayFrame.root);
    if (!merged) return;
    shareNamespace(*merged->getDocumentElement(), *display_->getDocumentElement());
    mergeDOM(merged.get(), display_.get());
    isApplied = true;
  });
  return isApplied;
}

void TreeTransformer::mergeDOM(DOMDocument* from, DOMDocument* into) {
  DOMElement* source = from ? from->getDocumentElement() : nullptr;
  DOMElement* target = into ? into->getDocumentElement() : nullptr;
  if (!source || !target) return;
  dropOtherPrefixes(*source, *target);
  mergeAttributes(source, target);
  // A document may be merged into itself: what is appended is not met again.
  const DOMNode* last = source->getLastChild();
  for (DOMNode* child = source->getFirstChild(); child; child = child->getNextSibling()) {
    target->appendChild(into->importNode(child, true));
    if (child == last) break;
  }
}

std::string TreeTransformer::getCompressedPMML(unsigned long* length) {
  if (length) *length = pmmlLength_;
  return compressedPMML_;
}

bool TreeTransformer::inflatePMML(std::string& text) {
  if (pmmlLength_ != 0 && zlib1211tavo::decompressString(text, compressedPMML_, pmmlLength_)) {
    return true;
  }
  // Also for a length that isn't the true one.
  if (!zlib1211tavo::decompressString(text, compressedPMML_)) return false;
  pmmlLength_ = text.size();
  return true;
}

DOMDocument* TreeTransformer::setupPMMLDOM() {
  DOMDocument* document = nullptr;
  guarded("setupPMMLDOM fatal error", __LINE__, [&] {
    std::string text;
    if (inflatePMML(text)) document = parseDocument(text);
  });
  return document;
}

std::string TreeTransformer::getUncompressedPMML(const XMLCh*) {
  std::string text;
  document_ = nullptr;
  pmml_.reset();
  guarded("getUncompressedPMML fatal error", __LINE__, [&] {
    std::string stored;
    if (!inflatePMML(stored)) return;
    pmml_ = parseOwned(stored, modelFrame.root);
    text = pmml_ ? rootText(*pmml_) : std::move(stored);
    document_ = pmml_.get();
  });
  return text;
}

std::string TreeTransformer::getDisplayData(const XMLCh*) {
  std::string text;
  if (!display_) return text;
  guarded("getDisplayData fatal error", __LINE__, [&] { text = rootText(*display_); });
  return text;
}

std::string TreeTransformer::compressDocument(const DOMDocument* document) const {
  std::string result;
  guarded("compressDocument fatal error", __LINE__, [&] {
    zlib1211tavo::compressString(document ? xmlText(*document) : std::string(), result);
  });
  return result;
}

DOMDocument* TreeTransformer::createPMMLDocument(const XMLCh*) {
  return documentOf(modelFrame);
}

DOMDocument* TreeTransformer::createDisplayDocument(const XMLCh*) {
  return documentOf(displayFrame);
}
