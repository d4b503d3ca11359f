// addDerivedAxis: which dimensions get an axis, what it is, and how it is dressed.
#include <regex>

#include "commandcases.h"

namespace {

std::string dimension(const std::string& axes) {
  return "<dimension>" + axes + "</dimension>";
}

std::string graph(const std::string& axes, const std::string& more = "") {
  return "<graph><coordinates>" + dimension(axes) + more + "</coordinates></graph>";
}

std::string command(const std::string& content, const std::string& role = "x") {
  return "<addDerivedAxis role='" + role + "'>" + content + "</addDerivedAxis>";
}

TEST(DerivedAxes, StandBesideOrdinaryOnes) {
  const ChartBase holder;
  const std::string axis = "<axis/>";
  const std::string old = "<axis transform='ratio'/>";
  const std::string made =
      "<axis opposite='true' style='style1' transform='percent'><majorTicks/></axis>";
  const std::string styles = "<style id='c-o-n-t-a-i-n-er'><style id='style1'/></style>";
  const std::string two = "</coordinates><coordinates>" + dimension(axis);
  const std::string cluster =
      "<sourceVariable id='v'/><graph><coordinates><dimension clusterVariable='v'><axis/>"
      "</dimension></coordinates></graph>";
  struct Row {
    std::string role;
    std::string before;
    std::string after;
  };
  const Row rows[] = {
      {"x", graph(axis), graph(axis + made) + styles},
      {"x", graph(axis + old), graph(axis + made) + styles},
      {"x", graph(old + axis + old), graph(axis + made) + styles},
      {"x", graph(axis + axis + old), graph(axis + axis)},
      {"x", graph(old), graph(old)},
      {"x", graph(""), graph("")},
      {"y", graph(axis, dimension(axis)), graph(axis, dimension(axis + made)) + styles},
      {"y", graph(axis, dimension(axis) + two), graph(axis, dimension(axis) + two)},
      {"x", graph(axis, two),
       graph(axis + made,
             "</coordinates><coordinates>" +
                 dimension(axis + std::regex_replace(made, std::regex("style1"), "style2"))) +
           "<style id='c-o-n-t-a-i-n-er'><style id='style1'/><style id='style2'/></style>"},
      {"x", cluster, cluster},
      {"y2", graph(axis, dimension(axis)), graph(axis, dimension(axis))},
  };
  for (const Row& row : rows) {
    EditedChart chart(row.before);
    const std::string text = command("<transform method='percent' base-ratio='1'/>", row.role);
    EXPECT_EQ(chart.apply("<bogus/>" + text), row.role != "y2");
    EXPECT_EQ(chart.body(), std::regex_replace(row.after, std::regex("<(\\w+)></\\1>"), "<$1/>"));
  }
}

TEST(DerivedAxes, HaveValuesAndLooks) {
  const ChartBase holder;
  const std::string ratio = command(
      "<transform base-ratio='5' base-match=''><a><parameter name='base-match'/>"
      "<parameter name='base-match' value='1'/><parameter name='base-match' value='2'/></a>"
      "<parameter name='base-ratio' value='6'/><parameter name='derived' value='7'/></transform>");
  const std::string parts = command(
      "<label>A</label><label>B</label><style color='red'/><style color='blue'/>"
      "<majorTicks length='9pt'/><majorTicks length='3pt'/><minorticks number='4'/>");
  EditedChart chart(
      "<graph><coordinates><dimension><axis opposite='true' style='s'/></dimension>"
      "</coordinates></graph><style id='s' color='green' depth='1pt'/>");
  chart.apply(ratio);
  EXPECT_NE(chart.body().find(
                "<axis opposite='false' style='style1' transform='ratio'><majorTicks/>"
                "<axisTransformParameter parameterName='base-ratio' parameterValue='5'/>"
                "<axisTransformParameter parameterName='base-match' parameterValue='1'/></axis>"),
            std::string::npos)
      << chart.body();
  EXPECT_NE(chart.body().find("<style id='style1' color='green' depth='1pt'/>"), std::string::npos);
  chart.apply(parts);
  const std::string body = chart.body();
  for (const char* part :
       {"<style id='s' color='green' depth='1pt'/>", "<axis opposite='true' style='s'/>",
        "<style id='style1' color='blue' depth='1pt'/>", "<text text='B'/>", "length='3pt'",
        "<minorTicks markStyle='style7' number='4'/>"}) {
    EXPECT_NE(body.find(part), std::string::npos) << part << body;
  }
  // Ticks for another block define nothing here.
  chart.apply(
      command("<majorTicks role='y2' length='5pt'><markStyle><style depth='7pt'/></markStyle>"
              "</majorTicks>"));
  EXPECT_NE(chart.body().find("length='3pt'"), std::string::npos);
  EXPECT_NE(chart.body().find("depth='7pt'"), std::string::npos);
}

}  // namespace
