#include "plxframes.h"

#include <xercesc/dom/DOM.hpp>

#include "modelstore.h"
#include "xmlwriter.h"

using namespace xercesc;

PlXVisualization::PlXVisualization(DOMElement* root)
    : PlXBaseElement(root, this), store_(std::make_unique<ModelStore>(*this)) {
  if (root) store_->build(root);
}

PlXVisualization::~PlXVisualization() = default;

std::string PlXVisualization::AsUTF8() const {
  std::string text;
  const DOMElement* root = getImplementation();
  if (!root) return text;
  const DOMDocument* document = root->getOwnerDocument();
  writeXml(root == document->getDocumentElement() ? static_cast<const DOMNode&>(*document) : *root,
           text);
  return text;
}
