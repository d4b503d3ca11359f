#include "keptdocuments.h"

#include <algorithm>
#include <list>

#include "chartparser.h"
#include "pathfactory.h"

namespace {

struct Kept {
  grammarpool::Kind kind;
  std::string folder;
  std::string text;
  std::shared_ptr<const ChartParser> parser;

  // Reading some things takes memory of a document.
  std::size_t bytes() const { return text.size() + parser->bytes(); }
};

// The last one that was asked for comes first. Never destroyed, as the pools.
std::list<Kept>& kept = *new std::list<Kept>;

void forgetOldest() {
  std::size_t count = 0;
  std::size_t bytes = 0;
  for (auto each = kept.begin(); each != kept.end(); ++each) {
    bytes += each->bytes();
    if (++count <= keptdocuments::mostTexts && bytes <= keptdocuments::mostBytes) continue;
    kept.erase(each, kept.end());
    return;
  }
}

}  // namespace

std::shared_ptr<const ChartParser> keptdocuments::parse(grammarpool::Kind kind,
                                                        const std::string& text,
                                                        const char* sourceName,
                                                        std::vector<ChartProblem>* problems) {
  forgetOldest();
  const std::string& folder = PathFactory::getPathInstance(3)->getFolder();
  const auto found = std::ranges::find_if(kept, [&](const Kept& each) {
    return each.kind == kind && each.text == text && each.folder == folder;
  });
  if (found != kept.end()) {
    kept.splice(kept.begin(), kept, found);
    if (problems) *problems = found->parser->problems();
    return found->parser;
  }
  const auto parser = std::make_shared<ChartParser>(kind);
  const bool isParsed = parser->parseText(text, sourceName);
  if (problems) *problems = parser->problems();
  if (!isParsed) return nullptr;
  if (parser->isServed()) {
    kept.push_front({kind, folder, text, parser});
    forgetOldest();
  }
  return parser;
}

void keptdocuments::clear() {
  kept.clear();
}
