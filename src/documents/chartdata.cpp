#include "chartdata.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "scannedform.h"
#include "xmldatahandler.h"
#include "xmlwriter.h"
#include "zlib1211tavo.h"

bool ChartData::text(std::string& text) const {
  if (text_) {
    // As long as what nobody could inflate again.
    if (text_->size() > zlib1211tavo::getInflateLimit()) return false;
    text = text_->whole();
    return true;
  }
  if (!packed_.empty()) return zlib1211tavo::decompressString(text, packed_);
  // Streams count their lengths in 32 bits.
  if (!stream_ || streamSize_ > std::numeric_limits<unsigned>::max()) return false;
  return XmlDataHandler(stream_, static_cast<unsigned>(streamSize_)).GetXmlData(text, false);
}

const std::string& ChartData::packed(const Parse& parse) {
  if (text_ && packed_.empty()) zlib1211tavo::compressString(text_->whole(), packed_);
  std::string text;
  if (!isPrinted_ && this->text(text)) {
    if (const OwnedDocument document = parse(text)) {
      zlib1211tavo::compressString(xmlText(*document), packed_);
      isPrinted_ = true;
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
  std::string text;
  if (text_ || packed_.starts_with('x')) {
    if (!this->text(text)) return nullptr;
  } else {
    text = packed_;
  }
  if (text.empty()) return nullptr;
  if (scannedform::isForParsers(text)) {
    if (const OwnedDocument document = parse(text)) {
      scannedform::simplify(*document);
      text = xmlText(*document);
    }
  }
  unsigned length = 0;
  unsigned char* stream = XmlDataHandler(text).GetDataStream(length);
  size = length;
  return stream;
}
