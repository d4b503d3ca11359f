// BaseTemplate's import of label elements: their text and their two styles.
#include "basetemplate.h"
#include "chartbase.h"
#include "facstdictionary.h"
#include "findings.h"
#include "installationcodepage.h"
#include "pathfactory.h"
#include "plxlabel.h"
#include "plxstyle.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

void BaseTemplate::importNumberedStyles(const DOMElement* element, PlXStyle& first,
                                        PlXStyle& second) {
  forDescendants(element, PlXUni::_style, [&](const DOMElement* style) {
    importStyle(style, stated::selection(*this, style, PlXUni::_number) == 1 ? second : first);
  });
}

void BaseTemplate::styleLabel(PlXLabel& label, const DOMElement* element) {
  PlXStyle* text = label.getStyle();
  if (!text) {
    label.setStyle(*(text = addStyle(label, nullptr)));
    text->setColor(PlXStyle::_black);
  }
  PlXStyle* frame = label.getTextFrameStyle();
  if (!frame) {
    label.setTextFrameStyle(*(frame = addStyle(label, nullptr)));
    frame->setColor(PlXStyle::_transparent);
    frame->setColor2(PlXStyle::_transparent);
    frame->setVisible(false);
  }
  importNumberedStyles(element, *text, *frame);
}

// A command may give one text to the labels of many graphs.
ChartString BaseTemplate::filledText(const DOMElement& element) const {
  if (findings_ && findings_->filled.first == &element) return findings_->filled.second;
  ChartString text;
  for (const DOMNode* node = element.getFirstChild(); node; node = node->getNextSibling()) {
    const short kind = node->getNodeType();
    if (kind == DOMNode::TEXT_NODE || kind == DOMNode::CDATA_SECTION_NODE) {
      text.append(node->getNodeValue());
    }
  }
  // White space with a line end is how the template is laid out.
  if (text.view().find_first_not_of(u" \t\r\n") == text.view().npos &&
      text.view().find(u'\n') != text.view().npos) {
    text.clear();
  }
  FacSTDictionary dictionary(PathFactory::getPathInstance(3)->getLanguageResourcePath());
  dictionary.SetProcedure("GRAPH");
  ChartBase::updateText(text, &dictionary, installationCodePage());
  if (findings_) findings_->filled = {&element, text};
  return text;
}

void BaseTemplate::mergeText(const DOMElement* element, PlXLabel& label) {
  if (!element) return;
  const ChartString text = filledText(*element);
  if (text.empty()) return;
  label.removeTexts();
  label.addText()->setText(text.xc_str());
}
