#include "accessorwalk.h"

#include <algorithm>
#include <cctype>
#include <deque>

#include "domwalk.h"

using namespace xercesc;

namespace {

bool isSpelled(const XMLCh* name, std::string_view accessor) {
  std::string result;
  for (; *name; ++name) {
    if (*name != u'-' && *name != u'_') result += static_cast<char>(std::tolower(*name));
  }
  return result == accessor;
}

template <class Row>
const std::vector<Row>& rowsOf(const dialect::Element& row, std::vector<Row> (*make)()) {
  static const std::vector<Row> all = make();
  static std::map<const dialect::Element*, std::vector<Row>> byElement;
  const auto [hit, isNew] = byElement.try_emplace(&row);
  std::string_view name = isNew ? row.className : "";
  for (; !name.empty(); name = baseClasses.at(name)) {
    std::copy_if(all.begin(), all.end(), std::back_inserter(hit->second),
                 [&](const Row& one) { return one.className == name; });
  }
  return hit->second;
}

}  // namespace

const std::vector<Property>& propertiesOf(const dialect::Element& row) {
  return rowsOf(row, &makeProperties);
}

const std::vector<Children>& childrenOf(const dialect::Element& row) {
  return rowsOf(row, &makeChildren);
}

std::vector<const dialect::Attribute*> attributesOf(const dialect::Element& row) {
  std::vector<const dialect::Attribute*> result;
  for (const auto& attribute : row.attributes) result.push_back(&attribute);
  if (!row.group) return result;
  for (const auto& attribute : row.group->attributes) result.push_back(&attribute);
  return result;
}

const dialect::Attribute* attributeOf(const dialect::Element& row, const Property& property) {
  for (const dialect::Attribute* attribute : attributesOf(row)) {
    if (isSpelled(attribute->name, property.name)) return attribute;
  }
  return nullptr;
}

const XMLCh* tagOf(const dialect::Element& row, const Children& children) {
  for (const dialect::Child& child : row.children) {
    if (isSpelled(child.tag, children.name)) return child.tag;
  }
  return nullptr;
}

Chart::Chart() : document(ChartBase::createPlXDocument(nullptr)) {
  DOMElement* top = document->getDocumentElement();
  std::deque<const dialect::Element*> open = {dialect::find(top)};
  full_.emplace(open.front(), top);
  for (; !open.empty(); open.pop_front()) {
    for (const dialect::Child& child : open.front()->children) {
      DOMElement* element = document->createElementNS(top->getNamespaceURI(), child.tag);
      full_.at(open.front())->appendChild(element);
      const dialect::Element* row = dialect::find(child.tag, open.front()->tag);
      if (row && full_.emplace(row, element).second) open.push_back(row);
    }
  }
  root = std::make_unique<PlXVisualization>(top);
}

Chart::Chart(const std::string& text) : document(base.parseDocument(text)) {
  if (document) root = std::make_unique<PlXVisualization>(document->getDocumentElement());
}

Chart::~Chart() {
  root.reset();
  if (!full_.empty()) document->release();
}

std::vector<PlXBaseElement*> Chart::objects() const {
  std::vector<PlXBaseElement*> result;
  walkElements(document, [&](DOMElement* element) {
    PlXBaseElement* object = root->objectOf(element);
    if (object) result.push_back(object);
    return object != nullptr;
  });
  return result;
}
