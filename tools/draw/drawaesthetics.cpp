#include "drawaesthetics.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace draw {

namespace {

struct LookDrawer {
  DrawContext& context;
  const DrawLook& look;
  MarkKind kind;
  const PlXStyle* style;
  Json& encoding;

  const CTAesthetic& aesthetic() const { return *look.aesthetic; }

  Json definition() const {
    return {{"field", look.name},
            {"type", look.isCategorical ? "nominal" : "quantitative"},
            {"scale", Json::object()},
            {"legend", nullptr}};
  }

  // Puts an encoding, and a copy of it into the legend that explains the aesthetic, if there is
  // one.
  void put(const std::string& channel, Json json, bool isExplained = true) const {
    const auto found = context.legends.find(attribute(aesthetic(), PlXUni::_id));
    if (kind != MarkKind::Text && isExplained && found != context.legends.end()) {
      explain(found->second, channel, json);
    }
    encoding[channel] = std::move(json);
  }

  void explain(DrawLegend& legend, const std::string& channel, Json& json) const {
    Json text = legend.look;
    if (!text.contains("title")) {
      const std::string label = utf8(look.field->variable->getLabel());
      text["title"] = label.empty() ? Json() : Json(label);
    }
    const PlXFormat* format = formatOf(look.field->variable);
    const bool isOwn = look.name == look.field->name;
    if (format && !look.isCategorical && isOwn) {
      text["labelExpr"] = textExpression("datum.value", format, look.field->isDate, context.signs);
    }
    Json& scale = json["scale"];
    if (!look.isCategorical && !scale.contains("domain")) {
      if (!isOwn || look.field->least > look.field->greatest) {
        // Nobody knows the values but the layer itself.
        json["legend"] = text;
        return;
      }
      scale["domain"] = {scale.value("domainMin", numberJson(look.field->least)),
                         scale.value("domainMax", numberJson(look.field->greatest))};
      scale.erase("domainMin");
      scale.erase("domainMax");
    }
    if (kind == MarkKind::Line) text["symbolType"] = "stroke";
    if (kind == MarkKind::Surface) text["symbolType"] = "square";
    Json copy = json;
    copy["legend"] = text;
    legend.encoding[channel] = copy;
    if (style) legend.mark = markOf();
  }

  // What the style gives to the symbols of a legend.
  Json markOf() const {
    Json mark = kind == MarkKind::Line    ? lineLook(style)
                : kind == MarkKind::Point ? pointLook(style)
                                          : surfaceLook(style);
    for (const char* name : {"size", "angle", "strokeCap"}) mark.erase(name);
    return mark;
  }

  std::vector<std::string> categories() const {
    return context.data
        .orderOf(*look.field, dynamic_cast<const PlXCategoricalDomain*>(aesthetic().getDomain()))
        .texts;
  }

  void putInterval(Json& scale) const {
    if (const PlXScale* stated = aesthetic().getScale()) {
      if (stated->getMethod() == PlXScale::method_log) scale["type"] = "log";
      if (stated->getMethod() == PlXScale::method_log_safe) scale["type"] = "symlog";
      if (stated->getMethod() == PlXScale::method_power) {
        scale["type"] = "pow";
        scale["exponent"] = numberJson(stated->getBase() > 0 ? stated->getBase() : 1);
      }
    }
    const auto* domain = dynamic_cast<const PlXIntervalDomain*>(aesthetic().getDomain());
    if (domain) {
      for (const auto* range : childrenOf<PlXRange>(*domain)) {
        const ChartString low(range->getMin());
        const ChartString high(range->getMax());
        if (low.isNumber()) scale["domainMin"] = numberJson(low.convertToDouble());
        if (high.isNumber()) scale["domainMax"] = numberJson(high.convertToDouble());
      }
    }
    if (aesthetic().getClamp()) scale["clamp"] = true;
    if (!scale.contains("type")) scale["zero"] = false;
  }

  // The looks of the categories: those of the cycle in turn, but for those that a mapping names.
  template <class Mapping>
  Json rangeFor(const std::vector<std::string>& texts, const PlXStyleCycle* cycle,
                const std::function<Json(const PlXStyle&)>& ofStyle,
                const std::function<Json(const Mapping&)>& ofMapping) const {
    Json range = Json::array();
    const auto styles = stylesOf(cycle);
    for (std::size_t i = 0; i < texts.size(); ++i) {
      range.push_back(styles.empty() ? Json() : ofStyle(*styles[i % styles.size()]));
    }
    for (const auto* mapping : childrenOf<Mapping>(aesthetic())) {
      const Json text = look.field->valueOf(attribute(*mapping, u"from"));
      if (!text.is_string()) continue;
      const auto found = std::ranges::find(texts, text.get<std::string>());
      if (found == texts.end()) {
        context.notes.tell(*mapping, "there is no '" + text.get<std::string>() + "' to look so");
      } else {
        range[static_cast<std::size_t>(found - texts.begin())] = ofMapping(*mapping);
      }
    }
    for (const Json& entry : range) {
      if (entry.is_null()) return nullptr;
    }
    return range;
  }

  void putCategories(Json& json, Json range, const std::vector<std::string>& texts) const {
    json["scale"]["domain"] = texts;
    if (!range.is_null() && !range.empty()) json["scale"]["range"] = std::move(range);
    json["sort"] = texts;
  }

  std::vector<const char*> colorChannels(PlXColor::ENUM_affect affect) const {
    if (kind == MarkKind::Line) return {"stroke"};
    if (kind == MarkKind::Text) return {"fill"};
    if (affect == PlXColor::affect_secondary) return {"stroke"};
    if (affect == PlXColor::affect_both) return {"fill", "stroke"};
    // An outlined symbol is coloured by its outline.
    const Json fill = style ? colorJson(attribute(*style, u"color")) : Json();
    const bool isHollow = kind == MarkKind::Point &&
                          (fill == "transparent" || (style && isStroked(symbolShape(*style))));
    return {isHollow ? "stroke" : "fill"};
  }

  void putColor(const PlXColor& color) const {
    Json json = definition();
    if (look.isCategorical) {
      const auto texts = categories();
      putCategories(json,
                    rangeFor<PlXColorMapping>(
                        texts, color.getCycle(),
                        [](const PlXStyle& of) { return colorJson(attribute(of, u"color")); },
                        [](const PlXColorMapping& of) { return colorJson(attribute(of, u"to")); }),
                    texts);
    } else {
      putRamp(json["scale"], color);
    }
    const Json missing = colorJson(attribute(color, u"missing"));
    bool isFirst = true;
    for (const char* channel : colorChannels(color.getAffect())) {
      Json each = json;
      if (!missing.is_null()) {
        each["condition"] = {{"test", "!isValid(" + datum(look.name) + ')'}, {"value", missing}};
      }
      put(channel, each, isFirst);
      isFirst = false;
    }
  }

  // Colours between those of the mappings, or from pale to the style's own.
  void putRamp(Json& scale, const PlXColor& color) const {
    putInterval(scale);
    std::vector<std::pair<double, Json>> stops;
    for (const auto* mapping : color.getColorMappings()) {
      const ChartString from(mapping->getFrom());
      const Json to = colorJson(utf8(mapping->getTo()));
      if (from.isNumber() && !to.is_null()) stops.emplace_back(from.convertToDouble(), to);
    }
    std::ranges::sort(stops, {}, [](const auto& stop) { return stop.first; });
    if (stops.size() >= 2) {
      for (const char* bound : {"domainMin", "domainMax"}) scale.erase(bound);
      for (const auto& [value, to] : stops) {
        scale["domain"].push_back(numberJson(value));
        scale["range"].push_back(to);
      }
      return;
    }
    const std::string own = style ? attribute(*style, u"color") : "";
    if (own.size() == 7 && own[0] == '#') {
      const auto type = PlXColorComponent::type_saturation;
      scale["range"] = {withComponent(own, type, 0.1), own};
    } else {
      scale["scheme"] = "blues";
    }
  }

  void putStyleBy(const PlXStyleBy& styles) const {
    const auto texts = categories();
    if (!look.isCategorical || stylesOf(styles.getStyleCycle()).empty()) {
      return context.notes.tell(styles, "its styles are left out");
    }
    const auto attributesOf = [&](const XMLCh* name, Json (*convert)(const std::string&)) {
      return rangeFor<PlXColorMapping>(
          texts, styles.getStyleCycle(),
          [&](const PlXStyle& of) { return convert(attribute(of, name)); },
          [](const PlXColorMapping&) { return Json(); });
    };
    const auto putIfVaried = [&](const char* channel, Json range, bool isAlways) {
      const bool isVaried = !range.empty() && std::ranges::any_of(range, [&](const Json& entry) {
        return entry != range[0];
      });
      if (range.is_null() || (!isVaried && !isAlways)) return;
      Json json = definition();
      putCategories(json, std::move(range), texts);
      put(channel, json);
    };
    for (const char* channel : colorChannels(PlXColor::affect_main)) {
      putIfVaried(channel, attributesOf(u"color", colorJson), true);
    }
    if (kind == MarkKind::Line) {
      putIfVaried("strokeDash", attributesOf(u"stroke-dasharray", dashJson), false);
    } else if (kind == MarkKind::Point) {
      const auto shape = [](const std::string& symbol) -> Json {
        const std::string path = symbolShape(symbol);
        return path.empty() ? Json() : Json(path);
      };
      putIfVaried("shape", attributesOf(u"symbol", shape), false);
    }
  }

  void putDash(const PlXDash& dash) const {
    if (!look.isCategorical) return tellMade("dashes by numbers are left out");
    const auto texts = categories();
    Json json = definition();
    const auto solid = [](const Json& dashes) { return dashes.empty() ? Json{1, 0} : dashes; };
    putCategories(
        json,
        rangeFor<PlXDashMapping>(
            texts, dash.getCycle(),
            [&](const PlXStyle& of) { return solid(dashJson(attribute(of, u"stroke-dasharray"))); },
            [&](const PlXDashMapping& of) { return solid(dashJson(utf8(of.getTo()))); }),
        texts);
    put("strokeDash", json);
  }

  void putShape(const PlXShape& shape) const {
    if (!look.isCategorical || kind != MarkKind::Point) return tellMade("symbols are left out");
    const auto texts = categories();
    Json json = definition();
    // A symbol that isn't there is one without size.
    const auto pathOf = [](const std::string& symbol) -> Json {
      if (symbol == "none") return "M0,0";
      const std::string path = symbolShape(symbol);
      return path.empty() ? Json() : Json(path);
    };
    putCategories(json,
                  rangeFor<PlXSymbolMapping>(
                      texts, shape.getCycle(),
                      [&](const PlXStyle& of) {
                        const std::string path = symbolShape(of);
                        return path.empty() ? pathOf(attribute(of, u"symbol")) : Json(path);
                      },
                      [&](const PlXSymbolMapping& of) { return pathOf(utf8(of.getTo())); }),
                  texts);
    put("shape", json);
  }

  void putSize(const PlXSize& size) const {
    if (kind == MarkKind::Surface) return tellMade("widths by value are left out");
    const auto pixels = [&](const std::string& length, double absent) {
      return pixelsOf(length).value_or(shareOf(length).value_or(absent / 20) * 20);
    };
    const auto asSize = [&](double width) {
      return numberJson(kind == MarkKind::Point ? width * width : width);
    };
    Json json = definition();
    if (look.isCategorical) {
      const auto texts = categories();
      putCategories(
          json,
          rangeFor<PlXLengthMapping>(
              texts, size.getCycle(),
              [&](const PlXStyle& of) { return asSize(pixels(attribute(of, u"size"), 8)); },
              [&](const PlXLengthMapping& of) { return asSize(pixels(utf8(of.getTo()), 8)); }),
          texts);
      if (!json["scale"].contains("range")) return tellMade("sizes of categories are left out");
    } else {
      putInterval(json["scale"]);
      json["scale"]["range"] = {asSize(pixels(utf8(size.getLow()), 3)),
                                asSize(pixels(utf8(size.getHigh()), 10))};
    }
    put(kind == MarkKind::Line ? "strokeWidth" : "size", json);
  }

  // Numbers between two, but for those of the categories in `stated`.
  void putNumbers(const char* channel, double low, double high,
                  const std::map<std::string, double>& stated = {}) const {
    Json json = definition();
    if (look.isCategorical) {
      const auto texts = categories();
      Json range = Json::array();
      for (std::size_t i = 0; i < texts.size(); ++i) {
        const double share =
            texts.size() < 2 ? 0 : static_cast<double>(i) / static_cast<double>(texts.size() - 1);
        const auto own = stated.find(texts[i]);
        range.push_back(numberJson(own == stated.end() ? low + share * (high - low) : own->second));
      }
      putCategories(json, range, texts);
    } else {
      putInterval(json["scale"]);
      json["scale"]["range"] = {numberJson(low), numberJson(high)};
    }
    put(channel, json);
  }

  void putTransparency(const PlXTransparency& transparency) const {
    const auto opacity = [](double value) {
      return std::isfinite(value) ? std::clamp(1 - value, 0.0, 1.0) : 1;
    };
    std::map<std::string, double> stated;
    for (const auto* mapping : transparency.getDoubleMappings()) {
      const Json text = look.field->valueOf(utf8(mapping->getFrom()));
      if (text.is_string()) stated[text.get<std::string>()] = opacity(mapping->getTo());
    }
    putNumbers("opacity", opacity(transparency.getLow()), opacity(transparency.getHigh()), stated);
  }

  void putComponent(const PlXColorComponent& component) const {
    if (look.isCategorical) return tellMade("components of colours are left out");
    Json json = definition();
    putInterval(json["scale"]);
    const std::string own = style ? attribute(*style, u"color") : "";
    json["scale"]["range"] = {withComponent(own, component.getType(), component.getLow()),
                              withComponent(own, component.getType(), component.getHigh())};
    put(kind == MarkKind::Line ? "stroke" : "fill", json);
  }

  void tellMade(const std::string& what) const { context.notes.tell(aesthetic(), what); }
};

}  // namespace

bool isDrawn(const CTAesthetic& aesthetic) {
  return !dynamic_cast<const PlXSplit*>(&aesthetic) &&
         !dynamic_cast<const PlXVisibility*>(&aesthetic) &&
         !dynamic_cast<const PlXOffset*>(&aesthetic);
}

void putLook(DrawContext& context, const DrawLook& look, MarkKind kind, const PlXStyle* style,
             Json& encoding) {
  const LookDrawer drawer = {context, look, kind, style, encoding};
  const CTAesthetic* aesthetic = look.aesthetic;
  if (const auto* color = dynamic_cast<const PlXColor*>(aesthetic)) {
    drawer.putColor(*color);
  } else if (const auto* styles = dynamic_cast<const PlXStyleBy*>(aesthetic)) {
    drawer.putStyleBy(*styles);
  } else if (const auto* dash = dynamic_cast<const PlXDash*>(aesthetic)) {
    drawer.putDash(*dash);
  } else if (const auto* shape = dynamic_cast<const PlXShape*>(aesthetic)) {
    drawer.putShape(*shape);
  } else if (const auto* size = dynamic_cast<const PlXSize*>(aesthetic)) {
    drawer.putSize(*size);
  } else if (const auto* transparency = dynamic_cast<const PlXTransparency*>(aesthetic)) {
    drawer.putTransparency(*transparency);
  } else if (const auto* component = dynamic_cast<const PlXColorComponent*>(aesthetic)) {
    drawer.putComponent(*component);
  } else if (const auto* rotation = dynamic_cast<const PlXRotation*>(aesthetic)) {
    if (kind == MarkKind::Line || kind == MarkKind::Surface) {
      drawer.tellMade("turns are left out");
    } else {
      drawer.putNumbers("angle", rotation->getLow(), rotation->getHigh());
    }
  } else if (isDrawn(*aesthetic)) {
    drawer.tellMade(tagOf(*aesthetic) + "s are left out");
  }
}

}  // namespace draw
