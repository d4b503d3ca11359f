#include "csv.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <limits>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "progress.h"

namespace {

// Texts above this size take long enough to be watched.
constexpr std::size_t largeSize = 1 << 24;
constexpr std::size_t mebibyte = 1 << 20;

// Splits a table into fields.
class FieldReader {
 public:
  FieldReader(const std::string& file, std::string_view text) : file_(file), text_(text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text_.starts_with(mark)) at_ = mark.size();
  }

  bool isAtEnd() const { return at_ == text_.size(); }
  bool isLineEnd() const { return isLineEnd_; }
  std::size_t line() const { return line_; }
  std::size_t position() const { return at_; }

  // The next field, good until the next call; isLineEnd() tells whether it is the last of its line.
  std::string_view next() {
    isLineEnd_ = false;
    const std::string_view field = !isAtEnd() && text_[at_] == '"' ? quotedField() : plainField();
    if (isAtEnd() || text_.substr(at_).starts_with("\r\n") || text_[at_] == '\n') {
      isLineEnd_ = true;
      if (!isAtEnd()) at_ += text_[at_] == '\n' ? 1 : 2;
      ++line_;
    } else if (text_[at_] == ',') {
      ++at_;
    } else {
      fail("a quote stands within a field");
    }
    return field;
  }

  [[noreturn]] void fail(const std::string& reason) const {
    // The line of a field that ends one is the one before.
    const std::size_t line = isLineEnd_ ? line_ - 1 : line_;
    throw Failure(file_ + ':' + std::to_string(line) + ": " + reason);
  }

 private:
  std::string_view plainField() {
    const std::size_t start = at_;
    at_ = std::min(text_.find_first_of(",\"\n", start), text_.size());
    if (at_ > start && at_ < text_.size() && text_[at_] == '\n' && text_[at_ - 1] == '\r') --at_;
    return text_.substr(start, at_ - start);
  }

  std::string_view quotedField() {
    unquoted_.clear();
    const std::size_t lineOfStart = line_;
    for (++at_;; ++at_) {
      const std::size_t quote = text_.find('"', at_);
      if (quote == text_.npos) {
        line_ = lineOfStart;
        fail("a quoted field has no end");
      }
      const std::string_view piece = text_.substr(at_, quote - at_);
      unquoted_ += piece;
      line_ += static_cast<std::size_t>(std::count(piece.begin(), piece.end(), '\n'));
      at_ = quote + 1;
      if (isAtEnd() || text_[at_] != '"') return unquoted_;
      unquoted_ += '"';
    }
  }

  const std::string& file_;
  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  bool isLineEnd_ = false;
  std::string unquoted_;
};

// `what` is the variable's name, or a word for it.
void requireText(const FieldReader& reader, std::string_view text, const std::string& what) {
  const auto isControl = [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
  };
  if (std::any_of(text.begin(), text.end(), isControl)) {
    reader.fail(what + " holds a control character");
  }
  if (std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; })) return;
  std::u16string wide;
  std::string again;
  TAVOMBGenericToU16(nullptr, wide, text);
  TAVOMBU16ToGeneric(nullptr, again, wide);
  if (again != text) reader.fail(what + " is not UTF-8");
  if (wide.find_first_of(u"\xFFFE\xFFFF") != wide.npos)
    reader.fail(what + " holds U+FFFE or U+FFFF, which are no characters");
}

std::vector<std::string> readNames(FieldReader& reader) {
  std::vector<std::string> names;
  std::set<std::string> known;
  do {
    const std::string_view name = reader.next();
    requireText(reader, name, "a name");
    if (name.empty()) reader.fail("a variable has no name");
    names.emplace_back(name);
    if (!known.insert(names.back()).second) {
      reader.fail("two variables are named '" + escaped(name) + "'");
    }
  } while (!reader.isLineEnd());
  return names;
}

// The columns of a table that is being read.
class Columns {
 public:
  Columns(VarDataProcessor& store, const std::string& source, const std::vector<std::string>& names)
      : store_(store), names_(names), columns_(names.size()), isText_(names.size()) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      store.AddVariable(source, names[i], &columns_[i]);
    }
  }

  void set(std::size_t number, unsigned row, std::string_view field, const FieldReader& reader) {
    _varinfo* column = &columns_[number];
    if (field.find_first_not_of(" \t\r\n") == field.npos) return;
    double value = 0;
    const auto spelling = VarDataProcessor::SpellingOf(field, value);
    if (spelling == VarDataProcessor::Spelling::Number && !isText_[number]) {
      store_.SetVariableValue(column, row, value);
      return;
    }
    if (spelling == VarDataProcessor::Spelling::Code && !isText_[number]) {
      isText_[number] = hasNewTexts_ = true;
    }
    requireText(reader, field, '\'' + escaped(names_[number]) + '\'');
    store_.SetVariableValue(column, row, VarDataProcessor::systemMissing);
    store_.SetStringVariableValue(column, row, std::string(field));
  }

  // True, once, after numbers have shown that they are codes, as 007 is: their columns hold nothing
  // but texts, and all rows are to be set again.
  bool wantAgain() { return std::exchange(hasNewTexts_, false); }

 private:
  VarDataProcessor& store_;
  const std::vector<std::string>& names_;
  std::vector<_varinfo> columns_;
  std::vector<bool> isText_;
  bool hasNewTexts_ = false;
};

// Puts the field that starts at `start` into quotes if it needs them.
void quoteField(std::string& out, std::size_t start) {
  if (out.find_first_of("\",\r\n", start) == out.npos) return;
  std::string field = "\"";
  for (const char c : std::string_view(out).substr(start)) {
    if (c == '"') field += c;
    field += c;
  }
  field += '"';
  out.replace(start, out.npos, field);
}

}  // namespace

void readCsv(const std::string& file, const std::string& text, const std::string& source,
             VarDataProcessor& store) {
  FieldReader reader(file, text);
  if (reader.isAtEnd()) throw Failure(file + ": is empty");
  const std::vector<std::string> names = readNames(reader);
  const auto lines = static_cast<unsigned>(std::min<std::ptrdiff_t>(
      std::count(text.begin(), text.end(), '\n'), std::numeric_limits<int>::max()));
  store.AddDataSource(source, lines);
  store.ReallocSource(source, lines);
  Columns columns(store, source, names);
  Progress progress(text.size() < largeSize ? 0 : text.size() / mebibyte);
  unsigned row = 0;
  do {
    FieldReader rows = reader;
    for (row = 0; !rows.isAtEnd(); ++row) {
      if (row % 4096 == 0) progress.show(rows.position() / mebibyte, file);
      std::size_t count = 0;
      do {
        const std::string_view field = rows.next();
        if (count == names.size()) rows.fail("has more fields than the first line");
        columns.set(count++, row, field, rows);
      } while (!rows.isLineEnd());
      if (count < names.size()) rows.fail("has fewer fields than the first line");
    }
  } while (columns.wantAgain());
  for (const std::string& name : names) store.SetMaxRow(source, name, row);
}

bool isTable(const std::string& file) {
  std::string extension = std::filesystem::path(file).extension().string();
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return extension == ".csv";
}

std::string sourceNameOf(const std::string& file) {
  return file == "-" ? "data" : std::filesystem::path(file).stem().string();
}

void requireSourceName(const std::string& file, const std::string& name) {
  if (name.find_first_of("<>&\"") == name.npos) return;
  throw Failure(file + ": a source can't be named '" + escaped(name) + "'");
}

std::string csvOf(VarDataProcessor& store, const std::string& source) {
  std::string out;
  std::vector<std::string> names;
  store.GetVariableNames(source, names);
  std::vector<_varreader> columns;
  for (const std::string& name : names) {
    _varinfo info;
    if (!store.FindVariable(source, name, info)) continue;
    if (!columns.empty()) out += ',';
    const std::size_t start = out.size();
    out += name;
    quoteField(out, start);
    columns.emplace_back(store, info);
  }
  out += "\r\n";

  const unsigned rows = store.GetRowCount(source);
  constexpr unsigned step = 4096;
  Progress progress(rows < 64 * step ? 0 : rows / step);
  for (unsigned row = 0; row < rows; ++row) {
    if (row % step == 0) progress.show(row / step, "writing");
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (i > 0) out += ',';
      const std::size_t start = out.size();
      columns[i].append(row, out);
      quoteField(out, start);
    }
    out += "\r\n";
  }
  return out;
}
