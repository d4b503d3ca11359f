#include "htmlpage.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>

#include "commandline.h"
#include "drawchart.h"
#include "files.h"

namespace fs = std::filesystem;

namespace {

std::string replaced(const std::string& text, const std::string& from, const std::string& to) {
  std::string result;
  std::size_t done = 0;
  for (std::size_t at; (at = text.find(from, done)) != text.npos; done = at + from.size()) {
    result.append(text, done, at - done).append(to);
  }
  return result.append(text, done);
}

bool startsScriptEnd(std::string_view text) {
  constexpr std::string_view tag = "</script";
  return text.size() >= tag.size() &&
         std::equal(tag.begin(), tag.end(), text.begin(), [](char small, char c) {
           return small == std::tolower(static_cast<unsigned char>(c));
         });
}

// A script within a page. What would end it, or start a comment, only stands in its texts.
std::string inlined(const std::string& script) {
  std::string result = "<script>";
  for (std::size_t at = 0; at < script.size(); ++at) {
    result += script[at];
    const std::string_view rest = std::string_view(script).substr(at);
    if (startsScriptEnd(rest) || rest.starts_with("<!--")) result += '\\';
  }
  return result + "</script>\n";
}

struct Script {
  const char* name;
  const char* version;
};
constexpr Script scriptNames[] = {
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

// The lines of the plot's title in one.
std::string titleOf(const Json& plot, const std::string& name) {
  const auto title = plot.find("title");
  if (title == plot.end()) return name;
  const Json text = title->is_object() ? title->value("text", Json()) : *title;
  std::string result;
  for (const Json& line : text.is_array() ? text : Json::array({text})) {
    if (!line.is_string()) continue;
    if (!result.empty()) result += ' ';
    result += line.get<std::string>();
  }
  return result.empty() ? name : result;
}

std::string htmlText(const std::string& text) {
  return replaced(replaced(text, "&", "&amp;"), "<", "&lt;");
}

constexpr char pageEnd[] = R"(</script>
<script>
const chart = document.getElementById("chart");
if (typeof vegaEmbed === "undefined") {
  chart.textContent = "This chart is drawn by Vega's scripts, which can't be loaded from the net. "
      + "A page that has them in it comes from: chartxml draw --html --vega DIR";
} else {
  vegaEmbed(chart, JSON.parse(document.getElementById("spec").textContent), {renderer: "svg"})
      .catch(error => { chart.textContent = "This chart can't be drawn: " + error; });
}
</script>
</body>
</html>
)";

}  // namespace

std::string htmlPageOf(const Json& plot, const std::string& scripts, const std::string& name) {
  std::string page = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" +
                     htmlText(titleOf(plot, name)) + "</title>\n";
  for (const Script& script : scriptNames) {
    page += scripts.empty() ? std::string("<script src=\"https://cdn.jsdelivr.net/npm/") +
                                  script.name + '@' + script.version + "\"></script>\n"
                            : scriptText(scripts, script);
  }
  // A browser reads no JSON there, so that no text of the chart is ever taken for a tag.
  return page +
         "</head>\n<body>\n<div id=\"chart\"><noscript>This chart is drawn by scripts, which the "
         "browser doesn't run.</noscript></div>\n<script type=\"application/json\" id=\"spec\">" +
         replaced(plot.dump(-1, ' ', false, Json::error_handler_t::replace), "<", "\\u003c") +
         pageEnd;
}
