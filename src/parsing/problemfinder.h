// ProblemFinder: all that is wrong with a document, and links that lead nowhere.
#ifndef CHARTXML_PROBLEMFINDER_H
#define CHARTXML_PROBLEMFINDER_H

#include <memory>
#include <string>
#include <vector>

#include "chartproblem.h"

// Finds problems of one document after the other; reads the schemas once. A ChartBase must live as
// long.
class ProblemFinder {
 public:
  ProblemFinder();
  ProblemFinder(const ProblemFinder&) = delete;
  ProblemFinder& operator=(const ProblemFinder&) = delete;
  ~ProblemFinder();

  // Nothing behind a place where the text isn't well-formed is looked at, and nothing within a root
  // that no schema declares.
  std::vector<ChartProblem> problemsOf(const std::string& text);

 private:
  class Reader;

  // The first has read the system's schemas; the second reads those that a document names.
  std::unique_ptr<Reader> withSchemas_;
  std::unique_ptr<Reader> fresh_;
};

#endif
