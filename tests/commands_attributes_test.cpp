// setGenericAttributes, which writes what it is given.
#include "commandcases.h"

namespace {

// The command with these attributes.
std::string set(const std::string& attributes) {
  return "<setGenericAttributes " + attributes + "/>";
}

TEST(GenericAttributes, AreWrittenOnTheNodesOfATag) {
  const std::string chart =
      "<graph><coordinates><dimension><axis id='a'/><axis/></dimension></coordinates>"
      "<facetLayout><facetLevel><axis/></facetLevel></facetLayout></graph>";
  const std::string written = " opposite='true'";
  const std::pair<const char*, std::vector<bool>> rows[] = {
      {"elementName='axis'", {true, true, true}},
      {"elementName='axis' count='2'", {false, true, false}},
      {"elementName='axis' count='4'", {false, false, false}},
      {"elementName='axis' parentName='dimension'", {true, true, false}},
      {"elementName='axis' parentName='facetLevel' count='1'", {false, false, true}},
      {"elementName='Axis'", {false, false, false}},
      {"parentName='dimension'", {false, false, false}},
  };
  const ChartBase holder;
  for (const auto& [attributes, isWritten] : rows) {
    std::string expected = chart;
    std::size_t at = 0;
    for (const bool each : isWritten) {
      at = expected.find("/>", expected.find("<axis", at));
      if (each) expected.insert(at, written);
      at += 2;
    }
    EditedChart edited(chart);
    EXPECT_EQ(edited.apply("<bogus/>" + set(attributes + written)),
              std::string(attributes).find("elementName") != std::string::npos);
    EXPECT_EQ(edited.body(), expected) << attributes;
  }
}

TEST(GenericAttributes, AreWrittenAsTheyStand) {
  const CommandCase cases[] = {
      // Whatever they are, but names that need a namespace
      {"<graph/>", "<setGenericAttributes elementName='graph' a='' style=' b ' xml:lang='en'/>",
       "<graph a='' style=' b '/>"},
      // The text of a node
      {"<labelFrame><label><text text='old'>A<![CDATA[B]]></text><text/></label></labelFrame>",
       "<setGenericAttributes elementName='text' text='&lt;N&gt;'/>",
       "<labelFrame><label><text text='old'>&lt;N&gt;</text><text>&lt;N&gt;</text></label>"
       "</labelFrame>"},
      {"<labelFrame><label><text text='old'>A</text><text text='old'/></label></labelFrame>",
       "<setGenericAttributes elementName='text' text=''/>",
       "<labelFrame><label><text/><text/></label></labelFrame>"},
      // What breaks its type is passed over; lengths and colours are texts.
      {"<graph id='g'><interval style='s'/></graph><style id='s'/>",
       "<setGenericAttributes elementName='style' opacity='2,5' opacity2='NaN' pattern='1.5' "
       "visible='' color='#12' width='5' font-weight='heavy' id='5%'/>",
       "<graph id='g'><interval style='s'/></graph><style id='s' color='#12' opacity2='NaN' "
       "width='5'/>"},
      // Links follow an id; one that another element has, and none, are passed over.
      {"<graph style='s'/><style id='s'/><style id='t'/><extension title1='s'/>",
       "<setGenericAttributes elementName='style' id='new' color='red'/>",
       "<graph style='new'/><style id='new' color='red'/><style id='t' color='red'/>"
       "<extension title1='new'/>"},
      {"<graph id='g' style='s'/><style id='s'/>",
       "<setGenericAttributes elementName='style' id='g' color='red'/>"
       "<setGenericAttributes elementName='style' id=''/>"
       "<setGenericAttributes elementName='style' id='a b'/>",
       "<graph id='g' style='s'/><style id='s' color='red'/>"},
  };
  expectCases(cases);
}

TEST(GenericAttributes, AreWrittenOnTheStylesOfNodes) {
  const CommandCase cases[] = {
      {"<graph><point style='s'/><point/></graph><style id='s'/>",
       "<setGenericAttributes elementName='point' styleName='style' color='red' text='a'/>",
       "<graph><point style='s'/><point style='style1'/></graph>"
       "<style id='s' color='red' text='a'/>"
       "<style id='c-o-n-t-a-i-n-er'><style id='style1' color='red' text='a'/></style>"},
      // No links to styles: nothing is made.
      {"<graph><point/><point id='p'/></graph>",
       "<setGenericAttributes elementName='point' styleName='id' name='n'/>"
       "<setGenericAttributes elementName='point' styleName='stile' name='n'/>",
       "<graph><point/><point id='p'/></graph>"},
      // What the source states stays.
      {"<graph><point style='s'/><point style='t'/></graph><style id='s'/><style id='t'/>",
       "<setGenericAttributes elementName='point' styleName='style' color='red' width='1pt'/>"
       "<setGenericAttributes elementName='style' depth='1pt'/>",
       "<graph><point style='s'/><point style='t'/></graph>"
       "<style id='s' depth='1pt' width='1pt'/><style id='t' color='red' depth='1pt' "
       "width='1pt'/>",
       "<style id='s' color='blue' depth='2pt'/>"},
  };
  expectCases(cases);
}

}  // namespace
