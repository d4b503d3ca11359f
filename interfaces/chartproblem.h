// ChartProblem: what is wrong with a document, and where.
#ifndef CHARTXML_CHARTPROBLEM_H
#define CHARTXML_CHARTPROBLEM_H

#include <cstddef>
#include <string>

// Texts are UTF-8. Where problems are told of a document, they come in the order of their lines;
// those of a schema and those without a place stand where they were met.
struct ChartProblem {
  // No more are told of one document: where there are more, the last one says so.
  static constexpr std::size_t mostProblems = 10000;
  // What is longer, which only texts out of the document can make it, ends in "...".
  static constexpr std::size_t longestMessage = 2000;  // bytes

  // The path of a schema when the problem is there, else empty.
  std::string file;
  // From 1, behind the tag that has the problem. 0 for one without a place.
  unsigned long line = 0;
  unsigned long column = 0;
  std::string message;
  // The library makes nothing of a document that has the problem. It is more tolerant of values
  // that break the type of their attribute, and of links that lead nowhere.
  bool isRefused = true;
};

#endif
