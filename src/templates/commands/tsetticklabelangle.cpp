// setTickLabelAngle role categorical derived labelAngle: turns the labels of the ticks that an axis
// has, in degrees. Without an angle nothing happens; 0 is an angle. Converted templates write
// labelangle.
#include "commands.h"
#include "plxaxis.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "ticklabels.h"

bool TSetTickLabelAngle::ProcessCommand() {
  auto angle = stated::number(*this, command, PlXUni::_labelAngle);
  if (!angle) angle = stated::number(*this, command, u"labelangle");
  if (!angle) return false;
  return ticklabels::edit(*this, ticklabels::Selection(*this),
                          [&](PlXMajorTicks& ticks) { ticks.setLabelAngle(*angle); });
}
