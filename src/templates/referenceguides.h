// What the commands of reference lines and bands share: how a guide is dressed, and dressed anew.
#ifndef CHARTXML_REFERENCEGUIDES_H
#define CHARTXML_REFERENCEGUIDES_H

#include "basetemplate.h"

class CTGuideType;
class PlXCoordinates;

namespace referenceguides {

// A position that a command states for a guide.
struct Place {
  // That of the guide; empty when none is stated or no category has the label.
  ChartString value;
  // Whether the value is the label of a category.
  bool isLabel = false;
  bool isStated = false;

  void state(const ChartString& text, bool label);
  // The label becomes the category's raw value, also for the graphs to come.
  void findCategory(const BaseTemplate& queries, const PlXGraph& graph, const XMLCh* role);
};

// The block of a 0-based index. `link` is what a guide in it names: null in a graph with one block,
// which guides needn't name.
struct Block {
  bool exists = false;
  PlXCoordinates* link = nullptr;
};
Block blockAt(const PlXGraph& graph, long index);

// The children style and label of a command, of which the last of each count.
class Looks {
 public:
  // Both outlive it.
  Looks(BaseTemplate& base, const xercesc::DOMElement& command);

  // Dresses a new guide. The label of a level one lies at its left end, any other's at the lower.
  template <class Guide>
  void dress(Guide& guide, bool isLevel) const {
    if (label_) addLabel(guide, isLevel);
    style_.onto(base_.styleOf(guide));
  }
  // Dresses what the guide has: its style, and the labels' if the command has styles for them.
  void restyle(CTGuideType& guide) const;

 private:
  // The last style element of each kind below a label element.
  struct LabelStyles {
    const xercesc::DOMElement* text = nullptr;
    const xercesc::DOMElement* frame = nullptr;
    LabelStyles(const BaseTemplate& base, const xercesc::DOMElement* label);
  };

  void addLabel(CTGuideType& guide, bool isLevel) const;

  BaseTemplate& base_;
  const xercesc::DOMElement* label_;
  LabelStyles labelStyles_;
  BaseTemplate::StyleImport style_;
  BaseTemplate::StyleImport labelText_;
  BaseTemplate::StyleImport labelFrame_;
};

}  // namespace referenceguides

#endif
