// setHistogramBinning binStart binWidth binCount, with children parameter (start, bin-width,
// bin-count): makes the bins of histograms anew, which are the elements with a bin statistic that
// count. A width goes before a count; nothing of the earlier bins stays, and of the summary its
// method alone.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Bins {
  ChartString start;
  ChartString width;
  ChartString count;
};

Bins readBins(const DOMElement& command) {
  Bins bins;
  struct Row {
    ChartString& text;
    const XMLCh* parameter;
    const XMLCh* attribute;
  };
  const Row rows[] = {
      {bins.start, u"start", PlXBinStatistic::_binStart},
      {bins.width, u"bin-width", PlXBinStatistic::_binWidth},
      {bins.count, u"bin-count", PlXBinStatistic::_binCount},
  };
  forDescendants(&command, PlXUni::_parameter, [&](const DOMElement* parameter) {
    const XMLCh* value = parameter->getAttribute(PlXUni::_value);
    for (const Row& row : rows) {
      if (*value && is(parameter->getAttribute(PlXUni::_name), row.parameter)) row.text = value;
    }
  });
  for (const Row& row : rows) {
    const XMLCh* value = command.getAttribute(row.attribute);
    if (*value) row.text = value;
  }
  return bins;
}

}  // namespace

bool THistogramBinning::ProcessCommand() {
  if (!command) return false;
  const Bins bins = readBins(*command);
  for (const PlXGraph* graph : target.getGraphs()) {
    for (CTElementType* element : getElementsWithSummaryStatistics(*graph)) {
      if (element->getBinStatistics().empty()) continue;
      const auto method = element->getSummaryStatistics().front()->getMethod();
      element->removeBinStatistics();
      element->removeSummaryStatistics();
      PlXBinStatistic& statistic = *element->addBinStatistic();
      element->addSummaryStatistic()->setMethod(method);
      if (!bins.start.empty()) statistic.setBinStart(bins.start.xc_str());
      if (!bins.width.empty()) {
        statistic.setBinWidth(bins.width.xc_str());
      } else if (!bins.count.empty()) {
        statistic.setBinCount(bins.count.xc_str());
      }
    }
  }
  return true;
}
