// PathFactory: where the installation's files are.
#ifndef CHARTXML_PATHFACTORY_H
#define CHARTXML_PATHFACTORY_H

#include <string>

#include "export.h"

// Instance 3 is the one that the library reads: the folder of schemas, the resource folder, and the
// folder of one language's resources below that.
//
// The folders are found relative to the library's own file, in an installed prefix and in a build
// tree alike, and no environment variable is read. A program that embeds the library from elsewhere
// names its installation folder before it makes a ChartBase. One object serves the whole process.
class CHARTXML_API PathFactory {
 public:
  // The same object for a number at every call; it lives as long as the process.
  static PathFactory* getPathInstance(int instance);

  // With a separator at the end: schema files and document type definitions.
  const std::string& getFolder() const { return folder_; }
  // With a separator at the end.
  const std::string& getBaseResourcePath() const { return resourcePath_; }
  // The base resource path, the language code and a separator.
  const std::string& getLanguageResourcePath() const { return languagePath_; }

  // The folder that holds `schemas/` and `resources/`, with or without a separator at the end; an
  // empty one goes back to the library's own installation.
  void setInstallationFolder(const std::string& folder);
  // A language code as the folders below the resource folder are named, such as "en", "de", "zh_tw"
  // or "zh-cn"; "en" at first.
  void setLanguage(const std::string& code);

 private:
  PathFactory();
  void update();

  std::string installation_;
  std::string language_ = "en";
  std::string folder_;
  std::string resourcePath_;
  std::string languagePath_;
};

#endif
