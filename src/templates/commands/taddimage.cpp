// addImage aestheticNumber, with a child cycle: image aesthetics in the place of colours, each with
// a list of styles of its own. `aestheticNumber` selects one of an element's colours by its 1-based
// position, all for 0 or none. The image has the colour's id, so that legends go on to show it.
// Without a cycle nothing changes.
#include "aestheticlists.h"
#include "commands.h"

bool TAddImage::ProcessCommand() {
  return AestheticLists(*this).replaceColors(&CTElementType::addImage);
}
