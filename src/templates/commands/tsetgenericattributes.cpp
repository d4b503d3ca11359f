// setGenericAttributes elementName parentName count styleName, and any other attributes, which it
// writes as they stand on the nodes of a tag. With `styleName`, a link of the nodes to a style, it
// writes them on that style, which is made when it is missing. Else `text` is not an attribute but
// what the node holds. Values that break the type of their attribute are passed over, and so is an
// id that is taken; links to a node follow when its id changes. Names with a prefix mean something
// else in a chart, and are passed over.
#include <xercesc/dom/DOM.hpp>

#include "changejournal.h"
#include "commands.h"
#include "dialect.h"
#include "modelstore.h"
#include "objectsbytag.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Attribute {
  const XMLCh* name;
  const XMLCh* value;
};

struct Parameters {
  ChartString elementName;
  ChartString parentName;
  ChartString styleName;
  long count = 0;
  std::vector<Attribute> attributes;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  parameters.elementName = command.getAttribute(u"elementName");
  parameters.parentName = command.getAttribute(u"parentName");
  parameters.styleName = command.getAttribute(u"styleName");
  parameters.count = stated::selection(base, &command, PlXUni::_count);
  const DOMNamedNodeMap* all = command.getAttributes();
  for (XMLSize_t i = 0; i < all->getLength(); ++i) {
    const DOMNode* attribute = all->item(i);
    const XMLCh* name = attribute->getNodeName();
    const bool isOwn = is(name, u"elementName") || is(name, u"parentName") ||
                       is(name, u"styleName") || is(name, PlXUni::_count);
    const bool isDeclaration = is(name, u"xmlns");
    if (isOwn || isDeclaration || XMLString::indexOf(name, u':') >= 0) continue;
    parameters.attributes.push_back({name, attribute->getNodeValue()});
  }
  return parameters;
}

// Those that are meant, in document order.
std::vector<PlXBaseElement*> findNodes(const PlXVisualization& chart,
                                       const Parameters& parameters) {
  std::vector<PlXBaseElement*> nodes =
      objectsByTag<PlXBaseElement>(chart, parameters.elementName.xc_str());
  if (!parameters.parentName.empty()) {
    std::erase_if(nodes, [&](const PlXBaseElement* node) {
      const DOMNode* parent = node->getImplementation()->getParentNode();
      return !parameters.parentName.equals(dialect::localName(parent));
    });
  }
  if (parameters.count == 0) return nodes;
  if (parameters.count < 0 || static_cast<std::size_t>(parameters.count) > nodes.size()) return {};
  return {nodes[parameters.count - 1]};
}

void setContent(const PlXBaseElement& node, const XMLCh* text) {
  DOMElement* element = node.getImplementation();
  if (ChangeJournal* journal = node.getVisualization()->store().journal()) {
    journal->beforeText(*element);
  }
  for (DOMNode* child = element->getFirstChild(); child;) {
    DOMNode* next = child->getNextSibling();
    const short kind = child->getNodeType();
    if (kind == DOMNode::TEXT_NODE || kind == DOMNode::CDATA_SECTION_NODE) {
      element->removeChild(child)->release();
    }
    child = next;
  }
  if (*text) {
    element->appendChild(element->getOwnerDocument()->createTextNode(text));
  } else {
    // It stands in for a content that isn't there.
    element->removeAttribute(PlXUni::_text);
  }
}

// An attribute that the dialect doesn't have may hold anything.
bool mayHold(const BaseTemplate& base, const PlXBaseElement& node, const XMLCh* name,
             const ChartString& value) {
  const dialect::Element* row = dialect::find(node.getImplementation());
  const dialect::Attribute* known = row ? dialect::attributeOf(*row, name) : nullptr;
  if (!known || dialect::isOfSchemaType(*known, value.view())) return true;
  stated::drop(base, name, value);
  return false;
}

void renameLinks(const PlXVisualization& chart, const ChartString& from, const XMLCh* to) {
  walkElements(chart.getImplementation(), [&](DOMElement* element) {
    const dialect::Element* row = dialect::find(element);
    if (!row || !row->mayHoldLinks()) {
      return !row || row->content != dialect::Content::Data;
    }
    const DOMNamedNodeMap* all = element->getAttributes();
    for (XMLSize_t i = 0; i < all->getLength(); ++i) {
      const XMLCh* name = all->item(i)->getNodeName();
      if (!from.equals(all->item(i)->getNodeValue()) || !dialect::isLink(*row, name)) continue;
      if (PlXBaseElement* holder = chart.objectOf(element)) holder->SetAttribute(name, to);
    }
    return true;
  });
}

// A walk over the chart at most once for a command: then the id is taken.
void setId(PlXBaseElement& node, const PlXVisualization& chart, const XMLCh* id) {
  if (chart.doesIdExist(id)) return;
  const ChartString before(node.GetAttribute(PlXUni::_id));
  node.SetAttribute(PlXUni::_id, id);
  if (!before.empty()) renameLinks(chart, before, id);
}

}  // namespace

bool TSetGenericAttributes::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
  if (parameters.elementName.empty()) return false;
  const XMLCh* styleName = parameters.styleName.xc_str();

  // The node to write to, for one that links to it; null when there is none.
  const auto linked = [&](PlXBaseElement& node) -> PlXBaseElement* {
    const dialect::Element* row = dialect::find(node.getImplementation());
    if (!row || !dialect::isLink(*row, styleName)) return nullptr;
    const XMLCh* id = node.GetAttribute(styleName);
    if (*id) return target.objectOf(target.getElementById(id));
    PlXStyle* style = addStyle(node, nullptr);
    node.SetAttribute(styleName, style->getId());
    return style;
  };
  const std::vector<PlXBaseElement*> nodes = findNodes(target, parameters);
  if (nodes.empty()) because("there is no such element", parameters.elementName);
  for (PlXBaseElement* node : nodes) {
    const bool isLinked = !parameters.styleName.empty();
    PlXBaseElement* written = isLinked ? linked(*node) : node;
    if (!written) continue;
    const XMLCh* id = written->GetAttribute(PlXUni::_id);
    const DOMElement* pinned = isLinked && source ? source->getElementById(id) : nullptr;
    for (const auto& [name, value] : parameters.attributes) {
      if (pinned && *pinned->getAttribute(name)) continue;
      if (!isLinked && is(name, PlXUni::_text)) {
        setContent(*written, value);
        continue;
      }
      if (!mayHold(*this, *written, name, value)) continue;
      if (is(name, PlXUni::_id)) {
        setId(*written, target, value);
      } else {
        written->SetAttribute(name, value);
      }
    }
  }
  return true;
}
