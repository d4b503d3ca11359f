// What several tests share: chart texts, a folder for the log and the dumps, the example charts.
#ifndef CHARTXML_TESTSUPPORT_H
#define CHARTXML_TESTSUPPORT_H

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "chartbase.h"

// A chart around `body`; `prolog` stands before the root.
inline std::string chartText(const std::string& body = "", const std::string& prolog = "",
                             const std::string& attributes = "") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + prolog + "<visualization xmlns=\"" +
         CHARTXML_HOST
         "/visualization\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
         "xsi:schemaLocation=\"" CHARTXML_HOST "/visualization " CHARTXML_HOST
         "/visualization/grafo-2.9.xsd\"" +
         attributes + ">" + body + "</visualization>";
}

inline std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

// In a folder, but not below it.
inline std::vector<std::string> xmlFiles(const std::string& folder) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".xml") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// The example charts.
std::vector<std::string> exampleFiles();

// Sets the variables of the log and the dumps for its scope, over a new folder that goes with it.
class LogFolder {
 public:
  explicit LogFolder(const char* options = nullptr) {
    char name[] = "/tmp/chartxml-test-XXXXXX";
    path_ = mkdtemp(name);
    setenv("DumpChartXMLPath", (path_ + "/").c_str(), 1);
    if (options) setenv("DumpChartXMLOptions", options, 1);
  }
  LogFolder(const LogFolder&) = delete;
  LogFolder& operator=(const LogFolder&) = delete;
  ~LogFolder() {
    unsetenv("DumpChartXMLPath");
    unsetenv("DumpChartXMLOptions");
    std::filesystem::remove_all(path_);
  }

  // Names are behind a backslash, which is part of the name.
  std::string file(const std::string& name) const { return path_ + "/\\" + name; }
  std::string log() const { return readFile(file("chartxml_error.log")); }
  std::size_t logSize() const {
    std::error_code none;
    const auto size = std::filesystem::file_size(file("chartxml_error.log"), none);
    return none ? 0 : size;
  }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string path_;
};

#endif
