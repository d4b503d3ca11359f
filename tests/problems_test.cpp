// What the library tells of documents that have something wrong.
#include <gtest/gtest.h>

#include "charttemplate.h"
#include "charttransformer.h"
#include "commandcases.h"
#include "documentnode.h"
#include "misspelling.h"
#include "testsupport.h"
#include "treetransformer.h"

namespace {

using Problems = std::vector<ChartProblem>;

// "LINE:COLUMN message" of each, with '~' in front of what is tolerated.
std::string told(const Problems& problems) {
  std::string text;
  for (const ChartProblem& problem : problems) {
    if (!text.empty()) text += '\n';
    text += (problem.isRefused ? "" : "~") + problem.file + std::to_string(problem.line) + ':' +
            std::to_string(problem.column) + ' ' + problem.message;
  }
  return text;
}

constexpr const char* badValue = "\n<graph id='g' transparency='x'/>";

struct Case {
  std::string text;
  std::string cheap;  // what a parse tells
  std::string all;    // what findProblems() tells
};

class Documents : public ::testing::TestWithParam<Case> {};

TEST(Problems, AreThoseOfTheLastText) {
  const std::string bad = chartText("\n<graph id='g' cellStyle='none'>\n<location part='x'/></graph>");
  const Case cases[] = {
      {chartText(), "", ""},
      {chartText("\n<grap/>"), "2:8 element 'grap' is not allowed",
       "2:8 element 'grap' is not allowed in 'visualization'; did you mean 'graph'?"},
  };
  ChartBase base;
  EXPECT_EQ(told(base.getProblems()), "");
  for (const Case& each : cases) {
    base.parseDocument(each.text);
    EXPECT_EQ(told(base.getProblems()), each.cheap);
    EXPECT_EQ(told(base.findProblems(each.text)), each.all);
    EXPECT_EQ(told(base.getProblems()), each.cheap);
  }
  base.parseDocument(bad);
  EXPECT_EQ(told(base.getProblems()), "");
  EXPECT_EQ(told(base.findProblems(bad)), "");
}

}  // namespace
