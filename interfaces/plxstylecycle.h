// The lists of styles that a chart steps through for the categories of a variable: PlXStyleCycle,
// PlXCycle.
#ifndef CHARTXML_PLXSTYLECYCLE_H
#define CHARTXML_PLXSTYLECYCLE_H

#include <vector>

#include "plxbaseelement.h"

class PlXCycle;
class PlXExtension;
class PlXStyle;

// The cycles of one variable, or the chart's stock of cycles.
class CHARTXML_API PlXStyleCycle : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_styleCycle[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXCycle* addCycle() { return add<PlXCycle>(); }
  std::vector<PlXCycle*> getCycles() const { return children<PlXCycle>(); }
  void removeCycles() { removeAll<PlXCycle>(); }
  PlXExtension* addExtension() { return add<PlXExtension>(); }
  PlXExtension* getExtension() const { return child<PlXExtension>(); }
  void removeExtensions() { removeAll<PlXExtension>(); }
};

// One list: the first category gets the first style, and behind the last it starts over. Its
// styles are its own, mostly without ids.
class CHARTXML_API PlXCycle : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_cycle[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXStyle* addStyle() { return add<PlXStyle>(); }
  std::vector<PlXStyle*> getStyles() const { return children<PlXStyle>(); }
  void removeStyles() { removeAll<PlXStyle>(); }
};

#endif
