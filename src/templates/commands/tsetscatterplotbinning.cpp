// setScatterplotBinning size method binCount binWidth binStart location gridType low high, with
// children parameter, legendStyle, legendFrameStyle, legendLabelStyle and label: bins the points
// and lines, less smooth ones, of all graphs anew, and shows how many cases a point's bin holds by
// colour, or by size where the point has none yet, with a legend. A count goes before a width. What
// a variable of x doesn't lead to stays without. Another run sets the colours anew.
#include <algorithm>
#include <optional>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLChar.hpp>

#include "binlegends.h"
#include "commands.h"
#include "plxaesthetics.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxstatistics.h"
#include "plxstyle.h"
#include "plxuni.h"
#include "plxvariables.h"
#include "statedvalues.h"
#include "templatexml.h"

using namespace xercesc;
using namespace templatexml;
using stated::Type;

namespace {

struct Parameters {
  bool sizeByCount = false;
  PlXBinStatistic::ENUM_method method = PlXBinStatistic::method_response;
  ChartString count, width, start;
  ChartString location, gridType;
  ChartString smallest, largest;    // sizes
  std::optional<double> low, high;  // components of colours
  BinLegends::Looks looks;
};

bool isOneOf(const XMLCh* text, const XMLCh* one, const XMLCh* other) {
  return is(text, one) || is(text, other);
}

// Of several children of a kind the last counts.
void readChild(const DOMElement& child, Parameters& parameters) {
  const XMLCh* tag = child.getNodeName();
  BinLegends::Looks& looks = parameters.looks;
  if (is(tag, BaseTemplate::_legendStyle)) looks.legend = firstDescendant(&child, PlXUni::_style);
  if (is(tag, BaseTemplate::_legendFrameStyle)) {
    looks.frames = firstDescendant(&child, PlXUni::_style);
  }
  if (is(tag, BaseTemplate::_legendLabelStyle)) {
    looks.texts = firstDescendant(&child, PlXUni::_style);
  }
  if (is(tag, PlXUni::_label)) looks.label = &child;
  if (!is(tag, PlXUni::_parameter)) return;
  const XMLCh* name = child.getAttribute(PlXUni::_name);
  const XMLCh* value = child.getAttribute(PlXUni::_value);
  if (is(name, PlXUni::_grid) && isOneOf(value, PlXUni::_hex, PlXUni::_square)) {
    parameters.gridType = value;
  }
  if (is(name, PlXUni::_location) && isOneOf(value, PlXUni::_grid, PlXUni::_centroid)) {
    parameters.location = value;
  }
}

Parameters readParameters(const BaseTemplate& base, const DOMElement& command) {
  Parameters parameters;
  parameters.sizeByCount = base.getBooleanAttribute(&command, PlXUni::_size, false);
  const XMLCh* method = command.getAttribute(PlXUni::_method);
  if (is(method, u"allDimensions")) parameters.method = PlXBinStatistic::method_allDimensions;
  if (is(method, u"notResponse")) parameters.method = PlXBinStatistic::method_notResponse;
  parameters.count = stated::text(base, &command, PlXBinStatistic::_binCount, Type::Integer);
  parameters.width = stated::text(base, &command, PlXBinStatistic::_binWidth, Type::Number);
  parameters.start = stated::text(base, &command, PlXBinStatistic::_binStart, Type::Number);
  parameters.location = command.getAttribute(PlXUni::_location);
  parameters.gridType = command.getAttribute(PlXUni::_gridType);
  if (parameters.sizeByCount) {
    parameters.smallest = stated::text(base, &command, PlXUni::_low, Type::Length);
    parameters.largest = stated::text(base, &command, PlXUni::_high, Type::Length);
  } else {
    parameters.low = stated::number(base, &command, PlXUni::_low);
    parameters.high = stated::number(base, &command, PlXUni::_high);
  }
  for (const DOMElement* child = firstElement(&command); child; child = nextElement(child)) {
    readChild(*child, parameters);
  }
  return parameters;
}

// The longest start of an expression that is a name, at least one sign short of the whole: the
// first variable of "a/b".
ChartString firstName(const ChartString& expression) {
  const std::u16string_view text = expression.view();
  std::size_t length = 0;
  while (length + 1 < text.size() && (length == 0 ? XMLChar1_0::isFirstNCNameChar(text[0])
                                                  : XMLChar1_0::isNCNameChar(text[length]))) {
    ++length;
  }
  return ChartString(text.substr(0, length));
}

PlXSourceVariable* binnedVariable(const CTElementType& element) {
  const CTCoordinate* x = element.getX();
  if (!x) return nullptr;
  if (PlXSourceVariable* variable = x->getSourceVariable()) return variable;
  const PlXExpressionVariable* expression = x->getExpressionVariable();
  if (!expression) return nullptr;
  const ChartString name = firstName(expression->getExpression());
  return dynamic_cast<PlXSourceVariable*>(element.objectOf(element.getElementById(name.xc_str())));
}

bool isDarkName(const ChartString& color) {
  static constexpr std::u16string_view names[] = {
      u"black",           u"blue",         u"blueviolet",  u"brown",         u"chocolate",
      u"crimson",         u"darkblue",     u"darkcyan",    u"darkgreen",     u"darkmagenta",
      u"darkolivegreen",  u"darkorchid",   u"darkred",     u"darkslateblue", u"darkslategray",
      u"darkslategrey",   u"darkviolet",   u"deeppink",    u"dimgray",       u"dimgrey",
      u"dodgerblue",      u"firebrick",    u"forestgreen", u"fuchsia",       u"green",
      u"indianred",       u"indigo",       u"magenta",     u"maroon",        u"mediumblue",
      u"mediumvioletred", u"midnightblue", u"navy",        u"olive",         u"olivedrab",
      u"orangered",       u"purple",       u"red",         u"royalblue",     u"saddlebrown",
      u"seagreen",        u"sienna",       u"slateblue",   u"slategray",     u"slategrey",
      u"steelblue",       u"teal",
  };
  std::u16string small(color.view());
  for (char16_t& unit : small) {
    if (unit >= u'A' && unit <= u'Z') unit += u'a' - u'A';
  }
  return std::ranges::binary_search(names, std::u16string_view(small));
}

// The value of a hexadecimal digit; -1 for any other sign.
int digitOf(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  const int letter = unit | 0x20;
  return letter >= u'a' && letter <= u'f' ? letter - u'a' + 10 : -1;
}

// Dark colours are told from each other by their brightness, others by their saturation.
bool isDark(const ChartString& color) {
  const std::u16string_view text = color.view();
  if (!text.starts_with(u'#')) return isDarkName(color);
  // What is no number, or missing, counts 0.
  const auto pair = [&](std::size_t at) {
    const int high = at < text.size() ? digitOf(text[at]) : -1;
    const int low = at + 1 < text.size() ? digitOf(text[at + 1]) : -1;
    return high < 0 || low < 0 ? 0 : high * 16 + low;
  };
  constexpr double half = 127.5;
  return 0.3 * pair(1) + 0.55 * pair(3) + 0.15 * pair(5) < half;
}

bool isNoColor(const ChartString& color) {
  return color.empty() || color.equals(PlXStyle::_transparent);
}

ChartString firstOf(std::initializer_list<ChartString> texts) {
  for (const ChartString& text : texts) {
    if (!text.empty()) return text;
  }
  return {};
}

// One run of the command.
class Binning {
 public:
  Binning(BaseTemplate& base, const Parameters& parameters)
      : base_(base), given_(parameters), legends_(base, parameters.looks) {}

  void edit(PlXGraph& graph) {
    const bool isTrue3D = base_.isChartTrue3D(graph);
    const bool hasY = !base_.getDimensionsByRole(graph, PlXUni::_y).empty();
    std::vector<CTElementType*> elements;
    BaseTemplate::getAllElements(graph, elements);
    for (std::size_t position = 0; position < elements.size(); ++position) {
      CTElementType& element = *elements[position];
      auto* point = dynamic_cast<PlXPoint*>(&element);
      const bool isPlainLine =
          dynamic_cast<PlXLine*>(&element) && element.getSmoothStatistics().empty();
      if (!point && !isPlainLine) continue;
      setBins(element, isTrue3D, hasY);
      PlXSourceVariable* variable = hasY && point ? binnedVariable(*point) : nullptr;
      if (!variable) continue;
      if (given_.sizeByCount) {
        showBySize(*point, *variable, graph, position);
      } else {
        showByColor(*point, *variable, graph, position);
      }
    }
  }

 private:
  void setBins(CTElementType& element, bool isTrue3D, bool hasY) const {
    element.removeBinStatistics();
    PlXBinStatistic& bins = *element.addBinStatistic();
    // Hexagons don't fill space.
    if (given_.gridType.equals(PlXUni::_hex) && !isTrue3D) {
      bins.setGridType(PlXBinStatistic::gridType_hex);
    }
    if (given_.gridType.equals(PlXUni::_dot)) bins.setGridType(PlXBinStatistic::gridType_dot);
    if (given_.gridType.equals(PlXUni::_square)) {
      bins.setGridType(PlXBinStatistic::gridType_square);
    }
    if (given_.location.equals(PlXUni::_grid)) bins.setLocation(PlXBinStatistic::location_grid);
    if (given_.location.equals(PlXUni::_centroid)) {
      bins.setLocation(PlXBinStatistic::location_centroid);
    }
    if (!given_.count.empty()) {
      bins.setBinCount(given_.count.xc_str());
    } else if (!given_.width.empty()) {
      bins.setBinWidth(given_.width.xc_str());
    }
    if (!given_.start.empty()) bins.setBinStart(given_.start.xc_str());
    if (hasY) bins.setMethod(given_.method);
  }

  void showBySize(PlXPoint& point, PlXSourceVariable& variable, PlXGraph& graph,
                  std::size_t position) {
    if (!point.getSizes().empty()) return;
    PlXSize& size = *point.addSize();
    size.setId(base_.CreateUniqueId(PlXUni::_size).xc_str());
    countBy(size, variable);
    ChartString value, least, most;
    PlXStyle* style = point.getStyle();
    if (style) style->getSize(value, least, most);
    size.setLow(firstOf({given_.smallest, least, u"1pt"}).xc_str());
    size.setHigh(firstOf({given_.largest, most, value, u"5pt"}).xc_str());
    if (style) {
      const ChartString outline(style->getColor2());
      if (!point.getColors().empty()) {
        style->setColor(PlXStyle::_transparent);
      } else if (!outline.empty()) {
        style->setColor(outline.xc_str());
      }
    }
    legends_.show(size, graph, position);
  }

  void showByColor(PlXPoint& point, PlXSourceVariable& variable, PlXGraph& graph,
                   std::size_t position) {
    PlXStyle& style = base_.styleOf(point);
    const std::vector<PlXColor*> colors = point.getColors();
    ChartString color(style.getColor());
    if (colors.empty()) {
      if (isNoColor(color)) color = style.getColor2();
      if (isNoColor(color)) color = PlXStyle::_black;
      style.setColor(color.xc_str());
    }
    for (PlXColor* each : colors) each->setAffect(PlXColor::affect_both);

    PlXColorComponent& component = componentOf(point, position);
    countBy(component, variable);
    constexpr double usualLow = 0.1;
    constexpr double usualHigh = 0.9;
    const double low = given_.low.value_or(usualLow);
    const double high = given_.high.value_or(usualHigh);
    const auto [least, most] = std::minmax(low, high);
    const bool isBrightness = !colors.empty() || isDark(color);
    component.setType(isBrightness ? PlXColorComponent::type_brightness
                                   : PlXColorComponent::type_saturation);
    component.setLow(isBrightness ? most : least);
    component.setHigh(isBrightness ? least : most);
    component.setAffect(PlXColorComponent::affect_main);
    legends_.show(component, graph, position);
    if (colors.empty()) {
      base_.changeColor2ToColor(point, true);
    } else {
      style.setColor(PlXStyle::_black);
    }
  }

  // That of an earlier run, or a new one.
  PlXColorComponent& componentOf(PlXPoint& point, std::size_t position) {
    for (PlXColorComponent* component : point.getColorComponents()) {
      if (legends_.shows(*component, position)) return *component;
    }
    PlXColorComponent& component = *point.addColorComponent();
    component.setId(base_.CreateUniqueId(PlXUni::_colorComponent).xc_str());
    return component;
  }

  static void countBy(CTAesthetic& aesthetic, PlXSourceVariable& variable) {
    aesthetic.setVariable(variable);
    PlXSummaryStatistic* statistic = aesthetic.getSummaryStatistic();
    if (!statistic) statistic = aesthetic.addSummaryStatistic();
    statistic->setMethod(PlXSummaryStatistic::method_count);
  }

  BaseTemplate& base_;
  const Parameters& given_;
  BinLegends legends_;
};

}  // namespace

bool TSetScatterplotBinning::ProcessCommand() {
  if (!command) return false;
  const Parameters parameters = readParameters(*this, *command);
  Binning binning(*this, parameters);
  for (PlXGraph* graph : target.getGraphs()) binning.edit(*graph);
  return true;
}
