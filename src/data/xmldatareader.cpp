#include "xmldatareader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <unordered_map>
#include <utility>

#include "datafields.h"
#include "numbertext.h"
#include "plainrows.h"
#include "vardataprocessor.h"
#include "zlib1211tavo.h"

namespace {

using Problem = XmlDataHandler::Problem;
using Keep = XmlDataHandler::Keep;
using xmldata::Form;

using datafields::decoded;
using datafields::fieldEnd;
using datafields::Of;
using datafields::withSemicolons;
using plainrows::emptyRow;
using plainrows::rowEnd;
using plainrows::rowStart;

constexpr std::string_view namesStart = "<names>";
constexpr std::string_view namesEnd = "</names>";
constexpr std::string_view noNames = "<names/>";
constexpr std::string_view cellStart = "<dataValue name=\"";

constexpr std::size_t npos = std::string_view::npos;

std::string_view elementOf(Form form) {
  return form == Form::Current ? plainrows::sourceName : "source";
}

// memmem looks at several bytes at once, which the standard library's search doesn't.
std::size_t find(std::string_view text, std::string_view needle, std::size_t from = 0) {
  if (from > text.size()) return npos;
  const char* start = text.data() + from;
  const void* hit = memmem(start, text.size() - from, needle.data(), needle.size());
  return hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - text.data()) : npos;
}

bool startsWith(const char* at, const char* end, std::string_view word) {
  return std::string_view(at, static_cast<std::size_t>(end - at)).starts_with(word);
}

bool areBlanks(std::string_view text) {
  return text.find_first_not_of(" \t\n\v\f\r") == npos;
}

// ---- columns

// A column of the store that is being filled. Its cells are looked up once.
struct Column {
  std::string name;
  double* cells = nullptr;  // null until there is a value
  unsigned rows = 0;        // up to the last value
  _varinfo info;
};

constexpr const char* tooMuch = "the data takes more memory than the limit of inflated texts";

// The memory that the columns of a document may take: with what a stream tells of each source it is
// the length of the stream at least.
class Budget {
 public:
  // False when there isn't enough left.
  bool take(std::uint64_t bytes) {
    if (bytes > left_) return false;
    left_ -= bytes;
    return true;
  }

 private:
  std::uint64_t left_ = std::min<std::uint64_t>(zlib1211tavo::getInflateLimit(),
                                                std::numeric_limits<std::uint32_t>::max());
};

// The columns of one source. Values are gathered for as many rows as a line of the processor's
// cache has cells: with thousands of columns, each in its own place, neither lines nor pages would
// stay there from one row to the next.
class Filler {
 public:
  // The source is in the store, and gets room for that many rows.
  Filler(VarDataProcessor& store, const std::string& source, unsigned rows, Keep keep,
         Budget& budget)
      : store_(store), source_(source), rows_(rows), keep_(keep), budget_(budget) {
    if (store_.GetCapacity(source_) < rows) {
      // What the source has from before, under the same name, grows too.
      std::vector<std::string> names;
      take(store_.GetVariableNames(source_, names) * std::uint64_t(rows) * 2 * sizeof(double));
      store_.ReallocSource(source_, rows);
    }
    capacity_ = store_.GetCapacity(source_);
  }
  Filler(const Filler&) = delete;
  Filler& operator=(const Filler&) = delete;

  // Names that are empty are those of a source without variables, too.
  void add(std::string name) {
    columns_.push_back({.name = std::move(name), .info = {}});
    gathered_.resize(columns_.size() * most);
    isText_.push_back(0);
    given_.push_back(0);
    if (keep_ == Keep::All && !columns_.back().name.empty()) create(columns_.back());
  }

  std::size_t size() const { return columns_.size(); }

  // In ascending order. The values put then are those of the row.
  void startRow(unsigned row) {
    if (row - first_ >= most) {
      flush();
      first_ = row;
    }
    place_ = row - first_;
  }

  void put(std::size_t column, double value) {
    gathered_[column * most + place_] = value;
    given_[column] |= static_cast<unsigned char>(1U << place_);
    touched_ = std::max(touched_, column + 1);
  }

  // Whether the value is all that counts of a number's field.
  bool isPlain(std::size_t column, std::string_view number) const {
    if (keep_ == Keep::Numbers) return true;
    constexpr std::size_t mostExact = 15;  // digits
    const std::size_t sign = number[0] == '-' ? 1 : 0;
    return !isText_[column] && number.size() <= mostExact && number[sign] >= '0' &&
           number[sign] <= '9' &&
           (number[sign] != '0' || number.size() == sign + 1 || number[sign + 1] == '.');
  }

  // The value of a field that isn't plainly a number. strtod takes what stands at its start where
  // numbers alone are kept.
  void putField(std::size_t column, std::string_view field) {
    std::string whole;
    if (field.find('&') != npos) {
      whole = decoded(field, Of::Cell);
      field = whole;
    }
    if (keep_ == Keep::Numbers) return put(column, numbertext::scan(field).value);
    if (areBlanks(field)) return;
    double value = 0;
    const auto spelling = VarDataProcessor::SpellingOf(field, value);
    if (spelling == VarDataProcessor::Spelling::Number && !isText_[column]) {
      return put(column, value);
    }
    if (spelling == VarDataProcessor::Spelling::Code && !isText_[column]) {
      isText_[column] = 1;
      hasNewTexts_ = true;
    }
    putText(column, withSemicolons(field));
  }

  // True, once, after numbers have shown that they are codes: their columns hold nothing but texts,
  // and all rows are to be put again.
  bool wantsAgain() {
    flush();
    return std::exchange(hasNewTexts_, false);
  }

  // Stores what is still gathered. Rows count once their cells are set.
  void finish() {
    flush();
    for (Column& column : columns_) {
      if (!column.cells) continue;
      const unsigned rows = keep_ == Keep::All ? rows_ : column.rows;
      column.info.bag->rowCount = std::max(column.info.bag->rowCount, rows);
    }
  }

 private:
  static constexpr unsigned most = 8;

  void putText(std::size_t number, const std::string& text) {
    Column& column = columns_[number];
    if (!column.cells) create(column);
    store_.SetStringVariableValue(&column.info, first_ + place_, text);
    column.cells = column.info.bag->values.get();
    column.cells[first_ + place_] = VarDataProcessor::systemMissing;
  }

  void flush() {
    for (std::size_t i = 0; i < touched_; ++i) {
      const unsigned given = std::exchange(given_[i], 0);
      if (given == 0) continue;
      Column& column = columns_[i];
      if (!column.cells) create(column);
      for (unsigned place = 0; place < most; ++place) {
        if ((given >> place & 1) == 0) continue;
        column.cells[first_ + place] = gathered_[i * most + place];
        column.rows = first_ + place + 1;
      }
    }
    touched_ = 0;
  }

  void create(Column& column) {
    constexpr std::uint64_t header = 288;
    take(header + capacity_ * sizeof(double));
    if (!store_.FindVariable(source_, column.name, column.info)) {
      store_.AddVariable(source_, column.name, &column.info);
    }
    column.cells = column.info.bag->values.get();
  }

  void take(std::uint64_t bytes) {
    if (!budget_.take(bytes)) {
      throw Problem{npos, tooMuch};
    }
  }

  VarDataProcessor& store_;
  const std::string& source_;
  const unsigned rows_;
  const Keep keep_;
  Budget& budget_;
  std::uint64_t capacity_ = 0;
  std::vector<Column> columns_;
  std::vector<double> gathered_;       // `most` rows of each column from row `first_` on
  std::vector<unsigned char> isText_;  // of columns, with codes among their numbers
  bool hasNewTexts_ = false;
  std::vector<unsigned char> given_;  // those of them that have a value, a bit each
  std::size_t touched_ = 0;           // columns, up to the last that a value is gathered for
  unsigned first_ = 0;
  unsigned place_ = 0;
};

// ---- rows

// Reads the rows of a source, one after the other. Offsets of problems are places in memory less
// `origin`.
class RowReader {
 public:
  RowReader(Filler& filler, const char* origin) : filler_(filler), origin_(origin) {}

  // `at` stands behind `<row>`; answers where `</row>` starts. Every byte is looked at once.
  const char* readCurrent(const char* at, const char* end) {
    for (std::size_t number = 0;; ++number) {
      if (at == end) fail(at, "a row has no </row>");
      if (*at != ';' && *at != '<') at = readField(at, end, number);
      if (at != end && *at == '<') at = behindMarkup(at, end);
      if (at == end) fail(at, "a row has no </row>");
      if (*at == '<') return at;
      ++at;
    }
  }

  const char* readOlder(const char* at, const char* end) {
    const std::string_view rest(at, static_cast<std::size_t>(end - at));
    const std::size_t length = find(rest, rowEnd);
    if (length == npos || find(rest.substr(0, length), rowStart) != npos) {
      fail(at, "a row has no </row>");
    }
    const std::string_view cells = rest.substr(0, length);
    std::size_t number = 0;
    for (std::size_t hit = 0; (hit = find(cells, cellStart, hit)) != npos;) {
      hit = readCell(cells, hit + cellStart.size(), number++);
    }
    return at + length;
  }

 private:
  [[noreturn]] void fail(const char* at, const char* reason) const {
    throw Problem{static_cast<std::size_t>(at - origin_), reason};
  }

  // Stores the field at `at`, and answers where it ends: at its separator or at markup.
  const char* readField(const char* at, const char* end, std::size_t number) {
    if (number >= filler_.size()) fail(at, "a row has more values than there are names");
    double value;
    const auto result = std::from_chars(at, end, value);
    if (result.ec == std::errc() && result.ptr != end &&
        (*result.ptr == ';' || *result.ptr == '<') &&
        filler_.isPlain(number, {at, static_cast<std::size_t>(result.ptr - at)})) {
      filler_.put(number, value);
      return result.ptr;
    }
    const char* stop = fieldEnd(at, end);
    filler_.putField(number, {at, static_cast<std::size_t>(stop - at)});
    return stop;
  }

  // From a '<' to `</row>`, or, over other markup, to the next separator.
  const char* behindMarkup(const char* at, const char* end) const {
    for (; at != end && *at != ';'; ++at) {
      if (*at != '<') continue;
      if (startsWith(at, end, rowEnd)) return at;
      if (startsWith(at, end, rowStart)) fail(at, "a row has no </row>");
    }
    return at;
  }

  // `start` is behind the quote that the name starts with. Answers where to look for the next cell.
  std::size_t readCell(std::string_view cells, std::size_t start, std::size_t number) {
    const char* place = cells.data() + start;
    const std::size_t quote = cells.find('"', start);
    if (quote == npos) fail(place, "the name of a value has no end");
    const std::size_t close = cells.find('>', quote);
    if (close == npos) fail(place, "the tag of a value has no end");
    const std::size_t stop = std::min(cells.find('<', close), cells.size());
    if (stop == close + 1 || close + 1 == cells.size()) return stop;

    const std::size_t column = columnOf(cells.substr(start, quote - start), number);
    filler_.putField(column, cells.substr(close + 1, stop - close - 1));
    return stop;
  }

  // Rows mostly have the same cells in the same order: the one at the same place is tried first.
  std::size_t columnOf(std::string_view name, std::size_t number) {
    if (number < order_.size() && order_[number].first == name) {
      return order_[number].second;
    }
    const auto [known, isNew] = numbers_.emplace(name, filler_.size());
    if (isNew) filler_.add(decoded(name, Of::Name));
    if (number == order_.size()) order_.emplace_back(name, known->second);
    return known->second;
  }

  Filler& filler_;
  const char* origin_;
  std::unordered_map<std::string_view, std::size_t> numbers_;    // by name as it stands
  std::vector<std::pair<std::string_view, std::size_t>> order_;  // in the longest row so far
};

// ---- sources

bool isRow(std::string_view text, Keep keep) {
  return text.starts_with(rowStart) || (keep == Keep::All && text.starts_with(emptyRow));
}

// Where the next row starts, or npos. Printers of documents write `<row/>` for an empty row: it is
// one where all is kept.
std::size_t findRow(std::string_view text, std::size_t from, Keep keep) {
  std::size_t hit = text.find('<', from);
  while (hit != npos && !isRow(text.substr(hit), keep)) hit = text.find('<', hit + 1);
  return hit;
}

// A source from its start tag to its end tag, or to what comes first: the next source or the end.
struct SourceText {
  std::string_view name;
  std::string_view body;  // from the name on
  unsigned rows = 0;      // 0 without an end tag
  bool isEnded = false;
};

// Finds the sources and counts their rows in one pass from tag to tag.
class SourceWalk {
 public:
  SourceWalk(std::string_view xml, Form form, Keep keep)
      : xml_(xml),
        start_('<' + std::string(elementOf(form)) + " id=\""),
        end_("</" + std::string(elementOf(form)) + '>'),
        keep_(keep) {
    while (at_ != npos && !xml_.substr(at_).starts_with(start_)) toNextTag();
  }

  bool next(SourceText& source) {
    if (at_ == npos) return false;
    const std::size_t from = at_ + start_.size();
    std::size_t to = npos;
    unsigned rows = 0;
    for (toNextTag(); at_ != npos; toNextTag()) {
      const std::string_view rest = xml_.substr(at_);
      if (rest.starts_with(start_)) break;
      if (to != npos) continue;
      if (rest.starts_with(end_)) {
        to = at_;
      } else if (isRow(rest, keep_)) {
        ++rows;
      }
    }
    source.isEnded = to != npos;
    source.rows = source.isEnded ? rows : 0;
    if (!source.isEnded) to = at_ == npos ? xml_.size() : at_;
    source.body = xml_.substr(from, to - from);
    source.name = xmldata::quotedName(source.body);
    return true;
  }

 private:
  void toNextTag() { at_ = xml_.find('<', at_ + 1); }

  const std::string_view xml_;
  const std::string start_;
  const std::string end_;
  const Keep keep_;
  std::size_t at_ = xml_.find('<');
};

// False when there are none.
bool addNames(std::string_view body, Filler& filler) {
  const std::size_t start = find(body, namesStart);
  if (start == npos) {
    if (find(body, noNames) == npos) return false;
    filler.add("");
    return true;
  }
  const std::size_t stop = find(body, namesEnd, start);
  if (stop == npos) return false;
  const char* end = body.data() + stop;
  for (const char* at = body.data() + start + namesStart.size();; ++at) {
    const char* stop = fieldEnd(at, end);
    filler.add(decoded({at, static_cast<std::size_t>(stop - at)}, Of::Name));
    at = std::find(stop, end, ';');
    if (at == end) return true;
  }
}

void readRows(const SourceText& source, const char* origin, Form form, Keep keep, Filler& filler) {
  const std::string_view body = source.body;
  RowReader reader(filler, origin);
  const char* end = body.data() + body.size();
  std::size_t at = 0;
  for (unsigned row = 0; row < source.rows && (at = findRow(body, at, keep)) != npos; ++row) {
    if (body.substr(at).starts_with(emptyRow)) {
      ++at;
      continue;
    }
    filler.startRow(row);
    const char* cells = body.data() + at + rowStart.size();
    const char* stop =
        form == Form::Current ? reader.readCurrent(cells, end) : reader.readOlder(cells, end);
    at = static_cast<std::size_t>(stop - body.data());
  }
}

void readSource(const SourceText& source, const char* origin, Form form, VarDataProcessor& store,
                Keep keep, Budget& budget) {
  const std::string_view body = source.body;
  const auto place = static_cast<std::size_t>(body.data() - origin);
  if (keep == Keep::All && !source.isEnded) throw Problem{place, "a source has no end tag"};
  const std::string name(source.name);
  const unsigned rows = source.rows;
  constexpr std::uint64_t entrySize = 80;
  if (!budget.take(entrySize)) throw Problem{npos, tooMuch};
  if (store.AddDataSource(name, rows)) {
    // The rows are known: the store's own rule takes up to twice as much, and many times as much
    // for small sources.
    store.sources.find(name)->second.capacity = std::max(rows, 1u);
  }
  Filler filler(store, name, rows, keep, budget);
  if (form == Form::Current && !addNames(body, filler) && rows > 0) {
    throw Problem{place, "a source has no <names>"};
  }
  do {
    readRows(source, origin, form, keep, filler);
  } while (filler.wantsAgain());
  filler.finish();
}

}  // namespace

Form xmldata::formOf(std::string_view xml) {
  // Both names start alike, and with a letter that rows of numbers don't have.
  constexpr std::string_view start = "grafo-";
  for (std::size_t hit = 0; (hit = xml.find(start, hit)) != npos; hit += start.size()) {
    const std::string_view rest = xml.substr(hit + start.size());
    if (rest.starts_with("1.4.xsd") || rest.starts_with("data-1.0.xsd")) return Form::Older;
  }
  return Form::Current;
}

std::size_t xmldata::read(std::string_view xml, Form form, VarDataProcessor& store, Keep keep) {
  constexpr std::size_t mostSources = std::numeric_limits<std::uint16_t>::max();
  Budget budget;
  constexpr std::uint64_t headerSize = 8;
  budget.take(headerSize);
  SourceWalk walk(xml, form, keep);
  SourceText source;
  std::size_t count = 0;
  for (; walk.next(source); ++count) {
    if (count == mostSources) {
      throw Problem{static_cast<std::size_t>(source.name.data() - xml.data()),
                    "there are more than 65535 sources"};
    }
    readSource(source, xml.data(), form, store, keep, budget);
  }
  return count;
}

unsigned xmldata::countRows(std::string_view text, Form form) {
  const std::string end = "</" + std::string(elementOf(form)) + '>';
  const std::size_t stop = find(text, end);
  unsigned rows = 0;
  for (std::size_t hit = 0; (hit = find(text, rowStart, hit)) < stop; ++hit) ++rows;
  return stop == npos ? 0 : rows;
}

std::string_view xmldata::quotedName(std::string_view text) {
  const std::size_t quote = text.find('"');
  return text.substr(0, quote == npos ? 0 : quote);
}

void xmldata::readRow(std::string_view text, Form form, VarDataProcessor& store,
                      const std::string& source, const std::vector<std::string>& names,
                      unsigned row) {
  const std::size_t stop = find(text, rowEnd);
  if (!text.starts_with(rowStart) || stop == npos) return;
  if (store.GetCapacity(source) == 0 || row == std::numeric_limits<unsigned>::max()) return;
  Budget budget;
  Filler filler(store, source, row + 1, Keep::Numbers, budget);
  for (const std::string& name : names) filler.add(name);
  filler.startRow(row);
  RowReader reader(filler, text.data());
  const char* cells = text.data() + rowStart.size();
  const char* end = text.data() + stop + rowEnd.size();
  try {
    if (form == Form::Current) {
      reader.readCurrent(cells, end);
    } else {
      reader.readOlder(cells, end);
    }
  } catch (const Problem&) {
    // The cells in front of it count.
  }
  filler.finish();
}
