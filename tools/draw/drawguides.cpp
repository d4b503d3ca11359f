#include "drawguides.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

#include "drawexpression.h"

namespace {

constexpr unsigned mostSegments = 1000;

class GuideDrawer {
 public:
  GuideDrawer(DrawContext& context, const DrawPlane& plane, const CTGuideType& guide,
              const PlXStyle* style)
      : context_(context), plane_(plane), guide_(guide), style_(style) {}

  std::vector<Json> draw() {
    if (plane_.isPolar()) {
      context_.notes.tell(guide_, "a guide in polar coordinates is left out");
    } else if (const auto* line = dynamic_cast<const PlXLineGuide*>(&guide_)) {
      drawLine(*line);
    } else if (const auto* point = dynamic_cast<const PlXPointGuide*>(&guide_)) {
      drawPoint(*point);
    } else if (const auto* rectangle = dynamic_cast<const PlXRectangleGuide*>(&guide_)) {
      drawRectangle(*rectangle);
    } else if (const auto* function = dynamic_cast<const PlXFunctionGuide*>(&guide_)) {
      drawFunction(*function);
    } else {
      context_.notes.tell(guide_, "a guide of three dimensions is left out");
    }
    return std::move(layers_);
  }

 private:
  const DrawSide& side(std::size_t i) const { return i == 0 ? plane_.x() : plane_.y(); }

  // A place on a side that a guide states; null for none.
  Json at(std::size_t i, const XMLCh* text) {
    if (!*text) return nullptr;
    Json place = side(i).datumOf(utf8(text), plane_.fieldsOf(i));
    if (side(i).isLog() && place.is_number() && place.get<double>() <= 0) place = nullptr;
    if (place.is_null()) {
      context_.notes.tell(guide_, "the place " + utf8(text) + " isn't in the picture");
    }
    return place;
  }

  Json position(std::size_t i, const Json& place) const {
    Json json = DrawPlane::position(side(i), "");
    json.erase("field");
    json["datum"] = place;
    // Of dates Vega-Lite takes two spellings of one domain for two domains.
    for (const char* bound : {"domain", "domainMin", "domainMax"}) {
      if (side(i).isDate) json["scale"].erase(bound);
    }
    // The middle of a category's band.
    if (side(i).isDiscrete) json["bandPosition"] = 0.5;
    return json;
  }

  void addLayer(const char* type, const Json& look, const Json& encoding, Json data = nullptr) {
    Json layer = Json::object();
    const std::string id = attribute(guide_, PlXUni::_id);
    if (!id.empty()) layer["description"] = id;
    layer["data"] = {{"values", data.is_null() ? Json::array({Json::object()}) : std::move(data)}};
    layer["mark"] = {{"type", type}};
    for (const auto& [name, value] : look.items()) layer["mark"][name] = value;
    if (std::string_view(type) == "line" || std::string_view(type) == "rect") {
      layer["mark"]["clip"] = true;
    }
    layer["encoding"] = encoding;
    layers_.push_back(layer);
  }

  // The label of the guide; without a place on a side it stands at the side's end.
  void addLabel(const Json& encoding, bool isCentered = false) {
    for (const PlXLabel* label : guide_.getLabels()) {
      const std::string text = labelTextWithValues(context_, label);
      if (text.empty() || !isVisible(label->getStyle())) continue;
      Json look = textLook(label->getStyle());
      look["text"] = wrapped(text, 400, 12);
      look["align"] = isCentered || encoding.contains("x") ? "left" : "right";
      look["baseline"] = "bottom";
      look["dx"] = look["align"] == "left" ? 4 : -4;
      look["dy"] = -2;
      Json places = Json::object();
      for (const char* channel : {"x", "y"}) {
        if (encoding.contains(channel)) {
          places[channel] = encoding[channel];
          continue;
        }
        const bool isX = *channel == 'x';
        places[channel] = {{"value", isX ? numberJson(plane_.width()) : Json(12)}};
      }
      const double angle = look.contains("angle") ? look["angle"].get<double>() : 0;
      if (encoding.contains("x") && !isCentered && angle != 0) {
        // Along the line, from its upper end downwards.
        look["align"] = angle > 180 ? "right" : "left";
      }
      if (isCentered) {
        look["align"] = encoding.contains("x2") ? "left" : "right";
        look["baseline"] = "bottom";
      }
      addLayer("text", look, places);
    }
  }

  void drawLine(const PlXLineGuide& line) {
    const Json places[] = {at(0, line.getX()), at(1, line.getY())};
    bool isDrawn = false;
    for (const std::size_t i : {0U, 1U}) {
      if (places[i].is_null()) continue;
      isDrawn = true;
      const Json encoding = {{side(i).channel, position(i, places[i])}};
      addLayer("rule", lineLook(style_), encoding);
      addLabel(encoding);
    }
    if (!isDrawn) context_.notes.tell(guide_, "a line without a place is left out");
  }

  void drawPoint(const PlXPointGuide& point) {
    const Json places[] = {at(0, point.getX()), at(1, point.getY())};
    if (places[0].is_null() || places[1].is_null()) {
      return context_.notes.tell(guide_, "a mark without a place is left out");
    }
    Json encoding = Json::object();
    for (const std::size_t i : {0U, 1U}) encoding[side(i).channel] = position(i, places[i]);
    addLayer("point", pointLook(style_), encoding);
    addLabel(encoding);
  }

  void drawRectangle(const PlXRectangleGuide& rectangle) {
    const XMLCh* const texts[][2] = {{rectangle.getX1(), rectangle.getX2()},
                                     {rectangle.getY1(), rectangle.getY2()}};
    Json encoding = Json::object();
    for (const std::size_t i : {0U, 1U}) {
      const Json low = at(i, texts[i][0]);
      const Json high = at(i, texts[i][1]);
      if (low.is_null() && high.is_null()) continue;
      const std::string& channel = side(i).channel;
      encoding[channel] = position(i, low.is_null() ? high : low);
      encoding[channel + '2'] = {{"datum", high.is_null() ? low : high}};
      if (side(i).isDiscrete) {
        encoding[channel]["bandPosition"] = 0;
        encoding[channel + '2']["bandPosition"] = 1;
      } else if (low.is_null() || high.is_null()) {
        const bool isX = channel == "x";
        const bool toHigh = high.is_null();
        encoding[channel + '2'] = {
            {"value",
             isX == toHigh ? numberJson(isX ? plane_.width() : plane_.height()) : Json(0)}};
      }
    }
    addLayer("rect", surfaceLook(style_), encoding);
    addLabel(encoding, true);
  }

  void drawFunction(const PlXFunctionGuide& function) {
    const std::string text = utf8(function.getValue());
    const auto expression = Expression::parse(text);
    const DrawSide& x = plane_.x();
    const bool isOfX = expression && (expression->names().empty() ||
                                      expression->names() == std::vector<std::string>{"x"});
    if (!isOfX || x.isDiscrete || !x.hasExtent()) {
      return context_.notes.tell(guide_, "can't be computed: " + text);
    }
    const unsigned segments = std::clamp(function.getSegments(), 1U, mostSegments);
    const unsigned count = states(function, u"segments") ? segments : 100;
    Json values = Json::array();
    for (unsigned i = 0; i <= count; ++i) {
      const double place = x.least + (x.greatest - x.least) * i / count;
      const double value = expression->valueFor(std::array{place});
      values.push_back({{"x", numberJson(place)}, {"value", numberJson(value)}});
    }
    const Json last = values.back();
    const Json encoding = {{x.channel, DrawPlane::position(x, "x")},
                           {plane_.y().channel, DrawPlane::position(plane_.y(), "value")}};
    addLayer("line", lineLook(style_), encoding, std::move(values));
    if (last["value"].is_null()) return;
    addLabel(
        {{x.channel, position(0, last["x"])}, {plane_.y().channel, position(1, last["value"])}},
        true);
  }

  DrawContext& context_;
  const DrawPlane& plane_;
  const CTGuideType& guide_;
  const PlXStyle* style_;
  std::vector<Json> layers_;
};

}  // namespace

std::vector<Json> drawGuide(DrawContext& context, const DrawPlane& plane, const CTGuideType& guide,
                            const DrawPanel& panel) {
  const PlXStyle* style = guide.getStyle();
  for (const auto* entry : childrenOf<PlXConditionalStyle>(guide)) {
    std::string test;
    const auto holds = conditionOf(*entry, panel, test);
    if (holds && *holds) {
      style = entry->getStyle();
    } else if (!holds) {
      context.notes.tell(*entry, "a guide looks the same in all panels");
    }
  }
  if (!isVisible(style)) return {};
  return GuideDrawer(context, plane, guide, style).draw();
}

// ---- texts

namespace {

// The variable whose values a description is of, and the other one.
std::vector<const DrawField*> describedFields(DrawContext& context, const PlXBaseElement* target) {
  const auto* element = dynamic_cast<const CTElementType*>(target);
  std::vector<const DrawField*> fields;
  if (!element) return fields;
  for (const CTCoordinate* coordinate : {element->getX(), element->getY()}) {
    if (!coordinate) continue;
    const auto found = context.data.fieldsOf(coordinate->getVariable());
    if (!found.empty() && !found[0]->isCategorical) fields.push_back(found[0]);
  }
  return fields;
}

// A number as a format has it, without Vega.
std::string plainNumber(double value, const PlXFormat* format) {
  const bool hasMost = format && states(*format, u"maximumFractionDigits");
  const long digits = hasMost ? std::clamp(long(format->getMaximumFractionDigits()), 0L, 12L) : 3;
  std::ostringstream out;
  out.exceptions(std::ios::badbit);  // for lack of memory
  out.precision(static_cast<int>(digits));
  out << std::fixed << value;
  std::string text = out.str();
  const std::string separators = format ? attribute(*format, u"separatorChars") : "";
  const std::size_t point = text.find('.');
  if (point != text.npos && separators.size() == 4) text[point] = separators[0];
  return text;
}

std::string describedValue(DrawContext& context, const PlXDescription& description,
                           const PlXBaseElement* target) {
  const auto fields = describedFields(context, target);
  const auto name = description.getName();
  if (fields.empty() || name == PlXDescription::name_group) {
    context.notes.tell(description, "its value is left out");
    return "…";
  }
  const auto moments = context.data.momentsOf(*fields.back());
  double value = moments.mean;
  if (name == PlXDescription::name_count) value = moments.cases;
  if (name == PlXDescription::name_standardDeviation) value = moments.deviation;
  if (name == PlXDescription::name_rSquared) {
    value = fields.size() == 2 ? context.data.rSquared(*fields[0], *fields[1]) : std::nan("");
    context.notes.tell(description, "is that of a straight line through all cases");
  }
  return plainNumber(value, description.getFormat());
}

std::string contentOf(DrawContext& context, const PlXBaseElement& holder,
                      const PlXBaseElement* target) {
  std::string result;
  xercesc::DOMElement* child = holder.getImplementation()->getFirstElementChild();
  for (; child; child = child->getNextElementSibling()) {
    const PlXBaseElement* object = holder.objectOf(child);
    if (const auto* text = dynamic_cast<const PlXText*>(object)) {
      result += utf8(text->getText());
    } else if (const auto* value = dynamic_cast<const PlXDescription*>(object)) {
      result += describedValue(context, *value, target);
    } else if (const auto* group = dynamic_cast<const PlXDescriptionGroup*>(object)) {
      result += contentOf(context, *group, group->getTarget());
    }
  }
  return result;
}

// Characters, not bytes.
double lengthOf(const std::string& text) {
  return static_cast<double>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

}  // namespace

std::string labelTextWithValues(DrawContext& context, const CTLabelType* label) {
  return label ? contentOf(context, *label, nullptr) : std::string();
}

std::vector<std::string> wrapped(const std::string& text, double pixels, double fontSize) {
  const double most = std::max(8.0, pixels / (0.52 * std::max(fontSize, 1.0)));
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string paragraph; std::getline(in, paragraph);) {
    std::istringstream words(paragraph);
    std::string line;
    for (std::string word; words >> word;) {
      if (!line.empty() && lengthOf(line) + 1 + lengthOf(word) > most) {
        lines.push_back(line);
        line.clear();
      }
      line += (line.empty() ? "" : " ") + word;
    }
    lines.push_back(line);
  }
  return lines;
}
