#include "testsupport.h"

#include "testplaces.h"

std::vector<std::string> exampleFiles() {
  std::vector<std::string> files = xmlFiles(CHARTXML_EXAMPLES);
  for (std::string& file : xmlFiles(CHARTXML_EXAMPLES "/starters"))
    files.push_back(std::move(file));
  return files;
}
