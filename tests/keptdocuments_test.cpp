// Templates that are set again: what is kept, how long, and that it makes no difference.
#include "keptdocuments.h"

#include <regex>

#include <xercesc/util/PlatformUtils.hpp>

#include "chartparser.h"
#include "charttemplate.h"
#include "charttransformer.h"
#include "commandcases.h"
#include "grammarpool.h"
#include "pathfactory.h"
#include "testplaces.h"
#include "xmlwriter.h"

namespace {

using Kept = std::shared_ptr<const ChartParser>;

Kept parse(const std::string& text) {
  return keptdocuments::parse(grammarpool::ofTemplate(text), text, "text");
}

bool isKept(const std::string& text) {
  const Kept first = parse(text);
  return first && first == parse(text);
}

std::string numbered(int number, std::size_t size = 0) {
  return templateText("<setClusterWidth gap='" + std::to_string(number) + "%' role='x'/>" +
                      std::string(size, ' '));
}

TEST(KeptTemplates, AreTheLastFew) {
  const ChartBase holder;
  for (int i = 0; i < 7; ++i) parse(numbered(i));
  const Kept first = parse(numbered(0));
  const std::weak_ptr<const ChartParser> second = parse(numbered(1));
  const std::weak_ptr<const ChartParser> third = parse(numbered(2));
  parse(numbered(1));
  for (int i = 7; i < 12; ++i) parse(numbered(i));
  // The first was asked for before five others, and the third.
  EXPECT_EQ(parse(numbered(0)), first);
  EXPECT_FALSE(second.expired());
  for (int i = 12; i < 17; ++i) parse(numbered(i));
  EXPECT_TRUE(second.expired());
  EXPECT_TRUE(third.expired());
  // What somebody has stays.
  for (int i = 0; i < 10; ++i) parse(numbered(i + 20));
  EXPECT_NE(parse(numbered(0)), first);
  EXPECT_EQ(xmlText(*first->document()), xmlText(*parse(numbered(0))->document()));
}

TEST(KeptTemplates, TakeNoMoreThanTheirBytes) {
  const ChartBase holder;
  constexpr std::size_t large = keptdocuments::mostBytes / 30;
  EXPECT_FALSE(isKept(numbered(1, keptdocuments::mostBytes)));
  std::vector<std::weak_ptr<const ChartParser>> all;
  for (int i = 0; i < 6; ++i) all.push_back(parse(numbered(i, large)));
  std::size_t bytes = 0;
  for (const auto& each : all) {
    if (const Kept kept = each.lock()) bytes += kept->bytes() + large;
  }
  EXPECT_GT(bytes, 0u) << parse(numbered(0))->bytes();
  EXPECT_LE(bytes, keptdocuments::mostBytes);
  // A document of a kept text that grows as it is read.
  const std::string text = numbered(7, 1000);
  const Kept grown = parse(text);
  const xercesc::DOMElement* root = grown->document()->getDocumentElement();
  while (grown->bytes() < keptdocuments::mostBytes) root->getTextContent();
  EXPECT_NE(parse(text), grown);
}

TEST(KeptTemplates, AreThoseThatNothingElseCanChange) {
  // By the front door, which another test may have used.
  const bool isLibraryHeld = xercesc::XMLPlatformUtils::fgMemoryManager;
  const std::string plain = templateText("");
  std::weak_ptr<const ChartParser> kept;
  {
    const ChartBase holder;
    EXPECT_TRUE(isKept(plain));
    kept = parse(plain);
    EXPECT_FALSE(parse(templateText("<bogus")));
    EXPECT_FALSE(isKept("<?xml version='1.0'?><!DOCTYPE template>" + plain));
    // Another folder may have other schemas.
    const Kept first = parse(plain);
    const std::string folder = CHARTXML_INSTALLATION "/.";
    PathFactory::getPathInstance(3)->setInstallationFolder(folder);
    EXPECT_NE(parse(plain), first);
    PathFactory::getPathInstance(3)->setInstallationFolder(CHARTXML_INSTALLATION);
    EXPECT_EQ(parse(plain), first);
  }
  EXPECT_NE(kept.expired(), isLibraryHeld);
}

// Of any template: the log, and what becomes of a chart, but for the time of day in its texts.
std::string applied(const std::string& chart, const std::string& text) {
  const LogFolder folder;
  ChartTransformer transformer(chart);
  std::vector<std::size_t> passedOver;
  std::string result = transformer.applyTemplate(text, passedOver) ? "true" : "false";
  for (const std::size_t each : passedOver) result += ' ' + std::to_string(each);
  const std::string log = folder.log();
  for (std::size_t at = 0; (at = log.find(" -- ", at)) != log.npos; ++at) {
    result += '\n' + log.substr(at, log.find('\n', at) - at);
  }
  static const std::regex time("[0-9]+:[0-9]+(:[0-9]+)?");
  return result + '\n' + std::regex_replace(transformer.getEntireXML(nullptr), time, "time");
}

// A command that wrote into its own elements would spoil the next run.
TEST(KeptTemplates, DoTheSameAgain) {
  const ChartBase holder;
  std::vector<std::string> templates = {
      templateText("<bogus><b/></bogus><setAxisScale role='x' method='none'/>"),
      templateText("<unfinished"), "<visualization><style id='a' color='red'/></visualization>"};
  for (const char* folder : {"/templates", "/templates/older"}) {
    for (const std::string& file : xmlFiles(std::string(CHARTXML_EXAMPLES) + folder)) {
      templates.push_back(readFile(file));
    }
  }
  for (const std::string& text : templates) {
    const Kept kept = ChartTemplate::isOlder(text) ? nullptr : parse(text);
    const std::string before = kept ? xmlText(*kept->document()) : "";
    for (const std::string& file : exampleFiles()) {
      const std::string chart = readFile(file);
      if (chart.size() > 22'000) continue;
      keptdocuments::clear();
      const std::string fresh = applied(chart, text);
      EXPECT_EQ(applied(chart, text), fresh) << file;
      EXPECT_TRUE(!kept || xmlText(*parse(text)->document()) == before) << file;
    }
  }
}

}  // namespace
