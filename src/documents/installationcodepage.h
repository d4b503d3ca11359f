// The code page in which the string tables of the installation's language answer.
#ifndef CHARTXML_INSTALLATIONCODEPAGE_H
#define CHARTXML_INSTALLATIONCODEPAGE_H

// By the language code of PathFactory's instance 3; CP1252 for a language that isn't listed. Codes
// are compared exactly. A static text.
const char* installationCodePage();

#endif
