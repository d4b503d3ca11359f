#include "chartfiles.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "commandline.h"

namespace fs = std::filesystem;

bool isFolder(const std::string& path) {
  std::error_code none;
  return fs::is_directory(path, none);
}

std::vector<std::string> chartsAt(const std::string& path, const std::vector<std::string>& others) {
  if (!isFolder(path)) return {path};
  std::vector<std::string> charts;
  try {
    for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
      const fs::path extension = entry.path().extension();
      if ((extension != ".xml" && extension != ".z") || entry.is_directory()) continue;
      const bool isOther = std::ranges::any_of(others, [&](const std::string& name) {
        std::error_code none;
        return fs::equivalent(entry.path(), name, none);
      });
      if (!isOther) charts.push_back(entry.path());
    }
  } catch (const fs::filesystem_error& e) {
    throw Failure(path + ": " + e.code().message());
  }
  if (charts.empty()) throw Failure(path + ": holds no charts");
  std::ranges::sort(charts);
  return charts;
}

OutputFolder::OutputFolder(const std::string& path) : path_(path) {
  std::error_code error;
  fs::create_directories(path_, error);
  if (error) throw Failure(path_ + ": " + error.message());
}

std::string OutputFolder::fileFor(const std::string& chart, const std::string& extension) {
  std::string file = fs::path(path_) / fs::path(chart).filename().replace_extension(extension);
  if (!given_.insert(file).second) {
    throw Failure(chart + ": " + file + " holds another chart of this run");
  }
  return file;
}
