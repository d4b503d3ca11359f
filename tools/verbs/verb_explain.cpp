#include "commandline.h"
#include "explanation.h"
#include "files.h"
#include "templates.h"

const char explainHelp[] =
    "usage: chartxml explain [--quiet] TEMPLATE...\n"
    "\n"
    "Writes what each command of a template asks for, with what the schema tells of its parts and\n"
    "attributes, and behind that a line FILE:LINE:COLUMN: MESSAGE for everything that does "
    "nothing,\n"
    "or something else than it seems to: elements that are no commands; elements and attributes "
    "that\n"
    "a command doesn't read, at all or beside others; commands that miss what they need; values "
    "that\n"
    "don't mean anything. Of attributes that are written as they stand, those are told that "
    "charts\n"
    "don't have there. For a misspelt word the right one is suggested. Places are where tags "
    "start.\n"
    "What is called passed over may go: with any chart, the template does the same without it.\n"
    "\n"
    "  -q, --quiet  write only these lines\n"
    "  -h, --help   show this\n"
    "\n"
    "Examples:\n"
    "  chartxml explain house.xml | less\n"
    "  chartxml explain --quiet templates/*.xml && echo fine\n"
    "  vim -q <(chartxml explain --quiet house.xml)\n";

int runExplain(int argc, char** argv) {
  bool isQuiet = false;
  const auto files = readOptions(argc, argv, {{{"quiet", 'q', &isQuiet, nullptr}}});
  const CommandSchema schema;
  const ChartElements charts = readChartElements();
  std::size_t count = 0;
  const int result = forEachFile(files, [&](const std::string& name) {
    const Template source = readTemplate(name);
    const Explanation explanation(schema, charts, source.root);
    if (!isQuiet) writeOutput("template " + escaped(name) + '\n' + explanation.listing());
    std::string problems;
    for (const Finding& each : explanation.findings()) {
      problems += placed(*each.node, source.file, each.message) + '\n';
    }
    writeOutput(problems);
    count += explanation.findings().size();
  });
  if (count == 0) return result;
  complain(std::to_string(count) + (count == 1 ? " problem" : " problems"));
  return exitProblems;
}
