// What stands before the root's content, read from the bytes of a document.
#ifndef CHARTXML_CHARTPROLOG_H
#define CHARTXML_CHARTPROLOG_H

#include <string>
#include <string_view>

namespace chartprolog {

// The root's namespace and schema locations, as far as a plain reading tells them.
struct Root {
  // False when the prolog holds anything out of the ordinary (a document type, an encoding that
  // isn't a superset of ASCII, references in the attributes): the rest says nothing then.
  bool isPlain = false;
  std::string_view namespaceUri;
  std::string_view schemaLocation;
};

Root readRoot(std::string_view text);

// The text between the brackets of a document type declaration, with line ends as a parser gives
// them; empty when there is none. `encoding` is that of the bytes.
std::u16string internalSubset(std::string_view text, const char16_t* encoding);

}  // namespace chartprolog

#endif
