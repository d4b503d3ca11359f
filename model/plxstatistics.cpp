#include "plxstatistics.h"

const XMLCh PlXBinStatistic::_binCount[] = u"binCount";
const XMLCh PlXBinStatistic::_binStart[] = u"binStart";
const XMLCh PlXBinStatistic::_binWidth[] = u"binWidth";
