// Charts of any size for the benchmarks, as a statistics suite writes them.
#ifndef CHARTXML_BENCH_CHARTS_H
#define CHARTXML_BENCH_CHARTS_H

#include <cstddef>
#include <string>

struct ChartSize {
  int elements = 4;
  int graphElements = 4;  // the most in one graph
  int styles = 8;
  int labelFrames = 3;
  int rows = 0;     // of eight columns; none for a chart without data
  int sources = 1;  // that hold them, when there are rows
};

// The text of a chart that is valid against grafo-2.9.xsd: graphs with axes, elements, aesthetics
// and labels, which are linked by their ids.
std::string chartText(const ChartSize& size);

// A chart without data, of about that many bytes.
std::string chartOfBytes(std::size_t bytes);

// Rows as they stand in a source: identifiers, codes, dates, prices and full doubles.
std::string rowsText(int rows);

// A chart of the examples, by its file's name without the ending. Throws when there is none.
std::string exampleText(const std::string& name);

#endif
