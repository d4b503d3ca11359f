// A document that is released at the end of its scope.
#ifndef CHARTXML_OWNEDDOCUMENT_H
#define CHARTXML_OWNEDDOCUMENT_H

#include <memory>

#include <xercesc/dom/DOMDocument.hpp>

struct ReleaseDocument {
  void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using OwnedDocument = std::unique_ptr<xercesc::DOMDocument, ReleaseDocument>;

#endif
