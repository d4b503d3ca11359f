// What the commands share that give aesthetics of elements a new list of styles.
#ifndef CHARTXML_AESTHETICLISTS_H
#define CHARTXML_AESTHETICLISTS_H

#include <vector>

#include "basetemplate.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "stylecycles.h"

// One command's attribute aestheticNumber and its last child cycle.
class AestheticLists {
 public:
  // Of the aesthetics of one kind on one element.
  template <class T>
  using Getter = std::vector<T*> (CTElementType::*)() const;

  explicit AestheticLists(BaseTemplate& base);

  // Calls `visit(element)` for all elements of the chart's own graphs.
  template <class Visit>
  void forElements(Visit visit) const {
    for (const PlXGraph* graph : base_.target.getGraphs()) {
      std::vector<CTElementType*> elements;
      BaseTemplate::getAllElements(*graph, elements);
      for (CTElementType* element : elements) visit(*element);
    }
  }

  // Those that the number means: all for 0, else the one of that 1-based position.
  template <class T>
  std::vector<T*> selected(const CTElementType& element, Getter<T> get) const {
    std::vector<T*> all = (element.*get)();
    if (number_ == 0) return all;
    if (number_ < 0 || static_cast<std::size_t>(number_) > all.size()) return {};
    return {all[number_ - 1]};
  }

  // True when the object of the source chart that has its id has a list of styles.
  bool isPinned(const CTAesthetic& aesthetic) const;
  bool mayRenew(const CTAesthetic& aesthetic) const {
    return !lists_.empty() && !isPinned(aesthetic);
  }
  // Gives it a style cycle of its own with the command's list.
  template <class T>
  void renew(T& aesthetic) {
    aesthetic.setCycle(newStyleCycle());
  }

  // A whole command: renews the aesthetics of a kind.
  template <class T>
  bool renewAll(Getter<T> get) {
    forElements([&](const CTElementType& element) {
      for (T* aesthetic : selected(element, get)) {
        if (mayRenew(*aesthetic)) renew(*aesthetic);
      }
    });
    return true;
  }

  // A whole command: puts aesthetics of another kind in the place of colours, with the variable and
  // all else that both kinds have, and with the id.
  template <class T>
  bool replaceColors(T* (CTElementType::*add)()) {
    forElements([&](CTElementType& element) {
      for (PlXColor* color : selected(element, &CTElementType::getColors)) {
        if (!mayRenew(*color)) continue;
        T& aesthetic = *(element.*add)();
        takePlace(aesthetic, *color, element);
        renew(aesthetic);
      }
    });
    return true;
  }

 private:
  PlXStyleCycle& newStyleCycle();
  void takePlace(CTAesthetic& aesthetic, PlXColor& color, CTElementType& element) const;

  BaseTemplate& base_;
  long number_;
  stylecycles::Lists lists_;
};

#endif
