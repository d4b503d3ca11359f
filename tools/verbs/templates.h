// Templates as they stand in their files.
#ifndef CHARTXML_TOOLS_TEMPLATES_H
#define CHARTXML_TOOLS_TEMPLATES_H

#include <string>
#include <utility>
#include <vector>

#include <chartxml/charttemplate.h>

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
};

// Of an older template, text and root are those of what it is converted to, and the file's name
// says so: places are in what `convert` writes.
struct Template {
  std::string file;
  std::string text;
  TemplateNode root;
};

// Throws a Failure when the library takes the file for no template. It has written all problems of
// the file then but the one that the Failure tells.
Template readTemplate(const std::string& file);

// A template in the vocabulary from before there were commands.
struct OlderTemplate {
  TemplateNode root;
  ChartTemplate::Conversion conversion;
};

// Throws a Failure for a file that is none.
OlderTemplate readOlderTemplate(const std::string& file);

// "FILE:LINE:COLUMN: message"
std::string placed(const TemplateNode& node, const std::string& file, const std::string& message);

#endif
