// The values that elements of a template state, by their kinds. What isn't one of its kind as a
// whole counts as not stated, everywhere: "2,5" is no number, "1.5" no whole number and "#12" no
// colour. A null element states nothing.
#ifndef CHARTXML_STATEDVALUES_H
#define CHARTXML_STATEDVALUES_H

#include <optional>

#include "basetemplate.h"
#include "dialect.h"

namespace stated {

using dialect::Type;

// Drops a value, which is told, and answers the empty text: all that a command drops for its form
// passes here.
ChartString drop(const BaseTemplate& command, const XMLCh* name, const ChartString& text);

// A text that the command's template states under a name, of an attribute or a key; dropped when it
// isn't of the type.
ChartString checked(const BaseTemplate& command, const XMLCh* name, const ChartString& text,
                    Type type);
// The same for an attribute of a chart's elements, which may have words.
ChartString checked(const BaseTemplate& command, const dialect::Attribute& attribute,
                    const ChartString& text);

// The attribute as it stands; empty when there is none.
ChartString text(const BaseTemplate& command, const xercesc::DOMElement* element, const XMLCh* name,
                 Type type);
std::optional<double> number(const BaseTemplate& command, const xercesc::DOMElement* element,
                             const XMLCh* name);
// The nearest limit for one out of range.
std::optional<long> integer(const BaseTemplate& command, const xercesc::DOMElement* element,
                            const XMLCh* name);
// One that selects among several: 0, for all of them or the first, when none is stated.
long selection(const BaseTemplate& command, const xercesc::DOMElement* element, const XMLCh* name);
// The attribute, or else the first parameter below the element that states a value of the name.
ChartString textOrParameter(const BaseTemplate& command, const xercesc::DOMElement& element,
                            const XMLCh* name, Type type);
std::optional<double> numberOrParameter(const BaseTemplate& command,
                                        const xercesc::DOMElement& element, const XMLCh* name);

}  // namespace stated

#endif
