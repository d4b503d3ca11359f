#include "chartschema.h"

#include "schemadocument.h"

using namespace schemadocument;

namespace {

// Types and groups of attributes, by their names.
using Definitions = std::map<std::string, const DocumentNode*>;

Definitions definitionsOf(const DocumentNode& schema, std::string_view kind) {
  Definitions result;
  for (const DocumentNode* each : descendants(schema, kind)) {
    const std::string name = attribute(*each, "name");
    if (!name.empty()) result[name] = each;
  }
  return result;
}

void addAttributes(const DocumentNode& holder, const Definitions& groups, DialectElement& element) {
  for (const DocumentNode* each : descendants(holder, "attribute")) {
    element.attributes[attribute(*each, "name")] = {documentationOf(*each),
                                                    attribute(*each, "type") == "link"};
  }
  for (const DocumentNode* each : descendants(holder, "attributeGroup")) {
    const auto group = groups.find(attribute(*each, "ref"));
    if (group != groups.end()) addAttributes(*group->second, groups, element);
  }
}

}  // namespace

ChartElements readChartElements() {
  const SchemaDocument document("grafo-2.9.xsd");
  const Definitions types = definitionsOf(document.root(), "complexType");
  const Definitions groups = definitionsOf(document.root(), "attributeGroup");
  ChartElements result;
  for (const DocumentNode* each : descendants(document.root(), "element")) {
    const auto type = types.find(attribute(*each, "type"));
    const auto [element, isNew] = result.try_emplace(attribute(*each, "name"));
    if (!isNew || type == types.end()) continue;
    addAttributes(*type->second, groups, element->second);
    element->second.holdsText = attribute(*type->second, "mixed") == "true";
    for (const DocumentNode* any : descendants(*type->second, "anyAttribute")) {
      if (attribute(*any, "namespace") == "##any") element->second.isFree = true;
    }
  }
  return result;
}
