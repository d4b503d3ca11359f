// BaseTemplate's import of tick elements, with their marks, labels and grid lines.
#include "basetemplate.h"
#include "formatimport.h"
#include "plxaxis.h"
#include "plxformat.h"
#include "plxstyle.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

// Converted templates write the first of each two in small letters.
constexpr const XMLCh* formatNames[] = {u"numberformat",      u"numberFormat",   u"stringformat",
                                        u"stringFormat",      u"datetimeformat", u"dateTimeFormat",
                                        u"elapsedTimeFormat", u"format"};

// Major and minor ticks have positions alike.
template <class Ticks>
void setPosition(Ticks& ticks, const XMLCh* word) {
  const auto position = wordOf<typename Ticks::ENUM_position>(word);
  if (position) ticks.setPosition(*position);
}

// Major and minor ticks have lengths alike.
template <class Ticks>
void setLength(const BaseTemplate& base, Ticks& ticks, const DOMElement& element) {
  const ChartString length = stated::text(base, &element, PlXUni::_length, stated::Type::Length);
  if (!length.empty()) ticks.setLength(length.xc_str());
}

void setSpacing(const BaseTemplate& command, PlXMajorTicks& ticks, const DOMElement& element) {
  setLength(command, ticks, element);
  const XMLCh* stagger = element.getAttribute(PlXUni::_stagger);
  if (is(stagger, PlXUni::_auto)) {
    ticks.removeStagger();
  } else if (*stagger) {
    ticks.setStagger(stagger);
  }
  if (is(element.getAttribute(PlXUni::_delta), PlXUni::_auto)) {
    ticks.removeDelta();
  } else if (const auto delta = stated::number(command, &element, PlXUni::_delta)) {
    ticks.setDelta(*delta);
  }
  const auto unit = wordOf<PlXMajorTicks::ENUM_deltaUnit>(element.getAttribute(u"deltaUnit"));
  if (unit) ticks.setDeltaUnit(*unit);
  const XMLCh* base = element.getAttribute(PlXUni::_UTF_base);
  if (*base) ticks.setBase(base);
}

void importFormats(BaseTemplate& base, PlXMajorTicks& ticks, const DOMElement& element) {
  for (const XMLCh* name : formatNames) {
    const DOMElement* child = firstDescendant(&element, name);
    if (!child) continue;
    const std::vector<PlXFormat*> formats = ticks.getFormats();
    PlXFormat& format = formats.empty() ? *ticks.addFormat() : *formats.front();
    (base.*formatImportOf(name))(format, child);
  }
}

// Converted templates write these in small letters.
constexpr XMLCh smallGridLines[] = u"gridlines";

const DOMElement* gridLinesOf(const DOMElement* ticks) {
  const DOMElement* gridLines = firstDescendant(ticks, BaseTemplate::_gridLines);
  return gridLines ? gridLines : firstDescendant(ticks, smallGridLines);
}

// That of the lines themselves. A converted template may have that of facets before it.
const DOMElement* lineStyleOf(const DOMElement& gridLines) {
  const DOMElement* style = firstDescendant(&gridLines, PlXUni::_style);
  if (!is(gridLines.getNodeName(), smallGridLines)) return style;
  for (const DOMElement* child = firstElement(&gridLines); child; child = nextElement(child)) {
    if (is(child->getNodeName(), PlXUni::_style)) style = child;
  }
  return style;
}

}  // namespace

const DOMElement* BaseTemplate::ticksElement(const XMLCh* name, const XMLCh* smallName) const {
  const DOMElement* ticks = firstDescendant(command, name);
  return ticks ? ticks : firstDescendant(command, smallName);
}

bool BaseTemplate::setMajorTicks(PlXAxis& axis, const DOMElement* element) {
  if (!element) return false;
  const ChartString role(element->getAttribute(PlXUni::_role));
  if (!doesCoordinateMatch(static_cast<const PlXBaseElement&>(axis), role)) return false;
  const bool styleOnly = isTrue(*element, _styleOnly);
  PlXMajorTicks* ticks = axis.getMajorTicks();
  if (!ticks && !styleOnly) ticks = axis.addMajorTicks();
  if (!ticks) return false;

  setPosition(*ticks, element->getAttribute(PlXUni::_position));
  setSpacing(*this, *ticks, *element);
  if (!styleOnly && !ticks->getGridline() && gridLinesOf(element)) {
    ticks->addGridline();
  }
  importFormats(*this, *ticks, *element);
  styleMajorTicks(*ticks, element);
  return true;
}

bool BaseTemplate::setMinorTicks(PlXAxis& axis, const DOMElement* element) {
  if (!element) return false;
  const ChartString role(element->getAttribute(PlXUni::_role));
  if (!doesCoordinateMatch(static_cast<const PlXBaseElement&>(axis), role)) return false;
  PlXMajorTicks* major = axis.getMajorTicks();
  PlXMinorTicks* ticks = axis.getMinorTicks();
  const bool styleOnly = isTrue(*element, _styleOnly);
  if (!ticks && major && !styleOnly) ticks = axis.addMinorTicks();
  if (!ticks) return false;

  if (!styleOnly) {
    constexpr long usual = 2;
    const auto count = countOf(stated::integer(*this, element, PlXUni::_number).value_or(usual));
    if (count) ticks->setNumber(*count);
    setPosition(*ticks, element->getAttribute(PlXUni::_position));
    setLength(*this, *ticks, *element);
    if (!ticks->getGridline() && gridLinesOf(element)) ticks->addGridline();
  }
  styleMinorTicks(*ticks, element, major);
  return true;
}

void BaseTemplate::styleMajorTicks(PlXMajorTicks& ticks, const DOMElement* element) {
  PlXStyle* mark = ticks.getMarkStyle();
  if (!mark) ticks.setMarkStyle(*(mark = addStyle(ticks, nullptr)));
  const DOMElement* markStyle =
      firstDescendant(firstDescendant(element, PlXUni::_markStyle), PlXUni::_style);
  if (markStyle) importStyle(markStyle, *mark);

  PlXStyle& label = styleOf(ticks);
  PlXStyle* frame = ticks.getTickFrameStyle();
  if (!frame) {
    ticks.setTickFrameStyle(*(frame = addStyle(ticks, nullptr)));
    frame->setVisible(false);
  }
  importNumberedStyles(firstDescendant(element, _tickLabelStyle), label, *frame);

  PlXGridline* gridline = ticks.getGridline();
  if (gridline) styleGridLines(mark, *gridline, gridLinesOf(element));
}

void BaseTemplate::styleMinorTicks(PlXMinorTicks& ticks, const DOMElement* element,
                                   PlXMajorTicks* major) {
  PlXStyle* mark = ticks.getMarkStyle();
  if (!mark) {
    ticks.setMarkStyle(*(mark = addStyle(ticks, nullptr)));
    const PlXStyle* majorMark = major ? major->getMarkStyle() : nullptr;
    if (majorMark && majorMark->isColorPresent()) mark->setColor(majorMark->getColor());
  }
  const DOMElement* markStyle =
      firstDescendant(firstDescendant(element, PlXUni::_markStyle), PlXUni::_style);
  if (markStyle) importStyle(markStyle, *mark);

  PlXGridline* gridline = ticks.getGridline();
  if (gridline) styleGridLines(mark, *gridline, gridLinesOf(element));
}

void BaseTemplate::styleGridLines(PlXStyle* markStyle, PlXGridline& gridline,
                                  const DOMElement* element) {
  if (!element) return;
  PlXStyle* style = gridline.getStyle();
  if (!style) {
    gridline.setStyle(*(style = addStyle(gridline, nullptr)));
    if (markStyle && markStyle->isColorPresent()) style->setColor(markStyle->getColor());
  }
  if (const DOMElement* own = lineStyleOf(*element)) importStyle(own, *style);

  const DOMElement* facetStyle = firstDescendant(element, u"facetStyle");
  const XMLCh* when = facetStyle ? facetStyle->getAttribute(PlXUni::_when) : nullptr;
  if (!when || !*when) return;
  gridline.removeConditionalStyles();
  PlXStyle* conditional = addStyle(gridline, nullptr);
  gridline.addConditionalStyle(when, *conditional);
  if (const DOMElement* own = firstDescendant(facetStyle, PlXUni::_style)) {
    importStyle(own, *conditional);
  }
}
