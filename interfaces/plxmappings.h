// Single values of an aesthetic: CTAestheticMapping with PlXColorMapping, PlXDashMapping,
// PlXDoubleMapping, PlXIntegerMapping, PlXLengthMapping and PlXSymbolMapping.
#ifndef CHARTXML_PLXMAPPINGS_H
#define CHARTXML_PLXMAPPINGS_H

#include "plxbaseelement.h"

// One value of the data and the look that it has, whatever the rest of the aesthetic says.
class CHARTXML_API CTAestheticMapping : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  // A raw value as text: a category as it stands in the data, or a number.
  const XMLCh* getFrom() const { return text(u"from"); }
  void setFrom(const XMLCh* value) { setText(u"from", value); }
};

// To a colour: "#rrggbb", a colour name or "transparent".
class CHARTXML_API PlXColorMapping : public CTAestheticMapping {
 public:
  using CTAestheticMapping::CTAestheticMapping;
  static const XMLCh _UTF_colorMapping[];

  const XMLCh* getTo() const { return text(u"to"); }
  void setTo(const XMLCh* color) { setText(u"to", color); }
};

// To a dash pattern, in the form of a style's "stroke-dasharray".
class CHARTXML_API PlXDashMapping : public CTAestheticMapping {
 public:
  using CTAestheticMapping::CTAestheticMapping;
  static const XMLCh _UTF_dashMapping[];

  const XMLCh* getTo() const { return text(u"to"); }
  void setTo(const XMLCh* dasharray) { setText(u"to", dasharray); }
};

class CHARTXML_API PlXDoubleMapping : public CTAestheticMapping {
 public:
  using CTAestheticMapping::CTAestheticMapping;
  static const XMLCh _UTF_doubleMapping[];

  // In the units of the aesthetic's low and high.
  double getTo() const { return number(u"to"); }
  void setTo(double value) { setNumber(u"to", value); }
};

// To a number of a fill pattern.
class CHARTXML_API PlXIntegerMapping : public CTAestheticMapping {
 public:
  using CTAestheticMapping::CTAestheticMapping;
  static const XMLCh _UTF_integerMapping[];

  long getTo() const { return integer(u"to"); }
  void setTo(long value) { setInteger(u"to", value); }
};

// To a length such as "8pt" or "5%".
class CHARTXML_API PlXLengthMapping : public CTAestheticMapping {
 public:
  using CTAestheticMapping::CTAestheticMapping;
  static const XMLCh _UTF_lengthMapping[];

  const XMLCh* getTo() const { return text(u"to"); }
  void setTo(const XMLCh* length) { setText(u"to", length); }
};

// To a symbol, in the words of a style's "symbol".
class CHARTXML_API PlXSymbolMapping : public CTAestheticMapping {
 public:
  using CTAestheticMapping::CTAestheticMapping;
  static const XMLCh _UTF_symbolMapping[];

  const XMLCh* getTo() const { return text(u"to"); }
  void setTo(const XMLCh* symbol) { setText(u"to", symbol); }
};

#endif
