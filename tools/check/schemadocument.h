// Reading the installed schemas as documents.
#ifndef CHARTXML_TOOLS_SCHEMADOCUMENT_H
#define CHARTXML_TOOLS_SCHEMADOCUMENT_H

#include <sstream>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

#include <chartxml/chartxml.h>

#include "commandline.h"

namespace schemadocument {

inline std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

inline std::string attribute(const xercesc::DOMElement& element, const XMLCh* name) {
  return utf8(element.getAttribute(name));
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

inline std::vector<const xercesc::DOMElement*> descendants(const xercesc::DOMElement& top,
                                                           const XMLCh* name) {
  const xercesc::DOMNodeList* list =
      top.getElementsByTagNameNS(xercesc::SchemaSymbols::fgURI_SCHEMAFORSCHEMA, name);
  std::vector<const xercesc::DOMElement*> result;
  for (XMLSize_t i = 0; i < list->getLength(); ++i) {
    result.push_back(static_cast<const xercesc::DOMElement*>(list->item(i)));
  }
  return result;
}

// The words of the documentation, which has no source, or of an appinfo in a definition's own
// annotation; empty without one.
inline std::vector<std::string> annotation(const xercesc::DOMElement& element,
                                           const std::string& source) {
  const xercesc::DOMElement* holder = element.getFirstElementChild();
  if (!holder || !xercesc::XMLString::equals(holder->getLocalName(),
                                             xercesc::SchemaSymbols::fgELT_ANNOTATION)) {
    return {};
  }
  for (const xercesc::DOMElement* part = holder->getFirstElementChild(); part;
       part = part->getNextElementSibling()) {
    if (attribute(*part, u"source") == source) return wordsOf(utf8(part->getTextContent()));
  }
  return {};
}

inline std::string documentationOf(const xercesc::DOMElement& element) {
  return joined(annotation(element, ""), " ");
}

// A schema of the installation, by its file's name.
class SchemaDocument {
 public:
  // Throws a Failure when it can't be read.
  explicit SchemaDocument(const std::string& file) {
    const std::string path = PathFactory::getPathInstance(3)->getFolder() + file;
    parser_.setDoNamespaces(true);
    try {
      parser_.parse(path.c_str());
    } catch (const xercesc::XMLException&) {
      // Nor is there a document then.
    }
    const xercesc::DOMDocument* document =
        parser_.getErrorCount() == 0 ? parser_.getDocument() : nullptr;
    root_ = document ? document->getDocumentElement() : nullptr;
    if (!root_) throw Failure(path + ": can't be read");
  }

  const xercesc::DOMElement& root() const { return *root_; }

 private:
  xercesc::XercesDOMParser parser_;
  const xercesc::DOMElement* root_;
};

}  // namespace schemadocument

#endif
