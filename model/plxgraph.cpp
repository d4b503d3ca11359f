#include "plxgraph.h"

#include "plxelements.h"

PlXLocation* PlXGraph::addLocation(PlXLocation::ENUM_part part) {
  auto* location = add<PlXLocation>();
  location->setPart(part);
  return location;
}

void PlXGraph::removeLocation(PlXLocation::ENUM_part part) {
  for (PlXLocation* location : getLocations()) {
    if (location->getPart() == part) removeChild(*location);
  }
}

PlXCoordinates* PlXGraph::getCoordinates(unsigned index) const {
  const std::vector<PlXCoordinates*> all = getCoordinatess();
  return index < all.size() ? all[index] : nullptr;
}

// Here, where an element is known to be a PlXBaseElement.
void PlXGraph::removeElement(CTElementType& element) {
  removeChild(element);
}
