// TreeTransformer: models and display documents in and out, templates, and every setting.
#include "treetransformer.h"

#include <gtest/gtest.h>

#include <functional>
#include <regex>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>

#include "testplaces.h"
#include "testsupport.h"
#include "treeentityresolver.h"
#include "zlib1211tavo.h"

using namespace xercesc;

namespace {

const std::string modelUri = "http://www.dmg.org/PMML-2_1";
const std::string displayUri = CHARTXML_HOST "/tavo/treeview";
const std::string otherDisplayUri = CHARTXML_HOST "/treeview";

std::string rootTag(const std::string& name, const std::string& uri, const std::string& schema,
                    const std::string& attributes = "") {
  return "<" + name + " xmlns='" + uri +
         "' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='" + uri +
         " " + schema + "'" + attributes + ">";
}

std::string modelText(const std::string& nodes, const std::string& schema = "a/pmml-2-1.xsd") {
  return rootTag("PMML", modelUri, schema, " version='2.1'") +
         "<Header copyright='c'><Timestamp>now</Timestamp></Header><DataDictionary>"
         "<DataField name='age' optype='continuous'><Interval closure='openClosed'/></DataField>"
         "<DataField name='town' optype='categorical'><Value value='Łódź'/></DataField>"
         "</DataDictionary><TreeModel functionName='classification'><MiningSchema>"
         "<MiningField name='age'/><MiningField name='town' "
         "usageType='predicted'/></MiningSchema><LocalTransformations/>" +
         nodes + "</TreeModel></PMML>";
}

// A tree of that many levels; every predicate comes up, in turn.
std::string nodes(int levels, unsigned& count) {
  static const char* predicates[] = {
      "<True/>", "<SimplePredicate field='age' operator='lessOrEqual' value='41.5'/>",
      "<SimplePredicate field='town' operator='isMissing'/>",
      "<SimpleSetPredicate field='town' booleanOperator='isIn'>"
      "<Array n='2' type='string'>Łódź \"New  York\"</Array></SimpleSetPredicate>",
      "<CompoundPredicate booleanOperator='surrogate'><CompoundPredicate booleanOperator='and'>"
      "<False/><True/></CompoundPredicate><False/></CompoundPredicate>"};
  std::string text = "<Node score='&lt;" + std::to_string(count) + "&gt;' recordCount='7'>" +
                     "<Extension name='x'>a <any:b xmlns:any='u'/> c</Extension>" +
                     predicates[count % std::size(predicates)] +
                     "<Partition name='p'/>"
                     "<ScoreDistribution value='yes' recordCount='3'/>";
  ++count;
  if (levels > 1) text += nodes(levels - 1, count) + nodes(levels - 1, count);
  return text + "</Node>";
}

std::string displayText(const std::string& body, const std::string& uri = displayUri,
                        const std::string& attributes = "") {
  return rootTag("displaySettings", uri, uri + "/treeview-1.0.xsd", attributes) + body +
         "</displaySettings>";
}

// What follows the root's tag, without white space between tags.
std::string bodyOf(const std::string& document) {
  const std::string text = std::regex_replace(document, std::regex(">\\s+<"), "><");
  const std::size_t start = text.find('>', text.find("<displaySettings")) + 1;
  return text.ends_with("/>") ? "" : text.substr(start, text.rfind("</") - start);
}

std::string rootOf(const std::string& document) {
  const std::size_t start = document.find("<displaySettings");
  return document.substr(start, document.find('>', start) - start);
}

std::string display(TreeTransformer& tree) {
  return tree.getDisplayData(nullptr);
}

// Equal but for the order of attributes, the kind of quotes and white space between tags.
bool areEqual(TreeTransformer& parser, const std::string& a, const std::string& b) {
  const DOMDocument* first = parser.parseDocument(a);
  const DOMDocument* second = parser.parseDocument(b);
  return first && second && first->getDocumentElement()->isEqualNode(second->getDocumentElement());
}

// ---- models

TEST(TreeModel, ComesBackAsItWasWhicheverWayItGoes) {
  unsigned count = 0;
  std::vector<std::string> models = {modelText(nodes(11, count)),
                                     modelText("<Node><True/></Node>")};
  for (const char* name : {"customers.xml", "rents.xml"}) {
    models.push_back(readFile(std::string(CHARTXML_EXAMPLES "/trees/") + name));
  }
  ASSERT_EQ(count, 2047u);
  for (const std::string& model : models) {
    TreeTransformer plain(model, "");
    unsigned long length = 0;
    const std::string compressed = plain.getCompressedPMML(&length);
    ASSERT_EQ(length, model.size());
    EXPECT_FALSE(plain.isPMMLParsed());

    const std::string printed = plain.getUncompressedPMML(nullptr);
    EXPECT_TRUE(plain.isPMMLParsed());
    EXPECT_TRUE(areEqual(plain, printed, model));
    TreeTransformer again(printed, "");
    EXPECT_EQ(again.getUncompressedPMML(nullptr), printed);

    for (const unsigned long known : {0ul, length}) {
      TreeTransformer stored(compressed, known, "");
      EXPECT_EQ(stored.getUncompressedPMML(nullptr), printed);
      unsigned long found = 1;
      EXPECT_EQ(stored.getCompressedPMML(&found), compressed);
      EXPECT_EQ(found, length);
      EXPECT_EQ(stored.getCompressedPMML(nullptr), compressed);
    }
  }
}

TEST(TreeModel, IsGivenAsStoredWhenItCantBeParsed) {
  const std::string good = modelText("<Node><True/></Node>");
  const std::string bad[] = {modelText("<Node/>"),                        // no predicate
                             modelText("<Node><True/><Other/></Node>"),   // an unknown element
                             modelText("<Node what='1'><True/></Node>"),  // an unknown attribute
                             modelText("<Node><True/></Node>", "a/other.xsd"),  // an unknown schema
                             "<PMML xmlns='" + modelUri + "' version='2.1'/>",  // no schema
                             good.substr(0, good.size() - 3),
                             displayText("<treeZoom/>"),  // damaged; no model
                             "x",
                             ""};
  for (const std::string& text : bad) {
    LogFolder folder;
    TreeTransformer tree(text, "");
    EXPECT_EQ(tree.getUncompressedPMML(nullptr), text);
    EXPECT_FALSE(tree.isPMMLParsed()) << text;
    EXPECT_NE(folder.log().find("TreeTransformer::parseDocument() fatal error at file "
                                "TreeTransformer, line "),
              std::string::npos);
  }
  // A value of the wrong type is no error.
  TreeTransformer tree(modelText("<Node recordCount='many'><True/></Node>"), "");
  EXPECT_NE(tree.getUncompressedPMML(nullptr).find("many"), std::string::npos);
  EXPECT_TRUE(tree.isPMMLParsed());
}

TEST(TreeModel, IsEmptyWhenItCantBeInflated) {
  std::string compressed;
  const std::string text = modelText("<Node><True/></Node>");
  ASSERT_TRUE(zlib1211tavo::compressString(text, compressed));
  for (const unsigned long length : {text.size() + 1, std::size_t(1), ~std::size_t(0)}) {
    TreeTransformer tree(compressed, length, "");
    EXPECT_NE(tree.setupPMMLDOM(), nullptr);
    unsigned long after = 0;
    tree.getCompressedPMML(&after);
    EXPECT_EQ(after, text.size());
  }
  const std::pair<std::string, unsigned long> bad[] = {{text, 0},
                                                       {text, text.size()},
                                                       {compressed + 'x', 0},
                                                       {compressed.substr(0, 20), 0},
                                                       {"", 0}};
  for (const auto& [stored, length] : bad) {
    TreeTransformer tree(stored, length, "");
    EXPECT_EQ(tree.getUncompressedPMML(nullptr), "");
    EXPECT_EQ(tree.setupPMMLDOM(), nullptr);
    unsigned long after = 99;
    EXPECT_EQ(tree.getCompressedPMML(&after), stored);
    EXPECT_EQ(after, length);
  }
}

TEST(TreeModel, DocumentsOutliveLaterParsesAndReleases) {
  TreeTransformer tree(modelText("<Node><True/></Node>"), "");
  const DOMDocument* first = tree.setupPMMLDOM();
  const DOMDocument* other = tree.parseDocument(displayText("<treeZoom factor='9'/>"));
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(tree.applyTemplate(displayText("<treeZoom/>")));
    ASSERT_FALSE(tree.applyTemplate(displayText("<tree/>")));
    tree.getUncompressedPMML(nullptr);
  }
  EXPECT_TRUE(XMLString::equals(first->getDocumentElement()->getTagName(), u"PMML"));
  EXPECT_TRUE(XMLString::equals(
      other->getDocumentElement()->getFirstElementChild()->getAttribute(u"factor"), u"9"));
  EXPECT_NE(tree.setupPMMLDOM(), first);
}

// ---- display documents and templates

TEST(TreeDisplay, StartsWithTheDefaultsOrWhatIsGiven) {
  TreeTransformer tree("", "");
  EXPECT_TRUE(areEqual(tree, display(tree), TreeTransformer::SetupDisplayData()));
  EXPECT_NE(display(tree).find("\n  <treeZoom/>\n"), std::string::npos);

  // A printed document is of the namespace of the one that was parsed, and parses back.
  for (const std::string& uri : {displayUri, otherDisplayUri}) {
    const std::string text =
        displayText("<nodeState x='1'><y>z</y></nodeState>", uri, " olang='fr'");
    TreeTransformer given("", text);
    EXPECT_TRUE(areEqual(given, display(given), text)) << display(given);
  }
  // With a prefix, of anywhere and behind a comment
  const std::string prefixed =
      "<?xml version='1.0'?><!-- c --><t:displaySettings xmlns:t='" + displayUri +
      "' xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:schemaLocation='" + displayUri +
      " treeview-1.0.xsd'><t:treeZoom/></t:displaySettings>";
  TreeTransformer given("", prefixed);
  given.SetZoomFactor(7);
  given.applyFont("F");
  EXPECT_NE(display(given).find("<t:treeZoom factor=\"7\"/>\n  <t:fontData family=\"F\"/>"),
            std::string::npos)
      << display(given);
  TreeTransformer again("", display(given));
  EXPECT_EQ(display(again), display(given));
}

TEST(TreeDisplay, IsAbsentWhenItCantBeParsed) {
  for (const std::string& text :
       {displayText("<what/>"), displayText("<treeZoom zoom='1'/>"), displayText("<treeZoom>"),
        std::string("<displaySettings/>"),
        std::string(
            "<!DOCTYPE displaySettings [<!ELEMENT displaySettings ANY>]><displaySettings/>"),
        modelText("<Node><True/></Node>")}) {
    LogFolder folder;
    TreeTransformer tree("", text);
    EXPECT_EQ(display(tree), "");
    EXPECT_FALSE(tree.applyTemplate(displayText("<treeZoom/>")));
    // None of them may be used, and none does harm.
    tree.SetZoomFactor(3);
    tree.SetOrientation(TreeTransformer::TopDown);
    tree.applyColors(TreeTransformer::ChartColors, {"c"});
    tree.addTargetDateFormat("n", 1, 2);
    tree.addPredictorDate("v", "n", 1, 2);
    tree.addPredictorPrecision("v", 1);
    EXPECT_EQ(tree.GetStatFormatElement(), nullptr);
    EXPECT_FALSE(tree.setSetting("zoom", "3"));
    tree.SetOutputLocale("en", "");
    tree.SetOutputLanguage("en", "");
    EXPECT_NE(folder.log().find("SetOutputLocale fatal error"), std::string::npos);
    EXPECT_NE(folder.log().find("SetOutputLanguage fatal error"), std::string::npos);
  }
}

TEST(TreeDisplay, TemplatesAreMergedWhole) {
  TreeTransformer tree("", displayText("<treeZoom factor='100'/><fontData/>", displayUri,
                                       " locale='de' olang='de'"));
  const std::string before = display(tree);
  for (const std::string& bad :
       {std::string(), std::string("<"), displayText("<treeZoom/><unknown/>"),
        modelText("<Node><True/></Node>"), displayText("<treeZoom/>").substr(0, 250)}) {
    EXPECT_FALSE(tree.applyTemplate(bad));
    EXPECT_EQ(display(tree), before);
  }
  ASSERT_TRUE(
      tree.applyTemplate(displayText("<!--c--><treeZoom factor='50'/><statFormats><dateFormat"
                                     " name='D'/></statFormats>",
                                     otherDisplayUri, " locale='fr'")));
  EXPECT_EQ(bodyOf(display(tree)),
            "<treeZoom factor=\"100\"/><fontData/><!--c--><treeZoom factor=\"50\"/>"
            "<statFormats><dateFormat name=\"D\"/></statFormats>");
  EXPECT_NE(rootOf(display(tree)).find(" locale=\"fr\" olang=\"de\" xmlns=\"" + otherDisplayUri),
            std::string::npos);
  // The first one of a name is the one that is edited.
  tree.SetZoomFactor(200);
  tree.addTargetDateFormat("E", 9, 0);
  EXPECT_EQ(bodyOf(display(tree)),
            "<treeZoom factor=\"200\"/><fontData/><!--c--><treeZoom factor=\"50\"/><statFormats>"
            "<dateFormat name=\"E\" precision=\"0\" width=\"9\"/></statFormats>");
  TreeTransformer again("", display(tree));
  EXPECT_EQ(display(again), display(tree));
}

TEST(TreeDisplay, OutputDocumentsCanBeFilledByHand) {
  TreeTransformer tree("", "");
  DOMDocument* settings = tree.createDisplayDocument(nullptr);
  const DOMElement* root = settings->getDocumentElement();
  EXPECT_TRUE(XMLString::equals(root->getTagName(), u"displaySettings"));
  EXPECT_EQ(ChartString(root->getAttribute(u"xsi:schemaLocation")).toUTF8(),
            otherDisplayUri + " " + otherDisplayUri + "/treeview-1.0.xsd");
  tree.mergeDOM(tree.parseDocument(displayText("<treeZoom factor='6'/>")), settings);
  tree.mergeDOM(nullptr, settings);
  tree.mergeDOM(settings, nullptr);
  tree.mergeDOM(settings, settings);
  std::string text;
  ASSERT_TRUE(zlib1211tavo::decompressString(text, tree.compressDocument(settings)));
  EXPECT_EQ(bodyOf(text), "<treeZoom factor=\"6\"/><treeZoom factor=\"6\"/>");
  EXPECT_EQ(rootOf(text).find(otherDisplayUri + '"'), std::string::npos);
  tree.releaseDocument(settings);

  DOMDocument* model = tree.createPMMLDocument(nullptr);
  tree.mergeDOM(tree.parseDocument(modelText("<Node><True/></Node>")), model);
  ASSERT_TRUE(zlib1211tavo::decompressString(text, tree.compressDocument(model)));
  EXPECT_TRUE(areEqual(tree, text, modelText("<Node><True/></Node>"))) << text;
  tree.releaseDocument(model);
  ASSERT_TRUE(zlib1211tavo::decompressString(text, tree.compressDocument(nullptr)));
  EXPECT_EQ(text, "");
}

TEST(TreeDisplay, TemplatesMayUseOtherPrefixes) {
  const std::string text = displayText("<treeZoom factor='7'/>");
  const std::string otherInstance = std::regex_replace(text, std::regex("xsi"), "i");
  const std::string prefixed =
      std::regex_replace(std::regex_replace(text, std::regex("(</?)(?=[dt])"), "$1t:"),
                         std::regex("xmlns="), "xmlns:t=");
  TreeTransformer tree("", "");
  for (const std::string& merged : {otherInstance, prefixed, text, otherInstance}) {
    ASSERT_TRUE(tree.applyTemplate(merged)) << merged;
    TreeTransformer again("", display(tree));
    EXPECT_EQ(display(again), display(tree)) << merged;
  }
}

// Of both namespaces, in every spelling, one upon the other
TEST(TreeDisplay, StaysOneDocument) {
  std::vector<std::string> documents;
  for (const std::string& uri : {displayUri, otherDisplayUri}) {
    documents.push_back(displayText("<treeZoom/><nodeState a='1'><b/></nodeState>", uri));
    documents.push_back(displayText("<treeZoom xmlns='" + uri + "'/>", uri, " locale='a&amp;b'"));
    for (const char* prefix : {"t", "u"}) {
      const std::string mark = std::string(prefix) + ":";
      documents.push_back("<" + mark + "displaySettings xmlns:" + prefix + "='" + uri +
                          "' xmlns:i='http://www.w3.org/2001/XMLSchema-instance' "
                          "i:schemaLocation='" +
                          uri + " treeview-1.0.xsd'><treeZoom xmlns='" + uri + "'/><" + mark +
                          "nodeState " + mark + "x='1'/></" + mark + "displaySettings>");
    }
  }
  for (const std::string& base : documents) {
    for (const std::string& first : documents) {
      for (const std::string& second : documents) {
        TreeTransformer tree("", base);
        ASSERT_TRUE(tree.applyTemplate(first) && tree.applyTemplate(second)) << base << first;
        TreeTransformer again("", display(tree));
        ASSERT_EQ(display(again), display(tree)) << base << first << second;
      }
    }
  }
}

// ---- settings

TEST(TreeSettings, SettersWriteWhatTheyAreTold) {
  using Tree = TreeTransformer;
  struct Row {
    const char* before;
    std::function<void(Tree&)> set;
    const char* after;
  };
  const Row rows[] = {
      {"", [](Tree& t) { t.SetZoomFactor(1); }, ""},
      {"", [](Tree& t) { t.SetZoomFactor(501); }, ""},
      {"", [](Tree& t) { t.SetZoomFactor(2); }, "<treeZoom factor=\"2\"/>"},
      {"<treeZoom factor='9'/>", [](Tree& t) { t.SetZoomFactor(500); },
       "<treeZoom factor=\"500\"/>"},
      {"<treeZoom factor='9'/>", [](Tree& t) { t.SetZoomFactor(-9); }, "<treeZoom factor=\"9\"/>"},
      {"", [](Tree& t) { t.SetOrientation(Tree::TopDown); },
       "<treeOrientation orientation=\"top-down\"/>"},
      {"", [](Tree& t) { t.SetOrientation(Tree::LeftToRight); },
       "<treeOrientation orientation=\"left-to-right\"/>"},
      {"", [](Tree& t) { t.SetOrientation(Tree::RightToLeft); },
       "<treeOrientation orientation=\"right-to-left\"/>"},
      {"", [](Tree& t) { t.SetOrientation(static_cast<TreeOrientation>(3)); },
       "<treeOrientation/>"},
      {"", [](Tree& t) { t.SetOrientation(static_cast<TreeOrientation>(-1)); },
       "<treeOrientation/>"},
      {"", [](Tree& t) { t.SetTreeDisplayOption(Tree::NodeTable); },
       "<nodeContents contents=\"table\"/>"},
      {"", [](Tree& t) { t.SetTreeDisplayOption(Tree::NodeGraph); },
       "<nodeContents contents=\"graph\"/>"},
      {"", [](Tree& t) { t.SetTreeDisplayOption(Tree::NodeTableAndGraph); },
       "<nodeContents contents=\"both\"/>"},
      {"", [](Tree& t) { t.ShowBranchStatistics(true); }, "<branchStatistics show=\"true\"/>"},
      {"", [](Tree& t) { t.ShowBranchStatistics(false); }, "<branchStatistics show=\"false\"/>"},
      {"", [](Tree& t) { t.ShowNodeDefs(true); }, "<predictorRanges show=\"true\"/>"},
      {"", [](Tree& t) { t.ShowNodeDefs(false); }, "<predictorRanges show=\"false\"/>"},
      {"", [](Tree& t) { t.applyFont("Füße & \"co\""); },
       "<fontData family=\"Füße &amp; &quot;co&quot;\"/>"},
      {"", [](Tree& t) { t.applyColors(Tree::ChartColors, {}); }, ""},
      {"", [](Tree& t) { t.applyColors(static_cast<ColorIds>(2), {"a"}); }, ""},
      {"<colorData><swatchColors><colorItem/></swatchColors></colorData>",
       [](Tree& t) {
         t.applyColors(Tree::SwatchColors, {"a", "b", "c"});
       },
       "<colorData><swatchColors><colorItem value=\"a\"/><colorItem value=\"b\"/>"
       "<colorItem value=\"c\"/></swatchColors></colorData>"},
      {"<chartColors><colorItem value='1'/><!--c--><colorItem/><colorItem/></chartColors>",
       [](Tree& t) { t.applyColors(Tree::ChartColors, {"a,b"}); },
       "<chartColors><colorItem value=\"a,b\"/><!--c--><colorItem/><colorItem/></chartColors>"},
      {"<colorData/>", [](Tree& t) { t.applyColors(Tree::ChartColors, {"a"}); },
       "<colorData/><chartColors><colorItem value=\"a\"/></chartColors>"},
      {"",
       [](Tree& t) {
         t.addTargetDateFormat("D", 1, 2);
         t.addTargetDateFormat("E", 11, -3);
       },
       "<statFormats><dateFormat name=\"E\" precision=\"-3\" width=\"11\"/></statFormats>"},
      {"<statFormats><predictorFormats><predictorItem><dateFormat name='P'/></predictorItem>"
       "</predictorFormats></statFormats>",
       [](Tree& t) { t.addTargetDateFormat("D", 1, 2); },
       "<statFormats><predictorFormats><predictorItem><dateFormat name=\"P\"/></predictorItem>"
       "</predictorFormats><dateFormat name=\"D\" precision=\"2\" width=\"1\"/></statFormats>"},
      {"",
       [](Tree& t) {
         t.addPredictorPrecision("v", 1);
         t.addPredictorPrecision("v", 2);
         t.addPredictorDate("w", "D", 8, 0);
       },
       "<statFormats><predictorFormats><predictorItem precision=\"1\" varName=\"v\"/>"
       "<predictorItem precision=\"2\" varName=\"v\"/><predictorItem varName=\"w\">"
       "<dateFormat name=\"D\" precision=\"0\" width=\"8\"/></predictorItem>"
       "</predictorFormats></statFormats>"},
      {"", [](Tree& t) { t.GetNewPredictorItem(); },
       "<statFormats><predictorFormats><predictorItem/></predictorFormats></statFormats>"},
  };
  for (const Row& row : rows) {
    Tree tree("", displayText(row.before));
    row.set(tree);
    EXPECT_EQ(bodyOf(display(tree)), row.after) << "of " << row.before;
    // What setters make, the schema knows.
    Tree again("", display(tree));
    EXPECT_EQ(display(again), display(tree));
  }
}

TEST(TreeSettings, PlacesAreOfTheRoot) {
  TreeTransformer tree("", "");
  tree.SetOutputLocale("en", "US");
  tree.SetOutputLanguage("pt", "BR");
  EXPECT_NE(rootOf(display(tree)).find(" locale=\"en-US\" olang=\"pt-BR\""), std::string::npos);
  tree.SetOutputLocale("en", "");
  tree.SetOutputLanguage("", "");
  EXPECT_NE(rootOf(display(tree)).find(" locale=\"en\" olang=\"\""), std::string::npos);
}

TEST(TreeSettings, NamesAndValuesAreCheckedBeforeAnythingChanges) {
  const std::pair<const char*, const char*> bad[] = {{"", ""},
                                                     {"Zoom", "3"},
                                                     {"zoom", ""},
                                                     {"zoom", "1"},
                                                     {"zoom", "501"},
                                                     {"zoom", "3 "},
                                                     {"zoom", "+3"},
                                                     {"zoom", "99999999999999999999"},
                                                     {"nodeDefs", "1"},
                                                     {"orientation", ""},
                                                     {"contents", "table|graph"},
                                                     {"chartColors", ""},
                                                     {"chartColors", "a,,b"},
                                                     {"chartColors", "a,"},
                                                     {"targetDate", "D"},
                                                     {"targetDate", "D,1"},
                                                     {"targetDate", "D,1,x"},
                                                     {"targetDate", ",1,2"},
                                                     {"predictorDate", "D,1,2"},
                                                     {"predictorDate", ",D,1,2"},
                                                     {"predictorPrecision", "v,-1"},
                                                     {"predictorPrecision", "v,"}};
  TreeTransformer tree("", displayText(""));
  for (const auto& [name, value] : bad) {
    EXPECT_FALSE(tree.setSetting(name, value)) << name << '=' << value;
  }
  EXPECT_EQ(bodyOf(display(tree)), "");
  EXPECT_TRUE(tree.setSetting("predictorPrecision", "a,b,2"));
  EXPECT_TRUE(tree.setSetting("predictorDate", "a,b,D,3,4"));
  EXPECT_EQ(bodyOf(display(tree)),
            "<statFormats><predictorFormats><predictorItem precision=\"2\" varName=\"a,b\"/>"
            "<predictorItem varName=\"a,b\"><dateFormat name=\"D\" precision=\"4\" width=\"3\"/>"
            "</predictorItem></predictorFormats></statFormats>");
}

TEST(TreeResolver, KnowsTwoNamesWhereverTheyAre) {
  const std::string folder = CHARTXML_INSTALLATION "/schemas/";
  const std::pair<const XMLCh*, std::string> rows[] = {
      {u"http://a/b/pmml-2-1.xsd", folder + "pmml-2-1.xsd"},
      {u"pmml-2-1.xsd", folder + "pmml-2-1.xsd"},
      {u"file:///x/treeview-1.0.xsd", folder + "treeview-1.0.xsd"},
      {u"treeview-1.0.xsd/", folder},
      {u"../../etc/passwd", folder},
      {u"xsd", folder},
      {nullptr, folder}};
  const ChartBase library;
  for (const auto& [name, file] : rows) {
    const std::unique_ptr<InputSource> source(TreeEntityResolver().resolveEntity(nullptr, name));
    const std::string found = ChartString(source->getSystemId()).toUTF8();
    EXPECT_TRUE(std::filesystem::equivalent(found, file)) << found;
  }
}

}  // namespace
