// What commands import: formats, texts of labels, styles of labels and grid lines.
#include <ctime>

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

// The only format of a chart after an import: what stands in its tag and below, without the name.
std::string imported(const std::string& format, const std::string& element) {
  const std::string start = "<sourceVariable><format";
  EditedChart chart(start + format + "</sourceVariable>");
  const Fragment fragment(element);
  auto& object = only<PlXFormat>(chart, u"format");
  const std::string name = ChartString(fragment.first()->getTagName()).toUTF8();
  (name == "numberFormat"     ? BaseTemplate::importNumberFormat
   : name == "dateTimeFormat" ? BaseTemplate::importDateTimeFormat
   : name == "stringFormat"   ? BaseTemplate::importStringFormat
   : name == "format"         ? BaseTemplate::importFormat
                              : BaseTemplate::importElapsedTimeFormat)(object, fragment.first());
  const std::string body = chart.body();
  return body.substr(start.size(), body.find("</sourceVariable>") - start.size());
}

struct Row {
  std::string format;
  std::string element;
  std::string after;
};

void expectImports(std::span<const Row> rows) {
  const ChartBase holder;
  for (const Row& row : rows) {
    EXPECT_EQ(imported(row.format, row.element), row.after) << row.element;
  }
}

TEST(ImportFormat, MergesNumbersAndTexts) {
  // What a numberFormat sets without stating it.
  const std::string flags = " negativesInParentheses='false' negativesOutside='false'";
  const std::string off = flags + " useGrouping='false'";
  const Row rows[] = {
      {" hideNegatives='true' negativesOutside='true' prefix='a' scientific='always' suffix='b' "
       "useGrouping='true'/>",
       "<numberFormat/>",
       " hideNegatives='true'" + flags +
           " scientific='always' "
           "useGrouping='false'/>"},
      {"/>", "<numberFormat useGrouping='yes' hideNegatives='yes' scientific='maybe'/>",
       " hideNegatives='false'" + off + "/>"},
      {"/>",
       "<numberFormat useGrouping='true' hideNegatives='true' negativesOutside='true' "
       "negativesInParentheses='true' scalingFactor='0.010' prefix='p' suffix=' %' "
       "minimumFractionDigits='1' maximumFractionDigits='2' minimumIntegerDigits='3' "
       "maximumIntegerDigits='0'/>",
       " hideNegatives='true' maximumFractionDigits='2' maximumIntegerDigits='0' "
       "minimumFractionDigits='1' minimumIntegerDigits='3' negativesInParentheses='true' "
       "negativesOutside='true' prefix='p' scalingFactor='0.01' suffix=' %' useGrouping='true'/>"},
      {"/>", "<numberFormat scientific='always'/>",
       off.substr(0, off.rfind(" useG")) + " scientific='true' useGrouping='false'/>"},
      {"/>", "<numberFormat scientific='never'/>",
       off.substr(0, off.rfind(" useG")) + " scientific='false' useGrouping='false'/>"},
      {" prefix='a' useGrouping='true'/>", "<stringFormat suffix='b' useGrouping='false'/>",
       " suffix='b' useGrouping='true'/>"},
      {" suffix='b'/>", "<elapsedTimeFormat prefix='a'><dateFormat/></elapsedTimeFormat>",
       " prefix='a'/>"}};
  expectImports(rows);
}

TEST(ImportFormat, ReadsThePartsOfDatesAndTimes) {
  const auto date = [](const std::string& parts) {
    return "<dateTimeFormat><dateFormat>" + parts + "</dateFormat></dateTimeFormat>";
  };
  const auto time = [](const std::string& parts) {
    return "<dateTimeFormat><timeFormat>" + parts + "</timeFormat></dateTimeFormat>";
  };
  const std::string isDate = " baseFormat='date'";
  const std::string isTime = " baseFormat='time'";
  const Row rows[] = {
      {" baseFormat='duration' prefix='a'/>", "<dateTimeFormat suffix='b'/>",
       " baseFormat='duration' suffix='b'/>"},
      {"/>", "<dateTimeFormat><other><timeFormat/></other><dateFormat/></dateTimeFormat>",
       " baseFormat='dateTime'/>"},
      {"/>", date("<dayOfWeek long='true'/><dayOfWeek long='false'/>"),
       isDate + " dayOfWeekAbbreviation='false' showDayOfWeek='true'/>"},
      {"/>", date("<dayOfWeek long='false'/>"),
       isDate + " dayOfWeekAbbreviation='true' showDayOfWeek='true'/>"},
      {" dayOfWeekAbbreviation='true'/>", date("<dayOfWeek long='1'/>"),
       isDate + " dayOfWeekAbbreviation='true' showDayOfWeek='true'/>"},
      {"/>", date("<dayOfMonth fill='true'/>"),
       isDate + " dayPadding='true' dayType='dayOfMonth' showDay='true'/>"},
      {"/>", date("<dayOfYear fill='false'/>"),
       isDate + " dayPadding='false' dayType='dayOfYear' showDay='true'/>"},
      {"/>", date("<week fill='true'/><era/>"),
       isDate + " showEra='true' showWeek='true' weekPadding='true'/>"},
      {"/>", date("<month fill='true'/>"), isDate + " monthFormat='twoDigits' showMonth='true'/>"},
      {"/>", date("<month fill='false'/>"), isDate + " monthFormat='number' showMonth='true'/>"},
      {"/>", date("<monthName long='true'/>"), isDate + " monthFormat='long' showMonth='true'/>"},
      {"/>", date("<monthName long='false'/>"), isDate + " monthFormat='short' showMonth='true'/>"},
      {" quarterSuffix='b'/>", date("<quarter prefix='Q' suffix=''/>"),
       isDate + " quarterPrefix='Q' quarterSuffix='b' showQuarter='true'/>"},
      {"/>", date("<year showCentury='true'/>"),
       isDate + " showYear='true' yearAbbreviation='false'/>"},
      {"/>", date("<year showCentury='false'/>"),
       isDate + " showYear='true' yearAbbreviation='true'/>"},
      // Parts of a time in a date are none.
      {"/>", date("<hour/>"), isDate + "/>"},
      {"/>", time("<hour twentyFour='true' showAMPM='true' fill='true'/>"),
       isTime + " hourFormat='amPm' hourPadding='true' showHour='true'/>"},
      {"/>", time("<hour twentyFour='true' showAMPM='false'/>"),
       isTime + " hourFormat='twentyFour' showHour='true'/>"},
      {"/>", time("<hour twentyFour='false'/>"), isTime + " hourFormat='twelve' showHour='true'/>"},
      {"/>", time("<minute fill='true'/><second fill='false' milliseconds='true'/>"),
       isTime + " minutePadding='true' secondPadding='false' showMillis='true' showMinute='true' "
                "showSecond='true'/>"}};
  expectImports(rows);
}

TEST(ImportFormat, ReplacesByTheGenericOne) {
  const Row rows[] = {
      {" id='f' prefix='a' useGrouping='true'><relabel to='b'/><unitRule from='1'/>"
       "<unitRule from='2'/></format>",
       "<format showEra='true' own='c'><other><unitRule suffix='K'/></other><unitRule/></format>",
       " own='c' showEra='true'><relabel to='b'/><unitRule suffix='K'/></format>"},
      {" prefix='a'><unitRule/></format>", "<format/>", "/>"}};
  expectImports(rows);
}

TEST(ImportFormat, GoesToTheTicks) {
  const auto ticksOf = [](const std::string& formats) {
    return "<graph><coordinates><dimension><axis><majorTicks markStyle='s' style='s' "
           "tickFrameStyle='s'>" +
           formats + "</majorTicks></axis></dimension></coordinates></graph><style id='s'/>";
  };
  const std::string before = ticksOf("<format prefix='a' showEra='true'/><format prefix='b'/>");
  const auto label = [](const std::string& children) {
    return "<setTickLabelFormat role='x'>" + children + "</setTickLabelFormat>";
  };
  const std::pair<std::string, std::string> cases[] = {
      // Ticks merge into the first format, in a fixed order of kinds.
      {"<setAxisMajorTicks><majorTicks role='x'><stringFormat prefix='s'/></majorTicks>"
       "</setAxisMajorTicks>",
       "<format prefix='s' showEra='true'/><format prefix='b'/>"},
      {"<setAxisMajorTicks><majorTicks role='x'><elapsedTimeFormat prefix='e'/>"
       "<stringFormat suffix='s'/></majorTicks></setAxisMajorTicks>",
       "<format prefix='e' showEra='true'/><format prefix='b'/>"},
      // Labels get a new one, by the first kind.
      {label("<elapsedTimeFormat prefix='e'/><stringFormat prefix='s'/><stringFormat prefix='t'/>"),
       "<format prefix='t'/>"},
      {label("<dateTimeFormat prefix='d'/><elapsedTimeFormat prefix='e'/>"),
       "<format prefix='d'/>"},
      {label("<stringFormat prefix='s'/><numberFormat prefix='n'/><format suffix='f'/>"),
       "<format suffix='f'/>"}};
  const ChartBase holder;
  for (const auto& [commands, formats] : cases) {
    EditedChart chart(before);
    chart.apply(commands);
    EXPECT_EQ(chart.body(), ticksOf(formats)) << commands;
  }
  EditedChart chart(before);
  chart.apply(
      "<setTickLabelFormat role='x' categorical='true'><numberFormat/>"
      "</setTickLabelFormat><setTickLabelFormat role='x'><other/></setTickLabelFormat>");
  EXPECT_EQ(chart.body(), before);
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
  EXPECT_EQ(merged("<label> a<style>no</style><!-- no --> &lt;b </label>"), "[ a <b ]");
}

TEST(MergeText, FillsPlaceholdersInTheLanguageOfTheInstallation) {
  const ChartBase holder;
  const std::time_t now = std::time(nullptr);
  const std::string before = std::to_string(1900 + std::localtime(&now)->tm_year);
  const std::string text = merged("<label>@@current_<!-- split -->YYYY@@, @@other@@</label>");
  const std::time_t later = std::time(nullptr);
  const std::string after = std::to_string(1900 + std::localtime(&later)->tm_year);
  EXPECT_TRUE(text == "[" + before + ", @@other@@]" || text == "[" + after + ", @@other@@]")
      << text;
  // Day names: each in letters of its own, which the code page decides.
  const std::pair<const char*, std::pair<XMLCh, XMLCh>> languages[] = {
      {"en", {u'A', u'z'}},
      {"ru", {u'\u0410', u'\u044f'}},
      {"ko", {u'\uac00', u'\ud7a3'}},
      {"ja", {u'\u4e00', u'\u9fff'}},
      {"zh-cn", {u'\u4e00', u'\u9fff'}},
      {"zh_tw", {u'\u4e00', u'\u9fff'}}};
  for (const auto& [language, letters] : languages) {
    PathFactory::getPathInstance(3)->setLanguage(language);
    const ChartString day(merged("<label>@@current_weekday@@</label>").c_str());
    EXPECT_GT(day.length(), 4u) << language;
    for (std::size_t i = 1; i + 1 < day.length(); ++i) {
      const XMLCh letter = day.xc_str()[i];
      EXPECT_TRUE(letter >= letters.first && letter <= letters.second) << language << day.toUTF8();
    }
  }
  PathFactory::getPathInstance(3)->setLanguage("en");
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
