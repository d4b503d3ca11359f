#include "files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include <chartxml/chartxml.h>

#include "commandline.h"

namespace {

[[noreturn]] void failAtFile(const std::string& name) {
  throw Failure(name + ": " + std::strerror(errno));
}

// False, with errno, when not all could be written.
bool writeAll(int file, const std::string& text) {
  std::size_t written = 0;
  while (written < text.size()) {
    const ssize_t count = write(file, text.data() + written, text.size() - written);
    if (count >= 0) {
      written += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

mode_t modeOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// The file that a link leads to is replaced, not the link.
std::string withoutLinks(const std::string& name) {
  const std::unique_ptr<char, decltype(&std::free)> path(realpath(name.c_str(), nullptr),
                                                         std::free);
  return path ? path.get() : name;
}

// Where files lie that know nothing of it, there is nothing to wait for.
bool isOnDisk(int file) {
  return fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
}

constexpr int endings[] = {SIGHUP, SIGINT, SIGTERM};

// Keeps them from coming for its scope.
class NoEndings {
 public:
  NoEndings() {
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : endings) sigaddset(&blocked, signal);
    sigprocmask(SIG_BLOCK, &blocked, &before_);
  }
  NoEndings(const NoEndings&) = delete;
  NoEndings& operator=(const NoEndings&) = delete;
  ~NoEndings() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

}  // namespace

TemporaryFile* TemporaryFile::first_ = nullptr;

void removeTemporaries() {
  for (const TemporaryFile* file = TemporaryFile::first_; file; file = file->next_) {
    unlink(file->name_.c_str());
  }
}

void removeTemporariesAtSignals() {
  struct sigaction action {};
  // By then the signal's action is the usual one.
  action.sa_handler = [](int signal) {
    removeTemporaries();
    raise(signal);
  };
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : endings) {
    struct sigaction before {};
    // nohup and the like have it ignored.
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
}

int TemporaryFile::create(const std::string& target) {
  name_ = target + ".XXXXXX";
  const NoEndings none;
  const int file = mkostemp(name_.data(), O_CLOEXEC);
  if (file < 0) return file;
  isThere_ = true;
  next_ = first_;
  first_ = this;
  return file;
}

void TemporaryFile::forget() {
  isThere_ = false;
  TemporaryFile** link = &first_;
  while (*link != this) link = &(*link)->next_;
  *link = next_;
}

bool TemporaryFile::renameTo(const std::string& target) {
  const NoEndings none;
  if (std::rename(name_.c_str(), target.c_str()) != 0) return false;
  forget();
  return true;
}

void TemporaryFile::remove() {
  if (!isThere_) return;
  const NoEndings none;
  unlink(name_.c_str());
  forget();
}

std::string readFile(const std::string& name) {
  const int file = name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) failAtFile(name);
  std::string text;
  char buffer[1 << 16];
  ssize_t count;
  while ((count = read(file, buffer, sizeof buffer)) != 0) {
    if (count > 0) {
      text.append(buffer, static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      const int reason = errno;
      if (file != STDIN_FILENO) close(file);
      errno = reason;
      failAtFile(name);
    }
  }
  if (file != STDIN_FILENO) close(file);
  return text;
}

std::string readDocument(const std::string& name) {
  std::string text = readFile(name);
  if (text.empty()) throw Failure(name + ": is empty");
  // No XML document starts with this byte, and all compressed texts do.
  if (!text.starts_with('x')) return text;
  if (!zlib1211tavo::decompressString(text, text)) {
    const std::size_t limit = zlib1211tavo::getInflateLimit() >> 20;
    throw Failure(name + ": is not a whole compressed document of at most " +
                  std::to_string(limit) + " MiB");
  }
  return text;
}

void writeOutput(const std::string& text) {
  if (!writeAll(STDOUT_FILENO, text)) {
    throw OutputError(std::string("standard output: ") + std::strerror(errno));
  }
}

PendingFile::PendingFile(const std::string& name, std::string content)
    : name_(name), content_(std::move(content)) {
  if (name_ == "-") return;
  target_ = withoutLinks(name_);
  struct stat status;
  const bool isThere = stat(target_.c_str(), &status) == 0;
  if (isThere && S_ISDIR(status.st_mode)) {
    errno = EISDIR;
    failAtFile(name_);
  }
  if (isThere && !S_ISREG(status.st_mode)) return;

  const int file = temporary_.create(target_);
  if (file < 0) failAtFile(name_);
  const mode_t mode = isThere ? status.st_mode & 0777 : modeOfNewFiles();
  const bool isWritten = fchmod(file, mode) == 0 && writeAll(file, content_) && isOnDisk(file);
  const int reason = errno;
  if (close(file) == 0 && isWritten) return;
  if (!isWritten) errno = reason;
  failAtFile(name_);
}

void PendingFile::commit() {
  if (name_ == "-") {
    writeOutput(content_);
  } else if (temporary_.isThere()) {
    if (!temporary_.renameTo(target_)) failAtFile(name_);
  } else {
    const int file = open(target_.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0) failAtFile(name_);
    const bool isWritten = writeAll(file, content_);
    const int reason = errno;
    if (close(file) == 0 && isWritten) return;
    if (!isWritten) errno = reason;
    failAtFile(name_);
  }
}
