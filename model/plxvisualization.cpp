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
  const DOMElement* root = getImplementation();
  if (!root) return {};
  const DOMDocument* document = root->getOwnerDocument();
  const bool isWhole = root == document->getDocumentElement();
  return xmlText(isWhole ? static_cast<const DOMNode&>(*document) : *root);
}
