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

enum class Unit { Seconds, Bytes };

void tell(benchmark::State& state, Unit unit, double subject, double reference, double limit) {
  state.counters["bytes"] = unit == Unit::Bytes;
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
                                 tell(state, Unit::Seconds, medianOf(subjects),
                                      medianOf(references), limit);
                               })
      ->Iterations(runs)
      ->UseManualTime();
}

void registerOnce(const std::string& name, std::function<void(benchmark::State&)> measure) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) measure(state);
  })->Iterations(1);
}

// The mean over that many runs, in seconds.
double secondsOf(const Prepare& prepare, int size, int count, End end) {
  std::vector<Run> runs;
  for (int i = 0; i < count; ++i) runs.push_back(prepare(size));
  const double seconds = secondsOf([&] {
    for (const Run& run : runs) run();
    if (end == End::Timed) runs.clear();
  });
  return seconds / count;
}

double peakOf(const Prepare& prepare, int size) {
  const std::size_t before = allocations::startPeak();
  prepare(size)();
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

void measureTimeOnce(const std::string& name, double limit, int runs,
                     std::function<Run()> prepareSubject, Run reference) {
  registerPairs(name, limit, runs, [=]() -> Timed {
    return {[prepareSubject] { return secondsOf(prepareSubject()); },
            [reference] { return secondsOf(reference); }};
  });
}

void measureEach(const std::string& name, double limit, int runs, double count,
                 std::function<Run()> prepare) {
  registerPairs(name, limit, runs, [=]() -> Timed {
    return {[prepare] { return secondsOf(prepare()); }, [count] { return 1e-6 * count; }};
  });
}

void measureGrowth(const std::string& name, int size, Prepare prepare, End end) {
  registerPairs(name + "/time", growthLimit, growthRuns, [=]() -> Timed {
    return {[=] { return secondsOf(prepare, 10 * size, 1, end); },
            [=] { return secondsOf(prepare, size, 10, end); }};
  });
  registerOnce(name + "/memory", [=](benchmark::State& state) {
    tell(state, Unit::Bytes, peakOf(prepare, 10 * size), peakOf(prepare, size), growthLimit);
  });
}

void measureBytes(const std::string& name, double limit, std::function<Sizes()> sizes) {
  registerOnce(name, [=](benchmark::State& state) {
    const Sizes both = sizes();
    tell(state, Unit::Bytes, static_cast<double>(both.subject), static_cast<double>(both.reference),
         limit);
  });
}
