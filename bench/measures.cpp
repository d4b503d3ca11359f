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

// The seconds of one run of each.
struct Timed {
  std::function<double()> subject;
  std::function<double()> reference;
};

void registerPairs(const std::string& name, double limit, int runs,
                   std::function<Timed()> prepare) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [=](benchmark::State& state) {
                                 const Timed timed = prepare();
                                 std::vector<double> subjects;
                                 std::vector<double> references;
                                 for ([[maybe_unused]] auto iteration : state) {
                                   // Each comes first by turns, so that neither always finds what
                                   // the other has left in the caches.
                                   const bool isOdd = subjects.size() % 2;
                                   if (isOdd) references.push_back(timed.reference());
                                   subjects.push_back(timed.subject());
                                   if (!isOdd) references.push_back(timed.reference());
                                   state.SetIterationTime(subjects.back());
                                 }
                                 tell(state, medianOf(subjects), medianOf(references), limit);
                               })
      ->Iterations(runs)
      ->UseManualTime();
}

void registerOnce(const std::string& name, std::function<void(benchmark::State&)> measure) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) measure(state);
  })->Iterations(1);
}

double peakOf(const Prepare& prepare, int size) {
  const Run run = prepare(size);
  const std::size_t before = allocations::startPeak();
  run();
  return static_cast<double>(allocations::peak() - before);
}

}  // namespace

void measureTime(const std::string& name, double limit, int runs, std::function<Pair()> prepare) {
  registerPairs(name, limit, runs, [=]() -> Timed {
    const Pair pair = prepare();
    return {[pair] { return secondsOf(pair.subject); },
            [pair] { return secondsOf(pair.reference); }};
  });
}

void measureGrowth(const std::string& name, int size, Prepare prepare) {
  registerPairs(name + "/time", growthLimit, growthRuns, [=]() -> Timed {
    return {[=] { return secondsOf(prepare(10 * size)); },
            [=] { return secondsOf(prepare(size)); }};
  });
  registerOnce(name + "/memory", [=](benchmark::State& state) {
    tell(state, peakOf(prepare, 10 * size), peakOf(prepare, size), growthLimit);
  });
}

void measureBytes(const std::string& name, double limit, std::function<Sizes()> sizes) {
  registerOnce(name, [=](benchmark::State& state) {
    const Sizes both = sizes();
    tell(state, static_cast<double>(both.subject), static_cast<double>(both.reference), limit);
  });
}
