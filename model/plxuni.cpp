#include "plxuni.h"

#define CONSTANT(name, text) const XMLCh PlXUni::name[] = u"" text;
#include "plxuni.inc"
#undef CONSTANT
