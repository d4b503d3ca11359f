#include "modelstore.h"

#include <algorithm>

#include <xercesc/util/XMLString.hpp>

#include "attributetext.h"
#include "changejournal.h"
#include "dialect.h"
#include "domwalk.h"
#include "memoryfailure.h"
#include "plxframes.h"
#include "utf.h"

using namespace xercesc;

namespace {

const XMLCh idName[] = u"id";

// Stays on some of the elements when their objects go: whenever a node is released, the document
// looks for the first entry of its table of user data from the table's start, which takes as long
// as the table once was if that has been emptied.
char ballast;

// All stores, by their documents: several may be over one, and elements are edited through views
// that belong to none of them.
std::unordered_multimap<const DOMDocument*, ModelStore*> allStores;

// What is nearer is looked at each time, so that edits by DOM operations count; farther away the
// store goes by what it remembers, so that loops over large charts take linear time.
constexpr unsigned near = 8;

std::size_t hashOf(std::u16string_view id) {
  return std::hash<std::u16string_view>()(id);
}

bool holdsData(const dialect::Element* row) {
  return row && row->content == dialect::Content::Data;
}

// False for an object that isn't on its element: the root's may be that of another visualization.
bool freeElement(const PlXBaseElement& object) {
  DOMElement* element = object.getImplementation();
  if (!element) return false;
  const XMLCh* tag = dialect::localName(element);
  if (element->getUserData(tag) != &object) return false;
  element->setUserData(tag, nullptr, nullptr);
  return true;
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
    if (operation != NODE_DELETED) return;
    auto* object = static_cast<PlXBaseElement*>(data);
    object->visualization_->store().objectsByElement_.erase(object->element_);
    object->element_ = nullptr;
  }
};

ModelStore::ModelStore(PlXVisualization& owner)
    : owner_(owner),
      document_(owner.getImplementation() ? owner.getImplementation()->getOwnerDocument()
                                          : nullptr) {
  allStores.emplace(document_, this);
}

ModelStore::~ModelStore() {
  const auto [first, last] = allStores.equal_range(document_);
  allStores.erase(
      std::find_if(first, last, [this](const auto& each) { return each.second == this; }));
  if (endsWithDocument_) return;
  std::size_t freed = 0;
  for (const auto& object : objects_) {
    if (!freeElement(*object) || freed++ % 8 != 0) continue;
    // Without it releasing nodes takes longer.
    unlessMemoryFails<void*>(nullptr, [&] {
      return object->getImplementation()->setUserData(u"chartxml.ballast", &ballast, nullptr);
    });
  }
  freeElement(owner_);
}

PlXBaseElement* ModelStore::make(DOMElement* element, const dialect::Element* row) {
  if (!row) return nullptr;
  std::unique_ptr<PlXBaseElement> made(row->make(element, &owner_));
  PlXBaseElement* object = made.get();
  if (object) {
    objects_.push_back(std::move(made));
  } else if (element == owner_.getImplementation()) {
    object = &owner_;
  } else {
    return nullptr;
  }
  element->setUserData(row->tag, object, &ReleaseWatch::instance());
  objectsByElement_[element] = object;
  if (linksIndexed_) noteLinks(*object);
  return object;
}

PlXBaseElement* ModelStore::objectOf(DOMElement* element) {
  const auto known = objectsByElement_.find(element);
  if (known != objectsByElement_.end()) return known->second;
  if (void* object = element->getUserData(dialect::localName(element))) {
    return static_cast<PlXBaseElement*>(object);
  }
  declareId(element);
  return make(element, dialect::find(element));
}

PlXBaseElement* ModelStore::objectOfId(const XMLCh* id) {
  const std::size_t hash = hashOf(id);
  const auto known = objectsById_.find(hash);
  if (known != objectsById_.end()) {
    const DOMElement* element = known->second->element_;
    const DOMAttr* attribute = element ? element->getAttributeNode(idName) : nullptr;
    if (attribute && attribute->isId() && XMLString::equals(attributeText(*attribute), id)) {
      return known->second;
    }
  }
  DOMElement* element = document_->getElementById(id);
  PlXBaseElement* object = element ? objectOf(element) : nullptr;
  if (object) objectsById_[hash] = object;
  return object;
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

// The place is looked for from the last child backwards. Names are pooled by the document: a run of
// equal siblings costs one look-up.
PlXBaseElement* ModelStore::insert(DOMElement* parent, DOMElement* child) {
  const dialect::Element* row = dialect::find(parent);
  const unsigned rank = row ? row->rankOf(dialect::localName(child)) : 0;
  DOMNode* place = nullptr;
  const XMLCh* lastName = nullptr;
  unsigned passed = 0;
  for (DOMNode* node = row ? parent->getLastChild() : nullptr; node;
       node = node->getPreviousSibling()) {
    if (node->getNodeType() != DOMNode::ELEMENT_NODE) continue;
    const XMLCh* name = dialect::localName(node);
    if (name != lastName && row->rankOf(name) <= rank) break;
    lastName = name;
    place = node;
    if (++passed != near) continue;
    if (DOMNode* known = knownPlace(parent, rank)) {
      place = known;
      break;
    }
  }
  if (journal_) journal_->beforeInsert(*parent, *child);
  parent->insertBefore(child, place);
  PlXBaseElement* object = objectOf(child);
  if (passed >= near && object) lastChildren_[{parent, rank}] = object;
  return object;
}

// Null when nothing is remembered that still holds.
DOMNode* ModelStore::knownPlace(const DOMElement* parent, unsigned rank) const {
  const auto known = lastChildren_.find({parent, rank});
  if (known == lastChildren_.end()) return nullptr;
  DOMElement* last = known->second->getImplementation();
  return last && last->getParentNode() == parent ? nextElement(last) : nullptr;
}

void ModelStore::noteAttribute(DOMElement* element, const XMLCh* name) {
  if (!linksIndexed_) return;
  const dialect::Element* row = dialect::find(element);
  const PlXBaseElement* holder = objectOf(element);
  if (!row || !holder || !dialect::isLink(*row, name)) return;
  noteLink(*holder, *element->getAttributeNode(name));
}

void ModelStore::noteLink(const PlXBaseElement& holder, const DOMNode& attribute) {
  links_[hashOf(attributeText(attribute))].push_back({&holder, attribute.getNodeName()});
}

void ModelStore::noteLinks(const PlXBaseElement& object) {
  DOMElement* element = object.getImplementation();
  const dialect::Element* row = element ? dialect::find(element) : nullptr;
  if (!row || !row->mayHoldLinks()) return;
  const DOMNamedNodeMap* attributes = element->getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    if (dialect::isLink(*row, attribute->getNodeName())) noteLink(object, *attribute);
  }
}

void ModelStore::indexLinks() {
  if (linksIndexed_) return;
  linksIndexed_ = true;
  for (const auto& object : objects_) noteLinks(*object);
  noteLinks(owner_);
}

void ModelStore::remove(DOMElement* element) {
  if (journal_) journal_->beforeRemove(*element);
  std::vector<DOMElement*> withId;
  walkElements(element, [&](DOMElement* inner) {
    if (inner->getAttributeNode(idName)) withId.push_back(inner);
    return !holdsData(dialect::find(inner));
  });
  // Before anything changes, so that links within the subtree are known too.
  if (!withId.empty()) indexLinks();
  std::vector<std::u16string> removedIds;
  for (DOMElement* inner : withId) {
    removedIds.emplace_back(attributeText(*inner->getAttributeNode(idName)));
    withdrawId(inner);
  }
  if (DOMNode* parent = element->getParentNode()) parent->removeChild(element);
  for (const std::u16string& id : removedIds) removeLinks(id);
}

// Links that lie in the removed part go as well: they lead out of it to nothing, or into a part
// that no identifier finds any more.
void ModelStore::removeLinks(const std::u16string& id) {
  const auto links = links_.find(hashOf(id));
  // Another element of that id, in a damaged document, keeps its links.
  if (links == links_.end() || owner_.doesIdExist(id.c_str())) return;
  for (const auto& [holder, attribute] : links->second) {
    DOMElement* element = holder->getImplementation();
    if (!element || id != element->getAttribute(attribute)) continue;
    if (journal_) journal_->beforeAttribute(*element, attribute);
    element->removeAttribute(attribute);
  }
  links_.erase(links);
}

std::u16string ModelStore::firstFreeId(const XMLCh* stem, bool knowsFrees) {
  Numbers& numbers = numbers_[stem];
  std::u16string id;
  const auto isFree = [&](unsigned long number) {
    id = stem + utf::toUtf16(std::to_string(number));
    return !owner_.doesIdExist(id.c_str());
  };
  // Plain DOM calls free numbers without a word. A few are looked at again each time, in turn: a
  // walk over all would make a loop of new identifiers quadratic.
  constexpr unsigned long fewNumbers = 16;
  const unsigned long looks = knowsFrees ? 0 : std::min(fewNumbers, numbers.taken);
  for (unsigned long i = 0; i < looks; ++i) {
    numbers.looked = numbers.looked % numbers.taken + 1;
    if (isFree(numbers.looked)) numbers.freed.insert(numbers.looked);
  }
  while (!numbers.freed.empty()) {
    if (isFree(*numbers.freed.begin())) return id;
    numbers.freed.erase(numbers.freed.begin());
  }
  while (!isFree(numbers.taken + 1)) ++numbers.taken;
  return id;
}

// "a12" frees 12 under the stem "a" and 2 under "a1".
void ModelStore::noteFreeId(const std::u16string& id) {
  constexpr std::size_t mostDigits = 18;
  unsigned long number = 0;
  unsigned long place = 1;
  for (std::size_t digits = 1; digits <= std::min(id.size(), mostDigits); ++digits, place *= 10) {
    const char16_t digit = id[id.size() - digits];
    if (digit < u'0' || digit > u'9') return;
    number += place * static_cast<unsigned long>(digit - u'0');
    if (digit == u'0') continue;
    const auto numbers = numbers_.find(id.substr(0, id.size() - digits));
    if (numbers == numbers_.end() || number > numbers->second.taken) continue;
    numbers->second.freed.insert(number);
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
  const auto [first, last] = allStores.equal_range(element->getOwnerDocument());
  for (auto store = first; store != last; ++store) store->second->noteFreeId(attributeText(*id));
}
