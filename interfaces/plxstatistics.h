// The statistics that make the items of an element from the rows of data: summary, smooth, region,
// distribution, bin and link statistics, and those that a chart carries but that are rarely edited.
#ifndef CHARTXML_PLXSTATISTICS_H
#define CHARTXML_PLXSTATISTICS_H

#include "plxbaseelement.h"

class CTVariableType;

// One value for the rows of an item. An element, an aesthetic or a labeling may have one; on the
// latter two it says which value is shown.
class CHARTXML_API PlXSummaryStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_summaryStatistic[];

  // Of percents, fractions and cumulations, those that end in Count are of numbers of cases and
  // the others of sums.
  enum ENUM_method : int {
    method_value = 0,
    method_sum = 1,
    method_mean = 2,
    method_percent = 3,
    method_percentCount = 4,
    method_fraction = 5,
    method_range = 7,
    method_median = 8,
    method_mode = 9,
    method_count = 10,
    method_standardDeviation = 11,
    method_variance = 12,
    method_midrange = 13,
    method_validCount = 14,
    method_minimum = 18,
    method_maximum = 19,
    method_cumulativePercent = 22,
    method_cumulativePercentCount = 23,
    method_cumulativeSum = 24,
    method_cumulativeCount = 25,
    method_unweightedCount = 26,
    method_fractionCount = 32
  };
  // The whole that percents and fractions are shares of: all items, or those at one coordinate.
  enum ENUM_summaryBase : int { summaryBase_all = 1, summaryBase_coordinate = 2 };
  // Whether combinations of categories that no row has become items too.
  enum ENUM_augment : int { augment_always = 1, augment_never = 2 };

  ENUM_method getMethod() const { return word<ENUM_method>(u"method"); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  // 0 when not stated.
  ENUM_summaryBase getSummaryBase() const { return word<ENUM_summaryBase>(u"summaryBase"); }
  void setSummaryBase(ENUM_summaryBase base) { setWord(u"summaryBase", base); }
  // 0 when not stated.
  ENUM_augment getAugment() const { return word<ENUM_augment>(u"augment"); }
  void setAugment(ENUM_augment augment) { setWord(u"augment", augment); }
  // Which of several variables on the coordinate is summarized.
  unsigned getSummaryIndex() const { return static_cast<unsigned>(integer(u"summaryIndex")); }
  void setSummaryIndex(unsigned index) { setInteger(u"summaryIndex", index); }
  bool isSummaryIndexPresent() const { return present(u"summaryIndex"); }
  // True to give binned values as the middle of their interval.
  bool getConvertIntervalToSingleValue() const { return flag(u"convertIntervalToSingleValue"); }
  void setConvertIntervalToSingleValue(bool convert) {
    setFlag(u"convertIntervalToSingleValue", convert);
  }
};

// A curve through the items.
class CHARTXML_API PlXSmoothStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_smoothStatistic[];

  // The steps are told by the side of its step on which an item lies.
  enum ENUM_method : int {
    method_linear = 0,
    method_loess = 1,
    method_polynomial = 6,
    method_spline = 12,
    method_stepLeft = 13,
    method_stepRight = 14,
    method_stepCenter = 15
  };
  // How the weight of an item falls with its distance.
  enum ENUM_kernel : int {
    kernel_uniform = 0,
    kernel_epanechnikov = 1,
    kernel_biweight = 2,
    kernel_triweight = 3,
    kernel_tricube = 4,
    kernel_gaussian = 5,
    kernel_cauchy = 6
  };

  ENUM_method getMethod() const { return word<ENUM_method>(u"method"); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  ENUM_kernel getKernel() const { return word<ENUM_kernel>(u"kernel"); }
  void setKernel(ENUM_kernel kernel) { setWord(u"kernel", kernel); }
  // Of a polynomial; 0 draws the mean.
  unsigned getDegree() const { return static_cast<unsigned>(integer(u"degree")); }
  void setDegree(unsigned degree) { setInteger(u"degree", degree); }
  // The share of the items, from 0 to 1, that a local fit sees.
  double getProportion() const { return number(u"proportion"); }
  void setProportion(double proportion) { setNumber(u"proportion", proportion); }
  // The width of the kernel in units of the data.
  double getBandwidth() const { return number(u"bandwidth"); }
  void setBandwidth(double bandwidth) { setNumber(u"bandwidth", bandwidth); }
  // The value at which the curve is made to cross zero.
  double getIntercept() const { return number(u"intercept"); }
  void setIntercept(double intercept) { setNumber(u"intercept", intercept); }
  // True to end the curve at the outermost items.
  bool getBounded() const { return flag(u"bounded"); }
  void setBounded(bool bounded) { setFlag(u"bounded", bounded); }
  // On an interval: true to draw spikes from the items to the curve.
  bool getSpikes() const { return flag(u"spikes"); }
  void setSpikes(bool spikes) { setFlag(u"spikes", spikes); }
};

// The region in which a value lies with some confidence.
class CHARTXML_API PlXRegionStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_regionStatistic[];

  // What the region is of.
  enum ENUM_regionType : int { regionType_confidenceFit = 7 };

  // 0 when not stated.
  ENUM_regionType getRegionType() const { return word<ENUM_regionType>(u"regionType"); }
  void setRegionType(ENUM_regionType type) { setWord(u"regionType", type); }
  // The significance level: 0.05 makes a region of 95% confidence.
  double getAlpha() const { return number(u"alpha"); }
  void setAlpha(double alpha) { setNumber(u"alpha", alpha); }
  // Of the fitted curve: 0 is the mean, 1 a straight line, 2 quadratic, 3 cubic.
  unsigned getDegree() const { return static_cast<unsigned>(integer(u"degree")); }
  void setDegree(unsigned degree) { setInteger(u"degree", degree); }
  // True for the region of single cases, false for that of their mean.
  bool getPredictIndividuals() const { return flag(u"predictIndividuals"); }
  void setPredictIndividuals(bool predict) { setFlag(u"predictIndividuals", predict); }
};

// The density of a theoretical distribution.
class CHARTXML_API PlXDistributionStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_distributionStatistic[];

  enum ENUM_distribution : int {
    distribution_uniform = 1,
    distribution_normal = 2,
    distribution_t = 3,
    distribution_f = 4,
    distribution_chisquare = 5,
    distribution_gamma = 6,
    distribution_beta = 7,
    distribution_exponential = 8,
    distribution_logistic = 9,
    distribution_studentizedrange = 10,
    distribution_weibull = 11,
    distribution_poisson = 12
  };

  // Normal when not stated.
  ENUM_distribution getDistribution() const {
    return word<ENUM_distribution>(u"distribution", distribution_normal);
  }
  void setDistribution(ENUM_distribution distribution) { setWord(u"distribution", distribution); }
  // Numbers as texts. Those that aren't stated are estimated from the data.
  const XMLCh* getParameter() const { return text(u"parameter"); }
  void setParameter(const XMLCh* value) { setText(u"parameter", value); }
  const XMLCh* getSecondaryParameter() const { return text(u"secondaryParameter"); }
  void setSecondaryParameter(const XMLCh* value) { setText(u"secondaryParameter", value); }
};

// One item for each bin that holds rows.
class CHARTXML_API PlXBinStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_binStatistic[];
  static const XMLCh _binCount[];
  static const XMLCh _binStart[];
  static const XMLCh _binWidth[];

  // The shape of bins over two dimensions. Dots are round, and stack on one dimension.
  enum ENUM_gridType : int { gridType_hex = 0, gridType_dot = 1, gridType_square = 2 };
  // Where the item of a bin stands: at the middle of the bin, or of the rows in it.
  enum ENUM_location : int { location_grid = 0, location_centroid = 1 };
  // Which dimensions are cut into bins.
  enum ENUM_method : int { method_response = 0, method_allDimensions = 1, method_notResponse = 2 };

  ENUM_gridType getGridType() const { return word<ENUM_gridType>(u"gridType"); }
  void setGridType(ENUM_gridType type) { setWord(u"gridType", type); }
  ENUM_location getLocation() const { return word<ENUM_location>(u"location"); }
  void setLocation(ENUM_location location) { setWord(u"location", location); }
  ENUM_method getMethod() const { return word<ENUM_method>(u"method"); }
  void setMethod(ENUM_method method) { setWord(u"method", method); }
  // Numbers as texts. Of count and width one is stated, or neither for bins of the chart's choice.
  const XMLCh* getBinCount() const { return text(u"binCount"); }
  void setBinCount(const XMLCh* count) { setText(u"binCount", count); }
  const XMLCh* getBinWidth() const { return text(u"binWidth"); }
  void setBinWidth(const XMLCh* width) { setText(u"binWidth", width); }
  const XMLCh* getBinStart() const { return text(u"binStart"); }
  void setBinStart(const XMLCh* start) { setText(u"binStart", start); }
};

// Links between the items of one group, or from each to a common place.
class CHARTXML_API PlXLinkStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_linkStatistic[];

  enum ENUM_type : int { type_spike = 1 };
  // Where a spike ends along one axis; at the item itself when not stated.
  enum ENUM_location : int {
    location_centroid = 1,
    location_base = 2,
    location_origin = 3,
    location_mean = 4
  };

  // 0 when not stated, as of the three below.
  ENUM_type getType() const { return word<ENUM_type>(u"type"); }
  void setType(ENUM_type type) { setWord(u"type", type); }
  ENUM_location getX() const { return word<ENUM_location>(u"x"); }
  void setX(ENUM_location location) { setWord(u"x", location); }
  ENUM_location getY() const { return word<ENUM_location>(u"y"); }
  void setY(ENUM_location location) { setWord(u"y", location); }
  ENUM_location getZ() const { return word<ENUM_location>(u"z"); }
  void setZ(ENUM_location location) { setWord(u"z", location); }
};

// One item for the rows that agree in every coordinate.
class CHARTXML_API PlXAggregateStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_aggregateStatistic[];

  // The weight of the rows; null when each counts once.
  CTVariableType* getWeight() const { return link<CTVariableType>(u"weight"); }
  void setWeight(CTVariableType& variable) { setLink(u"weight", variable); }
};

// One item for the rows that share a value, such as a line for each case.
class CHARTXML_API PlXCollectRowsStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_collectRowsStatistic[];

  CTVariableType* getVariable() const { return link<CTVariableType>(u"variable"); }
  void setVariable(CTVariableType& variable) { setLink(u"variable", variable); }
};

// Groups of near rows.
class CHARTXML_API PlXClusteringStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_clusteringStatistic[];

  unsigned getClusterCount() const { return static_cast<unsigned>(integer(u"clusterCount")); }
  void setClusterCount(unsigned count) { setInteger(u"clusterCount", count); }
  unsigned getIterations() const { return static_cast<unsigned>(integer(u"iterations")); }
  void setIterations(unsigned iterations) { setInteger(u"iterations", iterations); }
};

// A density that is estimated in windows of one width.
class CHARTXML_API PlXFixedWindowDensityStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_fixedWindowDensityStatistic[];

  // In units of the data.
  double getBandwidth() const { return number(u"bandwidth"); }
  void setBandwidth(double bandwidth) { setNumber(u"bandwidth", bandwidth); }
  PlXSmoothStatistic::ENUM_kernel getKernel() const {
    return word<PlXSmoothStatistic::ENUM_kernel>(u"kernel");
  }
  void setKernel(PlXSmoothStatistic::ENUM_kernel kernel) { setWord(u"kernel", kernel); }
};

// A density that is estimated in windows with a number of rows in each.
class CHARTXML_API PlXNearestNeighborDensityStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_nearestNeighborDensityStatistic[];

  unsigned getNeighbors() const { return static_cast<unsigned>(integer(u"neighbors")); }
  void setNeighbors(unsigned neighbors) { setInteger(u"neighbors", neighbors); }
  PlXSmoothStatistic::ENUM_kernel getKernel() const {
    return word<PlXSmoothStatistic::ENUM_kernel>(u"kernel");
  }
  void setKernel(PlXSmoothStatistic::ENUM_kernel kernel) { setWord(u"kernel", kernel); }
};

// Places for the nodes of a network.
class CHARTXML_API PlXGraphLayoutStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_graphLayoutStatistic[];

  // The two ends of an edge, which is a row.
  CTVariableType* getFromVariable() const { return link<CTVariableType>(u"fromVariable"); }
  void setFromVariable(CTVariableType& variable) { setLink(u"fromVariable", variable); }
  CTVariableType* getToVariable() const { return link<CTVariableType>(u"toVariable"); }
  void setToVariable(CTVariableType& variable) { setLink(u"toVariable", variable); }
};

// Places for the nodes of a tree.
class CHARTXML_API PlXTreeLayoutStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_treeLayoutStatistic[];

  // A node, which is a row, and the node above it.
  CTVariableType* getNodeVariable() const { return link<CTVariableType>(u"nodeVariable"); }
  void setNodeVariable(CTVariableType& variable) { setLink(u"nodeVariable", variable); }
  CTVariableType* getParentVariable() const { return link<CTVariableType>(u"parentVariable"); }
  void setParentVariable(CTVariableType& variable) { setLink(u"parentVariable", variable); }
};

// The outlines of a map in the place of the names in the data.
class CHARTXML_API PlXMapStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_mapStatistic[];

  // The map's name, and the variable that names the places on it.
  const XMLCh* getMapName() const { return text(u"mapName"); }
  void setMapName(const XMLCh* name) { setText(u"mapName", name); }
  CTVariableType* getKeyVariable() const { return link<CTVariableType>(u"keyVariable"); }
  void setKeyVariable(CTVariableType& variable) { setLink(u"keyVariable", variable); }
};

// Places and sizes for words in a cloud.
class CHARTXML_API PlXTagCloudStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_tagCloudStatistic[];

  // The most words that are shown; 0 for all.
  unsigned getMaximumTags() const { return static_cast<unsigned>(integer(u"maximumTags")); }
  void setMaximumTags(unsigned count) { setInteger(u"maximumTags", count); }
};

// The median, hinges, whiskers and outliers of a box plot.
class CHARTXML_API PlXTukeyStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_tukeyStatistic[];

  // How far from the hinges outliers begin, and extremes, in hinge spreads. Charts draw 1.5 and 3
  // when they aren't stated, which read as 0.
  double getFence() const { return number(u"fence"); }
  void setFence(double spreads) { setNumber(u"fence", spreads); }
  double getExtreme() const { return number(u"extreme"); }
  void setExtreme(double spreads) { setNumber(u"extreme", spreads); }
};

// A self-organizing map: rows on a grid of cells by their likeness.
class CHARTXML_API PlXSOMStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_somStatistic[];

  unsigned getRows() const { return static_cast<unsigned>(integer(u"rows")); }
  void setRows(unsigned rows) { setInteger(u"rows", rows); }
  unsigned getColumns() const { return static_cast<unsigned>(integer(u"columns")); }
  void setColumns(unsigned columns) { setInteger(u"columns", columns); }
  unsigned getIterations() const { return static_cast<unsigned>(integer(u"iterations")); }
  void setIterations(unsigned iterations) { setInteger(u"iterations", iterations); }
};

// Links between categories that occur together.
class CHARTXML_API PlXPatternLinkStatistic : public PlXBaseElement {
 public:
  using PlXBaseElement::PlXBaseElement;
  static const XMLCh _UTF_patternLinkStatistic[];

  // The least share of the rows, from 0 to 1, that makes a link.
  double getMinFraction() const { return number(u"minFraction"); }
  void setMinFraction(double fraction) { setNumber(u"minFraction", fraction); }
};

#endif
