// STUB
#ifndef CHARTXML_PLXCOORDINATES_H
#define CHARTXML_PLXCOORDINATES_H

#include "plxbaseelement.h"

class CHARTXML_API PlXScale : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_scale[];
  enum ENUM_method : int { method_linear = 1, method_log = 2, method_power = 3 };
  void setMethod(ENUM_method method) { setWord(u"method", method); }
};

#endif
