#include "textconversion.h"

#include <iconv.h>
#include <langinfo.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>

#include "utf.h"

namespace {

// The error value of iconv is no pointer to anything.
const iconv_t closed = iconv_t(-1);  // NOLINT(performance-no-int-to-ptr)

// Moves `input` to its end or to the first place that can't be converted.
void convertSome(iconv_t conversion, std::string_view& input, std::string& out) {
  bool isFull;
  do {
    char buffer[1024];
    char* next = const_cast<char*>(input.data());
    std::size_t left = input.size();
    char* free = buffer;
    std::size_t room = sizeof buffer;
    isFull = iconv(conversion, &next, &left, &free, &room) == std::size_t(-1) && errno == E2BIG;
    out.append(buffer, free - buffer);
    input.remove_prefix(input.size() - left);
  } while (isFull);
}

// `skip` moves over the character at the start of its first argument, which can't be converted, and
// appends a substitute to the second.
template <class Skip>
std::string convert(iconv_t conversion, std::string_view input, Skip skip) {
  std::string out;
  iconv(conversion, nullptr, nullptr, nullptr, nullptr);
  for (convertSome(conversion, input, out); !input.empty(); convertSome(conversion, input, out)) {
    skip(input, out);
  }
  // Some encodings hold a character back, or end in a shift sequence.
  char buffer[64];
  char* free = buffer;
  std::size_t room = sizeof buffer;
  iconv(conversion, nullptr, nullptr, &free, &room);
  return out.append(buffer, free - buffer);
}

std::string_view bytesOf(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

}  // namespace

class TAVOMBConverter {
 public:
  explicit TAVOMBConverter(const char* encoding)
      : toUtf16_(iconv_open("UTF-16LE", encoding)), fromUtf16_(iconv_open(encoding, "UTF-16LE")) {}
  TAVOMBConverter(const TAVOMBConverter&) = delete;
  TAVOMBConverter& operator=(const TAVOMBConverter&) = delete;
  ~TAVOMBConverter() {
    if (toUtf16_ != closed) iconv_close(toUtf16_);
    if (fromUtf16_ != closed) iconv_close(fromUtf16_);
  }

  bool isOpen() const { return toUtf16_ != closed && fromUtf16_ != closed; }

  std::u16string toUtf16(std::string_view text) const {
    const std::string bytes =
        convert(toUtf16_, text, [](std::string_view& input, std::string& out) {
          input.remove_prefix(1);
          out += bytesOf(u"\uFFFD");
        });
    std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
    std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
    return units;
  }

  std::string fromUtf16(std::u16string_view text) const {
    return convert(fromUtf16_, bytesOf(text), [this](std::string_view& input, std::string& out) {
      input.remove_prefix(std::min(input.size(), isSurrogatePair(input) ? 4 : sizeof(char16_t)));
      // The encoding needn't be an extension of ASCII.
      std::string_view substitute = bytesOf(u"?");
      convertSome(fromUtf16_, substitute, out);
    });
  }

 private:
  static bool isSurrogatePair(std::string_view bytes) {
    char16_t units[2] = {};
    if (bytes.size() >= sizeof units) std::memcpy(units, bytes.data(), sizeof units);
    return (units[0] & 0xFC00) == 0xD800 && (units[1] & 0xFC00) == 0xDC00;
  }

  iconv_t toUtf16_;
  iconv_t fromUtf16_;
};

namespace {

// Null for UTF-8, of which ASCII is a part.
const char* foreignCodeset() {
  const char* codeset = nl_langinfo(CODESET);
  const bool isUtf8 = !std::strcmp(codeset, "UTF-8") || !std::strcmp(codeset, "ANSI_X3.4-1968");
  return isUtf8 ? nullptr : codeset;
}

std::unique_ptr<TAVOMBConverter> processConverter() {
  return std::unique_ptr<TAVOMBConverter>(TAVOMBConverterNew_A(0, foreignCodeset()));
}

template <class Text>
auto* newArray(const Text& text) {
  auto* array = new typename Text::value_type[text.size() + 1];
  std::copy_n(text.c_str(), text.size() + 1, array);
  return array;
}

}  // namespace

char* TAVOMBTranscodeGeneric(const XMLCh* text) {
  if (!text) return nullptr;
  std::string bytes;
  TAVOMBU16ToGeneric(processConverter().get(), bytes, text);
  return newArray(bytes);
}

XMLCh* TAVOMBTranscodeGeneric(const char* text) {
  if (!text) return nullptr;
  std::u16string units;
  TAVOMBGenericToU16(processConverter().get(), units, text);
  return newArray(units);
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

const char* TAVOMBstrinc_A(const char* text) {
  if (!text || !*text) return text;
  if (!foreignCodeset()) return text + utf::firstLength({text, strnlen(text, 4)});
  std::mbstate_t state{};
  const std::size_t length = std::mbrlen(text, strnlen(text, MB_CUR_MAX), &state);
  const bool isMalformed = length == std::size_t(-1) || length == std::size_t(-2);
  return text + (isMalformed ? 1 : length);
}

TAVOMBConverter* TAVOMBConverterNew_A(int, const char* encoding) {
  // A '/' would begin iconv's own options, and an empty name mean the locale's encoding.
  if (!encoding || !*encoding || std::strchr(encoding, '/')) return nullptr;
  auto converter = std::make_unique<TAVOMBConverter>(encoding);
  return converter->isOpen() ? converter.release() : nullptr;
}

void TAVOMBConverterDelete_A(TAVOMBConverter* converter) {
  delete converter;
}

void TAVOMBGenericToU16(const TAVOMBConverter* converter, std::u16string& out,
                        std::string_view in) {
  out = converter ? converter->toUtf16(in) : utf::toUtf16(in);
}

void TAVOMBU16ToGeneric(const TAVOMBConverter* converter, std::string& out,
                        std::u16string_view in) {
  out = converter ? converter->fromUtf16(in) : utf::toUtf8(in);
}
