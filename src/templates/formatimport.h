// Which import of BaseTemplate a format element of a template takes.
#ifndef CHARTXML_FORMATIMPORT_H
#define CHARTXML_FORMATIMPORT_H

#include "basetemplate.h"

using FormatImport = void (BaseTemplate::*)(PlXFormat&, const xercesc::DOMElement*);

// By the name of the element; null for one that is no format.
FormatImport formatImportOf(const XMLCh* name);

#endif
