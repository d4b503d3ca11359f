// PlXUni: the vocabulary of the chart dialect.
#ifndef CHARTXML_PLXUNI_H
#define CHARTXML_PLXUNI_H

#include <xercesc/util/XercesDefs.hpp>

#include "export.h"

// Names of elements, attributes and values, as zero-terminated arrays. Classes of the model hold
// the names of their own elements beside these.
class CHARTXML_API PlXUni {
 public:
#define CONSTANT(name, text) static const XMLCh name[sizeof(u"" text) / sizeof(XMLCh)];
#include "plxuni.inc"
#undef CONSTANT
};

#endif
