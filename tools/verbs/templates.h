// Templates as they stand in their files.
#ifndef CHARTXML_TOOLS_TEMPLATES_H
#define CHARTXML_TOOLS_TEMPLATES_H

#include <string>

#include <chartxml/charttemplate.h>
#include <chartxml/documentnode.h>

// Of an older template, text and root are those of what it is converted to, and the file's name
// says so: places are in what `convert` writes.
struct Template {
  std::string file;
  std::string text;
  DocumentNode root;
};

// Throws a Failure when the library takes the file for no template. It has written all problems of
// the file then but the one that the Failure tells.
Template readTemplate(const std::string& file);

// A template in the vocabulary from before there were commands.
struct OlderTemplate {
  DocumentNode root;
  ChartTemplate::Conversion conversion;
};

// Throws a Failure for a file that is none.
OlderTemplate readOlderTemplate(const std::string& file);

// "FILE:LINE:COLUMN: message"
std::string placed(const DocumentNode& node, const std::string& file, const std::string& message);

#endif
