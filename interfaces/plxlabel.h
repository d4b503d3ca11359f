// Labels and their texts: CTLabelType, PlXLabel, CTTextType, PlXText, PlXDescriptionGroup,
// PlXDescription.
#ifndef CHARTXML_PLXLABEL_H
#define CHARTXML_PLXLABEL_H

#include <vector>

#include "plxbaseelement.h"

class PlXDescription;
class PlXDescriptionGroup;
class PlXFormat;
class PlXStyle;
class PlXText;

// What labels are made of: texts and groups of computed texts, shown in document order.
class CHARTXML_API CTLabelType : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
  PlXStyle* getTextFrameStyle() const { return link<PlXStyle>(u"textFrameStyle"); }
  void setTextFrameStyle(PlXStyle& style) { setLink(u"textFrameStyle", style); }
  PlXText* addText() { return add<PlXText>(); }
  std::vector<PlXText*> getTexts() const { return children<PlXText>(); }
  void removeTexts() { removeAll<PlXText>(); }
  // `target`, the element that is described, is given an id if it has none.
  PlXDescriptionGroup* addDescriptionGroup(PlXBaseElement& target);
  std::vector<PlXDescriptionGroup*> getDescriptionGroups() const {
    return children<PlXDescriptionGroup>();
  }
};

class CHARTXML_API PlXLabel : public CTLabelType {
 public:
  using CTLabelType::CTLabelType;
  static const XMLCh _UTF_label[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
};

// One run of text with looks of its own.
class CHARTXML_API CTTextType : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;

  // 0 stands on the line.
  enum ENUM_position : int { position_superscript = 1, position_subscript = 2 };

  // Blanks and line feeds at the ends count.
  const XMLCh* getText() const { return contentOrText(u"text"); }
  void setText(const XMLCh* text) { setTextOverContent(u"text", text); }
  ENUM_position getPosition() const { return word<ENUM_position>(u"position"); }
  void setPosition(ENUM_position position) { setWord(u"position", position); }
  PlXStyle* getStyle() const { return link<PlXStyle>(u"style"); }
  void setStyle(PlXStyle& style) { setLink(u"style", style); }
};

class CHARTXML_API PlXText : public CTTextType {
 public:
  using CTTextType::CTTextType;
  static const XMLCh _UTF_text[];

  const XMLCh* getId() const { return text(u"id"); }
  // Named in full, as the text's own setText() hides the verb.
  void setId(const XMLCh* id) { PlXBaseElement::setText(u"id", id); }
};

// A computed value of the element that its group describes.
class CHARTXML_API PlXDescription : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_description[];

  // The subgroup that is described, as a text; the mean; the number of cases; the standard
  // deviation; the R-squared of a fitted line.
  enum ENUM_name : int {
    name_group = 1,
    name_mean = 5,
    name_count = 6,
    name_standardDeviation = 7,
    name_rSquared = 14
  };

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  ENUM_name getName() const { return word<ENUM_name>(u"name"); }
  void setName(ENUM_name name) { setWord(u"name", name); }
  PlXFormat* addFormat() { return add<PlXFormat>(); }
  PlXFormat* getFormat() const { return child<PlXFormat>(); }
};

// Texts and computed values of an element in one order. The group is repeated for each part of
// the element, with the separator between the repetitions.
class CHARTXML_API PlXDescriptionGroup : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_descriptionGroup[];

  const XMLCh* getId() const { return text(u"id"); }
  void setId(const XMLCh* id) { setText(u"id", id); }
  PlXBaseElement* getTarget() const { return link<PlXBaseElement>(u"target"); }
  void setTarget(PlXBaseElement& target) { setLink(u"target", target); }
  // May hold line feeds.
  const XMLCh* getSeparator() const { return text(u"separator"); }
  void setSeparator(const XMLCh* separator) { setText(u"separator", separator); }
  PlXText* addText() { return add<PlXText>(); }
  std::vector<PlXText*> getTexts() const { return children<PlXText>(); }
  PlXDescription* addDescription(PlXDescription::ENUM_name name);
  std::vector<PlXDescription*> getDescriptions() const { return children<PlXDescription>(); }
};

#endif
