// Reads any bytes as a data document: what comes back of its stream comes back again, and a store
// of all that it holds is written as a document like any.
#include <chartxml/chartxml.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

// Whether a name comes back from stream and document: it isn't cut, nor read as anything else.
bool isPlain(const std::string& name, std::size_t longest, const char* special) {
  return name.size() < longest && name.find_first_of(special) == name.npos &&
         name.find("grafo-") == name.npos;
}

bool arePlain(const VarDataProcessor& store) {
  for (const auto& [source, bag] : store.sources) {
    if (!isPlain(source, 64, "<\"")) return false;
    for (const auto& [variable, column] : bag.variables) {
      if (!isPlain(variable, 287, ";")) return false;
    }
  }
  return true;
}

// Empty when there is no stream, or none of names that come back.
std::string again(const std::string& document) {
  unsigned size = 0;
  const std::unique_ptr<unsigned char[]> stream(XmlDataHandler(document).GetDataStream(size));
  if ((stream == nullptr) != (size == 0)) std::abort();
  VarDataProcessor store;
  if (!stream || !store.ReadStreamData(stream.get(), size) || !arePlain(store)) return {};
  std::string text;
  XmlDataHandler(stream.get(), size).GetXmlData(text, false);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zlib1211tavo::setInflateLimit(1 << 24);
  const std::string document(reinterpret_cast<const char*>(data), size);
  // Names end with a zero in a stream, which no document has.
  const bool hasZero = document.find('\0') != document.npos;
  const std::string text = again(document);
  if (!hasZero && !text.empty() && again(text) != text) std::abort();

  VarDataProcessor store;
  std::string all;
  if (XmlDataHandler::ReadStore(document, store, XmlDataHandler::Keep::All)) {
    XmlDataHandler::WriteStore(store, all);
  }
  return 0;
}
