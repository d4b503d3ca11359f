// The column store: its stream both ways, damaged streams, and what each operation leaves behind.
#include "vardataprocessor.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iomanip>
#include <random>
#include <sstream>

#include "testplaces.h"
#include "zlib1211tavo.h"
#include "zlibstreams.h"

namespace {

constexpr double missing = VarDataProcessor::systemMissing;

std::string hex(const std::string& text) {
  std::ostringstream digits;
  for (unsigned char c : text) digits << std::hex << std::setw(2) << std::setfill('0') << int(c);
  return digits.str();
}

// A line for each cell of the rows that its source has, in the form of stream_reader.py.
std::string contentOf(VarDataProcessor& store) {
  std::ostringstream out;
  for (const auto& [source, bag] : store.sources) {
    for (const auto& [variable, column] : bag.variables) {
      const _rowmap& strings = *store.FindStringMap(source, variable);
      for (unsigned row = 0; row < bag.rowCount(); ++row) {
        out << '.' << hex(source) << " ." << hex(variable) << ' ' << row << ' ' << std::hex
            << std::setw(16) << std::setfill('0')
            << std::bit_cast<unsigned long>(column.values[row]) << std::dec;
        const auto text = strings.find(row);
        if (text != strings.end()) out << " ." << hex(store.stringTable[text->second].text);
        out << '\n';
      }
    }
  }
  return out.str();
}

std::string streamOf(VarDataProcessor& store) {
  unsigned size = 0;
  const std::unique_ptr<unsigned char[]> stream(store.GetDataStream(size));
  return {reinterpret_cast<const char*>(stream.get()), size};
}

std::string blockOf(VarDataProcessor& store) {
  std::string block;
  EXPECT_TRUE(zlib1211tavo::decompressString(block, streamOf(store)));
  return block;
}

bool read(VarDataProcessor& store, const std::string& stream) {
  return store.ReadStreamData(stream.data(), static_cast<unsigned>(stream.size()));
}

bool readBlock(VarDataProcessor& store, const std::string& block) {
  std::string stream;
  zlib1211tavo::compressString(block, stream);
  return read(store, stream);
}

double randomValue(std::mt19937& random) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const double special[] = {missing, 0.0, -0.0, 1e-310, infinity, -infinity, std::nan(""), 1e300};
  switch (random() % 3) {
    case 0:
      return special[random() % std::size(special)];
    case 1:
      return static_cast<double>(random());
    default:
      return std::ldexp(random(), -40);
  }
}

// Sources without variables, variables without rows, columns of unequal lengths, gaps, texts.
void fill(VarDataProcessor& store, unsigned seed) {
  std::mt19937 random(seed);
  const std::string names[] = {"", "b", "a", "<a & \"b\">", "zw\xc3\xb6lf", "a b", "A"};
  const std::string texts[] = {"", "north", "south", "]]>", std::string("\0x", 2), "east"};
  for (unsigned s = random() % 6; s > 0; --s) {
    const std::string& source = names[random() % std::size(names)];
    store.AddDataSource(source, random() % 3000);
    for (unsigned v = random() % 6; v > 0; --v) {
      const std::string& variable = names[random() % std::size(names)];
      _varinfo info;
      if (!store.AddVariable(source, variable, &info)) continue;
      const unsigned rows = random() % 20 == 0 ? 1500 : random() % 12;
      for (unsigned row = 0; row < rows; ++row) {
        if (random() % 4) store.SetVariableValue(&info, row, randomValue(random));
        if (seed % 3 && random() % 4 == 0) {
          store.SetStringVariableValue(&info, row, texts[random() % std::size(texts)]);
        }
      }
    }
  }
}

TEST(DataStream, ComesBackByteForByte) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    VarDataProcessor store;
    fill(store, seed);
    VarDataProcessor again;
    again.AddString("of before");
    ASSERT_TRUE(read(again, streamOf(store))) << seed;
    ASSERT_EQ(contentOf(again), contentOf(store)) << seed;
    ASSERT_EQ(blockOf(again), blockOf(store)) << seed;
  }
}

TEST(DataStream, IsReadByItsLayoutAlone) {
  const std::string folder = testing::TempDir();
  std::string command = std::string(CHARTXML_PYTHON) + " " + CHARTXML_STREAM_READER;
  std::string expected;
  for (unsigned seed = 0; seed < 40; ++seed) {
    VarDataProcessor store;
    fill(store, seed);
    const std::string path = folder + "stream" + std::to_string(seed);
    std::ofstream(path, std::ios::binary) << streamOf(store);
    command += " " + path;
    expected += contentOf(store);
  }
  FILE* pipe = popen(command.c_str(), "r");
  ASSERT_TRUE(pipe);
  std::string told;
  for (int c; (c = std::fgetc(pipe)) != EOF;) told += static_cast<char>(c);
  EXPECT_EQ(pclose(pipe), 0);
  EXPECT_EQ(told, expected);
}

TEST(DataStream, CutsLongNames) {
  VarDataProcessor store;
  const std::string source(70, 's');
  store.SetMaxRow(source, "v", 1);
  store.AddVariable(source, std::string(288, 'v'), nullptr);
  store.AddVariable(source, std::string(287, 'w'), nullptr);
  EXPECT_EQ(blockOf(store).substr(8 + 12, 68), std::string(64, 's') + std::string(4, '\0'));
  VarDataProcessor again;
  ASSERT_TRUE(read(again, streamOf(store)));
  std::vector<std::string> names;
  EXPECT_EQ(again.GetVariableNames(std::string(64, 's'), names), 2u);
  EXPECT_EQ(names, (std::vector{std::string(287, 'v'), std::string(287, 'w')}));
  // Texts of a name that was cut have no column, and are none of a new one.
  store.SetStringVariableValue(source, std::string(288, 'v'), 0, "old");
  ASSERT_TRUE(read(again, streamOf(store)));
  EXPECT_TRUE(again.AddVariable(source, std::string(288, 'v'), nullptr));
  EXPECT_TRUE(again.FindStringMap(source, std::string(288, 'v'))->empty());
  EXPECT_EQ(again.stringTable.at(0).refCount, 0u);
}

// Columns of few rows have a least capacity that many of them can't have.
TEST(DataStream, MayBeWide) {
  const std::size_t limit = zlib1211tavo::getInflateLimit();
  for (const int sources : {1, 200}) {
    VarDataProcessor store;
    for (int i = 0; i < 1000; ++i) {
      store.AddDataSource("s" + std::to_string(i % sources), 0);
      store.SetMaxRow("s" + std::to_string(i % sources), "v" + std::to_string(i), 1);
    }
    store.AddDataSource("z", 0);
    store.SetMaxRow("z", "long", 20'000);
    const std::string stream = streamOf(store);
    zlib1211tavo::setInflateLimit(blockOf(store).size());
    VarDataProcessor again;
    EXPECT_TRUE(read(again, stream));
    EXPECT_EQ(contentOf(again), contentOf(store));
    zlib1211tavo::setInflateLimit(limit);
  }
}

TEST(DataStream, IsRefusedWhereItsNumbersWouldNotFit) {
  VarDataProcessor store;
  _varinfo info;
  store.AddVariable("s", "v", &info);
  unsigned size = 1;
  info.bag->rowCount = 0x20000000;  // 4 GiB of cells, which are never looked at
  EXPECT_EQ(store.GetDataStream(size), nullptr);
  EXPECT_EQ(size, 0u);
  store.Reset();
  for (int i = 0; i < 65'536; ++i) store.AddDataSource(std::to_string(i), 0);
  EXPECT_EQ(store.GetDataStream(size), nullptr);
  store.sources.erase("7");
  EXPECT_FALSE(streamOf(store).empty());
}

// Two sources, one of three rows with texts.
void fillSmall(VarDataProcessor& store) {
  store.AddDataSource("first", 0);
  store.SetVariableValue("first", "x", 0, 0);
  store.AddDataSource("source", 3);
  store.AddVariable("source", "number", nullptr);
  store.AddVariable("source", "text", nullptr);
  store.SetVariableValue("source", "number", 2, 0.5);
  store.SetStringVariableValue("source", "text", 0, "north");
  store.SetStringVariableValue("source", "text", 2, "south");
}

constexpr std::size_t smallSources = 2;
constexpr std::size_t smallBlocksEnd = 8 + 80 * smallSources + 296 + 2 * std::size_t(312);

TEST(DamagedStream, CutAnywhere) {
  VarDataProcessor store;
  fillSmall(store);
  const std::string stream = streamOf(store);
  const std::string block = blockOf(store);
  for (std::size_t size = 0; size < stream.size(); ++size) {
    EXPECT_FALSE(read(store, stream.substr(0, size))) << size;
    EXPECT_TRUE(store.sources.empty());
  }
  EXPECT_FALSE(read(store, stream + '\0'));
  for (std::size_t size = 0; size < block.size(); ++size) {
    EXPECT_FALSE(readBlock(store, block.substr(0, size))) << size;
    // The same with a length that is true.
    std::string cut = block.substr(0, size);
    if (size >= 8) std::memcpy(cut.data() + 4, &size, 4);
    const bool isBlocks = size == smallBlocksEnd;
    EXPECT_EQ(readBlock(store, cut), isBlocks) << size;
  }
  EXPECT_FALSE(readBlock(store, block + '\0'));
  const auto* strings = reinterpret_cast<const unsigned char*>(block.data()) + smallBlocksEnd;
  for (std::size_t size = 0; size < block.size() - smallBlocksEnd; ++size) {
    // A copy of its own, so that a sanitizer sees what is read behind its end.
    const std::vector<unsigned char> section(strings, strings + size);
    EXPECT_FALSE(store.ReadStringData(section.data(), section.size())) << size;
  }
}

TEST(DamagedStream, WithAnyByteChanged) {
  VarDataProcessor store;
  fillSmall(store);
  const std::string block = blockOf(store);
  for (std::size_t at = 0; at < block.size(); ++at) {
    for (char byte : {'\0', '\x7f', '\xff'}) {
      std::string changed = block;
      changed[at] = byte;
      if (!readBlock(store, changed)) continue;
      // What was taken is in order: it can be written, read and used.
      VarDataProcessor again;
      ASSERT_TRUE(read(again, streamOf(store))) << at;
      for (const auto& [source, bag] : store.sources) {
        for (const auto& [variable, column] : bag.variables) {
          again.GetValueAsString(source, variable, 0);
          again.SetStringVariableValue(source, variable, 2, "east");
        }
      }
    }
  }
}

TEST(DamagedStream, WithNumbersThatLie) {
  VarDataProcessor store;
  fillSmall(store);
  const std::string block = blockOf(store);
  const auto length = static_cast<unsigned>(block.size());
  struct Lie {
    const char* what;
    std::size_t at;
    unsigned value;
    std::size_t sourcesRead;
  };
  const std::size_t second = 8 + 80;
  const Lie lies[] = {{"no such length", 4, length - 1, 0},
                      {"a huge length", 4, 0xFFFFFFFF, 0},
                      {"sources past the end", 0, 0xFFFFB000, 0},
                      {"rows past the end", second, 200, 1},
                      {"rows times 8 past 32 bits", second, 0x20000000, 1},
                      {"all rows", second, 0xFFFFFFFF, 1},
                      {"variables past the end", second + 4, 3, 1},
                      {"all variables", second + 4, 0xFFFFFFFF, 1},
                      {"variables times blocks past 32 bits", second + 4, 0x1000000, 1},
                      {"an offset into the table", second + 8, 8, 1},
                      {"an offset past the end", second + 8, length, 1},
                      {"sources of texts", smallBlocksEnd, 0xFFFFFFFF, 2},
                      {"a name of a source", smallBlocksEnd + 4, 0xFFFFFFFF, 2},
                      {"variables of texts", smallBlocksEnd + 8 + 5, 0x20000000, 2},
                      {"a text's length", length - 4 - 5, 6, 2},
                      {"a text's length, too short", length - 4 - 5, 4, 2}};
  for (const Lie& lie : lies) {
    std::string changed = block;
    std::memcpy(changed.data() + lie.at, &lie.value, sizeof lie.value);
    EXPECT_FALSE(readBlock(store, changed)) << lie.what;
    EXPECT_EQ(store.sources.size(), lie.sourcesRead) << lie.what;
  }
}

// An entry's offset alone tells where its columns are.
TEST(DataStream, MayHaveItsColumnsInAnyOrder) {
  VarDataProcessor store;
  for (const char* source : {"a", "b", "c"}) {
    store.AddDataSource(source, 1);
    store.AddVariable(source, "v", nullptr);
    store.SetMaxRow(source, "v", *source - 'a' + 1);
    store.SetStringVariableValue(source, "v", 0, source);
  }
  store.AddDataSource("empty", 0);
  const std::string block = blockOf(store);
  constexpr unsigned first = 8 + 4 * 80;
  constexpr unsigned sizes[] = {288 + 8, 288 + 16, 288 + 24};
  const std::string columns[] = {block.substr(first, sizes[0]),
                                 block.substr(first + sizes[0], sizes[1]),
                                 block.substr(first + sizes[0] + sizes[1], sizes[2])};
  const std::string expected = contentOf(store);
  int order[] = {0, 1, 2};
  do {
    std::string changed = block.substr(0, first);
    for (const int source : order) {
      const auto offset = static_cast<unsigned>(changed.size());
      std::memcpy(changed.data() + 8 + 80 * source + 8, &offset, sizeof offset);
      changed += columns[source];
    }
    changed += block.substr(changed.size());
    ASSERT_TRUE(readBlock(store, changed));
    EXPECT_EQ(contentOf(store), expected);
  } while (std::next_permutation(std::begin(order), std::end(order)));
  // Two sources may share theirs.
  std::string shared = block;
  std::memcpy(shared.data() + 8 + 80 + 8, &first, sizeof first);
  EXPECT_TRUE(readBlock(store, shared));
  EXPECT_EQ(store.sources.at("b").variables.size(), 1u);
}

// Many sources of one name, each of which would have all columns before it grow.
TEST(DamagedStream, TakesNoMemoryOutOfProportion) {
  const std::size_t count = 2000;
  std::string block(8 + 80 * count, '\0');
  block[1] = '\xb0';
  std::memcpy(block.data() + 2, &count, 2);
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned rows = i == 0 ? 20'000 : 0;
    const unsigned entry[] = {rows, 1, static_cast<unsigned>(block.size())};
    std::memcpy(block.data() + 8 + 80 * i, entry, sizeof entry);
    std::string column(288 + 8 * rows, '\0');
    column.replace(0, 4, std::to_string(1000 + i));
    block += column;
  }
  const std::size_t length = block.size();
  std::memcpy(block.data() + 4, &length, 4);
  const std::size_t limit = zlib1211tavo::getInflateLimit();
  zlib1211tavo::setInflateLimit(length);
  VarDataProcessor store;
  EXPECT_FALSE(readBlock(store, block));
  EXPECT_LE(store.sources[""].variables.size() * 20'000 * 8, 2 * length);
  zlib1211tavo::setInflateLimit(length - 1);
  EXPECT_FALSE(readBlock(store, block));
  EXPECT_TRUE(store.sources.empty());
  zlib1211tavo::setInflateLimit(limit);
}

// Turns every number of a stream around, by a walk of its own.
std::string swapped(std::string block) {
  std::size_t at = 0;
  const auto turn = [&](std::size_t size) {
    unsigned value = 0;
    std::memcpy(&value, &block[at], std::min<std::size_t>(size, 4));
    std::reverse(&block[at], &block[at] + size);
    at += size;
    return value;
  };
  block[0] = 1;
  at = 2;
  const unsigned sources = turn(2);
  const unsigned length = turn(4);
  std::size_t blocks = 8 + 80 * sources;
  for (unsigned i = 0; i < sources; ++i) {
    at = 8 + 80 * i;
    const unsigned rows = turn(4);
    const unsigned variables = turn(4);
    turn(4);
    at = blocks;
    for (unsigned v = 0; v < variables; ++v) {
      at += 288;
      for (unsigned row = 0; row < rows; ++row) turn(8);
    }
    blocks = at;
  }
  at = blocks;
  if (at == length) return block;
  const auto skipText = [&] { at += turn(4); };
  for (unsigned s = turn(4); s > 0; --s) {
    skipText();
    for (unsigned v = turn(4); v > 0; --v) {
      skipText();
      for (unsigned n = 2 * turn(4); n > 0; --n) turn(4);
    }
  }
  for (unsigned n = turn(4); n > 0; --n) {
    turn(4);
    skipText();
  }
  return block;
}

TEST(DataStream, IsReadInTheOtherByteOrder) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    VarDataProcessor store;
    fill(store, seed);
    VarDataProcessor again;
    ASSERT_TRUE(readBlock(again, swapped(blockOf(store)))) << seed;
    ASSERT_EQ(blockOf(again), blockOf(store)) << seed;
  }
}

// The pool as a walk of its entries has it.
struct PlainPool {
  std::vector<_tableentry> table;

  unsigned add(const std::string& text) {
    std::size_t slot = table.size();
    for (std::size_t i = 0; i < table.size(); ++i) {
      if (table[i].text == text) return ++table[i].refCount, static_cast<unsigned>(i);
      if (table[i].refCount == 0) slot = std::min(slot, i);
    }
    if (slot == table.size()) table.emplace_back();
    table[slot] = {text, 1};
    return static_cast<unsigned>(slot);
  }
  void remove(unsigned index) {
    _tableentry& entry = table[index];
    if (entry.refCount > 0 && --entry.refCount == 0) entry.text.clear();
  }
};

TEST(TextPool, AnswersWhatAWalkWouldFind) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    std::mt19937 random(seed);
    // Few texts meet often as equals, many in the places of the index.
    const auto randomText = [&] {
      if (seed % 2) return std::to_string(random() % 31);
      return std::string(random() % 3, static_cast<char>('a' + random() % 3));
    };
    // As read: equal texts, free entries with texts.
    std::string section(8, '\0');
    PlainPool plain;
    const unsigned count = random() % 12;
    std::memcpy(section.data() + 4, &count, 4);
    for (unsigned i = 0; i < count; ++i) {
      plain.table.push_back({randomText(), static_cast<unsigned>(random() % 3)});
      const unsigned numbers[] = {plain.table[i].refCount,
                                  static_cast<unsigned>(plain.table[i].text.size())};
      section.append(reinterpret_cast<const char*>(numbers), sizeof numbers) += plain.table[i].text;
    }
    VarDataProcessor store;
    ASSERT_TRUE(store.ReadStringData(reinterpret_cast<const unsigned char*>(section.data()),
                                     section.size()));
    for (int step = 0; step < 200; ++step) {
      if (plain.table.empty() || random() % 2) {
        const std::string text = randomText();
        ASSERT_EQ(store.AddString(text), plain.add(text)) << seed << ' ' << step;
      } else {
        const unsigned index = random() % plain.table.size();
        ASSERT_TRUE(store.RemoveString(index));
        plain.remove(index);
      }
    }
    ASSERT_EQ(store.stringTable.size(), plain.table.size());
    for (unsigned i = 0; i < plain.table.size(); ++i) {
      ASSERT_EQ(store.stringTable[i].text, plain.table[i].text);
      ASSERT_EQ(store.stringTable[i].refCount, plain.table[i].refCount);
    }
    EXPECT_FALSE(store.RemoveString(static_cast<unsigned>(plain.table.size())));
  }
}

TEST(VarDataProcessor, GrowsByDoubling) {
  const std::pair<unsigned, unsigned> first[] = {{0, 1000},        {999, 1000},
                                                 {1001, 1001},     {20'000, 20'000},
                                                 {20'001, 20'000}, {0xFFFFFFFF, 20'000}};
  for (const auto& [rows, capacity] : first) {
    VarDataProcessor store;
    EXPECT_TRUE(store.AddDataSource("s", rows));
    EXPECT_FALSE(store.AddDataSource("s", rows));
    EXPECT_EQ(store.GetCapacity("s"), capacity);
  }
  using Setter = std::function<bool(VarDataProcessor&, _varinfo&, unsigned)>;
  const double seven = 7;
  const Setter setters[] = {
      [](auto& store, auto&, unsigned row) { return store.SetVariableValue("s", "v", row, 7); },
      [](auto& store, auto& info, unsigned row) { return store.SetVariableValue(&info, row, 7); },
      [&](auto& store, auto&, unsigned row) {
        return store.SetVariableValueRange("s", "v", &seven, row, 1);
      },
      [](auto& store, auto& info, unsigned row) {
        return store.SetStringVariableValue(&info, row, "7");
      }};
  for (const Setter& set : setters) {
    for (const auto& [row, capacity] : {std::pair(999u, 1000u), {1000u, 2000u}, {4999u, 8000u}}) {
      VarDataProcessor store;
      _varinfo info;
      store.AddVariable("s", "v", &info);
      store.AddVariable("s", "other", nullptr);
      store.SetVariableValue("s", "other", 998, 3);
      EXPECT_TRUE(set(store, info, row));
      EXPECT_EQ(store.GetCapacity("s"), capacity);
      EXPECT_EQ(store.GetRowCount("s"), row + 1);
      EXPECT_EQ(store.GetValueAsString("s", "v", row), "7");
      EXPECT_EQ(store.GetDataPointer("s", "other")[998], 3);
      EXPECT_EQ(store.GetDataPointer("s", "other")[capacity - 1], missing);
      EXPECT_FALSE(set(store, info, 0xFFFFFFFF));
    }
  }
}

TEST(VarDataProcessor, TellsCellsAsText) {
  const std::pair<double, const char*> numbers[] = {
      {3, "3"},
      {-0.0, "0"},
      {5e9, "5000000000"},
      {missing, ""},
      {0.1, "0.1"},
      {-9223372036854775808.0, "-9223372036854775808"},
      {1e300, "1e+300"},
      {0.1 + 0.2, "0.30000000000000004"},
      {-std::numeric_limits<double>::infinity(), "-INF"}};
  VarDataProcessor store;
  _varinfo info;
  store.AddVariable("s", "v", &info);
  unsigned rows = 0;
  for (const auto& [value, text] : numbers) {
    store.SetVariableValue(&info, rows, value);
    EXPECT_EQ(store.GetValueAsString("s", "v", rows++), text);
  }
  store.SetStringVariableValue(&info, 2, "text");
  store.SetStringVariableValue(&info, 4, "");
  (*info.strings)[0] = VarDataProcessor::noText;
  store.SetStringVariableValueRange("s", "v", rows, {"next", "hidden"});
  EXPECT_EQ(store.GetRowCount("s"), rows);
  const std::pair<unsigned, const char*> cells[] = {
      {0, "3"}, {2, "text"}, {4, ""}, {rows, "next"}, {rows + 1, ""}, {0xFFFFFFFF, ""}};
  for (const auto& [row, text] : cells)
    EXPECT_EQ(store.GetValueAsString("s", "v", row), text) << row;
  _varreader reader(store, info);
  for (unsigned row : {0u, 1u, 2u, 3u, 4u, 5u, 8u, 2u, 0u, 6u}) {
    std::string text;
    reader.append(row, text);
    EXPECT_EQ(text, store.GetValueAsString("s", "v", row)) << row;
  }
  EXPECT_EQ(store.GetValueAsString("s", "new", 0), "");
  EXPECT_NE(store.FindStringMap("s", "new"), nullptr);
  EXPECT_EQ(store.GetValueAsString("unknown", "v", 0), "");
  EXPECT_EQ(store.sources.size(), 1u);
}

TEST(VarDataProcessor, ReleasesTextsWithTheirCells) {
  VarDataProcessor store;
  fillSmall(store);
  const std::string& north = store.stringTable[0].text;
  EXPECT_TRUE(store.SetStringVariableValue("source", "text", 0, north));
  EXPECT_EQ(store.GetValueAsString("source", "text", 0), "north");
  store.SetVariableValue("source", "number", 1, 4);
  EXPECT_EQ(store.DeleteRow("source", 1), 2u);
  EXPECT_EQ(store.GetValueAsString("source", "text", 1), "south");
  EXPECT_EQ(store.GetValueAsString("source", "number", 1), "0.5");
  EXPECT_EQ(store.GetDataPointer("source", "number")[2], missing);
  EXPECT_EQ(store.DeleteRow("source", 0), 1u);
  EXPECT_EQ(store.stringTable[0].refCount, 0u);
  EXPECT_EQ(store.DeleteRow("source", 1), 1u);
  EXPECT_EQ(store.DeleteRow("unknown", 0), 0u);
  store.SetStringVariableValueRange("source", "text", 4, {"a", "b"});
  store.DeleteRow("source", 4);
  EXPECT_EQ(store.FindStringMap("source", "text")->size(), 2u);
  EXPECT_EQ(store.FindStringMap("source", "text")->count(5), 0u);
  // Of itself, while it grows
  const double* own = store.GetDataPointer("source", "number");
  const double first = *own;
  EXPECT_TRUE(store.SetVariableValueRange("source", "number", own, 1500, 2));
  EXPECT_EQ(store.GetDataPointer("source", "number")[1500], first);
  EXPECT_TRUE(store.DeleteColumn("source", "text"));
  EXPECT_FALSE(store.DeleteColumn("source", "text"));
  EXPECT_EQ(store.FindStringMap("source", "text"), nullptr);
  EXPECT_EQ(store.stringTable[1].refCount, 0u);
  EXPECT_EQ(store.StringDataSize(), 0u);
  EXPECT_EQ(store.AddString("new"), 0u);
}

TEST(VarDataProcessor, MergesUpToANameThatIsTaken) {
  VarDataProcessor store;
  fillSmall(store);
  VarDataProcessor other;
  other.AddString("pushes indices on");
  store.SetStringVariableValueRange("source", "text", 0xFFFFFF00, {"outside"});
  EXPECT_TRUE(other.AddVDP(store));
  EXPECT_EQ(contentOf(other), contentOf(store));
  EXPECT_EQ(other.FindStringMap("source", "text")->count(0xFFFFFF00), 1u);
  EXPECT_FALSE(other.AddVDP(other));
  VarDataProcessor third;
  third.AddDataSource("source", 0);
  EXPECT_FALSE(third.AddVDP(store));
  EXPECT_EQ(third.sources.size(), 2u);
  EXPECT_EQ(third.GetRowCount("source"), 0u);
}

TEST(VarDataProcessor, RefusesWhatItDoesNotKnow) {
  VarDataProcessor store;
  _varinfo unfilled;
  EXPECT_FALSE(store.SetVariableValue("s", "v", 0, 1));
  EXPECT_FALSE(store.SetStringVariableValue("s", "v", 0, "x"));
  EXPECT_FALSE(store.SetStringVariableValueRange("s", "v", 0, {}));
  EXPECT_FALSE(store.SetVariableValue(nullptr, 0, 1));
  EXPECT_FALSE(store.SetVariableValue(&unfilled, 0, 1));
  EXPECT_FALSE(store.SetStringVariableValue(&unfilled, 0, "x"));
  EXPECT_EQ(store.SetMaxRow("s", "v", 1), nullptr);
  EXPECT_FALSE(store.ReadStreamData(nullptr, 0));
  std::vector<std::string> names{"kept"};
  EXPECT_EQ(store.GetVariableNames("s", names), 0u);
  EXPECT_EQ(names.size(), 1u);
}

TEST(VarDataProcessor, KeepsHandlesWhenTextsAreRead) {
  VarDataProcessor store;
  fillSmall(store);
  std::vector<unsigned char> section(store.StringDataSize());
  store.WriteStringData(section.data());
  VarDataProcessor again;
  _varinfo info;
  again.AddVariable("source", "text", &info);
  again.AddVariable("source", "other", nullptr);
  again.SetMaxRow("source", "text", 3);
  again.SetStringVariableValue("source", "other", 0, "goes");
  EXPECT_TRUE(again.ReadStringData(section.data()));
  EXPECT_EQ(info.strings, again.FindStringMap("source", "text"));
  EXPECT_EQ(again.GetValueAsString("source", "text", 2), "south");
  EXPECT_EQ(again.GetValueAsString("source", "other", 0), "");
}

// More than this is compressed in pieces.
TEST(Stream, IsWholeWhateverItsSize) {
  for (const std::size_t size : {mostAtOnce, mostAtOnce + 1}) {
    const std::string text(size, 'a');
    std::string packed;
    std::string again;
    ASSERT_TRUE(zlib1211tavo::compressString(text, packed));
    EXPECT_LT(packed.size(), size / 500);
    EXPECT_TRUE(zlib1211tavo::decompressString(again, packed) && again == text);
  }
  const unsigned rows = mostAtOnce / sizeof(double) + 1;
  VarDataProcessor store;
  _varinfo info;
  store.AddVariable("s", "v", &info);
  double* cells = store.SetMaxRow("s", "v", rows);
  for (unsigned row = 0; row < rows; ++row) cells[row] = row % 7;
  const std::string stream = streamOf(store);
  EXPECT_LT(stream.size(), mostAtOnce / 100);
  VarDataProcessor again;
  ASSERT_TRUE(read(again, stream));
  EXPECT_TRUE(std::equal(cells, cells + rows, again.SetMaxRow("s", "v", rows)));
}

}  // namespace
