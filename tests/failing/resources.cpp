#include "resources.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define CHARTXML_OWN_MALLOC 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CHARTXML_OWN_MALLOC 0
#endif
#endif
#ifndef CHARTXML_OWN_MALLOC
#define CHARTXML_OWN_MALLOC 1
#endif

// Everything here may be called before main() and within a failing allocation: it allocates
// nothing.
namespace {

resources::Failure failure;
bool isArmed = false;
long uses = 0;
long liveBlocks = 0;
int pauses = 0;
struct Places {
  void* frames[64];
  int depth;
};

// Shared with the processes that a run starts, and with the one that started it.
struct Notes {
  bool hasFailed;
  Places failure;
  Places crash;
};
Notes* notes = nullptr;

void note(Places& places) {
  places.depth = backtrace(places.frames, static_cast<int>(std::size(places.frames)));
}

bool fails(resources::Kind kind) {
  if (!isArmed || pauses > 0 || kind != failure.kind) return false;
  const long use = ++uses;
  if (use != failure.at && !(failure.isLasting && use > failure.at)) return false;
  if (notes->failure.depth == 0) {
    notes->hasFailed = true;
    const resources::Pause pause;
    note(notes->failure);
  }
  return true;
}

bool memoryFails() {
  return fails(resources::Kind::Memory);
}

// False when the call is to go on.
bool callFails() {
  if (!fails(resources::Kind::Calls)) return false;
  if (failure.signal != 0) {
    std::raise(failure.signal);
    return false;
  }
  errno = ENOSPC;
  return !failure.isShort;
}

std::string namesOf(const Places& places) {
  const resources::Pause pause;
  std::string names;
  for (int i = 0; i < places.depth; ++i) {
    Dl_info info;
    if (dladdr(places.frames[i], &info) != 0 && info.dli_sname) {
      names.append(info.dli_sname).append("\n");
    }
  }
  return names;
}

void count(const void* block, long difference) {
  if (block && pauses == 0) liveBlocks += difference;
}

}  // namespace

void resources::share() {
  if (notes) return;
  notes = static_cast<Notes*>(
      mmap(nullptr, sizeof(Notes), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
}

void resources::arm(const Failure& next) {
  failure = next;
  uses = 0;
  share();
  *notes = {};
  isArmed = true;
}

bool resources::disarm() {
  isArmed = false;
  return notes->hasFailed;
}

long resources::live() {
  return liveBlocks;
}

resources::Pause::Pause() {
  ++pauses;
}

resources::Pause::~Pause() {
  --pauses;
}

std::string resources::trace() {
  return notes ? namesOf(notes->failure) + namesOf(notes->crash) : "";
}

void resources::noteCrash() {
  note(notes->crash);
}

#if CHARTXML_OWN_MALLOC

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
  if (memoryFails()) {
    errno = ENOMEM;
    return nullptr;
  }
  void* block = __libc_malloc(size);
  count(block, 1);
  return block;
}

void* calloc(std::size_t number, std::size_t size) {
  if (memoryFails()) {
    errno = ENOMEM;
    return nullptr;
  }
  void* block = __libc_calloc(number, size);
  count(block, 1);
  return block;
}

void* realloc(void* block, std::size_t size) {
  if (memoryFails()) {
    errno = ENOMEM;
    return nullptr;
  }
  void* result = __libc_realloc(block, size);
  if (!block) count(result, 1);
  return result;
}

void free(void* block) {
  count(block, -1);
  __libc_free(block);
}
}

#else

namespace {

void* allocated(std::size_t size) {
  if (memoryFails()) return nullptr;
  void* block = std::malloc(size);
  count(block, 1);
  return block;
}

void* required(std::size_t size) {
  void* block = allocated(size);
  if (block) return block;
  if (const std::new_handler handler = std::get_new_handler()) handler();
  throw std::bad_alloc();
}

void release(void* block) {
  count(block, -1);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  return required(size);
}
void* operator new[](std::size_t size) {
  return required(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocated(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocated(size);
}
void operator delete(void* block) noexcept {
  release(block);
}
void operator delete[](void* block) noexcept {
  release(block);
}
void operator delete(void* block, std::size_t) noexcept {
  release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  release(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  release(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  release(block);
}

#endif

// The calls of the tool's own code, in the place of the C library's (the linker's --wrap).
extern "C" {

ssize_t __wrap_write(int file, const void* bytes, std::size_t size) {
  if (file != STDERR_FILENO && callFails()) return -1;
  const bool isHalf = isArmed && notes->hasFailed && failure.isShort && size > 1;
  return syscall(SYS_write, file, bytes, isHalf ? size / 2 : size);
}

int __wrap_fsync(int file) {
  return callFails() ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}

int __wrap_fchmod(int file, mode_t mode) {
  return callFails() ? -1 : static_cast<int>(syscall(SYS_fchmod, file, mode));
}

// The file is closed all the same, as the system does it.
int __wrap_close(int file) {
  const bool isFailing = callFails();
  const long result = syscall(SYS_close, file);
  if (isFailing) errno = EIO;
  return isFailing ? -1 : static_cast<int>(result);
}

int __wrap_rename(const char* from, const char* to) {
  return callFails() ? -1 : static_cast<int>(syscall(SYS_rename, from, to));
}

int __real_mkostemp(char* name, int flags);
int __wrap_mkostemp(char* name, int flags) {
  return callFails() ? -1 : __real_mkostemp(name, flags);
}
}
