#include <algorithm>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "csv.h"
#include "files.h"
#include "problems.h"

using namespace xercesc;

const char mergeHelp[] =
    R"(usage: chartxml merge [-o OUT] CHART DATA
       chartxml merge [--csv] [--source ID] [-o OUT] CHART TABLE.csv...

Writes the chart with its data: with the sources of a data document in the places of its
placeholders, each of which must have its source; or with tables, the names of the variables in
their first lines. A table takes the place of the chart's source of its name, be that a placeholder
or data; where the chart has but one source, a table takes that one's place whatever its name. The
chart's variables find their columns by their sourceName, and each must have one.

      --csv         each TABLE is one, as one named .csv is anyway
  -s, --source ID   the source whose place the table takes
  -o, --output OUT  write to a file in place of standard output
  -h, --help        show this

Examples:
  chartxml merge sales.chart.xml sales.data.xml > sales.xml
  chartxml merge -o sales.xml sales.chart.z sales.data.z
  chartxml merge old.xml new.csv | chartxml draw --svg -o new.svg -
)";

namespace {

std::string compressed(const std::string& text) {
  std::string result;
  zlib1211tavo::compressString(text, result);
  return result;
}

void checkChart(const std::string& name, const std::string& text) {
  ChartBase base;
  requireChart(rootOf(base, name, text), name);
}

// Why the library can't put them together as a whole.
[[noreturn]] void failAtPair(const std::string& chartName, const std::string& chart,
                             const std::string& dataName, const std::string& data) {
  ChartBase base;
  const DOMElement& chartRoot = rootOf(base, chartName, chart);
  const DOMElement& dataRoot = rootOf(base, dataName, data);
  requireData(dataRoot, dataName);
  std::set<ChartString> sources;
  for (const DOMElement* source = dataRoot.getFirstElementChild(); source;
       source = source->getNextElementSibling()) {
    sources.insert(source->getAttribute(PlXUni::_id));
  }
  for (const DOMElement* child = chartRoot.getFirstElementChild(); child;
       child = child->getNextElementSibling()) {
    const ChartString id = child->getAttribute(PlXUni::_id);
    if (XMLString::equals(child->getLocalName(), PlXUserSource::_UTF_userSource) &&
        !sources.contains(id)) {
      throw Failure(dataName + ": has no source '" + id.toUTF8() + "', which " + chartName +
                    " has a placeholder for");
    }
  }
  throw Failure(chartName + ": can't be merged");
}

// ---- tables

struct Job {
  std::string output = "-";
  std::string source;
  bool isCsv = false;
  std::string chart;
  std::vector<std::string> data;  // a document, or tables
  bool isTables = false;
};

Job readJob(int argc, char** argv) {
  Job job;
  std::vector<std::string> files = readOptions(argc, argv,
                                               {{{"output", 'o', nullptr, &job.output},
                                                 {"source", 's', nullptr, &job.source},
                                                 {"csv", '\0', &job.isCsv, nullptr}}});
  if (files.size() < 2) throw UsageError("a CHART and its DATA are to be given");
  job.chart = files[0];
  job.data.assign(files.begin() + 1, files.end());
  const auto tables = static_cast<std::size_t>(std::ranges::count_if(
      job.data, [&](const std::string& file) { return job.isCsv || isTable(file); }));
  job.isTables = tables == job.data.size();
  if (job.data.size() > 1 && !job.isTables) {
    throw UsageError("one DATA is to be given, or several tables");
  }
  if (!job.source.empty() && (!job.isTables || tables > 1)) {
    throw UsageError("--source names the source of one table");
  }
  return job;
}

std::string listed(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "'" : ", '") + escaped(name) + '\'';
  }
  return list.empty() ? "none" : list;
}

// A chart whose sources tables take the places of.
class Target {
 public:
  Target(const std::string& file, const std::string& text)
      : file_(file), root_(rootOf(base_, file, text)) {
    requireChart(root_, file);
    for (DOMElement* child = root_.getFirstElementChild(); child;
         child = child->getNextElementSibling()) {
      const XMLCh* tag = child->getLocalName();
      if (XMLString::equals(tag, PlXEmbeddedSource::_UTF_embeddedSource) ||
          XMLString::equals(tag, PlXUserSource::_UTF_userSource)) {
        sources_.push_back(child);
      }
    }
  }

  // The identifier of the source whose place the table takes. `wanted` may be empty.
  std::string sourceFor(const std::string& table, const std::string& wanted, bool isOnlyTable) {
    std::string name = wanted.empty() ? sourceNameOf(table) : wanted;
    std::vector<std::string> names;
    for (const DOMElement* source : sources_) names.push_back(idOf(*source));
    if (std::ranges::count(names, name) > 0) return name;
    if (wanted.empty() && isOnlyTable && names.size() == 1) return names[0];
    throw Failure(table + ": " + file_ + " has no source '" + escaped(name) + "', but " +
                  listed(names) + (wanted.empty() ? "; --source chooses one" : ""));
  }

  // Throws a Failure when a variable finds no column.
  void requireColumns(const std::string& table, const std::string& source,
                      const std::vector<std::string>& columns) {
    for (const DOMElement* child = root_.getFirstElementChild(); child;
         child = child->getNextElementSibling()) {
      if (ChartString(child->getAttribute(u"source")).toUTF8() != source) continue;
      const std::string name = ChartString(child->getAttribute(u"sourceName")).toUTF8();
      if (name.empty() || std::ranges::count(columns, name) > 0) continue;
      throw Failure(table + ": has no column '" + escaped(name) + "', which variable '" +
                    escaped(idOf(*child)) + "' of " + file_ + " is read from, but " +
                    listed(columns) + misspelling::suggestion(name, columns));
    }
  }

  void leavePlaceholder(const std::string& source) {
    for (DOMElement*& each : sources_) {
      if (idOf(*each) != source || XMLString::equals(each->getLocalName(), placeholder)) continue;
      DOMElement* left =
          root_.getOwnerDocument()->createElementNS(root_.getNamespaceURI(), placeholder);
      left->setAttribute(PlXUni::_id, each->getAttribute(PlXUni::_id));
      root_.replaceChild(left, each)->release();
      each = left;
    }
  }

  std::string text() const {
    std::ostringstream out;
    out.exceptions(std::ios::badbit);  // for lack of memory
    ChartPrinter().Print(root_.getOwnerDocument(), out);
    return std::move(out).str();
  }

 private:
  static constexpr const XMLCh* placeholder = PlXUserSource::_UTF_userSource;

  static std::string idOf(const DOMElement& element) {
    return ChartString(element.getAttribute(PlXUni::_id)).toUTF8();
  }

  const std::string& file_;
  ChartBase base_;
  DOMElement& root_;
  std::vector<DOMElement*> sources_;
};

// Reads the tables, and leaves placeholders for them in the chart; the data document of both.
std::string dataOfTables(const Job& job, std::string& chart) {
  Target target(job.chart, chart);
  VarDataProcessor store;
  for (const std::string& table : job.data) {
    const std::string source = target.sourceFor(table, job.source, job.data.size() == 1);
    requireSourceName(table, source);
    if (store.GetCapacity(source) > 0) {
      throw Failure(table + ": another table is named '" + escaped(source) + "' as well");
    }
    readCsv(table, readFile(table), source, store);
    std::vector<std::string> columns;
    store.GetVariableNames(source, columns);
    for (const std::string& column : columns) {
      if (column.find(';') == column.npos) continue;
      throw Failure(table + ": no chart has a variable '" + escaped(column) +
                    "', since ';' separates names");
    }
    target.requireColumns(table, source, columns);
    target.leavePlaceholder(source);
  }
  chart = target.text();
  std::string data;
  if (!XmlDataHandler::WriteStore(store, data)) {
    throw Failure(job.data[0] + ": is too much for a chart");
  }
  return data;
}

}  // namespace

int runMerge(int argc, char** argv) {
  const Job job = readJob(argc, argv);
  std::string chart = readDocument(job.chart);
  const std::string data = job.isTables ? dataOfTables(job, chart) : readDocument(job.data[0]);
  checkChart(job.chart, chart);

  ChartTransformer transformer(compressed(chart), std::string());
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(job.chart);
  transformer.setDataXML(data);
  std::string text = transformer.getEntireXML(ChartBase::_utf8);
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(job.chart);
  if (text.empty() || !transformer.isDataWhole()) {
    failAtPair(job.chart, chart, job.data[0], data);
  }
  text += '\n';
  PendingFile(job.output, std::move(text)).commit();
  return exitDone;
}
