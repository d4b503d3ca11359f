// What is hidden in the panels of a scatterplot matrix: on the diagonal, where a variable meets
// itself (BaseTemplate::_when), or beside it.
#ifndef CHARTXML_MATRIXPANELS_H
#define CHARTXML_MATRIXPANELS_H

#include "basetemplate.h"
#include "plxstyle.h"

namespace matrixpanels {

inline constexpr XMLCh beside[] = u"facet1!=facet2";

// Hides an element or a guide where the condition holds, by a style of its own.
template <class T>
void hideWhere(BaseTemplate& base, T& object, const XMLCh* condition) {
  PlXStyle* style = base.addStyle(object, nullptr);
  style->setVisible(false);
  object.addConditionalStyle(condition, *style);
}

}  // namespace matrixpanels

#endif
