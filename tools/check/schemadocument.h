// Reading the installed schemas as documents.
#ifndef CHARTXML_TOOLS_SCHEMADOCUMENT_H
#define CHARTXML_TOOLS_SCHEMADOCUMENT_H

#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <chartxml/chartxml.h>

#include "failure.h"

namespace schemadocument {

// Empty without one.
inline std::string attribute(const DocumentNode& element, std::string_view name) {
  const std::string* value = element.attribute(name);
  return value ? *value : std::string();
}

inline std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

inline std::vector<std::string> split(const std::string& text, char separator) {
  std::istringstream stream(text);
  std::vector<std::string> parts;
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

inline std::string joined(const std::vector<std::string>& words, const std::string& separator) {
  std::string result;
  for (const std::string& word : words) result += (result.empty() ? "" : separator) + word;
  return result;
}

inline void addDescendants(const DocumentNode& top, std::string_view name,
                           std::vector<const DocumentNode*>& result) {
  for (const DocumentNode& child : top.children) {
    if (child.localName() == name) result.push_back(&child);
    addDescendants(child, name, result);
  }
}

// In document order; `name` is without the prefix of schemas.
inline std::vector<const DocumentNode*> descendants(const DocumentNode& top,
                                                    std::string_view name) {
  std::vector<const DocumentNode*> result;
  addDescendants(top, name, result);
  return result;
}

// The words of the documentation, which has no source, or of an appinfo in a definition's own
// annotation; empty without one.
inline std::vector<std::string> annotation(const DocumentNode& element, const std::string& source) {
  if (element.children.empty() || element.children[0].localName() != "annotation") return {};
  for (const DocumentNode& part : element.children[0].children) {
    if (attribute(part, "source") != source) continue;
    std::string text;
    for (const DocumentNode& child : part.children) text += child.text;
    return wordsOf(text);
  }
  return {};
}

inline std::string documentationOf(const DocumentNode& element) {
  return joined(annotation(element, ""), " ");
}

// A schema of the installation, by its file's name.
class SchemaDocument {
 public:
  // Throws a Failure when it can't be read.
  explicit SchemaDocument(const std::string& file) {
    const std::string path = PathFactory::getPathInstance(3)->getFolder() + file;
    std::ifstream stream(path, std::ios::binary);
    root_ = DocumentNode::read({std::istreambuf_iterator<char>(stream), {}});
    if (!root_) throw Failure(path + ": can't be read");
  }

  const DocumentNode& root() const { return *root_; }

 private:
  std::optional<DocumentNode> root_;
};

}  // namespace schemadocument

#endif
