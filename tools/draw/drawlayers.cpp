#include "drawlayers.h"

#include <cmath>
#include <numbers>

#include "drawlabels.h"

namespace draw {

namespace {

// The place of a category among others, as an expression.
std::string rankIn(const std::vector<std::string>& order, const std::string& field) {
  return "indexof(" + Json(order).dump(-1, ' ', false, Json::error_handler_t::replace) + ", " +
         datum(field) + ')';
}

// ---- places

void putPlace(const Subject& of, const Placed& placed, std::size_t i, Json& encoding) {
  const MarkPlace& at = placed.places[i];
  if (at.field.empty()) return;
  const std::string& name = of.channel(i);
  const auto& facets = of.panel.fields;
  const bool isOfTable = of.panel.isTable && !of.fields[i].empty() &&
                         std::ranges::find(facets, of.fields[i][0]->name) != facets.end();
  if (isOfTable) return;
  if (placed.hasFreePlaces) {
    encoding[name] = {{"field", at.field},
                      {"type", "quantitative"},
                      {"scale", {{"domain", {-0.1, 1.1}}}},
                      {"axis", nullptr}};
    if (!at.end.empty()) encoding[name + '2'] = {{"field", at.end}};
    return;
  }
  encoding[name] = DrawPlane::position(of.side(i), at.field);
  if (at.isBinned) encoding[name]["bin"] = "binned";
  if (!at.end.empty()) encoding[name + '2'] = {{"field", at.end}};
  if (!placed.ends[i].is_null()) encoding[name + '2'] = {{"datum", placed.ends[i]}};
  if (i == 1 && !placed.base.is_null()) encoding[name + '2'] = placed.base;
}

// Symbols that would cover each other are strewn.
void putJitter(const Subject& of, Json& encoding) {
  const std::string channel = of.channel(0) + "Offset";
  if (!of.plane.x().isDiscrete || encoding.contains(channel)) return;
  encoding[channel] = {
      {"field", "jitter"}, {"type", "quantitative"}, {"scale", {{"domain", {-0.5, 1.5}}}}};
}

Json placesOf(const Subject& of, const Placed& placed) {
  Json encoding = Json::object();
  putPlace(of, placed, 0, encoding);
  putPlace(of, placed, 1, encoding);
  const bool isAlongX =
      of.plane.isPolar() && !placed.places[0].field.empty() && placed.places[1].field.empty();
  const std::string& value = of.channel(isAlongX ? 0 : 1);
  const bool canStack = of.is<PlXInterval>() || of.is<PlXArea>();
  if (encoding.contains(value) && !encoding.contains(value + '2') && canStack &&
      !placed.mark.is("rule")) {
    encoding[value]["stack"] = of.isStacked() ? Json("zero") : Json();
  }
  const DrawField* offsetBy = placed.looks.offsetBy;
  if (offsetBy && of.plane.x().isDiscrete && !of.plane.isPolar() && !placed.hasFreePlaces) {
    Json& offset = encoding[of.channel(0) + "Offset"];
    offset = {{"field", offsetBy->name}, {"type", "nominal"}};
    // Numbers stand in the order of Vega-Lite, which is theirs.
    if (offsetBy->isCategorical) {
      offset["scale"]["domain"] = of.context.data.orderOf(*offsetBy).texts;
    }
  }
  if (of.element.getPositionModifier() == CTElementType::positionModifier_jitter) {
    putJitter(of, encoding);
  }
  return encoding;
}

void addJitter(const Subject& of, Placed& placed) {
  if (of.element.getPositionModifier() != CTElementType::positionModifier_jitter) return;
  if (!of.plane.x().isDiscrete) return of.tell("items on numbers aren't strewn");
  // Not by chance, so that a picture is the same each time.
  placed.add({{"window", {{{"op", "row_number"}, {"as", "row"}}}}});
  placed.add(calculation("jitter", "(" + datum("row") + " * 0.618034) % 1"));
}

// A log scale has no place for zero and less, and bars on it stand on its lower end.
void keepPositive(const Subject& of, Placed& placed) {
  for (const std::size_t i : {0U, 1U}) {
    const MarkPlace& at = placed.places[i];
    Json& end = placed.ends[i];
    if (!of.side(i).isLog() || at.field.empty() || placed.hasFreePlaces) continue;
    placed.addFilter(datum(at.field) + " > 0");
    const bool isOpen = at.end.empty() && end.is_null();
    if (end.is_number() && end.get<double>() <= 0) end = nullptr;
    const bool hasBase = of.is<PlXInterval>() || of.is<PlXArea>() || (!isOpen && at.end.empty());
    if (i == 0 || !hasBase || !at.end.empty()) continue;
    placed.base = {{"datum", numberJson(of.side(i).base)}};
    if (of.isStacked()) of.tell("on a log scale all bars stand on its lower end");
  }
}

// An item without the value that its look is by isn't drawn, unless the look says how.
void keepKnown(const Subject& of, Placed& placed) {
  for (const DrawLook& look : placed.looks.list) {
    const auto* color = dynamic_cast<const PlXColor*>(look.aesthetic);
    if (!look.field->hasMissing || (color && color->isMissingPresent())) continue;
    if (placed.data.is_null() && !of.is<PlXSchema>()) {
      addOnce(placed.transforms, validFilter(look.name));
    }
  }
}

// ---- order

// The stack's order is that of the categories, the same for bars and for their labels.
void putStackOrder(const Subject& of, Placed& placed, Json& encoding) {
  const DrawField* group = placed.looks.group;
  if (!group || (!of.isStacked() && !placed.mark.is("arc"))) return;
  const std::string rank = "rank_" + group->name;
  placed.add(calculation(rank, rankIn(of.context.data.orderOf(*group).texts, group->name)));
  encoding["order"] = {{"field", rank}, {"type", "quantitative"}};
}

void putRowOrder(const Subject& of, Placed& placed, Json& encoding) {
  if (!of.is<PlXPath>() || placed.isSummarized || placed.isFit) return;
  placed.add({{"window", {{{"op", "row_number"}, {"as", "row"}}}}});
  encoding["order"] = {{"field", "row"}, {"type", "quantitative"}};
}

void putBreaks(const Subject& of, Mark& mark) {
  if (!mark.is("line") && !mark.is("area")) return;
  const std::string breaks = attribute(of.element, u"breakRepresentation");
  if (breaks == "interpolated") mark.json["invalid"] = "filter";
  if (breaks == "wings") of.tell("wings at gaps are left out");
  if (attribute(of.element, u"showDiscontinuity") == "true" && mark.json.contains("interpolate")) {
    of.tell("steps are drawn with their risers");
  }
}

// ---- slices

// Pulled out slices are farther from the middle at both ends.
void putRadius(const Subject& of, Placed& placed, Json& encoding) {
  const double radius = std::min(of.plane.width(), of.plane.height()) / 2;
  const PlXOffset* offset = placed.looks.offset;
  const DrawField* field = placed.looks.offsetField;
  if (!offset || !field) {
    placed.mark.json["outerRadius"] = numberJson(std::round(radius * 0.85));
    return;
  }
  const double distance = shareOf(utf8(offset->getHigh())).value_or(0.05) * 2;
  const auto* domain = dynamic_cast<const PlXCategoricalDomain*>(offset->getDomain());
  const std::string test =
      rankIn(of.context.data.orderOf(*field, domain).texts, field->name) + " >= 0 ? ";
  const auto put = [&](const std::string& channel, double near, double far) {
    placed.add(
        calculation(channel, test + literal(std::round(far)) + " : " + literal(std::round(near))));
    encoding[channel] = {{"field", channel}};
  };
  put("radius", radius * 0.85, radius * (0.85 + distance));
  put("radius2", 0, radius * distance);
  encoding["radius"].update(Json{{"type", "quantitative"}, {"scale", nullptr}, {"stack", nullptr}});
}

// A slice reaches from one share of the circle to another. Without a variable of their own, slices
// are as wide as their values say; else all are equally wide, and as long as the values say.
void putSlices(const Subject& of, Placed& placed, Json& encoding) {
  const PlXPolarTransform& polar = *of.plane.polar();
  const std::string& first = placed.places[0].field;
  const std::string& second = placed.places[1].field;
  const bool isRose = !first.empty() && !second.empty();
  if (isRose) {
    const auto& order = of.plane.x().order;
    const std::string rank = rankIn(order, first);
    const std::string count = literal(static_cast<double>(order.size()));
    placed.add(calculation("slice_start", rank + " / " + count));
    placed.add(calculation("slice_end", "(" + rank + " + 1) / " + count));
  } else {
    Json stack = {{"stack", first.empty() ? second : first},
                  {"groupby", of.panel.fields},
                  {"offset", "normalize"},
                  {"as", {"slice_start", "slice_end"}}};
    if (encoding.contains("order")) stack["sort"] = {{{"field", encoding["order"]["field"]}}};
    placed.add(stack);
  }
  encoding.erase("order");
  // Degrees count from the right and against the clock; Vega's radians from the top and with it.
  const double start = std::numbers::pi / 180 * (90 - std::fmod(polar.getStartAngle(), 360));
  const double cycles = polar.getCycles() > 0 && polar.getCycles() <= 1 ? polar.getCycles() : 1;
  const double turn = 2 * std::numbers::pi * cycles * (polar.getCounterClockwise() ? -1 : 1);
  encoding["theta"] = {{"field", "slice_start"},
                       {"type", "quantitative"},
                       {"stack", nullptr},
                       {"scale", {{"domain", {0, 1}}, {"range", {start, start + turn}}}}};
  encoding["theta2"] = {{"field", "slice_end"}};
  if (isRose) {
    encoding["radius"]["stack"] = nullptr;
    encoding["radius"]["scale"] = {{"type", "sqrt"}, {"zero", true}};
    return;
  }
  putRadius(of, placed, encoding);
}

// ---- lines

// A line that changes its looks on its way: a piece from each place to the next.
void cutIntoPieces(const Subject& of, Placed& placed, Json& encoding) {
  if (!placed.looks.isInPieces || !placed.mark.is("line") || placed.isFit) return;
  const MarkPlace* places = placed.places;
  if (places[0].field.empty() || places[1].field.empty()) {
    of.tell("a line of one dimension has the same look all along");
    std::erase_if(placed.looks.list, [](const DrawLook& look) { return !look.isCategorical; });
    return;
  }
  Json window = {{"window",
                  {{{"op", "lead"}, {"field", places[0].field}, {"as", "next_x"}},
                   {{"op", "lead"}, {"field", places[1].field}, {"as", "next_y"}}}}};
  if (!of.is<PlXPath>()) window["sort"] = {{{"field", places[0].field}}};
  putGroups(window, placed.looks.partsIn(of.panel));
  placed.add(window);
  placed.addFilter("isValid(" + datum("next_x") + ") && isValid(" + datum("next_y") +
                   ") && isValid(" + datum(places[1].field) + ')');
  placed.mark.json["type"] = "rule";
  placed.mark.json.erase("interpolate");
  placed.mark.json.erase("orient");
  encoding.erase("order");
  encoding[of.channel(0) + '2'] = {{"field", "next_x"}};
  encoding[of.channel(1) + '2'] = {{"field", "next_y"}};
}

// ---- layers

Json layerOf(const Subject& of, const Placed& placed, const Json& mark, const Json& encoding,
             const Json& more = Json::array()) {
  Json layer = Json::object();
  const std::string name = attribute(of.element, PlXUni::_id);
  if (!name.empty()) layer["description"] = name;
  // In panels the rows are those of the panel.
  if (!placed.data.is_null()) {
    layer["data"] = placed.data;
  } else if (of.panel.fields.empty()) {
    layer["data"] = {{"name", DrawData::tableName(of.source)}};
  }
  Json steps = placed.transforms;
  for (const Json& step : more) steps.push_back(step);
  if (!steps.empty()) layer["transform"] = steps;
  layer["mark"] = mark;
  layer["encoding"] = encoding;
  return layer;
}

// The crossbars of error bars.
void addEnds(const Subject& of, const Placed& placed, const Json& encoding,
             std::vector<Json>& layers) {
  const std::string& value = of.channel(1);
  if (!placed.mark.is("rule") || of.look(u"symbol") != "ibeam" || !encoding.contains(value + '2')) {
    return;
  }
  const Json& rule = placed.mark.json;
  for (const bool isSecond : {false, true}) {
    Json mark = {{"type", "tick"}, {"orient", value == "y" ? "horizontal" : "vertical"}};
    if (rule.contains("stroke")) mark["color"] = rule["stroke"];
    mark["opacity"] = rule["opacity"];
    if (rule.contains("strokeOpacity")) mark["fillOpacity"] = rule["strokeOpacity"];
    mark["thickness"] = rule.value("strokeWidth", Json(1));
    mark["size"] = 8;
    if (rule.contains("clip")) mark["clip"] = true;
    Json ends = encoding;
    if (ends.contains("stroke")) ends["fill"] = ends["stroke"];
    for (const char* channel : {"stroke", "strokeDash", "strokeWidth", "tooltip"}) {
      ends.erase(channel);
    }
    const Json end = ends[value + '2'];
    ends.erase(value + '2');
    if (isSecond) {
      if (!end.contains("field")) continue;
      ends[value]["field"] = end["field"];
    }
    layers.push_back(layerOf(of, placed, mark, ends));
  }
}

// An element that a legend explains as a whole is one entry of it.
void putOwnLegend(const Subject& of, const Mark& drawn) {
  const auto found = of.context.legends.find(attribute(of.element, PlXUni::_id));
  if (found == of.context.legends.end()) return;
  DrawLegend& legend = found->second;
  const char* channel = drawn.kind == MarkKind::Line ? "stroke" : "fill";
  legend.mark = drawn.json;
  for (const char* name : {"type", "size", "angle", "strokeCap", "width", "height", "orient",
                           "binSpacing", "clip", "invalid", "interpolate"}) {
    legend.mark.erase(name);
  }
  if (drawn.is("boxplot")) legend.mark = surfaceLook(of.style);
  if (drawn.kind == MarkKind::Point &&
      (!legend.mark.contains("fill") || legend.mark["fill"] == "transparent" ||
       isStroked(legend.mark.value("shape", "")))) {
    channel = "stroke";
  }
  const Json color = legend.mark.contains(channel) ? legend.mark[channel] : Json("#4c78a8");
  std::string name = utf8(of.element.getName());
  if (name.empty()) name = attribute(of.element, PlXUni::_id);
  Json look = legend.look;
  if (!look.contains("title")) look["title"] = nullptr;
  if (drawn.kind == MarkKind::Line) look["symbolType"] = "stroke";
  if (drawn.kind == MarkKind::Surface) look["symbolType"] = "square";
  if (drawn.json.contains("strokeDash")) look["symbolDash"] = drawn.json["strokeDash"];
  legend.encoding[channel] = {{"field", "entry"},
                              {"type", "nominal"},
                              {"scale", {{"domain", {name}}, {"range", {color}}}},
                              {"legend", look}};
}

// Boxes have one colour.
void colorBoxes(Mark& mark, Json& encoding) {
  if (!mark.is("boxplot") || !encoding.contains("fill")) return;
  encoding["color"] = encoding["fill"];
  encoding.erase("fill");
  mark.json["box"].erase("fill");
  mark.json["outliers"].erase("fill");
}

}  // namespace

Json detailOf(const Looks& looks) {
  Json list = Json::array();
  for (const std::string& name : looks.groups)
    list.push_back({{"field", name}, {"type", "nominal"}});
  return list;
}

std::vector<Json> layersOf(const Subject& of, Placed placed) {
  const Tips tips = tipsOf(of, placed);
  for (const Json& step : tips.steps) placed.add(step);
  addJitter(of, placed);
  keepKnown(of, placed);
  keepPositive(of, placed);
  Json encoding = placesOf(of, placed);
  if (!of.plane.isPolar() || placed.mark.is("arc")) putStackOrder(of, placed, encoding);
  putRowOrder(of, placed, encoding);
  putBreaks(of, placed.mark);
  if (placed.mark.is("arc")) putSlices(of, placed, encoding);
  const Json places = encoding;
  cutIntoPieces(of, placed, encoding);
  for (const DrawLook& look : placed.looks.list) {
    putLook(of.context, look, placed.mark.kind, of.style, encoding);
  }
  colorBoxes(placed.mark, encoding);
  putOwnLegend(of, placed.mark);
  if (!placed.looks.groups.empty() && !placed.mark.is("boxplot")) {
    encoding["detail"] = detailOf(placed.looks);
  }
  if (!tips.encoding.empty()) encoding["tooltip"] = tips.encoding;
  std::vector<Json> layers;
  if (isVisible(of.style)) {
    layers.push_back(layerOf(of, placed, placed.mark.json, encoding));
    addEnds(of, placed, encoding, layers);
  }
  for (const auto& [labeling, name] : placed.labels) {
    const auto labels = labelLayer(of, placed, *labeling, name, places);
    if (labels)
      layers.push_back(layerOf(of, placed, labels->mark, labels->encoding, labels->steps));
  }
  return layers;
}

}  // namespace draw
