#include <cmath>
#include <set>

#include "drawelement.h"
#include "drawnetwork.h"

namespace {

constexpr int curvePoints = 101;

}  // namespace

std::string ElementDrawer::textOr(const DrawField& field, const std::string& raw) {
  const auto found = field.labels.find(raw);
  return found == field.labels.end() ? raw : found->second;
}

bool ElementDrawer::placeNetwork(const CTVariableType* from, const CTVariableType* to,
                                 bool isTree) {
  const DrawField* first = fieldHere(from, element_);
  const DrawField* second = fieldHere(to, element_);
  if (!first || !second || !first->isCategorical || !second->isCategorical) {
    tell("a network without names is left out");
    return false;
  }
  const auto links = context_.data.pairsOf(*first, *second);
  const NetworkPlaces places = isTree ? treePlaces(links) : circlePlaces(links);
  tell(isTree ? "a tree is drawn from the top down"
              : "the nodes of a network are drawn on a circle");
  Json values = Json::array();
  const bool isEdge = is<PlXEdge>();
  std::set<std::string> known;
  for (const auto& [a, b] : links) {
    const auto start = places.find(a);
    const auto end = places.find(b);
    if (isEdge && start != places.end() && end != places.end()) {
      values.push_back({{"x", start->second.first},
                        {"y", start->second.second},
                        {"x_end", end->second.first},
                        {"y_end", end->second.second}});
    }
    for (const std::string& name : {a, b}) {
      const auto place = places.find(name);
      if (isEdge || place == places.end() || !known.insert(name).second) continue;
      values.push_back(
          {{first->name, name}, {"x", place->second.first}, {"y", place->second.second}});
    }
  }
  usePlaces(values, *first);
  if (isEdge) {
    places_[0].end = "x_end";
    places_[1].end = "y_end";
    setMark("rule", lineLook(style_));
  }
  return !values.empty();
}

bool ElementDrawer::placeWords() {
  const DrawField& field = *fields_[0][0];
  if (!field.isCategorical) return false;
  std::vector<std::string> words;
  for (const std::string& raw : field.raws) words.push_back(textOr(field, raw));
  tell("a cloud of words is drawn as rows of words");
  Json values = Json::array();
  for (const auto& [word, place] : gridPlaces(words)) {
    values.push_back({{field.name, word}, {"x", place.first}, {"y", place.second}});
  }
  usePlaces(values, field);
  return !values.empty();
}

void ElementDrawer::usePlaces(const Json& values, const DrawField& name) {
  ownData_ = {{"values", values}};
  transforms_ = Json::array();
  for (const DrawLook& look : looks_) {
    if (look.field != &name) context_.notes.tell(*look.aesthetic, "a node has no value for it");
  }
  std::erase_if(looks_, [&](const DrawLook& look) { return look.field != &name; });
  groups_.clear();
  if (popupOf()) tell("popups are left out");
  places_[0].field = "x";
  places_[1].field = "y";
  hasFreePlaces_ = true;
  for (const auto* labeling : childrenOf<PlXLabeling>(element_)) {
    if (fieldHere(labeling->getVariable(), *labeling) == &name) {
      labels_.emplace_back(labeling, name.name);
    }
  }
}

bool ElementDrawer::placeDistribution(const PlXDistributionStatistic& statistic) {
  const DrawSide& x = plane_.x();
  const ChartString first(statistic.getParameter());
  const ChartString second(statistic.getSecondaryParameter());
  if (!hasNumbers(0) || !x.hasExtent() || !(x.least < x.greatest)) return false;
  const DrawField& field = *fields_[0][0];
  const auto distribution = states(statistic, u"distribution")
                                ? statistic.getDistribution()
                                : PlXDistributionStatistic::distribution_normal;
  double parameters[] = {first.convertToDouble(), second.convertToDouble()};
  const bool isNormal = distribution == PlXDistributionStatistic::distribution_normal;
  if (first.empty() || (isNormal && second.empty())) {
    if (!isNormal) {
      tell("a distribution without parameters is left out");
      return false;
    }
    estimate(field, parameters);
  }
  const double factor = histogramFactor(field);
  Json values = Json::array();
  for (int i = 0; i < curvePoints; ++i) {
    const double at = x.least + (x.greatest - x.least) * i / (curvePoints - 1);
    const double density = densityAt(distribution, at, parameters[0], parameters[1]);
    if (std::isfinite(density)) {
      values.push_back({{"x", numberJson(at)}, {"density", numberJson(density * factor)}});
    }
  }
  if (values.empty()) {
    tell("the distribution " + attribute(statistic, u"distribution") + " is left out");
    return false;
  }
  ownData_ = {{"values", values}};
  transforms_ = Json::array();
  looks_.clear();
  groups_.clear();
  places_[0].field = "x";
  places_[1].field = "density";
  return true;
}

void ElementDrawer::estimate(const DrawField& field, double (&parameters)[2]) {
  const auto moments = context_.data.momentsOf(field);
  parameters[0] = moments.mean;
  parameters[1] = moments.deviation;
}

double ElementDrawer::histogramFactor(const DrawField& field) {
  const auto* graph = dynamic_cast<const PlXGraph*>(element_.objectOf(
      static_cast<xercesc::DOMElement*>(element_.getImplementation()->getParentNode())));
  for (const PlXInterval* bars : graph ? graph->getIntervals() : std::vector<PlXInterval*>()) {
    const auto* bins = childOf<PlXBinStatistic>(*bars);
    const CTCoordinate* coordinate = bars->getX();
    if (!bins || !coordinate) continue;
    const auto fields = context_.data.fieldsOf(coordinate->getVariable());
    if (std::ranges::find(fields, &field) == fields.end()) continue;
    Json unused = Json::array();
    const double width = addBins(unused, field, *bins).width;
    if (width > 0) return width * context_.data.momentsOf(field).cases;
  }
  return 1;
}

bool ElementDrawer::placeDensity() {
  if (!hasNumbers(0)) return false;
  const DrawField& field = *fields_[0][0];
  Json density = {{"density", field.name}};
  if (const auto* window = childOf<PlXFixedWindowDensityStatistic>(element_)) {
    if (window->getBandwidth() > 0 && std::isfinite(window->getBandwidth())) {
      density["bandwidth"] = numberJson(window->getBandwidth());
    }
    if (window->getKernel() != PlXSmoothStatistic::kernel_gaussian) {
      tell("its kernel is drawn as a Gaussian one");
    }
  } else {
    tell("windows of a number of rows are drawn as those of one width");
  }
  std::vector<std::string> parts = groups_;
  parts.insert(parts.begin(), panel_.fields.begin(), panel_.fields.end());
  putGroups(density, parts);
  const double factor = histogramFactor(field);
  if (factor != 1) density["counts"] = true;
  const DrawSide& x = plane_.x();
  if (x.hasExtent() && x.least < x.greatest)
    density["extent"] = {numberJson(x.least), numberJson(x.greatest)};
  density["as"] = {field.name, "density"};
  transforms_.push_back(density);
  if (factor != 1) {
    // Counts are told for a unit of the variable.
    const double width = factor / context_.data.momentsOf(field).cases;
    const double weight =
        context_.data.momentsOf(field).cases / context_.data.momentsOf(field).rows;
    transforms_.push_back(
        calculation("density", datum("density") + " * " + literal(width * weight)));
  }
  std::erase_if(looks_, [](const DrawLook& look) { return !look.isCategorical; });
  places_[0].field = field.name;
  places_[1].field = "density";
  return true;
}

bool ElementDrawer::placeBoxes() {
  if (!hasNumbers(1)) {
    tell("has no numbers and is left out");
    return false;
  }
  const auto& schema = dynamic_cast<const PlXSchema&>(element_);
  const auto* tukey = childOf<PlXTukeyStatistic>(element_);
  const double fence = tukey && states(*tukey, u"fence") ? tukey->getFence() : 1.5;
  if (tukey && states(*tukey, u"extreme")) tell("extremes are drawn as other outliers");
  if (schema.getExtremeStyle() && schema.getExtremeStyle() != schema.getOutlierStyle()) {
    tell("extremes have the style of outliers");
  }
  mark_["extent"] = numberJson(fence > 0 && std::isfinite(fence) ? fence : 1.5);
  const auto partStyle = [&](const PlXStyle* own) { return own ? own : style_; };
  Json box = surfaceLook(partStyle(schema.getHingeStyle()));
  if (plane_.x().isDiscrete) {
    const auto share = style_ ? shareOf(attribute(*style_, u"width")) : std::nullopt;
    const double boxes = static_cast<double>(
        std::max<std::size_t>(1, plane_.x().order.size()) *
        std::max<std::size_t>(1, offsetBy_ ? context_.data.orderOf(*offsetBy_).texts.size() : 1));
    const double length = channel(0) == "x" ? plane_.width() : plane_.height();
    const double width = 0.8 * length / boxes * std::clamp(share.value_or(0.7), 0.05, 1.0);
    mark_["size"] = numberJson(std::max(2.0, std::round(width)));
  }
  mark_["box"] = box;
  mark_["median"] = lineLook(partStyle(schema.getMedianStyle()));
  mark_["rule"] = lineLook(partStyle(schema.getFenceStyle()));
  mark_["ticks"] = lineLook(partStyle(schema.getFenceStyle()));
  mark_["ticks"]["size"] = numberJson(std::round(mark_.value("size", 20.0) / 3));
  mark_["outliers"] = pointLook(partStyle(schema.getOutlierStyle()));
  if (!mark_["outliers"].contains("size")) mark_["outliers"]["size"] = 16;
  places_[0].field = fields_[0].empty() ? "" : fields_[0][0]->name;
  places_[1].field = fields_[1][0]->name;
  if (!childrenOf<PlXLabeling>(element_).empty()) tell("labels of outliers are left out");
  if (popupOf()) tell("its popup shows what Vega-Lite shows of boxes");
  return true;
}

bool ElementDrawer::placeCells(const PlXBinStatistic& bins) {
  if (!hasNumbers(0) || !hasNumbers(1)) return false;
  const bool isSquare = bins.getGridType() == PlXBinStatistic::gridType_square;
  Bins cut[2];
  for (const std::size_t i : {0U, 1U}) {
    cut[i] = addBins(transforms_, *fields_[i][0], bins);
    places_[i] = {cut[i].low, cut[i].high, true};
  }
  if (!isSquare && cut[0].width > 0 && cut[1].width > 0) {
    brick(cut);
  } else if (!is<PlXPolygon>()) {
    // A symbol stands in the middle.
    for (const std::size_t i : {0U, 1U}) {
      const std::string middle = fields_[i][0]->name + "_mid";
      transforms_.push_back(
          calculation(middle, '(' + datum(cut[i].low) + " + " + datum(cut[i].high) + ") / 2"));
      places_[i] = {middle, "", false};
    }
  }
  for (const MarkPlace& place : places_) {
    addKey(place.field);
    if (!place.end.empty()) addKey(place.end);
  }
  const auto* statistic = childOf<PlXSummaryStatistic>(element_);
  Summary summary = makeSummary();
  const auto value = statistic ? summary.add(*statistic, fields_[1][0]) : std::nullopt;
  responseField_ = fields_[1][0];
  addToSummary(summary, value ? *value : summary.count());
  summary.appendTo(transforms_);
  isSummarized_ = true;
  if (bins.getLocation() == PlXBinStatistic::location_centroid) {
    tell("cells stand in the grid, not where their rows are");
  }
  return true;
}

void ElementDrawer::brick(const Bins (&cut)[2]) {
  const DrawField& x = *fields_[0][0];
  const DrawField& y = *fields_[1][0];
  const std::string column = literal(cut[0].width);
  transforms_.push_back(calculation(
      "hex_shift", "floor((" + datum(cut[1].low) + " - " + literal(y.least) + ") / " +
                       literal(cut[1].width) + " + 0.5) % 2 == 0 ? 0 : 0.5 * " + column));
  transforms_.push_back(
      calculation(x.name + "_mid", "(floor((" + datum(x.name) + " - " + datum("hex_shift") + " - " +
                                       literal(x.least) + ") / " + column + ") + 0.5) * " + column +
                                       " + " + literal(x.least) + " + " + datum("hex_shift")));
  transforms_.push_back(
      calculation(y.name + "_mid", '(' + datum(cut[1].low) + " + " + datum(cut[1].high) + ") / 2"));
  places_[0] = {x.name + "_mid", "", false};
  places_[1] = {y.name + "_mid", "", false};
  if (is<PlXPolygon>()) {
    kind_ = MarkKind::Point;
    mark_["type"] = "point";
    mark_["shape"] = symbolShape("hexagon");
    const double columns = std::max(1.0, (x.greatest - x.least) / cut[0].width);
    const double width = plane_.width() / columns;
    mark_["size"] = numberJson(std::round(width * width * 1.33));
    std::erase_if(
        looks_, [](const DrawLook& look) { return dynamic_cast<const PlXSize*>(look.aesthetic); });
  }
  tell("hexagons are counted as bricks are laid");
}
