#include "charttransformer.h"

#include <utility>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "chartdata.h"
#include "datasources.h"
#include "modelstore.h"
#include "owneddocument.h"
#include "plxframes.h"
#include "plxsources.h"
#include "plxuni.h"
#include "report.h"
#include "rowseparator.h"
#include "tavogotocaller.h"
#include "xmlwriter.h"
#include "zlib1211tavo.h"

using namespace xercesc;

namespace {

template <class Source>
void append(std::vector<DOMElement*>& sources, const std::vector<Source*>& objects) {
  for (const Source* object : objects) sources.push_back(object->getImplementation());
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

}  // namespace

ChartTransformer::ChartTransformer(const std::string& chartText)
    : data_(std::make_unique<ChartData>()) {
  if (chartText.empty() || openWithoutRows(chartText)) return;
  makeModel(chartText);
  if (model_) separateData(nullptr);
}

ChartTransformer::ChartTransformer(const std::string& compressedChart,
                                   const std::string& compressedData)
    : data_(std::make_unique<ChartData>(compressedData)) {
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
    : data_(std::make_unique<ChartData>(dataStream, dataStreamLength)) {
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
  datasources::Sources sources;
  append(sources.elements, model_->getUserSources());
  append(sources.elements, model_->getDatabaseSources());
  append(sources.elements, model_->getDelimitedFileSources());
  append(sources.elements, model_->getStreamingSources());
  sources.firstEmbedded = sources.elements.size();
  append(sources.elements, embedded);
  if (sources.elements.empty()) return;

  const DOMElement& root = *model_->getImplementation();
  bool isPlain = rows && datasources::arePlain(root, sources.elements);
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
  auto text = datasources::separated(root, *frame, sources, rows, isPlain);

  model_->removeEmbeddedSources();
  for (const ChartString& id : ids) model_->addUserSource(id.xc_str());
  data_ = std::make_unique<ChartData>(std::move(text));
}

DOMDocument* ChartTransformer::createDataDocument(const XMLCh*) {
  return newDocument(_gsgraphSources, {{_schemaDefaultNSName, _schemaDefaultNSValue},
                                       {_schemaInstanceName, _schemaInstanceValue},
                                       {_schemaDataLocationName, _schemaDatabLocationValue},
                                       {_schemaLocationName, _schemaDataLocationValue}});
}

DOMDocument* ChartTransformer::readData(Owner owner) {
  try {
    std::string text;
    if (!data_->text(text)) return nullptr;
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
    return datasources::merged(*model_->getImplementation(), *data, encoding);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("getEntireXML fatal error", __FILE__, __LINE__);
    return {};
  }
}

bool ChartTransformer::mergeText(const XMLCh* encoding, std::string& text) {
  const DataText* marked = data_->markedText();
  if (!marked || marked->size() > zlib1211tavo::getInflateLimit()) return false;
  const OwnedDocument frame(createDataDocument(encoding));
  const DOMElement& dataRoot = *frame->getDocumentElement();
  const DOMElement& chartRoot = *model_->getImplementation();
  if (!datasources::areMergeable(chartRoot, dataRoot)) return false;
  text = datasources::merged(chartRoot, dataRoot, *marked, encoding);
  return true;
}

std::string ChartTransformer::getCompressedXML() {
  return model_ ? compressDocument(model_->getImplementation()->getOwnerDocument()) : std::string();
}

std::string ChartTransformer::getCompressedData() {
  try {
    return data_->packed(
        [this](const std::string& text) { return OwnedDocument(parseOwned(text)); });
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (...) {
    report("getCompressedData fatal error", __FILE__, __LINE__);
    return {};
  }
}

unsigned char* ChartTransformer::getCompressedDataStream(unsigned long& size) {
  size = 0;
  try {
    return data_->stream(
        size, [this](const std::string& text) { return OwnedDocument(parseOwned(text)); });
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
