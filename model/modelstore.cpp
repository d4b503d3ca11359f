#include "modelstore.h"

#include "dialect.h"
#include "domwalk.h"
#include "plxframes.h"
#include "utf.h"

using namespace xercesc;

namespace {

const XMLCh idName[] = u"id";

// Of all documents of the process: what is known of taken numbers is asked again after any.
unsigned long allWithdrawals = 0;

bool holdsData(const dialect::Element* row) {
  return row && row->content == dialect::Content::Data;
}

}  // namespace

// A node that is released while its object lives leaves the object without an element.
class ModelStore::ReleaseWatch : public DOMUserDataHandler {
 public:
  static ReleaseWatch& instance() {
    static ReleaseWatch watch;
    return watch;
  }

  void handle(DOMOperationType operation, const XMLCh*, void* data, const DOMNode*,
              DOMNode*) override {
    if (operation == NODE_DELETED) static_cast<PlXBaseElement*>(data)->element_ = nullptr;
  }
};

ModelStore::~ModelStore() {
  for (const auto& object : objects_) {
    DOMElement* element = object->getImplementation();
    if (!element) continue;
    const XMLCh* tag = dialect::localName(element);
    if (element->getUserData(tag) == object.get()) element->setUserData(tag, nullptr, nullptr);
  }
}

PlXBaseElement* ModelStore::make(DOMElement* element, const dialect::Element* row) {
  PlXBaseElement* object = row ? row->make(element, &owner_) : nullptr;
  if (!object) return nullptr;
  objects_.emplace_back(object);
  element->setUserData(row->tag, object, &ReleaseWatch::instance());
  if (linksIndexed_) noteLinks(*object);
  return object;
}

PlXBaseElement* ModelStore::objectOf(DOMElement* element) {
  if (void* object = element->getUserData(dialect::localName(element))) {
    return static_cast<PlXBaseElement*>(object);
  }
  declareId(element);
  return make(element, dialect::find(element));
}

void ModelStore::build(DOMElement* root) {
  walkElements(root, [this](DOMElement* element) {
    DOMAttr* id = element->getAttributeNode(idName);
    if (id && !id->isId()) element->setIdAttributeNode(id, true);
    const dialect::Element* row = dialect::find(element);
    if (row && !element->getUserData(row->tag)) make(element, row);
    return !holdsData(row);
  });
}

void ModelStore::noteAttribute(DOMElement* element, const XMLCh* name) {
  if (!linksIndexed_) return;
  const dialect::Element* row = dialect::find(element);
  const PlXBaseElement* holder = objectOf(element);
  if (!row || !holder || !dialect::isLink(*row, name)) return;
  links_.emplace(element->getAttribute(name), Link{holder, name});
}

void ModelStore::noteLinks(const PlXBaseElement& object) {
  DOMElement* element = object.getImplementation();
  const dialect::Element* row = element ? dialect::find(element) : nullptr;
  if (!row) return;
  const DOMNamedNodeMap* attributes = element->getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    if (dialect::isLink(*row, attribute->getNodeName())) {
      links_.emplace(attribute->getNodeValue(), Link{&object, attribute->getNodeName()});
    }
  }
}

void ModelStore::indexLinks() {
  if (linksIndexed_) return;
  linksIndexed_ = true;
  for (const auto& object : objects_) noteLinks(*object);
  noteLinks(owner_);
}

void ModelStore::remove(DOMElement* element) {
  // Before anything changes, so that links within the subtree are known too.
  indexLinks();
  std::vector<std::u16string> removedIds;
  walkElements(element, [&](DOMElement* inner) {
    if (const DOMAttr* id = inner->getAttributeNode(idName)) {
      removedIds.emplace_back(id->getValue());
    }
    withdrawId(inner);
    return !holdsData(dialect::find(inner));
  });
  if (DOMNode* parent = element->getParentNode()) parent->removeChild(element);
  for (const std::u16string& id : removedIds) removeLinks(id);
}

// Links that lie in the removed part go as well: they lead out of it to nothing, or into a part
// that no identifier finds any more.
void ModelStore::removeLinks(const std::u16string& id) {
  // Another element of that id, in a damaged document, keeps its links.
  if (owner_.doesIdExist(id.c_str())) return;
  const auto [first, last] = links_.equal_range(id);
  for (auto link = first; link != last; ++link) {
    const auto& [holder, attribute] = link->second;
    DOMElement* element = holder->getImplementation();
    if (element && id == element->getAttribute(attribute.c_str())) {
      element->removeAttribute(attribute.c_str());
    }
  }
  links_.erase(first, last);
}

std::u16string ModelStore::firstFreeId(const XMLCh* stem) {
  if (withdrawals_ != allWithdrawals) takenNumbers_.clear();
  withdrawals_ = allWithdrawals;
  unsigned long& taken = takenNumbers_[stem];
  std::u16string id;
  for (unsigned long number = taken + 1;; taken = number++) {
    id = stem + utf::toUtf16(std::to_string(number));
    if (!owner_.doesIdExist(id.c_str())) return id;
  }
}

void declareId(DOMElement* element) {
  DOMAttr* id = element->getAttributeNode(idName);
  if (!id || id->isId()) return;
  const DOMNode* top = element;
  while (const DOMNode* parent = top->getParentNode()) top = parent;
  if (top->getNodeType() == DOMNode::DOCUMENT_NODE) element->setIdAttributeNode(id, true);
}

void withdrawId(DOMElement* element) {
  const DOMAttr* id = element->getAttributeNode(idName);
  if (!id || !id->isId()) return;
  element->setIdAttribute(idName, false);
  ++allWithdrawals;
}
