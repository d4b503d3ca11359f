// setShape aestheticNumber, with a child cycle: the shape aesthetics of elements get a list of
// styles of their own each. `aestheticNumber` selects one of an element's by its 1-based position,
// all for 0 or none. Without a cycle nothing changes.
#include "aestheticlists.h"
#include "commands.h"

bool TSetShape::ProcessCommand() {
  return AestheticLists(*this).renewAll(&CTElementType::getShapes);
}
