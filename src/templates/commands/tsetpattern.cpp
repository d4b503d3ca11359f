// setPattern aestheticNumber, with a child cycle: the pattern aesthetics of elements get a list of
// styles of their own each, and their elements a white fill, also without a cycle and where the
// source chart pins the list; one that pins the fill's colour keeps it. An element with a pattern
// that is meant gets the style that it lacks.
#include "aestheticlists.h"
#include "commands.h"
#include "plxstyle.h"

bool TSetPattern::ProcessCommand() {
  if (!command) return true;
  AestheticLists lists(*this);
  lists.forElements([&](CTElementType& element) {
    const auto patterns = lists.selected(element, &CTElementType::getPatterns);
    if (patterns.empty()) return;
    const PlXStyle* own = element.getStyle();
    const PlXStyle* pinned = own ? sourceOf(*own) : nullptr;
    // Before the lists: they are read as those of areas where the chart has any.
    PlXStyle& fill = styleOf(element);
    for (PlXPattern* pattern : patterns) {
      if (lists.mayRenew(*pattern)) lists.renew(*pattern);
    }
    if (!pinned || !*pinned->getColor()) fill.setColor(PlXStyle::_white);
  });
  return true;
}
