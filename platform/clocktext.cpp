#include "clocktext.h"

#include <time.h>

#include <cstring>

ClockText::ClockText() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  milliseconds_ = now.tv_sec * 1000LL + now.tv_nsec / 1000000;
  if (!ctime_r(&now.tv_sec, text_)) std::memset(text_, ' ', sizeof text_);
}

std::string ClockText::milliseconds() const {
  return std::to_string(1000 + milliseconds_ % 1000).substr(1);
}

std::string_view ClockText::slice(std::size_t start, std::size_t count) const {
  return {text_ + start, count};
}
