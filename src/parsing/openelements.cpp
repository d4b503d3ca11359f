#include "openelements.h"

#include <algorithm>

#include <xercesc/framework/psvi/XSAttributeDeclaration.hpp>
#include <xercesc/framework/psvi/XSAttributeUse.hpp>
#include <xercesc/framework/psvi/XSComplexTypeDefinition.hpp>
#include <xercesc/framework/psvi/XSElementDeclaration.hpp>
#include <xercesc/framework/psvi/XSModelGroup.hpp>
#include <xercesc/framework/psvi/XSParticle.hpp>
#include <xercesc/framework/psvi/XSSimpleTypeDefinition.hpp>
#include <xercesc/framework/psvi/XSWildcard.hpp>
#include <xercesc/util/XMLString.hpp>

#include "chartstring.h"
#include "misspelling.h"

using namespace xercesc;

namespace {

std::string utf8(std::u16string_view text) {
  return ChartString(std::u16string(text).c_str()).toUTF8();
}

}  // namespace

std::string OpenElements::enter(const XMLCh* uri, const XMLCh* name, const XMLCh* qualifiedName) {
  open_.push_back({qualifiedName, nullptr, false, {}});
  if (open_.size() == 1) return {};
  Element& parent = open_[open_.size() - 2];
  Element& element = open_.back();
  if (!parent.rules || parent.rules->takesAnyChild) return {};

  const auto child = parent.rules->children.find(name);
  if (child != parent.rules->children.end()) {
    element.rules = rulesOf(child->second->getTypeDefinition());
    // Within an element of a wrong namespace all have it.
    if (!parent.isKnown || XMLString::equals(child->second->getNamespace(), uri)) return {};
    parent.told.push_back(utf8(qualifiedName));
    return "element '" + utf8(qualifiedName) + "' is in the namespace '" + utf8(uri) +
           "', not in '" + utf8(child->second->getNamespace()) + "'";
  }

  std::vector<std::string> names;
  for (const auto& [each, declaration] : parent.rules->children) names.push_back(utf8(each));
  const std::string* meant = misspelling::meantBy(utf8(name), names);
  if (meant) {
    const ChartString tag(meant->c_str());
    element.rules = rulesOf(parent.rules->children.at(tag.xc_str())->getTypeDefinition());
  }
  parent.told.push_back(utf8(qualifiedName));
  return "element '" + parent.told.back() + "' is not allowed in '" + utf8(parent.name) + "'" +
         misspelling::suggestion(meant);
}

void OpenElements::readType(PSVIElement& element) {
  if (!element.getElementDeclaration()) return;
  open_.back().isKnown = true;
  open_.back().rules = rulesOf(element.getTypeDefinition());
}

bool OpenElements::hasTold(const std::string& child) const {
  return !open_.empty() && std::find(open_.back().told.begin(), open_.back().told.end(), child) !=
                               open_.back().told.end();
}

const ElementRules* OpenElements::rulesOf(XSTypeDefinition* type) {
  if (!type || type->getTypeCategory() != XSTypeDefinition::COMPLEX_TYPE) return nullptr;
  const auto [entry, isNew] = known_.try_emplace(type);
  ElementRules& rules = entry->second;
  if (!isNew) return &rules;
  auto* complex = static_cast<XSComplexTypeDefinition*>(type);
  addChildren(complex->getParticle(), rules);
  if (XSAttributeUseList* uses = complex->getAttributeUses()) {
    for (XMLSize_t i = 0; i < uses->size(); ++i) {
      XSAttributeDeclaration* attribute = uses->elementAt(i)->getAttrDeclaration();
      rules.attributes[attribute->getName()] = attribute->getTypeDefinition();
    }
  }
  XSWildcard* any = complex->getAttributeWildcard();
  rules.takesAnyAttribute = any && any->getConstraintType() == XSWildcard::NSCONSTRAINT_ANY;
  return &rules;
}

void OpenElements::addChildren(XSParticle* particle, ElementRules& rules) {
  if (!particle) return;
  switch (particle->getTermType()) {
    case XSParticle::TERM_ELEMENT: {
      XSElementDeclaration* child = particle->getElementTerm();
      rules.children[child->getName()] = child;
      break;
    }
    case XSParticle::TERM_MODELGROUP: {
      XSParticleList* parts = particle->getModelGroupTerm()->getParticles();
      for (XMLSize_t i = 0; i < parts->size(); ++i) addChildren(parts->elementAt(i), rules);
      break;
    }
    case XSParticle::TERM_WILDCARD:
      rules.takesAnyChild = true;
      break;
    case XSParticle::TERM_EMPTY:
      break;
  }
}
