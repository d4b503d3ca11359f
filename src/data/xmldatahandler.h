// XmlDataHandler: a chart's data as a document and as a stream.
#ifndef CHARTXML_XMLDATAHANDLER_H
#define CHARTXML_XMLDATAHANDLER_H

#include <cstddef>
#include <string>
#include <vector>

#include "export.h"

class VarDataProcessor;

// Turns a data document, root `gs:graphSources`, into the stream of VarDataProcessor and back. It
// is a scanner and no XML parser: it knows the tags in the very spelling below.
//
//   <embeddedSource id="sales">         `id` comes first
//     <names>month;price</names>        the variables
//     <types>string;string</types>      written, never read
//     <row>1;9.99</row>                 a cell for each variable; an empty one is missing
//   </embeddedSource>                   without it the source has no rows
//
// A text that mentions "grafo-1.4.xsd" or "grafo-data-1.0.xsd" has the older form, in which a
// missing cell may also be left out:
//
//   <source id="sales"><row><dataValue name="month">1</dataValue></row></source>
//
// Cells are numbers in the spelling of strtod, with '.' as the decimal point whatever the locale,
// and blanks in front. Any other text is 0 on the way to the stream; texts get into streams by
// VarDataProcessor alone. A variable is in the stream when one of its cells is. `<row/>` is no row.
//
// The five entities and references to characters are decoded in names and cells, and their ';'
// separates nothing. The id is taken and given as it stands between its quotes, which makes it the
// same again after a round trip: a store whose source has '<', '&' or '"' in its name gives no
// well-formed document. Likewise a ';' in the name of a variable makes two of it, and the cells
// behind it are then those of other columns; a reference to one stays as it stands in names. In a
// text a ';' becomes ',', and U+FFFD stands for what is no UTF-8 and for control characters; names
// go out byte for byte, so that one that is no UTF-8 makes a document for this class alone. A
// stream cuts long names (docs/stream.md): what has one name then is one.
//
// No stream comes of a text in which a source with rows has no `<names>`, a row no `</row>` or a
// value no name; of one with more than 65535 sources; and of one whose columns would take more
// memory than zlib1211tavo::getInflateLimit(), since that couldn't be read again.
//
// A compressed text is one whose first byte is 'x'. Nothing is copied: text and stream are the
// caller's, and must live as long as the handler.
class CHARTXML_API XmlDataHandler {
 public:
  // On a document, plain or compressed.
  explicit XmlDataHandler(const std::string& xml);
  // On a compressed stream. Null and 0 stand for none.
  XmlDataHandler(const unsigned char* stream, unsigned size);
  XmlDataHandler(const XmlDataHandler&) = delete;
  XmlDataHandler& operator=(const XmlDataHandler&) = delete;

  // The document; the handler's own comes as it is, but for compression. False, with `out` as it
  // was, without input and for a stream that can't be read.
  bool GetXmlData(std::string& out, bool compressed);
  // The compressed stream in a new array, which the caller frees with delete[]; the handler's own
  // comes as it is. Null with `size` 0 without input or sources, and for a text that breaks the
  // rules above.
  unsigned char* GetDataStream(unsigned& size);

  // The steps of these two. Sources and variables come in the order of their names. A document that
  // would be longer than zlib1211tavo::getInflateLimit() isn't built: a few bytes of a stream can
  // stand for much text.
  bool BuildXmlData(std::string& out, bool compressed);
  unsigned char* BuildDataStream(const std::string& xml, unsigned& size);
  unsigned char* Build_1_4_DataStream(const std::string& xml, unsigned& size);

  // Texts below are zero-terminated, and start within a document.

  // The rows in front of the first end tag of a source; 0 when there is none.
  unsigned CountRows(const char* text);
  unsigned Count_1_4_Rows(const char* text);
  // What stands in front of the next double quote; empty without one.
  void ExtractName(const char* text, std::string& name);
  // Stores the cells of the row whose `<row>` the text starts with. Nothing is stored of a row
  // without an end, for an unknown source, and of cells that have no name.
  void ProcessRow(VarDataProcessor& store, const std::string& source,
                  const std::vector<std::string>& names, unsigned row, const char* text);
  void Process_1_4_Row(VarDataProcessor& store, const std::string& source, unsigned row,
                       const char* text);

  // Why a document can't be read, and the byte of it where that shows; npos when it is no one
  // place.
  struct Problem {
    std::size_t offset = std::string::npos;
    const char* reason = "";
  };
  enum class Keep {
    Numbers,  // what a stream of the document has
    All,      // cells that are no numbers as texts, but for blanks, and U+037E in them as ';';
              // columns with codes (VarDataProcessor::SpellingOf) as texts; variables without a
              // value; `<row/>` as an empty row. A source without its end tag is a problem then.
  };
  // The stream's content without the stream, for programs that work on data themselves. Adds a
  // plain document's sources to the store; false, with a part of them added, when it can't be read.
  static bool ReadStore(const std::string& xml, VarDataProcessor& store, Keep keep,
                        Problem* problem = nullptr);
  // The document of a store, in which U+037E stands for a ';' within a text: to Unicode both are
  // one character, and none of the roads of a chart takes it for the end of a cell. False, with
  // `out` as it was, for one that would be longer than zlib1211tavo::getInflateLimit(). Changes
  // nothing in the store.
  static bool WriteStore(VarDataProcessor& store, std::string& out);

 private:
  const std::string ownXml_;
  const std::string& xml_;
  const unsigned char* stream_ = nullptr;
  unsigned streamSize_ = 0;
};

#endif
