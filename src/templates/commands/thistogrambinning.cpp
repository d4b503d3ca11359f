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
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;
using stated::Type;

namespace {

struct Bins {
  ChartString start;
  ChartString width;
  ChartString count;
};

Bins readBins(const BaseTemplate& base, const DOMElement& command) {
  Bins bins;
  struct Row {
    ChartString& text;
    const XMLCh* parameter;
    const XMLCh* attribute;
    Type type;
  };
  const Row rows[] = {
      {bins.start, u"start", PlXBinStatistic::_binStart, Type::Number},
      {bins.width, u"bin-width", PlXBinStatistic::_binWidth, Type::Number},
      {bins.count, u"bin-count", PlXBinStatistic::_binCount, Type::Integer},
  };
  const auto read = [&](const Row& row, const DOMElement& element, const XMLCh* name) {
    const ChartString value = stated::text(base, &element, name, row.type);
    if (!value.empty()) row.text = value;
  };
  forDescendants(&command, PlXUni::_parameter, [&](const DOMElement* parameter) {
    for (const Row& row : rows) {
      if (!is(parameter->getAttribute(PlXUni::_name), row.parameter)) continue;
      read(row, *parameter, PlXUni::_value);
    }
  });
  for (const Row& row : rows) read(row, command, row.attribute);
  return bins;
}

}  // namespace

bool THistogramBinning::ProcessCommand() {
  if (!command) return false;
  const Bins bins = readBins(*this, *command);
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
