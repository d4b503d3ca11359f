// setTickLabelFrequency role categorical derived labelFrequency: labels every n-th of the ticks
// that an axis has. Absent, 0 and what is no number count as 1; a negative number is written as it
// is, and one that 32 bits don't hold is dropped.
#include <cstdint>
#include <string>
#include <utility>

#include "commands.h"
#include "plxaxis.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "ticklabels.h"

bool TSetTickLabelFrequency::ProcessCommand() {
  if (!command) return false;
  const long read = stated::selection(*this, command, PlXUni::_labelFrequency);
  const bool isInRange = std::in_range<std::int32_t>(read);
  const ChartString frequency(std::to_string(read == 0 ? 1 : read).c_str());
  const auto edit = [&](PlXMajorTicks& ticks) {
    if (isInRange) ticks.SetAttribute(PlXUni::_labelFrequency, frequency.xc_str());
  };
  return ticklabels::edit(*this, ticklabels::Selection(*this), edit);
}
