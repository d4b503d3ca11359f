#include "drawgraph.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "drawaxes.h"
#include "drawguides.h"
#include "drawmarks.h"

namespace draw {

namespace {

constexpr double leastSize = 40;      // of a data area
constexpr double readableSize = 100;  // of one among others
constexpr double readablePage = 800;
constexpr std::size_t mostCells = 12;  // of a matrix, in each direction

class GraphDrawer {
 public:
  GraphDrawer(DrawContext& context, const PlXGraph& graph, double width, double height)
      : context_(context), graph_(graph), width_(width), height_(height) {
    elements_ = childrenOf<CTElementType>(graph);
    guides_ = childrenOf<CTGuideType>(graph);
    std::ranges::stable_sort(guides_, {}, [](const auto* guide) { return guide->getZOrder(); });
    for (const auto* block : childrenOf<PlXCoordinates>(graph)) blocks_.push_back(block);
    if (blocks_.empty()) blocks_.push_back(nullptr);
  }

  Json draw(bool hasLegendsApart) {
    findFacets();
    if (isMatrix()) return drawMatrix();
    if (facets_.empty()) {
      makeRoom(1, 1);
      Json view = drawLayers(width_, height_, DrawPanel());
      if (view.is_null()) return view;
      putFrame(view);
      if (!hasLegendsApart) addLegends(view);
      return view;
    }
    return drawPanels();
  }

 private:
  // What axes need beside the data area.
  void makeRoom(std::size_t columns, std::size_t rows) {
    double left = 0, below = 0;
    for (const PlXCoordinates* block : blocks_) {
      if (!block || childOf<PlXPolarTransform>(*block)) continue;
      for (const auto* dimension : childrenOf<PlXDimension>(*block)) {
        for (const PlXAxis* axis : dimension->getAxiss()) {
          const bool hasTitle = !labelText(axis->getLabel()).empty();
          (dimension == childrenOf<PlXDimension>(*block)[0] && block == blocks_[0] ? below
                                                                                   : left) +=
              hasTitle ? 55 : 35;
        }
      }
    }
    if (columns > 0) width_ = std::max(leastSize, (width_ - left) / static_cast<double>(columns));
    if (rows > 0) height_ = std::max(leastSize, (height_ - below) / static_cast<double>(rows));
    width_ = std::floor(width_);
    height_ = std::floor(height_);
  }

  const PlXCoordinates* blockOf(const CTElementType& element) const {
    const PlXCoordinates* block = element.getCoordinates();
    return std::ranges::find(blocks_, block) == blocks_.end() ? blocks_[0] : block;
  }
  const PlXCoordinates* blockOf(const CTGuideType& guide) const {
    const auto* object = guide.objectOf(guide.getElementById(guide.GetAttribute(u"coordinates")));
    const auto* block = dynamic_cast<const PlXCoordinates*>(object);
    return std::ranges::find(blocks_, block) == blocks_.end() ? blocks_[0] : block;
  }

  // Behind all that shows something.
  void addLegends(Json& view) {
    std::vector<DrawLegend*> entries;
    for (auto& [id, legend] : context_.legends) {
      if (legend.graph == &graph_ && !legend.encoding.empty()) entries.push_back(&legend);
    }
    Json layers = legendLayers(entries);
    for (DrawLegend* legend : entries) legend->encoding = Json::object();
    for (Json& layer : view["layer"]) layers.push_back(std::move(layer));
    view["layer"] = std::move(layers);
  }

  // ---- facets

  void findFacets() {
    const PlXFaceting* faceting = graph_.getFaceting();
    if (!faceting) return;
    for (const PlXVariableReference* reference : faceting->getVariableReferences()) {
      const auto fields = context_.data.fieldsOf(reference->getRef());
      if (facets_.size() < 2) {
        if (!fields.empty()) facets_.push_back(fields);
      } else {
        context_.notes.tell(*reference, "a third direction of panels is left out");
      }
    }
  }

  bool isMatrix() const {
    return std::ranges::any_of(facets_, [](const auto& fields) { return fields.size() > 1; });
  }

  const PlXFacetLevel* levelOf(std::size_t index) const {
    const PlXFacetLayout* layout = graph_.getFacetLayout();
    const auto levels = layout ? layout->getFacetLevels() : std::vector<PlXFacetLevel*>();
    return index < levels.size() ? levels[index] : nullptr;
  }

  Json facetJson(std::size_t index) {
    const DrawField& field = *facets_[index][0];
    const auto& order = context_.data.orderOf(field).texts;
    Json header = {{"title", nullptr}};
    const PlXFacetLevel* level = levelOf(index);
    const auto axes = level ? level->getAxiss() : std::vector<PlXAxis*>();
    if (!axes.empty()) {
      const std::string title = labelText(axes[0]->getLabel());
      if (!title.empty()) header["title"] = title;
      if (axes[0]->getLabel()) putFont(header, "title", axes[0]->getLabel()->getStyle());
      if (const PlXMajorTicks* ticks = axes[0]->getMajorTicks()) {
        putFont(header, "label", ticks->getStyle());
        if (states(*ticks, u"labelAngle") && ticks->getLabelAngle() == 90) {
          header["labelAngle"] = -90;
          header["labelAlign"] = "left";
        } else if (index == 1) {
          header["labelAngle"] = 0;
          header["labelAlign"] = "right";
        }
      }
    } else if (level) {
      header["labels"] = false;
    }
    Json json = {{"field", field.name}, {"type", "nominal"}, {"sort", order}};
    json["header"] = header;
    return json;
  }

  Json drawPanels() {
    const PlXFacetLayout* layout = graph_.getFacetLayout();
    const bool isWrapped = layout && layout->getMethod() == PlXFacetLayout::method_wrap;
    DrawPanel panel;
    panel.isTable = layout && !layout->getTableLayouts().empty();
    Json facet = Json::object();
    std::size_t counts[] = {1, 1};
    const std::string& source = facets_[0][0]->source;
    Json transforms = Json::array();
    for (std::size_t i = 0; i < facets_.size(); ++i) {
      const DrawField& field = *facets_[i][0];
      if (field.source != source || !field.isCategorical) {
        context_.notes.tell(graph_, "a direction of panels is left out");
        continue;
      }
      panel.fields.push_back(field.name);
      panel.facets.push_back(&field);
      const auto& order = context_.data.orderOf(field);
      counts[i] = std::max<std::size_t>(1, order.texts.size());
      if (order.isPart || field.hasMissing) {
        transforms.push_back({{"filter", {{"field", field.name}, {"oneOf", order.texts}}}});
      }
      if (!isWrapped) facet[i == 0 ? "column" : "row"] = facetJson(i);
    }
    Json view = Json::object();
    if (isWrapped) {
      facet = facetJson(0);
      const auto columns = static_cast<std::size_t>(std::ceil(std::sqrt(double(counts[0]))));
      view["columns"] = columns;
      counts[1] = (counts[0] + columns - 1) / columns;
      counts[0] = columns;
    }
    makeRoom(counts[0], counts[1]);
    if (isMirrored() && panel.fields.size() == 1) return drawMirrored(*facets_[0][0], transforms);
    const PlXFacetLevel* level = levelOf(0);
    const double gap = level
                           ? pixelsOf(attribute(*level, u"gap"))
                                 .value_or(shareOf(attribute(*level, u"gap")).value_or(0.03) * 600)
                           : 10;
    const double width = width_ - (panel.isTable ? 0 : gap);
    const double height = height_ - (isWrapped ? 30 : 0);
    Json spec = panel.isTable
                    ? drawLayers(std::max(leastSize, width), std::max(24.0, height), panel)
                    : drawLayers(sizeOf(width, double(counts[0])),
                                 sizeOf(height, double(counts[1])), panel);
    if (spec.is_null()) return nullptr;
    putFrame(spec);
    view["data"] = {{"name", DrawData::tableName(source)}};
    if (!transforms.empty()) view["transform"] = transforms;
    view["facet"] = facet;
    view["spacing"] = numberJson(std::round(std::clamp(gap, 0.0, 60.0)));
    view["spec"] = spec;
    if (blocks_.size() > 1) {
      view["resolve"] = {{"axis", {{"x", "independent"}, {"y", "independent"}}}};
    }
    return view;
  }

  bool isMirrored() const {
    for (const PlXCoordinates* block : blocks_) {
      const auto* reflection = block ? childOf<PlXReflectionTransform>(*block) : nullptr;
      if (reflection && reflection->getAlternating()) return true;
    }
    return false;
  }

  // Panels that are reflected by turns have axes of their own, so they are views of their own.
  Json drawMirrored(const DrawField& field, const Json& transforms) {
    Json views = Json::array();
    for (const std::string& text : context_.data.orderOf(field).texts) {
      DrawPanel panel;
      panel.isReversed = views.size() % 2 == 0;
      Json view = drawLayers(width_, height_, panel);
      if (view.is_null()) return nullptr;
      putFrame(view);
      view["title"] = facetTitle(text);
      view["data"] = {{"name", DrawData::tableName(field.source)}};
      view["transform"] = transforms;
      view["transform"].push_back({{"filter", {{"field", field.name}, {"equal", text}}}});
      joinPanel(view, view["data"], views.empty());
      views.push_back(view);
    }
    return {{"hconcat", views}, {"spacing", 4}};
  }

  // Layers take the rows of their panel; only the first panel has the axis of the categories.
  static void joinPanel(Json& view, const Json& data, bool isFirst) {
    for (Json& layer : view["layer"]) {
      if (layer.contains("layer")) joinPanel(layer, data, isFirst);
      if (layer.contains("data") && layer["data"] == data) layer.erase("data");
      if (isFirst || !layer.contains("encoding")) continue;
      for (const char* channel : {"x", "y"}) {
        Json& encoding = layer["encoding"];
        if (encoding.contains(channel) && encoding[channel].value("type", "") == "nominal") {
          encoding[channel]["axis"] = nullptr;
        }
      }
    }
  }

  Json facetTitle(const std::string& text) const {
    Json title = {{"text", text}, {"anchor", "middle"}};
    const PlXFacetLevel* level = levelOf(0);
    const auto axes = level ? level->getAxiss() : std::vector<PlXAxis*>();
    if (!axes.empty() && axes[0]->getMajorTicks())
      putFont(title, "", axes[0]->getMajorTicks()->getStyle());
    return title;
  }

  // Panels are as large as can be read, unless that makes the picture larger than a page.
  static double sizeOf(double wanted, double count) {
    return std::max(count * readableSize <= readablePage ? readableSize : leastSize, wanted);
  }

  // ---- matrices of variables

  Json drawMatrix() {
    std::vector<const DrawField*> directions[2];
    for (std::size_t i = 0; i < facets_.size(); ++i) {
      directions[i] = facets_[i];
      if (directions[i].size() > mostCells) {
        context_.notes.tell(graph_, "has more panels than can be drawn");
        directions[i].resize(mostCells);
      }
    }
    if (directions[1].empty()) directions[1].push_back(nullptr);
    const double columns = static_cast<double>(directions[0].size());
    const double rows = static_cast<double>(directions[1].size());
    const double width = sizeOf(std::floor((width_ - 50) / columns - 12), columns);
    const double height = sizeOf(std::floor((height_ - 50) / rows - 12), rows);
    Json cells = Json::array();
    for (const DrawField* y : directions[1]) {
      for (const DrawField* x : directions[0]) {
        DrawPanel panel;
        panel.x = x;
        panel.y = y;
        edge_ = {x == directions[0].front(), y == directions[1].back()};
        Json view = drawLayers(width, height, panel);
        if (view.is_null()) {
          view = {{"data", {{"values", Json::array()}}},
                  {"mark", "point"},
                  {"width", width},
                  {"height", height}};
        }
        putFrame(view);
        cells.push_back(view);
      }
    }
    return {{"concat", cells},
            {"columns", directions[0].size()},
            {"align", "all"},
            {"bounds", "flush"},
            {"spacing", 8}};
  }

  // The axes of a cell, at the left and at the bottom of the matrix only.
  void putCellAxes(DrawPlane& plane, const DrawPanel& panel) {
    const DrawField* fields[] = {panel.x, panel.y};
    const bool isAtEdge[] = {edge_.isLowest, edge_.isLeftmost};
    for (const std::size_t i : {0U, 1U}) {
      DrawSide& side = plane.side(i);
      const PlXFacetLevel* level = levelOf(i);
      const auto axes = level ? level->getAxiss() : std::vector<PlXAxis*>();
      if (axes.empty() || !fields[i]) continue;
      side.axis = axisJson(context_, *axes[0], side);
      side.axis["title"] = nullptr;
      side.axis["tickCount"] = 4;
      if (!isAtEdge[i]) {
        side.axis["labels"] = false;
        side.axis["ticks"] = false;
        continue;
      }
      const std::string label = utf8(fields[i]->variable->getLabel());
      if (!label.empty()) side.axis["title"] = label;
    }
  }

  // ---- layers

  bool isShown(const CTElementType& element, const DrawPanel& panel) const {
    const PlXStyle* style = element.getStyle();
    for (const auto* entry : childrenOf<PlXConditionalStyle>(element)) {
      std::string test;
      const auto holds = conditionOf(*entry, panel, test);
      if (holds && *holds) style = entry->getStyle();
    }
    return isVisible(style) || !panel.x;
  }

  // The first element of a graph lies on top, and so does the first block.
  Json drawLayers(double width, double height, const DrawPanel& panel) {
    Json groups = Json::array();
    std::set<std::string> independent;
    for (std::size_t index = blocks_.size(); index-- > 0;) {
      DrawPlane::Place place = {blocks_[index], index, blocks_.size() > 1, {}, panel.x, panel.y,
                                width,          height};
      for (const CTElementType* element : elements_) {
        if (blockOf(*element) == blocks_[index] && isShown(*element, panel)) {
          place.elements.push_back(element);
        }
      }
      DrawPlane plane(context_, place);
      if (panel.isReversed) plane.reverse();
      if (panel.x) putCellAxes(plane, panel);
      Json layers = drawBlock(plane, place.elements, panel);
      if (layers.empty()) continue;
      if (blocks_.size() > 1) independent.insert(plane.y().channel);
      for (Json& axis : furtherAxes(plane, layers, panel, independent)) groups.push_back(axis);
      groups.push_back(layers);
    }
    if (groups.empty()) return nullptr;
    Json view = {{"width", numberJson(width)}, {"height", numberJson(height)}};
    Json scales = independentLooks();
    if (groups.size() == 1) {
      view["layer"] = groups[0];
    } else {
      view["layer"] = Json::array();
      for (const Json& group : groups) {
        view["layer"].push_back({{"layer", group}, {"resolve", {{"scale", scales}}}});
      }
      for (const std::string& channel : independent) scales[channel] = "independent";
    }
    view["resolve"] = {{"scale", scales}};
    return view;
  }

  // A second axis of a dimension stands beside copies of all layers that show nothing: Vega-Lite
  // has one axis for a scale, and no other way to say that two scales are the same.
  std::vector<Json> furtherAxes(const DrawPlane& plane, const Json& layers, const DrawPanel& panel,
                                std::set<std::string>& independent) {
    std::vector<Json> groups;
    for (const DrawSide* side : {&plane.x(), &plane.y()}) {
      const auto axes = side->dimension ? side->dimension->getAxiss() : std::vector<PlXAxis*>();
      for (std::size_t i = 1; i < axes.size(); ++i) {
        const auto values = derivedValues(*axes[i]);
        if (!values || side->isDiscrete || i > 1 || !panel.fields.empty() || plane.isPolar()) {
          context_.notes.tell(*axes[i], "a further axis of a dimension is left out");
          continue;
        }
        const Json axis = derivedAxisJson(context_, *axes[i], *side, *values);
        Json copies = Json::array();
        for (const Json& layer : layers) {
          if (layer["mark"]["type"] == "text" || !layer["encoding"].contains(side->channel))
            continue;
          Json copy = layer;
          copy["mark"] = {{"type", layer["mark"]["type"]}, {"opacity", 0}};
          Json encoding = Json::object();
          for (const auto& [channel, json] : layer["encoding"].items()) {
            const bool isPlace = channel.starts_with('x') || channel.starts_with('y');
            if (isPlace || channel == "detail" || channel == "order") encoding[channel] = json;
          }
          encoding[side->channel]["axis"] = axis;
          copy["encoding"] = encoding;
          copies.push_back(copy);
        }
        if (copies.empty()) continue;
        independent.insert(side->channel);
        groups.push_back(copies);
      }
    }
    return groups;
  }

  Json drawBlock(const DrawPlane& plane, const std::vector<const CTElementType*>& elements,
                 const DrawPanel& panel) {
    Json layers = Json::array();
    const auto add = [&](const std::vector<Json>& drawn) {
      for (const Json& layer : drawn) layers.push_back(layer);
    };
    const auto addGuides = [&](bool isBehind) {
      for (const CTGuideType* guide : guides_) {
        if (blockOf(*guide) != plane.block() || (guide->getZOrder() < 0) != isBehind) continue;
        add(drawGuide(context_, plane, *guide, panel));
      }
    };
    addGuides(true);
    for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
      add(drawElement(context_, plane, **element, panel));
    }
    addGuides(false);
    return layers;
  }

  void putFrame(Json& view) {
    const Json look = surfaceLook(graph_.getCellStyle());
    Json frame = Json::object();
    for (const char* name : {"fill", "stroke", "strokeWidth", "fillOpacity"}) {
      if (look.contains(name)) frame[name] = look[name];
    }
    const bool isPolar = blocks_[0] && childOf<PlXPolarTransform>(*blocks_[0]);
    if (!frame.contains("stroke") || isPolar) frame["stroke"] = nullptr;
    view["view"] = frame;
  }

  struct Edge {
    bool isLeftmost = false, isLowest = false;
  };

  DrawContext& context_;
  const PlXGraph& graph_;
  double width_, height_;
  std::vector<const CTElementType*> elements_;
  std::vector<const CTGuideType*> guides_;
  std::vector<const PlXCoordinates*> blocks_;
  std::vector<std::vector<const DrawField*>> facets_;  // of each direction
  Edge edge_;
};

}  // namespace

Json independentLooks() {
  Json scales = Json::object();
  for (const char* channel : {"fill", "stroke", "color", "shape", "size", "opacity", "angle",
                              "strokeDash", "strokeWidth", "radius"}) {
    scales[channel] = "independent";
  }
  return scales;
}

Json drawGraph(DrawContext& context, const PlXGraph& graph, bool hasLegendsApart, double width,
               double height) {
  return GraphDrawer(context, graph, width, height).draw(hasLegendsApart);
}

}  // namespace draw
