#include "drawmarks.h"

#include <cmath>
#include <numbers>
#include <set>

#include "drawelement.h"

std::vector<Json> ElementDrawer::draw() {
  if (!findFields()) return {};
  addFilters();
  findLooks();
  makeMark();
  if (!place()) return {};
  addTips();
  finish();
  return std::move(layers_);
}

bool ElementDrawer::isStacked() const {
  const auto modifier = element_.getPositionModifier();
  return modifier == CTElementType::positionModifier_stack ||
         modifier == CTElementType::positionModifier_stackInterpolating;
}

// ---- data

bool ElementDrawer::findFields() {
  const CTCoordinate* coordinates[] = {element_.getX(), element_.getY()};
  for (const std::size_t i : {0U, 1U}) {
    if (!coordinates[i]) continue;
    fields_[i] = context_.data.fieldsOf(coordinates[i]->getVariable());
    const DrawField* own = i == 0 ? panel_.x : panel_.y;
    if (own && fields_[i].size() > 1) fields_[i] = {own};
  }
  if (fields_[0].empty() && fields_[1].empty()) {
    tell("has no data and is left out");
    return false;
  }
  source_ = fields_[fields_[0].empty() ? 1 : 0][0]->source;
  for (auto& list : fields_) {
    std::erase_if(list, [&](const DrawField* field) { return !isHere(field, element_); });
  }
  const DrawField* cluster = plane_.x().cluster;
  if (cluster && isHere(cluster, element_)) {
    if (fields_[0].size() > 1) tell("of several variables the first is drawn in the clusters");
    if (!fields_[0].empty() && fields_[0][0] != cluster) within_ = fields_[0][0];
    fields_[0] = {cluster};
  }
  return true;
}

bool ElementDrawer::isHere(const DrawField* field, const PlXBaseElement& user) {
  if (!field) return false;
  if (field->source == source_) return true;
  context_.notes.tell(user, "a variable of another source is left out");
  return false;
}

const DrawField* ElementDrawer::fieldHere(const CTVariableType* variable,
                                          const PlXBaseElement& user) {
  const DrawField* field = context_.data.fieldOf(variable);
  return isHere(field, user) ? field : nullptr;
}

void ElementDrawer::addFilter(const std::string& expression) {
  const Json step = filter(expression);
  if (std::ranges::find(transforms_, step) == transforms_.end()) transforms_.push_back(step);
}

void ElementDrawer::keepOnly(const DrawField& field, const std::vector<std::string>& texts) {
  transforms_.push_back({{"filter", {{"field", field.name}, {"oneOf", texts}}}});
}

void ElementDrawer::filterBy(const CTAesthetic& visibility) {
  const DrawField* field = fieldHere(visibility.getVariable(), visibility);
  const PlXBaseElement* domain = visibility.getDomain();
  if (!field) return;
  if (field->isCategorical) {
    const auto& order =
        context_.data.orderOf(*field, dynamic_cast<const PlXCategoricalDomain*>(domain));
    if (order.isPart) keepOnly(*field, order.texts);
  } else if (const auto* interval = dynamic_cast<const PlXIntervalDomain*>(domain)) {
    for (const auto* range : childrenOf<PlXRange>(*interval)) {
      const Json low = field->valueOf(utf8(range->getMin()));
      const Json high = field->valueOf(utf8(range->getMax()));
      if (!low.is_null()) addFilter(datum(field->name) + " >= " + low.dump());
      if (!high.is_null()) addFilter(datum(field->name) + " <= " + high.dump());
    }
  }
}

void ElementDrawer::addFilters() {
  if (!condition_.empty()) addFilter(condition_);
  for (const auto* visibility : childrenOf<PlXVisibility>(element_)) filterBy(*visibility);
  if (within_) {
    const auto& order = context_.data.orderOf(*within_);
    if (order.isPart) keepOnly(*within_, order.texts);
    if (!order.isPart && within_->hasMissing) addFilter("isValid(" + datum(within_->name) + ')');
  }
  for (const std::size_t i : {0U, 1U}) {
    for (const DrawField* field : fields_[i]) {
      if (!field->isCategorical || panel_.isTable) continue;
      const auto& order = side(i).order;
      const std::set<std::string> shown(order.begin(), order.end());
      const bool isPart = std::ranges::any_of(field->raws, [&](const std::string& raw) {
        return !shown.contains(field->labels.at(raw));
      });
      if (isPart) {
        keepOnly(*field, order);
      } else if (field->hasMissing) {
        addFilter("isValid(" + datum(field->name) + ')');
      }
    }
  }
}

// ---- looks

void ElementDrawer::addKey(const std::string& field) {
  if (std::ranges::find(keys_, field) == keys_.end()) keys_.push_back(field);
}

void ElementDrawer::addGroup(const std::string& field) {
  addKey(field);
  if (std::ranges::find(groups_, field) == groups_.end()) groups_.push_back(field);
}

void ElementDrawer::findLooks() {
  for (const auto* aesthetic : childrenOf<CTAesthetic>(element_)) {
    if (dynamic_cast<const PlXVisibility*>(aesthetic)) continue;
    const DrawField* field = fieldHere(aesthetic->getVariable(), *aesthetic);
    if (!field) continue;
    const bool parts = field->isCategorical || dynamic_cast<const PlXSplit*>(aesthetic);
    DrawLook look = {aesthetic, field, field->name, field->isCategorical};
    if (aesthetic->getSummaryStatistic()) look.isCategorical = false;
    if (field->isCategorical) {
      const auto& order = context_.data.orderOf(
          *field, dynamic_cast<const PlXCategoricalDomain*>(aesthetic->getDomain()));
      if (order.isPart && isDrawn(*aesthetic)) keepOnly(*field, order.texts);
    }
    // A line keeps together where it is told to.
    const bool isKept = (is<PlXLine>() || is<PlXPath>()) && look.isCategorical &&
                        isDrawn(*aesthetic) && attribute(*aesthetic, u"split") == "false";
    // And Vega-Lite has one look for a line, unless it is cut.
    const bool isVarying = (is<PlXLine>() || is<PlXPath>()) && !look.isCategorical &&
                           isDrawn(*aesthetic) && !plane_.x().isDiscrete;
    isInPieces_ = isInPieces_ || isKept || isVarying;
    if (parts && !isKept && look.isCategorical == field->isCategorical) {
      addGroup(field->name);
      if (!group_ && field->isCategorical) group_ = field;
    }
    if (const auto* offset = dynamic_cast<const PlXOffset*>(aesthetic)) {
      offset_ = offset;
      offsetField_ = field;
    } else if (isDrawn(*aesthetic)) {
      looks_.push_back(look);
    }
  }
  const DrawField* depth = plane_.x().depth;
  if (within_) {
    offsetBy_ = within_;
  } else if (depth && depth->source == source_) {
    offsetBy_ = depth;
  } else if (element_.getPositionModifier() == CTElementType::positionModifier_dodge) {
    offsetBy_ = group_;
  }
  if (offsetBy_) {
    addGroup(offsetBy_->name);
  }
  for (const auto* rows : childrenOf<PlXCollectRowsStatistic>(element_)) {
    if (const DrawField* field = fieldHere(rows->getVariable(), *rows)) {
      addGroup(field->name);
    }
  }
}

// ---- marks

void ElementDrawer::makeMark() {
  kind_ = MarkKind::Surface;
  const std::string symbol = style_ ? attribute(*style_, u"symbol") : "";
  const bool isThin =
      is<PlXInterval>() && !plane_.isPolar() && (symbol == "ibeam" || symbol == "line");
  if (is<PlXPoint>()) {
    kind_ = MarkKind::Point;
    setMark("point", pointLook(style_));
  } else if (is<PlXLine>() || is<PlXPath>()) {
    kind_ = MarkKind::Line;
    setMark("line", lineLook(style_));
  } else if (is<PlXEdge>() || isThin) {
    kind_ = MarkKind::Line;
    setMark("rule", lineLook(style_));
  } else if (is<PlXArea>()) {
    setMark("area", surfaceLook(style_));
  } else if (is<PlXPolygon>()) {
    setMark("rect", surfaceLook(style_));
  } else if (is<PlXSchema>()) {
    setMark("boxplot", Json::object());
  } else if (plane_.isPolar()) {
    setMark("arc", surfaceLook(style_));
  } else {
    setMark("bar", surfaceLook(style_));
    const auto share = style_ ? shareOf(attribute(*style_, u"width")) : std::nullopt;
    const auto width = style_ ? pixelsOf(attribute(*style_, u"width")) : std::nullopt;
    if (plane_.x().isDiscrete) {
      mark_["width"] = width
                           ? numberJson(*width)
                           : Json{{"band", numberJson(std::clamp(share.value_or(0.8), 0.02, 1.0))}};
    } else if (width) {
      mark_["width"] = numberJson(*width);
    }
    mark_["binSpacing"] = 0;
  }
  for (const auto& [name, what] : std::initializer_list<std::pair<const XMLCh*, const char*>>{
           {u"gradient-method", "gradients are left out"},
           {u"shadow-color", "shadows are left out"},
           {u"bevel-size", "slanted edges are left out"},
           {u"background-image", "pictures are left out"},
           {u"stroke-decoration", "ends of lines are left out"}}) {
    const std::string value = style_ ? attribute(*style_, name) : "";
    if (!value.empty() && value != "none") context_.notes.tell(*style_, what);
  }
  if (style_ && style_->getPattern() > 0) context_.notes.tell(*style_, "patterns are left out");
}

void ElementDrawer::setMark(const char* type, Json look) {
  mark_ = {{"type", type}};
  for (const auto& [name, value] : look.items()) mark_[name] = value;
  const auto isPartOf = [](const Json& scale) {
    return scale.contains("domain") && scale["domain"].size() == 2 &&
           scale["domain"][0].is_number();
  };
  if (isPartOf(plane_.x().scale) || isPartOf(plane_.y().scale) || plane_.y().isLog()) {
    mark_["clip"] = true;
  }
}

// ---- encodings

void ElementDrawer::putPlace(Json& encoding, std::size_t i) const {
  const MarkPlace& at = places_[i];
  if (at.field.empty()) return;
  const std::string& name = channel(i);
  const bool isOfTable =
      panel_.isTable && !fields_[i].empty() &&
      std::ranges::find(panel_.fields, fields_[i][0]->name) != panel_.fields.end();
  if (isOfTable) return;
  if (hasFreePlaces_) {
    encoding[name] = {{"field", at.field},
                      {"type", "quantitative"},
                      {"scale", {{"domain", {-0.1, 1.1}}}},
                      {"axis", nullptr}};
    if (!at.end.empty()) encoding[name + '2'] = {{"field", at.end}};
    return;
  }
  encoding[name] = DrawPlane::position(side(i), at.field);
  if (at.isBinned) encoding[name]["bin"] = "binned";
  if (!at.end.empty()) encoding[name + '2'] = {{"field", at.end}};
  if (!ends_[i].is_null()) encoding[name + '2'] = {{"datum", ends_[i]}};
  if (i == 1 && !base_.is_null()) encoding[name + '2'] = base_;
}

Json ElementDrawer::places() const {
  Json encoding = Json::object();
  putPlace(encoding, 0);
  putPlace(encoding, 1);
  const std::string& value =
      channel(plane_.isPolar() && !places_[0].field.empty() && places_[1].field.empty() ? 0 : 1);
  if (encoding.contains(value) && !encoding.contains(value + '2')) {
    const bool canStack = is<PlXInterval>() || is<PlXArea>();
    if (canStack && mark_["type"] != "rule") {
      encoding[value]["stack"] = isStacked() ? Json("zero") : Json();
    }
  }
  if (offsetBy_ && plane_.x().isDiscrete && !plane_.isPolar() && !hasFreePlaces_) {
    Json& offset = encoding[channel(0) + "Offset"];
    offset = {{"field", offsetBy_->name}, {"type", "nominal"}};
    // Numbers stand in the order of Vega-Lite, which is theirs.
    if (offsetBy_->isCategorical) {
      offset["scale"]["domain"] = context_.data.orderOf(*offsetBy_).texts;
    }
  }
  if (element_.getPositionModifier() == CTElementType::positionModifier_jitter) putJitter(encoding);
  return encoding;
}

void ElementDrawer::keepPositive() {
  for (const std::size_t i : {0U, 1U}) {
    if (!side(i).isLog() || places_[i].field.empty() || hasFreePlaces_) continue;
    addFilter(datum(places_[i].field) + " > 0");
    const bool isOpen = places_[i].end.empty() && ends_[i].is_null();
    if (ends_[i].is_number() && ends_[i].get<double>() <= 0) ends_[i] = nullptr;
    const bool hasBase = is<PlXInterval>() || is<PlXArea>() || (!isOpen && places_[i].end.empty());
    if (i == 0 || !hasBase || !places_[i].end.empty()) continue;
    base_ = {{"datum", numberJson(side(i).base)}};
    if (isStacked()) tell("on a log scale all bars stand on its lower end");
  }
}

void ElementDrawer::putJitter(Json& encoding) const {
  if (!plane_.x().isDiscrete || encoding.contains(channel(0) + "Offset")) return;
  encoding[channel(0) + "Offset"] = {
      {"field", "jitter"}, {"type", "quantitative"}, {"scale", {{"domain", {-0.5, 1.5}}}}};
}

void ElementDrawer::addJitter() {
  if (element_.getPositionModifier() != CTElementType::positionModifier_jitter) return;
  if (!plane_.x().isDiscrete) return tell("items on numbers aren't strewn");
  // Not by chance, so that a picture is the same each time.
  transforms_.push_back({{"window", {{{"op", "row_number"}, {"as", "row"}}}}});
  transforms_.push_back(calculation("jitter", "(" + datum("row") + " * 0.618034) % 1"));
}

void ElementDrawer::addStackOrder(Json& encoding) {
  if (!group_ || (!isStacked() && mark_["type"] != "arc")) return;
  const std::string rank = "rank_" + group_->name;
  const auto& order = context_.data.orderOf(*group_).texts;
  transforms_.push_back(calculation(
      rank, "indexof(" + Json(order).dump(-1, ' ', false, Json::error_handler_t::replace) + ", " +
                datum(group_->name) + ')'));
  encoding["order"] = {{"field", rank}, {"type", "quantitative"}};
}

Json ElementDrawer::detail() const {
  Json list = Json::array();
  for (const std::string& name : groups_) list.push_back({{"field", name}, {"type", "nominal"}});
  return list;
}

void ElementDrawer::finish() {
  addJitter();
  keepPositive();
  Json encoding = places();
  if (!plane_.isPolar() || mark_["type"] == "arc") addStackOrder(encoding);
  if (is<PlXPath>() && !isSummarized_ && !isFit_) {
    transforms_.push_back({{"window", {{{"op", "row_number"}, {"as", "row"}}}}});
    encoding["order"] = {{"field", "row"}, {"type", "quantitative"}};
  }
  putBreaks();
  if (mark_["type"] == "arc") placeSlices(encoding);
  const Json bare = encoding;
  cutIntoPieces(encoding);
  for (const DrawLook& look : looks_) putLook(context_, look, kind_, style_, encoding);
  if (mark_["type"] == "boxplot" && encoding.contains("fill")) {
    encoding["color"] = encoding["fill"];  // the only colour that boxes have
    encoding.erase("fill");
    mark_["box"].erase("fill");
    mark_["outliers"].erase("fill");
  }
  putOwnLegend();
  if (!groups_.empty() && mark_["type"] != "boxplot") encoding["detail"] = detail();
  if (!tip_.empty()) encoding["tooltip"] = tip_;
  if (isVisible(style_)) {
    addLayer(mark_, encoding);
    addEnds(encoding);
  }
  for (const auto& [labeling, name] : labels_) addLabels(*labeling, name, bare);
}

void ElementDrawer::addLayer(const Json& mark, const Json& encoding, const Json& more) {
  Json layer = Json::object();
  const std::string name = attribute(element_, PlXUni::_id);
  if (!name.empty()) layer["description"] = name;
  layer["data"] = ownData_.is_null() ? Json{{"name", DrawData::tableName(source_)}} : ownData_;
  if (!panel_.fields.empty() && ownData_.is_null()) layer.erase("data");
  Json steps = transforms_;
  for (const Json& step : more) steps.push_back(step);
  if (!steps.empty()) layer["transform"] = steps;
  layer["mark"] = mark;
  layer["encoding"] = encoding;
  layers_.push_back(layer);
}

void ElementDrawer::putBreaks() {
  const std::string breaks = attribute(element_, u"breakRepresentation");
  if (mark_["type"] != "line" && mark_["type"] != "area") return;
  if (breaks == "interpolated") mark_["invalid"] = "filter";
  if (breaks == "wings") tell("wings at gaps are left out");
  if (attribute(element_, u"showDiscontinuity") == "true" && mark_.contains("interpolate")) {
    tell("steps are drawn with their risers");
  }
}

void ElementDrawer::putOwnLegend() {
  const auto found = context_.legends.find(attribute(element_, PlXUni::_id));
  if (found == context_.legends.end()) return;
  DrawLegend& legend = found->second;
  const char* channel = kind_ == MarkKind::Line ? "stroke" : "fill";
  legend.mark = mark_;
  for (const char* name : {"type", "size", "angle", "strokeCap", "width", "binSpacing", "clip",
                           "invalid", "interpolate"}) {
    legend.mark.erase(name);
  }
  if (mark_["type"] == "boxplot") legend.mark = surfaceLook(style_);
  if (kind_ == MarkKind::Point &&
      (!legend.mark.contains("fill") || legend.mark["fill"] == "transparent" ||
       isStroked(legend.mark.value("shape", "")))) {
    channel = "stroke";
  }
  const Json color = legend.mark.contains(channel) ? legend.mark[channel] : Json("#4c78a8");
  std::string name = utf8(element_.getName());
  if (name.empty()) name = attribute(element_, PlXUni::_id);
  Json look = legend.look;
  if (!look.contains("title")) look["title"] = nullptr;
  if (kind_ == MarkKind::Line) look["symbolType"] = "stroke";
  if (kind_ == MarkKind::Surface) look["symbolType"] = "square";
  if (mark_.contains("strokeDash")) look["symbolDash"] = mark_["strokeDash"];
  legend.encoding[channel] = {{"field", "entry"},
                              {"type", "nominal"},
                              {"scale", {{"domain", {name}}, {"range", {color}}}},
                              {"legend", look}};
}

// ---- slices

void ElementDrawer::placeSlices(Json& encoding) {
  const PlXPolarTransform& polar = *plane_.polar();
  const bool isRose = !places_[0].field.empty() && !places_[1].field.empty();
  if (isRose) {
    const std::string rank =
        "indexof(" + Json(plane_.x().order).dump(-1, ' ', false, Json::error_handler_t::replace) +
        ", " + datum(places_[0].field) + ')';
    const std::string count = literal(static_cast<double>(plane_.x().order.size()));
    transforms_.push_back(calculation("slice_start", rank + " / " + count));
    transforms_.push_back(calculation("slice_end", "(" + rank + " + 1) / " + count));
  } else {
    Json stack = {{"stack", places_[places_[0].field.empty() ? 1 : 0].field},
                  {"groupby", panel_.fields},
                  {"offset", "normalize"},
                  {"as", {"slice_start", "slice_end"}}};
    if (encoding.contains("order")) stack["sort"] = {{{"field", encoding["order"]["field"]}}};
    transforms_.push_back(stack);
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
  putRadius(encoding);
}

void ElementDrawer::putRadius(Json& encoding) {
  const double radius = std::min(plane_.width(), plane_.height()) / 2;
  mark_["outerRadius"] = numberJson(std::round(radius * 0.85));
  if (!offset_ || !offsetField_) return;
  const double distance = shareOf(utf8(offset_->getHigh())).value_or(0.05) * 2;
  const auto* domain = dynamic_cast<const PlXCategoricalDomain*>(offset_->getDomain());
  const auto& order = context_.data.orderOf(*offsetField_, domain);
  const std::string test = "indexof(" +
                           Json(order.texts).dump(-1, ' ', false, Json::error_handler_t::replace) +
                           ", " + datum(offsetField_->name) + ") >= 0 ? ";
  const auto put = [&](const std::string& channel, double near, double far) {
    transforms_.push_back(
        calculation(channel, test + literal(std::round(far)) + " : " + literal(std::round(near))));
    encoding[channel] = {{"field", channel}};
  };
  mark_.erase("outerRadius");
  put("radius", radius * 0.85, radius * (0.85 + distance));
  put("radius2", 0, radius * distance);
  encoding["radius"].update(Json{{"type", "quantitative"}, {"scale", nullptr}, {"stack", nullptr}});
}

void ElementDrawer::cutIntoPieces(Json& encoding) {
  if (!isInPieces_ || mark_["type"] != "line" || isFit_) return;
  Json window = {{"window",
                  {{{"op", "lead"}, {"field", places_[0].field}, {"as", "next_x"}},
                   {{"op", "lead"}, {"field", places_[1].field}, {"as", "next_y"}}}}};
  if (!is<PlXPath>()) window["sort"] = {{{"field", places_[0].field}}};
  std::vector<std::string> parts = panel_.fields;
  parts.insert(parts.end(), groups_.begin(), groups_.end());
  putGroups(window, parts);
  transforms_.push_back(window);
  addFilter("isValid(" + datum("next_x") + ") && isValid(" + datum("next_y") + ") && isValid(" +
            datum(places_[1].field) + ')');
  mark_["type"] = "rule";
  mark_.erase("interpolate");
  encoding.erase("order");
  encoding[channel(0) + '2'] = {{"field", "next_x"}};
  encoding[channel(1) + '2'] = {{"field", "next_y"}};
}

void ElementDrawer::addEnds(const Json& encoding) {
  const std::string symbol = style_ ? attribute(*style_, u"symbol") : "";
  const std::string& value = channel(1);
  if (mark_["type"] != "rule" || symbol != "ibeam" || !encoding.contains(value + '2')) return;
  for (const bool isSecond : {false, true}) {
    Json mark = {{"type", "tick"}, {"orient", value == "y" ? "horizontal" : "vertical"}};
    if (mark_.contains("stroke")) mark["color"] = mark_["stroke"];
    mark["thickness"] = mark_.value("strokeWidth", Json(1));
    mark["size"] = 8;
    if (mark_.contains("clip")) mark["clip"] = true;
    Json ends = encoding;
    for (const char* channel : {"stroke", "strokeDash", "strokeWidth", "tooltip"})
      ends.erase(channel);
    const Json end = ends[value + '2'];
    ends.erase(value + '2');
    if (isSecond) {
      if (!end.contains("field")) continue;
      ends[value]["field"] = end["field"];
    }
    addLayer(mark, ends);
  }
}

std::optional<bool> conditionOf(const PlXConditionalStyle& entry, const DrawPanel& panel,
                                std::string& test) {
  const std::string when = attribute(entry, u"when");
  const bool isEqual = when == "facet1==facet2";
  if (!isEqual && when != "facet1!=facet2") return {};
  if (panel.x && panel.y) return (panel.x == panel.y) == isEqual;
  if (panel.fields.size() < 2) return false;
  test = datum(panel.fields[0]) + (isEqual ? " == " : " != ") + datum(panel.fields[1]);
  return {};
}

std::vector<Json> drawElement(DrawContext& context, const DrawPlane& plane,
                              const CTElementType& element, const DrawPanel& panel) {
  const PlXStyle* style = element.getStyle();
  std::string others;  // the condition of what has the element's own style
  std::vector<Json> layers;
  const auto add = [&](const PlXStyle* with, const std::string& condition) {
    if (!isVisible(with) && element.getLabelings().empty()) return;
    for (Json& layer : ElementDrawer(context, plane, element, panel, with, condition).draw()) {
      layers.push_back(std::move(layer));
    }
  };
  for (const auto* entry : childrenOf<PlXConditionalStyle>(element)) {
    std::string test;
    const std::optional<bool> holds = conditionOf(*entry, panel, test);
    if (holds) {
      if (*holds) style = entry->getStyle();
    } else if (test.empty()) {
      context.notes.tell(*entry, "a condition that isn't known is passed over");
    } else {
      others = "!(" + test + ')';
      if (isVisible(entry->getStyle())) add(entry->getStyle(), test);
    }
  }
  add(style, others);
  return layers;
}
