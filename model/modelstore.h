// ModelStore: the model objects of one visualization, and the identifiers and links between them.
#ifndef CHARTXML_MODELSTORE_H
#define CHARTXML_MODELSTORE_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "plxbaseelement.h"

class ChangeJournal;
namespace dialect {
struct Element;
}

// Each element's object hangs on the element as user data under its tag. On the store's end every
// element is freed of its object, so that no node hands out a dead one.
class ModelStore {
 public:
  explicit ModelStore(PlXVisualization& owner);
  ~ModelStore();
  ModelStore(const ModelStore&) = delete;
  ModelStore& operator=(const ModelStore&) = delete;

  // To be told when nobody will look at the document any more: the store's end then leaves dead
  // objects on the elements. The document is to be deleted, as release() would tell them of it.
  void endWithDocument() { endsWithDocument_ = true; }

  // Null for an owner without an element.
  xercesc::DOMDocument* document() const { return document_; }

  // Makes the objects of a subtree in one pass, root included, and declares its identifiers.
  // Elements that have an object keep it; rows of data are passed over.
  void build(xercesc::DOMElement* root);

  // The object over an element, made now if there is none; null when the dialect has no class for
  // it.
  PlXBaseElement* objectOf(xercesc::DOMElement* element);

  // The object over the element of that identifier, as objectOf() answers it.
  PlXBaseElement* objectOfId(const XMLCh* id);

  // Writes a new child at its canonical place: behind the last sibling that its parent's row
  // doesn't want behind it. Answers the child's object, as objectOf() does.
  PlXBaseElement* insert(xercesc::DOMElement* parent, xercesc::DOMElement* child);

  // Takes a subtree out of the document: its identifiers are withdrawn and links to them from
  // elsewhere are removed. The elements stay owned by the document, and the objects safe.
  void remove(xercesc::DOMElement* element);

  // To be told of each attribute that is written, so that remove() finds links without a walk.
  void noteAttribute(xercesc::DOMElement* element, const XMLCh* name);

  // `stem` with the first number from 1 that makes it an identifier which no element of the
  // document has. Asking often costs no walk over the numbers that are taken; one above 16 that a
  // plain DOM call has freed is found by one of the next questions.
  // With `knowsFrees` there has been no such call since the last question about the stem.
  std::u16string firstFreeId(const XMLCh* stem, bool knowsFrees = false);
  // To be told of each identifier that is withdrawn from the document.
  void noteFreeId(const std::u16string& id);

  // Who wants to be told of each edit; null for nobody. Not owned.
  ChangeJournal* journal() const { return journal_; }
  void setJournal(ChangeJournal* journal) { journal_ = journal; }

 private:
  struct Link {
    const PlXBaseElement* holder;
    const XMLCh* attribute;  // pooled by the document
  };
  class ReleaseWatch;

  xercesc::DOMNode* knownPlace(const xercesc::DOMElement* parent, unsigned rank) const;
  PlXBaseElement* make(xercesc::DOMElement* element, const dialect::Element* row);
  void noteLink(const PlXBaseElement& holder, const xercesc::DOMNode& attribute);
  void noteLinks(const PlXBaseElement& object);
  void indexLinks();
  void removeLinks(const std::u16string& id);

  PlXVisualization& owner_;
  xercesc::DOMDocument* document_;
  std::vector<std::unique_ptr<PlXBaseElement>> objects_;
  // The same objects, and the owner, by element: asked far more often than the user data of the
  // elements can be, which a document looks up in two tables.
  std::unordered_map<const xercesc::DOMElement*, PlXBaseElement*> objectsByElement_;
  // The hash of an id to the object that it led to; its element's own text decides. The document
  // finds an element far more slowly.
  std::unordered_map<std::size_t, PlXBaseElement*> objectsById_;
  // The hash of an id to the links that name it, filled by the first removal. A link may be out of
  // date, or of another id: the attribute's text decides.
  std::unordered_map<std::size_t, std::vector<Link>> links_;
  bool linksIndexed_ = false;
  bool endsWithDocument_ = false;
  ChangeJournal* journal_ = nullptr;
  // Of a stem: all numbers up to `taken` are, but perhaps for those that were freed since. `looked`
  // is the one that was looked at again last.
  struct Numbers {
    unsigned long taken = 0;
    unsigned long looked = 0;
    std::set<unsigned long> freed;
  };
  std::unordered_map<std::u16string, Numbers> numbers_;
  // The child that insert() last wrote for a parent and a rank, where that isn't near the end.
  std::map<std::pair<const xercesc::DOMElement*, unsigned>, const PlXBaseElement*> lastChildren_;
};

// Makes the "id" attribute of an element in the document an identifier of the document; what has
// been removed stays without.
void declareId(xercesc::DOMElement* element);
// The opposite, for an element that goes.
void withdrawId(xercesc::DOMElement* element);

#endif
