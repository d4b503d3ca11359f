#include "chartprolog.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <set>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "utf.h"

using namespace xercesc;

namespace {

constexpr std::string_view blanks = " \t\r\n";

void skipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

// Moves behind the first `end`; false, at the end of the text, when there is none.
template <class View>
bool skipPast(View& text, View end) {
  const std::size_t found = text.find(end);
  text.remove_prefix(found == text.npos ? text.size() : found + end.size());
  return found != text.npos;
}

// Moves to what follows the declaration, comments and instructions.
void skipMisc(std::string_view& text) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  for (;;) {
    skipBlanks(text);
    if (text.starts_with("<?")) {
      skipPast<std::string_view>(text, "?>");
    } else if (text.starts_with("<!--")) {
      text.remove_prefix(4);
      skipPast<std::string_view>(text, "-->");
    } else {
      return;
    }
  }
}

std::string_view takeName(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_of(" \t\r\n=/>\"'<&"), text.size());
  const std::string_view name = text.substr(0, end);
  text.remove_prefix(end);
  return name;
}

// The attributes of a start tag; false when one isn't plain.
bool takeAttributes(std::string_view& text, std::map<std::string_view, std::string_view>& result) {
  for (;;) {
    skipBlanks(text);
    if (text.empty()) return false;
    if (text[0] == '>' || text[0] == '/') return true;
    const std::string_view name = takeName(text);
    skipBlanks(text);
    if (name.empty() || !text.starts_with('=')) return false;
    text.remove_prefix(1);
    skipBlanks(text);
    if (text.empty() || (text[0] != '"' && text[0] != '\'')) return false;
    const std::size_t end = text.find(text[0], 1);
    if (end == text.npos) return false;
    const std::string_view value = text.substr(1, end - 1);
    const bool isRead = name.starts_with("xmlns") || name.ends_with("schemaLocation");
    if (value.find_first_of(isRead ? "&<" : "<") != value.npos) return false;
    if (!result.emplace(name, value).second) return false;
    text.remove_prefix(end + 1);
  }
}

// Behind the ']' that ends a subset which starts at `text`.
std::size_t subsetLength(std::u16string_view text) {
  std::u16string_view rest = text;
  while (!rest.empty() && rest[0] != u']') {
    if (rest.starts_with(u"<!--")) {
      rest.remove_prefix(4);
      skipPast<std::u16string_view>(rest, u"-->");
    } else if (rest.starts_with(u"<?")) {
      skipPast<std::u16string_view>(rest, u"?>");
    } else if (rest[0] == u'"' || rest[0] == u'\'') {
      const char16_t quote = rest[0];
      rest.remove_prefix(1);
      skipPast<std::u16string_view>(rest, std::u16string_view(&quote, 1));
    } else {
      rest.remove_prefix(1);
    }
  }
  return text.size() - rest.size();
}

// The text as characters, block by block: a transcoder has room for the offsets of one block, and
// writes as many offsets as it is asked for characters.
std::u16string decoded(std::string_view text, const char16_t* encoding) {
  constexpr XMLSize_t block = 2048;
  XMLTransService::Codes code = XMLTransService::Ok;
  const std::unique_ptr<XMLTranscoder> transcoder(
      XMLPlatformUtils::fgTransService->makeNewTranscoderFor(encoding, code, block));
  std::u16string result;
  char16_t characters[block];
  unsigned char sizes[block];
  XMLSize_t read = 1;
  while (transcoder && !text.empty() && read) {
    const XMLSize_t count = transcoder->transcodeFrom(reinterpret_cast<const XMLByte*>(text.data()),
                                                      text.size(), characters, block, read, sizes);
    result.append(characters, count);
    text.remove_prefix(read);
  }
  return result;
}

std::u16string withPlainLineEnds(std::u16string_view text) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != u'\r') {
      result += text[i];
    } else if (i + 1 == text.size() || text[i + 1] != u'\n') {
      result += u'\n';
    }
  }
  return result;
}

// The length of the attributes of a tag, which stand at the start of `text`, and their number.
template <class Unit>
std::size_t countAttributes(std::basic_string_view<Unit> text, std::size_t& count) {
  std::size_t i = 0;
  while (i < text.size() && text[i] != '>') {
    const Unit unit = text[i++];
    if (unit != '"' && unit != '\'') continue;
    ++count;
    i = text.find(unit, i);
    if (i == text.npos) return text.size();
    ++i;
  }
  return i;
}

template <class Unit>
std::size_t mostAttributesOf(std::basic_string_view<Unit> text) {
  using View = std::basic_string_view<Unit>;
  static constexpr Unit ends[] = {'-', '-', '>', ']', ']', '>', '?', '>', '<'};
  std::size_t most = 0;
  while (skipPast(text, View(ends + 8, 1)) && !text.empty()) {
    if (text[0] == '?') {
      skipPast(text, View(ends + 6, 2));
    } else if (text[0] != '!') {
      std::size_t count = 0;
      text.remove_prefix(countAttributes(text, count));
      most = std::max(most, count);
    } else if (text.size() > 1 && text[1] == '-') {
      text.remove_prefix(std::min<std::size_t>(text.size(), 3));
      skipPast(text, View(ends, 3));
    } else if (text.size() > 1 && text[1] == '[') {
      skipPast(text, View(ends + 3, 3));
    }
  }
  return most;
}

bool isIllFormedLead(char c) {
  return static_cast<std::uint8_t>(c - 0xF5) < 3;
}

// Block by block, each of which the compiler looks at as a whole.
std::size_t findIllFormedLead(std::string_view text) {
  constexpr std::size_t block = 4096;
  for (std::size_t start = 0; start < text.size(); start += block) {
    const std::string_view part = text.substr(start, block);
    bool isThere = false;
    for (const char c : part) isThere |= isIllFormedLead(c);
    if (!isThere) continue;
    return start +
           static_cast<std::size_t>(std::ranges::find_if(part, isIllFormedLead) - part.begin());
  }
  return text.npos;
}

}  // namespace

chartprolog::Root chartprolog::readRoot(std::string_view text) {
  Root root;
  skipMisc(text);
  if (text.size() < 2 || text[0] != '<' || text[1] == '!') return root;
  text.remove_prefix(1);
  const std::string_view name = takeName(text);
  std::map<std::string_view, std::string_view> attributes;
  if (name.empty() || !takeAttributes(text, attributes)) return root;

  const std::size_t colon = name.find(':');
  const std::string declaration =
      colon == name.npos ? "xmlns" : "xmlns:" + std::string(name.substr(0, colon));
  const auto namespaceUri = attributes.find(declaration);
  constexpr std::string_view declares = "xmlns:";
  const auto location = std::ranges::find_if(attributes, [&](const auto& attribute) {
    const std::size_t end = attribute.first.find(":schemaLocation");
    if (end == std::string_view::npos) return false;
    const auto instance =
        attributes.find(std::string(declares).append(attribute.first.substr(0, end)));
    return instance != attributes.end() &&
           instance->second == "http://www.w3.org/2001/XMLSchema-instance";
  });
  if (namespaceUri == attributes.end() || location == attributes.end()) return root;
  root.isPlain = true;
  root.localName = name.substr(colon + 1);
  root.namespaceUri = namespaceUri->second;
  root.schemaLocation = location->second;
  return root;
}

std::u16string chartprolog::internalSubset(std::string_view text, const char16_t* encoding) {
  const std::u16string whole = decoded(text, encoding);
  std::u16string_view rest = whole;
  // A comment or instruction may mention a document type: those are passed over first.
  for (;;) {
    const std::size_t markup = rest.find(u'<');
    if (markup == rest.npos) return {};
    rest.remove_prefix(markup);
    if (rest.starts_with(u"<!DOCTYPE")) break;
    if (rest.starts_with(u"<!--")) {
      rest.remove_prefix(4);
      skipPast<std::u16string_view>(rest, u"-->");
    } else if (!skipPast<std::u16string_view>(rest, u"?>")) {
      return {};
    }
  }
  while (!rest.empty() && rest[0] != u'[' && rest[0] != u'>') {
    const char16_t unit = rest[0];
    rest.remove_prefix(1);
    if (unit == u'"' || unit == u'\'') {
      skipPast<std::u16string_view>(rest, std::u16string_view(&unit, 1));
    }
  }
  if (rest.empty() || rest[0] != u'[') return {};
  rest.remove_prefix(1);
  return withPlainLineEnds(rest.substr(0, subsetLength(rest)));
}

bool chartprolog::isSimpleModel(std::u16string_view model, std::size_t mostNames,
                                std::size_t mostRepeated) {
  constexpr std::u16string_view marks = u"(),|?*+ ";
  std::set<std::u16string_view> names;
  std::size_t count = 0;
  for (;;) {
    model.remove_prefix(std::min(model.find_first_not_of(marks), model.size()));
    if (model.empty()) return true;
    const std::u16string_view name = model.substr(0, model.find_first_of(marks));
    names.insert(name);
    if (++count > mostNames || count - names.size() > mostRepeated) return false;
    model.remove_prefix(name.size());
  }
}

bool chartprolog::isAscii(std::string_view text) {
  // Wide characters start with a mark or with a zero beside the first of them.
  if (text.size() < 2) return true;
  const bool isMarked = text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE");
  return !isMarked && text[0] && text[1] && text[0] != '\x4C';  // EBCDIC's '<'
}

std::size_t chartprolog::mostAttributes(std::string_view text, const char16_t* encoding) {
  if (!encoding) return mostAttributesOf(text);
  return mostAttributesOf(std::u16string_view(decoded(text, encoding)));
}

void chartprolog::PlaceCounter::pass(std::string_view part) {
  for (std::size_t i = 0; i < part.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(part[i]);
    if (byte == '\n' || (byte == '\r' && part.substr(i + 1, 1) != "\n")) {
      place_ = {place_.line + 1, 1};
    } else if ((byte & 0xC0) != 0x80) {
      // Columns are counted in the units of UTF-16.
      place_.column += byte < 0xF0 ? 1 : 2;
    }
  }
}

std::optional<chartprolog::PassedOver> chartprolog::firstPassedOver(std::string_view text,
                                                                    const char16_t* encoding) {
  constexpr const char16_t* zero = u"the document has a character 0";
  PlaceCounter counter;
  if (!isAscii(text)) {
    const std::u16string whole = decoded(text, encoding);
    const std::size_t end = whole.find(u'\0');
    if (end == whole.npos) return std::nullopt;
    counter.pass(utf::toUtf8(std::u16string_view(whole).substr(0, end)));
    return PassedOver{counter.place(), zero};
  }
  const bool isUtf8 = XMLString::compareIString(encoding, XMLUni::fgUTF8EncodingString) == 0 ||
                      XMLString::compareIString(encoding, XMLUni::fgUTF8EncodingString2) == 0;
  const std::size_t end = text.find('\0');
  const std::size_t lead = isUtf8 ? findIllFormedLead(text.substr(0, end)) : text.npos;
  if (end == text.npos && lead == text.npos) return std::nullopt;
  counter.pass(utf::toUtf8(decoded(text.substr(0, std::min(end, lead)), encoding)));
  return PassedOver{counter.place(),
                    lead == text.npos ? zero : u"the document has bytes that are no UTF-8"};
}
