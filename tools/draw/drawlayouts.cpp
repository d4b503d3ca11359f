#include "drawlayouts.h"

#include <cmath>
#include <set>

#include "drawnetwork.h"
#include "drawplaces.h"

namespace draw {

namespace {

constexpr int curvePoints = 101;

// ---- names with places of their own

std::string textOr(const DrawField& field, const std::string& raw) {
  const auto found = field.labels.find(raw);
  return found == field.labels.end() ? raw : found->second;
}

// Values with places of their own, and nothing of the rows but the name.
Placed withPlaces(const Subject& of, const Json& values, const DrawField& name, Placed placed) {
  placed.data = {{"values", values}};
  placed.transforms = Json::array();
  for (const DrawLook& look : placed.looks.list) {
    if (look.field != &name) {
      of.context.notes.tell(*look.aesthetic, "a node has no value for it");
    }
  }
  std::erase_if(placed.looks.list, [&](const DrawLook& look) { return look.field != &name; });
  placed.looks.groups.clear();
  if (of.popup()) of.tell("popups are left out");
  placed.places[0].field = "x";
  placed.places[1].field = "y";
  placed.hasFreePlaces = true;
  for (const auto* labeling : childrenOf<PlXLabeling>(of.element)) {
    if (of.fieldHere(labeling->getVariable(), *labeling) == &name) {
      placed.labels.emplace_back(labeling, name.name);
    }
  }
  return placed;
}

// The rows of a line for each link whose ends have places, or of a node for each name.
Json networkRows(const NetworkLinks& links, const NetworkPlaces& places, const std::string& name,
                 bool isEdge) {
  Json rows = Json::array();
  std::set<std::string> known;
  for (const auto& [a, b] : links) {
    const auto start = places.find(a);
    const auto end = places.find(b);
    if (isEdge && start != places.end() && end != places.end()) {
      rows.push_back({{"x", start->second.first},
                      {"y", start->second.second},
                      {"x_end", end->second.first},
                      {"y_end", end->second.second}});
    }
    for (const std::string& node : {a, b}) {
      const auto place = places.find(node);
      if (isEdge || place == places.end() || !known.insert(node).second) continue;
      rows.push_back({{name, node}, {"x", place->second.first}, {"y", place->second.second}});
    }
  }
  return rows;
}

std::optional<Placed> withNetwork(const Subject& of, const CTVariableType* from,
                                  const CTVariableType* to, bool isTree, Placed placed) {
  const DrawField* first = of.fieldHere(from, of.element);
  const DrawField* second = of.fieldHere(to, of.element);
  if (!first || !second || !first->isCategorical || !second->isCategorical) {
    of.tell("a network without names is left out");
    return {};
  }
  const auto links = of.context.data.pairsOf(*first, *second);
  of.tell(isTree ? "a tree is drawn from the top down"
                 : "the nodes of a network are drawn on a circle");
  const bool isEdge = of.is<PlXEdge>();
  const Json values =
      networkRows(links, isTree ? treePlaces(links) : circlePlaces(links), first->name, isEdge);
  placed = withPlaces(of, values, *first, std::move(placed));
  if (isEdge) {
    placed.places[0].end = "x_end";
    placed.places[1].end = "y_end";
    placed.mark = markOf(of, placed.mark.kind, "rule", lineLook(of.style));
  }
  if (values.empty()) return {};
  return placed;
}

std::optional<Placed> withWords(const Subject& of, Placed placed) {
  if (of.fields[0].empty() || !of.fields[0][0]->isCategorical) return {};
  const DrawField& field = *of.fields[0][0];
  std::vector<std::string> words;
  for (const std::string& raw : field.raws) words.push_back(textOr(field, raw));
  of.tell("a cloud of words is drawn as rows of words");
  Json values = Json::array();
  for (const auto& [word, place] : gridPlaces(words)) {
    values.push_back({{field.name, word}, {"x", place.first}, {"y", place.second}});
  }
  if (values.empty()) return {};
  return withPlaces(of, values, field, std::move(placed));
}

// ---- distributions

// What a density is multiplied by to lie over the histogram of the same variable.
double histogramFactor(const Subject& of, const DrawField& field) {
  const auto* graph = dynamic_cast<const PlXGraph*>(of.element.objectOf(
      static_cast<xercesc::DOMElement*>(of.element.getImplementation()->getParentNode())));
  for (const PlXInterval* bars : graph ? graph->getIntervals() : std::vector<PlXInterval*>()) {
    const auto* bins = childOf<PlXBinStatistic>(*bars);
    const CTCoordinate* coordinate = bars->getX();
    if (!bins || !coordinate) continue;
    const auto fields = of.context.data.fieldsOf(coordinate->getVariable());
    if (std::ranges::find(fields, &field) == fields.end()) continue;
    Json unused = Json::array();
    const double width = addBins(unused, field, *bins).width;
    if (width > 0) return width * of.context.data.momentsOf(field).cases;
  }
  return 1;
}

// The parameters that it states, or those of the variable's cases; nothing for a distribution that
// needs more.
std::optional<std::pair<double, double>> parametersOf(
    const Subject& of, const PlXDistributionStatistic& statistic,
    PlXDistributionStatistic::ENUM_distribution distribution) {
  const ChartString first(statistic.getParameter());
  const ChartString second(statistic.getSecondaryParameter());
  const bool isNormal = distribution == PlXDistributionStatistic::distribution_normal;
  if (!first.empty() && !(isNormal && second.empty())) {
    return std::pair(first.convertToDouble(), second.convertToDouble());
  }
  if (!isNormal) {
    of.tell("a distribution without parameters is left out");
    return {};
  }
  const auto moments = of.context.data.momentsOf(*of.fields[0][0]);
  return std::pair(moments.mean, moments.deviation);
}

// The theoretical curve: over a histogram in the histogram's units.
std::optional<Placed> withDistribution(const Subject& of, const PlXDistributionStatistic& statistic,
                                       Placed placed) {
  const DrawSide& x = of.plane.x();
  if (!of.hasNumbers(0) || !x.hasExtent() || !(x.least < x.greatest)) return {};
  const auto distribution = states(statistic, u"distribution")
                                ? statistic.getDistribution()
                                : PlXDistributionStatistic::distribution_normal;
  const auto parameters = parametersOf(of, statistic, distribution);
  if (!parameters) return {};
  const double factor = histogramFactor(of, *of.fields[0][0]);
  Json values = Json::array();
  for (int i = 0; i < curvePoints; ++i) {
    const double at = x.least + (x.greatest - x.least) * i / (curvePoints - 1);
    const double density = densityAt(distribution, at, parameters->first, parameters->second);
    if (std::isfinite(density)) {
      values.push_back({{"x", numberJson(at)}, {"density", numberJson(density * factor)}});
    }
  }
  if (values.empty()) {
    of.tell("the distribution " + attribute(statistic, u"distribution") + " is left out");
    return {};
  }
  placed.data = {{"values", values}};
  placed.transforms = Json::array();
  placed.looks.list.clear();
  placed.looks.groups.clear();
  placed.places[0].field = "x";
  placed.places[1].field = "density";
  return placed;
}

std::optional<Placed> withDensity(const Subject& of, Placed placed) {
  if (!of.hasNumbers(0)) return {};
  const DrawField& field = *of.fields[0][0];
  if (field.hasMissing) addOnce(placed.transforms, validFilter(field.name));
  Json density = {{"density", field.name}};
  if (const auto* window = childOf<PlXFixedWindowDensityStatistic>(of.element)) {
    if (window->getBandwidth() > 0 && std::isfinite(window->getBandwidth())) {
      density["bandwidth"] = numberJson(window->getBandwidth());
    }
    if (window->getKernel() != PlXSmoothStatistic::kernel_gaussian) {
      of.tell("its kernel is drawn as a Gaussian one");
    }
  } else {
    of.tell("windows of a number of rows are drawn as those of one width");
  }
  putGroups(density, placed.looks.partsIn(of.panel));
  const double factor = histogramFactor(of, field);
  if (factor != 1) density["counts"] = true;
  const DrawSide& x = of.plane.x();
  if (x.hasExtent() && x.least < x.greatest)
    density["extent"] = {numberJson(x.least), numberJson(x.greatest)};
  density["as"] = {field.name, "density"};
  placed.add(density);
  if (factor != 1) {
    // Counts are told for a unit of the variable.
    const auto moments = of.context.data.momentsOf(field);
    const double width = factor / moments.cases;
    const double weight = moments.cases / moments.rows;
    placed.add(calculation("density", datum("density") + " * " + literal(width * weight)));
  }
  std::erase_if(placed.looks.list, [](const DrawLook& look) { return !look.isCategorical; });
  placed.places[0].field = field.name;
  placed.places[1].field = "density";
  return placed;
}

// ---- boxes

// The width of a box among those of all categories, in pixels.
double boxWidth(const Subject& of, const Looks& looks) {
  const double boxes = static_cast<double>(
      std::max<std::size_t>(1, of.plane.x().order.size()) *
      std::max<std::size_t>(
          1, looks.offsetBy ? of.context.data.orderOf(*looks.offsetBy).texts.size() : 1));
  const double length = of.channel(0) == "x" ? of.plane.width() : of.plane.height();
  const double share = std::clamp(shareOf(of.look(u"width")).value_or(0.7), 0.05, 1.0);
  return std::max(2.0, std::round(0.8 * length / boxes * share));
}

std::optional<Placed> withBoxes(const Subject& of, Placed placed) {
  if (!of.hasNumbers(1)) {
    of.tell("has no numbers and is left out");
    return {};
  }
  const auto& schema = dynamic_cast<const PlXSchema&>(of.element);
  const auto* tukey = childOf<PlXTukeyStatistic>(of.element);
  const double fence = tukey && states(*tukey, u"fence") ? tukey->getFence() : 1.5;
  if (tukey && states(*tukey, u"extreme")) of.tell("extremes are drawn as other outliers");
  if (schema.getExtremeStyle() && schema.getExtremeStyle() != schema.getOutlierStyle()) {
    of.tell("extremes have the style of outliers");
  }
  Json& mark = placed.mark.json;
  mark["extent"] = numberJson(fence > 0 && std::isfinite(fence) ? fence : 1.5);
  if (of.plane.x().isDiscrete) mark["size"] = numberJson(boxWidth(of, placed.looks));
  const auto partStyle = [&](const PlXStyle* own) { return own ? own : of.style; };
  mark["box"] = surfaceLook(partStyle(schema.getHingeStyle()));
  mark["median"] = lineLook(partStyle(schema.getMedianStyle()));
  mark["rule"] = lineLook(partStyle(schema.getFenceStyle()));
  mark["ticks"] = lineLook(partStyle(schema.getFenceStyle()));
  mark["ticks"]["size"] = numberJson(std::round(mark.value("size", 20.0) / 3));
  mark["outliers"] = statedLook(MarkKind::Point, pointLook(partStyle(schema.getOutlierStyle())));
  if (!mark["box"].contains("opacity")) mark["box"]["opacity"] = 1;
  if (!mark["outliers"].contains("size")) mark["outliers"]["size"] = 16;
  placed.places[0].field = of.fields[0].empty() ? "" : of.fields[0][0]->name;
  placed.places[1].field = of.fields[1][0]->name;
  if (has<PlXLabeling>(of.element)) of.tell("labels of outliers are left out");
  if (of.popup()) of.tell("its popup shows what Vega-Lite shows of boxes");
  return placed;
}

// ---- cells

// Every second row is moved by half a cell.
Placed withBricks(const Subject& of, const Bins (&cut)[2], Placed placed) {
  const DrawField& x = *of.fields[0][0];
  const DrawField& y = *of.fields[1][0];
  const std::string column = literal(cut[0].width);
  placed.add(calculation("hex_shift", "floor((" + datum(cut[1].low) + " - " + literal(y.least) +
                                          ") / " + literal(cut[1].width) +
                                          " + 0.5) % 2 == 0 ? 0 : 0.5 * " + column));
  placed.add(calculation(x.name + "_mid", "(floor((" + datum(x.name) + " - " + datum("hex_shift") +
                                              " - " + literal(x.least) + ") / " + column +
                                              ") + 0.5) * " + column + " + " + literal(x.least) +
                                              " + " + datum("hex_shift")));
  placed.add(
      calculation(y.name + "_mid", '(' + datum(cut[1].low) + " + " + datum(cut[1].high) + ") / 2"));
  placed.places[0] = {x.name + "_mid", "", false};
  placed.places[1] = {y.name + "_mid", "", false};
  if (of.is<PlXPolygon>()) {
    placed.mark.kind = MarkKind::Point;
    placed.mark.json["type"] = "point";
    placed.mark.json["shape"] = symbolShape("hexagon");
    const double columns = std::max(1.0, (x.greatest - x.least) / cut[0].width);
    const double width = of.plane.width() / columns;
    placed.mark.json["size"] = numberJson(std::round(width * width * 1.33));
    std::erase_if(placed.looks.list, [](const DrawLook& look) {
      return dynamic_cast<const PlXSize*>(look.aesthetic);
    });
  }
  of.tell("hexagons are counted as bricks are laid");
  return placed;
}

}  // namespace

std::optional<Placed> withCells(const Subject& of, const PlXBinStatistic& bins, Placed placed) {
  if (!of.hasNumbers(0) || !of.hasNumbers(1)) return {};
  const bool isSquare = bins.getGridType() == PlXBinStatistic::gridType_square;
  Bins cut[2];
  for (const std::size_t i : {0U, 1U}) {
    const DrawField& field = *of.fields[i][0];
    if (field.hasMissing) addOnce(placed.transforms, validFilter(field.name));
  }
  for (const std::size_t i : {0U, 1U}) {
    cut[i] = addBins(placed.transforms, *of.fields[i][0], bins);
    placed.places[i] = {cut[i].low, cut[i].high, true};
  }
  if (!isSquare && cut[0].width > 0 && cut[1].width > 0) {
    placed = withBricks(of, cut, std::move(placed));
  } else if (!of.is<PlXPolygon>()) {
    // A symbol stands in the middle.
    for (const std::size_t i : {0U, 1U}) {
      const std::string middle = of.fields[i][0]->name + "_mid";
      placed.add(
          calculation(middle, '(' + datum(cut[i].low) + " + " + datum(cut[i].high) + ") / 2"));
      placed.places[i] = {middle, "", false};
    }
  }
  for (const MarkPlace& place : placed.places) {
    placed.looks.addKey(place.field);
    if (!place.end.empty()) placed.looks.addKey(place.end);
  }
  const auto* statistic = childOf<PlXSummaryStatistic>(of.element);
  Summary summary = summaryOf(of, placed.looks, placed.places[0].field);
  placed.response = of.fields[1][0];
  const auto value = statistic ? summary.add(*statistic, placed.response) : std::nullopt;
  addToSummary(of, summary, value ? *value : summary.count(), placed);
  summary.appendTo(placed.transforms);
  placed.isSummarized = true;
  if (bins.getLocation() == PlXBinStatistic::location_centroid) {
    of.tell("cells stand in the grid, not where their rows are");
  }
  return placed;
}

bool isLaidOut(const Subject& of) {
  const CTElementType& element = of.element;
  return of.is<PlXSchema>() || has<PlXGraphLayoutStatistic>(element) ||
         has<PlXTreeLayoutStatistic>(element) || has<PlXTagCloudStatistic>(element) ||
         has<PlXDistributionStatistic>(element) || has<PlXFixedWindowDensityStatistic>(element) ||
         has<PlXNearestNeighborDensityStatistic>(element);
}

std::optional<Placed> withLayout(const Subject& of, Placed placed) {
  if (const auto* network = childOf<PlXGraphLayoutStatistic>(of.element)) {
    return withNetwork(of, network->getFromVariable(), network->getToVariable(), false,
                       std::move(placed));
  }
  if (const auto* tree = childOf<PlXTreeLayoutStatistic>(of.element)) {
    return withNetwork(of, tree->getNodeVariable(), tree->getParentVariable(), true,
                       std::move(placed));
  }
  if (has<PlXTagCloudStatistic>(of.element)) return withWords(of, std::move(placed));
  if (const auto* distribution = childOf<PlXDistributionStatistic>(of.element)) {
    return withDistribution(of, *distribution, std::move(placed));
  }
  if (has<PlXFixedWindowDensityStatistic>(of.element) ||
      has<PlXNearestNeighborDensityStatistic>(of.element)) {
    return withDensity(of, std::move(placed));
  }
  return withBoxes(of, std::move(placed));
}

}  // namespace draw
