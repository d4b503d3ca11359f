#include "plxbaseelement.h"

#include <string_view>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLString.hpp>

#include "attributetext.h"
#include "changejournal.h"
#include "chartstring.h"
#include "dialect.h"
#include "domwalk.h"
#include "modelstore.h"
#include "numbertext.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "plxvariables.h"
#include "utf.h"

using namespace xercesc;

namespace {

const XMLCh idName[] = u"id";

std::u16string asciiText(const std::string& text) {
  return {text.begin(), text.end()};
}

// Namespace and prefix of a new child are its parent's, as a parser would read it.
DOMElement* newElement(const DOMElement& parent, const XMLCh* tag) {
  std::u16string name;
  if (const XMLCh* prefix = parent.getPrefix(); prefix && *prefix) {
    name.append(prefix).append(1, u':');
  }
  name += tag;
  return parent.getOwnerDocument()->createElementNS(parent.getNamespaceURI(), name.c_str());
}

}  // namespace

PlXBaseElement::PlXBaseElement(DOMElement* element, PlXVisualization* owner)
    : element_(element), visualization_(owner) {}

PlXBaseElement::~PlXBaseElement() = default;

PlXVisualization* PlXBaseElement::getVisualization() const {
  if (visualization_ || !element_) return visualization_;
  // The root's object is the visualization itself, or a graph in charts of the older form.
  const DOMElement* root = element_->getOwnerDocument()->getDocumentElement();
  const void* object = root ? root->getUserData(dialect::localName(root)) : nullptr;
  return object ? static_cast<const PlXBaseElement*>(object)->visualization_ : nullptr;
}

PlXBaseElement* PlXBaseElement::objectOf(DOMElement* element) const {
  PlXVisualization* visualization = element ? getVisualization() : nullptr;
  return visualization ? visualization->store().objectOf(element) : nullptr;
}

const XMLCh* PlXBaseElement::GetAttribute(const XMLCh* name) const {
  return text(name);
}

bool PlXBaseElement::SetAttribute(const XMLCh* name, const XMLCh* value) {
  if (!element_ || !name || !XMLChar1_0::isValidName(name, XMLString::stringLen(name))) {
    return false;
  }
  setAttribute(name, value);
  return true;
}

void PlXBaseElement::importAttributes(const DOMNode* node) {
  const DOMNamedNodeMap* attributes = node && element_ ? node->getAttributes() : nullptr;
  if (!attributes) return;
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    const DOMNode* attribute = attributes->item(i);
    const XMLCh* name = attribute->getNodeName();
    const XMLCh* value = attribute->getNodeValue();
    // Declarations and prefixes mean nothing, or something else, outside of the template.
    const XMLCh* space = attribute->getNamespaceURI();
    if (space && *space) continue;
    if (XMLString::equals(name, idName) && !isFreeId(value)) continue;
    setAttribute(name, value);
  }
}

DOMElement* PlXBaseElement::getElementById(const XMLCh* id) const {
  if (!element_ || !id || !*id) return nullptr;
  const DOMDocument* document =
      visualization_ ? visualization_->store().document() : element_->getOwnerDocument();
  return document->getElementById(id);
}

bool PlXBaseElement::isFreeId(const XMLCh* id) const {
  const std::u16string_view text(id);
  if (text.empty() || text.find_first_of(u" \t\r\n") != text.npos) return false;
  const DOMElement* holder = getElementById(id);
  return !holder || holder == element_;
}

bool PlXBaseElement::doesIdExist(const XMLCh* id) const {
  return getElementById(id) != nullptr;
}

PlXStyle* PlXBaseElement::getStyleById(const XMLCh* id) const {
  if (!visualization_ || !id || !*id) return dynamic_cast<PlXStyle*>(objectOf(getElementById(id)));
  return dynamic_cast<PlXStyle*>(visualization_->store().objectOfId(id));
}

const XMLCh* PlXBaseElement::text(const XMLCh* name) const {
  const DOMNode* attribute = element_ ? element_->getAttributeNode(name) : nullptr;
  return attribute ? attributeText(*attribute) : XMLUni::fgZeroLenString;
}

void PlXBaseElement::setText(const XMLCh* name, const XMLCh* value) {
  setAttribute(name, value);
}

bool PlXBaseElement::flag(const XMLCh* name, bool absent) const {
  if (!present(name)) return absent;
  const XMLCh* value = text(name);
  return XMLString::equals(value, u"true") || XMLString::equals(value, u"1");
}

void PlXBaseElement::setFlag(const XMLCh* name, bool value) {
  setAttribute(name, value ? u"true" : u"false");
}

double PlXBaseElement::number(const XMLCh* name) const {
  return numbertext::read(text(name)).value_or(0);
}

void PlXBaseElement::setNumber(const XMLCh* name, double value) {
  setAttribute(name, asciiText(numbertext::shortest(value)).c_str());
}

long PlXBaseElement::integer(const XMLCh* name) const {
  return ChartString(text(name)).convertToSignedInteger();
}

void PlXBaseElement::setInteger(const XMLCh* name, long value) {
  setAttribute(name, asciiText(std::to_string(value)).c_str());
}

bool PlXBaseElement::present(const XMLCh* name) const {
  return element_ && element_->hasAttribute(name);
}

void PlXBaseElement::clear(const XMLCh* name) {
  setAttribute(name, nullptr);
}

void PlXBaseElement::setAttribute(const XMLCh* name, const XMLCh* value) {
  if (!element_) return;
  PlXVisualization* visualization = getVisualization();
  ChangeJournal* journal = visualization ? visualization->store().journal() : nullptr;
  if (journal) journal->beforeAttribute(*element_, name);
  const bool isId = XMLString::equals(name, idName);
  if (isId) withdrawId(element_);
  // An empty identifier is none, and makes a document that no parser takes.
  if (!value || (isId && !*value)) {
    element_->removeAttribute(name);
    return;
  }
  setAttributeText(*element_, name, value);
  if (isId) declareId(element_);
  if (visualization) visualization->store().noteAttribute(element_, name);
}

const XMLCh* PlXBaseElement::contentOrText(const XMLCh* name) const {
  if (!element_) return text(name);
  const XMLCh* content = element_->getTextContent();
  return content && *content ? content : text(name);
}

void PlXBaseElement::setTextOverContent(const XMLCh* name, const XMLCh* value) {
  if (!element_) return;
  setAttribute(name, value);
  PlXVisualization* visualization = getVisualization();
  ChangeJournal* journal = visualization ? visualization->store().journal() : nullptr;
  if (journal) journal->beforeText(*element_);
  for (DOMNode* node = element_->getFirstChild(); node;) {
    DOMNode* next = node->getNextSibling();
    const short kind = node->getNodeType();
    if (kind == DOMNode::TEXT_NODE || kind == DOMNode::CDATA_SECTION_NODE) {
      element_->removeChild(node)->release();
    }
    node = next;
  }
}

PlXBaseElement* PlXBaseElement::linked(const XMLCh* name) const {
  const XMLCh* id = text(name);
  PlXVisualization* visualization = *id ? getVisualization() : nullptr;
  return visualization ? visualization->store().objectOfId(id) : nullptr;
}

void PlXBaseElement::linkTo(const XMLCh* name, PlXBaseElement& target) {
  if (!element_ || !target.element_) return;
  if (!*target.text(idName)) {
    PlXVisualization* visualization = target.getVisualization();
    if (!visualization) return;
    const XMLCh* tag = dialect::localName(target.element_);
    target.setAttribute(idName, visualization->store().firstFreeId(tag).c_str());
  }
  setAttribute(name, target.text(idName));
}

DOMElement* PlXBaseElement::firstChild(const XMLCh* tag) const {
  DOMElement* child = element_ ? firstElement(element_) : nullptr;
  while (child && !XMLString::equals(dialect::localName(child), tag)) {
    child = nextElement(child);
  }
  return child;
}

PlXBaseElement* PlXBaseElement::addChild(const XMLCh* tag, const XMLCh* id) {
  PlXVisualization* visualization = getVisualization();
  if (!visualization) return nullptr;
  if (!element_) {
    // The place has been released: the child lives on its own, in no chart. The class of a record
    // depends on its parent, so a variable is stood in for.
    DOMDocument* document = visualization->getImplementation()->getOwnerDocument();
    DOMElement* element = document->createElement(tag);
    if (dynamic_cast<const CTVariableType*>(this)) {
      document->createElement(PlXSourceVariable::_UTF_sourceVariable)->appendChild(element);
    }
    return visualization->store().objectOf(element);
  }
  DOMElement* element = newElement(*element_, tag);
  if (id) element->setAttribute(idName, id);
  return visualization->store().insert(element_, element);
}

void PlXBaseElement::removeChild(PlXBaseElement& child) {
  PlXVisualization* visualization = getVisualization();
  DOMElement* element = child.element_;
  if (visualization && element && element->getParentNode() == element_) {
    visualization->store().remove(element);
  }
}
