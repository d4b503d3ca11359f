// writeschemas FOLDER: writes the schemas of the dialect from the model's table, and those of the
// older vocabulary from its own. The schemas in the repository are its output; a test holds them
// against it.
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "chartbase.h"
#include "dialect.h"
#include "utf.h"

namespace {

using dialect::Attribute;
using dialect::Child;
using dialect::Content;
using dialect::Element;
using dialect::Type;

// Elements that may be the root of a document, or stand below the root of a data document.
constexpr std::u16string_view globalElements[] = {
    u"visualization",       u"graph",           u"userSource",     u"databaseSource",
    u"delimitedFileSource", u"streamingSource", u"embeddedSource", u"source"};

constexpr const char* chartHeader = R"(<?xml version="1.0" encoding="UTF-8"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"
           xmlns="@HOST@/visualization"
           targetNamespace="@HOST@/visualization"
           elementFormDefault="qualified">
  <xs:annotation>
    <xs:documentation>The chart dialect, version 2.9. An element takes its children in any order.
No attribute and no child is mandatory. Attributes of other namespaces are passed over.</xs:documentation>
  </xs:annotation>
)";

constexpr const char* olderHeader = R"(<?xml version="1.0" encoding="UTF-8"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"
           xmlns="@HOST@/visualization"
           targetNamespace="@HOST@/visualization"
           elementFormDefault="qualified">
  <xs:annotation>
    <xs:documentation>The older vocabulary, of templates that describe a chart. Elements stand in any
order and place, and what is not declared is passed over. Charts may name this schema, too: they are
held to version 2.9, and grafo-2.9.xsd tells what they hold.</xs:documentation>
  </xs:annotation>
)";

constexpr const char* documentTypeHeader = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- The document type that charts and older templates may name as "-//TAVO//DTD ChartXML 2.0//EN".
     It declares the older vocabulary, of templates that describe a chart. What a chart holds is told
     by the schema that its root names. -->
)";

constexpr const char* dataSchema = R"(<?xml version="1.0" encoding="UTF-8"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"
           xmlns:chart="@HOST@/visualization"
           targetNamespace="@HOST@/tavo/visualization"
           elementFormDefault="qualified">
  <xs:annotation>
    <xs:documentation>Data documents: the sources of a chart, kept apart from it.</xs:documentation>
  </xs:annotation>
  <xs:import namespace="@HOST@/visualization"
             schemaLocation="@HOST@/visualization/grafo-2.9.xsd"/>
  <xs:element name="graphSources">
    <xs:annotation>
      <xs:documentation>The root: one element of the chart dialect for each source.</xs:documentation>
    </xs:annotation>
    <xs:complexType>
      <xs:choice minOccurs="0" maxOccurs="unbounded">
        <xs:element ref="chart:userSource"/>
        <xs:element ref="chart:databaseSource"/>
        <xs:element ref="chart:delimitedFileSource"/>
        <xs:element ref="chart:streamingSource"/>
        <xs:element ref="chart:embeddedSource"/>
        <xs:element ref="chart:source"/>
      </xs:choice>
      <xs:anyAttribute namespace="##other" processContents="lax"/>
    </xs:complexType>
  </xs:element>
</xs:schema>
)";

constexpr const char* olderDataSchema = R"(<?xml version="1.0" encoding="UTF-8"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"
           targetNamespace="@HOST@/tavo/visualization"
           elementFormDefault="qualified">
  <xs:annotation>
    <xs:documentation>Data documents under the name of their older form.</xs:documentation>
  </xs:annotation>
  <xs:include schemaLocation="@HOST@/tavo/visualization/grafo-data-2.1.xsd"/>
</xs:schema>
)";

std::string withHost(std::string text) {
  constexpr std::string_view mark = "@HOST@";
  for (std::size_t at; (at = text.find(mark)) != text.npos;) {
    text.replace(at, mark.size(), CHARTXML_HOST);
  }
  return text;
}

std::string escaped(std::string_view text) {
  std::string result;
  for (char c : text) {
    if (c == '&') {
      result += "&amp;";
    } else if (c == '<') {
      result += "&lt;";
    } else if (c == '"') {
      result += "&quot;";
    } else {
      result += c;
    }
  }
  return result;
}

std::string documentation(const std::string& indent, const char* text) {
  return indent + "<xs:annotation><xs:documentation>" + escaped(text) +
         "</xs:documentation></xs:annotation>\n";
}

std::string typeName(const Attribute& attribute) {
  switch (attribute.type) {
    case Type::Text:
    case Type::Length:
    case Type::Lengths:
    case Type::Color:
      return "xs:string";
    case Type::Flag:
      return "xs:boolean";
    case Type::Number:
      return "xs:double";
    case Type::Integer:
      return "xs:integer";
    case Type::Id:
      return "xs:ID";
    case Type::Link:
      return "link";
    case Type::Word:
      return attribute.words->name;
  }
  return {};
}

std::string attributeText(const std::string& indent, const Attribute& attribute) {
  return indent + "<xs:attribute name=\"" + utf::toUtf8(attribute.name) + "\" type=\"" +
         typeName(attribute) + "\">\n" + documentation(indent + "  ", attribute.documentation) +
         indent + "</xs:attribute>\n";
}

std::string enumerationText(const dialect::Words& words) {
  std::string text = "  <xs:simpleType name=\"" + std::string(words.name) +
                     "\">\n    <xs:restriction base=\"xs:token\">\n";
  for (const dialect::Word& word : words.words) {
    text += "      <xs:enumeration value=\"" + utf::toUtf8(word.text) + "\"/>\n";
  }
  return text + "    </xs:restriction>\n  </xs:simpleType>\n";
}

// What embedded data is made of. The model has no classes for it, since it may be millions of rows.
constexpr const char* dataTypes = R"(  <xs:complexType name="namedRow">
    <xs:annotation><xs:documentation>One row of the older form.</xs:documentation></xs:annotation>
    <xs:sequence>
      <xs:element name="dataValue" type="dataValue" minOccurs="0" maxOccurs="unbounded"/>
    </xs:sequence>
  </xs:complexType>
  <xs:complexType name="dataValue">
    <xs:annotation><xs:documentation>The value of one variable in one row.</xs:documentation></xs:annotation>
    <xs:simpleContent>
      <xs:extension base="xs:string">
        <xs:attribute name="name" type="xs:string">
          <xs:annotation><xs:documentation>The variable's name.</xs:documentation></xs:annotation>
        </xs:attribute>
      </xs:extension>
    </xs:simpleContent>
  </xs:complexType>
)";

constexpr const char* embeddedRows = R"(    <xs:choice minOccurs="0" maxOccurs="unbounded">
      <xs:element name="names" type="xs:string">
        <xs:annotation><xs:documentation>The variables' names, separated by semicolons.</xs:documentation></xs:annotation>
      </xs:element>
      <xs:element name="types" type="xs:string">
        <xs:annotation><xs:documentation>A word for each variable, separated by semicolons.</xs:documentation></xs:annotation>
      </xs:element>
      <xs:element name="row" type="xs:string">
        <xs:annotation><xs:documentation>The values of one row, separated by semicolons; nothing for a missing one.</xs:documentation></xs:annotation>
      </xs:element>
    </xs:choice>
)";

constexpr const char* olderRows = R"(    <xs:sequence>
      <xs:element name="row" type="namedRow" minOccurs="0" maxOccurs="unbounded"/>
    </xs:sequence>
)";

std::string childrenText(const Element& element) {
  if (element.content == Content::Data) {
    return std::u16string_view(element.tag) == u"source" ? olderRows : embeddedRows;
  }
  const std::vector<Child>& children = element.children;
  if (children.empty()) return {};
  std::string text = "    <xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\">\n";
  for (const Child& child : children) {
    const std::string tag = utf::toUtf8(child.tag);
    text += "      <xs:element name=\"" + tag + "\" type=\"" + tag + "\"/>\n";
  }
  return text + "    </xs:choice>\n";
}

// Records of all three kinds have one type: free attributes take in what any of them names.
bool isFirstOfTag(const Element& element) {
  for (const Element& other : dialect::elements()) {
    if (std::u16string_view(other.tag) == element.tag) return &other == &element;
  }
  return false;
}

std::string typeText(const Element& element) {
  const bool isMixed = element.content == Content::TextOrElements;
  std::string text = "  <xs:complexType name=\"" + utf::toUtf8(element.tag) + "\"" +
                     (isMixed ? " mixed=\"true\"" : "") + ">\n";
  text += documentation("    ", element.documentation) + childrenText(element);
  std::set<std::u16string_view> known;
  for (const Element& row : dialect::elements()) {
    if (std::u16string_view(row.tag) != element.tag) continue;
    for (const Attribute& attribute : row.attributes) {
      if (known.insert(attribute.name).second) text += attributeText("    ", attribute);
    }
  }
  if (element.group) {
    text += "    <xs:attributeGroup ref=\"" + std::string(element.group->name) + "\"/>\n";
  }
  text += element.content == Content::FreeAttributes
              ? "    <xs:anyAttribute namespace=\"##any\" processContents=\"lax\"/>\n"
              : "    <xs:anyAttribute namespace=\"##other\" processContents=\"lax\"/>\n";
  return text + "  </xs:complexType>\n";
}

std::string groupText(const dialect::Group& group) {
  std::string text = "  <xs:attributeGroup name=\"" + std::string(group.name) + "\">\n" +
                     documentation("    ", group.documentation);
  for (const Attribute& attribute : group.attributes) text += attributeText("    ", attribute);
  return text + "  </xs:attributeGroup>\n";
}

std::string chartSchema() {
  std::string text = chartHeader;
  for (std::u16string_view tag : globalElements) {
    const std::string name = utf::toUtf8(tag);
    text += "  <xs:element name=\"" + name + "\" type=\"" + name + "\"/>\n";
  }
  text += "  <xs:simpleType name=\"link\">\n" +
          documentation("    ", "The identifier of another element of the document.") +
          "    <xs:restriction base=\"xs:string\"/>\n  </xs:simpleType>\n";
  text += dataTypes;
  for (const dialect::Words* words : dialect::enumerations()) text += enumerationText(*words);
  std::set<const dialect::Group*> groups;
  for (const Element& element : dialect::elements()) {
    if (element.group && groups.insert(element.group).second) text += groupText(*element.group);
    if (isFirstOfTag(element)) text += typeText(element);
  }
  return text + "</xs:schema>\n";
}

// ---- the older vocabulary

struct OlderAttribute {
  const char* name;
  std::vector<std::string> words;
  const char* documentation;
};

struct OlderElement {
  const char* tag;
  std::vector<std::string> children;
  const char* documentation;
  std::vector<OlderAttribute> attributes;
};

std::vector<std::string> wordsOf(const char* text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " | ") + word;
  return text;
}

std::vector<OlderElement> olderElements() {
  std::vector<OlderElement> all;
#define ELEMENT(tag, children, documentation) \
  all.push_back({tag, wordsOf(children), documentation, {}});
#define ATTRIBUTE(name, words, documentation) \
  all.back().attributes.push_back({name, wordsOf(words), documentation});
#include "oldervocabulary.inc"
#undef ELEMENT
#undef ATTRIBUTE
  return all;
}

bool holdsText(const OlderElement& element) {
  return element.children == std::vector<std::string>{"#text"};
}

std::string olderSchema() {
  std::string text = olderHeader;
  for (const OlderElement& element : olderElements()) {
    text += "  <xs:element name=\"" + std::string(element.tag) + "\">\n" +
            documentation("    ", element.documentation) + "    <xs:complexType" +
            (holdsText(element) ? " mixed=\"true\"" : "") +
            ">\n      <xs:sequence>\n        <xs:any namespace=\"##any\" processContents=\"lax\" "
            "minOccurs=\"0\" maxOccurs=\"unbounded\"/>\n      </xs:sequence>\n"
            "      <xs:attribute name=\"id\" type=\"xs:ID\"/>\n";
    for (const OlderAttribute& attribute : element.attributes) {
      const bool isText = attribute.words.empty();
      text += "      <xs:attribute name=\"" + std::string(attribute.name) + "\"" +
              (isText ? " type=\"xs:string\"" : "") + ">\n" +
              documentation("        ", attribute.documentation);
      if (!isText) {
        text += "        <xs:simpleType>\n          <xs:restriction base=\"xs:token\">\n";
        for (const std::string& word : attribute.words) {
          text += "            <xs:enumeration value=\"" + word + "\"/>\n";
        }
        text += "          </xs:restriction>\n        </xs:simpleType>\n";
      }
      text += "      </xs:attribute>\n";
    }
    text +=
        "      <xs:anyAttribute namespace=\"##any\" processContents=\"lax\"/>\n"
        "    </xs:complexType>\n  </xs:element>\n";
  }
  return text + "</xs:schema>\n";
}

std::string documentType() {
  std::string text = documentTypeHeader;
  const std::string root = olderElements().front().tag;
  for (const OlderElement& element : olderElements()) {
    text += "\n<!-- " + std::string(element.documentation);
    for (const OlderAttribute& attribute : element.attributes) {
      text += "\n     " + std::string(attribute.name) + ": " + attribute.documentation;
    }
    text += " -->\n<!ELEMENT " + std::string(element.tag) + ' ' +
            (holdsText(element)         ? "(#PCDATA)"
             : element.children.empty() ? "EMPTY"
                                        : '(' + joined(element.children) + ")*") +
            ">\n<!ATTLIST " + element.tag + "\n  id ID #IMPLIED";
    if (std::string(element.tag) == root || element.tag == std::string("graph")) {
      text += "\n  xmlns CDATA #IMPLIED";
    }
    for (const OlderAttribute& attribute : element.attributes) {
      text += "\n  " + std::string(attribute.name) + ' ' +
              (attribute.words.empty() ? "CDATA" : '(' + joined(attribute.words) + ')') +
              " #IMPLIED";
    }
    text += ">\n";
  }
  return text;
}

bool write(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << withHost(text);
  if (file.flush()) return true;
  std::cerr << "writeschemas: can't write " << path << '\n';
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: writeschemas FOLDER\n";
    return 2;
  }
  const std::string folder = std::string(argv[1]) + "/";
  const bool isWritten = write(folder + "grafo-2.9.xsd", chartSchema()) &&
                         write(folder + "grafo-1.4.xsd", olderSchema()) &&
                         write(folder + "chartXML20.dtd", documentType()) &&
                         write(folder + "grafo-data-2.1.xsd", dataSchema) &&
                         write(folder + "grafo-data-1.0.xsd", olderDataSchema);
  return isWritten ? 0 : 1;
}
