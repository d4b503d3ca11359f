// Taking a chart's data sources out into the text of a data document, and putting them back.
#ifndef CHARTXML_DATASOURCES_H
#define CHARTXML_DATASOURCES_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "owneddocument.h"

class DataText;
namespace rowseparator {
struct Separated;
}

// Everything is printed from where it stands: copying would cost as much as parsing did.
namespace datasources {

// A new document that is made as far as memory goes: throws std::bad_alloc unless it is whole.
OwnedDocument wholeFrame(xercesc::DOMDocument* document);

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
// data's document. `rows` are those of its embedded sources, which don't hold them then; or null.
std::string merged(const xercesc::DOMElement& chartRoot, xercesc::DOMDocument& data,
                   const rowseparator::Separated* rows, const XMLCh* encoding);

// True for a data document that has a source for each placeholder of the chart.
bool isDataOf(const xercesc::DOMElement& chartRoot, const xercesc::DOMDocument& data);

// True for a data document that these rows were taken out of.
bool areRowsOf(const xercesc::DOMDocument& data, const rowseparator::Separated& rows);

// The same from a text with marks, without reading it. `dataRoot` is the root of an empty data
// document; where that declares other namespaces than the chart does, the text has to be read.
bool areMergeable(const xercesc::DOMElement& chartRoot, const xercesc::DOMElement& dataRoot);
std::string merged(const xercesc::DOMElement& chartRoot, const xercesc::DOMElement& dataRoot,
                   const DataText& text, const XMLCh* encoding);

}  // namespace datasources

#endif
