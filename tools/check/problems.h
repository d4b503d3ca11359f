// Telling what is wrong with a document, and what it should have been.
#ifndef CHARTXML_TOOLS_PROBLEMS_H
#define CHARTXML_TOOLS_PROBLEMS_H

#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include <chartxml/chartproblem.h>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

class ChartBase;
class ChartTransformer;

// "FILE:LINE:COLUMN: message" with the parts that there are.
std::string placed(const ChartProblem& problem, const std::string& file);

// Throws a Failure with the first problem for which the library refuses the file; without one it
// says that the file is not `kind`, which starts with an article, or can't be read for null.
[[noreturn]] void failAtProblem(const std::vector<ChartProblem>& problems, const std::string& file,
                                const char* kind);

// The root of a document as the library reads it, which `base` keeps. Throws a Failure with the
// place and the reason when the library can't.
xercesc::DOMElement& rootOf(ChartBase& base, const std::string& file, const std::string& text);

// Throws a Failure unless the file, whose text the transformer was made of, is a chart.
void requireChart(ChartTransformer& transformer, const std::string& file, const std::string& text);

// Throws a Failure unless the root is that of a chart, or of a data document.
void requireChart(const xercesc::DOMElement& root, const std::string& file);
void requireData(const xercesc::DOMElement& root, const std::string& file);

#endif
