#include "drawlabels.h"

#include <cmath>
#include <string_view>

#include "drawlayers.h"

namespace draw {

namespace {

// ---- popups

const DrawField* fieldOfToken(const Subject& of, const PlXPopup& popup, const std::string& token) {
  const DrawField* field = nullptr;
  for (const auto* mapping : childrenOf<PlXTokenMapping>(popup)) {
    if (attribute(*mapping, u"valueToken") == token) {
      field = of.context.data.fieldOf(mapping->getVariable());
    }
  }
  return field;
}

// The text before a value in a popup, without the signs around it.
std::string titleOf(const std::string& text, const DrawField* field, const std::string& name) {
  static constexpr std::string_view around = " \t\r:=,;.()";
  const std::size_t first = text.find_first_not_of(around);
  std::string title =
      first == text.npos ? "" : text.substr(first, text.find_last_not_of(around) - first + 1);
  if (title.empty() && field) title = utf8(field->variable->getLabel());
  return title.empty() ? name : title;
}

void addTip(const Subject& of, const DrawField* field, const std::string& name,
            const std::string& title, Tips& tips) {
  const bool isOwn = field && (name == field->name || name.ends_with('_' + field->name)) &&
                     !name.starts_with("percent") && !name.starts_with("valid");
  const std::string as = "tip_" + std::to_string(tips.encoding.size() + 1);
  const bool isText = field && field->isCategorical && name == field->name;
  const std::string text =
      isText ? datum(name)
             : textExpression(datum(name), isOwn ? formatOf(field->variable) : nullptr,
                              isOwn && field->isDate, of.context.signs);
  tips.steps.push_back(calculation(as, "isValid(" + datum(name) + ") ? " + text + " : \"\""));
  tips.encoding.push_back({{"field", as}, {"type", "nominal"}, {"title", title}});
}

}  // namespace

Tips tipsOf(const Subject& of, const Placed& placed) {
  Tips tips;
  const PlXPopup* popup = of.popup();
  if (!popup || placed.tips.empty()) return tips;
  const std::string text = attribute(*popup, u"tokenTemplate");
  std::size_t end = 0;
  for (std::size_t start; (start = text.find("$[", end)) != text.npos;) {
    const std::string before = text.substr(end, start - end);
    const std::size_t close = text.find("]$", start);
    if (close == text.npos) break;
    const auto found = placed.tips.find(text.substr(start + 2, close - start - 2));
    end = close + 2;
    if (found == placed.tips.end()) continue;
    const DrawField* field = fieldOfToken(of, *popup, found->first);
    addTip(of, field, found->second,
           titleOf(before.substr(before.rfind('\n') + 1), field, found->second), tips);
  }
  for (const auto* token : childrenOf<PlXTokenMapping>(*popup)) {
    if (!placed.tips.contains(attribute(*token, u"valueToken"))) {
      of.context.notes.tell(*token, "differs within an item and is left out");
    }
  }
  return tips;
}

// ---- data labels

namespace {

// Whether rows that make an item agree in a field.
bool isKnown(const Placed& placed, const DrawField* field) {
  return field && (!placed.isSummarized || placed.looks.isKey(field->name));
}

// The text of each label, as a field.
Json textStep(const Subject& of, const PlXLabeling& labeling, const std::string& name) {
  const DrawField* field = of.context.data.fieldOf(labeling.getVariable());
  const auto formats = labeling.getFormats();
  const bool isOwn = field && name == field->name;
  const PlXFormat* format = !formats.empty() ? formats[0]
                            : field && (isOwn || name.ends_with(field->name))
                                ? formatOf(field->variable)
                                : nullptr;
  const bool isText = isOwn && field->isCategorical;
  return calculation(
      "label_" + name,
      "isValid(" + datum(name) + ") ? " +
          (isText ? datum(name)
                  : textExpression(datum(name), format, isOwn && field->isDate, of.context.signs)) +
          " : \"\"");
}

// Labels that cover each other aren't shown: of those in one cell of a grid the first is.
void thin(const Subject& of, const Placed& placed, Json& steps) {
  if (of.element.getShowCollidingLabels() || of.is<PlXInterval>() || placed.hasFreePlaces) return;
  constexpr double cell[] = {56, 14};
  std::vector<std::string> parts = of.panel.fields;
  bool isThinned = false;
  for (const std::size_t i : {0U, 1U}) {
    const std::string& field = placed.places[i].field;
    const DrawSide& side = of.side(i);
    if (field.empty()) continue;
    const bool isX = side.channel == "x";
    const double span = side.greatest - side.least;
    const double cells = (isX ? of.plane.width() : of.plane.height()) / cell[isX ? 0 : 1];
    if (side.isDiscrete) {
      parts.push_back(field);
    } else if (!side.hasExtent() || (i == 1 && (placed.isSummarized || of.isStacked()))) {
      parts.insert(parts.end(), placed.looks.groups.begin(), placed.looks.groups.end());
    } else if (span > 0) {
      const std::string as = isX ? "cell_x" : "cell_y";
      steps.push_back(calculation(as, "floor((" + datum(field) + " - " + literal(side.least) +
                                          ") / " + literal(span / cells) + ')'));
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

// Moves a text to one side of its place.
void putBeside(Json& mark, const std::string& across, const std::string& upright) {
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
  put(across, "align", "dx", "right", "left", 4);
  put(upright, "baseline", "dy", "top", "bottom", -4);
}

void putPlace(const Subject& of, const Placed& placed, const PlXLabeling& labeling,
              LabelLayer& layer) {
  const PlXStyle* style = labeling.getStyle();
  std::string across = style ? attribute(*style, u"labelLocationHorizontal") : "";
  std::string upright = style ? attribute(*style, u"labelLocationVertical") : "";
  const auto locations = labeling.getLabelLocations();
  if (!locations.empty()) {
    across = attribute(*locations[0], u"horizontal");
    upright = attribute(*locations[0], u"vertical");
  }
  if (of.isTransposed()) std::swap(across, upright);
  const std::string& value = of.channel(1);
  if (placed.mark.is("arc")) {
    const double radius = std::min(of.plane.width(), of.plane.height()) / 2;
    // In the middle between the slice's sides.
    layer.encoding["theta"]["field"] = "slice_middle";
    layer.encoding.erase("theta2");
    const bool isInside = style && style->getLabelInside() == PlXStyle::labelInside_true;
    constexpr double beside = 16;
    const Json& outer = placed.mark.json.value("outerRadius", Json());
    if (isInside || outer.is_null()) {
      layer.mark["radius"] = isInside || !placed.looks.offset
                                 ? numberJson(std::round(radius * (isInside ? 0.55 : 0.98)))
                                 : Json{{"expr", datum("radius") + " + " + literal(beside)}};
    } else {
      layer.mark["radius"] = numberJson(outer.get<double>() + beside);
    }
    return;
  }
  const bool isBar = placed.mark.is("bar");
  const bool isOutside = style && style->getLabelInside() == PlXStyle::labelInside_false;
  if (isBar && of.isStacked() && !isOutside && layer.encoding.contains(value)) {
    layer.encoding[value]["bandPosition"] = 0.5;
    return;
  }
  if (isBar && upright.empty() && across.empty()) (value == "y" ? upright : across) = "positive";
  // Beyond the end of a bar is the other way where values run the other way.
  std::string& along = value == "y" ? upright : across;
  const bool isFlipped = isBar && of.side(1).scale.value("reverse", false);
  if (isFlipped && along == "positive") {
    along = "negative";
  } else if (isFlipped && along == "negative") {
    along = "positive";
  }
  putBeside(layer.mark, across, upright);
  // Labels within a bar stand below its end.
  if (isBar && upright == "negative" && value == "y") layer.mark["dy"] = 3;
}

void putLooks(const Subject& of, const Placed& placed, const PlXLabeling& labeling,
              Json& encoding) {
  for (const auto* aesthetic : childrenOf<CTAesthetic>(labeling)) {
    if (!isDrawn(*aesthetic)) continue;
    const DrawField* shown = of.fieldHere(aesthetic->getVariable(), *aesthetic);
    if (placed.hasFreePlaces || !isKnown(placed, shown)) {
      of.context.notes.tell(*aesthetic, "differs within an item and is left out");
      continue;
    }
    putLook(of.context, {aesthetic, shown, shown->name, shown->isCategorical}, MarkKind::Text,
            labeling.getStyle(), encoding);
  }
}

}  // namespace

std::optional<LabelLayer> labelLayer(const Subject& of, const Placed& placed,
                                     const PlXLabeling& labeling, const std::string& name,
                                     const Json& places) {
  if (!isVisible(labeling.getStyle())) return {};
  LabelLayer layer;
  layer.encoding = places;
  for (const auto* visibility : childrenOf<PlXVisibility>(labeling)) {
    if (!isKnown(placed, of.fieldHere(visibility->getVariable(), *visibility))) continue;
    for (const Json& step : filtersOf(of, *visibility)) addOnce(layer.steps, step);
  }
  layer.steps.push_back(textStep(of, labeling, name));
  layer.mark = {{"type", "text"}};
  const Json look = textLook(labeling.getStyle());
  for (const auto& [key, value] : look.items()) layer.mark[key] = value;
  if (placed.mark.json.contains("clip")) layer.mark["clip"] = true;
  for (const char* channel : {"x2", "y2", "radius", "radius2"}) layer.encoding.erase(channel);
  for (const std::size_t i : {0U, 1U}) {
    const MarkPlace& at = placed.places[i];
    if (!at.isBinned || !layer.encoding.contains(of.channel(i))) continue;
    layer.steps.push_back(
        calculation("middle", '(' + datum(at.field) + " + " + datum(at.end) + ") / 2"));
    layer.encoding[of.channel(i)]["field"] = "middle";
    layer.encoding[of.channel(i)].erase("bin");
  }
  thin(of, placed, layer.steps);
  putPlace(of, placed, labeling, layer);
  if (placed.mark.is("arc")) {
    layer.steps.push_back(calculation(
        "slice_middle", '(' + datum("slice_start") + " + " + datum("slice_end") + ") / 2"));
  }
  layer.encoding["text"] = {{"field", "label_" + name}, {"type", "nominal"}};
  if (!placed.looks.groups.empty()) layer.encoding["detail"] = detailOf(placed.looks);
  putLooks(of, placed, labeling, layer.encoding);
  if (labeling.getConnectingLines()) {
    of.context.notes.tell(labeling, "lines to labels are left out");
  }
  if (labeling.getTextFrameStyle()) {
    of.context.notes.tell(labeling, "frames around labels are left out");
  }
  return layer;
}

}  // namespace draw
