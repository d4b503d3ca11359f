#include "wholefile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace {

[[noreturn]] void fail(int reason) {
  throw std::system_error(reason, std::generic_category());
}

// Closed at the end of its scope.
class File {
 public:
  explicit File(int number) : number_(number) {
    if (number_ < 0) fail(errno);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() {
    if (number_ >= 0) ::close(number_);
  }

  int number() const { return number_; }
  void close() {
    if (::close(std::exchange(number_, -1)) != 0) fail(errno);
  }
  void write(const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
      const ssize_t count = ::write(number_, text.data() + done, text.size() - done);
      if (count >= 0) {
        done += static_cast<std::size_t>(count);
      } else if (errno != EINTR) {
        fail(errno);
      }
    }
  }

 private:
  int number_;
};

// Removed at the end of its scope, unless the name is cleared.
struct Temporary {
  explicit Temporary(std::string template_) : name(std::move(template_)) {}
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (isMade && !name.empty()) unlink(name.c_str());
  }

  std::string name;
  bool isMade = false;
};

mode_t modeOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// The file that a link leads to is replaced, not the link.
std::string withoutLinks(const std::string& path) {
  char* real = realpath(path.c_str(), nullptr);
  std::string result = real ? real : path;
  std::free(real);
  return result;
}

}  // namespace

std::string wholefile::read(const std::string& path) {
  const File file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  std::string text;
  char buffer[1 << 16];
  for (;;) {
    const ssize_t count = ::read(file.number(), buffer, sizeof buffer);
    if (count == 0) return text;
    if (count > 0) {
      text.append(buffer, static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      fail(errno);
    }
  }
}

void wholefile::write(const std::string& path, const std::string& text) {
  const std::string target = withoutLinks(path);
  struct stat status;
  const bool isThere = stat(target.c_str(), &status) == 0;
  if (isThere && !S_ISREG(status.st_mode)) {
    File file(open(target.c_str(), O_WRONLY | O_CLOEXEC));
    file.write(text);
    file.close();
    return;
  }
  Temporary temporary(target + ".XXXXXX");
  File file(mkostemp(temporary.name.data(), O_CLOEXEC));
  temporary.isMade = true;
  if (fchmod(file.number(), isThere ? status.st_mode & 0777 : modeOfNewFiles()) != 0) fail(errno);
  file.write(text);
  if (fsync(file.number()) != 0) fail(errno);
  file.close();
  if (std::rename(temporary.name.c_str(), target.c_str()) != 0) fail(errno);
  temporary.name.clear();
}
