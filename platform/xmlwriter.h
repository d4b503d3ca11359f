// The writer behind the printers: a DOM tree as UTF-8.
#ifndef CHARTXML_XMLWRITER_H
#define CHARTXML_XMLWRITER_H

#include <string>

#include <xercesc/dom/DOM.hpp>

class TextBuffer;

// The text of a node, as DOMPrinter tells. A tree of any depth costs no stack.
std::string xmlText(const xercesc::DOMNode& node, bool whiteSpace = false);
// Appends it.
void writeXml(const xercesc::DOMNode& node, TextBuffer& out, bool whiteSpace = false);

#endif
