// Puts what writegrammars has written into the library's file.
#include "storedgrammars.h"

#define EMBED(name, file)                                       \
  asm(".pushsection .rodata.grammars, \"a\", @progbits\n" #name \
      "Start:\n"                                                \
      ".incbin \"" CHARTXML_GRAMMARS file "\"\n" #name          \
      "End:\n"                                                  \
      ".popsection\n");                                         \
  extern "C" {                                                  \
  extern const char name##Start[];                              \
  extern const char name##End[];                                \
  }
EMBED(chartGrammars, "/charts.grammars")
EMBED(templateGrammars, "/templates.grammars")
EMBED(newerTemplateGrammars, "/newertemplates.grammars")
EMBED(treeGrammars, "/trees.grammars")

std::string_view storedgrammars::embedded(grammarpool::Kind kind) {
  switch (kind) {
    case grammarpool::Kind::Charts:
      return {chartGrammarsStart, chartGrammarsEnd};
    case grammarpool::Kind::Templates:
      return {templateGrammarsStart, templateGrammarsEnd};
    case grammarpool::Kind::NewerTemplates:
      return {newerTemplateGrammarsStart, newerTemplateGrammarsEnd};
    case grammarpool::Kind::Trees:
      return {treeGrammarsStart, treeGrammarsEnd};
    default:
      return {};
  }
}
