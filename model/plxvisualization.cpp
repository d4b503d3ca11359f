#include <sstream>

#include <xercesc/dom/DOM.hpp>

#include "dialect.h"
#include "modelstore.h"
#include "plxframes.h"

using namespace xercesc;

PlXVisualization::PlXVisualization(DOMElement* root)
    : PlXBaseElement(root, this), store_(std::make_unique<ModelStore>(*this)) {
  if (root) store_->build(root);
}

PlXVisualization::~PlXVisualization() = default;
std::string PlXVisualization::AsUTF8() const { return {}; }
