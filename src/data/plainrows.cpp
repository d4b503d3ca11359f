#include "plainrows.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <string>

#include "utf.h"

namespace {

using namespace std::string_view_literals;

bool startsWith(const char* at, const char* end, std::string_view word) {
  return static_cast<std::size_t>(end - at) >= word.size() &&
         std::memcmp(at, word.data(), word.size()) == 0;
}

bool isBlank(char c) {
  return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

// The bytes of a text that don't stand for themselves, or not alone, as a bit each: controls, what
// is above ASCII, and < > & ".
constexpr std::ptrdiff_t blockSize = sizeof(__m128i);

unsigned marksOf(__m128i block) {
  // As signed bytes, all above ASCII are below 0x20.
  const __m128i control = _mm_cmplt_epi8(block, _mm_set1_epi8(0x20));
  // < is > less one bit, and " is & less another.
  const __m128i angle =
      _mm_cmpeq_epi8(_mm_or_si128(block, _mm_set1_epi8('<' ^ '>')), _mm_set1_epi8('>'));
  const __m128i other =
      _mm_cmpeq_epi8(_mm_or_si128(block, _mm_set1_epi8('"' ^ '&')), _mm_set1_epi8('&'));
  static_assert(('<' | '>') == '>' && ('"' | '&') == '&');
  return static_cast<unsigned>(
      _mm_movemask_epi8(_mm_or_si128(control, _mm_or_si128(angle, other))));
}

bool isMark(char c) {
  return static_cast<signed char>(c) < 0x20 || c == '<' || c == '>' || c == '&' || c == '"';
}

// The length of the character above ASCII at `at`; 0 for what is none or none of XML's. Four bytes
// are read.
std::size_t wideLength(const char* at) {
  const auto byte = [at](int i) { return static_cast<std::uint8_t>(at[i]); };
  const auto isMore = [byte](int i) { return (byte(i) & 0xC0) == 0x80; };
  const std::uint8_t lead = byte(0);
  if (lead < 0xC2 || lead > 0xF4 || !isMore(1)) return 0;
  if (lead < 0xE0) return 2;
  if (!isMore(2)) return 0;
  if (lead < 0xF0) {
    const bool isShorter = lead == 0xE0 && byte(1) < 0xA0;
    const bool isSurrogate = lead == 0xED && byte(1) >= 0xA0;
    const bool isNone = lead == 0xEF && byte(1) == 0xBF && byte(2) >= 0xBE;
    return isShorter || isSurrogate || isNone ? 0 : 3;
  }
  const bool isInRange = (lead > 0xF0 || byte(1) >= 0x90) && (lead < 0xF4 || byte(1) < 0x90);
  return isMore(3) && isInRange ? 4 : 0;
}

// True for four characters of two bytes. Eight bytes are read.
bool areFourPairs(const char* at) {
  std::uint64_t bytes;
  std::memcpy(&bytes, at, sizeof bytes);
  if ((bytes & 0xC0E0C0E0C0E0C0E0) != 0x80C080C080C080C0) return false;
  // The leads C0 and C1 have none of these bits; any of them carries.
  const std::uint64_t carries = (bytes & 0x001E001E001E001E) + 0x00FE00FE00FE00FE;
  return (carries & 0x0100010001000100) == 0x0100010001000100;
}

// The length, as wideLength() tells it, of the characters of two and three bytes that nothing can
// be wrong with, at one look; 0 for others. Four bytes are read.
std::size_t commonLength(const char* at) {
  std::uint32_t bytes;
  std::memcpy(&bytes, at, sizeof bytes);
  if ((bytes & 0xC0E0) == 0x80C0) return bytes & 0x1E ? 2 : 0;
  if ((bytes & 0xC0C0F0) != 0x8080E0) return 0;
  const std::uint32_t lead = bytes & 0xFF;
  return lead == 0xE0 || lead == 0xED || lead == 0xEF ? 0 : 3;
}

}  // namespace

namespace plainrows {

const char* Copier::copy(const char* at) {
  for (;;) {
    makeRoom(at);
    if (startsWith(at, end_, rowStart)) {
      put(rowStart);
      at = copyText(at + rowStart.size());
      if (!at || !startsWith(at, end_, rowEnd)) return nullptr;
      at += rowEnd.size();
    } else if (startsWith(at, end_, emptyRow)) {
      put(rowStart);
      at += emptyRow.size();
    } else {
      return startsWith(at, end_, sourceEnd) ? at : nullptr;
    }
    put(rowEnd);
    while (at != end_ && isBlank(*at)) ++at;
  }
}

std::unique_ptr<char[]> Copier::take() {
  if (size() < capacity_ / 4 * 3) resize(size());
  return std::move(bytes_);
}

// Room for all that is left, as far as nothing becomes longer.
void Copier::makeRoom(const char* at) {
  const std::size_t needed = static_cast<std::size_t>(end_ - at) + slack;
  if (capacity_ - size() < needed) resize(size() + std::max(needed, capacity_ / 2));
}

void Copier::resize(std::size_t capacity) {
  auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
  char* out = std::copy(bytes_.get(), out_, bytes.get());
  bytes_ = std::move(bytes);
  out_ = out;
  capacity_ = capacity;
}

void Copier::put(std::string_view text) {
  std::memcpy(out_, text.data(), text.size());
  out_ += text.size();
}

// From `at` to the next '<'; null for a text that XML refuses.
const char* Copier::copyText(const char* at) {
  for (;;) {
    at = copyPlain(at);
    if (at == end_ || *at == '<') return at;
    at = copyMarked(at);
    if (!at) return nullptr;
    makeRoom(at);
  }
}

const char* Copier::copyPlain(const char* at) {
  while (end_ - at >= blockSize) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out_), block);
    const unsigned marks = marksOf(block);
    const std::ptrdiff_t count = marks ? std::countr_zero(marks) : blockSize;
    at += count;
    out_ += count;
    if (marks) return at;
  }
  while (at != end_ && !isMark(*at)) *out_++ = *at++;
  return at;
}

const char* Copier::copyMarked(const char* at) {
  switch (*at) {
    case '&':
      return copyReference(at);
    case '"':
      put("&quot;");
      return at + 1;
    case '>':
      // The start tag of the row is in front.
      if (at[-1] == ']' && at[-2] == ']') return nullptr;
      put("&gt;");
      return at + 1;
    case '\r':
      *out_++ = '\n';
      return at + (startsWith(at, end_, "\r\n") ? 2 : 1);
    case '\t':
    case '\n':
      *out_++ = *at;
      return at + 1;
    default:
      return copyWide(at);
  }
}

// A run of characters above ASCII; null for a control.
const char* Copier::copyWide(const char* at) {
  const char* start = at;
  while (at != end_ && static_cast<signed char>(*at) < 0) {
    if (end_ - at >= 8 && areFourPairs(at)) {
      std::memcpy(out_, at, 8);
      at += 8;
      out_ += 8;
      continue;
    }
    // No row could end in less.
    if (end_ - at < 4) return nullptr;
    std::size_t length = commonLength(at);
    if (length == 0) length = wideLength(at);
    if (length == 0) return nullptr;
    std::memcpy(out_, at, 4);  // in one move; what is too much is written over
    at += length;
    out_ += length;
  }
  return at == start ? nullptr : at;
}

const char* Copier::copyReference(const char* at) {
  for (const std::string_view same : {"&lt;"sv, "&gt;"sv, "&amp;"sv, "&quot;"sv}) {
    if (!startsWith(at, end_, same)) continue;
    put(same);
    return at + same.size();
  }
  constexpr std::string_view apostrophe = "&apos;";
  if (startsWith(at, end_, apostrophe)) {
    *out_++ = '\'';
    return at + apostrophe.size();
  }
  if (!startsWith(at, end_, "&#")) return nullptr;
  const bool isHexadecimal = startsWith(at, end_, "&#x");
  const char* digits = at + (isHexadecimal ? 3 : 2);
  std::uint32_t code = 0;
  const auto [stop, error] = std::from_chars(digits, end_, code, isHexadecimal ? 16 : 10);
  if (error != std::errc() || stop == end_ || *stop != ';') return nullptr;
  return putCharacter(code) ? stop + 1 : nullptr;
}

bool Copier::putCharacter(std::uint32_t code) {
  if (!utf::isXmlCharacter(code)) return false;
  switch (code) {
    case '<':
      put("&lt;");
      return true;
    case '>':
      put("&gt;");
      return true;
    case '&':
      put("&amp;");
      return true;
    case '"':
      put("&quot;");
      return true;
    case '\r':
      put("&#xD;");
      return true;
  }
  std::string bytes;
  utf::appendUtf8(bytes, code);
  put(bytes);
  return true;
}

}  // namespace plainrows
