// The table that a run of the benchmarks prints.
#ifndef CHARTXML_BENCH_TABLE_H
#define CHARTXML_BENCH_TABLE_H

#include <benchmark/benchmark.h>

// One line for each measure, as soon as it is known: the two values that it compares, the figure,
// the limit and whether it is kept.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

  int broken() const { return broken_; }

 private:
  int broken_ = 0;
};

#endif
