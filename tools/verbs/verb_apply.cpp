#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <set>

#include <chartxml/chartxml.h>

#include "chartfiles.h"
#include "commandline.h"
#include "commandschema.h"
#include "files.h"
#include "problems.h"
#include "progress.h"
#include "templates.h"

namespace fs = std::filesystem;

const char applyHelp[] =
    "usage: chartxml apply [-q | -v] [-o OUT] CHART TEMPLATE...\n"
    "       chartxml apply [-q | -v] [-o OUT] -t TEMPLATE [-t TEMPLATE]... CHART\n"
    "       chartxml apply [-q | -v] --out-dir DIR FOLDER TEMPLATE...\n"
    "       chartxml apply [-q | -v] --out-dir DIR -t TEMPLATE [-t TEMPLATE]... CHART...\n"
    "\n"
    "Applies templates to charts, one after the other, and writes the charts with their data. A\n"
    "CHART may be a folder when --out-dir is given: its files *.xml and *.z are meant, in the "
    "order\n"
    "of their names, but for the templates. A command that changes nothing in a chart is told, "
    "and\n"
    "why where that is known; so is what a command asks for and can't have, such as a category "
    "that\n"
    "the chart doesn't have. Both are no failures: a template may be for many kinds of charts. A\n"
    "command that doesn't exist or that fails is passed over, and the exit code is 1; so it is "
    "when\n"
    "a chart is no longer valid after a template. 'chartxml explain' tells what a template has "
    "wrong\n"
    "whatever the chart.\n"
    "\n"
    "  -t, --template TEMPLATE  apply this one; all operands are charts then\n"
    "  -o, --output OUT         write to a file in place of standard output\n"
    "      --out-dir DIR        write each chart to a file of its name, .xml for .z, in a folder,\n"
    "                           which is made if there is none; go on past bad charts, and tell "
    "them\n"
    "                           at the end\n"
    "  -q, --quiet              tell failures alone\n"
    "  -v, --verbose            tell what each command changed, added and removed, too: elements "
    "of\n"
    "                           the chart by their tags, with their identifiers or else how many\n"
    "  -h, --help               show this\n"
    "\n"
    "Examples:\n"
    "  chartxml apply sales.xml house.xml > styled.xml\n"
    "  chartxml apply -v -o styled.xml sales.xml house.xml dates.xml\n"
    "  chartxml apply --out-dir styled -t house.xml charts/\n"
    "  chartxml separate --chart - --data /dev/null sales.xml | chartxml apply - house.xml\n";

namespace {

struct Job {
  std::vector<std::string> charts;  // folders among them
  std::vector<std::string> templates;
  std::string output;     // empty for a folder
  std::string outFolder;  // empty for one output
  bool isQuiet = false;
  bool isVerbose = false;
};

Job readJob(int argc, char** argv) {
  Job job;
  std::vector<std::string> operands =
      readOptions(argc, argv,
                  {{{"template", 't', nullptr, nullptr, &job.templates},
                    {"output", 'o', nullptr, &job.output},
                    {"out-dir", '\0', nullptr, &job.outFolder},
                    {"quiet", 'q', &job.isQuiet, nullptr},
                    {"verbose", 'v', &job.isVerbose, nullptr}}});
  if (job.isQuiet && job.isVerbose) throw UsageError("--quiet and --verbose don't go together");
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

// What is told of charts, in order.
class Report {
 public:
  explicit Report(const Job& job) : job_(job) {}

  void addFailure(const std::string& message) {
    messages_.push_back(message);
    ++failures_;
  }
  // `where` is the chart, and the command's place in its template.
  void addOutcome(const std::string& where, const CommandOutcome& outcome) {
    if (job_.isQuiet) return;
    const std::string command = where + '\'' + outcome.name + '\'';
    if (outcome.changes.empty()) {
      std::vector<std::string> reasons = outcome.notes;
      reasons.insert(reasons.end(), outcome.reasons.begin(), outcome.reasons.end());
      messages_.push_back(command + " changed nothing" + (reasons.empty() ? "" : ": ") +
                          escaped(joined(reasons)));
      return;
    }
    for (const std::string& note : outcome.notes) {
      messages_.push_back(command + ": " + escaped(note));
    }
    if (!job_.isVerbose) return;
    std::vector<std::string> kinds;
    addKind(ElementChange::Kind::changed, "changed ", outcome, kinds);
    addKind(ElementChange::Kind::added, "added ", outcome, kinds);
    addKind(ElementChange::Kind::removed, "removed ", outcome, kinds);
    messages_.push_back(command + ' ' + joined(kinds));
  }

  std::size_t failures() const { return failures_; }
  void write() const {
    for (const std::string& message : messages_) complain(message);
  }

 private:
  static std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) result += (result.empty() ? "" : "; ") + text;
    return result;
  }

  // "changed style a b, axis (2)"
  static void addKind(ElementChange::Kind kind, const char* verb, const CommandOutcome& outcome,
                      std::vector<std::string>& kinds) {
    std::vector<std::string> tags;  // in the order of their first changes
    std::map<std::string, std::pair<std::string, std::size_t>> ofTags;  // ids, and how many without
    for (const ElementChange& change : outcome.changes) {
      if (change.kind != kind) continue;
      if (!ofTags.contains(change.tag)) tags.push_back(change.tag);
      auto& [ids, others] = ofTags[change.tag];
      if (change.id.empty()) ++others;
      if (!change.id.empty()) ids += ' ' + word(change.id);
    }
    std::string text;
    for (const std::string& tag : tags) {
      const auto& [ids, others] = ofTags[tag];
      text += (text.empty() ? verb : ", ") + tag + ids;
      if (others > 1 || (others == 1 && !ids.empty())) text += " (" + std::to_string(others) + ')';
    }
    if (!text.empty()) kinds.push_back(text);
  }

  const Job& job_;
  std::vector<std::string> messages_;
  std::size_t failures_ = 0;
};

// Applies the templates of a run to one chart after the other.
class Run {
 public:
  Run(const std::vector<Template>& templates, Report& report)
      : templates_(templates), report_(report) {}

  // The chart of a file with its data and the templates' effects; empty when a template couldn't go
  // on to its end. Throws a Failure when there is no chart.
  std::string apply(const std::string& name) {
    std::string text = readDocument(name);
    ChartTransformer transformer(text);
    requireChart(transformer, name, text);
    std::string().swap(text);  // an assignment would keep its memory
    for (const Template& each : templates_) {
      if (!apply(each, transformer, name)) return {};
    }
    std::string result = transformer.getEntireXML(ChartBase::_utf8);
    if (transformer.isOutOfMemory()) throw NotEnoughMemory(name);
    if (result.empty() || !transformer.isDataWhole()) throw Failure(name + ": can't be written");
    result += '\n';
    return result;
  }

 private:
  // What charts have wrong, without the places: the text is one that nobody sees.
  using Messages = std::set<std::string>;

  bool apply(const Template& source, ChartTransformer& transformer, const std::string& name) {
    const std::string before = transformer.getXML(ChartBase::_utf8);
    std::vector<CommandOutcome> outcomes;
    const bool isApplied = transformer.applyTemplate(source.text, outcomes);
    bool isChanged = false;
    for (const CommandOutcome& outcome : outcomes) {
      isChanged = isChanged || !outcome.changes.empty();
      const DocumentNode& command = commandAt(source, outcome.position);
      // Those that don't exist have been told once for all charts.
      if (sentenceOf(command.name).empty()) continue;
      if (outcome.isDone) {
        report_.addOutcome(name + ": " + placed(command, source.file, ""), outcome);
      } else {
        report_.addFailure(name + ": " +
                           placed(command, source.file, "command '" + command.name + "' failed"));
      }
    }
    if (!isApplied) {
      report_.addFailure(name + ": " + source.file + ": can't be applied to its end");
      return false;
    }
    if (isChanged) tellNewProblems(source, before, transformer, name);
    return true;
  }

  void tellNewProblems(const Template& source, const std::string& before,
                       ChartTransformer& transformer, const std::string& name) {
    const Messages after = problemsOf(transformer, transformer.getXML(ChartBase::_utf8));
    if (after.empty()) return;
    const Messages known = problemsOf(transformer, before);
    for (const std::string& message : after) {
      if (known.contains(message)) continue;
      report_.addFailure(name + ": " + source.file + ": leaves no valid chart: " + message);
    }
  }

  static Messages problemsOf(ChartBase& base, const std::string& chart) {
    Messages messages;
    for (const ChartProblem& problem : base.findProblems(chart)) messages.insert(problem.message);
    return messages;
  }

  const std::vector<Template>& templates_;
  Report& report_;
};

// A run over many charts.
class Batch {
 public:
  Batch(const Job& job, const std::vector<Template>& templates)
      : job_(job), report_(job), run_(templates, report_) {}

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
    report_.write();
    if (bad_) {
      complain(std::to_string(bad_) + " of " + std::to_string(charts.size()) + " charts failed");
    }
    return report_.failures() == 0;
  }

 private:
  void collect(const std::string& path, std::vector<std::string>& charts) {
    try {
      const std::vector<std::string> found = chartsAt(path, job_.templates);
      charts.insert(charts.end(), found.begin(), found.end());
    } catch (const Failure& e) {
      report_.addFailure(e.what());
    } catch (const fs::filesystem_error& e) {
      report_.addFailure(path + ": " + e.code().message());
    }
  }

  void process(const std::string& chart) {
    const std::size_t before = report_.failures();
    try {
      std::string text = run_.apply(chart);
      if (!text.empty()) PendingFile(outputOf(chart), std::move(text)).commit();
    } catch (const Failure& e) {
      report_.addFailure(e.what());
    } catch (const std::bad_alloc&) {
      report_.addFailure(chart + ": not enough memory");
    } catch (const std::exception& e) {
      report_.addFailure(chart + ": " + e.what());
    } catch (...) {
      // The parser's exceptions have no common base.
      report_.addFailure(chart + ": unexpected failure");
    }
    if (report_.failures() > before) ++bad_;
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
  Report report_;
  Run run_;
  std::set<std::string> outputs_;
  std::size_t bad_ = 0;  // charts
};

bool runSingle(const Job& job, const std::vector<Template>& templates) {
  Report report(job);
  std::string text = Run(templates, report).apply(job.charts[0]);
  report.write();
  if (!text.empty()) PendingFile(job.output, std::move(text)).commit();
  return report.failures() == 0;
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
