#include "xmlwriter.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include <xercesc/util/XMLString.hpp>

#include "attributetext.h"
#include "textbuffer.h"
#include "utf.h"

using namespace xercesc;

namespace {

constexpr std::size_t deepestIndent = 64;  // levels

constexpr std::string_view replacement = "\xEF\xBF\xBD";

// What a character means where it stands.
enum class Place { Text, Attribute, Raw };

// Whether a unit stands for itself there, as one byte.
constexpr bool isPlain(char16_t unit, Place place) {
  if (unit >= 0x7F || unit < 0x20) return unit == u'\n' && place != Place::Attribute;
  return place == Place::Raw || (unit != u'<' && unit != u'>' && unit != u'&' && unit != u'"');
}

constexpr std::size_t asciiSize = 0x80;
using PlainTable = std::array<bool, asciiSize>;

constexpr PlainTable plainTable(Place place) {
  PlainTable table{};
  for (char16_t unit = 0; unit < asciiSize; ++unit) table[unit] = isPlain(unit, place);
  return table;
}

// By Place.
constexpr PlainTable plainTables[] = {plainTable(Place::Text), plainTable(Place::Attribute),
                                      plainTable(Place::Raw)};

// What takes more than one byte and nothing else.
bool isWide(char16_t unit) {
  return unit >= 0xA0 && unit != 0x2028 && unit < 0xFFFE;
}

class Writer {
 public:
  Writer(TextBuffer& out, bool whiteSpace) : out_(out), whiteSpace_(whiteSpace) {}

  void write(const DOMNode& top) {
    const DOMDocument* document = top.getNodeType() == DOMNode::DOCUMENT_NODE
                                      ? static_cast<const DOMDocument*>(&top)
                                      : top.getOwnerDocument();
    isXml11_ = document && XMLString::equals(document->getXmlVersion(), u"1.1");
    hasDoctype_ = document && document->getDoctype();

    const DOMNode* node = &top;
    while (node) {
      const DOMNode* next = nullptr;
      if (open(*node)) {
        parents_.push_back({node, whiteSpace_ && holdsText(*node)});
        next = node->getFirstChild();
      }
      while (!next) {
        if (node == &top) return;
        next = node->getNextSibling();
        if (!next) {
          node = parents_.back().node;
          close(parents_.back());
          parents_.pop_back();
        }
      }
      node = next;
    }
  }

 private:
  struct Parent {
    const DOMNode* node;
    bool holdsText;  // only told where white space is written
  };

  // Writes what comes before a node's children; true when close() is to follow them.
  bool open(const DOMNode& node) {
    switch (node.getNodeType()) {
      case DOMNode::ELEMENT_NODE:
        return openElement(static_cast<const DOMElement&>(node));
      case DOMNode::TEXT_NODE:
        write(node.getNodeValue(), Place::Text);
        return false;
      case DOMNode::ATTRIBUTE_NODE:
        writeAttribute(node);
        return false;
      case DOMNode::CDATA_SECTION_NODE:
        writeCData(node.getNodeValue());
        return false;
      case DOMNode::ENTITY_REFERENCE_NODE:
        if (!hasDoctype_) return node.hasChildNodes();
        out_.append('&');
        write(node.getNodeName(), Place::Raw);
        out_.append(';');
        return false;
      case DOMNode::PROCESSING_INSTRUCTION_NODE:
        startLine(node);
        writeInstruction(node);
        return false;
      case DOMNode::COMMENT_NODE:
        startLine(node);
        out_.append("<!--");
        writeApart(node.getNodeValue(), u'-', u'-');
        out_.append("-->");
        return false;
      case DOMNode::DOCUMENT_TYPE_NODE:
        startLine(node);
        writeDoctype(static_cast<const DOMDocumentType&>(node));
        return false;
      case DOMNode::DOCUMENT_NODE:
        writeDeclaration(static_cast<const DOMDocument&>(node));
        return node.hasChildNodes();
      default:
        return node.hasChildNodes();
    }
  }

  void close(const Parent& parent) {
    if (parent.node->getNodeType() != DOMNode::ELEMENT_NODE) return;
    --depth_;
    if (whiteSpace_ && !parent.holdsText) newLine();
    out_.append("</");
    write(parent.node->getNodeName(), Place::Raw);
    out_.append('>');
  }

  bool openElement(const DOMElement& element) {
    startLine(element);
    out_.append('<');
    write(element.getNodeName(), Place::Raw);
    writeAttributes(*element.getAttributes());
    if (!element.hasChildNodes()) {
      // The scanner of data documents takes `<row/>` for none, and would lose a row whose only cell
      // is missing.
      out_.append(XMLString::equals(element.getNodeName(), u"row") ? "></row>" : "/>");
      return false;
    }
    out_.append('>');
    ++depth_;
    return true;
  }

  void writeAttributes(const DOMNamedNodeMap& attributes) {
    const XMLSize_t count = attributes.getLength();
    const DOMNode* id = count > 0 ? attributes.getNamedItem(u"id") : nullptr;
    if (id) writeAttribute(*id);
    for (XMLSize_t i = 0; i < count; ++i) {
      const DOMNode* attribute = attributes.item(i);
      if (attribute != id && !isSecond(attributes, i)) writeAttribute(*attribute);
    }
  }

  // The parser makes two attributes of a prefixed one that a document type defaults: as the text
  // has it, and as the default. They stand side by side; a text can have but one of them.
  bool isSecond(const DOMNamedNodeMap& attributes, XMLSize_t index) const {
    if (!hasDoctype_) return false;
    const auto* attribute = static_cast<const DOMAttr*>(attributes.item(index));
    const auto isSame = [&](const DOMNode* other) {
      return other && XMLString::equals(other->getNodeName(), attribute->getNodeName());
    };
    const DOMNode* before = index > 0 ? attributes.item(index - 1) : nullptr;
    if (isSame(before)) {
      return static_cast<const DOMAttr*>(before)->getSpecified() || !attribute->getSpecified();
    }
    const DOMNode* after = attributes.item(index + 1);
    return isSame(after) && static_cast<const DOMAttr*>(after)->getSpecified() &&
           !attribute->getSpecified();
  }

  void writeAttribute(const DOMNode& attribute) {
    out_.append(' ');
    write(attribute.getNodeName(), Place::Raw);
    out_.append("=\"");
    write(attributeText(attribute), Place::Attribute);
    out_.append('"');
  }

  void writeDeclaration(const DOMDocument& document) {
    out_.append(isXml11_ ? "<?xml version=\"1.1\"" : "<?xml version=\"1.0\"");
    out_.append(" encoding=\"UTF-8\"");
    if (document.getXmlStandalone()) out_.append(" standalone=\"yes\"");
    out_.append("?>");
  }

  void writeDoctype(const DOMDocumentType& doctype) {
    out_.append("<!DOCTYPE ");
    write(doctype.getName(), Place::Raw);
    // The parser gives an empty public identifier where there is none.
    if (const XMLCh* publicId = doctype.getPublicId(); publicId && *publicId) {
      out_.append(" PUBLIC ");
      writeQuoted(publicId);
    } else if (doctype.getSystemId()) {
      out_.append(" SYSTEM");
    }
    if (const XMLCh* systemId = doctype.getSystemId()) {
      out_.append(' ');
      writeQuoted(systemId);
    }
    if (const XMLCh* subset = doctype.getInternalSubset(); subset && *subset) {
      out_.append(" [");
      write(subset, Place::Raw);
      out_.append(']');
    }
    out_.append('>');
  }

  // Identifiers have no escapes: one holds at most one of the two kinds of quotes.
  void writeQuoted(const XMLCh* text) {
    const char quote = XMLString::indexOf(text, u'"') < 0 ? '"' : '\'';
    out_.append(quote);
    write(text, Place::Raw);
    out_.append(quote);
  }

  void writeInstruction(const DOMNode& node) {
    out_.append("<?");
    write(node.getNodeName(), Place::Raw);
    if (const XMLCh* data = node.getNodeValue(); data && *data) {
      out_.append(' ');
      writeApart(data, u'?', u'>');
    }
    out_.append("?>");
  }

  // With a blank between the two, which no comment or instruction can hold as neighbours: DOM calls
  // may have written them all the same.
  void writeApart(const XMLCh* text, char16_t first, char16_t second) {
    for (std::u16string_view rest(text ? text : u""); !rest.empty();) {
      std::size_t end = 0;
      const auto isBreak = [&] {
        // Both end with their second character, which counts as a neighbour.
        return rest[end] == first &&
               (end + 1 < rest.size() ? rest[end + 1] == second : second == first);
      };
      while (end < rest.size() && !isBreak()) ++end;
      const bool isBroken = end < rest.size();
      write(rest.substr(0, isBroken ? end + 1 : end), Place::Raw);
      if (isBroken) out_.append(' ');
      rest.remove_prefix(isBroken ? end + 1 : end);
    }
  }

  // A section can hold neither its own end nor a carriage return: it is closed around them.
  void writeCData(const XMLCh* value) {
    out_.append("<![CDATA[");
    for (std::u16string_view rest(value); !rest.empty();) {
      const std::size_t end = std::min(rest.find(u"]]>"), rest.find(u'\r'));
      if (end == rest.npos) {
        write(rest, Place::Raw);
        break;
      }
      const bool isReturn = rest[end] == u'\r';
      write(rest.substr(0, isReturn ? end : end + 2), Place::Raw);
      out_.append(isReturn ? "]]>&#xD;<![CDATA[" : "]]><![CDATA[");
      rest.remove_prefix(isReturn ? end + 1 : end + 2);
    }
    out_.append("]]>");
  }

  static bool holdsText(const DOMNode& element) {
    for (const DOMNode* child = element.getFirstChild(); child; child = child->getNextSibling()) {
      const short kind = child->getNodeType();
      if (kind == DOMNode::TEXT_NODE || kind == DOMNode::CDATA_SECTION_NODE ||
          kind == DOMNode::ENTITY_REFERENCE_NODE) {
        return true;
      }
    }
    return false;
  }

  void startLine(const DOMNode& node) {
    if (!whiteSpace_ || out_.empty()) return;
    const DOMNode* parent = node.getParentNode();
    if (parents_.empty() ? parent && !holdsText(*parent) : !parents_.back().holdsText) newLine();
  }

  void newLine() {
    out_.append('\n');
    for (std::size_t i = 0; i < std::min(depth_, deepestIndent); ++i) out_.append("  ");
  }

  void write(const XMLCh* text, Place place) {
    if (text) write(std::u16string_view(text), place);
  }

  void write(std::u16string_view text, Place place) {
    // Runs of plain ASCII, which are nearly everything, are copied without a look-up each.
    constexpr std::size_t longestRun = 4096;
    const PlainTable& isPlain = plainTables[static_cast<int>(place)];
    while (!text.empty()) {
      const std::size_t most = std::min(text.size(), longestRun);
      char* next = out_.room(most);
      std::size_t size = 0;
      while (size < most && text[size] < asciiSize && isPlain[text[size]]) {
        next[size] = static_cast<char>(text[size]);
        ++size;
      }
      out_.commit(size);
      if (size < most) size += writeSpecial(text.substr(size), place);
      text.remove_prefix(size);
    }
  }

  // Writes the first character, or more of its kind; answers how many units.
  std::size_t writeSpecial(std::u16string_view text, Place place) {
    const auto end = std::find_if_not(text.begin(), text.end(), isWide);
    if (const std::size_t size = end - text.begin(); size > 0) {
      wide_.clear();
      utf::appendUtf8(wide_, text.substr(0, size));
      out_.append(wide_);
      return size;
    }
    text[0] >= 0xFFFE ? out_.append(replacement) : writeControl(text[0], place);
    return 1;
  }

  // Markup, the controls of both ASCII and Latin-1, and the line ends that XML 1.1 adds.
  void writeControl(char16_t unit, Place place) {
    const bool isLineEnd = isXml11_ && (unit == 0x85 || unit == 0x2028);
    const bool isBlank = unit == u'\t' || unit == u'\n' || unit == u'\r';
    if (place != Place::Raw && (unit == u'<' || unit == u'>' || unit == u'&' || unit == u'"')) {
      out_.append(unit == u'<'   ? "&lt;"
                  : unit == u'>' ? "&gt;"
                  : unit == u'&' ? "&amp;"
                                 : "&quot;");
    } else if (place == Place::Raw || (unit == u'\t' && place == Place::Text)) {
      const bool isLost = unit < 0x20 && !isBlank;
      isLost ? out_.append(replacement) : writeUnit(unit);
    } else if (isBlank || isLineEnd || (isXml11_ && unit != 0 && unit < 0xA0)) {
      writeReference(unit);
    } else if (unit < 0x20) {
      out_.append(replacement);
    } else {
      writeUnit(unit);
    }
  }

  void writeUnit(char16_t unit) {
    wide_.clear();
    utf::appendUtf8(wide_, {&unit, 1});
    out_.append(wide_);
  }

  void writeReference(char16_t unit) {
    constexpr char digits[] = "0123456789ABCDEF";
    out_.append("&#x");
    for (int shift = 12; shift >= 0; shift -= 4) {
      if (unit >> shift || shift == 0) out_.append(digits[(unit >> shift) & 0xF]);
    }
    out_.append(';');
  }

  TextBuffer& out_;
  const bool whiteSpace_;
  bool isXml11_ = false;
  bool hasDoctype_ = false;
  std::vector<Parent> parents_;  // asking a node for its parent takes longer
  std::size_t depth_ = 0;
  std::string wide_;  // scratch
};

}  // namespace

void writeXml(const DOMNode& node, TextBuffer& out, bool whiteSpace) {
  Writer(out, whiteSpace).write(node);
}

std::string xmlText(const DOMNode& node, bool whiteSpace) {
  TextBuffer out;
  writeXml(node, out, whiteSpace);
  return out.take();
}
