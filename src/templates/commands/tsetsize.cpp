// setSize aestheticNumber elementType, with a child cycle or children parameter (name, value): the
// size aesthetics of elements of a kind get a list of styles of their own each, or a length (value)
// for each category (name). Parameters go before the cycle, and take the place of all that sized
// the items before.
#include <xercesc/dom/DOM.hpp>

#include "aestheticlists.h"
#include "commands.h"
#include "elementtype.h"
#include "plxmappings.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

using Lengths = std::vector<std::pair<ChartString, ChartString>>;

void setLengths(PlXSize& size, const Lengths& lengths) {
  size.removeLow();
  size.removeHigh();
  size.removeCycle();
  size.removeDomain();
  size.removeLengthMappings();
  for (const auto& [category, length] : lengths) {
    PlXLengthMapping* mapping = size.addLengthMapping();
    mapping->setFrom(category.xc_str());
    mapping->setTo(length.xc_str());
  }
}

}  // namespace

bool TSetSize::ProcessCommand() {
  Lengths lengths;
  forChildren(command, PlXUni::_parameter, [&](const DOMElement* parameter) {
    ChartString length = stated::text(*this, parameter, PlXUni::_value, stated::Type::Length);
    if (length.empty()) return;
    lengths.emplace_back(parameter->getAttribute(PlXUni::_name), std::move(length));
  });
  const ElementType type(attribute(u"elementType").xc_str());
  AestheticLists lists(*this);
  lists.forElements([&](const CTElementType& element) {
    if (!type.fits(element)) return;
    for (PlXSize* size : lists.selected(element, &CTElementType::getSizes)) {
      if (lists.isPinned(*size)) continue;
      if (!lengths.empty()) {
        setLengths(*size, lengths);
      } else if (lists.mayRenew(*size)) {
        lists.renew(*size);
      }
    }
  });
  return true;
}
