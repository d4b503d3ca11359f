// addHistogramSummaryFrame: gives each histogram a text frame with the mean, the standard deviation
// and the number of its cases, in the format of its variable. With several summaries they stand in
// a container, which is made when there is none, each under the title of its x axis. Panelled
// histograms have none, nor has a chart whose record says histogramStatistic="none". A second run
// adds them again.
#include <algorithm>
#include <optional>

#include "commands.h"
#include "graphtexts.h"
#include "plxaxis.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxformat.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxlabel.h"
#include "plxstatistics.h"
#include "plxuni.h"
#include "plxvariables.h"

namespace {

struct Texts {
  ChartString mean;
  ChartString deviation;
  ChartString count;
  ChartString days;

  Texts() {
    GraphTexts texts;
    const auto line = [&](const char* key) {
      ChartString text = texts.lookUp(key);
      text.replaceSubstring(u"\\n", u"\n");
      return text.append(u" ");
    };
    mean = line("histoMean");
    deviation = line("histoStdDev");
    count = line("histoN");
    days = ChartString(u" ").append(texts.lookUp("days"));
  }
};

// Null when the variable has no format.
const PlXFormat* formatOf(const CTElementType& histogram) {
  const CTCoordinate* x = histogram.getX();
  const CTVariableType* variable = x ? x->getVariable() : nullptr;
  const std::vector<PlXFormat*> formats =
      variable ? variable->getFormats() : std::vector<PlXFormat*>();
  return formats.empty() ? nullptr : formats.front();
}

ChartString axisTitles(const std::vector<PlXDimension*>& dimensions) {
  ChartString titles;
  for (const PlXDimension* dimension : dimensions) {
    for (const PlXAxis* axis : dimension->getAxiss()) {
      const PlXLabel* label = axis->getLabel();
      if (!label) continue;
      for (const PlXText* text : label->getTexts()) titles.append(text->getText());
    }
  }
  return titles;
}

// With so many more digits than the variable shows.
void addDigits(PlXFormat& format, unsigned more) {
  constexpr unsigned most = 16;
  format.setMaximumFractionDigits(
      std::min(std::min(format.getMaximumFractionDigits(), most) + more, most));
}

void fill(const BaseTemplate& base, PlXDescriptionGroup& group, const PlXFormat* variableFormat,
          const Texts& texts) {
  group.addDescription(PlXDescription::name_group);
  group.addText()->setText(texts.mean.xc_str());
  PlXFormat& mean = *group.addDescription(PlXDescription::name_mean)->addFormat();
  if (variableFormat) base.duplicateAttributes(*variableFormat, mean);
  addDigits(mean, 2);
  group.addText()->setText(texts.deviation.xc_str());
  PlXFormat& deviation = *group.addDescription(PlXDescription::name_standardDeviation)->addFormat();
  if (variableFormat && variableFormat->isBaseFormatPresent()) {
    // That of dates is a number of seconds.
    deviation.setScalingFactor(86400);
    deviation.setSuffix(texts.days.xc_str());
  } else {
    if (variableFormat) base.duplicateAttributes(*variableFormat, deviation);
    addDigits(deviation, 3);
  }
  group.addText()->setText(texts.count.xc_str());
  group.addDescription(PlXDescription::name_count);
}

}  // namespace

bool TAddHistogramSummaryFrame::ProcessCommand() {
  if (!command) return false;
  PlXExtensionVis* roles = target.getExtension();
  if (roles &&
      ChartString(PlXUni::_none).equals(roles->getAttribute(PlXUni::_histogramStatistic))) {
    return false;
  }
  const std::vector<PlXGraph*> graphs = target.getGraphs();
  if (graphs.empty()) return false;
  std::size_t summaries = 0;
  for (const PlXGraph* graph : graphs) {
    if (graphs.size() > 1) summaries += getElementsWithSummaryStatistics(*graph).size();
  }
  if (summaries > 1 && target.getContainers().empty()) {
    target.addContainer(CreateUniqueId("container_").xc_str());
  }
  const std::vector<PlXContainer*> containers = target.getContainers();

  std::optional<Texts> texts;
  long number = 1;
  for (const PlXGraph* graph : graphs) {
    for (CTElementType* histogram : getElementsWithSummaryStatistics(*graph)) {
      if (histogram->getBinStatistics().empty() || graph->getFaceting()) continue;
      if (!texts) texts.emplace();
      const ChartString id = CreateUniqueId("frame_statistics_summary");
      PlXLabelFrame* frame = containers.empty() ? target.addLabelFrame(id.xc_str())
                                                : containers.front()->addLabelFrame(id.xc_str());
      if (!roles) roles = target.addExtension();
      while (roles->getStatisticsSummary(number)) ++number;
      roles->setStatisticsSummary(*frame, number);
      PlXLabel* label = frame->addLabel();
      if (summaries > 1) {
        const ChartString heading = axisTitles(getDimensionsByRole(*graph, PlXUni::_x));
        if (!heading.empty()) label->addText()->setText(heading.xc_str());
      }
      PlXDescriptionGroup* group = label->addDescriptionGroup(*histogram);
      group->setSeparator(u"\n \n");
      fill(*this, *group, formatOf(*histogram), *texts);
    }
  }
  return true;
}
