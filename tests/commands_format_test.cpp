// What commands import: formats, texts of labels, styles of labels and grid lines.
#include <regex>

#include "basetemplate.h"
#include "commandcases.h"
#include "pathfactory.h"
#include "plxaxis.h"
#include "plxformat.h"
#include "plxlabel.h"

using namespace xercesc;

namespace {

// The object of the only element of that tag.
template <class T>
T& only(EditedChart& chart, const XMLCh* tag) {
  DOMNode* node = chart.chart().getImplementation()->getElementsByTagName(tag)->item(0);
  return *dynamic_cast<T*>(chart.chart().objectOf(static_cast<DOMElement*>(node)));
}

// The only format of a chart after an import.
std::string imported(const std::string& format, const std::string& element) {
  const std::string start = "<sourceVariable>";
  EditedChart chart(start + format + "</sourceVariable>");
  const Fragment fragment(element);
  auto& object = only<PlXFormat>(chart, u"format");
  const ChartString name(fragment.first()->getTagName());
  BaseTemplate base(nullptr, chart.chart());
  (base.*(name.equals(u"numberFormat")     ? &BaseTemplate::importNumberFormat
          : name.equals(u"dateTimeFormat") ? &BaseTemplate::importDateTimeFormat
          : name.equals(u"stringFormat")   ? &BaseTemplate::importStringFormat
          : name.equals(u"format")         ? &BaseTemplate::replaceFormat
                                           : &BaseTemplate::importElapsedTimeFormat))(object,
                                                                              fragment.first());
  const std::string body = chart.body();
  return body.substr(start.size(), body.find("</sourceVariable>") - start.size());
}

// It would be there again whenever it is removed.
TEST(ImportFormat, LeavesWhatADocumentTypeGives) {
  EditedChart chart(chartText("<sourceVariable id='v'><format prefix='p'/></sourceVariable>",
                              "<!DOCTYPE visualization [<!ELEMENT format EMPTY>"
                              "<!ATTLIST format suffix CDATA 'd'>]>"));
  auto& format = only<PlXFormat>(chart, u"format");
  const Fragment fragment("<format useGrouping='true'/>");
  BaseTemplate::importFormat(format, fragment.first());
  EXPECT_EQ(*format.getPrefix(), 0);
  EXPECT_EQ(ChartString(format.getSuffix()).toUTF8(), "d");
}

TEST(ImportFormat, MergesOrReplaces) {
  const ChartBase holder;
  // numberFormat alone sets flags that it doesn't state.
  const auto rows = rowsOf(R"(
<format hideNegatives='true' negativesOutside='true' prefix='a' scientific='true' suffix='b'
  useGrouping='true'/> | <numberFormat/> | <format hideNegatives='true'
  negativesInParentheses='false' negativesOutside='false' scientific='true' useGrouping='false'/>
<format/> | <numberFormat useGrouping='yes' hideNegatives='yes' scientific='maybe'/> | <format
  hideNegatives='false' negativesInParentheses='false' negativesOutside='false'
  useGrouping='false'/>
<format/> | <numberFormat useGrouping='true' hideNegatives='true' negativesOutside='true'
  negativesInParentheses='true' scalingFactor='0.010' prefix='p' suffix=' %' scientific='never'
  minimumFractionDigits='1' maximumFractionDigits='2' minimumIntegerDigits='3'
  maximumIntegerDigits='0'/> | <format hideNegatives='true' maximumFractionDigits='2'
  maximumIntegerDigits='0' minimumFractionDigits='1' minimumIntegerDigits='3'
  negativesInParentheses='true' negativesOutside='true' prefix='p' scalingFactor='0.01'
  scientific='false' suffix=' %' useGrouping='true'/>
<format prefix='a' useGrouping='true'/> | <stringFormat suffix='b' useGrouping='false'/>
  | <format suffix='b' useGrouping='true'/>
<format suffix='b'/> | <elapsedTimeFormat prefix='a'><dateFormat/></elapsedTimeFormat>
  | <format prefix='a'/>
<format id='f' prefix='a'><relabel to='b'/><unitRule from='1'/><unitRule from='2'/></format>
  | <format showEra='true' own='c'><other><unitRule suffix='K'/></other><unitRule/></format>
  | <format showEra='true'><relabel to='b'/><unitRule suffix='K'/></format>
<format/> | <format id=' f'><unitRule id='' from='1' own='x'/></format>
  | <format><unitRule from='1'/></format>
<format prefix='a'><unitRule/></format> | <format/> | <format/>
<format baseFormat='duration' prefix='a'/> | <dateTimeFormat suffix='b'/>
  | <format baseFormat='duration' suffix='b'/>
<format/> | <numberFormat maximumFractionDigits='4294967297'/> | <format
  negativesInParentheses='false' negativesOutside='false' useGrouping='false'/>
<format/> | <dateTimeFormat><DateFormat><year/></DateFormat></dateTimeFormat> | <format/>
<format/> | <dateTimeFormat><other><timeFormat/></other><dateFormat/></dateTimeFormat>
  | <format baseFormat='dateTime'/>
)");
  for (const auto& row : rows) EXPECT_EQ(imported(row[0], row[1]), row[2]) << row[1];
}

TEST(ImportFormat, ReadsThePartsOfDatesAndTimes) {
  const ChartBase holder;
  const auto rows = rowsOf(R"(
date | <dayOfWeek long='true'/><dayOfWeek long='false'/> | dayOfWeekAbbreviation='false'
  showDayOfWeek='true'
date | <dayOfWeek long='false'/> | dayOfWeekAbbreviation='true' showDayOfWeek='true'
date | <dayOfWeek long='1'/> | showDayOfWeek='true'
date | <dayOfMonth fill='true'/> | dayPadding='true' dayType='dayOfMonth' showDay='true'
date | <dayOfYear fill='false'/> | dayPadding='false' dayType='dayOfYear' showDay='true'
date | <week fill='true'/><era/> | showEra='true' showWeek='true' weekPadding='true'
date | <month fill='true'/> | monthFormat='twoDigits' showMonth='true'
date | <month fill='false'/> | monthFormat='number' showMonth='true'
date | <monthName long='true'/> | monthFormat='long' showMonth='true'
date | <monthName long='false'/> | monthFormat='short' showMonth='true'
date | <quarter prefix='Q' suffix=''/> | quarterPrefix='Q' showQuarter='true'
date | <year showCentury='true'/><hour/> | showYear='true' yearAbbreviation='false'
date | <era/><year/> | showEra='true' showYear='true'
date | <year showCentury='false'/> | showYear='true' yearAbbreviation='true'
time | <hour twentyFour='true' showAMPM='true' fill='true'/> | hourFormat='amPm'
  hourPadding='true' showHour='true'
time | <hour twentyFour='true' showAMPM='false'/> | hourFormat='twentyFour' showHour='true'
time | <hour twentyFour='false'/><year/> | hourFormat='twelve' showHour='true'
time | <minute fill='true'/><second fill='false' milliseconds='true'/> | minutePadding='true'
  secondPadding='false' showMillis='true' showMinute='true' showSecond='true'
)");
  for (const auto& row : rows) {
    const std::string element = "<dateTimeFormat><" + row[0] + "Format>" + row[1] + "</" + row[0] +
                                "Format></dateTimeFormat>";
    EXPECT_EQ(imported("<format/>", element),
              "<format baseFormat='" + row[0] + "' " + row[2] + "/>");
  }
}

TEST(ImportFormat, GoesToTheTicks) {
  const ChartBase holder;
  const auto ticksOf = [](const std::string& formats) {
    return "<graph><coordinates><dimension><axis><majorTicks markStyle='s' style='s' "
           "tickFrameStyle='s'>" +
           formats + "</majorTicks></axis></dimension></coordinates></graph><style id='s'/>";
  };
  // Ticks merge into the first format, in a fixed order of kinds; labels get a new one, by the
  // first kind.
  const std::string old = "<format prefix='a' showEra='true'/><format prefix='b'/>";
  const auto rows = rowsOf(R"(
<majorTicks role='x'><elapsedTimeFormat prefix='e'/><stringFormat suffix='s'/></majorTicks>
  | <format prefix='e' showEra='true'/><format prefix='b'/>
<elapsedTimeFormat prefix='e'/><stringFormat prefix='s'/><stringFormat prefix='t'/>
  | <format prefix='t'/>
<numberFormat/><some/> | <format prefix='a' showEra='true'/><format prefix='b'/>
<dateTimeFormat prefix='d'/><elapsedTimeFormat prefix='e'/> | <format prefix='d'/>
<stringFormat prefix='s'/><numberFormat prefix='n'/><format suffix='f'/> | <format suffix='f'/>
)");
  for (const auto& row : rows) {
    EditedChart chart(ticksOf(old));
    const bool isLabel = !row[0].starts_with("<majorTicks");
    chart.apply(isLabel ? "<setTickLabelFormat role='x'>" + row[0] + "</setTickLabelFormat>"
                        : "<setAxisMajorTicks>" + row[0] + "</setAxisMajorTicks>");
    EXPECT_EQ(chart.body(), ticksOf(row[1])) << row[0];
  }
}

std::string merged(const std::string& label) {
  EditedChart chart(
      "<labelFrame id='f'><label><text text='old'/><text text='more'/></label></labelFrame>");
  const Fragment fragment(label);
  auto& object = only<PlXLabel>(chart, u"label");
  BaseTemplate(nullptr, chart.chart()).mergeText(fragment.first(), object);
  std::string text;
  for (const PlXText* each : object.getTexts())
    text += "[" + ChartString(each->getText()).toUTF8() + "]";
  return text;
}

TEST(MergeText, TakesTheElementsOwnText) {
  const ChartBase holder;
  EXPECT_EQ(merged("<label/>"), "[old][more]");
  EXPECT_EQ(merged("<label><style/><!-- no text --></label>"), "[old][more]");
  EXPECT_EQ(merged("<label>\n  <style/>\n</label>"), "[old][more]");
  EXPECT_EQ(merged("<label>  <style/></label>"), "[  ]");
  EXPECT_EQ(merged("<label>a<![CDATA[ <b> ]]>c</label>"), "[a <b> c]");
  EXPECT_EQ(merged("<label> a<style>no</style><!-- no --> &lt;b </label>"), "[ a <b ]");
}

TEST(MergeText, FillsPlaceholdersInTheLanguageOfTheInstallation) {
  const ChartBase holder;
  const std::string year = merged("<label>@@current_<!-- split -->YYYY@@ @@other@@</label>");
  EXPECT_TRUE(std::regex_match(year, std::regex("\\[2\\d{3} @@other@@\\]"))) << year;
  // Day names in their own letters, which take the language's code page.
  const std::tuple<const char*, XMLCh, XMLCh> languages[] = {
      {"ru", u'\u0410', u'\u044f'},    {"ko", u'\uac00', u'\ud7a3'},
      {"ja", u'\u4e00', u'\u9fff'},    {"zh-cn", u'\u4e00', u'\u9fff'},
      {"zh_tw", u'\u4e00', u'\u9fff'}, {"en", u'A', u'z'}};
  for (const auto& [language, first, last] : languages) {
    PathFactory::getPathInstance(3)->setLanguage(language);
    const ChartString day(merged("<label>@@current_weekday@@</label>").c_str());
    EXPECT_GT(day.length(), 4u) << language;
    for (std::size_t i = 1; i + 1 < day.length(); ++i) {
      EXPECT_TRUE(day.xc_str()[i] >= first && day.xc_str()[i] <= last) << language;
    }
  }
}

TEST(ImportStyles, OfGridLinesAndLabels) {
  const ChartBase holder;
  const auto lines = [](const std::string& content, const std::string& styles) {
    return "<graph><coordinates><dimension><axis><majorTicks><gridline style='g'>" + content +
           "</gridline></majorTicks></axis></dimension></coordinates></graph><style id='g'" +
           styles;
  };
  const std::string old = "<conditionalStyle style='g' when='o'/>";
  const std::pair<std::string, std::string> cases[] = {
      // The first style at any depth is the lines' own.
      {"<gridLines><facetStyle><style depth='1pt'/></facetStyle></gridLines>",
       lines(old, " depth='1pt'/>")},
      {"<gridLines><style depth='1pt'/><facetStyle when='a'><style color='red'/></facetStyle>"
       "</gridLines>",
       lines("<conditionalStyle style='style1' when='a'/>",
             " depth='1pt'/><style id='c-o-n-t-a-i-n-er'><style id='style1' color='red'/>"
             "</style>")}};
  for (const auto& [element, after] : cases) {
    EditedChart chart(lines(old, "/>"));
    BaseTemplate(nullptr, chart.chart())
        .styleGridLines(nullptr, only<PlXGridline>(chart, u"gridline"), Fragment(element).first());
    EXPECT_EQ(chart.body(), after) << element;
  }
  EditedChart chart("<labelFrame id='f'><label/></labelFrame>");
  BaseTemplate(nullptr, chart.chart()).styleLabel(only<PlXLabel>(chart, u"label"), nullptr);
  EXPECT_EQ(chart.body(),
            "<labelFrame id='f'><label style='style1' textFrameStyle='style2'/></labelFrame>"
            "<style id='c-o-n-t-a-i-n-er'><style id='style1' color='black'/><style id='style2' "
            "color='transparent' color2='transparent' visible='false'/></style>");
}

}  // namespace
