// What is wrong with a document: all that the parser and the schemas find, and links that lead
// nowhere.
#ifndef CHARTXML_TOOLS_PROBLEMS_H
#define CHARTXML_TOOLS_PROBLEMS_H

#include <memory>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

class ChartBase;
class ChartTransformer;

struct Problem {
  // The path of a schema when the problem is there, else empty.
  std::string file;
  // From 1, behind the tag that has the problem. 0 for one without a place.
  unsigned long line = 0;
  unsigned long column = 0;
  std::string message;
  // The library reads no document that has the problem. It is more tolerant of values that break
  // the type of their attribute, and of links.
  bool isRefused = true;
};

// "FILE:LINE:COLUMN: message" with the parts that there are.
std::string placed(const Problem& problem, const std::string& file);

// Finds problems of one document after the other; reads the schemas once. A ChartBase must live as
// long.
class ProblemFinder {
 public:
  ProblemFinder();
  ProblemFinder(const ProblemFinder&) = delete;
  ProblemFinder& operator=(const ProblemFinder&) = delete;
  ~ProblemFinder();

  // In the order of their lines. Nothing behind a place where the text isn't well-formed is looked
  // at, and nothing within a root that no schema declares.
  std::vector<Problem> problemsOf(const std::string& text);

 private:
  class Reader;

  // The first has read the system's schemas; the second reads those that a document names.
  std::unique_ptr<Reader> withSchemas_;
  std::unique_ptr<Reader> fresh_;
};

// The root of a document as the library reads it, which `base` keeps. Throws a Failure with the
// place and the reason when the library can't.
xercesc::DOMElement& rootOf(ChartBase& base, const std::string& file, const std::string& text);

// Throws a Failure unless the file, whose text the transformer was made of, is a chart.
void requireChart(ChartTransformer& transformer, const std::string& file, const std::string& text);

// Throws a Failure unless the root is that of a chart, or of a data document.
void requireChart(const xercesc::DOMElement& root, const std::string& file);
void requireData(const xercesc::DOMElement& root, const std::string& file);

#endif
