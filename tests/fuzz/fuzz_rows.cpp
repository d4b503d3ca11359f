// Opens any bytes as a chart's text, with its rows taken out before it is read and without, and
// compares all that is seen.
#include <cstdint>
#include <cstdlib>

#include "bothroads.h"
#include "pathfactory.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool isFound = [] {
    PathFactory::getPathInstance(3)->setInstallationFolder(CHARTXML_INSTALLATION);
    return true;
  }();
  static const ChartBase holder;  // schemas are read once
  const std::string text(reinterpret_cast<const char*>(data), size);
  // Others take the same road twice.
  if (!isFound || !bothroads::isSeparated(text)) return 0;
  const bothroads::Seen seen = bothroads::both(text);
  if (seen.separated != seen.read) std::abort();
  return 0;
}
