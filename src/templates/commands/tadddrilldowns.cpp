// addDrillDown target role count, interaction function meta, and twelve flags: marks parts of a
// chart as active for a viewer. Each part gets an id if it has none, and a record of the chart that
// names it; what the record says is the viewer's business. `count` is a 1-based position in each
// list of parts: in each dimension, in each graph, in all legends, among all free labels. Legends
// and free labels are the chart's, and are recorded for each graph.
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "objectsbytag.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxuni.h"
#include "statedvalues.h"

using namespace xercesc;

namespace {

enum class Part { axisLabel, element, legendLabel, legend, majorTicks, label };

// In the order in which all of them are recorded.
constexpr std::pair<const XMLCh*, Part> parts[] = {
    {u"axisLabel", Part::axisLabel},     {u"element", Part::element},
    {u"legendLabel", Part::legendLabel}, {u"legend", Part::legend},
    {u"majorTicks", Part::majorTicks},   {u"label", Part::label},
};
const XMLCh* const interactions[] = {PlXUni::_onClick, PlXUni::_onMouseDown, PlXUni::_onMouseUp,
                                     PlXUni::_onMouseOver, PlXUni::_onMouseOut};
// What the viewer hands to the function.
constexpr const XMLCh* flags[] = {u"coordinates",  u"facet",     u"cases",      u"part",
                                  u"numericValue", u"ticks",     u"aesthetics", u"class",
                                  u"popup",        u"metaValue", u"parameters", u"attach"};
// The parts of the whole chart are the same for each graph; a chart of more is no chart to read.
constexpr unsigned mostRepeats = 100;

struct Parameters {
  std::optional<Part> part;  // all without one
  std::vector<ChartString> roles;
  long count = 0;
};

using Ids = std::vector<ChartString>;

class Collector {
 public:
  Collector(BaseTemplate& base, const Parameters& parameters)
      : base_(base), chart_(base.target), parameters_(parameters) {}

  Ids ofGraph(const PlXGraph& graph) {
    ids_.clear();
    ++graphs_;
    for (const auto& [word, part] : parts) {
      if (!parameters_.part || parameters_.part == part) collect(part, graph);
    }
    return std::move(ids_);
  }

 private:
  void collect(Part part, const PlXGraph& graph) {
    switch (part) {
      case Part::axisLabel:
        return collectOfAxes(graph, &PlXAxis::getLabel, PlXUni::_label);
      case Part::majorTicks:
        return collectOfAxes(graph, &PlXAxis::getMajorTicks, PlXUni::_majorTicks);
      case Part::element:
        return collectElements(graph);
      case Part::legendLabel:
        return repeat(legendLabels_, &Collector::collectLegendLabels);
      case Part::legend:
        return repeat(legendTargets_, &Collector::collectLegendTargets);
      case Part::label:
        return repeat(labels_, &Collector::collectLabels);
    }
  }

  // Takes the part at a position if it is wanted; null is passed over.
  template <class T>
  void take(T* part, long position, const XMLCh* idBase) {
    if (!part || (parameters_.count != 0 && parameters_.count != position)) return;
    if (!*part->getId()) part->setId(base_.CreateUniqueId(idBase).xc_str());
    ids_.emplace_back(part->getId());
  }

  // Parts of the chart are looked for once.
  void repeat(std::optional<Ids>& known, void (Collector::*collect)()) {
    if (graphs_ > mostRepeats) return;
    if (!known) {
      const auto start = static_cast<std::ptrdiff_t>(ids_.size());
      (this->*collect)();
      known.emplace(ids_.begin() + start, ids_.end());
    } else {
      ids_.insert(ids_.end(), known->begin(), known->end());
    }
  }

  template <class T>
  void collectOfAxes(const PlXGraph& graph, T* (PlXAxis::*get)() const, const XMLCh* idBase) {
    for (const ChartString& role : parameters_.roles) {
      for (const PlXDimension* dimension : base_.getDimensionsByRole(graph, role)) {
        long position = 0;
        for (const PlXAxis* axis : dimension->getAxiss()) take((axis->*get)(), ++position, idBase);
      }
    }
  }

  void collectElements(const PlXGraph& graph) {
    std::vector<CTElementType*> elements;
    BaseTemplate::getAllElements(graph, elements);
    long position = 0;
    for (CTElementType* element : elements) take(element, ++position, PlXUni::_legend);
  }

  void collectLegendLabels() {
    long position = 0;
    for (const PlXLegend* legend : base_.getLegends()) {
      take(legend->getLabel(), ++position, PlXUni::_label);
    }
  }

  void collectLegendTargets() {
    long position = 0;
    for (const PlXLegend* legend : base_.getLegends()) {
      for (PlXLegendTarget* entry : legend->getLegendTargets()) {
        take(entry, ++position, PlXUni::_legendTarget);
      }
    }
  }

  // Those of frames and guides.
  void collectLabels() {
    long position = 0;
    walkElements(chart_.getImplementation(), [&](DOMElement* element) {
      const dialect::Element* row = dialect::find(element);
      if (row && row->content == dialect::Content::Data) return false;
      const PlXBaseElement* object = chart_.objectOf(element);
      if (dynamic_cast<const PlXAxis*>(object) || dynamic_cast<const PlXLegend*>(object)) {
        return false;
      }
      if (XMLString::equals(dialect::localName(element), PlXUni::_label)) {
        take(dynamic_cast<PlXLabel*>(chart_.objectOf(element)), ++position, PlXUni::_label);
      }
      return true;
    });
  }

  BaseTemplate& base_;
  PlXVisualization& chart_;
  const Parameters& parameters_;
  Ids ids_;
  unsigned graphs_ = 0;
  std::optional<Ids> legendLabels_;
  std::optional<Ids> legendTargets_;
  std::optional<Ids> labels_;
};

}  // namespace

bool TAddDrilldowns::ProcessCommand() {
  if (!command) return false;
  Parameters parameters;
  for (const auto& [word, part] : parts) {
    if (attribute(PlXUni::_target).equals(word)) parameters.part = part;
  }
  const ChartString role = attribute(PlXUni::_role);
  for (const XMLCh* each : {PlXUni::_x, PlXUni::_y, PlXUni::_z}) {
    if (role.equals(each)) parameters.roles = {role};
  }
  if (parameters.roles.empty()) parameters.roles = {PlXUni::_x, PlXUni::_y, PlXUni::_z};
  parameters.count = stated::selection(*this, command, PlXUni::_count);

  const auto addRecord = [&](const ChartString& id) {
    PlXExtensionVis* record = target.addExtension();
    record->setAttribute(PlXDrillDown::_UTF_drillDown, PlXUni::_true);
    record->setAttribute(PlXUni::_target, id);
    const ChartString function = attribute(PlXUni::_function);
    if (!function.empty()) record->setAttribute(PlXUni::_function, function);
    const ChartString interaction = attribute(u"interaction");
    for (const XMLCh* word : interactions) {
      if (interaction.equals(word)) record->setAttribute(PlXUni::_interactionType, word);
    }
    const ChartString meta = attribute(u"meta");
    if (!meta.empty()) record->setAttribute(u"meta", meta);
    for (const XMLCh* flag : flags) {
      if (getBooleanAttribute(command, flag, false)) record->setAttribute(flag, PlXUni::_true);
    }
  };

  std::vector<PlXGraph*> graphs;
  getGraphs(graphs);
  Collector collector(*this, parameters);
  for (const PlXGraph* graph : graphs) {
    for (const ChartString& id : collector.ofGraph(*graph)) addRecord(id);
  }
  return true;
}
