#include "storedgrammars.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

#include <xercesc/framework/BinOutputStream.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

using namespace xercesc;

namespace {

class StringOutput : public BinOutputStream {
 public:
  XMLFilePos curPos() const override { return text.size(); }
  void writeBytes(const XMLByte* const bytes, const XMLSize_t size) override {
    text.append(reinterpret_cast<const char*>(bytes), size);
  }

  std::string text;
};

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Piece by piece, for memory that is touched first costs more than to read.
bool isContentOf(const std::string& path, std::string_view content) {
  std::ifstream file(path, std::ios::binary);
  char piece[4096];
  while (file.read(piece, sizeof piece), file.gcount() > 0) {
    const std::string_view text(piece, static_cast<std::size_t>(file.gcount()));
    if (!content.starts_with(text)) return false;
    content.remove_prefix(text.size());
  }
  return content.empty();
}

void append(std::string& store, std::string_view part) {
  const std::uint64_t size = part.size();
  store.append(reinterpret_cast<const char*>(&size), sizeof size).append(part);
}

std::string_view take(std::string_view& store) {
  std::uint64_t size = 0;
  std::memcpy(&size, store.data(), std::min(store.size(), sizeof size));
  store.remove_prefix(std::min(store.size(), sizeof size));
  const std::string_view part = store.substr(0, size);
  store.remove_prefix(part.size());
  return part;
}

}  // namespace

std::unique_ptr<grammarpool::Grammars> storedgrammars::read(grammarpool::Kind kind,
                                                            const std::string& folder) {
  std::string_view store = embedded(kind);
  if (store.empty()) return nullptr;
  for (std::string_view file = take(store); !file.empty(); file = take(store)) {
    if (!isContentOf(folder + std::string(file), take(store))) return nullptr;
  }
  auto grammars = std::make_unique<grammarpool::Grammars>();
  try {
    BinMemInputStream stream(reinterpret_cast<const XMLByte*>(store.data()), store.size(),
                             BinMemInputStream::BufOpt_Reference);
    // The first that the parser library looks at is the number of its way of keeping grammars.
    grammars->deserializeGrammars(&stream);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const OutOfMemoryException&) {
    throw std::bad_alloc();
  } catch (...) {
    return nullptr;
  }
  return grammars;
}

std::string storedgrammars::write(grammarpool::Kind kind, const std::string& folder) {
  std::set<std::string> files;
  const std::unique_ptr<grammarpool::Grammars> grammars = grammarpool::read(kind, folder, &files);
  if (!grammars) return {};
  std::string store;
  for (const std::string& file : files) {
    append(store, file);
    append(store, contentOf(folder + file));
  }
  append(store, {});
  StringOutput stream;
  grammars->serializeGrammars(&stream);
  return store + stream.text;
}

[[gnu::weak]] std::string_view storedgrammars::embedded(grammarpool::Kind) {
  return {};
}
