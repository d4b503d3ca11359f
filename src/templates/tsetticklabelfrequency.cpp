// setTickLabelFrequency role categorical derived labelFrequency: labels every n-th of the ticks
// that an axis has. Absent, 0 and what is no number count as 1.
#include "commands.h"
#include "plxaxis.h"
#include "plxuni.h"
#include "ticklabels.h"

bool TSetTickLabelFrequency::ProcessCommand() {
  if (!command) return false;
  const long read = attribute(PlXUni::_labelFrequency).convertToSignedInteger();
  const auto frequency = static_cast<unsigned>(read == 0 ? 1 : read);
  return ticklabels::edit(*this, target, ticklabels::Selection(*this, command),
                          [&](PlXMajorTicks& ticks) { ticks.setLabelFrequency(frequency); });
}
