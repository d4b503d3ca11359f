// failing HOW SCENARIO [FIRST [STRIDE]]: makes each use of a resource fail in turn.
//
//   memory     one allocation fails
//   exhausted  all allocations fail, from one on
//   calls      one call that makes, writes, closes or renames a file fails
//   short      one write does half of what it is to do
//   signals    a signal ends the tool at one of these calls; there is no SCENARIO
//
// With FIRST alone that use is the only one. With CHARTXML_FAILING_TRACE the functions are told
// that were at work, and those of a crash in the file that it names.
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "pathfactory.h"
#include "scenarios.h"
#include "testplaces.h"

namespace {

bool setUp(std::string_view how, Sweep& sweep) {
  resources::Failure& failure = sweep.failure;
  failure.isLasting = how == "exhausted";
  failure.isShort = how == "short";
  if (how == "memory" || how == "exhausted") return true;
  failure.kind = resources::Kind::Calls;
  return how == "calls" || how == "short";
}

}  // namespace

int main(int argc, char** argv) {
  PathFactory::getPathInstance(3)->setInstallationFolder(CHARTXML_INSTALLATION);
  const std::string_view how = argc > 1 ? argv[1] : "";
  if (how == "signals") return sweepSignals() == 0 ? 0 : 1;
  const std::string_view name = argc > 2 ? argv[2] : "";
  std::vector<Scenario> scenarios = libraryScenarios();
  for (const Scenario& scenario : toolScenarios()) scenarios.push_back(scenario);
  for (const Scenario& scenario : scenarios) {
    Sweep sweepOf;
    if (name != scenario.name || !setUp(how, sweepOf)) continue;
    sweepOf.failure.at = argc > 3 ? std::atol(argv[3]) : 1;
    const bool isEach = sweepOf.failure.kind == resources::Kind::Calls;
    sweepOf.stride = argc > 4 ? std::atol(argv[4]) : isEach ? 1 : scenario.stride;
    // To run out of memory costs as many runs, and finds less.
    if (argc <= 4 && sweepOf.failure.isLasting) sweepOf.stride *= 11;
    sweepOf.isOne = argc == 4;
    return sweep(scenario, sweepOf) == 0 ? 0 : 1;
  }
  std::cerr << "usage: failing HOW SCENARIO [FIRST [STRIDE]]\nSCENARIO is one of";
  for (const Scenario& scenario : scenarios) std::cerr << ' ' << scenario.name;
  std::cerr << '\n';
  return 2;
}
