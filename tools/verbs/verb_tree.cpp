#include <algorithm>
#include <filesystem>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "problems.h"

const char treeHelp[] =
    R"(usage: chartxml tree [-d DISPLAY] [-t TEMPLATE]... [-s NAME=VALUE]... [--model OUT]
                     [--display OUT] [--compress] [--verbose] MODEL
       chartxml tree --list

Writes a PMML 2.1 tree model and the display document of its viewer. The display document
starts as DISPLAY, or with the default settings; first the templates are merged into it, one
after the other, and then the settings are made. A model that isn't valid is an error.

  -d, --display-from DISPLAY  start with this display document
  -t, --template TEMPLATE     merge this display template; may be given several times
  -s, --set NAME=VALUE        make a setting; may be given several times
  -l, --list                  show the names and values of all settings, and what they mean
      --model OUT             the model's file; of MODEL tree.xml it is tree.model.xml, or
                              tree.model.z with --compress
      --display OUT           the display document's file, in the same way tree.display.xml
  -z, --compress              write the model compressed
  -v, --verbose               tell on standard error what was written
  -h, --help                  show this

Examples:
  chartxml tree customers.xml
  chartxml tree -s zoom=150 -s orientation=left-to-right -s font=Sans customers.xml
  chartxml tree -z -t house.xml --model tree.z --display tree.xml customers.xml
  chartxml tree --model /dev/null --display - -s targetDate=DATE,11,0 customers.xml | less
)";

namespace {

struct Job {
  std::string file;
  std::string displayFrom;  // empty for the default settings
  std::vector<std::string> templates;
  std::vector<std::string> settings;
  std::string model;
  std::string display;
  bool isCompressed = false;
  bool isVerbose = false;
  bool isListed = false;
};

std::string besideFile(const std::string& name, const char* extension) {
  if (name == "-") throw UsageError("standard input needs --model and --display");
  return std::filesystem::path(name).replace_extension(extension);
}

Job readJob(int argc, char** argv) {
  Job job;
  const auto files = readOptions(argc, argv,
                                 {{{"display-from", 'd', nullptr, &job.displayFrom},
                                   {"template", 't', nullptr, nullptr, &job.templates},
                                   {"set", 's', nullptr, nullptr, &job.settings},
                                   {"list", 'l', &job.isListed, nullptr},
                                   {"model", '\0', nullptr, &job.model},
                                   {"display", '\0', nullptr, &job.display},
                                   {"compress", 'z', &job.isCompressed, nullptr},
                                   {"verbose", 'v', &job.isVerbose, nullptr}}});
  if (job.isListed) return job;
  if (files.size() != 1) throw UsageError("one MODEL is to be given");
  job.file = files[0];
  if (job.model.empty()) {
    job.model = besideFile(job.file, job.isCompressed ? ".model.z" : ".model.xml");
  }
  if (job.display.empty()) job.display = besideFile(job.file, ".display.xml");
  if (job.model == job.display) throw UsageError("model and display need a file each");
  return job;
}

// A wrong value is a matter of the command line.
void set(TreeTransformer& tree, const std::string& setting) {
  const std::size_t sign = setting.find('=');
  if (sign == setting.npos) throw UsageError("'" + setting + "' is not of the form NAME=VALUE");
  const std::string name = setting.substr(0, sign);
  const std::string value = setting.substr(sign + 1);
  if (tree.setSetting(name, value)) return;
  for (const TreeTransformer::SettingInfo& info : TreeTransformer::getSettings()) {
    if (info.name != name) continue;
    throw UsageError("'" + escaped(value) + "' is no value of " + name + ": " + info.values);
  }
  throw UsageError("unknown setting '" + escaped(name) + "'");
}

std::string listText() {
  const auto settings = TreeTransformer::getSettings();
  std::size_t width = 0;
  for (const auto& info : settings) {
    width = std::max(width, info.name.size() + 1 + info.values.size());
  }
  std::string text;
  for (const auto& info : settings) {
    const std::string start = info.name + '=' + info.values;
    text += start + std::string(width + 2 - start.size(), ' ') + info.sentence + '\n';
  }
  return text;
}

}  // namespace

int runTree(int argc, char** argv) {
  const Job job = readJob(argc, argv);
  if (job.isListed) {
    writeOutput(listText());
    return exitDone;
  }
  const std::string model = readDocument(job.file);
  const std::string start = job.displayFrom.empty() ? "" : readDocument(job.displayFrom);
  TreeTransformer tree(model, start);
  if (tree.getDisplayData(nullptr).empty()) {
    failAtProblem(tree.findProblems(start), job.displayFrom, "a display document");
  }
  for (const std::string& name : job.templates) {
    const std::string text = readDocument(name);
    if (!tree.applyTemplate(text)) {
      failAtProblem(tree.findProblems(text), name, "a display template");
    }
  }
  for (const std::string& setting : job.settings) set(tree, setting);
  const std::string printed = tree.getUncompressedPMML(nullptr);
  if (!tree.isPMMLParsed()) failAtProblem(tree.findProblems(model), job.file, "a tree model");

  PendingFile modelFile(job.model,
                        job.isCompressed ? tree.getCompressedPMML(nullptr) : printed + '\n');
  PendingFile displayFile(job.display, tree.getDisplayData(nullptr) + '\n');
  (displayFile.isStream() ? displayFile : modelFile).commit();
  (displayFile.isStream() ? modelFile : displayFile).commit();
  if (job.isVerbose) {
    complain("wrote " + job.model);
    complain("wrote " + job.display);
  }
  return exitDone;
}
