// chartxml VERB ...: what the library does, for the shell.
#include <fcntl.h>
#include <getopt.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <chartxml/chartxml.h>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "commandline.h"
#include "files.h"

namespace {

constexpr Verb verbs[] = {
    {"apply", "apply templates to charts", applyHelp, runApply},
    {"convert", "write an older template in today's language", convertHelp, runConvert},
    {"data", "show the data of a chart, or turn it into another form", dataHelp, runData},
    {"draw", "draw a chart, for a browser or as a picture", drawHelp, runDraw},
    {"explain", "show what a template asks for and what is passed over", explainHelp, runExplain},
    {"info", "show what is in a chart", infoHelp, runInfo},
    {"merge", "put a chart and its data together", mergeHelp, runMerge},
    {"pack", "give frames their default places, and draw the page", packHelp, runPack},
    {"separate", "take a chart and its data apart", separateHelp, runSeparate},
    {"tree", "set how a tree model is shown", treeHelp, runTree},
    {"validate", "list every problem of a chart", validateHelp, runValidate},
};

std::string toolHelp() {
  std::string text =
      R"(usage: chartxml VERB [OPTION]... FILE...
       chartxml help [VERB]
       chartxml version

Works on chart documents and tree models. They may be compressed; a FILE of - is standard
input.

)";
  for (const Verb& verb : verbs) {
    text +=
        "  " + std::string(verb.name) + std::string(10 - std::string_view(verb.name).size(), ' ');
    text += std::string(verb.summary) + '\n';
  }
  return text +
         R"(
'chartxml help VERB' tells more about a verb.
The exit code is 0 when all went well, 1 when there were problems or a file could not be
processed, 2 for a wrong command line.
)";
}

// A closed standard stream would give its number to the first file that is opened.
void occupyStandardStreams() {
  for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // Opened the wrong way round: uses of it fail, as they would on the closed one.
    const int mode = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (fcntl(stream, F_GETFD) == -1) open("/dev/null", mode);
  }
}

int runVerb(const Verb& verb, int argc, char** argv) {
  try {
    // Held to the end of the process, so that schemas are read once. The system frees them faster.
    // Kept where leak checkers see it, though nobody reads it.
    [[gnu::used]] static const ChartBase* const library = new ChartBase;
    return verb.run(argc, argv);
  } catch (const HelpWanted&) {
    writeOutput(verb.help);
    return exitDone;
  } catch (const UsageError& e) {
    if (*e.what()) complain(e.what());
    std::cerr << "Try 'chartxml " << verb.name << " --help'.\n";
    return exitUsage;
  } catch (const Failure& e) {
    complain(e.what());
    return exitProblems;
  }
}

// Null for a name that no verb has.
const Verb* verbOf(std::string_view name) {
  const auto* verb = std::find_if(std::begin(verbs), std::end(verbs),
                                  [&](const Verb& row) { return name == row.name; });
  return verb == std::end(verbs) ? nullptr : verb;
}

int failAtVerb(const std::string& name) {
  std::vector<std::string> names = {"help", "version"};
  for (const Verb& verb : verbs) names.emplace_back(verb.name);
  complain(name.empty() ? "a verb is missing"
           : name.starts_with('-')
               ? "unrecognized option '" + name + "'"
               : "unknown verb '" + name + "'" + misspelling::suggestion(name, names));
  std::cerr << "Try 'chartxml --help'.\n";
  return exitUsage;
}

int runTool(int argc, char** argv) {
  const std::string first = argc > 1 ? argv[1] : "";
  if (const Verb* verb = verbOf(first)) return runVerb(*verb, argc - 1, argv + 1);
  if (first == "--version" || first == "version") {
    writeOutput("chartxml " CHARTXML_VERSION "\n");
    return exitDone;
  }
  if (first != "--help" && first != "-h" && first != "help") return failAtVerb(first);
  const std::string about = first == "help" && argc > 2 ? argv[2] : "";
  const Verb* verb = verbOf(about);
  if (!about.empty() && !verb) return failAtVerb(about);
  writeOutput(verb ? verb->help : toolHelp());
  return exitDone;
}

}  // namespace

int main(int argc, char** argv) {
  occupyStandardStreams();
  // Writing tells what these two would end the process for.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  removeTemporariesAtSignals();
  try {
    return runTool(argc, argv);
  } catch (const OutputError& e) {
    complain(e.what());
  } catch (const std::bad_alloc&) {
    complain("not enough memory");
  } catch (const xercesc::OutOfMemoryException&) {
    complain("not enough memory");
  } catch (const std::exception& e) {
    complain(e.what());
  } catch (...) {
    // The parser's exceptions have no common base.
    complain("unexpected failure");
  }
  return exitProblems;
}
