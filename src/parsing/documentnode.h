// DocumentNode: a document as plain values, with the places at which they stand.
#ifndef CHARTXML_DOCUMENTNODE_H
#define CHARTXML_DOCUMENTNODE_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chartproblem.h"
#include "export.h"

// An element, or a text that isn't blank. Texts are UTF-8, and as they were written: what schemas
// would change in them is not.
struct CHARTXML_API DocumentNode {
  // Takes any text that is well-formed, under the bounds of all documents. Nothing else is read,
  // nothing is validated, and external entities count as empty. None for any other text;
  // `problem`, unless null, gets the reason then. A ChartBase must live.
  //
  // Without namespaces names stand as they are written, and those of namespaces and schemas are
  // attributes like others.
  static std::optional<DocumentNode> read(const std::string& text, bool hasNamespaces = true,
                                          ChartProblem* problem = nullptr);

  // The first attribute of that name; null without one.
  const std::string* attribute(std::string_view name) const;
  // The name behind its prefix.
  std::string_view localName() const;
  bool isText() const { return name.empty(); }

  std::string name;  // with its prefix; empty for a text
  std::string text;
  // From 1, where the tag or the text starts.
  unsigned long line = 0;
  unsigned long column = 0;
  // Without those of namespaces and schemas.
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<DocumentNode> children;
  // True with a comment or a processing instruction among the children.
  bool hasOtherNodes = false;
};

#endif
