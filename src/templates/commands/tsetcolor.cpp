// setColor aestheticNumber affect, with a child cycle: the colour aesthetics of elements get a list
// of styles, which elements of a kind in a graph share: that of the first of them which has one.
// `affect` tells which colour of the elements' style it changes, main, secondary or both; the main
// one of markers is their second colour. Without a cycle nothing changes.
#include <map>

#include <xercesc/dom/DOM.hpp>

#include "aestheticlists.h"
#include "commands.h"
#include "dialect.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

// 0 for a word that leaves it as it was.
PlXColor::ENUM_affect affectOf(const ChartString& word, const CTElementType& element) {
  const bool isPoint = dynamic_cast<const PlXPoint*>(&element);
  if (word.equals(PlXUni::_both)) return PlXColor::affect_both;
  if (word.equals(PlXUni::_main)) {
    return isPoint ? PlXColor::affect_secondary : PlXColor::affect_main;
  }
  if (word.equals(PlXUni::_secondary)) {
    return isPoint ? PlXColor::affect_main : PlXColor::affect_secondary;
  }
  return {};
}

PlXStyleCycle* firstCycle(const CTElementType& element) {
  for (const PlXColor* color : element.getColors()) {
    if (PlXStyleCycle* styleCycle = color->getCycle()) return styleCycle;
  }
  return nullptr;
}

}  // namespace

bool TSetColor::ProcessCommand() {
  const ChartString affectWord = attribute(u"affect");
  AestheticLists lists(*this);
  for (const PlXGraph* graph : target.getGraphs()) {
    // By the tag of the elements; null where none before has one.
    std::map<ChartString, PlXStyleCycle*> shared;
    std::vector<CTElementType*> elements;
    getAllElements(*graph, elements);
    for (const CTElementType* element : elements) {
      PlXStyleCycle*& first = shared[dialect::localName(element->getImplementation())];
      const PlXColor::ENUM_affect affect = affectOf(affectWord, *element);
      for (PlXColor* color : lists.selected(*element, &CTElementType::getColors)) {
        if (!lists.mayRenew(*color)) continue;
        if (affect) color->setAffect(affect);
        if (first) {
          color->setCycle(*first);
        } else {
          lists.renew(*color);
        }
      }
      if (!first) first = firstCycle(*element);
    }
  }
  return true;
}
