#include "xmldatahandler.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "charthost.h"
#include "datafields.h"
#include "formatter.h"
#include "textbuffer.h"
#include "utf.h"
#include "vardataprocessor.h"
#include "xmldatareader.h"
#include "zlib1211tavo.h"

using xmldata::Form;

namespace {

bool isCompressed(const std::string& text) {
  return text.starts_with('x');
}

// ---- writing

constexpr std::string_view entityOf(char c) {
  switch (c) {
    case '"':
      return "&quot;";
    case '&':
      return "&amp;";
    case '\'':
      return "&apos;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\r':  // which parsers take for an end of a line
      return "&#xD;";
    default:
      return {};
  }
}

bool isUnusual(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte >= 0x80;
}

// The text with U+FFFD for what is no UTF-8 and no character of XML.
std::string plainText(const std::string& text) {
  std::u16string units = utf::toUtf16(text);
  std::ranges::replace_if(
      units,
      [](char16_t unit) {
        const bool isBlank = unit == u'\t' || unit == u'\n' || unit == u'\r';
        return (unit < 0x20 && !isBlank) || unit >= 0xFFFE;
      },
      u'\uFFFD');
  return utf::toUtf8(units);
}

// Documents are UTF-8, in which no part of a longer character looks like markup: bytes are enough.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const std::string_view entity = entityOf(c);
    if (entity.empty()) {
      result += c;
    } else {
      result += entity;
    }
  }
  return result;
}

// Thrown by Writer for a document that gets too long.
struct TooLong {};

// Appends to a document that mustn't get longer than the limit of inflated texts.
class Writer {
 public:
  // What stands for a ';' within a cell.
  explicit Writer(std::string_view semicolon) : semicolon_(semicolon) {}

  std::string_view semicolon() const { return semicolon_; }

  void append(std::string_view text) {
    take(text.size());
    text_.append(text);
  }

  // As VarDataProcessor::GetValueAsString does, without a string for each cell.
  void append(double value) {
    if (!std::isfinite(value)) return append(formatter::AsString(value, 16));
    constexpr std::size_t longest = 32;
    char* start = text_.room(longest);
    // Behind it doubles are whole but don't fit.
    constexpr double limit = 9223372036854775808.0;
    std::to_chars_result result;
    const bool fits = value >= -limit && value < limit;
    const auto whole = fits ? static_cast<std::int64_t>(value) : 0;
    if (fits && static_cast<double>(whole) == value) {
      result = std::to_chars(start, start + longest, whole);
    } else {
      result = std::to_chars(start, start + longest, value);
    }
    const auto size = static_cast<std::size_t>(result.ptr - start);
    take(size);
    text_.commit(size);
  }

  std::string finish() { return text_.take(); }

 private:
  void take(std::size_t size) {
    if (size > left_) throw TooLong();
    left_ -= size;
  }

  const std::string_view semicolon_;
  TextBuffer text_;
  std::size_t left_ = zlib1211tavo::getInflateLimit();
};

// The cells of one variable, from the first row to the last.
class CellWalk {
 public:
  CellWalk(const VarDataProcessor& store, const _varinfo& info)
      : pool_(store.stringTable),
        values_(info.bag->values.get()),
        next_(info.strings->begin()),
        end_(info.strings->end()) {}

  // Copies cells to every `stride`-th place from `to` on.
  void copyValues(unsigned row, unsigned count, double* to, std::size_t stride) const {
    for (unsigned i = 0; i < count; ++i) to[i * stride] = values_[row + i];
  }

  // `value` is that of the cell.
  void write(unsigned row, double value, Writer& out) {
    if (next_ != end_ && next_->first == row) {
      const unsigned index = (next_++)->second;
      if (index < pool_.size()) {
        return out.append(cellText(pool_[index].text, out.semicolon()));
      }
    }
    if (value != VarDataProcessor::systemMissing) out.append(value);
  }

 private:
  // What no document can hold would make all of it unreadable.
  static std::string cellText(const std::string& text, std::string_view semicolon) {
    std::string result = std::ranges::any_of(text, isUnusual) ? plainText(text) : text;
    for (std::size_t at = 0; (at = result.find(';', at)) != result.npos; at += semicolon.size()) {
      result.replace(at, 1, semicolon);
    }
    return escaped(result);
  }

  const std::vector<_tableentry>& pool_;
  const double* values_;  // as many as the source has rows at least
  _rowmap::const_iterator next_;
  _rowmap::const_iterator end_;
};

void writeRows(VarDataProcessor& store, const std::string& source,
               const std::vector<std::string>& variables, Writer& out) {
  std::vector<CellWalk> columns;
  for (const std::string& variable : variables) {
    _varinfo info;
    if (store.FindVariable(source, variable, info)) columns.emplace_back(store, info);
  }
  const unsigned rows = store.GetRowCount(source);
  // As many rows at once as a line of the processor's cache has cells: with thousands of columns,
  // lines wouldn't stay there from one row to the next.
  constexpr unsigned most = 8;
  std::vector<double> values(most * columns.size());
  for (unsigned first = 0; first < rows; first += most) {
    const unsigned count = std::min(most, rows - first);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      columns[i].copyValues(first, count, &values[i], columns.size());
    }
    const double* next = values.data();
    for (unsigned row = first; row < first + count; ++row) {
      out.append("\t\t<row>");
      for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0) out.append(";");
        columns[i].write(row, *next++, out);
      }
      out.append("</row>\n");
    }
  }
}

void writeSource(VarDataProcessor& store, const std::string& source, Writer& out) {
  std::vector<std::string> variables;
  store.GetVariableNames(source, variables);
  out.append("\t<embeddedSource id=\"");
  out.append(source);
  out.append("\">\n\t\t<names>");
  for (std::size_t i = 0; i < variables.size(); ++i) {
    if (i > 0) out.append(";");
    out.append(escaped(variables[i]));
  }
  out.append("</names>\n\t\t<types>");
  for (std::size_t i = 0; i < variables.size(); ++i) out.append(i > 0 ? ";string" : "string");
  out.append("</types>\n");
  if (variables.empty()) {
    out.append("\t\t<row/>\n");
  } else {
    writeRows(store, source, variables, out);
  }
  out.append("\t</embeddedSource>\n");
}

// False for a document that gets too long.
bool writeStore(VarDataProcessor& store, std::string_view semicolon, std::string& out) {
  std::vector<std::string> sources;
  store.GetSourceNames(sources);
  try {
    Writer writer(semicolon);
    writer.append("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?> \n");
    writer.append("<gs:graphSources xmlns=\"" CHARTXML_HOST
                  "/visualization\""
                  " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" \n"
                  "xmlns:gs=\"" CHARTXML_HOST
                  "/tavo/visualization\" xsi:schemaLocation=\"" CHARTXML_DATA_SCHEMA_LOCATION
                  "\">\n");
    for (const std::string& source : sources) writeSource(store, source, writer);
    writer.append("</gs:graphSources>\n");
    out = writer.finish();
    return true;
  } catch (const TooLong&) {
    return false;
  }
}

// A text that goes out compressed or as it is.
void give(std::string&& text, std::string& out, bool compressed) {
  if (compressed) {
    zlib1211tavo::compressString(text, out);
  } else {
    out = std::move(text);
  }
}

// ---- reading

unsigned char* streamOf(const std::string& xml, Form form, unsigned& size) {
  size = 0;
  try {
    VarDataProcessor store;
    if (xmldata::read(xml, form, store, XmlDataHandler::Keep::Numbers) == 0) return nullptr;
    return store.WriteStream(size);
  } catch (const XmlDataHandler::Problem&) {
    return nullptr;
  }
}

}  // namespace

XmlDataHandler::XmlDataHandler(const std::string& xml) : xml_(xml) {}

XmlDataHandler::XmlDataHandler(const unsigned char* stream, unsigned size)
    : xml_(ownXml_), stream_(stream), streamSize_(size) {}

bool XmlDataHandler::GetXmlData(std::string& out, bool compressed) {
  if (xml_.empty()) return BuildXmlData(out, compressed);
  if (compressed && !isCompressed(xml_)) {
    zlib1211tavo::compressString(xml_, out);
  } else if (!compressed && isCompressed(xml_)) {
    zlib1211tavo::decompressString(out, xml_);
  } else {
    out = xml_;
  }
  return true;
}

unsigned char* XmlDataHandler::GetDataStream(unsigned& size) {
  size = 0;
  if (!xml_.empty()) {
    if (!isCompressed(xml_)) return BuildDataStream(xml_, size);
    std::string text;
    zlib1211tavo::decompressString(text, xml_);
    return BuildDataStream(text, size);
  }
  if (!stream_ || streamSize_ == 0) return nullptr;
  auto* copy = new unsigned char[streamSize_];
  std::memcpy(copy, stream_, streamSize_);
  size = streamSize_;
  return copy;
}

bool XmlDataHandler::BuildXmlData(std::string& out, bool compressed) {
  if (!stream_ || streamSize_ == 0) return false;
  std::string text;
  {
    VarDataProcessor store;
    if (!store.ReadStream(stream_, streamSize_)) return false;
    if (!writeStore(store, ",", text)) return false;
  }
  give(std::move(text), out, compressed);
  return true;
}

unsigned char* XmlDataHandler::BuildDataStream(const std::string& xml, unsigned& size) {
  if (xmldata::formOf(xml) == Form::Older) return Build_1_4_DataStream(xml, size);
  return streamOf(xml, Form::Current, size);
}

unsigned char* XmlDataHandler::Build_1_4_DataStream(const std::string& xml, unsigned& size) {
  return streamOf(xml, Form::Older, size);
}

unsigned XmlDataHandler::CountRows(const char* text) {
  return xmldata::countRows(text, Form::Current);
}

unsigned XmlDataHandler::Count_1_4_Rows(const char* text) {
  return xmldata::countRows(text, Form::Older);
}

void XmlDataHandler::ExtractName(const char* text, std::string& name) {
  name = xmldata::quotedName(text);
}

void XmlDataHandler::ProcessRow(VarDataProcessor& store, const std::string& source,
                                const std::vector<std::string>& names, unsigned row,
                                const char* text) {
  try {
    xmldata::readRow(text, Form::Current, store, source, names, row);
  } catch (const Problem&) {
    // There is no room for the row.
  }
}

void XmlDataHandler::Process_1_4_Row(VarDataProcessor& store, const std::string& source,
                                     unsigned row, const char* text) {
  try {
    xmldata::readRow(text, Form::Older, store, source, {}, row);
  } catch (const Problem&) {
    // There is no room for the row.
  }
}

bool XmlDataHandler::ReadStore(const std::string& xml, VarDataProcessor& store, Keep keep,
                               Problem* problem) {
  try {
    xmldata::read(xml, xmldata::formOf(xml), store, keep);
    return true;
  } catch (const Problem& found) {
    if (problem) *problem = found;
    return false;
  }
}

bool XmlDataHandler::WriteStore(VarDataProcessor& store, std::string& out) {
  return writeStore(store, datafields::greekSemicolon, out);
}
