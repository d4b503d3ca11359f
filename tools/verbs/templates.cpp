#include "templates.h"

#include <optional>
#include <utility>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

namespace {

constexpr const char* noTemplate =
    ": is not a template: it names no schema grafo-template-VERSION.xsd";

[[noreturn]] void failAtProblems(const std::string& file, const std::string& text) {
  std::string last = file + noTemplate;
  bool isFirst = true;
  for (const ChartProblem& problem : ChartBase().findProblems(text)) {
    if (!problem.isRefused) continue;
    if (!isFirst) complain(last);
    last = placed(problem, file);
    isFirst = false;
  }
  throw Failure(last);
}

// An older template need be no more than well-formed.
DocumentNode nodesOf(const std::string& file, const std::string& text) {
  ChartProblem problem;
  std::optional<DocumentNode> root =
      DocumentNode::read(text, !ChartTemplate::isOlder(text), &problem);
  if (!root) throw Failure(placed(problem, file));
  return *std::move(root);
}

OlderTemplate convertOlder(const std::string& file, const std::string& text) {
  try {
    std::vector<ChartProblem> problems;
    std::optional<ChartTemplate::Conversion> conversion =
        ChartTemplate::convertOlder(text, &problems);
    if (!conversion) failAtProblem(problems, file, "a template");
    return {nodesOf(file, text), *std::move(conversion)};
  } catch (const ChartException& e) {
    throw Failure(file + ": " + e.what());
  }
}

// Today's charts are older than no template.
bool isChart(const std::string& text) {
  return text.find("/grafo-2.9.xsd") != text.npos;
}

Template readConverted(const std::string& file, const std::string& text) {
  if (isChart(text)) failAtProblems(file, text);
  std::string converted = convertOlder(file, text).conversion.text;
  DocumentNode root = nodesOf(file, converted);
  if (root.children.empty()) {
    throw Failure(file + noTemplate + ", and an older one would hold what can be converted");
  }
  return {file + " (converted)", std::move(converted), std::move(root)};
}

}  // namespace

OlderTemplate readOlderTemplate(const std::string& file) {
  const std::string text = readDocument(file);
  if (!ChartTemplate::isOlder(text)) throw Failure(file + ": is no older template");
  if (isChart(text)) throw Failure(file + ": is a chart, not a template");
  return convertOlder(file, text);
}

Template readTemplate(const std::string& file) {
  const std::string text = readDocument(file);
  if (ChartTemplate::isOlder(text)) return readConverted(file, text);
  if (!ChartTemplate::isTemplate(text)) failAtProblems(file, text);
  DocumentNode root = nodesOf(file, text);
  // The schema declares commands and their parts, too, and any of them may be a root.
  if (root.localName() != "template") {
    throw Failure(placed(root, file, "the root is '" + root.name + "', not 'template'"));
  }
  return {file, text, std::move(root)};
}

std::string placed(const DocumentNode& node, const std::string& file, const std::string& message) {
  return placed(ChartProblem{{}, node.line, node.column, message}, file);
}
