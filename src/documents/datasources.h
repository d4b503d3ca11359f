// Taking a chart's data sources out into the text of a data document, and putting them back.
#ifndef CHARTXML_DATASOURCES_H
#define CHARTXML_DATASOURCES_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

class DataText;
namespace rowseparator {
struct Separated;
}

// Everything is printed from where it stands: copying would cost as much as parsing did.
namespace datasources {

// In the order of a data document: the embedded ones come last.
struct Sources {
  std::vector<xercesc::DOMElement*> elements;
  std::size_t firstEmbedded = 0;
};

// True for sources that can be put back as they were printed, since parsing them would change
// nothing.
bool arePlain(const xercesc::DOMElement& chartRoot,
              const std::vector<xercesc::DOMElement*>& sources);

// The data document of a chart's sources. `frame` is an empty one, which gets what the chart's root
// declares. With null the sources still hold their rows. Only that of plain sources has marks.
std::unique_ptr<DataText> separated(const xercesc::DOMElement& chartRoot,
                                    xercesc::DOMDocument& frame, const Sources& sources,
                                    rowseparator::Separated* rows, bool isPlain);

// The chart's text with the sources of the data in the place of their placeholders. Changes the
// data's document.
std::string merged(const xercesc::DOMElement& chartRoot, xercesc::DOMDocument& data,
                   const XMLCh* encoding);

// The same from a text with marks, without reading it. `dataRoot` is the root of an empty data
// document; where that declares other namespaces than the chart does, the text has to be read.
bool areMergeable(const xercesc::DOMElement& chartRoot, const xercesc::DOMElement& dataRoot);
std::string merged(const xercesc::DOMElement& chartRoot, const xercesc::DOMElement& dataRoot,
                   const DataText& text, const XMLCh* encoding);

}  // namespace datasources

#endif
