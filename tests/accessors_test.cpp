// Every accessor of the model: what setters write is read back, also from the printed chart, and
// stands in the attribute or child that the dialect's table gives it.
#include <gtest/gtest.h>

#include <set>

#include "accessorwalk.h"

using namespace xercesc;

namespace {

using dialect::Attribute;
using dialect::Element;
using dialect::Type;

template <class Row, class Accessor>
std::string label(const Row& row, const Accessor& accessor) {
  return std::string(row.className) + "::" + accessor.name;
}

// What accessors make of a type: many are texts.
Type accessedAs(Type type) {
  const bool isText =
      type == Type::Id || type == Type::Length || type == Type::Lengths || type == Type::Color;
  return isText ? Type::Text : type;
}

// Both ways between enumerators and words. Of several words for a number the first is written;
// numbers without a word are passed over.
void expectWords(PlXBaseElement& object, const Property& property, const Attribute& attribute) {
  std::map<std::u16string, std::u16string> first;
  std::set<std::u16string> texts;
  for (const auto& [number, word] : attribute.words->words) {
    EXPECT_TRUE(texts.insert(word).second);
    first.emplace(spell(number), word);
    object.SetAttribute(attribute.name, word);
    EXPECT_EQ(property.get(object), spell(number));
    property.set(object, spell(number).c_str());
    property.set(object, u"999");
    EXPECT_EQ(object.GetAttribute(attribute.name), first[spell(number)]);
  }
  for (const std::u16string& number : property.samples) EXPECT_TRUE(first.contains(number));
  EXPECT_EQ(first.size(), property.samples.size());
  property.set(object, u"0");
  EXPECT_EQ(object.getImplementation()->hasAttribute(attribute.name), first.contains(u"0"));
}

void expectAbsent(PlXBaseElement& object, const Property& property, const Attribute& attribute) {
  EXPECT_EQ(property.get(object), property.absent);
  EXPECT_FALSE(object.getImplementation()->hasAttribute(attribute.name));
  EXPECT_FALSE(property.isPresent && property.isPresent(object));
}

TEST(Accessors, ReadAnyTextAsTheTableSays) {
  const std::set<std::string> handWritten = {"PlXStyle.width", "PlXStyle.font-size",
                                             "PlXStyle.size", "CTCoordinate.variable"};
  const Chart chart;
  std::set<const Attribute*> seen;
  std::set<const dialect::Words*> words = {nullptr};
  for (const Element& row : dialect::elements()) {
    PlXBaseElement& object = chart.full(row);
    for (const Property& property : propertiesOf(row)) {
      SCOPED_TRACE(label(row, property));
      const Attribute* attribute = *seen.insert(attributeOf(row, property)).first;
      ASSERT_TRUE(attribute);
      EXPECT_EQ(property.type, accessedAs(attribute->type));
      words.insert(attribute->words);
      const auto reads = [&](const XMLCh* text) {
        object.SetAttribute(attribute->name, text);
        return property.get(object);
      };
      expectAbsent(object, property, *attribute);
      EXPECT_EQ(reads(u"odd"), property.type == Type::Text   ? u"odd"
                               : property.type == Type::Flag ? u"0"
                                                             : property.absent);
      if (property.remove) {
        property.remove(object);
        expectAbsent(object, property, *attribute);
      }
      if (property.type == Type::Text) {
        reads(u"odd");
        property.set(object, nullptr);
        expectAbsent(object, property, *attribute);
      }
      EXPECT_TRUE(property.type != Type::Flag || reads(u"1") == u"1");
      for (const Element& other : dialect::elements()) {
        if (!property.gives || property.gives(&chart.full(other))) continue;
        chart.full(other).SetAttribute(u"id", u"otherKind");
        EXPECT_EQ(reads(u"otherKind"), property.absent);
        chart.full(other).SetAttribute(u"id", nullptr);
      }
      if (property.type == Type::Word) expectWords(object, property, *attribute);
      reads(nullptr);
    }
    for (const Attribute* attribute : attributesOf(row)) {
      const std::string name = row.className + ("." + utf::toUtf8(attribute->name));
      EXPECT_TRUE(seen.contains(attribute) || attribute->type == Type::Id ||
                  handWritten.contains(name) || name.ends_with("Variable.domain"))
          << name;
    }
  }
  EXPECT_EQ(words.size(), dialect::enumerations().size() + 1);
}

TEST(Accessors, ReadBackWhatTheyWrote) {
  constexpr std::size_t rounds = 24;
  const Chart chart;
  const std::vector<PlXBaseElement*> objects = chart.objects();
  for (std::size_t i = 0; i < objects.size(); ++i) {
    objects[i]->SetAttribute(u"id", (u"id\u00E9-." + spell(i)).c_str());
  }
  for (std::size_t round = 0; round < rounds; ++round) {
    std::size_t offset = round;
    for (const Element& row : dialect::elements()) {
      PlXBaseElement& object = chart.full(row);
      for (const Property& property : propertiesOf(row)) {
        SCOPED_TRACE(label(row, property));
        const Attribute* attribute = attributeOf(row, property);
        if (attribute->type == Type::Id) continue;
        std::vector<PlXBaseElement*> targets = objects;
        std::erase_if(targets, [&](auto* o) { return !property.link || !property.accepts(o); });
        std::u16string value;
        if (property.set) {
          ASSERT_LE(property.samples.size(), rounds);
          value = property.samples[offset++ % property.samples.size()];
          property.set(object, value.c_str());
        } else if (property.link) {
          PlXBaseElement& target = *targets.at(offset++ % targets.size());
          property.link(object, target);
          value = spell(&target);
        } else {
          continue;
        }
        EXPECT_EQ(property.get(object), value);
        EXPECT_TRUE(!property.isPresent || property.isPresent(object));
        std::u16string text = value;
        if (property.type == Type::Flag) text = value == u"1" ? u"true" : u"false";
        if (property.type == Type::Word) {
          const XMLCh* word = attribute->words->textOf(take<int>(value.c_str()));
          text = word ? word : u"(no word)";
        }
        EXPECT_EQ(object.GetAttribute(attribute->name), text);
      }
    }
    const std::string text = chart.root->AsUTF8();
    EXPECT_TRUE(ChartBase::ValidXML(text));
    const Chart again(text);
    ASSERT_TRUE(again.root) << text;
    EXPECT_EQ(again.root->AsUTF8(), text);
    const std::vector<PlXBaseElement*> read = again.objects();
    ASSERT_EQ(read.size(), objects.size());
    for (std::size_t i = 0; i < objects.size(); ++i) {
      const Element& row = *dialect::find(read[i]->getImplementation());
      for (const Property& property : propertiesOf(row)) {
        EXPECT_EQ(property.get(*read[i]), property.get(*objects[i])) << label(row, property);
      }
    }
  }
}

// What adders write of their arguments, less the numbers of made ids.
const std::map<std::string_view, std::string> statedByAdders = {
    {"location", " part=top"},
    {"aggregation", " category=argument minFraction=0.5 variable=sourceVariable"},
    {"variablereference", " ref=sourceVariable"},
    {"statisticsort", " variable=sourceVariable"},
    {"sortmove", " category=argument"},
    {"scale", " method=log"},
    {"conditionalstyle", " style=style when=argument"},
    {"descriptiongroup", " target=visualization"},
    {"description", " name=mean"},
    {"legendtarget", " target=visualization"}};

std::string stated(const PlXBaseElement& added) {
  std::string text;
  const DOMNamedNodeMap* attributes = added.getImplementation()->getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    text += " " + utf::toUtf8(attributes->item(i)->getNodeName()) + "=" +
            utf::toUtf8(attributes->item(i)->getNodeValue());
    while (!text.ends_with("0.5") && std::isdigit(text.back())) text.pop_back();
  }
  return text;
}

TEST(Accessors, AddAndRemoveChildren) {
  const ChartBase held;
  for (const Element& row : dialect::elements()) {
    const Chart chart;
    PlXBaseElement& object = chart.full(row);
    const DOMElement* element = object.getImplementation();
    std::u16string id = u"added";
    for (const Children& children : childrenOf(row)) {
      SCOPED_TRACE(label(row, children));
      ASSERT_TRUE(tagOf(row, children));
      const auto known = statedByAdders.find(children.name);
      const std::string arguments = known != statedByAdders.end() ? known->second : "";
      std::vector<PlXBaseElement*> expected;
      if (children.all) expected = children.all(object);
      if (!children.all && children.one) expected = {children.one(object)};
      EXPECT_EQ(expected.size(), children.all || children.one ? 1u : 0u);
      for (int i = 0; children.add && i < 2; ++i) {
        expected.push_back(children.add(*chart.root, object, nullptr));
        ASSERT_TRUE(expected.back());
        EXPECT_EQ(stated(*expected.back()), arguments);
      }
      if (children.addWithId) {
        id += u'1';
        expected.push_back(children.addWithId(*chart.root, object, id.c_str()));
        EXPECT_EQ(stated(*expected.back()), " id=added" + arguments);
        EXPECT_EQ(object.getElementById(id.c_str()), expected.back()->getImplementation());
      }
      const auto expectChildren = [&] {
        EXPECT_TRUE(!children.all || children.all(object) == expected);
        PlXBaseElement* first = expected.empty() ? nullptr : expected.front();
        EXPECT_TRUE(!children.one || children.one(object) == first);
        for (const PlXBaseElement* child : expected) {
          const DOMElement* node = child->getImplementation();
          EXPECT_EQ(node->getParentNode(), element);
          EXPECT_EQ(std::u16string(dialect::localName(node)), tagOf(row, children));
          EXPECT_EQ(node->getNamespaceURI(), element->getNamespaceURI());
        }
      };
      expectChildren();
      if (children.removeAt) {
        children.removeAt(object, static_cast<unsigned>(expected.size()));
        children.removeAt(object, 1);
        expected.erase(expected.begin() + 1);
        expectChildren();
      }
      if (children.removeAll) {
        const XMLSize_t others = element->getChildElementCount() - expected.size();
        children.removeAll(object);
        expected.clear();
        expectChildren();
        EXPECT_EQ(element->getChildElementCount(), others);
      }
    }
    EXPECT_TRUE(ChartBase::ValidXML(chart.root->AsUTF8())) << row.className;
  }
}

}  // namespace
