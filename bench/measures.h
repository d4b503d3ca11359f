// Measures: benchmarks whose figure is a ratio within one run, with the limit that it is to keep.
#ifndef CHARTXML_BENCH_MEASURES_H
#define CHARTXML_BENCH_MEASURES_H

#include <functional>
#include <string>

using Run = std::function<void()>;

// For a figure that is only told.
constexpr double noLimit = 0;

struct Pair {
  Run subject;
  Run reference;
};

// The figure is the time of the subject over that of the reference: the ratio of the medians over
// as many runs of each, which take turns. Time is the thread's CPU time. `prepare` is called once,
// outside of it.
void measureTime(const std::string& name, double limit, int runs, std::function<Pair()> prepare);

// The same where the subject can be run but once: it is prepared anew for each run, outside of the
// time.
void measureTimeOnce(const std::string& name, double limit, int runs,
                     std::function<Run()> prepareSubject, Run reference);

// The figure is the microseconds that each of `count` steps of a run takes, as a ratio to a
// reference of one microsecond each. A run is prepared as there.
void measureEach(const std::string& name, double limit, int runs, double count,
                 std::function<Run()> prepare);

// Makes what one run needs; the run is called once.
using Prepare = std::function<Run(int size)>;

// Two measures of what ten times as much costs. The time is that of a run of ten times `size` over
// the mean of ten runs of `size` that were prepared together: both touch as much memory, so that a
// chart which fits the processor's caches has no advantage. The memory is the peak of what is
// allocated from the start of the preparation on, over that of a single run of `size`.
enum class End { Untimed, Timed };  // of what the runs own
void measureGrowth(const std::string& name, int size, Prepare prepare, End end = End::Untimed);

struct Sizes {
  std::size_t subject;
  std::size_t reference;
};

// The figure is a ratio of two sizes in bytes.
void measureBytes(const std::string& name, double limit, std::function<Sizes()> sizes);

// Each registers the measures of its part.
void addParsing();
void addPrinting();
void addGrowth();
void addTemplates();
void addCompression();
void addData();
void addDataXml();
// Only where libxml2 was there when this was built; says so otherwise.
void addPeer();

#endif
