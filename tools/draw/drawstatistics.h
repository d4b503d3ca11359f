// Statistics of elements as transforms of Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWSTATISTICS_H
#define CHARTXML_TOOLS_DRAWSTATISTICS_H

#include <optional>
#include <string>
#include <vector>

#include "drawplane.h"

namespace draw {

// Values for groups of rows. They are asked for one by one and then written as one aggregation with
// what follows it, such as the sum of sums that shares are of.
class Summary {
 public:
  // `keys` are the fields that rows of one group agree in; `place` is the field among them along
  // which values cumulate, with its order if it has categories; `panels` are the fields of facets.
  Summary(DrawContext& context, std::string source, std::vector<std::string> keys,
          std::string place, const std::vector<std::string>& order,
          std::vector<std::string> panels);

  // The field that will hold the value. `field` may be null for numbers of cases, and for them
  // only. Nothing for a method that gives no single value.
  std::optional<std::string> add(const PlXSummaryStatistic& statistic, const DrawField* field);
  std::string add(const char* operation, const DrawField* field);
  std::string count();

  bool isEmpty() const { return operations_.empty(); }
  void appendTo(Json& transforms) const;

 private:
  std::string addShare(const std::string& base, PlXSummaryStatistic::ENUM_summaryBase whole,
                       double factor);
  std::string addCumulation(const std::string& base, bool isShare);
  void calculate(const std::string& as, const std::string& expression);

  DrawContext& context_;
  std::string source_;
  std::vector<std::string> keys_;
  std::string place_;
  const std::vector<std::string>& order_;
  std::vector<std::string> panels_;
  Json operations_ = Json::array();
  Json later_ = Json::array();
};

Json calculation(const std::string& as, const std::string& expression);
Json filter(const std::string& expression);
// Of strings, and nothing where there are none.
void putGroups(Json& transform, const std::vector<std::string>& keys);

// Cuts a field of numbers into bins, as `FIELD_bin` and `FIELD_end`.
struct Bins {
  std::string low, high;
  double width = 0;
  double start = 0;
};
Bins addBins(Json& transforms, const DrawField& field, const PlXBinStatistic& statistic);

// The values of a density of a theoretical distribution; NaN for one that isn't known.
double densityAt(PlXDistributionStatistic::ENUM_distribution distribution, double x, double first,
                 double second);

}  // namespace draw

#endif
