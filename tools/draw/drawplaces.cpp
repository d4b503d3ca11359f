#include "drawplaces.h"

#include <cmath>

#include "drawlayouts.h"

namespace draw {

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

// ---- labels and popups

void labelRows(const Subject& of, Placed& placed) {
  const std::string& value = placed.places[1].field;
  for (const auto* labeling : childrenOf<PlXLabeling>(of.element)) {
    const DrawField* field = of.fieldHere(labeling->getVariable(), *labeling);
    if (field || !value.empty()) placed.labels.emplace_back(labeling, field ? field->name : value);
  }
  const PlXPopup* popup = of.popup();
  if (!popup) return;
  for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
    if (const DrawField* field = of.fieldHere(token->getVariable(), *popup)) {
      placed.tips[attribute(*token, u"valueToken")] = field->name;
    }
  }
}

void addLabels(const Subject& of, Summary& summary, const std::string& response, Placed& placed) {
  for (const auto* labeling : childrenOf<PlXLabeling>(of.element)) {
    const DrawField* field = of.fieldHere(labeling->getVariable(), *labeling);
    const PlXSummaryStatistic* own = labeling->getSummaryStatistic();
    const DrawField* measured = field && !field->isCategorical ? field
                                : !placed.response             ? field
                                                               : placed.response;
    std::string name = response;
    if (own && (!field || !field->isCategorical || measured != field)) {
      if (const auto value = summary.add(*own, measured)) name = *value;
    } else if (field && placed.looks.isKey(field->name)) {
      name = field->name;
    } else if (field && field != placed.response && !field->isCategorical) {
      name = summary.add("mean", field);
    } else if (field && field != placed.response) {
      of.context.notes.tell(*labeling, "its labels differ within an item; the value is shown");
    }
    placed.labels.emplace_back(labeling, name);
  }
}

void addTips(const Subject& of, Summary& summary, const std::string& response, Placed& placed) {
  const PlXPopup* popup = of.popup();
  if (!popup) return;
  for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
    const DrawField* field = of.fieldHere(token->getVariable(), *popup);
    const auto* own = childOf<PlXSummaryStatistic>(*token);
    const std::string name = attribute(*token, u"valueToken");
    if (own) {
      if (const auto value = summary.add(*own, field)) placed.tips[name] = *value;
    } else if (field && placed.looks.isKey(field->name)) {
      placed.tips[name] = field->name;
    } else if (field && field == placed.response) {
      placed.tips[name] = response;
    }
  }
}

// ---- values

// The places of groups of rows: their category, number or bin.
void placeKey(const Subject& of, const DrawField& field, const PlXBinStatistic* bins,
              Placed& placed) {
  // A line breaks where a value is missing; a place or a bin that is missing is none.
  if (!field.isCategorical && field.hasMissing) addOnce(placed.transforms, validFilter(field.name));
  if (bins && !field.isCategorical) {
    const Bins cut = addBins(placed.transforms, field, *bins);
    placed.places[0] = {cut.low, cut.high, true};
    placed.looks.addKey(cut.low);
    placed.looks.addKey(cut.high);
    if (of.is<PlXInterval>() && bins->getGridType() == PlXBinStatistic::gridType_dot) {
      of.tell("dots are drawn as bars");
    }
  } else {
    placed.places[0].field = field.name;
    placed.looks.addKey(field.name);
  }
}

// Several variables on one coordinate become one with the values of all.
const DrawField* folded(const std::vector<const DrawField*>& fields, std::size_t i,
                        Placed& placed) {
  if (fields.size() < 2) return fields.empty() ? nullptr : fields[0];
  Json names = Json::array();
  for (const DrawField* field : fields) names.push_back(field->name);
  const std::string as = i == 0 ? "x_value" : "y_value";
  placed.add({{"fold", names}, {"as", {as + "_of", as}}});
  placed.looks.addGroup(as + "_of");
  placed.folded.push_back(std::make_unique<DrawField>(*fields[0]));
  placed.folded.back()->name = as;
  for (const DrawField* field : fields) placed.folded.back()->hasMissing |= field->hasMissing;
  return placed.folded.back().get();
}

// From the least to the greatest of one or several variables.
std::optional<Placed> withRange(const Subject& of, Placed placed) {
  std::string low, high;
  for (const DrawField* field : of.fields[1]) {
    if (field->isCategorical) continue;
    low += (low.empty() ? "" : ", ") + datum(field->name);
    // Vega takes the least of nothing and five for nought.
    if (field->hasMissing) addOnce(placed.transforms, validFilter(field->name));
  }
  if (low.empty()) return {};
  high = low;
  if (of.fields[1].size() > 1) {
    placed.add(calculation("lowest", "min(" + low + ')'));
    placed.add(calculation("highest", "max(" + high + ')'));
    low = "lowest";
    high = "highest";
  } else {
    low = high = of.fields[1][0]->name;
  }
  placed.add({{"aggregate",
               {{{"op", "min"}, {"field", low}, {"as", "range_low"}},
                {{"op", "max"}, {"field", high}, {"as", "range_high"}}}},
              {"groupby", placed.looks.keys}});
  placed.addFilter("isValid(" + datum("range_low") + ')');
  placed.places[1] = {"range_low", "range_high", false};
  placed.isSummarized = true;
  if (has<PlXLabeling>(of.element)) of.tell("labels of ranges are left out");
  return placed;
}

// The field with the value of each item: that of a statistic, or their number.
std::string valueOf(const Subject& of, Summary& summary, const DrawField* response, bool isSum) {
  const auto* statistic = childOf<PlXSummaryStatistic>(of.element);
  const auto method = statistic ? statistic->getMethod() : PlXSummaryStatistic::method_value;
  if (!statistic || method == 0 || method == PlXSummaryStatistic::method_value) {
    return isSum ? summary.add("sum", response) : summary.count();
  }
  const auto found = summary.add(*statistic, response);
  if (!found) of.tell("the statistic " + attribute(*statistic, u"method") + " is drawn as counts");
  return found ? *found : summary.count();
}

std::optional<Placed> withSummary(const Subject& of, const PlXBinStatistic* bins, Placed placed) {
  const auto* statistic = childOf<PlXSummaryStatistic>(of.element);
  const auto method = statistic ? statistic->getMethod() : PlXSummaryStatistic::method_value;
  if (method == PlXSummaryStatistic::method_range && !of.fields[1].empty()) {
    if (!of.fields[0].empty()) placeKey(of, *of.fields[0][0], bins, placed);
    return withRange(of, std::move(placed));
  }
  const DrawField* fields[] = {folded(of.fields[0], 0, placed), folded(of.fields[1], 1, placed)};
  const bool isWhole = !fields[1] && fields[0] && !fields[0]->isCategorical && !bins;
  if (!isWhole && fields[0]) placeKey(of, *fields[0], bins, placed);
  const std::size_t at = isWhole && of.plane.isPolar() ? 0 : 1;
  placed.response = isWhole ? fields[0] : fields[1];
  // Rows on top of each other are one bar, as high as their sum.
  const bool isPile = of.isStacked() && (of.is<PlXInterval>() || of.is<PlXArea>()) && fields[at] &&
                      !fields[at]->isCategorical && !of.element.getDot();
  const bool counts = !placed.response || bins || isPile ||
                      (statistic && method != PlXSummaryStatistic::method_value && method != 0);
  if (!counts) {
    if (has<PlXAggregateStatistic>(of.element))
      of.tell("rows that agree are drawn over each other");
    placed.places[at].field = placed.response->name;
    labelRows(of, placed);
    return placed;
  }
  if (placed.response && placed.response->isCategorical && bins) placed.response = nullptr;
  Summary summary = summaryOf(of, placed.looks, placed.places[0].field);
  const std::string value = valueOf(of, summary, placed.response, isPile && !bins);
  addToSummary(of, summary, value, placed);
  summary.appendTo(placed.transforms);
  placed.isSummarized = true;
  placed.places[at].field = value;
  return placed;
}

// ---- spikes and curves

Json meanOf(const std::string& field, const std::string& as,
            const std::vector<std::string>& parts) {
  Json mean = {{"joinaggregate", {{{"op", "mean"}, {"field", field}, {"as", as}}}}};
  putGroups(mean, parts);
  return mean;
}

// Lines from the items to a common place.
Placed withSpikes(const Subject& of, const PlXLinkStatistic& link, Placed placed) {
  const PlXLinkStatistic::ENUM_location ends[] = {link.getX(), link.getY()};
  placed.mark = markOf(of, MarkKind::Line, "rule", lineLook(of.style));
  for (const std::size_t i : {0U, 1U}) {
    const DrawSide& side = of.side(i);
    MarkPlace& at = placed.places[i];
    if (side.isDiscrete) continue;
    if (ends[i] == PlXLinkStatistic::location_centroid ||
        ends[i] == PlXLinkStatistic::location_mean) {
      if (at.field.empty()) continue;
      at.end = i == 0 ? "x_end" : "y_end";
      placed.add(meanOf(at.field, at.end, placed.looks.partsIn(of.panel)));
    } else if (ends[i] == PlXLinkStatistic::location_base ||
               ends[i] == PlXLinkStatistic::location_origin) {
      const bool isLeast = ends[i] == PlXLinkStatistic::location_base &&
                           !side.scale.value("zero", false) && side.hasExtent();
      placed.ends[i] = isLeast ? numberJson(side.least) : Json(0);
    }
  }
  return placed;
}

// From the items to their mean; other curves have no values at the items.
std::optional<Placed> withFitSpikes(const Subject& of, long degree, Placed placed) {
  if (degree != 0) {
    of.tell("spikes to a fitted curve are left out");
    return {};
  }
  placed.add(meanOf(placed.places[1].field, "y_end", placed.looks.partsIn(of.panel)));
  placed.places[1].end = "y_end";
  placed.mark = markOf(of, MarkKind::Line, "rule", lineLook(of.style));
  return placed;
}

Json loessOf(const Subject& of, const PlXSmoothStatistic& smooth, const Placed& placed) {
  Json fit = {{"loess", placed.places[1].field}, {"on", placed.places[0].field}};
  const double share = smooth.getProportion();
  if (share > 0 && share <= 1) fit["bandwidth"] = numberJson(share);
  if (smooth.getKernel() != PlXSmoothStatistic::kernel_tricube) {
    of.tell("its kernel is drawn as a tricube one");
  }
  return fit;
}

Json regressionOf(const Subject& of, const PlXSmoothStatistic& smooth, long degree,
                  const Placed& placed) {
  static constexpr const char* names[] = {"poly", "linear", "quad", "poly"};
  Json fit = {{"regression", placed.places[1].field}, {"on", placed.places[0].field}};
  const auto order = static_cast<std::size_t>(std::clamp(degree, 0L, 20L));
  fit["method"] = names[std::min<std::size_t>(order, 3)];
  if (order == 0 || order > 2) fit["order"] = order;
  const DrawSide& x = of.plane.x();
  if (!smooth.getBounded() && x.hasFixedDomain() && x.hasExtent()) {
    fit["extent"] = {numberJson(x.least), numberJson(x.greatest)};
  }
  if (states(smooth, u"intercept")) of.tell("its intercept is left out");
  return fit;
}

std::optional<Placed> withCurve(const Subject& of, const PlXSmoothStatistic& smooth,
                                Placed placed) {
  const auto method = smooth.getMethod();
  static constexpr std::pair<PlXSmoothStatistic::ENUM_method, const char*> shapes[] = {
      {PlXSmoothStatistic::method_stepLeft, "step-after"},
      {PlXSmoothStatistic::method_stepRight, "step-before"},
      {PlXSmoothStatistic::method_stepCenter, "step"},
      {PlXSmoothStatistic::method_spline, "monotone"}};
  for (const auto& [known, shape] : shapes) {
    if (method != known) continue;
    const bool isTurned = of.isTransposed();
    const char* turned = method == PlXSmoothStatistic::method_stepLeft    ? "step-before"
                         : method == PlXSmoothStatistic::method_stepRight ? "step-after"
                                                                          : shape;
    if (isTurned && method == PlXSmoothStatistic::method_stepCenter) {
      of.tell("steps rise in the middle of the values, not of the places");
    }
    placed.mark.json["interpolate"] = isTurned ? turned : shape;
    return placed;
  }
  const long degree = method == PlXSmoothStatistic::method_polynomial ? smooth.getDegree() : 1;
  if (of.is<PlXInterval>() || smooth.getSpikes()) {
    return withFitSpikes(of, degree, std::move(placed));
  }
  if (of.plane.x().isDiscrete || of.plane.y().isDiscrete || placed.places[0].field.empty() ||
      placed.places[1].field.empty()) {
    of.tell("a fit needs numbers and is left out");
    return {};
  }
  Json fit = method == PlXSmoothStatistic::method_loess ? loessOf(of, smooth, placed)
                                                        : regressionOf(of, smooth, degree, placed);
  putGroups(fit, placed.looks.partsIn(of.panel));
  placed.add(fit);
  std::erase_if(placed.looks.list, [&](const DrawLook& look) {
    const bool isLost = !look.isCategorical;
    if (isLost) of.context.notes.tell(*look.aesthetic, "a fit has no values for it");
    return isLost;
  });
  placed.labels.clear();
  placed.tips.clear();
  placed.isFit = true;
  if (!of.is<PlXArea>() && !of.is<PlXPoint>()) placed.mark.json["type"] = "line";
  if (of.isTransposed() && placed.mark.is("line")) placed.mark.json["orient"] = "horizontal";
  return placed;
}

}  // namespace

Summary summaryOf(const Subject& of, const Looks& looks, const std::string& place) {
  const DrawField* along = of.fields[0].empty() ? nullptr : of.fields[0][0];
  static const std::vector<std::string> noOrder;
  return {of.context,
          of.source,
          looks.keys,
          place,
          along && along->isCategorical ? of.plane.x().order : noOrder,
          of.panel.fields};
}

void addToSummary(const Subject& of, Summary& summary, const std::string& response,
                  Placed& placed) {
  for (DrawLook& look : placed.looks.list) {
    const PlXSummaryStatistic* own = look.aesthetic->getSummaryStatistic();
    if (look.isCategorical && !own) continue;
    if (placed.looks.isKey(look.name)) continue;
    const auto value = own ? summary.add(*own, look.field) : std::nullopt;
    look.name = value ? *value : summary.add("mean", look.field);
  }
  addLabels(of, summary, response, placed);
  addTips(of, summary, response, placed);
}

std::optional<Placed> place(const Subject& of, Json rows, Looks looks, Mark mark) {
  Placed placed;
  placed.transforms = std::move(rows);
  placed.looks = std::move(looks);
  placed.mark = std::move(mark);
  for (const LeftOut& row : leftOut) {
    if (!row.has(of.element)) continue;
    of.tell(row.what);
    return {};
  }
  if (isLaidOut(of)) return withLayout(of, std::move(placed));
  const auto* bins = childOf<PlXBinStatistic>(of.element);
  if (bins && !of.fields[0].empty() && !of.fields[1].empty() &&
      (bins->getMethod() == PlXBinStatistic::method_allDimensions || of.is<PlXPolygon>())) {
    return withCells(of, *bins, std::move(placed));
  }
  auto result = withSummary(of, bins, std::move(placed));
  const auto* link = childOf<PlXLinkStatistic>(of.element);
  if (result && link) result = withSpikes(of, *link, std::move(*result));
  const auto* smooth = childOf<PlXSmoothStatistic>(of.element);
  if (result && smooth) result = withCurve(of, *smooth, std::move(*result));
  return result;
}

}  // namespace draw
