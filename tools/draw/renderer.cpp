#include "renderer.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "failure.h"

namespace draw {

namespace {

constexpr char program[] = "vl2svg";

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  int number() const { return number_; }
  void close() {
    if (number_ >= 0) ::close(number_);
    number_ = -1;
  }

 private:
  int number_;
};

[[noreturn]] void fail(const std::string& name, const std::string& reason) {
  throw Failure(name + ": can't be drawn as SVG: " + reason);
}

// The whole text in a file in memory, so that nobody waits for the other one to read.
void fill(const Descriptor& file, const std::string& text, const std::string& name) {
  for (std::size_t written = 0; written < text.size();) {
    const ssize_t count = write(file.number(), text.data() + written, text.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) fail(name, std::strerror(errno));
    written += static_cast<std::size_t>(count);
  }
  lseek(file.number(), 0, SEEK_SET);
}

std::string readAll(const Descriptor& pipe) {
  std::string text;
  std::array<char, 65536> buffer;
  for (;;) {
    const ssize_t count = read(pipe.number(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace

std::string renderSvg(const std::string& plot, const std::string& name) {
  const Descriptor input(memfd_create("plot", MFD_CLOEXEC));
  if (input.number() < 0) fail(name, std::strerror(errno));
  fill(input, plot, name);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) fail(name, std::strerror(errno));
  const Descriptor output(ends[0]);
  Descriptor outputOfProgram(ends[1]);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input.number(), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, outputOfProgram.number(), STDOUT_FILENO);
  // This process ignores broken pipes; the program shouldn't.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t defaults;
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  sigaddset(&defaults, SIGXFSZ);
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  char argument[] = "vl2svg";
  char* const arguments[] = {argument, nullptr};
  pid_t process = 0;
  const int error = posix_spawnp(&process, program, &actions, &attributes, arguments, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  if (error == ENOENT) {
    fail(name, std::string(program) + " isn't on the path (npm's vega-cli and vega-lite have it)");
  }
  if (error != 0) fail(name, std::string(program) + ": " + std::strerror(error));
  outputOfProgram.close();

  std::string svg = readAll(output);
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || svg.find("<svg") == svg.npos) {
    fail(name, std::string(program) + " failed");
  }
  return svg;
}

}  // namespace draw
