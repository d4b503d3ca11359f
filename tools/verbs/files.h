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

// From now on a signal that ends the process (SIGHUP, SIGINT, SIGTERM) takes the temporary files
// along.
void removeTemporariesAtSignals();
// Removes them now, for who ends the process at once.
void removeTemporaries();

// A file that goes with this object or with the process, unless it is renamed.
class TemporaryFile {
 public:
  TemporaryFile() = default;
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { remove(); }

  // Makes one in the folder of `target`. The descriptor, which the caller closes; -1, with errno,
  // when there can't be one.
  int create(const std::string& target);
  bool isThere() const { return isThere_; }
  // False, with errno, and the file is still there.
  bool renameTo(const std::string& target);
  void remove();

 private:
  friend void removeTemporaries();

  void forget();

  // All that there are, for the signal handler. Changed while the signals are blocked.
  static TemporaryFile* first_;
  TemporaryFile* next_ = nullptr;
  std::string name_;
  bool isThere_ = false;
};

// Content that takes the place of a file as a whole or not at all: it is written to a temporary
// file in the same folder and on its disk, which goes with this object unless commit() renames it.
// What can't be replaced (standard output, a device, a pipe) is written by commit(). All throw a
// Failure, but for standard output an OutputError.
class PendingFile {
 public:
  PendingFile(const std::string& name, std::string content);
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  void commit();
  // True for what can't be replaced. It is to be committed first: its writing may still fail.
  bool isStream() const { return !temporary_.isThere(); }

 private:
  std::string name_;
  std::string target_;
  std::string content_;
  TemporaryFile temporary_;
};

#endif
