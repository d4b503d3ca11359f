// The commands of categories.
#include "commandcases.h"

namespace {

constexpr std::pair<const char*, const char*> forms[] = {
    // A variable of categories, up to its content or its end, and one of counts
    {"CAT", "<sourceVariable categorical='true' id="},
    {"LABELS",
     "<format><relabel from='1' to='One'/><relabel from='2' to='Two'/>"
     "<relabel from='9' to='One'/><relabel from='' to='None'/></format>"
     "<format><relabel from='8' to='Eight'/></format>"},
    {"COUNTS", "VAR'n'><extension statistic='1'/>/V"},
    {"VAR", "<sourceVariable id="},
    {"/V", "</sourceVariable>"},
    {"DOM", "<categoricalDomain id="},
    {"/D", "</categoricalDomain>"},
    {"REF", "<variableReference ref="},
    {"X0", "<x variable='v'/>"},
    {"XY", "<x variable='v'/><y variable='n'/>"},
    {"ORDERED", "<simpleSort method='explicit'><categoryOrder text="},
    {"/O", "/></simpleSort>"},
    {"NATURAL", "<simpleSort method='natural' descending='false'/>"},
    {"REST", "<sortMove category='Rest' first='false'/>"},
    {"SUM",
     "<summaryStatistic convertIntervalToSingleValue='false' method='sum' "
     "summaryBase='coordinate'/>"},
    {"MERGED", "<aggregation category='Rest' minFraction='0.05' variable='n'/>"},
    {"COLLAPSE", "<setCollapse categoryName='Rest' minFraction='0.05' role="},
    {"LIST", "<categoryValue>"},
    {"/L", "</categoryValue>"},
    {"PIE", "<graph><coordinates><polarTransform/>"},
    {"/C", "</coordinates>"},
    {"INSET", "<insetTransform x_min='0.2' x_max='0.2' y_min='0.2' y_max='0.2'/>"},
    {"BY", "<graph><coordinates><dimension domain='d'/></coordinates>"},
};

TEST(SetOrder, WritesRawValues) {
  // A label that two raw values have stands for the first, one without a raw value for itself.
  expectTable(R"(
CAT'v' domain='d'>LABELS/VDOM'd'>REF'v'/><categories text='1'/><statisticSort/><simpleSort/>/D
  <graph><point>X0</point></graph> | <setOrder role='x'><a>LIST;Two;;One; One;None;Eight;x;/L</a>
  LISTa/L</setOrder> | CAT'v' domain='d'>LABELS/VDOM'd'>REF'v'/><categories text='1'/>
  ORDERED'2;1; One;None;Eight;x'/O/D<graph><point>X0</point></graph>
CAT'v' domain='d'/>DOM'd'>REF'v'/><simpleSort/>/D<graph><point>X0</point></graph>
  | <setOrder role='x'><categoryValue/></setOrder>
  | CAT'v' domain='d'/>DOM'd'>REF'v'/>ORDERED''/O/D<graph><point>X0</point></graph>
CAT'v' domain='d'/>DOM'd'>REF'v'/><simpleSort/>/D<graph><point>X0</point></graph>
  | <setOrder role='x'/><setOrder role='q'>LISTa/L</setOrder><setOrder role='legend'>LISTa/L
  </setOrder><setOrder role='y'>LISTa/L</setOrder> | =
)",
              forms);
}

TEST(SetOrder, FindsTheDomainsOfARole) {
  // All domains that refer to the variable, of which the last becomes its own; without one its own,
  // that of a dimension or a new one, which then refers to it. The cluster variable of the first
  // graph is the x of all, in containers too.
  expectTable(R"(
CAT'v' domain='c'/>DOM'c'/>DOM'd'>REF'v'/>/DDOM'e'>REF'd'/>REF'v'/>REF'v'/>/D
  <graph><point>X0</point></graph> | <setOrder role='x' graph='7'>LISTa/L</setOrder>
  | CAT'v' domain='e'/>DOM'c'/>DOM'd'>REF'v'/>ORDERED'a'/O/DDOM'e'>REF'd'/>REF'v'/>REF'v'/>
  ORDERED'a'/O/D<graph><point>X0</point></graph>
CAT'v' domain='c'/>DOM'c'/>DOM'd'/>BY<point>X0</point></graph>
  | <setOrder role='x'>LISTa/L</setOrder> | CAT'v' domain='c'/>DOM'c'>REF'v'/>ORDERED'a'/O/D
  DOM'd'/>BY<point>X0</point></graph>
CAT'v'/>DOM'd'/><graph/>BY<point>X0</point></graph><graph><point>X0</point></graph>
  | <setOrder role='x'>LISTa/L</setOrder> | CAT'v' domain='d'/>DOM'd'>REF'v'/>ORDERED'a'/O/D
  <graph/>BY<point>X0</point></graph><graph><point>X0</point></graph>
<derivedVariable id='v' categorical='true'/>CAT'w'/><container><graph><point><z variable='w'/>
  <y variable='v'/></point><line><y variable='v'/></line></graph></container>
  | <setOrder role='y'>LISTa/L</setOrder> | <derivedVariable id='v' categorical='true'
  domain='categoricalDomain1'/>CAT'w'/>DOM'categoricalDomain1'>REF'v'/>ORDERED'a'/O/D<container>
  <graph><point><z variable='w'/><y variable='v'/></point><line><y variable='v'/></line></graph>
  </container>
CAT'v'/>CAT'w'/><graph><coordinates><dimension/><dimension/>/C</graph><graph><coordinates>
  <dimension clusterVariable='w'/>/C<point>X0</point></graph> | <setOrder role='x'>LISTa/L</setOrder>
  | CAT'v' domain='categoricalDomain1'/>CAT'w'/>DOM'categoricalDomain1'>REF'v'/>ORDERED'a'/O/D
  <graph><coordinates><dimension/><dimension/>/C</graph><graph><coordinates>
  <dimension clusterVariable='w'/>/C<point>X0</point></graph>
CAT'v'/>CAT'w'/><graph><coordinates><dimension clusterVariable='w'/>/C</graph><graph>
  <point>X0</point></graph> | <setOrder role='x'>LISTa/L</setOrder>
  | CAT'v'/>CAT'w' domain='categoricalDomain1'/>DOM'categoricalDomain1'>REF'w'/>ORDERED'a'/O/D
  <graph><coordinates><dimension clusterVariable='w'/>/C</graph><graph><point>X0</point></graph>
CAT'v'/>VAR'w'/><graph><point><color variable='w'/><size variable='v'/></point></graph>
  | <setOrder role='legend'>LISTa/L</setOrder>
  | CAT'v' domain='categoricalDomain1'/>VAR'w'/>DOM'categoricalDomain1'>REF'v'/>ORDERED'a'/O/D
  <graph><point><color variable='w'/><size variable='v'/></point></graph>
<graph><point><x><expressionVariable categorical='true' expression='a/b'/></x></point></graph>
  | <setOrder role='x'>LISTa/L</setOrder>
  | DOM'categoricalDomain1'>REF'expressionVariable1'/>ORDERED'a'/O/D<graph><point><x>
  <expressionVariable categorical='true' domain='categoricalDomain1' id='expressionVariable1'
  expression='a/b'/></x></point></graph>
)",
              forms);
}

TEST(SetOrder, LetsTheLastVariableOrderASharedDomain) {
  expectTable(R"(
CAT'v' domain='d'><format><relabel from='1' to='a'/></format>/VCAT'w' domain='d'/>
  DOM'd'>REF'v'/>REF'w'/>/D<graph><point><z variable='v'/></point><line><z variable='w'/></line>
  <path><z variable='v'/></path></graph> | <setOrder role='z'>LISTa/L</setOrder>
  | CAT'v' domain='d'><format><relabel from='1' to='a'/></format>/VCAT'w' domain='d'/>
  DOM'd'>REF'v'/>REF'w'/>ORDERED'1'/O/D<graph><point><z variable='v'/></point><line>
  <z variable='w'/></line><path><z variable='v'/></path></graph>
)",
              forms);
}

TEST(SetCategorySorting, Sorts) {
  const ChartBase holder;
  const std::string mean = "<statisticSort method='mean' variable='v' statVariable='n' descending=";
  // What stands in the command, and the sorts that it leaves; "=" for those from before.
  const std::pair<std::string, std::string> rows[] = {
      {"", "NATURAL"},
      {"<sort><simpleSort method='natural'/></sort>", "NATURAL"},
      {"<a><sort descending='true'><a><simpleSort method='data'/></a></sort></a><sort/>",
       "<simpleSort method='data' descending='true'/>"},
      {"<sort descending='1'><statisticSort/><simpleSort/></sort>",
       "<simpleSort method='value' descending='false'/>"},
      {"<sort descending='true'><statisticSort descending='false'/></sort>", mean + "'true'/>"},
      {"<sort><statisticSort/></sort>", mean + "'false'/>"},
      {"<sort/>", "="},
      {"<sort/><sort><simpleSort/></sort>", "="}};
  for (const auto& [content, sorts] : rows) {
    const std::string old = "<simpleSort/><statisticSort/><simpleSort method='value'/>";
    const std::string start = "CAT'v' domain='d'/>VAR'n'/>DOM'd'>REF'v'/>";
    const std::string end = "/D<graph><line><x variable='v'/></line><point>XY</point></graph>";
    expectTable(start + old + end + " | <setCategorySorting role='x'>" + content +
                    "</setCategorySorting> | " + start + (sorts == "=" ? old : sorts) + end,
                forms);
  }
  // The first element decides by which y; the domain is the variable's, the first that refers to
  // it, or as for orders. Without a y there is no sort.
  const std::string byMean = "<sort><statisticSort/></sort></setCategorySorting>";
  expectTable(
      "CAT'v'/>VAR'n'/>VAR'm'/>DOM'c'/>DOM'd'>REF'v'/><simpleSort/>/DDOM'e'>REF'v'/>/D"
      "<graph><line><y variable='m'/></line><point>XY</point></graph> | "
      "<setCategorySorting role='x'>" +
          byMean +
          " | "
          "CAT'v' domain='d'/>VAR'n'/>VAR'm'/>DOM'c'/>DOM'd'>REF'v'/>" +
          mean +
          "'false'/>/D"
          "DOM'e'>REF'v'/>/D<graph><line><y variable='m'/></line><point>XY</point></graph>\n"
          "CAT'v' domain='c'/>DOM'c'><simpleSort/>/DDOM'd'>REF'v'/>/D<graph>"
          "<point><size variable='v'/></point></graph> | "
          "<setCategorySorting role='x' useGroupVar='true'>" +
          byMean +
          " | "
          "CAT'v' domain='c'/>DOM'c'>REF'v'/>/DDOM'd'>REF'v'/>/D<graph>"
          "<point><size variable='v'/></point></graph>\n"
          "CAT'v'/><graph><point><size variable='v'/></point></graph> | "
          "<setCategorySorting role='legend'/> | =\n",
      forms);
}

TEST(SetExclude, ReplacesLists) {
  expectTable(R"(
CAT'v' domain='d'>LABELS/VDOM'd'>REF'v'/><categories text='7'/><categories text='8'/>/D
  <graph><point>X0</point></graph> | <setExclude role='x'>LISTTwo;x;None;One/L</setExclude>
  | CAT'v' domain='d'>LABELS/VDOM'd'>REF'v'/><categories remove='true' text='2;1'/>/D
  <graph><point>X0</point></graph>
CAT'v'/>DOM'd'/><graph><point><color variable='v'/></point></graph>
  | <setExclude role='legend'>LISTa;b/L</setExclude> | CAT'v' domain='categoricalDomain1'/>DOM'd'/>
  DOM'categoricalDomain1'>REF'v'/><categories remove='true' text=''/>/D<graph><point>
  <color variable='v'/></point></graph>
VAR'v'/>DOM'd'>REF'v'/><categories text='7'/>/DBY<point>X0</point></graph>
  | <setExclude role='x'>LISTa/L</setExclude><setExclude role='x'/> | =
)",
              forms);
}

TEST(SetCollapse, MergesIntoOne) {
  // At the end of the first sort, statistic ones before simple ones. The domain is the element's,
  // that of a dimension, or a new one that nothing links.
  expectTable(R"(
CAT'v' domain='d'><aggregation/>/VCOUNTS DOM'd'><simpleSort/><statisticSort/><statisticSort/>
  <categories text='1'/>/D<graph><point>XY</point><line>XY</line><path>XY<summaryStatistic method='count'/></path></graph>
  | COLLAPSE'x'/> | CAT'v' domain='d'>MERGED/VCOUNTS DOM'd'><simpleSort/><statisticSort>REST
  </statisticSort><statisticSort/>/D<graph><point>XY SUM</point><line>XY SUM</line>
  <path>XY<summaryStatistic method='count'/></path></graph>
CAT'v'/>COUNTS DOM'd'><simpleSort><sortMove category='Rest' first='true'/></simpleSort>
  <simpleSort/>/DBY<point>XY<summaryStatistic method='percent'/></point></graph> | COLLAPSE'x'/>
  | CAT'v'>MERGED/VCOUNTS DOM'd'><simpleSort>REST</simpleSort><simpleSort/>/DBY<point>XY
  <summaryStatistic method='percent'/>SUM</point></graph>
CAT'v'/>VAR'n'/><graph><point><x variable='n'/><color variable='v'/></point><line>
  <x variable='n'/><color variable='v'/></line></graph>
  | COLLAPSE'legend'/> | CAT'v' domain='categoricalDomain1'>MERGED/VVAR'n'/>
  DOM'categoricalDomain1'>REF'v'/><simpleSort method='natural'>REST</simpleSort>/D<graph><point><x variable='n'/>
  <color variable='v'/>SUM</point><line><x variable='n'/><color variable='v'/>SUM</line></graph>
CAT'v'/>VAR'n'/>DOM'd'/><container><graph><coordinates/><coordinates/><point><x variable='n'/>
  <color variable='v'/></point><line><x variable='n'/><size domain='d'/></line></graph></container>
  | COLLAPSE'legend'/> | CAT'v'>MERGED/VVAR'n'/>DOM'd'><simpleSort method='natural'>REST</simpleSort>
  /D<container><graph><coordinates/><coordinates/><point><x variable='n'/><color variable='v'/>SUM
  </point><line><x variable='n'/><size domain='d'/>SUM</line></graph></container>
VAR'v'/>COUNTS CAT'w' domain='d'/>DOM'd'/><graph><point>XY</point><line><y variable='n'/>
  <z variable='w'/></line></graph> | COLLAPSE'x'/>COLLAPSE'legend'/> | =
VAR'v'/>COUNTS CAT'w' domain='d'/>DOM'd'/><graph><line><y variable='n'/><z variable='w'/></line>
  </graph> | COLLAPSE'z'/> | VAR'v'/>COUNTS CAT'w' domain='d'>MERGED/VDOM'd'>
  <simpleSort method='natural'>REST</simpleSort>/D<graph><line><y variable='n'/><z variable='w'/>
  SUM</line></graph>
CAT'v'/>VAR'n'/>DOM'd'/>DOM'e'/><graph><point><x variable='n'/><color variable='v'/></point><line>
  <x variable='n'/><size domain='d'/></line><line><x variable='n'/><size domain='e'/></line></graph>
  | COLLAPSE'legend'/> | CAT'v'>MERGED/VVAR'n'/>DOM'd'><simpleSort method='natural'>REST</simpleSort>
  /DDOM'e'/><graph><point><x variable='n'/><color variable='v'/>SUM</point><line><x variable='n'/>
  <size domain='d'/>SUM</line><line><x variable='n'/><size domain='e'/>SUM</line></graph>
CAT'v'/>COUNTS<graph><point>XY</point></graph> | COLLAPSE'y'/>COLLAPSE''/> | =
CAT'v'/>COUNTS<graph><coordinates/><coordinates/><point>XY</point></graph> | COLLAPSE'x'/> | =
CAT'v'/>VAR'n'/><graph><point>XY</point></graph> | COLLAPSE'x'/> | =
CAT'v'/>VAR'n'><extension statistic='9'/>/V<graph><point>XY</point></graph> | COLLAPSE'x'/> | =
CAT'v'/>COUNTS<graph><point>XY</point><line><x variable='v'/></line></graph> | COLLAPSE'x'/> | =
CAT'v'/>COUNTS<graph><point>XY<summaryStatistic method='sum'/></point></graph> | COLLAPSE'x'/> | =
)",
              forms);
}

TEST(SetExplodeSlice, PullsSlicesOut) {
  expectTable(R"(
CAT'v'>LABELS/VVAR'n'/>PIE/C<coordinates><insetTransform/>/C<interval><x variable='n'/>
  <color variable='v'/></interval><point><size variable='v'/></point></graph>
  | <setExplodeSlice>LISTTwo;x/L</setExplodeSlice>
  | CAT'v'>LABELS/VVAR'n'/>DOM'categoricalDomain1'><categories text='2'/>/DPIE INSET/C
  <coordinates><insetTransform/>/C<interval><x variable='n'/><color variable='v'/><offset low='3%'
  high='3%' variable='v' domain='categoricalDomain1'/></interval><point><size variable='v'/></point>
  </graph>
CAT'v'/>VAR'n'/>DOM'd'><categories text='1'/><categories/>/D<intervalDomain id='i'/>PIE INSET/C
  <interval><x variable='n'/><color variable='v'/><offset low='9%' domain='d'/><offset/></interval>
  <line><x variable='n'/><offset domain='i'/></line><area><x variable='n'/></area></graph>
  | <setExplodeSlice>LISTTwo/L</setExplodeSlice>
  | CAT'v'/>VAR'n'/>DOM'd'><categories text=''/>/DDOM'categoricalDomain1'><categories text=''/>/D
  <intervalDomain id='i'/>PIE INSET/C<interval><x variable='n'/><color variable='v'/>
  <offset low='9%' domain='d'/><offset/></interval><line><x variable='n'/>
  <offset domain='categoricalDomain1'/></line><area><x variable='n'/><offset low='3%' high='3%'
  variable='v' domain='categoricalDomain1'/></area></graph>
CAT'v'/>VAR'n'/><graph><coordinates/><interval><x variable='n'/><color variable='v'/></interval>
  </graph> | <setExplodeSlice>LISTTwo/L</setExplodeSlice> | =
CAT'v'/>VAR'n'/>PIE/C<interval><x variable='n'/><size variable='n'/><color variable='v'/></interval>
  </graph>PIE/C<interval><x variable='n'/></interval></graph>
  PIE/C<interval><color variable='v'/></interval></graph>
  | <setExplodeSlice>LISTTwo/L</setExplodeSlice><setExplodeSlice/> | =
)",
              forms);
}

}  // namespace
