// STUB
#ifndef CHARTXML_PLXSTUBS_H
#define CHARTXML_PLXSTUBS_H
#include "plxbaseelement.h"
class CHARTXML_API PlXLabel : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_label[];
};
class CHARTXML_API PlXFormat : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_format[];
};
#endif
