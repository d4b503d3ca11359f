#include "installationcodepage.h"

#include <string>

#include "pathfactory.h"

namespace {

// Codes as the resource folders are named; the two of Chinese do differ in their separator.
constexpr struct {
  const char* language;
  const char* codePage;
} table[] = {{"ru", "CP1251"},   {"pl", "CP1250"}, {"zh_tw", "CP950"},
             {"zh-cn", "CP936"}, {"ko", "CP949"},  {"ja", "CP932"}};

}  // namespace

const char* installationCodePage() {
  const PathFactory* paths = PathFactory::getPathInstance(3);
  const std::string rest =
      paths->getLanguageResourcePath().substr(paths->getBaseResourcePath().size());
  const std::string language = rest.substr(0, rest.find('/'));
  for (const auto& row : table) {
    if (language == row.language) return row.codePage;
  }
  return "CP1252";
}
