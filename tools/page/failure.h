// What verbs and what they are made of throw.
#ifndef CHARTXML_TOOLS_FAILURE_H
#define CHARTXML_TOOLS_FAILURE_H

#include <stdexcept>
#include <string>

// One file that can't be processed: a message, exit code 1, and on to the next file. The message
// starts with the file's name.
class Failure : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A file that there is no memory for.
class NotEnoughMemory : public Failure {
 public:
  explicit NotEnoughMemory(const std::string& file) : Failure(file + ": not enough memory") {}
};

#endif
