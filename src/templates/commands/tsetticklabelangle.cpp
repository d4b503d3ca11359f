// setTickLabelAngle role categorical derived labelAngle: turns the labels of the ticks that an axis
// has, in degrees. Without an angle nothing happens; 0 is an angle. Converted templates write
// labelangle.
#include "commands.h"
#include "plxaxis.h"
#include "plxuni.h"
#include "ticklabels.h"

bool TSetTickLabelAngle::ProcessCommand() {
  ChartString text = attribute(PlXUni::_labelAngle);
  if (text.empty()) text = attribute(u"labelangle");
  if (text.empty()) return false;
  const double angle = text.convertToDouble();
  return ticklabels::edit(*this, target, ticklabels::Selection(*this, command),
                          [&](PlXMajorTicks& ticks) { ticks.setLabelAngle(angle); });
}
