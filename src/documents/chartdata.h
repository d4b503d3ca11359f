// ChartData: the data document of a chart, in the forms in which it is held.
#ifndef CHARTXML_CHARTDATA_H
#define CHARTXML_CHARTDATA_H

#include <functional>
#include <memory>
#include <string>

#include "datatext.h"
#include "owneddocument.h"

// Made of one form. The others are made when they are asked for:
//
//   made of        text()                packed()                      stream()
//   a text         put together anew     compressed once, kept beside  made anew
//   a packed text  inflated anew         printed anew once, kept for   made anew
//                                        what was given
//   a stream       made anew, until      made and kept once            a copy of what was given
//                  there is a packed one
//
// Nothing is thrown but what memory, the parser and TavoGoToCaller throw.
class ChartData {
 public:
  // Reads a text; null when that is no document.
  using Parse = std::function<OwnedDocument(const std::string& text)>;

  ChartData() = default;  // none
  // As documents are printed: reading it again would change nothing.
  explicit ChartData(std::unique_ptr<DataText> text) : text_(std::move(text)), isPrinted_(true) {}
  // Anything; looked at when it is asked for.
  explicit ChartData(std::string packed) : packed_(std::move(packed)) {}
  // The caller's, who keeps it as long as the object lives. Null or a size of 0 is none.
  ChartData(const unsigned char* stream, unsigned long size)
      : stream_(size > 0 ? stream : nullptr), streamSize_(stream_ ? size : 0) {}

  // False when there is none or it can't be read.
  bool text(std::string& text) const;
  // Empty when there is none; what was given when that can't be read.
  const std::string& packed(const Parse& parse);
  // In a new array; null with `size` 0 when there is none or it can't be a stream.
  unsigned char* stream(unsigned long& size, const Parse& parse) const;

  // The text it was made of, if its sources are marked there; else null.
  const DataText* markedText() const {
    return text_ && text_->hasSources() ? text_.get() : nullptr;
  }

 private:
  std::unique_ptr<DataText> text_;
  std::string packed_;
  bool isPrinted_ = false;  // what is held is as documents are printed
  const unsigned char* stream_ = nullptr;
  unsigned long streamSize_ = 0;
};

#endif
