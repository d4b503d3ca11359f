#include "progress.h"

#include <unistd.h>

#include <iostream>

Progress::Progress(std::size_t total) : total_(total), isShown_(isatty(STDERR_FILENO)) {}

Progress::~Progress() {
  say("");
}

void Progress::show(std::size_t done, const std::string& text) {
  if (!isShown_ || total_ == 0) return;
  constexpr std::size_t width = 40;
  const std::size_t filled = width * done / total_;
  say(text + (text.empty() ? "" : " ") + '[' + std::string(filled, '#') +
      std::string(width - filled, '.') + "] " + std::to_string(done) + '/' +
      std::to_string(total_));
}

void Progress::say(const std::string& text) {
  if (!isShown_ || text == shown_) return;
  std::cerr << '\r' << text;
  if (text.size() < shown_.size()) {
    const std::size_t rest = shown_.size() - text.size();
    std::cerr << std::string(rest, ' ') << std::string(rest, '\b');
  }
  if (text.empty()) std::cerr << '\r';
  std::cerr << std::flush;
  shown_ = text;
}
