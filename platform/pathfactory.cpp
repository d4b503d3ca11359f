#include "pathfactory.h"

#include <dlfcn.h>

#include <map>
#include <memory>

namespace {

// The folder of the shared library that holds this very function.
std::string libraryFolder() {
  Dl_info info;
  if (!dladdr(reinterpret_cast<void*>(&libraryFolder), &info) || !info.dli_fname) return "./";
  const std::string file = info.dli_fname;
  const std::size_t slash = file.rfind('/');
  return slash == std::string::npos ? "./" : file.substr(0, slash + 1);
}

}  // namespace

PathFactory* PathFactory::getPathInstance(int instance) {
  static std::map<int, std::unique_ptr<PathFactory>> instances;
  std::unique_ptr<PathFactory>& object = instances[instance];
  if (!object) object.reset(new PathFactory);
  return object.get();
}

PathFactory::PathFactory() {
  setInstallationFolder({});
}

void PathFactory::setInstallationFolder(const std::string& folder) {
  installation_ = folder.empty() ? libraryFolder() + CHARTXML_DATA_FROM_LIB : folder;
  if (installation_.back() != '/') installation_ += '/';
  update();
}

void PathFactory::setLanguage(const std::string& code) {
  language_ = code;
  update();
}

void PathFactory::update() {
  folder_ = installation_ + "schemas/";
  resourcePath_ = installation_ + "resources/";
  languagePath_ = resourcePath_ + language_ + "/";
}
