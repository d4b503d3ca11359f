// addOriginLine x y z, with children parameter (name, value) and style: a line at the origin of a
// scale, in every graph whose dimension isn't categorical. The first of x, y and z that is stated
// counts, else the first parameter with a value. The chart's extension record names the line, the
// last of several graphs, as originLineX, originLineY or originLineZ. In a scatterplot matrix it
// shows on the diagonal alone.
#include <xercesc/dom/DOM.hpp>

#include "commands.h"
#include "matrixpanels.h"
#include "plxelements.h"
#include "plxextension.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;

namespace {

struct Role {
  const XMLCh* name;
  void (PlXLineGuide::*set)(const XMLCh*);
  const XMLCh* key;  // in the extension record
};

const Role roles[] = {
    {PlXUni::_x, &PlXLineGuide::setX, u"originLineX"},
    {PlXUni::_y, &PlXLineGuide::setY, u"originLineY"},
    {PlXUni::_z, &PlXLineGuide::setZ, u"originLineZ"},
};

struct Parameters {
  const Role* role = nullptr;  // null when no line is asked for
  ChartString value;
};

Parameters readParameters(const DOMElement& command) {
  for (const Role& role : roles) {
    const XMLCh* value = command.getAttribute(role.name);
    if (*value) return {&role, value};
  }
  const DOMElement* first = nullptr;
  forDescendants(&command, PlXUni::_parameter, [&](const DOMElement* parameter) {
    if (!first && *parameter->getAttribute(PlXUni::_value)) first = parameter;
  });
  if (!first) return {};
  for (const Role& role : roles) {
    if (is(first->getAttribute(PlXUni::_name), role.name)) {
      return {&role, first->getAttribute(PlXUni::_value)};
    }
  }
  return {};
}

}  // namespace

bool TAddOriginLine::ProcessCommand() {
  if (!command) return false;
  const auto [role, value] = readParameters(*command);
  if (!role) return false;
  const StyleImport look(*this, firstDescendant(command, PlXUni::_style));
  PlXExtensionVis* record = target.getExtension();
  bool isAdded = false;
  for (PlXGraph* graph : target.getGraphs()) {
    isAdded = !isRoleCategorical(*graph, role->name);
    if (!isAdded) continue;
    PlXLineGuide& line = *graph->addLineGuide();
    line.setId(CreateUniqueId(PlXUni::_lineGuide).xc_str());
    (line.*role->set)(value.xc_str());
    if (!record) record = target.addExtension();
    record->setAttribute(role->key, line.getId());
    look.onto(styleOf(line));
    if (getFirstSPLOMElement(*graph)) {
      matrixpanels::hideWhere(*this, line, matrixpanels::beside);
    }
  }
  return isAdded;
}
