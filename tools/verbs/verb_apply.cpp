#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "commandschema.h"
#include "files.h"
#include "problems.h"
#include "progress.h"
#include "templates.h"

namespace fs = std::filesystem;

const char applyHelp[] =
    "usage: chartxml apply [-o OUT] CHART TEMPLATE...\n"
    "       chartxml apply [-o OUT] -t TEMPLATE [-t TEMPLATE]... CHART\n"
    "       chartxml apply --out-dir DIR FOLDER TEMPLATE...\n"
    "       chartxml apply --out-dir DIR -t TEMPLATE [-t TEMPLATE]... CHART...\n"
    "\n"
    "Applies templates to charts, one after the other, and writes the charts with their data. A\n"
    "CHART may be a folder when --out-dir is given: its files *.xml and *.z are meant, in the "
    "order\n"
    "of their names, but for the templates. A command that doesn't exist or that fails is passed\n"
    "over; it is told, and the exit code is 1. So it is told when a chart is no longer valid after "
    "a\n"
    "template that writes attributes as they stand (setGenericAttributes). 'chartxml explain' "
    "tells\n"
    "what else a template has wrong.\n"
    "\n"
    "  -t, --template TEMPLATE  apply this one; all operands are charts then\n"
    "  -o, --output OUT         write to a file in place of standard output\n"
    "      --out-dir DIR        write each chart to a file of its name, .xml for .z, in a folder,\n"
    "                           which is made if there is none; go on past bad charts, and tell "
    "them\n"
    "                           at the end\n"
    "  -h, --help               show this\n"
    "\n"
    "Examples:\n"
    "  chartxml apply sales.xml house.xml > styled.xml\n"
    "  chartxml apply -o styled.xml sales.xml house.xml dates.xml\n"
    "  chartxml apply --out-dir styled -t house.xml charts/\n"
    "  chartxml separate --chart - --data /dev/null sales.xml | chartxml apply - house.xml\n";

namespace {

bool isFolder(const std::string& path) {
  std::error_code none;
  return fs::is_directory(path, none);
}

struct Job {
  std::vector<std::string> charts;  // folders among them
  std::vector<std::string> templates;
  std::string output;     // empty for a folder
  std::string outFolder;  // empty for one output
};

Job readJob(int argc, char** argv) {
  Job job;
  std::vector<std::string> operands =
      readOptions(argc, argv,
                  {{{"template", 't', nullptr, nullptr, &job.templates},
                    {"output", 'o', nullptr, &job.output},
                    {"out-dir", '\0', nullptr, &job.outFolder}}});
  if (operands.empty()) throw UsageError("a CHART is missing");
  if (job.templates.empty()) {
    job.templates.assign(operands.begin() + 1, operands.end());
    operands.resize(1);
  }
  if (job.templates.empty()) throw UsageError("a TEMPLATE is missing");
  job.charts = std::move(operands);
  if (job.outFolder.empty()) {
    if (job.charts.size() > 1) throw UsageError("several charts need --out-dir");
    if (isFolder(job.charts[0])) throw UsageError("a folder of charts needs --out-dir");
    if (job.output.empty()) job.output = "-";
  } else {
    if (!job.output.empty()) throw UsageError("--output and --out-dir don't go together");
    if (std::ranges::count(job.charts, "-")) {
      throw UsageError("standard input has no name for --out-dir");
    }
  }
  return job;
}

// ---- templates

// Answers whether all commands exist; writes those that don't.
bool tellUnknownCommands(const std::vector<Template>& templates) {
  std::optional<CommandSchema> schema;  // costs more to read than a chart
  bool areKnown = true;
  for (const Template& each : templates) {
    for (const DocumentNode& node : each.root.children) {
      if (node.isText() || !sentenceOf(node.name).empty()) continue;
      if (!schema) schema.emplace();
      complain(placed(node, each.file, schema->problemOfCommand(node.name)));
      areKnown = false;
    }
  }
  return areKnown;
}

// The element at a 0-based position below the root.
const DocumentNode& commandAt(const Template& source, std::size_t position) {
  for (const DocumentNode& node : source.root.children) {
    if (!node.isText() && position-- == 0) return node;
  }
  return source.root;
}

// ---- charts

// What charts have wrong, without the places: the text is one that nobody sees.
using Messages = std::set<std::string>;

Messages problemsOf(ChartTransformer& chart) {
  Messages messages;
  for (const ChartProblem& problem : chart.findProblems(chart.getXML(ChartBase::_utf8))) {
    messages.insert(problem.message);
  }
  return messages;
}

// True for a template with the one command that writes unchecked.
bool writesUnchecked(const Template& source) {
  return std::ranges::any_of(source.root.children, [](const DocumentNode& node) {
    return node.name == "setGenericAttributes";
  });
}

// The chart of a file with its data and the templates' effects; empty when a template couldn't go
// on to its end. What failed is added to `failures`. Throws a Failure when there is no chart.
std::string apply(const std::vector<Template>& templates, const std::string& name,
                  std::vector<std::string>& failures) {
  std::string text = readDocument(name);
  ChartTransformer transformer(text);
  requireChart(transformer, name, text);
  text = {};  // it may be long
  for (const Template& each : templates) {
    const bool isUnchecked = writesUnchecked(each);
    const Messages before = isUnchecked ? problemsOf(transformer) : Messages();
    std::vector<std::size_t> passedOver;
    const bool isApplied = transformer.applyTemplate(each.text, passedOver);
    for (const std::size_t position : passedOver) {
      const DocumentNode& command = commandAt(each, position);
      // Those that don't exist have been told once for all charts.
      if (sentenceOf(command.name).empty()) continue;
      failures.push_back(name + ": " +
                         placed(command, each.file, "command '" + command.name + "' failed"));
    }
    if (!isApplied) {
      failures.push_back(name + ": " + each.file + ": can't be applied to its end");
      return {};
    }
    if (!isUnchecked) continue;
    for (const std::string& message : problemsOf(transformer)) {
      if (before.contains(message)) continue;
      failures.push_back(name + ": " + each.file + ": leaves no valid chart: " + message);
    }
  }
  std::string result = transformer.getEntireXML(ChartBase::_utf8);
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(name);
  if (result.empty() || !transformer.isDataWhole()) throw Failure(name + ": can't be written");
  result += '\n';
  return result;
}

// The charts of a folder, or the one file.
std::vector<std::string> chartsAt(const std::string& path,
                                  const std::vector<std::string>& templates) {
  if (!isFolder(path)) return {path};
  std::vector<std::string> charts;
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
    const fs::path extension = entry.path().extension();
    if ((extension != ".xml" && extension != ".z") || entry.is_directory()) continue;
    const bool isTemplate = std::ranges::any_of(templates, [&](const std::string& name) {
      std::error_code none;
      return fs::equivalent(entry.path(), name, none);
    });
    if (!isTemplate) charts.push_back(entry.path());
  }
  if (charts.empty()) throw Failure(path + ": holds no charts");
  std::ranges::sort(charts);
  return charts;
}

// A run over many charts.
class Batch {
 public:
  Batch(const Job& job, const std::vector<Template>& templates)
      : job_(job), templates_(templates) {}

  // Answers whether all went well.
  bool run() {
    std::error_code error;
    fs::create_directories(job_.outFolder, error);
    if (error) throw Failure(job_.outFolder + ": " + error.message());
    std::vector<std::string> charts;
    for (const std::string& path : job_.charts) collect(path, charts);
    {
      Progress progress(charts.size());
      for (std::size_t i = 0; i < charts.size(); ++i) {
        progress.show(i);
        process(charts[i]);
      }
    }
    for (const std::string& failure : failures_) complain(failure);
    if (bad_) {
      complain(std::to_string(bad_) + " of " + std::to_string(charts.size()) + " charts failed");
    }
    return failures_.empty();
  }

 private:
  void collect(const std::string& path, std::vector<std::string>& charts) {
    try {
      const std::vector<std::string> found = chartsAt(path, job_.templates);
      charts.insert(charts.end(), found.begin(), found.end());
    } catch (const Failure& e) {
      failures_.push_back(e.what());
    } catch (const fs::filesystem_error& e) {
      failures_.push_back(path + ": " + e.code().message());
    }
  }

  void process(const std::string& chart) {
    const std::size_t before = failures_.size();
    try {
      std::string text = apply(templates_, chart, failures_);
      if (!text.empty()) PendingFile(outputOf(chart), std::move(text)).commit();
    } catch (const Failure& e) {
      failures_.push_back(e.what());
    } catch (const std::bad_alloc&) {
      failures_.push_back(chart + ": not enough memory");
    } catch (const std::exception& e) {
      failures_.push_back(chart + ": " + e.what());
    } catch (...) {
      // The parser's exceptions have no common base.
      failures_.push_back(chart + ": unexpected failure");
    }
    if (failures_.size() > before) ++bad_;
  }

  std::string outputOf(const std::string& chart) {
    fs::path name = fs::path(chart).filename();
    if (name.extension() == ".z") name.replace_extension(".xml");
    std::string output = fs::path(job_.outFolder) / name;
    if (!outputs_.insert(output).second) {
      throw Failure(chart + ": " + output + " holds another chart of this run");
    }
    return output;
  }

  const Job& job_;
  const std::vector<Template>& templates_;
  std::set<std::string> outputs_;
  std::vector<std::string> failures_;
  std::size_t bad_ = 0;  // charts
};

bool runSingle(const Job& job, const std::vector<Template>& templates) {
  std::vector<std::string> failures;
  std::string text = apply(templates, job.charts[0], failures);
  for (const std::string& failure : failures) complain(failure);
  if (!text.empty()) PendingFile(job.output, std::move(text)).commit();
  return failures.empty();
}

}  // namespace

int runApply(int argc, char** argv) {
  const Job job = readJob(argc, argv);
  std::vector<Template> templates;
  const int isRead = forEachFile(
      job.templates, [&](const std::string& name) { templates.push_back(readTemplate(name)); });
  if (isRead != exitDone) return isRead;
  const bool areKnown = tellUnknownCommands(templates);
  const bool isDone =
      job.outFolder.empty() ? runSingle(job, templates) : Batch(job, templates).run();
  return areKnown && isDone ? exitDone : exitProblems;
}
