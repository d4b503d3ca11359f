#include "plxextension.h"

#include <algorithm>
#include <string>

#include "utf.h"

const XMLCh PlXDrillDown::_UTF_drillDown[] = u"drillDown";

namespace {

// The attribute of a numbered role. Callers pass 0 where a command names no number.
std::u16string place(const XMLCh* role, long number) {
  return role + utf::toUtf16(std::to_string(std::max(number, 1L)));
}

}  // namespace

PlXLabelFrame* PlXExtensionVis::frame(const XMLCh* role, long number) const {
  return link<PlXLabelFrame>(place(role, number).c_str());
}

void PlXExtensionVis::setFrame(const XMLCh* role, long number, PlXLabelFrame& frame) {
  setLink(place(role, number).c_str(), frame);
}

PlXLegend* PlXExtensionVis::getLegend(unsigned number) const {
  return link<PlXLegend>(place(u"legend", number).c_str());
}

void PlXExtensionVis::setLegend(unsigned number, PlXLegend& legend) {
  setLink(place(u"legend", number).c_str(), legend);
}
