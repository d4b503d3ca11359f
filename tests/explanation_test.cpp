// What is told of a template without a chart.
#include "explanation.h"

#include "commandcases.h"

using namespace xercesc;

namespace {

DocumentNode nodeOf(const DOMElement& element) {
  DocumentNode node;
  node.name = ChartString(element.getTagName()).toUTF8();
  const DOMNamedNodeMap* attributes = element.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    node.attributes.emplace_back(ChartString(attributes->item(i)->getNodeName()).toUTF8(),
                                 ChartString(attributes->item(i)->getNodeValue()).toUTF8());
  }
  for (const DOMElement* child = firstElement(&element); child; child = nextElement(child)) {
    node.children.push_back(nodeOf(*child));
  }
  return node;
}

// Commands, and what is told of them; "-" before what is passed over.
TEST(Explanation, TellsWhatDoesNothing) {
  const ChartBase holder;
  const CommandSchema schema;
  const ChartElements charts = readChartElements();
  for (const auto& row : rowsOf(R"(
<hideFrame type='title' count='1'/> | none
<hideFrame type='title'/> | -'hideFrame' does nothing without 'count' beside 'type=title|footnote|legend|graph'
<hideFrame type='title' count='1' graph='2'/> |
 -attribute 'graph' of 'hideFrame' is read only beside 'type=graph'
<addFrame frameId='frame_title_1' type='title'><label/></addFrame> |
 -attribute 'frameId' of 'addFrame' is not read beside 'type'
<addFrame type='titel'><label/></addFrame> |
 attribute 'type' of 'addFrame': 'titel' is unknown; did you mean 'title'? read as labelFrame
<setSize><cycle/><parameter name='a' value='1pt'/></setSize> |
 element 'cycle' in 'setSize' is not read beside 'parameter'
<addDataLabels styleOnly='true'><labeling variable='x'/><labeling variable='y'><format/></labeling></addDataLabels> |
 -element 'labeling' in 'addDataLabels' is not read beside 'styleOnly=true'
<addDataLabels><labeling/></addDataLabels> | 'labeling' does nothing without 'variable'
<addDataLabels position='label-location-x:left;label-location-y:center'/> |
 attribute 'position' of 'addDataLabels': 'left' of key 'label-location-x' is none of center, negative, positive
<setRotation theta='1'><parameter name='theta' value='2'/></setRotation> |
 -parameter 'theta' in 'setRotation' is not read beside 'theta'
<setRotation theta='x'><parameter name='theta' value='2'/></setRotation> |
 -attribute 'theta' of 'setRotation': 'x' is not a decimal number such as 0.5 or 1e3, with a point whatever the language
<addPieEffects><z location='1'/><z location='x'/></addPieEffects> |
 -of several 'z' in 'addPieEffects' only the last one with 'location' is read
 -attribute 'location' of 'z': 'x' is not a decimal number such as 0.5 or 1e3, with a point whatever the language
<addOriginLine><parameter name='x'/><parameter name='y' value='1'/></addOriginLine> |
 -of several 'parameter' in 'addOriginLine' only the first one with 'value' is read
<setAxisMajorTicks><x><majorTicks role='x'/></x></setAxisMajorTicks> |
 element 'x' is not read in 'setAxisMajorTicks'; what lies in it is
<setAxisMajorTicks><majorTicks role='x'><gridLines><style/><style/></gridLines></majorTicks></setAxisMajorTicks> |
 -of several 'style' in 'gridLines' only the first one is read
<addHistogramNormalLine type='t' parameter='1' secondaryParameter='2'/> |
 -'addHistogramNormalLine' does nothing with 'secondaryParameter' beside 'type=t|chisquare|gamma|exponential|poisson'
<setGenericAttributes elementName='axis' parentName='dimensoin' opposite='true'/> |
 -charts have no element 'dimensoin'; did you mean 'dimension'?
<setGenericAttributes elementName='axis' a='b'/> |
 'axis' has no attribute 'a' in charts, but it is written as it stands
)")) {
    const Fragment fragment(row.at(0));
    const DocumentNode root = nodeOf(*fragment.root());
    std::string told;
    const Explanation explanation(schema, charts, root);
    for (const Finding& each : explanation.findings()) {
      told += told.empty() ? "" : " ";
      told += (each.passedOver == Finding::PassedOver::nothing ? "" : "-") + each.message;
    }
    std::string expected;
    for (std::size_t i = 1; i < row.size(); ++i) expected += (i > 1 ? " | " : "") + row[i];
    EXPECT_EQ(told.empty() ? "none" : told, expected) << row[0];
  }
}

}  // namespace
