#include "chartdata.h"

#include <algorithm>
#include <limits>
#include <new>

#include "scannedform.h"
#include "xmldatahandler.h"
#include "xmlwriter.h"
#include "zlib1211tavo.h"
#include "zlibstreams.h"

namespace {

std::string compressed(const std::string& text) {
  std::string result;
  // There is no other reason.
  if (!zlib1211tavo::compressString(text, result)) throw std::bad_alloc();
  return result;
}

}  // namespace

const std::string* ChartData::text(std::string& room) const {
  bool isRead = false;
  if (printed_) {
    room = printed_->whole();
    isRead = true;
  } else if (!plain_.empty()) {
    return &plain_;
  } else if (!packed_.empty()) {
    isRead = printedSize_ > 0 ? inflateAll(room, packed_, printedSize_)
                              : zlib1211tavo::decompressString(room, packed_);
  } else if (stream_ && streamSize_ <= std::numeric_limits<unsigned>::max()) {
    // Streams count their lengths in 32 bits.
    isRead = XmlDataHandler(stream_, static_cast<unsigned>(streamSize_)).GetXmlData(room, false);
  }
  return isRead ? &room : nullptr;
}

std::string ChartData::printed(const Parse& parse) const {
  if (printed_) return printed_->whole();
  std::string room;
  const std::string* text = this->text(room);
  if (!text) return {};
  const OwnedDocument document = parse(*text);
  return document ? xmlText(*document) : std::string();
}

const std::string& ChartData::packed(const Parse& parse) {
  if (printed_) {
    if (packed_.empty()) packed_ = printed_->packed();
  } else if (printedSize_ == 0) {
    const std::string text = printed(parse);
    if (!text.empty()) {
      packed_ = compressed(text);
      std::string().swap(plain_);  // an assignment would keep its memory
      printedSize_ = text.size();
    }
  }
  return packed_;
}

unsigned char* ChartData::stream(unsigned long& size, const Parse& parse) const {
  size = 0;
  if (stream_) {
    auto* copy = new unsigned char[streamSize_];
    std::copy_n(stream_, streamSize_, copy);
    size = streamSize_;
    return copy;
  }
  std::string room;
  // What was given as packed may be a plain text.
  const bool isText = !printed_ && plain_.empty() && !packed_.starts_with('x');
  const std::string* text = isText ? &packed_ : this->text(room);
  if (!text || text->empty()) return nullptr;
  if (scannedform::isForParsers(*text)) {
    if (const OwnedDocument document = parse(*text)) {
      scannedform::simplify(*document);
      room = xmlText(*document);
      text = &room;
    }
  }
  unsigned length = 0;
  unsigned char* stream = XmlDataHandler(*text).GetDataStream(length);
  size = length;
  return stream;
}

std::optional<bool> ChartData::isWhole() const {
  if (printed_) return true;
  if (plain_.empty() && packed_.empty() && !stream_) return true;
  return isReadWhole_;
}
