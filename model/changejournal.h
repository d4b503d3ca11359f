// ChangeJournal: what has been changed in a chart, by comparing it with what stood before.
#ifndef CHARTXML_CHANGEJOURNAL_H
#define CHARTXML_CHANGEJOURNAL_H

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "commandoutcome.h"

// A ModelStore with a journal tells it of each edit before it is done; who edits the tree without
// the model's verbs has to do the same. What is the same in the end is no change: an attribute that
// was set to what it was, an element that was added and removed again, or removed and written anew.
class ChangeJournal {
 public:
  void beforeAttribute(const xercesc::DOMElement& element, const XMLCh* name);
  // The text that an element holds beside its children.
  void beforeText(const xercesc::DOMElement& element);
  void beforeInsert(const xercesc::DOMElement& parent, const xercesc::DOMElement& child);
  void beforeRemove(xercesc::DOMElement& element);

  // What is other than at the last call, in the order of the first edits. Of an element that was
  // added or removed, nothing is told of what lies in it.
  std::vector<ElementChange> take();

 private:
  struct Attribute {
    std::u16string name;
    std::optional<std::u16string> before;
  };
  using Nodes = std::vector<const xercesc::DOMElement*>;
  struct Record {
    const xercesc::DOMElement* element = nullptr;
    bool isNew = false;
    std::vector<Attribute> attributes;
    std::optional<std::u16string> text;
    std::optional<Nodes> children;
  };

  Record& recordOf(const xercesc::DOMElement& element);
  void noteChildren(Record& record);
  bool isNew(const xercesc::DOMNode* node) const;
  void addChildren(const Record& record, std::vector<ElementChange>& changes) const;

  std::vector<Record> records_;
  std::unordered_map<const xercesc::DOMNode*, std::size_t> places_;  // in records_
  // What removed elements were, if nothing in them had been edited before.
  std::unordered_map<const xercesc::DOMElement*, std::string> removed_;
};

#endif
