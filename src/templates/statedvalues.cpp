#include "statedvalues.h"

#include <string>

#include <xercesc/dom/DOM.hpp>

#include "templatexml.h"

using namespace xercesc;

namespace stated {

namespace {

std::optional<double> numberOf(const ChartString& text) {
  return text.empty() ? std::nullopt : std::optional(text.convertToDouble());
}

}  // namespace

ChartString drop(const BaseTemplate& command, const XMLCh* name, const ChartString& text) {
  const std::string note = '\'' + ChartString(name).toUTF8() + "' can't be";
  command.tell(note.c_str(), text);
  return {};
}

ChartString checked(const BaseTemplate& command, const XMLCh* name, const ChartString& text,
                    Type type) {
  if (text.empty() || dialect::isValue(type, text.view())) return text;
  return drop(command, name, text);
}

ChartString checked(const BaseTemplate& command, const dialect::Attribute& attribute,
                    const ChartString& text) {
  if (text.empty() || dialect::isValue(attribute, text.view())) return text;
  return drop(command, attribute.name, text);
}

ChartString text(const BaseTemplate& command, const DOMElement* element, const XMLCh* name,
                 Type type) {
  if (!element) return {};
  return checked(command, name, element->getAttribute(name), type);
}

std::optional<double> number(const BaseTemplate& command, const DOMElement* element,
                             const XMLCh* name) {
  return numberOf(text(command, element, name, Type::Number));
}

std::optional<long> integer(const BaseTemplate& command, const DOMElement* element,
                            const XMLCh* name) {
  const ChartString digits = text(command, element, name, Type::Integer);
  return digits.empty() ? std::nullopt : std::optional(digits.convertToSignedInteger());
}

long selection(const BaseTemplate& command, const DOMElement* element, const XMLCh* name) {
  return integer(command, element, name).value_or(0);
}

ChartString textOrParameter(const BaseTemplate& command, const DOMElement& element,
                            const XMLCh* name, Type type) {
  ChartString found = text(command, &element, name, type);
  templatexml::forDescendants(&element, PlXUni::_parameter, [&](const DOMElement* parameter) {
    if (found.empty() && templatexml::is(parameter->getAttribute(PlXUni::_name), name)) {
      found = text(command, parameter, PlXUni::_value, type);
    }
  });
  return found;
}

std::optional<double> numberOrParameter(const BaseTemplate& command, const DOMElement& element,
                                        const XMLCh* name) {
  return numberOf(textOrParameter(command, element, name, Type::Number));
}

}  // namespace stated
