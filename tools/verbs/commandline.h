// What the verbs of the tool share: their table's rows, options, messages and exit codes.
#ifndef CHARTXML_TOOLS_COMMANDLINE_H
#define CHARTXML_TOOLS_COMMANDLINE_H

#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <xercesc/util/OutOfMemoryException.hpp>

#include "failure.h"
#include "writtentexts.h"

enum ExitCode : int {
  exitDone = 0,
  exitProblems = 1,  // problems were found, or a file couldn't be processed
  exitUsage = 2,
};

// A row of the table in main.cpp. `run` gets the arguments from the verb on and answers the exit
// code; `help` is the whole text of the verb's --help.
struct Verb {
  const char* name;
  const char* summary;
  const char* help;
  int (*run)(int argc, char** argv);
};

int runApply(int argc, char** argv);
int runConvert(int argc, char** argv);
int runData(int argc, char** argv);
int runDraw(int argc, char** argv);
int runExplain(int argc, char** argv);
int runInfo(int argc, char** argv);
int runMerge(int argc, char** argv);
int runPack(int argc, char** argv);
int runSeparate(int argc, char** argv);
int runTree(int argc, char** argv);
int runValidate(int argc, char** argv);
extern const char applyHelp[];
extern const char convertHelp[];
extern const char dataHelp[];
extern const char drawHelp[];
extern const char explainHelp[];
extern const char infoHelp[];
extern const char mergeHelp[];
extern const char packHelp[];
extern const char separateHelp[];
extern const char treeHelp[];
extern const char validateHelp[];

// A command line that can't be followed: a message and exit code 2. The message is empty when it
// has been written already.
class UsageError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Thrown by readOptions() for --help.
struct HelpWanted {};

// An option sets a flag, or takes an argument: for `value` the last one counts, for `list` all.
struct Option {
  const char* name;  // the long one, without its dashes
  char letter;       // '\0' for none
  bool* flag;
  std::string* value;
  std::vector<std::string>* list = nullptr;
};

// Reads the options and answers the operands; all that follows "--" are operands.
std::vector<std::string> readOptions(int argc, char** argv, std::span<const Option> options);

// Writes a line to standard error, behind the tool's name.
void complain(std::string_view message);

// Calls `work` for each name. Failures are written and answered as exitProblems.
template <class Work>
int forEachFile(const std::vector<std::string>& names, Work work) {
  if (names.empty()) throw UsageError("a file is missing");
  int result = exitDone;
  for (const std::string& name : names) {
    try {
      work(name);
    } catch (const Failure& e) {
      complain(e.what());
      result = exitProblems;
    } catch (const std::bad_alloc&) {
      complain(NotEnoughMemory(name).what());
      result = exitProblems;
    } catch (const xercesc::OutOfMemoryException&) {
      complain(NotEnoughMemory(name).what());
      result = exitProblems;
    }
  }
  return result;
}

#endif
