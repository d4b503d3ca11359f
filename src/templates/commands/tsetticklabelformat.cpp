// setTickLabelFormat role categorical derived, with a child format, numberFormat, stringFormat,
// dateTimeFormat or elapsedTimeFormat: replaces the format of the labels of the ticks that an axis
// has; without a child the format goes. Of several kinds the first in this order counts, of several
// of a kind the last. Any other child node, a comment too, and categorical labels without a
// stringFormat, are refused.
#include <array>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "formatimport.h"
#include "plxaxis.h"
#include "plxuni.h"
#include "templatexml.h"
#include "ticklabels.h"

using namespace xercesc;

namespace {

constexpr std::array<const XMLCh*, 5> kinds = {u"format", u"numberFormat", u"stringFormat",
                                               u"dateTimeFormat", u"elapsedTimeFormat"};
constexpr std::size_t stringKind = 2;

// The child of each kind; false when there is another child.
bool readChildren(const DOMElement& command,
                  std::array<const DOMElement*, kinds.size()>& children) {
  for (const DOMNode* child = command.getFirstChild(); child; child = child->getNextSibling()) {
    if (child->getNodeType() != DOMNode::ELEMENT_NODE) return false;
    std::size_t kind = 0;
    while (kind < kinds.size() && !templatexml::is(child->getNodeName(), kinds[kind])) ++kind;
    if (kind == kinds.size()) return false;
    children[kind] = static_cast<const DOMElement*>(child);
  }
  return true;
}

}  // namespace

bool TSetTickLabelFormat::ProcessCommand() {
  if (!command) return false;
  const ticklabels::Selection selection(*this);
  std::array<const DOMElement*, kinds.size()> children{};
  if (!readChildren(*command, children)) return false;
  if (selection.categorical && !children[stringKind]) return false;
  std::size_t kind = 0;
  while (kind < kinds.size() && !children[kind]) ++kind;
  return ticklabels::edit(*this, selection, [&](PlXMajorTicks& ticks) {
    ticks.removeFormats();
    if (kind == kinds.size()) return;
    (this->*formatImportOf(kinds[kind]))(*ticks.addFormat(), children[kind]);
  });
}
