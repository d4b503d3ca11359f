// The steps that convert an older template, in their order. Each looks for one kind of setting
// wherever it stands in the older document, and writes the commands that say the same. A command
// that couldn't do anything isn't written.
#ifndef CHARTXML_LEGACYSTEPS_H
#define CHARTXML_LEGACYSTEPS_H

class LegacyConversion;

namespace legacysteps {

void convertFrames(LegacyConversion& conversion);
void convertReferenceLines(LegacyConversion& conversion);
void convertAnnotations(LegacyConversion& conversion);
void convertFitLines(LegacyConversion& conversion);
void convertNormalLine(LegacyConversion& conversion);
void convertInterpolation(LegacyConversion& conversion);
void convertDerivedAxes(LegacyConversion& conversion);
void convertBarEffects(LegacyConversion& conversion);
void convertPieEffects(LegacyConversion& conversion);
void convertShadow(LegacyConversion& conversion);
void convertDataLabels(LegacyConversion& conversion);
void convertAxisScale(LegacyConversion& conversion);
void convertAxisInterval(LegacyConversion& conversion);
void convertAxisMargin(LegacyConversion& conversion);
void convertAxisOpposite(LegacyConversion& conversion);
void convertAxisStyle(LegacyConversion& conversion);
void convertMajorTicks(LegacyConversion& conversion);
void convertMinorTicks(LegacyConversion& conversion);
void convertScaleByFraction(LegacyConversion& conversion);
void convertClusterWidth(LegacyConversion& conversion);
void convertCollapse(LegacyConversion& conversion);
void convertTickLabelAngle(LegacyConversion& conversion);
void convertTickLabelFrequency(LegacyConversion& conversion);
void convertHistogramBinning(LegacyConversion& conversion);
void convertHiddenFrames(LegacyConversion& conversion);
void convertBackPlane(LegacyConversion& conversion);
void convertContainerStyle(LegacyConversion& conversion);
void convertStyleCycles(LegacyConversion& conversion);
void convertScatterplotBinning(LegacyConversion& conversion);

}  // namespace legacysteps

#endif
