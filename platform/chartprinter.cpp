#include "chartprinter.h"

#include <ostream>

#include "xmlwriter.h"

using namespace xercesc;

void DOMPrinter::Print(const DOMNode* node, std::ostream& out, bool whiteSpace) {
  if (node) out << xmlText(*node, whiteSpace);
}

void ChartPrinter::Print(const DOMDocument* document, std::ostream& out) {
  Print(document, out, whiteSpace_);
}
