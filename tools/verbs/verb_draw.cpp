#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <new>
#include <string>
#include <vector>

#include <chartxml/chartxml.h>

#include "chartfiles.h"
#include "commandline.h"
#include "commandschema.h"
#include "drawchart.h"
#include "files.h"
#include "htmlpage.h"
#include "problems.h"
#include "renderer.h"
#include "templates.h"

using namespace draw;

const char drawHelp[] =
    R"(usage: chartxml draw [-t TEMPLATE]... [--html | --svg | --png] [-o OUT] CHART
       chartxml draw [-t TEMPLATE]... [--html | --svg | --png] --out-dir DIR CHART...

Writes a chart as a plot of Vega-Lite, with the chart's data in it: as JSON, as a page that a
browser shows, or as a picture. With --out-dir it writes many: a CHART may be a folder then, whose
files *.xml and *.z are meant. What Vega-Lite can't show is drawn as near as it can be, or left out;
each such thing is told. The exit code is 1 when nothing of a chart can be drawn, and when a command
of a template fails.

  -t, --template TEMPLATE  draw the chart as this template makes it; may be given several times
      --html               write a page; it loads Vega's scripts from the net, unless there is
                           --vega
      --vega DIR           put the scripts from this folder into the page: vega, vega-lite and
                           vega-embed, each as NAME.min.js, NAME.js or as npm installs it
      --svg                write a picture as SVG
      --png                write a picture as PNG
  -o, --output OUT         write to a file in place of standard output
      --out-dir DIR        write each chart to a file of its name in a folder, which is made if
                           there is none; go on past bad charts
  -q, --quiet              don't tell what is left out
  -v, --verbose            pass on what the programs that make pictures tell
  -h, --help               show this

Pictures are made by programs on the path: SVG by vl2svg, which
'npm install -g vega vega-lite vega-cli' brings, and PNG from that by rsvg-convert (Debian's
librsvg2-bin), or by vl2png, which comes with vl2svg.

Examples:
  chartxml draw sales.xml > sales.vl.json
  chartxml draw --html --vega node_modules -o sales.html sales.xml
  chartxml draw --png -t house.xml -o sales.png sales.xml
  chartxml draw --svg --out-dir pictures charts/
)";

namespace {

enum class Form { Plot, Page, Svg, Png };

struct Job {
  Form form = Form::Plot;
  std::vector<std::string> templates;
  std::string scripts;    // their folder
  std::string output;     // empty for a folder
  std::string outFolder;  // empty for one output
  bool isQuiet = false;
  bool isVerbose = false;
  std::vector<std::string> charts;  // folders among them
};

Job readJob(int argc, char** argv) {
  Job job;
  bool isPage = false;
  bool isSvg = false;
  bool isPng = false;
  job.charts = readOptions(argc, argv,
                           {{{"template", 't', nullptr, nullptr, &job.templates},
                             {"html", '\0', &isPage, nullptr},
                             {"svg", '\0', &isSvg, nullptr},
                             {"png", '\0', &isPng, nullptr},
                             {"vega", '\0', nullptr, &job.scripts},
                             {"output", 'o', nullptr, &job.output},
                             {"out-dir", '\0', nullptr, &job.outFolder},
                             {"quiet", 'q', &job.isQuiet, nullptr},
                             {"verbose", 'v', &job.isVerbose, nullptr}}});
  if (job.charts.empty()) throw UsageError("a CHART is missing");
  if (isPage + isSvg + isPng > 1) throw UsageError("only one of --html, --svg and --png is meant");
  if (!isPage && !job.scripts.empty()) throw UsageError("--vega needs --html");
  job.form = isPage ? Form::Page : isSvg ? Form::Svg : isPng ? Form::Png : Form::Plot;
  if (!job.outFolder.empty()) {
    if (!job.output.empty()) throw UsageError("--output and --out-dir don't go together");
    if (std::ranges::count(job.charts, "-")) {
      throw UsageError("standard input has no name for --out-dir");
    }
    return job;
  }
  if (job.charts.size() > 1) throw UsageError("several charts need --out-dir");
  if (isFolder(job.charts[0])) throw UsageError("a folder of charts needs --out-dir");
  if (job.output.empty()) job.output = "-";
  return job;
}

const char* extensionOf(Form form) {
  switch (form) {
    case Form::Plot:
      return ".vl.json";
    case Form::Page:
      return ".html";
    case Form::Svg:
      return ".svg";
    case Form::Png:
      return ".png";
  }
  return "";
}

// ---- templates

// The element at a 0-based position below the root.
const DocumentNode& commandAt(const Template& source, std::size_t position) {
  for (const DocumentNode& node : source.root.children) {
    if (!node.isText() && position-- == 0) return node;
  }
  return source.root;
}

// The chart's text after the templates. Answers in `isWhole` whether no command was passed over;
// each of those is told.
std::string styled(const std::vector<Template>& templates, const std::string& name,
                   const std::string& text, bool& isWhole) {
  ChartTransformer transformer(text);
  requireChart(transformer, name, text);
  for (const Template& each : templates) {
    std::vector<std::size_t> passedOver;
    const bool isApplied = transformer.applyTemplate(each.text, passedOver);
    for (const std::size_t position : passedOver) {
      const DocumentNode& command = commandAt(each, position);
      const std::string problem = sentenceOf(command.name).empty()
                                      ? CommandSchema().problemOfCommand(command.name)
                                      : "command '" + command.name + "' failed";
      complain(name + ": " + placed(command, each.file, problem));
      isWhole = false;
    }
    if (!isApplied) throw Failure(name + ": " + each.file + ": can't be applied to its end");
  }
  std::string result = transformer.getEntireXML(ChartBase::_utf8);
  if (transformer.isOutOfMemory()) throw NotEnoughMemory(name);
  if (result.empty() || !transformer.isDataWhole()) {
    throw Failure(name + ": can't be given back by the templates");
  }
  return result;
}

// ---- notes

std::string namesOf(const std::vector<std::string>& names) {
  constexpr std::size_t most = 5;
  std::string list;
  for (std::size_t i = 0; i < std::min(names.size(), most); ++i) {
    list += (i == 0 ? "" : ", ") + names[i];
  }
  return names.size() > most ? list + " and " + std::to_string(names.size() - most) + " more"
                             : list;
}

// A line for each thing that is told, with all that it is told of. A note is "NAME: TEXT".
std::vector<std::string> gathered(const std::vector<std::string>& notes) {
  std::vector<std::string> texts;
  std::map<std::string, std::vector<std::string>> names;
  for (const std::string& note : notes) {
    const std::size_t colon = note.find(": ");
    const std::string text = note.substr(colon == note.npos ? 0 : colon);
    std::vector<std::string>& told = names[text];
    if (told.empty()) texts.push_back(text);
    told.push_back(note.substr(0, colon == note.npos ? 0 : colon));
  }
  std::vector<std::string> lines;
  for (const std::string& text : texts) lines.push_back(namesOf(names[text]) + text);
  return lines;
}

// ---- charts

// What is written of a chart. `isWhole` is false after a command that failed.
std::string drawn(const Job& job, const std::vector<Template>& templates, const std::string& name,
                  bool& isWhole) {
  std::string text = readDocument(name);
  if (!templates.empty()) text = styled(templates, name, text, isWhole);
  ChartBase base;
  xercesc::DOMElement& root = rootOf(base, name, text);
  requireChart(root, name);
  const PlXVisualization chart(&root);
  DrawNotes notes;
  const Json plot = drawChart(chart, notes);
  if (!job.isQuiet || plot.is_null()) {
    for (const std::string& line : gathered(notes.texts())) complain(name + ": " + escaped(line));
  }
  if (plot.is_null()) throw Failure(name + ": nothing of it can be drawn");
  if (job.form == Form::Page) {
    const std::string title = name == "-" ? "chart" : std::filesystem::path(name).stem().string();
    return htmlPageOf(plot, job.scripts, title);
  }
  const bool isPlot = job.form == Form::Plot;
  std::string json = plot.dump(isPlot ? 1 : -1, ' ', false, Json::error_handler_t::replace);
  if (isPlot) return json + '\n';
  const auto form = job.form == Form::Svg ? PictureForm::Svg : PictureForm::Png;
  return renderPicture(json, form, name, job.isVerbose);
}

// Answers whether all went well.
bool drawMany(const Job& job, const std::vector<Template>& templates) {
  OutputFolder folder(job.outFolder);
  std::vector<std::string> charts;
  const int isRead = forEachFile(job.charts, [&](const std::string& path) {
    std::ranges::copy(chartsAt(path, job.templates), std::back_inserter(charts));
  });
  if (charts.empty()) return false;
  std::size_t failed = 0;
  forEachFile(charts, [&](const std::string& chart) {
    bool isGood = true;
    ++failed;  // unless it comes to its end
    const std::string file = folder.fileFor(chart, extensionOf(job.form));
    PendingFile(file, drawn(job, templates, chart, isGood)).commit();
    if (isGood) --failed;
  });
  if (failed) {
    complain(std::to_string(failed) + " of " + std::to_string(charts.size()) + " charts failed");
  }
  return isRead == exitDone && failed == 0;
}

// A value of Json takes memory when it goes, and ends the process without a word where there is
// none: a failed allocation mustn't unwind what is drawn so far.
[[noreturn]] void endWithoutMemory() {
  removeTemporaries();
  complain("not enough memory");
  std::_Exit(exitProblems);
}

}  // namespace

int runDraw(int argc, char** argv) {
  std::set_new_handler(endWithoutMemory);
  const Job job = readJob(argc, argv);
  std::vector<Template> templates;
  for (const std::string& name : job.templates) templates.push_back(readTemplate(name));
  bool isWhole = true;
  if (job.outFolder.empty()) {
    std::string text = drawn(job, templates, job.charts[0], isWhole);
    PendingFile(job.output, std::move(text)).commit();
  } else {
    isWhole = drawMany(job, templates);
  }
  return isWhole ? exitDone : exitProblems;
}
