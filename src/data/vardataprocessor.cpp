#include "vardataprocessor.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "numbertext.h"
#include "textindex.h"

namespace {

constexpr unsigned leastCapacity = 1000;
constexpr unsigned mostCapacityAtFirst = 20000;
constexpr std::uint64_t mostRows = std::numeric_limits<unsigned>::max();

constexpr std::string_view blanks = " \t\r\n";

// Whole numbers of up to so many digits are what a double holds.
constexpr std::size_t mostExactDigits = 15;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// True when a whole number is written in these digits.
bool isExact(std::string_view digits, double number) {
  char spelled[512];  // the longest double has 309
  const auto end = std::to_chars(spelled, std::end(spelled), number, std::chars_format::fixed).ptr;
  return digits == std::string_view(spelled, static_cast<std::size_t>(end - spelled));
}

// Gives every column room for `rows`. Should memory run out on the way, some columns have more room
// than the capacity tells.
void grow(_sourcebag& bag, std::uint64_t rows) {
  if (bag.capacity >= rows) return;
  std::uint64_t capacity = std::max(bag.capacity, leastCapacity);
  while (capacity < rows) capacity *= 2;
  capacity = std::min(capacity, mostRows);
  for (auto& [name, variable] : bag.variables) {
    auto values = std::make_unique_for_overwrite<double[]>(capacity);
    double* const end = std::copy_n(variable.values.get(), bag.capacity, values.get());
    std::fill(end, values.get() + capacity, VarDataProcessor::systemMissing);
    variable.values = std::move(values);
  }
  bag.capacity = static_cast<unsigned>(capacity);
}

// The column's cells with room for `rows`, all of them in use.
double* cellsFor(_varbag& bag, std::uint64_t rows) {
  grow(*bag.source, rows);
  bag.rowCount = std::max(bag.rowCount, static_cast<unsigned>(rows));
  return bag.values.get();
}

// Takes a row out: the texts above move down by one. Answers what the row held.
unsigned takeRow(_rowmap& strings, unsigned row) {
  unsigned taken = VarDataProcessor::noText;
  auto at = strings.lower_bound(row);
  if (at != strings.end() && at->first == row) {
    taken = at->second;
    at = strings.erase(at);
  }
  while (at != strings.end()) {
    auto node = strings.extract(at++);
    --node.key();
    strings.insert(at, std::move(node));
  }
  return taken;
}

bool isWholeNumber(double value) {
  constexpr double bound = 9223372036854775808.0;  // 2^63
  return value >= -bound && value < bound && value == std::trunc(value);
}

}  // namespace

unsigned _sourcebag::rowCount() const {
  unsigned rows = 0;
  for (const auto& [name, variable] : variables) rows = std::max(rows, variable.rowCount);
  return rows;
}

VarDataProcessor::VarDataProcessor() = default;
VarDataProcessor::~VarDataProcessor() = default;

void VarDataProcessor::Reset() {
  sources.clear();
  stringMaps.clear();
  stringTable.clear();
  textIndex_.reset();
}

bool VarDataProcessor::AddDataSource(const std::string& source, unsigned rows) {
  const auto [entry, isNew] = sources.try_emplace(source);
  if (!isNew) return false;
  entry->second.capacity = std::clamp(rows, leastCapacity, mostCapacityAtFirst);
  // A stream may have texts without a column.
  auto& maps = stringMaps[source];
  for (auto& [variable, strings] : maps) forget(strings);
  maps.clear();
  return true;
}

bool VarDataProcessor::AddVariable(const std::string& source, const std::string& variable,
                                   _varinfo* info) {
  AddDataSource(source, 0);
  _sourcebag& bag = sources[source];
  if (bag.variables.contains(variable)) return false;
  AllocBag(bag, variable);
  forget(stringMaps[source][variable]);
  if (info) FindVariable(source, variable, *info);
  return true;
}

bool VarDataProcessor::FindVariable(const std::string& source, const std::string& variable,
                                    _varinfo& info) {
  const auto bag = sources.find(source);
  if (bag == sources.end()) return false;
  const auto found = bag->second.variables.find(variable);
  if (found == bag->second.variables.end()) return false;
  info = {source, variable, &found->second, FindStringMap(source, variable)};
  return true;
}

void VarDataProcessor::AllocBag(_sourcebag& bag, const std::string& variable) {
  auto values = std::make_unique_for_overwrite<double[]>(bag.capacity);
  std::fill_n(values.get(), bag.capacity, systemMissing);
  bag.variables[variable] = {0, std::move(values), &bag};
}

_varbag* VarDataProcessor::bagFor(const std::string& source, const std::string& variable) {
  const auto bag = sources.find(source);
  if (bag == sources.end()) return nullptr;
  const auto found = bag->second.variables.find(variable);
  if (found != bag->second.variables.end()) return &found->second;
  AddVariable(source, variable, nullptr);
  return &bag->second.variables[variable];
}

unsigned VarDataProcessor::GetCapacity(const std::string& source) const {
  const auto bag = sources.find(source);
  return bag == sources.end() ? 0 : bag->second.capacity;
}

unsigned VarDataProcessor::GetRowCount(const std::string& source) const {
  const auto bag = sources.find(source);
  return bag == sources.end() ? 0 : bag->second.rowCount();
}

void VarDataProcessor::ReallocSource(const std::string& source, unsigned rows) {
  const auto bag = sources.find(source);
  if (bag != sources.end()) grow(bag->second, rows);
}

unsigned VarDataProcessor::GetSourceNames(std::vector<std::string>& names) const {
  names.clear();
  for (const auto& [name, bag] : sources) names.push_back(name);
  return static_cast<unsigned>(names.size());
}

unsigned VarDataProcessor::GetVariableNames(const std::string& source,
                                            std::vector<std::string>& names) const {
  const auto bag = sources.find(source);
  if (bag == sources.end()) return 0;
  names.clear();
  for (const auto& [name, variable] : bag->second.variables) names.push_back(name);
  return static_cast<unsigned>(names.size());
}

unsigned VarDataProcessor::DeleteRow(const std::string& source, unsigned row) {
  const auto bag = sources.find(source);
  if (bag == sources.end()) return 0;
  for (auto& [name, variable] : bag->second.variables) {
    // Texts may stand behind the rows that a column counts.
    if (_rowmap* strings = FindStringMap(source, name)) RemoveString(takeRow(*strings, row));
    if (variable.rowCount <= row) continue;
    double* const values = variable.values.get();
    std::copy(values + row + 1, values + variable.rowCount, values + row);
    values[--variable.rowCount] = systemMissing;
  }
  return bag->second.rowCount();
}

bool VarDataProcessor::DeleteColumn(const std::string& source, const std::string& variable) {
  const auto bag = sources.find(source);
  if (bag == sources.end() || bag->second.variables.erase(variable) == 0) return false;
  if (_rowmap* strings = FindStringMap(source, variable)) {
    forget(*strings);
    stringMaps[source].erase(variable);
  }
  return true;
}

bool VarDataProcessor::AddVDP(VarDataProcessor& other) {
  for (const auto& [source, bag] : other.sources) {
    if (!AddDataSource(source, bag.rowCount())) return false;
    for (const auto& [name, variable] : bag.variables) {
      _varinfo info;
      AddVariable(source, name, &info);
      std::copy_n(variable.values.get(), variable.rowCount, cellsFor(*info.bag, variable.rowCount));
      const _rowmap* strings = other.FindStringMap(source, name);
      if (!strings) continue;
      for (const auto& [row, index] : *strings) {
        if (index >= other.stringTable.size()) continue;
        const std::string& text = other.stringTable[index].text;
        // A text that was read may stand in any row; no column grows for one outside.
        if (row < bag.capacity) {
          SetStringVariableValue(&info, row, text);
        } else {
          setText(*info.strings, row, text);
        }
      }
    }
  }
  return true;
}

void VarDataProcessor::forget(_rowmap& strings) {
  for (const auto& [row, index] : strings) RemoveString(index);
  strings.clear();
}

double* VarDataProcessor::GetDataPointer(const std::string& source, const std::string& variable) {
  const _varbag* bag = bagFor(source, variable);
  return bag ? bag->values.get() : nullptr;
}

double* VarDataProcessor::SetMaxRow(const std::string& source, const std::string& variable,
                                    unsigned rows) {
  _varbag* bag = bagFor(source, variable);
  return bag ? cellsFor(*bag, rows) : nullptr;
}

bool VarDataProcessor::SetVariableValue(const std::string& source, const std::string& variable,
                                        unsigned row, double value) {
  return InitializeVariableValueRange(source, variable, value, row, 1);
}

bool VarDataProcessor::SetVariableValue(_varinfo* info, unsigned row, double value) {
  if (!info || !info->bag || row == mostRows) return false;
  cellsFor(*info->bag, row + 1)[row] = value;
  return true;
}

bool VarDataProcessor::SetVariableValueRange(const std::string& source, const std::string& variable,
                                             const double* values, unsigned start, unsigned count) {
  if (!values && count > 0) return false;
  std::vector<double> kept;
  if (std::uint64_t(start) + count > GetCapacity(source)) {
    // The source's own cells move when it grows.
    kept.assign(values, values + count);
    values = kept.data();
  }
  double* const cells = rangeFor(source, variable, start, count);
  if (!cells) return false;
  if (count > 0) std::memmove(cells, values, count * sizeof(double));
  return true;
}

bool VarDataProcessor::InitializeVariableValueRange(const std::string& source,
                                                    const std::string& variable, double value,
                                                    unsigned start, unsigned count) {
  double* const cells = rangeFor(source, variable, start, count);
  if (cells) std::fill_n(cells, count, value);
  return cells;
}

double* VarDataProcessor::rangeFor(const std::string& source, const std::string& variable,
                                   unsigned start, unsigned count) {
  const std::uint64_t rows = std::uint64_t(start) + count;
  if (rows > mostRows) return nullptr;
  _varbag* bag = bagFor(source, variable);
  return bag ? cellsFor(*bag, rows) + start : nullptr;
}

_rowmap* VarDataProcessor::FindStringMap(const std::string& source, const std::string& variable) {
  const auto maps = stringMaps.find(source);
  if (maps == stringMaps.end()) return nullptr;
  const auto strings = maps->second.find(variable);
  return strings == maps->second.end() ? nullptr : &strings->second;
}

bool VarDataProcessor::SetStringVariableValue(const std::string& source,
                                              const std::string& variable, unsigned row,
                                              const std::string& text) {
  _varinfo info;
  return FindVariable(source, variable, info) && SetStringVariableValue(&info, row, text);
}

bool VarDataProcessor::SetStringVariableValue(_varinfo* info, unsigned row,
                                              const std::string& text) {
  if (!info || !info->strings || !info->bag || row == mostRows) return false;
  cellsFor(*info->bag, row + 1);
  setText(*info->strings, row, text);
  return true;
}

bool VarDataProcessor::SetStringVariableValueRange(const std::string& source,
                                                   const std::string& variable, unsigned start,
                                                   const std::vector<std::string>& texts) {
  _rowmap* strings = FindStringMap(source, variable);
  if (!strings || start + std::uint64_t(texts.size()) > mostRows) return false;
  for (unsigned i = 0; i < texts.size(); ++i) setText(*strings, start + i, texts[i]);
  return true;
}

void VarDataProcessor::setText(_rowmap& strings, unsigned row, const std::string& text) {
  // Rows mostly come in ascending order.
  const bool isLast = strings.empty() || strings.rbegin()->first < row;
  const auto at = isLast ? strings.end() : strings.lower_bound(row);
  if (isLast || at->first != row) {
    strings.emplace_hint(at, row, AddString(text));
    return;
  }
  // The text may be the very one that goes.
  const std::string kept(text.data(), text.size());
  RemoveString(at->second);
  at->second = AddString(kept);
}

// Handles point at the row maps of variables: those stay, empty.
void VarDataProcessor::clearStrings() {
  stringTable.clear();
  textIndex_.reset();
  for (auto maps = stringMaps.begin(); maps != stringMaps.end();) {
    const auto bag = sources.find(maps->first);
    if (bag == sources.end()) {
      maps = stringMaps.erase(maps);
      continue;
    }
    const auto& variables = bag->second.variables;
    for (auto strings = maps->second.begin(); strings != maps->second.end();) {
      strings->second.clear();
      strings =
          variables.contains(strings->first) ? std::next(strings) : maps->second.erase(strings);
    }
    ++maps;
  }
}

std::string VarDataProcessor::GetValueAsString(const std::string& source,
                                               const std::string& variable, unsigned row) {
  const auto bag = sources.find(source);
  const auto isReached = [row](const auto& entry) { return entry.second.rowCount > row; };
  const bool isInside = bag != sources.end() && std::any_of(bag->second.variables.begin(),
                                                            bag->second.variables.end(), isReached);
  if (!isInside && row > GetRowCount(source)) return {};
  if (const _rowmap* strings = FindStringMap(source, variable)) {
    const auto text = strings->find(row);
    if (text != strings->end() && text->second < stringTable.size()) {
      return stringTable[text->second].text;
    }
  }
  std::string text;
  if (isInside) AppendNumber(bagFor(source, variable)->values[row], text);
  return text;
}

void VarDataProcessor::AppendNumber(double value, std::string& out) {
  if (value == systemMissing) return;
  if (!isWholeNumber(value)) {
    numbertext::appendShortest(value, out);
    return;
  }
  char digits[24];
  const auto end = std::to_chars(digits, std::end(digits), static_cast<std::int64_t>(value)).ptr;
  out.append(digits, end);
}

VarDataProcessor::Spelling VarDataProcessor::SpellingOf(std::string_view text, double& value) {
  const std::size_t start = text.find_first_not_of(blanks);
  if (start == text.npos) return Spelling::Text;
  text = text.substr(start, text.find_last_not_of(blanks) + 1 - start);
  const bool hasPlus = text.starts_with('+');
  if (hasPlus) text.remove_prefix(1);
  const std::string_view digits = text.substr(!hasPlus && text.starts_with('-') ? 1 : 0);
  // Neither a second sign nor inf.
  if (digits.empty() || !(isDigit(digits[0]) || digits[0] == '.')) return Spelling::Text;
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return Spelling::Text;
  value = number;
  const bool isPadded = digits.size() > 1 && digits[0] == '0' && isDigit(digits[1]);
  if (hasPlus || isPadded) return Spelling::Code;
  if (digits.size() <= mostExactDigits || !std::ranges::all_of(digits, isDigit)) {
    return Spelling::Number;
  }
  return isExact(digits, std::abs(number)) ? Spelling::Number : Spelling::Code;
}

VarDataProcessor::TextIndex& VarDataProcessor::textIndex() {
  if (!textIndex_) textIndex_ = std::make_unique<TextIndex>(stringTable);
  return *textIndex_;
}

unsigned VarDataProcessor::AddString(const std::string& text) {
  return textIndex().add(text);
}

bool VarDataProcessor::RemoveString(unsigned index) {
  if (index >= stringTable.size()) return false;
  textIndex().remove(index);
  return true;
}

_varreader::_varreader(const VarDataProcessor& store, const _varinfo& info)
    : store_(store), bag_(*info.bag), strings_(*info.strings), next_(strings_.begin()) {}

void _varreader::append(unsigned row, std::string& out) {
  if (next_ != strings_.end() && next_->first < row) ++next_;
  if (row < lastRow_ || (next_ != strings_.end() && next_->first < row)) {
    next_ = strings_.lower_bound(row);
  }
  lastRow_ = row;
  const bool hasText = next_ != strings_.end() && next_->first == row;
  if (hasText && next_->second < store_.stringTable.size()) {
    out += store_.stringTable[next_->second].text;
  } else if (row < bag_.source->capacity) {
    VarDataProcessor::AppendNumber(bag_.values[row], out);
  }
}
