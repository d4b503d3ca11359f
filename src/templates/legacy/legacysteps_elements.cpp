// The steps for elements and what shows their data: fits, effects, labels, bins.
#include <unordered_set>

#include <xercesc/dom/DOM.hpp>

#include "basetemplate.h"
#include "chartbase.h"
#include "chartelement.h"
#include "chartstylevalue.h"
#include "legacyconversion.h"
#include "legacysteps.h"
#include "templatexml.h"

using namespace xercesc;
using templatexml::is;

namespace {

constexpr XMLCh coordinateTransform[] = u"coordinatetransform";
constexpr XMLCh styleBy[] = u"styleby";
constexpr XMLCh primary[] = u"primary";
constexpr XMLCh distance[] = u"distance";

bool hasType(const DOMElement* element, const XMLCh* type) {
  return is(element->getAttribute(PlXUni::_type), type);
}

bool hasMethod(const DOMElement* statistic, const XMLCh* method) {
  return is(statistic->getAttribute(PlXUni::_method), method);
}

ChartStyleValue valueOf(const DOMElement* style) {
  return ChartStyleValue(style ? style->getAttribute(PlXUni::_value) : nullptr);
}

// The type of fit that a parameter says; null for one that says none.
const XMLCh* fitTypeOf(const XMLCh* name, const XMLCh* value) {
  static constexpr std::pair<const XMLCh*, const XMLCh*> degrees[] = {{u"0", PlXUni::_mean},
                                                                      {u"1", PlXUni::_linear},
                                                                      {u"2", PlXUni::_quadratic},
                                                                      {u"3", PlXUni::_cubic}};
  if (is(name, u"model") && is(value, PlXUni::_loess)) return PlXUni::_loess;
  if (!is(name, PlXUni::_degree)) return nullptr;
  for (const auto& [degree, type] : degrees) {
    if (is(value, degree)) return type;
  }
  return nullptr;
}

// What the parameters of a line's element say of its fit: the last of a name counts, but a mean
// is one whatever degree follows, unless loess does.
void convertFitParameters(LegacyConversion& conversion, const DOMElement* element,
                          DOMElement& command) {
  bool isMean = false;
  const auto read = [&](const DOMElement* parameter) {
    conversion.read(parameter, PlXUni::_name);
    conversion.read(parameter, PlXUni::_value);
  };
  // They make an interval together.
  const DOMElement* alpha = nullptr;
  const DOMElement* predictIndividuals = nullptr;
  for (const DOMElement* parameter : conversion.below(element, PlXUni::_parameter)) {
    const XMLCh* name = parameter->getAttribute(PlXUni::_name);
    const XMLCh* value = parameter->getAttribute(PlXUni::_value);
    if (const XMLCh* type = fitTypeOf(name, value)) {
      isMean = is(type, PlXUni::_mean) || (isMean && !is(type, PlXUni::_loess));
      conversion.set(command, PlXUni::_type, isMean ? PlXUni::_mean : type);
    } else if (is(name, PlXUni::_proportion) || is(name, PlXUni::_kernel)) {
      conversion.set(command, name, value);
    } else {
      if (is(name, PlXUni::_alpha)) alpha = parameter;
      if (is(name, PlXUni::_predictIndividuals)) predictIndividuals = parameter;
      continue;
    }
    read(parameter);
  }
  if (!alpha || !predictIndividuals) return;
  read(alpha);
  read(predictIndividuals);
  DOMElement& interval = conversion.add(command, u"confidenceInterval");
  conversion.set(interval, PlXUni::_alpha, alpha->getAttribute(PlXUni::_value));
  conversion.set(interval, PlXUni::_predictIndividuals,
                 predictIndividuals->getAttribute(PlXUni::_value));
}

// The parameters of the transforms, and the place on the third axis.
void convertDepth(LegacyConversion& conversion, ElementIndex::Elements transforms,
                  DOMElement& command) {
  for (const DOMElement* transform : transforms) {
    conversion.read(transform, PlXUni::_id);
    for (const DOMElement* parameter : conversion.below(transform, PlXUni::_parameter)) {
      DOMElement* made = conversion.import(*parameter, command);
      if (is(made->getAttribute(PlXUni::_name), distance)) conversion.growDistance(*made);
    }
  }
  const DOMElement* z = conversion.named(PlXUni::_z).front();
  if (!*z->getAttribute(PlXUni::_location)) return;
  conversion.copy(*z, PlXUni::_location, conversion.add(command, PlXUni::_z));
}

bool isOutlierLabeling(LegacyConversion& conversion, const DOMElement* element) {
  std::vector<const DOMElement*> outliers;
  std::vector<const DOMElement*> extremes;
  for (const DOMElement* statistic : conversion.below(element, u"statistic")) {
    if (hasMethod(statistic, u"tukeyOutliers")) outliers.push_back(statistic);
    if (hasMethod(statistic, u"tukeyExtremes")) extremes.push_back(statistic);
  }
  if (outliers.empty() || extremes.empty()) return false;
  for (const auto* statistics : {&outliers, &extremes}) {
    for (const DOMElement* each : *statistics) conversion.read(each, PlXUni::_method);
  }
  return true;
}

// The style of labels, less where they lie: the command says that itself, but for inside or
// outside.
void convertLabelStyle(LegacyConversion& conversion, const DOMElement* labeling,
                       DOMElement& command) {
  if (!conversion.copyStyle(conversion.resolve(labeling, PlXUni::_style), command)) return;
  DOMElement* style = command.getLastElementChild();
  ChartStyleValue value = valueOf(style);
  const std::pair<const XMLCh*, ChartString> places[] = {
      {ChartStyleValue::_label_location_x, value.labelLocationX},
      {ChartStyleValue::_label_location_y, value.labelLocationY}};
  ChartString position;
  for (const auto& [key, place] : places) {
    if (place.empty()) continue;
    if (!position.empty()) position.append(u";");
    position.append(key).append(u":").append(place);
  }
  if (value.visibility.equals(u"hidden")) conversion.setFlag(command, u"hidden", true);
  value.labelLocationX.clear();
  value.labelLocationY.clear();
  if (style->hasAttribute(PlXUni::_value)) {
    conversion.set(*style, PlXUni::_value, value.getValue().xc_str());
  }
  if (!position.empty()) conversion.set(command, PlXUni::_position, position.xc_str());
}

// Of the first position that is binned.
const DOMElement* binStatistic(const DOMElement* element) {
  for (const DOMElement* position = firstElement(element); position;
       position = nextElement(position)) {
    if (!is(position->getNodeName(), PlXUni::_position)) continue;
    for (const DOMElement* child = firstElement(position); child; child = nextElement(child)) {
      if (is(child->getNodeName(), u"statistic") && hasMethod(child, u"bin")) return child;
    }
  }
  return nullptr;
}

}  // namespace

// smooth and region statistics of lines: addFitLine
void legacysteps::convertFitLines(LegacyConversion& conversion) {
  for (const DOMElement* element : conversion.named(PlXUni::_element)) {
    if (!hasType(element, PlXUni::_line)) continue;
    for (const DOMElement* statistic : conversion.below(element, u"statistic")) {
      if (!hasMethod(statistic, u"smooth") && !hasMethod(statistic, u"region")) continue;
      conversion.read(statistic, PlXUni::_method);
      DOMElement& command = conversion.addCommand(u"addFitLine");
      conversion.setFlag(command, primary, true);
      const DOMElement* groups = conversion.firstBelow(element, styleBy);
      if (groups) conversion.read(groups, PlXUni::_id);
      conversion.set(command, PlXUni::_target, groups ? u"subgroup" : u"pair");
      conversion.set(command, PlXUni::_type, PlXUni::_linear);
      convertFitParameters(conversion, element, command);
      conversion.copyStyle(conversion.resolve(element, PlXUni::_style), command);
    }
  }
}

// distribution statistic: addHistogramNormalLine
void legacysteps::convertNormalLine(LegacyConversion& conversion) {
  const DOMElement* statistic =
      conversion.firstWith(u"statistic", PlXUni::_method, PlXUni::_distribution);
  if (!statistic) return;
  conversion.read(statistic, PlXUni::_method);
  DOMElement& command = conversion.addCommand(u"addHistogramNormalLine");
  const DOMNode* node = statistic->getParentNode();
  node = node ? node->getParentNode() : nullptr;
  if (!node || node->getNodeType() != DOMNode::ELEMENT_NODE) return;
  const auto* element = static_cast<const DOMElement*>(node);
  conversion.copyStyle(conversion.resolve(element, PlXUni::_style), command);
}

// interpolation in the style of a line: addInterpolationLine
void legacysteps::convertInterpolation(LegacyConversion& conversion) {
  std::unordered_set<std::u16string_view> lineStyles;
  for (const DOMElement* element : conversion.named(PlXUni::_element)) {
    const XMLCh* style = element->getAttribute(PlXUni::_style);
    if (*style && hasType(element, PlXUni::_line)) lineStyles.insert(style);
  }
  for (const DOMElement* old : conversion.named(PlXUni::_interpolation)) {
    const ChartElement style(old->getParentNode());
    const XMLCh* id = style.getAttributeValue(PlXUni::_id);
    if (!id || !lineStyles.contains(id)) continue;
    DOMElement& command = conversion.addCommand(u"addInterpolationLine");
    DOMElement& made = conversion.add(command, PlXUni::_interpolation);
    conversion.setFlag(made, primary, true);
    conversion.copy(*old, PlXUni::_type, made);
    conversion.copy(*old, PlXUni::_missingRepresentation, made);
    if (const DOMElement* parameter = conversion.firstBelow(old, PlXUni::_parameter)) {
      conversion.set(made, u"pointPosition", conversion.read(parameter, PlXUni::_value));
    }
  }
}

// transform of a chart of bars with depth: addBarEffects
void legacysteps::convertBarEffects(LegacyConversion& conversion) {
  const ElementIndex::Elements transforms = conversion.named(coordinateTransform);
  if (!conversion.isThreeDimensional() || conversion.chartType() != 0 || transforms.empty() ||
      conversion.named(PlXUni::_z).empty()) {
    return;
  }
  convertDepth(conversion, transforms.first(1), conversion.addCommand(u"addBarEffects"));
}

// chart of a pie with depth: addPieEffects
void legacysteps::convertPieEffects(LegacyConversion& conversion) {
  constexpr int pie = 6;
  if (!conversion.isThreeDimensional() || conversion.chartType() != pie) return;
  DOMElement& command = conversion.addCommand(u"addPieEffects");
  const ElementIndex::Elements transforms = conversion.named(coordinateTransform);
  if (!transforms.empty() && !conversion.named(PlXUni::_z).empty()) {
    convertDepth(conversion, transforms, command);
  }
  const ElementIndex::Elements elements = conversion.named(PlXUni::_element);
  const DOMElement* style = elements.empty()
                                ? nullptr
                                : conversion.withId(elements.front()->getAttribute(PlXUni::_style));
  const ChartString depth = valueOf(style).depth;
  if (depth.empty()) return;
  conversion.read(conversion.resolve(elements.front(), PlXUni::_style), PlXUni::_value);
  conversion.set(command, PlXUni::_depth, depth.xc_str());
}

// style with a shadow: addShadow, which needs both offsets
void legacysteps::convertShadow(LegacyConversion& conversion) {
  for (const DOMElement* style : conversion.named(PlXUni::_style)) {
    const ChartStyleValue value = valueOf(style);
    if (value.shadowDx.empty() || value.shadowDy.empty()) continue;
    conversion.read(style, PlXUni::_value);
    DOMElement& command = conversion.addCommand(u"addShadow");
    conversion.set(command, PlXUni::_shadow_dx, value.shadowDx.xc_str());
    conversion.set(command, PlXUni::_shadow_dy, value.shadowDy.xc_str());
    return;
  }
}

// labels of the outliers of box plots: addDataLabels, one for the whole chart, in the style that
// the last element gives its labels
void legacysteps::convertDataLabels(LegacyConversion& conversion) {
  const ElementIndex::Elements elements = conversion.named(PlXUni::_element);
  bool isWanted = false;
  bool colorByMarker = false;
  for (const DOMElement* element : elements) {
    const DOMElement* labeling = ChartBase::getChildByTagName(element, PlXUni::_labeling);
    if (!labeling || !isOutlierLabeling(conversion, element)) continue;
    isWanted = true;
    conversion.read(labeling, PlXUni::_id);
    const DOMElement* colors = ChartBase::getChildByTagName(labeling, styleBy);
    if (!colors) continue;
    conversion.read(colors, PlXUni::_id);
    colorByMarker = true;
    break;
  }
  if (!isWanted) return;
  DOMElement& command = conversion.addCommand(u"addDataLabels");
  if (colorByMarker) conversion.setFlag(command, u"colorByMarker", true);
  const DOMElement* labeling = ChartBase::getChildByTagName(elements.back(), PlXUni::_labeling);
  if (labeling) convertLabelStyle(conversion, labeling, command);
}

// fraction statistic of stacked intervals: setScaleByFraction
void legacysteps::convertScaleByFraction(LegacyConversion& conversion) {
  for (const DOMElement* element : conversion.named(PlXUni::_element)) {
    if (!hasType(element, PlXUni::_interval) ||
        !is(element->getAttribute(PlXUni::_positionModifier), PlXUni::_stack)) {
      continue;
    }
    for (const DOMElement* statistic : conversion.below(element, u"statistic")) {
      if (!hasMethod(statistic, PlXUni::_fraction)) continue;
      conversion.read(element, PlXUni::_positionModifier);
      conversion.read(statistic, PlXUni::_method);
      conversion.addCommand(u"setScaleByFraction");
    }
  }
}

// gap of the first facet variable: setClusterWidth
void legacysteps::convertClusterWidth(LegacyConversion& conversion) {
  const ElementIndex::Elements facets = conversion.named(u"coordinatefacet");
  const DOMElement* variable =
      facets.empty() ? nullptr : conversion.firstBelow(facets.front(), u"facetvariable");
  if (!variable || !*variable->getAttribute(PlXUni::_gap)) return;
  conversion.copy(*variable, PlXUni::_gap, conversion.addCommand(u"setClusterWidth"));
}

// the first aggregatesmall: setCollapse
void legacysteps::convertCollapse(LegacyConversion& conversion) {
  const ElementIndex::Elements all = conversion.named(u"aggregatesmall");
  if (all.empty()) return;
  const DOMElement* old = all.front();
  DOMElement& command = conversion.addCommand(u"setCollapse");
  conversion.set(command, PlXUni::_role, PlXUni::_x);
  conversion.set(command, PlXUni::_minFraction, conversion.read(old, PlXUni::_minFraction));
  const XMLCh* category = conversion.read(old, PlXUni::_category);
  const ElementIndex::Elements relabels = conversion.below(old->getParentNode(), PlXUni::_relabel);
  for (auto each = relabels.rbegin(); each != relabels.rend(); ++each) {
    const DOMElement* relabel = *each;
    if (!is(relabel->getAttribute(PlXUni::_from), category)) continue;
    conversion.read(relabel, PlXUni::_from);
    category = conversion.read(relabel, PlXUni::_to);
    break;
  }
  conversion.set(command, u"categoryName", category);
}

// histogram statistics: setHistogramBinning
void legacysteps::convertHistogramBinning(LegacyConversion& conversion) {
  for (const DOMElement* statistic : conversion.named(u"statistic")) {
    if (!hasMethod(statistic, u"histogram")) continue;
    conversion.read(statistic, PlXUni::_method);
    conversion.importParameters(*statistic, conversion.addCommand(u"setHistogramBinning"));
  }
}

// binned positions of points: setScatterplotBinning
void legacysteps::convertScatterplotBinning(LegacyConversion& conversion) {
  const ElementIndex::Elements elements = conversion.named(PlXUni::_element);
  for (auto each = elements.rbegin(); each != elements.rend(); ++each) {
    const DOMElement* element = *each;
    if (!hasType(element, PlXUni::_point)) continue;
    const DOMElement* statistic = binStatistic(element);
    if (!statistic) continue;
    conversion.read(statistic, PlXUni::_method);
    DOMElement& command = conversion.addCommand(u"setScatterplotBinning");
    conversion.importParameters(*statistic, command);
    const DOMElement* size = conversion.firstBelow(element, PlXUni::_size);
    if (size) conversion.read(size, PlXUni::_id);
    conversion.setFlag(command, PlXUni::_size, size);
  }
}
