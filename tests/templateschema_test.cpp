// The schemas of templates: what they declare, and that they refuse no word of a template.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "charttemplate.h"
#include "commands.h"
#include "dialect.h"
#include "domwalk.h"
#include "grammarpool.h"
#include "plxframes.h"
#include "testplaces.h"
#include "testsupport.h"

using namespace xercesc;

namespace {

using Names = std::set<std::string>;

const std::string older = CHARTXML_HOST "/tavo/visualization";
const std::string newer = CHARTXML_HOST "/software/analytics/tavo/xml/visualization";
// Makes a template name a schema that the shared one doesn't stand for.
const std::string elsewhere = "http://elsewhere.example";

std::string templateText(const std::string& body, const std::string& uri = older,
                         const std::string& version = "1.0", const std::string& place = "") {
  return "<template xmlns='" + uri +
         "' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='" + uri +
         " " + (place.empty() ? uri : place) + "/grafo-template-" + version + ".xsd'>" + body +
         "</template>";
}

std::string utf8(const XMLCh* text) {
  return ChartString(text).toUTF8();
}

std::string attribute(const DOMElement* element, const XMLCh* name) {
  return utf8(element->getAttribute(name));
}

std::vector<DOMElement*> children(const DOMElement* parent) {
  std::vector<DOMElement*> result;
  DOMElement* child = parent->getFirstElementChild();
  for (; child; child = child->getNextElementSibling()) result.push_back(child);
  return result;
}

Names difference(const Names& some, const Names& others) {
  Names result;
  std::set_difference(some.begin(), some.end(), others.begin(), others.end(),
                      std::inserter(result, result.end()));
  return result;
}

// What the document below `parent` uses: "PARENT/CHILD" and "ELEMENT ATTRIBUTE".
void collect(const DOMElement* parent, Names& names) {
  for (const DOMElement* child : children(parent)) {
    names.insert(utf8(parent->getTagName()) + "/" + utf8(child->getTagName()));
    const DOMNamedNodeMap* attributes = child->getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
      names.insert(utf8(child->getTagName()) + " " + utf8(attributes->item(i)->getNodeName()));
    }
    collect(child, names);
  }
}

// The definitions that all versions share, read as a document.
class Definitions {
 public:
  Definitions() {
    parser_.setDoNamespaces(true);
    parser_.parse(CHARTXML_INSTALLATION "/schemas/grafo-template-commands.xsd");
    root_ = parser_.getDocument()->getDocumentElement();
    for (DOMElement* each : children(root_)) {
      global_[utf8(each->getLocalName())][attribute(each, u"name")] = each;
    }
  }

  // All of a kind, or those below `parent`.
  std::vector<DOMElement*> all(const XMLCh* kind, DOMElement* parent = nullptr) const {
    std::vector<DOMElement*> result;
    walkElements(parent ? parent : root_, [&](DOMElement* element) {
      if (XMLString::equals(element->getLocalName(), kind)) result.push_back(element);
      return true;
    });
    return result;
  }
  // Null for a name that is none.
  DOMElement* named(const std::string& kind, const std::string& name) const {
    const auto found = global_.at(kind).find(name);
    return found == global_.at(kind).end() ? nullptr : found->second;
  }

  Names commands() const {
    Names names;
    for (const auto& [name, element] : global_.at("element")) {
      const std::vector<DOMElement*> extension = all(u"extension", element);
      if ((extension.empty() ? attribute(element, u"type") : attribute(extension[0], u"base")) ==
          "command") {
        names.insert(name);
      }
    }
    return names;
  }
  Names attributesOf(const std::string& name) const {
    DOMElement* holder = named("element", name);
    if (DOMElement* type = named("complexType", attribute(holder, u"type"))) holder = type;
    Names names;
    for (const DOMElement* each : all(u"attribute", holder)) names.insert(attribute(each, u"name"));
    return names;
  }
  Names childrenOf(const std::string& name) const {
    Names names;
    DOMElement* group = named("group", name);
    if (!group) return names;
    for (const DOMElement* ref : all(u"element", group)) names.insert(attribute(ref, u"ref"));
    for (const DOMElement* ref : all(u"group", group)) {
      names.merge(childrenOf(attribute(ref, u"ref")));
    }
    return names;
  }
  // In the form of collect().
  Names known() const {
    Names names;
    for (const std::string& command : commands()) names.insert("template/" + command);
    for (const auto& [element, unused] : global_.at("element")) {
      for (const std::string& child : childrenOf(element)) names.insert(element + "/" + child);
      for (const std::string& name : attributesOf(element)) names.insert(element + " " + name);
    }
    return names;
  }

 private:
  XercesDOMParser parser_;
  DOMElement* root_;
  // By kind and name.
  std::map<std::string, std::map<std::string, DOMElement*>> global_;
};

class TemplateSchema : public testing::Test {
 protected:
  // Null when the text is refused.
  const DOMElement* parse(const std::string& text) {
    templates_.push_back(std::make_unique<ChartTemplate>(chart_, nullptr));
    return templates_.back()->parseTemplate(text);
  }

  ChartBase base_;
  const Definitions definitions_;
  PlXVisualization chart_{base_.parseDocument(chartText())->getDocumentElement()};
  std::vector<std::unique_ptr<ChartTemplate>> templates_;
};

TEST_F(TemplateSchema, DeclaresTheCommandsWithAllThatTheyRead) {
  const Names declared = definitions_.commands();
  EXPECT_EQ(declared.size(), 59u);
  for (const Command& command : commands()) {
    EXPECT_TRUE(declared.contains(utf8(command.element))) << utf8(command.element);
  }
  const DOMElement* root = parse(readFile(CHARTXML_EXAMPLES "/templates/all-commands.xml"));
  ASSERT_TRUE(root);
  Names used;
  collect(root, used);
  for (const std::string& command : declared) {
    EXPECT_TRUE(used.contains("template/" + command)) << command;
  }
  // What charts have too, other spellings, and the root are told elsewhere; converted templates
  // write more.
  const Names others{"style",     "format",       "unitRule",     "majorticks",     "minorticks",
                     "gridlines", "numberformat", "stringformat", "datetimeformat", "template"};
  const Names written{"addFrame parentFrameId",     "hideFrame frameId",
                      "minorTicks categorical",     "setAxisMargin lowerMapping",
                      "setAxisMargin upperMapping", "setTickLabelAngle labelangle"};
  for (const std::string& name : difference(definitions_.known(), used)) {
    const std::size_t blank = name.find(' ');
    EXPECT_TRUE(blank == name.npos || others.contains(name.substr(0, blank)) ||
                written.contains(name))
        << name;
  }
}

TEST_F(TemplateSchema, SharesStylesAndFormatsWithCharts) {
  for (const char* tag : {"style", "format", "unitRule"}) {
    const dialect::Element* row = dialect::find(ChartString(tag).xc_str(), u"");
    ASSERT_TRUE(row);
    Names chartNames;
    for (const auto& each : row->attributes) chartNames.insert(utf8(each.name));
    if (row->group) {
      for (const auto& each : row->group->attributes) chartNames.insert(utf8(each.name));
    }
    const Names own{"number", "coordinate", "value"};
    EXPECT_EQ(difference(definitions_.attributesOf(tag), own),
              tag == std::string("style") ? difference(chartNames, {"id"}) : chartNames);
  }
}

TEST_F(TemplateSchema, DocumentsEverything) {
  for (const XMLCh* kind : {u"element", u"attribute", u"simpleType", u"complexType"}) {
    for (const DOMElement* each : definitions_.all(kind)) {
      const std::string name = attribute(each, u"name") + attribute(each, u"ref");
      // A type without a name is documented by its element.
      if (name.empty()) continue;
      const DOMElement* first = each->getFirstElementChild();
      ASSERT_TRUE(first && XMLString::equals(first->getLocalName(), u"annotation")) << name;
      EXPECT_GT(XMLString::stringLen(first->getTextContent()), 4u) << name;
    }
  }
  for (const DOMElement* group : definitions_.all(u"group")) {
    const std::string name = attribute(group, u"name") + attribute(group, u"ref");
    EXPECT_TRUE(definitions_.named("element", name)) << name;
  }
}

// What programs are told is what authors are told.
TEST_F(TemplateSchema, DocumentsTheWordsThatItTells) {
  const Names style = definitions_.attributesOf("style");
  Names sources;
  for (const DOMElement* info : definitions_.all(u"appinfo")) {
    const std::string source = attribute(info, u"source");
    sources.insert(source);
    if (source == "needs") {
      const auto* holder = static_cast<const DOMElement*>(info->getParentNode()->getParentNode());
      Names known = definitions_.attributesOf(attribute(holder, u"name"));
      known.merge(definitions_.childrenOf(attribute(holder, u"name")));
      std::string needs = utf8(info->getTextContent());
      std::replace(needs.begin(), needs.end(), '|', ' ');
      std::istringstream names(needs);
      for (std::string name; names >> name;) EXPECT_TRUE(known.contains(name)) << name;
      continue;
    }
    // Sentences, and what stands beside what: templates are drawn at random for that.
    if (Names{"pins", "otherwise", "taken", "depth", "needs-where", "idle-where", "read-beside",
              "read-with", "unread-beside", "stands-for"}
            .contains(source)) {
      continue;
    }
    std::string text = utf8(info->getParentNode()->getFirstChild()->getTextContent());
    std::replace_if(
        text.begin(), text.end(),
        [](unsigned char c) { return !std::isalnum(c) && c != '_' && c != '-'; }, ' ');
    std::istringstream documentation(text);
    const Names documented{std::istream_iterator<std::string>(documentation), {}};
    std::istringstream words(utf8(info->getTextContent()));
    for (std::string word; source != "pattern" && words >> word;) {
      word = word.substr(0, word.find('='));
      EXPECT_TRUE(documented.contains(word) || (source == "keys" && style.contains(word))) << word;
    }
  }
  EXPECT_EQ(sources, (Names{"depth", "idle-where", "keys", "needs", "needs-where", "otherwise",
                            "pattern", "pins", "read-beside", "read-with", "some-words",
                            "stands-for", "taken", "unread-beside", "words"}));
}

TEST_F(TemplateSchema, IsTheSameInEveryVersion) {
  const std::string body = "<setTranspose transpose='true'/><setOrder><bogus/></setOrder>";
  int versions = 0;
  for (const auto& entry : std::filesystem::directory_iterator(CHARTXML_INSTALLATION "/schemas")) {
    const std::string name = entry.path().stem();
    const std::string version =
        name.substr(std::min<std::size_t>(name.rfind('-') + 1, name.size()));
    if (!name.starts_with("grafo-template-") || version == "commands") continue;
    ++versions;
    const std::string& uri = version < "3" ? older : newer;
    const std::string text = templateText(body, uri, version);
    const grammarpool::Kind kind = grammarpool::ofTemplate(text);
    EXPECT_TRUE(grammarpool::serves(kind, grammarpool::shared(kind), text)) << name;
    const DOMElement* root = parse(text);
    const DOMElement* unshared = parse(templateText(body, uri, version, elsewhere));
    ASSERT_TRUE(root && unshared) << name;
    EXPECT_EQ(root->getChildElementCount(), 2u);
    EXPECT_TRUE(unshared->getFirstChild()->isEqualNode(root->getFirstChild()));
  }
  EXPECT_EQ(versions, 28);
}

TEST_F(TemplateSchema, RefusesNoWord) {
  const std::string bodies[] = {
      "",
      "Text between <!-- and --> commands",
      // Elements that are no commands, and commands with a prefix.
      "<setAxisScal role='y'/><bogus>text<style color='red'/><more/></bogus>",
      "<style color='red'/><template/><command/>",
      "<t:setTranspose xmlns:t='" + older + "' transpose='true'/>",
      "<o:setTranspose xmlns:o='urn:other'/><setTranspose xmlns=''/>",
      "<visualization xmlns='" CHARTXML_HOST "/visualization'><bogus/></visualization>",
      // Values, attributes and children that the commands don't know.
      "<setAxisScale role='' method='lgo' invert='maybe' base='ten' o:a='1' xmlns:o='urn:other' "
      "xml:lang='en' rolle='y'/>",
      "<setStyle type='bar'><style number='first' color=' red' glyph-sides='-1'><bogus/></style>"
      "<stile/><o:style xmlns:o='urn:other'/></setStyle>",
      "<setTranspose><setTranspose><label>a</label></setTranspose></setTranspose>",
      "<setOrder><categoryValue role='y'>a<b/></categoryValue></setOrder>",
      "<setGenericAttributes elementName='axis' anything='goes' text='a'/>",
  };
  for (const std::string& body : bodies) {
    for (const std::string& place : {std::string(), elsewhere}) {
      EXPECT_TRUE(parse(templateText(body, older, "2.10", place))) << body;
      EXPECT_TRUE(parse(templateText(body, newer, "3.5", place))) << body;
    }
  }
  EXPECT_TRUE(parse("<t:template xmlns:t='" + older +
                    "' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='" +
                    older + " " + older +
                    "/grafo-template-1.0.xsd' any='thing'><t:setTranspose/></t:template>"));
}

TEST_F(TemplateSchema, RefusesWhatIsNoTemplate) {
  const std::string graphics = templateText("");
  const std::string texts[] = {
      "grafo-template-1.0.xsd",
      "<template><!-- grafo-template-1.0.xsd --></template>",
      "<graphics" + graphics.substr(9, graphics.find("</") - 9) + "</graphics>",
      templateText("<setTranspose>"),
      templateText("<setTranspose>text</setTranspose>"),
      templateText("", older, "3.5"),
      templateText("", newer, "1.0"),
      templateText("", newer, "3.6"),
      templateText("", older, "commands"),
  };
  for (const std::string& text : texts) EXPECT_FALSE(parse(text)) << text;
}

// Commands see no white space between their parts; values and texts keep all of it.
TEST_F(TemplateSchema, TellsTextsFromLayout) {
  const DOMElement* root = parse(templateText(
      "<setTickLabelFormat role=' x '>\n  <stringFormat prefix=' '/>\n</setTickLabelFormat>"
      "<addFrame><label> Sales\n<style/> in 2024 </label></addFrame>"));
  ASSERT_TRUE(root);
  const DOMElement* format = root->getFirstElementChild();
  EXPECT_EQ(format->getChildNodes()->getLength(), 1u);
  EXPECT_EQ(attribute(format, u"role"), " x ");
  EXPECT_EQ(attribute(format->getFirstElementChild(), u"prefix"), " ");
  EXPECT_EQ(utf8(format->getNextElementSibling()->getTextContent()), " Sales\n in 2024 ");
}

TEST_F(TemplateSchema, KnowsAllOfTheExamples) {
  const Names known = definitions_.known();
  for (const char* folder :
       {CHARTXML_EXAMPLES "/templates", CHARTXML_EXAMPLES "/templates/older"}) {
    for (const std::string& file : xmlFiles(folder)) {
      const DOMElement* root = parse(readFile(file));
      ASSERT_TRUE(root) << file;
      Names used;
      collect(root, used);
      EXPECT_EQ(difference(used, known), Names{}) << file;
    }
  }
}

}  // namespace
