// All scenarios; the first use of a resource by each is of no interest before it is run.
#ifndef CHARTXML_TESTS_FAILING_SCENARIOS_H
#define CHARTXML_TESTS_FAILING_SCENARIOS_H

#include <vector>

#include "sweep.h"

std::vector<Scenario> libraryScenarios();
std::vector<Scenario> toolScenarios();

// Ends the tool by a signal at each of its calls in turn; answers the number of faults.
int sweepSignals();

#endif
