// STUB
#ifndef CHARTXML_PLXELEMENTS_H
#define CHARTXML_PLXELEMENTS_H
#include "plxbaseelement.h"
class CHARTXML_API PlXConditionalStyle : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_conditionalStyle[];
  const XMLCh* getWhen() const { return text(u"when"); }
  void setWhen(const XMLCh* condition) { setText(u"when", condition); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
};
#endif
