// What the library is compared with: the parser below it, used directly.
#ifndef CHARTXML_BENCH_BASELINE_H
#define CHARTXML_BENCH_BASELINE_H

#include <memory>
#include <string>

#include <xercesc/parsers/XercesDOMParser.hpp>

namespace baseline {

// Validates with a locked pool over the library's schemas, and has the settings of the library's
// own parser.
std::unique_ptr<xercesc::XercesDOMParser> newParser();

// The document stays the parser's. Throws for a text that isn't valid.
void parse(xercesc::XercesDOMParser& parser, const std::string& text);

// The document as UTF-8, as the parser's own library writes it.
std::string print(const xercesc::DOMDocument& document);

}  // namespace baseline

#endif
