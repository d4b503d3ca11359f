#include "charttranscoder.h"

ChartTranscoder::ChartTranscoder(const std::string& encoding)
    : converter_(TAVOMBConverterNew_A(0, encoding.c_str())) {}

ChartTranscoder::~ChartTranscoder() {
  if (converter_) TAVOMBConverterDelete_A(converter_);
}

ChartString ChartTranscoder::transcode(const std::string& text) const {
  std::u16string units;
  TAVOMBGenericToU16(converter_, units, text);
  return ChartString(units);
}

std::string ChartTranscoder::transcodeTo(const XMLCh* text) const {
  std::string bytes;
  if (text) TAVOMBU16ToGeneric(converter_, bytes, text);
  return bytes;
}
