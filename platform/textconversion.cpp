#include "textconversion.h"

#include <iconv.h>
#include <langinfo.h>

#include <cstring>
#include <string>
#include <string_view>

#include "utf.h"

namespace {

// Null for UTF-8, of which ASCII is a part.
const char* foreignCodeset() {
  const char* codeset = nl_langinfo(CODESET);
  const bool isUtf8 = !std::strcmp(codeset, "UTF-8") || !std::strcmp(codeset, "ANSI_X3.4-1968");
  return isUtf8 ? nullptr : codeset;
}

// What can't be converted at a place is stepped over by `unit` bytes and becomes `substitute`.
std::string convert(const char* to, const char* from, std::string_view input, std::size_t unit,
                    std::string_view substitute) {
  const iconv_t converter = iconv_open(to, from);
  // NOLINTNEXTLINE(performance-no-int-to-ptr): what iconv_open answers when it fails
  if (converter == iconv_t(-1)) return std::string(input);
  std::string out;
  char* next = const_cast<char*>(input.data());
  std::size_t left = input.size();
  while (left > 0) {
    char buffer[1024];
    char* free = buffer;
    std::size_t room = sizeof buffer;
    const std::size_t result = iconv(converter, &next, &left, &free, &room);
    out.append(buffer, free - buffer);
    if (result != std::size_t(-1) || errno == E2BIG) continue;
    const std::size_t step = unit < left ? unit : left;
    next += step;
    left -= step;
    out += substitute;
  }
  iconv_close(converter);
  return out;
}

}  // namespace

char* TAVOMBTranscodeGeneric(const XMLCh* text) {
  if (!text) return nullptr;
  std::string bytes = utf::toUtf8(text);
  if (const char* codeset = foreignCodeset()) {
    std::string out;
    // Character by character in UTF-8, so that one that the encoding lacks costs one '?'.
    out = convert(codeset, "UTF-8", bytes, 1, "?");
    bytes = std::move(out);
  }
  char* result = new char[bytes.size() + 1];
  std::memcpy(result, bytes.c_str(), bytes.size() + 1);
  return result;
}

XMLCh* TAVOMBTranscodeGeneric(const char* text) {
  if (!text) return nullptr;
  const char* codeset = foreignCodeset();
  const std::u16string units =
      utf::toUtf16(codeset ? convert("UTF-8", codeset, text, 1, "\xEF\xBF\xBD") : text);
  XMLCh* result = new XMLCh[units.size() + 1];
  std::memcpy(result, units.c_str(), (units.size() + 1) * sizeof(XMLCh));
  return result;
}

void TAVOMBRelease(char** text) {
  if (!text) return;
  delete[] * text;
  *text = nullptr;
}

void TAVOMBRelease(XMLCh** text) {
  if (!text) return;
  delete[] * text;
  *text = nullptr;
}
