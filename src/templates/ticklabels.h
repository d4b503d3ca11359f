// What the commands that edit the labels of existing ticks share: which axes they reach.
#ifndef CHARTXML_TICKLABELS_H
#define CHARTXML_TICKLABELS_H

#include <functional>

#include "basetemplate.h"

class PlXFacetLevel;

namespace ticklabels {

// The axes that a command addresses by its attributes role, categorical and derived.
struct Selection {
  ChartString role;
  bool categorical = false;
  bool derived = false;

  explicit Selection(const BaseTemplate& command);
};

// Calls `edit` for the major ticks of every axis that is selected; axes without any are passed
// over. In a scatterplot matrix those are the axes of the facet level of the role. Answers whether
// the last graph has the role; false for a matrix, and for a chart without graphs.
bool edit(const BaseTemplate& queries, const Selection& selection,
          const std::function<void(PlXMajorTicks&)>& edit);

}  // namespace ticklabels

#endif
