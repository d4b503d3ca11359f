// ChartElement and its family: questions to the nodes of a chart-like document of the older kind,
// without a model.
#ifndef CHARTXML_CHARTELEMENT_H
#define CHARTXML_CHARTELEMENT_H

#include <xercesc/util/XercesDefs.hpp>

#include "export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

class ChartDimension;
class ChartVariable;

// A wrapper holds a pointer to a node and nothing else: it owns nothing, a copy asks the same node,
// and the caller makes the class that it knows the node to be. Wrappers live on the stack; they are
// not for deleting through a base.
//
// On a null node every question is answered by null, false, 0 or an empty wrapper. Texts belong to
// the document; that of an attribute that isn't there is empty. Names and values are compared
// exactly, and null is equal to the empty text.
class CHARTXML_API ChartElement {
 public:
  explicit ChartElement(xercesc::DOMNode* node = nullptr) : node(node) {}
  ChartElement(const ChartElement&) = default;
  ChartElement& operator=(const ChartElement&) = default;

  virtual xercesc::DOMNode* getNode() const;
  // The attributes type, style and name.
  virtual const XMLCh* getType() const;
  virtual const XMLCh* getStyle() const;
  virtual const XMLCh* getName() const;
  // The root of the document.
  virtual xercesc::DOMElement* getGraph() const;
  virtual xercesc::DOMNode* getParent() const;
  // That the attribute categorical is "true".
  virtual bool isCategorical() const;
  // The first child element whose attribute `name` is `value`.
  virtual xercesc::DOMElement* getChildWithAttribute(const XMLCh* name, const XMLCh* value) const;
  // The first element of that tag at any depth whose attribute `name` is `value`: below this node,
  // or below the root. None when an argument is empty.
  virtual xercesc::DOMElement* getOffspringWithAttribute(const XMLCh* tag, const XMLCh* name,
                                                         const XMLCh* value) const;
  virtual xercesc::DOMElement* getElementWithAttribute(const XMLCh* tag, const XMLCh* name,
                                                       const XMLCh* value) const;
  // The first element of that tag below the root, and among the children.
  virtual xercesc::DOMElement* getFirstElementByTagName(const XMLCh* tag) const;
  virtual xercesc::DOMElement* getFirstChildByTagName(const XMLCh* tag) const;
  virtual void setNode(xercesc::DOMNode* other);
  virtual void setNode(const ChartElement& other);
  virtual bool isNull() const;
  virtual const XMLCh* getAttributeValue(const XMLCh* name) const;

 protected:
  // The first element of that tag below this node.
  xercesc::DOMElement* firstBelow(const XMLCh* tag) const;

  xercesc::DOMNode* node;
};

class CHARTXML_API ChartGraph : public ChartElement {
 public:
  using ChartElement::ChartElement;

  // Of the first element whose tag is the role.
  ChartVariable getVariable(const XMLCh* role);
  // 0 for bars, a single interval; 1 for box plots, 2 for ranges, 3 for histograms, 4 for several
  // elements with intervals among them, 5 for cumulative sums, 6 for pies, 7 without an interval.
  // What statistics tell goes before coordinates, and those before the elements.
  int getChartType() const;
  // Of the domain of that id, or else of the variable.
  using ChartElement::isCategorical;
  bool isCategorical(const XMLCh* id) const;
  // Below this node, not below the root.
  xercesc::DOMElement* getFirstElementByTagName(const XMLCh* tag) const override;
};

class CHARTXML_API ChartFrame : public ChartElement {
 public:
  using ChartElement::ChartElement;

  // The role of the first facetvariable in the frame.
  const XMLCh* getFacetRole() const;
  // The first element in the frame whose tag is the role, and its variable's id.
  ChartElement getPositionAesthetic(const XMLCh* role) const;
  const XMLCh* getRoleVariableId(const XMLCh* role) const;
  // The dimension of the facet role.
  ChartDimension getFacetDimension() const;
  bool isFacetCategorical() const;
};

class CHARTXML_API ChartDimension : public ChartElement {
 public:
  static const XMLCh _lowerMapping[];
  static const XMLCh _upperMapping[];
  static const XMLCh _sameRatio[];

  using ChartElement::ChartElement;

  ChartElement getPositionAesthetic() const;
  // By its domain; one whose domain is stated and empty, by the variable of its role in the frame.
  bool isCategorical() const override;
};

// The labels of facets, a child of their frame.
class CHARTXML_API ChartFacetLabeling : public ChartElement {
 public:
  using ChartElement::ChartElement;

  ChartElement getPositionAesthetic() const;
  ChartDimension getDimension() const;
  bool isCategorical() const override;
};

// A child of a ChartFacetLabeling, which answers for it.
class CHARTXML_API ChartFacetLabel : public ChartElement {
 public:
  using ChartElement::ChartElement;

  ChartElement getPositionAesthetic() const;
  ChartDimension getDimension() const;
  bool isCategorical() const override;
};

// Its parent, a dimension or a facetlabel, answers for it.
class CHARTXML_API ChartAxis : public ChartElement {
 public:
  using ChartElement::ChartElement;

  ChartElement getPositionAesthetic() const;
  ChartDimension getDimension() const;
  bool isCategorical() const override;
};

class CHARTXML_API ChartParameter : public ChartElement {
 public:
  using ChartElement::ChartElement;

  // The parameter's name is a role: that of a facetvariable, or a tag.
  ChartVariable getVariable();
};

class CHARTXML_API ChartGuide : public ChartElement {
 public:
  using ChartElement::ChartElement;

  ChartParameter getFirstParameter() const;
  // That of the first parameter.
  const XMLCh* getName() const override;
};

class CHARTXML_API ChartVariable : public ChartElement {
 public:
  using ChartElement::ChartElement;

  // That a styleby shows it and a legendtarget shows the styleby.
  bool isLegendVariable() const;
};

class CHARTXML_API ChartElementElement : public ChartElement {
 public:
  using ChartElement::ChartElement;

  // The variable's id; null without an element of that tag.
  const XMLCh* getRoleVariable(const XMLCh* role) const;
  bool isRangeBar() const;
  bool isInterpolationLine() const;
  // That it is one of an area and a line that stand in one document.
  bool isDifferenceLine() const;
};

#endif
