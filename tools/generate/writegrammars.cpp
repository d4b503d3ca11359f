// Writes the grammars of the installed schemas for the library that is being built.
#include <fstream>
#include <iostream>
#include <string>
#include <utility>

#include "chartbase.h"
#include "pathfactory.h"
#include "storedgrammars.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: writegrammars INSTALLATION FOLDER\n";
    return 2;
  }
  PathFactory* paths = PathFactory::getPathInstance(3);
  paths->setInstallationFolder(argv[1]);
  const ChartBase base;
  constexpr std::pair<const char*, grammarpool::Kind> kinds[] = {
      {"charts", grammarpool::Kind::Charts},
      {"templates", grammarpool::Kind::Templates},
      {"newertemplates", grammarpool::Kind::NewerTemplates},
      {"trees", grammarpool::Kind::Trees}};
  for (const auto& [name, kind] : kinds) {
    const std::string path = std::string(argv[2]) + '/' + name + ".grammars";
    const std::string store = storedgrammars::write(kind, paths->getFolder());
    std::ofstream file(path, std::ios::binary);
    file << store;
    if (store.empty() || !file.flush()) {
      std::cerr << "writegrammars: can't write " << path << '\n';
      return 1;
    }
  }
  return 0;
}
