// The data sources of a chart: PlXUserSource, PlXDatabaseSource, PlXDelimitedFileSource,
// PlXStreamingSource, PlXEmbeddedSource, PlXSource.
#ifndef CHARTXML_PLXSOURCES_H
#define CHARTXML_PLXSOURCES_H

#include "plxbaseelement.h"

// A placeholder for data that is held apart from the chart, under the same id.
class CHARTXML_API PlXUserSource : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_userSource[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
};

// The settings of the three outside sources are for whoever fetches the data: ChartXML passes them
// on unread.

class CHARTXML_API PlXDatabaseSource : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_databaseSource[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getDriver() const { return text(u"driver"); }
  void setDriver(const XMLCh* driver) { setText(u"driver", driver); }
  const XMLCh* getConnection() const { return text(u"connection"); }
  void setConnection(const XMLCh* connection) { setText(u"connection", connection); }
  const XMLCh* getQuery() const { return text(u"query"); }
  void setQuery(const XMLCh* query) { setText(u"query", query); }
};

class CHARTXML_API PlXDelimitedFileSource : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_delimitedFileSource[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getPath() const { return text(u"path"); }
  void setPath(const XMLCh* path) { setText(u"path", path); }
  // One character each.
  const XMLCh* getDelimiter() const { return text(u"delimiter"); }
  void setDelimiter(const XMLCh* delimiter) { setText(u"delimiter", delimiter); }
  const XMLCh* getQuote() const { return text(u"quote"); }
  void setQuote(const XMLCh* quote) { setText(u"quote", quote); }
  const XMLCh* getEncoding() const { return text(u"encoding"); }
  void setEncoding(const XMLCh* encoding) { setText(u"encoding", encoding); }
  // True when the first line holds the names of the columns, which is also the default.
  bool getNamesInFirstLine() const { return flag(u"namesInFirstLine", true); }
  void setNamesInFirstLine(bool names) { setFlag(u"namesInFirstLine", names); }
};

class CHARTXML_API PlXStreamingSource : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_streamingSource[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  const XMLCh* getAddress() const { return text(u"address"); }
  void setAddress(const XMLCh* address) { setText(u"address", address); }
  // Seconds between two readings; 0 for readings as they come.
  double getPeriod() const { return number(u"period"); }
  void setPeriod(double seconds) { setNumber(u"period", seconds); }
};

// Data that lies in the chart: column names, column types and rows, each a ";" list. None of them
// has an object.
class CHARTXML_API PlXEmbeddedSource : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_embeddedSource[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
};

// The form that embedded data has in older charts: rows of single values.
class CHARTXML_API PlXSource : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_source[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
};

#endif
