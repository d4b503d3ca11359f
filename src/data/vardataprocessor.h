// VarDataProcessor: the data of a chart as columns, and the codec of its binary stream.
#ifndef CHARTXML_VARDATAPROCESSOR_H
#define CHARTXML_VARDATAPROCESSOR_H

#include <cstddef>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "export.h"

struct _sourcebag;

// The text cells of one variable: row to index in the store's text pool.
using _rowmap = std::map<unsigned, unsigned>;

// One column.
struct _varbag {
  unsigned rowCount = 0;  // rows in use, at most the source's capacity
  // As many cells as the source's capacity; those from `rowCount` on are system-missing unless
  // somebody wrote to them.
  std::unique_ptr<double[]> values;
  _sourcebag* source = nullptr;  // the source that the column is in
};

// One data source.
struct CHARTXML_API _sourcebag {
  unsigned rowCount() const;  // the largest of its variables

  unsigned capacity = 0;  // cells allocated in every column
  std::map<std::string, _varbag> variables;
};

// One text of the pool.
struct _tableentry {
  std::string text;       // empty in a freed entry
  unsigned refCount = 0;  // the cells that use it; 0 marks a free entry
};

// A handle for fast access to one variable, filled by AddVariable and FindVariable. It is good
// until the variable is deleted or the store is reset or read anew.
struct _varinfo {
  std::string source;
  std::string variable;
  _varbag* bag = nullptr;
  _rowmap* strings = nullptr;
};

// Named data sources that hold named variables, each a column of doubles with optional texts. A
// cell may hold a number and a text at once; the text wins when the cell is read. Rows are counted
// from 0; the row count of a source is the largest among its variables. Names and texts are bytes
// in the caller's encoding, and sources and variables are kept in the order of their names' bytes.
//
// All columns of a source have the same capacity. It starts at the number of rows told, but at
// least 1000 and at most 20000, and doubles until it holds the rows that a setter needs. Pointers
// to cells end with growth; handles don't.
//
// Setters answer false, and pointers are null, for an unknown source and for rows that 32 bits
// don't count; an unknown variable of a known source is added. Setters throw std::bad_alloc when
// there is no memory for a column. A store can't be copied; AddVDP merges one into another.
class CHARTXML_API VarDataProcessor {
 public:
  using _varbag = ::_varbag;
  using _sourcebag = ::_sourcebag;
  using _tableentry = ::_tableentry;
  using _varinfo = ::_varinfo;

  // What a cell holds that nobody has set.
  static constexpr double systemMissing = std::numeric_limits<double>::lowest();
  // The index in a row map that stands for no text; so does any other outside the pool.
  static constexpr unsigned noText = 0xFFFFFFFF;

  VarDataProcessor();
  ~VarDataProcessor();
  VarDataProcessor(const VarDataProcessor&) = delete;
  VarDataProcessor& operator=(const VarDataProcessor&) = delete;

  // Empties the store.
  void Reset();

  // Sources and variables.

  // False if the source exists.
  bool AddDataSource(const std::string& source, unsigned rows);
  // Adds the source if it is absent. False, with `info` left alone, if the variable exists. Fills
  // `info` unless it is null.
  bool AddVariable(const std::string& source, const std::string& variable, _varinfo* info);
  // A handle to a variable that exists; false, with `info` left alone, for any other.
  bool FindVariable(const std::string& source, const std::string& variable, _varinfo& info);
  // Gives a variable of `bag` a new column of unset cells, with no rows in use.
  void AllocBag(_sourcebag& bag, const std::string& variable);
  // Both 0 for an unknown source.
  unsigned GetCapacity(const std::string& source) const;
  unsigned GetRowCount(const std::string& source) const;
  // Grows the columns of a source to hold `rows`; never shrinks them.
  void ReallocSource(const std::string& source, unsigned rows);
  // Each replaces what `names` holds and answers the count; for an unknown source that is 0, and
  // `names` stays as it was.
  unsigned GetSourceNames(std::vector<std::string>& names) const;
  unsigned GetVariableNames(const std::string& source, std::vector<std::string>& names) const;
  // Removes a row from each variable that has it; numbers and texts above move down by one. Answers
  // the source's row count, 0 for an unknown source.
  unsigned DeleteRow(const std::string& source, unsigned row);
  // Removes a variable and gives its texts back to the pool; false for an unknown one.
  bool DeleteColumn(const std::string& source, const std::string& variable);
  // Adds the sources of `other`, with their own capacity and with texts numbered anew. Stops at the
  // first source whose name is taken here. True if everything was merged.
  bool AddVDP(VarDataProcessor& other);

  // Numbers. A setter raises the variable's row count to hold what it sets.

  // The column's cells, as many as the capacity.
  double* GetDataPointer(const std::string& source, const std::string& variable);
  // The same, with the row count raised to `rows` before.
  double* SetMaxRow(const std::string& source, const std::string& variable, unsigned rows);
  bool SetVariableValue(const std::string& source, const std::string& variable, unsigned row,
                        double value);
  // Without a look-up of names. False for a null handle or one that was never filled.
  bool SetVariableValue(_varinfo* info, unsigned row, double value);
  bool SetVariableValueRange(const std::string& source, const std::string& variable,
                             const double* values, unsigned start, unsigned count);
  bool InitializeVariableValueRange(const std::string& source, const std::string& variable,
                                    double value, unsigned start, unsigned count);

  // Texts. These setters add no variable: they answer false for an unknown one.

  // Null for an unknown source or variable.
  _rowmap* FindStringMap(const std::string& source, const std::string& variable);
  // Releases the cell's old text first.
  bool SetStringVariableValue(const std::string& source, const std::string& variable, unsigned row,
                              const std::string& text);
  bool SetStringVariableValue(_varinfo* info, unsigned row, const std::string& text);
  // Texts from row `start` on. Leaves the row count alone: the caller sizes the column first.
  bool SetStringVariableValueRange(const std::string& source, const std::string& variable,
                                   unsigned start, const std::vector<std::string>& texts);
  // A cell as text: its text if it has one, nothing for the system-missing value and for a cell
  // outside, whole numbers in digits, others as formatter::AsString(value, 16) has them. A text may
  // stand in the row behind the last as well.
  std::string GetValueAsString(const std::string& source, const std::string& variable,
                               unsigned row);
  // Appends what a number in a cell reads as.
  static void AppendNumber(double value, std::string& out);
  // What the text of a cell is where texts count beside numbers. `value` is set for both kinds of
  // numbers.
  enum class Spelling {
    Text,
    Number,  // a finite decimal one; blanks around it mean nothing
    Code,    // one whose spelling says more than its value: 007, +5, or a whole number of more
             // digits than a double keeps
  };
  static Spelling SpellingOf(std::string_view text, double& value);

  // The pool of texts, which cells share and count.

  // The index of the first entry with this text, with one more use; a new text takes the lowest
  // free entry, or else a new one at the end. Takes constant time on average, whatever the pool's
  // size.
  unsigned AddString(const std::string& text);
  // Takes one use away, and with the last the text. A free entry stays free. False for an index
  // outside the pool.
  bool RemoveString(unsigned index);

  // The stream; docs/stream.md has its layout.

  // The whole store, compressed, in an array that the caller frees with delete[]. Source names are
  // cut to 64 bytes and variable names to 287. Null, with `size` 0, when the store holds more than
  // 65,535 sources or its stream would be longer than 32 bits tell, or when memory runs out. Should
  // compression fail, the stream comes uncompressed, which ReadStreamData doesn't take.
  unsigned char* GetDataStream(unsigned& size);
  // The same, but throws std::bad_alloc when memory runs out.
  unsigned char* WriteStream(unsigned& size);
  // Replaces the store's content with a stream's, which may be of either byte order. False for
  // anything but one whole stream, all of whose counts, offsets and lengths fit it: the store is
  // empty then if the stream isn't whole, and keeps what was read up to a part that doesn't fit.
  // Uncompressed the stream must not be longer than zlib1211tavo's limit, and its columns must not
  // take more memory than that limit or twice the stream's length.
  bool ReadStreamData(const void* data, unsigned size);
  // The same, but throws std::bad_alloc when memory runs out, which says nothing about the stream.
  bool ReadStream(const void* data, unsigned size);

  // The section of a stream that holds the texts: its length in bytes, 0 if no cell has a text and
  // the largest unsigned if 32 bits don't tell it. `out` must have room for all of it.
  unsigned StringDataSize() const;
  void WriteStringData(unsigned char* out);
  // Replaces all texts with those of a section, whose uses are taken as they are stored. Handles
  // stay good. False if the section doesn't fit the `size` bytes at `in`, or leaves some of them
  // over; the store keeps what was read until then.
  bool ReadStringData(const unsigned char* in, std::size_t size);
  // The same for a section that WriteStringData wrote: nothing tells where it ends but the section.
  bool ReadStringData(const unsigned char* in);

  // Reverses `size` bytes in place.
  static void SwapBytes(char* data, int size);

  // The content, for reading. Whoever changes it directly must leave the pool to AddString and
  // RemoveString, and every variable of `sources` its row map in `stringMaps`.
  std::map<std::string, _sourcebag> sources;
  std::map<std::string, std::map<std::string, _rowmap>> stringMaps;
  std::vector<_tableentry> stringTable;
  unsigned char byteOrder = 0;  // of this store's streams: little-endian

 private:
  class TextIndex;

  TextIndex& textIndex();
  // Gives the texts of a row map back, and empties it.
  void forget(_rowmap& strings);
  _varbag* bagFor(const std::string& source, const std::string& variable);
  double* rangeFor(const std::string& source, const std::string& variable, unsigned start,
                   unsigned count);
  void setText(_rowmap& strings, unsigned row, const std::string& text);
  void clearStrings();
  bool readStrings(const unsigned char* in, std::size_t size, bool isSwapped, bool isWhole);

  // Finds texts in the pool; made when it is first needed, dropped when the pool is read anew.
  std::unique_ptr<TextIndex> textIndex_;
};

// Reads the cells of one variable as text, rows in ascending order in constant time each, others
// after a search. Good as long as the store isn't changed.
class CHARTXML_API _varreader {
 public:
  _varreader(const VarDataProcessor& store, const _varinfo& info);

  // Appends what GetValueAsString answers for a row of the source.
  void append(unsigned row, std::string& out);

 private:
  const VarDataProcessor& store_;
  const _varbag& bag_;
  const _rowmap& strings_;
  _rowmap::const_iterator next_;
  unsigned lastRow_ = 0;
};

#endif
