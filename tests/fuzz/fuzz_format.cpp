// Puts any bytes where a template has the elements of formats, and the attributes and children of
// ticks.
#include <cstdint>

#include "fuzztemplate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string uri = CHARTXML_HOST "/software/analytics/tavo/xml/visualization";
  static const std::string start =
      "<template xmlns='" + uri +
      "' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='" + uri + " " +
      uri + "/grafo-template-3.5.xsd'>";
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  applyFuzzed(start + "<setTickLabelFormat role='y'>" + bytes + "</setTickLabelFormat></template>");
  applyFuzzed(start + "<setAxisMajorTicks><majorTicks role='x'" + bytes +
              "</majorTicks></setAxisMajorTicks></template>");
  return 0;
}
