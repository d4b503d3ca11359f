// Every class of the model, for the code that is made from the dialect's table.
#ifndef CHARTXML_MODELCLASSES_H
#define CHARTXML_MODELCLASSES_H

#include "plxaesthetics.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxdomains.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxfacets.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxlabel.h"
#include "plxlabeling.h"
#include "plxmappings.h"
#include "plxsources.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxstylecycle.h"
#include "plxtransforms.h"
#include "plxvariables.h"

#endif
