// setErrorBarOptions visible, with a style: shows or hides the intervals of ranges, which get the
// style that they lack. Without visible="true" they are hidden, whatever the style says.
#include "commands.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "templatexml.h"

bool TSetErrorBarOptions::ProcessCommand() {
  if (!command) return false;
  const bool visible = getBooleanAttribute(command, PlXUni::_visible, false);
  const StyleImport imported(*this, templatexml::firstDescendant(command, PlXUni::_style));
  for (const PlXGraph* graph : target.getGraphs()) {
    for (PlXInterval* interval : graph->getIntervals()) {
      if (!isIntervalRangeElement(*interval)) continue;
      PlXStyle& style = styleOf<CTElementType>(*interval);
      imported.onto(style);
      style.setVisible(visible);
    }
  }
  return true;
}
