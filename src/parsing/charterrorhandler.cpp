#include "charterrorhandler.h"

#include <cstdlib>
#include <fstream>
#include <string_view>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "chartexception.h"
#include "chartstring.h"
#include "clocktext.h"
#include "datatypeerror.h"
#include "pathfactory.h"
#include "textconversion.h"

using namespace xercesc;

namespace {

std::string transcoded(const XMLCh* text) {
  char* bytes = TAVOMBTranscodeGeneric(text);
  std::string result = bytes ? bytes : "";
  TAVOMBRelease(&bytes);
  return result;
}

std::string domErrorText(short code) {
  static constexpr const char* texts[] = {
      "index size error",
      "DOMString size error",
      "hierarchy request error",
      "wrong document error",
      "invalid character error",
      "no data allowed error",
      "no modification allowed error",
      "not found error",
      "not supported error",
      "inuse attribute error",
      "invalid state error",
      "syntax error",
      "invalid modication error",
      "namespace error",
      "invalid access error",
  };
  const bool isKnown = code >= 1 && code <= static_cast<short>(std::size(texts));
  return isKnown ? texts[code - 1] : "unknown DOM error";
}

}  // namespace

bool isDatatypeError(const SAXParseException& e) {
  // The parser gives the type of its own exception in the text: "datatype error: Type:" and a name.
  constexpr std::size_t nameStart = 21;
  const std::u16string_view name(XMLUni::fgInvalidDatatypeValueException_Name);
  const std::u16string_view message(e.getMessage() ? e.getMessage() : u"");
  return message.size() > nameStart && message.substr(nameStart, name.size()) == name;
}

ChartErrorHandler::~ChartErrorHandler() = default;

void ChartErrorHandler::fatalError(const ChartException& e) {
  LogMessage("Fatal Error -- ChartXML:", e);
}

void ChartErrorHandler::fatalError(const XMLException& e) {
  LogMessage("Fatal Error -- XML:", e);
}

void ChartErrorHandler::fatalError(const SAXException& e) {
  LogMessage("Fatal Error -- SAX:", e);
  throw SAXException(e);
}

void ChartErrorHandler::fatalError(const DOMException& e) {
  LogMessage("Fatal Error -- DOM:", e);
  throw DOMException(e);
}

void ChartErrorHandler::fatalError(const SAXParseException& e) {
  LogMessage("Fatal Error -- SAX Parser:", e);
  throw SAXParseException(e);
}

void ChartErrorHandler::error(const ChartException& e) {
  LogMessage("Error -- ChartXML:", e);
}

void ChartErrorHandler::error(const XMLException& e) {
  LogMessage("Error -- XML:", e);
}

void ChartErrorHandler::error(const SAXException& e) {
  LogMessage("Error -- SAX:", e);
  throw SAXException(e);
}

void ChartErrorHandler::error(const DOMException& e) {
  LogMessage("Error -- DOM:", e);
  throw DOMException(e);
}

void ChartErrorHandler::error(const SAXParseException& e) {
  if (isDatatypeError(e)) return;
  LogMessage("Error -- SAX Parser:", e);
  throw SAXParseException(e);
}

void ChartErrorHandler::warning(const ChartException& e) {
  LogMessage("Warning -- ChartXML:", e);
}

void ChartErrorHandler::warning(const XMLException& e) {
  LogMessage("Warning -- XML:", e);
}

void ChartErrorHandler::warning(const SAXException& e) {
  LogMessage("Warning -- SAX:", e);
  throw SAXException(e);
}

void ChartErrorHandler::warning(const DOMException& e) {
  LogMessage("Warning -- DOM:", e);
  throw DOMException(e);
}

void ChartErrorHandler::warning(const SAXParseException& e) {
  LogMessage("Warning -- SAX Parser:", e);
  throw SAXParseException(e);
}

InputSource* ChartErrorHandler::resolveEntity(const XMLCh*, const XMLCh* systemId) {
  const int slash = systemId ? XMLString::lastIndexOf(systemId, u'/') : -1;
  if (slash <= 0) return nullptr;
  ChartString path(PathFactory::getPathInstance(3)->getFolder().c_str());
  path.append(systemId + slash + 1);
  return new LocalFileInputSource(path.xc_str());
}

void ChartErrorHandler::LogMessage(const std::string& kind, const std::string& message,
                                   const std::string& file, unsigned int line,
                                   unsigned int column) const {
  const char* folder = std::getenv("DumpChartXMLPath");
  if (!folder) return;
  std::ofstream log(std::string(folder) + "\\chartxml_error.log", std::ios::app);
  const ClockText now;
  log << now.untilSeconds() << '.' << now.milliseconds() << now.year();
  log << ' ' << kind << ' ' << message;
  if (!file.empty()) {
    log << " at file " << file << ", line " << line << ", char " << column << '\n';
  }
}

void ChartErrorHandler::LogMessage(const std::string& kind, const ChartException& e) const {
  LogMessage(kind, e.what(), e.file(), e.line(), 0);
}

void ChartErrorHandler::LogMessage(const std::string& kind, const XMLException& e) const {
  const char* file = e.getSrcFile();
  LogMessage(kind, transcoded(e.getMessage()), file ? file : "",
             static_cast<unsigned>(e.getSrcLine()), 0);
}

void ChartErrorHandler::LogMessage(const std::string& kind, const SAXException& e) const {
  LogMessage(kind, transcoded(e.getMessage()), __FILE__, __LINE__, 0);
}

void ChartErrorHandler::LogMessage(const std::string& kind, const DOMException& e) const {
  LogMessage(kind, domErrorText(e.code), __FILE__, __LINE__, 0);
}

void ChartErrorHandler::LogMessage(const std::string& kind, const SAXParseException& e) const {
  LogMessage(kind, transcoded(e.getMessage()), transcoded(e.getSystemId()),
             static_cast<unsigned>(e.getLineNumber()), static_cast<unsigned>(e.getColumnNumber()));
}
