#include "graphtexts.h"

#include "installationcodepage.h"
#include "pathfactory.h"

GraphTexts::GraphTexts()
    : dictionary_(PathFactory::getPathInstance(3)->getLanguageResourcePath()),
      transcoder_(installationCodePage()) {
  dictionary_.SetProcedure("GRAPH");
}

ChartString GraphTexts::lookUp(const char* key) {
  return transcoder_.transcode(dictionary_.LookUp(key));
}
