// Every class of the model, for the code that is made from the dialect's table.
#ifndef CHARTXML_MODELCLASSES_H
#define CHARTXML_MODELCLASSES_H

#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxfacets.h"
#include "plxframes.h"
#include "plxguides.h"
#include "plxstubs.h"
#include "plxstyle.h"
#include "plxtransforms.h"
#include "plxvariables.h"

#endif
