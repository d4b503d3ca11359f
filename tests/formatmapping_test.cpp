// A variable's display format as the chart's: the attributes that each type gives.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxvariables.h"
#include "tavoformat.h"

using namespace xercesc;

namespace {

using Map = bool (*)(PlXFormat&, TAVO_Format&);

struct Chart {
  Chart() : root(document->getDocumentElement()) {}
  ~Chart() { document->release(); }

  ChartBase base;
  DOMDocument* document = ChartBase::createPlXDocument(nullptr);
  PlXVisualization root;
};

// The format's attributes in the order of their names.
std::string mapped(TAVO_Format source, Map map = &ChartBase::addFormat, bool isOwn = true) {
  Chart chart;
  PlXFormat* format = chart.root.addSourceVariable(nullptr)->addFormat();
  EXPECT_EQ(map(*format, source), isOwn) << int(source.type);
  const DOMNamedNodeMap* attributes = format->getImplementation()->getAttributes();
  std::string result;
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    result += (i ? " " : "") + ChartString(attributes->item(i)->getNodeName()).toUTF8() + "=" +
              ChartString(attributes->item(i)->getNodeValue()).toUTF8();
  }
  return result;
}

struct Case {
  TAVO_Format source;
  std::string attributes;
};

TEST(AddFormat, MapsEachTypeByWidthAndDecimals) {
  const std::string hidden = "showHour=false showMillis=false showMinute=false ";
  const Case cases[] = {
      {{8, 3, 2},
       "errorCharacter=* maximumFractionDigits=2 minimumFractionDigits=2 minimumIntegerDigits=1 "
       "scientific=ifNeeded separatorChars=.,/: useGrouping=true"},
      {{8, 4, 0},
       "errorCharacter=* maximumFractionDigits=0 minimumFractionDigits=0 minimumIntegerDigits=1 "
       "prefix=$ scientific=ifNeeded separatorChars=.,/: useGrouping=true"},
      {{8, 5, 2},
       "errorCharacter=* maximumFractionDigits=2 minimumFractionDigits=2 minimumIntegerDigits=1 "
       "scientific=ifSmall small=0 useGrouping=false"},
      {{8, 12, 1},
       "errorCharacter=* maximumFractionDigits=1 minimumFractionDigits=1 minimumIntegerDigits=1 "
       "scientific=ifNeeded useGrouping=false"},
      {{8, 15, 2},
       "errorCharacter=* maximumFractionDigits=2 minimumFractionDigits=2 minimumIntegerDigits=5 "
       "scientific=ifNeeded useGrouping=false"},
      {{8, 16, 2},
       "errorCharacter=* maximumFractionDigits=2 minimumFractionDigits=2 minimumIntegerDigits=6 "
       "scientific=ifNeeded useGrouping=false"},
      {{2, 15, 4},
       "errorCharacter=* maximumFractionDigits=4 minimumFractionDigits=4 minimumIntegerDigits=0 "
       "scientific=ifNeeded useGrouping=false"},
      {{8, 17, 1},
       "errorCharacter=* maximumFractionDigits=1 minimumFractionDigits=1 minimumIntegerDigits=1 "
       "scientific=true useGrouping=false"},
      {{8, 31, 1},
       "errorCharacter=* maximumFractionDigits=1 minimumFractionDigits=1 minimumIntegerDigits=1 "
       "scientific=ifNeeded suffix=% useGrouping=false"},
      {{8, 32, 1},
       "errorCharacter=* maximumFractionDigits=1 minimumFractionDigits=1 minimumIntegerDigits=1 "
       "scientific=ifNeeded separatorChars=,./: useGrouping=true"},
      {{8, 40, 1},
       "errorCharacter=* maximumFractionDigits=1 minimumFractionDigits=1 minimumIntegerDigits=1 "
       "scientific=ifSmall small=1e-04 useGrouping=false"},
      {{9, 20, 0},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* mdyOrder=dmy monthFormat=short separatorChars=.,-: showDay=true " +
           hidden + "showMonth=true showSecond=false showYear=true yearAbbreviation=true"},
      {{8, 23, 0},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* mdyOrder=mdy monthFormat=number separatorChars=.,/: showDay=true " +
           hidden + "showMonth=true showSecond=false showYear=true yearAbbreviation=true"},
      {{16, 22, 2},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* hourFormat=twentyFour hourPadding=true mdyOrder=dmy minutePadding=true "
       "monthFormat=short separatorChars=.,-: showDay=true showHour=true showMinute=true "
       "showMonth=true showSecond=false showYear=true yearAbbreviation=false"},
      {{20, 22, 1},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* hourFormat=twentyFour hourPadding=true maximumFractionDigits=3 "
       "mdyOrder=dmy minimumFractionDigits=3 minutePadding=true monthFormat=short "
       "separatorChars=.,-: showDay=true showHour=true showMillis=true showMinute=true "
       "showMonth=true showSecond=true showYear=true yearAbbreviation=false"},
      {{6, 24, 0},
       "baseFormat=date dayOfMonthPadding=true dayPadding=true dayType=dayOfYear "
       "errorCharacter=* hiddenSeparator=true mdyOrder=ymd showDay=true showMonth=false "
       "showYear=true yearAbbreviation=false"},
      {{6, 28, 0},
       "baseFormat=dateTime errorCharacter=* mdyOrder=mdy monthFormat=short separatorChars=., : "
       "showDay=false " +
           hidden + "showMonth=true showSecond=false showYear=true yearAbbreviation=true"},
      {{7, 29, 0},
       "baseFormat=dateTime errorCharacter=* quarterSuffix= Q  separatorChars=., : showDay=false " +
           hidden +
           "showMonth=false showQuarter=true showSecond=false showYear=true "
           "yearAbbreviation=false"},
      {{8, 30, 0},
       "baseFormat=date errorCharacter=* showDay=false showMonth=false showWeek=true "
       "showYear=true weekSuffix= WK  yearAbbreviation=true"},
      {{23, 86, 2},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* hourFormat=twentyFour hourPadding=true maximumFractionDigits=2 "
       "mdyOrder=ymd minimumFractionDigits=2 minutePadding=true monthFormat=number "
       "secondPadding=true separatorChars=.,-: showDay=true showHour=true showMillis=true "
       "showMinute=true showMonth=true showSecond=true showYear=true yearAbbreviation=false"},
      {{5, 21, 2},
       "baseFormat=duration errorCharacter=* hourFormat=twentyFour hourPadding=true "
       "minutePadding=true showHour=true showMinute=true showSecond=false"},
      {{5, 85, 2},
       "baseFormat=duration errorCharacter=* hourFormat=twentyFour hourPadding=true "
       "maximumFractionDigits=2 minimumFractionDigits=2 minutePadding=true secondPadding=true "
       "showHour=false showMillis=true showMinute=true showSecond=true"},
      {{10, 20, 0},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* mdyOrder=dmy monthFormat=short separatorChars=.,-: showDay=true " +
           hidden + "showMonth=true showSecond=false showYear=true yearAbbreviation=false"},
      {{9, 38, 0},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* mdyOrder=dmy monthFormat=number separatorChars=.,.: showDay=true " +
           hidden + "showMonth=true showSecond=false showYear=true yearAbbreviation=false"},
      {{8, 39, 0},
       "baseFormat=dateTime dayOfMonthPadding=true dayPadding=true dayType=dayOfMonth "
       "errorCharacter=* mdyOrder=ymd monthFormat=number separatorChars=.,/: showDay=true " +
           hidden + "showMonth=true showSecond=false showYear=true yearAbbreviation=true"},
      {{6, 21, 2},
       "baseFormat=duration errorCharacter=* hourFormat=twentyFour hourPadding=true "
       "maximumFractionDigits=2 minimumFractionDigits=2 minutePadding=true secondPadding=true "
       "showHour=true showMillis=true showMinute=true showSecond=true"},
      {{9, 25, 1},
       "baseFormat=duration dayPadding=true errorCharacter=* hourPadding=true "
       "maximumFractionDigits=3 minimumFractionDigits=3 minutePadding=true secondPadding=true "
       "showDay=true showMillis=true showSecond=true useGrouping=false"},
      {{9, 25, 0},
       "baseFormat=duration dayPadding=true errorCharacter=* hourPadding=true minutePadding=true "
       "secondPadding=true showDay=true showMillis=false showSecond=true useGrouping=false"},
  };
  for (const auto& [source, attributes] : cases) {
    EXPECT_EQ(mapped(source), attributes) << int(source.type);
  }
  for (int type : {0, 1, 2, 26, 27, 99, 255}) {
    EXPECT_EQ(mapped({8, static_cast<std::uint8_t>(type), 2}), "errorCharacter=*") << type;
  }
}

TEST(AddFormat, LeavesTypesToTheirFamilies) {
  EXPECT_EQ(mapped({8, 20, 2}, &ChartBase::FormatNumber, false), "");
  EXPECT_EQ(mapped({8, 5, 2}, &ChartBase::FormatDate, false), "");
  EXPECT_EQ(mapped({8, 32, 2}, &ChartBase::FormatCustomCurrency, false), "");
  EXPECT_NE(mapped({8, 5, 2}, &ChartBase::FormatElapsedTime), "");
  EXPECT_EQ(mapped({3, 26, 0}, &ChartBase::FormatDate),
            "baseFormat=dateTime dayOfWeekAbbreviation=true dayType=dayOfMonth monthFormat=short "
            "showDay=false showDayOfWeek=true showHour=false showMillis=false showMinute=false "
            "showMonth=false showSecond=false showYear=false");
  EXPECT_EQ(mapped({3, 27, 0}, &ChartBase::FormatDate),
            "baseFormat=dateTime dayType=dayOfMonth monthFormat=long showDay=false showHour=false "
            "showMillis=false showMinute=false showMonth=true showSecond=false showYear=false");
}

TEST(AddFormat, GoesByTheSettingsOfTheSuite) {
  CmnSysSettings own{.minimumIntegerDigits = 3, .flags = 5};
  CmnSysSettings* before = std::exchange(CmnSys, &own);
  setGFormatSmall(0.5);
  EXPECT_EQ(mapped({8, 40, 1}),
            "errorCharacter=* maximumFractionDigits=1 minimumFractionDigits=1 "
            "minimumIntegerDigits=3 scientific=ifSmall small=0.5 useGrouping=true");
  CmnSys = before;
  setGFormatSmall(0.0001);

  const currencyFormat::CCX first = currencyFormat::GetCCX(0);
  const std::string start =
      "errorCharacter=* maximumFractionDigits=2 minimumFractionDigits=2 negatives";
  EXPECT_EQ(mapped({8, 33, 2}), start + "Outside=true separatorChars=.,/: useGrouping=true");
  currencyFormat::SetCCX(0, {"€ ", " each", "(", ")", ","});
  EXPECT_EQ(mapped({8, 33, 2}), start +
                                    "InParentheses=true prefix=€  separatorChars=,./: "
                                    "suffix= each useGrouping=true");
  currencyFormat::SetCCX(0, first);
  for (std::uint8_t type = 34; type < 38; ++type) {
    EXPECT_EQ(mapped({8, type, 2}), mapped({8, 33, 2})) << int(type);
  }
}

}  // namespace
