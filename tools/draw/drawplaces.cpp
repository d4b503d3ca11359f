#include <cmath>

#include "drawelement.h"

namespace {

// The statistics that have no picture here, and what is told of them.
struct LeftOut {
  bool (*has)(const PlXBaseElement&);
  const char* what;
};
constexpr LeftOut leftOut[] = {
    {has<PlXClusteringStatistic>, "groups of near rows are left out"},
    {has<PlXMapStatistic>, "a map has no outlines here and is left out"},
    {has<PlXRegionStatistic>, "a region of confidence is left out"},
    {has<PlXSOMStatistic>, "a self-organizing map is left out"},
    {has<PlXPatternLinkStatistic>, "links between categories are left out"},
};

}  // namespace

bool ElementDrawer::place() {
  for (const LeftOut& row : leftOut) {
    if (!row.has(element_)) continue;
    tell(row.what);
    return false;
  }
  if (const auto* network = childOf<PlXGraphLayoutStatistic>(element_)) {
    return placeNetwork(network->getFromVariable(), network->getToVariable(), false);
  }
  if (const auto* tree = childOf<PlXTreeLayoutStatistic>(element_)) {
    return placeNetwork(tree->getNodeVariable(), tree->getParentVariable(), true);
  }
  if (has<PlXTagCloudStatistic>(element_)) return placeWords();
  if (const auto* distribution = childOf<PlXDistributionStatistic>(element_)) {
    return placeDistribution(*distribution);
  }
  if (has<PlXFixedWindowDensityStatistic>(element_) ||
      has<PlXNearestNeighborDensityStatistic>(element_)) {
    return placeDensity();
  }
  if (is<PlXSchema>()) return placeBoxes();
  const auto* bins = childOf<PlXBinStatistic>(element_);
  if (bins && !fields_[0].empty() && !fields_[1].empty() &&
      (bins->getMethod() == PlXBinStatistic::method_allDimensions || is<PlXPolygon>())) {
    return placeCells(*bins);
  }
  if (!placeSummary(bins)) return false;
  if (const auto* link = childOf<PlXLinkStatistic>(element_)) addSpikes(*link);
  if (const auto* smooth = childOf<PlXSmoothStatistic>(element_)) return addCurve(*smooth);
  return true;
}

bool ElementDrawer::hasNumbers(std::size_t i) const {
  return !fields_[i].empty() && !fields_[i][0]->isCategorical;
}

Summary ElementDrawer::makeSummary() const {
  const DrawField* along = fields_[0].empty() ? nullptr : fields_[0][0];
  static const std::vector<std::string> noOrder;
  return {context_,
          source_,
          keys_,
          places_[0].field,
          along && along->isCategorical ? plane_.x().order : noOrder,
          panel_.fields};
}

void ElementDrawer::addToSummary(Summary& summary, const std::string& response) {
  for (DrawLook& look : looks_) {
    const PlXSummaryStatistic* own = look.aesthetic->getSummaryStatistic();
    if (look.isCategorical && !own) continue;
    if (std::ranges::find(keys_, look.name) != keys_.end()) continue;
    const auto value = own ? summary.add(*own, look.field) : std::nullopt;
    look.name = value ? *value : summary.add("mean", look.field);
  }
  for (const auto* labeling : childrenOf<PlXLabeling>(element_)) {
    const DrawField* field = fieldHere(labeling->getVariable(), *labeling);
    const PlXSummaryStatistic* own = labeling->getSummaryStatistic();
    const DrawField* measured = field && !field->isCategorical ? field
                                : !responseField_              ? field
                                                               : responseField_;
    std::string name = response;
    if (own && (!field || !field->isCategorical || measured != field)) {
      if (const auto value = summary.add(*own, measured)) name = *value;
    } else if (field && std::ranges::find(keys_, field->name) != keys_.end()) {
      name = field->name;
    } else if (field && field != responseField_ && !field->isCategorical) {
      name = summary.add("mean", field);
    } else if (field && field != responseField_) {
      context_.notes.tell(*labeling, "its labels differ within an item; the value is shown");
    }
    labels_.emplace_back(labeling, name);
  }
  if (const PlXPopup* popup = popupOf()) {
    for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
      const DrawField* field = fieldHere(token->getVariable(), *popup);
      const auto* own = childOf<PlXSummaryStatistic>(*token);
      if (own) {
        if (const auto value = summary.add(*own, field))
          tips_[attribute(*token, u"valueToken")] = *value;
      } else if (field && std::ranges::find(keys_, field->name) != keys_.end()) {
        tips_[attribute(*token, u"valueToken")] = field->name;
      } else if (field && field == responseField_) {
        tips_[attribute(*token, u"valueToken")] = response;
      }
    }
  }
}

const PlXPopup* ElementDrawer::popupOf() const {
  const auto found = context_.popups.find(attribute(element_, PlXUni::_id));
  return found == context_.popups.end() ? nullptr : found->second;
}

void ElementDrawer::plainLabels() {
  for (const auto* labeling : childrenOf<PlXLabeling>(element_)) {
    const DrawField* field = fieldHere(labeling->getVariable(), *labeling);
    if (!field && !places_[1].field.empty()) {
      labels_.emplace_back(labeling, places_[1].field);
    } else if (field) {
      labels_.emplace_back(labeling, field->name);
    }
  }
  if (const PlXPopup* popup = popupOf()) {
    for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
      if (const DrawField* field = fieldHere(token->getVariable(), *popup)) {
        tips_[attribute(*token, u"valueToken")] = field->name;
      }
    }
  }
}

void ElementDrawer::fold(std::size_t i) {
  if (fields_[i].size() < 2) return;
  Json names = Json::array();
  for (const DrawField* field : fields_[i]) names.push_back(field->name);
  const std::string as = i == 0 ? "x_value" : "y_value";
  transforms_.push_back({{"fold", names}, {"as", {as + "_of", as}}});
  folded_ = *fields_[i][0];
  folded_.name = as;
  fields_[i] = {&folded_};
  addGroup(as + "_of");
}

bool ElementDrawer::placeSummary(const PlXBinStatistic* bins) {
  const auto* statistic = childOf<PlXSummaryStatistic>(element_);
  const auto method = statistic ? statistic->getMethod() : PlXSummaryStatistic::method_value;
  if (method == PlXSummaryStatistic::method_range && !fields_[1].empty()) {
    placeKey(bins);
    return placeRange();
  }
  fold(0);
  fold(1);
  const bool isWhole = fields_[1].empty() && hasNumbers(0) && !bins;
  if (!isWhole) placeKey(bins);
  const std::size_t at = isWhole && plane_.isPolar() ? 0 : 1;
  const auto& response = isWhole ? fields_[0] : fields_[1];
  responseField_ = response.empty() ? nullptr : response[0];

  // Rows on top of each other are one bar, as high as their sum.
  const bool isPile =
      isStacked() && (is<PlXInterval>() || is<PlXArea>()) && hasNumbers(at) && !element_.getDot();
  const bool counts = response.empty() || bins || isPile ||
                      (statistic && method != PlXSummaryStatistic::method_value && method != 0);
  if (!counts && has<PlXAggregateStatistic>(element_)) {
    tell("rows that agree are drawn over each other");
  }
  if (!counts) {
    places_[at].field = responseField_->name;
    plainLabels();
    return true;
  }
  if (responseField_ && responseField_->isCategorical && bins) responseField_ = nullptr;
  Summary summary = makeSummary();
  std::string value;
  if (statistic && method != 0 && method != PlXSummaryStatistic::method_value) {
    const auto found = summary.add(*statistic, responseField_);
    if (!found) tell("the statistic " + attribute(*statistic, u"method") + " is drawn as counts");
    value = found ? *found : summary.count();
  } else {
    value = isPile && !bins ? summary.add("sum", responseField_) : summary.count();
  }
  addToSummary(summary, value);
  summary.appendTo(transforms_);
  isSummarized_ = true;
  places_[at].field = value;
  return true;
}

void ElementDrawer::placeKey(const PlXBinStatistic* bins) {
  if (fields_[0].empty()) return;
  const DrawField& field = *fields_[0][0];
  if (bins && !field.isCategorical) {
    const Bins cut = addBins(transforms_, field, *bins);
    binWidth_ = cut.width;
    places_[0] = {cut.low, cut.high, true};
    addKey(cut.low);
    addKey(cut.high);
    if (is<PlXInterval>() && bins->getGridType() == PlXBinStatistic::gridType_dot) {
      tell("dots are drawn as bars");
    }
  } else {
    places_[0].field = field.name;
    addKey(field.name);
  }
}

bool ElementDrawer::placeRange() {
  std::string low, high;
  for (const DrawField* field : fields_[1]) {
    if (field->isCategorical) continue;
    low += (low.empty() ? "" : ", ") + datum(field->name);
  }
  if (low.empty()) return false;
  high = low;
  if (fields_[1].size() > 1) {
    transforms_.push_back(calculation("lowest", "min(" + low + ')'));
    transforms_.push_back(calculation("highest", "max(" + high + ')'));
    low = "lowest";
    high = "highest";
  } else {
    low = high = fields_[1][0]->name;
  }
  transforms_.push_back({{"aggregate",
                          {{{"op", "min"}, {"field", low}, {"as", "range_low"}},
                           {{"op", "max"}, {"field", high}, {"as", "range_high"}}}},
                         {"groupby", keys_}});
  addFilter("isValid(" + datum("range_low") + ')');
  places_[1] = {"range_low", "range_high", false};
  isSummarized_ = true;
  if (!childrenOf<PlXLabeling>(element_).empty()) tell("labels of ranges are left out");
  return true;
}

void ElementDrawer::addSpikes(const PlXLinkStatistic& link) {
  const PlXLinkStatistic::ENUM_location ends[] = {link.getX(), link.getY()};
  kind_ = MarkKind::Line;
  setMark("rule", lineLook(style_));
  for (const std::size_t i : {0U, 1U}) {
    if (ends[i] == PlXLinkStatistic::location_centroid ||
        ends[i] == PlXLinkStatistic::location_mean) {
      if (side(i).isDiscrete || places_[i].field.empty()) continue;
      const std::string as = i == 0 ? "x_end" : "y_end";
      Json mean = {{"joinaggregate", {{{"op", "mean"}, {"field", places_[i].field}, {"as", as}}}}};
      std::vector<std::string> parts = panel_.fields;
      parts.insert(parts.end(), groups_.begin(), groups_.end());
      putGroups(mean, parts);
      transforms_.push_back(mean);
      places_[i].end = as;
    } else if (ends[i] == PlXLinkStatistic::location_base ||
               ends[i] == PlXLinkStatistic::location_origin) {
      if (side(i).isDiscrete) continue;
      const bool isLeast = ends[i] == PlXLinkStatistic::location_base &&
                           !side(i).scale.value("zero", false) && side(i).hasExtent();
      ends_[i] = isLeast ? numberJson(side(i).least) : Json(0);
    }
  }
}

bool ElementDrawer::addCurve(const PlXSmoothStatistic& smooth) {
  const auto method = smooth.getMethod();
  static constexpr std::pair<PlXSmoothStatistic::ENUM_method, const char*> shapes[] = {
      {PlXSmoothStatistic::method_stepLeft, "step-after"},
      {PlXSmoothStatistic::method_stepRight, "step-before"},
      {PlXSmoothStatistic::method_stepCenter, "step"},
      {PlXSmoothStatistic::method_spline, "monotone"}};
  for (const auto& [known, shape] : shapes) {
    if (method != known) continue;
    mark_["interpolate"] = shape;
    return true;
  }
  const long degree = method == PlXSmoothStatistic::method_polynomial ? smooth.getDegree() : 1;
  std::vector<std::string> parts = panel_.fields;
  parts.insert(parts.end(), groups_.begin(), groups_.end());
  if (is<PlXInterval>() || smooth.getSpikes()) return addFitSpikes(degree, parts);
  if (plane_.x().isDiscrete || plane_.y().isDiscrete || places_[0].field.empty() ||
      places_[1].field.empty()) {
    tell("a fit needs numbers and is left out");
    return false;
  }
  Json fit = Json::object();
  if (method == PlXSmoothStatistic::method_loess) {
    fit = {{"loess", places_[1].field}, {"on", places_[0].field}};
    const double share = smooth.getProportion();
    if (share > 0 && share <= 1) fit["bandwidth"] = numberJson(share);
    if (smooth.getKernel() != PlXSmoothStatistic::kernel_tricube) {
      tell("its kernel is drawn as a tricube one");
    }
  } else {
    static constexpr const char* names[] = {"poly", "linear", "quad", "poly"};
    fit = {{"regression", places_[1].field}, {"on", places_[0].field}};
    const auto order = static_cast<std::size_t>(std::clamp(degree, 0L, 20L));
    fit["method"] = names[std::min<std::size_t>(order, 3)];
    if (order == 0 || order > 2) fit["order"] = order;
    const DrawSide& x = plane_.x();
    if (!smooth.getBounded() && x.scale.contains("domain") && x.hasExtent()) {
      fit["extent"] = {numberJson(x.least), numberJson(x.greatest)};
    }
    if (states(smooth, u"intercept")) tell("its intercept is left out");
  }
  putGroups(fit, parts);
  transforms_.push_back(fit);
  std::erase_if(looks_, [&](const DrawLook& look) {
    const bool isLost = !look.isCategorical;
    if (isLost) context_.notes.tell(*look.aesthetic, "a fit has no values for it");
    return isLost;
  });
  labels_.clear();
  tips_.clear();
  isFit_ = true;
  if (!is<PlXArea>() && !is<PlXPoint>()) mark_["type"] = "line";
  return true;
}

bool ElementDrawer::addFitSpikes(long degree, const std::vector<std::string>& parts) {
  if (degree != 0) {
    tell("spikes to a fitted curve are left out");
    return false;
  }
  Json mean = {{"joinaggregate", {{{"op", "mean"}, {"field", places_[1].field}, {"as", "y_end"}}}}};
  putGroups(mean, parts);
  transforms_.push_back(mean);
  places_[1].end = "y_end";
  kind_ = MarkKind::Line;
  setMark("rule", lineLook(style_));
  return true;
}
