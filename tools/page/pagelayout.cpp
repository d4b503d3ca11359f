#include "pagelayout.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include <chartxml/chartxml.h>

#include "charttexts.h"

using namespace xercesc;

namespace {

constexpr double defaultWidth = 600;
constexpr double defaultHeight = 450;
constexpr double furthest = 1e6;  // from the page
constexpr double characterWidth = 5;
constexpr double lineHeight = 14;
constexpr double padding = 6;

struct Extent {
  double number;
  bool isPercent;
};

// "75%", "8pt"; a number without a unit counts points. Nothing for what is none of these.
std::optional<Extent> extentOf(const XMLCh* value) {
  const std::pair<const char*, double> units[] = {
      {"pt", 1}, {"px", 0.75}, {"in", 72}, {"cm", 72 / 2.54}, {"mm", 72 / 25.4}, {"%", 1}, {"", 1}};
  ChartString text(value);
  text.trimSpaces(true);
  for (const auto& [unit, points] : units) {
    const ChartString suffix(unit);
    if (!text.view().ends_with(suffix.view())) continue;
    ChartString number = text;
    number.truncateString(static_cast<unsigned>(suffix.length()));
    if (!number.isNumber()) return {};
    const double size = std::clamp(number.convertToDouble() * points, -furthest, furthest);
    return Extent{size, std::string_view(unit) == "%"};
  }
  return {};
}

enum Axis : std::size_t { horizontal, vertical };

// The quantities of a frame, each an index into its values. The first six are parts of a location,
// and count from what holds the frame; an origin counts from the page.
enum Quantity : std::size_t { low, high, size, origin, quantities };

std::size_t partOf(Axis axis, Quantity quantity) {
  constexpr PlXLocation::ENUM_part parts[2][3] = {
      {PlXLocation::part_left, PlXLocation::part_right, PlXLocation::part_width},
      {PlXLocation::part_top, PlXLocation::part_bottom, PlXLocation::part_height}};
  return parts[axis][quantity];
}

// ---- frames

constexpr std::size_t page = 0;
constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

struct Place {
  PlXLocation::ENUM_method method = PlXLocation::method_fixed;
  std::optional<Extent> value;
  std::optional<Extent> max;
  std::size_t target = nowhere;
};

struct Node {
  std::size_t parent = page;
  std::vector<std::size_t> children;
  bool isFilling = false;        // a graph or container
  double content[2] = {80, 20};  // a guess, of a container that nothing is known of
  std::array<std::optional<Place>, 6> places;
};

std::vector<PlXLocation*> locationsOf(const PlXBaseElement& frame) {
  std::vector<PlXLocation*> locations;
  DOMElement* child = frame.getImplementation()->getFirstElementChild();
  for (; child; child = child->getNextElementSibling()) {
    if (auto* location = dynamic_cast<PlXLocation*>(frame.objectOf(child))) {
      locations.push_back(location);
    }
  }
  return locations;
}

std::string partName(const PlXLocation& location) {
  const char* names[] = {"left", "right", "top", "bottom", "width", "height"};
  return names[location.getPart()];
}

// Reads the frames of a chart.
class FrameReader {
 public:
  explicit FrameReader(const PlXVisualization& chart) : chart_(chart), roles_(rolesOf(chart)) {}

  void read(PageLayout& layout, std::vector<Node>& nodes) {
    nodes.emplace_back();
    collect(layout, nodes);
    for (std::size_t i = 0; i < objects_.size(); ++i) {
      readPlaces(*objects_[i], layout.frames[i], nodes[i + 1], layout.problems);
    }
    readPageSize(layout);
  }

 private:
  // Goes down into containers alone, whose depth costs no stack.
  void collect(PageLayout& layout, std::vector<Node>& nodes) {
    frames_[&chart_] = page;
    struct Level {
      DOMElement* next;
      std::size_t frame;
    };
    std::vector<Level> levels = {{chart_.getImplementation()->getFirstElementChild(), page}};
    while (!levels.empty()) {
      DOMElement* element = levels.back().next;
      if (!element) {
        levels.pop_back();
        continue;
      }
      levels.back().next = element->getNextElementSibling();
      const PlXBaseElement* object = chart_.objectOf(element);
      if (!object || !isFrame(*object)) continue;
      const std::size_t parent = levels.back().frame;
      const std::size_t frame = nodes.size();
      frames_[object] = frame;
      objects_.push_back(object);
      nodes[parent].children.push_back(frame);
      nodes.push_back(nodeOf(*object, parent));
      layout.frames.push_back(boxOf(*object, levels.size() - 1));
      if (dynamic_cast<const PlXContainer*>(object)) {
        levels.push_back({element->getFirstElementChild(), frame});
      }
    }
  }

  static bool isFrame(const PlXBaseElement& object) {
    return dynamic_cast<const PlXGraph*>(&object) || dynamic_cast<const PlXContainer*>(&object) ||
           dynamic_cast<const PlXLabelFrame*>(&object) || dynamic_cast<const PlXLegend*>(&object) ||
           dynamic_cast<const PlXControlFrame*>(&object);
  }

  static std::string textOf(const PlXBaseElement& object) {
    if (const auto* frame = dynamic_cast<const PlXLabelFrame*>(&object)) {
      return labelText(frame->getLabel());
    }
    const auto* legend = dynamic_cast<const PlXLegend*>(&object);
    return legend ? labelText(legend->getLabel()) : "";
  }

  static Node nodeOf(const PlXBaseElement& object, std::size_t parent) {
    Node node;
    node.parent = parent;
    const bool isGraph = dynamic_cast<const PlXGraph*>(&object);
    node.isFilling = isGraph || dynamic_cast<const PlXContainer*>(&object);
    if (isGraph) {
      node.content[horizontal] = defaultWidth / 2;
      node.content[vertical] = defaultHeight / 2;
    }
    const std::string text = textOf(object);
    if (!text.empty()) setTextContent(node, text);
    if (const auto* legend = dynamic_cast<const PlXLegend*>(&object)) {
      // A few entries for each target.
      constexpr double linesOfTarget = 3;
      constexpr double leastWidth = 80;
      node.content[horizontal] = std::max(node.content[horizontal], leastWidth);
      node.content[vertical] +=
          linesOfTarget * lineHeight * static_cast<double>(legend->getLegendTargets().size());
    }
    return node;
  }

  static void setTextContent(Node& node, const std::string& text) {
    std::size_t longest = 0;
    std::size_t lines = 1;
    std::size_t length = 0;
    for (const char c : text) {
      const bool startsCharacter = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
      lines += c == '\n';
      length = c == '\n' ? 0 : length + startsCharacter;
      longest = std::max(longest, length);
    }
    node.content[horizontal] = characterWidth * static_cast<double>(longest) + padding;
    node.content[vertical] = lineHeight * static_cast<double>(lines) + padding;
  }

  FrameBox boxOf(const PlXBaseElement& object, std::size_t depth) {
    FrameBox box{};
    box.kind = utf8(object.getImplementation()->getLocalName());
    box.id = utf8(object.GetAttribute(PlXUni::_id));
    box.text = textOf(object);
    box.depth = depth;
    box.isHidden = isHidden(object);
    const auto [first, last] = roles_.equal_range(box.id);
    for (auto role = first; role != last && !box.id.empty(); ++role) {
      box.role += (box.role.empty() ? "" : ",") + role->second;
    }
    return box;
  }

  // The first location counts for each part.
  void readPlaces(const PlXBaseElement& object, FrameBox& box, Node& node,
                  std::vector<std::string>& problems) {
    for (const PlXLocation* location : locationsOf(object)) {
      const std::string part = partName(*location);
      box.places += (box.places.empty() ? "" : " ") + part + '=' + placeText(*location);
      std::optional<Place>& place = node.places[location->getPart()];
      if (place) continue;
      place = Place();
      place->method = location->getMethod();
      place->value = extentOf(location->getValue());
      place->max = extentOf(location->getMax());
      const auto target = frames_.find(location->getTarget());
      if (target != frames_.end()) place->target = target->second;
      const std::string what = box.name() + ": its " + part + " has ";
      const bool isFixed = place->method == PlXLocation::method_fixed;
      if (!place->value && (isFixed || *location->getValue())) {
        problems.push_back(what + "no length as its value");
      }
      if (!place->max && *location->getMax()) {
        problems.push_back(what + "no length as its maximum");
      }
      if (!isFixed && place->method != PlXLocation::method_content && place->target == nowhere) {
        problems.push_back(what + "no frame as its target");
      }
    }
  }

  void readPageSize(PageLayout& layout) const {
    layout.width = defaultWidth;
    layout.height = defaultHeight;
    for (const PlXLocation* location : chart_.getLocations()) {
      const auto value = extentOf(location->getValue());
      constexpr double largest = 10000;
      if (!value || value->isPercent || value->number < 1) continue;
      if (location->getMethod() != PlXLocation::method_fixed) continue;
      const double number = std::min(value->number, largest);
      if (location->getPart() == PlXLocation::part_width) layout.width = number;
      if (location->getPart() == PlXLocation::part_height) layout.height = number;
    }
  }

  const PlXVisualization& chart_;
  const std::multimap<std::string, std::string> roles_;
  std::unordered_map<const PlXBaseElement*, std::size_t> frames_;  // their nodes
  std::vector<const PlXBaseElement*> objects_;                     // in the order of the frames
};

// ---- places

// Resolves one direction. What a value is made of is found out on the way: a value that asks for
// one which isn't there yet is put off, and computed anew when that is.
class Resolver {
 public:
  Resolver(const std::vector<Node>& nodes, Axis axis, double pageSize)
      : nodes_(nodes), axis_(axis), values_(nodes.size() * quantities) {
    for (Value& value : values_) value.state = State::New;
    const double ofPage[] = {0, pageSize, pageSize, 0};
    for (std::size_t i = 0; i < quantities; ++i) values_[i] = {ofPage[i], State::Done};
  }

  double valueOf(std::size_t frame, Quantity quantity) {
    const std::size_t wanted = frame * quantities + quantity;
    std::vector<std::size_t> open = {wanted};
    while (!open.empty()) {
      const std::size_t current = open.back();
      Value& value = values_[current];
      if (value.state == State::Done) {
        open.pop_back();
        continue;
      }
      value.state = State::Open;
      missing_.clear();
      metItself_.clear();
      const double result = compute(current / quantities, Quantity(current % quantities));
      if (!missing_.empty()) {
        open.insert(open.end(), missing_.begin(), missing_.end());
        continue;
      }
      for (const std::size_t each : metItself_) circles_.emplace_back(each, current);
      value = {std::clamp(result, -furthest, furthest), State::Done};
      open.pop_back();
    }
    return values_[wanted].number;
  }

  // Pairs of frames in a circle of places: the one whose place it is that depends on itself, and
  // the last one before that on the way round.
  std::vector<std::pair<std::size_t, std::size_t>> circles() const {
    std::vector<std::pair<std::size_t, std::size_t>> frames;
    for (const auto& [start, end] : circles_) {
      const std::pair pair(start / quantities, end / quantities);
      if (frames.empty() || frames.back() != pair) frames.push_back(pair);
    }
    return frames;
  }

 private:
  enum class State { New, Open, Done };
  struct Value {
    double number = 0;
    State state = State::New;
  };

  const std::optional<Place>& place(std::size_t frame, Quantity quantity) const {
    return nodes_[frame].places[partOf(axis_, quantity)];
  }
  // Nothing says how large the frame is, and it isn't one that goes by its content.
  bool spans(std::size_t frame) const {
    return !place(frame, size) &&
           (nodes_[frame].isFilling || (!place(frame, low) && !place(frame, high)));
  }

  double read(std::size_t frame, Quantity quantity) {
    const std::size_t index = frame * quantities + quantity;
    const Value& value = values_[index];
    if (value.state == State::Done) return value.number;
    if (value.state == State::New) {
      missing_.push_back(index);
      return 0;
    }
    metItself_.push_back(index);
    return quantity == size ? nodes_[frame].content[axis_] : 0;
  }

  double compute(std::size_t frame, Quantity quantity) {
    const std::size_t parent = nodes_[frame].parent;
    switch (quantity) {
      case low:
        if (place(frame, low)) return edge(frame, low);
        if (!place(frame, high) || spans(frame)) return 0;
        return read(frame, high) - read(frame, size);
      case high:
        if (place(frame, high)) return edge(frame, high);
        if (spans(frame)) return read(parent, size);
        return read(frame, low) + read(frame, size);
      case size:
        return extent(frame);
      default:
        return read(parent, origin) + read(frame, low);
    }
  }

  double extent(std::size_t frame) {
    if (spans(frame) || (place(frame, low) && place(frame, high))) {
      return read(frame, high) - read(frame, low);
    }
    const std::optional<Place>& stated = place(frame, size);
    double result = 0;
    if (!stated || stated->method == PlXLocation::method_content) {
      result = content(frame);
    } else if (stated->method == PlXLocation::method_fixed) {
      result = stated->value ? length(frame, *stated->value) : nodes_[frame].content[axis_];
    } else {
      result =
          stated->target == nowhere ? nodes_[frame].content[axis_] : read(stated->target, size);
    }
    return stated && stated->max ? std::min(result, length(frame, *stated->max)) : result;
  }

  // A container holds its frames, less those that go by its size.
  double content(std::size_t frame) {
    double result = 0;
    for (const std::size_t child : nodes_[frame].children) {
      result =
          std::max(result, goesByParent(child) ? nodes_[child].content[axis_] : read(child, high));
    }
    return result > 0 ? result : nodes_[frame].content[axis_];
  }
  bool goesByParent(std::size_t frame) const {
    if (spans(frame)) return true;
    for (const Quantity quantity : {low, high, size}) {
      const std::optional<Place>& stated = place(frame, quantity);
      if (!stated) continue;
      if (stated->value && stated->value->isPercent) return true;
      if (stated->max && stated->max->isPercent) return true;
      const bool isAtParent = stated->target == nodes_[frame].parent;
      if (isAtParent && quantity != low) return true;
    }
    return false;
  }

  double edge(std::size_t frame, Quantity side) {
    const Place& stated = *place(frame, side);
    const double inward = side == low ? 1 : -1;
    if (stated.method == PlXLocation::method_fixed && stated.value) {
      return length(frame, *stated.value);
    }
    const double distance = stated.value ? inward * length(frame, *stated.value) : 0;
    if (stated.target == nowhere || stated.method == PlXLocation::method_content ||
        stated.method == PlXLocation::method_fixed) {
      return side == low ? 0 : read(nodes_[frame].parent, size);
    }
    const bool isAligned = stated.method == PlXLocation::method_align;
    const Quantity other = side == low ? high : low;
    return fromParent(frame, stated.target, isAligned ? side : other) + distance;
  }

  // An edge of another frame, counted from what holds `frame`.
  double fromParent(std::size_t frame, std::size_t other, Quantity side) {
    const std::size_t parent = nodes_[frame].parent;
    if (other == parent) return side == low ? 0 : read(parent, size);
    const double local = read(other, side);
    const std::size_t holder = nodes_[other].parent;
    return holder == parent ? local : read(holder, origin) + local - read(parent, origin);
  }

  double length(std::size_t frame, const Extent& value) {
    return value.isPercent ? value.number / 100 * read(nodes_[frame].parent, size) : value.number;
  }

  const std::vector<Node>& nodes_;
  const Axis axis_;
  std::vector<Value> values_;
  // What the last computation asked for in vain.
  std::vector<std::size_t> missing_;
  std::vector<std::size_t> metItself_;
  std::vector<std::pair<std::size_t, std::size_t>> circles_;
};

}  // namespace

PageLayout layOutPage(const PlXVisualization& chart) {
  PageLayout layout{};
  std::vector<Node> nodes;
  FrameReader(chart).read(layout, nodes);
  for (const Axis axis : {horizontal, vertical}) {
    Resolver resolver(nodes, axis, axis == horizontal ? layout.width : layout.height);
    const char* name = axis == horizontal ? "horizontal" : "vertical";
    for (std::size_t i = 0; i < layout.frames.size(); ++i) {
      FrameBox& box = layout.frames[i];
      const std::size_t frame = i + 1;
      const double start = resolver.valueOf(nodes[frame].parent, origin);
      const double from = start + resolver.valueOf(frame, low);
      const double to = start + resolver.valueOf(frame, high);
      (axis == horizontal ? box.left : box.top) = from;
      (axis == horizontal ? box.right : box.bottom) = to;
      if (to < from) {
        layout.problems.push_back(box.name() + ": its " + name + " edges are the wrong way round");
      }
    }
    for (const auto& [start, end] : resolver.circles()) {
      const FrameBox& box = layout.frames[start - 1];
      const FrameBox& other = layout.frames[end - 1];
      layout.problems.push_back(box.name() + ": its " + name + " place depends on itself" +
                                (start == end ? "" : ", by way of " + other.name()));
    }
  }
  return layout;
}
