#include "sweep.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace {

// What the process that runs the scenario tells the one that waits for it.
struct Shared {
  long at;     // the use that fails now
  long runs;   // with a failure
  long known;  // faults
  int faults;
};

constexpr int mostFaults = 40;
constexpr int goOn = 9;  // the code of a process that another one is to follow

void tell(const Scenario& scenario, long at, const std::string& fault) {
  const resources::Pause pause;
  std::cout << scenario.name << ": use " << at << ": " << fault << std::endl;
  if (std::getenv("CHARTXML_FAILING_TRACE")) std::cout << resources::trace() << std::flush;
}

// Where the parser library loses memory or crashes when it gets none: making grammars (of a
// document type, and those that are kept) and documents. ICU, which compares texts for the tool,
// crashes while it makes its cache.
constexpr const char* known[] = {"DTDGrammar",
                                 "GrammarResolver10putGrammar",
                                 "DTDScanner",
                                 "scanDocTypeDecl",
                                 "DTDElementDecl",
                                 "DFAContentModel",
                                 "ContentSpecNode",
                                 "ReaderMgr12createReader",
                                 "XSerializeEngine",
                                 "DOMImplementationRegistry",
                                 "DOMImplementationImpl14createDocument",
                                 "icu_"};

bool isKnown(const std::string& trace) {
  return std::ranges::any_of(
      known, [&](const char* function) { return trace.find(function) != trace.npos; });
}

bool isSame(const Scenario& scenario, const Answers& expected) {
  Answers answers;
  scenario.run(answers);
  return answers == expected;
}

// Leaves the place of a crash to the process that waits.
void endAtSignal(int signal) {
  std::signal(signal, SIG_DFL);
  const resources::Pause pause;
  resources::noteCrash();
  std::raise(signal);
}

// Runs until a use past the last one is to fail.
void runAll(const Scenario& scenario, const Sweep& how, Shared& shared) {
  Answers expected;
  scenario.run(expected);
  if (!expected.isWhole()) {
    tell(scenario, 0, "fails by itself");
    ++shared.faults;
    return;
  }
  isSame(scenario, expected);  // what is kept from one run to the next is there now
  for (bool isOver = false; !isOver && shared.faults < mostFaults; shared.at += how.stride) {
    const long live = resources::live();
    std::string fault;
    {
      Answers answers;
      resources::Failure failure = how.failure;
      failure.at = shared.at;
      resources::arm(failure);
      try {
        scenario.run(answers);
      } catch (...) {
        answers.blame("an exception leaves");
      }
      isOver = !resources::disarm() || how.isOne;
      ++shared.runs;
      fault = answers.faultAgainst(expected);
    }
    if (fault.empty() && !isSame(scenario, expected)) fault = "the next run is another";
    const long more = resources::live() - live;
    if (fault.empty() && more > 0) fault = std::to_string(more) + " blocks more are allocated";
    if (isKnown(resources::trace())) {
      if (!fault.empty()) ++shared.known;
      // Memory may be in ruins, and the next run another for that.
      shared.at += how.stride;
      std::_Exit(isOver ? 0 : goOn);
    }
    if (fault.empty()) continue;
    tell(scenario, shared.at, fault);
    ++shared.faults;
  }
}

}  // namespace

// Frees under a pause what was allocated under one.
Answers::~Answers() {
  const resources::Pause pause;
  std::vector<std::string>().swap(texts_);
  std::string().swap(fault_);
}

std::string Answers::faultAgainst(const Answers& expected) const {
  const resources::Pause pause;
  if (!fault_.empty()) return fault_;
  if (hasThrown_) return "an operation throws";
  if (texts_.size() > expected.texts_.size()) return "there are more answers";
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (texts_[i].empty() || texts_[i] == expected.texts_[i]) continue;
    if (std::getenv("CHARTXML_FAILING_TRACE")) std::cerr << texts_[i] << '\n';
    return "answer " + std::to_string(i + 1) + " is another";
  }
  return {};
}

bool Answers::isWhole() const {
  if (hasThrown_ || !fault_.empty() || texts_.empty()) return false;
  for (const std::string& text : texts_) {
    if (text.empty()) return false;
  }
  return true;
}

// A process of its own for the runs, so that a crash is one fault among others.
int sweep(const Scenario& scenario, const Sweep& how) {
  const auto start = std::chrono::steady_clock::now();
  auto* shared = static_cast<Shared*>(
      mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  *shared = {how.failure.at, 0, 0, 0};
  resources::share();
  for (bool isOver = false; !isOver;) {
    const pid_t child = fork();
    if (child == 0) {
      std::signal(SIGSEGV, endAtSignal);
      std::signal(SIGABRT, endAtSignal);
      runAll(scenario, how, *shared);
      std::exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    isOver = (WIFEXITED(status) && WEXITSTATUS(status) == 0) || how.isOne ||
             shared->faults >= mostFaults;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) continue;
    if (WIFEXITED(status) && WEXITSTATUS(status) == goOn) continue;
    if (WIFSIGNALED(status) && isKnown(resources::trace())) {
      ++shared->known;
      shared->at += how.stride;
      continue;
    }
    tell(scenario, shared->at,
         WIFSIGNALED(status) ? std::string("ends by signal ") + strsignal(WTERMSIG(status))
                             : "ends with code " + std::to_string(WEXITSTATUS(status)));
    ++shared->faults;
    shared->at += how.stride;
  }
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  std::cout << scenario.name << ": " << shared->runs << " runs, up to use " << shared->at << ", "
            << shared->faults << " faults and " << shared->known << " known ones, "
            << seconds.count() << " s" << std::endl;
  const int faults = shared->faults;
  munmap(shared, sizeof(Shared));
  return faults;
}
