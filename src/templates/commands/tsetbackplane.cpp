// setBackPlane, with children plane (role, style): styles the back planes of a chart with depth, of
// each dimension the first; one that is missing is added. A role other than x and y is z. A plane
// without a style is added all the same.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Plane {
  PlXPlaneGuide::ENUM_normal normal;
  const DOMElement* style;
};

std::vector<Plane> readPlanes(const DOMElement* command) {
  std::vector<Plane> planes;
  forDescendants(command, u"plane", [&](const DOMElement* element) {
    const XMLCh* role = element->getAttribute(PlXUni::_role);
    planes.push_back({is(role, PlXUni::_x)   ? PlXPlaneGuide::normal_x
                      : is(role, PlXUni::_y) ? PlXPlaneGuide::normal_y
                                             : PlXPlaneGuide::normal_z,
                      firstDescendant(element, PlXUni::_style)});
  });
  return planes;
}

}  // namespace

bool TSetBackPlane::ProcessCommand() {
  const std::vector<Plane> planes = readPlanes(command);
  if (planes.empty()) return false;
  for (PlXGraph* graph : target.getGraphs()) {
    if (!isChartTrue3D(*graph)) continue;
    PlXPlaneGuide* guides[3] = {};
    for (PlXPlaneGuide* guide : graph->getPlaneGuides()) {
      PlXPlaneGuide*& first = guides[guide->getNormal()];
      if (!first) first = guide;
    }
    for (const Plane& plane : planes) {
      PlXPlaneGuide*& guide = guides[plane.normal];
      if (!guide) {
        guide = graph->addPlaneGuide();
        guide->setNormal(plane.normal);
      }
      importStyle(plane.style, styleOf(*guide));
    }
  }
  return true;
}
