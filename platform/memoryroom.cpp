#include "memoryroom.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t unbound = std::numeric_limits<std::size_t>::max();

std::size_t difference(std::size_t limit, std::size_t used) {
  return limit == unbound ? unbound : limit - std::min(limit, used);
}

// The number behind a name, in a file with a line for each; `otherwise` where there is none.
std::size_t numberIn(const std::string& path, std::string_view name, std::size_t otherwise) {
  std::ifstream file(path);
  std::string word;
  std::size_t number;
  while (file >> word) {
    if (word == name) return file >> number ? number : otherwise;
  }
  return otherwise;
}

// The one number of a file; `otherwise` for a word such as "max".
std::size_t numberIn(const std::string& path, std::size_t otherwise) {
  std::ifstream file(path);
  std::size_t number;
  return file >> number ? number : otherwise;
}

std::size_t leftOfLimits() {
  std::size_t pages[6] = {};  // the first is all, the last data and stack
  std::ifstream file("/proc/self/statm");
  for (std::size_t& number : pages) file >> number;
  const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const auto leftOf = [pageSize](auto resource, std::size_t used) {
    rlimit limit;
    if (getrlimit(resource, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return unbound;
    return difference(limit.rlim_cur, used * pageSize);
  };
  return std::min(leftOf(RLIMIT_AS, pages[0]), leftOf(RLIMIT_DATA, pages[5]));
}

std::size_t leftOfMachine() {
  constexpr const char* path = "/proc/meminfo";
  const std::size_t memory = numberIn(path, "MemAvailable:", unbound);
  if (memory == unbound) return unbound;
  return (memory + numberIn(path, "SwapFree:", 0)) * 1024;
}

// Files that the group has read count as used, but make room for others.
std::size_t leftOfGroup(const std::string& folder, const char* limit, const char* used,
                        const char* cache) {
  const std::size_t inUse = numberIn(folder + used, 0);
  const std::size_t cached = numberIn(folder + "/memory.stat", cache, 0);
  return difference(numberIn(folder + limit, unbound), inUse - std::min(inUse, cached));
}

// Lines are "0::/path" for groups of the second kind, and "4:memory:/path" for those of the first.
// A limit of a group holds for those below it.
std::size_t leftOfGroups() {
  std::size_t left = unbound;
  std::ifstream file("/proc/self/cgroup");
  for (std::string line; std::getline(file, line);) {
    const std::size_t at = line.find(":/");
    if (at == line.npos) continue;
    const bool isFirstKind = line.find(":memory:") != line.npos;
    if (!isFirstKind && !line.starts_with("0::")) continue;
    for (std::string path = line.substr(at + 1);; path.erase(path.find_last_of('/'))) {
      if (path == "/") path.clear();
      const std::size_t leftHere =
          isFirstKind ? leftOfGroup("/sys/fs/cgroup/memory" + path, "/memory.limit_in_bytes",
                                    "/memory.usage_in_bytes", "total_inactive_file")
                      : leftOfGroup("/sys/fs/cgroup" + path, "/memory.max", "/memory.current",
                                    "inactive_file");
      left = std::min(left, leftHere);
      if (path.empty()) break;
    }
  }
  return left;
}

}  // namespace

std::size_t memoryroom::left() {
  return std::min({leftOfLimits(), leftOfMachine(), leftOfGroups()});
}
