// The wrappers that ask older documents: their answers with and without an index, and on nothing.
#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "chartelement.h"
#include "commandcases.h"
#include "elementindex.h"

using namespace xercesc;

namespace {

std::string utf8(const XMLCh* text) {
  return text ? ChartString(text).toUTF8() : "null";
}

constexpr const char* document = R"(
<frame id='f'>
  <facetvariable role='x' variable='group'/>
  <x variable='town'/><y variable='size'/>
  <facetlabeling><facetlabel><axis id='a3'/></facetlabel></facetlabeling>
  <dimension id='dx' role='x' domain='towns'><axis id='a1'/></dimension>
  <dimension id='dy' role='y' domain=''><axis id='a2'/></dimension>
  <dimension id='dz' role='z'><axis id='a4'/></dimension>
  <dimension id='du' role='x' domain='town'/>
</frame>
<guide id='g' name='own' type='line' style='s'><parameter id='p' name='y'/><parameter name='x'/></guide>
<parameter id='q' name='x'/><parameter id='r' name='*'/>
<axis id='a5'/>
<domain id='towns' categorical='false'/>
<variable id='town' categorical='true'/><variable id='size'/><variable id='group' categorical='true'/>
<styleby id='by' variable='town'/><styleby id='by2' variable='size'/><legendtarget aesthetic='by'/>
<element id='range' type='interval'><y><statistic method='range'/></y></element>
<element id='joined' type='line'><x variable='group'/><style><interpolation/></style></element>
<element id='area' type='area'/><element id='point' type='point'/>
)";

// Asks everything twice: of the document as it is, and of one that an index stands by.
class Wrappers : public testing::TestWithParam<bool> {
 protected:
  explicit Wrappers(const std::string& body = document) : fragment_(body) {
    walkElements(fragment_.root(), [](DOMElement* element) {
      DOMAttr* id = element->getAttributeNode(u"id");
      if (id) element->setIdAttributeNode(id, true);
      return true;
    });
    if (GetParam()) {
      index_ = std::make_unique<ElementIndex>(*fragment_.root()->getOwnerDocument());
    }
  }

  template <class Wrapper>
  Wrapper the(const char* id) const {
    DOMElement* found =
        fragment_.root()->getOwnerDocument()->getElementById(ChartString(id).xc_str());
    EXPECT_NE(found, nullptr) << id;
    return Wrapper(found);
  }
  template <class Wrapper>
  static std::string idOf(const Wrapper& wrapper) {
    return utf8(wrapper.getAttributeValue(u"id"));
  }
  DOMElement* root() const { return fragment_.root(); }

 private:
  const ChartBase library_;
  Fragment fragment_;
  std::unique_ptr<ElementIndex> index_;
};

INSTANTIATE_TEST_SUITE_P(, Wrappers, testing::Bool());

TEST_P(Wrappers, TellWhatIsCategorical) {
  // The domain decides before the variable, and the facet's variable for its axes.
  for (const std::string id : {"a1", "a2", "a3", "a4", "a5"}) {
    EXPECT_EQ(the<ChartAxis>(id.c_str()).isCategorical(), id == "a3") << id;
  }
  EXPECT_TRUE(the<ChartDimension>("du").isCategorical());
  EXPECT_FALSE(the<ChartDimension>("dz").isCategorical());
  static_cast<DOMElement*>(the<ChartFrame>("f").getPositionAesthetic(u"y").getNode())
      ->setAttribute(u"variable", u"town");
  EXPECT_TRUE(the<ChartDimension>("dy").isCategorical());
  EXPECT_TRUE(the<ChartAxis>("a2").isCategorical());
  EXPECT_TRUE(ChartGraph(root()).isCategorical(u"group"));
  EXPECT_FALSE(ChartGraph(root()).isCategorical(u""));
}

TEST_P(Wrappers, FindDimensionsAndVariables) {
  EXPECT_EQ(idOf(the<ChartAxis>("a2").getDimension()), "dy");
  EXPECT_EQ(idOf(the<ChartAxis>("a3").getDimension()), "dx");
  EXPECT_TRUE(the<ChartAxis>("a5").getDimension().isNull());
  EXPECT_EQ(utf8(the<ChartAxis>("a2").getPositionAesthetic().getAttributeValue(u"variable")),
            "size");
  EXPECT_EQ(utf8(the<ChartAxis>("a3").getPositionAesthetic().getAttributeValue(u"variable")),
            "town");
  EXPECT_EQ(utf8(the<ChartGuide>("g").getName()), "y");
  EXPECT_EQ(utf8(the<ChartElement>("g").getName()), "own");
  EXPECT_EQ(utf8(the<ChartGuide>("g").getStyle()), "s");
  EXPECT_EQ(idOf(the<ChartParameter>("p").getVariable()), "size");
  EXPECT_EQ(idOf(the<ChartParameter>("q").getVariable()), "group");
  EXPECT_TRUE(the<ChartParameter>("r").getVariable().isNull());
  EXPECT_EQ(idOf(ChartGraph(root()).getVariable(u"x")), "town");
  EXPECT_TRUE(the<ChartVariable>("town").isLegendVariable());
  EXPECT_FALSE(the<ChartVariable>("size").isLegendVariable());
}

TEST_P(Wrappers, TellKindsOfElements) {
  EXPECT_TRUE(the<ChartElementElement>("range").isRangeBar());
  EXPECT_TRUE(the<ChartElementElement>("joined").isInterpolationLine());
  EXPECT_TRUE(the<ChartElementElement>("joined").isDifferenceLine());
  EXPECT_TRUE(the<ChartElementElement>("area").isDifferenceLine());
  EXPECT_FALSE(the<ChartElementElement>("point").isDifferenceLine());
  EXPECT_EQ(utf8(the<ChartElementElement>("joined").getRoleVariable(u"x")), "group");
  EXPECT_EQ(the<ChartElementElement>("joined").getRoleVariable(u"y"), nullptr);
}

TEST_P(Wrappers, SearchBelowOrFromTheRoot) {
  const auto frame = the<ChartElement>("f");
  EXPECT_NE(frame.getOffspringWithAttribute(u"axis", u"id", u"a3"), nullptr);
  EXPECT_EQ(frame.getOffspringWithAttribute(u"axis", u"id", u"a5"), nullptr);
  EXPECT_NE(frame.getElementWithAttribute(u"axis", u"id", u"a5"), nullptr);
  for (const auto& [tag, name, value] :
       std::initializer_list<std::array<const XMLCh*, 3>>{{u"", u"id", u"a3"},
                                                          {u"axis", u"", u"a3"},
                                                          {u"axis", u"id", u""},
                                                          {nullptr, u"a", u"b"}}) {
    EXPECT_EQ(frame.getOffspringWithAttribute(tag, name, value), nullptr);
  }
  EXPECT_EQ(idOf(ChartElement(frame.getChildWithAttribute(u"role", u"y"))), "dy");
  // That of the facet variable is missing.
  EXPECT_EQ(
      utf8(
          ChartElement(frame.getChildWithAttribute(u"id", nullptr)).getAttributeValue(u"variable")),
      "group");
  EXPECT_EQ(utf8(frame.getFirstElementByTagName(u"guide")->getNodeName()), "guide");
  EXPECT_EQ(ChartGraph(frame.getNode()).getFirstElementByTagName(u"guide"), nullptr);
  EXPECT_EQ(frame.getFirstChildByTagName(u"axis"), nullptr);
  EXPECT_EQ(frame.getGraph(), root());
  EXPECT_EQ(frame.getParent(), root());
}

TEST(ChartGraph, TellsTheTypeOfChart) {
  const ChartBase holder;
  const std::string bar = "<element type='interval'/>";
  const auto statistic = [](const std::string& method) {
    return "<theta/><element><statistic method='" + method + "'/></element>";
  };
  const std::pair<std::string, int> charts[] = {
      {bar, 0},
      {statistic("tukeyInnerFence") + statistic("range"), 1},
      {statistic("range"), 2},
      {statistic("histogram") + statistic("range") + statistic("cumulativeSum"), 3},
      {bar + "<element type='line'/>", 4},
      {statistic("cumulativeSum") + statistic("tukeyInnerFence"), 5},
      {bar + "<frame><theta/></frame>", 6},
      {"<element type='line'/>", 7},
      {"", 7}};
  for (const auto& [body, type] : charts) {
    EXPECT_EQ(ChartGraph(Fragment(body).root()).getChartType(), type) << body;
  }
}

template <class Wrapper>
void expectNothing() {
  Wrapper nothing;
  EXPECT_TRUE(nothing.isNull() && !nothing.getNode() && !nothing.getGraph() &&
              !nothing.getParent() && !nothing.getType() && !nothing.getStyle() &&
              !nothing.getName() && !nothing.isCategorical() && !nothing.getAttributeValue(u"a") &&
              !nothing.getChildWithAttribute(u"a", u"b") &&
              !nothing.getOffspringWithAttribute(u"a", u"b", u"c") &&
              !nothing.getElementWithAttribute(u"a", u"b", u"c") &&
              !nothing.getFirstElementByTagName(u"a") && !nothing.getFirstChildByTagName(u"a"));
}

TEST(ChartElement, AnswersNothingOnNothing) {
  expectNothing<ChartElement>();
  expectNothing<ChartGraph>();
  expectNothing<ChartFrame>();
  expectNothing<ChartDimension>();
  expectNothing<ChartFacetLabeling>();
  expectNothing<ChartFacetLabel>();
  expectNothing<ChartAxis>();
  expectNothing<ChartGuide>();
  expectNothing<ChartVariable>();
  expectNothing<ChartParameter>();
  expectNothing<ChartElementElement>();
  EXPECT_EQ(ChartGraph().getChartType(), 0);
  EXPECT_TRUE(ChartGraph().getVariable(u"x").isNull());
  EXPECT_TRUE(ChartFrame().getFacetDimension().isNull() && !ChartFrame().getFacetRole() &&
              ChartFrame().getPositionAesthetic(u"x").isNull() &&
              !ChartFrame().getRoleVariableId(u"x") && !ChartFrame().isFacetCategorical());
  EXPECT_TRUE(ChartAxis().getDimension().isNull() && ChartAxis().getPositionAesthetic().isNull());
  EXPECT_TRUE(ChartDimension().getPositionAesthetic().isNull());
  EXPECT_TRUE(ChartFacetLabel().getDimension().isNull() &&
              ChartFacetLabel().getPositionAesthetic().isNull());
  EXPECT_TRUE(ChartGuide().getFirstParameter().isNull());
  EXPECT_TRUE(ChartParameter().getVariable().isNull());
  EXPECT_FALSE(ChartVariable().isLegendVariable());
  EXPECT_TRUE(!ChartElementElement().getRoleVariable(u"x") && !ChartElementElement().isRangeBar() &&
              !ChartElementElement().isInterpolationLine() &&
              !ChartElementElement().isDifferenceLine());
}

}  // namespace
