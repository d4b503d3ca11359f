// The dialect's table, the schema and the order in which the model adds children say the same.
#include <gtest/gtest.h>

#include <random>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/framework/psvi/XSAnnotation.hpp>
#include <xercesc/framework/psvi/XSAttributeDeclaration.hpp>
#include <xercesc/framework/psvi/XSAttributeUse.hpp>
#include <xercesc/framework/psvi/XSComplexTypeDefinition.hpp>
#include <xercesc/framework/psvi/XSElementDeclaration.hpp>
#include <xercesc/framework/psvi/XSModel.hpp>
#include <xercesc/framework/psvi/XSModelGroup.hpp>
#include <xercesc/framework/psvi/XSNamedMap.hpp>
#include <xercesc/framework/psvi/XSParticle.hpp>
#include <xercesc/framework/psvi/XSSimpleTypeDefinition.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include "accessorwalk.h"
#include "testplaces.h"
#include "testsupport.h"

using namespace xercesc;

namespace {

using dialect::Element;

// What a schema or the table says, with its documentation: "tag", "tag/child",
// "tag@attribute:type", "enumeration=word".
using Facts = std::map<std::u16string, std::u16string>;

std::u16string documentation(XSAnnotation* annotation) {
  const std::u16string text = annotation ? annotation->getAnnotationString() : u"";
  const std::size_t start = text.find(u"documentation>");
  return start == text.npos ? u"" : text.substr(start + 14, text.rfind(u"</xs:doc") - start - 14);
}

void addFacts(XSComplexTypeDefinition& type, Facts& facts) {
  const std::u16string name = type.getName();
  // What embedded data is made of has no rows in the table.
  const Element* row = dialect::find(name, u"");
  if (name == u"namedRow" || name == u"dataValue") return;
  XSAnnotationList* annotations = type.getAnnotations();
  facts[name] = documentation(annotations ? annotations->elementAt(0) : nullptr);
  const bool isData = row && row->content == dialect::Content::Data;
  XSParticle* particle = isData ? nullptr : type.getParticle();
  XSParticleList* children = particle ? particle->getModelGroupTerm()->getParticles() : nullptr;
  for (XMLSize_t i = 0; children && i < children->size(); ++i) {
    XSElementDeclaration* child = children->elementAt(i)->getElementTerm();
    EXPECT_EQ(std::u16string(child->getName()), child->getTypeDefinition()->getName());
    facts[name + u"/" + child->getName()];
  }
  XSAttributeUseList* uses = type.getAttributeUses();
  for (XMLSize_t i = 0; uses && i < uses->size(); ++i) {
    XSAttributeDeclaration* attribute = uses->elementAt(i)->getAttrDeclaration();
    facts[name + u"@" + attribute->getName() + u":" + attribute->getTypeDefinition()->getName()] =
        documentation(attribute->getAnnotation());
  }
}

Facts factsOfSchema(XSModel& model) {
  Facts facts;
  XSNamedMap<XSObject>* types = model.getComponents(XSConstants::TYPE_DEFINITION);
  for (XMLSize_t i = 0; i < types->getLength(); ++i) {
    auto* type = static_cast<XSTypeDefinition*>(types->item(i));
    if (!std::u16string_view(type->getNamespace()).ends_with(u"/visualization")) continue;
    if (type->getTypeCategory() == XSTypeDefinition::COMPLEX_TYPE) {
      addFacts(*static_cast<XSComplexTypeDefinition*>(type), facts);
      continue;
    }
    StringList* words = static_cast<XSSimpleTypeDefinition*>(type)->getLexicalEnumeration();
    for (XMLSize_t j = 0; words && j < words->size(); ++j) {
      facts[type->getName() + (u"=" + std::u16string(words->elementAt(j)))];
    }
  }
  return facts;
}

Facts factsOfTable() {
  // By dialect::Type.
  const char* const typeNames[] = {"string", "boolean", "double", "integer", "string",
                                   "string", "string",  "ID",     "link"};
  Facts facts;
  for (const dialect::Words* words : dialect::enumerations()) {
    for (const auto& word : words->words) facts[utf::toUtf16(words->name) + u"=" + word.text];
  }
  // Of several records the first is told of.
  for (const Element& row : dialect::elements()) {
    facts.emplace(row.tag, utf::toUtf16(row.documentation));
    for (const auto& child : row.children) facts[row.tag + (u"/" + std::u16string(child.tag))];
    for (const dialect::Attribute* attribute : attributesOf(row)) {
      const auto& [name, type, words, text] = *attribute;
      facts.emplace(row.tag + (u"@" + std::u16string(name)) + u":" +
                        utf::toUtf16(words ? words->name : typeNames[static_cast<int>(type)]),
                    utf::toUtf16(text));
    }
  }
  return facts;
}

TEST(Dialect, IsThatOfTheSchema) {
  const ChartBase base;
  XMLGrammarPoolImpl pool;
  XercesDOMParser parser(nullptr, XMLPlatformUtils::fgMemoryManager, &pool);
  parser.setDoNamespaces(true);
  parser.setDoSchema(true);
  parser.loadGrammar(CHARTXML_INSTALLATION "/schemas/grafo-2.9.xsd", Grammar::SchemaGrammarType,
                     true);
  bool isChanged = false;
  const Facts schema = factsOfSchema(*pool.getXSModel(isChanged));
  EXPECT_EQ(schema, factsOfTable());
  for (const auto& [fact, text] : schema) {
    EXPECT_TRUE(!text.empty() || fact.find_first_of(u"/=") != fact.npos) << utf::toUtf8(fact);
  }
}

// Values for an attribute, in an element of a dimension whose attribute stands at "@".
void expectSameValues(XercesDOMParser& parser, const int& errors, const Element& row,
                      const char* name, std::string element) {
  const dialect::Attribute& attribute = *dialect::attributeOf(row, ChartString(name).xc_str());
  for (const char* value : {"",    "true", "TRUE", "1",  "0",   "-1",  "+1",    "1.5", ".5",
                            "5.",  ".",    "1e3",  "1e", "1,5", "5x",  " 5 ",   "INF", "NaN",
                            "inf", "07",   "0x1",  "a",  "-",   "a b", "ratio", "5a"}) {
    std::string text = element;
    text.replace(text.find('@'), 1, std::string(name) + "='" + value + "'");
    const std::string chart =
        chartText("<graph><coordinates><dimension>" + text + "</dimension></coordinates></graph>");
    const int before = errors;
    parser.parse(
        MemBufInputSource(reinterpret_cast<const XMLByte*>(chart.data()), chart.size(), "chart"));
    EXPECT_EQ(dialect::isOfSchemaType(attribute, ChartString(value).view()), errors == before)
        << name << '=' << value;
  }
}

class ErrorCount : public HandlerBase {
 public:
  void error(const SAXParseException&) override { ++count; }
  int count = 0;
};

TEST(Dialect, KnowsTheValuesThatTheSchemaTakes) {
  const ChartBase base;
  XercesDOMParser parser;
  ErrorCount errors;
  parser.setErrorHandler(&errors);
  parser.setDoNamespaces(true);
  parser.setDoSchema(true);
  parser.setValidationScheme(XercesDOMParser::Val_Always);
  parser.setLoadSchema(false);
  parser.loadGrammar(CHARTXML_INSTALLATION "/schemas/grafo-2.9.xsd", Grammar::SchemaGrammarType,
                     true);
  parser.useCachedGrammarInParse(true);
  const Element& axis = *dialect::find(u"axis", u"");
  for (const char* name : {"id", "style", "opposite", "transform"}) {
    expectSameValues(parser, errors.count, axis, name, "<axis @/>");
  }
  const Element& ticks = *dialect::find(u"majorTicks", u"");
  for (const char* name : {"length", "delta", "labelFrequency"}) {
    expectSameValues(parser, errors.count, ticks, name, "<axis><majorTicks @/></axis>");
  }
}

TEST(Dialect, GivesAddedChildrenTheirPlace) {
  std::mt19937 random(1);
  const Chart chart;
  for (const Element& row : dialect::elements()) {
    DOMElement* parent = chart.full(row).getImplementation();
    parent->appendChild(chart.document->createElement(u"unknown"));
    for (const Children& children : childrenOf(row)) {
      const auto add = children.add ? children.add : children.addWithId;
      if (!add) continue;
      for (XMLSize_t i = parent->getChildElementCount(); i > 0; --i) {
        DOMNode* node = parent->getFirstChild();
        for (auto steps = random() % i; steps > 0; --steps) node = node->getNextSibling();
        parent->appendChild(node);
      }
      const DOMElement* added = add(*chart.root, chart.full(row), nullptr)->getImplementation();
      const auto rank = [&](const DOMElement* e) { return row.rankOf(dialect::localName(e)); };
      const DOMElement* before = added->getPreviousElementSibling();
      EXPECT_TRUE(!before || rank(before) <= rank(added)) << row.className << children.name;
      for (const DOMElement* next = added; (next = next->getNextElementSibling());) {
        EXPECT_LT(rank(added), rank(next)) << row.className << children.name;
      }
    }
  }
}

}  // namespace
