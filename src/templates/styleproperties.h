// The properties of styles, as elements of templates state them: what is written, in which order,
// and what keeps it from being written.
#ifndef CHARTXML_STYLEPROPERTIES_H
#define CHARTXML_STYLEPROPERTIES_H

#include <vector>

#include "basetemplate.h"
#include "chartstring.h"

namespace styleproperties {

// What an element states of a style, to be written to each of several styles.
struct Statement {
  void (*write)(PlXStyle&, const XMLCh* attribute, const ChartString& text);
  const XMLCh* attribute;
  ChartString text;
  bool (*isPinned)(const PlXStyle& source);
};

// A style element, read once. Values that aren't of their kind are none.
struct Statements {
  std::vector<Statement> properties;  // those that a key may state, in the order of writing
  std::vector<Statement> withoutKey;  // the rest, which is written behind all else
  ChartString stroke;                 // these two keys say what the style's users decide
  ChartString fill;
};
Statements read(const BaseTemplate& command, const xercesc::DOMElement& element,
                BaseTemplate::StyleImport::Painting painting);

// Writes what the source's style, which may be null, doesn't state.
void write(const std::vector<Statement>& stated, PlXStyle& style, const PlXStyle* source);

// Writes what a child glyph, intervalGlyph or shadow states, and resets what it doesn't name. False
// for any other child.
bool writeChild(const BaseTemplate& command, const xercesc::DOMElement& child, PlXStyle& style,
                const PlXStyle* source);

}  // namespace styleproperties

#endif
