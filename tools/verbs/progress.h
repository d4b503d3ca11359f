// How far a long run is.
#ifndef CHARTXML_TOOLS_PROGRESS_H
#define CHARTXML_TOOLS_PROGRESS_H

#include <cstddef>
#include <string>

// A line on standard error, where that is a terminal, which goes with the object.
class Progress {
 public:
  explicit Progress(std::size_t total = 0);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  // A bar for what is done of the total, behind the text. Costs little when nothing has changed.
  void show(std::size_t done, const std::string& text = "");
  // What is being done, when nothing tells how far it is.
  void say(const std::string& text);

 private:
  const std::size_t total_;
  const bool isShown_;
  std::string shown_;
};

#endif
