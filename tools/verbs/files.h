// Whole files in and out. The name "-" is standard input, or standard output.
#ifndef CHARTXML_TOOLS_FILES_H
#define CHARTXML_TOOLS_FILES_H

#include <stdexcept>
#include <string>

// Standard output can't be written any more, so that all further work is in vain.
class OutputError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The bytes of a file as they stand. Throws a Failure.
std::string readFile(const std::string& name);

// The text of a chart or data document, inflated when the file holds it compressed. Throws a
// Failure.
std::string readDocument(const std::string& name);

// Throws an OutputError.
void writeOutput(const std::string& text);

// Content that takes the place of a file as a whole or not at all: it is written to a temporary
// file in the same folder, which goes with this object unless commit() renames it. What can't be
// replaced (standard output, a device, a pipe) is written by commit(). All throw a Failure, but for
// standard output an OutputError.
class PendingFile {
 public:
  PendingFile(const std::string& name, std::string content);
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  ~PendingFile();

  void commit();
  // True for what can't be replaced. It is to be committed first: its writing may still fail.
  bool isStream() const { return temporary_.empty(); }

 private:
  std::string name_;
  std::string target_;
  std::string content_;
  std::string temporary_;  // empty when there is none, or none any more
};

#endif
