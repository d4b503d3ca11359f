// ChartTranscoder: text between a code page and the 16-bit strings of the model.
#ifndef CHARTXML_CHARTTRANSCODER_H
#define CHARTXML_CHARTTRANSCODER_H

#include <string>

#include "chartstring.h"
#include "export.h"
#include "textconversion.h"

// The string tables give their texts in the code page of their language; this turns them into the
// model's. Characters and bytes without a counterpart are replaced as textconversion.h tells.
class CHARTXML_API ChartTranscoder {
 public:
  // A code page name such as "CP1252"; texts pass as UTF-8 under a name that isn't known.
  explicit ChartTranscoder(const std::string& encoding);
  ChartTranscoder(const ChartTranscoder&) = delete;
  ChartTranscoder& operator=(const ChartTranscoder&) = delete;
  virtual ~ChartTranscoder();

  ChartString transcode(const std::string& text) const;
  // Null counts as empty.
  std::string transcodeTo(const XMLCh* text) const;

 private:
  TAVOMBConverter* converter_;
};

#endif
