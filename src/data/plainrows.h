// Plain rows of data: what they are, and how the writer of documents spells them.
#ifndef CHARTXML_PLAINROWS_H
#define CHARTXML_PLAINROWS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace plainrows {

// The tags in the one spelling that counts as plain, for readers of rows and for the scanner.
constexpr std::string_view rowStart = "<row>";
constexpr std::string_view emptyRow = "<row/>";
constexpr std::string_view rowEnd = "</row>";
constexpr std::string_view sourceName = "embeddedSource";
constexpr std::string_view sourceEnd = "</embeddedSource>";

// Copies rows from one text to another, and spells them anew: a text between `<row>` and `</row>`,
// in UTF-8, with references to characters and without any other markup.
class Copier {
 public:
  // `end` is that of the text.
  explicit Copier(const char* end) : end_(end) {}

  // Copies the rows at `at`, with no blanks between them; answers where they end, which is at the
  // end tag of their source, or null when anything but rows and blanks stands there, or a text that
  // XML refuses.
  const char* copy(const char* at);

  // Of all rows up to now.
  std::size_t size() const { return static_cast<std::size_t>(out_ - bytes_.get()); }
  // Less what has turned out to be too much room.
  std::unique_ptr<char[]> take();

 private:
  // More than any step writes.
  static constexpr std::size_t slack = 64;

  void makeRoom(const char* at);
  void resize(std::size_t capacity);
  void put(std::string_view text);
  const char* copyText(const char* at);
  const char* copyPlain(const char* at);
  const char* copyMarked(const char* at);
  const char* copyWide(const char* at);
  const char* copyReference(const char* at);
  bool putCharacter(std::uint32_t code);

  const char* const end_;
  std::unique_ptr<char[]> bytes_;
  char* out_ = nullptr;
  std::size_t capacity_ = 0;
};

}  // namespace plainrows

#endif
