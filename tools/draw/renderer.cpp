#include "renderer.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>
#include <vector>

#include "failure.h"
#include "writtentexts.h"

namespace draw {

namespace {

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
  throw Failure(name + ": no picture can be made: " + reason);
}

// A file in memory, so that nobody waits for the other one to read.
class MemoryFile : public Descriptor {
 public:
  MemoryFile(const std::string& text, const std::string& name)
      : Descriptor(memfd_create("plot", MFD_CLOEXEC)) {
    if (number() < 0) fail(name, std::strerror(errno));
    for (std::size_t written = 0; written < text.size();) {
      const ssize_t count = write(number(), text.data() + written, text.size() - written);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) fail(name, std::strerror(errno));
      written += static_cast<std::size_t>(count);
    }
    lseek(number(), 0, SEEK_SET);
  }
};

std::string readAll(const Descriptor& file) {
  std::string text;
  std::array<char, 65536> buffer;
  for (;;) {
    const ssize_t count = read(file.number(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

// 0, or why the program can't be started.
int start(std::vector<std::string> command, const Descriptor& input, const Descriptor& output,
          const Descriptor& messages, pid_t& process) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input.number(), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output.number(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, messages.number(), STDERR_FILENO);
  // This process ignores broken pipes; the program shouldn't.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t defaults;
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  sigaddset(&defaults, SIGXFSZ);
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  std::vector<char*> arguments;
  for (std::string& word : command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const int error =
      posix_spawnp(&process, arguments[0], &actions, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return error;
}

// The last line, and of what node writes the one that tells the error.
std::string reasonIn(const std::string& messages) {
  std::string reason;
  std::size_t at = 0;
  while (at < messages.size()) {
    const std::size_t end = std::min(messages.find('\n', at), messages.size());
    std::string line = messages.substr(at, end - at);
    at = end + 1;
    if (line.find("Error: ") != line.npos) return line;
    if (line.find_first_not_of(" \t\r") != line.npos) reason = line;
  }
  return reason;
}

// What a program makes of the input; none when it isn't on the path. `sign` is in all that it
// should make.
std::optional<std::string> outputOf(const std::vector<std::string>& command,
                                    const std::string& input, const std::string& sign,
                                    const std::string& name, bool isVerbose) {
  const MemoryFile inputFile(input, name);
  const MemoryFile messages("", name);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) fail(name, std::strerror(errno));
  const Descriptor output(ends[0]);
  Descriptor outputOfProgram(ends[1]);
  pid_t process = 0;
  const int error = start(command, inputFile, outputOfProgram, messages, process);
  if (error == ENOENT) return std::nullopt;
  if (error != 0) fail(name, command[0] + ": " + std::strerror(error));
  outputOfProgram.close();

  std::string result = readAll(output);
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  lseek(messages.number(), 0, SEEK_SET);
  const std::string told = readAll(messages);
  if (isVerbose) std::cerr << told;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || result.find(sign) == result.npos) {
    const std::string reason = reasonIn(told);
    fail(name, command[0] + " failed" + (reason.empty() ? "" : ": " + escaped(reason)));
  }
  return result;
}

std::string svgOf(const std::string& plot, const std::string& name, bool isVerbose) {
  std::optional<std::string> svg = outputOf({"vl2svg"}, plot, "<svg", name, isVerbose);
  if (!svg) {
    fail(name, "vl2svg isn't on the path ('npm install -g vega vega-lite vega-cli' brings it)");
  }
  return *std::move(svg);
}

bool isOnPath(const std::string& program) {
  const char* path = std::getenv("PATH");
  const std::string folders = path ? path : "";
  for (std::size_t at = 0; at <= folders.size();) {
    const std::size_t end = std::min(folders.find(':', at), folders.size());
    if (access((folders.substr(at, end - at) + '/' + program).c_str(), X_OK) == 0) return true;
    at = end + 1;
  }
  return false;
}

std::string pngOf(const std::string& plot, const std::string& name, bool isVerbose) {
  constexpr char sign[] = "PNG\r\n";
  std::optional<std::string> png =
      isOnPath("rsvg-convert")
          ? outputOf({"rsvg-convert"}, svgOf(plot, name, isVerbose), sign, name, isVerbose)
          : outputOf({"vl2png"}, plot, sign, name, isVerbose);
  if (!png) {
    fail(name,
         "neither rsvg-convert (Debian's librsvg2-bin) nor vl2png (npm's vega-cli) is on the path");
  }
  return *std::move(png);
}

}  // namespace

std::string renderPicture(const std::string& plot, PictureForm form, const std::string& name,
                          bool isVerbose) {
  return form == PictureForm::Svg ? svgOf(plot, name, isVerbose) : pngOf(plot, name, isVerbose);
}

}  // namespace draw
