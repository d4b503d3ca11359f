// STUB: classes of other headers, for this tree alone.
#ifndef CHARTXML_STUBS_H
#define CHARTXML_STUBS_H

#include "plxbaseelement.h"

class CHARTXML_API PlXCoordinates : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_coordinates[];
};

class CHARTXML_API PlXFacetLayout : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_facetLayout[];
};

class CHARTXML_API PlXFaceting : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_faceting[];
};

class CHARTXML_API PlXLineGuide : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_lineGuide[];
};

class CHARTXML_API PlXPointGuide : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_pointGuide[];
};

class CHARTXML_API PlXRectangleGuide : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_rectangleGuide[];
};

class CHARTXML_API PlXFunctionGuide : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_functionGuide[];
};

class CHARTXML_API PlXPlaneGuide : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_planeGuide[];
};

class CHARTXML_API PlXFrameGuide : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_frameGuide[];
};

class CHARTXML_API PlXFormat : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_format[];
};

class CHARTXML_API PlXCategoricalDomain : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_categoricalDomain[];
};

class CHARTXML_API PlXIntervalDomain : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_intervalDomain[];
};

class CHARTXML_API PlXStyleCycle : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_styleCycle[];
};

class CHARTXML_API PlXExtensionVis : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_extension[];
};

class CHARTXML_API PlXExtensionSV : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_extension[];
};

class CHARTXML_API PlXExtension : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_extension[];
};

#endif
