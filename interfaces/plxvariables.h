// STUB
#ifndef CHARTXML_PLXVARIABLES_H
#define CHARTXML_PLXVARIABLES_H
#include "plxbaseelement.h"
class CHARTXML_API CTVariableType : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
};
class CHARTXML_API PlXSourceVariable : public CTVariableType {
 public:
  using CTVariableType::CTVariableType;
  static const XMLCh _UTF_sourceVariable[];
};
class CHARTXML_API PlXVariableReference : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_variableReference[];
  CTVariableType* getRef() const { return link<CTVariableType>(u"ref"); }
  void setRef(CTVariableType& variable) { setLink(u"ref", variable); }
};
#endif
