#include "drawchart.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>

#include "drawgraph.h"
#include "drawguides.h"
#include "pagelayout.h"

namespace draw {

using namespace xercesc;

namespace {

// A view with its place on the page, in points.
struct PageItem {
  double left, right, top, bottom;
  Json view;
};

constexpr std::size_t mostItems = 200;  // that are arranged by their places

class PageDrawer {
 public:
  PageDrawer(const PlXVisualization& chart, DrawNotes& notes)
      : chart_(chart),
        notes_(notes),
        data_(chart, notes),
        context_{chart, data_, notes, {}, {}, {}},
        layout_(layOutPage(chart)),
        roles_(rolesOf(chart)) {
    for (const FrameBox& box : layout_.frames) {
      if (!box.id.empty()) boxes_.emplace(box.id, &box);
    }
  }

  Json draw() {
    readSigns();
    readLegends();
    readPopups();
    forEach<PlXGraph>(chart_, [&](const PlXGraph&) { ++graphs_; });
    collect(chart_);
    if (!hasGraph_) return nullptr;
    addLegends();
    Json view = arrange(items_);
    Json spec = {{"$schema", std::string("https://vega.github.io/schema/vega-lite/v") +
                                 vegaLiteVersion + ".json"}};
    const std::string name = utf8(chart_.getName());
    const std::string id = attribute(chart_, PlXUni::_id);
    if (!(name + id).empty()) spec["description"] = name.empty() ? id : name;
    putPage(spec);
    spec["datasets"] = data_.tables();
    for (const auto& [key, value] : view.items()) {
      if (key != "title" || !spec.contains("title")) spec[key] = value;
    }
    tellDrillDowns();
    return spec;
  }

 private:
  // Calls for each thing of a kind in the chart, at any depth of frames.
  template <class T>
  void forEach(const PlXBaseElement& parent, const std::function<void(const T&)>& call) {
    DOMElement* child = parent.getImplementation()->getFirstElementChild();
    for (; child; child = child->getNextElementSibling()) {
      const PlXBaseElement* object = parent.objectOf(child);
      if (const auto* thing = dynamic_cast<const T*>(object)) call(*thing);
      if (dynamic_cast<const PlXContainer*>(object)) forEach<T>(*object, call);
    }
  }

  // ---- legends and popups

  const FrameBox* boxOf(const PlXBaseElement& frame) const {
    const auto found = boxes_.find(attribute(frame, PlXUni::_id));
    return found == boxes_.end() ? nullptr : found->second;
  }

  static const PlXGraph* graphOf(const PlXBaseElement& object) {
    for (DOMNode* node = object.getImplementation()->getParentNode();
         node && node->getNodeType() == DOMNode::ELEMENT_NODE; node = node->getParentNode()) {
      const auto* found = object.objectOf(static_cast<DOMElement*>(node));
      if (const auto* graph = dynamic_cast<const PlXGraph*>(found)) return graph;
    }
    return nullptr;
  }

  // Where a legend lies to its graph.
  std::string orientOf(const PlXLegend& legend, const PlXBaseElement& target) const {
    const PlXGraph* graph = graphOf(target);
    const FrameBox* box = boxOf(legend);
    const FrameBox* plot = graph ? boxOf(*graph) : nullptr;
    if (!box || !plot) return "right";
    constexpr double slack = 12;
    if (box->left >= plot->right - slack) return "right";
    if (box->right <= plot->left + slack) return "left";
    if (box->top >= plot->bottom - slack) return "bottom";
    if (box->bottom <= plot->top + slack) return "top";
    const bool isRight = box->left + box->right > plot->left + plot->right;
    const bool isLow = box->top + box->bottom > plot->top + plot->bottom;
    return std::string(isLow ? "bottom" : "top") + (isRight ? "-right" : "-left");
  }

  void readLegends() {
    std::size_t order = 0;
    forEach<PlXLegend>(chart_, [&](const PlXLegend& legend) {
      if (isHidden(legend)) return;
      bool isFirst = true;
      for (const auto* target : childrenOf<PlXLegendTarget>(legend)) {
        const PlXBaseElement* object = target->getTarget();
        const std::string id = attribute(*target, u"target");
        if (!object) {
          notes_.tell(*target, "a legend of nothing is left out");
          continue;
        }
        Json json = Json::object();
        const std::string title = labelText(legend.getLabel());
        if (!title.empty() || !isFirst) json["title"] = isFirst ? Json(title) : Json();
        const std::string orient = orientOf(legend, *object);
        json["orient"] = orient;
        if (orient == "bottom" || orient == "top") json["direction"] = "horizontal";
        if (legend.getLabel()) putFont(json, "title", legend.getLabel()->getStyle());
        putFont(json, "label", legend.getTickTextStyle());
        json["labelLimit"] = 300;
        json["titleLimit"] = 300;
        context_.legends.emplace(id, DrawLegend{&legend, order++, graphOf(*object), json});
        isFirst = false;
      }
    });
  }

  void readPopups() {
    for (const PlXPopup* popup : chart_.getPopups()) {
      const std::string id = attribute(*popup, u"target");
      const auto* object = chart_.objectOf(chart_.getElementById(ChartString(id.c_str()).xc_str()));
      if (dynamic_cast<const CTElementType*>(object)) {
        context_.popups.emplace(id, popup);
      } else {
        notes_.tell(*popup, "is no element's and is left out");
      }
    }
  }

  // ---- frames

  bool hasRole(const std::string& id, const std::string& role) const {
    const auto [first, last] = roles_.equal_range(id);
    return !id.empty() &&
           std::any_of(first, last, [&](const auto& row) { return row.second == role; });
  }

  void collect(const PlXBaseElement& parent) {
    DOMElement* child = parent.getImplementation()->getFirstElementChild();
    for (; child; child = child->getNextElementSibling()) {
      const PlXBaseElement* object = parent.objectOf(child);
      if (const auto* graph = dynamic_cast<const PlXGraph*>(object)) {
        addGraph(*graph);
      } else if (const auto* frame = dynamic_cast<const PlXLabelFrame*>(object)) {
        addText(*frame);
      } else if (dynamic_cast<const PlXContainer*>(object)) {
        collect(*object);
      } else if (dynamic_cast<const PlXControlFrame*>(object)) {
        notes_.tell(*object, "controls are left out");
      }
    }
  }

  void addGraph(const PlXGraph& graph) {
    const FrameBox* box = boxOf(graph);
    FrameBox whole{};
    whole.left = whole.top = 0;
    whole.right = layout_.width;
    whole.bottom = layout_.height;
    if (!box || box->right - box->left < 20 || box->bottom - box->top < 20) box = &whole;
    const bool isApart = graphs_ > 1;
    Json view = drawGraph(context_, graph, isApart, (box->right - box->left) * pixelsPerPoint,
                          (box->bottom - box->top) * pixelsPerPoint);
    if (view.is_null()) return notes_.tell(graph, "nothing of it can be drawn");
    hasGraph_ = true;
    items_.push_back({box->left, box->right, box->top, box->bottom, view});
  }

  // Legends that no graph has drawn, each at its own place.
  void addLegends() {
    forEach<PlXLegend>(chart_, [&](const PlXLegend& frame) {
      std::vector<DrawLegend*> entries;
      for (auto& [id, legend] : context_.legends) {
        if (legend.frame == &frame && !legend.encoding.empty()) entries.push_back(&legend);
      }
      if (entries.empty()) return;
      for (DrawLegend* legend : entries) {
        for (auto& [channel, json] : legend->encoding.items()) json["legend"]["orient"] = "right";
      }
      const Json layers = legendLayers(entries);
      Json view = {{"width", 1}, {"height", 1}, {"view", {{"stroke", nullptr}}}, {"layer", layers}};
      view["resolve"] = {{"scale", independentLooks()}};
      const FrameBox* box = boxOf(frame);
      FrameBox beside{};
      beside.left = beside.right = layout_.width;
      beside.bottom = layout_.height;
      if (!box) box = &beside;
      items_.push_back({box->left, box->right, box->top, box->bottom, view});
    });
  }

  void addText(const PlXLabelFrame& frame) {
    const std::string id = attribute(frame, PlXUni::_id);
    const std::string text = labelTextWithValues(context_, frame.getLabel());
    if (isHidden(frame) || text.empty()) return;
    if (hasRole(id, "title1") && title_.empty()) {
      title_ = text;
      titleStyle_ = frame.getLabel()->getStyle();
      return;
    }
    if (hasRole(id, "subtitle") && subtitle_.empty()) {
      subtitle_ = text;
      subtitleStyle_ = frame.getLabel()->getStyle();
      return;
    }
    const FrameBox* box = boxOf(frame);
    const double width = box ? std::max(60.0, (box->right - box->left) * pixelsPerPoint) : 600;
    const PlXStyle* style = frame.getLabel()->getStyle();
    Json look = textLook(style);
    const double size = look.contains("fontSize") ? look["fontSize"].get<double>() : 11;
    const auto lines = wrapped(text, width, size);
    const std::string alignment = style ? attribute(*style, u"textAlignment") : "";
    Json mark = {{"type", "text"}, {"text", lines}, {"baseline", "top"}};
    for (const auto& [name, value] : look.items()) mark[name] = value;
    mark.erase("angle");
    mark["lineBreak"] = "\n";
    mark["align"] = alignment == "center" || alignment == "right" ? alignment : "left";
    const double at = alignment == "center" ? width / 2 : alignment == "right" ? width : 0;
    Json frameLook = Json::object();
    const Json surface = surfaceLook(frame.getStyleById(frame.GetAttribute(u"style")));
    if (surface.contains("fill")) frameLook["fill"] = surface["fill"];
    frameLook["stroke"] = surface.contains("stroke") ? surface["stroke"] : Json();
    Json view = {
        {"data", {{"values", Json::array({Json::object()})}}},
        {"width", numberJson(std::round(width))},
        {"height", numberJson(std::ceil(1.25 * size * static_cast<double>(lines.size())))},
        {"view", frameLook},
        {"mark", mark},
        {"encoding", {{"x", {{"value", numberJson(std::round(at))}}}, {"y", {{"value", 1}}}}}};
    FrameBox below{};
    below.right = layout_.width;
    below.top = below.bottom = layout_.height;
    if (!box) box = &below;
    items_.push_back({box->left, box->right, box->top, box->bottom, view});
  }

  // Views beside and below each other: the page is cut where no frame is in the way, or hardly.
  static Json arrange(std::vector<PageItem> items) {
    if (items.size() == 1) return items[0].view;
    for (const double share : {0.05, 0.3, 0.45}) {
      if (items.size() > mostItems) break;
      for (const bool isUpright : {true, false}) {
        const auto parts = cut(items, isUpright, share);
        if (parts.size() > 1) return concatenated(parts, isUpright);
      }
    }
    // Frames that lie on each other.
    std::vector<std::vector<PageItem>> parts;
    for (const PageItem& item : items) parts.push_back({item});
    return concatenated(parts, true);
  }

  // Frames may reach over a cut with a share of their length at each end.
  static std::vector<std::vector<PageItem>> cut(std::vector<PageItem>& items, bool isUpright,
                                                double share) {
    const auto start = isUpright ? &PageItem::top : &PageItem::left;
    const auto stop = isUpright ? &PageItem::bottom : &PageItem::right;
    const auto slack = [&](const PageItem& item) { return share * (item.*stop - item.*start); };
    std::ranges::stable_sort(items, {},
                             [&](const PageItem& item) { return item.*start + slack(item); });
    std::vector<std::vector<PageItem>> parts;
    double end = 0;
    for (const PageItem& item : items) {
      const double last = item.*stop - slack(item);
      const bool isApart = parts.empty() || item.*start + slack(item) >= end - 1;
      if (isApart) parts.emplace_back();
      end = isApart ? last : std::max(end, last);
      parts.back().push_back(item);
    }
    return parts;
  }

  static Json concatenated(const std::vector<std::vector<PageItem>>& parts, bool isUpright) {
    Json views = Json::array();
    for (const auto& part : parts) views.push_back(arrange(part));
    Json result = {{isUpright ? "vconcat" : "hconcat", views}, {"spacing", 12}};
    result["resolve"] = {{"scale", independentLooks()}};
    return result;
  }

  // ---- the page

  void putPage(Json& spec) {
    const Json color = colorJson(chart_.getStyle() ? attribute(*chart_.getStyle(), u"color") : "");
    spec["background"] = isPainted(color) ? color : Json("white");
    if ((title_ + subtitle_).empty()) return;
    Json title = {{"text", wrapped(title_, layout_.width * pixelsPerPoint, 20)}};
    putFont(title, "", titleStyle_);
    const std::string alignment = titleStyle_ ? attribute(*titleStyle_, u"textAlignment") : "";
    title["anchor"] = alignment == "center" ? "middle" : alignment == "right" ? "end" : "start";
    if (!subtitle_.empty()) {
      title["subtitle"] = wrapped(subtitle_, layout_.width * pixelsPerPoint, 14);
      putFont(title, "subtitle", subtitleStyle_);
    }
    title["offset"] = 10;
    spec["title"] = title;
  }

  void tellDrillDowns() {
    for (const PlXExtensionVis* record : chart_.getExtensions()) {
      if (attribute(*record, PlXDrillDown::_UTF_drillDown) == "true") {
        notes_.tell(*record, "a drill-down to " + attribute(*record, u"target") + " is left out");
      }
    }
  }

  // The chart's signs for decimals and groups of digits, if it states any.
  void readSigns() {
    const NumberSigns none = {"", ""};
    for (const auto* variable : childrenOf<CTVariableType>(chart_)) {
      const NumberSigns signs = signsOf(formatOf(variable), none);
      if (signs.decimal.empty()) continue;
      context_.signs = signs;
      return;
    }
  }

  const PlXVisualization& chart_;
  DrawNotes& notes_;
  DrawData data_;
  DrawContext context_;
  PageLayout layout_;
  std::multimap<std::string, std::string> roles_;
  std::map<std::string, const FrameBox*> boxes_;
  std::vector<PageItem> items_;
  std::size_t graphs_ = 0;
  bool hasGraph_ = false;
  std::string title_, subtitle_;
  const PlXStyle* titleStyle_ = nullptr;
  const PlXStyle* subtitleStyle_ = nullptr;
};

}  // namespace

Json drawChart(const PlXVisualization& chart, DrawNotes& notes) {
  return PageDrawer(chart, notes).draw();
}

}  // namespace draw
