#include "facstdictionary.h"

#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>

#include "textconversion.h"
#include "utf.h"

namespace {

constexpr std::streamoff largestTable = 1 << 20;

// Empty for a file that is missing or too large.
std::string fileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  const std::streamoff size = file.tellg();
  if (size <= 0 || size > largestTable) return {};
  std::string text(size, '\0');
  file.seekg(0).read(text.data(), size);
  text.resize(file.gcount());
  return text;
}

// The part of an entry at a position.
std::string_view textAt(std::string_view entry, int position) {
  std::string_view rest = entry;
  for (; position > 0; --position) {
    const std::size_t tab = rest.find('\t');
    if (tab == std::string_view::npos) {
      rest = entry;
      break;
    }
    rest.remove_prefix(tab + 1);
  }
  return rest.substr(0, rest.find('\t'));
}

std::string withBlanks(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isBlank = text.substr(i, 2) == "\\s";
    out += isBlank ? ' ' : text[i];
    i += isBlank;
  }
  return out;
}

std::string inCodePage(const std::string& codePage, const std::string& text) {
  const std::unique_ptr<TAVOMBConverter, void (*)(TAVOMBConverter*)> converter(
      TAVOMBConverterNew_A(0, codePage.c_str()), TAVOMBConverterDelete_A);
  std::string bytes;
  TAVOMBU16ToGeneric(converter.get(), bytes, utf::toUtf16(text));
  return bytes;
}

}  // namespace

FacSTDictionary::FacSTDictionary(const std::string& path) : path_(path) {
  SetProcedure("GRAPH");
}

void FacSTDictionary::SetProcedure(const std::string& name) {
  procedure_ = name;
  for (char& c : procedure_) {
    if (c >= 'A' && c <= 'Z') c += 'a' - 'A';
  }
  isLoaded_ = false;
}

std::string FacSTDictionary::LookUp(const std::string& key, int position) {
  if (!isLoaded_) load();
  const auto entry = entries_.find(key);
  if (entry == entries_.end()) return key;
  return inCodePage(codePage_, withBlanks(textAt(entry->second, position)));
}

void FacSTDictionary::load() {
  isLoaded_ = true;
  codePage_.clear();
  entries_.clear();
  std::istringstream lines(fileText(path_ + "/" + procedure_ + ".txt"));
  for (std::string line; std::getline(lines, line);) addLine(line);
}

void FacSTDictionary::addLine(const std::string& line) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  constexpr std::string_view codePage = "@codepage ";
  std::string_view content = line;
  if (content.starts_with(byteOrderMark)) content.remove_prefix(byteOrderMark.size());
  if (content.ends_with('\r')) content.remove_suffix(1);
  const std::size_t tab = content.find('\t');
  if (content.starts_with(codePage)) {
    codePage_ = content.substr(codePage.size());
  } else if (!content.starts_with('#') && tab != std::string_view::npos) {
    entries_.emplace(content.substr(0, tab), content.substr(tab + 1));
  }
}
