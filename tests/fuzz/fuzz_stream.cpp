// Opens any bytes as the uncompressed stream of a column store, changes what it holds and writes
// it: a stream that was taken and written comes back.
#include <chartxml/chartxml.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

using Stream = std::unique_ptr<unsigned char[]>;

void useEveryVariable(VarDataProcessor& store) {
  for (auto& [source, bag] : store.sources) {
    for (auto& [variable, column] : bag.variables) {
      _varinfo info;
      if (!store.FindVariable(source, variable, info)) std::abort();
      _varreader reader(store, info);
      std::string text;
      for (unsigned row = 0; row < column.rowCount; ++row) reader.append(row, text);
      store.SetStringVariableValue(&info, column.rowCount / 2, "text");
    }
    store.DeleteRow(source, 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zlib1211tavo::setInflateLimit(1 << 24);
  VarDataProcessor store;
  store.ReadStringData(data, size);
  std::string packed;
  zlib1211tavo::compressString(std::string(reinterpret_cast<const char*>(data), size), packed);
  if (!store.ReadStreamData(packed.data(), static_cast<unsigned>(packed.size()))) return 0;

  useEveryVariable(store);
  VarDataProcessor merged;
  if (!merged.AddVDP(store)) std::abort();
  unsigned length = 0;
  const Stream stream(merged.GetDataStream(length));
  VarDataProcessor again;
  if (!again.ReadStreamData(stream.get(), length)) std::abort();
  unsigned lengthAgain = 0;
  const Stream streamAgain(again.GetDataStream(lengthAgain));
  if (length != lengthAgain || std::string(stream.get(), stream.get() + length) !=
                                   std::string(streamAgain.get(), streamAgain.get() + length)) {
    std::abort();
  }
  return 0;
}
