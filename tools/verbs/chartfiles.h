// The charts that a run over many is given, and the files that come of them.
#ifndef CHARTXML_TOOLS_CHARTFILES_H
#define CHARTXML_TOOLS_CHARTFILES_H

#include <set>
#include <string>
#include <vector>

bool isFolder(const std::string& path);

// The files *.xml and *.z of a folder in the order of their names, but for those in `others`; or
// the one file. Throws a Failure for a folder without any, or one that can't be read.
std::vector<std::string> chartsAt(const std::string& path, const std::vector<std::string>& others);

// Files of their own in one folder for many charts.
class OutputFolder {
 public:
  // Makes the folder if there is none. Throws a Failure.
  explicit OutputFolder(const std::string& path);

  // The chart's name with another extension, such as ".svg". Throws a Failure when another chart
  // has got it already.
  std::string fileFor(const std::string& chart, const std::string& extension);

 private:
  const std::string path_;
  std::set<std::string> given_;
};

#endif
