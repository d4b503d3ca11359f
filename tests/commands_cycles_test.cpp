// The commands of style lists: which style-bys and aesthetics they reach, and what those get.
#include "basetemplate.h"
#include "commandcases.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxstylecycle.h"

namespace {

// Short forms of the tables below. A "!" stands for the list with a blue and a dashed style.
std::string expanded(std::string text) {
  const std::pair<std::string, const char*> forms[] = {
      {"VARS", "<sourceVariable id='v'/><sourceVariable id='w'/>"},
      {"(", "<graph>"},
      {")", "</graph>"},
      {"[", "<cycle><style color='"},
      {"]", "'/></cycle>"},
      {"!", "<cycle><style color='blue'/><style stroke-dasharray='2 1'/></cycle>"},
      {"CYC", "styleCycle"},
      {"STYLES", "<style id='c-o-n-t-a-i-n-er'>"}};
  for (const auto& [form, meaning] : forms) {
    for (std::size_t at = 0; (at = text.find(form, at)) != text.npos;) {
      text.replace(at, form.size(), meaning);
      at += std::string(meaning).size();
    }
  }
  return text;
}

// Rows of chart, commands, chart expected and perhaps source.
void expectRows(const std::string& table) {
  const ChartBase holder;
  for (const auto& row : rowsOf(expanded(table))) {
    const std::string empty;
    const CommandCase each{row.at(0).c_str(), row.at(1).c_str(), row.at(2).c_str(),
                           row.size() > 3 ? row[3].c_str() : nullptr};
    expectCases({&each, 1});
  }
}

TEST(StyleCycles, GetTheListsOfTheCommand) {
  expectRows(R"(
(<point style='s'><styleBy CYC='c'/></point>)<CYC id='c'>[red]<extension/></CYC><style id='s'/> |
 <setStyleCycle>!<cycle/></setStyleCycle> |
 (<point style='s'><styleBy CYC='c'/></point>)<CYC id='c'>!<cycle><style/></cycle><extension/>
 </CYC><style id='s'/>
(<line style='s'><styleBy/></line>)<style id='s'/> | <setStyleCycle/> |
 (<line style='s'><styleBy CYC='CYC1'/></line>)<CYC id='CYC1'><cycle><style/></cycle></CYC>
 <style id='s'/>
(<schema><styleBy/></schema>) | <setStyleCycle><cycle><style pattern='1'/></cycle></setStyleCycle> |
 (<schema hingeStyle='style1'><styleBy CYC='CYC1'/></schema>)
 <CYC id='CYC1'><cycle><style pattern='1'/></cycle></CYC>
 STYLES<style id='style1' color='white' color2='black'/></style>
(<area style='s'><styleBy CYC='color_pattern'/><labeling><styleBy CYC='color_pattern'/></labeling>
 </area>)
 <CYC id='color_pattern'/><style id='s'/> |
 <setStyleCycle>!</setStyleCycle><setStyleCycle elementType='labeling'>!</setStyleCycle> |
 (<area style='s'><styleBy CYC='color_pattern'/><labeling><styleBy CYC='color_pattern'/></labeling>
 </area>)
 <CYC id='color_pattern'/><style id='s'/>
(<area><styleBy/><labeling><styleBy/></labeling></area>) | <setStyleCycle elementType='labeling'/> |
 (<area><styleBy/><labeling><styleBy CYC='CYC1'/></labeling></area>)
 <CYC id='CYC1'><cycle><style/></cycle></CYC>
(<point style='s'><styleBy/></point><line style='s'><styleBy/><styleBy/></line>)
 (<line style='s'><styleBy/></line>)<style id='s'/> |
 <setStyleCycle styleByNumber='2'>[red]</setStyleCycle> |
 (<point style='s'><styleBy/></point><line style='s'><styleBy CYC='CYC1'/><styleBy/></line>)
 (<line style='s'><styleBy/></line>)<CYC id='CYC1'>[red]</CYC><style id='s'/>
(<point style='s'><styleBy/></point><line style='s'><styleBy/></line>)<style id='s'/> |
 <setStyleCycle elementType='line' styleByNumber='1'>[red]</setStyleCycle>
 <setStyleCycle elementType='edge'>!</setStyleCycle> |
 (<point style='s'><styleBy/></point><line style='s'><styleBy CYC='CYC1'/></line>)
 <CYC id='CYC1'>[red]</CYC><style id='s'/>
)");
}

// "color color2 pattern symbol width", with "-" for what isn't stated.
std::string looks(const PlXStyle& style) {
  std::string text;
  for (const XMLCh* name : {u"color", u"color2", u"pattern", u"symbol", u"width"}) {
    const std::string value = ChartString(style.GetAttribute(name)).toUTF8();
    text += (text.empty() ? "" : " ") + (value.empty() ? "-" : value);
  }
  return text;
}

TEST(StyleCycles, TakeTheStock) {
  const ChartBase holder;
  // Of several lists of a kind the last is taken; the first style of the dashes has none.
  const std::string lists =
      "<cycle><style color='green'/></cycle><cycle><style color='red' color2='transparent'/>"
      "</cycle><cycle><style pattern='1'/></cycle><cycle><style color='blue'/>"
      "<style stroke-dasharray='1 1'/></cycle><cycle><style symbol='square'/></cycle>";
  // Element, its style-bys (the first counts), createType, the first style that it takes, and the
  // style of the element.
  for (const auto& row : rowsOf(R"(
line | c | PatternsOnly | blue - - - - | - - - - -
path | c | ColorsOnly | red transparent - - - | - - - - -
edge | c | PatternsOnly | blue - - - - | - - - - -
interval | c | PatternsOnly | - - 1 - - | white black - - -
interval | c | ColorsThenPatterns | red transparent - - - | - - - - -
interval | c | none | - - - - 1pt | - - - - -
interval line | c | PatternsOnly | blue - - - - | - - - line -
interval ibeam | c | PatternsOnly | blue - - - - | - - - ibeam -
area | c | PatternsOnly | - - 1 - - | white black - - -
polygon | c | ColorsOnly | red transparent - - - | - - - - -
schema | c | PatternsOnly | - - 1 - - | white black - - -
point | c | PatternsOnly | - - - square - | - - - - -
point | c | ColorsOnly | transparent red - - - | - - - - -
point | styleCycleColor | ColorsOnly | red transparent - - - | - - - - -
interval | by_color c, styleCycleColor | PatternsOnly | red transparent - - - | white black - - -
interval | by_pattern c, styleCycleColor | ColorsOnly | - - 1 - - | - - - - -
interval | by_color_pattern c, styleCycleColor | none | red transparent - - - | - - - - -
interval | by_pattern c | ColorsOnly | red transparent - - - | - - - - -
interval XGRAPH | by_pattern c | ColorsOnly | - - 1 - - | white black - - -
interval XGRAPH | by_color_pattern c | PatternsOnly | red transparent - - - | - - - - -
area XGRAPH | by_color c | PatternsOnly | - - 1 - - | white black - - -
line | stock | ColorsOnly | red transparent - - - | - - - - -
)")) {
    const std::string tag = row[0].substr(0, row[0].find(' '));
    const std::string more = row[0].substr(std::min(row[0].size(), tag.size() + 1));
    std::string styleBys;
    std::istringstream all(row[1]);
    for (std::string each; std::getline(all, each, ',');) {
      each.erase(0, each.find_first_not_of(' '));
      const std::size_t blank = each.find(' ');
      styleBys += "<styleBy " + (blank == each.npos ? "" : "id='" + each.substr(0, blank) + "' ") +
                  "styleCycle='" + each.substr(blank + 1) + "'/>";
    }
    const std::string link = tag == "schema" ? " hingeStyle='s'>" : " style='s'>";
    const std::string symbol = more.empty() || more == "XGRAPH" ? "" : " symbol='" + more + "'";
    std::string body = "<graph><" + tag + link + styleBys + "</" + tag + "></graph>";
    for (const char* id : {"c", "styleCycleColor", "stock"}) {
      body += std::string("<styleCycle id='") + id +
              "'><cycle><style width='1pt'/></cycle></styleCycle>";
    }
    body += "<style id='s'" + symbol + "/><extension styleCycleRepository='stock'/>";
    EditedChart chart(chartText(body, "", more == "XGRAPH" ? " name='XGRAPH'" : ""));
    EXPECT_TRUE(chart.apply("<setStyleCycle id='styleCycleRepository' createType='" + row[2] +
                            "'>" + lists + "</setStyleCycle>"));
    std::vector<CTElementType*> elements;
    BaseTemplate::getAllElements(*chart.chart().getGraphs()[0], elements);
    const PlXCycle& cycle =
        *elements.at(0)->getStyleBys().at(0)->getStyleCycle()->getCycles().at(0);
    EXPECT_EQ(looks(*cycle.getStyles().at(0)), row[3]) << row[0] << row[1] << row[2];
    EXPECT_EQ(looks(*chart.chart().getStyleById(u"s")), row[4]) << row[0] << row[1] << row[2];
    const PlXStyleCycle* stock = chart.chart().getExtension()->getStyleCycleRepository();
    EXPECT_EQ(stock->getCycles().size(), 5u) << row[0] << row[1] << row[2];
  }
}

TEST(StyleCycles, MakeAStock) {
  expectRows(R"(
<graph/> | <setStyleCycle id='CYCRepository'>[red]<cycle/></setStyleCycle> |
 <graph/><CYC id='CYC1'>[red]<cycle/></CYC><extension CYCRepository='CYC1'/>
<CYC id='r'><cycle><style id='a' color='red'/></cycle><extension/></CYC>
 <extension CYCRepository='r'/> |
 <setStyleCycle id='CYCRepository'/> | <CYC id='r'/><extension CYCRepository='r'/>
(<line style='s'><styleBy CYC='r'/><styleBy/></line>)<CYC id='r'>!</CYC><style id='s'/>
 <extension CYCRepository='r'/> |
 <setStyleCycle styleByNumber='1'>[red]</setStyleCycle>
 <setStyleCycle id='CYCRepository' styleByNumber='2' createType='ColorsOnly'><cycle>
 <style color='red'/></cycle></setStyleCycle> |
 (<line style='s'><styleBy CYC='CYC1'/><styleBy CYC='CYC2'/></line>)
 <CYC id='r'>[red]</CYC><CYC id='CYC1'>[red]</CYC><CYC id='CYC2'>[red]</CYC><style id='s'/>
 <extension CYCRepository='r'/>
)");
}

TEST(StyleCycles, AreAddedToLabelings) {
  expectRows(R"(
VARS(<line><color variable='w'/><split variable='v'/><labeling/><labeling/></line><line><labeling/>
 </line>) |
 <addStyleCycle elementName='labeling' count='2'>!</addStyleCycle> |
 VARS(<line><color variable='w'/><split variable='v'/><labeling/><labeling>
 <styleBy CYC='CYC1' variable='w'/></labeling></line><line><labeling/></line>)
 <CYC id='CYC1'>!</CYC>
VARS(<line><color variable='w'/><labeling/></line>)
 <graph/> | <addStyleCycle elementName='labeling'>!</addStyleCycle> |
 VARS(<line><color variable='w'/><labeling><styleBy CYC='CYC1' variable='w'/>
 <styleBy CYC='CYC2' variable='w'/></labeling></line>)<graph/><CYC id='CYC1'>!</CYC><CYC id='CYC2'>
 !</CYC>
VARS(<line><split/><color variable='v'/><labeling/></line><line><labeling/></line>) |
 <addStyleCycle elementName='labeling'>!</addStyleCycle><addStyleCycle elementName='line'>!
 </addStyleCycle>
 <addStyleCycle elementName='color'>!</addStyleCycle> |
 VARS(<line><split/><color variable='v'/><labeling><styleBy CYC='CYC1' variable='v'/></labeling>
 </line><line><labeling/></line>)<CYC id='CYC1'>!</CYC>
)");
}

TEST(Aesthetics, GetListsOfTheirOwn) {
  expectRows(R"(
(<point><shape/><shape cycle='c'/></point><point><shape/></point>)<CYC id='c'/> |
 <setShape aestheticNumber='2'>[red]!</setShape><setShape aestheticNumber='3'>!</setShape>
 <setShape/> |
 (<point><shape/><shape cycle='CYC1'/></point><point><shape/></point>)<CYC id='c'/><CYC id='CYC1'>!
 </CYC>
(<line><dash id='d1'/><dash id='d2'/></line>) | <setDash>!</setDash> |
 (<line><dash id='d1'/><dash id='d2' cycle='CYC1'/></line>)<CYC id='CYC1'>!</CYC> | (<line>
 <dash id='d1' cycle='a'/><dash id='d2'/></line>)
(<line><dash/></line>) | <setDash><cycle/></setDash> |
 (<line><dash cycle='CYC1'/></line>)<CYC id='CYC1'><cycle/></CYC>
(<area style='s'><pattern id='p'/></area><area/>)<style id='s' color='red'/> | <setPattern>!
 </setPattern> |
 (<area style='s'><pattern id='p'/></area><area/>)<style id='s' color='white'/> |
 (<area><pattern id='p' cycle='a'/></area>)<style id='s' color2='red'/>
(<area style='s'><pattern/></area><area><pattern/></area>)
 <style id='s' color='red'/> | <setPattern/> |
 (<area style='s'><pattern/></area><area style='style1'><pattern/></area>)
 <style id='s' color='red'/>STYLES<style id='style1' color='white'/></style> |
 <style id='s' color='blue'/><style id='style1' color='blue'/>
(<interval><pattern/></interval>) | <setPattern><cycle><style value='stroke:red;fill:blue'/></cycle>
 </setPattern> |
 (<interval style='style1'><pattern cycle='CYC1'/></interval>)
 <CYC id='CYC1'><cycle><style color='blue' color2='red'/></cycle></CYC>
 STYLES<style id='style1' color='white'/></style>
)");
}

TEST(Aesthetics, ShareColorsInAGraph) {
  expectRows(R"(
(<line><color/></line><interval><color/></interval><interval/>
 <interval><color affect='both' cycle='c'/></interval>)
 (<interval><color/></interval>)<CYC id='c'>[red]</CYC> | <setColor affect='main'>[blue]
 </setColor> |
 (<line><color affect='main' cycle='CYC1'/></line><interval><color affect='main' cycle='CYC2'/>
 </interval><interval/><interval><color affect='main' cycle='CYC2'/></interval>)(<interval>
 <color affect='main' cycle='CYC3'/></interval>)<CYC id='c'>[red]</CYC><CYC id='CYC1'>[blue]</CYC>
 <CYC id='CYC2'>[blue]</CYC><CYC id='CYC3'>[blue]</CYC>
(<point><color affect='main'/><color/></point><line><color/></line>) |
 <setColor affect='main' aestheticNumber='1'>!</setColor> |
 (<point><color affect='secondary' cycle='CYC1'/><color/></point><line>
 <color affect='main' cycle='CYC2'/></line>)<CYC id='CYC1'>!</CYC><CYC id='CYC2'>!</CYC>
(<point><color affect='main'/></point><line><color affect='main'/>
 </line>) | <setColor affect='secondary'>!</setColor> |
 (<point><color affect='main' cycle='CYC1'/></point><line><color affect='secondary' cycle='CYC2'/>
 </line>)<CYC id='CYC1'>!</CYC><CYC id='CYC2'>!</CYC>
(<point><color affect='main'/></point><line><color/></line>) | <setColor affect='none'>!
 </setColor> |
 (<point><color affect='main' cycle='CYC1'/></point><line><color cycle='CYC2'/></line>)
 <CYC id='CYC1'>!</CYC><CYC id='CYC2'>!</CYC>
(<line><color id='c1'/></line><line><color/></line>)<CYC id='own'/> | <setColor>!</setColor> |
 (<line><color id='c1'/></line><line><color cycle='CYC1'/></line>)<CYC id='own'/><CYC id='CYC1'>!
 </CYC> |
 (<line><color id='c1' cycle='a'/></line>)
)");
}

TEST(Aesthetics, GetLengths) {
  expectRows(R"(
<intervalDomain id='d'/>(<point><size low='1pt' high='2pt' cycle='c' domain='d' clamp='true'>
 <lengthMapping from='x' to='1pt'/></size></point>
 <interval><size low='1pt'/></interval>)<CYC id='c'/> |
 <setSize elementType='point'><parameter name='a' value='3pt'/>!<parameter name='b' value='5%'/>
 </setSize> |
 <intervalDomain id='d'/>(<point><size clamp='true'><lengthMapping from='a' to='3pt'/>
 <lengthMapping from='b' to='5%'/></size></point><interval><size low='1pt'/></interval>)
 <CYC id='c'/>
(<point><size id='z' low='1pt'/></point>) | <setSize><parameter name='a' value='3pt'/></setSize> |
 (<point><size id='z' low='1pt'/></point>) | (<point><size id='z' cycle='a'/></point>)
(<point><size low='1pt'/></point><line><size low='1pt'/></line>) | <setSize elementType='labeling'>
 !</setSize><setSize elementType='line'>!</setSize> |
 (<point><size low='1pt'/></point><line><size cycle='CYC1' low='1pt'/></line>)<CYC id='CYC1'>!</CYC>
)");
}

TEST(Aesthetics, TakeThePlaceOfColors) {
  expectRows(R"(
VARS<intervalDomain id='d'/>(<line><color id='c1' variable='v' domain='d' clamp='true'
 split='false' dimension='1' missing='red' affect='main' cycle='c'>
 <scale/><colorMapping id='m' from='a' to='red'/></color><color id='c2'/></line>)<legend>
 <legendTarget target='c1'/></legend><CYC id='c'/> |
 <addDash aestheticNumber='1'>!</addDash><addDash aestheticNumber='2'>!</addDash> |
 VARS<intervalDomain id='d'/>(<line><dash id='c1' clamp='true' cycle='CYC1' dimension='1'
 domain='d' missing='red' split='false' variable='v'/><color id='c2'/></line>)<legend>
 <legendTarget target='c1'/></legend><CYC id='c'/><CYC id='CYC1'>!</CYC>
(<line><color id='c1'/><color/></line>)<legend><legendTarget target='c1'/></legend> | <addDash/>
 <addImage>[red]</addImage> |
 (<line><image id='c1' cycle='CYC1'/><image cycle='CYC2'/></line>)<legend>
 <legendTarget target='c1'/></legend><CYC id='CYC1'>[red]</CYC><CYC id='CYC2'>[red]</CYC>
(<line><color id='c1'/><color id='c2'/></line>) | <addImage>[red]</addImage> |
 (<line><color id='c1'/><image id='c2' cycle='CYC1'/></line>)<CYC id='CYC1'>[red]</CYC> | (<line>
 <color id='c1' cycle='a'/></line>)
)");
}

}  // namespace
