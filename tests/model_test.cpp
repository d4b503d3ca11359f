// What the table of accessors doesn't tell: identifiers, links and lifetimes under edits of every
// kind, and the accessors that are no plain verbs.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "accessorwalk.h"
#include "modelclasses.h"
#include "testsupport.h"

using namespace xercesc;

namespace {

// Holder and attribute, and the id that they name.
using Links = std::map<std::pair<const DOMElement*, std::u16string>, std::u16string>;

Links linksOf(const Chart& chart) {
  Links links;
  for (const PlXBaseElement* object : chart.objects()) {
    const DOMElement* element = object->getImplementation();
    const DOMNamedNodeMap* attributes = element->getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
      const DOMNode* attribute = attributes->item(i);
      if (!dialect::isLink(*dialect::find(element), attribute->getNodeName())) continue;
      links[{element, attribute->getNodeName()}] = attribute->getNodeValue();
    }
  }
  return links;
}

// Adds, links or removes something of an object at random. Answers the link that was set.
Links::key_type change(PlXBaseElement& object, const Chart& chart, std::mt19937& random) {
  const auto pick = [&](const auto& list) -> auto& {
    return list[random() % list.size()];
  };
  const dialect::Element& row = *dialect::find(object.getImplementation());
  const std::vector<Property>& properties = propertiesOf(row);
  const std::vector<Children>& kinds = childrenOf(row);
  if (random() % 2 && !properties.empty()) {
    const Property& property = pick(properties);
    std::vector<PlXBaseElement*> targets = chart.objects();
    std::erase_if(targets, [&](auto* o) { return !property.link || !property.accepts(o); });
    if (targets.empty()) return {};
    property.link(object, *pick(targets));
    return {object.getImplementation(), attributeOf(row, property)->name};
  }
  if (kinds.empty()) return {};
  const Children& kind = pick(kinds);
  if (random() % 2) {
    const std::u16string id = u"added" + spell(random());
    const Children::Add add = kind.addWithId ? kind.addWithId : kind.add;
    if (add) add(*chart.root, object, id.c_str());
  } else if (kind.removeAt) {
    kind.removeAt(object, random() % 2);
  } else if (kind.removeAll) {
    kind.removeAll(object);
  }
  return {};
}

// What must be true of a chart at all times. `ids` are those that there ever were; `before` are
// links that last while both of their ends do.
void expectWhole(const Chart& chart, std::set<std::u16string>& ids, const Links& before) {
  std::map<std::u16string, const DOMElement*> byId;
  std::set<const DOMElement*> elements;
  for (PlXBaseElement* object : chart.objects()) {
    const DOMElement* element = *elements.insert(object->getImplementation()).first;
    EXPECT_EQ(element->getUserData(dialect::localName(element)), object);
    if (const std::u16string id = spell(object); !id.empty()) {
      EXPECT_TRUE(byId.emplace(id, element).second) << utf::toUtf8(id);
      ids.insert(id);
    }
  }
  for (const std::u16string& id : ids) {
    EXPECT_EQ(chart.root->getElementById(id.c_str()), byId.contains(id) ? byId[id] : nullptr);
  }
  const Links after = linksOf(chart);
  for (const auto& [link, id] : after) EXPECT_TRUE(byId.contains(id)) << utf::toUtf8(id);
  for (const auto& [link, id] : before) {
    if (!elements.contains(link.first) || !byId.contains(id)) continue;
    EXPECT_TRUE(after.contains(link) && after.at(link) == id) << utf::toUtf8(link.second);
  }
}

// Runs all that an object in no chart can do.
void exercise(PlXBaseElement& object, const dialect::Element& row, PlXVisualization& root) {
  for (const Property& property : propertiesOf(row)) {
    for (const std::u16string& value : property.samples) property.set(object, value.c_str());
    if (property.link && property.accepts(&root)) property.link(object, root);
    if (property.remove) property.remove(object);
    EXPECT_TRUE(object.getImplementation() || property.get(object) == property.absent);
  }
  for (const Children& kind : childrenOf(row)) {
    EXPECT_TRUE(!kind.add || kind.add(root, object, nullptr)) << row.className << kind.name;
    EXPECT_TRUE(!kind.addWithId || kind.addWithId(root, object, u"ofNoChart")) << kind.name;
    EXPECT_FALSE(root.doesIdExist(u"ofNoChart"));
    if (kind.all) kind.all(object);
    if (kind.one) kind.one(object);
    if (kind.removeAt) kind.removeAt(object, 0);
    if (kind.removeAll) kind.removeAll(object);
  }
}

void editAndEnd(Chart& chart, unsigned seed) {
  DOMElement* top = chart.document->getDocumentElement();
  std::mt19937 random(seed);
  std::set<std::u16string> ids;
  std::map<PlXBaseElement*, std::pair<DOMElement*, const dialect::Element*>> seen;
  expectWhole(chart, ids, {});
  for (int step = 0; step < 200 && !testing::Test::HasFailure(); ++step) {
    const std::vector<PlXBaseElement*> objects = chart.objects();
    for (PlXBaseElement* object : objects) {
      DOMElement* element = object->getImplementation();
      seen.try_emplace(object, element, dialect::find(element));
    }
    Links before = linksOf(chart);
    before.erase(change(*objects[random() % objects.size()], chart, random));
    expectWhole(chart, ids, before);
    EXPECT_TRUE(step % 50 != 0 || ChartBase::ValidXML(chart.root->AsUTF8()));
  }
  const auto all = seen;
  for (PlXBaseElement* object : chart.objects()) seen.erase(object);
  for (const auto& [object, place] : seen) exercise(*object, *place.second, *chart.root);
  expectWhole(chart, ids, {});
  const std::vector<PlXBaseElement*> objects = chart.objects();
  {
    const PlXVisualization second(top);
    for (PlXBaseElement* o : objects) EXPECT_EQ(second.objectOf(o->getImplementation()), o);
  }
  EXPECT_EQ(chart.objects(), objects);
  // The end of the elements, or of the objects.
  while (DOMNode* child = seed % 2 ? top->getFirstChild() : nullptr) {
    top->removeChild(child)->release();
  }
  for (const auto& [object, place] : all) {
    if (object == chart.root.get() || seed % 2 == 0) continue;
    EXPECT_TRUE(seen.contains(object) || !object->getImplementation());
    exercise(*object, *place.second, *chart.root);
  }
  chart.root.reset();
  for (const auto& [object, place] : seed % 2 ? seen : all) {
    EXPECT_EQ(place.first->getUserData(place.second->tag), nullptr);
  }
}

TEST(Model, KeepsIdsAndLinksWholeUnderEdits) {
  const ChartBase held;
  for (unsigned seed = 1; seed <= 8; ++seed) {
    Chart chart;
    editAndEnd(chart, seed);
  }
  unsigned seed = 0;
  for (const std::string& path : exampleFiles()) {
    SCOPED_TRACE(path);
    Chart chart(readFile(path));
    ASSERT_TRUE(chart.root);
    if (is<PlXVisualization>(chart.objects().front())) editAndEnd(chart, ++seed);
  }
}

TEST(Model, MakesAndWithdrawsIdentifiers) {
  const Chart chart;
  PlXVisualization& root = *chart.root;
  PlXStyle& style = *root.addStyle();
  const auto found = [&](const XMLCh* id) { return root.objectOf(root.getElementById(id)); };
  style.setId(u"a");
  EXPECT_EQ(root.getStyleById(u"a"), &style);
  EXPECT_TRUE(style.SetAttribute(u"id", u"b"));
  EXPECT_EQ(found(u"a"), nullptr);
  EXPECT_EQ(found(u"b"), &style);
  DOMElement* pattern = chart.document->createElement(u"style");
  pattern->setAttribute(u"id", u"c");
  pattern->setAttribute(u"color", u"red");
  for (const DOMNode* node : {static_cast<DOMNode*>(pattern), static_cast<DOMNode*>(chart.document),
                              static_cast<DOMNode*>(nullptr)})
    style.importAttributes(node);
  EXPECT_EQ(found(u"b"), nullptr);
  EXPECT_EQ(found(u"c"), &style);
  EXPECT_EQ(spell(style.getColor()), u"red");
  style.setId(nullptr);
  for (const XMLCh* id : {u"c", u"", static_cast<const XMLCh*>(nullptr)})
    EXPECT_FALSE(root.doesIdExist(id));
  EXPECT_FALSE(style.SetAttribute(u"no name", u"x") || style.SetAttribute(nullptr, u"x"));
  // Of two elements of one id, that which stays is found, and keeps its links.
  PlXCycle& cycle = *root.addStyleCycle(nullptr)->addCycle();
  PlXStyle& twin = *cycle.addStyle();
  for (PlXStyle* one : {&style, &twin}) one->setId(u"twin");
  PlXGraph& graph = *root.addGraph(u"graph");
  EXPECT_EQ(root.getStyleById(u"graph"), nullptr);
  graph.setStyle(style);
  root.setStyle(*cycle.addStyle());
  cycle.removeStyles();
  EXPECT_FALSE(root.getImplementation()->hasAttribute(u"style"));
  EXPECT_EQ(graph.getStyle(), &style);
  // What is removed stays without.
  twin.setId(u"removed");
  EXPECT_EQ(found(u"removed"), nullptr);
  // Views that are made on an element do as the objects of the chart.
  PlXGraph view(graph.getImplementation());
  PlXStyle& linked = *cycle.addStyle();
  view.setStyle(linked);
  EXPECT_EQ(graph.getStyle(), &linked);
  EXPECT_EQ(found(linked.getId()), &linked);
  const PlXPoint* point = view.addPoint(u"point");
  EXPECT_EQ(found(u"point"), point);
  // So does what has come by DOM calls; a link that leads elsewhere by now stays.
  DOMElement* added = chart.document->createElement(u"graph");
  added->setAttribute(u"style", linked.getId());
  root.getImplementation()->appendChild(added);
  EXPECT_EQ(root.objectOf(added), root.getGraphs().back());
  graph.setCellStyle(linked);
  graph.setCellStyle(style);
  cycle.removeStyles();
  EXPECT_FALSE(graph.getImplementation()->hasAttribute(u"style"));
  EXPECT_FALSE(added->hasAttribute(u"style"));
  EXPECT_EQ(graph.getCellStyle(), &style);
  const dialect::Element& record = *dialect::find(u"extension", u"visualization");
  for (const XMLCh* name : {u"title12", u"subtitle", u"legend1", u"styleCycleRepository"}) {
    EXPECT_TRUE(dialect::isLink(record, name));
  }
  for (const XMLCh* name : {u"id", u"free1"}) EXPECT_FALSE(dialect::isLink(record, name));
  DOMDocument* older = ChartBase::createDocument(nullptr);
  {
    const PlXVisualization owner(older->getDocumentElement());
    EXPECT_EQ(PlXGraph(older->getDocumentElement()).getVisualization(), &owner);
  }
  older->release();
}

TEST(Model, HasAccessorsThatAreNoPlainVerbs) {
  const Chart chart;
  PlXVisualization& root = *chart.root;
  PlXExtensionVis& record = *root.getExtension();
  PlXLabelFrame& title = *root.addLabelFrame(nullptr);
  PlXLegend& legend = *root.addLegend(nullptr);
  for (const unsigned number : {0u, 1u, 12u}) {
    record.setTitle(title, number);
    record.setFootnote(title, number);
    record.setText(title, number);
    record.setKey(title, number);
    record.setStatisticsSummary(title, number);
    record.setLegend(number, legend);
    for (const PlXLabelFrame* frame :
         {record.getTitle(number), record.getFootnote(number), record.getText(number),
          record.getKey(number), record.getStatisticsSummary(number)})
      EXPECT_EQ(frame, &title);
    EXPECT_EQ(record.getLegend(number), &legend);
  }
  EXPECT_EQ(record.getTitle1(), &title);
  EXPECT_EQ(record.getTitle(2), nullptr);
  EXPECT_EQ(spell(record.getAttribute(u"statisticsSummary12")), title.getId());
  EXPECT_TRUE(record.setAttribute("free", "\U0001F4C8"));
  EXPECT_EQ(spell(record.getAttribute(u"free")), u"\U0001F4C8");

  PlXGraph& graph = *root.addGraph(nullptr);
  const PlXCoordinates* coordinates = graph.addCoordinates(nullptr);
  EXPECT_EQ(graph.getCoordinates(0), coordinates);
  EXPECT_EQ(graph.getCoordinates(1), nullptr);
  for (int part : {0, 4, 0}) graph.addLocation(PlXLocation::ENUM_part(part));
  graph.removeLocation(PlXLocation::part_left);
  EXPECT_EQ(graph.getLocations().at(0)->getPart(), PlXLocation::part_width);
  PlXLine& line = *graph.addLine(nullptr);
  PlXLabeling& labeling = *line.addLabeling();
  root.addGraph(nullptr)->removeElement(line);
  graph.addPoint(nullptr)->removeLabeling(labeling);
  EXPECT_EQ(line.getLabelings().size() + graph.getLines().size(), 2u);
  line.removeLabeling(labeling);
  graph.removeElement(line);
  EXPECT_EQ(line.getLabelings().size() + graph.getLines().size(), 0u);
  PlXColor& lineColor = *line.addColor();
  graph.addPoint(nullptr)->removeColor(lineColor);
  EXPECT_EQ(line.getColors().size(), 1u);
  line.removeColor(lineColor);
  EXPECT_EQ(line.getColors().size(), 0u);
  PlXDimension& dimension = *graph.getCoordinates(0)->addDimension();
  PlXAxis& axis = *dimension.addAxis();
  graph.getCoordinates(0)->addDimension()->removeAxis(axis);
  EXPECT_EQ(dimension.getAxiss().size(), 1u);
  dimension.removeAxis(axis);
  EXPECT_EQ(dimension.getAxiss().size(), 0u);

  PlXCategoricalDomain& domain = *root.addCategoricalDomain(nullptr);
  PlXSourceVariable& variable = *root.addSourceVariable(nullptr);
  variable.setDomain(domain);
  EXPECT_EQ(variable.getCategoricalDomain(), &domain);
  PlXPoint& point = *graph.addPoint(nullptr);
  CTCoordinate& x = *point.addX();
  EXPECT_EQ(x.getVariable(), nullptr);
  PlXExpressionVariable* expression = x.addExpressionVariable(nullptr);
  EXPECT_TRUE(x.getVariable() == expression && x.getExpressionVariable() == expression);
  x.setVariable(variable);
  EXPECT_TRUE(x.getSourceVariable() == &variable && !x.getExpressionVariable());
  PlXColor& color = *point.addColor();
  color.setVariable(variable);
  EXPECT_EQ(color.getSourceVariable(), &variable);
  EXPECT_EQ(point.addStyleBy(&color)->getVariable(), &variable);

  PlXText& text = *title.addLabel()->addText();
  text.setText(u"attribute");
  text.getImplementation()->setTextContent(u"content");
  EXPECT_EQ(spell(text.getText()), u"content");
  text.setText(nullptr);
  EXPECT_EQ(spell(text.getText()), u"");
  DOMNode* moved = root.addContainer(nullptr)->getImplementation()->appendChild(
      chart.document->createElement(u"legend"));
  root.reparentContainerChildren();
  EXPECT_TRUE(moved->getUserData(u"legend"));
  EXPECT_EQ(PlXVisualization(color.getImplementation()).AsUTF8().substr(0, 6), "<color");
  EXPECT_EQ(PlXDocument(root).getRoot(), &root);
}

TEST(Model, TakesLengthsOfThreePartsApart) {
  const Chart chart;
  PlXStyle& style = *chart.root->addStyle();
  const auto parts = [&](auto get) {
    ChartString a, b, c;
    (style.*get)(a, b, c);
    return a.toUTF8() + "|" + b.toUTF8() + "|" + c.toUTF8();
  };
  const std::pair<const XMLCh*, const char*> rows[] = {{u"", "||"},
                                                       {u"8pt", "8pt||"},
                                                       {u" 8pt\t6pt , 10pt ", "8pt|6pt|10pt"},
                                                       {u"8pt,,10pt", "8pt||10pt"},
                                                       {u"auto auto 100%", "||100%"},
                                                       {u"1 2 3 4", "1|2|3"}};
  for (const auto& [text, expected] : rows) {
    style.setSize(text);
    EXPECT_EQ(parts(&PlXStyle::getSize), expected);
  }
  style.setSize(nullptr, u"auto", u"5 6");
  EXPECT_EQ(spell(style.GetAttribute(u"size")), u"1 auto 5");
  style.setWidth(nullptr, nullptr, u"100%");
  EXPECT_EQ(spell(style.GetAttribute(u"width")), u"auto auto 100%");
  EXPECT_EQ(parts(&PlXStyle::getWidth), "||100%");
  style.setFontSize(u"8pt", u"6pt", u"10pt");
  EXPECT_EQ(parts(&PlXStyle::getFontSize), "8pt|6pt|10pt");
  EXPECT_TRUE(style.isWidthPresent() && style.isFontSizePresent() && style.isSizePresent());
  style.setWidth(u"", u"", u"");
  EXPECT_FALSE(style.isWidthPresent());
}

}  // namespace
