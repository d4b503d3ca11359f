// hideFrame type count: makes frames invisible by their style, which is made when it is missing;
// frames that share the style are hidden with it. `count` is the 1-based position among the frames
// of the type; 0 or none hides all label frames or containers, and no title, footnote, legend or
// graph. Statistics summaries go together, whatever the number. Nothing is removed. Answers false
// in any case.
#include "commands.h"
#include "frames.h"
#include "objectsbytag.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using frames::Kind;
using templatexml::mostCounted;

bool THideFrame::ProcessCommand() {
  if (!command) return false;
  const Kind kind = frames::kindOf(attribute(PlXUni::_type));
  const long number = stated::selection(*this, command, PlXUni::_count);
  const bool isPosition = number > 0 && static_cast<unsigned long>(number) <= mostCounted;
  const unsigned position = isPosition ? static_cast<unsigned>(number) : 0;
  const PlXExtensionVis* roles = target.getExtension();

  bool isFound = false;
  const auto hide = [&](auto* frame) {
    if (frame) styleOf(*frame).setVisible(false);
    isFound = isFound || frame;
  };
  // That of the position, or all for 0.
  const auto hideOf = [&](const auto& all) {
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (number == 0 || position == i + 1) hide(all[i]);
    }
  };
  // Of the roles number 0 is none.
  switch (kind) {
    case Kind::title:
      if (roles && isPosition) hide(roles->getTitle(position));
      break;
    case Kind::subtitle:
      if (roles) hide(roles->getSubtitle());
      break;
    case Kind::footnote:
      if (roles && isPosition) hide(roles->getFootnote(position));
      break;
    case Kind::legend:
      if (roles && isPosition) hide(roles->getLegend(position));
      break;
    case Kind::statisticsSummary:
      if (roles && isPosition) hide(roles->getStatisticsSummary(position));
      for (PlXLabelFrame* frame : framesByTag<PlXLabelFrame>(target, PlXUni::_labelFrame)) {
        if (ChartString(frame->getId()).ContainsString(u"frame_statistics_summary")) hide(frame);
      }
      break;
    case Kind::graph: {
      std::vector<PlXGraph*> graphs;
      getGraphs(graphs);
      if (number > 0) hideOf(graphs);
      break;
    }
    case Kind::labelFrame:
      hideOf(frames::freeLabelFrames(target));
      break;
    case Kind::container:
      hideOf(frames::containers(target));
      break;
    default:
      break;
  }
  if (!isFound) because("there is no such frame of the type", attribute(PlXUni::_type));
  return false;
}
