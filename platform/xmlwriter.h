// The writer behind the printers: a DOM tree as UTF-8 in a string.
#ifndef CHARTXML_XMLWRITER_H
#define CHARTXML_XMLWRITER_H

#include <string>

#include <xercesc/dom/DOM.hpp>

// Appends the text of a node, as DOMPrinter tells. A tree of any depth costs no stack.
void writeXml(const xercesc::DOMNode& node, std::string& out, bool whiteSpace = false);

#endif
