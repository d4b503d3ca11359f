// What operator new has given out in this program, the libraries included.
#ifndef CHARTXML_BENCH_ALLOCATIONS_H
#define CHARTXML_BENCH_ALLOCATIONS_H

#include <cstddef>
#include <functional>

namespace allocations {

// Starts a new peak at what is allocated now, and answers that, in bytes.
std::size_t startPeak();
// The most that was allocated since, in bytes.
std::size_t peak();
// The most that a run allocates beyond what is allocated when it starts, in bytes.
std::size_t peakOf(const std::function<void()>& run);

}  // namespace allocations

#endif
