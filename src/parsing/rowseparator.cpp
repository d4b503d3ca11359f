#include "rowseparator.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "utf.h"

namespace {

using namespace std::string_view_literals;

constexpr std::string_view rowStart = "<row>";
constexpr std::string_view emptyRow = "<row/>";
constexpr std::string_view rowEnd = "</row>";
constexpr std::string_view sourceName = "embeddedSource";
constexpr std::string_view sourceEnd = "</embeddedSource>";
constexpr std::string_view blanks = " \t\r\n";

bool isOn = true;

std::string_view between(const char* start, const char* end) {
  return {start, static_cast<std::size_t>(end - start)};
}

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

// Copies rows from one text to another. A text never grows by more than the bytes that are left.
class RowCopier {
 public:
  explicit RowCopier(const char* end) : end_(end) {}

  // Copies the rows at `at`, with no blanks between them; answers where they end, or null when
  // anything but rows and blanks stands there.
  const char* copy(const char* at) {
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

  std::size_t size() const { return static_cast<std::size_t>(out_ - bytes_.get()); }

  // Less what has turned out to be too much room.
  std::unique_ptr<char[]> take() {
    if (size() < capacity_ / 4 * 3) resize(size());
    return std::move(bytes_);
  }

 private:
  // More than any step writes.
  static constexpr std::size_t slack = 64;

  // Room for all that is left, as far as nothing becomes longer.
  void makeRoom(const char* at) {
    const std::size_t needed = static_cast<std::size_t>(end_ - at) + slack;
    if (capacity_ - size() < needed) resize(size() + std::max(needed, capacity_ / 2));
  }
  void resize(std::size_t capacity) {
    auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
    char* out = std::copy(bytes_.get(), out_, bytes.get());
    bytes_ = std::move(bytes);
    out_ = out;
    capacity_ = capacity;
  }
  void put(std::string_view text) {
    std::memcpy(out_, text.data(), text.size());
    out_ += text.size();
  }

  // From `at` to the next '<'; null for a text that XML refuses.
  const char* copyText(const char* at) {
    for (;;) {
      at = copyPlain(at);
      if (at == end_ || *at == '<') return at;
      at = copyMarked(at);
      if (!at) return nullptr;
      makeRoom(at);
    }
  }

  const char* copyPlain(const char* at) {
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

  const char* copyMarked(const char* at) {
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
  const char* copyWide(const char* at) {
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

  const char* copyReference(const char* at) {
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

  bool putCharacter(std::uint32_t code) {
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

  const char* const end_;
  std::unique_ptr<char[]> bytes_;
  char* out_ = nullptr;
  std::size_t capacity_ = 0;
};

// Goes from tag to tag. What isn't well-formed may be taken for anything: it stays in the rest, and
// the parser refuses it there.
class Walk {
 public:
  Walk(std::string_view text, rowseparator::Separated& result)
      : at_(text.data()),
        copied_(at_),
        end_(text.data() + text.size()),
        result_(result),
        rows_(end_) {}

  bool run() {
    const char* start = at_;
    if (!isPlainStart() || !passBehind("<row")) return false;
    at_ = start;
    while (at_ != end_ && (at_ = find('<')) != end_) {
      if (!passMarkup()) return false;
    }
    result_.size = rows_.size();
    if (result_.size == 0) return false;
    result_.rest.append(between(copied_, end_));
    result_.bytes = rows_.take();
    return !namesSchemasAgain();
  }

 private:
  // The declaration as nearly everyone writes it, or none.
  bool isPlainStart() const {
    std::string_view start = between(at_, end_);
    if (!start.starts_with("<?xml")) return start.starts_with('<');
    const std::size_t size = start.substr(0, 80).find("?>");
    if (size == start.npos) return false;
    std::string declaration(start.substr(0, size));
    declaration.erase(declaration.find_last_not_of(blanks) + 1);
    for (char& c : declaration) {
      if (c == '\'') c = '"';
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return declaration == "<?xml version=\"1.0\"" ||
           declaration == "<?xml version=\"1.0\" encoding=\"utf-8\"" ||
           declaration == "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"";
  }

  // Grammars beside those of the root may change what is valid behind them.
  bool namesSchemasAgain() const {
    constexpr std::string_view name = "chemaLocation";
    const std::size_t first = result_.rest.find(name);
    return first != result_.rest.npos && result_.rest.find(name, first + 1) != result_.rest.npos;
  }

  const char* find(char c) const {
    const void* hit = std::memchr(at_, c, static_cast<std::size_t>(end_ - at_));
    return hit ? static_cast<const char*>(hit) : end_;
  }

  bool passBehind(std::string_view word) {
    const void* hit = memmem(at_, static_cast<std::size_t>(end_ - at_), word.data(), word.size());
    at_ = hit ? static_cast<const char*>(hit) + word.size() : end_;
    return hit;
  }

  bool passMarkup() {
    if (startsWith(at_, end_, "<?")) return passBehind("?>");
    if (startsWith(at_, end_, "<!--")) {
      at_ += 4;
      return passBehind("-->");
    }
    if (startsWith(at_, end_, "<![CDATA[")) return passBehind("]]>");
    if (startsWith(at_, end_, "<!")) return false;
    if (startsWith(at_, end_, "</")) {
      --depth_;
      return passBehind(">");
    }
    return depth_ == 2 && isInSource_ && isRow() ? takeRows() : passStartTag();
  }

  bool isRow() const { return startsWith(at_, end_, rowStart) || startsWith(at_, end_, emptyRow); }

  bool takeRows() {
    result_.rest.append(between(copied_, at_));
    at_ = rows_.copy(at_);
    copied_ = at_;
    if (!at_) return false;
    result_.ends.back() = rows_.size();
    return true;
  }

  bool passStartTag() {
    const char* start = at_ + 1;
    const std::string_view tag = takeTag(start);
    if (tag.empty()) return false;
    const bool isEmpty = tag.ends_with('/');
    const std::string_view name = tag.substr(0, tag.find_first_of(" \t\r\n/"));
    if (depth_ == 0 && (name != "visualization" || isEmpty)) return false;
    if (depth_ == 1) {
      isInSource_ = name == sourceName;
      if (!isInSource_ && name.ends_with(sourceName)) return false;
      if (isInSource_) {
        if (!hasAtMostAnId(tag.substr(name.size()))) return false;
        result_.ends.push_back(rows_.size());
      }
    }
    if (!isEmpty) ++depth_;
    return true;
  }

  // What stands before the '>' that ends the tag, and moves behind that; empty when none does.
  std::string_view takeTag(const char* start) {
    for (at_ = start; at_ != end_ && *at_ != '>'; ++at_) {
      if (*at_ != '"' && *at_ != '\'') continue;
      const char quote = *at_++;
      at_ = find(quote);
      if (at_ == end_) return {};
    }
    if (at_ == end_) return {};
    return between(start, at_++);
  }

  static bool hasAtMostAnId(std::string_view attributes) {
    const auto skipBlanks = [&] {
      attributes.remove_prefix(std::min(attributes.find_first_not_of(blanks), attributes.size()));
    };
    skipBlanks();
    if (attributes.starts_with("id")) {
      attributes.remove_prefix(2);
      skipBlanks();
      if (!attributes.starts_with('=')) return false;
      attributes.remove_prefix(1);
      skipBlanks();
      if (attributes.empty() || (attributes[0] != '"' && attributes[0] != '\'')) return false;
      const std::size_t stop = attributes.find(attributes[0], 1);
      if (stop == attributes.npos) return false;
      attributes.remove_prefix(stop + 1);
      skipBlanks();
    }
    return attributes.empty() || attributes == "/";
  }

  const char* at_;
  const char* copied_;  // what is behind it isn't in the rest yet
  const char* const end_;
  rowseparator::Separated& result_;
  RowCopier rows_;
  int depth_ = 0;
  bool isInSource_ = false;
};

}  // namespace

bool rowseparator::separate(std::string_view text, Separated& result) {
  return isOn && Walk(text, result).run();
}

void rowseparator::turn(bool on) {
  isOn = on;
}
