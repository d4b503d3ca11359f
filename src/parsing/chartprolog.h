// What is read from the bytes of a document before a parser reads them.
#ifndef CHARTXML_CHARTPROLOG_H
#define CHARTXML_CHARTPROLOG_H

#include <optional>
#include <string>
#include <string_view>

namespace chartprolog {

// The root's namespace and schema locations, as far as a plain reading tells them.
struct Root {
  // False when the prolog holds anything out of the ordinary (a document type, an encoding that
  // isn't a superset of ASCII, references in the attributes): the rest says nothing then.
  bool isPlain = false;
  std::string_view localName;
  std::string_view namespaceUri;
  std::string_view schemaLocation;
};

Root readRoot(std::string_view text);

// The text between the brackets of a document type declaration, with line ends as a parser gives
// them; empty when there is none. `encoding` is that of the bytes.
std::u16string internalSubset(std::string_view text, const char16_t* encoding);

// True for a content model of at most so many names, at most so many of which have come before.
bool isSimpleModel(std::u16string_view model, std::size_t mostNames, std::size_t mostRepeated);

// True when markup can be found in the bytes as they stand.
bool isAscii(std::string_view text);

// How many attributes stand in the tag that has most of them; null as `encoding` for a text that
// isAscii(). Of a text that isn't well-formed it may tell anything.
std::size_t mostAttributes(std::string_view text, const char16_t* encoding);

// From 1, in characters, as the parser library counts.
struct Place {
  unsigned long line;
  unsigned long column;
};

// Counts on over the bytes of a UTF-8 text. No part ends between "\r" and "\n".
class PlaceCounter {
 public:
  void pass(std::string_view part);
  Place place() const { return place_; }

 private:
  Place place_{1, 1};
};

// The first character of a text that no document may have and the parser library still passes over:
// 0, behind which it reads nothing, and of UTF-8 what starts with F5 to F7. For a text that it has
// found well-formed.
struct PassedOver {
  Place place;
  const char16_t* reason;
};
std::optional<PassedOver> firstPassedOver(std::string_view text, const char16_t* encoding);

}  // namespace chartprolog

#endif
