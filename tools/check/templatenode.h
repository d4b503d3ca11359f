// The elements and texts of a template as they stand in its file.
#ifndef CHARTXML_TOOLS_TEMPLATENODE_H
#define CHARTXML_TOOLS_TEMPLATENODE_H

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

// An element, or a text that isn't blank.
struct TemplateNode {
  std::string name;  // with its prefix; empty for a text
  std::string text;
  // From 1, where the tag or the text starts; of the root, where its tag ends.
  unsigned long line = 0;
  unsigned long column = 0;
  // Without those of namespaces and schemas.
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<TemplateNode> children;
  // True with a comment or a processing instruction among the children.
  bool hasOtherNodes = false;

  bool isText() const { return name.empty(); }
  // Whether it has the attribute, be it empty.
  bool has(const std::string& attribute) const {
    return std::ranges::any_of(attributes,
                               [&](const auto& each) { return each.first == attribute; });
  }
  // Empty for an attribute that isn't there.
  std::string valueOf(const std::string& attribute) const {
    const auto found =
        std::ranges::find(attributes, attribute, &std::pair<std::string, std::string>::first);
    return found == attributes.end() ? std::string() : found->second;
  }
};

#endif
