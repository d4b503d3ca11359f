#include "csv.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <set>
#include <string_view>
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

std::optional<double> numberOf(std::string_view field) {
  if (field.starts_with('+')) {
    field.remove_prefix(1);
    if (field.starts_with('-')) return std::nullopt;
  }
  double value = 0;
  const char* end = field.data() + field.size();
  const auto result = std::from_chars(field.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

void requireText(const FieldReader& reader, std::string_view text) {
  const auto isControl = [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
  };
  if (std::any_of(text.begin(), text.end(), isControl)) {
    reader.fail("holds a control character");
  }
  if (std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; })) return;
  std::u16string wide;
  std::string again;
  TAVOMBGenericToU16(nullptr, wide, text);
  TAVOMBU16ToGeneric(nullptr, again, wide);
  if (again != text) reader.fail("is not UTF-8");
  if (wide.find_first_of(u"\xFFFE\xFFFF") != wide.npos) reader.fail("holds no character");
}

std::vector<std::string> readNames(FieldReader& reader) {
  std::vector<std::string> names;
  std::set<std::string> known;
  do {
    const std::string_view name = reader.next();
    requireText(reader, name);
    if (name.empty()) reader.fail("a variable has no name");
    names.emplace_back(name);
    if (!known.insert(names.back()).second) {
      reader.fail("two variables are named '" + escaped(name) + "'");
    }
  } while (!reader.isLineEnd());
  return names;
}

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
  std::vector<_varinfo> columns(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) store.AddVariable(source, names[i], &columns[i]);

  Progress progress(text.size() < largeSize ? 0 : text.size() / mebibyte);
  unsigned row = 0;
  for (; !reader.isAtEnd(); ++row) {
    if (row % 4096 == 0) progress.show(reader.position() / mebibyte, file);
    std::size_t count = 0;
    do {
      const std::string_view field = reader.next();
      if (count == columns.size()) reader.fail("has more fields than the first line");
      _varinfo* column = &columns[count++];
      if (field.empty()) continue;
      if (const auto number = numberOf(field)) {
        store.SetVariableValue(column, row, *number);
      } else {
        requireText(reader, field);
        store.SetStringVariableValue(column, row, std::string(field));
      }
    } while (!reader.isLineEnd());
    if (count < columns.size()) reader.fail("has fewer fields than the first line");
  }
  for (const std::string& name : names) store.SetMaxRow(source, name, row);
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
