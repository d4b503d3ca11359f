// STUB: classes that this branch doesn't own.
#ifndef CHARTXML_STUBS_H
#define CHARTXML_STUBS_H

#include "plxbaseelement.h"

class CTVariableType : public PlXBaseElement {};
class PlXSourceVariable : public CTVariableType {};
class PlXDerivedVariable : public CTVariableType {};
class PlXExpressionVariable : public CTVariableType {};
class PlXCategoricalDomain : public PlXBaseElement {};
class PlXIntervalDomain : public PlXBaseElement {};
class PlXGraph : public PlXBaseElement {};
class PlXSummaryStatistic : public PlXBaseElement {};

#endif
