#include "xmlwriter.h"

#include <algorithm>
#include <string_view>

#include <xercesc/util/XMLString.hpp>

#include "utf.h"

using namespace xercesc;

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

class Writer {
 public:
  Writer(std::string& out, bool whiteSpace) : out_(out), whiteSpace_(whiteSpace) {}

  void write(const DOMNode& top) {
    const DOMDocument* document = top.getNodeType() == DOMNode::DOCUMENT_NODE
                                      ? static_cast<const DOMDocument*>(&top)
                                      : top.getOwnerDocument();
    isXml11_ = document && XMLString::equals(document->getXmlVersion(), u"1.1");
    keepsEntities_ = document && document->getDoctype();

    const DOMNode* node = &top;
    while (node) {
      const DOMNode* next = open(*node) ? node->getFirstChild() : nullptr;
      while (!next) {
        if (node == &top) return;
        next = node->getNextSibling();
        if (!next) {
          node = node->getParentNode();
          close(*node);
        }
      }
      node = next;
    }
  }

 private:
  // What a character means where it stands.
  enum class Place { Text, Attribute, Raw };

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
        if (!keepsEntities_) return node.hasChildNodes();
        out_ += '&';
        write(node.getNodeName(), Place::Raw);
        out_ += ';';
        return false;
      case DOMNode::PROCESSING_INSTRUCTION_NODE:
        startLine(node);
        writeInstruction(node);
        return false;
      case DOMNode::COMMENT_NODE:
        startLine(node);
        out_ += "<!--";
        write(node.getNodeValue(), Place::Raw);
        out_ += "-->";
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

  void close(const DOMNode& node) {
    if (node.getNodeType() != DOMNode::ELEMENT_NODE) return;
    --depth_;
    if (whiteSpace_ && !holdsText(node)) newLine();
    out_ += "</";
    write(node.getNodeName(), Place::Raw);
    out_ += '>';
  }

  bool openElement(const DOMElement& element) {
    startLine(element);
    out_ += '<';
    write(element.getNodeName(), Place::Raw);
    writeAttributes(*element.getAttributes());
    if (!element.hasChildNodes()) {
      out_ += "/>";
      return false;
    }
    out_ += '>';
    ++depth_;
    return true;
  }

  void writeAttributes(const DOMNamedNodeMap& attributes) {
    const XMLSize_t count = attributes.getLength();
    const DOMNode* id = count > 0 ? attributes.getNamedItem(u"id") : nullptr;
    if (id) writeAttribute(*id);
    for (XMLSize_t i = 0; i < count; ++i) {
      const DOMNode* attribute = attributes.item(i);
      if (attribute != id) writeAttribute(*attribute);
    }
  }

  void writeAttribute(const DOMNode& attribute) {
    out_ += ' ';
    write(attribute.getNodeName(), Place::Raw);
    out_ += "=\"";
    write(attribute.getNodeValue(), Place::Attribute);
    out_ += '"';
  }

  void writeDeclaration(const DOMDocument& document) {
    out_ += isXml11_ ? "<?xml version=\"1.1\"" : "<?xml version=\"1.0\"";
    out_ += " encoding=\"UTF-8\"";
    if (document.getXmlStandalone()) out_ += " standalone=\"yes\"";
    out_ += "?>";
  }

  void writeDoctype(const DOMDocumentType& doctype) {
    out_ += "<!DOCTYPE ";
    write(doctype.getName(), Place::Raw);
    // The parser gives an empty public identifier where there is none.
    if (const XMLCh* publicId = doctype.getPublicId(); publicId && *publicId) {
      out_ += " PUBLIC ";
      writeQuoted(publicId);
    } else if (doctype.getSystemId()) {
      out_ += " SYSTEM";
    }
    if (const XMLCh* systemId = doctype.getSystemId()) {
      out_ += ' ';
      writeQuoted(systemId);
    }
    if (const XMLCh* subset = doctype.getInternalSubset(); subset && *subset) {
      out_ += " [";
      write(subset, Place::Raw);
      out_ += ']';
    }
    out_ += '>';
  }

  // Identifiers have no escapes: one holds at most one of the two kinds of quotes.
  void writeQuoted(const XMLCh* text) {
    const char quote = XMLString::indexOf(text, u'"') < 0 ? '"' : '\'';
    out_ += quote;
    write(text, Place::Raw);
    out_ += quote;
  }

  void writeInstruction(const DOMNode& node) {
    out_ += "<?";
    write(node.getNodeName(), Place::Raw);
    if (const XMLCh* data = node.getNodeValue(); data && *data) {
      out_ += ' ';
      write(data, Place::Raw);
    }
    out_ += "?>";
  }

  // A section can hold neither its own end nor a carriage return: it is closed around them.
  void writeCData(const XMLCh* value) {
    out_ += "<![CDATA[";
    for (std::u16string_view rest(value); !rest.empty();) {
      const std::size_t end = std::min(rest.find(u"]]>"), rest.find(u'\r'));
      if (end == rest.npos) {
        write(rest, Place::Raw);
        break;
      }
      const bool isReturn = rest[end] == u'\r';
      write(rest.substr(0, isReturn ? end : end + 2), Place::Raw);
      out_ += isReturn ? "]]>&#xD;<![CDATA[" : "]]><![CDATA[";
      rest.remove_prefix(isReturn ? end + 1 : end + 2);
    }
    out_ += "]]>";
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
    if (parent && !holdsText(*parent)) newLine();
  }

  void newLine() { out_.append(1, '\n').append(2 * depth_, ' '); }

  void write(const XMLCh* text, Place place) {
    if (text) write(std::u16string_view(text), place);
  }

  void write(std::u16string_view text, Place place) {
    // Runs of plain ASCII, which are nearly everything, are copied without a look-up each.
    const std::size_t start = out_.size();
    out_.resize(start + text.size());
    char* next = out_.data() + start;
    std::size_t i = 0;
    while (i < text.size() && isPlain(text[i], place)) *next++ = static_cast<char>(text[i++]);
    out_.resize(start + i);
    if (i < text.size()) writeSpecial(text.substr(i), place);
  }

  static bool isPlain(char16_t unit, Place place) {
    if (unit >= 0x7F || unit < 0x20) return unit == u'\n' && place != Place::Attribute;
    return place == Place::Raw || (unit != u'<' && unit != u'>' && unit != u'&' && unit != u'"');
  }

  void writeSpecial(std::u16string_view text, Place place) {
    for (std::size_t i = 0; i < text.size();) {
      const char16_t unit = text[i];
      if (isPlain(unit, place)) {
        out_ += static_cast<char>(unit);
        ++i;
      } else if (unit < 0xA0 || unit == 0x2028) {
        writeControl(unit, place);
        ++i;
      } else {
        const std::size_t end = endOfWide(text, i);
        if (unit == 0xFFFE || unit == 0xFFFF) {
          out_ += replacement;
        } else {
          utf::appendUtf8(out_, text.substr(i, end - i));
        }
        i = end;
      }
    }
  }

  // Behind the character at `i`, which is one unit or a surrogate pair.
  static std::size_t endOfWide(std::u16string_view text, std::size_t i) {
    const bool isPair = text[i] >= 0xD800 && text[i] <= 0xDBFF && i + 1 < text.size() &&
                        text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
    return i + (isPair ? 2 : 1);
  }

  // Markup, the controls of both ASCII and Latin-1, and the line ends that XML 1.1 adds.
  void writeControl(char16_t unit, Place place) {
    const bool isLineEnd = isXml11_ && (unit == 0x85 || unit == 0x2028);
    const bool isBlank = unit == u'\t' || unit == u'\n' || unit == u'\r';
    if (place != Place::Raw && (unit == u'<' || unit == u'>' || unit == u'&' || unit == u'"')) {
      out_ += unit == u'<' ? "&lt;" : unit == u'>' ? "&gt;" : unit == u'&' ? "&amp;" : "&quot;";
    } else if (place == Place::Raw || (unit == u'\t' && place == Place::Text)) {
      const bool isLost = unit < 0x20 && !isBlank;
      isLost ? void(out_ += replacement) : utf::appendUtf8(out_, {&unit, 1});
    } else if (isBlank || isLineEnd || (isXml11_ && unit != 0 && unit < 0xA0)) {
      writeReference(unit);
    } else if (unit < 0x20) {
      out_ += replacement;
    } else {
      utf::appendUtf8(out_, {&unit, 1});
    }
  }

  void writeReference(char16_t unit) {
    constexpr char digits[] = "0123456789ABCDEF";
    out_ += "&#x";
    for (int shift = 12; shift >= 0; shift -= 4) {
      if (unit >> shift || shift == 0) out_ += digits[(unit >> shift) & 0xF];
    }
    out_ += ';';
  }

  std::string& out_;
  const bool whiteSpace_;
  bool isXml11_ = false;
  bool keepsEntities_ = false;
  std::size_t depth_ = 0;
};

}  // namespace

void writeXml(const DOMNode& node, std::string& out, bool whiteSpace) {
  Writer(out, whiteSpace).write(node);
}
