// Printing gives text that parses back to an equal document.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "chartprinter.h"

using namespace xercesc;

namespace {

std::string printed(const DOMDocument* document, bool whiteSpace = false) {
  std::ostringstream out;
  ChartPrinter printer;
  printer.setPrintWhiteSpace(whiteSpace);
  printer.Print(document, out);
  return out.str();
}

// A grammar that lets everything through, in front of a root `a`.
std::string withGrammar(const std::string& body, const std::string& declarations = "") {
  return "<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b ANY><!ATTLIST a v CDATA #IMPLIED id ID #IMPLIED "
         "w NMTOKENS #IMPLIED xmlns:p CDATA #IMPLIED>" +
         declarations + "]>" + body;
}

class Printer : public testing::TestWithParam<std::string> {};

TEST_P(Printer, ParsesBackToAnEqualDocument) {
  ChartBase base;
  const DOMDocument* document = base.parseDocument(GetParam());
  ASSERT_NE(document, nullptr);
  const std::string text = printed(document);
  const DOMDocument* again = base.parseDocument(text);
  ASSERT_NE(again, nullptr) << text;
  EXPECT_TRUE(document->isEqualNode(again)) << text;
  EXPECT_EQ(text, printed(again));
}

INSTANTIATE_TEST_SUITE_P(
    Documents, Printer,
    testing::Values(
        withGrammar("<a/>"), withGrammar("<a>&lt;&amp;&gt;&quot;&apos; ]]&gt; \t\n</a>"),
        withGrammar("<a>one&#xD;two&#13;&#10;three</a>"),
        withGrammar(
            "<a v='&#9;tab&#10;feed&#13;return \"quotes\" &apos;one&apos; &lt;&gt;&amp;'/>"),
        withGrammar("<a v='  blanks  ' w=' x   y '>  <b> </b>  </a>"),
        withGrammar(
            "<a v='\xF0\x9F\x93\x88'>\xE6\x97\xA5\xE6\x9C\xAC \xF0\x90\x8D\x88 &#x1F4C8;</a>"),
        withGrammar("<a><![CDATA[<raw>&amp; ]] > ]]>text<![CDATA[]]></a>"),
        "<?xml version='1.0' standalone='yes'?>" +
            withGrammar("<!-- before --><?pi some data?><a><!-- in - side --><?empty?></a>"
                        "<!-- after --><?pi?>"),
        withGrammar("<a>&in;&in; &quote;</a>",
                    "<!ENTITY in '<b>&#38;#60; inner</b>'><!ENTITY quote \"it's &#34;it&#34;\">"),
        withGrammar("<a/>",
                    "<!-- comment ]> --><?pi ]>?><!ENTITY % pe '<!ELEMENT c EMPTY>'>%pe;"
                    "<!NOTATION n PUBLIC 'some id'><!ENTITY picture SYSTEM 'x.gif' NDATA n>"
                    "<!ATTLIST b kind NOTATION (n) #IMPLIED e (one|two) 'one'>\r\n"),
        "<?xml version='1.1'?>" +
            withGrammar("<a v='&#1;&#x85;&#x2028;'>&#1;&#x7F;&#x85;&#x9F;</a>"),
        "<?xml version='1.0' encoding='ISO-8859-1'?>" + withGrammar("<a v='\xE9'>\xFC\x85</a>"),
        // A subset of several blocks, in an encoding that isn't the parser's own.
        "<?xml version='1.0' encoding='Shift_JIS'?>" +
            withGrammar("<a>\x93\xFA\x96\x7B</a>",
                        "<!--" + std::string(9000, 'x') + "\x93\xFA\x96\x7B -->"),
        withGrammar("<a xmlns:p='urn:p' p:v='1'><p:b xmlns:p='urn:q'/></a>",
                    "<!ATTLIST a p:v CDATA #IMPLIED><!ELEMENT p:b EMPTY>"
                    "<!ATTLIST p:b xmlns:p CDATA #IMPLIED>"),
        withGrammar("<a xmlns:p='urn:p'><b/><a p:v='1' p:w='2'/></a>",
                    "<!ATTLIST a p:v CDATA 'd' p:w CDATA 'd' p:x CDATA #FIXED 'd'>")));

TEST(Print, WritesEachNameOnce) {
  ChartBase base;
  const DOMDocument* document = base.parseDocument(withGrammar(
      "<a xmlns:p='urn:p'><a p:v='1'/></a>", "<!ATTLIST a p:v CDATA 'd' p:w CDATA 'e'>"));
  ASSERT_NE(document, nullptr);
  const std::string text = printed(document);
  EXPECT_NE(text.find("<a p:v=\"1\" p:w=\"e\"/>"), text.npos) << text;
}

TEST(PrinterOfBuiltTrees, WritesWhatXmlCanHold) {
  ChartBase base;
  DOMDocument* document = ChartBase::createPlXDocument(nullptr);
  DOMElement* root = document->getDocumentElement();
  root->appendChild(document->createCDATASection(u"a]]>b\rc"));
  root->appendChild(document->createTextNode(u"\x01\xD800x"));
  root->appendChild(document->createComment(u"-a--b---"));
  root->appendChild(document->createProcessingInstruction(u"t", u"x?>y"));
  std::ostringstream out;
  for (DOMNode* node = root->getFirstChild(); node; node = node->getNextSibling()) {
    DOMPrinter().Print(node, out, false);
  }
  EXPECT_EQ(out.str(),
            "<![CDATA[a]]]]><![CDATA[>b]]>&#xD;<![CDATA[c]]>\xEF\xBF\xBD\xEF\xBF\xBDx"
            "<!---a- -b- - - --><?t x? >y?>");
  document->release();
}

// A reference to what no document type declares would make the text unreadable.
TEST(PrinterOfBuiltTrees, RefersToDeclaredEntities) {
  ChartBase base;
  DOMDocument* declaring = base.parseDocument(withGrammar("<a/>", "<!ENTITY e '<b/>text'>"));
  ASSERT_NE(declaring, nullptr);
  declaring->getDocumentElement()->appendChild(declaring->createEntityReference(u"e"));
  for (const bool whiteSpace : {false, true}) {
    const std::string text = printed(declaring, whiteSpace);
    EXPECT_TRUE(text.ends_with("<a>&e;</a>")) << text;
    const DOMDocument* again = base.parseDocument(text);
    ASSERT_NE(again, nullptr) << text;
    EXPECT_TRUE(printed(again).ends_with("<a><b/>text</a>")) << printed(again);
  }
  DOMDocument* other = ChartBase::createPlXDocument(nullptr);
  other->getDocumentElement()->appendChild(other->createEntityReference(u"e"));
  EXPECT_EQ(printed(other).find('&'), std::string::npos);
  EXPECT_NE(base.parseDocument(printed(other)), nullptr);
  other->release();
}

TEST(PrinterWithWhiteSpace, IndentsAllButText) {
  ChartBase base;
  const DOMDocument* document =
      base.parseDocument(withGrammar("<a><b><b/></b><b>text<b/></b><!--c--></a>"));
  ASSERT_NE(document, nullptr);
  const std::string text = printed(document, true);
  EXPECT_EQ(text.substr(text.find("]>") + 2),
            "\n<a>\n  <b>\n    <b/>\n  </b>\n  <b>text<b/></b>\n  <!--c-->\n</a>");
}

// A deep document would grow to the square of its size.
TEST(PrinterWithWhiteSpace, IndentsTheFirstLevelsOnly) {
  ChartBase base;
  DOMDocument* document = ChartBase::createPlXDocument(nullptr);
  DOMNode* parent = document->getDocumentElement();
  constexpr std::size_t levels = 2000;
  for (std::size_t i = 0; i < levels; ++i) {
    parent = parent->appendChild(document->createElement(u"a"));
  }
  const std::string text = printed(document, true);
  EXPECT_NE(text.find('\n' + std::string(128, ' ') + "<a/>\n"), std::string::npos);
  EXPECT_LT(text.size(), levels * 300);
  document->release();
}

}  // namespace
