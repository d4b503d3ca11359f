// The log, the dumps and the entity resolver.
#include "charterrorhandler.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <regex>
#include <thread>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include "chartexception.h"
#include "pathfactory.h"
#include "tavogotocaller.h"
#include "testsupport.h"

using namespace xercesc;

namespace {

constexpr const char* date =
    "(Mon|Tue|Wed|Thu|Fri|Sat|Sun) [A-Z][a-z]{2} [ 0-9][0-9] [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} "
    "[0-9]{4}";

TEST(Log, HasOneLineAnEntry) {
  const LogFolder folder;
  ChartErrorHandler().warning(ChartException("a message", "some/file.cpp", 7));
  const std::regex line(std::string(date) +
                        " Warning -- ChartXML: a message at file some/file.cpp, line 7, char 0\n");
  EXPECT_TRUE(std::regex_match(folder.log(), line)) << folder.log();
}

TEST(Log, NamesKindAndPlaceOfEveryException) {
  const ChartBase base;
  const LogFolder folder;
  ChartErrorHandler handler;
  const SAXParseException parse(u"not \u0416 well", u"", u"http://x/y.xml", 12, 34);
  handler.fatalError(ChartException("m", "f", 1));
  EXPECT_THROW(handler.error(SAXException(u"sax")), SAXException);
  EXPECT_THROW(handler.warning(DOMException(8)), DOMException);
  EXPECT_THROW(handler.fatalError(DOMException(99)), DOMException);
  EXPECT_THROW(handler.fatalError(parse), SAXParseException);
  EXPECT_THROW(handler.error(parse), SAXParseException);
  EXPECT_THROW(handler.warning(parse), SAXParseException);
  EXPECT_THROW(handler.error(DOMException(12)), DOMException);
  EXPECT_THROW(handler.error(DOMException(13)), DOMException);
  const std::regex lines(
      ".* Fatal Error -- ChartXML: m at file f, line 1, char 0\n"
      ".* Error -- SAX: sax at file src/parsing/charterrorhandler.cpp, line [0-9]+, char 0\n"
      ".* Warning -- DOM: not found error at file src/parsing/charterrorhandler.cpp, line [0-9]+, "
      "char 0\n"
      ".* Fatal Error -- DOM: unknown DOM error at file src/parsing/charterrorhandler.cpp, .*\n"
      ".* Fatal Error -- SAX Parser: not \u0416 well at file http://x/y.xml, line 12, char 34\n"
      ".* Error -- SAX Parser: not \u0416 well at file http://x/y.xml, line 12, char 34\n"
      ".* Warning -- SAX Parser: not \u0416 well at file http://x/y.xml, line 12, char 34\n"
      ".* Error -- DOM: syntax error at .*\n.* Error -- DOM: invalid modication error at .*\n");
  EXPECT_TRUE(std::regex_match(folder.log(), lines)) << folder.log();
}

TEST(Log, EndsNoLineWithoutAFile) {
  const ChartBase base;
  const LogFolder folder;
  const RuntimeException e(nullptr, 3, XMLExcepts::Array_BadIndex);
  ChartErrorHandler().error(e);
  EXPECT_NE(folder.log().find(" Error -- XML: "), std::string::npos);
  EXPECT_EQ(folder.log().find('\n'), std::string::npos);
}

TEST(Log, PassesOverDatatypeErrors) {
  const ChartBase base;
  const LogFolder folder;
  ChartErrorHandler handler;
  handler.error(SAXParseException(u"datatype error: Type:InvalidDatatypeValueException, Message:x",
                                  u"", u"", 1, 1));
  EXPECT_EQ(folder.log(), "");
  EXPECT_THROW(handler.error(SAXParseException(u"short", u"", u"", 1, 1)), SAXParseException);
}

TEST(Log, IsOffWithoutItsVariable) {
  unsetenv("DumpChartXMLPath");
  ChartErrorHandler().error(ChartException("m", "f", 1));
  setenv("DumpChartXMLOptions", "1111111111", 1);
  for (int type = 0; type < 12; ++type) {
    EXPECT_FALSE(ChartBase::willPrintString(static_cast<ChartBase::PRINTTYPE>(type)));
  }
  unsetenv("DumpChartXMLOptions");
}

TEST(Dumps, FollowTheirSwitches) {
  const LogFolder folder("0000011x0");
  const bool expected[] = {false, false, false, false, false, true,
                           true,  true,  false, false, false};
  for (int type = 0; type < 11; ++type) {
    EXPECT_EQ(ChartBase::willPrintString(static_cast<ChartBase::PRINTTYPE>(type)), expected[type])
        << type;
  }
  EXPECT_FALSE(ChartBase::printString("", "p", ".xml", 1, ChartBase::PRINT_BEFORE_TEMPLATE));
  EXPECT_FALSE(ChartBase::printString("t", "p", ".xml", 1, ChartBase::PRINT_TEMPLATE));
  EXPECT_TRUE(ChartBase::printString("a\r\nb", "p", ".xml", 1, ChartBase::PRINT_BEFORE_TEMPLATE));
  EXPECT_TRUE(ChartBase::printString("t", "p", ".xml", 123, ChartBase::PRINT_AFTER_TEMPLATE));
  EXPECT_EQ(folder.files(), (std::vector<std::string>{"\\p01.xml", "\\p123.xml"}));
  EXPECT_EQ(readFile(folder.file("p01.xml")), "a\r\nb");
}

TEST(Dumps, HoldTheTextThatFailedToParse) {
  ChartBase base;
  const LogFolder folder("0000000001");
  EXPECT_EQ(base.parseDocument("<broken"), nullptr);
  EXPECT_EQ(readFile(folder.file("parseError_00.xml")), "<broken");
  EXPECT_FALSE(ChartBase::ValidXML("<wrong"));
  EXPECT_EQ(readFile(folder.file("parseError_00.xml")), "<wrong");
  const std::regex log(
      ".* Fatal Error -- SAX Parser: .* at file ChartBase, line 1, char 8\n"
      ".* Error -- ChartXML: parseDocument fatal error while parsing at file "
      "src/documents/chartbase.cpp, "
      ".*\n"
      ".* Fatal Error -- SAX Parser: .* at file ChartBase, line 1, char 7\n"
      ".* Error -- ChartXML: XML stream validation error at file src/documents/chartbase.cpp, line "
      ".*\n");
  EXPECT_TRUE(std::regex_match(folder.log(), log)) << folder.log();
}

TEST(Timing, AppendsStepAndTotal) {
  const LogFolder folder;
  const std::string path = std::filesystem::path(folder.file("x")).parent_path();
  ChartBase::printDebugInfo("unheard");
  setenv("DumpChartTimePath", path.c_str(), 1);
  for (const char* message : {"first", "second", "third"}) {
    ChartBase::printDebugInfo(message);
    std::this_thread::sleep_for(std::chrono::milliseconds(15));
  }
  unsetenv("DumpChartTimePath");
  ASSERT_EQ(folder.files().size(), 1u);
  EXPECT_TRUE(std::regex_match(folder.files()[0],
                               std::regex("chartxmldebug_[A-Z][a-z]{2}[ 0-9][0-9]\\.txt")));
  const std::regex lines(
      " time = [0-9:]{8}\\.[0-9]{3} elapsed seconds =   0\\.000 total elapsed seconds =   0\\.000 "
      "first\n"
      " time = [0-9:]{8}\\.[0-9]{3} elapsed seconds =   0\\.[0-9]{3} total elapsed seconds =   "
      "0\\.[0-9]{3} second\n"
      " time = [0-9:]{8}\\.[0-9]{3} elapsed seconds = +([0-9.]+) total elapsed seconds = "
      "+([0-9.]+) "
      "third\n");
  const std::string text = readFile(path + "/" + folder.files()[0]);
  std::smatch seconds;
  ASSERT_TRUE(std::regex_match(text, seconds, lines)) << text;
  EXPECT_GT(std::stod(seconds[2]), std::stod(seconds[1]));
}

TEST(EntityResolver, ReadsTheInstallationsFolderOnly) {
  const ChartBase base;
  ChartErrorHandler handler;
  const std::u16string folder =
      ChartString(PathFactory::getPathInstance(3)->getFolder().c_str()).xc_str();
  const std::pair<const XMLCh*, const XMLCh*> cases[] = {
      {u"http://any.example/deep/grafo-2.9.xsd", u"grafo-2.9.xsd"},
      {u"file:///etc/passwd", u"passwd"},
      {u"../../secret", u"secret"},
  };
  for (const auto& [systemId, name] : cases) {
    const std::unique_ptr<InputSource> source(handler.resolveEntity(nullptr, systemId));
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source->getSystemId(), folder + name);
  }
  EXPECT_EQ(handler.resolveEntity(nullptr, u"/passwd"), nullptr);
  EXPECT_EQ(handler.resolveEntity(nullptr, u"passwd"), nullptr);
  EXPECT_EQ(handler.resolveEntity(u"-//public", u""), nullptr);
  EXPECT_EQ(handler.resolveEntity(u"-//public", nullptr), nullptr);
}

}  // namespace
