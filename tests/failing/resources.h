// Resources that fail on demand: memory, and the calls by which the tool writes files.
#ifndef CHARTXML_TESTS_FAILING_RESOURCES_H
#define CHARTXML_TESTS_FAILING_RESOURCES_H

#include <string>

namespace resources {

enum class Kind {
  Memory,  // every way to allocate; under the sanitizers `operator new` alone
  Calls,   // open, fchmod, write, fsync, close, rename and unlink, but not on standard error
};

struct Failure {
  Kind kind = Kind::Memory;
  long at = 0;             // the first use that fails, counted from 1
  bool isLasting = false;  // and all behind it
  // Of calls: what happens in place of a failure.
  bool isShort = false;  // half of a write is done
  int signal = 0;        // raised before the call, which then succeeds
};

// From then on a process sees what becomes of those that it forks.
void share();
// Counts from 0 from now on.
void arm(const Failure& failure);
// Answers whether it came to the failure.
bool disarm();

// Blocks that are allocated, but for those of Pause.
long live();

// For the harness's own needs: nothing fails or counts in its scope.
class Pause {
 public:
  Pause();
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;
  ~Pause();
};

// The functions that were at work when it came to the failure, and then at a crash that was noted,
// the innermost first, by their names in the symbol tables.
std::string trace();
// For a handler of signals: names nothing, since memory may be in ruins.
void noteCrash();

}  // namespace resources

#endif
