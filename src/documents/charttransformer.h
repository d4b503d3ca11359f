// ChartTransformer: one chart, its data kept apart.
#ifndef CHARTXML_CHARTTRANSFORMER_H
#define CHARTXML_CHARTTRANSFORMER_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "chartbase.h"

class ChartData;
struct CommandOutcome;
struct ReleaseDocument;
namespace rowseparator {
struct Separated;
}

// Takes a chart's text, takes the data sources out into a data document, and gives chart and data
// back together or apart. In the chart a `userSource` of the same id stands for each embedded
// source that was taken out.
//
// The data that was taken out is kept as text, whatever its length: as many bytes as its rows have,
// and nothing but the end of memory bounds it. It is compressed when it is first asked for in that
// form, and kept as both from then on. Putting chart and data together takes the memory of the
// result beside it, and asks for no more. Data that a caller hands in is bounded by
// zlib1211tavo::getInflateLimit() where it comes compressed.
//
// All texts are UTF-8; the `encoding` arguments have no effect. A compressed text is a zlib stream:
// its first byte is 'x'. An object that could make no chart of what it was given answers empty
// texts. Operations don't throw: what can't be given back whole is empty or null, never something
// with less in it, and isOutOfMemory() tells when that is for lack of memory. The object is as it
// was then, and can be asked again. Of the constructors, the one of a chart's text throws
// std::bad_alloc for lack of memory; the others make no chart, and isOutOfMemory() is true, unless
// there is no memory for a copy of the data: then they throw it, too. Only a TavoGoToCaller always
// passes.
class CHARTXML_API ChartTransformer : public ChartBase {
 public:
  // Chart text with its data inside. Exceptions of the model leave the constructor.
  explicit ChartTransformer(const std::string& chartText);
  // What getCompressedXML and getCompressedData gave. The data is stored as it is and read when it
  // is asked for. A chart that isn't compressed makes no chart.
  ChartTransformer(const std::string& compressedChart, const std::string& compressedData);
  // What getCompressedXML and getCompressedDataStream gave. The stream stays the caller's, and must
  // live as long as the object; null or a length of 0 is none.
  ChartTransformer(const std::string& compressedChart, const unsigned char* dataStream,
                   unsigned long dataStreamLength);
  ~ChartTransformer() override;

  // A new empty data document, root `gs:graphSources`, that the caller releases. Null when the
  // parser library isn't started.
  xercesc::DOMDocument* createDataDocument(const XMLCh* encoding);
  // The data, parsed anew at every call; the document stays the object's. Null when there is no
  // data or it can't be read.
  xercesc::DOMDocument* getDataDocument();
  // True when there is nothing of the data that getEntireXML() lacks, or no data. False for data of
  // a caller's that can't be read, since it is damaged, longer than the limit or no data document,
  // or that has no source for a placeholder. False as well when there is no memory to find out, as
  // isOutOfMemory() tells. Data of a caller's is read for it, unless getEntireXML() has done so.
  bool isDataWhole();
  // Takes a data document in place of the data that there is. It is read when it is asked for.
  void setDataXML(std::string text);

  // The chart as it stands, with placeholders for its data.
  std::string getXML(const XMLCh* encoding);
  // The chart with each source back at the place of its placeholder; a placeholder whose source the
  // data lacks is left out. Placeholders stay when there is no data, and when isDataWhole() tells
  // that it can't be read. Changes nothing in the object.
  std::string getEntireXML(const XMLCh* encoding);
  std::string getCompressedXML();
  // Empty when there is no data. Of a stream it is the document that XmlDataHandler makes; that is
  // kept, and is from then on what the data is read from.
  std::string getCompressedData();
  // The same document as text. Empty when there is none or it can't be read.
  std::string getDataXML();
  // The data as the stream of VarDataProcessor, in a new array that the caller frees with delete[]:
  // a copy of the stream that the object was made of, or else what XmlDataHandler makes of the
  // document, less its comments and prefixes. Null with `size` 0 when there is no data or it can't
  // be a stream.
  unsigned char* getCompressedDataStream(unsigned long& size);
  // The model over the chart, which stays the object's and lives as long; null without a chart.
  PlXVisualization* getVisualization() const { return model_.get(); }

  // Applies a template to the chart. False without a chart and for a failure that stopped the run;
  // true all the same for a text that is no template and for commands that failed, which
  // getProblems() tells then. With the dumps on (DumpChartXMLOptions), chart and template are
  // written before, and the chart after.
  bool applyTemplate(const std::string& templateText);
  // The same, and tells what was passed over in the way of ChartTemplate::getPassedOver().
  bool applyTemplate(const std::string& templateText, std::vector<std::size_t>& passedOver);
  // The same, and tells what became of each command as ChartTemplate::applyTemplate(outcomes) does.
  bool applyTemplate(const std::string& templateText, std::vector<CommandOutcome>& outcomes);
  // Gives a chart without popups its default popups. False without a chart or with popups.
  bool addPopups();

  // The text of any document, compressed; null counts as an empty text.
  std::string compressDocument(const xercesc::DOMDocument* document) const;

 private:
  using OwnedDocument = std::unique_ptr<xercesc::DOMDocument, ReleaseDocument>;

  bool runTemplate(const std::string& templateText, std::vector<std::size_t>& passedOver,
                   std::vector<CommandOutcome>* outcomes);
  void dump(const std::string& prefix, unsigned counter, PRINTTYPE type);
  void refuse(const char* reason);
  void makeModel(const std::string& text);
  bool openWithoutRows(const std::string& text);
  // With null the sources still hold their rows.
  void separateData(rowseparator::Separated* rows);
  OwnedDocument parse(const std::string& text);
  OwnedDocument readData(rowseparator::Separated& rows);
  template <class Operation>
  auto answer(const char* failure, unsigned line, Operation operation) const
      -> decltype(operation());

  std::unique_ptr<xercesc::DOMDocument> chart_;
  std::unique_ptr<PlXVisualization> model_;  // over chart_
  std::unique_ptr<ChartData> data_;          // never null
};

#endif
