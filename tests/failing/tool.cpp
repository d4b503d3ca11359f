// What the tool does when a resource fails. It runs in a fork of this process, which has the
// schemas already.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <utility>

#include "charttemplate.h"
#include "scenarios.h"
#include "testplaces.h"
#include "testsupport.h"
#include "treetransformer.h"

namespace fs = std::filesystem;

// The tool's main() under another name.
int toolMain(int argc, char** argv);

namespace {

constexpr const char* oldText = "what stood there before\n";
constexpr const char* outputs[] = {"other", "out"};

// Where the tool writes.
class Folder {
 public:
  Folder() {
    char name[] = "/tmp/chartxml-failing-XXXXXX";
    path_ = mkdtemp(name);
    fs::create_directory(path_ / "work");
    fs::create_directory(path_ / "streams");
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    if (owner_ == getpid()) fs::remove_all(path_);
  }

  // Each output is there before.
  void prepare() const {
    for (const std::string& name : files()) fs::remove(path_ / "work" / name);
    for (const char* name : outputs) std::ofstream(file(name)) << oldText;
  }
  std::string file(const std::string& name) const { return path_ / "work" / name; }
  std::string stream(const std::string& name) const { return path_ / "streams" / name; }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_ / "work")) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  fs::path path_;
  pid_t owner_ = getpid();
};

const Folder& folder() {
  static const Folder folder;
  return folder;
}

// A standard stream in a file for a scope.
class Redirected {
 public:
  Redirected(int stream, const char* name) : stream_(stream) {
    const resources::Pause pause;
    kept_ = dup(stream);
    const int file =
        open(folder().stream(name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
    dup2(file, stream);
    close(file);
  }
  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;
  ~Redirected() {
    const resources::Pause pause;
    dup2(kept_, stream_);
    close(kept_);
  }

 private:
  int stream_;
  int kept_;
};

// The words of a command line; those of `outputs` are files of the folder.
using Words = std::vector<std::string>;

int run(const Words& words) {
  std::vector<std::string> texts;
  std::vector<char*> pointers;
  {
    const resources::Pause pause;
    texts.emplace_back("chartxml");
    for (const std::string& word : words) {
      const bool isOutput = std::ranges::count(outputs, word) > 0;
      texts.push_back(isOutput ? folder().file(word) : word);
    }
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
  }
  const int code = toolMain(static_cast<int>(words.size()) + 1, pointers.data());
  const resources::Pause pause;
  std::vector<std::string>().swap(texts);
  std::vector<char*>().swap(pointers);
  return code;
}

// Empty when the outputs are all that is there.
std::string faultOfFiles() {
  for (const std::string& file : folder().files()) {
    if (!std::ranges::count(outputs, file)) return "leaves a file: " + file;
  }
  return folder().files().size() == std::size(outputs) ? "" : "loses a file";
}

// A failure is told and leaves the old files, whole; of two one may be new already.
void runVerb(const Words& words, Answers& answers) {
  {
    const resources::Pause pause;
    folder().prepare();
  }
  int status = 0;
  {
    const Redirected messages(STDERR_FILENO, "messages");
    const Redirected output(STDOUT_FILENO, "output");
    const pid_t child = fork();
    if (child == 0) std::_Exit(run(words));
    waitpid(child, &status, 0);
  }
  const resources::Pause pause;
  if (WIFSIGNALED(status)) {
    answers.blame(std::string("ends by signal: ") + strsignal(WTERMSIG(status)));
    return;
  }
  const int code = WEXITSTATUS(status);
  if (const std::string fault = faultOfFiles(); !fault.empty()) answers.blame(fault);
  if (code != 0 && code != 1) answers.blame("ends with code " + std::to_string(code));
  if (code != 0 && readFile(folder().stream("messages")).empty()) answers.blame("tells nothing");
  for (const char* name : outputs) {
    const std::string text = readFile(folder().file(name));
    answers.take([&] { return code != 0 && text == oldText ? std::string() : text; });
  }
  const std::string text = readFile(folder().stream("output")) + '.';
  answers.take([&] { return code == 0 ? text : std::string(); });
}

std::string example(const std::string& name) {
  return std::string(CHARTXML_EXAMPLES) + '/' + name;
}

// A chart and its data apart, in the folder of streams.
const std::string& part(const char* name) {
  static const std::string chart = folder().stream("chart.xml");
  static const std::string data = folder().stream("data.xml");
  if (!fs::exists(chart)) {
    run({"separate", "--chart", chart, "--data", data, example("two-cities.xml")});
  }
  return name == std::string("chart") ? chart : data;
}

}  // namespace

std::vector<Scenario> toolScenarios() {
  const std::string chart = example("two-cities.xml");
  const std::string house = example("templates/house-style.xml");
  // The schemas are read before the process forks.
  for (const std::string& text : {readFile(house), readFile(example("templates/older/bars.xml"))}) {
    ChartTemplate::isTemplate(text);
  }
  TreeTransformer(readFile(example("trees/customers.xml")), std::string());
  struct Row {
    const char* name;
    Words words;
    long stride;
  };
  const Row rows[] = {
      {"tool-apply", {"apply", "-o", "out", chart, house}, 61},
      {"tool-convert", {"convert", "-o", "out", example("templates/older/bars.xml")}, 61},
      {"tool-data", {"data", chart}, 1},
      {"tool-draw", {"draw", "-o", "out", chart}, 61},
      {"tool-explain", {"explain", house}, 4001},
      {"tool-info", {"info", chart}, 61},
      {"tool-merge", {"merge", "-o", "out", part("chart"), part("data")}, 61},
      {"tool-pack", {"pack", "-o", "out", chart}, 61},
      {"tool-separate", {"separate", "--chart", "out", "--data", "other", chart}, 61},
      {"tool-tree",
       {"tree", "--model", "out", "--display", "other", example("trees/customers.xml")},
       241},
      {"tool-validate", {"validate", chart}, 4001},
  };
  std::vector<Scenario> scenarios;
  for (const Row& row : rows) {
    scenarios.push_back(
        {row.name, [words = row.words](Answers& answers) { runVerb(words, answers); }, row.stride});
  }
  return scenarios;
}

int sweepSignals() {
  const Words words = {"separate", "--chart", "out", "--data", "other", example("two-cities.xml")};
  folder().prepare();
  run(words);
  const std::string newTexts[] = {readFile(folder().file("other")), readFile(folder().file("out"))};
  int faults = 0;
  long calls = 0;
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
    for (bool isOver = false; !isOver; ++calls) {
      folder().prepare();
      const long at = calls + 1;
      const pid_t child = fork();
      if (child == 0) {
        resources::Failure failure{resources::Kind::Calls, at};
        failure.signal = signal;
        resources::arm(failure);
        run(words);
        std::_Exit(0);
      }
      int status = 0;
      waitpid(child, &status, 0);
      isOver = WIFEXITED(status);
      std::string fault = faultOfFiles();
      if (!isOver && WTERMSIG(status) != signal) fault = "ends by another signal";
      for (std::size_t i = 0; i < std::size(outputs); ++i) {
        const std::string text = readFile(folder().file(outputs[i]));
        if (text != oldText && text != newTexts[i]) fault = "leaves a part of a file";
      }
      if (fault.empty()) continue;
      std::cout << "signal " << signal << " at call " << at << ": " << fault << std::endl;
      ++faults;
    }
    std::cout << "signal " << signal << ": up to call " << calls << std::endl;
    if (calls < 8) ++faults;  // two files are written, closed and renamed
    calls = 0;
  }
  return faults;
}
