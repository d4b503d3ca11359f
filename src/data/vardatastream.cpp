// The stream of a column store, both ways. docs/stream.md has the layout.
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "vardataprocessor.h"
#include "zlib1211tavo.h"
#include "zlibstreams.h"

namespace {

static_assert(std::endian::native == std::endian::little, "streams are written as memory has them");

constexpr unsigned char magic = 176;
constexpr std::size_t headerSize = 8;
constexpr std::size_t entrySize = 80;
constexpr std::size_t entryNameAt = 12;
constexpr std::size_t sourceNameField = 65;  // the last byte is NUL
constexpr std::size_t variableNameField = 288;
constexpr std::uint64_t mostSources = 0xFFFF;
constexpr std::uint64_t mostBytes = 0xFFFFFFFF;
// Deflate makes no more of a byte.
constexpr unsigned mostInflation = 1032;

std::uint64_t blockSize(std::uint64_t rows) {
  return variableNameField + rows * sizeof(double);
}

// Writing.

std::uint64_t stringSize(const VarDataProcessor& store) {
  bool hasTexts = false;
  std::uint64_t size = 4 + 4;
  for (const auto& [source, variables] : store.stringMaps) {
    size += 8 + source.size();
    for (const auto& [variable, strings] : variables) {
      size += 8 + variable.size() + 8 * std::uint64_t(strings.size());
      hasTexts |= !strings.empty();
    }
  }
  if (!hasTexts) return 0;
  for (const _tableentry& entry : store.stringTable) size += 8 + entry.text.size();
  return size;
}

std::uint64_t streamSize(const VarDataProcessor& store) {
  std::uint64_t size = headerSize + entrySize * store.sources.size() + stringSize(store);
  for (const auto& [name, bag] : store.sources) {
    size += bag.variables.size() * blockSize(bag.rowCount());
  }
  return size;
}

// Writes into memory that has room.
class Memory {
 public:
  explicit Memory(unsigned char* out) : out_(out) {}

  void write(const void* bytes, std::size_t size) {
    if (size > 0) std::memcpy(out_, bytes, size);
    out_ += size;
  }
  void number(std::size_t value) {
    const auto narrow = static_cast<std::uint32_t>(value);
    write(&narrow, sizeof narrow);
  }
  void text(const std::string& text) {
    number(text.size());
    write(text.data(), text.size());
  }
  // A name in a field of NULs, cut where the field ends but for one.
  void name(const std::string& name, std::size_t field) {
    const std::size_t size = std::min(name.size(), field - 1);
    write(name.data(), size);
    std::memset(out_, 0, field - size);
    out_ += field - size;
  }

 private:
  unsigned char* out_;
};

std::string headOf(const VarDataProcessor& store, std::uint64_t total) {
  std::string head(headerSize + entrySize * store.sources.size(), '\0');
  Memory out(reinterpret_cast<unsigned char*>(head.data()));
  const auto count = static_cast<std::uint16_t>(store.sources.size());
  out.write(&store.byteOrder, 1);
  out.write(&magic, 1);
  out.write(&count, sizeof count);
  out.number(total);
  std::uint64_t offset = head.size();
  constexpr unsigned char unused[entrySize - entryNameAt - sourceNameField] = {};
  for (const auto& [name, bag] : store.sources) {
    const unsigned rows = bag.rowCount();
    out.number(rows);
    out.number(bag.variables.size());
    out.number(offset);
    out.name(name, sourceNameField);
    out.write(unused, sizeof unused);
    offset += bag.variables.size() * blockSize(rows);
  }
  return head;
}

void writeStrings(const VarDataProcessor& store, Memory out) {
  out.number(store.stringMaps.size());
  for (const auto& [source, variables] : store.stringMaps) {
    out.text(source);
    out.number(variables.size());
    for (const auto& [variable, strings] : variables) {
      out.text(variable);
      out.number(strings.size());
      for (const auto& [row, index] : strings) {
        out.number(row);
        out.number(index);
      }
    }
  }
  out.number(store.stringTable.size());
  for (const auto& [text, refCount] : store.stringTable) {
    out.number(refCount);
    out.text(text);
  }
}

// `out` takes columns as they lie, so that there is no copy of them all.
template <class Out>
void writeStream(const VarDataProcessor& store, std::uint64_t total, Out& out) {
  const std::string head = headOf(store, total);
  out.write(head.data(), head.size());
  for (const auto& [source, bag] : store.sources) {
    const std::size_t rows = bag.rowCount();
    for (const auto& [name, variable] : bag.variables) {
      unsigned char field[variableNameField];
      Memory(field).name(name, sizeof field);
      out.write(field, sizeof field);
      out.write(variable.values.get(), rows * sizeof(double));
    }
  }
  const std::uint64_t size = stringSize(store);
  if (size == 0) return;
  const auto strings = std::make_unique_for_overwrite<unsigned char[]>(size);
  writeStrings(store, Memory(strings.get()));
  out.write(strings.get(), size);
}

// Reading.

std::uint32_t numberAt(const unsigned char* at, bool isSwapped) {
  std::uint32_t value;
  std::memcpy(&value, at, sizeof value);
  return isSwapped ? __builtin_bswap32(value) : value;
}

// The name in a field; one without its NUL ends with the field.
std::string nameAt(const unsigned char* at, std::size_t field) {
  const auto* text = reinterpret_cast<const char*>(at);
  return {text, strnlen(text, field - 1)};
}

// What is left of a string section, and of the memory that its content may take: an entry of eight
// bytes becomes one of many times as much. A stream whose texts stand in rows never takes that
// much.
class Section {
 public:
  Section(const unsigned char* bytes, std::size_t size, bool isSwapped)
      : next_(bytes), left_(size), isSwapped_(isSwapped) {}

  // False when there isn't enough left.
  bool take(std::uint64_t bytes) {
    if (bytes > memoryLeft_) return false;
    memoryLeft_ -= bytes;
    return true;
  }

  bool number(std::uint32_t& value) {
    if (left_ < sizeof value) return false;
    value = numberAt(next_, isSwapped_);
    skip(sizeof value);
    return true;
  }
  // The number of items that take at least `leastSize` bytes each.
  bool count(std::uint32_t& value, std::size_t leastSize) {
    return number(value) && value <= left_ / leastSize;
  }
  bool text(std::string& text) {
    std::uint32_t size;
    if (!count(size, 1)) return false;
    text.assign(reinterpret_cast<const char*>(next_), size);
    skip(size);
    return true;
  }
  bool empty() const { return left_ == 0; }

 private:
  void skip(std::size_t size) {
    next_ += size;
    left_ -= size;
  }

  const unsigned char* next_;
  std::size_t left_;
  bool isSwapped_;
  std::uint64_t memoryLeft_ = 4 * std::uint64_t(zlib1211tavo::getInflateLimit());
};

constexpr std::size_t nodeSize = 48;  // of a map, about

bool readRows(Section& in, _rowmap& strings) {
  std::uint32_t count;
  if (!in.count(count, 8) || !in.take(count * std::uint64_t(nodeSize))) return false;
  strings.clear();
  for (; count > 0; --count) {
    std::uint32_t row;
    std::uint32_t index;
    if (!in.number(row) || !in.number(index)) return false;
    strings.insert_or_assign(strings.end(), row, index);
  }
  return true;
}

bool readTable(Section& in, std::vector<_tableentry>& table) {
  std::uint32_t count;
  if (!in.count(count, 8) || !in.take(count * std::uint64_t(sizeof(_tableentry)))) return false;
  table.reserve(count);
  for (; count > 0; --count) {
    _tableentry entry;
    if (!in.number(entry.refCount) || !in.text(entry.text)) return false;
    table.push_back(std::move(entry));
  }
  return true;
}

// Inflates a stream straight to where its parts go, so that there is no copy of the whole.
class StreamReader {
 public:
  StreamReader(VarDataProcessor& store, const void* data, std::uint64_t size)
      : store_(store), inflater_(data, size), size_(size) {}

  // False if the stream isn't whole.
  bool isWhole() const { return isWhole_; }
  bool isSwapped() const { return isSwapped_; }
  bool readSources();
  // What the stream holds behind the sources, to its end.
  bool readRest(std::unique_ptr<unsigned char[]>& rest, std::size_t& size);

 private:
  bool readHeader();
  bool isInOrder(const unsigned char* table) const;
  bool readWhole();
  bool readSource(const unsigned char* entry);
  bool readVariable(const std::string& source, std::uint32_t rows);
  bool takeMemory(const _sourcebag& bag, std::uint32_t rows, std::uint32_t variables);
  double* cellsFor(const std::string& source, const std::string& variable, std::uint32_t rows);
  bool read(void* out, std::size_t size);

  // Inflating into less is slow.
  static constexpr std::size_t pieceSize = std::size_t(1) << 16;

  VarDataProcessor& store_;
  Inflater inflater_;
  std::uint64_t size_;  // of the compressed stream
  bool isWhole_ = true;
  bool isSwapped_ = false;
  std::uint32_t sourceCount_ = 0;
  std::uint64_t total_ = 0;
  std::uint64_t tableEnd_ = 0;
  std::uint64_t end_ = 0;  // of the blocks up to now, if they were in order
  // Columns have a least capacity, and sources of the same name grow together: what they take isn't
  // bounded by the stream's length alone.
  std::uint64_t memoryLeft_ = 0;
  std::unique_ptr<unsigned char[]> piece_ =
      std::make_unique_for_overwrite<unsigned char[]>(pieceSize);
  std::size_t pieceNext_ = 0;
  std::size_t pieceEnd_ = 0;
  // All behind the table, for sources whose columns stand in another order than they do.
  std::unique_ptr<unsigned char[]> whole_;
  const unsigned char* wholeNext_ = nullptr;
};

bool StreamReader::read(void* out, std::size_t size) {
  if (whole_) {
    // Where it leads has been checked.
    std::memcpy(out, wholeNext_, size);
    wholeNext_ += size;
    return true;
  }
  auto* to = static_cast<unsigned char*>(out);
  while (size > 0 && isWhole_) {
    if (pieceNext_ == pieceEnd_ && size >= pieceSize) {
      isWhole_ = inflater_.read(to, size) == size;
      break;
    }
    if (pieceNext_ == pieceEnd_) {
      pieceNext_ = 0;
      pieceEnd_ = inflater_.read(piece_.get(), pieceSize);
      isWhole_ = pieceEnd_ > 0;
    }
    const std::size_t taken = std::min(size, pieceEnd_ - pieceNext_);
    to = std::copy_n(piece_.get() + pieceNext_, taken, to);
    pieceNext_ += taken;
    size -= taken;
  }
  return isWhole_;
}

bool StreamReader::readHeader() {
  unsigned char header[headerSize];
  if (!read(header, headerSize) || header[1] != magic) return false;
  isSwapped_ = header[0] != store_.byteOrder;
  std::uint16_t count;
  std::memcpy(&count, header + 2, sizeof count);
  sourceCount_ = isSwapped_ ? __builtin_bswap16(count) : count;
  total_ = numberAt(header + 4, isSwapped_);
  tableEnd_ = end_ = headerSize + entrySize * std::uint64_t(sourceCount_);
  const std::uint64_t limit = zlib1211tavo::getInflateLimit();
  memoryLeft_ = std::max(2 * total_, limit);
  return end_ <= total_ && total_ <= limit && total_ / mostInflation <= size_;
}

bool StreamReader::readSources() {
  if (!readHeader()) return false;
  const std::size_t size = entrySize * sourceCount_;
  const auto table = std::make_unique_for_overwrite<unsigned char[]>(size);
  if (!read(table.get(), size)) return false;
  if (!isInOrder(table.get()) && !readWhole()) return false;
  for (std::size_t at = 0; at < size; at += entrySize) {
    if (!readSource(table.get() + at)) return false;
  }
  return true;
}

// False also for some that are refused later.
bool StreamReader::isInOrder(const unsigned char* table) const {
  std::uint64_t end = end_;
  for (std::size_t i = 0; i < sourceCount_ && end <= total_; ++i, table += entrySize) {
    const std::uint32_t variables = numberAt(table + 4, isSwapped_);
    if (variables == 0) continue;
    if (numberAt(table + 8, isSwapped_) != end) return false;
    const std::uint64_t block = blockSize(numberAt(table, isSwapped_));
    if (variables > (total_ - end) / block) return true;
    end += variables * block;
  }
  return true;
}

bool StreamReader::readWhole() {
  const std::size_t size = total_ - tableEnd_;
  auto whole = std::make_unique_for_overwrite<unsigned char[]>(size);
  if (!read(whole.get(), size)) return false;
  whole_ = std::move(whole);
  return true;
}

bool StreamReader::readSource(const unsigned char* entry) {
  const std::uint32_t rows = numberAt(entry, isSwapped_);
  const std::uint32_t variables = numberAt(entry + 4, isSwapped_);
  const std::uint32_t offset = numberAt(entry + 8, isSwapped_);
  // Blocks may overlap, but no more are read than there would be if none did.
  if (variables > (total_ - end_) / blockSize(rows)) return false;
  const std::uint64_t bytes = variables * blockSize(rows);
  if (variables > 0 && (offset < tableEnd_ || offset > total_ - bytes)) return false;
  end_ += bytes;
  if (whole_ && variables > 0) wholeNext_ = whole_.get() + (offset - tableEnd_);

  const std::string source = nameAt(entry + entryNameAt, sourceNameField);
  const bool isNew = store_.AddDataSource(source, rows);
  if (variables == 0) return true;
  _sourcebag& bag = store_.sources[source];
  if (!takeMemory(bag, rows, variables)) {
    // A stream may have many columns of few rows, which the usual least capacity is too much for.
    if (!isNew) return false;
    bag.capacity = std::max(rows, 1u);
    if (!takeMemory(bag, rows, variables)) return false;
  }
  store_.ReallocSource(source, rows);
  for (std::uint32_t i = 0; i < variables; ++i) {
    if (!readVariable(source, rows)) return false;
  }
  return true;
}

bool StreamReader::takeMemory(const _sourcebag& bag, std::uint32_t rows, std::uint32_t variables) {
  std::uint64_t capacity = bag.capacity;
  while (capacity < rows) capacity *= 2;
  const std::uint64_t grown = (capacity - bag.capacity) * bag.variables.size();
  const std::uint64_t bytes = (grown + capacity * variables) * sizeof(double);
  // What follows needs as much as it is long at least.
  if (bytes + (total_ - end_) > memoryLeft_) return false;
  memoryLeft_ -= bytes;
  return true;
}

bool StreamReader::readVariable(const std::string& source, std::uint32_t rows) {
  unsigned char field[variableNameField];
  if (!read(field, sizeof field)) return false;
  double* const cells = cellsFor(source, nameAt(field, sizeof field), rows);
  if (!read(cells, rows * sizeof(double))) return false;
  if (!isSwapped_) return true;
  for (std::uint32_t row = 0; row < rows; ++row) {
    VarDataProcessor::SwapBytes(reinterpret_cast<char*>(cells + row), sizeof(double));
  }
  return true;
}

// As SetMaxRow, but leaves the cells of a new column, which are about to be read, as they are.
double* StreamReader::cellsFor(const std::string& source, const std::string& variable,
                               std::uint32_t rows) {
  _sourcebag& bag = store_.sources[source];
  if (bag.variables.contains(variable)) return store_.SetMaxRow(source, variable, rows);
  auto values = std::make_unique_for_overwrite<double[]>(bag.capacity);
  std::fill(values.get() + rows, values.get() + bag.capacity, VarDataProcessor::systemMissing);
  store_.stringMaps[source][variable];
  _varbag& column = bag.variables[variable];
  column = {rows, std::move(values), &bag};
  return column.values.get();
}

bool StreamReader::readRest(std::unique_ptr<unsigned char[]>& rest, std::size_t& size) {
  size = total_ - end_;
  rest = std::make_unique_for_overwrite<unsigned char[]>(size);
  if (whole_) wholeNext_ = whole_.get() + (end_ - tableEnd_);
  isWhole_ = read(rest.get(), size) && pieceNext_ == pieceEnd_ && inflater_.endsHere();
  return isWhole_;
}

using Bytes = std::unique_ptr<unsigned char[]>;

// Where compressing fails, it stays as it is.
Bytes bareStream(const VarDataProcessor& store, std::uint64_t total) {
  Bytes bare = std::make_unique_for_overwrite<unsigned char[]>(total);
  Memory out(bare.get());
  writeStream(store, total, out);
  return bare;
}

unsigned char* streamAtOnce(const VarDataProcessor& store, std::uint64_t total, unsigned& size) {
  Bytes stream = bareStream(store, total);
  const Packed packed = packAtOnce(stream.get(), total, Content::Columns);
  size = static_cast<unsigned>(packed.size > 0 ? packed.size : total);
  if (packed.size == 0) return stream.release();
  stream.reset();
  stream = std::make_unique_for_overwrite<unsigned char[]>(packed.size);
  std::copy_n(packed.bytes.get(), packed.size, stream.get());
  return stream.release();
}

// Without a copy of all columns.
unsigned char* streamInPieces(const VarDataProcessor& store, std::uint64_t total, unsigned& size) {
  Deflater deflater;
  writeStream(store, total, deflater);
  if (!deflater.finish()) {
    size = static_cast<unsigned>(total);
    return bareStream(store, total).release();
  }
  TextBuffer& packed = deflater.packed();
  if (packed.size() > mostBytes) return nullptr;
  Bytes stream = std::make_unique_for_overwrite<unsigned char[]>(packed.size());
  packed.copyTo(reinterpret_cast<char*>(stream.get()));
  size = static_cast<unsigned>(packed.size());
  return stream.release();
}

}  // namespace

unsigned char* VarDataProcessor::GetDataStream(unsigned& size) try {
  return WriteStream(size);
} catch (...) {
  size = 0;
  return nullptr;
}

unsigned char* VarDataProcessor::WriteStream(unsigned& size) {
  size = 0;
  const std::uint64_t total = streamSize(*this);
  if (sources.size() > mostSources || total > mostBytes) return nullptr;
  return total > mostAtOnce ? streamInPieces(*this, total, size) : streamAtOnce(*this, total, size);
}

bool VarDataProcessor::ReadStreamData(const void* data, unsigned size) try {
  return ReadStream(data, size);
} catch (...) {
  return false;
}

bool VarDataProcessor::ReadStream(const void* data, unsigned size) {
  Reset();
  if (!data) return false;
  StreamReader reader(*this, data, size);
  std::unique_ptr<unsigned char[]> strings;
  std::size_t stringsSize = 0;
  const bool isRead = reader.readSources() && reader.readRest(strings, stringsSize);
  if (!reader.isWhole()) Reset();
  if (!isRead) return false;
  return stringsSize == 0 || readStrings(strings.get(), stringsSize, reader.isSwapped(), true);
}

unsigned VarDataProcessor::StringDataSize() const {
  return static_cast<unsigned>(std::min(stringSize(*this), mostBytes));
}

void VarDataProcessor::WriteStringData(unsigned char* out) {
  if (StringDataSize() > 0) writeStrings(*this, Memory(out));
}

bool VarDataProcessor::ReadStringData(const unsigned char* in, std::size_t size) try {
  return readStrings(in, size, false, true);
} catch (...) {
  return false;
}

bool VarDataProcessor::ReadStringData(const unsigned char* in) try {
  return readStrings(in, SIZE_MAX, false, false);
} catch (...) {
  return false;
}

bool VarDataProcessor::readStrings(const unsigned char* in, std::size_t size, bool isSwapped,
                                   bool isWhole) {
  if (!in) return false;
  clearStrings();
  Section section(in, size, isSwapped);
  std::uint32_t sourceCount;
  if (!section.count(sourceCount, 8)) return false;
  std::string name;
  for (; sourceCount > 0; --sourceCount) {
    std::uint32_t variableCount;
    if (!section.text(name) || !section.count(variableCount, 8)) return false;
    constexpr std::uint64_t mapSize = nodeSize + sizeof(std::string) + sizeof(_rowmap);
    if (!section.take((variableCount + 1) * mapSize)) return false;
    auto& variables = stringMaps[name];
    for (; variableCount > 0; --variableCount) {
      if (!section.text(name) || !readRows(section, variables[name])) return false;
    }
  }
  return readTable(section, stringTable) && (!isWhole || section.empty());
}

void VarDataProcessor::SwapBytes(char* data, int size) {
  if (size > 0) std::reverse(data, data + size);
}
