// Every class of the model, for the code that is made from the dialect's table.
#ifndef CHARTXML_MODELCLASSES_H
#define CHARTXML_MODELCLASSES_H

#include "plxaesthetics.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabeling.h"
#include "plxmappings.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxvariables.h"
#include "stubs.h"  // STUB

#endif
