// ChartData: the data document of a chart, in the forms in which it is held.
#ifndef CHARTXML_CHARTDATA_H
#define CHARTXML_CHARTDATA_H

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "datatext.h"
#include "owneddocument.h"

// Made of one form. The others are made when they are asked for:
//
//   made of          text()                packed()                      stream()
//   a printed text   put together anew     compressed once, kept beside  made anew
//   a plain text     what was given        printed and compressed once,  made anew
//                                          kept in its place
//   a packed text    inflated anew         printed anew once, kept in    made anew
//                                          its place
//   a stream         made anew, until      made and kept once            a copy of what was given
//                    there is a packed one
//
// A text that isn't as documents are printed is one of a caller's, whose length the limit of
// inflated texts bounds when it comes packed or as a stream. What can't be made for lack of memory
// throws std::bad_alloc or what the parser throws for it, and leaves all as it was.
class ChartData {
 public:
  // Reads a text; null when that is no document.
  using Parse = std::function<OwnedDocument(const std::string& text)>;
  enum class Form { Plain, Packed };

  ChartData() = default;  // none
  explicit ChartData(std::unique_ptr<DataText> printed) : printed_(std::move(printed)) {}
  // Looked at when it is asked for. An empty text is none.
  ChartData(Form form, std::string text)
      : plain_(form == Form::Plain ? std::move(text) : std::string()),
        packed_(form == Form::Packed ? std::move(text) : std::string()) {}
  // The caller's, who keeps it as long as the object lives. Null or a size of 0 is none.
  ChartData(const unsigned char* stream, unsigned long size)
      : stream_(size > 0 ? stream : nullptr), streamSize_(stream_ ? size : 0) {}

  // The text, in `room` where it isn't held as it is; null when there is none or it can't be read.
  const std::string* text(std::string& room) const;
  // As documents are printed. Empty when there is none or it can't be read.
  std::string printed(const Parse& parse) const;
  // Empty when there is none; what was given when that can't be read.
  const std::string& packed(const Parse& parse);
  // In a new array; null with `size` 0 when there is none or it can't be a stream.
  unsigned char* stream(unsigned long& size, const Parse& parse) const;

  // The text it was made of, if its sources are marked there; else null.
  const DataText* markedText() const {
    return printed_ && printed_->hasSources() ? printed_.get() : nullptr;
  }

  // Whether it can be read and is what the chart needs, or none; nullopt when nobody has tried yet.
  std::optional<bool> isWhole() const;
  // To be told when the document was read.
  void noteReading(bool isWhole) { isReadWhole_ = isWhole; }

 private:
  std::unique_ptr<DataText> printed_;
  std::string plain_;
  std::string packed_;
  std::size_t printedSize_ = 0;  // of what packed_ is, if that was printed and printed_ is null
  const unsigned char* stream_ = nullptr;
  unsigned long streamSize_ = 0;
  std::optional<bool> isReadWhole_;
};

#endif
