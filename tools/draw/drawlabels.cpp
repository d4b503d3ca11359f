#include <cmath>

#include "drawelement.h"

void ElementDrawer::addTips() {
  const PlXPopup* popup = popupOf();
  if (!popup || tips_.empty()) return;
  const std::string text = attribute(*popup, u"tokenTemplate");
  std::size_t end = 0;
  for (std::size_t start; (start = text.find("$[", end)) != text.npos;) {
    std::string title = text.substr(end, start - end);
    const std::size_t close = text.find("]$", start);
    if (close == text.npos) break;
    const auto found = tips_.find(text.substr(start + 2, close - start - 2));
    end = close + 2;
    if (found == tips_.end()) continue;
    addTip(*popup, found->first, found->second, title.substr(title.rfind('\n') + 1));
  }
  for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
    if (!tips_.contains(attribute(*token, u"valueToken"))) {
      context_.notes.tell(*token, "differs within an item and is left out");
    }
  }
}

void ElementDrawer::addTip(const PlXPopup& popup, const std::string& token, const std::string& name,
                           std::string title) {
  const DrawField* field = nullptr;
  for (const auto* mapping : childrenOf<PlXTokenMapping>(popup)) {
    if (attribute(*mapping, u"valueToken") == token) {
      field = context_.data.fieldOf(mapping->getVariable());
    }
  }
  static constexpr std::string_view around = " \t\r:=,;.()";
  const std::size_t first = title.find_first_not_of(around);
  title =
      first == title.npos ? "" : title.substr(first, title.find_last_not_of(around) - first + 1);
  if (title.empty() && field) title = utf8(field->variable->getLabel());
  if (title.empty()) title = name;
  if (field && field->isCategorical && name == field->name) {
    tip_.push_back({{"field", name}, {"type", "nominal"}, {"title", title}});
    return;
  }
  const bool isOwn = field && (name == field->name || name.ends_with('_' + field->name)) &&
                     !name.starts_with("percent") && !name.starts_with("valid");
  const std::string as = "tip_" + std::to_string(tip_.size() + 1);
  transforms_.push_back(
      calculation(as, textExpression(datum(name), isOwn ? formatOf(field->variable) : nullptr,
                                     isOwn && field->isDate)));
  tip_.push_back({{"field", as}, {"type", "nominal"}, {"title", title}});
}

void ElementDrawer::addLabels(const PlXLabeling& labeling, const std::string& name,
                              const Json& places) {
  if (!isVisible(labeling.getStyle())) return;
  const DrawField* field = context_.data.fieldOf(labeling.getVariable());
  const auto formats = labeling.getFormats();
  const bool isText = field && field->isCategorical && name == field->name;
  const PlXFormat* format = !formats.empty() ? formats[0]
                            : field && (name == field->name || name.ends_with(field->name))
                                ? formatOf(field->variable)
                                : nullptr;
  const std::string as = "label_" + name;
  Json steps = Json::array();
  for (const auto* visibility : childrenOf<PlXVisibility>(labeling)) {
    const DrawField* shown = fieldHere(visibility->getVariable(), *visibility);
    if (!shown || (isSummarized_ && std::ranges::find(keys_, shown->name) == keys_.end())) continue;
    Json before = std::move(transforms_);
    transforms_ = Json::array();
    filterBy(*visibility);
    steps = std::move(transforms_);
    transforms_ = std::move(before);
  }
  const bool isDate = field && field->isDate && name == field->name;
  steps.push_back(calculation(
      as, "isValid(" + datum(name) + ") ? " +
              (isText ? datum(name) : textExpression(datum(name), format, isDate)) + " : \"\""));
  Json mark = {{"type", "text"}};
  const Json look = textLook(labeling.getStyle());
  for (const auto& [key, value] : look.items()) mark[key] = value;
  if (mark_.contains("clip")) mark["clip"] = true;
  Json encoding = places;
  for (const char* channel : {"x2", "y2", "radius", "radius2"}) encoding.erase(channel);
  for (const std::size_t i : {0U, 1U}) {
    if (!places_[i].isBinned || !encoding.contains(channel(i))) continue;
    steps.push_back(calculation(
        "middle", '(' + datum(places_[i].field) + " + " + datum(places_[i].end) + ") / 2"));
    encoding[channel(i)]["field"] = "middle";
    encoding[channel(i)].erase("bin");
  }
  thinLabels(steps);
  putLabelPlace(labeling, mark, encoding);
  if (mark_["type"] == "arc") {
    steps.push_back(calculation("slice_middle",
                                '(' + datum("slice_start") + " + " + datum("slice_end") + ") / 2"));
  }
  encoding["text"] = {{"field", as}, {"type", "nominal"}};
  if (!groups_.empty()) encoding["detail"] = detail();
  for (const auto* aesthetic : childrenOf<CTAesthetic>(labeling)) {
    if (!isDrawn(*aesthetic)) continue;
    const DrawField* shown = fieldHere(aesthetic->getVariable(), *aesthetic);
    const bool isKnown = shown && !hasFreePlaces_ &&
                         (!isSummarized_ || std::ranges::find(keys_, shown->name) != keys_.end());
    if (!isKnown) {
      context_.notes.tell(*aesthetic, "differs within an item and is left out");
      continue;
    }
    putLook(context_, {aesthetic, shown, shown->name, shown->isCategorical}, MarkKind::Text,
            labeling.getStyle(), encoding);
  }
  addLayer(mark, encoding, steps);
  if (labeling.getConnectingLines()) context_.notes.tell(labeling, "lines to labels are left out");
  if (labeling.getTextFrameStyle())
    context_.notes.tell(labeling, "frames around labels are left out");
}

void ElementDrawer::thinLabels(Json& steps) const {
  if (element_.getShowCollidingLabels() || is<PlXInterval>() || hasFreePlaces_) return;
  constexpr double cell[] = {56, 14};
  std::vector<std::string> parts = panel_.fields;
  bool isThinned = false;
  for (const std::size_t i : {0U, 1U}) {
    if (places_[i].field.empty()) continue;
    const bool isX = channel(i) == "x";
    const double span = side(i).greatest - side(i).least;
    const double cells = (isX ? plane_.width() : plane_.height()) / cell[isX ? 0 : 1];
    if (side(i).isDiscrete) {
      parts.push_back(places_[i].field);
    } else if (!side(i).hasExtent() || (i == 1 && (isSummarized_ || isStacked()))) {
      parts.insert(parts.end(), groups_.begin(), groups_.end());
    } else if (span > 0) {
      const std::string as = isX ? "cell_x" : "cell_y";
      steps.push_back(calculation(as, "floor((" + datum(places_[i].field) + " - " +
                                          literal(side(i).least) + ") / " + literal(span / cells) +
                                          ')'));
      parts.push_back(as);
      isThinned = true;
    }
  }
  if (!isThinned) return;
  Json window = {{"window", {{{"op", "row_number"}, {"as", "cell_row"}}}}};
  putGroups(window, parts);
  steps.push_back(window);
  steps.push_back(filter(datum("cell_row") + " == 1"));
}

void ElementDrawer::putLabelPlace(const PlXLabeling& labeling, Json& mark, Json& encoding) {
  const PlXStyle* style = labeling.getStyle();
  std::string across = style ? attribute(*style, u"labelLocationHorizontal") : "";
  std::string upright = style ? attribute(*style, u"labelLocationVertical") : "";
  const auto locations = labeling.getLabelLocations();
  if (!locations.empty()) {
    across = attribute(*locations[0], u"horizontal");
    upright = attribute(*locations[0], u"vertical");
  }
  const std::string& value = channel(1);
  if (mark_["type"] == "arc") {
    const double radius = std::min(plane_.width(), plane_.height()) / 2;
    // In the middle between the slice's sides.
    encoding["theta"]["field"] = "slice_middle";
    encoding.erase("theta2");
    const bool isInside = style && style->getLabelInside() == PlXStyle::labelInside_true;
    mark["radius"] = numberJson(std::round(radius * (isInside ? 0.55 : offset_ ? 1.08 : 0.98)));
    return;
  }
  const bool isOutside = style && style->getLabelInside() == PlXStyle::labelInside_false;
  if (mark_["type"] == "bar" && isStacked() && !isOutside && encoding.contains(value)) {
    encoding[value]["bandPosition"] = 0.5;
    return;
  }
  const auto put = [&](const std::string& where, const char* property, const char* offset,
                       const char* low, const char* high, double step) {
    if (where == "negative") {
      mark[property] = low;
      mark[offset] = numberJson(-step);
    } else if (where == "positive") {
      mark[property] = high;
      mark[offset] = numberJson(step);
    } else if (where == "center") {
      mark[property] = std::string_view(property) == "align" ? "center" : "middle";
    }
  };
  if (mark_["type"] == "bar" && upright.empty() && across.empty()) {
    (value == "y" ? upright : across) = "positive";
  }
  put(across, "align", "dx", "right", "left", 4);
  put(upright, "baseline", "dy", "top", "bottom", -4);
  // Labels within a bar stand below its end.
  if (mark_["type"] == "bar" && upright == "negative" && value == "y") mark["dy"] = 3;
}
