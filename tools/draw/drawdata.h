// The data of a chart as a picture needs it: each source a table, each variable a field of it.
#ifndef CHARTXML_TOOLS_DRAWDATA_H
#define CHARTXML_TOOLS_DRAWDATA_H

#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "drawing.h"

namespace draw {

// A variable in the table of its source. Categories are texts for readers; numbers are numbers, and
// dates milliseconds since 1970.
struct DrawField {
  const CTVariableType* variable = nullptr;
  std::string source;
  std::string name;
  bool isCategorical = false;
  bool isDate = false;
  bool hasMissing = false;
  // The raw values in the order of the data, and the texts that stand for them.
  std::vector<std::string> raws;
  std::map<std::string, std::string> labels;
  // Of the numbers; the least is the greater one when there are none.
  double least = 1, greatest = 0;
  double leastPositive = std::numeric_limits<double>::infinity();

  // What the table has in place of a raw value that a chart names.
  Json valueOf(const std::string& raw) const;
};

class DrawData {
 public:
  // Reads the sources that lie in the chart.
  DrawData(const PlXVisualization& chart, DrawNotes& notes);
  DrawData(const DrawData&) = delete;
  DrawData& operator=(const DrawData&) = delete;
  ~DrawData();

  // Null for null and for a variable that has no data here, which is told.
  const DrawField* fieldOf(const CTVariableType* variable);
  // The variables of an expression; of any other variable itself.
  std::vector<const DrawField*> fieldsOf(const CTVariableType* variable);

  // The texts of the categories in the order of the domain, or that of the variable when it is
  // null, and whether that leaves some of the data's out.
  struct Order {
    std::vector<std::string> texts;
    bool isPart = false;
  };
  const Order& orderOf(const DrawField& field, const PlXCategoricalDomain* domain = nullptr);

  // The field of the weights of a source's cases; null when they have none.
  const DrawField* weightOf(const std::string& source);

  // Of the numbers of a field, by the weights of the cases.
  struct Moments {
    double rows = 0, cases = 0, mean = 0, deviation = 0;
  };
  Moments momentsOf(const DrawField& field);
  // Of the sums of a field, or of cases when it is null, over the rows that agree in the category
  // or in the piece of `width` of another field; over all rows when that is null.
  struct Sums {
    double least = 0, greatest = 0, whole = 0,
           leastPositive = std::numeric_limits<double>::infinity();
  };
  Sums sumsOf(const std::string& source, const DrawField* field, const DrawField* along,
              double start, double width);
  // Of a straight line through the pairs; NaN when there is none.
  double rSquared(const DrawField& x, const DrawField& y);

  // The texts of two fields of categories, row by row; empty for missing ones.
  std::vector<std::pair<std::string, std::string>> pairsOf(const DrawField& first,
                                                           const DrawField& second);

  // What a source is called in a plot, which has names of its own.
  static std::string tableName(const std::string& source);
  // The tables, with the fields that were asked for.
  Json tables() const;

 private:
  class Store;
  struct Column;

  Column* columnOf(const CTVariableType& variable);
  Column* derivedColumn(const CTVariableType& variable);
  const DrawField* fieldOfColumn(const CTVariableType& variable, Column& column);
  void mergeSmall(const PlXAggregation& aggregation, DrawField& field, const Column& column);
  Order orderFor(const DrawField& field, const PlXCategoricalDomain* domain);
  std::map<std::string, double> meansOf(const DrawField& field, const CTVariableType* measure);
  std::string freeName(const std::string& source, const std::string& id);

  const PlXVisualization& chart_;
  DrawNotes& notes_;
  std::unique_ptr<Store> store_;
  std::map<const CTVariableType*, std::unique_ptr<Column>> columns_;
  std::map<const CTVariableType*, std::unique_ptr<DrawField>> fields_;
  std::map<std::pair<const DrawField*, const PlXCategoricalDomain*>, Order> orders_;
  std::vector<const DrawField*> inOrder_;
  // The names of fields by source, with the last number that was put behind each.
  std::map<std::pair<std::string, std::string>, int> names_;
};

}  // namespace draw

#endif
