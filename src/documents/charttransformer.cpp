#include "charttransformer.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "datatext.h"
#include "dialect.h"
#include "domwalk.h"
#include "modelstore.h"
#include "plxframes.h"
#include "plxsources.h"
#include "plxuni.h"
#include "report.h"
#include "rowseparator.h"
#include "tavogotocaller.h"
#include "textbuffer.h"
#include "xmldatahandler.h"
#include "xmlwriter.h"
#include "zlib1211tavo.h"

using namespace xercesc;

namespace {

// A document that is released at the end of its scope.
struct Release {
  void operator()(DOMDocument* document) const { document->release(); }
};
using OwnedDocument = std::unique_ptr<DOMDocument, Release>;

template <class Source>
void append(std::vector<DOMElement*>& sources, const std::vector<Source*>& objects) {
  for (const Source* object : objects) sources.push_back(object->getImplementation());
}

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
  OwnedDocument frame(ChartBase::createPlXDocument(encoding));
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

// What a text becomes; empty, and reported, when that fails.
template <class TextOf>
std::string compressed(TextOf textOf) {
  std::string result;
  try {
    zlib1211tavo::compressString(textOf(), result);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("compressDocument fatal error", __FILE__, __LINE__);
  }
  return result;
}

// The children of the data's root by id; the first of several counts.
std::unordered_map<std::u16string_view, DOMElement*> sourcesById(const DOMElement& dataRoot) {
  std::unordered_map<std::u16string_view, DOMElement*> sources;
  for (DOMElement* source = firstElement(&dataRoot); source; source = nextElement(source)) {
    sources.emplace(source->getAttribute(PlXUni::_id), source);
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

std::string mergedText(const DOMElement& chartRoot, DOMDocument& data, const XMLCh* encoding) {
  const DOMElement& dataRoot = *data.getDocumentElement();
  takeVersion(data, chartRoot);
  const auto sources = sourcesById(dataRoot);
  return mergedText(chartRoot, dataRoot, encoding, [&](const XMLCh* id, TextBuffer& out) {
    const auto source = sources.find(id);
    if (source == sources.end()) return;
    declareNamespaces(*source->second, dataRoot, chartRoot);
    writeXml(*source->second, out);
  });
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

// True when declareNamespaces() would have nothing to do on such sources.
bool declaresTheSame(const DOMElement& dataRoot, const DOMElement& chartRoot) {
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

// Prints an embedded source with its rows, which are its last content.
void appendWithRows(const DOMElement& source, std::size_t start, std::size_t end, DataText& text) {
  constexpr std::string_view endTag = "</embeddedSource>";
  std::string printed = xmlText(source);
  if (printed.ends_with("/>")) {
    printed.replace(printed.size() - 2, 2, ">");
  } else {
    printed.resize(printed.size() - endTag.size());
  }
  text.append(printed);
  text.put(start, end);
  text.append(endTag);
}

// What the scanner of XmlDataHandler knows of a data document: these elements, with this attribute
// and no other, without prefixes.
struct ScannedElement {
  std::string_view name;
  std::string_view attribute;
};
constexpr ScannedElement scannedElements[] = {
    {"row", ""}, {"names", ""}, {"embeddedSource", "id"}, {"source", "id"}, {"dataValue", "name"}};

const ScannedElement* scannedElement(std::string_view name) {
  const auto* found = std::ranges::find(scannedElements, name, &ScannedElement::name);
  return found == std::end(scannedElements) ? nullptr : found;
}

// `tag` starts behind its '<' and may end anywhere.
bool isScannedRight(std::string_view tag) {
  if (tag.starts_with('!') || tag.starts_with('?')) return false;
  const bool isEnd = tag.starts_with('/');
  if (isEnd) tag.remove_prefix(1);
  const std::string_view name = tag.substr(0, tag.find_first_of(" \t\r\n/>"));
  const ScannedElement* known = scannedElement(name.substr(name.find(':') + 1));
  if (!known) return true;
  tag.remove_prefix(name.size());
  if (name.size() != known->name.size()) return false;
  if (isEnd) return tag.starts_with('>');
  if (known->attribute.empty()) return tag.starts_with('>') || tag.starts_with("/>");
  std::string attribute = " ";
  attribute.append(known->attribute).append("=\"");
  return tag.starts_with(attribute);
}

// True for a data document in which the scanner could take something for what it isn't.
bool isForParsers(std::string_view text) {
  std::size_t at = text.find('<');
  if (at != text.npos && text.substr(at).starts_with("<?xml ")) at = text.find('<', at + 1);
  for (; at != text.npos; at = text.find('<', at + 1)) {
    if (!isScannedRight(text.substr(at + 1))) return true;
  }
  return false;
}

// Rewrites the sources as the scanner reads them.
void simplify(DOMDocument& data) {
  std::vector<DOMElement*> elements;
  std::vector<DOMNode*> others;
  walkElements(data.getDocumentElement(), [&](DOMElement* element) {
    elements.push_back(element);
    for (DOMNode* node = element->getFirstChild(); node; node = node->getNextSibling()) {
      const short kind = node->getNodeType();
      if (kind != DOMNode::ELEMENT_NODE && kind != DOMNode::TEXT_NODE) others.push_back(node);
    }
    return true;
  });
  for (DOMElement* element : elements) {
    const std::u16string name(dialect::localName(element));
    const ScannedElement* known = scannedElement(ChartString(name.c_str()).toUTF8());
    if (!known) continue;
    const ChartString attribute(std::string(known->attribute).c_str());
    const DOMNamedNodeMap* attributes = element->getAttributes();
    for (XMLSize_t i = attributes->getLength(); i-- > 0;) {
      DOMNode* node = attributes->item(i);
      if (XMLString::equals(node->getNodeName(), attribute.xc_str())) continue;
      element->removeAttributeNode(static_cast<DOMAttr*>(node))->release();
    }
    if (element->getPrefix() && *element->getPrefix()) {
      data.renameNode(element, element->getNamespaceURI(), name.c_str());
    }
  }
  for (DOMNode* node : others) {
    DOMNode* parent = node->getParentNode();
    if (node->getNodeType() == DOMNode::CDATA_SECTION_NODE) {
      parent->insertBefore(data.createTextNode(node->getNodeValue()), node);
    }
    parent->removeChild(node)->release();
  }
}

}  // namespace

ChartTransformer::ChartTransformer(const std::string& chartText) {
  if (chartText.empty() || openWithoutRows(chartText)) return;
  makeModel(chartText);
  if (model_) separateData(nullptr);
}

ChartTransformer::ChartTransformer(const std::string& compressedChart,
                                   const std::string& compressedData)
    : compressedData_(compressedData) {
  if (!compressedChart.starts_with('x')) return;
  std::string text;
  if (!zlib1211tavo::decompressString(text, compressedChart)) return;
  try {
    makeModel(text.empty() ? compressedChart : text);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    // The object stays without a chart.
  }
}

ChartTransformer::ChartTransformer(const std::string& compressedChart,
                                   const unsigned char* dataStream, unsigned long dataStreamLength)
    : dataStream_(dataStream), dataStreamLength_(dataStreamLength) {
  try {
    std::string text;
    if (!zlib1211tavo::decompressString(text, compressedChart)) return;
    makeModel(text);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("ChartTransformer ctor fatal error", __FILE__, __LINE__);
  }
}

ChartTransformer::~ChartTransformer() {
  if (model_) model_->store().endWithDocument();
}

void ChartTransformer::makeModel(const std::string& text) {
  chart_.reset(parseOwned(text));
  if (chart_) model_ = std::make_unique<PlXVisualization>(chart_->getDocumentElement());
}

// False, with the object as it was, when the rows have to go the way of everything else. That way
// is also taken for each failure: its report then tells the place in the whole text.
bool ChartTransformer::openWithoutRows(const std::string& text) {
  rowseparator::Separated rows;
  if (!rowseparator::separate(text, rows)) return false;
  chart_.reset(tryOwned(rows.rest));
  if (!chart_) return false;
  rows.rest = {};
  model_ = std::make_unique<PlXVisualization>(chart_->getDocumentElement());
  if (model_->getEmbeddedSources().size() == rows.ends.size()) {
    separateData(&rows);
    return true;
  }
  model_.reset();
  chart_.reset();
  return false;
}

void ChartTransformer::separateData(rowseparator::Separated* rows) {
  const std::vector<PlXEmbeddedSource*> embedded = model_->getEmbeddedSources();
  std::vector<DOMElement*> sources;
  append(sources, model_->getUserSources());
  append(sources, model_->getDatabaseSources());
  append(sources, model_->getDelimitedFileSources());
  append(sources, model_->getStreamingSources());
  const std::size_t others = sources.size();
  append(sources, embedded);
  if (sources.empty()) return;

  const DOMElement& root = *model_->getImplementation();
  bool isPlain = rows && isPlainRoot(root) && std::ranges::all_of(sources, [](const auto* source) {
                   return isPlainSource(*source);
                 });
  std::vector<ChartString> ids;
  for (PlXEmbeddedSource* source : embedded) {
    // Without an id nothing would lead back from the placeholder.
    if (!*source->getId()) {
      source->setId(CreateUniqueId("source", *model_).xc_str());
      isPlain = false;
    }
    ids.emplace_back(source->getId());
  }
  const OwnedDocument frame(createDataDocument(_utf8));
  keepNamespaces(root, *frame->getDocumentElement());
  takeVersion(*frame, root);
  auto text = std::make_unique<DataText>(rows ? std::move(rows->bytes) : nullptr);
  text->append(openText(*frame));
  std::size_t start = 0;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (isPlain) text->startSource(sources[i]->getAttribute(PlXUni::_id));
    const std::size_t end = rows && i >= others ? rows->ends[i - others] : start;
    if (start == end) {
      text->append(xmlText(*sources[i]));
    } else {
      appendWithRows(*sources[i], start, end, *text);
    }
    start = end;
  }
  if (isPlain) text->endSources();
  text->append(closeText(*frame));

  model_->removeEmbeddedSources();
  for (const ChartString& id : ids) model_->addUserSource(id.xc_str());
  isDataPrinted_ = true;
  if (text->size() > longestKeptText) {
    zlib1211tavo::compressString(text->whole(), compressedData_);
  } else {
    dataText_ = std::move(text);
  }
}

DOMDocument* ChartTransformer::createDataDocument(const XMLCh*) {
  return newDocument(_gsgraphSources, {{_schemaDefaultNSName, _schemaDefaultNSValue},
                                       {_schemaInstanceName, _schemaInstanceValue},
                                       {_schemaDataLocationName, _schemaDatabLocationValue},
                                       {_schemaLocationName, _schemaDataLocationValue}});
}

bool ChartTransformer::readDataText(std::string& text) const {
  if (dataText_) {
    // As long as what nobody could inflate again.
    if (dataText_->size() > zlib1211tavo::getInflateLimit()) return false;
    text = dataText_->whole();
    return true;
  }
  if (!compressedData_.empty()) return zlib1211tavo::decompressString(text, compressedData_);
  // Streams count their lengths in 32 bits.
  if (!isStreamHeld() || dataStreamLength_ > std::numeric_limits<unsigned>::max()) return false;
  return XmlDataHandler(dataStream_, static_cast<unsigned>(dataStreamLength_))
      .GetXmlData(text, false);
}

DOMDocument* ChartTransformer::readData(Owner owner) {
  try {
    std::string text;
    if (!readDataText(text)) return nullptr;
    return owner == Owner::Parser ? parseDocument(text) : parseOwned(text);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("getDataDocument fatal error", __FILE__, __LINE__);
    return nullptr;
  }
}

DOMDocument* ChartTransformer::getDataDocument() {
  return readData(Owner::Parser);
}

std::string ChartTransformer::getXML(const XMLCh*) {
  return model_ ? model_->AsUTF8() : "";
}

std::string ChartTransformer::getEntireXML(const XMLCh* encoding) {
  if (!model_) return {};
  try {
    if (model_->getUserSources().empty()) return model_->AsUTF8();
    std::string text;
    if (mergeText(encoding, text)) return text;
    const OwnedDocument data(readData(Owner::Caller));
    if (!data) return model_->AsUTF8();
    return mergedText(*model_->getImplementation(), *data, encoding);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("getEntireXML fatal error", __FILE__, __LINE__);
    return {};
  }
}

bool ChartTransformer::mergeText(const XMLCh* encoding, std::string& text) {
  if (!dataText_ || !dataText_->hasSources()) return false;
  if (dataText_->size() > zlib1211tavo::getInflateLimit()) return false;
  const OwnedDocument frame(createDataDocument(encoding));
  const DOMElement& dataRoot = *frame->getDocumentElement();
  const DOMElement& chartRoot = *model_->getImplementation();
  if (!declaresTheSame(dataRoot, chartRoot)) return false;
  text = mergedText(chartRoot, dataRoot, encoding,
                    [this](const XMLCh* id, TextBuffer& out) { dataText_->writeSource(id, out); });
  return true;
}

std::string ChartTransformer::getCompressedXML() {
  return model_ ? compressDocument(model_->getImplementation()->getOwnerDocument()) : std::string();
}

std::string ChartTransformer::getCompressedData() {
  if (dataText_ && compressedData_.empty()) {
    compressedData_ = compressed([this] { return dataText_->whole(); });
  }
  if (!isDataPrinted_) {
    const OwnedDocument data(readData(Owner::Caller));
    if (data) {
      compressedData_ = compressDocument(data.get());
      isDataPrinted_ = true;
    }
  }
  return compressedData_;
}

unsigned char* ChartTransformer::getCompressedDataStream(unsigned long& size) {
  size = 0;
  try {
    if (isStreamHeld()) {
      auto* copy = new unsigned char[dataStreamLength_];
      std::copy_n(dataStream_, dataStreamLength_, copy);
      size = dataStreamLength_;
      return copy;
    }
    std::string text;
    if (dataText_ || compressedData_.starts_with('x')) {
      if (!readDataText(text)) return nullptr;
    } else {
      text = compressedData_;
    }
    if (text.empty()) return nullptr;
    if (isForParsers(text)) {
      const OwnedDocument data(parseOwned(text));
      if (data) {
        simplify(*data);
        text = xmlText(*data);
      }
    }
    unsigned length = 0;
    unsigned char* stream = XmlDataHandler(text).GetDataStream(length);
    size = length;
    return stream;
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("getCompressedDataStream fatal error", __FILE__, __LINE__);
    return nullptr;
  }
}

std::string ChartTransformer::compressDocument(const DOMDocument* document) const {
  return compressed([document] { return document ? xmlText(*document) : std::string(); });
}
