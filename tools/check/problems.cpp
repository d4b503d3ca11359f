#include "problems.h"

#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

#include "failure.h"
#include "writtentexts.h"

using namespace xercesc;

namespace {

bool isDataRoot(const DOMElement& root) {
  return XMLString::equals(root.getLocalName(), u"graphSources");
}

}  // namespace

std::string placed(const ChartProblem& problem, const std::string& file) {
  std::string place = (problem.file.empty() ? file : problem.file) + ':';
  if (problem.line) {
    place += std::to_string(problem.line) + ':' + std::to_string(problem.column) + ':';
  }
  return place + ' ' + escaped(problem.message);
}

void failAtProblem(const std::vector<ChartProblem>& problems, const std::string& file,
                   const char* kind) {
  for (const ChartProblem& problem : problems) {
    if (problem.isRefused) throw Failure(placed(problem, file));
  }
  throw Failure(file + (kind ? std::string(": is not ") + kind : std::string(": can't be read")));
}

DOMElement& rootOf(ChartBase& base, const std::string& file, const std::string& text) {
  if (const DOMDocument* document = base.parseDocument(text))
    return *document->getDocumentElement();
  if (base.isOutOfMemory()) throw NotEnoughMemory(file);
  failAtProblem(base.findProblems(text), file, nullptr);
}

void requireChart(ChartTransformer& transformer, const std::string& file, const std::string& text) {
  if (const PlXVisualization* chart = transformer.getVisualization()) {
    requireChart(*chart->getImplementation(), file);
  } else {
    if (transformer.isOutOfMemory()) throw NotEnoughMemory(file);
    failAtProblem(transformer.findProblems(text), file, "a chart");
  }
}

void requireChart(const DOMElement& root, const std::string& file) {
  const XMLCh* name = root.getLocalName();
  if (isDataRoot(root)) throw Failure(file + ": is a data document, not a chart");
  if (!XMLString::equals(name, PlXVisualization::_UTF_visualization) &&
      !XMLString::equals(name, PlXGraph::_UTF_graph)) {
    throw Failure(file + ": is not a chart");
  }
}

void requireData(const DOMElement& root, const std::string& file) {
  if (!isDataRoot(root)) throw Failure(file + ": is not a data document");
}
