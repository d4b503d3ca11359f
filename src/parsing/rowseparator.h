// Takes the plain rows out of the text of a chart, or of its data, before a parser reads it: nine
// tenths of a real chart are rows, and each would become an element only to be printed as it was.
#ifndef CHARTXML_ROWSEPARATOR_H
#define CHARTXML_ROWSEPARATOR_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "chartproblem.h"

namespace rowseparator {

// Whose text it is: that of a chart, or of the data document that was made of one.
enum class Of { Chart, Data };

struct Separated {
  // The document's text without its rows.
  std::string rest;
  // The rows of all sources, one behind the other, as the writer of documents would print them.
  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;
  // For each `embeddedSource`, in document order, where its rows end in `bytes`. They are the last
  // that stands in the source.
  std::vector<std::size_t> ends;
  // Where rows were taken out of the text.
  struct Cut {
    std::size_t start;
    std::size_t end;
  };
  std::vector<Cut> cuts;
};

// True when rows were taken out. When `rest` then is a document without errors, read with the
// grammars of today's charts and with their namespace as the default, so was the text:
// where there were rows any number of them is valid. Not so, and nothing is taken out, where
// anything is out of the ordinary: a document type, another version or encoding of XML, a second
// mention of schemas, a source with more attributes than its id, anything but blanks behind the
// first row of a source, characters that XML refuses.
bool separate(std::string_view text, Separated& result, Of of = Of::Chart);

// Gives problems of `rest`, in the order of their places, the places that they have in the text.
void placeInText(std::string_view text, const Separated& separated,
                 std::vector<ChartProblem>& problems);

// Off, `separate` refuses every text; for comparisons.
void turn(bool on);

}  // namespace rowseparator

#endif
