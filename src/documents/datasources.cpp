#include "datasources.h"

#include <algorithm>
#include <array>
#include <functional>
#include <new>
#include <string_view>
#include <unordered_map>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "datatext.h"
#include "dialect.h"
#include "domwalk.h"
#include "owneddocument.h"
#include "plainrows.h"
#include "plxsources.h"
#include "plxuni.h"
#include "rowseparator.h"
#include "textbuffer.h"
#include "xmlwriter.h"

using namespace xercesc;

namespace {

bool isNamespace(const XMLCh* name) {
  return XMLString::equals(name, u"xmlns") || XMLString::startsWith(name, u"xmlns:");
}

// What the chart's root declares and the data's root doesn't: sources may use it. The data's root
// has a prefix, so that the default namespace is the sources' alone.
void keepNamespaces(const DOMElement& chartRoot, DOMElement& dataRoot) {
  const DOMNamedNodeMap* attributes = chartRoot.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    const XMLCh* name = attribute->getNodeName();
    if (!isNamespace(name)) continue;
    if (XMLString::equals(name, u"xmlns") || !dataRoot.hasAttribute(name)) {
      dataRoot.setAttribute(name, attribute->getNodeValue());
    }
  }
}

// Texts of different versions can't be put together: some characters stand for themselves in one
// only.
void takeVersion(DOMDocument& document, const DOMNode& from) {
  const bool isNewer = XMLString::equals(from.getOwnerDocument()->getXmlVersion(), u"1.1");
  document.setXmlVersion(isNewer ? u"1.1" : u"1.0");
}

// The document of the merged chart, with a root like the chart's.
OwnedDocument frameOf(const DOMElement& chartRoot, const DOMElement& dataRoot,
                      const XMLCh* encoding) {
  OwnedDocument frame = datasources::wholeFrame(ChartBase::createPlXDocument(encoding));
  DOMElement* root = frame->getDocumentElement();
  takeVersion(*frame, chartRoot);
  if (chartRoot.getPrefix() && *chartRoot.getPrefix()) {
    root->removeAttribute(u"xmlns");
    root = static_cast<DOMElement*>(
        frame->renameNode(root, chartRoot.getNamespaceURI(), chartRoot.getNodeName()));
  }
  constexpr const XMLCh* instance = u"http://www.w3.org/2001/XMLSchema-instance";
  if (chartRoot.hasAttributeNS(instance, u"schemaLocation")) {
    root->removeAttribute(u"xsi:schemaLocation");
  }
  ChartBase::mergeAttributes(&chartRoot, root);
  const DOMNamedNodeMap* attributes = dataRoot.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const XMLCh* name = attributes->item(i)->getNodeName();
    constexpr std::u16string_view start = u"xmlns:";
    if (!XMLString::startsWith(name, start.data())) continue;
    const bool isOwn =
        dataRoot.getPrefix() && XMLString::equals(name + start.size(), dataRoot.getPrefix());
    if (isOwn || root->hasAttribute(name)) continue;
    root->setAttribute(name, attributes->item(i)->getNodeValue());
  }
  return frame;
}

// Declares on a source what its names mean in the data's document, but not in the chart's.
void declareNamespaces(DOMElement& source, const DOMElement& dataRoot,
                       const DOMElement& chartRoot) {
  const bool hasPrefix = source.getPrefix() && *source.getPrefix();
  const DOMNamedNodeMap* attributes = dataRoot.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const XMLCh* name = attributes->item(i)->getNodeName();
    const XMLCh* value = attributes->item(i)->getNodeValue();
    if (!isNamespace(name) || source.hasAttribute(name)) continue;
    const bool isDefault = XMLString::equals(name, u"xmlns");
    if (isDefault ? hasPrefix : !chartRoot.hasAttribute(name)) continue;
    if (!XMLString::equals(value, chartRoot.getAttribute(name))) source.setAttribute(name, value);
  }
}

// The text of an element less its end: what is appended next becomes its content. `document` holds
// nothing but the empty element and what comes before it.
std::string openText(const DOMDocument& document) {
  std::string text = xmlText(document);
  text.replace(text.size() - std::string_view("/>").size(), std::string::npos, ">");
  return text;
}

std::string closeText(const DOMDocument& document) {
  return "</" + ChartString(document.getDocumentElement()->getNodeName()).toUTF8() + '>';
}

struct Source {
  DOMElement* element;
  std::string_view rows;  // that it doesn't hold
};

bool isEmbedded(const DOMElement& source) {
  return XMLString::equals(source.getNodeName(), PlXEmbeddedSource::_UTF_embeddedSource);
}

// The children of the data's root by id; the first of several counts.
std::unordered_map<std::u16string_view, Source> sourcesById(DOMElement& dataRoot,
                                                            const rowseparator::Separated* rows) {
  std::unordered_map<std::u16string_view, Source> sources;
  std::size_t start = 0;
  auto end = rows ? rows->ends.begin() : std::vector<std::size_t>::const_iterator();
  for (DOMElement* element = firstElement(&dataRoot); element; element = nextElement(element)) {
    Source source{element, {}};
    if (rows && isEmbedded(*element)) {
      source.rows = {rows->bytes.get() + start, *end - start};
      start = *end++;
    }
    sources.emplace(element->getAttribute(PlXUni::_id), source);
  }
  return sources;
}

bool isPlaceholder(const DOMNode& node) {
  return node.getNodeType() == DOMNode::ELEMENT_NODE &&
         XMLString::equals(dialect::localName(&node), PlXUserSource::_UTF_userSource);
}

// The comments and instructions that stand before or behind a root.
std::string miscText(const DOMNode* first, const DOMNode* end) {
  TextBuffer text;
  for (const DOMNode* node = first; node && node != end; node = node->getNextSibling()) {
    if (node->getNodeType() != DOMNode::DOCUMENT_TYPE_NODE) writeXml(*node, text);
  }
  return text.take();
}

using WriteSource = std::function<void(const XMLCh* id, TextBuffer& out)>;

// The chart's text with what `writeSource` writes in the place of each placeholder. Everything is
// printed from where it stands: copying would cost as much as parsing did.
std::string mergedText(const DOMElement& chartRoot, const DOMElement& dataRoot,
                       const XMLCh* encoding, const WriteSource& writeSource) {
  const OwnedDocument frame = frameOf(chartRoot, dataRoot, encoding);
  std::string start = openText(*frame);
  const DOMDocument* chart = chartRoot.getOwnerDocument();
  start.insert(start.find("?>") + 2, miscText(chart->getFirstChild(), &chartRoot));
  TextBuffer text;
  text.append(start);
  for (DOMNode* child = chartRoot.getFirstChild(); child; child = child->getNextSibling()) {
    if (isPlaceholder(*child)) {
      writeSource(static_cast<DOMElement*>(child)->getAttribute(PlXUni::_id), text);
    } else {
      writeXml(*child, text);
    }
  }
  text.append(closeText(*frame));
  text.append(miscText(chartRoot.getNextSibling(), nullptr));
  return text.take();
}

// ---- sources that can be put back as they were printed, since parsing them would change nothing

// True for a root that declares the usual namespaces and no others.
bool isPlainRoot(const DOMElement& root) {
  const DOMNamedNodeMap* attributes = root.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const XMLCh* name = attributes->item(i)->getNodeName();
    if (!isNamespace(name)) continue;
    const XMLCh* usual =
        XMLString::equals(name, ChartBase::_schemaDefaultNSName)  ? ChartBase::_schemaDefaultNSValue
        : XMLString::equals(name, ChartBase::_schemaInstanceName) ? ChartBase::_schemaInstanceValue
                                                                  : nullptr;
    if (!usual || !XMLString::equals(attributes->item(i)->getNodeValue(), usual)) return false;
  }
  return true;
}

bool isWithoutPrefix(const DOMNode& node) {
  return XMLString::indexOf(node.getNodeName(), u':') < 0 && !isNamespace(node.getNodeName());
}

// A list of an embedded source: nothing but text.
bool isPlainList(const DOMNode& node) {
  constexpr std::array<const XMLCh*, 3> names = {u"names", u"types", u"row"};
  if (std::ranges::none_of(
          names, [&](const XMLCh* name) { return XMLString::equals(node.getNodeName(), name); })) {
    return false;
  }
  if (node.getAttributes()->getLength() > 0) return false;
  for (DOMNode* text = node.getFirstChild(); text; text = text->getNextSibling()) {
    if (text->getNodeType() != DOMNode::TEXT_NODE) return false;
  }
  return true;
}

bool isPlainSource(const DOMElement& source) {
  const DOMNamedNodeMap* attributes = source.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    if (!isWithoutPrefix(*attributes->item(i))) return false;
  }
  for (DOMNode* child = source.getFirstChild(); child; child = child->getNextSibling()) {
    if (!isPlainList(*child)) return false;
  }
  return isWithoutPrefix(source);
}

constexpr std::string_view sourceEnd = plainrows::sourceEnd;

// The text of an embedded source in front of its rows, which are its last content.
std::string textBeforeRows(const DOMElement& source) {
  std::string printed = xmlText(source);
  if (printed.ends_with("/>")) {
    printed.replace(printed.size() - 2, 2, ">");
  } else {
    printed.resize(printed.size() - sourceEnd.size());
  }
  return printed;
}

}  // namespace

OwnedDocument datasources::wholeFrame(DOMDocument* document) {
  if (!document) throw std::bad_alloc();
  return OwnedDocument(document);
}

bool datasources::arePlain(const DOMElement& chartRoot, const std::vector<DOMElement*>& sources) {
  return isPlainRoot(chartRoot) && std::ranges::all_of(sources, [](const DOMElement* source) {
           return isPlainSource(*source);
         });
}

std::unique_ptr<DataText> datasources::separated(const DOMElement& chartRoot, DOMDocument& frame,
                                                 const Sources& sources,
                                                 rowseparator::Separated* rows, bool isPlain) {
  keepNamespaces(chartRoot, *frame.getDocumentElement());
  takeVersion(frame, chartRoot);
  auto text = std::make_unique<DataText>(rows ? std::move(rows->bytes) : nullptr);
  text->append(openText(frame));
  std::size_t start = 0;
  for (std::size_t i = 0; i < sources.elements.size(); ++i) {
    const DOMElement& source = *sources.elements[i];
    if (isPlain) text->startSource(source.getAttribute(PlXUni::_id));
    const bool hasRows = rows && i >= sources.firstEmbedded;
    const std::size_t end = hasRows ? rows->ends[i - sources.firstEmbedded] : start;
    if (start == end) {
      text->append(xmlText(source));
    } else {
      text->append(textBeforeRows(source));
      text->put(start, end);
      text->append(sourceEnd);
    }
    start = end;
  }
  if (isPlain) text->endSources();
  text->append(closeText(frame));
  return text;
}

std::string datasources::merged(const DOMElement& chartRoot, DOMDocument& data,
                                const rowseparator::Separated* rows, const XMLCh* encoding) {
  DOMElement& dataRoot = *data.getDocumentElement();
  takeVersion(data, chartRoot);
  const auto sources = sourcesById(dataRoot, rows);
  return mergedText(chartRoot, dataRoot, encoding, [&](const XMLCh* id, TextBuffer& out) {
    const auto found = sources.find(id);
    if (found == sources.end()) return;
    const Source& source = found->second;
    declareNamespaces(*source.element, dataRoot, chartRoot);
    if (source.rows.empty()) return writeXml(*source.element, out);
    out.append(textBeforeRows(*source.element));
    out.borrow(source.rows);
    out.append(sourceEnd);
  });
}

bool datasources::isDataOf(const DOMElement& chartRoot, const DOMDocument& data) {
  DOMElement& dataRoot = *data.getDocumentElement();
  if (!XMLString::equals(dataRoot.getNodeName(), ChartBase::_gsgraphSources)) return false;
  const auto sources = sourcesById(dataRoot, nullptr);
  for (const DOMElement* child = firstElement(&chartRoot); child; child = nextElement(child)) {
    if (isPlaceholder(*child) && !sources.contains(child->getAttribute(PlXUni::_id))) return false;
  }
  return true;
}

bool datasources::areRowsOf(const DOMDocument& data, const rowseparator::Separated& rows) {
  std::size_t count = 0;
  for (const DOMElement* source = firstElement(data.getDocumentElement()); source;
       source = nextElement(source)) {
    if (isEmbedded(*source)) ++count;
  }
  return count == rows.ends.size();
}

bool datasources::areMergeable(const DOMElement& chartRoot, const DOMElement& dataRoot) {
  const DOMNamedNodeMap* attributes = dataRoot.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const XMLCh* name = attributes->item(i)->getNodeName();
    if (!isNamespace(name)) continue;
    if (!XMLString::equals(name, u"xmlns") && !chartRoot.hasAttribute(name)) continue;
    const XMLCh* value = chartRoot.getAttribute(name);
    if (!XMLString::equals(attributes->item(i)->getNodeValue(), value)) return false;
  }
  return true;
}

std::string datasources::merged(const DOMElement& chartRoot, const DOMElement& dataRoot,
                                const DataText& text, const XMLCh* encoding) {
  return mergedText(chartRoot, dataRoot, encoding,
                    [&text](const XMLCh* id, TextBuffer& out) { text.writeSource(id, out); });
}
