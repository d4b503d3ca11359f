#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

const char validateHelp[] =
    R"(usage: chartxml validate FILE...

Writes a line FILE:LINE:COLUMN: MESSAGE for every problem of charts and data documents: text
that is no XML, elements, attributes and values that the schemas don't know, identifiers that
two elements have, and links to elements that there are none of. A document that is valid but
no chart, data document, template or tree is one, too. A misspelt name is told once, with the
one that seems to be meant. Places are behind the tag that has the problem. The number of
problems goes to standard error; at most 10000 are told of a document.

  -h, --help  show this

Examples:
  chartxml validate sales.xml
  chartxml validate archive/*.xml | grep "'style'"
  vim -q <(chartxml validate sales.xml)
)";

int runValidate(int argc, char** argv) {
  const auto files = readOptions(argc, argv, {});
  ChartBase base;
  std::size_t count = 0;
  const int result = forEachFile(files, [&](const std::string& name) {
    std::string lines;
    for (const ChartProblem& problem : base.findProblems(readDocument(name))) {
      lines += placed(problem, name) + '\n';
      ++count;
    }
    writeOutput(lines);
  });
  if (count == 0) return result;
  complain(std::to_string(count) + (count == 1 ? " problem" : " problems"));
  return exitProblems;
}
