#include "changejournal.h"

#include <algorithm>
#include <unordered_set>

#include <xercesc/util/XMLString.hpp>

#include "attributetext.h"
#include "dialect.h"
#include "domwalk.h"
#include "utf.h"
#include "xmlwriter.h"

using namespace xercesc;

namespace {

std::optional<std::u16string> valueOf(const DOMElement& element, const XMLCh* name) {
  const DOMAttr* attribute = element.getAttributeNode(name);
  if (!attribute) return {};
  return attributeText(*attribute);
}

// With signs that no text of a document holds for where children stand and CDATA sections begin.
std::u16string ownText(const DOMElement& element) {
  std::u16string text;
  for (const DOMNode* node = element.getFirstChild(); node; node = node->getNextSibling()) {
    const short kind = node->getNodeType();
    if (kind == DOMNode::TEXT_NODE) {
      text += node->getNodeValue();
    } else if (kind == DOMNode::CDATA_SECTION_NODE) {
      text.append(1, u'\2').append(node->getNodeValue()).append(1, u'\3');
    } else {
      text += u'\1';
    }
  }
  return text;
}

bool isInDocument(const DOMNode* node) {
  while (node && node->getNodeType() != DOMNode::DOCUMENT_NODE) node = node->getParentNode();
  return node;
}

ElementChange changeOf(ElementChange::Kind kind, const DOMElement& element) {
  return {kind, utf::toUtf8(dialect::localName(&element)),
          utf::toUtf8(element.getAttribute(u"id"))};
}

std::vector<const DOMElement*> childrenOf(const DOMElement& element) {
  std::vector<const DOMElement*> children;
  for (const DOMElement* child = firstElement(&element); child; child = nextElement(child)) {
    children.push_back(child);
  }
  return children;
}

}  // namespace

ChangeJournal::Record& ChangeJournal::recordOf(const DOMElement& element) {
  const auto [known, isFirst] = places_.emplace(&element, records_.size());
  if (isFirst) records_.emplace_back().element = &element;
  return records_[known->second];
}

bool ChangeJournal::isNew(const DOMNode* node) const {
  const auto known = places_.find(node);
  return known != places_.end() && records_[known->second].isNew;
}

void ChangeJournal::beforeAttribute(const DOMElement& element, const XMLCh* name) {
  Record& record = recordOf(element);
  if (record.isNew) return;
  const bool isKnown = std::ranges::any_of(
      record.attributes, [&](const Attribute& each) { return each.name == name; });
  if (!isKnown) record.attributes.push_back({name, valueOf(element, name)});
}

void ChangeJournal::beforeText(const DOMElement& element) {
  Record& record = recordOf(element);
  if (!record.isNew && !record.text) record.text = ownText(element);
}

void ChangeJournal::noteChildren(Record& record) {
  if (record.isNew || record.children) return;
  record.children = childrenOf(*record.element);
}

void ChangeJournal::beforeInsert(const DOMElement& parent, const DOMElement& child) {
  noteChildren(recordOf(parent));
  recordOf(child).isNew = true;
}

void ChangeJournal::beforeRemove(DOMElement& element) {
  const DOMNode* parent = element.getParentNode();
  const bool isChild = parent && parent->getNodeType() == DOMNode::ELEMENT_NODE;
  if (!isChild || isNew(&element)) return;
  noteChildren(recordOf(*static_cast<const DOMElement*>(parent)));
  bool isAsBefore = true;
  walkElements(&element, [&](const DOMElement* inner) {
    isAsBefore = isAsBefore && !places_.contains(inner);
    return isAsBefore;
  });
  if (isAsBefore) removed_.emplace(&element, xmlText(element));
}

// An element that was written anew in another's place is a change only where it is another.
void ChangeJournal::addChildren(const Record& record, std::vector<ElementChange>& changes) const {
  const Nodes& before = *record.children;
  const Nodes now = childrenOf(*record.element);
  if (before == now) return;
  const std::unordered_set<const DOMElement*> earlier(before.begin(), before.end());
  const std::unordered_set<const DOMElement*> later(now.begin(), now.end());
  std::unordered_map<std::string, Nodes> gone;  // the last of a text first
  for (auto each = before.rbegin(); each != before.rend(); ++each) {
    const auto text = later.contains(*each) ? removed_.end() : removed_.find(*each);
    if (text != removed_.end()) gone[text->second].push_back(*each);
  }
  Nodes same = now;  // as it would be with the old ones in the places of those like them
  std::unordered_set<const DOMElement*> replaced;
  for (const DOMElement*& each : same) {
    if (earlier.contains(each) || gone.empty()) continue;
    const auto alike = gone.find(xmlText(*each));
    if (alike == gone.end() || alike->second.empty()) continue;
    each = alike->second.back();
    replaced.insert(each);
    alike->second.pop_back();
  }
  const std::size_t count = changes.size();
  for (const DOMElement* each : before) {
    if (later.contains(each) || replaced.contains(each)) continue;
    changes.push_back(changeOf(ElementChange::Kind::removed, *each));
  }
  for (const DOMElement* each : same) {
    if (!earlier.contains(each)) changes.push_back(changeOf(ElementChange::Kind::added, *each));
  }
  if (changes.size() == count && same != before) {
    changes.push_back(changeOf(ElementChange::Kind::changed, *record.element));
  }
}

std::vector<ElementChange> ChangeJournal::take() {
  std::vector<ElementChange> changes;
  for (const Record& record : records_) {
    if (record.isNew || !isInDocument(record.element)) continue;
    const DOMElement& element = *record.element;
    const bool isChanged = std::ranges::any_of(record.attributes, [&](const Attribute& each) {
      return valueOf(element, each.name.c_str()) != each.before;
    });
    if (isChanged || (record.text && *record.text != ownText(element))) {
      changes.push_back(changeOf(ElementChange::Kind::changed, element));
    }
    if (record.children) addChildren(record, changes);
  }
  records_.clear();
  places_.clear();
  removed_.clear();
  return changes;
}
