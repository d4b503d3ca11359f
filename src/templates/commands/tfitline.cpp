// addFitLine type target primary styleOnly spikes colorSpikes rsquared proportion kernel bandwith
// intercept, with children style (number) and confidenceInterval: a curve fitted to the elements of
// a graph, one for all cases or, with target="subgroup", one for each subgroup, each a new line. It
// may bring spikes, a line around its confidence interval and a frame with its R-squared; the
// chart's first legend names it and is made when there is none. Lines and edges aren't fitted; an
// element that is fitted already ends the fitting of its graph. `styleOnly` restyles what is there.
#include <list>
#include <optional>

#include <xercesc/dom/DOM.hpp>

#include "colors.h"
#include "commands.h"
#include "graphtexts.h"
#include "linelegend.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "rsquaredframe.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

using Smooth = PlXSmoothStatistic;

// What a word of `type` means.
struct Fit {
  const XMLCh* word;
  std::optional<Smooth::ENUM_method> method;
  std::optional<unsigned> degree;        // of the line and its spikes
  std::optional<unsigned> regionDegree;  // of the confidence interval
  const char* rSquared;                  // the key of its name there; null for none
};

// The last is for any other word.
constexpr Fit fits[] = {
    {PlXUni::_mean, Smooth::method_polynomial, 0, 0, nullptr},
    {PlXUni::_linear, Smooth::method_linear, {}, 1, "E60551"},
    {PlXUni::_quadratic, Smooth::method_polynomial, 2, 2, "E60554"},
    {PlXUni::_cubic, Smooth::method_polynomial, 3, 3, "E60555"},
    {PlXUni::_loess, Smooth::method_loess, {}, {}, nullptr},
    {u"", {}, {}, {}, nullptr},
};

const Fit& fitOf(const ChartString& type) {
  const Fit* fit = fits;
  while (*fit->word && !type.equals(fit->word)) ++fit;
  return *fit;
}

std::optional<Smooth::ENUM_kernel> kernelOf(const ChartString& word) {
  if (word.equals(u"Epanechnikov")) return Smooth::kernel_epanechnikov;
  return wordOf<Smooth::ENUM_kernel>(word.xc_str());
}

struct Parameters {
  bool primary = false;
  bool styleOnly = false;
  bool spikes = false;
  bool colorSpikes = false;
  bool rSquared = false;
  bool bySubgroup = false;
  const Fit* fit = nullptr;
  std::optional<double> proportion, bandwidth, intercept;
  ChartString kernel;
  const DOMElement* fitStyle = nullptr;
  const DOMElement* spikeStyle = nullptr;
  const DOMElement* confidence = nullptr;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  const auto flag = [&](const XMLCh* name) { return isTrue(command, name); };
  Parameters parameters;
  parameters.primary = flag(u"primary");
  parameters.styleOnly = flag(BaseTemplate::_styleOnly);
  parameters.spikes = flag(PlXUni::_spikes);
  parameters.colorSpikes = flag(u"colorSpikes");
  parameters.rSquared = flag(u"rsquared");
  parameters.bySubgroup = is(command.getAttribute(PlXUni::_target), u"subgroup");
  parameters.fit = &fitOf(command.getAttribute(PlXUni::_type));
  parameters.proportion = stated::number(base, &command, u"proportion");
  parameters.kernel = command.getAttribute(u"kernel");
  parameters.bandwidth = stated::number(base, &command, u"bandwith");
  parameters.intercept = stated::number(base, &command, u"intercept");
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    if (is(child->getNodeName(), u"confidenceInterval")) parameters.confidence = child;
    if (!is(child->getNodeName(), PlXUni::_style)) continue;
    const long number = stated::selection(base, child, PlXUni::_number);
    (number == 1 ? parameters.spikeStyle : parameters.fitStyle) = child;
  }
  return parameters;
}

struct Names {
  ChartString total;
  ChartString confidence;
  ChartString method;

  explicit Names(const Fit& fit) {
    GraphTexts texts;
    total = texts.lookUp("Fit line for").append(texts.lookUp("Total"));
    confidence = texts.lookUp("Confidence Intervals");
    if (fit.rSquared) method = texts.lookUp(fit.rSquared);
  }
};

void setMethod(PlXSmoothStatistic& statistic, const Fit& fit) {
  statistic.setBounded(false);
  if (fit.method) statistic.setMethod(*fit.method);
  if (fit.degree) statistic.setDegree(*fit.degree);
}

class Fitting {
 public:
  Fitting(BaseTemplate& base, const Parameters& parameters)
      : base_(base),
        given_(parameters),
        fitStyle_(base, parameters.fitStyle),
        spikeStyle_(base, parameters.spikeStyle),
        legend_(base, {{u"75%", u"99%", u"70%", u"80%"}, false}),
        rSquared_(base) {
    forChildren(parameters.confidence, PlXUni::_style,
                [&](const DOMElement* each) { confidenceStyles_.emplace_back(base, each); });
  }

  void process(PlXGraph& graph) {
    PlXCoordinates* block = fittedBlock(graph);
    if (!block) return;
    isMatrix_ = base_.getFirstSPLOMElement(graph) != nullptr;
    bool isForAll = !given_.bySubgroup;
    std::vector<CTElementType*> elements;
    BaseTemplate::getAllElements(graph, elements);
    for (CTElementType* element : elements) {
      if (element->getCoordinates() && element->getCoordinates() != block) continue;
      if (given_.styleOnly) {
        restyle(*element);
        continue;
      }
      if (dynamic_cast<PlXLine*>(element) || dynamic_cast<PlXEdge*>(element)) continue;
      const bool isFitted =
          !element->getSmoothStatistics().empty() || !element->getRegionStatistics().empty();
      if (isFitted || (!isForAll && base_.getAesthetics(*element).empty())) return;
      const CTCoordinate* x = element->getX();
      // Items of an expression are fitted for themselves.
      if (x && x->getExpressionVariable() && !isMatrix_) isForAll = false;
      addFit(graph, *block, *element, isForAll);
    }
  }

 private:
  // Null when the graph has nothing to fit on.
  PlXCoordinates* fittedBlock(const PlXGraph& graph) const {
    const XMLCh* role = given_.primary ? PlXUni::_y : BaseTemplate::_y2;
    if (base_.isRoleCategorical(graph, PlXUni::_x) || base_.isRoleCategorical(graph, role) ||
        base_.getDimensionsByRole(graph, role).empty()) {
      return nullptr;
    }
    return graph.getCoordinates(given_.primary ? 0 : 1);
  }

  void addFit(PlXGraph& graph, PlXCoordinates& block, const CTElementType& element, bool isForAll) {
    PlXLine& line = *graph.addLine(base_.CreateUniqueId(PlXUni::_line).xc_str());
    line.setCoordinates(block);
    PlXStyle& style = base_.styleOf<CTElementType>(line);
    if (const XMLCh* color = colors::colorOf(element.getStyle())) style.setColor(color);
    fitStyle_.onto(style);
    base_.copyVariables(line, element);
    base_.cloneConditionalStyles(element, line);
    if (isForAll) line.setName(names().total.xc_str());
    addStatistic(graph, line, element);
    PlXLine* confidence = given_.confidence ? &addConfidence(graph, line) : nullptr;
    legend_.ensured();
    for (PlXLine* each : {&line, confidence}) {
      if (!each) continue;
      if (isForAll) {
        legend_.add(*each);
      } else {
        base_.cloneAestheticsButSizes(element, *each, true);
        base_.changeColor2ToColor(*each, false);
      }
    }
  }

  void addStatistic(PlXGraph& graph, PlXLine& line, const CTElementType& element) {
    const Fit& fit = *given_.fit;
    PlXSmoothStatistic& statistic = BaseTemplate::smoothStatisticOf(line);
    setMethod(statistic, fit);
    const bool isLoess = fit.method == Smooth::method_loess;
    if (isLoess) {
      if (given_.proportion) statistic.setProportion(*given_.proportion);
      if (const auto kernel = kernelOf(given_.kernel)) statistic.setKernel(*kernel);
    }
    if (given_.spikes && fit.method && (!isLoess || !given_.kernel.empty())) {
      addSpikes(graph, line, element);
    }
    if (given_.rSquared && fit.rSquared && !isMatrix_) {
      rSquared_.add(graph, line, names().method, given_.bySubgroup);
    }
    if (given_.bandwidth) statistic.setBandwidth(*given_.bandwidth);
    if (given_.intercept) statistic.setIntercept(*given_.intercept);
  }

  void addSpikes(PlXGraph& graph, const PlXLine& line, const CTElementType& element) {
    PlXInterval& spikes = *graph.addInterval(base_.CreateUniqueId(PlXUni::_spikes).xc_str());
    spikes.setPositionModifier(CTElementType::positionModifier_none);
    // With the points, whatever block the line is in.
    if (PlXCoordinates* block = element.getCoordinates()) spikes.setCoordinates(*block);
    spikeStyle_.onto(base_.styleOf<CTElementType>(spikes));
    base_.copyVariables(spikes, line);
    base_.cloneConditionalStyles(line, spikes);
    if (given_.colorSpikes && given_.bySubgroup) {
      base_.cloneElementAesthetics(element, spikes, false);
    }
    PlXSmoothStatistic& statistic = *spikes.addSmoothStatistic();
    statistic.setSpikes(true);
    setMethod(statistic, *given_.fit);
  }

  PlXLine& addConfidence(PlXGraph& graph, const PlXLine& fitLine) {
    PlXLine& line = *graph.addLine(base_.CreateUniqueId(PlXUni::_line).xc_str());
    importConfidenceStyles(base_.styleOf<CTElementType>(line));
    base_.copyVariables(line, fitLine);
    base_.cloneConditionalStyles(fitLine, line);
    line.setName(names().confidence.xc_str());
    PlXRegionStatistic& region = *line.addRegionStatistic();
    if (given_.fit->regionDegree) region.setDegree(*given_.fit->regionDegree);
    region.setRegionType(PlXRegionStatistic::regionType_confidenceFit);
    region.setPredictIndividuals(isTrue(*given_.confidence, u"predictIndividuals"));
    const auto alpha = stated::number(base_, given_.confidence, u"alpha");
    if (alpha) region.setAlpha(*alpha);
    return line;
  }

  void importConfidenceStyles(PlXStyle& style) {
    for (const BaseTemplate::StyleImport& each : confidenceStyles_) each.onto(style);
  }

  void restyle(CTElementType& element) {
    if (dynamic_cast<PlXLine*>(&element)) {
      if (!element.getSmoothStatistics().empty()) {
        if (given_.fitStyle) fitStyle_.onto(base_.styleOf(element));
      } else if (!element.getRegionStatistics().empty() && given_.confidence) {
        importConfidenceStyles(base_.styleOf(element));
      }
    } else if (dynamic_cast<PlXInterval*>(&element) && given_.spikeStyle) {
      for (const PlXSmoothStatistic* statistic : element.getSmoothStatistics()) {
        if (statistic->getSpikes()) spikeStyle_.onto(base_.styleOf(element));
      }
    }
  }

  const Names& names() {
    if (!names_) names_.emplace(*given_.fit);
    return *names_;
  }

  BaseTemplate& base_;
  const Parameters& given_;
  const BaseTemplate::StyleImport fitStyle_;
  const BaseTemplate::StyleImport spikeStyle_;
  std::list<BaseTemplate::StyleImport> confidenceStyles_;
  LineLegend legend_;
  RSquaredFrames rSquared_;
  std::optional<Names> names_;
  bool isMatrix_ = false;  // the graph that is fitted
};

}  // namespace

bool TFitLine::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
  Fitting fitting(*this, parameters);
  const std::vector<PlXGraph*> graphs = target.getGraphs();
  for (PlXGraph* graph : graphs) fitting.process(*graph);
  return !graphs.empty();
}
