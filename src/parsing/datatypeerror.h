// What ChartErrorHandler passes over in silence.
#ifndef CHARTXML_DATATYPEERROR_H
#define CHARTXML_DATATYPEERROR_H

#include <xercesc/sax/SAXParseException.hpp>

// True for the report of a value that breaks its schema type.
bool isDatatypeError(const xercesc::SAXParseException& e);

#endif
