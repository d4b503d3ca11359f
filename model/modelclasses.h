// Every class of the model, for the code that is made from the dialect's table.
#ifndef CHARTXML_MODELCLASSES_H
#define CHARTXML_MODELCLASSES_H

#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "stubs.h"  // STUB

#endif
