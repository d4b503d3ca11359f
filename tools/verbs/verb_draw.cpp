#include <filesystem>
#include <string>

#include <chartxml/chartxml.h>

#include "commandline.h"
#include "drawchart.h"
#include "files.h"
#include "problems.h"
#include "renderer.h"

namespace fs = std::filesystem;
using namespace draw;

const char drawHelp[] =
    "usage: chartxml draw [--html | --svg] [--vega DIR] [-o OUT] CHART\n"
    "\n"
    "Writes a chart as a plot of Vega-Lite, with the chart's data in it: as JSON, as a\n"
    "page that a browser shows, or as a picture, which the program vl2svg draws when it is on the\n"
    "path. What Vega-Lite can't show is drawn as near as it can be, or left out; each such thing "
    "is\n"
    "told. The exit code is 1 when nothing of a chart can be drawn.\n"
    "\n"
    "      --html        write a page; it loads Vega's scripts from the net, unless there is\n"
    "                    --vega\n"
    "      --vega DIR    put the scripts from this folder into the page: vega, vega-lite and\n"
    "                    vega-embed, each as NAME.min.js, NAME.js or as npm installs it\n"
    "      --svg         write a picture\n"
    "  -o, --output OUT  write to a file in place of standard output\n"
    "  -h, --help        show this\n"
    "\n"
    "Examples:\n"
    "  chartxml draw sales.xml > sales.vl.json\n"
    "  chartxml draw --html --vega node_modules -o sales.html sales.xml\n"
    "  chartxml apply sales.xml house.xml | chartxml draw --svg -o sales.svg -\n";

namespace {

struct Job {
  bool isPage = false;
  bool isPicture = false;
  std::string scripts;  // their folder
  std::string output;
  std::string chart;
};

Job readJob(int argc, char** argv) {
  Job job;
  const std::vector<std::string> operands = readOptions(argc, argv,
                                                        {{{"html", '\0', &job.isPage, nullptr},
                                                          {"svg", '\0', &job.isPicture, nullptr},
                                                          {"vega", '\0', nullptr, &job.scripts},
                                                          {"output", 'o', nullptr, &job.output}}});
  if (operands.size() != 1) throw UsageError("one CHART is to be given");
  job.chart = operands[0];
  if (job.isPage && job.isPicture) throw UsageError("--html and --svg don't go together");
  if (!job.isPage && !job.scripts.empty()) throw UsageError("--vega needs --html");
  if (job.output.empty()) job.output = "-";
  return job;
}

std::string replaced(const std::string& text, const std::string& from, const std::string& to) {
  std::string result;
  std::size_t done = 0;
  for (std::size_t at; (at = text.find(from, done)) != text.npos; done = at + from.size()) {
    result.append(text, done, at - done).append(to);
  }
  return result.append(text, done);
}

std::string jsonText(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

// A script within a page. What would end it, or start a comment, only stands in its texts.
std::string inlined(std::string script) {
  for (const std::string tag : {"</script", "</SCRIPT", "</Script"}) {
    script = replaced(script, tag, "<\\" + tag.substr(1));
  }
  return "<script>" + replaced(script, "<!--", "<\\!--") + "</script>\n";
}

struct Script {
  const char* name;
  const char* version;
};
constexpr Script scripts[] = {
    {"vega", vegaVersion}, {"vega-lite", vegaLiteVersion}, {"vega-embed", "7"}};

std::string scriptText(const std::string& folder, const Script& script) {
  const std::string name = script.name;
  for (const std::string& file :
       {name + ".min.js", name + ".js", name + "/build/" + name + ".min.js",
        name + "/build/" + name + ".js"}) {
    const fs::path path = fs::path(folder) / file;
    if (fs::is_regular_file(path)) return inlined(readFile(path.string()));
  }
  throw Failure(folder + ": has no script " + name + ".min.js");
}

std::string pageOf(const Job& job, const Json& plot) {
  std::string page =
      "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>chart</title>\n";
  for (const Script& script : scripts) {
    page += job.scripts.empty() ? std::string("<script src=\"https://cdn.jsdelivr.net/npm/") +
                                      script.name + '@' + script.version + "\"></script>\n"
                                : scriptText(job.scripts, script);
  }
  // A browser reads no JSON there, so that no text of the chart is ever taken for a tag.
  page +=
      "</head>\n<body>\n<div id=\"chart\"></div>\n<script type=\"application/json\" id=\"spec\">" +
      replaced(jsonText(plot, -1), "<", "\\u003c") +
      "</script>\n<script>\n"
      "vegaEmbed(\"#chart\", JSON.parse(document.getElementById(\"spec\").textContent),\n"
      "          {renderer: \"svg\"});\n"
      "</script>\n</body>\n</html>\n";
  return page;
}

}  // namespace

int runDraw(int argc, char** argv) {
  const Job job = readJob(argc, argv);
  ChartBase base;
  xercesc::DOMElement& root = rootOf(base, job.chart, readDocument(job.chart));
  requireChart(root, job.chart);
  const PlXVisualization chart(&root);
  DrawNotes notes;
  const Json plot = drawChart(chart, notes);
  for (const std::string& note : notes.texts()) complain(job.chart + ": " + escaped(note));
  if (plot.is_null()) throw Failure(job.chart + ": nothing of it can be drawn");
  std::string text;
  if (job.isPage) {
    text = pageOf(job, plot);
  } else if (job.isPicture) {
    text = renderSvg(jsonText(plot, -1), job.chart);
  } else {
    text = jsonText(plot, 1) + '\n';
  }
  PendingFile(job.output, std::move(text)).commit();
  return exitDone;
}
