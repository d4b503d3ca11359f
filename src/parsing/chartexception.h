// ChartException: what went wrong, and where in the source.
#ifndef CHARTXML_CHARTEXCEPTION_H
#define CHARTXML_CHARTEXCEPTION_H

#include <exception>
#include <string>

#include "export.h"

// The one exception type that the library makes. Most are never thrown: they carry a report to
// ChartErrorHandler.
class CHARTXML_API ChartException : public std::exception {
 public:
  ChartException() = default;
  // `file` is the path of the raising source file.
  ChartException(const std::string& message, const std::string& file, unsigned int line);
  ChartException(const ChartException&) = default;
  ChartException& operator=(const ChartException&) = default;
  ~ChartException() override;

  const char* what() const noexcept override { return message_.c_str(); }
  virtual const char* file() const { return file_.c_str(); }
  virtual unsigned int line() const { return line_; }

 private:
  std::string message_;
  std::string file_;
  unsigned int line_ = 0;
};

#endif
