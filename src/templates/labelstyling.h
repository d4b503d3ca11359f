// How data labels look: their styles, places, colours and connecting lines.
#ifndef CHARTXML_LABELSTYLING_H
#define CHARTXML_LABELSTYLING_H

#include <optional>
#include <set>
#include <string>

#include "basetemplate.h"
#include "plxlabeling.h"

namespace datalabels {

// What a command says of the labels; they keep what it doesn't say.
struct Look {
  // Elements of the template, null for none: of the text and of the frame around it.
  const xercesc::DOMElement* labelStyleElement = nullptr;
  const xercesc::DOMElement* frameStyleElement = nullptr;
  bool styleOnly = false;
  std::optional<PlXLabelLocation::ENUM_place> horizontal;
  std::optional<PlXLabelLocation::ENUM_place> vertical;
  bool colorByMarker = false;
  std::optional<bool> hidden;
  std::optional<bool> showColliding;
  std::optional<bool> connectingLines;
};

Look readLook(const BaseTemplate& base, const xercesc::DOMElement& command);

// Styles the labels of elements, and gives them the styles that they lack. What the source chart
// states of an object stays as it is.
class Styling {
 public:
  Styling(BaseTemplate& base, const Look& look);

  void style(CTElementType& element);

 private:
  // Of an element, what its labels take over.
  struct Marker {
    ChartString color;
    std::set<std::u16string> aesthetics;
    // The element, or the first label that has just what the element has: the children of an
    // element are many.
    const PlXBaseElement* carrier;
  };

  static Marker markerOf(const CTElementType& element, const PlXStyle& style);

  void styleLabel(CTElementType& element, PlXLabeling& label);
  void giveFrameColors(const CTElementType& element, PlXStyle& frame);
  void place(PlXStyle& text);
  void colorByMarker(PlXLabeling& label, PlXStyle& text, PlXStyle& frame);
  void giveAesthetics(PlXLabeling& label);

  // Writes a property of a style.
  template <class Value>
  void set(PlXStyle& style, bool (PlXStyle::*isPresent)() const, void (PlXStyle::*write)(Value),
           Value value);

  BaseTemplate& base_;
  const Look& look_;
  BaseTemplate::StyleImport labelStyle_;
  BaseTemplate::StyleImport frameStyle_;
  Marker marker_;  // of the present element
};

}  // namespace datalabels

#endif
