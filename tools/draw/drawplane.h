// The coordinates of a graph: what its dimensions are to Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWPLANE_H
#define CHARTXML_TOOLS_DRAWPLANE_H

#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "drawdata.h"
#include "drawing.h"
#include "drawlooks.h"

namespace draw {

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
  // Takes up another one that explains the same categories, such as dashes beside colours; false
  // when it explains something else.
  bool takeUp(const DrawLegend& other);
};

// The layers of legends, in the order of the chart, those of the same categories as one.
std::vector<Json> legendLayers(std::vector<DrawLegend*> legends);

// What all parts of a picture are made with.
struct DrawContext {
  const PlXVisualization& chart;
  DrawData& data;
  DrawNotes& notes;
  std::map<std::string, DrawLegend> legends;  // by the id of what they explain
  std::map<std::string, const PlXPopup*> popups;
  NumberSigns signs;  // where a format states none
};

// A number, or a date in milliseconds since 1970, that a chart states; NaN for none.
double placeOf(const std::string& text, bool isDate);

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
  double leastPositive = std::numeric_limits<double>::infinity();  // that is drawn, at least
  double pixels = 0;
  double base = 1;  // what bars stand on, on a log scale

  // Takes a value into its extent.
  void extend(double value);
  bool hasExtent() const { return least <= greatest; }
  // Whether it ends where the chart says, whatever is drawn.
  bool hasFixedDomain() const {
    return !isDiscrete && scale.contains("domain") && scale["domain"].is_array();
  }
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

}  // namespace draw

#endif
