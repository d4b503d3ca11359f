#include "measures.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <vector>

#include "allocations.h"

namespace {

constexpr double growthLimit = 11;
constexpr int growthRuns = 7;

double secondsOf(const Run& run) {
  timespec before;
  timespec after;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
  run();
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
  return static_cast<double>(after.tv_sec - before.tv_sec) +
         1e-9 * static_cast<double>(after.tv_nsec - before.tv_nsec);
}

double medianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void tell(benchmark::State& state, double subject, double reference, double limit) {
  state.counters["subject"] = subject;
  state.counters["reference"] = reference;
  state.counters["figure"] = subject / reference;
  state.counters["limit"] = limit;
}

// `subject` and `reference` answer the seconds of one run.
void registerPairs(const std::string& name, double limit, int runs, std::function<double()> subject,
                   std::function<double()> reference) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [=](benchmark::State& state) {
                                 std::vector<double> subjects;
                                 std::vector<double> references;
                                 for ([[maybe_unused]] auto iteration : state) {
                                   // By turns first, so that neither always meets the other's
                                   // caches.
                                   if (subjects.size() % 2) references.push_back(reference());
                                   subjects.push_back(subject());
                                   if (references.size() < subjects.size())
                                     references.push_back(reference());
                                   state.SetIterationTime(subjects.back());
                                 }
                                 tell(state, medianOf(subjects), medianOf(references), limit);
                               })
      ->Iterations(runs)
      ->UseManualTime();
}

double peakOf(const Prepare& prepare, int size) {
  const Run run = prepare(size);
  const std::size_t before = allocations::startPeak();
  run();
  return static_cast<double>(allocations::peak() - before);
}

}  // namespace

void measureTime(const std::string& name, double limit, int runs, Run subject, Run reference) {
  registerPairs(
      name, limit, runs, [subject] { return secondsOf(subject); },
      [reference] { return secondsOf(reference); });
}

void measureGrowth(const std::string& name, int size, Prepare prepare) {
  registerPairs(
      name + "/time", growthLimit, growthRuns, [=] { return secondsOf(prepare(10 * size)); },
      [=] { return secondsOf(prepare(size)); });
  benchmark::RegisterBenchmark((name + "/memory").c_str(), [=](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      tell(state, peakOf(prepare, 10 * size), peakOf(prepare, size), growthLimit);
    }
  })->Iterations(1);
}

void measureBytes(const std::string& name, double limit, std::size_t subject,
                  std::size_t reference) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
      tell(state, static_cast<double>(subject), static_cast<double>(reference), limit);
    }
  })->Iterations(1);
}
