#include "framepacker.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <unordered_set>

#include <xercesc/dom/DOM.hpp>

#include "dialect.h"
#include "domwalk.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxuni.h"

using namespace xercesc;

namespace {

constexpr const XMLCh* nearEdge = u"1%";
constexpr const XMLCh* farEdge = u"99%";
constexpr const XMLCh* sideEdge = u"75%";
constexpr const XMLCh* sideWidth = u"25%";

// The object of that class over a node; null when there is none.
template <class T>
T* objectOver(const DOMNode* node, const XMLCh* tag) {
  return node ? dynamic_cast<T*>(static_cast<PlXBaseElement*>(node->getUserData(tag))) : nullptr;
}

// The frames that `at` answers for 1, 2, ... up to the first null, each once.
template <class Frame, class At>
void append(std::vector<Frame*>& frames, At at) {
  std::unordered_set<Frame*> known(frames.begin(), frames.end());
  unsigned number = 0;
  while (Frame* frame = at(++number)) {
    if (known.insert(frame).second) frames.push_back(frame);
  }
}

// Takes away a frame's locations, and writes new ones in the order of the calls.
template <class Frame>
class Placing {
 public:
  explicit Placing(Frame& frame) : frame_(frame) { frame.removeLocations(); }

  void fix(PlXLocation::ENUM_part part, const XMLCh* value) {
    add(part, PlXLocation::method_fixed).setValue(value);
  }
  PlXLocation& fitContent(PlXLocation::ENUM_part part) {
    return add(part, PlXLocation::method_content);
  }
  template <class Target>
  void align(PlXLocation::ENUM_part part, Target& target) {
    add(part, PlXLocation::method_align).setTarget(target);
  }
  template <class Target>
  void attach(PlXLocation::ENUM_part part, Target& target) {
    add(part, PlXLocation::method_attach).setTarget(target);
  }
  // Against the first of the targets that is a frame other than this one, or fixed.
  void attachOrFix(PlXLocation::ENUM_part part, std::initializer_list<PlXLabelFrame*> targets,
                   const XMLCh* value) {
    for (PlXLabelFrame* target : targets) {
      if (target && static_cast<PlXBaseElement*>(target) != &frame_) return attach(part, *target);
    }
    fix(part, value);
  }

 private:
  PlXLocation& add(PlXLocation::ENUM_part part, PlXLocation::ENUM_method method) {
    PlXLocation& location = *frame_.addLocation(part);
    location.setMethod(method);
    return location;
  }

  Frame& frame_;
};

// One pass over one chart.
class Packing {
 public:
  Packing(PlXVisualization& chart, PlXVisualization* reference, std::vector<PlXGraph*> graphs)
      : reference_(reference), graphs_(std::move(graphs)), topGraphs_(chart.getGraphs().size()) {
    if (PlXExtensionVis* roles = chart.getExtension()) readRoles(*roles);
    if (!legends_.empty()) container_ = parentOf(*legends_[0]);
    if (!container_ && !sideFrames_.empty()) container_ = parentOf(*sideFrames_[0]);
  }

  void run() {
    placeTitles();
    if (hasOneGraph() && !isPlacedByAuthor(*graphs_[0])) placeGraph(*graphs_[0]);
    if (hasOneGraph()) placeFootnotes();
    if (container_ && !isPlacedByAuthor(*container_)) placeContainer(*container_);
    if (hasOneGraph()) placeLegends();
    placeSideFrames();
  }

 private:
  void readRoles(PlXExtensionVis& roles) {
    title1_ = roles.getTitle1();
    title2_ = roles.getTitle2();
    subtitle_ = roles.getSubtitle();
    footnote1_ = roles.getFootnote1();
    footnote2_ = roles.getFootnote2();
    footnote3_ = roles.getFootnote3();
    append(legends_, [&](unsigned number) { return roles.getLegend(number); });
    append(sideFrames_, [&](unsigned number) { return roles.getStatisticsSummary(number); });
    append(sideFrames_, [&](unsigned number) { return roles.getKey(number); });
  }

  static PlXContainer* parentOf(const PlXBaseElement& frame) {
    return objectOver<PlXContainer>(frame.getImplementation()->getParentNode(), PlXUni::_container);
  }

  bool hasOneGraph() const { return graphs_.size() == 1; }

  // ---- frames that stay

  template <class IsFixed>
  bool isPlacedInReference(const PlXBaseElement& frame, IsFixed isFixed) const {
    DOMElement* original =
        reference_ ? reference_->getElementById(frame.GetAttribute(PlXUni::_id)) : nullptr;
    if (!original) return false;
    bool hasLocations = false;
    bool areFixed = true;
    walkElements(original, [&](DOMElement* element) {
      if (element == original ||
          !XMLString::equals(dialect::localName(element), PlXUni::_location)) {
        return true;
      }
      hasLocations = true;
      const auto* location = objectOver<PlXLocation>(element, PlXUni::_location);
      areFixed = areFixed && (!location || isFixed(*location));
      return areFixed;
    });
    return hasLocations && areFixed;
  }

  static bool hasFixedMethod(const PlXLocation& location) {
    return location.getMethod() == PlXLocation::method_fixed;
  }
  bool isPlacedByAuthor(const PlXBaseElement& frame) const {
    return isPlacedInReference(frame, hasFixedMethod);
  }
  bool isPlacedByAuthor(const PlXGraph& graph) const {
    return isPlacedInReference(graph, [](const PlXLocation& location) {
      return hasFixedMethod(location) || location.getSpecifiedByUser();
    });
  }
  template <class Frame>
  bool isPlacedByUser(const Frame& frame) const {
    const std::vector<PlXLocation*> locations = frame.getLocations();
    return reference_ && std::any_of(locations.begin(), locations.end(), [](const auto* location) {
             return location->getSpecifiedByUser();
           });
  }

  // ---- the parts of the page

  void placeTitles() {
    if (title1_ && topGraphs_ == 1 && !isPlacedByAuthor(*title1_)) {
      Placing place(*title1_);
      place.fix(PlXLocation::part_top, nearEdge);
      place.fitContent(PlXLocation::part_height);
    }
    if (title2_ && topGraphs_ == 1 && !isPlacedByAuthor(*title2_)) {
      Placing place(*title2_);
      place.fitContent(PlXLocation::part_height);
      place.attachOrFix(PlXLocation::part_top, {title1_}, nearEdge);
    }
    if (subtitle_ && !isPlacedByAuthor(*subtitle_)) {
      Placing place(*subtitle_);
      place.attachOrFix(PlXLocation::part_top, {title2_, title1_}, nearEdge);
      place.fitContent(PlXLocation::part_height);
    }
  }

  template <class Frame>
  void putBelowTitles(Placing<Frame>& place) const {
    place.attachOrFix(PlXLocation::part_top, {subtitle_, title2_, title1_}, nearEdge);
  }

  void placeGraph(PlXGraph& graph) {
    Placing place(graph);
    place.fix(PlXLocation::part_left, nearEdge);
    putBelowTitles(place);
    place.attachOrFix(PlXLocation::part_bottom, {footnote1_, footnote2_, footnote3_}, farEdge);
    if (container_) {
      place.attach(PlXLocation::part_right, *container_);
    } else if (!legends_.empty()) {
      place.attach(PlXLocation::part_right, *legends_[0]);
    } else if (!sideFrames_.empty()) {
      place.attach(PlXLocation::part_right, *sideFrames_[0]);
    } else {
      place.fix(PlXLocation::part_right, farEdge);
    }
  }

  void placeFootnotes() {
    placeFootnote(footnote1_, {footnote2_, footnote3_});
    placeFootnote(footnote2_, {footnote3_});
    placeFootnote(footnote3_, {});
  }
  void placeFootnote(PlXLabelFrame* footnote, std::initializer_list<PlXLabelFrame*> below) {
    if (!footnote || isPlacedByAuthor(*footnote)) return;
    Placing place(*footnote);
    place.fitContent(PlXLocation::part_height);
    place.attachOrFix(PlXLocation::part_bottom, below, farEdge);
  }

  template <class Frame>
  void putLevelWithGraph(Placing<Frame>& place) const {
    if (graphs_.empty()) {
      putBelowTitles(place);
    } else {
      place.align(PlXLocation::part_top, *graphs_[0]);
    }
  }

  void placeContainer(PlXContainer& container) {
    Placing place(container);
    putLevelWithGraph(place);
    place.fitContent(PlXLocation::part_height);
    place.fix(PlXLocation::part_left, sideEdge);
    place.fix(PlXLocation::part_right, farEdge);
  }

  void placeLegends() {
    for (PlXLegend* legend : legends_) {
      if (isPlacedByUser(*legend)) continue;
      Placing place(*legend);
      place.fitContent(PlXLocation::part_height);
      place.fitContent(PlXLocation::part_width);
      if (container_) {
        place.align(PlXLocation::part_left, *container_);
        place.align(PlXLocation::part_right, *container_);
      } else {
        place.fix(PlXLocation::part_right, farEdge);
      }
      if (lastLegend_) {
        place.attach(PlXLocation::part_top, *lastLegend_);
      } else if (container_) {
        place.align(PlXLocation::part_top, *container_);
      } else {
        putLevelWithGraph(place);
      }
      lastLegend_ = legend;
    }
  }

  void placeSideFrames() {
    PlXLabelFrame* previous = nullptr;
    for (PlXLabelFrame* frame : sideFrames_) {
      if (isPlacedByUser(*frame)) continue;
      const bool isInside = container_ && parentOf(*frame) == container_;
      Placing place(*frame);
      place.fitContent(PlXLocation::part_height);
      PlXLocation& width = place.fitContent(PlXLocation::part_width);
      if (!isInside) width.setMax(sideWidth);
      if (!container_) {
        place.fix(PlXLocation::part_left, sideEdge);
      } else if (isInside) {
        place.fix(PlXLocation::part_left, nearEdge);
      } else {
        place.align(PlXLocation::part_left, *container_);
      }
      if (previous) {
        place.attach(PlXLocation::part_top, *previous);
      } else if (container_ && !isInside) {
        place.attach(PlXLocation::part_top, *container_);
      } else if (lastLegend_) {
        place.attach(PlXLocation::part_top, *lastLegend_);
      } else {
        putLevelWithGraph(place);
      }
      previous = frame;
    }
  }

  PlXVisualization* const reference_;  // null for none
  const std::vector<PlXGraph*> graphs_;
  const std::size_t topGraphs_;
  PlXLabelFrame* title1_ = nullptr;
  PlXLabelFrame* title2_ = nullptr;
  PlXLabelFrame* subtitle_ = nullptr;
  PlXLabelFrame* footnote1_ = nullptr;
  PlXLabelFrame* footnote2_ = nullptr;
  PlXLabelFrame* footnote3_ = nullptr;
  std::vector<PlXLegend*> legends_;
  std::vector<PlXLabelFrame*> sideFrames_;
  PlXContainer* container_ = nullptr;
  PlXLegend* lastLegend_ = nullptr;  // of those that were placed
};

}  // namespace

FramePacker::~FramePacker() = default;

bool FramePacker::packFrames(PlXVisualization& visualization, PlXDocument* reference) const {
  const PlXExtensionVis* extension = visualization.getExtension();
  if (extension && extension->getPreserveLocations()) return true;
  std::vector<PlXGraph*> graphs = visualization.getGraphs();
  getGraphChildren(visualization.getContainers(), graphs);
  Packing(visualization, reference ? reference->getRoot() : nullptr, std::move(graphs)).run();
  return true;
}

// Without recursion: containers may be nested as deep as a document allows.
void FramePacker::getGraphChildren(const std::vector<PlXContainer*>& containers,
                                   std::vector<PlXGraph*>& graphs) const {
  std::vector<PlXContainer*> left(containers.rbegin(), containers.rend());
  while (!left.empty()) {
    const PlXContainer* container = left.back();
    left.pop_back();
    const std::vector<PlXGraph*> own = container->getGraphs();
    graphs.insert(graphs.end(), own.begin(), own.end());
    const std::vector<PlXContainer*> inner = container->getContainers();
    left.insert(left.end(), inner.rbegin(), inner.rend());
  }
}

ChartString FramePacker::assignValue(double percent) const {
  const double tenths = std::trunc(10 * percent);
  // The sum makes a negative zero a plain one.
  const double cut = std::isfinite(tenths) ? tenths / 10 + 0.0 : 0;
  ChartString text;
  // One digit less than a double has writes every tenth as it is meant: 8.2, not 8.199999999999999.
  text.assignDouble(cut, 15);
  text.append(u"%");
  return text;
}
