#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

#include "charttexts.h"
#include "commandline.h"
#include "files.h"
#include "problems.h"

using namespace xercesc;

const char infoHelp[] =
    R"(usage: chartxml info FILE...

Writes what is in charts and data documents, one thing a line, in the order of the document:
what it is, its tag, and its properties as NAME=VALUE. What lies within a thing follows
behind it, indented by two blanks. Properties that aren't stated are left out; values that
hold blanks or signs, and all texts for readers, stand in double quotes. Styles come last,
as their number and identifiers.

  -h, --help  show this

Examples:
  chartxml info sales.xml
  chartxml info archive/*.xml | grep -E '^(chart|source)'
  chartxml info sales.xml | grep 'role=title'
)";

namespace {

std::string tagOf(const PlXBaseElement& object) {
  return utf8(object.getImplementation()->getLocalName());
}

template <class T>
std::string idsOf(const std::vector<T*>& objects) {
  std::vector<std::string> ids;
  for (const T* object : objects) ids.push_back(utf8(object->getId()));
  return joined(ids);
}

std::string refsOf(const std::vector<PlXVariableReference*>& references) {
  std::vector<std::string> ids;
  for (const auto* reference : references) ids.push_back(utf8(reference->GetAttribute(u"ref")));
  return joined(ids);
}

// One line about a thing.
class Line {
 public:
  // `depth` counts the things that this one lies in.
  Line(std::string& out, std::size_t depth, std::string_view kind, std::string_view tag = {})
      : out_(out) {
    out_.append(2 * depth, ' ').append(kind);
    if (!tag.empty()) out_.append(1, ' ').append(tag);
  }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;
  ~Line() { out_ += '\n'; }

  Line& put(std::string_view name, std::string_view value) {
    if (!value.empty()) out_.append(1, ' ').append(name).append(1, '=').append(word(value));
    return *this;
  }
  Line& putText(std::string_view name, std::string_view value) {
    if (!value.empty()) out_.append(1, ' ').append(name).append(1, '=').append(quoted(value));
    return *this;
  }
  Line& putNumber(std::string_view name, std::size_t number) {
    return put(name, std::to_string(number));
  }
  // Attributes as they stand.
  Line& put(const PlXBaseElement& object, std::initializer_list<const XMLCh*> attributes) {
    for (const XMLCh* name : attributes) put(utf8(name), utf8(object.GetAttribute(name)));
    return *this;
  }
  Line& putLocations(const std::vector<PlXLocation*>& locations) {
    for (const PlXLocation* location : locations) {
      const std::string part = utf8(location->GetAttribute(u"part"));
      put(part.empty() ? "left" : part, placeText(*location));
    }
    return *this;
  }

 private:
  std::string& out_;
};

// Writes the lines of a chart: one function for each kind of thing.
class Report {
 public:
  explicit Report(PlXVisualization& chart) : chart_(chart), roles_(rolesOf(chart)) {}

  std::string textFor(const std::string& file) {
    DOMElement* root = chart_.getImplementation();
    const std::string tag = utf8(root->getLocalName());
    if (tag == "visualization") {
      Line(out_, 0, "chart", file)
          .put(chart_, {u"id"})
          .putText("name", utf8(chart_.getName()))
          .put(chart_, {u"style"})
          .putLocations(chart_.getLocations());
      putChildren(chart_, 0);
    } else if (tag == "graphSources") {
      Line(out_, 0, "data", file);  // NOLINT(bugprone-unused-raii): its end writes it
      putChildren(chart_, 0);
    } else {
      Line(out_, 0, "document", file).put("root", tag);
      if (const PlXBaseElement* object = chart_.objectOf(root)) putObject(*object, 0);
    }
    const auto styles = chart_.getStyles();
    if (!styles.empty()) {
      Line(out_, 0, "styles").putNumber("count", styles.size()).put("ids", idsOf(styles));
    }
    const auto cycles = chart_.getStyleCycles();
    if (!cycles.empty()) {
      Line(out_, 0, "styleCycles").putNumber("count", cycles.size()).put("ids", idsOf(cycles));
    }
    return std::move(out_);
  }

 private:
  void putChildren(const PlXBaseElement& parent, std::size_t depth) {
    DOMElement* child = parent.getImplementation()->getFirstElementChild();
    for (; child; child = child->getNextElementSibling()) {
      if (const PlXBaseElement* object = chart_.objectOf(child)) putObject(*object, depth);
    }
  }

  // Calls `put` if the object is of the kind that it takes.
  template <class T>
  bool tryPut(const PlXBaseElement& object, std::size_t depth,
              void (Report::*put)(const T&, std::size_t)) {
    const T* thing = dynamic_cast<const T*>(&object);
    if (thing) (this->*put)(*thing, depth);
    return thing;
  }

  // Things of other kinds have no line.
  void putObject(const PlXBaseElement& object, std::size_t depth) {
    if (isSource(object)) return putSource(object, depth);
    tryPut(object, depth, &Report::putVariable) ||
        tryPut(object, depth, &Report::putIntervalDomain) ||
        tryPut(object, depth, &Report::putCategoricalDomain) ||
        tryPut(object, depth, &Report::putFrame<PlXControlFrame>) ||
        tryPut(object, depth, &Report::putFrame<PlXContainer>) ||
        tryPut(object, depth, &Report::putFrame<PlXGraph>) ||
        tryPut(object, depth, &Report::putLabelFrame) ||
        tryPut(object, depth, &Report::putLegend) ||
        tryPut(object, depth, &Report::putLegendTarget) ||
        tryPut(object, depth, &Report::putCoordinates) ||
        tryPut(object, depth, &Report::putElement) ||
        tryPut(object, depth, &Report::putAesthetic) ||
        tryPut(object, depth, &Report::putLabeling) || tryPut(object, depth, &Report::putGuide) ||
        tryPut(object, depth, &Report::putFaceting) || tryPut(object, depth, &Report::putAxis) ||
        tryPut(object, depth, &Report::putPopup) || tryPut(object, depth, &Report::putToken) ||
        tryPut(object, depth, &Report::putDrillDown) ||
        tryPut(object, depth, &Report::putFacetLayout) ||
        tryPut(object, depth, &Report::putFacetLevel);
  }

  // ---- data

  static bool isSource(const PlXBaseElement& object) {
    return dynamic_cast<const PlXEmbeddedSource*>(&object) ||
           dynamic_cast<const PlXSource*>(&object) || dynamic_cast<const PlXUserSource*>(&object) ||
           dynamic_cast<const PlXDatabaseSource*>(&object) ||
           dynamic_cast<const PlXDelimitedFileSource*>(&object) ||
           dynamic_cast<const PlXStreamingSource*>(&object);
  }

  // Columns are those that have a name or, in the older form, a value in any row. Sources outside
  // and placeholders have neither rows nor columns here.
  void putSource(const PlXBaseElement& source, std::size_t depth) {
    std::size_t rows = 0;
    std::size_t columns = 0;
    const DOMElement* child = source.getImplementation()->getFirstElementChild();
    const bool hasData =
        dynamic_cast<const PlXEmbeddedSource*>(&source) || dynamic_cast<const PlXSource*>(&source);
    for (; child; child = child->getNextElementSibling()) {
      const XMLCh* tag = child->getLocalName();
      if (XMLString::equals(tag, u"names")) {
        columns = std::max(columns, itemCount(child->getTextContent()));
      } else if (XMLString::equals(tag, u"row")) {
        ++rows;
        columns = std::max<std::size_t>(columns, child->getChildElementCount());
      }
    }
    Line line(out_, depth, "source", tagOf(source));
    line.put(source, {u"id"});
    if (hasData) line.putNumber("rows", rows).putNumber("columns", columns);
  }

  static std::size_t itemCount(std::u16string_view list) {
    return list.empty() ? 0
                        : 1 + static_cast<std::size_t>(std::count(list.begin(), list.end(), u';'));
  }

  void putVariable(const CTVariableType& variable, std::size_t depth) {
    Line line(out_, depth, "variable", tagOf(variable));
    line.put(variable, {u"id", u"source"})
        .put("column", utf8(variable.getSourceName()))
        .put("type", variable.getCategorical() ? "categorical" : "continuous")
        .putText("label", utf8(variable.getLabel()))
        .put(variable, {u"domain", u"description", u"value", u"expression"});
    for (const PlXAggregation* merged : variable.getAggregations()) {
      line.put("merged",
               joined({utf8(merged->getCategory()), utf8(merged->GetAttribute(u"variable")),
                       utf8(merged->GetAttribute(u"minFraction"))},
                      ':'));
    }
  }

  void putIntervalDomain(const PlXIntervalDomain& domain, std::size_t depth) {
    Line line(out_, depth, "domain", tagOf(domain));
    line.put(domain, {u"id"});
    for (const PlXRange* range : domain.getRanges()) line.put(*range, {u"min", u"max"});
  }

  void putCategoricalDomain(const PlXCategoricalDomain& domain, std::size_t depth) {
    Line line(out_, depth, "domain", tagOf(domain));
    line.put(domain, {u"id"}).put("variables", refsOf(domain.getVariableReferences()));
    for (const PlXCategories* list : domain.getCategoriess()) {
      line.put(list->getRemove() ? "without" : "only", utf8(list->getText()));
    }
    DOMElement* child = domain.getImplementation()->getFirstElementChild();
    for (; child; child = child->getNextElementSibling()) {
      const PlXBaseElement* object = chart_.objectOf(child);
      if (const auto* sort = dynamic_cast<const PlXSimpleSort*>(object)) {
        putSort(line, *sort, "data", "");
        const PlXCategoryOrder* order = sort->getCategoryOrder();
        if (order) line.put("order", utf8(order->getText()));
      } else if (const auto* byMean = dynamic_cast<const PlXStatisticSort*>(object)) {
        putSort(line, *byMean, "mean", utf8(byMean->GetAttribute(u"statVariable")));
      }
    }
  }

  // "sort=mean:sales:descending", and what is put at the ends behind that
  template <class Sort>
  static void putSort(Line& line, const Sort& sort, const char* usual, const std::string& measure) {
    const std::string method = utf8(sort.GetAttribute(u"method"));
    line.put("sort", joined({method.empty() ? usual : method, measure,
                             sort.getDescending() ? "descending" : ""},
                            ':'));
    for (const PlXSortMove* move : sort.getSortMoves()) {
      line.put(move->getFirst() ? "first" : "last", utf8(move->getCategory()));
    }
  }

  // ---- frames

  template <class Frame>
  void putFrameLine(const Frame& frame, std::size_t depth, const std::string& text) {
    const auto [first, last] = roles_.equal_range(utf8(frame.getId()));
    std::vector<std::string> roles;
    for (auto role = first; role != last; ++role) roles.push_back(role->second);
    Line(out_, depth, "frame", tagOf(frame))
        .put(frame, {u"id"})
        .put("role", *frame.getId() ? joined(roles) : "")
        .putText("text", text)
        .putLocations(frame.getLocations())
        .put(frame, {u"style"})
        .put("visible", isHidden(frame) ? "false" : "");
  }

  template <class Frame>
  void putFrame(const Frame& frame, std::size_t depth) {
    putFrameLine(frame, depth, "");
    putChildren(frame, depth + 1);
  }

  void putLabelFrame(const PlXLabelFrame& frame, std::size_t depth) {
    putFrameLine(frame, depth, labelText(frame.getLabel()));
  }

  void putLegend(const PlXLegend& legend, std::size_t depth) {
    putFrameLine(legend, depth, labelText(legend.getLabel()));
    putChildren(legend, depth + 1);
  }

  void putLegendTarget(const PlXLegendTarget& target, std::size_t depth) {
    const PlXBaseElement* object = target.getTarget();
    Line line(out_, depth, "target", object ? tagOf(*object) : "");
    line.put("id", utf8(target.GetAttribute(u"target")));
    if (object) line.put(*object, {u"variable"});
  }

  // ---- graphs

  // The role of a dimension is its place in the block, and differs between the first block and
  // others.
  void putCoordinates(const PlXCoordinates& block, std::size_t depth) {
    std::vector<std::string> transforms;
    std::vector<const PlXBaseElement*> dimensions;
    DOMElement* child = block.getImplementation()->getFirstElementChild();
    const DOMElement* before = block.getImplementation()->getPreviousElementSibling();
    for (; child; child = child->getNextElementSibling()) {
      const std::string tag = utf8(child->getLocalName());
      if (tag.ends_with("Transform")) {
        transforms.push_back(joined({tag, utf8(child->getAttribute(u"dimension"))}, ':'));
      }
      if (tag.starts_with("dimension")) dimensions.push_back(block.objectOf(child));
    }
    bool isFirst = true;
    for (; before; before = before->getPreviousElementSibling()) {
      if (XMLString::equals(before->getLocalName(), PlXCoordinates::_UTF_coordinates)) {
        isFirst = false;
      }
    }
    Line(out_, depth, "coordinates").put(block, {u"id"}).put("transforms", joined(transforms));
    const std::vector<std::string> roles = {"x", isFirst ? "y" : "y2", "z"};
    for (std::size_t i = 0; i < dimensions.size(); ++i) {
      const std::string role = i < roles.size() ? roles[i] : std::to_string(i + 1);
      putDimension(*dimensions[i], depth + 1, role);
    }
  }

  void putDimension(const PlXBaseElement& object, std::size_t depth, const std::string& role) {
    const auto* dimension = dynamic_cast<const PlXDimension*>(&object);
    {
      Line line(out_, depth, "dimension", role);
      line.put(object, {u"id", u"ref"});
      if (const PlXScale* scale = dimension ? dimension->getScale() : nullptr) {
        line.put("scale", scaleText(*scale));
      }
      line.put(object, {u"domain", u"clusterVariable"});
    }
    putChildren(object, depth + 1);
  }

  static std::string scaleText(const PlXScale& scale) {
    const std::string method = utf8(scale.GetAttribute(u"method"));
    return joined({method.empty() ? "linear" : method, utf8(scale.GetAttribute(u"base")),
                   scale.getInvert() ? "inverted" : ""},
                  ':');
  }

  void putAxis(const PlXAxis& axis, std::size_t depth) {
    Line(out_, depth, "axis")
        .put(axis, {u"id"})
        .put("opposite", axis.getOpposite() ? "true" : "")
        .putText("text", labelText(axis.getLabel()));
  }

  static std::string coordinateText(const CTCoordinate* coordinate) {
    if (!coordinate) return {};
    if (*coordinate->GetAttribute(u"variable")) return utf8(coordinate->GetAttribute(u"variable"));
    const PlXExpressionVariable* expression = coordinate->getExpressionVariable();
    return expression ? utf8(expression->getExpression()) : std::string();
  }

  // "summaryStatistic:mean", "smoothStatistic:polynomial:degree:2"
  static std::string statisticsText(const CTElementType& element) {
    std::vector<std::string> statistics;
    DOMElement* child = element.getImplementation()->getFirstElementChild();
    for (; child; child = child->getNextElementSibling()) {
      const std::string tag = utf8(child->getLocalName());
      if (!tag.ends_with("Statistic")) continue;
      std::vector<std::string> parts = {tag, utf8(child->getAttribute(u"method"))};
      for (const XMLCh* name :
           {u"distribution", u"type", u"regionType", u"kernel", u"degree", u"alpha", u"spikes"}) {
        const std::string value = utf8(child->getAttribute(name));
        if (!value.empty()) parts.push_back(utf8(name) + ":" + value);
      }
      statistics.push_back(joined(parts, ':'));
    }
    return joined(statistics);
  }

  // "hex:grid:binCount:20"
  static std::string binsText(const CTElementType& element) {
    std::vector<std::string> all;
    for (const PlXBinStatistic* bins : element.getBinStatistics()) {
      std::vector<std::string> parts = {utf8(bins->GetAttribute(u"gridType")),
                                        utf8(bins->GetAttribute(u"location"))};
      for (const XMLCh* name :
           {PlXBinStatistic::_binCount, PlXBinStatistic::_binWidth, PlXBinStatistic::_binStart}) {
        const std::string value = utf8(bins->GetAttribute(name));
        if (!value.empty()) parts.push_back(utf8(name) + ":" + value);
      }
      all.push_back(joined(parts, ':'));
    }
    return joined(all);
  }

  void putElement(const CTElementType& element, std::size_t depth) {
    Line(out_, depth, "element", tagOf(element))
        .put(element, {u"id", u"name"})
        .put("x", coordinateText(element.getX()))
        .put("y", coordinateText(element.getY()))
        .put("z", coordinateText(element.getZ()))
        .put("statistics", statisticsText(element))
        .put("bins", binsText(element))
        .put(element, {u"positionModifier", u"coordinates", u"style"});
    putChildren(element, depth + 1);
  }

  void putAesthetic(const CTAesthetic& aesthetic, std::size_t depth) {
    Line(out_, depth, "aesthetic", tagOf(aesthetic))
        .put(aesthetic, {u"id", u"variable", u"domain", u"cycle", u"styleCycle"});
  }

  void putLabeling(const PlXLabeling& labeling, std::size_t depth) {
    const PlXStyle* style = labeling.getStyle();
    {
      Line line(out_, depth, "labeling");
      line.put(labeling, {u"id", u"variable"})
          .put("statistic", statisticText(labeling.getSummaryStatistic()));
      if (style) line.put(*style, {u"labelInside", u"visible"});
    }
    putChildren(labeling, depth + 1);
  }

  static std::string statisticText(const PlXSummaryStatistic* statistic) {
    if (!statistic) return {};
    const std::string method = utf8(statistic->GetAttribute(u"method"));
    return method.empty() ? "value" : method;
  }

  void putGuide(const CTGuideType& guide, std::size_t depth) {
    std::vector<std::string> texts;
    for (const PlXLabel* label : guide.getLabels()) texts.push_back(labelText(label));
    Line(out_, depth, "guide", tagOf(guide))
        .put(guide, {u"id", u"name", u"x", u"y", u"z", u"x1", u"x2", u"y1", u"y2", u"value",
                     u"segments", u"normal", u"coordinates", u"zOrder"})
        .putText("text", joined(texts, '\n'));
  }

  // ---- what a viewer does with the chart

  void putPopup(const PlXPopup& popup, std::size_t depth) {
    Line(out_, depth, "popup")
        .put(popup, {u"id", u"target"})
        .putText("text", utf8(popup.getTokenTemplate()));
    putChildren(popup, depth + 1);
  }

  void putToken(const PlXTokenMapping& mapping, std::size_t depth) {
    Line(out_, depth, "token", utf8(mapping.getValueToken()))
        .put(mapping, {u"variable"})
        .put("statistic", statisticText(mapping.getSummaryStatistic()));
  }

  // Of the records of the chart, those that are drill-downs.
  void putDrillDown(const PlXExtensionVis& record, std::size_t depth) {
    if (utf8(record.getAttribute(PlXDrillDown::_UTF_drillDown)) != "true") return;
    Line(out_, depth, "drillDown")
        .put(record, {u"target", u"interactionType", u"function", u"meta"});
  }

  void putFaceting(const PlXFaceting& faceting, std::size_t depth) {
    Line(out_, depth, "faceting").put("variables", refsOf(faceting.getVariableReferences()));
  }

  void putFacetLayout(const PlXFacetLayout& layout, std::size_t depth) {
    Line(out_, depth, "panels").put(layout, {u"method", u"cellAspect"});
    putChildren(layout, depth + 1);
  }

  void putFacetLevel(const PlXFacetLevel& level, std::size_t depth) {
    Line(out_, depth, "level").put(level, {u"id", u"gap"});
    putChildren(level, depth + 1);
  }

  PlXVisualization& chart_;
  const std::multimap<std::string, std::string> roles_;  // by the ids of the frames that have them
  std::string out_;
};

}  // namespace

int runInfo(int argc, char** argv) {
  const auto files = readOptions(argc, argv, {});
  bool isFirst = true;
  return forEachFile(files, [&](const std::string& name) {
    const std::string text = readDocument(name);
    // Of its own, as documents live as long as their base.
    ChartBase base;
    PlXVisualization chart(&rootOf(base, name, text));
    if (!isFirst) writeOutput("\n");
    isFirst = false;
    writeOutput(Report(chart).textFor(word(name)));
  });
}
