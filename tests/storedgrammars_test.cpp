// Grammars that are taken from the library's file: when they are, and that it makes no difference.
#include "storedgrammars.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>

#include "chartparser.h"
#include "pathfactory.h"
#include "testplaces.h"
#include "testsupport.h"
#include "xmlwriter.h"

namespace {

namespace fs = std::filesystem;
using grammarpool::Kind;

// A folder of the installation's schemas as files, which aren't those of the stored grammars.
class OtherSchemas {
 public:
  OtherSchemas() {
    char name[] = "/tmp/chartxml-schemas-XXXXXX";
    path_ = mkdtemp(name);
    fs::create_directory(path_ + "/schemas");
    for (const auto& entry : fs::directory_iterator(CHARTXML_INSTALLATION "/schemas")) {
      write(entry.path().filename(), readFile(entry.path()));
    }
  }
  OtherSchemas(const OtherSchemas&) = delete;
  OtherSchemas& operator=(const OtherSchemas&) = delete;
  ~OtherSchemas() {
    PathFactory::getPathInstance(3)->setInstallationFolder(CHARTXML_INSTALLATION);
    fs::remove_all(path_);
  }

  const std::string& path() const { return path_; }
  std::string folder() const { return path_ + "/schemas/"; }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(folder() + name, std::ios::binary) << text;
  }

 private:
  std::string path_;
};

TEST(StoredGrammars, AreForTheirVerySchemas) {
  const ChartBase base;
  const OtherSchemas other;
  const std::pair<Kind, std::vector<std::string>> cases[] = {
      {Kind::Charts, {"grafo-data-2.1.xsd", "grafo-2.9.xsd"}},
      {Kind::Templates, {"grafo-template-1.0.xsd", "grafo-template-commands.xsd"}},
      {Kind::NewerTemplates, {"grafo-template-3.5.xsd", "grafo-template-commands.xsd"}},
      {Kind::Trees, {"pmml-2-1.xsd", "treeview-1.0.xsd"}},
  };
  for (const auto& [kind, files] : cases) {
    ASSERT_TRUE(storedgrammars::read(kind, other.folder())) << files[0];
    EXPECT_FALSE(storedgrammars::read(kind, "/nowhere/"));
    for (const std::string& file : files) {
      const std::string text = readFile(other.folder() + file);
      std::string changed = text;
      changed[changed.size() / 2] ^= 1;
      for (const std::string& each : {text + ' ', text.substr(0, text.size() - 1), changed}) {
        other.write(file, each);
        EXPECT_FALSE(storedgrammars::read(kind, other.folder())) << file;
      }
      other.write(file, text);
    }
    EXPECT_TRUE(storedgrammars::read(kind, other.folder()));
  }
  EXPECT_FALSE(storedgrammars::read(Kind::None, other.folder()));
}

// ---- both roads

struct Case {
  Kind kind;
  std::string text;
};

// Texts that schemas may have something against: elements that stand elsewhere, are missing or come
// twice, and attributes of other elements. Plain damage mostly ends before it comes to schemas.
std::vector<std::string> misplaced(const std::string& text, std::size_t count,
                                   std::mt19937& random) {
  static const std::regex part("<[A-Za-z]+[^<>]*/>|[A-Za-z]+=\"[^\"]*\"");
  const std::vector<std::smatch> parts(std::sregex_iterator(text.begin(), text.end(), part), {});
  const auto any = [&] { return parts[random() % parts.size()]; };
  std::vector<std::string> results(count, text);
  for (std::string& result : results) {
    const std::smatch to = any();
    std::smatch from = any();
    for (int tries = 0; tries < 50 && from.str()[0] != to.str()[0]; ++tries) from = any();
    const std::string other = random() % 4 ? from.str() + ' ' + to.str() : from.str();
    result.replace(to.position(), to.length(), random() % 4 ? other : "");
  }
  return results;
}

std::vector<Case> allCases() {
  std::vector<Case> cases;
  for (const char* folder : {"", "/templates", "/trees"}) {
    for (const std::string& file : xmlFiles(std::string(CHARTXML_EXAMPLES) + folder)) {
      const std::string text = readFile(file);
      const Kind kind = !*folder                          ? Kind::Charts
                        : std::string(folder) == "/trees" ? Kind::Trees
                                                          : grammarpool::ofTemplate(text);
      cases.push_back({kind, text});
      if (kind != Kind::Templates && kind != Kind::Trees) continue;
      // The same in the other namespace.
      cases.push_back({kind == Kind::Trees ? kind : Kind::NewerTemplates, text});
      std::string& other = cases.back().text;
      if (kind == Kind::Trees) {
        other = std::regex_replace(other, std::regex("/tavo/treeview\""), "/treeview\"");
        continue;
      }
      other = std::regex_replace(other, std::regex("/tavo/visualization"),
                                 "/software/analytics/tavo/xml/visualization");
      other = std::regex_replace(other, std::regex("grafo-template-[12]\\.[0-9]+"),
                                 "grafo-template-3.5");
    }
  }
  std::mt19937 random(20261125);
  for (std::size_t i = cases.size(); i-- > 0;) {
    for (const std::string& text : misplaced(cases[i].text, 6, random)) {
      cases.push_back({cases[i].kind, text});
    }
  }
  return cases;
}

// The documents and the log's entries, each without its date.
std::vector<std::string> read(const std::vector<Case>& cases, std::size_t& served) {
  const ChartBase base;
  std::vector<std::string> results;
  for (const auto& [kind, text] : cases) {
    const LogFolder folder;
    ChartParser parser(kind);
    const bool isRead = parser.parseText(text, "text");
    served += parser.isServed();
    const std::string log = folder.log();
    results.push_back(log.substr(std::min(log.find(" -- "), log.size())));
    if (isRead) results.back() += xmlText(*parser.getDocument());
  }
  return results;
}

TEST(StoredGrammars, ValidateAsTheSchemasDo) {
  const std::vector<Case> cases = allCases();
  const OtherSchemas other;
  for (const char* file : {"grafo-2.9.xsd", "grafo-template-commands.xsd", "pmml-2-1.xsd"}) {
    other.write(file, readFile(other.folder() + file) + "<!-- other -->");
  }
  std::size_t served = 0;
  const std::vector<std::string> stored = read(cases, served);
  PathFactory::getPathInstance(3)->setInstallationFolder(other.path());
  std::size_t servedAnew = 0;
  const std::vector<std::string> anew = read(cases, servedAnew);
  std::size_t refused = 0;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(stored[i], anew[i]) << cases[i].text.substr(0, 600);
    refused += stored[i].starts_with(" -- ");
  }
  EXPECT_EQ(served, servedAnew);
  // Both ways of a validation have been seen often.
  EXPECT_GT(served, cases.size() * 3 / 4);
  EXPECT_GT(refused, cases.size() / 5);
  EXPECT_LT(refused, cases.size() * 4 / 5);
}

}  // namespace
