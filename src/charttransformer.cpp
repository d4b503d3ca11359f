#include "charttransformer.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "dialect.h"
#include "domwalk.h"
#include "modelstore.h"
#include "plxframes.h"
#include "plxsources.h"
#include "plxuni.h"
#include "report.h"
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

// Prefixes that the chart's root declares and the data's root doesn't: sources may use them.
void keepPrefixes(const DOMElement& chartRoot, DOMElement& dataRoot) {
  const DOMNamedNodeMap* attributes = chartRoot.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    const XMLCh* name = attribute->getNodeName();
    if (XMLString::startsWith(name, u"xmlns:") && !dataRoot.hasAttribute(name)) {
      dataRoot.setAttribute(name, attribute->getNodeValue());
    }
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

// The children of the data's root by id; the first of several counts.
std::unordered_map<std::u16string_view, const DOMElement*> sourcesById(const DOMElement& dataRoot) {
  std::unordered_map<std::u16string_view, const DOMElement*> sources;
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

// The chart's text with the data's sources in the place of their placeholders. Everything is
// printed from where it stands: copying would cost as much as parsing did.
std::string mergedText(const DOMElement& chartRoot, const DOMElement& dataRoot,
                       const XMLCh* encoding) {
  const OwnedDocument frame(ChartBase::createPlXDocument(encoding));
  ChartBase::mergeAttributes(&chartRoot, frame->getDocumentElement());
  const auto sources = sourcesById(dataRoot);

  std::string start = openText(*frame);
  const DOMDocument* chart = chartRoot.getOwnerDocument();
  start.insert(start.find("?>") + 2, miscText(chart->getFirstChild(), &chartRoot));
  TextBuffer text;
  text.append(start);
  for (DOMNode* child = chartRoot.getFirstChild(); child; child = child->getNextSibling()) {
    if (!isPlaceholder(*child)) {
      writeXml(*child, text);
      continue;
    }
    const auto source = sources.find(static_cast<DOMElement*>(child)->getAttribute(PlXUni::_id));
    if (source != sources.end()) writeXml(*source->second, text);
  }
  text.append(closeText(*frame));
  text.append(miscText(chartRoot.getNextSibling(), nullptr));
  return text.take();
}

// True for a data document in which the scanner of XmlDataHandler could take something for what it
// isn't: it knows no comments, no sections of text and no prefixes.
bool isForParsers(const std::string& text) {
  return text.find("<!") != text.npos || text.find(":embeddedSource") != text.npos;
}

// Rewrites the sources as the scanner reads them.
void simplify(DOMDocument& data) {
  std::vector<DOMNode*> rewritten;
  walkElements(data.getDocumentElement(), [&](DOMElement* element) {
    if (element->getPrefix() && *element->getPrefix()) rewritten.push_back(element);
    for (DOMNode* node = element->getFirstChild(); node; node = node->getNextSibling()) {
      const short kind = node->getNodeType();
      if (kind == DOMNode::COMMENT_NODE || kind == DOMNode::CDATA_SECTION_NODE) {
        rewritten.push_back(node);
      }
    }
    return true;
  });
  for (DOMNode* node : rewritten) {
    if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
      data.renameNode(node, node->getNamespaceURI(), std::u16string(node->getLocalName()).c_str());
      continue;
    }
    DOMNode* parent = node->getParentNode();
    if (node->getNodeType() == DOMNode::CDATA_SECTION_NODE) {
      parent->insertBefore(data.createTextNode(node->getNodeValue()), node);
    }
    parent->removeChild(node)->release();
  }
}

}  // namespace

ChartTransformer::ChartTransformer(const std::string& chartText) {
  if (chartText.empty()) return;
  makeModel(chartText);
  if (model_) separateData();
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

void ChartTransformer::separateData() {
  const std::vector<PlXEmbeddedSource*> embedded = model_->getEmbeddedSources();
  std::vector<DOMElement*> sources;
  append(sources, model_->getUserSources());
  append(sources, model_->getDatabaseSources());
  append(sources, model_->getDelimitedFileSources());
  append(sources, model_->getStreamingSources());
  append(sources, embedded);
  if (sources.empty()) return;

  std::vector<ChartString> ids;
  for (PlXEmbeddedSource* source : embedded) {
    // Without an id nothing would lead back from the placeholder.
    if (!*source->getId()) source->setId(CreateUniqueId("source", *model_).xc_str());
    ids.emplace_back(source->getId());
  }
  const OwnedDocument frame(createDataDocument(_utf8));
  keepPrefixes(*model_->getImplementation(), *frame->getDocumentElement());
  TextBuffer text;
  text.append(openText(*frame));
  for (const DOMElement* source : sources) writeXml(*source, text);
  text.append(closeText(*frame));

  model_->removeEmbeddedSources();
  for (const ChartString& id : ids) model_->addUserSource(id.xc_str());
  zlib1211tavo::compressString(text.take(), compressedData_);
  isDataPrinted_ = true;
}

DOMDocument* ChartTransformer::createDataDocument(const XMLCh*) {
  return newDocument(_gsgraphSources, {{_schemaDefaultNSName, _schemaDefaultNSValue},
                                       {_schemaInstanceName, _schemaInstanceValue},
                                       {_schemaDataLocationName, _schemaDatabLocationValue},
                                       {_schemaLocationName, _schemaDataLocationValue}});
}

bool ChartTransformer::readDataText(std::string& text) const {
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
    const OwnedDocument data(readData(Owner::Caller));
    if (!data) return model_->AsUTF8();
    return mergedText(*model_->getImplementation(), *data->getDocumentElement(), encoding);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("getEntireXML fatal error", __FILE__, __LINE__);
    return {};
  }
}

std::string ChartTransformer::getCompressedXML() {
  return model_ ? compressDocument(model_->getImplementation()->getOwnerDocument()) : std::string();
}

std::string ChartTransformer::getCompressedData() {
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
    if (compressedData_.empty()) return nullptr;
    std::string text;
    if (!compressedData_.starts_with('x')) {
      text = compressedData_;
    } else if (!zlib1211tavo::decompressString(text, compressedData_)) {
      return nullptr;
    }
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
  std::string result;
  try {
    zlib1211tavo::compressString(document ? xmlText(*document) : std::string(), result);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("compressDocument fatal error", __FILE__, __LINE__);
  }
  return result;
}
