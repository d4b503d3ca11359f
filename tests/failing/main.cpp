// failing SCENARIO [FIRST [STRIDE]]: each use of memory fails in turn, once and then for good.
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "pathfactory.h"
#include "scenarios.h"

int main(int argc, char** argv) {
  PathFactory::getPathInstance(3)->setInstallationFolder(CHARTXML_INSTALLATION);
  const char* name = argc > 1 ? argv[1] : "";
  const bool isLasting = std::getenv("CHARTXML_FAILING_LASTING") != nullptr;
  std::vector<Scenario> scenarios = libraryScenarios();
  int faults = 0;
  for (const Scenario& scenario : scenarios) {
    if (*name && std::strcmp(name, scenario.name) != 0) continue;
    Sweep how;
    how.failure.at = argc > 2 ? std::atol(argv[2]) : 1;
    how.failure.isLasting = isLasting;
    how.stride = argc > 3 ? std::atol(argv[3]) : scenario.stride;
    how.isOne = argc > 2 && argc < 4;
    faults += sweep(scenario, how);
  }
  return faults == 0 ? 0 : 1;
}
