#include "plxframes.h"

#include "modelstore.h"

namespace {

// A location is made for its part. Null only in a view that belongs to no chart.
PlXLocation* withPart(PlXLocation* location, PlXLocation::ENUM_part part) {
  if (location) location->setPart(part);
  return location;
}

}  // namespace

PlXLocation* PlXVisualization::addLocation(PlXLocation::ENUM_part part) {
  return withPart(add<PlXLocation>(), part);
}

PlXLocation* PlXContainer::addLocation(PlXLocation::ENUM_part part) {
  return withPart(add<PlXLocation>(), part);
}

PlXLocation* PlXControlFrame::addLocation(PlXLocation::ENUM_part part) {
  return withPart(add<PlXLocation>(), part);
}

PlXLocation* PlXLabelFrame::addLocation(PlXLocation::ENUM_part part) {
  return withPart(add<PlXLocation>(), part);
}

PlXLocation* PlXLegend::addLocation(PlXLocation::ENUM_part part) {
  return withPart(add<PlXLocation>(), part);
}

// The containers' subtrees hold those of the containers within them.
void PlXVisualization::reparentContainerChildren() {
  for (PlXContainer* container : getContainers()) store().build(container->getImplementation());
}

PlXDocument::~PlXDocument() = default;

PlXVisualization* PlXDocument::getRoot() const {
  return &root_;
}

PlXLegendTarget* PlXLegend::addLegendTarget(const XMLCh* id, PlXBaseElement& target) {
  PlXLegendTarget* result = add<PlXLegendTarget>(id);
  if (result) result->setTarget(target);
  return result;
}
