// Lack of memory as a failure like others. Our own code throws std::bad_alloc for it, and the
// parser library an exception that has nothing in common with others.
#ifndef CHARTXML_MEMORYFAILURE_H
#define CHARTXML_MEMORYFAILURE_H

#include <new>

#include <xercesc/util/OutOfMemoryException.hpp>

// What `work` answers, or `otherwise` when there is no memory for it.
template <class Answer, class Work>
Answer unlessMemoryFails(Answer otherwise, Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
  } catch (const xercesc::OutOfMemoryException&) {
  }
  return otherwise;
}

// Calls `work`, which then fails by the one exception.
template <class Work>
auto asBadAlloc(Work work) {
  try {
    return work();
  } catch (const xercesc::OutOfMemoryException&) {
    throw std::bad_alloc();
  }
}

#endif
