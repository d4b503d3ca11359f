// The benchmarks of the library. Exits with 1 when a limit isn't kept.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <climits>
#include <cstdio>

#include "chartbase.h"
#include "measures.h"
#include "table.h"

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  // Memory stays with the process: else large charts also pay for what the system does with it, and
  // the more the less was allocated before.
  mallopt(M_MMAP_THRESHOLD, INT_MAX);
  mallopt(M_TRIM_THRESHOLD, INT_MAX);
  // Holds the schemas for all charts, as a program that works on many does.
  const ChartBase base;
  addParsing();
  addPrinting();
  addGrowth();
  addTemplates();
  addCompression();
  addData();
  addDataXml();
  addPeer();
  TableReporter table;
  benchmark::RunSpecifiedBenchmarks(&table);
  std::printf(table.broken() ? "%d limits are broken\n" : "All limits are kept\n", table.broken());
  return table.broken() ? 1 : 0;
}
