// Styles.
#ifndef CHARTXML_PLXSTYLE_H
#define CHARTXML_PLXSTYLE_H

#include "plxbaseelement.h"

class CHARTXML_API PlXStyle : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_style[];
};

#endif
