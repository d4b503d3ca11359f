// What the library tells of documents that have something wrong.
#include <gtest/gtest.h>

#include <xercesc/dom/DOM.hpp>

#include "bothroads.h"
#include "charttemplate.h"
#include "commandcases.h"
#include "documentnode.h"
#include "misspelling.h"
#include "treetransformer.h"

namespace {

using bothroads::toldOf;

// A chart whose body starts at line 2.
std::string chart(const std::string& body) {
  return chartText("\n" + body);
}

std::string utf16(const std::string& ascii) {
  std::string text = "\xFF\xFE";
  for (const char c : ascii) text += {c, '\0'};
  return text;
}

std::string rows(const std::string& text) {
  return "<embeddedSource id='a'><names>x</names>" + text + "</embeddedSource>";
}

struct Case {
  std::string text;
  std::string ofParse;
  std::string all;  // "=" for the same
};

TEST(Problems, AreToldWithTheirPlaces) {
  const std::string doctype = "<!DOCTYPE graph [<!ELEMENT graph ANY>]>\n";
  const std::string own = "<!DOCTYPE a [<!ELEMENT a ANY>]>\n<a/>";
  const Case cases[] = {
      {chart(""), "", "="},
      // A parse ends with what refuses the text; all goes on.
      {chart("<grap/>\n<stile/>"), "2:8 no declaration found for element 'grap'",
       "2:8 element 'grap' is not allowed in 'visualization'; did you mean 'graph'?\n"
       "3:9 element 'stile' is not allowed in 'visualization'; did you mean 'style'?"},
      // Values and links are tolerated; links are only looked for when all is asked for.
      {chart("<graph id='g' cellStyle='none'/>"), "",
       "~2:33 attribute 'cellStyle' of 'graph': no element has the id 'none'"},
      {chart("<labelFrame><location part='x'/></labelFrame><graph/>\n<b/>"),
       "~2:33 value 'x' not in enumeration\n3:5 no declaration found for element 'b'",
       "~2:33 attribute 'part' of 'location': value 'x' not in enumeration\n"
       "3:5 element 'b' is not allowed in 'visualization'"},
      {"", "1:1 invalid document structure", "="},
      // Valid by itself, and still nothing that the library knows.
      {own, "", "2:5 'a' is the root of no chart, data document, template or tree"},
      {"<!DOCTYPE grahp [<!ELEMENT grahp ANY>]><grahp/>", "",
       "1:48 'grahp' is the root of no chart, data document, template or tree; did you mean "
       "'graph'?"},
      // What the parser library passes over; the one that comes first.
      {doctype + std::string("<graph>\xC3\xA4\xF0\x9F\x98\x80</graph>\r\n\0<b>", 27),
       "3:1 the document has a character 0", "="},
      {doctype + "<graph>\xC3\xA4\xF0\x9F\x98\x80\xF5\x80\x80\x80</graph>" + '\0',
       "2:11 the document has bytes that are no UTF-8", "="},
      // An exception of the parser library's, which ends the scan as if it were a value's.
      {chart("<graph/>\xF4\x90\x80\x80"),
       "1:39 invalid bytes '\xEF\xBF\xBD' and '\xEF\xBF\xBD' of a 4-byte sequence", "="},
      {utf16(doctype + "<graph/>\n" + '\0'), "3:1 the document has a character 0", "="},
      {"<?xml version='1.0' encoding='ISO-8859-1'?>" + doctype + "<graph>\xF5</graph>", "", "="},
  };
  ChartBase base;
  EXPECT_EQ(toldOf(base.getProblems()), "");
  for (const Case& each : cases) {
    const bool isRead = base.parseDocument(each.text) != nullptr;
    EXPECT_NE(isRead, !base.getProblems().empty() && base.getProblems().back().isRefused);
    EXPECT_EQ(toldOf(base.getProblems()), each.ofParse) << each.text;
    EXPECT_EQ(toldOf(base.findProblems(each.text)), each.all == "=" ? each.ofParse : each.all)
        << each.text;
    EXPECT_EQ(toldOf(base.getProblems()), each.ofParse) << each.text;
  }
}

TEST(Problems, AreBoundedInNumberAndLength) {
  const std::string longName(3000, 'n');
  ChartBase base;
  ASSERT_NE(
      base.parseDocument(chart("<labelFrame><location part='" + longName + "'/></labelFrame>")),
      nullptr);
  ASSERT_EQ(base.getProblems().size(), 1u);
  EXPECT_LE(base.getProblems()[0].message.size(), ChartProblem::longestMessage);
  const auto all = base.findProblems(chart("<" + longName + "\xC3\xA4/>"));
  ASSERT_FALSE(all.empty());
  EXPECT_LE(all[0].message.size(), ChartProblem::longestMessage);
  EXPECT_TRUE(all[0].message.ends_with("n..."));
  for (const bool isWhole : {true, false}) {
    std::string frames;
    for (std::size_t i = 0; i <= ChartProblem::mostProblems; ++i) {
      frames += "<labelFrame><location part='x'/></labelFrame>";
    }
    const std::string text = chart(frames + (isWhole ? "" : "<b>"));
    EXPECT_EQ(base.parseDocument(text) != nullptr, isWhole);
    for (const auto& problems : {base.getProblems(), base.findProblems(text)}) {
      ASSERT_EQ(problems.size(), ChartProblem::mostProblems);
      EXPECT_EQ(problems.back().message, "there are more problems than are told");
    }
    EXPECT_EQ(base.getProblems()[ChartProblem::mostProblems - 2].isRefused, !isWhole);
  }
}

// On the road on which no parser reads the rows, too.
TEST(Problems, KeepTheirPlacesBehindRows) {
  const std::string bad = "<labelFrame><location part='x'/></labelFrame>";
  for (const std::string& text :
       {rows("<row>1</row><row>\xC3\xA4\xF0\x9F\x98\x80</row>") + bad,
        bad + rows("\n<row>1</row>\r\n<row/>\n") + bad + "\n" + bad,
        rows("<row>1</row>") + "\n" + bad + rows("<row>1</row>\n<row>2</row>") + bad}) {
    const bothroads::Seen seen = bothroads::both(chart(text));
    EXPECT_NE(seen.separated.find("not in enumeration"), std::string::npos);
    EXPECT_EQ(seen.separated, seen.read);
  }
}

TEST(Problems, OfTransformersAreThoseOfWhatTheyReadLast) {
  EXPECT_EQ(toldOf(ChartTransformer("").getProblems()), "0:0 the text is empty");
  EXPECT_EQ(toldOf(ChartTransformer("<a/>", "").getProblems()),
            "0:0 the chart is no whole compressed text");
  EXPECT_EQ(toldOf(ChartTransformer("xa", nullptr, 0).getProblems()),
            "0:0 the chart is no whole compressed text");
  ChartTransformer transformer(chart("<graph/>"));
  EXPECT_EQ(toldOf(transformer.getProblems()), "");
  transformer.applyTemplate("<template>");
  EXPECT_EQ(toldOf(transformer.getProblems()).substr(0, 5), "1:11 ");
  transformer.applyTemplate(templateText("<setOrder/>\n<setOrdre/>x<addFrame/>"));
  EXPECT_EQ(toldOf(transformer.getProblems()),
            "~2:1 'setOrdre' is no command; did you mean 'setOrder'?");

  TreeTransformer tree("<PMML>", "");
  EXPECT_EQ(toldOf(tree.getProblems()), "");
  EXPECT_FALSE(tree.applyTemplate("<displaySettings>"));
  EXPECT_EQ(toldOf(tree.getProblems()).substr(0, 5), "1:18 ");
}

TEST(Nodes, StandWhereTheyWereWritten) {
  const ChartBase holder;
  const auto root = DocumentNode::read(
      "<t:a xmlns:t='u' p='1'>\n <b q='&lt;'/> \xC3\xA4&#65;<c>\n\n x<!--y--></c></t:a>");
  ASSERT_TRUE(root);
  EXPECT_EQ(root->localName(), "a");
  EXPECT_EQ(root->attributes.size(), 1u);
  ASSERT_EQ(root->children.size(), 3u);
  const DocumentNode& b = root->children[0];
  EXPECT_EQ(*b.attribute("q"), "<");
  EXPECT_EQ(b.attribute("p"), nullptr);
  EXPECT_EQ(std::pair(b.line, b.column), std::pair(2ul, 2ul));
  const DocumentNode& text = root->children[1];
  EXPECT_TRUE(text.isText());
  EXPECT_EQ(text.text,
            " \xC3\xA4"
            "A");
  EXPECT_EQ(std::pair(text.line, text.column), std::pair(2ul, 16ul));
  const DocumentNode& c = root->children[2];
  EXPECT_TRUE(c.hasOtherNodes);
  EXPECT_EQ(std::pair(c.children[0].line, c.children[0].column), std::pair(4ul, 2ul));

  EXPECT_EQ(DocumentNode::read("<a xmlns='u'/>", false)->attributes.size(), 1u);
  ChartProblem problem;
  EXPECT_FALSE(DocumentNode::read("<a>\n<b></a>", true, &problem));
  EXPECT_EQ(toldOf({problem}), "2:6 expected end of tag 'b'");
  EXPECT_FALSE(DocumentNode::read("<a><t:b/></a>", true));
  EXPECT_TRUE(DocumentNode::read("<a><t:b/></a>", false));
}

TEST(Misspellings, AreOfTheNearestName) {
  const std::vector<std::string> names = {"log", "linear", "logarithmic", "x"};
  const std::pair<const char*, const char*> cases[] = {{"lgo", "log"},
                                                       {"LOG", "log"},
                                                       {"lineer", "linear"},
                                                       {"logaritmic", "logarithmic"},
                                                       {"q", nullptr},
                                                       {"", nullptr},
                                                       {"lo", nullptr},
                                                       {"logs", "log"},
                                                       {"linaer", "linear"},
                                                       {"lnaer", nullptr},
                                                       {"logarithmically", nullptr}};
  for (const auto& [word, name] : cases) {
    const std::string* meant = misspelling::meantBy(word, names);
    EXPECT_EQ(meant ? *meant : "none", name ? name : "none") << word;
  }
  EXPECT_EQ(misspelling::suggestion("lgo", names), "; did you mean 'log'?");
  EXPECT_EQ(misspelling::suggestion("q", names), "");
}

}  // namespace
