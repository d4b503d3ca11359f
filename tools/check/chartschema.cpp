#include "chartschema.h"

#include "schemadocument.h"

using namespace xercesc;
using namespace schemadocument;

namespace {

// Types and groups of attributes, by their names.
using Definitions = std::map<std::string, const DOMElement*>;

Definitions definitionsOf(const DOMElement& schema, const XMLCh* kind) {
  Definitions result;
  for (const DOMElement* each : descendants(schema, kind)) {
    const std::string name = attribute(*each, u"name");
    if (!name.empty()) result[name] = each;
  }
  return result;
}

void addAttributes(const DOMElement& holder, const Definitions& groups, DialectElement& element) {
  for (const DOMElement* each : descendants(holder, SchemaSymbols::fgELT_ATTRIBUTE)) {
    element.attributes[attribute(*each, u"name")] = {documentationOf(*each),
                                                     attribute(*each, u"type") == "link"};
  }
  for (const DOMElement* each : descendants(holder, SchemaSymbols::fgELT_ATTRIBUTEGROUP)) {
    const auto group = groups.find(attribute(*each, u"ref"));
    if (group != groups.end()) addAttributes(*group->second, groups, element);
  }
}

}  // namespace

ChartElements readChartElements() {
  const SchemaDocument document("grafo-2.9.xsd");
  const Definitions types = definitionsOf(document.root(), SchemaSymbols::fgELT_COMPLEXTYPE);
  const Definitions groups = definitionsOf(document.root(), SchemaSymbols::fgELT_ATTRIBUTEGROUP);
  ChartElements result;
  for (const DOMElement* each : descendants(document.root(), SchemaSymbols::fgELT_ELEMENT)) {
    const auto type = types.find(attribute(*each, u"type"));
    const auto [element, isNew] = result.try_emplace(attribute(*each, u"name"));
    if (!isNew || type == types.end()) continue;
    addAttributes(*type->second, groups, element->second);
    element->second.holdsText = attribute(*type->second, u"mixed") == "true";
    for (const DOMElement* any : descendants(*type->second, SchemaSymbols::fgELT_ANYATTRIBUTE)) {
      if (attribute(*any, u"namespace") == "##any") element->second.isFree = true;
    }
  }
  return result;
}
