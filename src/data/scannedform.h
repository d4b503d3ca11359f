// The data documents that the scanner of XmlDataHandler reads as a parser would.
#ifndef CHARTXML_SCANNEDFORM_H
#define CHARTXML_SCANNEDFORM_H

#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
XERCES_CPP_NAMESPACE_END

namespace scannedform {

// True for a text in which the scanner could take something for what it isn't.
bool isForParsers(std::string_view text);

// Rewrites the sources of a document so that what is printed of it isn't one of those.
void simplify(xercesc::DOMDocument& data);

}  // namespace scannedform

#endif
