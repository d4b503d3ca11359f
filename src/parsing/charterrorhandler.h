// ChartErrorHandler: the log, and the error handler and entity resolver of every parse.
#ifndef CHARTXML_CHARTERRORHANDLER_H
#define CHARTXML_CHARTERRORHANDLER_H

#include <string>

#include <xercesc/sax/HandlerBase.hpp>

#include "export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMException;
class InputSource;
class SAXException;
class SAXParseException;
class XMLException;
XERCES_CPP_NAMESPACE_END

class ChartException;

// Without members, and cheap to make wherever something is to be reported.
//
// Reporting writes one line to the log, if there is one, and then returns for a ChartException and
// an XMLException, and throws a copy for the others. A parse therefore stops at its first warning
// or error, but for values that break the type of their attribute: those are passed over in
// silence.
//
// The log is the file `\chartxml_error.log` (the backslash is part of the name) directly behind the
// text of the environment variable DumpChartXMLPath, which is read at each entry; without the
// variable nothing is logged. A line holds the local time with milliseconds, the kind of report,
// the message and the place.
class CHARTXML_API ChartErrorHandler : public xercesc::HandlerBase {
 public:
  ~ChartErrorHandler() override;

  void fatalError(const ChartException& e);
  void fatalError(const xercesc::XMLException& e);
  void fatalError(const xercesc::SAXException& e);
  void fatalError(const xercesc::DOMException& e);
  void fatalError(const xercesc::SAXParseException& e) override;

  void error(const ChartException& e);
  void error(const xercesc::XMLException& e);
  void error(const xercesc::SAXException& e);
  void error(const xercesc::DOMException& e);
  void error(const xercesc::SAXParseException& e) override;

  void warning(const ChartException& e);
  void warning(const xercesc::XMLException& e);
  void warning(const xercesc::SAXException& e);
  void warning(const xercesc::DOMException& e);
  void warning(const xercesc::SAXParseException& e) override;

  // Whatever host or folder a document names, the file is taken from the installation's folder of
  // schemas: the result, which the parser owns, reads the file there that has the name behind the
  // last '/'. Null, which leaves the entity to the parser, when there is no '/' but at the start.
  xercesc::InputSource* resolveEntity(const XMLCh* publicId, const XMLCh* systemId) override;

  // An entry without a file has no line end: the next follows on the same line.
  void LogMessage(const std::string& kind, const std::string& message, const std::string& file,
                  unsigned int line, unsigned int column) const;
  void LogMessage(const std::string& kind, const ChartException& e) const;
  void LogMessage(const std::string& kind, const xercesc::XMLException& e) const;
  void LogMessage(const std::string& kind, const xercesc::SAXException& e) const;
  void LogMessage(const std::string& kind, const xercesc::DOMException& e) const;
  void LogMessage(const std::string& kind, const xercesc::SAXParseException& e) const;
};

#endif
