#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

const char validateHelp[] =
    "usage: chartxml validate FILE...\n"
    "\n"
    "Writes a line FILE:LINE:COLUMN: MESSAGE for every problem of charts and data documents: text\n"
    "that is no XML, elements, attributes and values that the schemas don't know, identifiers "
    "that\n"
    "two elements have, and links to elements that there are none of. A document that is valid "
    "but\n"
    "no chart, data document, template or tree is one, too. A misspelt name is told once, with "
    "the\n"
    "one that seems to be meant. Places are behind the tag that has the problem. The number of\n"
    "problems goes to standard error; at most 10000 are told of a document.\n"
    "\n"
    "  -h, --help  show this\n"
    "\n"
    "Examples:\n"
    "  chartxml validate sales.xml\n"
    "  chartxml validate archive/*.xml | grep \"'style'\"\n"
    "  vim -q <(chartxml validate sales.xml)\n";

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
