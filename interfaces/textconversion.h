// Conversion between 16-bit text and 8-bit text in the process's multibyte encoding.
#ifndef CHARTXML_TEXTCONVERSION_H
#define CHARTXML_TEXTCONVERSION_H

#include <xercesc/util/XercesDefs.hpp>

#include "export.h"

// The process's multibyte encoding is that of its locale (LC_CTYPE) at the moment of the call. A
// process that never called setlocale has the plain ASCII of the "C" locale; its text is taken as
// UTF-8, of which ASCII is a part, so that nothing is lost. What the encoding can't express
// becomes '?', and bytes that it doesn't know become U+FFFD.
//
// Each result is a new zero-terminated array that the caller gives back to TAVOMBRelease; null for
// a null text.
CHARTXML_API char* TAVOMBTranscodeGeneric(const XMLCh* text);
CHARTXML_API XMLCh* TAVOMBTranscodeGeneric(const char* text);

// Frees the array and sets the caller's pointer to null.
CHARTXML_API void TAVOMBRelease(char** text);
CHARTXML_API void TAVOMBRelease(XMLCh** text);

#endif
