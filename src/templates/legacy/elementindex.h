// ElementIndex: finds elements of a document that stays as it is, without walking through it anew
// for each question.
#ifndef CHARTXML_ELEMENTINDEX_H
#define CHARTXML_ELEMENTINDEX_H

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <xercesc/dom/DOM.hpp>

// Nodes and answers are the document's, which must outlive the index. Names are compared as they
// are written, prefixes included; null and the empty text match nothing.
class ElementIndex {
 public:
  using Elements = std::span<xercesc::DOMElement* const>;

  explicit ElementIndex(xercesc::DOMDocument& document);
  ElementIndex(const ElementIndex&) = delete;
  ElementIndex& operator=(const ElementIndex&) = delete;
  ~ElementIndex();

  // That of the document that a node is in, while there is one; null otherwise.
  static const ElementIndex* of(const xercesc::DOMNode& node);

  // All elements in document order.
  const std::vector<xercesc::DOMElement*>& elements() const { return elements_; }
  Elements named(const XMLCh* tag) const;
  // Those below a node, which isn't one of them itself.
  Elements below(const xercesc::DOMNode* node, const XMLCh* tag) const;
  // The first of them whose attribute has the value; null when there is none.
  xercesc::DOMElement* firstBelow(const xercesc::DOMNode* node, const XMLCh* tag, const XMLCh* name,
                                  const XMLCh* value) const;
  // Positions in elements(), from an element's own to behind its last descendant's.
  struct Extent {
    std::size_t start = 0;
    std::size_t end = 0;
  };
  Extent extentOf(const xercesc::DOMElement* element) const;
  // The characters of an element's names, attributes and texts, and of all that is in it.
  std::size_t sizeOf(const xercesc::DOMElement* element) const;

 private:
  using Tagged = std::vector<xercesc::DOMElement*>;
  using Valued = std::unordered_map<std::u16string_view, Tagged>;

  Extent extentBelow(const xercesc::DOMNode* node) const;
  Elements within(const Tagged& found, const xercesc::DOMNode* node) const;
  const Valued& valuesOf(const XMLCh* tag, const XMLCh* name) const;

  xercesc::DOMDocument& document_;
  std::vector<xercesc::DOMElement*> elements_;
  std::unordered_map<const xercesc::DOMNode*, Extent> extents_;
  std::vector<std::size_t> sizes_;  // of what stands before each position
  std::unordered_map<std::u16string_view, Tagged> tags_;
  // Made when it is first asked for.
  mutable std::map<std::pair<std::u16string, std::u16string>, Valued> values_;
};

#endif
