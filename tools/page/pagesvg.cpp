#include "pagesvg.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "pagelayout.h"

namespace {

constexpr double margin = 10;
constexpr double fontSize = 9;
constexpr double characterWidth = 5.2;  // of that size, of wide fonts

// For the text of elements and the values of attributes. Signs that no document may hold are
// blanks, and so are line ends.
std::string escapedForXml(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
  }
  return result;
}

// The characters that have room in a width, the last of them "..." where the text is cut.
std::string shortened(std::string_view text, double width) {
  constexpr std::string_view dots = "...";
  const auto room = static_cast<std::size_t>(std::max(width, 0.0) / characterWidth);
  std::size_t characters = 0;
  std::size_t cut = text.size();  // in front of the last ones, which the dots take
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) continue;
    if (characters + dots.size() == room) cut = i;
    if (++characters > room) {
      return room < dots.size() ? "" : std::string(text.substr(0, cut)).append(dots);
    }
  }
  return std::string(text);
}

// Points, to a tenth.
std::string number(double value) {
  const std::int64_t tenths = std::llround(value * 10);
  std::string text = std::to_string(std::abs(tenths) / 10);
  if (tenths % 10) text += '.' + std::to_string(std::abs(tenths) % 10);
  return tenths < 0 ? '-' + text : text;
}

std::string attribute(const char* name, double value) {
  return std::string(" ") + name + "=\"" + number(value) + '"';
}

std::string textAt(double x, double y, const std::string& text, const char* style) {
  return "<text" + attribute("x", x) + attribute("y", y) + style + '>' + escapedForXml(text) +
         "</text>\n";
}

struct Colours {
  std::string_view kind;
  const char* fill;
  const char* stroke;
};

Colours coloursOf(std::string_view kind) {
  constexpr Colours colours[] = {
      {"container", "#fff3d6", "#b8860b"},    {"graph", "#dcebfa", "#2f6aa8"},
      {"labelFrame", "#e6f4e1", "#3f8a34"},   {"legend", "#f3e2f3", "#8a3f8a"},
      {"controlFrame", "#e6e6e6", "#606060"},
  };
  for (const Colours& row : colours) {
    if (row.kind == kind) return row;
  }
  return {kind, "#ffffff", "#000000"};
}

// The box, which tells how the frame is placed to viewers that show titles. Hidden ones are dotted,
// with nothing in them.
std::string boxOf(const FrameBox& frame) {
  const Colours colours = coloursOf(frame.kind);
  const bool isTurned = frame.right < frame.left || frame.bottom < frame.top;
  const std::string fill = std::string(colours.fill) + "\" fill-opacity=\"0.7\"";
  const std::string dashes = frame.isHidden ? "1 3" : isTurned ? "4" : "";
  const std::string title = frame.name() + (frame.isHidden ? ", hidden" : "") +
                            (frame.places.empty() ? "" : ": " + frame.places);
  return "<rect" + attribute("x", std::min(frame.left, frame.right)) +
         attribute("y", std::min(frame.top, frame.bottom)) +
         attribute("width", std::abs(frame.right - frame.left)) +
         attribute("height", std::abs(frame.bottom - frame.top)) + " fill=\"" +
         (frame.isHidden ? "none\"" : fill) + " stroke=\"" + colours.stroke + '"' +
         (dashes.empty() ? "" : " stroke-dasharray=\"" + dashes + '"') + "><title>" +
         escapedForXml(title) + "</title></rect>\n";
}

// The longest of the names that has room: "legend leg (legend1)", "leg (legend1)", "legend1".
std::string nameWithin(const FrameBox& frame, double width) {
  const std::string role = frame.role.empty() ? "" : " (" + frame.role + ')';
  const std::string shortest = frame.role.empty() ? frame.id : frame.role;
  for (const std::string& name : {frame.name() + role, frame.id + role, shortest}) {
    if (!name.empty() && shortened(name, width) == name) return name;
  }
  return shortened(shortest.empty() ? frame.kind : shortest, width);
}

// In the box's upper corner, and for a container, as the frames in it start there, at its lower
// edge.
std::string textsOf(const FrameBox& frame) {
  constexpr double inset = 3;
  constexpr double lineHeight = fontSize + 2;
  const double left = std::min(frame.left, frame.right) + inset;
  const double room = std::abs(frame.right - frame.left) - 2 * inset;
  const bool isContainer = frame.kind == "container";
  const double line = isContainer ? std::max(frame.top, frame.bottom) - inset
                                  : std::min(frame.top, frame.bottom) + lineHeight;
  std::string name = nameWithin(frame, room);
  if (frame.text.empty()) return textAt(left, line, name, "");
  // A low box has its text on the same line.
  if (std::abs(frame.bottom - frame.top) < 3 * fontSize) {
    return textAt(left, line, shortened(name + ": " + frame.text, room), "");
  }
  return textAt(left, line, name, "") +
         textAt(left, line + lineHeight, shortened(frame.text, room), " font-style=\"italic\"");
}

}  // namespace

std::string drawPage(const PageLayout& layout) {
  constexpr std::size_t mostProblems = 20;
  const std::size_t shown = std::min(layout.problems.size(), mostProblems);
  constexpr double lineHeight = fontSize + 4;
  const double below = shown ? static_cast<double>(shown + 1) * lineHeight : 0;
  const double width = layout.width + 2 * margin;
  const double height = layout.height + 2 * margin + below;
  std::string svg =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
      number(width) + "pt\" height=\"" + number(height) + "pt\" viewBox=\"" + number(-margin) +
      ' ' + number(-margin) + ' ' + number(width) + ' ' + number(height) +
      "\" font-family=\"sans-serif\" font-size=\"" + number(fontSize) + "\">\n<rect" +
      attribute("width", layout.width) + attribute("height", layout.height) +
      " fill=\"white\" stroke=\"#a0a0a0\"/>\n";
  for (const FrameBox& frame : layout.frames) svg += boxOf(frame);
  for (const FrameBox& frame : layout.frames) {
    if (!frame.isHidden) svg += textsOf(frame);
  }
  double line = layout.height + margin;
  for (std::size_t i = 0; i < shown; ++i) {
    line += lineHeight;
    const bool isLast = i + 1 == mostProblems && layout.problems.size() > mostProblems;
    const std::size_t left = layout.problems.size() - i;
    const std::string text = isLast ? "and " + std::to_string(left) + " more" : layout.problems[i];
    svg += textAt(0, line, shortened(text, layout.width), " fill=\"#b00000\"");
  }
  return svg + "</svg>\n";
}
