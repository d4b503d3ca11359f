// Parsing, and the XML utilities.
#include "chartbase.h"

#include <gtest/gtest.h>

#include <clocale>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "pathfactory.h"
#include "plxframes.h"
#include "plxstyle.h"
#include "testplaces.h"
#include "testsupport.h"

using namespace xercesc;

namespace {

std::string repeated(const std::string& text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

std::string nested(int depth) {
  return repeated("<style>", depth) + repeated("</style>", depth);
}

std::string label(const std::string& text) {
  return "<labelFrame><label><text>" + text + "</text></label></labelFrame>";
}

std::string doctype(const std::string& declarations) {
  return "<!DOCTYPE visualization [" + declarations + "]>";
}

// Ten references in each of `levels` entities to the one before.
std::string laughs(int levels) {
  std::string text = "<!ENTITY a0 'ha'>";
  for (int i = 1; i <= levels; ++i) {
    text += "<!ENTITY a" + std::to_string(i) + " '" +
            repeated("&a" + std::to_string(i - 1) + ";", 10) + "'>";
  }
  return text;
}

// Parameter entities each of which names the one before twice, and a reference to the last.
std::string doublings(int levels) {
  std::string text = "<!ENTITY % p0 '<!--x-->'>";
  for (int i = 1; i <= levels; ++i) {
    text += "<!ENTITY % p" + std::to_string(i) + " '" +
            repeated("&#37;p" + std::to_string(i - 1) + ";", 2) + "'>";
  }
  return text + "%p" + std::to_string(levels) + ";";
}

// An element with so many attributes in as many namespaces.
std::string attributes(int count) {
  std::string text = "<extension";
  for (int i = 0; i < count / 2; ++i) {
    const std::string prefix = "p" + std::to_string(i);
    text.append(" xmlns:").append(prefix).append("='").append(prefix).append("' ");
    text.append(prefix).append(":a='>'");
  }
  return text + "/>";
}

// Each element with a name of its own.
std::string named(const std::string& start, const std::string& end, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text.append(start).append(std::to_string(i)).append(end);
  return text;
}

// A root of the document type's own.
std::string declaredRoot(const std::string& declarations, const std::string& content) {
  return "<!DOCTYPE graph [" + declarations + "<!ELEMENT a EMPTY><!ELEMENT b EMPTY>]><graph>" +
         content + "</graph>";
}

TEST(Parse, TakesWhatIsWellFormedAndValid) {
  ChartBase base;
  const std::string older = "<visualization xmlns='" CHARTXML_HOST
                            "/visualization' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                            "xsi:schemaLocation='" CHARTXML_HOST "/visualization ";
  const std::string texts[] = {
      chartText(),
      // Values that break their types, double and malformed identifiers among them.
      chartText("<location part='nonsense'/><style visible='maybe' id='a'/><style id='a'/>"
                "<style id='1 a'/>"),
      chartText("", "", " xmlns:other='urn:other' other:free='1'"),
      chartText("<extension anything='goes'/>"),
      chartText(nested(1000)),
      chartText(label("&e;"), doctype("<!ENTITY e 'text'>")),
      chartText(label(repeated("&e;", 1000)), doctype("<!ENTITY e 'some words'>")),
      chartText("", "<!DOCTYPE visualization SYSTEM '" CHARTXML_HOST "/dtd/chartXML20.dtd'>"),
      chartText(label("&e;"), doctype("<!ENTITY % p '<!ENTITY e &#34;text&#34;>'>%p;" +
                                      repeated("%p;", 80) + doublings(3))),
      chartText(attributes(1024)),
      chartText(named("<extension a", "='1'/>", 8000) + named("<style id='s", "'/>", 9000)),
      chartText("<!-- " + attributes(2000) + " --><?x " + attributes(2000) + "?>" +
                label("<![CDATA[" + attributes(2000) + "]]>")),
      declaredRoot("<!ELEMENT graph ((a|b)*,a,(a|b),(a|b))>", "<a/><b/><a/>"),
      older + CHARTXML_HOST "/visualization/grafo-1.4.xsd'/>",
      older + "https://elsewhere.example/any/grafo-2.9.xsd'/>",
  };
  for (const std::string& text : texts) {
    EXPECT_NE(base.parseDocument(text), nullptr) << text.substr(0, 600);
    EXPECT_TRUE(ChartBase::ValidXML(text));
  }
}

TEST(Parse, RefusesTheRestWithALogLine) {
  ChartBase base;
  const LogFolder folder;
  const std::string texts[] = {
      "",
      "text",
      "<a",
      std::string("<a\0/>", 6),
      "\xFF\xFE<",
      "<visualization/>",
      "<visualization xmlns='" CHARTXML_HOST "/visualization'/>",
      chartText("<bogus/>"),
      chartText("", "", " bogus='1'"),
      chartText("text"),
      chartText("<axis/>"),
      chartText(nested(100000)),
      chartText(label("&a11;"), doctype(laughs(11))),
      chartText("<style id='&a11;'/>", doctype(laughs(11))),
      chartText(label(repeated("&q;", 1000)),
                doctype("<!ENTITY q '" + repeated("x", 100000) + "'>")),
      chartText(label(repeated("&q;", 1000)), doctype("<!ENTITY q '" + repeated("x", 4000) + "'>")),
      chartText("<style id='" + repeated("&q;", 1000) + "'/>",
                doctype("<!ENTITY q '" + repeated("x", 4000) + "'>")),
      chartText(repeated("<style/>", 1000),
                doctype("<!ATTLIST style color CDATA '" + repeated("x", 4000) + "'>")),
      chartText(label("&e;"), doctype("<!ENTITY e SYSTEM 'file:///etc/passwd'>")),
      chartText(label("&e;"), doctype("<!ENTITY e SYSTEM '/etc'>")),
      chartText(label("&e;"), doctype("<!ENTITY e SYSTEM 'CMakeLists.txt'>")),
      chartText("", "<!DOCTYPE visualization SYSTEM 'http://127.0.0.1:1/none.dtd'>"),
      chartText("", doctype("<!ELEMENT v " + repeated("(", 100000))),
      chartText("", doctype(doublings(24))),
      chartText(named("<extension a", "='1'/>", 9000)),
      chartText(named("<extension xmlns:a='u", "'/>", 9000)),
      chartText("", doctype("<!ENTITY % p ' '>" + repeated("%p;", 200))),
      chartText("", doctype("<!--" + repeated("x", 20000) + "-->")),
      chartText("<style/>", doctype(laughs(11) + "<!ATTLIST style color CDATA '&a11;'>")),
      chartText("<style id='" + repeated("&q;", 9000) + "'/>",
                doctype("<!ENTITY q '" + repeated("x", 4000) + "'>")),
      // What has no text counts, too.
      chartText(repeated("&q;", 9000), doctype("<!ENTITY q '" + repeated("<style/>", 500) + "'>")),
      chartText(repeated("&q;", 9000), doctype("<!ENTITY q '" + repeated("<?a?>", 800) + "'>")),
      chartText(repeated("&q;", 9000), doctype("<!ENTITY q '" + repeated("<!---->", 500) + "'>")),
      chartText(attributes(1026)),
      declaredRoot("<!ELEMENT graph ((a|b)*,a" + repeated(",(a|b)", 22) + ")>", "<a/>"),
  };
  std::size_t logged = 0;
  for (const std::string& text : texts) {
    EXPECT_EQ(base.parseDocument(text), nullptr) << text.substr(0, 600);
    const std::size_t length = folder.log().size();
    EXPECT_GT(length, logged);
    logged = length;
  }
}

TEST(Parse, ReadsTheSameWithAndWithoutTheSharedSchemas) {
  const std::string text = chartText("<style id='a' visible='maybe'/><location part='left'/>");
  const ChartBase holder;
  ChartBase shared;
  ASSERT_NE(shared.parseDocument(text), nullptr);
  PathFactory* paths = PathFactory::getPathInstance(3);
  ChartBase moved;
  // A parser that was made for another folder reads the schemas of the present one itself.
  ASSERT_NE(moved.parseDocument(text), nullptr);
  const std::string folder = paths->getFolder();
  paths->setInstallationFolder("/nowhere");
  EXPECT_EQ(moved.parseDocument(text), nullptr);
  EXPECT_EQ(ChartBase().parseDocument(text), nullptr);
  paths->setInstallationFolder(CHARTXML_INSTALLATION);
  EXPECT_EQ(paths->getFolder(), folder);
  const DOMDocument* again = moved.parseDocument(text);
  ASSERT_NE(again, nullptr);
  EXPECT_TRUE(again->isEqualNode(shared.parseDocument(text)));
}

TEST(Parse, KeepsEarlierDocuments) {
  ChartBase base;
  const DOMDocument* first = base.parseDocument(chartText("<style id='a'/>"));
  EXPECT_EQ(base.parseDocument("broken"), nullptr);
  const DOMDocument* second = base.parseDocument(chartText("<style id='b'/>"));
  EXPECT_NE(first->getElementById(u"a"), nullptr);
  EXPECT_NE(second->getElementById(u"b"), nullptr);
}

TEST(NewDocuments, NameTheirSchemas) {
  // The front door keeps the library from its first use on, which another test may have made.
  if (!XMLPlatformUtils::fgMemoryManager) {
    EXPECT_EQ(ChartBase::createPlXDocument(nullptr), nullptr);
  }
  ChartBase base;
  for (const auto& [create, schema] : {std::pair(&ChartBase::createPlXDocument, "grafo-2.9.xsd"),
                                       {&ChartBase::createDocument, "grafo-1.4.xsd"}}) {
    DOMDocument* document = create(u"UTF-16");
    const std::string text = PlXVisualization(document->getDocumentElement()).AsUTF8();
    EXPECT_TRUE(ChartBase::ValidXML(text)) << text;
    EXPECT_NE(text.find(schema), text.npos) << text;
    base.releaseDocument(document);
  }
  base.releaseDocument(nullptr);
}

// The operations on a current document need a class that sets it.
class WithDocument : public ChartBase {
 public:
  explicit WithDocument(const std::string& text) { document_ = parseDocument(text); }
  DOMElement* root() { return document_->getDocumentElement(); }
  const DOMDocument& document() const { return *document_; }
};

TEST(Utilities, WorkOnTheCurrentDocument) {
  WithDocument base(chartText("<graph id='g'/><style id='s'/>"));
  const LogFolder folder;
  DOMElement* graph = ChartBase::getChildByTagName(base.root(), u"graph");
  EXPECT_EQ(base.getElementWithAttribute(u"style", u"id", u"s")->getParentNode(), base.root());
  EXPECT_EQ(base.getElementWithAttribute(u"style", u"id", u"g"), nullptr);
  EXPECT_NE(base.getElementWithAttribute(u"style", u"color", nullptr), nullptr);
  EXPECT_EQ(base.getElementWithAttribute(u"*", u"id", u"g"), graph);

  EXPECT_TRUE(base.AddID(graph, u"h"));
  EXPECT_EQ(base.document().getElementById(u"h"), graph);
  EXPECT_FALSE(base.AddID(graph, u""));
  EXPECT_TRUE(base.AddID(graph, u"s"));
  EXPECT_NE(folder.log().find("ID name attribute is empty for element graph at file"),
            std::string::npos);
  EXPECT_NE(folder.log().find("Attempting to add an existing ID to an element (s graph) at file"),
            std::string::npos);

  EXPECT_FALSE(ChartBase().AddID(base.root(), nullptr));
  EXPECT_NE(folder.log().find("is empty for element visualization at"), std::string::npos);

  EXPECT_EQ(base.AddAttribute(graph, u"name", u""), 0);
  EXPECT_TRUE(graph->hasAttribute(u"name"));
  EXPECT_EQ(base.AddAttribute(graph, u"name", nullptr), -1);
  EXPECT_EQ(base.AddAttribute(graph, u"no name", u"v"), -1);
  EXPECT_NE(folder.log().find("attribute value is empty for name name at"), std::string::npos);
  EXPECT_NE(folder.log().find("attribute name does not exist no name v at"), std::string::npos);

  DOMElement* style = base.addStyle(graph, u"t");
  EXPECT_EQ(base.addStyle(graph, u"t"), style);
  EXPECT_EQ(base.addStyle(base.root(), u"t"), style);
  EXPECT_EQ(base.addStyle(graph, u""), nullptr);
  EXPECT_EQ(base.addStyle(nullptr, u"t"), nullptr);

  EXPECT_EQ(base.removeAllChildren(base.root()), 2u);
  EXPECT_EQ(base.removeAllChildren(base.root()), 0u);
  EXPECT_EQ(base.removeAllChildren(nullptr), 0u);
  EXPECT_EQ(base.document().getElementById(u"s"), nullptr);
}

TEST(Utilities, InsertBeforeNamedSiblings) {
  WithDocument base(chartText("<graph/><popup/><style/><popup/>"));
  DOMElement* last = ChartBase::getChildByTagName(base.root(), u"graph");
  DOMElement* legend = base.root()->getOwnerDocument()->createElement(u"legend");
  EXPECT_TRUE(base.insertBeforeSiblings(base.root(), legend, {u"style", u"popup"}));
  EXPECT_EQ(legend->getPreviousSibling(), last);
  EXPECT_TRUE(base.insertBeforeSiblings(base.root(), last, {}));
  EXPECT_EQ(base.root()->getLastChild(), last);
  EXPECT_EQ(ChartBase::getChildByTagName(nullptr, u"graph"), nullptr);
  EXPECT_TRUE(ChartBase::mergeAttributes(base.root(), last));
  EXPECT_TRUE(last->hasAttribute(u"xmlns"));
  EXPECT_FALSE(ChartBase::mergeAttributes(nullptr, last));
  EXPECT_FALSE(base.insertBeforeSiblings(nullptr, last, {}));
  EXPECT_FALSE(base.insertBeforeSiblings(base.root(), nullptr, {}));
}

TEST(Tokens, RunsOfDelimitersCountAsOne) {
  const ChartBase base;
  const std::tuple<const XMLCh*, unsigned, const char*> cases[] = {
      {u"a,,b", 0, "a"}, {u"a,,b", 1, "b"}, {u"a,,b", 2, ""}, {u",a", 0, "a"},
      {u"", 0, ""},      {u",;,", 0, ""},   {nullptr, 0, ""}, {u"a;b,c", 2, "c"}};
  for (const auto& [text, index, token] : cases) {
    EXPECT_EQ(ChartBase::getToken(text, u",;", index).toUTF8(), token);
  }
}

TEST(UniqueIds, TakeTheFirstFreeNumber) {
  ChartBase base;
  DOMDocument* document = base.parseDocument(chartText("<style id='id1'/><style id='style2'/>"));
  PlXVisualization chart(document->getDocumentElement());
  EXPECT_EQ(ChartBase::CreateUniqueId("", chart).toUTF8(), "id2");
  EXPECT_EQ(ChartBase::CreateUniqueId("style", chart).toUTF8(), "style1");
  for (const XMLCh* id : {u"style1", u"style3"}) chart.addStyle()->setId(id);
  EXPECT_EQ(ChartBase::CreateUniqueId("style", chart).toUTF8(), "style4");
  chart.getElementById(u"style2")->setAttribute(u"id", u"renamed");
  EXPECT_EQ(ChartBase::CreateUniqueId("style", chart).toUTF8(), "style2");
}

TEST(NumberTexts, HaveAPointWhateverTheLocale) {
  const ChartBase base;
  const char* comma = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  const ChartBase local;
  for (const ChartBase* each : {&base, &local}) {
    EXPECT_EQ(each->asDouble("1.5"), 1.5);
    EXPECT_EQ(each->asDouble(" -2e3x"), -2000);
    EXPECT_EQ(each->asDouble("x"), 0);
    EXPECT_EQ(each->asDouble(""), 0);
    EXPECT_EQ(each->asString(1.5), "1.5");
    EXPECT_EQ(each->asString(0.1), "0.1");
    EXPECT_EQ(each->asString(0.1234567890123456), "0.1234567890123456");
    EXPECT_EQ(each->asString(1234567.0), "1234567");
    EXPECT_EQ(each->asString(-12), "-12");
  }
  std::setlocale(LC_NUMERIC, "C");
  if (!comma) GTEST_SKIP() << "no locale with a decimal comma here";
}

}  // namespace
