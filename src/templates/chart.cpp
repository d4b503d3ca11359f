#include "chart.h"

#include <algorithm>
#include <limits>
#include <new>
#include <set>
#include <system_error>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "charttemplate.h"
#include "charttransformer.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxsources.h"
#include "plxuni.h"
#include "vardataprocessor.h"
#include "wholefile.h"
#include "xmldatahandler.h"
#include "zlib1211tavo.h"

using namespace xercesc;

namespace chartxml {

namespace {

// Held to the end of the process. The system frees it faster. Kept where leak checkers see it.
void startLibrary() {
  [[gnu::used]] static const ChartBase* const library = new ChartBase;
}

std::string textOf(const std::string& file, const std::vector<ChartProblem>& problems) {
  const auto first = std::ranges::find_if(problems, &ChartProblem::isRefused);
  if (first == problems.end()) return file;
  std::string text = first->file.empty() ? file : first->file;
  if (!text.empty()) text += ':';
  if (first->line) text += std::to_string(first->line) + ':' + std::to_string(first->column) + ':';
  return text + (text.empty() ? "" : " ") + first->message;
}

[[noreturn]] void fail(const std::string& reason, const std::string& file = {}) {
  throw Error(file, {{{}, 0, 0, reason, true}});
}

// With why the object could not do what it was asked for.
[[noreturn]] void failAt(const ChartBase& base, const std::string& otherwise,
                         const std::string& file = {}) {
  std::vector<ChartProblem> problems = base.getProblems();
  if (std::ranges::none_of(problems, &ChartProblem::isRefused)) {
    problems.push_back({{}, 0, 0, otherwise, true});
  }
  throw Error(file, std::move(problems));
}

std::string readFile(const std::string& path) {
  try {
    return wholefile::read(path);
  } catch (const std::system_error& e) {
    fail(e.code().message(), path);
  }
}

// What came from a file is told by its name.
template <class Work>
auto namedAfter(const std::string& path, Work work) {
  try {
    return work(readFile(path));
  } catch (const Error& e) {
    if (!path.empty() && std::string_view(e.what()).starts_with(path + ": ")) throw;
    throw Error(path, e.problems());
  }
}

// The text itself unless it is compressed.
const std::string& inflated(const std::string& text, std::string& room) {
  // No document starts with this byte, and all compressed texts do.
  if (!text.starts_with('x')) return text;
  if (!zlib1211tavo::decompressString(room, text)) fail("is no whole compressed text");
  return room;
}

bool isChart(const DOMElement& root) {
  const XMLCh* name = root.getLocalName();
  return XMLString::equals(name, PlXVisualization::_UTF_visualization) ||
         XMLString::equals(name, PlXGraph::_UTF_graph);
}

// The ids of the sources of a data document.
std::set<ChartString> sourcesOf(const std::string& document) {
  ChartBase base;
  const DOMDocument* parsed = base.parseDocument(document);
  if (!parsed) failAt(base, "the data can't be read");
  const DOMElement& root = *parsed->getDocumentElement();
  if (!XMLString::equals(root.getLocalName(), u"graphSources")) fail("is no data document");
  std::set<ChartString> ids;
  for (const DOMElement* source = root.getFirstElementChild(); source;
       source = source->getNextElementSibling()) {
    ids.insert(source->getAttribute(PlXUni::_id));
  }
  return ids;
}

}  // namespace

Error::Error(const std::string& file, std::vector<ChartProblem> problems)
    : std::runtime_error(textOf(file, problems)), problems_(std::move(problems)) {}

Error::~Error() = default;

std::string toUtf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

std::vector<ChartProblem> problemsOf(const std::string& text) {
  startLibrary();
  std::string room;
  return ChartBase().findProblems(inflated(text, room));
}

Template Template::parse(std::string text) {
  startLibrary();
  std::string room;
  if (&inflated(text, room) == &room) text = std::move(room);
  std::vector<ChartProblem> problems;
  if (ChartTemplate::isTemplate(text, &problems)) return Template(std::move(text));
  throw Error({}, std::move(problems));
}

Template Template::read(const std::string& path) {
  return namedAfter(path, [](std::string text) { return parse(std::move(text)); });
}

Chart::Chart(std::unique_ptr<ChartTransformer> transformer)
    : transformer_(std::move(transformer)) {}
Chart::Chart(Chart&&) noexcept = default;
Chart& Chart::operator=(Chart&&) noexcept = default;
Chart::~Chart() = default;

Chart Chart::parse(const std::string& text) {
  startLibrary();
  std::string room;
  auto transformer = std::make_unique<ChartTransformer>(inflated(text, room));
  const PlXVisualization* chart = transformer->getVisualization();
  if (!chart) failAt(*transformer, "is no chart");
  const DOMElement& root = *chart->getImplementation();
  if (!isChart(root)) fail("'" + toUtf8(root.getNodeName()) + "' is the root of no chart");
  return Chart(std::move(transformer));
}

Chart Chart::read(const std::string& path) {
  return namedAfter(path, [](const std::string& text) { return parse(text); });
}

std::vector<ChartProblem> Chart::apply(const Template& commands) {
  if (!transformer_->applyTemplate(commands.text())) {
    failAt(*transformer_, "the template can't be applied to its end");
  }
  return transformer_->getProblems();
}

PlXVisualization& Chart::visualization() {
  return *transformer_->getVisualization();
}

const PlXVisualization& Chart::visualization() const {
  return *transformer_->getVisualization();
}

std::string Chart::text() const {
  std::string text = transformer_->getEntireXML(ChartBase::_utf8);
  if (!text.empty() && transformer_->isDataWhole()) return text;
  fail(transformer_->isOutOfMemory() ? "there is not enough memory"
                                     : "the chart can't be put together with its data");
}

std::string Chart::textWithoutData() const {
  std::string text = transformer_->getXML(ChartBase::_utf8);
  if (text.empty()) fail("there is not enough memory");
  return text;
}

void Chart::write(const std::string& path) const {
  const std::string text = this->text() + '\n';
  try {
    wholefile::write(path, text);
  } catch (const std::system_error& e) {
    fail(e.code().message(), path);
  }
}

std::string Chart::data() const {
  std::string text = transformer_->getDataXML();
  if (!text.empty() || transformer_->isDataWhole()) return text;
  fail(transformer_->isOutOfMemory() ? "there is not enough memory" : "the data can't be read");
}

std::unique_ptr<VarDataProcessor> Chart::columns() const {
  auto columns = std::make_unique<VarDataProcessor>();
  const std::string text = data();
  XmlDataHandler::Problem problem;
  if (!text.empty() &&
      !XmlDataHandler::ReadStore(text, *columns, XmlDataHandler::Keep::All, &problem)) {
    fail(*problem.reason ? problem.reason : "the data can't be read");
  }
  return columns;
}

Chart::Stream Chart::dataStream() const {
  unsigned size = 0;
  Stream stream;
  stream.bytes.reset(columns()->GetDataStream(size));
  stream.size = size;
  if (!stream.bytes) fail("the data can't be a stream");
  return stream;
}

void Chart::setData(std::string document) {
  const std::set<ChartString> ids = sourcesOf(document);
  std::set<ChartString> missing = ids;
  for (const PlXUserSource* placeholder : visualization().getUserSources()) {
    const ChartString id = placeholder->getId();
    if (!ids.contains(id)) fail("the data has no source '" + id.toUTF8() + "'");
    missing.erase(id);
  }
  transformer_->setDataXML(std::move(document));
  for (const ChartString& id : missing) visualization().addUserSource(id.xc_str());
}

void Chart::setDataStream(const unsigned char* bytes, std::size_t size) {
  std::string document;
  if (size > std::numeric_limits<unsigned>::max() ||
      !XmlDataHandler(bytes, static_cast<unsigned>(size)).GetXmlData(document, false)) {
    fail("is no stream of data");
  }
  setData(std::move(document));
}

void Chart::setColumns(VarDataProcessor& columns) {
  std::string document;
  if (!XmlDataHandler::WriteStore(columns, document)) {
    fail("the columns are too long for a document");
  }
  setData(std::move(document));
}

}  // namespace chartxml
