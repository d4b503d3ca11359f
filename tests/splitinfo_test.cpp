// The labels of split groups.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <new>

#include "bpoutput.h"
#include "memorydatasource.h"
#include "pathfactory.h"
#include "splitinfo.h"
#include "tavogotocaller.h"

namespace {

constexpr TAVO_Format numbers{8, 5, 1};
constexpr TAVO_Format texts{12, 1, 0};

std::unique_ptr<MemoryVariable> variable(const char* name, const TAVO_Format& format,
                                         const char* label = nullptr) {
  auto result = std::make_unique<MemoryVariable>(name, format);
  if (label) result->setLabel(label);
  return result;
}

// Fails where a test tells it to.
template <class Exception>
class Failing : public MemoryVariable {
 public:
  using MemoryVariable::MemoryVariable;
  int IsMissing(const OBS&) const override { throw Exception(); }
};

class Refusing : public MemoryDataSource {
 public:
  bool Activate(BpProcedure&) const override { return false; }
};

TEST(SplitInfo, TellsVariablesAndValues) {
  MemoryDataSource source;
  auto gender = variable("sex", numbers, "Gender");
  gender->setValueLabel(2, "female");
  source.add(std::move(gender), 2);
  auto region = variable("region", texts);
  region->setValueLabel("n", "north");
  source.add(std::move(region), "  nord-ouest");
  source.add(variable("size", numbers, "Size of town"), 12.25);
  source.add(variable("blank", texts), "");
  source.add(variable("unknown", numbers), NAN);
  source.add(variable("narrow", {2, 5, 0}), 12345);

  splitInfo info;
  EXPECT_EQ(info.getSplitLabel(false), "");
  EXPECT_TRUE(info.saveSplitInfo(&source, &source));
  const std::string rest = " = 12.2, blank = Missing, unknown = Missing, narrow = **";
  EXPECT_EQ(info.getSplitLabel(false),
            "Gender = female, region =   nord-ouest, Size of town" + rest);
  EXPECT_EQ(info.getSplitLabel(true), "sex = female, region =   nord-ouest, size" + rest);

  PathFactory::getPathInstance(3)->setLanguage("de");
  splitInfo german;
  german.saveSplitInfo(&source, &source);
  PathFactory::getPathInstance(3)->setLanguage("en");
  EXPECT_NE(german.getSplitLabel(true).find("blank = Fehlend"), std::string::npos);
}

TEST(SplitInfo, HasNothingWithoutASource) {
  MemoryDataSource source;
  splitInfo info;
  BpProcedure procedure;
  EXPECT_EQ(info.activateSplit(procedure), nullptr);
  source.add(variable("a", numbers), 1);
  EXPECT_TRUE(info.saveSplitInfo(&source, &source));
  EXPECT_TRUE(info.saveSplitInfo(&source, nullptr));
  EXPECT_EQ(info.getSplitLabel(true), "");
  EXPECT_EQ(info.activateSplit(procedure), nullptr);
}

TEST(SplitInfo, LeavesOutVariablesThatThrow) {
  MemoryDataSource source;
  source.add(variable("a", numbers), 1);
  source.add(std::make_unique<Failing<std::bad_alloc>>("b", numbers), 2);
  source.add(variable("c", numbers), 3);
  splitInfo info;
  // The second replaces the first.
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(info.saveSplitInfo(&source, &source));
  EXPECT_EQ(info.getSplitLabel(true), "a = 1.0, c = 3.0");

  source.add(std::make_unique<Failing<TavoGoToCaller>>("d", numbers), 4);
  EXPECT_THROW(info.saveSplitInfo(&source, &source), TavoGoToCaller);
}

TEST(SplitInfo, MakesAHeading) {
  const auto headingOf = [](MemoryDataSource& source) {
    auto gender = variable("sex", numbers, "Gender");
    gender->setValueLabel(2, "female");
    source.add(std::move(gender), 2);
    source.add(variable("size", numbers), 3);
    auto region = variable("region", texts);
    region->setValueLabel("n", "north");
    source.add(std::move(region), "nord-ouest");
    source.add(variable("none", numbers), std::nan(""));
    splitInfo info;
    info.saveSplitInfo(&source, &source);
    BpProcedure procedure;
    const std::unique_ptr<BpHeading> heading(info.activateSplit(procedure));
    return heading ? heading->GetText() : "none";
  };
  MemoryDataSource source;
  EXPECT_EQ(headingOf(source), "Gender = female, size = 3.0, region = nord-ouest, none = .");
  Refusing refusing;
  EXPECT_EQ(headingOf(refusing), "none");
}

}  // namespace
