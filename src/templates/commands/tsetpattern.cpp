// setPattern aestheticNumber, with a child cycle: the pattern aesthetics of elements get a list of
// styles of their own each, and their elements a white fill, also without a cycle and where the
// source chart pins the list; one that pins the fill's colour keeps it. An element with a pattern
// that is meant gets the style that it lacks.
#include "aestheticlists.h"
#include "commands.h"
#include "plxstyle.h"

bool TSetPattern::ProcessCommand() {
  if (!command) return true;
  AestheticLists lists(*this, source, target, command);
  lists.forElements([&](CTElementType& element) {
    const auto patterns = lists.selected(element, &CTElementType::getPatterns);
    if (patterns.empty()) return;
    for (PlXPattern* pattern : patterns) {
      if (lists.mayRenew(*pattern)) lists.renew(*pattern);
    }
    const PlXStyle* fill = element.getStyle();
    const PlXStyle* pinned = fill ? sourceOf(*fill) : nullptr;
    if (!pinned || !*pinned->getColor()) styleOf(element).setColor(PlXStyle::_white);
  });
  return true;
}
