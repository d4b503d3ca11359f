// addBarEffects applyToNonBar depth theta distance foreshortening xscale zLocation, with children
// parameter, z (location) and style (number): draws the bars of a flat graph as blocks, in a third
// dimension before three silver planes, with a frame for each bar element. Styles of number 1 to 3
// are those of the planes across x, y and z, all others the frames'. Elements without x or with a
// variable on z, and polar graphs, are passed over. Of the four numbers one that is stated makes a
// new oblique transform. Answers whether there is a block.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "effects.h"
#include "plxcoordinates.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxstyle.h"
#include "plxtransforms.h"
#include "plxuni.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Parameters {
  bool applyToNonBar = false;
  ChartString depth;
  std::optional<double> theta, distance, foreShortening, xscale;
  std::optional<double> zLocation;
};

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  parameters.applyToNonBar = base.getBooleanAttribute(&command, u"applyToNonBar", false);
  parameters.depth = stated::text(base, &command, PlXUni::_depth, stated::Type::Length);
  if (parameters.depth.empty()) parameters.depth = u"100%";
  parameters.theta = stated::numberOrParameter(base, command, PlXUni::_theta);
  parameters.distance = stated::numberOrParameter(base, command, PlXUni::_distance);
  parameters.foreShortening = stated::numberOrParameter(base, command, u"foreshortening");
  parameters.xscale = stated::numberOrParameter(base, command, PlXUni::_xscale);
  parameters.zLocation = effects::zLocation(base, command);
  return parameters;
}

void makeOblique(const PlXGraph& graph, const Parameters& given) {
  if (!given.theta && !given.distance && !given.foreShortening && !given.xscale) return;
  for (PlXCoordinates* block : graph.getCoordinatess()) {
    block->removeObliqueTransforms();
    PlXObliqueTransform& oblique = *block->addObliqueTransform();
    if (given.theta) oblique.setTheta(*given.theta);
    if (given.distance) oblique.setDistance(*given.distance);
    if (given.foreShortening) oblique.setForeShortening(*given.foreShortening);
    if (given.xscale) oblique.setXscale(*given.xscale);
  }
}

// The frames and planes around blocks.
class Walls {
 public:
  Walls(BaseTemplate& base, const DOMElement& command) : base_(base) {
    forDescendants(&command, PlXUni::_style, [&](const DOMElement* style) {
      looks_.push_back(std::make_unique<Look>(base, style));
    });
  }

  void addFrame(PlXGraph& graph) const {
    PlXStyle& style = base_.styleOf(*graph.addFrameGuide());
    style.setColor(PlXStyle::_black);
    import(0, style);
  }

  void makePlanes(PlXGraph& graph) const {
    graph.removePlaneGuides();
    for (const auto normal :
         {PlXPlaneGuide::normal_x, PlXPlaneGuide::normal_y, PlXPlaneGuide::normal_z}) {
      PlXPlaneGuide& plane = *graph.addPlaneGuide();
      plane.setNormal(normal);
      PlXStyle& style = base_.styleOf(plane);
      style.setColor(u"silver");
      import(normal + 1, style);
    }
  }

 private:
  struct Look {
    long number;  // of a plane, from 1; 0 for the frames
    BaseTemplate::StyleImport style;

    Look(BaseTemplate& base, const DOMElement* element)
        : number(stated::selection(base, element, PlXUni::_number)), style(base, element) {
      if (number < 1 || number > 3) number = 0;
    }
  };

  void import(long number, PlXStyle& style) const {
    for (const auto& look : looks_) {
      if (look->number == number) look->style.onto(style);
    }
  }

  BaseTemplate& base_;
  std::vector<std::unique_ptr<Look>> looks_;
};

bool isFlat(const CTElementType& element) {
  const CTCoordinate* depth = element.getZ();
  return element.getX() && !(depth && depth->getVariable());
}

}  // namespace

bool TAddBarEffects::ProcessCommand() {
  if (!command) return false;
  const Parameters given = readParameters(*this, *command);
  const Walls walls(*this, *command);
  bool isAny = false;
  for (PlXGraph* graph : target.getGraphs()) {
    if (isGraphPolar(*graph)) continue;
    std::vector<CTElementType*> blocks;
    getAllElements(*graph, blocks);
    std::erase_if(blocks, [&](const CTElementType* element) {
      const bool isBar = dynamic_cast<const PlXInterval*>(element) != nullptr;
      return !(isBar || given.applyToNonBar) || !isFlat(*element);
    });
    if (blocks.empty()) continue;
    isAny = true;
    addZDimension(*graph);
    makeOblique(*graph, given);
    for (CTElementType* block : blocks) {
      PlXStyle& style =
          ensuredStyle(*block, &CTElementType::getStyle, &CTElementType::setStyle, block->getId());
      style.setDepth(given.depth.xc_str());
      if (given.zLocation) block->setZLocation(*given.zLocation);
      walls.addFrame(*graph);
    }
    walls.makePlanes(*graph);
  }
  return isAny;
}
