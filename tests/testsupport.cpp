#include "testsupport.h"

#include "testplaces.h"

std::vector<std::string> exampleFiles() {
  return xmlFiles(CHARTXML_EXAMPLES);
}
