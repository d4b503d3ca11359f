#include "charttransformer.h"

#include <new>
#include <utility>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "chartdata.h"
#include "datasources.h"
#include "memoryfailure.h"
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

constexpr const char* notCompressed = "the chart is no whole compressed text";

}  // namespace

// What an operation of the object gives; the empty answer, and a report, when it can't.
template <class Operation>
auto ChartTransformer::answer(const char* failure, unsigned line, Operation operation) const
    -> decltype(operation()) {
  isOutOfMemory_ = false;
  try {
    return operation();
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (const std::bad_alloc&) {
    isOutOfMemory_ = true;
  } catch (const OutOfMemoryException&) {
    isOutOfMemory_ = true;
  } catch (...) {
    // Told below.
  }
  report(failure, __FILE__, line);
  return {};
}

ChartTransformer::ChartTransformer(const std::string& chartText)
    : data_(std::make_unique<ChartData>()) {
  asBadAlloc([&] {
    if (chartText.empty()) refuse("the text is empty");
    if (chartText.empty() || openWithoutRows(chartText)) return;
    makeModel(chartText);
    if (model_) separateData(nullptr);
  });
}

ChartTransformer::ChartTransformer(const std::string& compressedChart,
                                   const std::string& compressedData)
    : data_(std::make_unique<ChartData>(ChartData::Form::Packed, compressedData)) {
  try {
    std::string text;
    if (!compressedChart.starts_with('x') ||
        !zlib1211tavo::decompressString(text, compressedChart)) {
      refuse(notCompressed);
      return;
    }
    makeModel(text.empty() ? compressedChart : text);
  } catch (const TavoGoToCaller&) {
    throw;
  } catch (const std::bad_alloc&) {
    isOutOfMemory_ = true;
  } catch (...) {
    // The object stays without a chart.
  }
}

ChartTransformer::ChartTransformer(const std::string& compressedChart,
                                   const unsigned char* dataStream, unsigned long dataStreamLength)
    : data_(std::make_unique<ChartData>(dataStream, dataStreamLength)) {
  answer("ChartTransformer ctor fatal error", __LINE__, [&] {
    std::string text;
    if (zlib1211tavo::decompressString(text, compressedChart)) {
      makeModel(text);
    } else {
      refuse(notCompressed);
    }
    return true;
  });
}

ChartTransformer::~ChartTransformer() {
  if (model_) model_->store().endWithDocument();
}

void ChartTransformer::refuse(const char* reason) {
  problems_.assign(1, {{}, 0, 0, reason, true});
}

void ChartTransformer::makeModel(const std::string& text) {
  chart_.reset(parseOwned(text));
  if (!chart_) return;
  asBadAlloc([this] { model_ = std::make_unique<PlXVisualization>(chart_->getDocumentElement()); });
}

// False, with the object as it was, when the rows have to go the way of everything else. That way
// is also taken for each failure: its report then tells the place in the whole text.
bool ChartTransformer::openWithoutRows(const std::string& text) {
  rowseparator::Separated rows;
  if (!rowseparator::separate(text, rows)) return false;
  chart_.reset(tryOwned(rows.rest));
  if (!chart_) return false;
  rowseparator::placeInText(text, rows, problems_);
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
  const OwnedDocument frame = datasources::wholeFrame(createDataDocument(_utf8));
  auto text = datasources::separated(root, *frame, sources, rows, isPlain);

  model_->removeEmbeddedSources();
  for (const ChartString& id : ids) model_->addUserSource(id.xc_str());
  data_ = std::make_unique<ChartData>(std::move(text));
}

OwnedDocument ChartTransformer::parse(const std::string& text) {
  return OwnedDocument(parseOwned(text));
}

DOMDocument* ChartTransformer::getDataDocument() {
  return answer("getDataDocument fatal error", __LINE__, [this]() -> DOMDocument* {
    std::string room;
    const std::string* text = data_->text(room);
    return text ? parseDocument(*text) : nullptr;
  });
}

bool ChartTransformer::isDataWhole() {
  return answer("isDataWhole fatal error", __LINE__, [this] {
    if (!data_->isWhole()) {
      rowseparator::Separated rows;
      readData(rows);
    }
    return *data_->isWhole();
  });
}

void ChartTransformer::setDataXML(std::string text) {
  data_ = std::make_unique<ChartData>(ChartData::Form::Plain, std::move(text));
}

std::string ChartTransformer::getXML(const XMLCh*) {
  return answer("getXML fatal error", __LINE__,
                [this] { return model_ ? model_->AsUTF8() : std::string(); });
}

std::string ChartTransformer::getEntireXML(const XMLCh* encoding) {
  return answer("getEntireXML fatal error", __LINE__, [&] {
    if (!model_) return std::string();
    if (model_->getUserSources().empty()) return model_->AsUTF8();
    const DOMElement& root = *model_->getImplementation();
    if (const DataText* marked = data_->markedText()) {
      const OwnedDocument frame = datasources::wholeFrame(createDataDocument(encoding));
      const DOMElement& dataRoot = *frame->getDocumentElement();
      if (datasources::areMergeable(root, dataRoot)) {
        return datasources::merged(root, dataRoot, *marked, encoding);
      }
    }
    rowseparator::Separated rows;
    const OwnedDocument data = readData(rows);
    if (!data) return model_->AsUTF8();
    return datasources::merged(root, *data, rows.bytes ? &rows : nullptr, encoding);
  });
}

// The data's document, with its rows apart where they are plain; else `rows` stays empty. Null when
// there is none or it can't be read.
OwnedDocument ChartTransformer::readData(rowseparator::Separated& rows) {
  std::string room;
  const std::string* text = data_->text(room);
  OwnedDocument data;
  // In a document of another version, characters of rows may have to be spelled otherwise.
  const bool isUsual = !chart_ || !XMLString::equals(chart_->getXmlVersion(), u"1.1");
  if (text && isUsual && rowseparator::separate(*text, rows, rowseparator::Of::Data)) {
    data.reset(tryOwned(rows.rest));
    if (data) rowseparator::placeInText(*text, rows, problems_);
    if (data && !datasources::areRowsOf(*data, rows)) data.reset();
  }
  if (!data) {
    rows = {};
    if (text) data = parse(*text);
  }
  const bool isDocument = data && data->getDocumentElement();
  data_->noteReading(isDocument &&
                     (!model_ || datasources::isDataOf(*model_->getImplementation(), *data)));
  return data;
}

std::string ChartTransformer::getCompressedXML() {
  return model_ ? compressDocument(model_->getImplementation()->getOwnerDocument()) : std::string();
}

std::string ChartTransformer::getDataXML() {
  return answer("getDataXML fatal error", __LINE__, [this] {
    return data_->printed([this](const std::string& text) { return parse(text); });
  });
}

std::string ChartTransformer::getCompressedData() {
  return answer("getCompressedData fatal error", __LINE__, [this] {
    return data_->packed([this](const std::string& text) { return parse(text); });
  });
}

unsigned char* ChartTransformer::getCompressedDataStream(unsigned long& size) {
  size = 0;
  return answer("getCompressedDataStream fatal error", __LINE__, [&] {
    return data_->stream(size, [this](const std::string& text) { return parse(text); });
  });
}

DOMDocument* ChartTransformer::createDataDocument(const XMLCh*) {
  return answer("createDataDocument fatal error", __LINE__, [] {
    return newDocument(_gsgraphSources, {{_schemaDefaultNSName, _schemaDefaultNSValue},
                                         {_schemaInstanceName, _schemaInstanceValue},
                                         {_schemaDataLocationName, _schemaDatabLocationValue},
                                         {_schemaLocationName, _schemaDataLocationValue}});
  });
}

std::string ChartTransformer::compressDocument(const DOMDocument* document) const {
  return answer("compressDocument fatal error", __LINE__, [document] {
    std::string result;
    zlib1211tavo::compressString(document ? xmlText(*document) : std::string(), result);
    return result;
  });
}
