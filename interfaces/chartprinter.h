// DOMPrinter and ChartPrinter: the XML text of a DOM tree.
#ifndef CHARTXML_CHARTPRINTER_H
#define CHARTXML_CHARTPRINTER_H

#include <iosfwd>

#include <xercesc/util/XercesDefs.hpp>

#include "export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMNode;
XERCES_CPP_NAMESPACE_END

// Writes UTF-8 that parses back to an equal tree. Characters that would be lost on the way stand as
// references: "]]>", carriage returns, and tabs and line feeds in attributes. Names and namespace
// attributes are written as they stand in the tree. An attribute "id" comes first in its tag. What
// no XML document can hold (a control character, half a surrogate pair) becomes U+FFFD.
class CHARTXML_API DOMPrinter {
 public:
  virtual ~DOMPrinter() = default;

  // A node with its content; nothing for null. With `whiteSpace`, elements that hold no text have
  // their children on lines of their own, indented by two blanks a level; from the
  // 64th level on no further, since a deep document would grow to the square of its size.
  virtual void Print(const xercesc::DOMNode* node, std::ostream& out, bool whiteSpace);
};

// Prints whole documents: the declaration, the document type as it was read, what stands before
// and behind the root.
class CHARTXML_API ChartPrinter : public DOMPrinter {
 public:
  using DOMPrinter::Print;
  void Print(const xercesc::DOMDocument* document, std::ostream& out);
  // False at first.
  void setPrintWhiteSpace(bool whiteSpace) { whiteSpace_ = whiteSpace; }

 private:
  bool whiteSpace_ = false;
};

#endif
