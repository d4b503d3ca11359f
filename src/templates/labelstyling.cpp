#include "labelstyling.h"

#include <algorithm>

#include <xercesc/dom/DOM.hpp>

#include "chartstylevalue.h"
#include "dialect.h"
#include "domwalk.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace datalabels {
namespace {

using Place = PlXLabelLocation::ENUM_place;

// Another word changes nothing.
void readPlace(const ChartString& word, std::optional<Place>& place) {
  const std::optional<Place> read = wordOf<Place>(word.xc_str());
  if (read) place = read;
}

// None but for "true" and "false".
std::optional<bool> readFlag(const DOMElement& command, const XMLCh* name) {
  const XMLCh* text = command.getAttribute(name);
  if (is(text, PlXUni::_true)) return true;
  return is(text, PlXUni::_false) ? std::optional(false) : std::nullopt;
}

// None for an empty text; all but "true" is false.
std::optional<bool> readAnyFlag(const DOMElement& command, const XMLCh* name) {
  const XMLCh* text = command.getAttribute(name);
  return *text ? std::optional(is(text, PlXUni::_true)) : std::nullopt;
}

bool isUncolored(const ChartString& color) {
  return color.empty() || color.equals(PlXStyle::_transparent);
}

// Markers are too small for a box to stand on them.
bool isMarker(const CTElementType& element) {
  if (dynamic_cast<const PlXPoint*>(&element) || dynamic_cast<const PlXSchema*>(&element)) {
    return true;
  }
  const PlXStyle* style = element.getStyle();
  if (!style || !dynamic_cast<const PlXInterval*>(&element)) return false;
  const ChartString symbol(style->getSymbol());
  return !symbol.empty() && !symbol.equals(PlXUni::_square);
}

// By what the copied aesthetics of an element or a label show, and how.
std::set<std::u16string> aestheticsOf(const PlXBaseElement& holder) {
  static constexpr const XMLCh* copied[] = {u"styleBy", u"colorComponent", u"color", u"size"};
  std::set<std::u16string> keys;
  for (const DOMElement* child = firstElement(holder.getImplementation()); child;
       child = nextElement(child)) {
    const XMLCh* tag = dialect::localName(child);
    if (std::ranges::none_of(copied, [&](const XMLCh* each) { return is(tag, each); })) continue;
    std::u16string key(tag);
    for (const XMLCh* name : {u"variable", u"cycle"}) {
      key.append(1, u' ').append(child->getAttribute(name));
    }
    keys.insert(std::move(key));
  }
  return keys;
}

}  // namespace

Look readLook(const BaseTemplate& base, const DOMElement& command) {
  Look look;
  forDescendants(&command, PlXUni::_style, [&](const DOMElement* style) {
    const long number = stated::selection(base, style, PlXUni::_number);
    (number == 1 ? look.frameStyleElement : look.labelStyleElement) = style;
  });
  look.styleOnly = base.getBooleanAttribute(&command, BaseTemplate::_styleOnly, false);
  const ChartStyleValue position(command.getAttribute(PlXUni::_position));
  readPlace(position.labelLocationX, look.horizontal);
  readPlace(position.labelLocationY, look.vertical);
  readPlace(command.getAttribute(PlXUni::_labelLocationHorizontal), look.horizontal);
  readPlace(command.getAttribute(PlXUni::_labelLocationVertical), look.vertical);
  look.colorByMarker = base.getBooleanAttribute(&command, u"colorByMarker", false);
  look.hidden = readFlag(command, u"hidden");
  look.showColliding = readAnyFlag(command, PlXUni::_showCollidingLabels);
  look.connectingLines = readAnyFlag(command, PlXUni::_connectingLines);
  return look;
}

// A text has one colour: that of the outline where a surface has none.
Styling::Marker Styling::markerOf(const CTElementType& element, const PlXStyle& style) {
  Marker marker{style.getColor(), aestheticsOf(element), &element};
  if (isUncolored(marker.color)) marker.color = style.getColor2();
  return marker;
}

Styling::Styling(BaseTemplate& base, const Look& look)
    : base_(base),
      look_(look),
      labelStyle_(base, look.labelStyleElement),
      frameStyle_(base, look.frameStyleElement) {}

template <class Value>
void Styling::set(PlXStyle& style, bool (PlXStyle::*isPresent)() const,
                  void (PlXStyle::*write)(Value), Value value) {
  const PlXStyle* source = base_.sourceOf(style);
  if (!source || !(source->*isPresent)()) (style.*write)(value);
}

void Styling::style(CTElementType& element) {
  const std::vector<PlXLabeling*> labels = element.getLabelings();
  if (!labels.empty()) marker_ = markerOf(element, base_.styleOf(element));
  for (PlXLabeling* label : labels) styleLabel(element, *label);
  const CTElementType* source = base_.sourceOf(element);
  const bool isPinned = source && *source->GetAttribute(PlXUni::_showCollidingLabels);
  if (look_.showColliding && !isPinned) element.setShowCollidingLabels(*look_.showColliding);
}

void Styling::styleLabel(CTElementType& element, PlXLabeling& label) {
  PlXStyle& text = base_.styleOf(label);
  PlXStyle& frame =
      base_.ensuredStyle(label, &PlXLabeling::getTextFrameStyle, &PlXLabeling::setTextFrameStyle);
  giveFrameColors(element, frame);
  labelStyle_.onto(text);
  if (!look_.styleOnly || !dynamic_cast<PlXSchema*>(&element)) frameStyle_.onto(frame);
  place(text);
  const PlXLabeling* source = base_.sourceOf(label);
  const bool isPinned = source && *source->GetAttribute(PlXUni::_connectingLines);
  if (look_.connectingLines && !isPinned) label.setConnectingLines(*look_.connectingLines);
  if (look_.colorByMarker) colorByMarker(label, text, frame);
  if (!look_.hidden) return;
  set(text, &PlXStyle::isVisiblePresent, &PlXStyle::setVisible, !*look_.hidden);
  set(frame, &PlXStyle::isVisiblePresent, &PlXStyle::setVisible, !*look_.hidden);
}

void Styling::giveFrameColors(const CTElementType& element, PlXStyle& frame) {
  if (frame.isColorPresent() && frame.isColor2Present()) return;
  const bool onMarker = isMarker(element);
  if (!frame.isColorPresent()) {
    set(frame, &PlXStyle::isColorPresent, &PlXStyle::setColor,
        onMarker ? PlXStyle::_transparent : PlXStyle::_white);
  }
  if (!frame.isColor2Present()) {
    set(frame, &PlXStyle::isColor2Present, &PlXStyle::setColor2,
        onMarker ? PlXStyle::_transparent : PlXStyle::_black);
  }
}

void Styling::place(PlXStyle& text) {
  if (look_.horizontal) {
    set(text, &PlXStyle::isLabelLocationHorizontalPresent, &PlXStyle::setLabelLocationHorizontal,
        static_cast<PlXStyle::ENUM_labelLocationHorizontal>(*look_.horizontal));
  }
  if (look_.vertical) {
    set(text, &PlXStyle::isLabelLocationVerticalPresent, &PlXStyle::setLabelLocationVertical,
        static_cast<PlXStyle::ENUM_labelLocationVertical>(*look_.vertical));
  }
}

void Styling::colorByMarker(PlXLabeling& label, PlXStyle& text, PlXStyle& frame) {
  if (!marker_.color.empty()) {
    set(text, &PlXStyle::isColorPresent, &PlXStyle::setColor, marker_.color.xc_str());
    set(frame, &PlXStyle::isColor2Present, &PlXStyle::setColor2,
        static_cast<const XMLCh*>(PlXStyle::_transparent));
  }
  giveAesthetics(label);
  base_.changeColor2ToColor(label, false);
}

// A label that has them from an earlier run gets no second ones.
void Styling::giveAesthetics(PlXLabeling& label) {
  const std::set<std::u16string> own = aestheticsOf(label);
  if (std::ranges::includes(own, marker_.aesthetics)) return;
  base_.cloneElementAesthetics(*marker_.carrier, label, false);
  if (own.empty()) marker_.carrier = &label;
}

}  // namespace datalabels
