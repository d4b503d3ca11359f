// The questions that commands ask a chart.
#include "basetemplate.h"

#include <regex>

#include "commandcases.h"
#include "plxaesthetics.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxvariables.h"

using namespace xercesc;

namespace {

// A chart with the queries of a command over it, whose element is given.
struct Asked : EditedChart {
  explicit Asked(const std::string& body, const std::string& element = "<command/>")
      : EditedChart(body), fragment(element), queries(nullptr, chart(), fragment.first()) {}

  PlXGraph& graph() { return *chart().getGraphs().front(); }

  Fragment fragment;
  BaseTemplate queries;
};

template <class Objects>
std::string idsOf(const Objects& objects) {
  std::string ids;
  for (const PlXBaseElement* each : objects) {
    ids += each ? ChartString(each->GetAttribute(u"id")).toUTF8() + " " : "none ";
  }
  return ids;
}

std::string idOf(const PlXBaseElement* object) {
  return idsOf(std::vector{object});
}

TEST(Queries, AddressGraphsByPosition) {
  const ChartBase holder;
  const std::string body =
      "<container id='c'><graph id='a'><interval id='i'/></graph></container><graph id='b'>"
      "<coordinates><polarTransform/></coordinates><interval id='j'/></graph><graph id='d'/>";
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"", "a b d ", "j ", "i "}, {"0", "a b d ", "j ", "i "}, {"2", "b ", "j ", ""},
      {"3", "d ", "", ""},        {"5", "", "", ""},           {"-1", "", "", ""}};
  for (const auto& [number, ids, polar, straight] : cases) {
    Asked chart(body, std::string("<command graph='") + number + "'/>");
    std::vector<PlXGraph*> graphs{nullptr};
    const unsigned addressed = chart.queries.getGraphs(graphs);
    EXPECT_EQ(addressed + 1, graphs.size());
    EXPECT_EQ(idsOf(graphs), std::string("none ") + ids);
    for (const bool isPolar : {true, false}) {
      std::vector<PlXInterval*> intervals{nullptr};
      const unsigned size = chart.queries.getIntervalElements(intervals, isPolar);
      EXPECT_EQ(size, intervals.size());
      EXPECT_EQ(idsOf(intervals), std::string("none ") + (isPolar ? polar : straight));
    }
  }
  // A caller may edit the chart between its questions.
  Asked chart(body, "");
  std::vector<PlXGraph*> graphs;
  EXPECT_EQ(chart.queries.getGraphs(graphs), 3u);
  graphs.back()->getVisualization()->addGraph(u"e");
  EXPECT_EQ(chart.queries.getGraphs(graphs), 4u);
}

TEST(Queries, FindElementsAndTheirBlocks) {
  Asked chart(
      "<graph><coordinates/><coordinates id='k'/><schema id='s'/><point id='p' coordinates='k'>"
      "<summaryStatistic method='mean'/><summaryStatistic method='count'/></point><interval id='i'>"
      "<summaryStatistic method='count'/><summaryStatistic method='range'/></interval>"
      "<line id='l'><summaryStatistic method='percentCount'/></line></graph>");
  std::vector<CTElementType*> all{nullptr};
  BaseTemplate::getAllElements(chart.graph(), all);
  EXPECT_EQ(idsOf(all), "none p l i s ");
  EXPECT_EQ(idsOf(chart.queries.getElementsWithSummaryStatistics(chart.graph())), "l i ");
  EXPECT_TRUE(chart.queries.isIntervalRangeElement(*all[3]));
  EXPECT_FALSE(chart.queries.isIntervalRangeElement(*all[1]));
  // The point is in the second block, the others in none.
  for (const auto& [index, second, first] : {std::tuple("", false, true),
                                             {"0", false, true},
                                             {"1", true, false},
                                             {"2", false, false},
                                             {"-1", false, false}}) {
    EXPECT_EQ(chart.queries.doesCoordinateMatch(*all[1], ChartString(index)), second) << index;
    EXPECT_EQ(chart.queries.doesCoordinateMatch(*all[2], ChartString(index)), first) << index;
  }
}

TEST(Queries, CountReferencesAsPlaces) {
  Asked chart(
      "<graph><coordinates><polarTransform/><dimension id='a'><axis/></dimension>"
      "<dimensionReference/><dimension id='c'/></coordinates><coordinates><dimension id='d'/>"
      "<dimension id='e'/></coordinates><coordinates><dimension id='f'/><dimension id='g'/>"
      "</coordinates><point/></graph>");
  for (const auto& [role, ids] : {std::pair("x", "a d f "), {"y", ""}, {"y2", "e "}, {"z", "c "}}) {
    EXPECT_EQ(idsOf(chart.queries.getDimensionsByRole(chart.graph(), ChartString(role))), ids);
  }
  EXPECT_FALSE(chart.queries.isChartTrue3D(chart.graph()));
  chart.queries.addZDimension(chart.graph());
  const auto blocks = chart.graph().getCoordinatess();
  EXPECT_EQ(blocks[0]->getDimensions().size(), 2u);
  EXPECT_EQ(blocks[1]->getDimensions().size(), 3u);
}

TEST(Queries, TellKindsOfCharts) {
  const ChartBase holder;
  const auto graph = [](const std::string& z, const std::string& elements) {
    return "<sourceVariable id='v'/><expressionVariable id='q' expression='a/b'/>"
           "<expressionVariable id='e' expression='a'/><graph><coordinates><dimension/>"
           "<dimension/>" +
           z + "</coordinates>" + elements + "</graph>";
  };
  const std::string axis = "<dimension><axis/></dimension>";
  const std::string clusters = "<dimension clusterVariable='v'/>";
  struct Row {
    std::string body;
    bool isSolid, isClustered, isMatrix;
  };
  const Row rows[] = {
      {graph(axis, "<line/><point><z/></point>"), true, false, false},
      {graph(axis, "<point/>"), false, false, false},
      {graph("<dimension/>", "<point><z/></point>"), false, false, false},
      {graph(clusters, ""), false, true, false},
      {graph("", "<line/><point><x variable='q'/><y variable='q'/></point>"), false, false, true},
      {graph("", "<point><x variable='q'/><y variable='e'/></point>"), false, false, false},
      {graph("", "<point><x variable='e'/><y variable='q'/></point>"), false, false, false},
      {graph("", "<point><x variable='q'/></point>"), false, false, false}};
  for (const Row& row : rows) {
    Asked chart(row.body);
    EXPECT_EQ(chart.queries.isChartTrue3D(chart.graph()), row.isSolid) << row.body;
    EXPECT_EQ(chart.queries.isGraphClustered(chart.graph()), row.isClustered) << row.body;
    EXPECT_EQ(chart.queries.getFirstSPLOMElement(chart.graph()) != nullptr, row.isMatrix)
        << row.body;
  }
}

TEST(Queries, TakeTheFirstDomain) {
  const ChartBase holder;
  const std::tuple<const XMLCh*, const char*, const char*> rows[] = {
      {u"legend", "<color variable='v' domain='a'/>", "a "},
      {u"legend", "<size domain='i' variable='v'/>", "v "},
      {u"legend", "<size domain='i'/><split variable='v'/><labeling domain='b'/>", "b "},
      {u"legend", "<visibility domain='a'/>", "none "},
      {u"z", "<z variable='v'/>", "v "},
      {u"y", "<y variable='v'/>", "none "}};
  for (const auto& [role, content, domain] : rows) {
    Asked chart(
        "<sourceVariable id='s' domain='v'/><categoricalDomain id='v'/>"
        "<categoricalDomain id='a'/><categoricalDomain id='b'/><intervalDomain id='i'/>"
        "<graph><point>" +
        std::regex_replace(content, std::regex("variable='v'"), "variable='s'") +
        "</point></graph>");
    const PlXPoint* point = chart.graph().getPoints().front();
    EXPECT_EQ(idOf(chart.queries.getCategoricalDomain(chart.graph(), role, point)), domain)
        << content;
  }
}

TEST(Queries, FindVariablesAndCategories) {
  const ChartBase holder;
  const auto body = [](const std::string& cluster) {
    return "<sourceVariable id='v' domain='own'><format><relabel from='1' to='one'/>"
           "<relabel to='none'/></format><format><relabel from='2' to='one'/></format>"
           "</sourceVariable><sourceVariable id='w'/>"
           "<categoricalDomain id='own'/><categoricalDomain id='other'/><graph><coordinates>"
           "<dimension" +
           cluster +
           " domain='other'/><dimension domain='other'/></coordinates>"
           "<point><x variable='v'/><y variable='v'/><color variable='w'/><split variable='v'/>"
           "</point></graph>";
  };
  for (const bool isClustered : {false, true}) {
    Asked chart(body(isClustered ? " clusterVariable='w'" : ""));
    const CTElementType& point = *chart.graph().getPoints().front();
    const auto domain = [&](const XMLCh* role, const CTElementType* element) {
      return idOf(chart.queries.getCategoricalDomain(chart.graph(), role, element));
    };
    const auto value = [&](const XMLCh* role, const char* label) {
      return chart.queries.getCategoryValue(chart.graph(), role, ChartString(label)).toUTF8();
    };
    EXPECT_EQ(chart.queries.isGraphClustered(chart.graph()), isClustered);
    EXPECT_EQ(idOf(chart.queries.getElementVariable(point, u"x")), isClustered ? "w " : "v ");
    EXPECT_EQ(idOf(chart.queries.getElementVariable(point, u"y")), "v ");
    EXPECT_EQ(idOf(chart.queries.getElementVariable(point, u"z")), "none ");
    EXPECT_EQ(idsOf(chart.queries.getLegendVariables(chart.graph(), u"legend")), "w v ");
    EXPECT_EQ(idsOf(chart.queries.getLegendVariables(chart.graph(), u"x")),
              isClustered ? "w " : "v ");
    // Of y the element doesn't count.
    EXPECT_EQ(domain(u"x", &point) + domain(u"y", &point) + domain(u"legend", &point),
              "own other own ");
    EXPECT_EQ(domain(u"x", nullptr) + domain(u"z", &point) + domain(u"legend", nullptr),
              "other none none ");
    EXPECT_EQ(value(u"x", "one"), isClustered ? "" : "1");
    EXPECT_EQ(value(u"y", "one") + value(u"y", "none") + value(u"legend", "one"), "1");
  }
}

TEST(Queries, MakeStylesAndEntries) {
  Asked chart(
      "<graph><point><color id='a'/><color id='b'/></point></graph><legend id='k'><legendTarget/>"
      "<legendTarget target='a'/><legendTarget target='b'/><legendTarget target='a'/></legend>"
      "<legend id='m'/>",
      "<command t='true' f='false' u='TRUE' o='1'/>");
  const auto colors = chart.graph().getPoints().front()->getColors();
  for (const char* id : {"a", "none", ""})
    chart.queries.CloneLegendEntry(ChartString(id), *colors[1]);
  const std::pair<const XMLCh*, const char*> styles[] = {
      {nullptr, "style1 "}, {u"", "style2 "}, {u"style1", "style1 "}, {u"k", "k1 "}};
  for (const auto& [id, made] : styles) {
    EXPECT_EQ(idOf(chart.queries.addStyle(chart.graph(), id)), made);
  }
  EXPECT_TRUE(chart.body().ends_with(
      "<legendTarget target='a'/><legendTarget id='legendTarget1' target='b'/><legendTarget "
      "id='legendTarget2' target='b'/></legend><legend id='m'/><style id='c-o-n-t-a-i-n-er'>"
      "<style id='style1'/><style id='style2'/><style id='k1'/></style>"))
      << chart.body();
  for (const bool otherwise : {true, false}) {
    for (const XMLCh* name : {u"t", u"f", u"u", u"o", u"n"}) {
      EXPECT_EQ(chart.queries.getBooleanAttribute(chart.fragment.first(), name, otherwise),
                *name == u't' || (*name != u'f' && otherwise));
    }
  }
}

}  // namespace
