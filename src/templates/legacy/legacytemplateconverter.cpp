#include "legacytemplateconverter.h"

#include <xercesc/dom/DOM.hpp>

#include "chartbase.h"
#include "legacyconversion.h"
#include "legacysteps.h"
#include "xmlwriter.h"

using namespace xercesc;

namespace {

using namespace legacysteps;

// In the order in which the commands are to run.
constexpr void (*steps[])(LegacyConversion&) = {
    convertFrames,              // frame with a location: addFrame
    convertReferenceLines,      // guide of type line: addReferenceLine
    convertAnnotations,         // guide of type point: addAnchoredAnnotation
    convertFitLines,            // smooth and region statistics of lines: addFitLine
    convertNormalLine,          // distribution statistic: addHistogramNormalLine
    convertInterpolation,       // interpolation in a line's style: addInterpolationLine
    convertDerivedAxes,         // axis with a transform: addDerivedAxis
    convertBarEffects,          // transform of bars with depth: addBarEffects
    convertPieEffects,          // pie with depth: addPieEffects
    convertShadow,              // style with a shadow: addShadow
    convertDataLabels,          // labels of outliers: addDataLabels
    convertAxisScale,           // scale of a dimension: setAxisScale
    convertAxisInterval,        // interval of a domain: setAxisInterval
    convertAxisMargin,          // margins of a dimension: setAxisMargin
    convertAxisOpposite,        // axis on the other side: setAxisOpposite
    convertAxisStyle,           // styles of an axis: setAxisStyle
    convertMajorTicks,          // majorticks: setAxisMajorTicks
    convertMinorTicks,          // minorticks: setAxisMinorTicks
    convertScaleByFraction,     // fraction of stacked intervals: setScaleByFraction
    convertClusterWidth,        // gap of a facet variable: setClusterWidth
    convertCollapse,            // aggregatesmall: setCollapse
    convertTickLabelAngle,      // labelangle of majorticks: setTickLabelAngle
    convertTickLabelFrequency,  // labelFrequency of majorticks: setTickLabelFrequency
    convertHistogramBinning,    // histogram statistic: setHistogramBinning
    convertHiddenFrames,        // hidden style of a frame: hideFrame
    convertBackPlane,           // guide of type plane: setBackPlane
    convertContainerStyle,      // the container style: setStyle
    convertStyleCycles,         // the lists of styles: setStyleCycle
    convertScatterplotBinning,  // binned points: setScatterplotBinning
};

// The schema's name marks the template as one of today's language.
constexpr XMLCh schemaLocation[] = u"" CHARTXML_HOST "/tavo/visualization " CHARTXML_HOST
                                   "/tavo/visualization/grafo-template-1.0.xsd";

// For a derived class's use of what ChartBase makes documents with.
struct Documents : ChartBase {
  static DOMDocument* newTemplate() {
    return newDocument(_template, {{_schemaDefaultNSName, _schemaDatabLocationValue},
                                   {_schemaInstanceName, _schemaInstanceValue},
                                   {_schemaLocationName, schemaLocation}});
  }
};

}  // namespace

void LegacyTemplateConverter::Release::operator()(DOMDocument* document) const {
  document->release();
}

LegacyTemplateConverter::LegacyTemplateConverter(DOMDocument* oldDocument)
    : oldDocument_(oldDocument), newDocument_(Documents::newTemplate()) {}

LegacyTemplateConverter::~LegacyTemplateConverter() = default;

std::string LegacyTemplateConverter::convert() {
  static unsigned long counter = 1;
  if (!newDocument_) return {};
  if (oldDocument_) {
    LegacyConversion conversion(*oldDocument_, *newDocument_);
    for (const auto& step : steps) step(conversion);
    for (LegacyConversion::LeftOut& each : conversion.leftOut()) {
      leftOut_.push_back({each.element, std::move(each.attribute)});
    }
    commandCount_ = newDocument_->getDocumentElement()->getChildElementCount();
  }
  std::string text = xmlText(*newDocument_, true);
  ChartBase::printString(text, "template_converted_", ".sgt", counter++,
                         ChartBase::PRINT_TEMPLATE_CONVERTED);
  return text;
}
