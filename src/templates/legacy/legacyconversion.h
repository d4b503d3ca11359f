// LegacyConversion: what the steps that convert an older template share.
#ifndef CHARTXML_LEGACYCONVERSION_H
#define CHARTXML_LEGACYCONVERSION_H

#include <cstddef>
#include <optional>
#include <unordered_set>
#include <vector>

#include "chartstring.h"
#include "elementindex.h"

// From an older document, which stays as it is, into a new one with a root. It notes what was read.
//
// What is written is bounded by the size of the older document, since elements that lie in each
// other or link one style are written more than once: a ChartException when it grows too long.
class LegacyConversion {
 public:
  LegacyConversion(xercesc::DOMDocument& oldDocument, xercesc::DOMDocument& newDocument);

  // ---- reading
  const ElementIndex& index() const { return index_; }
  ElementIndex::Elements named(const XMLCh* tag) const { return index_.named(tag); }
  // Those at any depth. To look at them counts as writing.
  ElementIndex::Elements below(const xercesc::DOMNode* node, const XMLCh* tag);
  xercesc::DOMElement* firstBelow(const xercesc::DOMNode* node, const XMLCh* tag) const;
  // With the id; null when there is none.
  xercesc::DOMElement* withId(const XMLCh* id) const;
  // The first of all whose attribute has the value.
  xercesc::DOMElement* firstWith(const XMLCh* tag, const XMLCh* name, const XMLCh* value) const {
    return index_.firstBelow(&oldDocument_, tag, name, value);
  }
  // The text of a label itself; empty for null.
  static ChartString textOf(const xercesc::DOMElement* label);
  // One of more than blanks, which a label shows.
  static bool hasText(const xercesc::DOMElement* label);
  // The root has depth: a dimension or facet of role z.
  bool isThreeDimensional() const { return isThreeDimensional_; }
  int chartType() const { return chartType_; }

  // The value, empty for none or for a null element; element and attribute count as read.
  const XMLCh* read(const xercesc::DOMElement* element, const XMLCh* name);
  // The element whose id is the value; null when there is none, and then the
  // link doesn't count as read.
  xercesc::DOMElement* resolve(const xercesc::DOMElement* element, const XMLCh* name);

  // ---- writing
  xercesc::DOMElement& addCommand(const XMLCh* name);
  xercesc::DOMElement& add(xercesc::DOMElement& parent, const XMLCh* name);
  void set(xercesc::DOMElement& element, const XMLCh* name, const XMLCh* value);
  void setFlag(xercesc::DOMElement& element, const XMLCh* name, bool value);
  // Only what isn't empty.
  void copy(const xercesc::DOMElement& from, const XMLCh* name, xercesc::DOMElement& to);
  // With its attributes, and all elements in it unless it is to be alone. Texts in it, and names
  // with a prefix, would make the new template invalid and are left out. Null when its own is so.
  enum class Depth { Alone, All };
  xercesc::DOMElement* import(const xercesc::DOMElement& element, xercesc::DOMElement& parent,
                              Depth depth = Depth::All);
  // All parameters below an element.
  void importParameters(const xercesc::DOMElement& from, xercesc::DOMElement& to);

  // ---- parts of commands. What is null or empty writes nothing; both of the first answer whether
  // they wrote.
  bool copyStyle(const xercesc::DOMElement* oldStyle, xercesc::DOMElement& parent);
  bool copyLabel(const xercesc::DOMElement* oldLabel, xercesc::DOMElement& parent);
  // A label with the text alone.
  xercesc::DOMElement& copyText(const xercesc::DOMElement& oldLabel, xercesc::DOMElement& parent);
  struct AxisRole {
    ChartString role;
    bool categorical = false;
    bool derived = false;
  };
  void copyMajorTicks(const xercesc::DOMElement& ticks, xercesc::DOMElement& parent,
                      const AxisRole& axis);
  void copyMinorTicks(const xercesc::DOMElement& ticks, xercesc::DOMElement& parent,
                      const AxisRole& axis);
  // The number in `value`, of which one decimal counts, grows by half. A text that starts with no
  // digit stays as it is.
  void growDistance(xercesc::DOMElement& parameter);

  // ---- what was left out, in document order
  struct LeftOut {
    std::size_t element;  // its position among all, from 0
    // The name of an attribute; empty for the whole element with all that is in it.
    ChartString attribute;
  };
  std::vector<LeftOut> leftOut() const;

 private:
  void spend(std::size_t size);
  void copyAttributes(const xercesc::DOMElement& from, xercesc::DOMElement& to);
  void copyFormat(const xercesc::DOMElement& ticks, xercesc::DOMElement& parent);
  void copyGridLines(const xercesc::DOMElement& ticks, xercesc::DOMElement& parent);
  // A child of the attribute's name with the style that it names.
  void copyNamedStyle(const xercesc::DOMElement& ticks, const XMLCh* name,
                      xercesc::DOMElement& parent);
  void setAxisRole(xercesc::DOMElement& ticks, const AxisRole& axis);

  xercesc::DOMDocument& oldDocument_;
  xercesc::DOMDocument& newDocument_;
  const ElementIndex index_;
  bool isThreeDimensional_ = false;
  int chartType_ = 0;
  std::size_t left_;  // of what may be written
  std::unordered_set<const xercesc::DOMNode*> read_;
};

#endif
