// Conversion between 16-bit text and 8-bit text, in the process's multibyte encoding or a named
// code page.
#ifndef CHARTXML_TEXTCONVERSION_H
#define CHARTXML_TEXTCONVERSION_H

#include <string>
#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

#include "export.h"

// No conversion fails or stops: a character that the encoding can't express becomes '?', and each
// byte that is no character of it becomes U+FFFD.
//
// The process's multibyte encoding is that of its locale (LC_CTYPE) at the moment of the call. A
// process that never called setlocale has the plain ASCII of the "C" locale; its text is taken as
// UTF-8, of which ASCII is a part, so that nothing is lost. A lone surrogate becomes U+FFFD there.
//
// Each result is a new zero-terminated array that the caller gives back to TAVOMBRelease; null for
// a null text.
CHARTXML_API char* TAVOMBTranscodeGeneric(const XMLCh* text);
CHARTXML_API XMLCh* TAVOMBTranscodeGeneric(const char* text);

// Frees the array and sets the caller's pointer to null.
CHARTXML_API void TAVOMBRelease(char** text);
CHARTXML_API void TAVOMBRelease(XMLCh** text);

// The character behind the first one of a text in the process's multibyte encoding. A malformed
// byte is one character, and the terminating zero is never passed. Null for null.
CHARTXML_API const char* TAVOMBstrinc_A(const char* text);

// A code page and both directions of its conversion; for one thread at a time.
class TAVOMBConverter;

// A converter for a code page name as iconv knows it, in upper or lower case: "CP1252",
// "windows-1251", "UTF-8". Null for an unknown or empty name, and a null converter stands for
// UTF-8. The first argument has no effect. The caller deletes it.
CHARTXML_API TAVOMBConverter* TAVOMBConverterNew_A(int reserved, const char* encoding);
CHARTXML_API void TAVOMBConverterDelete_A(TAVOMBConverter* converter);

// These replace `out`. Zeros inside a text are characters like others.
CHARTXML_API void TAVOMBGenericToU16(const TAVOMBConverter* converter, std::u16string& out,
                                     std::string_view in);
CHARTXML_API void TAVOMBU16ToGeneric(const TAVOMBConverter* converter, std::string& out,
                                     std::u16string_view in);

#endif
