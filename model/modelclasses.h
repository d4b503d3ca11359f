// Every class of the model, for the code that is made from the dialect's table.
#ifndef CHARTXML_MODELCLASSES_H
#define CHARTXML_MODELCLASSES_H

#include "plxaxis.h"
#include "plxextension.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxlabel.h"
#include "plxsources.h"
#include "plxstyle.h"
#include "plxstylecycle.h"

#include "stubs.h"  // STUB

#endif
