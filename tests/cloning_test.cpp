// BaseTemplate's copying of what elements and labelings show by value.
#include "basetemplate.h"
#include "commandcases.h"
#include "objectsbytag.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxlabeling.h"
#include "plxstyle.h"
#include "plxstylecycle.h"

using namespace xercesc;

namespace {

const std::string stock =
    "<sourceVariable id='v' categorical='true'/><sourceVariable id='w'/>"
    "<categoricalDomain id='d'/><style id='s'/>"
    "<styleCycle id='stock'><cycle><style stroke-dasharray='9'/></cycle>"
    "<cycle><style id='solid' color='red'/><style stroke-dasharray='2 1'/></cycle></styleCycle>"
    "<styleCycle id='c'><cycle><style color='red'/><style id='t' color='transparent' "
    "color2='blue'/>"
    "<style color='transparent'/><style color='green' color2='blue'/></cycle></styleCycle>";
const std::string legend =
    "<legend id='l'><legendTarget id='e' target='a1'/><legendTarget id='f' target='a1'/></legend>"
    "<legend><legendTarget target='a2'/></legend>"
    "<extension styleCycleRepository='stock'/>";

std::string between(const std::string& text, const std::string& start, const std::string& end) {
  const std::size_t from = text.find(start);
  return from == text.npos ? "" : text.substr(from, text.find(end, from) - from);
}

// What stands in the second of two elements after it was made like the first.
struct Clone {
  EditedChart chart;

  Clone(const std::string& from, const std::string& to, bool cloneLegendEntries = true)
      : chart(stock + "<graph><coordinates id='block'/>" + from + to + "</graph>" + legend) {
    PlXVisualization& target = chart.chart();
    BaseTemplate base(nullptr, target);
    std::vector<PlXBaseElement*> holders;
    walkElements(target.getImplementation(), [&](DOMElement* element) {
      PlXBaseElement* object = target.objectOf(element);
      if (dynamic_cast<CTElementType*>(object) || dynamic_cast<PlXLabeling*>(object)) {
        holders.push_back(object);
      }
      return true;
    });
    auto* element = dynamic_cast<CTElementType*>(holders.at(0));
    auto* other = dynamic_cast<CTElementType*>(holders.back());
    if (element && other) {
      base.cloneElementChildren(*element, *other, cloneLegendEntries);
    } else {
      base.cloneElementAesthetics(*holders.at(0), *holders.back(), cloneLegendEntries);
    }
    // The legends show both.
    if (from.find("a1") != from.npos && from.find("a2") != from.npos)
      expectSound(target.AsUTF8(), from + to);
  }
  std::string text() const { return chart.body(); }
};

TEST(Cloning, CopiesWhatTheOtherMayHave) {
  const ChartBase holder;
  // What is cloned, onto what, what is then printed from the clone on to the end of the graph
  const char* const rows = R"(
<point id='p' coordinates='block' dot='true'><x variable='v'/><y/><z variable='w'/><shape id='a1' cycle='c' variable='v'/><conditionalStyle when='facet1==facet2' style='s'/><conditionalStyle when='n'/></point> | <line id='q'/> | <line id='q' coordinates='block' dot='true'><x variable='v'/><z variable='w'/><dash id='shape1' cycle='styleCycle1' variable='v'/><conditionalStyle style='s' when='facet1==facet2'/></line>
<point id='p'><dash missing='1 1' variable='v'/><shape id='a1' cycle='c'><symbolMapping from='1' to='star'/></shape></point> | <point id='q'/> | <point id='q' dot='false'><dash id='dash1' missing='1 1' variable='v'/><shape id='shape1' cycle='c'><symbolMapping from='1' to='star'/></shape></point>
<interval id='p'><size id='a1' variable='w'/><size low='' high='2pt'/><color id='a2' affect='secondary' domain='d'><scale/><summaryStatistic method='mean'/><colorMapping from='1' to='red'/></color><styleBy variable='v' domain='d' dimension='2'/></interval> | <area id='q'/> | <area id='q' dot='false'><styleBy id='styleBy1' dimension='2' domain='d' variable='v'/><size id='length1' high='3pt' low='0.25pt' variable='w'/><size id='length2' high='2pt' low=''/><color id='color1' affect='secondary' domain='d'><scale/><summaryStatistic method='mean'/><colorMapping from='1' to='red'/></color></area>
<point id='p'><size id='a1'/><shape/><pattern/><dash/><colorComponent type='hue'><doubleMapping from='1' to='0.5'/></colorComponent></point> | <point><labeling id='q'/></point> | <labeling id='q'><size id='length1' high='18pt' low='6pt'/><colorComponent id='colorComponent1' type='hue'><doubleMapping from='1' to='0.5'/></colorComponent></labeling></point>
)";
  for (const std::vector<std::string>& row : rowsOf(rows)) {
    const Clone clone(row[0], row[1]);
    const std::string tag = row[2].substr(0, row[2].find('\''));
    EXPECT_EQ(between(clone.text(), tag + "'q'", "</graph>"), row[2]) << clone.text();
  }
}

TEST(Cloning, GivesCopiesTheLegendsOfTheFirst) {
  const ChartBase holder;
  const std::string plain = "<point><color id='a1'/><size id='a2'><scale/></size></point>";
  const std::string old =
      "<legend id='l'><legendTarget id='e' target='a1'/><legendTarget id='f' target='a1'/>";
  const std::string copies =
      "<legendTarget id='legendTarget1' target='color1'/>"
      "<legendTarget id='legendTarget2' target='color1'/>";
  const std::string rest = "<legend><legendTarget target='a2'/>";
  EXPECT_EQ(between(Clone(plain, "<line/>").text(), "<legend", "<extension"),
            old + copies + "</legend>" + rest + "</legend>");
  EXPECT_EQ(between(Clone(plain, "<line/>", false).text(), "<legend", "<extension"),
            old + "</legend>" + rest + "</legend>");
}

TEST(Cloning, CopiesLists) {
  const ChartBase holder;
  const std::string lists =
      "<cycle><style color='red'/><style color='transparent' color2='blue'/>"
      "<style color='transparent'/><style color='green' color2='blue'/></cycle></styleCycle>";
  const auto firstCopy = [](const Clone& clone) {
    return between(clone.text(), "<styleCycle id='styleCycle1'>", "<extension");
  };
  Clone styled("<interval><styleBy id='a2' styleCycle='c'/></interval>", "<line/>");
  EXPECT_EQ(firstCopy(styled), "<styleCycle id='styleCycle1'>" + lists);
  // The stock of dashes for symbols, not the list of the shape
  EXPECT_EQ(firstCopy(Clone("<point><shape id='a2' cycle='c'/></point>", "<path/>")),
            "<styleCycle id='styleCycle1'><cycle><style color='red'/>"
            "<style stroke-dasharray='2 1'/></cycle></styleCycle>");

  PlXVisualization& target = styled.chart.chart();
  BaseTemplate base(nullptr, target);
  CTElementType& line = *objectsByTag<PlXLine>(target, u"line").front();
  for (const char* affect : {"main", "secondary", "both"}) {
    line.addColor()->SetAttribute(u"affect", ChartString(affect).xc_str());
  }
  EXPECT_EQ(base.changeColor2ToColor(line, false), 1);
  EXPECT_EQ(firstCopy(styled),
            "<styleCycle id='styleCycle1'><cycle><style color='red'/>"
            "<style color='blue' color2='blue'/><style color='black'/>"
            "<style color='green' color2='blue'/></cycle></styleCycle>");
  EXPECT_EQ(base.changeColor2ToColor(line, true), 1);
  EXPECT_EQ(firstCopy(styled),
            "<styleCycle id='styleCycle1'><cycle><style color='black'/>"
            "<style color='blue' color2='blue'/><style color='black'/>"
            "<style color='blue' color2='blue'/></cycle></styleCycle>");
  EXPECT_EQ(between(styled.text(), "<color ", "</line>"),
            "<color affect='main'/><color affect='main'/><color affect='both'/>");
}

TEST(Cloning, CopiesColorsForClients) {
  const ChartBase holder;
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"point", "line", "<style color='blue' color2='green'/>"},
      {"point", "interval", "<style color='green' color2='blue'/>"},
      {"", "line", "<style color='green' color2='blue'/>"}};
  for (const auto& [from, to, style] : rows) {
    Clone clone("<point id='p'><styleBy variable='w' styleCycle='c'/></point>", "<line id='q'/>",
                false);
    PlXVisualization& target = clone.chart.chart();
    CTElementType& point = *objectsByTag<PlXPoint>(target, u"point").front();
    BaseTemplate(nullptr, target)
        .cloneStyleCycle(*objectsByTag<PlXLine>(target, u"line").front(), point, u"mine", from, to);
    const std::string copy = between(clone.text(), "<styleCycle id='mine1'>", "</cycle>");
    EXPECT_TRUE(copy.ends_with(style)) << copy;
    EXPECT_NE(clone.text().find("<styleBy styleCycle='mine1' variable='w'/>"), std::string::npos);
  }
}

}  // namespace
