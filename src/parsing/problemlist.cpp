#include "problemlist.h"

#include <string>
#include <string_view>
#include <utility>

#include "memoryfailure.h"

namespace {

constexpr std::size_t most = ChartProblem::mostProblems;

const ChartProblem andMore = {{}, 0, 0, "there are more problems than are told", false};

}  // namespace

void problemlist::shorten(std::string& message) {
  constexpr std::string_view dots = "...";
  constexpr std::size_t longest = ChartProblem::longestMessage;
  if (message.size() <= longest) return;
  std::size_t end = longest - dots.size();
  // Never within a character.
  while (end > 0 && (message[end] & 0xC0) == 0x80) --end;
  message.replace(end, message.npos, dots);
}

void problemlist::add(std::vector<ChartProblem>& problems, ChartProblem problem) {
  shorten(problem.message);
  if (problems.size() + 1 < most) {
    problems.push_back(std::move(problem));
    return;
  }
  if (problems.size() < most) problems.push_back(andMore);
  if (problem.isRefused) problems[most - 2] = std::move(problem);
}

void problemlist::noteMemory(std::vector<ChartProblem>& problems) {
  problems.clear();
  unlessMemoryFails(false, [&] {
    problems.push_back({{}, 0, 0, "there is not enough memory", true});
    return true;
  });
}

void problemlist::finish(std::vector<ChartProblem>& problems) {
  if (problems.size() <= most) return;
  problems.resize(most - 1);
  problems.push_back(andMore);
}
