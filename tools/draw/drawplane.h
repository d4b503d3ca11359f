// The coordinates of a graph: what its dimensions are to Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWPLANE_H
#define CHARTXML_TOOLS_DRAWPLANE_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "drawdata.h"
#include "drawing.h"
#include "drawlooks.h"

// One thing that a visible legend explains. Legends are drawn by layers of their own, in the order
// of the chart, since Vega-Lite would show them in that of drawing, and again in each panel.
struct DrawLegend {
  const PlXLegend* frame = nullptr;
  std::size_t order = 0;
  const PlXGraph* graph = nullptr;
  Json look;  // without a title: that of the variable is shown
  // What is drawn by it, once that is known.
  Json encoding = Json::object();
  Json mark = Json::object();

  // The layer that shows nothing but the legend.
  Json layer() const;
};

// What all parts of a picture are made with.
struct DrawContext {
  const PlXVisualization& chart;
  DrawData& data;
  DrawNotes& notes;
  std::map<std::string, DrawLegend> legends;  // by the id of what they explain
  std::map<std::string, const PlXPopup*> popups;
};

// One of the two dimensions of a block.
struct DrawSide {
  const PlXDimension* dimension = nullptr;
  std::string channel;  // "x" or "y" as it is drawn; "theta" or "radius"
  bool isDiscrete = false;
  bool isDate = false;
  // Whose categories the side shows; what elements have there lies side by side within each.
  const DrawField* cluster = nullptr;
  const DrawField* depth = nullptr;    // of a third dimension, drawn side by side
  const DrawField* measure = nullptr;  // the first variable with numbers
  std::vector<std::string> order;      // of discrete ones
  Json scale = Json::object();
  Json axis = nullptr;
  double least = 1, greatest = 0;  // of numbers, as far as domain and data tell
  double base = 1;                 // what bars stand on, on a log scale

  bool hasExtent() const { return least <= greatest; }
  bool isLog() const { return scale.value("type", "") == "log"; }
  // The place of a value that the chart states: a number, a date or a category.
  Json datumOf(const std::string& text, const std::vector<const DrawField*>& fields) const;
};

class DrawPlane {
 public:
  // What a plane is for. The block may be null; `index` is 0 for the first block of a graph. In a
  // matrix of variables, `x` and `y` are those of a cell. The size is that of the data area.
  struct Place {
    const PlXCoordinates* block = nullptr;
    std::size_t index = 0;
    bool hasFellows = false;  // other blocks in the graph
    std::vector<const CTElementType*> elements;
    const DrawField* x = nullptr;
    const DrawField* y = nullptr;
    double width = 0, height = 0;
  };
  DrawPlane(DrawContext& context, const Place& place);

  const PlXCoordinates* block() const { return block_; }
  double width() const { return width_; }
  double height() const { return height_; }
  DrawSide& side(std::size_t i) { return sides_[i]; }
  // Runs the values the other way, in a panel that is reflected by turns.
  void reverse();
  bool isPolar() const { return isPolar_; }
  const DrawSide& x() const { return sides_[0]; }
  const DrawSide& y() const { return sides_[1]; }
  // All fields on a side, for values of guides.
  const std::vector<const DrawField*>& fieldsOf(std::size_t side) const { return fields_[side]; }
  const PlXPolarTransform* polar() const { return polar_; }

  // The encoding of a field on a side; it is one of numbers though the side is discrete for the
  // results of statistics.
  static Json position(const DrawSide& side, const std::string& field);

 private:
  void readTransforms();
  void readFields(const Place& place);
  void makeScale(std::size_t index, double pixels, bool hasBars);
  void makeDomain(DrawSide& side, const PlXDimension& dimension);
  void readDimensions(const std::vector<const CTElementType*>& elements);

  DrawContext& context_;
  const PlXCoordinates* block_;
  double width_, height_;
  bool isPolar_ = false, isTransposed_ = false;
  bool isReflected_[2] = {false, false};
  const PlXPolarTransform* polar_ = nullptr;
  DrawSide sides_[2];
  std::vector<const DrawField*> fields_[2];
};

// The axis of a dimension, or of a level of facets.
Json axisJson(DrawContext& context, const PlXAxis& axis, const DrawSide& side);

// What a derived axis shows: the value v stands where the main axis has `match` + v * `step`.
struct DerivedValues {
  double match = 0, step = 1;
};
// Nothing for an axis that isn't derived.
std::optional<DerivedValues> derivedValues(const PlXAxis& axis);
Json derivedAxisJson(DrawContext& context, const PlXAxis& axis, const DrawSide& side,
                     const DerivedValues& values);

#endif
