// The placeholders for date and time in titles and footnotes.
#ifndef CHARTXML_PLACEHOLDERS_H
#define CHARTXML_PLACEHOLDERS_H

#include <ctime>
#include <string>

#include "chartstring.h"

class FacSTDictionary;

namespace placeholders {

// As ChartBase::updateText(), at a moment of the caller's.
void fill(ChartString& text, const std::tm& moment, FacSTDictionary* dictionary,
          const std::string& codePage);

}  // namespace placeholders

#endif
