#include "allocations.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t current = 0;
std::size_t highest = 0;

void* allocated(std::size_t size) {
  void* block = std::malloc(size);
  current += block ? malloc_usable_size(block) : 0;
  highest = std::max(highest, current);
  return block;
}

void released(void* block) {
  current -= block ? malloc_usable_size(block) : 0;
  std::free(block);
}

}  // namespace

std::size_t allocations::startPeak() {
  return highest = current;
}

std::size_t allocations::peak() {
  return highest;
}

std::size_t allocations::peakOf(const std::function<void()>& run) {
  const std::size_t before = startPeak();
  run();
  return peak() - before;
}

// The forms for arrays come here too.
void* operator new(std::size_t size) {
  void* block = allocated(size);
  if (!block) throw std::bad_alloc();
  return block;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocated(size);
}

void operator delete(void* block) noexcept {
  released(block);
}

void operator delete(void* block, std::size_t) noexcept {
  released(block);
}
