// PlXBaseElement: the root of the model's classes, and the verbs that their accessors are made of.
#ifndef CHARTXML_PLXBASEELEMENT_H
#define CHARTXML_PLXBASEELEMENT_H

#include <cstddef>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

class PlXStyle;
class PlXVisualization;

// A typed view of one DOM element. The DOM tree is the single store: every setter writes to it,
// every getter reads from it, and printing the DOM prints the edited chart.
//
// Rules of all classes:
// - Objects belong to their PlXVisualization and live as long as it does. An object whose element
//   has been removed stays safe to use until then: it edits an element that is in no chart. The
//   document must outlive the PlXVisualization.
// - `getXs()` answers a vector of the children of that kind in document order; `getX()` on a child
//   object answers null when there is none, and the first when there are several.
// - `getX()` on a text property answers a zero-terminated text that is never null and is empty when
//   the property isn't stated; it is valid until the property or its element goes. Numbers read as
//   0 and flags as false then, and an enumerator as 0.
// - `addX()` creates a child at its canonical place and answers the new object, which is never
//   null. With an id, the new element has that id.
// - `setX(text)` with null removes the property, and so does an enumerator of 0 that the dialect
//   has no word for; any other without a word is passed over.
// - `setX(object)` stores a link: an attribute with the object's id. An object without an id is
//   given one. A link whose target isn't in the document, or is no such object, reads as null.
// - `removeX()` of what isn't there does nothing. Links to a removed object go with it, but for
//   those that plain DOM calls have written since the first removal.
// - `isXPresent()` tells whether the property is stated on this object's own element.
//
// An object made directly on an element is a temporary view that the caller owns.
class CHARTXML_API PlXBaseElement {
 public:
  explicit PlXBaseElement(xercesc::DOMElement* element, PlXVisualization* owner = nullptr);
  PlXBaseElement(const PlXBaseElement&) = delete;
  PlXBaseElement& operator=(const PlXBaseElement&) = delete;
  virtual ~PlXBaseElement();

  // The element that this object is a view of; null once that element has been released.
  xercesc::DOMElement* getImplementation() const { return element_; }
  // The owner; for a temporary view the visualization over the same document, null without one.
  PlXVisualization* getVisualization() const;

  // The text of any attribute as it stands; empty when there is none.
  const XMLCh* GetAttribute(const XMLCh* name) const;
  // Writes any attribute as it stands; a null value removes it, and an empty one removes an
  // identifier. False, and nothing changed, when `name` is no XML name.
  bool SetAttribute(const XMLCh* name, const XMLCh* value);
  // Copies the attributes of a template element onto this object's element, over those of the same
  // name, but for those with a namespace and an identifier that is empty, holds blanks or is
  // another element's. Null, or a node that is no element, changes nothing.
  void importAttributes(const xercesc::DOMNode* node);

  // By the identifiers of the whole document. Null when there is none.
  xercesc::DOMElement* getElementById(const XMLCh* id) const;
  bool doesIdExist(const XMLCh* id) const;
  // Null when the element of that id is no style.
  PlXStyle* getStyleById(const XMLCh* id) const;

  // The model object over an element of this object's chart, made now if the element came into the
  // document by DOM operations. Null for a null element and for one that the dialect has no class
  // for.
  PlXBaseElement* objectOf(xercesc::DOMElement* element) const;

 protected:
  // Attributes. Names and types stand in model/dialect.inc.
  const XMLCh* text(const XMLCh* name) const;
  void setText(const XMLCh* name, const XMLCh* value);
  bool flag(const XMLCh* name, bool absent = false) const;
  void setFlag(const XMLCh* name, bool value);
  double number(const XMLCh* name) const;
  void setNumber(const XMLCh* name, double value);
  long integer(const XMLCh* name) const;
  void setInteger(const XMLCh* name, long value);
  // `absent` also stands for a text that is none of the words.
  template <class Enum>
  Enum word(const XMLCh* name, Enum absent = Enum(0)) const;
  template <class Enum>
  void setWord(const XMLCh* name, Enum value);
  template <class T>
  T* link(const XMLCh* name) const;
  template <class T>
  void setLink(const XMLCh* name, T& target);
  bool present(const XMLCh* name) const;
  void clear(const XMLCh* name);

  // A text that a document may have as an attribute or between the element's tags, where it counts
  // first. Written texts are attributes, and take the place of the content.
  const XMLCh* contentOrText(const XMLCh* name) const;
  void setTextOverContent(const XMLCh* name, const XMLCh* value);

  // Children, by class or, for a class that has no tag of its own, by class and tag.
  template <class T>
  T* child() const;
  template <class T>
  T* childTagged(const XMLCh* tag) const;
  template <class T>
  std::vector<T*> children() const;
  template <class T>
  T* add();
  template <class T>
  T* add(const XMLCh* id);
  template <class T>
  T* addTagged(const XMLCh* tag);
  template <class T>
  void removeAll();
  // By 0-based position among the children of that class; past the last nothing happens.
  template <class T>
  void removeAt(std::size_t index);
  void removeChild(PlXBaseElement& child);

 private:
  friend class ModelStore;

  xercesc::DOMElement* firstChild(const XMLCh* tag) const;
  // Whether this element may have it for its identifier.
  bool isFreeId(const XMLCh* id) const;
  PlXBaseElement* addChild(const XMLCh* tag, const XMLCh* id);
  void setAttribute(const XMLCh* name, const XMLCh* value);
  PlXBaseElement* linked(const XMLCh* name) const;
  void linkTo(const XMLCh* name, PlXBaseElement& target);

  xercesc::DOMElement* element_;
  PlXVisualization* visualization_;
};

#endif
