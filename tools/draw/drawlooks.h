// Styles and formats in the words of Vega-Lite.
#ifndef CHARTXML_TOOLS_DRAWLOOKS_H
#define CHARTXML_TOOLS_DRAWLOOKS_H

#include <optional>
#include <string>
#include <vector>

#include "drawdata.h"
#include "drawing.h"

namespace draw {

constexpr double pixelsPerPoint = 4.0 / 3;

// The first part of a length, in pixels; nothing for a percentage and for what is no length.
std::optional<double> pixelsOf(const std::string& length);
// The first part of a percentage, as a share of 1.
std::optional<double> shareOf(const std::string& length);

// Null for what is no colour: an attribute of a chart must not reach out of the picture.
Json colorJson(const std::string& color);
bool isPainted(const Json& color);
Json dashJson(const std::string& dashes);
bool isVisible(const PlXStyle* style);

// The kind of mark that looks are put on.
enum class MarkKind { Surface, Line, Point, Text };

// What a mark looks like that nobody gave a colour.
constexpr char plainColor[] = "#4c78a8";

// The look with all that Vega-Lite would add otherwise: rings around symbols, colours that shine
// through, and colours of its own.
Json statedLook(MarkKind kind, Json look);

// What a style gives to a mark. The style may be null.
Json surfaceLook(const PlXStyle* style);             // fill and outline
Json lineLook(const PlXStyle* style);                // a stroke
Json pointLook(const PlXStyle* style);               // a surface with a shape and a size
Json textLook(const PlXStyle* style);                // a text mark
std::string symbolShape(const PlXStyle& style);      // empty for none that is known
bool isStroked(const std::string& shape);            // one without a surface
std::string symbolShape(const std::string& symbol);  // the same by its word
// The font of a text that isn't a mark, each name with `prefix`: titleFont, labelColor...
void putFont(Json& target, const std::string& prefix, const PlXStyle* style);

// A colour whose hue, saturation or brightness is another.
std::string withComponent(const std::string& color, PlXColorComponent::ENUM_type type,
                          double value);

// The styles of the first list of a cycle.
std::vector<const PlXStyle*> stylesOf(const PlXStyleCycle* cycle);

// The signs before fractions and between groups of digits.
struct NumberSigns {
  std::string decimal = ".";
  std::string group = ",";
};
// Those of the format, which may be null, or those that are known otherwise.
NumberSigns signsOf(const PlXFormat* format, const NumberSigns& known);

// The text of `value`, an expression, as an expression. The format may be null; `signs` are those
// of the chart. Programs that show plots have signs of their own, so texts don't rely on those.
std::string textExpression(const std::string& value, const PlXFormat* format, bool isDate,
                           const NumberSigns& signs);
// A text with a number in English signs, an expression, in these signs.
std::string signedText(const std::string& text, const NumberSigns& signs);
// The format of a labelling's or axis's own, or else that of the variable.
const PlXFormat* formatOf(const CTVariableType* variable);

}  // namespace draw

#endif
