// The texts of the string tables that commands put into charts.
#ifndef CHARTXML_GRAPHTEXTS_H
#define CHARTXML_GRAPHTEXTS_H

#include "chartstring.h"
#include "charttranscoder.h"
#include "facstdictionary.h"

// The table "GRAPH" in the installation's language. It is read at the first look-up, and once for
// each object: a command makes one, not one for each text.
class GraphTexts {
 public:
  GraphTexts();

  // The key itself where the table has no text for it.
  ChartString lookUp(const char* key);

 private:
  FacSTDictionary dictionary_;
  ChartTranscoder transcoder_;
};

#endif
