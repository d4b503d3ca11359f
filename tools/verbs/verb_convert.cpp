#include <vector>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "templates.h"

const char convertHelp[] =
    R"(usage: chartxml convert [-o NEW] OLD

Writes a template from before there were commands in today's language. What of it no command
says is told on standard error, with the place where its tag starts: elements with all that is
in them, and attributes. The exit code is 1 when nothing of it could be taken.

  -o, --output NEW  write to a file in place of standard output
  -h, --help        show this

'chartxml apply' and 'chartxml explain' convert such templates themselves.

Examples:
  chartxml convert house.sgt | less
  chartxml convert -o house.xml house.sgt
)";

namespace {

void addElements(const DocumentNode& node, std::vector<const DocumentNode*>& elements) {
  std::vector<const DocumentNode*> open = {&node};
  while (!open.empty()) {
    const DocumentNode* next = open.back();
    open.pop_back();
    if (!next->isText()) elements.push_back(next);
    for (auto child = next->children.rbegin(); child != next->children.rend(); ++child) {
      open.push_back(&*child);
    }
  }
}

}  // namespace

int runConvert(int argc, char** argv) {
  std::string output = "-";
  const auto operands = readOptions(argc, argv, {{{"output", 'o', nullptr, &output}}});
  if (operands.empty()) throw UsageError("an OLD template is missing");
  if (operands.size() > 1) throw UsageError("one template at a time");
  const std::string& file = operands[0];
  const OlderTemplate older = readOlderTemplate(file);
  std::vector<const DocumentNode*> elements;
  addElements(older.root, elements);
  for (const auto& [position, attribute] : older.conversion.leftOut) {
    const DocumentNode& node = *elements.at(position);
    const std::string what = '\'' + node.name + "' is left out";
    complain(placed(node, file,
                    attribute.empty() ? "element " + what
                                      : "attribute '" + attribute.toUTF8() + "' of " + what));
  }
  if (older.conversion.commandCount == 0) throw Failure(file + ": nothing in it is converted");
  PendingFile(output, older.conversion.text + '\n').commit();
  return exitDone;
}
