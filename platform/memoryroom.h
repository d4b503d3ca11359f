// How much more memory the process may take.
#ifndef CHARTXML_MEMORYROOM_H
#define CHARTXML_MEMORYROOM_H

#include <cstddef>

namespace memoryroom {

// In bytes: the least of what is left of the limits of the process (RLIMIT_AS, RLIMIT_DATA), of the
// control groups that it is in, and of the machine's memory and swap. What can't be found out
// bounds nothing. Reads a few files of /proc and /sys, so it is for work of milliseconds at least.
std::size_t left();

}  // namespace memoryroom

#endif
