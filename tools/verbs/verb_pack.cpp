#include <algorithm>
#include <memory>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "files.h"
#include "pagelayout.h"
#include "pagesvg.h"
#include "problems.h"

const char packHelp[] =
    R"(usage: chartxml pack [-r REFERENCE] [--as-is] [-o OUT] [--svg OUT] CHART

Gives the frames of a chart their default places: titles at the top, footnotes at the bottom,
the graph in the middle, legends and summaries on the right. Writes the chart with its data,
or a picture of its page, which shows each frame as a box, or both. The picture shows how
frames lie to each other; how large their contents are, it guesses. Places that can't be made
out, such as those that depend on themselves, are told, and the exit code is 1.

  -r, --reference REFERENCE  the chart as its author wrote it: frames that are placed there
                             stay, and so do legends that a user placed
      --as-is                leave all frames where they are: for the picture of a chart
  -o, --output OUT           write the chart to a file; without this, to standard output
                             unless there is a picture
      --svg OUT              write the picture to a file, as SVG
  -h, --help                 show this

Examples:
  chartxml pack sales.xml > packed.xml
  chartxml pack -r original.xml -o packed.xml --svg packed.svg edited.xml
  chartxml pack --as-is --svg page.svg sales.xml
)";

namespace {

struct Job {
  std::string reference;
  std::string output;  // empty for none
  std::string drawing;
  bool isAsIs = false;
  std::string chart;
};

Job readJob(int argc, char** argv) {
  Job job;
  const std::vector<std::string> operands =
      readOptions(argc, argv,
                  {{{"reference", 'r', nullptr, &job.reference},
                    {"as-is", '\0', &job.isAsIs, nullptr},
                    {"output", 'o', nullptr, &job.output},
                    {"svg", '\0', nullptr, &job.drawing}}});
  if (operands.size() != 1) throw UsageError("one CHART is to be given");
  job.chart = operands[0];
  if (job.isAsIs && !job.reference.empty()) {
    throw UsageError("--as-is and --reference don't go together");
  }
  if (job.chart == "-" && job.reference == "-") {
    throw UsageError("only one document can be standard input");
  }
  if (job.output.empty() && job.drawing.empty()) job.output = "-";
  if (job.output == "-" && job.drawing == "-") {
    throw UsageError("only one document can be standard output");
  }
  return job;
}

// A chart of a file, with its data.
class Chart {
 public:
  explicit Chart(const std::string& file) : model_(read(base_, file)) {}

  PlXVisualization& model() { return model_; }

 private:
  static xercesc::DOMElement* read(ChartBase& base, const std::string& file) {
    xercesc::DOMElement& root = rootOf(base, file, readDocument(file));
    requireChart(root, file);
    return &root;
  }

  ChartBase base_;
  PlXVisualization model_;
};

void pack(const Job& job, PlXVisualization& chart) {
  if (job.reference.empty()) {
    FramePacker().packFrames(chart, nullptr);
  } else {
    Chart original(job.reference);
    PlXDocument document(original.model());
    FramePacker().packFrames(chart, &document);
  }
}

// Both or none.
void write(const Job& job, const std::string& chart, const std::string& drawing) {
  std::vector<std::unique_ptr<PendingFile>> files;
  if (!job.output.empty()) files.push_back(std::make_unique<PendingFile>(job.output, chart));
  if (!job.drawing.empty()) files.push_back(std::make_unique<PendingFile>(job.drawing, drawing));
  std::stable_partition(files.begin(), files.end(),
                        [](const auto& file) { return file->isStream(); });
  for (const auto& file : files) file->commit();
}

}  // namespace

int runPack(int argc, char** argv) {
  const Job job = readJob(argc, argv);
  Chart chart(job.chart);
  if (!job.isAsIs) pack(job, chart.model());
  ExitCode result = exitDone;
  std::string drawing;
  if (!job.drawing.empty()) {
    const PageLayout layout = layOutPage(chart.model());
    drawing = drawPage(layout);
    for (const std::string& problem : layout.problems) {
      complain(job.chart + ": " + escaped(problem));
      result = exitProblems;
    }
  }
  write(job, chart.model().AsUTF8() + '\n', drawing);
  return result;
}
