#include "elementindex.h"

#include <algorithm>

#include <xercesc/util/XMLString.hpp>

#include "domwalk.h"

using namespace xercesc;

namespace {

constexpr XMLCh key[] = u"elementIndex";

std::size_t length(const XMLCh* text) {
  return XMLString::stringLen(text);
}

std::size_t ownSize(const DOMElement& element) {
  std::size_t size = length(element.getNodeName());
  const DOMNamedNodeMap* attributes = element.getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    size += length(attribute->getNodeName()) + length(attribute->getNodeValue());
  }
  for (const DOMNode* child = element.getFirstChild(); child; child = child->getNextSibling()) {
    if (child->getNodeType() != DOMNode::ELEMENT_NODE) size += length(child->getNodeValue());
  }
  return size;
}

// Nodes of other kinds may stand between.
const DOMNode* parentElement(const DOMElement& element) {
  const DOMNode* parent = element.getParentNode();
  while (parent && parent->getNodeType() != DOMNode::ELEMENT_NODE) parent = parent->getParentNode();
  return parent;
}

}  // namespace

ElementIndex::ElementIndex(DOMDocument& document) : document_(document), sizes_{0} {
  std::vector<DOMNode*> open;
  const auto close = [&] {
    extents_[open.back()].end = elements_.size();
    open.pop_back();
  };
  walkElements(&document, [&](DOMElement* element) {
    while (!open.empty() && open.back() != parentElement(*element)) close();
    extents_[element].start = elements_.size();
    open.push_back(element);
    elements_.push_back(element);
    sizes_.push_back(sizes_.back() + ownSize(*element));
    tags_[element->getNodeName()].push_back(element);
    return true;
  });
  while (!open.empty()) close();
  document.setUserData(key, this, nullptr);
}

ElementIndex::~ElementIndex() {
  document_.setUserData(key, nullptr, nullptr);
}

const ElementIndex* ElementIndex::of(const DOMNode& node) {
  const DOMDocument* document = node.getOwnerDocument();
  if (!document && node.getNodeType() == DOMNode::DOCUMENT_NODE) {
    document = static_cast<const DOMDocument*>(&node);
  }
  return document ? static_cast<const ElementIndex*>(document->getUserData(key)) : nullptr;
}

ElementIndex::Extent ElementIndex::extentOf(const DOMElement* element) const {
  const auto found = extents_.find(element);
  return found == extents_.end() ? Extent() : found->second;
}

ElementIndex::Extent ElementIndex::extentBelow(const DOMNode* node) const {
  if (node == &document_) return {0, elements_.size()};
  const auto found = extents_.find(node);
  return found == extents_.end() ? Extent() : Extent{found->second.start + 1, found->second.end};
}

ElementIndex::Elements ElementIndex::within(const Tagged& found, const DOMNode* node) const {
  const Extent extent = extentBelow(node);
  const auto isBefore = [&](const DOMElement* element, std::size_t position) {
    return extents_.find(element)->second.start < position;
  };
  const auto first = std::lower_bound(found.begin(), found.end(), extent.start, isBefore);
  const auto last = std::lower_bound(first, found.end(), extent.end, isBefore);
  return {first, last};
}

ElementIndex::Elements ElementIndex::named(const XMLCh* tag) const {
  const auto found = tag ? tags_.find(tag) : tags_.end();
  return found == tags_.end() ? Elements() : Elements(found->second);
}

ElementIndex::Elements ElementIndex::below(const DOMNode* node, const XMLCh* tag) const {
  const auto found = tag ? tags_.find(tag) : tags_.end();
  return found == tags_.end() ? Elements() : within(found->second, node);
}

const ElementIndex::Valued& ElementIndex::valuesOf(const XMLCh* tag, const XMLCh* name) const {
  const auto [entry, isNew] =
      values_.try_emplace(std::pair<std::u16string, std::u16string>(tag, name));
  if (isNew) {
    for (DOMElement* element : named(tag)) {
      entry->second[element->getAttribute(name)].push_back(element);
    }
  }
  return entry->second;
}

DOMElement* ElementIndex::firstBelow(const DOMNode* node, const XMLCh* tag, const XMLCh* name,
                                     const XMLCh* value) const {
  if (!tag || !*tag || !name || !*name || !value || !*value) return nullptr;
  const Valued& values = valuesOf(tag, name);
  const auto found = values.find(value);
  if (found == values.end()) return nullptr;
  const Elements elements = within(found->second, node);
  return elements.empty() ? nullptr : elements.front();
}

std::size_t ElementIndex::sizeOf(const DOMElement* element) const {
  const Extent extent = extentOf(element);
  return sizes_[extent.end] - sizes_[extent.start];
}
