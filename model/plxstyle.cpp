#include "plxstyle.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "chartstring.h"

const XMLCh PlXStyle::_black[] = u"black";
const XMLCh PlXStyle::_transparent[] = u"transparent";
const XMLCh PlXStyle::_white[] = u"white";
const XMLCh PlXStyle::_margin_bottom[] = u"margin-bottom";
const XMLCh PlXStyle::_margin_left[] = u"margin-left";
const XMLCh PlXStyle::_margin_right[] = u"margin-right";
const XMLCh PlXStyle::_margin_top[] = u"margin-top";
const XMLCh PlXStyle::_maxAttachedTextHeight[] = u"maxAttachedTextHeight";
const XMLCh PlXStyle::_maxAttachedTextWidth[] = u"maxAttachedTextWidth";
const XMLCh PlXStyle::_padding_bottom[] = u"padding-bottom";
const XMLCh PlXStyle::_padding_left[] = u"padding-left";
const XMLCh PlXStyle::_padding_right[] = u"padding-right";
const XMLCh PlXStyle::_padding_top[] = u"padding-top";
const XMLCh PlXStyle::_textAlignment[] = u"textAlignment";

namespace {

constexpr std::u16string_view blanks = u" \t\r\n";
constexpr std::u16string_view separators = u" \t\r\n,";
constexpr std::u16string_view notStated = u"auto";

// Preferred, minimum, maximum; empty where not stated.
using Parts = std::array<std::u16string_view, 3>;

void skipBlanks(std::u16string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

Parts partsOf(std::u16string_view text) {
  Parts parts;
  skipBlanks(text);
  for (std::u16string_view& part : parts) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    part = text.substr(0, end);
    if (part == notStated) part = {};
    text.remove_prefix(end);
    // A comma and the blanks around it are one separator: "8pt,,10pt" has no minimum.
    skipBlanks(text);
    if (text.starts_with(u',')) text.remove_prefix(1);
    skipBlanks(text);
  }
  return parts;
}

// Empty when no part is stated.
std::u16string joined(const Parts& parts) {
  std::u16string result;
  std::size_t places = 0;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (parts[i].empty()) continue;
    for (; places < i; ++places) result.append(notStated).append(1, u' ');
    result.append(parts[i]).append(1, u' ');
    ++places;
  }
  if (!result.empty()) result.pop_back();
  return result;
}

}  // namespace

void PlXStyle::getPreferredMinMax(const ChartString& text, ChartString& preferred,
                                  ChartString& minimum, ChartString& maximum) {
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be one of the results
  const ChartString copy = text;
  const Parts parts = partsOf(copy.view());
  preferred = ChartString(parts[0]);
  minimum = ChartString(parts[1]);
  maximum = ChartString(parts[2]);
}

void PlXStyle::getParts(const XMLCh* name, ChartString& preferred, ChartString& minimum,
                        ChartString& maximum) const {
  getPreferredMinMax(text(name), preferred, minimum, maximum);
}

void PlXStyle::setParts(const XMLCh* name, const XMLCh* preferred, const XMLCh* minimum,
                        const XMLCh* maximum) {
  const std::u16string before = text(name);
  Parts parts = partsOf(before);
  const XMLCh* const changes[] = {preferred, minimum, maximum};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (changes[i]) parts[i] = partsOf(changes[i])[0];
  }
  const std::u16string after = joined(parts);
  setText(name, after.empty() ? nullptr : after.c_str());
}

void PlXStyle::getWidth(ChartString& preferred, ChartString& minimum, ChartString& maximum) const {
  getParts(u"width", preferred, minimum, maximum);
}

void PlXStyle::setWidth(const XMLCh* preferred, const XMLCh* minimum, const XMLCh* maximum) {
  setParts(u"width", preferred, minimum, maximum);
}

void PlXStyle::getFontSize(ChartString& preferred, ChartString& minimum,
                           ChartString& maximum) const {
  getParts(u"font-size", preferred, minimum, maximum);
}

void PlXStyle::setFontSize(const XMLCh* preferred, const XMLCh* minimum, const XMLCh* maximum) {
  setParts(u"font-size", preferred, minimum, maximum);
}

void PlXStyle::getSize(ChartString& preferred, ChartString& minimum, ChartString& maximum) const {
  getParts(u"size", preferred, minimum, maximum);
}

void PlXStyle::setSize(const XMLCh* preferred, const XMLCh* minimum, const XMLCh* maximum) {
  setParts(u"size", preferred, minimum, maximum);
}
