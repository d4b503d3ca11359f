// The debug dumps and the timing file, as ChartBase offers them.
#ifndef CHARTXML_CHARTDUMP_H
#define CHARTXML_CHARTDUMP_H

#include <string>

#include "chartbase.h"

namespace chartdump {

bool isOn(ChartBase::PRINTTYPE type);
// Without a look at the switches. A file that can't be opened is passed over.
void write(const std::string& text, const std::string& prefix, const std::string& suffix,
           unsigned long counter);
void writeTiming(const std::string& message);

}  // namespace chartdump

#endif
